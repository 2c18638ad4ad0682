#pragma once

#include <CorvexMaths/internal/DoubleDouble.h>

namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

using namespace CorvexMaths::Kernels;

/// The angle, from 0 to a quarter turn, of a unit vector with no negative component, correctly rounded but for one case
/// in about 2^40; no function of the C library, so that every machine gives the same bits.
inline double ArcTangent(DoubleDouble cosine, DoubleDouble sine)
{
    // Halving the angle four times leaves at most pi / 32, whose tangent is below 0.099: with 16 terms the series
    // t - t^3 / 3 + ... is cut at 0.099^33 / 33, a relative 2^-112.
    constexpr int halvings = 4;
    constexpr int terms = 16;
    for (int i = 0; i < halvings; ++i) {
        // (1 + c, s) lies along half the angle.
        cosine = cosine + DoubleDouble(1.0);
        const DoubleDouble length = SquareRoot(cosine * cosine + sine * sine);
        cosine = cosine / length;
        sine = sine / length;
    }
    const DoubleDouble tangent = sine / cosine;
    const DoubleDouble square = tangent * tangent;
    DoubleDouble sum;
    for (int k = terms; k-- > 0;) {
        const DoubleDouble term = DoubleDouble(1.0) / DoubleDouble(2.0 * k + 1.0);
        sum = term - square * sum;
    }
    return 16.0 * (tangent * sum).high;
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

/// The roots of a quadratic equation, for the intersections of lines with round things. Internal to the library.

#include <CorvexMaths/Numbers.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The roots of a t^2 + b t + c, for a positive a the greater one first. False, and nothing written, when they are
/// complex and their imaginary part does not vanish in rounding; if it does, both are the real part. NaN passes.
template <class T>
bool SolveQuadratic(T a, T b, T c, T (&roots)[2])
{
    const T inverse = T(1) / (T(2) * a);
    const T discriminant = b * b - T(4) * a * c;
    const T root = Numbers::SquareRoot(Numbers::Absolute(discriminant));
    if (discriminant < T(0)) {
        if (root * inverse != T(0)) return false;
        roots[0] = roots[1] = -b * inverse;
        return true;
    }
    roots[0] = inverse * (root - b);
    roots[1] = (-b - root) * inverse;
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

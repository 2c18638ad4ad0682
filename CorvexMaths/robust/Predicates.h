#pragma once

/// The exact signs of two determinants on which the geometry of the plane rests.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector2.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// Decisions about points of the plane that are right for every finite input, however near to the limit, and whatever
/// the size of the coordinates: large ones whose products overflow and denormal ones are decided exactly too.
///
/// The method is that of J. R. Shewchuk ("Adaptive precision floating-point arithmetic and fast robust geometric
/// predicates", 1997): a `double` with a bound on its error, and exact expansions where that bound does not suffice.
/// Where the size of the coordinates would make an expansion overflow or underflow, the sum is formed in one long
/// integer. Points of `float` are taken as `double`.
///
/// Rounding must be to nearest and denormal numbers must not be flushed to zero, as is the case unless a program
/// changes it. The sign is 0 where a coordinate is NaN or infinite.
template <class T>
class CORVEX_API Predicates
{
public:
    /// 1 where the way from a over b to c turns to the left, -1 where it turns to the right, and 0 where the three lie
    /// on a line or two of them coincide. Swapping two points changes the sign. A few nanoseconds; up to a microsecond
    /// for points that are nearly on a line.
    static int Orientation(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c);

    /// For a, b and c that turn to the left, 1 where d lies within the circle through them, 0 where it lies on the
    /// circle and -1 outside. Where they turn to the right the sign is the opposite, and swapping any two of the four
    /// changes it. On a line, the sign is that of the same determinant: it tells the side on which d lies. Some
    /// nanoseconds; some microseconds for a point that is nearly on the circle.
    static int InCircle(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& d);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, Predicates);

} // namespace Halmont::Orrin::CorvexMaths::Robust

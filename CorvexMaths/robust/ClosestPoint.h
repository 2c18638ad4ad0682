#pragma once

/// The point of a B-spline that is closest to a given one.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/robust/Status.h>
#include <CorvexMaths/splines/TBSpline.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// Of all points of a spline that which is closest to a given one: the least of all minima, not the next one to some
/// start.
///
/// Between two knots the curve is taken as a Bezier curve. A piece whose control points tell that it is farther than
/// what was found is left out; one along which the distance falls once at most and then rises holds one minimum, found
/// by Newton's method, that bisection keeps within the piece; others are halved (T. W. Sederberg and T. Nishita, 1990,
/// on the signs of Bernstein coefficients). The distance is right to some units in the last place of the coordinates;
/// where several points are equally close within 1e-13 of the distance, it is one of them.
///
/// The curve is that of de Boor's algorithm, without the tolerances of `TBSpline::Evaluate`, from parameter 0 to 1. All
/// components count, w too. Computed in `double`. The status and all else are as in `SplineLength`; `Degenerate` also
/// for an order above 500. Time is proportional to the number of knots for all but the pieces that come near.
template <class T, template <class> class V>
class CORVEX_API ClosestPoint : public Answer
{
public:
    /// The closest point.
    V<T> point = V<T>(TVector2<T>()) * T(0);
    /// Its parameter, from 0 to 1.
    T parameter = T(0);
    /// Its distance.
    T distance = T(0);

    /// No answer yet.
    ClosestPoint() = default;

    /// The point of the spline that is closest to the target.
    ClosestPoint(const TBSpline<T, V>& spline, const V<T>& target);
};

CORVEX_INSTANTIATE_SETS(extern, ClosestPoint);

} // namespace Halmont::Orrin::CorvexMaths::Robust

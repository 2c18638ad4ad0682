#pragma once

/// The length of B-splines, and points on them by length.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/robust/Status.h>
#include <CorvexMaths/splines/TBSpline.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace Kernels
{
struct Place;
}

/// The length of the arc of a spline, and its points and parameters by that length: evenly spaced to 1e-9 of the length
/// and better, where chords are short by the square of their step.
///
/// Between two knots the length is the integral of the speed, by the rule of Gauss and Legendre with 16 points; a piece
/// is halved until its two halves agree with it, so that bends and points without speed are found. A point at a length
/// is found by Newton's method, kept within its piece by bisection. The curve is that of de Boor's algorithm, without
/// the tolerances of `TBSpline::Evaluate`, from parameter 0 to 1. All components count, w too. Computed in `double`.
///
/// The spline is copied, so that it may change or go afterwards. `TooFewPoints`: no control points. `NotFinite`: a knot
/// or control point is NaN or infinite, or the length is beyond the greatest number. `Degenerate`: knots that are not
/// up to date or not there, or no more control points than the curve has between its ends: fewer than the order for
/// `Clamped` knots, no more than that for `Uniform` ones. A curve that is one point has the length 0, which is an
/// answer.
template <class T, template <class> class V>
class CORVEX_API SplineLength : public Answer
{
public:
    /// The length of the whole curve.
    T total = T(0);

    /// No answer yet.
    SplineLength();

    /// The length of a spline. Time is proportional to the number of its knots.
    explicit SplineLength(const TBSpline<T, V>& spline);

    /// The parameter, from 0 to 1, at a length from the start; beyond the ends that of the nearer one. 0 where there is
    /// no answer. Rounded to a number, a parameter tells points of a span no longer apart that is nearly as short as
    /// the rounding; `At` and `Sample` do.
    T ParameterAt(T length) const;

    /// The point at a length from the start; beyond the ends the nearer one. All zeros where there is no answer.
    V<T> At(T length) const;

    /// So many points at equal lengths along the curve, the first at its start and the last at its end; one point is
    /// the start. None where there is no answer.
    TPointSet<T, V> Sample(unsigned int count) const;

private:
    TBSpline<T, V> curve{1, Clamped, 0, 16};
    int exponent = 0;      ///< Lengths are kept in units of 2 to this power, about the size of the control polygon.
    TList<int> spans;      ///< The span of each piece.
    TList<double> starts;  ///< Where each starts, from the first knot of its span.
    TList<double> lengths; ///< The length up to each of these, and in all.

    /// The place at a length in units.
    Kernels::Place PlaceAt(double length) const;
};

CORVEX_INSTANTIATE_SETS(extern, SplineLength);

} // namespace Halmont::Orrin::CorvexMaths::Robust

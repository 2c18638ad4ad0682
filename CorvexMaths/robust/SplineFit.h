#pragma once

/// B-splines fitted to data by least squares.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/robust/Status.h>
#include <CorvexMaths/splines/TBSpline.h>

#include <cstdint>
#include <limits>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The B-spline of some order and number of control points that is nearest to a sequence of points in the sense of
/// least squares, open or closed.
///
/// Each point has a parameter, its share of the length of the chords from the first point on (of the chain with its
/// closing chord for a closed curve), and its distance is that to the curve at this parameter; its distance to the
/// curve as a whole is that or less. The chord length is nearly the length of the curve where data are dense, so that
/// the curve is run through evenly however unevenly it was measured; centripetal parameters, better where a curve is to
/// pass through a few points, would make it change speed wherever the density changes. Points that follow one another
/// in the same place share a parameter.
///
/// Knots are placed by the data: each span holds the same share of them (L. Piegl and W. Tiller, "The NURBS Book",
/// 1997, section 9.4). Where there are few, the first and the last span get more, up to what the averages of C. de Boor
/// ("A Practical Guide to Splines", 1978) give them where the curve passes through all the points; then each control
/// point has data of its own, which settle it. A closed curve has knots at the data, or halfway between them for an odd
/// order. The equations are banded, and are solved by QR decomposition in time proportional to the data, without normal
/// equations. All is computed in `double`, about the middle of the data and scaled to their size by a power of two, and
/// control points are rounded to T once.
///
/// The answer is `spline`, whose control points, order and knots hold the curve; any change of it through the list's
/// hooks puts evenly spaced knots in the place of the fitted ones. A closed one has `Uniform` type and repeats its
/// first control points at the end as `TBSpline::Wrap` does, an open one is `Clamped`. Copies keep the knots. In
/// `double` they run over a range of 2^24, from 0, so that the common tolerance by which `TBSpline::Evaluate` takes
/// spans for empty and stays clear of the right end is 6e-14 of it; in `float` they run from 0 to 1.
///
/// `TBSpline::Evaluate` also drops terms within that tolerance, 1e-6, of a control point's weight, so that it leaves
/// the fitted curve by up to some 1e-6 of the distance of the control points from the origin. `Evaluate` of this class
/// does not: it is de Boor's algorithm, right to rounding, and `rms` and `largest` are of what it gives. Its cost does
/// not grow with the number of control points but for the search of the span.
///
/// `TooFewPoints`: no points, or fewer different parameters than control points. `NotFinite`: a coordinate is NaN or
/// infinite, or their differences overflow. `Degenerate`: all points coincide, the order is below 2, there are fewer
/// control points than the order, the tolerance is not above 0, or the data leave a control point open.
/// `NotConverged`: no count keeps to the tolerance. In all these cases the spline has no control points.
template <class T, template <class> class V>
class CORVEX_API SplineFit : public Answer
{
    template <class Number>
    using IfCount = std::enable_if_t<std::is_integral_v<Number>, int>;
    template <class Number>
    using IfTolerance = std::enable_if_t<std::is_floating_point_v<Number>, int>;

public:
    /// The fitted curve.
    TBSpline<T, V> spline{1, Clamped, 0, 16};
    /// The root of the mean square of the distances.
    T rms = T(0);
    /// The largest distance.
    T largest = T(0);
    /// The parameters of the points, from 0 to 1: point i belongs to `Evaluate(parameters[i])`.
    TList<T> parameters;

    /// No answer yet.
    SplineFit() = default;

    /// The curve of `controlCount` control points, those that close it not counted twice, and an order (degree plus 1)
    /// of 2 or more. With `meetEnds` an open curve starts in the first point and ends in the last, to the bit; a closed
    /// one has no ends, and is the same with it as without.
    /// @param points The data, in their order along the curve.
    /// @param controlCount How many control points.
    /// @param order The degree plus 1; 4 for a cubic.
    /// @param closed Whether the curve returns to its start.
    /// @param meetEnds Whether an open curve starts and ends in the first and last point.
    template <class Count, IfCount<Count> = 0>
    SplineFit(const TPointSet<T, V>& points, Count controlCount, unsigned int order = 4, bool closed = false,
              bool meetEnds = false)
    {
        // Beyond the range of counts there are more than any set has points.
        constexpr unsigned int most = std::numeric_limits<unsigned int>::max();
        const bool isWithin = static_cast<std::uintmax_t>(controlCount) <= most;
        FitCount(points, controlCount > Count(0) ? (isWithin ? static_cast<unsigned int>(controlCount) : most) : 0u,
                 order, closed, meetEnds);
    }

    /// A curve that no point is farther from than `tolerance`, with as few control points as a search finds: their
    /// number is doubled until the curve keeps to the tolerance, and then bisected. `spline` tells the number.
    /// @param points The data, in their order along the curve.
    /// @param tolerance The greatest distance from the curve.
    /// @param order The degree plus 1; 4 for a cubic.
    /// @param closed Whether the curve returns to its start.
    /// @param meetEnds Whether an open curve starts and ends in the first and last point.
    template <class Tolerance, IfTolerance<Tolerance> = 0>
    SplineFit(const TPointSet<T, V>& points, Tolerance tolerance, unsigned int order = 4, bool closed = false,
              bool meetEnds = false)
    {
        FitTolerance(points, static_cast<double>(tolerance), order, closed, meetEnds);
    }

    /// The point of the curve at a parameter from 0 to 1, right to rounding; beyond these that of the nearer end. All
    /// zeros where there is no answer.
    V<T> Evaluate(T u) const;

private:
    void FitCount(const TPointSet<T, V>& points, unsigned int controlCount, unsigned int order, bool closed,
                  bool meetEnds);
    void FitTolerance(const TPointSet<T, V>& points, double tolerance, unsigned int order, bool closed, bool meetEnds);
};

CORVEX_INSTANTIATE_SETS(extern, SplineFit);

} // namespace Halmont::Orrin::CorvexMaths::Robust

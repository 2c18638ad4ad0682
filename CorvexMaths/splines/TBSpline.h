#pragma once

/// B-spline curves over control points, and their least-squares fit to data.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/pointsets/TPointSet.h>

namespace Halmont::Orrin::CorvexMaths
{

/// How the knots of a spline are built.
enum KnotType : unsigned int
{
    /// Evenly spaced from the first knot, 0, to the last, 1: knot i of k knots is i / (k - 1).
    Uniform = 0,
    /// The first `order` knots 0, those from the control point count n on 1, and knot i between them
    /// (i - order + 1) / (n - order + 1). With n not above the order there are zeros and ones alone.
    Clamped = 1
};

/// A non-rational B-spline curve. Its control points are the elements of the point set that it is: they are edited as
/// any list is, and each edit that fires a hook builds the knots anew.
///
/// The basis functions follow from the recursion of M. G. Cox ("The numerical evaluation of B-splines", 1972) and C. de
/// Boor ("On calculating with B-splines", 1972). Two tests with the common tolerance belong to it, absolute and
/// inclusive: a knot span within it counts as empty, and a term within it is dropped, so that the basis functions need
/// not sum to 1 exactly.
///
/// Points far from the origin suffer by that, as what is missing of the sum draws the curve towards the origin: at 100
/// times its size away, a curve is off by up to 2.4e-4 of its size. Subtract the centre from the control points, and
/// add it to what is evaluated.
///
/// A parameter u runs from 0 to 1. With `Uniform` knots it is mapped to the knots from index `order` to the control
/// point count, so that the curve meets neither its first nor its last control point; with `Clamped` knots it is mapped
/// to all of them. From the right end on it is taken inside by the common tolerance, on the scale of the knots, so that
/// the curve ends next to its last control point and not at it. There is no clamp at the left end.
///
/// Since each addition builds all knots, appending n points one by one costs in proportion to the square of n; a range
/// is added at once. What fires no hook or only `Cleared` (`RemoveAt` without order kept, removal of all from an end)
/// leaves the knots as they were; `Clear` builds them once more for the old points. They stay until the next hook or
/// setter.
///
/// Preconditions, checked in debug builds: an order of at least 1; and for whatever evaluates the curve at least one
/// control point, knots that are up to date, and a type that is one of the two. A spline of any other type is built and
/// edited like the rest, but has no knots.
///
/// Where memory runs out for the knots, the allocator's exception passes. An edit has then taken place, and the knots
/// are those of before; `SetOrder` and `SetType` leave all as it was, and so does a length. An evaluation that misses
/// knots it needs gives zeros, a length of 0 and no samples. What builds up a result in steps (an assignment by copy,
/// `Wrap`, `Fit`, points sampled into a set) leaves those taken so far, in a spline or set that can be used: repeat it.
///
/// Evaluation is not const and two threads may not evaluate one spline: the basis functions are left in `coefficients`.
template <class T, template <class> class V>
class CORVEX_API TBSpline : public TPointSet<T, V>
{
protected:
    /// The number of knots: the order plus the control point count of the last time they were built.
    unsigned int knotCount;

    /// The number of basis functions of order 1, and of `coefficients`: one less than the knots.
    unsigned int coefficientCount;

    /// The knots, `knotCount` of them, not decreasing, from 0 to 1. Empty for a type that is neither of the two.
    TList<T> knots;

    /// The basis functions at the last parameter evaluated; the first of them, as many as control points, are of the
    /// full order.
    TList<T> coefficients;

    /// How the knots are built.
    KnotType type;

    /// The polynomial degree plus 1.
    unsigned int order;

public:
    /// An empty spline of an order of at least 1. The sizes are those of the list of control points; `stepSize` is the
    /// grow size of the knots and coefficients too, for which stepSize + order + 2 and stepSize + order + 1 slots are
    /// allocated. There are no knots until the first control point, and both counts are 0.
    /// @param splineOrder The degree plus 1; 4 for a cubic.
    /// @param knotType `Clamped` to reach the end points, `Uniform` to be closed by Wrap.
    /// @param initialCapacity How many control points there is room for.
    /// @param stepSize By how many the room grows at least.
    TBSpline(unsigned int splineOrder, KnotType knotType, unsigned int initialCapacity, unsigned int stepSize);

    /// A spline of an order of at least 1 with copies of the points of a set for control points; its knots are built.
    /// Knots and coefficients get the grow size of the set. An empty set gives a spline without control points.
    /// @param points The control points.
    /// @param splineOrder The degree plus 1; 4 for a cubic.
    /// @param knotType `Clamped` to reach the end points, `Uniform` to be closed by Wrap.
    TBSpline(const TPointSet<T, V>& points, unsigned int splineOrder, KnotType knotType);

    /// A spline of an order of at least 1 with copies of the points of a `std::vector`, a `std::span`, a list, an array
    /// or another class with `data()` and `size()`, of exactly this type of point, for control points; its knots are
    /// built.
    template <class Range, class = IfRange<Range, V<T>, TPointSet<T, V>>>
    TBSpline(const Range& points, unsigned int splineOrder, KnotType knotType)
        : TBSpline(TPointSet<T, V>(points), splineOrder, knotType)
    {}

    /// Takes over control points, box, knots and coefficients of another, which is left without any of them and can be
    /// edited like a new one of its order and type. No hook fires.
    TBSpline(TBSpline&& other) noexcept;

    /// A copy, knots and coefficients as they stand, up to date or not; the box is calculated anew.
    TBSpline(const TBSpline& other);

    /// Assigns the point set, under the hooks of this spline, then all else as it stands in the other. A spline
    /// assigned to itself ends without control points and without knots.
    TBSpline& operator=(const TBSpline& other);

    /// Takes over control points, box, knots and coefficients of another, with its order and type; the other is left
    /// without any of them and can be edited like a new one. No hook fires, unless the two are of different classes, as
    /// in the assignment of a point set. A spline moved to itself stays as it is.
    TBSpline& operator=(TBSpline&& other);

    /// Frees knots, coefficients and control points; no hook fires.
    ~TBSpline() override;

    /// The point of the curve at u: the sum over the control points, in their order, of the basis function times the
    /// point, from zeros in all components, w included. With w of 1 in all control points it comes out as the sum of
    /// the functions, about 1.
    ///
    /// A u of 1 or more gives the point just inside the right end. A u below 0 is not clamped: with `Clamped` knots no
    /// function reaches there and all components are 0; with `Uniform` knots the functions fade out gradually. A NaN
    /// gives NaN (zeros at an order of 1). A control point that is not finite enters every sum, even times 0.
    ///
    /// At least one control point, knots that are up to date and a type that is one of the two are preconditions.
    /// Allocates nothing, and overwrites `coefficients`. Every knot and control point is looked at, so that the cost
    /// grows with their number, but only `order` of them as a rule take part in the arithmetic.
    ///
    /// @code
    /// TBSpline<double, TVector2> spline(controlPoints, 4, Clamped); // a cubic
    /// const TVector2<double> middle = spline.Evaluate(0.5);
    /// @endcode
    V<T> Evaluate(T u);

    /// Replaces the contents of `out` by points of the curve at even steps of the parameter.
    ///
    /// Even with `byLength` the distances between them are not equal, for a parameter is not a length: `step` is only
    /// turned into the parameter step that covers as great a share of 0 to 1 as it is of the whole length.
    /// `Robust::SplineLength` finds the parameters of equal distances.
    ///
    /// The points are those at u of 0 and on in steps as long as u is below 1, and then at 1, however near the last
    /// step came to it. `step` is a difference of parameters, or, where `byLength`, a distance along the curve, which
    /// is divided by GetLength in steps of 0.01, at most 1. A step of 1 or more, or by length one of at least that
    /// length, gives the two ends alone. A step of 0 leaves `out` empty, but by length not on a curve whose length is
    /// exactly 0: that gives its ends. `out` is cleared, keeping its block, and appended to, with its hooks; it must
    /// not be null, nor this spline.
    ///
    /// The step must not be below 0: with a negative one the loop would not end, as with one so small that adding it to
    /// a parameter below 1 changes nothing. One of NaN gives the two ends alone.
    ///
    /// Knots and control points are looked at once, unless `out` is of a class of your own, whose hooks might change
    /// them: each point then takes a time that grows with the order alone.
    /// @param[out] out The points.
    /// @param step The difference of the parameters of neighbours, or a length.
    /// @param byLength Whether `step` is a length.
    void Evaluate(TPointSet<T, V>* out, T step, bool byLength);

    /// The polynomial degree plus 1.
    unsigned int GetOrder() const { return order; }
    /// How the knots are built.
    KnotType GetType() const { return type; }

    /// Sets the order, which is at least 1, and builds the knots anew for the control points there are.
    void SetOrder(unsigned int splineOrder);
    /// Sets the type and builds the knots anew for the control points there are; for a type that is neither of the two
    /// they are emptied.
    void SetType(KnotType knotType) { BuildKnots(order, knotType); }

    /// Replaces the control points by the `controlCount` that fit a sequence of data best by least squares.
    ///
    /// Give it as many control points as data: with fewer the inner knots gather near the start, and the curve misses
    /// the rest (2000 points on a wave of 40 mm, fitted by 40 control points, are missed by up to 22 mm).
    /// `Robust::SplineFit` spreads the knots over the data and serves for any number of them.
    ///
    /// The method is the singular value decomposition of the full design matrix. The data get centripetal parameters
    /// (E. T. Y. Lee, "Choosing nodes in parametric curve interpolation", 1989). The curve gets clamped knots, of which
    /// each inner one is the mean of the order - 1 parameters before its own index, even where the data are many more
    /// than the knots.
    ///
    /// With `endConditions` two equations ask for second derivatives of 0 at both ends, and of 1 in a fourth component:
    /// their right sides are default vectors, which are appended to `points`, with its hooks, and stay there; a second
    /// fit would take them for data. The second derivatives are those of the formula one order lower, 0 throughout for
    /// an order of 3 or less, where the two equations change nothing.
    ///
    /// After success the type is what it was. A `Uniform` spline is closed by `Wrap`, which builds its knots anew;
    /// where that does nothing, and on a `Clamped` spline, the averaged knots stay until the next hook or setter puts
    /// evenly spaced ones in their place, which change the curve. The box is that of default vectors.
    ///
    /// There is no result. Where the decomposition does not converge or the data leave a control point undetermined (a
    /// singular value zero within the common tolerance, as with coinciding data or NaN), the control points are default
    /// vectors and the type is `Clamped`; in the latter case `points` has its two vectors more, in the former it is
    /// untouched.
    ///
    /// Preconditions: an order of at least 2, one data point at least, no more control points than data, `points` not
    /// this spline. With a controlCount of 0 the spline ends empty. Costs rise with the number of data times the square
    /// of that of control points.
    /// @param[in,out] points The data; two are appended with `endConditions`.
    /// @param controlCount How many control points; at most as many as data.
    /// @param endConditions Whether the ends are asked to be straight.
    void Fit(TPointSet<T, V>& points, unsigned int controlCount, bool endConditions);

    /// Appends copies of the first `order` control points, one by one, with hooks, so that the knots are built `order`
    /// times; does nothing unless there are more control points than the order. It closes a curve with `Uniform` knots,
    /// and only such: one with `Clamped` knots gets the points and stays open. A second call appends again.
    void Wrap();

    /// The length of the chords over the curve from one parameter to another in steps of `step`, with a shorter chord
    /// at the end where the steps do not meet it. All components count, w too. But for rounding it is not above the
    /// length of the arc, and comes nearer to it with smaller steps. With `end` before `start`, or nearer than a step,
    /// it is the one chord between the two; with both the same it is 0 but for rounding. Overwrites `coefficients`.
    ///
    /// The step must be above 0: with any other the loop would not end, as with one so small that adding it to a
    /// parameter changes nothing. The preconditions of Evaluate hold here too. Knots and control points are
    /// looked at once; each point then takes a time that grows with the order alone.
    /// @param start, end Parameters, from 0 to 1.
    /// @param step The difference of the parameters of neighbouring chords, such as 0.001.
    T GetLength(T start, T end, T step);
    /// The length of the chords over the whole curve, from 0 to 1 in steps of `step`, which is above 0. All components
    /// count, w too. The preconditions of Evaluate hold here too.
    T GetLength(T step) { return GetLength(T(0), T(1), step); }

protected:
    /// Extends the box by the point, as long as the point set keeps one, and builds the knots anew.
    void ElementAdded(V<T>& point) override;
    /// Extends the box by `pointCount` points, as long as the point set keeps one, and builds the knots anew, once.
    void ElementsAdded(V<T>* points, unsigned int pointCount) override;
    /// Recalculates the box over the slots in use at this moment, as long as the point set keeps one, and builds the
    /// knots anew.
    void ElementRemoved(V<T>& point) override;
    /// Recalculates the box over the slots in use at this moment, as long as the point set keeps one, and builds the
    /// knots anew, once.
    void ElementsRemoved(V<T>* points, unsigned int pointCount) override;

private:
    /// Takes over what a spline has besides the control points.
    void TakeKnots(TBSpline& other) noexcept;

    /// Builds the knots for the control points there are, and sets the coefficients to 0.
    void AssignPersistentMembers() { BuildKnots(order, type); }

    /// Sets order and type and builds the knots for the control points there are; where memory runs out, neither.
    void BuildKnots(unsigned int newOrder, KnotType newType);

    /// Whether an evaluation finds the knots it reads. Debug builds check here what it requires.
    bool CanEvaluate() const;

    /// The parameter on the scale of the knots, kept inside the right end.
    T MapToKnots(T u) const;

    /// Sets the coefficients to the basis functions of the full order.
    void CalculateCoefficients(T u) { CalculateCoefficients(u, order); }
    /// Sets the coefficients to the basis functions of the order `levels`; 0 gives those of order 1.
    void CalculateCoefficients(T u, unsigned int levels);

    /// Writes, for each control point, the second derivative of its basis function as the fit uses it: by the
    /// formula of order `order` - 1, so that it is 0 throughout up to order 3, where the formula is left out. The order
    /// is at least 2. The coefficients are left at the order `order` - 2.
    void GetSecondDerivatives(T u, T* out);

    /// The equations of the fit: a row of basis functions for each parameter, then those of the two ends.
    void FillDesignMatrix(const TList<T>& parameters, unsigned int controlCount, bool endConditions,
                          TMatrixMxN<T>* matrix);
};

CORVEX_INSTANTIATE_SETS(extern, TBSpline);

} // namespace Halmont::Orrin::CorvexMaths

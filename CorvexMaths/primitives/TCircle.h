#pragma once

/// Circles in the plane and in space: intersection with lines, circles through points and about points.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A circle in the plane, for T of `float` and `double`: a plain value of three scalars. Lengths and tolerances are
/// absolute, in the caller's unit.
template <class T>
struct TCircle2
{
    /// The centre.
    TVector2<T> centre;
    /// The radius. Nothing keeps it from being negative; the intersections square it.
    T radius = T(0);

    /// All zero.
    TCircle2() = default;
    /// The circle of a radius about (x, y): the radius comes first.
    TCircle2(const T& size, const T& x, const T& y) : centre(x, y), radius(size) {}
    /// The circle of a radius about a point: the radius comes first.
    TCircle2(const T& size, const TVector2<T>& middle) : centre(middle), radius(size) {}

    /// Makes this the circle through three points. False, and the circle as it was, only where the determinant of the
    /// points (four times the signed area of their triangle) is exactly 0, as with two equal points; there is no
    /// tolerance, so that points nearly on one line give a huge circle, and NaN gives true and NaN. The points may be
    /// this circle's centre.
    [[nodiscard]] bool Fit(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c);

    /// Whether a point is no further from the centre than the radius plus the tolerance. Squares are compared,
    /// inclusively, so that a sum below 0 counts like its absolute value; NaN is outside.
    bool Contains(const TVector2<T>& p, T tolerance) const;
    /// Whether each of the first `count` points is no further from the centre than the radius plus the tolerance; true
    /// for a `count` of 0. Squares are compared, inclusively, so that a sum below 0 counts like its absolute value; NaN
    /// is outside. Stops at the first outsider. `count` must not be above the number of points.
    /// @param points The points.
    /// @param count How many of them, from the first.
    /// @param tolerance By which the radius is widened.
    bool Contains(const TList<TVector2<T>>& points, unsigned int count, T tolerance) const;

    /// Where a line meets the circle: `p1` lies further along the line's direction than `p2`, and a tangent gives two
    /// equal points. False, and nothing written, when the roots of the quadratic are complex and the imaginary part
    /// does not vanish in rounding; there is no tolerance. A line without a direction gives true and NaN, as NaN does.
    /// The direction need not be of unit length. Neither pointer may be null, nor `p1` part of the line.
    /// @param line The line.
    /// @param[out] p1 The hit that is further along the line.
    /// @param[out] p2 The other one.
    [[nodiscard]] bool IntersectWith(const TLine2<T>& line, TVector2<T>* p1, TVector2<T>* p2) const;
    /// Where the line that carries an edge meets the circle: `p1` lies further along the edge than `p2`, and a tangent
    /// gives two equal points. The result says nothing of the edge itself: `within1` and `within2`, each of which may
    /// be null, receive whether `p1` and `p2` are within the edge, by `TEdge2::IsWithin`. False, and nothing written,
    /// when the roots of the quadratic are complex and the imaginary part does not vanish in rounding; there is no
    /// tolerance. An edge without length gives true and NaN, as NaN does. `p1` and `p2` must be neither null nor an end
    /// of the edge.
    /// @param edge The edge, whose line counts.
    /// @param[out] p1 The hit that is further along the edge.
    /// @param[out] p2 The other one.
    /// @param[out] within1 Whether `p1` is within the edge; may be null.
    /// @param[out] within2 Whether `p2` is; may be null.
    [[nodiscard]] bool IntersectWith(const TEdge2<T>& edge, TVector2<T>* p1, TVector2<T>* p2, bool* within1,
                                     bool* within2) const;

    /// Grows this circle to the minimum bounding circle of the points, incrementally in their given order (Welzl, 1991,
    /// unrolled into three nested scans, without a shuffle). The circle starts from what it holds: only one that was
    /// default-constructed ends as the minimum, and one that holds all points stays. A point counts as outside beyond
    /// the common tolerance; where two points span the circle, points up to 1e-4 (the `float` nearest to it, absolute)
    /// beyond its rim are let in and not looked at again, so that the result may miss points by a few times that. No
    /// points leave the circle as it was, and one point outside it gives that point with a radius of 0.
    ///
    /// Each outsider of a scan starts the next scan over all points before it, so that time is linear for points in
    /// random order and up to cubic for an adverse one. Nothing is allocated. Where all points so far are exactly
    /// collinear with two that must lie on the circle, and those two do not span them, the search goes on from radius 0
    /// at the origin, and the result may then miss points; remove such points beforehand. The same can come of
    /// coordinates so large that rounding moves the rim by more than the tolerance, in `float` from some tens on. With
    /// a point of NaN the result means nothing, NaN or not.
    void MinimumBoundingCircle(const TList<TVector2<T>>& points);

private:
    /// The second level: makes this a circle about the first `count` points that passes through q.
    void MinimumBoundingCircle(const TList<TVector2<T>>& points, unsigned int count, const TVector2<T>& q);
    /// The third level: makes this the smallest circle through p and q about the first `count` points.
    void MinimumBoundingCircle(const TList<TVector2<T>>& points, unsigned int count, const TVector2<T>& p,
                               const TVector2<T>& q);

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCircle2);
};

/// A circle in space, for T of `float` and `double`: a plain value of seven scalars. Lengths and tolerances are
/// absolute, in the caller's unit.
template <class T>
struct TCircle3
{
    /// The centre.
    TVector3<T> centre;
    /// The normal of the circle's plane: of unit length after a fit, else as it was given.
    TVector3<T> normal;
    /// The radius.
    T radius = T(0);

    /// All zero.
    TCircle3() = default;
    /// The circle of a radius about a point: the radius comes first. The normal is copied and not normalised.
    TCircle3(const T& size, const TVector3<T>& middle, const TVector3<T>& axis)
        : centre(middle), normal(axis), radius(size)
    {}

    /// Makes this the circle through three points, computed about their centroid in their own plane. The normal is that
    /// of (a - b) x (c - b). False when the squared length of that product is exactly 0, by underflow too, or when
    /// twice the area of the triangle is zero within the tolerance, inclusively, or NaN; the normal has then been
    /// replaced all the same, in the first case by the product as it is, while centre and radius stay. The points may
    /// be parts of this circle.
    /// @param a, b, c The points.
    /// @param tolerance Twice the area up to which they are on a line.
    [[nodiscard]] bool Fit(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, T tolerance);

    /// Fits a circle to points.
    ///
    /// `tolerance` counts against the square of the radius and not against a length: the steps end when the radius
    /// times its change falls below it, so that with a radius of 0.001 a tolerance of 1e-6 ends them at the first. For
    /// a relative accuracy e give e times the square of the radius. `Robust::CircleFit` needs no tolerance.
    ///
    /// The method is a plane by orthogonal fit, in it an algebraic fit, from which Gauss-Newton steps on the
    /// distances to the rim follow, at most `iterations` of them.
    ///
    /// Fewer than three points give false and write nothing. Three points write 0 through `spread` and `squares` and
    /// give what the form of three points gives, `tolerance` then being that on twice the area. A failed plane fit, as
    /// with a NaN among the points, gives false and writes nothing. In every other case the circle and the residuals
    /// are written: the steps end when a system cannot be solved, when the measure of a step (the dot product of the
    /// stepped parameters with the step: signed) is below `tolerance`, or when it has not become less than that of the
    /// step before. The result is false when the last system could not be solved or `iterations` ran out; the circle is
    /// then the best so far.
    ///
    /// `squares` receives the sum of the squared distances to the rim and `spread` the greatest less the least signed
    /// one, both from before the last step; either may be null. Where no step began, `squares` is 0 and `spread`
    /// meaningless (-2e30), and after 0 iterations the radius is the third unknown of the algebraic fit, which is not
    /// yet a radius. Each step decomposes a matrix of as many rows as points and 3 columns. Where memory runs out, the
    /// circle stays as it was.
    /// @param points Three or more.
    /// @param[out] spread The greatest less the least signed distance from the rim; may be null.
    /// @param[out] squares The sum of squared distances from the rim; may be null.
    /// @param tolerance Ends the steps; measured against the square of the radius.
    /// @param iterations How many steps at most.
    [[nodiscard]] bool Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares, T tolerance,
                           unsigned int iterations);

    /// Where a line meets the disc that the circle bounds, by a normalised copy of the normal. False, and nothing
    /// written, when the cosine between normal and line lies strictly within the common tolerance of 0. Else the point
    /// where the line passes through the plane is written, and the result is whether it is in the disc, rim included
    /// and without tolerance: after false it holds the point outside. NaN is outside. `point` must be neither null nor
    /// this circle's centre.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* point) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCircle3);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TCircle2);
CORVEX_INSTANTIATE_SCALARS(extern, struct, TCircle3);

} // namespace Halmont::Orrin::CorvexMaths

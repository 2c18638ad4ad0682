#pragma once

/// Infinite lines in the plane and in space: a point and a direction.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A line in the plane, for T of `float` and `double`: a plain value of four scalars.
template <class T>
struct TLine2
{
    /// A point on the line.
    TVector2<T> origin;
    /// The unit direction, or the zero vector if the line was given none.
    TVector2<T> direction;

    /// All zero: a line without a direction.
    TLine2() = default;
    /// The line through a point along a vector, which is normalised; the zero vector stays zero.
    TLine2(const TVector2<T>& through, const TVector2<T>& along) : origin(through), direction(along)
    {
        direction.Normalise();
    }
    /// The same from the four scalars.
    TLine2(const T& x, const T& y, const T& dx, const T& dy) : TLine2(TVector2<T>(x, y), TVector2<T>(dx, dy)) {}

    /// Makes this the line from a through b, with a as its origin. False, and the line as it was, only when the two are
    /// exactly equal; there is no tolerance.
    bool Fit(const TVector2<T>& a, const TVector2<T>& b);

    /// The point at a parameter: a signed distance from the origin, as the direction is a unit vector.
    TVector2<T> Evaluate(const T& t) const { return origin + direction * t; }
    /// The y of the line at x, from slope and intercept; infinite or NaN on a vertical line.
    T EvaluateCart(const T& x) const
    {
        const T slope = GetGrad();
        return GetIntercept(slope) + x * slope;
    }
    /// The slope, unguarded: a vertical line gives an infinity or NaN.
    T GetGrad() const { return direction.y / direction.x; }
    /// The y at x = 0, unguarded like the slope.
    T GetIntercept() const { return GetIntercept(GetGrad()); }
    /// The y at x = 0 for a slope that the caller already has.
    T GetIntercept(const T& grad) const { return origin.y - origin.x * grad; }
    /// The perpendicular distance of a point, never negative; 0 when there is no direction.
    T DistanceToPoint(const TVector2<T>& p) const
    {
        const TVector2<T> a = p - origin;
        return Numbers::Absolute(a.x * direction.y - a.y * direction.x);
    }

    /// Where two lines cross. A line is vertical when the x of its direction is zero within the tolerance, inclusively.
    /// Two vertical lines never cross, and with one of them the point has its x and the other line's y there. Else the
    /// lines are solved in slope and intercept form by pivoted LU decomposition, unless their slopes differ by no more
    /// than the common tolerance, whatever tolerance is passed. A false result leaves the point untouched.
    bool IntersectWith(const TLine2<T>& other, TVector2<T>* point, T tolerance) const;

    /// Where the line meets a circle; see `TCircle2::IntersectWith`.
    bool IntersectWith(const TCircle2<T>& circle, TVector2<T>* p1, TVector2<T>* p2) const;
};

/// A line in space, for T of `float` and `double`: a plain value of six scalars.
template <class T>
struct TLine3
{
    /// A point on the line.
    TVector3<T> origin;
    /// The unit direction, or the zero vector if the line was given none.
    TVector3<T> direction;

    /// All zero: a line without a direction.
    TLine3() = default;
    /// The line through a point along a vector, which is normalised; the zero vector stays zero.
    TLine3(const TVector3<T>& through, const TVector3<T>& along) : origin(through), direction(along)
    {
        direction.Normalise();
    }
    /// The same from the six scalars.
    TLine3(const T& x, const T& y, const T& z, const T& dx, const T& dy, const T& dz)
        : TLine3(TVector3<T>(x, y, z), TVector3<T>(dx, dy, dz))
    {}

    /// Makes this the line from a through b, with a as its origin. False, and the line as it was, only when the two are
    /// exactly equal; there is no tolerance.
    bool Fit(const TVector3<T>& a, const TVector3<T>& b);
    /// Makes this the line of least squared distance from the points: through their centroid, along the right singular
    /// vector of the largest singular value of the centred points, of the lowest index on a tie (K. Pearson, 1901).
    /// `spread` receives the diameter of the smallest cylinder about the line that holds all points, and to `squares`
    /// the squared distances are added: it is not set to 0 first. Either may be null. Distances are those of
    /// `DistanceToPoint` within the common tolerance.
    ///
    /// Exactly 2 points set both to 0 and are fitted as by the form above. False for fewer than 2 points, with nothing
    /// written. Of more, false when the decomposition does not converge within its limit of 30 or all points coincide;
    /// the origin is then the centroid and nothing else is written. Time and memory in proportion to the number of
    /// points.
    bool Fit(TPointSet<T, TVector3>& points, T* spread, T* squares);

    /// The point at a parameter: a signed distance from the origin, as the direction is a unit vector.
    TVector3<T> Evaluate(const T& t) const { return origin + direction * t; }
    /// The perpendicular distance of a point, by projection on the perpendicular through it rather than by the length
    /// of one cross product. 0 when every component of the unnormalised perpendicular is zero within the tolerance,
    /// inclusively: a point on the line, or a line without a direction.
    T DistanceToPoint(const TVector3<T>& p, T tolerance) const;

    /// The points where two lines come nearest, each on its own line; both directions are taken to be unit. Lines whose
    /// squared sine is zero within the tolerance, inclusively, are parallel and give this origin and its foot on the
    /// other. Always true. Neither output may be null.
    bool ClosestPoints(const TLine3<T>& other, TVector3<T>* onThis, TVector3<T>* onOther, T tolerance) const;

    /// Where the line meets a triangle, from either side (T. Möller, B. Trumbore, 1997). False when the determinant
    /// lies strictly within the common tolerance of 0, whatever tolerance is passed, or when a barycentric coordinate
    /// lies outside by more than the tolerance; a hit exactly at the tolerance is kept. The point is rebuilt from the
    /// barycentric coordinates, so it lies in the triangle's plane; `distance`, which may be null, receives the signed
    /// parameter along the line. Hits behind the origin count. A false result leaves both outputs untouched.
    bool IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                       TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the back face culled: only a line that runs against the normal, (corner1 - corner0) x
    /// (corner2 - corner0), hits. A determinant exactly at the common tolerance still does.
    bool IntersectWithBFC(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                          TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the front face culled: only a line that runs along the normal hits. A determinant exactly at minus
    /// the common tolerance still does.
    bool IntersectWithFFC(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                          TVector3<T>* point, T* distance, T tolerance) const;

    /// Where the line meets a box; see `TBox::IntersectWith`.
    bool IntersectWith(const TBox<T>& box, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const;

    /// Where the line meets a sphere; see `TSphere::IntersectWith`.
    bool IntersectWith(const TSphere<T>& sphere, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const;
    /// Where the line meets a triangle, from either side: the form above with the triangle's corners.
    bool IntersectWith(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the back face culled.
    bool IntersectWithBFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the front face culled.
    bool IntersectWithFFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a plane; see `TPlane::IntersectWith`.
    bool IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const;
};

extern template struct TLine2<float>;
extern template struct TLine2<double>;
extern template struct TLine3<float>;
extern template struct TLine3<double>;

} // namespace Halmont::Orrin::CorvexMaths

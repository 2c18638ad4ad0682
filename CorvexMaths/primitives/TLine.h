#pragma once

/// Infinite lines in the plane and in space: a point and a direction.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A line in the plane, for T of `float` and `double`: a plain value of four scalars. It has no ends. Tolerances are
/// absolute. The operations take the direction to be of unit length or zero, as the constructors leave it.
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
    /// The line through (x, y) along (dx, dy), which is normalised; the zero vector stays zero.
    TLine2(const T& x, const T& y, const T& dx, const T& dy) : TLine2(TVector2<T>(x, y), TVector2<T>(dx, dy)) {}

    /// Makes this the line from a through b, with a as its origin. False, and the line as it was, only when the two are
    /// exactly equal; there is no tolerance, so points one rounding step apart make a line. The points may be parts of
    /// this line.
    [[nodiscard]] bool Fit(const TVector2<T>& a, const TVector2<T>& b);

    /// The point origin + direction * t: t is a signed distance from the origin, as the direction is a unit vector. The
    /// origin for every finite t when there is no direction.
    TVector2<T> Evaluate(const T& t) const { return origin + direction * t; }
    /// The y of the line at x, (origin.y - origin.x * slope) + x * slope; infinite or NaN on a vertical line and
    /// without a direction.
    T EvaluateCart(const T& x) const
    {
        const T slope = GetGrad();
        return GetIntercept(slope) + x * slope;
    }
    /// The slope, direction.y / direction.x, unguarded: a vertical line gives an infinity, one without a direction NaN.
    T GetGrad() const { return direction.y / direction.x; }
    /// The y at x = 0, origin.y - origin.x * slope, unguarded like the slope: infinite or NaN on a vertical line and
    /// without a direction.
    T GetIntercept() const { return GetIntercept(GetGrad()); }
    /// The y at x = 0 for a slope that the caller already has, origin.y - origin.x * grad. The line's own direction is
    /// not looked at.
    T GetIntercept(const T& grad) const { return origin.y - origin.x * grad; }
    /// The perpendicular distance of a point, |cross(p - origin, direction)|: never negative, and 0 when there is no
    /// direction.
    T DistanceToPoint(const TVector2<T>& p) const
    {
        const TVector2<T> a = p - origin;
        return Numbers::Absolute(a.x * direction.y - a.y * direction.x);
    }

    /// Where two lines cross. A line is vertical when the x of its direction is zero within the tolerance, inclusively,
    /// as that of a line without a direction is. Two vertical lines never cross, coincident ones neither, and with one
    /// of them the point has its x and the other line's y there. Else the lines are solved in slope and intercept form
    /// by pivoted LU decomposition. False when their slopes differ by no more than the common tolerance, whatever
    /// tolerance is passed. NaN, and a slope that overflows, are not rejected and give true with NaN.
    ///
    /// A false result leaves the point untouched. `point` must not be null; it may be part of either line.
    [[nodiscard]] bool IntersectWith(const TLine2<T>& other, TVector2<T>* point, T tolerance) const;

    /// Where the line meets a circle: `p1` lies further along the line's direction than `p2`, and a tangent gives two
    /// equal points. False, and nothing written, when the roots of the quadratic are complex and the imaginary part
    /// does not vanish in rounding; there is no tolerance. A line without a direction gives true and NaN, as NaN does.
    /// Neither pointer may be null, nor `p1` part of the line. The same as `TCircle2::IntersectWith`.
    [[nodiscard]] bool IntersectWith(const TCircle2<T>& circle, TVector2<T>* p1, TVector2<T>* p2) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TLine2);
};

/// A line in space, for T of `float` and `double`: a plain value of six scalars. It has no ends: hits behind the origin
/// count. Tolerances are absolute. The operations take the direction to be of unit length or zero, as the constructors
/// leave it.
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
    /// The line through (x, y, z) along (dx, dy, dz), which is normalised; the zero vector stays zero.
    TLine3(const T& x, const T& y, const T& z, const T& dx, const T& dy, const T& dz)
        : TLine3(TVector3<T>(x, y, z), TVector3<T>(dx, dy, dz))
    {}

    /// Makes this the line from a through b, with a as its origin. False, and the line as it was, only when the two are
    /// exactly equal; there is no tolerance, so points one rounding step apart make a line. The points may be parts of
    /// this line.
    [[nodiscard]] bool Fit(const TVector3<T>& a, const TVector3<T>& b);
    /// Makes this the line of least squared distance from the points.
    ///
    /// In `spread` and `squares`, distances up to 1e-6 count as 0, whatever the unit: in metres that can be the whole
    /// form error of a part. Fit in millimetres, or use `Robust::LineFit`.
    ///
    /// The line runs through their centroid, along the right singular
    /// vector of the largest singular value of the centred points, of the lowest index on a tie (Pearson, 1901).
    /// `spread` receives the diameter of the smallest cylinder about the line that holds all points, and to `squares`
    /// the squared distances are added: it is not set to 0 first. Either may be null. Distances are those of
    /// `DistanceToPoint` within the common tolerance, which makes very small ones 0.
    ///
    /// Exactly 2 points set both to 0 and give the line from the first through the second, or false, with the line as
    /// it was, when they are exactly equal. False for fewer than 2 points, with nothing written. Of more, false when
    /// the decomposition does not converge within the limit of 30 that `TMatrixMxN::SVD` is given or no singular value
    /// is above 0, as of points that all coincide; the origin is then the centroid and nothing else is written. With a
    /// NaN among them it does not converge; of 2 points it gives true and NaN. The points stay as they are. Time and
    /// memory in proportion to their number; where memory runs out, the line stays as it was.
    /// @param points Two or more.
    /// @param[out] spread The diameter of the least cylinder about the line; may be null.
    /// @param[in,out] squares The sum of squared distances is added to it; may be null.
    [[nodiscard]] bool Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares);

    /// The point origin + direction * t: t is a signed distance from the origin, as the direction is a unit vector. The
    /// origin for every finite t when there is no direction.
    TVector3<T> Evaluate(const T& t) const { return origin + direction * t; }
    /// The perpendicular distance of a point, by projection on the perpendicular through it rather than by the length
    /// of one cross product. 0 when every component of the unnormalised perpendicular is zero within the tolerance,
    /// inclusively: a point on the line or nearer to it than the tolerance, or a line without a direction.
    T DistanceToPoint(const TVector3<T>& p, T tolerance) const;

    /// The points where two lines come nearest, each on its own line; both directions are taken to be unit. Lines whose
    /// squared sine is zero within the tolerance, inclusively, are parallel and give this origin and its foot on the
    /// other. Always true. Neither output may be null, nor `onThis` part of the other line.
    /// @param other The other line.
    /// @param[out] onThis The point of this line.
    /// @param[out] onOther The point of the other line.
    /// @param tolerance The squared sine up to which lines are parallel.
    bool ClosestPoints(const TLine3<T>& other, TVector3<T>* onThis, TVector3<T>* onOther, T tolerance) const;

    /// Where the line meets a triangle, from either side; the test is that of Möller and Trumbore (1997). False when
    /// the determinant, minus the direction's dot product with (corner1 - corner0) x (corner2 - corner0), lies strictly
    /// within the common tolerance of 0, whatever tolerance is passed, as of a parallel line or a triangle without
    /// area; or when a barycentric coordinate lies outside by more than the tolerance, which is one on these
    /// coordinates and no length. A hit exactly at a bound is kept.
    ///
    /// The point is rebuilt from the barycentric coordinates, so it lies in the triangle's plane; `distance`, which may
    /// be null, receives the signed parameter along the line. Hits behind the origin count. NaN is not rejected and
    /// gives true with NaN. A false result leaves both outputs untouched. `point` must not be null; it may be a corner.
    /// @param corner0, corner1, corner2 The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                                     TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a triangle with the back face culled: only a line that runs against the normal (corner1 -
    /// corner0) x (corner2 - corner0) hits. False when the determinant, minus the direction's dot product with that
    /// normal, lies strictly below the common tolerance, whatever tolerance is passed; or when a barycentric coordinate
    /// lies outside by more than the tolerance, which is one on these coordinates and no length. A hit exactly at a
    /// bound is kept.
    ///
    /// The point is rebuilt from the barycentric coordinates, so it lies in the triangle's plane; `distance`, which may
    /// be null, receives the signed parameter along the line. Hits behind the origin count. NaN is not rejected and
    /// gives true with NaN. A false result leaves both outputs untouched. `point` must not be null; it may be a corner.
    /// @param corner0, corner1, corner2 The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithBFC(const TVector3<T>& corner0, const TVector3<T>& corner1,
                                        const TVector3<T>& corner2, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a triangle with the front face culled: only a line that runs along the normal (corner1 -
    /// corner0) x (corner2 - corner0) hits. False when the determinant, minus the direction's dot product with that
    /// normal, lies strictly above minus the common tolerance, whatever tolerance is passed; or when a barycentric
    /// coordinate lies outside by more than the tolerance, which is one on these coordinates and no length. A hit
    /// exactly at a bound is kept.
    ///
    /// The point is rebuilt from the barycentric coordinates, so it lies in the triangle's plane; `distance`, which may
    /// be null, receives the signed parameter along the line. Hits behind the origin count. NaN is not rejected and
    /// gives true with NaN. A false result leaves both outputs untouched. `point` must not be null; it may be a corner.
    /// @param corner0, corner1, corner2 The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithFFC(const TVector3<T>& corner0, const TVector3<T>& corner1,
                                        const TVector3<T>& corner2, TVector3<T>* point, T* distance, T tolerance) const;

    /// Where the line meets the faces of a box: true when it does so at a point in the box widened by the tolerance,
    /// inclusively. The face planes are tried through the minimum (x, y, z), then through the maximum, until two hits
    /// are held, which come in this order; one whose axis has a direction component strictly between -tolerance and
    /// tolerance is skipped, and a second hit equal to the first within the common tolerance does not count.
    ///
    /// The slots are written during the search: after false `p1`, and after a single hit `p2`, may hold a rejected
    /// point or be unwritten, and the result does not tell how many hits there are. Neither pointer may be null; they
    /// must differ, and point into neither the line nor the box. The same as `TBox::IntersectWith`.
    /// @param box The box.
    /// @param[out] p1 The first hit, by the order of the faces.
    /// @param[out] p2 The second hit.
    /// @param tolerance By which the box is widened, and up to which a direction runs along a face.
    [[nodiscard]] bool IntersectWith(const TBox<T>& box, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const;

    /// Where the line meets a sphere: `p1` lies earlier along the line than `p2`. The tolerance is the least
    /// discriminant (four times the squared half chord) that counts as a hit, inclusively: above 0 it rejects lines
    /// near a tangent, and below 0 it lets misses through with NaN in both points. False writes nothing. The direction
    /// must be of unit length, which is not checked. Neither pointer may be null, nor `p1` part of the line. The same
    /// as `TSphere::IntersectWith`.
    /// @param sphere The sphere.
    /// @param[out] p1 The hit that is earlier along the line.
    /// @param[out] p2 The later one.
    /// @param tolerance The least discriminant of a hit.
    [[nodiscard]] bool IntersectWith(const TSphere<T>& sphere, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const;
    /// Where the line meets a triangle, from either side, as the form with three corners finds it: false when the
    /// determinant lies strictly within the common tolerance of 0 or a barycentric coordinate outside by more than the
    /// tolerance. `distance`, which may be null, receives the signed parameter along the line; hits behind the origin
    /// count. A false result leaves both outputs untouched. The triangle's stored normal plays no part. `point` must
    /// not be null.
    /// @param tri The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWith(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a triangle with the back face culled, as the form with three corners finds it: only a line
    /// that runs against the normal of the corners, as they stand, hits. False when the determinant lies strictly below
    /// the common tolerance or a barycentric coordinate outside by more than the tolerance. `distance`, which may be
    /// null, receives the signed parameter along the line; hits behind the origin count. A false result leaves both
    /// outputs untouched. `point` must not be null.
    /// @param tri The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithBFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a triangle with the front face culled, as the form with three corners finds it: only a line
    /// that runs along the normal of the corners, as they stand, hits. False when the determinant lies strictly above
    /// minus the common tolerance or a barycentric coordinate outside by more than the tolerance. `distance`, which may
    /// be null, receives the signed parameter along the line; hits behind the origin count. A false result leaves both
    /// outputs untouched. `point` must not be null.
    /// @param tri The triangle.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithFFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where the line meets a plane. False, with `point` untouched, when the dot product of normal and direction lies
    /// strictly within the tolerance of 0. A tolerance of 0 rejects nothing: a parallel line then gives true and a
    /// point that is not finite. `point` must not be null; it may be part of the line. The same as
    /// `TPlane::IntersectWith`.
    [[nodiscard]] bool IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TLine3);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TLine2);
CORVEX_INSTANTIATE_SCALARS(extern, struct, TLine3);

} // namespace Halmont::Orrin::CorvexMaths

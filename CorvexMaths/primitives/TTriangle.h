#pragma once

/// Triangles in the plane and in space.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A triangle in the plane, for T of `float` and `double`: a plain value of three corners, in either turn. Corners that
/// are collinear or equal are legal.
template <class T>
struct TTriangle2
{
    /// The corners in order.
    TVector2<T> corners[3];

    /// All zero.
    TTriangle2() = default;
    /// The triangle a, b, c, as given.
    TTriangle2(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c) : corners{a, b, c} {}

    /// Twice the signed area of the triangle a, b, c, as the cross product of b - a and c - a: positive when it turns
    /// counter-clockwise. No absolute value is taken.
    static T GetDoubleArea(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
    {
        return (b - a).SignedArea(c - a);
    }
    /// Twice the signed area of this triangle, as the cross product of its sides from the first corner: positive when
    /// it turns counter-clockwise. No absolute value is taken.
    T GetDoubleArea() const { return GetDoubleArea(corners[0], corners[1], corners[2]); }

    /// Whether p lies in the sector at b that sweeps counter-clockwise from the ray to c to the ray to a: the inside,
    /// at b, of an outline that walks a, b, c counter-clockwise, be the corner convex, straight or reflex. The third
    /// side bounds nothing. Both rays are outside, and b too; rays that coincide enclose nothing. No tolerance. A p of
    /// NaN is outside at a convex corner and inside at a reflex one.
    static bool WithinCone(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& p);
    /// Whether p lies in the sector at corner 1 that sweeps counter-clockwise from the ray to corner 2 to the ray to
    /// corner 0: the inside, there, of an outline that walks the corners in order counter-clockwise. Side 2 to 0 bounds
    /// nothing. Both rays are outside, and corner 1 too; rays that coincide enclose nothing. No tolerance. A p of NaN
    /// is outside at a convex corner and inside at a reflex one.
    bool WithinCone(const TVector2<T>& p) const { return WithinCone(corners[0], corners[1], corners[2], p); }

    CORVEX_INCLUDE_STREAM_TO_PRINT(TTriangle2);
};

/// A triangle in space, for T of `float` and `double`: a plain value of three corners and the normal they had when the
/// triangle was made. Corners written later leave the normal as it was. Tolerances are absolute.
template <class T>
struct TTriangle3
{
    /// The corners in order.
    TVector3<T> corners[3];
    /// The unit normal on the side from which the corners turn counter-clockwise, or the zero vector if they are
    /// collinear.
    TVector3<T> normal;

    /// All zero.
    TTriangle3() = default;
    /// The triangle a, b, c with its normal (b - a) x (c - a), normalised.
    TTriangle3(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c)
        : corners{a, b, c}, normal((b - a) * (c - a))
    {
        normal.Normalise();
    }

    /// The area of the triangle that the first two corners make with the origin, never negative. The third corner plays
    /// no part, so this is the triangle's own area only when that lies at the origin. For that area take half the
    /// length of the cross product of two sides.
    T GetArea() const { return T(0.5) * (corners[0] * corners[1]).GetLength(); }

    /// The distance of a point, never negative: from the plane when the line through the point along the normal meets
    /// the triangle by `TLine3::IntersectWith` with this tolerance, which is one on the barycentric coordinates; else
    /// from the nearest edge, by `TEdge3::DistanceToPoint`. A triangle without a normal is measured by its edges alone,
    /// and so is one whose doubled area is strictly below the common tolerance. The stored normal decides, also where
    /// corners have been written since. NaN gives NaN.
    T DistanceToPoint(const TVector3<T>& p, T tolerance) const;
    /// The stored corner nearest to p; the lowest index on a tie, and where no squared distance is below the largest
    /// `float`, as with NaN. Writing through the reference moves the corner and leaves the normal.
    TVector3<T>& ClosestVert(const TVector3<T>& p);

    /// Where a line meets the triangle, from either side, as the three-corner form of `TLine3::IntersectWith` finds it:
    /// false when the line is parallel by the common tolerance on the determinant or a barycentric coordinate lies
    /// outside by more than the tolerance. `distance`, which may be null, receives the signed parameter along the line;
    /// hits behind its origin count. A false result leaves both outputs untouched. The stored normal plays no part.
    /// `point` must not be null.
    /// @param line The line.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where a line meets the triangle with the back face culled: only a line that runs against the normal of the
    /// corners, as they stand, hits, by `TLine3::IntersectWithBFC`. False when the determinant lies strictly below the
    /// common tolerance or a barycentric coordinate outside by more than the tolerance. `distance`, which may be null,
    /// receives the signed parameter along the line; hits behind its origin count. A false result leaves both outputs
    /// untouched. `point` must not be null.
    /// @param line The line.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithBFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;
    /// Where a line meets the triangle with the front face culled: only a line that runs along the normal of the
    /// corners, as they stand, hits, by `TLine3::IntersectWithFFC`. False when the determinant lies strictly above
    /// minus the common tolerance or a barycentric coordinate outside by more than the tolerance. `distance`, which may
    /// be null, receives the signed parameter along the line; hits behind its origin count. A false result leaves both
    /// outputs untouched. `point` must not be null.
    /// @param line The line.
    /// @param[out] point The crossing.
    /// @param[out] distance Its signed distance along the line; may be null.
    /// @param tolerance That on the barycentric coordinates, which are no lengths.
    [[nodiscard]] bool IntersectWithFFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TTriangle3);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TTriangle2);
CORVEX_INSTANTIATE_SCALARS(extern, struct, TTriangle3);

} // namespace Halmont::Orrin::CorvexMaths

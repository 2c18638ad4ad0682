#pragma once

/// Triangles in the plane and in space.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A triangle in the plane, for T of `float` and `double`: a plain value of three corners, in either turn.
template <class T>
struct TTriangle2
{
    /// The corners in order.
    TVector2<T> corners[3];

    /// All zero.
    TTriangle2() = default;
    /// The triangle a, b, c.
    TTriangle2(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c) : corners{a, b, c} {}

    /// Twice the signed area of the triangle a, b, c: positive when it turns counter-clockwise.
    static T GetDoubleArea(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
    {
        return (b - a).SignedArea(c - a);
    }
    /// Twice the signed area of this triangle.
    T GetDoubleArea() const { return GetDoubleArea(corners[0], corners[1], corners[2]); }

    /// Whether p lies in the sector at b that sweeps counter-clockwise from the ray to c to the ray to a: the inside,
    /// at b, of an outline that walks a, b, c counter-clockwise, be the corner convex, straight or reflex. The third
    /// side bounds nothing, and both rays are outside. No tolerance.
    static bool WithinCone(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& p);
    /// The same with this triangle's corners as a, b, c.
    bool WithinCone(const TVector2<T>& p) const { return WithinCone(corners[0], corners[1], corners[2], p); }
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

    /// The area of the triangle that the first two corners make with the origin. The third corner plays no part, so
    /// this is the triangle's own area only when that lies at the origin.
    T GetArea() const { return T(0.5) * (corners[0] * corners[1]).GetLength(); }

    /// The distance of a point, never negative: from the plane when the line through the point along the normal meets
    /// the triangle by `TLine3::IntersectWith` with this tolerance, which is one on the barycentric coordinates; else
    /// from the nearest edge. A triangle without a normal is measured by its edges alone.
    T DistanceToPoint(TVector3<T>& p, T tolerance) const;
    /// The stored corner nearest to p; the lowest index on a tie, and where no squared distance is below the largest
    /// `float`, as with NaN. Writing through the reference moves the corner and leaves the normal.
    TVector3<T>& ClosestVert(TVector3<T>& p);

    /// Where a line meets the triangle, from either side; see the three-corner form of `TLine3`, to which this
    /// forwards.
    bool IntersectWith(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the back face culled: only a line that runs against the normal of the corners hits.
    bool IntersectWithBFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;
    /// The same with the front face culled: only a line that runs along the normal of the corners hits.
    bool IntersectWithFFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const;
};

extern template struct TTriangle2<float>;
extern template struct TTriangle2<double>;
extern template struct TTriangle3<float>;
extern template struct TTriangle3<double>;

} // namespace Halmont::Orrin::CorvexMaths

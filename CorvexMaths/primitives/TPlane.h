#pragma once

/// Planes in space: a point and a normal.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A plane, for T of `float` and `double`: a plain value of six scalars. Lengths and tolerances are absolute, in the
/// caller's unit. The operations take the normal to be of unit length or zero, as the constructors leave it; on a plane
/// without a normal every distance is 0.
template <class T>
struct TPlane
{
    /// A point on the plane.
    TVector3<T> point;
    /// The unit normal, or the zero vector if the plane was given none.
    TVector3<T> normal;

    /// All zero: a plane without a normal.
    TPlane() = default;
    /// The plane through a point across a vector, which is normalised; the zero vector stays zero.
    TPlane(const TVector3<T>& through, const TVector3<T>& across) : point(through), normal(across)
    {
        normal.Normalise();
    }
    /// The plane through (x, y, z) across (nx, ny, nz), which is normalised; the zero vector stays zero.
    TPlane(const T& x, const T& y, const T& z, const T& nx, const T& ny, const T& nz)
        : TPlane(TVector3<T>(x, y, z), TVector3<T>(nx, ny, nz))
    {}
    /// The plane through three corners, with the first as its point and (corner1 - corner0) x (corner2 - corner0),
    /// normalised, as its normal. Collinear corners leave that zero.
    TPlane(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2)
        : TPlane(corner0, (corner1 - corner0) * (corner2 - corner0))
    {}

    /// Makes this the plane through three corners, with the first as its point. The normal is taken along (corner1 -
    /// corner0) x (corner2 - corner1), which is the direction that the constructor takes, rounded otherwise. Collinear
    /// corners leave it zero, and nothing reports that. The corners may be parts of this plane.
    void Fit(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2)
    {
        *this = TPlane(corner0, (corner1 - corner0) * (corner2 - corner1));
    }
    /// Makes this the plane of least squared distance from the points: through their centroid, across the right
    /// singular vector of the smallest singular value of the centred points, of the lowest index on a tie (Pearson,
    /// 1901). `spread` receives the width of the slab about the plane that holds the plane and all points, `squares`
    /// the sum of the squared distances; either may be null. Both are set to 0 first, on every path.
    ///
    /// False for fewer than 3 points, with the plane as it was, and when the decomposition does not converge within the
    /// limit of 30 that `TMatrixMxN::SVD` is given, with `point` at the centroid and the normal as it was. Exactly 3
    /// points are fitted as corners, and the result is true even when they are collinear and leave no normal. More
    /// points that span no plane give some normal and true. With a NaN among the points the decomposition does not
    /// converge; exactly 3 give true and NaN. The points stay as they are. Time and memory in proportion to their
    /// number; where memory runs out, the plane stays as it was.
    ///
    /// @code
    /// TPlane<double> plane;
    /// double slab, squares;
    /// if (!plane.Fit(points, &slab, &squares)) return;
    /// std::printf("flat to %g\n", slab);
    /// @endcode
    /// @param points Three or more.
    /// @param[out] spread The width of the slab about the plane that holds the plane and all points; may be null.
    /// @param[out] squares The sum of the squared distances; may be null.
    [[nodiscard]] bool Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares);

    /// Whether point and normal are exactly equal; the same plane held by another point or the opposite normal is not.
    /// False with a NaN.
    bool operator==(const TPlane& other) const { return point == other.point && normal == other.normal; }

    /// The distance of a point, positive on the side that the normal points to: the dot product of the normal with p -
    /// point.
    T SignedDistanceToPoint(const TVector3<T>& p) const { return normal % (p - point); }
    /// The distance of a point, never negative: the absolute value of the signed one.
    T DistanceToPoint(const TVector3<T>& p) const { return Numbers::Absolute(SignedDistanceToPoint(p)); }

    /// Where a line meets the plane. False, with `where` untouched, when the dot product of normal and direction lies
    /// strictly within the tolerance of 0. A tolerance of 0 rejects nothing: a parallel line then gives true and a
    /// point that is not finite. NaN passes. `where` must not be null; it may be part of the line.
    /// @param line The line.
    /// @param[out] where The crossing.
    /// @param tolerance That on the dot product of normal and direction, no length.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* where, T tolerance) const;
    /// Where an edge meets the plane. An end counts as in the plane when its distance is strictly below the tolerance,
    /// and is then what `where` receives, up to the rounding of start + (end - start). False, with `where` untouched,
    /// for an edge on one side and for one in the plane. The product of the two distances tells the sides, so that one
    /// which underflows to 0 is a crossing; NaN gives true and NaN. `where` must not be null; it may be an end of the
    /// edge.
    /// @param edge The edge.
    /// @param[out] where The crossing.
    /// @param tolerance The distance below which an end is in the plane.
    [[nodiscard]] bool IntersectWith(const TEdge3<T>& edge, TVector3<T>* where, T tolerance) const;
    /// The line along this normal crossed with the other's. False, with the line untouched, when the dot product of the
    /// normals is within the tolerance of 1 or -1, inclusively: the tolerance is one on the cosine, not on the angle.
    /// The direction is that of the common line, of unit length, but the origin lies on it in special cases only: it is
    /// the inverse of the matrix with this normal, the other's and the direction as columns, times the planes' two
    /// offsets and 0. Where the determinant of the matrix is zero within the common tolerance, inclusively, the result
    /// is true all the same and the origin stays as the caller left it. NaN gives true and NaN. `line` must not be
    /// null.
    /// @param other The other plane.
    /// @param[out] line The common line; its direction, and its origin as told above.
    /// @param tolerance That on the cosine of the normals.
    [[nodiscard]] bool IntersectWith(const TPlane& other, TLine3<T>* line, T tolerance) const;
    /// Where the edges of a triangle meet the plane, as the form with three corners finds it: the first hit of the
    /// edges 0 (corner 0 to 1), 1 (corner 1 to 2) and 2 (corner 2 to 0) goes to `p1` and `edge1`, the second to `p2`
    /// and `edge2`. A corner counts as in the plane when its distance is strictly below the tolerance; an edge in the
    /// plane is no hit. False when there are fewer than two; the first may then have been written. The triangle's
    /// stored normal plays no part. No pointer may be null.
    /// @param tri The triangle.
    /// @param[out] p1 The first hit.
    /// @param[out] p2 The second hit.
    /// @param[out] edge1 The index of the edge of the first hit, 0 to 2.
    /// @param[out] edge2 That of the second.
    /// @param tolerance The distance below which a corner is in the plane.
    [[nodiscard]] bool IntersectWith(const TTriangle3<T>& tri, TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1,
                                     unsigned int* edge2, T tolerance) const;
    /// Where the edges 0 (corner0 to corner1), 1 (corner1 to corner2) and 2 (corner2 to corner0) of a triangle meet the
    /// plane, each as the form for edges finds it: a corner counts as in the plane when its distance is strictly below
    /// the tolerance, and an edge in the plane is no hit. The first hit goes to `p1` and `edge1`, the second to `p2`
    /// and `edge2` and ends the walk, so that a corner in the plane can be both. False when there are fewer than two;
    /// the first may then have been written. No pointer may be null; the points may be the corners.
    /// @param corner0, corner1, corner2 The triangle.
    /// @param[out] p1 The first hit.
    /// @param[out] p2 The second hit.
    /// @param[out] edge1 The index of the edge of the first hit, 0 to 2.
    /// @param[out] edge2 That of the second.
    /// @param tolerance The distance below which a corner is in the plane.
    [[nodiscard]] bool IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                                     TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1, unsigned int* edge2,
                                     T tolerance) const;

    /// Whether a triangle has corners strictly on both sides; no tolerance. One that lies in the plane or only touches
    /// it does not intersect it. A corner of NaN gives true.
    bool Intersects(const TTriangle3<T>& tri) const;
    /// Whether the triangle of three corners has corners strictly on both sides; no tolerance. One that lies in the
    /// plane or only touches it does not intersect it. A corner of NaN gives true.
    bool Intersects(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TPlane);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TPlane);

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// Planes in space: a point and a normal.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A plane, for T of `float` and `double`: a plain value of six scalars. Tolerances are absolute. On a plane without a
/// normal every distance is 0.
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
    /// The same from the six scalars.
    TPlane(const T& x, const T& y, const T& z, const T& nx, const T& ny, const T& nz)
        : TPlane(TVector3<T>(x, y, z), TVector3<T>(nx, ny, nz))
    {}
    /// The plane through three corners, with the first as its point and (corner1 - corner0) x (corner2 - corner0),
    /// normalised, as its normal. Collinear corners leave that zero.
    TPlane(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2)
        : TPlane(corner0, (corner1 - corner0) * (corner2 - corner0))
    {}

    /// Makes this the plane through three corners, with the first as its point. The normal is taken along
    /// (corner1 - corner0) x (corner2 - corner1), which is the direction that the constructor takes, rounded otherwise.
    /// Collinear corners leave it zero.
    void Fit(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2)
    {
        *this = TPlane(corner0, (corner1 - corner0) * (corner2 - corner1));
    }
    /// Makes this the plane of least squared distance from the points: through their centroid, across the right
    /// singular vector of the smallest singular value of the centred points, of the lowest index on a tie (K. Pearson,
    /// 1901). `spread` receives the width of the slab about the plane that holds the plane and all points, `squares`
    /// the sum of the squared distances; either may be null. Both are set to 0 first, on every path.
    ///
    /// False for fewer than 3 points, with the plane as it was, and when the decomposition does not converge within its
    /// limit of 30, with `point` at the centroid and the normal as it was. Exactly 3 points are fitted as corners, and
    /// the result is true even when they are collinear and leave no normal. More points that span no plane give some
    /// normal and true. Time and memory in proportion to the number of points.
    bool Fit(TPointSet<T, TVector3>& points, T* spread, T* squares);

    /// Whether point and normal are exactly equal; the same plane held by another point or the opposite normal is not.
    bool operator==(const TPlane& other) const { return point == other.point && normal == other.normal; }

    /// The distance of a point, positive on the side that the normal points to.
    T SignedDistanceToPoint(const TVector3<T>& p) const { return normal % (p - point); }
    /// The distance of a point, never negative.
    T DistanceToPoint(const TVector3<T>& p) const { return Numbers::Absolute(SignedDistanceToPoint(p)); }

    /// Where a line meets the plane. False, with `where` untouched, when the dot product of normal and direction lies
    /// strictly within the tolerance of 0. A tolerance of 0 rejects nothing: a parallel line then gives true and a
    /// point that is not finite.
    bool IntersectWith(const TLine3<T>& line, TVector3<T>* where, T tolerance) const;
    /// Where an edge meets the plane. An end counts as in the plane when its distance is strictly below the tolerance,
    /// and is then what `where` receives, up to the rounding of start + (end - start). False, with `where` untouched,
    /// for an edge on one side and for one in the plane.
    bool IntersectWith(const TEdge3<T>& edge, TVector3<T>* where, T tolerance) const;
    /// The line along this normal crossed with the other's. False, with the line untouched, when the dot product of the
    /// normals is within the tolerance of 1 or -1, inclusively. The direction is that of the common line, but the
    /// origin lies on it in special cases only: it is the inverse of the matrix with this normal, the other's and the
    /// direction as columns, times the planes' two offsets and 0. Where the matrix has no inverse (see
    /// `TMatrix3x3::Invert`) the result is true and the origin stays as it was.
    bool IntersectWith(const TPlane& other, TLine3<T>* line, T tolerance) const;
    /// Where the edges of a triangle meet the plane, as the form with three corners finds it.
    bool IntersectWith(const TTriangle3<T>& tri, TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1,
                       unsigned int* edge2, T tolerance) const;
    /// Where the edges 0 (corner0 to corner1), 1 (corner1 to corner2) and 2 (corner2 to corner0) of a triangle meet the
    /// plane, each as the form for edges finds it. The first hit goes to `p1` and `edge1`, the second to `p2` and
    /// `edge2` and ends the walk, so that a corner in the plane can be both. False when there are fewer than two; the
    /// first may then have been written. No pointer may be null.
    bool IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                       TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1, unsigned int* edge2, T tolerance) const;

    /// Whether a triangle has corners on both sides; no tolerance. One that lies in the plane or only touches it does
    /// not intersect it.
    bool Intersects(const TTriangle3<T>& tri) const;
    /// The same from the three corners.
    bool Intersects(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2) const;
};

extern template struct TPlane<float>;
extern template struct TPlane<double>;

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// Directed straight segments in the plane and in space. The endpoint rules of the plane form (what counts as crossing,
/// touching, beside) are those on which polygons rest.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A segment in the plane, for T of `float` and `double`: a plain value of two points. It points from its start to its
/// end; a length of zero is legal. Tolerances are absolute, in the caller's unit.
template <class T>
struct TEdge2
{
    /// The start and the end.
    TVector2<T> Vertex[2];

    /// All zero.
    TEdge2() = default;
    /// The segment from (startX, startY) to (endX, endY).
    TEdge2(const T& startX, const T& startY, const T& endX, const T& endY)
        : Vertex{TVector2<T>(startX, startY), TVector2<T>(endX, endY)}
    {}
    /// The segment from start to end.
    TEdge2(const TVector2<T>& start, const TVector2<T>& end) : Vertex{start, end} {}

    /// The middle of the segment.
    TVector2<T> GetMid() const { return (Vertex[0] + Vertex[1]) * T(0.5); }
    /// The unit vector from start to end, or the zero vector when the length is exactly zero.
    TVector2<T> GetDirection() const
    {
        TVector2<T> direction = Vertex[1] - Vertex[0];
        direction.Normalise();
        return direction;
    }
    /// The line that carries the segment: its start and `GetDirection`, normalised no further.
    TLine2<T> GetLine() const
    {
        TLine2<T> line;
        line.origin = Vertex[0];
        line.direction = GetDirection();
        return line;
    }

    /// The segment moved by an offset.
    TEdge2<T> operator+(const TVector2<T>& offset) const { return TEdge2<T>(Vertex[0] + offset, Vertex[1] + offset); }
    /// The segment moved back by an offset.
    TEdge2<T> operator-(const TVector2<T>& offset) const { return TEdge2<T>(Vertex[0] - offset, Vertex[1] - offset); }
    /// Moves both points by an offset.
    TEdge2<T>& operator+=(const TVector2<T>& offset) { return *this = *this + offset; }
    /// Moves both points back by an offset.
    TEdge2<T>& operator-=(const TVector2<T>& offset) { return *this = *this - offset; }
    /// Both points as row vectors times the matrix.
    TEdge2<T> operator*(const TMatrix2x2<T>& matrix) const;
    /// Replaces both points by the matrix times the point as a column, unlike `operator*`: the two differ by a
    /// transpose.
    TEdge2<T>& operator*=(const TMatrix2x2<T>& matrix);

    /// Whether all four coordinates are equal, exactly.
    bool operator==(const TEdge2<T>& other) const
    {
        return Vertex[0] == other.Vertex[0] && Vertex[1] == other.Vertex[1];
    }
    /// Whether this starts at a greater x; nothing else is looked at.
    bool operator>(const TEdge2<T>& other) const { return Vertex[0].x > other.Vertex[0].x; }
    /// Whether this starts at a lesser x; nothing else is looked at.
    bool operator<(const TEdge2<T>& other) const { return other.Vertex[0].x > Vertex[0].x; }

    /// Whether the perpendicular foot of a point falls on the segment, ends included; no tolerance, and nothing about
    /// the distance from the line. Every point is within a segment of zero length.
    bool IsWithin(const TVector2<T>& point) const;
    /// Whether a point known to be on the segment's line lies on the segment, by range along one axis, inclusive and
    /// widened by the tolerance: along x, or along y when the extent in x is zero or not above the tolerance.
    bool IsWithinCollinear(const TVector2<T>& point, T tolerance) const;
    /// The distance of a point from the segment. Before the start, `within` becomes false and `beforeStart` true; past
    /// the end both become false; else the distance is that from the line, `within` becomes `IsWithin(point)` and
    /// `beforeStart` keeps what it held. Either pointer may be null. A segment of zero length is at distance 0 from
    /// every point.
    T DistanceToPoint(const TVector2<T>& point, bool* within, bool* beforeStart) const;
    /// Whether two segments cross or touch. A point counts as on the other's line when its cross product is zero within
    /// `crossTolerance`, inclusively, and is then ranged along the other without tolerance. Segments that touch at an
    /// end or overlap in part intersect; identical ones and one that lies within a collinear other do not.
    /// `ignoredTolerance` has no effect.
    bool Intersects(const TEdge2<T>& other, T ignoredTolerance, T crossTolerance) const;
    /// Where the lines that carry the two segments cross, as `TLine2::IntersectWith` finds it with this tolerance.
    /// `within`, which may be null, receives whether the point is within both segments, by `IsWithin`. A false result
    /// leaves both outputs untouched.
    bool IntersectWith(const TEdge2<T>& other, TVector2<T>* point, bool* within, T tolerance) const;

    /// Where the line that carries the segment meets a circle, and which of the hits are on the segment; see
    /// `TCircle2::IntersectWith`.
    bool IntersectWith(const TCircle2<T>& circle, TVector2<T>* first, TVector2<T>* second, bool* firstWithin,
                       bool* secondWithin) const;
};

/// A segment in space, for T of `float` and `double`: a plain value of two points, directed from start to end.
template <class T>
struct TEdge3
{
    /// The start and the end.
    TVector3<T> Vertex[2];

    /// All zero.
    TEdge3() = default;
    /// The segment from (startX, startY, startZ) to (endX, endY, endZ).
    TEdge3(const T& startX, const T& startY, const T& startZ, const T& endX, const T& endY, const T& endZ)
        : Vertex{TVector3<T>(startX, startY, startZ), TVector3<T>(endX, endY, endZ)}
    {}
    /// The segment from start to end.
    TEdge3(const TVector3<T>& start, const TVector3<T>& end) : Vertex{start, end} {}

    /// The middle of the segment.
    TVector3<T> GetMid() const { return (Vertex[0] + Vertex[1]) * T(0.5); }
    /// The unit vector from start to end, or the zero vector when the length is exactly zero.
    TVector3<T> GetDirection() const
    {
        TVector3<T> direction = Vertex[1] - Vertex[0];
        direction.Normalise();
        return direction;
    }
    /// The line that carries the segment, from its start.
    TLine3<T> GetLine() const { return TLine3<T>(Vertex[0], Vertex[1] - Vertex[0]); }

    /// The segment moved by an offset.
    TEdge3<T> operator+(const TVector3<T>& offset) const { return TEdge3<T>(Vertex[0] + offset, Vertex[1] + offset); }
    /// The segment moved back by an offset.
    TEdge3<T> operator-(const TVector3<T>& offset) const { return TEdge3<T>(Vertex[0] - offset, Vertex[1] - offset); }
    /// Moves both points by an offset.
    TEdge3<T>& operator+=(const TVector3<T>& offset) { return *this = *this + offset; }
    /// Moves both points back by an offset.
    TEdge3<T>& operator-=(const TVector3<T>& offset) { return *this = *this - offset; }
    /// Both points as row vectors times the matrix.
    TEdge3<T> operator*(const TMatrix3x3<T>& matrix) const;
    /// Replaces both points by the point as a row vector times the matrix.
    TEdge3<T>& operator*=(const TMatrix3x3<T>& matrix);

    /// Whether the two start at the same point, exactly; the ends are not looked at.
    bool operator==(const TEdge3<T>& other) const { return Vertex[0] == other.Vertex[0]; }
    /// Whether this starts at the greater point, in the lexicographic order of x, y, z.
    bool operator>(const TEdge3<T>& other) const { return Vertex[0] > other.Vertex[0]; }
    /// Whether this starts at the lesser point, in the lexicographic order of x, y, z.
    bool operator<(const TEdge3<T>& other) const { return Vertex[0] < other.Vertex[0]; }

    /// The distance of a point from the segment. Before the start, `within` becomes false and `beforeStart` true; past
    /// the end both become false; else the distance is that from the line, `within` becomes true and `beforeStart`
    /// keeps what it held. Either pointer may be null. A segment of zero length is at distance 0 from every point.
    T DistanceToPoint(const TVector3<T>& point, bool* within, bool* beforeStart) const;
    /// The point of the segment nearest to a point.
    TVector3<T> GetClosestPoint(const TVector3<T>& point) const;
    /// Where the segment meets the triangle a, b, c. The result is
    ///  0  when the crossing lies in the triangle, on none of its sides or corners,
    ///  1  when there is none,
    ///  2  when the segment is parallel to the triangle's plane and lies in it,
    ///  3  when the crossing lies on exactly one side,
    ///  4  when it lies at a corner.
    /// Only segments wholly beyond the triangle's range on some axis are told from their lines. Products and weights
    /// count as zero when they are within the common tolerance of `tolerance` itself, a weight counts as one within
    /// `tolerance` of 1, all inclusively. The weights solve corners times weights = crossing by LU decomposition, so a
    /// triangle whose plane passes through the origin leaves them meaningless. `point` is written as soon as the line
    /// is known to cross the plane, before containment is tested, and may hold a rejected point after 1.
    int IntersectWith(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, TVector3<T>* point,
                      T tolerance) const;
    /// Where the segment meets a plane; see `TPlane::IntersectWith`.
    bool IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const;
};

extern template struct TEdge2<float>;
extern template struct TEdge2<double>;
extern template struct TEdge3<float>;
extern template struct TEdge3<double>;

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

extern template class TList<CorvexMaths::TEdge2<float>>;
extern template class TList<CorvexMaths::TEdge2<double>>;
extern template class TList<CorvexMaths::TEdge3<float>>;
extern template class TList<CorvexMaths::TEdge3<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

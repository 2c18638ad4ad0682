#pragma once

/// Directed straight segments in the plane and in space. The endpoint rules of the plane form (what counts as crossing,
/// touching, beside) are those on which polygons rest.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A segment in the plane, for T of `float` and `double`: a plain value of two points. It points from its start to its
/// end; a length of zero is legal. Lengths and tolerances are absolute, in the caller's unit. No operation fails but by
/// its result.
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

    /// The middle of the segment, (start + end) times 0.5.
    TVector2<T> GetMid() const { return (Vertex[0] + Vertex[1]) * T(0.5); }
    /// The unit vector from start to end, or the zero vector when the length is exactly zero.
    TVector2<T> GetDirection() const
    {
        TVector2<T> direction = Vertex[1] - Vertex[0];
        direction.Normalise();
        return direction;
    }
    /// The line that carries the segment: its start and `GetDirection`, normalised no further. A segment without length
    /// gives a line without a direction.
    TLine2<T> GetLine() const
    {
        TLine2<T> line;
        line.origin = Vertex[0];
        line.direction = GetDirection();
        return line;
    }

    /// The segment with the offset added to both points.
    TEdge2<T> operator+(const TVector2<T>& offset) const { return TEdge2<T>(Vertex[0] + offset, Vertex[1] + offset); }
    /// The segment with the offset subtracted from both points.
    TEdge2<T> operator-(const TVector2<T>& offset) const { return TEdge2<T>(Vertex[0] - offset, Vertex[1] - offset); }
    /// Adds an offset to both points. The offset may be one of them.
    TEdge2<T>& operator+=(const TVector2<T>& offset) { return *this = *this + offset; }
    /// Subtracts an offset from both points. The offset may be one of them.
    TEdge2<T>& operator-=(const TVector2<T>& offset) { return *this = *this - offset; }
    /// The segment of both points as row vectors times the matrix, unlike `operator*=`, which multiplies from the other
    /// side: the two differ by a transpose.
    TEdge2<T> operator*(const TMatrix2x2<T>& matrix) const;
    /// Replaces both points by the matrix times the point as a column vector, unlike `operator*`, which multiplies from
    /// the other side: the two differ by a transpose.
    TEdge2<T>& operator*=(const TMatrix2x2<T>& matrix);

    /// Whether all four coordinates are equal, exactly; false with a NaN.
    bool operator==(const TEdge2<T>& other) const
    {
        return Vertex[0] == other.Vertex[0] && Vertex[1] == other.Vertex[1];
    }
    /// Whether this starts at a strictly greater x; nothing else is looked at, so two different segments can be neither
    /// greater nor less.
    bool operator>(const TEdge2<T>& other) const { return Vertex[0].x > other.Vertex[0].x; }
    /// Whether this starts at a strictly lesser x; nothing else is looked at, so two different segments can be neither
    /// greater nor less.
    bool operator<(const TEdge2<T>& other) const { return other.Vertex[0].x > Vertex[0].x; }

    /// Whether the perpendicular foot of a point falls on the segment, ends included: whether the dot product of the
    /// segment's direction with the vector from the start, or that of the reverse with the vector from the end, is
    /// exactly 0, or both are above 0. No tolerance, and nothing about the distance from the line. Every finite point
    /// is within a segment of zero length; NaN is within none.
    bool IsWithin(const TVector2<T>& point) const;
    /// Whether a point known to be on the segment's line lies on the segment, by range along one axis, inclusive and
    /// widened by the tolerance: along x, or along y when the extent in x is zero or not above the tolerance. A segment
    /// of zero length is compared on y alone. That the point is on the line is not asked. NaN lies nowhere.
    bool IsWithinCollinear(const TVector2<T>& point, T tolerance) const;
    /// The distance of a point from the segment, never negative. A point strictly before the start, by the sign of a
    /// dot product without tolerance, has the distance from the start: `within` becomes false and `beforeStart` true.
    /// One strictly past the end has that from the end: both become false. Else the distance is that from the line,
    /// `within` becomes `IsWithin(point)` (true but for NaN) and `beforeStart` keeps what it held: set it beforehand.
    /// Either pointer may be null. A segment of zero length is at distance 0 from every finite point; NaN gives NaN.
    /// @param point The point.
    /// @param[out] within Whether its foot is within the segment; may be null.
    /// @param[in,out] beforeStart Whether it lies before the start; kept where the foot is within. May be null.
    T DistanceToPoint(const TVector2<T>& point, bool* within, bool* beforeStart) const;
    /// Whether two segments cross or touch. An end counts as on the other's line when its cross product (the other's
    /// direction, of its own length, with the vector from the other's start) is zero within `crossTolerance`,
    /// inclusively, and touches when it is then within the other by `IsWithinCollinear` at tolerance 0.
    ///
    /// True when exactly one end of either segment touches the other. Else true when each segment separates the ends of
    /// the other by the signs of the cross products, where 0 and NaN count with the negative ones. So segments that
    /// touch at an end or overlap in part intersect, and proper crossings do; identical segments do not, nor does one
    /// that lies within a collinear other and shares no end with it. `ignoredTolerance` has no effect.
    /// @param other The other segment.
    /// @param ignoredTolerance Has no effect.
    /// @param crossTolerance The cross product, an area, up to which an end is on the line of the other segment.
    bool Intersects(const TEdge2<T>& other, T ignoredTolerance, T crossTolerance) const;
    /// Where the lines that carry the two segments cross; true says nothing of the segments themselves. `within`, which
    /// may be null, receives whether the point is within both, by `IsWithin`. A false result leaves both outputs
    /// untouched.
    ///
    /// The crossing is that of `TLine2::IntersectWith`: a line is vertical when the x of its unit direction is zero
    /// within the tolerance, inclusively, as that of a segment without length is. Two vertical lines do not cross, nor
    /// do lines whose slopes differ by no more than the common tolerance, whatever tolerance is passed. `point` must be
    /// neither null nor an end of either segment.
    /// @param other The other segment.
    /// @param[out] point The crossing of the two lines.
    /// @param[out] within Whether it is within both segments; may be null.
    /// @param tolerance The x of a unit direction up to which a segment is vertical.
    [[nodiscard]] bool IntersectWith(const TEdge2<T>& other, TVector2<T>* point, bool* within, T tolerance) const;

    /// Where the line that carries the segment meets a circle: `first` lies further along the segment than `second`,
    /// and a tangent gives two equal points. `firstWithin` and `secondWithin`, each of which may be null, receive
    /// whether the points are within the segment, by `IsWithin`; the result says nothing of that. False, and nothing
    /// written, when the line misses the circle by `TCircle2::IntersectWith`, without tolerance. A segment without
    /// length gives true and NaN, as NaN does. `first` and `second` must be neither null nor an end of the segment.
    /// @param circle The circle.
    /// @param[out] first The hit that is further along the segment.
    /// @param[out] second The other one.
    /// @param[out] firstWithin Whether `first` is within the segment; may be null.
    /// @param[out] secondWithin Whether `second` is; may be null.
    [[nodiscard]] bool IntersectWith(const TCircle2<T>& circle, TVector2<T>* first, TVector2<T>* second,
                                     bool* firstWithin, bool* secondWithin) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TEdge2);
};

/// A segment in space, for T of `float` and `double`: a plain value of two points, directed from start to end; a length
/// of zero is legal. Lengths and tolerances are absolute, in the caller's unit. No operation fails but by its result.
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

    /// The middle of the segment, (start + end) times 0.5.
    TVector3<T> GetMid() const { return (Vertex[0] + Vertex[1]) * T(0.5); }
    /// The unit vector from start to end, or the zero vector when the length is exactly zero.
    TVector3<T> GetDirection() const
    {
        TVector3<T> direction = Vertex[1] - Vertex[0];
        direction.Normalise();
        return direction;
    }
    /// The line that carries the segment: its start, and end - start normalised by the line's constructor. A segment
    /// without length gives a line without a direction.
    TLine3<T> GetLine() const { return TLine3<T>(Vertex[0], Vertex[1] - Vertex[0]); }

    /// The segment with the offset added to both points.
    TEdge3<T> operator+(const TVector3<T>& offset) const { return TEdge3<T>(Vertex[0] + offset, Vertex[1] + offset); }
    /// The segment with the offset subtracted from both points.
    TEdge3<T> operator-(const TVector3<T>& offset) const { return TEdge3<T>(Vertex[0] - offset, Vertex[1] - offset); }
    /// Adds an offset to both points. The offset may be one of them.
    TEdge3<T>& operator+=(const TVector3<T>& offset) { return *this = *this + offset; }
    /// Subtracts an offset from both points. The offset may be one of them.
    TEdge3<T>& operator-=(const TVector3<T>& offset) { return *this = *this - offset; }
    /// The segment of both points as row vectors times the matrix.
    TEdge3<T> operator*(const TMatrix3x3<T>& matrix) const;
    /// Replaces both points by the point as a row vector times the matrix, as `operator*` forms it.
    TEdge3<T>& operator*=(const TMatrix3x3<T>& matrix);

    /// Whether the two start at the same point, exactly; the ends are not looked at. False with a NaN.
    bool operator==(const TEdge3<T>& other) const { return Vertex[0] == other.Vertex[0]; }
    /// Whether this starts at the greater point, in the lexicographic order of x, y, z: the first that is not equal
    /// decides. Equal starts give false; the ends are not looked at.
    bool operator>(const TEdge3<T>& other) const { return Vertex[0] > other.Vertex[0]; }
    /// Whether this starts at the lesser point, in the lexicographic order of x, y, z: the first that is not equal
    /// decides. Equal starts give false; the ends are not looked at.
    bool operator<(const TEdge3<T>& other) const { return Vertex[0] < other.Vertex[0]; }

    /// The distance of a point from the segment, never negative. A point strictly before the start, by the sign of a
    /// dot product with the unit direction and without tolerance, has the distance from the start: `within` becomes
    /// false and `beforeStart` true. One strictly past the end has that from the end: both become false. Else the
    /// distance is that of `TLine3::DistanceToPoint` within the common tolerance from the line through both points,
    /// which makes very small distances 0; `within` becomes true and `beforeStart` keeps what it held: set it
    /// beforehand. Either pointer may be null. A segment of zero length is at distance 0 from every finite point; NaN
    /// gives NaN, with `within` true.
    /// @param point The point.
    /// @param[out] within Whether its foot is within the segment; may be null.
    /// @param[in,out] beforeStart Whether it lies before the start; kept where the foot is within. May be null.
    T DistanceToPoint(const TVector3<T>& point, bool* within, bool* beforeStart) const;
    /// The point of the segment nearest to a point: the end when the foot lies strictly past the length, the start when
    /// it lies strictly before 0, else start + direction times the foot's place. The start for a segment of zero
    /// length; NaN gives NaN.
    TVector3<T> GetClosestPoint(const TVector3<T>& point) const;
    /// Where the segment meets the triangle a, b, c. The result is
    ///  0  when the crossing lies in the triangle, on none of its sides or corners,
    ///  1  when there is none,
    ///  2  when the segment is parallel to the triangle's plane and lies in it,
    ///  3  when the crossing lies on exactly one side,
    ///  4  when it lies at a corner.
    /// Only segments wholly beyond the triangle's range on some axis, strictly, are told from their lines: one that
    /// stops short of the triangle within its range meets it like its line.
    ///
    /// Products and weights count as zero when they are within the common tolerance of `tolerance` itself, a weight
    /// counts as one within `tolerance` of 1, all inclusively; the products have the triangle's area and the segment's
    /// length in them. The crossing is outside when a weight lies below 0 or one of the first two above 1, without
    /// tolerance. The weights solve corners times weights = crossing by LU decomposition, whose failure is not looked
    /// at, so a triangle whose plane passes through the origin leaves them meaningless.
    ///
    /// `point` is written as soon as the line is known to cross the plane, before containment is tested, and may hold a
    /// rejected point after 1; it is untouched after 2. NaN passes the tests: unless the range on another axis gives 1,
    /// the result is 0 with NaN in `point`, which must be neither null nor a corner.
    /// @param a, b, c The triangle.
    /// @param[out] point The crossing of line and plane.
    /// @param tolerance That on products and weights, no length.
    int IntersectWith(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, TVector3<T>* point,
                      T tolerance) const;
    /// Where the segment meets a plane. An end counts as in the plane when its distance is strictly below the
    /// tolerance, and is then what `point` receives, up to the rounding of start + (end - start). False, with `point`
    /// untouched, for a segment on one side and for one in the plane. `point` must not be null; it may be an end of the
    /// segment. The same as `TPlane::IntersectWith`.
    /// @param plane The plane.
    /// @param[out] point The crossing.
    /// @param tolerance The distance below which an end is in the plane.
    [[nodiscard]] bool IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TEdge3);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TEdge2);
CORVEX_INSTANTIATE_SCALARS(extern, struct, TEdge3);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

/// The lists of edges of T.
#define CORVEX_INSTANTIATE_EDGE_LISTS(linkage, T)                                                                      \
    linkage template class TList<CorvexMaths::TEdge2<T>>;                                                              \
    linkage template class TList<CorvexMaths::TEdge3<T>>

CORVEX_INSTANTIATE_EDGE_LISTS(extern, float);
CORVEX_INSTANTIATE_EDGE_LISTS(extern, double);

} // namespace Halmont::Orrin::CorvexUtilities

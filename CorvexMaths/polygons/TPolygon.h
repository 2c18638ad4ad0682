#pragma once

/// Closed planar outlines: areas, convex hulls, reordering, offsetting, thinning, and the removal of crossings.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/containers/TMap.h>
#include <CorvexMaths/containers/TPair.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A point set read as a cycle of vertices: each vertex is stored once, and the side from the last to the first is
/// implied.
///
/// All geometry happens in the x, y plane, whatever the vector template V; only exact comparisons of whole vertices
/// look at further components. Operations that move whole vertices about keep their z and w; operations that rebuild
/// vertices from edges (Offset, TrimCrossings) set z to 0 and w to 1, and say so. A polygon is counter-clockwise when
/// its signed area is positive. Lengths and tolerances are in the caller's unit, and absolute.
///
/// A polygon without vertices has area 0 and no edges, and the operations leave it untouched. Operations that rebuild
/// the vertices with the keep box flag off put it back at the end; of them Offset alone recalculates the box.
///
/// Where memory runs out, the allocator's exception passes. The vertices are then as they were, or as the member says:
/// what begins by removing duplicates may have done that. The sorted list is valid, whatever it holds.
template <class T, template <class> class V>
class CORVEX_API TPolygon : public TPointSet<T, V>
{
protected:
    /// The pairs (angle, vertex) that MakeConvexHull works on and leaves behind, in polar order. Copied and assigned
    /// with the polygon.
    TList<TPair<T, V<T>>> sortedList;

public:
    /// An empty polygon with room for `initialCapacity` vertices, growing by at least `stepSize`, as does its sorted
    /// list, which starts without room.
    explicit TPolygon(unsigned int initialCapacity = 0, unsigned int stepSize = 1000)
        : TPointSet<T, V>(initialCapacity, stepSize), sortedList(0u, stepSize)
    {}

    /// The polygon of `vertexCount` vertices from an array, which is copied and may be null for none; the grow size is
    /// 1000, the box calculated and the sorted list empty. Only real pointers take part, so that two numbers are always
    /// sizes.
    template <class Pointer, class = IfRealPointer<Pointer, const V<T>*>>
    TPolygon(Pointer points, unsigned int vertexCount) : TPointSet<T, V>(points, vertexCount), sortedList(0u, 1000u)
    {}

    /// The polygon of the points of a set of any dimension, each converted to V; the box is calculated anew, the grow
    /// size and the keep box flag are the set's, the sorted list is empty.
    /// @{
    TPolygon(const TPointSet<T, TVector2>& other) : TPointSet<T, V>(other), sortedList(0u, 1000u) {}
    TPolygon(const TPointSet<T, TVector3>& other) : TPointSet<T, V>(other), sortedList(0u, 1000u) {}
    TPolygon(const TPointSet<T, TVector4>& other) : TPointSet<T, V>(other), sortedList(0u, 1000u) {}
    /// @}

    /// A copy of the point set, its box calculated anew and its keep box flag copied, and of the sorted list.
    TPolygon(const TPolygon& other) : TPointSet<T, V>(other), sortedList(other.sortedList) {}

    /// The polygon of the vertices in braces; the grow size is 1000, the box calculated and the sorted list empty.
    TPolygon(std::initializer_list<V<T>> points) : TPointSet<T, V>(points), sortedList(0u, 1000u) {}

    /// The polygon of the vertices from one iterator up to another; the grow size is 1000, the box calculated and the
    /// sorted list empty.
    template <class Iterator, class = IfIterator<Iterator, V<T>>>
    TPolygon(Iterator first, Iterator last) : TPointSet<T, V>(first, last), sortedList(0u, 1000u)
    {}

    /// The polygon of the vertices of a `std::vector`, a `std::span`, a list, an array or another class with `data()`
    /// and `size()`, of exactly this type of vertex; the grow size is 1000, the box calculated and the sorted list
    /// empty.
    template <class Range, class = IfRange<Range, V<T>, TPointSet<T, V>>>
    explicit TPolygon(const Range& range) : TPointSet<T, V>(range), sortedList(0u, 1000u)
    {}

    /// Takes over the block and the grow size of a list, which is left empty; the box is calculated, the sorted list
    /// empty. No hook fires.
    explicit TPolygon(TList<V<T>>&& points) : TPointSet<T, V>(std::move(points)), sortedList(0u, 1000u) {}

    /// Converts a polygon or point set of the other scalar, component by component, each rounded to T; the box is
    /// calculated anew, the grow size and the keep box flag are the other's, the sorted list is empty.
    template <class U, class = std::enable_if_t<!std::is_same_v<U, T>>>
    explicit TPolygon(const TPointSet<U, V>& other) : TPointSet<T, V>(other), sortedList(0u, 1000u)
    {}

    /// Takes over the vertices and the sorted list of another polygon, which is left empty; as for a point set. No hook
    /// fires.
    TPolygon(TPolygon&& other) noexcept;
    /// Takes over the vertices and the sorted list of another polygon, which is left empty; as for a point set. No hook
    /// fires. A polygon assigned to itself stays as it is.
    TPolygon& operator=(TPolygon&& other);

    /// Assigns the vertices, box, flag and sorted list. The box ends as a copy of the source's, stale or not; the hooks
    /// fire as in the assignment of a point set. A polygon assigned to itself ends empty, as every list does.
    TPolygon& operator=(const TPolygon& other);

    /// Releases the sorted list and then the vertices; no hook fires.
    ~TPolygon() override;

    // Queries.

    /// The area by the shoelace formula, positive for a counter-clockwise outline: half the sum of p.x q.y - q.x p.y
    /// over the sides in order, the closing one last. Loops of the outline count with their sense. 0 without vertices.
    /// Coordinates far from the origin cost accuracy. Linear time.
    T GetSignedSimpleArea() const { return this->count == 0 ? T(0) : GetSignedSimpleArea(0, this->count - 1); }
    /// The absolute value of the signed area by the shoelace formula: loops of opposite senses cancel. 0 without
    /// vertices. Linear time.
    T GetSimpleArea() const { return Numbers::Absolute(GetSignedSimpleArea()); }

    /// The index of the lowest vertex, of equally low ones that of the smallest x, of equal ones the first; exact
    /// comparisons. 0 for a polygon of no or one vertex. Comparisons with NaN are false: such a vertex is not chosen,
    /// but as vertex 0. Linear time.
    unsigned int GetBottomLeft() const;

    /// Replaces the contents of `edges` by the sides in order: edge i starts at vertex i, and the last one closes the
    /// cycle. The list is emptied with its hooks and keeps its block. One vertex gives one edge without length, none
    /// leaves the list empty. `edges` must not be null.
    void GetEdges(TList<TEdge2<T>>* edges) const;

    /// The sum of the angles, in radians, by which the outline turns from each side into the next: about a full turn
    /// for a simple counter-clockwise outline, minus a full turn for a clockwise one, and other multiples where it
    /// winds several times. A reversal counts as half a turn to the left. A corner whose cosine is 1 within the common
    /// tolerance, inclusive, is straight and adds nothing: turns below about 0.0014 are dropped one by one, so that an
    /// outline of many slight turns falls short. A side without length, as between repeated vertices, counts as a
    /// quarter turn to the left at either end: remove duplicates first. 0 for one vertex or none. Cost: linear.
    T GetWindingAngle() const;

    /// The convex boundary of the vertices as an open chain in space, which leads from the first to the last: starting
    /// from the vertex kept last, a vertex is kept when no later one lies strictly on the negative side of the step to
    /// it, that is, has a negative dot product with the unit vector of step times `normal`. With a normal of (0, 0, 1)
    /// all later vertices are to the right of each step. There is no tolerance, and NaN rejects nothing; nor does a
    /// normal of zeros, which keeps all vertices, nor the step to a repeat of the vertex kept last.
    ///
    /// z counts, w does not; whole vertices are kept. The result has room for as many vertices as this polygon, a grow
    /// size of 1, and no closing vertex; without vertices it is empty. Cost: at worst quadratic.
    TPolygon GetOpenConvexBoundary(const TVector3<T>& normal) const;

    // Operations.

    /// Reverses the order of the vertices if the signed area is strictly negative; at an area of 0 or NaN they stay. No
    /// hook fires, and the box stays.
    void MakeCCW();

    /// Replaces the vertices by their convex hull, counter-clockwise from the vertex of GetBottomLeft: a polar sort
    /// around that vertex and one scan with backtracking, after Graham (1972).
    ///
    /// Where three or more vertices lie in one direction from the bottom left one, as in nearly every grid, the result
    /// can lack corners of the hull: by 2.9 to 9.4 percent of the area on grids. `Robust::ConvexHull` has no such case.
    ///
    /// All comparisons are exact. Repeated vertices and those inside a side of the hull are dropped; collinear vertices
    /// leave the two ends, and one vertex or none stays as it is. Whole vertices are kept, of those that differ in z or
    /// w alone the first that the scan meets. Vertices in one direction from the bottom left one come in the order that
    /// the standard `qsort` leaves; where there are three or more of them, but in the first direction, that order can
    /// cost the result a corner of the hull or its convexity. So can a vertex of NaN, whose angle sorts as equal to
    /// any.
    ///
    /// The sorted list ends with a pair for each vertex but the bottom left one, dropped or not; its angles are in
    /// radians. The old vertices are cleared with their hooks, and each addition fires its own; what the scan takes
    /// back or overwrites fires none. The keep box flag is off meanwhile: the box stays as it was. Cost: that of the
    /// sort.
    void MakeConvexHull();

    /// Takes the vertices as a cloud and puts them in one cycle without crossings: first the convex hull; then, one by
    /// one, always the vertex nearest to the outline so far, into the side nearest to it; MakeSimplePolygon at the end.
    ///
    /// On a tie of distances, compared exactly, the earlier vertex goes first, and into the earlier side. A vertex
    /// whose nearest place is a corner of the outline goes on that side of it which the bisector of its two sides
    /// tells. Duplicate vertices are removed first; the others are kept whole, the bottom left one in front. A vertex
    /// that is not a number equals nothing: if it stands on the hull, it comes twice. The old vertices are cleared with
    /// their hooks and the new order is added as one range, with the keep box flag off: the box stays as it was, and so
    /// does the sorted list.
    ///
    /// Costs as many measurements for each vertex as there are others that lie nearer to it than to the outline so far:
    /// few in a band, the root of the count in a disc; at worst all. MakeSimplePolygon has no limit on its passes; on
    /// nearly collinear vertices it may not come to an end. Memory that runs out leaves the vertices, less duplicates,
    /// as they were or in the new order with crossings.
    void ReorderCEC();

    /// Replaces the polygon by the outline at `distance` from it: outward if positive, inward if negative, in whichever
    /// sense the vertices run. Each side is shifted along its normal; neighbouring sides are joined at their crossing,
    /// or, where the corner opens, through their ends (on a counter-clockwise polygon with one more vertex between
    /// them, at the full distance along the bisector); the loops that the joins leave are trimmed.
    ///
    /// The answer is one outline, and true does not mean that it is the whole one:
    /// - Where an offset falls apart, or closes a bay, one piece is kept, as far as its trimming leads. Dense or noisy
    ///   outlines can shrink to a few vertices: of a star of 256,000, by 0.05, nine are left. Check the area of the
    ///   result against what is expected, or the number of its pieces against 1.
    /// - Shifted sides whose ends lie 1e-4 apart or less are not joined: a fine outline loses every corner that turns
    ///   by less than 1e-4 over the distance. One of 256,000 vertices on a circle of radius 100, by 0.5, gives false
    ///   and no vertices. Thin such outlines first.
    /// - The chord across an open corner is nearer than `distance`: at a right angle by 7.6 percent counter-clockwise,
    ///   with its additional vertex, and by 29 percent clockwise. Make the polygon counter-clockwise first (MakeCCW).
    /// - The number of vertices nearly doubles with each repeated offset of spacing 0: give a spacing.
    ///
    /// A strictly positive `spacing` thins the result with Simplify; at 0, below and NaN it is not thinned. The
    /// vertices come back with z of 0 and w of 1. Duplicate vertices are removed first. Which side is outside is asked
    /// of IsWithin, with the box as it stands; after success the box is recalculated, whatever the keep box flag says.
    /// A distance of exactly 0 is success at once, with nothing touched. The hooks fire for every removal and addition
    /// on the way, with the keep box flag off; afterwards it is as before.
    ///
    /// False means one of two things. No side has exactly one of its two shifted midpoints inside (the distance is too
    /// large or NaN, or the polygon has no area): the vertices, less duplicates, are in their old order, all flattened
    /// to z of 0 and w of 1. Or no vertex of the raw outline lies at `distance` from the old outline, to within 1e-6,
    /// strictly (every corner may have vanished): the polygon holds that raw outline. The box is then out of date. A
    /// polygon without vertices gives false too, unless the distance is 0.
    ///
    /// That 1e-6 is a true `double` in both forms, and absolute: in `float`, rounding alone can exceed it at every
    /// vertex once coordinates reach a hundred or so. A clockwise outline taken inward too far can come back turned
    /// into the other sense.
    ///
    /// Costs the logarithm of the number of vertices for each that has few sides near it; at worst, with all sides near
    /// each other, it is quadratic. If memory runs out the polygon holds its vertices, less duplicates, or the raw
    /// outline, and may be used.
    [[nodiscard]] bool Offset(T distance, T spacing);

    /// Thins the vertices by spacing: keeps vertex 0 and each vertex not nearer than `spacing` to the one kept before
    /// it, then drops kept vertices from the end that are strictly nearer than `spacing` to the first, but vertex 0
    /// never. Squared distances are compared with the squared spacing, whose sign is so of no account; 0 and NaN keep
    /// everything. Works behind the list: no hook fires, the box stays as it is, and the capacity becomes the old
    /// count. Whole vertices are kept; distances are in the plane. Cost: linear.
    void Simplify(T spacing);

    /// Thins the vertices by deviation, after Douglas and Peucker (1973): removes those that lie within `tolerance`,
    /// inclusive, of the chord of their run, where the first run leads from the first vertex to the last as an open
    /// chain.
    ///
    /// Duplicate vertices are removed first, and three vertices or fewer are then left as they are. Vertex 0 and the
    /// last one always stay; the closing side is not looked at. If the last vertex equalled the first exactly in all
    /// components, the polygon is closed again with a copy of the first at the end, unless it was left with three or
    /// fewer. Removals and the closing fire their hooks under the caller's keep box flag; those of duplicates with it
    /// off. Whole vertices are kept; distances are in the plane, by TEdge2::DistanceToPoint. A split goes to the
    /// farthest vertex, the first on a tie. A tolerance below 0 removes duplicates alone, one of NaN all between the
    /// two ends. Costs the logarithm of the count for each vertex, whatever the shape but for runs that lie all at
    /// about one distance from a chord, which split off one vertex at a time: quadratic then. Memory that runs out
    /// leaves the vertices, less duplicates.
    void SimplifyDPM(T tolerance);

    /// Removes each vertex whose x and y are both within the common tolerance, inclusive, of those of an earlier vertex
    /// that stays, be they neighbours or not. z and w are not looked at, and NaN is near nothing. The removals keep the
    /// order and fire their hooks, with the keep box flag off: the box stays as it was. Linear time on average; where a
    /// derived class sees the removals, each moves the tail.
    void RemoveDuplicateVertices();

    /// Removes duplicates and then exchanges vertices, two at a time, until no two sides cross, without adding any.
    /// Vertex 0 stays first. Sides cross by TEdge2::Intersects with the common tolerance: an end of one inside another
    /// counts, a side within a collinear other does not. Sides that share an end, exactly, are never tested. The end of
    /// the earlier side and the start of the later one are exchanged.
    ///
    /// Whole vertices are moved, by plain writes. The hooks fire for duplicates and for a closing vertex that is added
    /// and removed again, with the keep box flag off: the box stays as it was. The number of passes has no limit: on
    /// nearly collinear vertices it may not come to an end. A pass costs the logarithm of the count for each side that
    /// has few others near it or on its line; at worst it is quadratic. Memory that runs out leaves the vertices, less
    /// duplicates.
    void MakeSimplePolygon();

    /// Cuts the outline at its self-crossings: walks the sides from vertex 0 and at the first crossing along a side
    /// jumps to the side that crosses it, so that the loop in between is gone. The vertices are rebuilt, with z of 0
    /// and w of 1, also where nothing crosses.
    ///
    /// Sides cross where TLine2::IntersectWith, at the common tolerance, finds a point of their lines that is within
    /// both by TEdge2::IsWithin, ends included; neighbours are not tested. The crossing nearest to the start of a side
    /// is the first, the earlier side on a tie; it is measured from that start also after a jump. The walk's last
    /// vertex goes if its squared distance from the first is strictly below 1e-8, as a `double` in both forms. The
    /// hooks for clearing, each addition and that removal fire under the caller's keep box flag. A side without length
    /// counts as a vertical line that is within everywhere, so that repeated vertices can cost a part of the outline:
    /// remove duplicates first. Costs the logarithm of the number of sides for each that has few others near it; at
    /// worst quadratic. Memory that runs out leaves the outline as it was.
    void TrimCrossings();

protected:
    /// Half the sum of the shoelace terms over the run of vertices from `first` to `last`, closed by the chord back to
    /// `first`; positive when counter-clockwise. If `first` is not below `last` the run passes over the end of the
    /// list; where the two are equal it is the whole cycle. Both indices must be below the count.
    T GetSignedSimpleArea(unsigned int first, unsigned int last) const;
    /// The absolute value of the signed area of the run of vertices from `first` to `last`, closed by the chord back to
    /// `first`. If `first` is not below `last` the run passes over the end of the list. Both indices must be below the
    /// count.
    T GetSimpleArea(unsigned int first, unsigned int last) const
    {
        return Numbers::Absolute(GetSignedSimpleArea(first, last));
    }

    /// The shoelace term of the vertices a and b, not halved: twice the signed area of their triangle with the origin.
    /// Both indices must be below the count.
    T GetSignedTriangleAreaWithOrigin(unsigned int a, unsigned int b) const;

    /// The edge shifted by `distance` to its right, seen from start to end; a negative distance shifts it to the left.
    /// An edge without length stays where it is.
    TEdge2<T> OffsetEdge(const TEdge2<T>& edge, const T& distance) const;

    /// Appends the vertices of the offset outline at the corner where edge `first` runs into edge `second`: none, the
    /// crossing of the shifted edges, or their two ends, bridged by a vertex between them where the corner opens.
    /// `distance` is the shift of OffsetEdge, `negative` whether the caller asked for an inward offset.
    ///
    /// None where the end of the shifted first and the start of the shifted second are at a squared distance of 1e-8 or
    /// less, or where their lines do not cross by TEdge2::IntersectWith at the common tolerance. The crossing where it
    /// is within both. Else the two ends; and between them, where the turn (the cross product of `first` with the way
    /// from its start to the end of `second`) is above 0.0001, or with `negative` below -0.0001, strictly, the corner
    /// moved by |distance| along the bisector. These limits are true `double`s in both forms. Each vertex has z of 0
    /// and w of 1 and is added by itself, with its hook; memory that runs out leaves those added so far.
    void AddOffsetPoints(const TEdge2<T>& first, const TEdge2<T>& second, const T& distance, bool negative);

    /// Clears the flags of the vertices strictly between `first` and `last` that lie within `tolerance` of the chord,
    /// splitting the run at its farthest vertex where that lies beyond; at the tolerance counts as within. `keep` holds
    /// a flag for each vertex of the polygon and must not be null; flags are only ever cleared. A distance of NaN
    /// counts as -1. `first` must not be above `last`, nor `last` beyond the last vertex. Needs no stack to speak of.
    void SimplifySection(unsigned int first, unsigned int last, bool* keep, T tolerance) const;

private:
    /// Turns the raw outline so that it starts at its first vertex whose distance from the edges before offsetting is
    /// |distance|, within 1e-6 strictly. False if there is none; the vertices are then left as they are.
    [[nodiscard]] bool ReorderOffset(TList<TEdge2<T>> sourceEdges, T distance);

    /// Replaces the vertices by those of the raw outline at a distance, turned to its start, but not yet trimmed. False
    /// where Offset is.
    [[nodiscard]] bool MakeRawOffset(T distance);

    /// Replaces the vertices by those of the offset outline at all corners, from that between edges 0 and 1 on.
    void AddCorners(const TList<TEdge2<T>>& edges, const T& distance, bool negative);

    /// Finds the sign of `*distance` that shifts the edges to the side asked for, turning the vertices by one for each
    /// edge that does not tell. False if no edge does.
    [[nodiscard]] bool OrientOffset(TList<TEdge2<T>>* edges, bool negative, T* distance);

    /// The same where there is nobody to see the vertices turn: all at once.
    [[nodiscard]] bool OrientUnseen(TList<TEdge2<T>>* edges, bool negative, T* distance);

    /// Removes each vertex j that has an original[j], in the order of the originals and then of j, as if each vertex
    /// that stays cleared in turn what lies near it.
    void RemoveRepeats(const unsigned int* original, unsigned int repeatCount);

    /// Removes vertices in a given order, with the keep box flag off, where there is nobody to see it: in one pass, to
    /// the last slot as by one removal after the other.
    void RemoveUnseen(const unsigned int* order, unsigned int removalCount);

    /// Adds points of the plane as vertices, each by itself where a derived class could tell, else at once.
    void AddInPlane(const TVector2<T>* points, unsigned int n);

    /// Puts the next vertex in polar order on the hull, which holds two or more, and takes back what would turn right.
    void AddHullVertex(const V<T>& vertex);
};

CORVEX_INSTANTIATE_SETS(extern, TPolygon);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

// Plain containers of polygon pointers.
CORVEX_INSTANTIATE_SET_POINTERS(extern, TList, TPolygon);
CORVEX_INSTANTIATE_SET_POINTERS(extern, TMap, TPolygon);

} // namespace Halmont::Orrin::CorvexUtilities

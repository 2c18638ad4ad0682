#pragma once

/// Regions of the plane: any number of outlines with holes, united, cut and offset without losing a piece.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/primitives/TBox.h>
#include <CorvexMaths/primitives/TTriangle.h>
#include <CorvexMaths/vectors/TVector2.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Halmont::Orrin::CorvexMaths
{

namespace Kernels
{
class Grid;
class GridRings;
struct InsideRule;
struct OutlineSet;
} // namespace Kernels

/// Which points lie inside outlines that cross or contain one another, by how often these go round them: the winding
/// number, to which a counter-clockwise turn counts 1 and a clockwise one -1.
enum class WindingRule
{
    NonZero, ///< Inside where the number is not 0: whatever any outline goes round.
    EvenOdd, ///< Inside where the number is odd: in turn at each outline, whatever its sense.
    Positive ///< Inside where the number is above 0: clockwise outlines take away.
};

/// What fills the gap where an offset opens a corner.
enum class Join
{
    Round, ///< An arc around the corner, as tangents.
    Mitre, ///< The shifted edges, prolonged until they meet; cut off across the bisector where that is too far.
    Bevel  ///< One straight edge between the ends.
};

/// How the offset of an open path ends.
enum class Cap
{
    Butt,   ///< Straight across the end point.
    Square, ///< Straight across, by the distance beyond the end point.
    Round   ///< A half circle around the end point, as tangents.
};

/// Where a point lies.
enum class RegionSide
{
    Outside, ///< Outside all outlines, or in a hole.
    OnRim,   ///< On an edge or a vertex, exactly.
    Inside   ///< Inside, off the rim.
};

/// What became of the points that a region was made of.
enum class RegionStatus
{
    Done,         ///< The region holds; it may well be empty, as where regions that do not meet are intersected.
    TooFewPoints, ///< Empty: no outline had three vertices.
    NoArea,       ///< Empty: no point lies inside the outlines by the rule.
    NotFinite,    ///< Empty: a coordinate or another argument is NaN or infinite, or too large for the result.
    Vanished      ///< The region holds, but an outline had an extent below one step of the grid, and left nothing.
};

/// The points of the plane inside any number of outlines, for T of `float` and `double`: a plain value.
///
///     const TRegion<double> pocket(polygon);
///     const TRegion<double> rest = pocket.Subtract(island).Offset(-2.0);
///     for (const TPolygon<double, TVector2>& outline : rest.GetOutlines()) ...
///
/// Outer outlines run counter-clockwise and holes clockwise. No two edges cross or overlap, and no outline passes twice
/// through one point; outlines may touch one another in vertices. Each starts at its lowest vertex, of equally low ones
/// the leftmost, and they are in the order of these. No vertex lies on the line of its neighbours, but where outlines
/// touch. So a set of points has one form, whatever it was made from, in which order and from which vertex on.
///
/// **The grid.** Coordinates are rounded once, to whole multiples of a step: the smallest power of two of which the
/// extent of the data holds at most 2^41, at least 2^40, and of which `double` holds all multiples up to the largest
/// coordinate. GetStep tells it. From there on all decisions are about whole numbers and exact, and edges that cross
/// meet in a point of the grid, by snap rounding (J. D. Hobby, 1999; L. J. Guibas and D. H. Marimont, 1998): no edge
/// moves by more than half a step in x or in y, and none comes to cross another. Where all crossings lie on the grid
/// nothing moves at all. The answers are the same bits on every machine, and an answer taken as input again is
/// unchanged.
///
/// Regions of `float` are held in the same grid. Where they leave as polygons of `float`, each coordinate is rounded to
/// the nearest `float`, which can make outlines touch that do not; convert the region to `double` where that matters.
///
/// Regions with different steps are brought to the coarser one before they meet, or to that which their joint extent
/// needs. Exhausted memory passes as the allocator's exception and leaves all operands as they were. A region never
/// changes but by assignment; copies share what they hold, so copying costs nothing, and any number of threads may use
/// them at once.
///
/// Operations take time nearly in proportion to the vertices plus the crossings of their edges.
template <class T>
class CORVEX_API TRegion
{
public:
    /// An outer outline with its holes.
    struct Piece
    {
        TPolygon<T, TVector2> outline;            ///< The outer outline, counter-clockwise.
        std::vector<TPolygon<T, TVector2>> holes; ///< Its holes, clockwise.
    };

    /// The empty region, of status `Done`.
    TRegion();

    /// The points inside a closed outline by a rule. The outline may cross and touch itself, run back on itself and
    /// repeat vertices.
    explicit TRegion(const TPolygon<T, TVector2>& outline, WindingRule rule = WindingRule::NonZero);

    /// The points inside several outlines taken together by a rule: winding numbers are summed over all of them. Where
    /// many outlines cover one another again and again, regions of each and Unite of all take less time.
    explicit TRegion(const std::vector<TPolygon<T, TVector2>>& polygons, WindingRule rule = WindingRule::NonZero);

    /// The same region for the other scalar, exactly.
    template <class S, EnableForOther<S, T> = 0>
    explicit TRegion(const TRegion<S>& other)
        : outlines(other.outlines), stepExponent(other.stepExponent), status(other.status)
    {}

    // Queries.

    /// What became of the points it was made of.
    RegionStatus GetStatus() const { return status; }
    /// A status in words, for messages: in English, without a full stop. The text lives as long as the program.
    static const char* Describe(RegionStatus which);
    /// Whether it holds no point.
    bool IsEmpty() const;
    /// The step of its grid, a power of two; 1 for a region that was made of nothing.
    double GetStep() const;
    /// How many outlines it has, outer ones and holes.
    unsigned int GetOutlineCount() const;
    /// How many vertices its outlines have.
    unsigned int GetVertexCount() const;

    /// All outlines in order, outer ones counter-clockwise and holes clockwise. Boxes are calculated. Linear time.
    std::vector<TPolygon<T, TVector2>> GetOutlines() const;
    /// The outer outlines, each with its holes; both in the order of outlines. Pieces may touch in vertices, and holes
    /// their outline, but the inside of each piece is connected. Linear time.
    std::vector<Piece> GetPieces() const;

    /// The area, of outer outlines less holes: summed in whole numbers, exactly, and then rounded. Linear time.
    T GetArea() const;
    /// The box around all vertices, in the plane of z = 0; empty, as default-made, for an empty region. Linear time.
    TBox<T> GetBoundingBox() const;
    /// Where a point lies, exactly. A point of NaN or an infinite one is outside. Linear time.
    RegionSide IsWithin(const TVector2<T>& point) const;

    /// Whether both have the same outlines. Neither steps nor statuses are compared.
    bool operator==(const TRegion& other) const;
    /// Whether the outlines differ.
    bool operator!=(const TRegion& other) const { return !(*this == other); }

    // Operations on regions. The status is `Done`, or `Vanished` where an outline left nothing on the common grid; or
    // `NotFinite`, and the result empty, where no grid can hold both.

    /// The points of either region.
    TRegion Unite(const TRegion& other) const;
    /// The points that both regions have.
    TRegion Intersect(const TRegion& other) const;
    /// The points of this region that the other does not have.
    TRegion Subtract(const TRegion& other) const;
    /// The points of one region that the other does not have.
    TRegion Exclude(const TRegion& other) const;

    /// The points of any of the regions; empty for none. Their order does not matter. Many regions are united in groups
    /// of neighbours, and the groups again, which takes less time than all at once where they cover one another; an
    /// edge may move by half a step in each round of that.
    static TRegion Unite(const std::vector<TRegion>& regions);
    /// The points that all the regions have; empty for none.
    static TRegion Intersect(const std::vector<TRegion>& regions);
    /// The points that an odd number of the regions have; empty for none.
    static TRegion Exclude(const std::vector<TRegion>& regions);

    // Offsets and what else is made of one region.

    /// The region grown by a distance, or shrunk by it where it is negative: every point nearer to the region is added,
    /// or every point nearer to the outside taken away, piece by piece and hole by hole. Nothing is lost: the curve of
    /// rectangles along the edges and joins about the corners is arranged as a whole, by its winding numbers.
    ///
    /// Copies of edges are at the distance, exactly where that falls on the grid. With `Join::Round` and `Join::Mitre`
    /// no vertex of the result is nearer to the rim than the distance less one step, and with `Join::Round` none is
    /// farther than the distance, `limit` and one step together: arcs are drawn as tangents, not as chords.
    ///
    /// `limit` is, for `Join::Round`, how far a corner of the tangents may lie beyond the arc, in the unit of the
    /// coordinates (a 1024th of the distance unless above 0; at least four steps and a 2^31st of the distance), and for
    /// `Join::Mitre` how far the tip of a corner may lie from it, in distances (4 unless above 0); a corner that is
    /// sharper is cut off across its bisector at the distance. `Join::Bevel` joins the ends of the copies and so comes
    /// nearer to the corner than the distance.
    ///
    /// Where the result needs it, its grid is coarser. The status is `NotFinite` where a number is not finite or the
    /// distance 2^40 times the extent. A distance below half a step changes nothing. Time grows nearly in proportion to
    /// the vertices, however dense they are for the distance; only with bevels, and with mitres at corners that open,
    /// each edge meets all others within the distance.
    /// @param distance How far the region grows, or shrinks where it is below 0.
    /// @param join What fills the gaps at corners that open.
    /// @param limit How exact arcs are, or how long tips may be.
    TRegion Offset(T distance, Join join = Join::Round, T limit = T(0)) const;

    /// The points nearer than a distance to an open path through the points in order, which may cross itself, run back
    /// on itself and repeat points. A path of one point has a disc, a square along the axes, or with `Cap::Butt`
    /// nothing.
    ///
    /// Promises and `limit` are as for Offset, and `limit` serves `Cap::Round` too unless the join is `Join::Mitre`.
    /// The status is `TooFewPoints` without points and `NoArea` where the distance is not above 0 or nothing is left.
    /// @param points The path.
    /// @param distance How far the region reaches to either side.
    /// @param join What fills the gaps at corners.
    /// @param cap How the region ends at the first point and at the last.
    /// @param limit How exact arcs are, or how long tips may be.
    static TRegion OffsetLine(const TPointSet<T, TVector2>& points, T distance, Join join = Join::Round,
                              Cap cap = Cap::Round, T limit = T(0));

    /// The region with fewer vertices: each edge stands for a stretch of outline, no point of which is farther from it
    /// than the tolerance, inclusive. Vertices go one by one, those first that cost least, and only where the triangle
    /// with their neighbours holds no other vertex: no outline comes to cross, touch or overlap another or itself, and
    /// there are as many outlines as before. A tolerance of 0 or below changes nothing. Time grows as n log n
    /// where these triangles are small for the region.
    TRegion Simplify(T tolerance) const;

    /// The region as triangles between its vertices, counter-clockwise, side by side, of which all its edges are sides:
    /// the constrained Delaunay triangulation, in which no vertex that a triangle sees from its inside lies in its
    /// circle. For `double` corners are the vertices and areas add up exactly; for `float` each coordinate is rounded.
    ///
    /// Of v vertices, p pieces and h holes, v + 2 h - 2 p triangles, two fewer for each vertex in which a hole touches
    /// another outline of its piece. Time grows as n log n unless edges cross very many diagonals between nearer
    /// vertices, and with the square at worst.
    std::vector<TTriangle2<T>> Triangulate() const;

private:
    template <class S>
    friend class TRegion;

    /// The region of outlines on a grid.
    TRegion(Kernels::OutlineSet&& set, const Kernels::Grid& grid, RegionStatus became);

    /// The empty region of a status.
    explicit TRegion(RegionStatus became);

    /// The points inside rings by a rule.
    TRegion(const Kernels::GridRings& rings, WindingRule rule);

    /// What a rule says of several regions on a common grid. To the winding numbers that it is given each region
    /// contributes its weight where a point is inside.
    static TRegion Combine(const std::vector<const TRegion*>& operands, const std::vector<long long>& weights,
                           const Kernels::InsideRule& isInside);

    /// The same of two regions, of which the second counts 2.
    TRegion Combine(const TRegion& other, const Kernels::InsideRule& isInside) const;

    /// The same of regions that count 1 each.
    static TRegion Combine(const std::vector<TRegion>& regions, const Kernels::InsideRule& isInside);

    /// What it holds, never changed; null for an empty region.
    std::shared_ptr<const Kernels::OutlineSet> outlines;
    /// The step as an exponent of two.
    int stepExponent = 0;
    RegionStatus status = RegionStatus::Done;
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TRegion);

} // namespace Halmont::Orrin::CorvexMaths

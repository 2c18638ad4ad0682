#include <CorvexMaths/regions/internal/OffsetCurve.h>

#include <CorvexMaths/regions/internal/CurveWriter.h>
#include <CorvexMaths/regions/internal/PlaneVector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

// The raw curve, and why it loses nothing
// ---------------------------------------
// A ring is followed with its inside, or outside, to the right. Each edge gives the rectangle between itself and its
// copy, moved to the right by the distance r; each corner that opens to the right (the ring turns left there) gives
// the wedge of its join. Every point to the right of the ring that is nearer to it than r has its nearest point on an
// edge, and then lies in that rectangle, or at an open corner, and then in that wedge. The borders of rectangles and
// wedges, all counter-clockwise, and the ring add up to the raw curve: along the copies and joins, and at a corner
// that closes, from the end of one copy through the corner itself to the start of the next. So the curve winds round
// a point as often as the rings do, plus once for each rectangle and wedge over it. No piece and no hole can be lost.
//
// Pits
// ----
// Where the ring is dense for the distance, neighbouring rectangles overlap many times over, and an arrangement would
// have to sort out crossings by the square of their number. Most are avoided beforehand: think of a disc of radius r
// that rolls along the ring. Where it rests on two places u and w at once, its centre x lying to the right of the way
// from u to w, what the ring does from u to w is the pit below it. Its rectangles and wedges are left out, and what
// the ways u x and x w cut off is filled instead: the curve turns at x from the copy or arc about u into that about
// w.
//
//   Theorem. If the pit keeps out of the open disc about x, the points nearer than r are covered as before. Proof.
//   Let p be nearer than r to a point q of the pit, and not covered by rings and fillings. The way from q to p leaves
//   the fillings through a side, say u x, at y. As |x q| >= r = |x y| + |y u|, |y q| >= |x q| - |x y| >= |y u|, so
//   that p is as near to u as to q. Hence the nearest place that p has on what is kept of the ring is nearer than r,
//   and p lies in its rectangle or wedge.
//
// Nothing else is covered if the filling itself lies within r of the ring. The triangle u x w does, by its sides of
// length r. The rest does if all of the pit lies in the discs about u and w, of which the one about x only cuts the
// notch between them. Or if the pit stays on the left of the line u w and is narrow: a parallel to that line through
// any point of the rest ends on the pit on both sides, within r on one of them if the pit is at most 2 r wide along
// it; a line in any other direction ends on the pit on one side at least, within r if the pit is no wider that way.
// In all cases the pit with u x w is a simple loop, run the same way as the triangle, which makes it wind once more.
// An open line may cross itself; there the pit must advance along u w throughout, for the same end.
//
// At an end that is cut straight the disc is not covered either. Where that end is the nearest place to p, it lies
// within 2 r of q; so pits that come so near to it are not filled.
//
// A mitre reaches beyond the disc, a bevel less far. So with mitres a pit ends at an open corner. With bevels, which
// leave the discs about corners uncovered, only the overlap of two rectangles at a closed corner is cut off, where it
// lies in both of them: of k such overlaps at one point, no two on the same half of an edge, k + 1 rectangles remain.
//
// Whether a pit is found is a matter of speed alone: what cannot be proved by these conditions stays as it is.
//
// Rounding
// --------
// Copies, tangents and crossings are computed with `double`, relative to the first vertex: their error is some
// thousandths of a step of the curve, which may be coarser than those of the rings. Each point is rounded to the
// nearest of those corners of its cell that are not nearer than r to either of the features it lies on. Where they
// turn by a right angle or more there may be none. The tip of a mitre is then the nearest to that for a distance
// greater by half the diagonal of a cell. At a notch one corner is taken for each of the two features, and the curve
// crosses itself before them: that it winds more often beyond the notch, where both cover, changes nothing. So copies
// and joins lie nowhere nearer than r, nor further than a step and a half beyond, and copies that fall on the grid are
// exact. The arrangement moves crossings by half a step in x and y, which together is less than a step.

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = std::uint32_t;

/// Directions in which widths are measured.
constexpr PlaneVector widthDirections[] = {{1, 0}, {0, 1}, {1, 1}, {1, -1}, {2, 1}, {1, 2}, {2, -1}, {1, -2}};

/// How the curve comes to an element.
enum class Link : std::uint8_t
{
    Natural, ///< From the element before it on the ring, touching.
    Cut,     ///< From another one through a common point.
    Spike,   ///< From the edge before it through their closed corner.
    Raw      ///< Not known yet: by way of all elements between.
};

/// A part of the curve: the join at a corner, or the copy of an edge. Element 2 i is the join at vertex i, 2 i + 1
/// the copy of the edge that starts there; a second lap round the ring counts on.
struct Part
{
    Index element;
    Link link;
    PlaneVector start; ///< Where it is cut from the one before.
};

/// One closed chain of vertices, and the curve to its right.
class Chain
{
public:
    Chain(const Ring& ring, const OffsetRule& offsetRule, bool isLine)
        : rule(offsetRule),
          r(offsetRule.distance),
          slack(rule.Fine(OffsetRule::slack)),
          origin(OriginOf(ring.front())),
          isOpenLine(isLine)
    {
        Prepare(ring);
    }

    void Write(Ring* curve)
    {
        // Pits of any breadth at first. Where some are not proved, those that are wide in every direction may have
        // swallowed others that would be.
        std::vector<Part> parts = FindParts(HUGE_VAL);
        CheckPits(&parts);
        if (CountRaw(parts) > 0) {
            std::vector<Part> others = FindParts(4 * r);
            CheckPits(&others);
            if (CountRaw(others) < CountRaw(parts)) parts.swap(others);
            parts = Fill(parts);
            CheckOrder(&parts);
        }
        Emit(parts, curve);
    }

private:
    const OffsetRule& rule;
    const double r;
    const double slack;
    const GridPoint origin;
    const bool isOpenLine;
    Index count = 0;
    std::vector<PlaneVector> places;  // of the vertices, from the origin
    std::vector<PlaneVector> normals; // of the edges, of length 1, to the right
    std::vector<double> lengths;

    /// A point near another that is on the grid of the curve too.
    GridPoint OriginOf(const GridPoint& point) const
    {
        return {(point.x >> rule.coarser) * (std::int64_t(1) << rule.coarser),
                (point.y >> rule.coarser) * (std::int64_t(1) << rule.coarser)};
    }

    void Prepare(const Ring& ring)
    {
        count = static_cast<Index>(ring.size());
        places.resize(count);
        normals.resize(count);
        lengths.resize(count);
        for (Index i = 0; i < count; ++i)
            places[i] = {static_cast<double>(ring[i].x - origin.x), static_cast<double>(ring[i].y - origin.y)};
        for (Index i = 0; i < count; ++i) {
            const PlaneVector along = places[Next(i)] - places[i];
            lengths[i] = std::sqrt(Dot(along, along));
            normals[i] = {along.y / lengths[i], -along.x / lengths[i]};
        }
    }

    // The ring

    Index Next(Index i) const { return i + 1 < count ? i + 1 : 0; }
    Index Previous(Index i) const { return i > 0 ? i - 1 : count - 1; }
    static bool IsEdge(Index element) { return (element & 1) != 0; }
    /// The vertex of a corner, or at which an edge starts, whatever the lap.
    Index VertexOf(Index element) const
    {
        const Index vertex = element >> 1;
        return vertex < count ? vertex : vertex - count;
    }
    const PlaneVector& BeforeCorner(Index vertex) const { return normals[Previous(vertex)]; }
    PlaneVector Along(Index edge) const { return {-normals[edge].y, normals[edge].x}; }
    /// Where the outline of the line turns back.
    bool IsEnd(Index vertex) const { return isOpenLine && (vertex == 0 || vertex == count / 2); }

    bool IsOpen(Index vertex) const
    {
        if (IsEnd(vertex)) return true;
        const PlaneVector in = places[vertex] - places[Previous(vertex)];
        const PlaneVector out = places[Next(vertex)] - places[vertex];
        return Cross(in, out) >= 0;
    }

    CornerShape ShapeOf(Index vertex) const { return IsEnd(vertex) ? rule.end : rule.join; }

    // Where the dilated edges meet

    /// The zones of the border of an edge dilated by a disc, along its right side.
    enum class Zone : std::uint8_t
    {
        Before, ///< The half circle about its start.
        Copy,   ///< The copy of the edge.
        After   ///< The half circle about its end.
    };

    /// Where the right side of one dilated edge crosses into that of a later one.
    struct Crossing
    {
        PlaneVector x;
        Zone from, to;
    };

    /// Two dilated edges that do not cross have borders that meet twice, once on the right, if at all: in one pair of
    /// their zones. The pairs that are frequent come first.
    bool FindCrossing(Index b, Index c, Crossing* crossing) const
    {
        static constexpr Zone pairs[9][2] = {
            {Zone::Copy, Zone::Copy},   {Zone::After, Zone::Before},  {Zone::Copy, Zone::Before},
            {Zone::After, Zone::Copy},  {Zone::Before, Zone::Before}, {Zone::After, Zone::After},
            {Zone::Before, Zone::Copy}, {Zone::Copy, Zone::After},    {Zone::Before, Zone::After}};
        const Index end = rule.join == CornerShape::Round ? 9 : 1;
        for (Index i = 0; i < end; ++i) {
            crossing->from = pairs[i][0];
            crossing->to = pairs[i][1];
            if (Meet(b, crossing->from, c, crossing->to, &crossing->x) && IsIn(crossing->from, b, crossing->x) &&
                IsIn(crossing->to, c, crossing->x))
                return true;
        }
        return false;
    }

    bool IsIn(Zone zone, Index edge, const PlaneVector& x) const
    {
        const double along = Dot(x - places[edge], Along(edge));
        return zone == Zone::Before ? along <= slack
               : zone == Zone::Copy ? along >= -slack && along <= lengths[edge] + slack
                                    : along >= lengths[edge] - slack;
    }

    bool Meet(Index b, Zone from, Index c, Zone to, PlaneVector* x) const
    {
        const Index u = from == Zone::After ? Next(b) : b;
        const Index w = to == Zone::After ? Next(c) : c;
        if (from == Zone::Copy) return to == Zone::Copy ? CopyIntoCopy(b, c, x) : CopyIntoArc(b, w, x);
        return to == Zone::Copy ? ArcIntoCopy(u, c, x) : ArcIntoArc(u, w, x);
    }

    /// The tangent point of neighbours, r (m + n) / (1 + m n) from their corner, or the crossing of any two copies.
    bool CopyIntoCopy(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector& m = normals[b];
        const PlaneVector& n = normals[c];
        if (Next(b) == c) {
            const double size = 1 + Dot(m, n);
            if (size < 1e-6) return false;
            *x = places[c] + (m + n) * (r / size);
            return true;
        }
        const double turn = Cross(m, n);
        if (!(turn < -1e-9)) return false;
        const PlaneVector gap = places[c] + n * r - (places[b] + m * r);
        *x = places[b] + m * r + Along(b) * (Cross(gap, Along(c)) / turn);
        return true;
    }

    bool CopyIntoArc(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = places[c] - places[b];
        const double height = Dot(way, normals[b]);
        if (!(height >= 0 && height <= 2 * r)) return false;
        *x = places[b] + normals[b] * r + Along(b) * (Dot(way, Along(b)) - std::sqrt(height * (2 * r - height)));
        return true;
    }

    bool ArcIntoCopy(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = places[b] - places[c];
        const double height = Dot(way, normals[c]);
        if (!(height >= 0 && height <= 2 * r)) return false;
        *x = places[c] + normals[c] * r + Along(c) * (Dot(way, Along(c)) + std::sqrt(height * (2 * r - height)));
        return true;
    }

    bool ArcIntoArc(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = places[c] - places[b];
        const double square = Dot(way, way);
        if (!(square > 0 && square < 4 * r * r)) return false;
        const PlaneVector right{way.y, -way.x};
        *x = places[b] + way * 0.5 + right * std::sqrt(r * r / square - 0.25);
        return true;
    }

    // The range of a part

    PlaneVector NaturalStart(Index element) const
    {
        const Index i = VertexOf(element);
        return places[i] + (IsEdge(element) ? normals[i] : BeforeCorner(i)) * r;
    }
    PlaneVector NaturalEnd(Index element) const
    {
        const Index i = VertexOf(element);
        return (IsEdge(element) ? places[Next(i)] : places[i]) + normals[i] * r;
    }

    /// Whether y comes before x on an element; of an arc both are within half a turn.
    bool IsBefore(Index element, const PlaneVector& y, const PlaneVector& x, double margin = 0) const
    {
        const Index i = VertexOf(element);
        if (IsEdge(element)) return Dot(x - y, Along(i)) > margin;
        return Cross(y - places[i], x - places[i]) > margin * r;
    }

    /// The place of the ring about which a point of the curve lies.
    PlaneVector FootOf(Index element, const PlaneVector& x) const
    {
        const Index i = VertexOf(element);
        return IsEdge(element) ? x - normals[i] * r : places[i];
    }

    // The search for pits

    /// The least box round points.
    struct Extent
    {
        PlaneVector low, high;

        void Add(const Extent& other)
        {
            low = {std::min(low.x, other.low.x), std::min(low.y, other.low.y)};
            high = {std::max(high.x, other.high.x), std::max(high.y, other.high.y)};
        }
        double Breadth() const { return std::min(high.x - low.x, high.y - low.y); }
    };

    Extent ExtentOf(Index edge) const
    {
        Extent extent{places[edge], places[edge]};
        extent.Add({places[Next(edge)], places[Next(edge)]});
        return extent;
    }

    /// An edge whose border is part of the curve.
    struct Kept
    {
        Index edge; ///< Counted on through the laps.
        Link link;
        Crossing start; ///< Where it is cut from the one before.
    };

    /// A search as far as it has come.
    struct Search
    {
        double widest;     ///< How broad pits may be.
        std::size_t tries; ///< How many edges may yet be looked at in vain.
        std::vector<Kept> stack;
        std::vector<Extent> pits; ///< Of the edges on the stack with the pits before them, where breadth counts.

        bool IsBounded() const { return widest < HUGE_VAL; }

        void Add(const Kept& kept, const Extent& pit)
        {
            stack.push_back(kept);
            if (IsBounded()) pits.push_back(pit);
        }

        void Resize(std::size_t size)
        {
            stack.resize(size);
            if (IsBounded()) pits.resize(size);
        }

        std::vector<Kept>::iterator Find(Index edge)
        {
            const auto isBefore = [](const Kept& kept, Index sought) { return kept.edge < sought; };
            return std::lower_bound(stack.begin(), stack.end(), edge, isBefore);
        }

        bool Has(Index edge)
        {
            const auto place = Find(edge);
            return place != stack.end() && place->edge == edge;
        }
    };

    /// The edges kept on the way round, cyclic. Goes round once, and on until an edge is met again and nothing near
    /// makes a pit of it.
    std::vector<Kept> FindKept(double widest) const
    {
        constexpr Index none = ~Index(0);
        Search search{widest, std::size_t(64) * count, {}, {}};
        search.stack.reserve(count);
        for (Index edge = 0; edge < count; ++edge) Push(edge, &search);
        Index met = none;
        double since = 0;
        for (Index edge = count; edge < 2 * count && !(met != none && since > 8 * r); ++edge) {
            Push(edge, &search);
            since += lengths[edge - count];
            if (met != none && since > 8 * r && !search.Has(met)) met = none;
            if (met == none && search.stack.back().edge == edge && search.Has(edge - count)) {
                met = edge;
                since = 0;
            }
        }
        if (met != none && !search.Has(met)) met = none;
        for (std::size_t i = 0; met == none && i < search.stack.size() && search.stack[i].edge < count; ++i)
            if (search.Has(search.stack[i].edge + count)) met = search.stack[i].edge + count;
        if (met == none || !search.Has(met - count)) return {};

        const auto first = search.Find(met - count);
        const auto again = search.Find(met);
        first->link = again->link;
        first->start = again->start;
        search.stack.erase(again, search.stack.end());
        search.stack.erase(search.stack.begin(), first);
        return std::move(search.stack);
    }

    /// Adds an edge to those kept so far, after taking back what it makes a pit: like the walk round a convex hull,
    /// with borders of dilated edges for lines.
    void Push(Index edge, Search* search) const
    {
        const Index c = edge % count;
        std::vector<Kept>& stack = search->stack;
        std::size_t left = stack.size();
        Extent pit = ExtentOf(c);
        if (left > 0 && stack.back().edge + 1 == edge && IsOpen(c)) {
            // An arc that another cuts beyond its end is in a pit with the edge before it.
            const Kept& last = stack.back();
            const bool isPast = rule.join == CornerShape::Round && last.link == Link::Cut &&
                                last.start.to == Zone::After && Cross(last.start.x - places[c], normals[c]) < 0;
            if (!isPast) {
                search->Add({edge, Link::Natural, {}}, pit);
                return;
            }
            --left;
            if (search->IsBounded()) pit.Add(search->pits.back());
        }
        for (; left > 0; --left) {
            const Kept& last = stack[left - 1];
            Crossing crossing;
            if (!FindCrossing(last.edge % count, c, &crossing)) break;
            if (IsPast(last, crossing)) {
                search->Resize(left);
                search->Add({edge, Link::Cut, crossing}, pit);
                return;
            }
            if (search->IsBounded()) pit.Add(search->pits[left - 1]);
            if (search->tries == 0 || !MayLeaveOut(last.edge % count) || pit.Breadth() > search->widest) break;
            --search->tries;
        }
        if (left == 0) search->Resize(0);
        search->Add({edge, left == 0 ? Link::Natural : Link::Raw, {}}, ExtentOf(c));
    }

    /// Whether a crossing lies beyond the start of what it leaves.
    bool IsPast(const Kept& kept, const Crossing& crossing) const
    {
        const Index b = kept.edge % count;
        if (kept.link != Link::Cut) return crossing.from != Zone::Before;
        if (kept.start.to != crossing.from) return kept.start.to < crossing.from;
        const PlaneVector way = crossing.x - kept.start.x;
        if (crossing.from == Zone::Copy) return Dot(way, Along(b)) > 0;
        const PlaneVector& centre = places[crossing.from == Zone::Before ? b : Next(b)];
        return Cross(kept.start.x - centre, crossing.x - centre) > 0;
    }

    /// Whether an edge may come to be in a pit, with its start: a join that is not round ends a pit.
    bool MayLeaveOut(Index edge) const
    {
        return rule.join == CornerShape::Round || (rule.join == CornerShape::Mitre && !IsOpen(edge));
    }

    /// The elements of what is kept.
    std::vector<Part> FindParts(double widest) const
    {
        const std::vector<Kept> kept = FindKept(widest);
        if (kept.empty()) return {{1, Link::Raw, {}}};
        std::vector<Part> parts;
        parts.reserve(2 * kept.size());
        for (std::size_t i = 0; i < kept.size(); ++i)
            AddParts(kept[i > 0 ? i - 1 : kept.size() - 1], kept[i], kept[i + 1 < kept.size() ? i + 1 : 0], &parts);
        return parts;
    }

    /// Adds the join before an edge, its copy and the join after it, as far as the curve runs along them.
    void AddParts(const Kept& before, const Kept& kept, const Kept& next, std::vector<Part>* parts) const
    {
        const Index edge = kept.edge % count;
        const bool isCut = kept.link == Link::Cut;
        const Zone from = isCut ? kept.start.to : Zone::Before;
        const Zone to = next.link == Link::Cut ? next.start.from : std::max(from, Zone::Copy);
        const auto add = [&](Zone zone, Index element, Link link) {
            if (isCut && zone == from) link = Link::Cut;
            parts->push_back({element % (2 * count), link, kept.start.x});
        };
        // The edge before may end with the join that this one would start with.
        const bool isDone = before.link == Link::Cut && before.start.to == Zone::After;
        const bool hasJoin = kept.link == Link::Natural && !isDone && IsOpen(edge);
        if (from == Zone::Before && (isCut || hasJoin)) add(Zone::Before, 2 * edge, Link::Natural);
        if (from <= Zone::Copy && to >= Zone::Copy)
            add(Zone::Copy, 2 * edge + 1, kept.link == Link::Raw ? Link::Raw : Link::Natural);
        if (to == Zone::After && (from == Zone::After || IsOpen(Next(edge))))
            add(Zone::After, 2 * edge + 2, Link::Natural);
    }

    // What is proved

    /// Gives up all cuts whose pit does not meet the conditions.
    void CheckPits(std::vector<Part>* parts) const
    {
        for (std::size_t i = 0; i < parts->size(); ++i) {
            Part& to = (*parts)[i];
            const Part& from = (*parts)[i > 0 ? i - 1 : parts->size() - 1];
            if (to.link == Link::Cut && !IsPit(from.element, to.element, to.start)) to.link = Link::Raw;
        }
        for (std::size_t i = 0; i < parts->size(); ++i) {
            Part& part = (*parts)[i];
            Part& next = (*parts)[i + 1 < parts->size() ? i + 1 : 0];
            if (part.link == Link::Cut && next.link == Link::Cut &&
                IsBefore(part.element, next.start, part.start, slack)) {
                part.link = Link::Raw;
                next.link = Link::Raw;
            }
        }
    }

    /// How many elements raw links pass over.
    std::size_t CountRaw(const std::vector<Part>& parts) const
    {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (parts[i].link == Link::Raw) {
                const Index from = parts[i > 0 ? i - 1 : parts.size() - 1].element;
                sum += 1 + (parts[i].element + 2 * count - from - 1) % (2 * count);
            }
        return sum;
    }

    bool IsPit(Index from, Index to, const PlaneVector& x) const
    {
        if (IsBefore(from, x, NaturalStart(from), slack) || IsBefore(from, NaturalEnd(from), x, slack)) return false;
        if (IsBefore(to, x, NaturalStart(to), slack) || IsBefore(to, NaturalEnd(to), x, slack)) return false;
        if (!IsOn(from, x) || !IsOn(to, x)) return false;
        const PlaneVector u = FootOf(from, x);
        const PlaneVector w = FootOf(to, x);
        const PlaneVector chord = w - u;
        if (!(Cross(chord, x - u) < 0)) return false;
        const Index first = IsEdge(from) ? Next(VertexOf(from)) : VertexOf(from);
        const Index last = VertexOf(to);
        if (rule.join == CornerShape::Bevel || (first == last && IsNearCutEnd(first)))
            return first == last && IsOverlap(VertexOf(from), last);

        const auto runsBack = [&](Index element) {
            return isOpenLine && IsEdge(element) && !(Dot(chord, Along(VertexOf(element))) > 0);
        };
        if (runsBack(from) || runsBack(to)) return false;
        bool isBelow = true;
        for (Index i = first;; i = Next(i)) {
            if (Cross(chord, places[i] - u) < -slack * r) isBelow = false;
            if (IsNearCutEnd(i)) return false;
            if (i == last) break;
            if (isOpenLine && !(Dot(chord, Along(i)) > 0)) return false;
            if (IsEnd(i) || IsEntered(i, x)) return false;
        }
        return IsWithinDiscs(u, first, last, w) || (isBelow && IsNarrow(u, first, last, w));
    }

    /// Whether the edges at a vertex come within 2 r of an end that is cut straight.
    bool IsNearCutEnd(Index vertex) const
    {
        if (!isOpenLine || rule.end != CornerShape::Bevel) return false;
        const double least = 2 * r + std::max(lengths[Previous(vertex)], lengths[vertex]);
        const auto isNear = [&](const PlaneVector& end) {
            const PlaneVector way = places[vertex] - end;
            return Dot(way, way) < least * least;
        };
        return isNear(places[0]) || isNear(places[count / 2]);
    }

    /// Whether each edge of a pit lies in the disc about one of its ends.
    bool IsWithinDiscs(const PlaneVector& u, Index first, Index last, const PlaneVector& w) const
    {
        const auto isNear = [this](const PlaneVector& a, const PlaneVector& b) { return Dot(b - a, b - a) <= r * r; };
        const bool areNear = isNear(u, w);
        bool wasNearU = true;
        bool wasNearW = areNear;
        for (Index i = first;; i = Next(i)) {
            const bool isNearU = isNear(u, places[i]);
            const bool isNearW = isNear(w, places[i]);
            if (!(isNearU && wasNearU) && !(isNearW && wasNearW)) return false;
            wasNearU = isNearU;
            wasNearW = isNearW;
            if (i == last) return isNearW || areNear;
        }
    }

    /// Whether a pit below the line u w is narrow enough along it, or across the direction in which it reaches
    /// furthest.
    bool IsNarrow(const PlaneVector& u, Index first, Index last, const PlaneVector& w) const
    {
        const PlaneVector chord = w - u;
        PlaneVector furthest = chord;
        for (Index i = first;; i = Next(i)) {
            const PlaneVector way = places[i] - u;
            if (Dot(way, way) > Dot(furthest, furthest)) furthest = way;
            if (i == last) break;
        }
        return WidthAlong(chord, u, first, last, w) <= 2 * r ||
               WidthAlong({-furthest.y, furthest.x}, u, first, last, w) <= r;
    }

    double WidthAlong(const PlaneVector& direction, const PlaneVector& u, Index first, Index last,
                      const PlaneVector& w) const
    {
        double least = std::min(0.0, Dot(direction, w - u));
        double most = std::max(0.0, Dot(direction, w - u));
        for (Index i = first;; i = Next(i)) {
            const double along = Dot(direction, places[i] - u);
            least = std::min(least, along);
            most = std::max(most, along);
            if (i == last) break;
        }
        return (most - least) / std::sqrt(Dot(direction, direction));
    }

    /// Whether a place is on the line of a copy, or on the circle about an open corner, which has it for its join.
    bool IsOn(Index element, const PlaneVector& x) const
    {
        const PlaneVector way = x - places[VertexOf(element)];
        if (IsEdge(element)) return std::fabs(Dot(way, normals[VertexOf(element)]) - r) <= slack;
        const Index vertex = VertexOf(element);
        return IsOpen(vertex) && ShapeOf(vertex) == CornerShape::Round &&
               std::fabs(std::sqrt(Dot(way, way)) - r) <= slack;
    }

    /// Whether an edge comes into the disc about x.
    bool IsEntered(Index edge, const PlaneVector& x) const
    {
        const PlaneVector way = x - places[edge];
        const double along = std::min(std::max(Dot(way, Along(edge)), 0.0), lengths[edge]);
        const PlaneVector gap = way - Along(edge) * along;
        const double least = r - slack;
        return Dot(gap, gap) < least * least;
    }

    /// Whether what two rectangles at a closed corner overlap is within both, on that half of their edges.
    bool IsOverlap(Index edge, Index next) const
    {
        const double sine = -Cross(normals[edge], normals[next]);
        const double size = 1 + Dot(normals[edge], normals[next]);
        // The copies cross at r tan(a / 2), and each ends over the other edge at r sin(a).
        const double reach = std::max(r * sine / size, r * sine);
        return size > 1 && reach <= 0.5 * lengths[edge] && reach <= 0.5 * lengths[next];
    }

    /// Puts all elements between into the places of what is raw. Where two copies meet at a closed corner between,
    /// their overlap is cut off if both are long enough, or else the curve goes through the corner.
    std::vector<Part> Fill(const std::vector<Part>& parts) const
    {
        std::vector<Part> filled;
        filled.reserve(parts.size());
        const Index lap = 2 * count;
        const auto add = [&](Index element) {
            // Where a corner is closed the curve has no part about it.
            if (IsEdge(element) || IsOpen(VertexOf(element))) filled.push_back(NaturalPart(element));
        };
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const Part& to = parts[i];
            if (to.link == Link::Cut) {
                filled.push_back(to);
                continue;
            }
            if (to.link == Link::Raw) {
                const Part& from = parts[i > 0 ? i - 1 : parts.size() - 1];
                for (Index element = (from.element + 1) % lap; element != to.element; element = (element + 1) % lap)
                    add(element);
            }
            add(to.element);
        }
        return filled;
    }

    Part NaturalPart(Index element) const
    {
        const Index vertex = VertexOf(element);
        if (!IsEdge(element) || IsOpen(vertex)) return {element, Link::Natural, {}};
        const Index before = Previous(vertex);
        PlaneVector x;
        if (IsOverlap(before, vertex) && CopyIntoCopy(before, vertex, &x)) return {element, Link::Cut, x};
        return {element, Link::Spike, {}};
    }

    /// Gives up cuts that lie beyond the next cut of the same edge.
    void CheckOrder(std::vector<Part>* parts) const
    {
        // A cut at a corner that both copies end at is given up; a proved pit never needs to be, being checked
        // before.
        for (std::size_t i = 0; i < parts->size(); ++i) {
            Part& part = (*parts)[i];
            Part& next = (*parts)[i + 1 < parts->size() ? i + 1 : 0];
            if (part.link != Link::Cut || next.link != Link::Cut) continue;
            if (!IsBefore(part.element, next.start, part.start, slack)) continue;
            if (IsAtCorner((*parts)[i > 0 ? i - 1 : parts->size() - 1], part))
                part.link = Link::Spike;
            else if (IsAtCorner(part, next))
                next.link = Link::Spike;
        }
    }

    bool IsAtCorner(const Part& from, const Part& to) const
    {
        return IsEdge(from.element) && IsEdge(to.element) && Next(VertexOf(from.element)) == VertexOf(to.element);
    }

    // The points

    void Emit(const std::vector<Part>& parts, Ring* curve) const
    {
        curve->reserve(parts.size());
        CurveWriter writer(rule, origin, curve);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const Part& before = parts[i > 0 ? i - 1 : parts.size() - 1];
            const Part& part = parts[i];
            const Part& next = parts[i + 1 < parts.size() ? i + 1 : 0];
            const Index vertex = VertexOf(part.element);
            if (part.link == Link::Cut)
                writer.AddPoint(part.start, NormalAt(before.element, part.start), NormalAt(part.element, part.start));
            if (part.link == Link::Spike) {
                const PlaneVector& m = BeforeCorner(vertex);
                const PlaneVector& n = normals[vertex];
                writer.AddPoint(places[vertex] + m * r, m, m);
                writer.AddPoint(places[vertex], {}, {});
                writer.AddPoint(places[vertex] + n * r, n, n);
            }
            if (IsEdge(part.element)) continue;
            const PlaneVector from = part.link == Link::Cut ? NormalAt(part.element, part.start) : BeforeCorner(vertex);
            const PlaneVector to = next.link == Link::Cut ? NormalAt(part.element, next.start) : normals[vertex];
            writer.AddJoin(ShapeOf(vertex), places[vertex], from, to);
        }
    }

    /// The direction from the ring in which a point of a part lies.
    PlaneVector NormalAt(Index element, const PlaneVector& x) const
    {
        const Index i = VertexOf(element);
        return IsEdge(element) ? normals[i] : (x - places[i]) * (1 / r);
    }
};

/// Whether all points within a ring are nearer to it than the distance: a line through such a point in the direction
/// in which the ring is narrow leaves it, on one side, within half the width.
bool IsNarrow(const Ring& ring, double distance)
{
    for (const PlaneVector& direction : widthDirections) {
        double least = HUGE_VAL;
        double most = -HUGE_VAL;
        for (const GridPoint& point : ring) {
            const double along = direction.x * static_cast<double>(point.x - ring.front().x) +
                                 direction.y * static_cast<double>(point.y - ring.front().y);
            least = std::min(least, along);
            most = std::max(most, along);
        }
        const double size = std::sqrt(Dot(direction, direction));
        if (most - least < 2 * distance * size) return true;
    }
    return false;
}

double SignedArea(const Ring& ring)
{
    double area = 0;
    const GridPoint& first = ring.front();
    for (std::size_t i = 2; i < ring.size(); ++i)
        area += static_cast<double>(ring[i - 1].x - first.x) * static_cast<double>(ring[i].y - first.y) -
                static_cast<double>(ring[i - 1].y - first.y) * static_cast<double>(ring[i].x - first.x);
    return area;
}

} // namespace

std::vector<Ring> OffsetCurves(const std::vector<Ring>& rings, const OffsetRule& rule)
{
    std::vector<Ring> curves;
    for (const Ring& ring : rings) {
        // Run clockwise, a ring has its inside to the right. If that is covered wholly, the ring is filled instead.
        if (SignedArea(ring) < 0 && IsNarrow(ring, rule.distance - rule.Fine(OffsetRule::slack))) continue;
        curves.emplace_back();
        Chain(ring, rule, false).Write(&curves.back());
    }
    return curves;
}

Ring OffsetCurve(const Ring& line, const OffsetRule& rule)
{
    Ring curve;
    if (line.size() > 1) {
        Ring both = line;
        for (std::size_t i = line.size() - 1; i > 1; --i) both.push_back(line[i - 1]);
        Chain(both, rule, true).Write(&curve);
    } else if (!line.empty() && rule.end != CornerShape::Bevel) {
        CurveWriter writer(rule, line.front(), &curve); // which has no coarser grid
        writer.AddJoin(rule.end, {}, {0, -1}, {0, 1});
        writer.AddJoin(rule.end, {}, {0, 1}, {0, -1});
    }
    return curve;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

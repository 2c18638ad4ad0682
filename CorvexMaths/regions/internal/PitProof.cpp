#include <CorvexMaths/regions/internal/PitProof.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

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
// In all cases the pit with u x w is a simple loop: a ring does not cross itself, and u x and x w lie in the disc. It
// is run the same way as the triangle, which makes it wind once more: the ray from x away from u w leaves the discs
// about u and w at once and stays on the right of the line, so that the pit does not pass round x. An open line may
// cross itself; there the pit must advance along u w throughout, for the same end.
//
// At an end that is cut straight the disc is not covered either. Where that end is the nearest place to p, it lies
// within 2 r of q; so pits that come so near to it are not filled.
//
// A mitre reaches beyond the disc, a bevel less far. So with mitres a pit ends at an open corner. With bevels, which
// leave the discs about corners uncovered, only the overlap of two rectangles at a closed corner is cut off, where it
// lies in both of them: of k such overlaps at one point, no two on the same half of an edge, k + 1 rectangles remain.
//
// Whether a pit is found is a matter of speed alone: what cannot be proved by these conditions stays as it is.

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = OffsetChain::Index;

/// Looks at one pit at a time.
class PitProof
{
public:
    explicit PitProof(const OffsetChain& vertices) : chain(vertices), r(chain.r), slack(chain.slack) {}

    /// Whether the ring from one element to another, the disc about x resting on both, is a pit.
    bool IsPit(Index from, Index to, const PlaneVector& x) const
    {
        if (chain.IsBefore(from, x, chain.NaturalStart(from), slack) ||
            chain.IsBefore(from, chain.NaturalEnd(from), x, slack))
            return false;
        if (chain.IsBefore(to, x, chain.NaturalStart(to), slack) || chain.IsBefore(to, chain.NaturalEnd(to), x, slack))
            return false;
        if (!IsOn(from, x) || !IsOn(to, x)) return false;
        const PlaneVector u = chain.FootOf(from, x);
        const PlaneVector w = chain.FootOf(to, x);
        const PlaneVector chord = w - u;
        if (!(Cross(chord, x - u) < 0)) return false;
        const Index first = chain.IsEdge(from) ? chain.Next(chain.VertexOf(from)) : chain.VertexOf(from);
        const Index last = chain.VertexOf(to);
        if (chain.rule.join == CornerShape::Bevel || (first == last && IsNearCutEnd(first)))
            return first == last && chain.IsOverlap(chain.VertexOf(from), last);

        const auto runsBack = [&](Index element) {
            return chain.isOpenLine && chain.IsEdge(element) && !(Dot(chord, chain.Along(chain.VertexOf(element))) > 0);
        };
        if (runsBack(from) || runsBack(to)) return false;
        bool isBelow = true;
        for (Index i = first;; i = chain.Next(i)) {
            if (Cross(chord, chain.places[i] - u) < -slack * r) isBelow = false;
            if (IsNearCutEnd(i)) return false;
            if (i == last) break;
            if (chain.isOpenLine && !(Dot(chord, chain.Along(i)) > 0)) return false;
            if (chain.IsEnd(i) || IsEntered(i, x)) return false;
        }
        return IsWithinDiscs(u, first, last, w) || (isBelow && IsNarrow(u, first, last, w));
    }

private:
    const OffsetChain& chain;
    const double r;
    const double slack;

    /// Whether the edges at a vertex come within 2 r of an end that is cut straight.
    bool IsNearCutEnd(Index vertex) const
    {
        if (!chain.isOpenLine || chain.rule.end != CornerShape::Bevel) return false;
        const double least = 2 * r + std::max(chain.lengths[chain.Previous(vertex)], chain.lengths[vertex]);
        const auto isNear = [&](const PlaneVector& end) {
            const PlaneVector way = chain.places[vertex] - end;
            return Dot(way, way) < least * least;
        };
        return isNear(chain.places[0]) || isNear(chain.places[chain.count / 2]);
    }

    /// Whether each edge of a pit lies in the disc about one of its ends.
    bool IsWithinDiscs(const PlaneVector& u, Index first, Index last, const PlaneVector& w) const
    {
        const auto isNear = [this](const PlaneVector& a, const PlaneVector& b) { return Dot(b - a, b - a) <= r * r; };
        const bool areNear = isNear(u, w);
        bool wasNearU = true;
        bool wasNearW = areNear;
        for (Index i = first;; i = chain.Next(i)) {
            const bool isNearU = isNear(u, chain.places[i]);
            const bool isNearW = isNear(w, chain.places[i]);
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
        for (Index i = first;; i = chain.Next(i)) {
            const PlaneVector way = chain.places[i] - u;
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
        for (Index i = first;; i = chain.Next(i)) {
            const double along = Dot(direction, chain.places[i] - u);
            least = std::min(least, along);
            most = std::max(most, along);
            if (i == last) break;
        }
        return (most - least) / std::sqrt(Dot(direction, direction));
    }

    /// Whether a place is on the line of a copy, or on the circle about an open corner, which has it for its join.
    bool IsOn(Index element, const PlaneVector& x) const
    {
        const PlaneVector way = x - chain.places[chain.VertexOf(element)];
        if (chain.IsEdge(element)) return std::fabs(Dot(way, chain.normals[chain.VertexOf(element)]) - r) <= slack;
        const Index vertex = chain.VertexOf(element);
        return chain.IsOpen(vertex) && chain.ShapeOf(vertex) == CornerShape::Round &&
               std::fabs(std::sqrt(Dot(way, way)) - r) <= slack;
    }

    /// Whether an edge comes into the disc about x.
    bool IsEntered(Index edge, const PlaneVector& x) const
    {
        const PlaneVector way = x - chain.places[edge];
        const double along = std::min(std::max(Dot(way, chain.Along(edge)), 0.0), chain.lengths[edge]);
        const PlaneVector gap = way - chain.Along(edge) * along;
        const double least = r - slack;
        return Dot(gap, gap) < least * least;
    }
};

} // namespace

void CheckPits(const OffsetChain& chain, std::vector<Part>* parts)
{
    const PitProof proof(chain);
    for (std::size_t i = 0; i < parts->size(); ++i) {
        Part& to = (*parts)[i];
        const Part& from = (*parts)[i > 0 ? i - 1 : parts->size() - 1];
        if (to.link == Link::Cut && !proof.IsPit(from.element, to.element, to.start)) to.link = Link::Raw;
    }
    for (std::size_t i = 0; i < parts->size(); ++i) {
        Part& part = (*parts)[i];
        Part& next = (*parts)[i + 1 < parts->size() ? i + 1 : 0];
        if (part.link == Link::Cut && next.link == Link::Cut && chain.IsShort(part, next)) {
            part.link = Link::Raw;
            next.link = Link::Raw;
        }
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/regions/internal/PitSearch.h>

#include <CorvexMaths/regions/internal/BorderCrossing.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = OffsetChain::Index;

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

/// An edge whose border is part of the curve.
struct Kept
{
    Index edge; ///< Counted on through the laps.
    Link link;
    Crossing start; ///< Where it is cut from the one before.

    Kept(Index which, Link how, const Crossing& from = {}) : edge(which), link(how), start(from) {}
};

/// A search as far as it has come.
struct Search
{
    double widest;     ///< How broad pits may be.
    std::size_t tries; ///< How many edges may yet be looked at in vain.
    std::vector<Kept> stack;
    std::vector<Extent> pits; ///< Of the edges on the stack with the pits before them, where breadth counts.

    bool IsBounded() const { return widest < HUGE_VAL; }

    void Add(Index edge, Link link, const Crossing& start, const Extent& pit)
    {
        stack.emplace_back(edge, link, start);
        if (IsBounded()) pits.push_back(pit);
    }

    void Shorten(std::size_t size)
    {
        stack.erase(stack.begin() + static_cast<std::ptrdiff_t>(size), stack.end());
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

/// The walk round a chain.
class PitSearch
{
public:
    explicit PitSearch(const OffsetChain& vertices) : chain(vertices), borders(chain) {}

    /// The elements of what is kept.
    std::vector<Part> FindParts(double widest) const
    {
        const std::vector<Kept> kept = FindKept(widest);
        if (kept.empty()) return {Part(1, Link::Raw)};
        std::vector<Part> parts;
        parts.reserve(2 * kept.size());
        for (std::size_t i = 0; i < kept.size(); ++i)
            AddParts(kept[i > 0 ? i - 1 : kept.size() - 1], kept[i], kept[i + 1 < kept.size() ? i + 1 : 0], &parts);
        return parts;
    }

private:
    const OffsetChain& chain;
    const BorderCrossings borders;

    Extent ExtentOf(Index edge) const
    {
        Extent extent{chain.places[edge], chain.places[edge]};
        extent.Add({chain.places[chain.Next(edge)], chain.places[chain.Next(edge)]});
        return extent;
    }

    /// The edges kept on the way round, cyclic. Goes round once, and on until an edge is met again and nothing near
    /// makes a pit of it.
    std::vector<Kept> FindKept(double widest) const
    {
        constexpr Index none = ~Index(0);
        Search search{widest, std::size_t(64) * chain.count, {}, {}};
        search.stack.reserve(chain.count);
        for (Index edge = 0; edge < chain.count; ++edge) Push(edge, &search);
        Index met = none;
        double since = 0;
        for (Index edge = chain.count; edge < 2 * chain.count && !(met != none && since > 8 * chain.r); ++edge) {
            Push(edge, &search);
            since += chain.lengths[edge - chain.count];
            if (met != none && since > 8 * chain.r && !search.Has(met)) met = none;
            if (met == none && search.stack.back().edge == edge && search.Has(edge - chain.count)) {
                met = edge;
                since = 0;
            }
        }
        if (met != none && !search.Has(met)) met = none;
        for (std::size_t i = 0; met == none && i < search.stack.size() && search.stack[i].edge < chain.count; ++i)
            if (search.Has(search.stack[i].edge + chain.count)) met = search.stack[i].edge + chain.count;
        if (met == none || !search.Has(met - chain.count)) return {};

        const auto first = search.Find(met - chain.count);
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
        const Index c = chain.WithoutLap(edge);
        std::vector<Kept>& stack = search->stack;
        std::size_t left = stack.size();
        Extent pit = ExtentOf(c);
        if (left > 0 && stack.back().edge + 1 == edge && chain.IsOpen(c)) {
            // An arc that another cuts beyond its end is in a pit with the edge before it.
            const Kept& last = stack.back();
            const bool isPast = chain.rule.join == CornerShape::Round && last.link == Link::Cut &&
                                last.start.to == Zone::After &&
                                Cross(last.start.x - chain.places[c], chain.normals[c]) < 0;
            if (!isPast) {
                search->Add(edge, Link::Natural, {}, pit);
                return;
            }
            --left;
            if (search->IsBounded()) pit.Add(search->pits.back());
        }
        for (; left > 0; --left) {
            const Kept& last = stack[left - 1];
            Crossing crossing;
            if (!borders.Find(chain.WithoutLap(last.edge), c, &crossing)) break;
            if (IsPast(last, crossing)) {
                search->Shorten(left);
                search->Add(edge, Link::Cut, crossing, pit);
                return;
            }
            if (search->IsBounded()) pit.Add(search->pits[left - 1]);
            if (search->tries == 0 || !MayLeaveOut(chain.WithoutLap(last.edge)) || pit.Breadth() > search->widest)
                break;
            --search->tries;
        }
        if (left == 0) search->Shorten(0);
        search->Add(edge, left == 0 ? Link::Natural : Link::Raw, {}, ExtentOf(c));
    }

    /// Whether a crossing lies beyond the start of what it leaves.
    bool IsPast(const Kept& kept, const Crossing& crossing) const
    {
        const Index b = chain.WithoutLap(kept.edge);
        if (kept.link != Link::Cut) return crossing.from != Zone::Before;
        if (kept.start.to != crossing.from) return kept.start.to < crossing.from;
        const PlaneVector way = crossing.x - kept.start.x;
        if (crossing.from == Zone::Copy) return Dot(way, chain.Along(b)) > 0;
        const PlaneVector& centre = chain.places[crossing.from == Zone::Before ? b : chain.Next(b)];
        return Cross(kept.start.x - centre, crossing.x - centre) > 0;
    }

    /// Whether an edge may come to be in a pit, with its start: a join that is not round ends a pit.
    bool MayLeaveOut(Index edge) const
    {
        return chain.rule.join == CornerShape::Round || (chain.rule.join == CornerShape::Mitre && !chain.IsOpen(edge));
    }

    /// Adds the join before an edge, its copy and the join after it, as far as the curve runs along them.
    void AddParts(const Kept& before, const Kept& kept, const Kept& next, std::vector<Part>* parts) const
    {
        const Index edge = chain.WithoutLap(kept.edge);
        const bool isCut = kept.link == Link::Cut;
        const Zone from = isCut ? kept.start.to : Zone::Before;
        const Zone to = next.link == Link::Cut ? next.start.from : std::max(from, Zone::Copy);
        const auto add = [&](Zone zone, Index element, Link link) {
            if (isCut && zone == from) link = Link::Cut;
            parts->emplace_back(element < 2 * chain.count ? element : 0, link, kept.start.x);
        };
        // The edge before may end with the join that this one would start with.
        const bool isDone = before.link == Link::Cut && before.start.to == Zone::After;
        const bool hasJoin = kept.link == Link::Natural && !isDone && chain.IsOpen(edge);
        if (from == Zone::Before && (isCut || hasJoin)) add(Zone::Before, 2 * edge, Link::Natural);
        if (from <= Zone::Copy && to >= Zone::Copy)
            add(Zone::Copy, 2 * edge + 1, kept.link == Link::Raw ? Link::Raw : Link::Natural);
        if (to == Zone::After && (from == Zone::After || chain.IsOpen(chain.Next(edge))))
            add(Zone::After, 2 * edge + 2, Link::Natural);
    }
};

} // namespace

std::vector<Part> FindParts(const OffsetChain& chain, double widest)
{
    return PitSearch(chain).FindParts(widest);
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

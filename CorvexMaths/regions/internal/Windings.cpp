#include <CorvexMaths/regions/internal/Windings.h>

#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Numbers for different points in the order in which they come, by open addressing; they do not depend on the hash.
class PointNumbers
{
public:
    explicit PointNumbers(std::size_t countAtMost)
    {
        std::size_t size = 16;
        while (size < 2 * countAtMost) size *= 2;
        slots.assign(size, EdgeRun::none);
        points.reserve(countAtMost);
    }

    std::uint32_t Get(const GridPoint& p)
    {
        std::size_t slot = Mix(p) & (slots.size() - 1);
        while (slots[slot] != EdgeRun::none && points[slots[slot]] != p) slot = (slot + 1) & (slots.size() - 1);
        if (slots[slot] == EdgeRun::none) {
            slots[slot] = static_cast<std::uint32_t>(points.size());
            points.push_back(p);
        }
        return slots[slot];
    }

    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(points.size()); }

private:
    static std::size_t Mix(const GridPoint& p)
    {
        std::uint64_t bits = static_cast<std::uint64_t>(p.x) * 0x9e3779b97f4a7c15u;
        bits = (bits ^ bits >> 32 ^ static_cast<std::uint64_t>(p.y)) * 0xd6e8feb86659fd93u;
        return static_cast<std::size_t>(bits ^ bits >> 32);
    }

    std::vector<std::uint32_t> slots;
    std::vector<GridPoint> points;
};

/// 1 where a direction comes before another, counter-clockwise from that of the x axis, -1 where it comes behind it.
int GetOrder(const GridPoint& a, const GridPoint& b)
{
    const bool isUpperA = a.y > 0 || (a.y == 0 && a.x > 0);
    const bool isUpperB = b.y > 0 || (b.y == 0 && b.x > 0);
    if (isUpperA != isUpperB) return isUpperA ? 1 : -1;
    return SignOf(WideProduct(a.x, b.y) - WideProduct(a.y, b.x));
}

} // namespace

RunGraph::RunGraph(NodedChains&& noded, const std::vector<std::int64_t>& weights) : chains(std::move(noded.chains))
{
    MakeRuns(noded.isKnot, weights);
    noded.isKnot = {};
    NumberNodes();
    SortEnds();
    // From the lowest component on, so that whatever lies below is known.
    std::vector<Component> components = FindComponents();
    parents = {};
    std::sort(components.begin(), components.end(),
              [](const Component& a, const Component& b) { return a.lowest < b.lowest; });
    isSpread.assign(GetNodeCount(), false);
    if (components.size() == 1) {
        Seed(components[0], 0);
    } else if (components.size() > 1) {
        const EdgeTree tree(chains);
        for (const Component& component : components) {
            const std::uint32_t edge = tree.FindBelow(component.lowest);
            Seed(component, edge == EdgeTree::none ? 0 : GetAbove(edge));
        }
    }
}

void RunGraph::MakeRuns(const std::vector<std::uint8_t>& isKnot, const std::vector<std::int64_t>& weights)
{
    std::size_t count = chains.GetCount();
    for (const std::uint8_t knot : isKnot) count += knot;
    runs.reserve(count);
    for (std::uint32_t c = 0; c < chains.GetCount(); ++c) {
        const std::uint32_t end = chains.starts[c + 1] - 1;
        for (std::uint32_t i = chains.starts[c]; i < end;) {
            EdgeRun run{i, i + 1, {EdgeRun::none, EdgeRun::none}, weights[c]};
            while (run.last < end && !isKnot[run.last]) ++run.last;
            // The nodes are numbered later; until then, 0 says that there are any.
            if (isKnot[i]) run.nodes[0] = run.nodes[1] = 0;
            i = run.last;
            runs.push_back(run);
        }
    }
}

void RunGraph::NumberNodes()
{
    PointNumbers numbers(runs.size());
    for (EdgeRun& run : runs)
        if (run.nodes[0] != EdgeRun::none) run.nodes[0] = numbers.Get(chains.points[run.first]);
    // A run ends where the next one starts, and the last of a chain where the first one does.
    std::size_t first = 0;
    for (std::size_t r = 0; r < runs.size(); ++r) {
        const bool isLast = r + 1 == runs.size() || runs[r + 1].first != runs[r].last;
        runs[r].nodes[1] = runs[isLast ? first : r + 1].nodes[0];
        if (isLast) first = r + 1;
    }
    firstEnd.assign(numbers.GetCount() + 1, 0);
    for (const EdgeRun& run : runs)
        if (run.nodes[0] != EdgeRun::none)
            for (const std::uint32_t node : run.nodes) ++firstEnd[node + 1];
    for (std::size_t n = 1; n < firstEnd.size(); ++n) firstEnd[n] += firstEnd[n - 1];
    ends.resize(firstEnd.back());
    endCount.assign(numbers.GetCount(), 0);
    for (std::uint32_t r = 0; r < runs.size(); ++r) {
        if (runs[r].nodes[0] == EdgeRun::none) continue;
        for (std::uint32_t side = 0; side < 2; ++side) {
            const std::uint32_t node = runs[r].nodes[side];
            ends[firstEnd[node] + endCount[node]++] = 2 * r + side;
        }
    }
}

void RunGraph::SortEnds()
{
    standsFor.resize(runs.size());
    for (std::uint32_t r = 0; r < runs.size(); ++r) standsFor[r] = r;
    std::vector<std::pair<GridPoint, End>> directions;
    for (std::uint32_t node = 0; node < GetNodeCount(); ++node) SortEnds(node, &directions);
}

/// Sorts the ends at a node, and unites runs that leave it in one direction: as edges meet in common ends alone, those
/// are single edges and coincide. The first of them stands for all.
void RunGraph::SortEnds(std::uint32_t node, std::vector<std::pair<GridPoint, End>>* directions)
{
    End* const kept = ends.data() + firstEnd[node];
    directions->clear();
    for (std::uint32_t k = 0; k < endCount[node]; ++k) {
        const EdgeRun& run = runs[kept[k] / 2];
        const bool isStart = kept[k] % 2 == 0;
        const GridPoint& from = chains.points[isStart ? run.first : run.last];
        const GridPoint& to = chains.points[isStart ? run.first + 1 : run.last - 1];
        directions->emplace_back(GridPoint{to.x - from.x, to.y - from.y}, kept[k]);
    }
    std::sort(directions->begin(), directions->end(), [](const auto& a, const auto& b) {
        const int order = GetOrder(a.first, b.first);
        return order != 0 ? order > 0 : a.second < b.second;
    });
    std::uint32_t count = 0;
    for (std::size_t k = 0; k < directions->size(); ++k) {
        const End end = (*directions)[k].second;
        if (k > 0 && GetOrder((*directions)[k - 1].first, (*directions)[k].first) == 0) {
            // Each is seen at both of its ends; it counts where the one that is kept starts.
            const End first = kept[count - 1];
            standsFor[end / 2] = first / 2;
            if (first % 2 == 0) Unite(&runs[first / 2], &runs[end / 2], end % 2 == 0);
        } else {
            kept[count++] = end;
        }
    }
    endCount[node] = count;
}

void RunGraph::Unite(EdgeRun* kept, EdgeRun* other, bool sameSense)
{
    kept->weight += sameSense ? other->weight : -other->weight;
}

std::uint32_t RunGraph::FindRoot(std::uint32_t node)
{
    while (parents[node] != node) {
        parents[node] = parents[parents[node]];
        node = parents[node];
    }
    return node;
}

std::vector<RunGraph::Component> RunGraph::FindComponents()
{
    parents.resize(GetNodeCount());
    for (std::uint32_t n = 0; n < GetNodeCount(); ++n) parents[n] = n;
    for (const EdgeRun& run : runs) {
        if (run.nodes[0] == EdgeRun::none) continue;
        const std::uint32_t a = FindRoot(run.nodes[0]);
        const std::uint32_t b = FindRoot(run.nodes[1]);
        // The lower number is the root, which keeps the trees flat enough where nodes come in the order of chains.
        parents[std::max(a, b)] = std::min(a, b);
    }

    std::vector<Component> components;
    std::vector<std::uint32_t> componentOf(GetNodeCount(), EdgeRun::none);
    for (std::uint32_t r = 0; r < runs.size(); ++r) {
        const EdgeRun& run = runs[r];
        if (standsFor[r] != r) continue;
        std::uint32_t point = run.first;
        for (std::uint32_t i = run.first + 1; i <= run.last; ++i)
            if (chains.points[i] < chains.points[point]) point = i;
        const Component found{chains.points[point], r, point};
        if (run.nodes[0] == EdgeRun::none) {
            components.push_back(found);
            continue;
        }
        std::uint32_t& component = componentOf[FindRoot(run.nodes[0])];
        if (component == EdgeRun::none) {
            component = static_cast<std::uint32_t>(components.size());
            components.push_back(found);
        } else if (found.lowest < components[component].lowest) {
            components[component] = found;
        }
    }
    return components;
}

/// The winding number above an edge, which is not vertical.
std::int64_t RunGraph::GetAbove(std::uint32_t edge) const
{
    const auto next = std::upper_bound(runs.begin(), runs.end(), edge,
                                       [](std::uint32_t point, const EdgeRun& run) { return point < run.first; });
    const std::uint32_t found = static_cast<std::uint32_t>(next - runs.begin()) - 1;
    const EdgeRun& run = runs[standsFor[found]];
    if (standsFor[found] != found) edge = run.first;
    return chains.points[edge + 1].x > chains.points[edge].x ? run.right + run.weight : run.right;
}

/// Spreads the winding numbers of a component from the face below its lowest point.
void RunGraph::Seed(const Component& component, std::int64_t below)
{
    EdgeRun& run = runs[component.run];
    const bool isClosed = run.nodes[0] == EdgeRun::none;
    if (!isClosed && (component.point == run.first || component.point == run.last)) {
        // All ends lead upward, or level to the right: the face below is the one before the first of them.
        SpreadAround(run.nodes[component.point == run.first ? 0 : 1], 0, below);
    } else {
        const std::uint32_t before = component.point == run.first ? run.last - 1 : component.point - 1;
        const std::uint32_t behind = component.point + 1;
        const bool isLeftTurn = Orientation(chains.points[before], component.lowest, chains.points[behind]) > 0;
        run.right = isLeftTurn ? below : below - run.weight;
        if (!isClosed) waiting.insert(waiting.end(), run.nodes, run.nodes + 2);
    }
    while (!waiting.empty()) {
        const std::uint32_t node = waiting.back();
        waiting.pop_back();
        if (!isSpread[node]) Spread(node);
    }
}

/// Spreads the winding numbers around a node from a run of which they are known.
void RunGraph::Spread(std::uint32_t node)
{
    std::uint32_t k = 0;
    while (runs[GetEnds(node)[k] / 2].right == EdgeRun::unknown) ++k;
    const End end = GetEnds(node)[k];
    const EdgeRun& run = runs[end / 2];
    SpreadAround(node, k, end % 2 == 0 ? run.right : run.right + run.weight);
}

/// The same from the face before an end of which the winding number is given.
void RunGraph::SpreadAround(std::uint32_t node, std::uint32_t start, std::int64_t winding)
{
    isSpread[node] = true;
    const End* const around = GetEnds(node);
    for (std::uint32_t n = 0; n < endCount[node]; ++n) {
        const std::uint32_t k = start + n < endCount[node] ? start + n : start + n - endCount[node];
        const bool isStart = around[k] % 2 == 0;
        EdgeRun& run = runs[around[k] / 2];
        if (!isStart) winding -= run.weight;
        run.right = winding;
        if (isStart) winding += run.weight;
        const std::uint32_t across = run.nodes[isStart ? 1 : 0];
        if (!isSpread[across]) waiting.push_back(across);
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

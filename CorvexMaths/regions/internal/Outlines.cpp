#include <CorvexMaths/regions/internal/Outlines.h>

#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

constexpr std::uint32_t none = EdgeRun::none;

/// A ring and the cycle that it was cut from.
struct Loop
{
    Ring ring;
    std::uint32_t cycle;
};

/// Follows the runs that bound the inside.
class Tracer
{
public:
    Tracer(const RunGraph& runs, const InsideRule& isInside) : graph(runs)
    {
        Direct(isInside);
        Link();
    }

    std::vector<Loop> Trace();

private:
    /// Which way a run leads with the inside to its left.
    enum class Sense : std::uint8_t
    {
        None, ///< It bounds nothing.
        Along,
        Against
    };

    void Direct(const InsideRule& isInside);
    void Link();
    void TraceCycle(std::uint32_t first);
    void CutLoop(std::size_t from);
    void AddPoints(std::uint32_t run, Ring* ring) const;

    std::uint32_t GetStart(std::uint32_t run) const
    {
        return graph.GetRuns()[run].nodes[senses[run] == Sense::Along ? 0 : 1];
    }
    std::uint32_t GetEnd(std::uint32_t run) const
    {
        return graph.GetRuns()[run].nodes[senses[run] == Sense::Along ? 1 : 0];
    }

    const RunGraph& graph;
    std::vector<Sense> senses;
    /// The run that follows each on its cycle.
    std::vector<std::uint32_t> next;
    std::vector<bool> isTraced;
    /// Whether more than two ends of bounding runs meet at a node.
    std::vector<bool> isTouching;
    /// The runs of the cycle at hand that are in no loop yet, and for each node the place of the one that starts there.
    std::vector<std::uint32_t> path;
    std::vector<std::uint32_t> placeOnPath;
    std::uint32_t cycle = 0;
    std::vector<Loop> loops;
};

void Tracer::Direct(const InsideRule& isInside)
{
    const std::vector<EdgeRun>& runs = graph.GetRuns();
    senses.assign(runs.size(), Sense::None);
    for (std::size_t r = 0; r < runs.size(); ++r) {
        // Runs for which another one stands, or of weight 0, have the same on both sides.
        if (runs[r].right == EdgeRun::unknown || runs[r].weight == 0) continue;
        const bool isRight = isInside(runs[r].right);
        const bool isLeft = isInside(runs[r].right + runs[r].weight);
        if (isLeft != isRight) senses[r] = isLeft ? Sense::Along : Sense::Against;
    }
}

/// Around a node inside and outside alternate, and so do runs that leave it and that arrive.
void Tracer::Link()
{
    next.assign(senses.size(), none);
    isTouching.assign(graph.GetNodeCount(), false);
    for (std::uint32_t node = 0; node < graph.GetNodeCount(); ++node) {
        const RunGraph::End* const ends = graph.GetEnds(node);
        std::uint32_t before = none;
        std::uint32_t firstArriving = none;
        std::uint32_t count = 0;
        for (std::uint32_t k = 0; k < graph.GetEndCount(node); ++k) {
            const std::uint32_t run = ends[k] / 2;
            if (senses[run] == Sense::None) continue;
            ++count;
            const bool isArriving = (ends[k] % 2 == 1) == (senses[run] == Sense::Along);
            if (isArriving && before == none) {
                firstArriving = run;
            } else if (isArriving) {
                next[run] = before;
            }
            before = run;
        }
        if (firstArriving != none) next[firstArriving] = before;
        isTouching[node] = count > 2;
    }
}

/// Appends the points of a run but the last.
void Tracer::AddPoints(std::uint32_t run, Ring* ring) const
{
    const EdgeRun& edges = graph.GetRuns()[run];
    const auto points = graph.GetPoints().begin();
    if (senses[run] == Sense::Along) {
        ring->insert(ring->end(), points + edges.first, points + edges.last);
    } else {
        ring->insert(ring->end(), std::make_reverse_iterator(points + edges.last + 1),
                     std::make_reverse_iterator(points + edges.first + 1));
    }
}

/// Takes the vertices on straight runs out of a ring, but those that another has too, and turns it so that it starts
/// with its lowest one.
void Reduce(Ring* ring, const std::vector<std::size_t>& shared)
{
    const GridPoint first = ring->front();
    GridPoint before = ring->back();
    auto nextShared = shared.begin();
    std::size_t count = 0;
    for (std::size_t i = 0; i < ring->size(); ++i) {
        const GridPoint point = (*ring)[i];
        const bool isShared = nextShared != shared.end() && *nextShared == i;
        if (isShared) ++nextShared;
        const GridPoint& behind = i + 1 == ring->size() ? first : (*ring)[i + 1];
        if (isShared || Orientation(before, point, behind) != 0) (*ring)[count++] = point;
        before = point;
    }
    ring->resize(count);
    std::rotate(ring->begin(), std::min_element(ring->begin(), ring->end()), ring->end());
}

/// Makes a ring of the path from a place on.
void Tracer::CutLoop(std::size_t from)
{
    std::size_t size = 0;
    for (std::size_t k = from; k < path.size(); ++k)
        size += graph.GetRuns()[path[k]].last - graph.GetRuns()[path[k]].first;
    Ring ring;
    ring.reserve(size);
    std::vector<std::size_t> shared;
    for (std::size_t k = from; k < path.size(); ++k) {
        const bool isClosed = graph.GetRuns()[path[k]].nodes[0] == none;
        if (!isClosed && isTouching[GetStart(path[k])]) shared.push_back(ring.size());
        AddPoints(path[k], &ring);
        if (!isClosed) placeOnPath[GetStart(path[k])] = none;
    }
    path.resize(from);
    Reduce(&ring, shared);
    loops.push_back(Loop{std::move(ring), cycle});
}

void Tracer::TraceCycle(std::uint32_t first)
{
    std::uint32_t run = first;
    do {
        isTraced[run] = true;
        placeOnPath[GetStart(run)] = static_cast<std::uint32_t>(path.size());
        path.push_back(run);
        if (placeOnPath[GetEnd(run)] != none) CutLoop(placeOnPath[GetEnd(run)]);
        run = next[run];
    } while (run != first);
    ++cycle;
}

std::vector<Loop> Tracer::Trace()
{
    placeOnPath.assign(graph.GetNodeCount(), none);
    isTraced.assign(senses.size(), false);
    for (std::uint32_t r = 0; r < senses.size(); ++r) {
        if (senses[r] == Sense::None || isTraced[r]) continue;
        if (graph.GetRuns()[r].nodes[0] == none) {
            path.push_back(r);
            CutLoop(0);
            ++cycle;
            continue;
        }
        TraceCycle(r);
    }
    return std::move(loops);
}

/// For each ring, which are in order, the outer one it belongs to.
///
/// A cycle without an outer ring is within another's: the edge below its lowest vertex bounds the same inside, and so
/// belongs to a ring whose owner is that of this one. It has a lower vertex, so that its owner is known by then.
std::vector<std::uint32_t> FindOwners(const std::vector<Loop>& loops)
{
    std::vector<std::uint32_t> owners(loops.size(), none);
    std::vector<std::uint32_t> ownerOfCycle;
    std::uint32_t outerCount = 0;
    std::uint32_t outer = none;
    for (std::uint32_t r = 0; r < loops.size(); ++r) {
        const Ring& ring = loops[r].ring;
        if (loops[r].cycle >= ownerOfCycle.size()) ownerOfCycle.resize(loops[r].cycle + 1, none);
        if (Orientation(ring.back(), ring[0], ring[1]) < 0) continue;
        owners[r] = outer = r;
        ++outerCount;
        ownerOfCycle[loops[r].cycle] = r;
    }
    if (outerCount == 1) {
        std::fill(owners.begin(), owners.end(), outer);
        return owners;
    }

    Chains chains;
    if (std::find(ownerOfCycle.begin(), ownerOfCycle.end(), none) != ownerOfCycle.end())
        for (const Loop& loop : loops) chains.Add(loop.ring);
    const EdgeTree tree(chains);
    for (std::uint32_t r = 0; r < loops.size(); ++r) {
        std::uint32_t& owner = ownerOfCycle[loops[r].cycle];
        if (owner == none) {
            const std::uint32_t below = chains.Find(tree.FindBelow(loops[r].ring[0]));
            owner = ownerOfCycle[loops[below].cycle];
        }
        owners[r] = owner;
    }
    return owners;
}

} // namespace

OutlineSet LinkOutlines(const RunGraph& graph, const InsideRule& isInside)
{
    std::vector<Loop> loops = Tracer(graph, isInside).Trace();
    std::sort(loops.begin(), loops.end(), [](const Loop& a, const Loop& b) { return a.ring < b.ring; });
    OutlineSet set;
    set.owners = FindOwners(loops);
    set.rings.reserve(loops.size());
    for (Loop& loop : loops) set.rings.push_back(std::move(loop.ring));
    return set;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

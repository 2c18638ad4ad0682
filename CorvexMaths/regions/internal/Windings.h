#pragma once

/// The winding numbers on both sides of each run of noded chains. Internal.

#include <CorvexMaths/regions/internal/Noding.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A stretch of a chain from one knot to the next, or a whole chain without knots.
struct EdgeRun
{
    static constexpr std::uint32_t none = 0xffffffffu;
    static constexpr std::int64_t unknown = std::numeric_limits<std::int64_t>::min();

    /// Its first and last point.
    std::uint32_t first, last;
    /// The knots at its two ends; `none` for a whole chain.
    std::uint32_t nodes[2];
    /// By how much the winding number to its left exceeds that to its right.
    std::int64_t weight;
    /// The winding number to its right.
    std::int64_t right = unknown;
};

/// The runs of noded chains as a planar graph, with the winding number of each face.
///
/// Only knots, at which more than two edges may end, are nodes; long chains that meet nothing cost one run. Around a
/// node, from one face to the next, the winding number changes by the weight of the run between them, so that it
/// spreads over everything connected once it is known in one face. The face below the lowest point of what is connected
/// is that above the nearest run below, which belongs to something that lies lower still.
class RunGraph
{
public:
    /// The end of a run at a node: twice the number of the run, plus 1 where the run ends there.
    using End = std::uint32_t;

    /// `weights` holds the weight of each chain.
    RunGraph(NodedChains&& noded, const std::vector<std::int64_t>& weights);

    const std::vector<GridPoint>& GetPoints() const { return chains.points; }
    const std::vector<EdgeRun>& GetRuns() const { return runs; }
    std::uint32_t GetNodeCount() const { return static_cast<std::uint32_t>(firstEnd.size() - 1); }

    /// The ends of runs at a node, counter-clockwise from the direction of the x axis on. Of runs that coincide there
    /// is one, which has the weight of all.
    /// @{
    const End* GetEnds(std::uint32_t node) const { return ends.data() + firstEnd[node]; }
    std::uint32_t GetEndCount(std::uint32_t node) const { return endCount[node]; }
    /// @}

private:
    /// What is connected, by its lowest point.
    struct Component
    {
        GridPoint lowest;
        /// The first run that has it, and where.
        std::uint32_t run;
        std::uint32_t point;
    };

    void MakeRuns(const std::vector<std::uint8_t>& isKnot, const std::vector<std::int64_t>& weights);
    void NumberNodes();
    void SortEnds();
    void SortEnds(std::uint32_t node, std::vector<std::pair<GridPoint, End>>* directions);
    void Unite(EdgeRun* kept, EdgeRun* other, bool sameSense);
    std::uint32_t FindRoot(std::uint32_t node);
    std::vector<Component> FindComponents();
    std::int64_t GetAbove(std::uint32_t edge) const;
    void Seed(const Component& component, std::int64_t below);
    void Spread(std::uint32_t node);
    void SpreadAround(std::uint32_t node, std::uint32_t start, std::int64_t winding);

    Chains chains;
    std::vector<EdgeRun> runs;
    std::vector<End> ends;
    /// Where the ends at each node start, and the end of all.
    std::vector<std::uint32_t> firstEnd;
    std::vector<std::uint32_t> endCount;
    /// The run that stands for each, where runs coincide.
    std::vector<std::uint32_t> standsFor;
    /// A forest of the nodes; the roots tell what is connected.
    std::vector<std::uint32_t> parents;
    std::vector<bool> isSpread;
    std::vector<std::uint32_t> waiting;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

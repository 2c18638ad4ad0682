#include <CorvexMaths/regions/internal/Arrangement.h>

#include <CorvexMaths/regions/internal/Outlines.h>

#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The ring without repeats of a vertex by the next one.
Ring WithoutRepeats(const Ring& ring)
{
    Ring result;
    result.reserve(ring.size());
    for (const GridPoint& p : ring)
        if (result.empty() || p != result.back()) result.push_back(p);
    while (result.size() > 1 && result.back() == result.front()) result.pop_back();
    return result;
}

bool IsOther(std::int64_t number, std::int64_t than)
{
    return number != than;
}

bool IsAbove(std::int64_t number, std::int64_t limit)
{
    return number > limit;
}

bool IsOdd(std::int64_t number, std::int64_t)
{
    return number % 2 != 0;
}

} // namespace

InsideRule MakeInsideRule(WindingRule rule)
{
    switch (rule) {
    case WindingRule::NonZero:
        break;
    case WindingRule::EvenOdd:
        return InsideRule{IsOdd};
    case WindingRule::Positive:
        return InsideRule{IsAbove};
    }
    return InsideRule{IsOther};
}

OutlineSet Arrange(const std::vector<Ring>& rings, const std::vector<std::int64_t>& weights, const InsideRule& isInside)
{
    Chains chains;
    std::vector<std::int64_t> chainWeights;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        const Ring ring = WithoutRepeats(rings[r]);
        // Two points are a way there and back, which bounds nothing.
        if (ring.size() < 3) continue;
        chains.Add(ring);
        chainWeights.push_back(weights.empty() ? 1 : weights[r]);
    }
    return LinkOutlines(RunGraph(Node(std::move(chains)), chainWeights), isInside);
}

OutlineSet Arrange(const std::vector<Ring>& rings, WindingRule rule)
{
    return Arrange(rings, {}, MakeInsideRule(rule));
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/regions/internal/Arrangement.h>

#include <CorvexMaths/internal/HilbertCurve.h>
#include <CorvexMaths/regions/internal/Outlines.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Appends a ring without repeats of a vertex by the next one, and without ways there and back along the same edge,
/// which bound nothing. What is left does not depend on the vertex where it starts, but for its own start; false if it
/// is nothing, fewer than three vertices.
bool AddReduced(const Ring& ring, Chains* chains)
{
    std::vector<GridPoint>& points = chains->points;
    const std::size_t begin = points.size();
    for (const GridPoint& p : ring) {
        const std::size_t count = points.size() - begin;
        if (count > 0 && p == points.back()) continue;
        if (count > 1 && p == points[points.size() - 2]) {
            points.pop_back();
        } else {
            points.push_back(p);
        }
    }
    // The same where the ring closes.
    std::size_t first = begin;
    while (points.size() - first > 2) {
        if (points.back() == points[first]) {
            points.pop_back();
        } else if (points[points.size() - 2] == points[first]) {
            points.resize(points.size() - 2);
        } else if (points.back() == points[first + 1]) {
            ++first;
            points.pop_back();
        } else {
            break;
        }
    }
    points.erase(points.begin() + static_cast<std::ptrdiff_t>(begin),
                 points.begin() + static_cast<std::ptrdiff_t>(first));
    if (points.size() - begin < 3) {
        points.resize(begin);
        return false;
    }
    chains->Close();
    return true;
}

/// Whether the last two chains are the same.
bool IsRepeated(const Chains& chains)
{
    const std::uint32_t count = chains.GetCount();
    if (count < 2) return false;
    const auto at = [&](std::uint32_t chain) { return chains.points.begin() + chains.starts[chain]; };
    return std::equal(at(count - 2), at(count - 1), at(count - 1), chains.points.end());
}

/// The places of points along a curve on which neighbours are near in the plane.
std::vector<std::uint32_t> GetPlaces(const std::vector<GridPoint>& points)
{
    std::vector<std::uint32_t> places(points.size());
    if (points.empty()) return places;
    GridPoint low = points[0];
    GridPoint high = low;
    for (const GridPoint& p : points) {
        low = GridPoint{std::min(low.x, p.x), std::min(low.y, p.y)};
        high = GridPoint{std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    int shift = 0;
    while (std::max(high.x - low.x, high.y - low.y) >> shift >= 1 << 16) ++shift;
    for (std::size_t i = 0; i < points.size(); ++i)
        places[i] = GetHilbertPlace<16, std::uint32_t>(static_cast<std::uint32_t>((points[i].x - low.x) >> shift),
                                                       static_cast<std::uint32_t>((points[i].y - low.y) >> shift));
    return places;
}

/// The numbers of rings of three points or more, neighbours in the plane one behind the other, so that what meets lies
/// near in memory too. The order has no part in any result.
std::vector<std::size_t> SortByPlace(const std::vector<Ring>& rings)
{
    std::vector<std::size_t> order;
    std::vector<GridPoint> starts;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        starts.push_back(rings[r].empty() ? GridPoint() : rings[r][0]);
        if (rings[r].size() >= 3) order.push_back(r);
    }
    if (order.size() < 2) return order;
    const std::vector<std::uint32_t> places = GetPlaces(starts);
    std::sort(order.begin(), order.end(),
              [&](std::size_t r, std::size_t s) { return places[r] != places[s] ? places[r] < places[s] : r < s; });
    return order;
}

/// Unites parts in groups, and these again.
OutlineSet UniteGroups(std::vector<Ring>* const* parts, std::size_t count)
{
    constexpr std::size_t groupCount = 16;
    std::vector<Ring> rings;
    if (count <= groupCount) {
        for (std::size_t k = 0; k < count; ++k) rings.insert(rings.end(), parts[k]->begin(), parts[k]->end());
    } else {
        for (std::size_t g = 0; g < groupCount; ++g) {
            const std::size_t first = count * g / groupCount;
            OutlineSet group = UniteGroups(parts + first, count * (g + 1) / groupCount - first);
            std::move(group.rings.begin(), group.rings.end(), std::back_inserter(rings));
        }
    }
    return Arrange(rings, WindingRule::Positive);
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
    std::size_t count = 0;
    for (const Ring& ring : rings) count += ring.size() + 1;
    chains.points.reserve(count);
    for (const std::size_t r : SortByPlace(rings)) {
        if (!AddReduced(rings[r], &chains)) continue;
        const std::int64_t weight = weights.empty() ? 1 : weights[r];
        if (IsRepeated(chains)) {
            chains.RemoveLast();
            chainWeights.back() += weight;
        } else {
            chainWeights.push_back(weight);
        }
    }
    return LinkOutlines(RunGraph(Node(std::move(chains)), chainWeights), isInside);
}

OutlineSet Unite(std::vector<std::vector<Ring>> parts)
{
    parts.erase(std::remove_if(parts.begin(), parts.end(), [](const auto& part) { return part.empty(); }), parts.end());
    std::vector<GridPoint> starts;
    starts.reserve(parts.size());
    for (const std::vector<Ring>& part : parts) starts.push_back(part[0][0]);
    const std::vector<std::uint32_t> places = GetPlaces(starts);
    std::vector<std::size_t> order(parts.size());
    for (std::size_t k = 0; k < order.size(); ++k) order[k] = k;
    // Equal parts may come in any order.
    std::sort(order.begin(), order.end(), [&](std::size_t k, std::size_t l) {
        return places[k] != places[l] ? places[k] < places[l] : parts[k] < parts[l];
    });
    std::vector<std::vector<Ring>*> ordered;
    ordered.reserve(parts.size());
    for (const std::size_t k : order) ordered.push_back(&parts[k]);
    return UniteGroups(ordered.data(), ordered.size());
}

OutlineSet Arrange(const std::vector<Ring>& rings, WindingRule rule)
{
    return Arrange(rings, {}, MakeInsideRule(rule));
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

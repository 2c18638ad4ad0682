#include <CorvexMaths/regions/internal/EdgeTree.h>

#include <CorvexMaths/regions/internal/HilbertCurve.h>
#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

std::uint32_t Chains::Find(std::uint32_t point) const
{
    return static_cast<std::uint32_t>(std::upper_bound(starts.begin(), starts.end(), point) - starts.begin() - 1);
}

void Chains::Add(const Ring& ring)
{
    if (ring.size() >= std::numeric_limits<std::uint32_t>::max() - points.size())
        throw std::length_error("regions: too many vertices");
    points.insert(points.end(), ring.begin(), ring.end());
    points.push_back(ring.front());
    starts.push_back(static_cast<std::uint32_t>(points.size()));
}

EdgeTree::EdgeTree(const Chains& edges) : chains(edges)
{
    if (chains.points.empty()) return;
    FitScale();
    MakeBlocks();
    MakeGroups();
}

void EdgeTree::FitScale()
{
    GridPoint low = chains.points[0];
    GridPoint high = low;
    for (const GridPoint& p : chains.points) {
        low.x = std::min(low.x, p.x);
        low.y = std::min(low.y, p.y);
        high.x = std::max(high.x, p.x);
        high.y = std::max(high.y, p.y);
    }
    // A step around for the width of boxes.
    originX = low.x - 1;
    originY = low.y - 1;
    const std::int64_t extent = std::max(high.x - low.x, high.y - low.y) + 2;
    while (extent >> shift >= std::int64_t(1) << 30) ++shift;
}

void EdgeTree::MakeBlocks()
{
    // Each block by the place of the middle of its edges on the curve, and by its number for a total order.
    std::vector<std::pair<std::uint32_t, Block>> places;
    places.reserve(chains.points.size() / fanOut + chains.GetCount());
    int coarser = 0;
    for (std::int32_t extent = std::int32_t(1) << 30; extent > 1 << 16; extent >>= 1) ++coarser;
    for (std::uint32_t c = 0; c < chains.GetCount(); ++c) {
        const std::uint32_t end = chains.starts[c + 1] - 1;
        for (std::uint32_t i = chains.starts[c]; i < end; i += fanOut) {
            const Block block{i, std::min(std::uint32_t(fanOut), end - i)};
            const GridPoint& middle = chains.points[i + block.count / 2];
            const std::uint32_t x = static_cast<std::uint32_t>(ToBoxX(middle.x) >> coarser);
            const std::uint32_t y = static_cast<std::uint32_t>(ToBoxY(middle.y) >> coarser);
            places.emplace_back(GetHilbertPlace<16, std::uint32_t>(x, y), block);
        }
    }
    std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second.first < b.second.first;
    });
    blocks.reserve(places.size());
    for (const auto& place : places) blocks.push_back(place.second);
}

void EdgeTree::Clear(Group* group)
{
    constexpr std::int32_t beyond = std::numeric_limits<std::int32_t>::max();
    for (unsigned int k = 0; k < fanOut; ++k) {
        group->lowX[k] = group->lowY[k] = beyond;
        group->highX[k] = group->highY[k] = -beyond;
    }
}

void EdgeTree::SetBox(std::uint32_t edge, Group* group, unsigned int k) const
{
    const GridPoint& a = chains.points[edge];
    const GridPoint& b = chains.points[edge + 1];
    group->lowX[k] = ToBoxX(std::min(a.x, b.x) - 1);
    group->highX[k] = ToBoxX(std::max(a.x, b.x) + 1);
    group->lowY[k] = ToBoxY(std::min(a.y, b.y) - 1);
    group->highY[k] = ToBoxY(std::max(a.y, b.y) + 1);
}

void EdgeTree::SetBox(const Group& below, Group* group, unsigned int k)
{
    group->lowX[k] = *std::min_element(below.lowX, below.lowX + fanOut);
    group->highX[k] = *std::max_element(below.highX, below.highX + fanOut);
    group->lowY[k] = *std::min_element(below.lowY, below.lowY + fanOut);
    group->highY[k] = *std::max_element(below.highY, below.highY + fanOut);
}

void EdgeTree::MakeGroups()
{
    levels.emplace_back(blocks.size());
    for (std::size_t g = 0; g < blocks.size(); ++g) {
        Group& group = levels[0][g];
        Clear(&group);
        for (unsigned int k = 0; k < blocks[g].count; ++k) SetBox(blocks[g].first + k, &group, k);
    }
    while (levels.back().size() > 1) {
        const std::size_t boxCount = levels.back().size();
        std::vector<Group> groups((boxCount + fanOut - 1) / fanOut);
        for (Group& group : groups) Clear(&group);
        for (std::size_t i = 0; i < boxCount; ++i)
            SetBox(levels.back()[i], &groups[i / fanOut], static_cast<unsigned int>(i % fanOut));
        levels.push_back(std::move(groups));
    }
}

std::int64_t EdgeTree::Spine::GetLength() const
{
    return std::max(std::abs(toX - fromX), std::abs(toY - fromY));
}

std::int64_t EdgeTree::Spine::GetDistance(std::int64_t x, std::int64_t y) const
{
    // Along the axis of its greater extent, u, the point of the segment nearest in u, and there the distance in v.
    const bool isUpright = std::abs(toX - fromX) < std::abs(toY - fromY);
    const std::int64_t fromU = isUpright ? fromY : fromX, toU = isUpright ? toY : toX, u = isUpright ? y : x;
    const std::int64_t fromV = isUpright ? fromX : fromY, toV = isUpright ? toX : toY, v = isUpright ? x : y;
    const std::int64_t at = std::max(std::min(fromU, toU), std::min(u, std::max(fromU, toU)));
    const std::int64_t rise = toU == fromU ? 0 : (toV - fromV) * (at - fromU) / (toU - fromU);
    return std::max(std::abs(u - at), std::abs(v - fromV - rise) + 1);
}

void EdgeTree::Spine::Cover(const Spine& other)
{
    const std::int64_t far = std::max(GetDistance(other.fromX, other.fromY), GetDistance(other.toX, other.toY));
    radius = std::max(radius, std::min(far + other.radius, greatest));
}

bool EdgeTree::Spine::IsApart(const Spine& other) const
{
    // Coordinates have 30 bits and radii hardly more, so that all of this fits into 63.
    const std::int64_t dx = toX - fromX;
    const std::int64_t dy = toY - fromY;
    const std::int64_t start = dx * (other.fromY - fromY) - dy * (other.fromX - fromX);
    const std::int64_t end = dx * (other.toY - fromY) - dy * (other.toX - fromX);
    const std::int64_t width = (radius + other.radius) * (std::abs(dx) + std::abs(dy));
    return (start > width && end > width) || (start < -width && end < -width);
}

EdgeTree::Spine EdgeTree::GetSpine(std::uint32_t edge) const
{
    const GridPoint& a = chains.points[edge];
    const GridPoint& b = chains.points[edge + 1];
    // Coordinates are rounded down by less than 1; another step is for edges that are close without meeting.
    return Spine{ToBoxX(a.x), ToBoxY(a.y), ToBoxX(b.x), ToBoxY(b.y), 2};
}

void EdgeTree::MakeSpines()
{
    spines.resize(levels.size());
    for (unsigned int level = 0; level < levels.size(); ++level) MakeSpines(level);
}

void EdgeTree::MakeSpines(unsigned int level)
{
    spines[level].reserve(levels[level].size());
    std::vector<Spine> parts;
    for (std::size_t g = 0; g < levels[level].size(); ++g) {
        parts.clear();
        if (level == 0) {
            for (std::uint32_t k = 0; k < blocks[g].count; ++k) parts.push_back(GetSpine(blocks[g].first + k));
        } else {
            const std::vector<Spine>& below = spines[level - 1];
            for (std::size_t k = g * fanOut; k < std::min((g + 1) * fanOut, below.size()); ++k)
                parts.push_back(below[k]);
        }
        // The longest has the direction that matters.
        Spine spine = *std::max_element(parts.begin(), parts.end(),
                                        [](const Spine& a, const Spine& b) { return a.GetLength() < b.GetLength(); });
        for (const Spine& part : parts) spine.Cover(part);
        spines[level].push_back(spine);
    }
}

/// A search for the edge below a point.
struct EdgeTree::Below
{
    GridPoint from;
    std::int32_t x, y;
    /// The highest edge so far, from its left end to its right one.
    std::uint32_t edge = none;
    GridPoint left, right;
    /// No box that ends lower holds a higher edge.
    std::int32_t least = std::numeric_limits<std::int32_t>::min();

    /// Whether an edge from a to b lies above the highest so far, right of the point: they do not cross, so the end
    /// that lies in the width of the other tells, or where that is on the other the far end.
    bool IsHigher(const GridPoint& a, const GridPoint& b) const
    {
        if (edge == none) return true;
        if (a.x >= left.x) {
            const int side = Orientation(left, right, a);
            return (side != 0 ? side : Orientation(left, right, b)) > 0;
        }
        const int side = Orientation(a, b, left);
        return (side != 0 ? side : Orientation(a, b, right)) < 0;
    }
};

void EdgeTree::TryBelow(std::uint32_t edge, Below* search) const
{
    GridPoint a = chains.points[edge];
    GridPoint b = chains.points[edge + 1];
    if (a.x > b.x) std::swap(a, b);
    const GridPoint& from = search->from;
    if (a.x > from.x || b.x <= from.x || Orientation(a, b, from) <= 0 || !search->IsHigher(a, b)) return;
    search->edge = edge;
    search->left = a;
    search->right = b;
    const double share = static_cast<double>(from.x - a.x) / static_cast<double>(b.x - a.x);
    // Rounding leaves the height within a step; two below are surely below.
    const double height = static_cast<double>(b.y - a.y) * share - 2.0;
    search->least = ToBoxY(std::max(a.y + static_cast<std::int64_t>(height), std::min(a.y, b.y)));
}

void EdgeTree::SearchBelow(unsigned int level, std::size_t g, Below* search) const
{
    const Group& group = levels[level][g];
    // The highest box first: its edges cut off most.
    unsigned int order[fanOut];
    unsigned int count = 0;
    for (unsigned int k = 0; k < fanOut; ++k) {
        if (group.lowX[k] > search->x || group.highX[k] < search->x || group.lowY[k] > search->y) continue;
        unsigned int at = count++;
        for (; at > 0 && group.highY[order[at - 1]] < group.highY[k]; --at) order[at] = order[at - 1];
        order[at] = k;
    }
    for (unsigned int n = 0; n < count && group.highY[order[n]] >= search->least; ++n) {
        if (level == 0) {
            TryBelow(blocks[g].first + order[n], search);
        } else {
            SearchBelow(level - 1, g * fanOut + order[n], search);
        }
    }
}

std::uint32_t EdgeTree::FindBelow(const GridPoint& from) const
{
    Below search;
    search.from = from;
    search.x = ToBoxX(from.x);
    search.y = ToBoxY(from.y);
    if (!levels.empty()) SearchBelow(static_cast<unsigned int>(levels.size() - 1), 0, &search);
    return search.edge;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

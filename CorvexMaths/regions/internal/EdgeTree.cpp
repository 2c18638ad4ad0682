#include <CorvexMaths/regions/internal/EdgeTree.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/HilbertCurve.h>
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

void Chains::Close()
{
    if (points.size() >= std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("regions: too many vertices");
    const GridPoint first = points[starts.back()];
    points.push_back(first);
    starts.push_back(static_cast<std::uint32_t>(points.size()));
}

void Chains::Add(const Ring& ring)
{
    points.insert(points.end(), ring.begin(), ring.end());
    Close();
}

void Chains::RemoveLast()
{
    starts.pop_back();
    points.resize(starts.back());
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

void EdgeTree::Clear(Group* group, unsigned int first)
{
    constexpr std::int32_t beyond = std::numeric_limits<std::int32_t>::max();
    for (unsigned int k = first; k < fanOut; ++k) {
        group->lowX[k] = group->lowY[k] = beyond;
        group->highX[k] = group->highY[k] = -beyond;
    }
}

void EdgeTree::SetBoxes(const Block& block, Group* group) const
{
    // A step to either side of each vertex; what is behind the last one repeats it.
    std::int32_t left[fanOut + 1], right[fanOut + 1], bottom[fanOut + 1], top[fanOut + 1];
    for (unsigned int k = 0; k <= fanOut; ++k) {
        const GridPoint& p = chains.points[block.first + std::min(k, block.count)];
        left[k] = ToBoxX(p.x - 1);
        right[k] = ToBoxX(p.x + 1);
        bottom[k] = ToBoxY(p.y - 1);
        top[k] = ToBoxY(p.y + 1);
    }
    for (unsigned int k = 0; k < fanOut; ++k) {
        group->lowX[k] = std::min(left[k], left[k + 1]);
        group->highX[k] = std::max(right[k], right[k + 1]);
        group->lowY[k] = std::min(bottom[k], bottom[k + 1]);
        group->highY[k] = std::max(top[k], top[k + 1]);
    }
    Clear(group, block.count);
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
    for (std::size_t g = 0; g < blocks.size(); ++g) SetBoxes(blocks[g], &levels[0][g]);
    while (levels.back().size() > 1) {
        const std::size_t boxCount = levels.back().size();
        std::vector<Group> groups((boxCount + fanOut - 1) / fanOut);
        Clear(&groups.back(), 0);
        for (std::size_t i = 0; i < boxCount; ++i)
            SetBox(levels.back()[i], &groups[i / fanOut], static_cast<unsigned int>(i % fanOut));
        levels.push_back(std::move(groups));
    }
}

// Spines
// ------
// What a spine covers is the hull of the squares about its two ends: the squares between have sides in proportion. As a
// hull it covers another spine where it covers the squares about both ends of that. An end at a distance d in x and y
// from the point at a share t of the way, with a radius of its own, is covered if (1 - t) fromRadius + t toRadius is at
// least the sum of that radius and d.
//
// Two hulls have no point in common if in some direction n one ends before the other starts. One ends where the
// greater of its squares does, and a square of half side r reaches r (|nx| + |ny|) beyond its middle. All these are
// whole numbers, and whatever n is, the answer is right. It is found often where n is across a side of one of the
// hulls, along which both its squares end at once: for rays from nearly one point, whose squares are small there, these
// sides lead between them.

std::int64_t EdgeTree::Spine::GetLength() const
{
    return std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
}

void EdgeTree::Spine::Cover(const std::vector<Spine>& parts)
{
    // Along the axis of the greater extent, u, the share of the point of the segment nearest in u, and from there the
    // distance in u and v. Rounding takes less than two steps.
    const bool isUpright = std::abs(to.x - from.x) < std::abs(to.y - from.y);
    const auto u = [=](const GridPoint& p) { return isUpright ? p.y : p.x; };
    const auto v = [=](const GridPoint& p) { return isUpright ? p.x : p.y; };
    const double length = static_cast<double>(u(to) - u(from));
    const double rise = static_cast<double>(v(to) - v(from));
    double first = 0.0;
    double last = 0.0;
    const auto add = [&](const GridPoint& p, std::int64_t radius) {
        const std::int64_t at = std::max(std::min(u(from), u(to)), std::min(u(p), std::max(u(from), u(to))));
        const double share = length == 0.0 ? 0.0 : static_cast<double>(at - u(from)) / length;
        const double across = static_cast<double>(v(p) - v(from)) - rise * share;
        const double far = std::max(static_cast<double>(std::abs(u(p) - at)), Numbers::Absolute(across));
        // The nearer end alone sees to it.
        const double needed = far + static_cast<double>(radius) + 2.0;
        if (share > 0.5)
            last = std::max(last, needed / share);
        else
            first = std::max(first, needed / (1.0 - share));
    };
    for (const Spine& part : parts) {
        add(part.from, part.fromRadius);
        add(part.to, part.toRadius);
    }
    fromRadius = static_cast<std::int64_t>(first) + 1;
    toRadius = static_cast<std::int64_t>(last) + 1;
}

bool EdgeTree::Spine::IsApart(const Spine& other) const
{
    // Radii grow by an extent a level at most, and stay below 2^46: all of this fits into 96 bits.
    const GridPoint spine{to.x - from.x, to.y - from.y};
    const GridPoint there{other.from.x + other.to.x - 2 * from.x, other.from.y + other.to.y - 2 * from.y};
    const int side = WideProduct(spine.x, there.y) > WideProduct(spine.y, there.x) ? 1 : -1;
    // The way along the side, from corner to corner of the squares; which corners these are depends on the way.
    const std::int64_t growth = toRadius - fromRadius;
    GridPoint way = spine;
    for (int pass = 0; pass < 2; ++pass) {
        const GridPoint corner{way.y >= 0 ? -side : side, way.x >= 0 ? side : -side};
        way = GridPoint{spine.x + corner.x * growth, spine.y + corner.y * growth};
    }
    const GridPoint n{-side * way.y, side * way.x};
    const std::int64_t width = std::abs(n.x) + std::abs(n.y);
    const auto along = [&](const GridPoint& p) {
        return WideProduct(n.x, p.x - from.x) + WideProduct(n.y, p.y - from.y);
    };
    const Wide end = std::max(WideProduct(fromRadius, width), along(to) + WideProduct(toRadius, width));
    return along(other.from) - WideProduct(other.fromRadius, width) > end &&
           along(other.to) - WideProduct(other.toRadius, width) > end;
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
            // A step is for edges that are close without meeting.
            for (std::uint32_t i = blocks[g].first; i < blocks[g].first + blocks[g].count; ++i)
                parts.push_back(Spine{chains.points[i], chains.points[i + 1], 1, 1});
        } else {
            const std::vector<Spine>& below = spines[level - 1];
            for (std::size_t k = g * fanOut; k < std::min((g + 1) * fanOut, below.size()); ++k)
                parts.push_back(below[k]);
        }
        // The longest has the direction that matters.
        Spine spine = *std::max_element(parts.begin(), parts.end(),
                                        [](const Spine& a, const Spine& b) { return a.GetLength() < b.GetLength(); });
        spine.Cover(parts);
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

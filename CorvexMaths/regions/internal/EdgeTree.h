#pragma once

/// A tree of boxes over the edges of closed chains, for pairs of edges that come close and for the edge below a point.
/// Internal.

#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/regions/internal/Grid.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Closed chains one behind the other, each with its first point again at its end: edge i leads from point i to point
/// i + 1, and the last point of a chain starts none.
struct Chains
{
    std::vector<GridPoint> points;
    /// Where each chain starts, and the end of all.
    std::vector<std::uint32_t> starts{0};

    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(starts.size() - 1); }

    /// The chain of a point.
    std::uint32_t Find(std::uint32_t point) const;

    /// Closes a chain of the points behind the last one by its first. Throws std::length_error where 32 bits do not
    /// count the points.
    void Close();
    void Add(const Ring& ring);
    void RemoveLast();
};

/// Boxes in groups of eight over up to eight successive edges each; groups are put in the order of a Hilbert curve
/// (I. Kamel and C. Faloutsos, 1993), so that the tree is as good for many small chains in any order as for a long one.
///
/// A box is that of the edge widened by one step and rounded outward to 30 bits: it says what may be close, not what
/// is.
///
/// Boxes of long slanted edges side by side, as of the rays of a star, overlap one another without being close. Where
/// many do, groups are told apart by their spines too: a group lies in a square moved along a spine, which may grow on
/// the way, as what a bundle of rays covers does.
class EdgeTree
{
public:
    static constexpr std::uint32_t none = 0xffffffffu;

    /// Refers to the chains, which stay as they are for its life.
    explicit EdgeTree(const Chains& edges);

    /// Calls found(i, j) with i < j once for each two edges that come within a step of one another in x and in y, and
    /// for some others. Edges that follow one another in a chain come so by nature: some of these are left out.
    template <class Found>
    void ForEachClosePair(const Found& found)
    {
        if (!levels.empty()) Join(static_cast<unsigned int>(levels.size() - 1), 0, 0, found);
    }

    /// The edge that a ray straight down from a point meets first, strictly below the point, or `none`. The ray runs by
    /// an infinitesimal step right of the point, so that it meets no vertex. Edges must not cross.
    std::uint32_t FindBelow(const GridPoint& from) const;

private:
    static constexpr unsigned int fanOut = 8;

    struct Group
    {
        std::int32_t lowX[fanOut], highX[fanOut], lowY[fanOut], highY[fanOut];
    };

    /// The edges whose boxes are in a group of the lowest level.
    struct Block
    {
        std::uint32_t first;
        std::uint32_t count;
    };

    /// What covers a group: all squares about the points of a segment, whose half sides change evenly along it.
    struct Spine
    {
        GridPoint from, to;
        std::int64_t fromRadius, toRadius;

        std::int64_t GetLength() const;
        /// Sets the radii so that it covers others.
        void Cover(const std::vector<Spine>& parts);
        /// Whether a line along a side of it tells that another is not close.
        bool IsApart(const Spine& other) const;
    };

    struct Below;

    std::int32_t ToBoxX(std::int64_t x) const { return static_cast<std::int32_t>((x - originX) >> shift); }
    std::int32_t ToBoxY(std::int64_t y) const { return static_cast<std::int32_t>((y - originY) >> shift); }

    void FitScale();
    void MakeBlocks();
    void MakeGroups();
    void MakeSpines();
    void MakeSpines(unsigned int level);
    void SetBoxes(const Block& block, Group* group) const;
    static void Clear(Group* group, unsigned int first);
    static void SetBox(const Group& below, Group* group, unsigned int k);
    void SearchBelow(unsigned int level, std::size_t group, Below* search) const;
    void TryBelow(std::uint32_t edge, Below* search) const;

    /// A bit for each box of `other` that meets box k of `group`.
    static unsigned int GetMeeting(const Group& group, unsigned int k, const Group& other)
    {
        unsigned int bits = 0;
        for (unsigned int half = 0; half < fanOut; half += baselineCount<std::int32_t>) {
            const auto lowX = LoadLanes(other.lowX + half), highX = LoadLanes(other.highX + half);
            const auto lowY = LoadLanes(other.lowY + half), highY = LoadLanes(other.highY + half);
            bits |= PackMask<std::int32_t>((lowX <= group.highX[k]) & (highX >= group.lowX[k]) &
                                           (lowY <= group.highY[k]) & (highY >= group.lowY[k]))
                    << half;
        }
        return bits;
    }

    /// Whether each box of successive edges lies beyond the last but one, to one and the same side. As a box holds
    /// the vertex that it shares with the next, none but successive ones meet then.
    static bool IsMonotone(const Group& group)
    {
        constexpr unsigned int laneCount = baselineCount<std::int32_t>;
        constexpr unsigned int all = (1u << laneCount) - 1;
        unsigned int right = all, left = all, up = all, down = all;
        for (unsigned int k = 0; k < fanOut - laneCount; k += 2) {
            const unsigned int next = k + 2;
            right &= PackMask<std::int32_t>(LoadLanes(group.highX + k) < LoadLanes(group.lowX + next));
            left &= PackMask<std::int32_t>(LoadLanes(group.lowX + k) > LoadLanes(group.highX + next));
            up &= PackMask<std::int32_t>(LoadLanes(group.highY + k) < LoadLanes(group.lowY + next));
            down &= PackMask<std::int32_t>(LoadLanes(group.lowY + k) > LoadLanes(group.highY + next));
        }
        return right == all || left == all || up == all || down == all;
    }

    static bool AreApart(const Spine& a, const Spine& b) { return a.IsApart(b) || b.IsApart(a); }

    /// Two groups of a level, or one with itself.
    template <class Found>
    void Join(unsigned int level, std::size_t a, std::size_t b, const Found& found)
    {
        if (level == 0 && spines.empty() && ++blockPairs > blockPairsPerBlock * blocks.size()) MakeSpines();
        if (a != b && !spines.empty() && AreApart(spines[level][a], spines[level][b])) return;
        const Group& groupA = levels[level][a];
        const Group& groupB = levels[level][b];
        // Of the boxes of one group, those that meet the other as a whole.
        unsigned int near = (1u << fanOut) - 1;
        if (a != b)
            near = GetMeeting(levels[level + 1][b / fanOut], static_cast<unsigned int>(b % fanOut), groupA);
        else if (level == 0 && IsMonotone(groupA))
            return;
        for (; near != 0; near &= near - 1) {
            const unsigned int i = static_cast<unsigned int>(__builtin_ctz(near));
            unsigned int meeting = GetMeeting(groupA, i, groupB);
            // In a group with itself each pair comes once; at the lowest level a box with itself is no pair.
            if (a == b) meeting = meeting >> i << i;
            if (a == b && level == 0) meeting &= ~(1u << i);
            for (; meeting != 0; meeting &= meeting - 1) {
                const unsigned int j = static_cast<unsigned int>(__builtin_ctz(meeting));
                if (level != 0) {
                    Join(level - 1, a * fanOut + i, b * fanOut + j, found);
                } else {
                    const std::uint32_t first = blocks[a].first + i;
                    const std::uint32_t second = blocks[b].first + j;
                    found(first < second ? first : second, first < second ? second : first);
                }
            }
        }
    }

    const Chains& chains;
    /// What maps coordinates to those of boxes.
    std::int64_t originX = 0, originY = 0;
    unsigned int shift = 0;
    std::vector<Block> blocks;
    /// From the lowest, of one group for each block, to one of a single group.
    std::vector<std::vector<Group>> levels;
    /// How many pairs of blocks have been joined, and for how many it pays to tell groups apart by their spines.
    std::size_t blockPairs = 0;
    static constexpr std::size_t blockPairsPerBlock = 4;
    /// The spine of each group, once they are needed.
    std::vector<std::vector<Spine>> spines;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// A tree of boxes over the order of an outline, so that searches pass over whole runs of it at once.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Goes behind the parameters of a lambda that a kernel of any width inlines.
#define CORVEX_INLINE_LAMBDA __attribute__((always_inline))

/// A box of the plane with its borders.
template <class T>
struct PlaneBox
{
    static constexpr T infinity = std::numeric_limits<T>::infinity();

    T lowX = infinity, highX = -infinity, lowY = infinity, highY = -infinity;

    /// The box that meets every other.
    static PlaneBox Unbounded() { return {-infinity, infinity, -infinity, infinity}; }

    /// The box around a point.
    static PlaneBox Around(T x, T y, T reach) { return {x - reach, x + reach, y - reach, y + reach}; }

    /// The box around a segment.
    static PlaneBox Around(T x1, T y1, T x2, T y2, T reach)
    {
        return {std::min(x1, x2) - reach, std::max(x1, x2) + reach, std::min(y1, y2) - reach, std::max(y1, y2) + reach};
    }

    void Join(const PlaneBox& other)
    {
        lowX = std::min(lowX, other.lowX);
        highX = std::max(highX, other.highX);
        lowY = std::min(lowY, other.lowY);
        highY = std::max(highY, other.highY);
    }
};

/// The greatest magnitude among coordinates; infinite where one is above a limit, beyond which a search has no bounds
/// on rounding, or NaN.
template <class T>
class CoordinateSize
{
public:
    explicit CoordinateSize(T greatestAllowed = T(1e12)) : limit(greatestAllowed) {}

    void Add(T value)
    {
        const T magnitude = Numbers::Absolute(value);
        // Written so that NaN counts as too large.
        if (!(magnitude <= size)) size = magnitude <= limit ? magnitude : std::numeric_limits<T>::infinity();
    }

    T Get() const { return size; }

private:
    T limit;
    T size = T(0);
};

/// Turns a comparison of the lanes from `first` on into bits, each in its own lane: bit k where it holds for the k-th
/// of eight. Those of several registers are joined by `|` and gathered once, by FoldBits.
template <class Mask>
CORVEX_ALWAYS_INLINE void MarkLanes(Mask& mask, unsigned int first)
{
    using Lane = std::decay_t<decltype(mask[0])>;
    static constexpr Lane bits[] = {1, 2, 4, 8, 16, 32, 64, 128};
    Mask ownBits;
    Load(ownBits, bits + first);
    mask &= ownBits;
}

/// The bits of MarkLanes from all lanes.
template <class Mask>
CORVEX_ALWAYS_INLINE unsigned int FoldBits(const Mask& marks)
{
    std::uint64_t words[sizeof(Mask) / sizeof(std::uint64_t)];
    std::memcpy(words, &marks, sizeof(words));
    std::uint64_t bits = 0;
    for (const std::uint64_t word : words) bits |= word;
    if constexpr (sizeof(marks[0]) < sizeof(bits)) bits |= bits >> 32;
    return static_cast<unsigned int>(bits);
}

/// Nothing besides the boxes of a group.
struct NoMore
{};

/// Boxes in groups of eight: each group of a level has one box on the next level, the box around all of its own, up to
/// a level of one group. A leaf is the box of what the owner puts there. `More` is what the owner knows of a group
/// besides: it stands with the boxes, so that one place in memory is read for both.
template <class T, class More = NoMore>
class BoxTree
{
public:
    static constexpr unsigned int fanOut = 8;

    /// Eight boxes by their borders.
    struct Group : More
    {
        T lowX[fanOut], highX[fanOut], lowY[fanOut], highY[fanOut];
    };

    /// For one leaf or more, whose boxes are not set yet.
    explicit BoxTree(unsigned int leafCount)
    {
        std::size_t groupCount = 0;
        std::size_t boxCount = leafCount;
        do {
            levelSize[levelCount] = boxCount;
            levelStart[levelCount++] = groupCount;
            boxCount = (boxCount + fanOut - 1) / fanOut;
            groupCount += boxCount;
        } while (boxCount > 1);
        groups.reset(new Group[groupCount]);
        levelStart[levelCount] = groupCount;
        // Places without a box are in the last group of a level.
        for (unsigned int level = 0; level < levelCount; ++level) {
            Group& last = groups[levelStart[level + 1] - 1];
            for (std::size_t k = levelSize[level] % fanOut; k % fanOut != 0; ++k)
                Write(last, static_cast<unsigned int>(k), PlaneBox<T>());
        }
    }

    unsigned int GetTop() const { return levelCount - 1; }
    /// The level below the top, of eight groups at most: to test them all takes a simple test no longer than to ask the
    /// top which to enter.
    unsigned int GetBelowTop() const { return levelCount > 1 ? levelCount - 2 : 0; }

    const Group& GetGroup(unsigned int level, std::size_t group) const { return groups[levelStart[level] + group]; }
    /// What the owner knows of a group.
    More& GetMore(unsigned int level, std::size_t group) { return groups[levelStart[level] + group]; }

    /// The number of a group among those of all levels.
    std::size_t GetNumber(unsigned int level, std::size_t group) const { return levelStart[level] + group; }
    std::size_t GetGroupCount() const { return levelStart[levelCount]; }
    /// How many boxes a level has.
    std::size_t GetSize(unsigned int level) const { return levelSize[level]; }

    /// Replaces the box of any level.
    void SetBox(unsigned int level, std::size_t index, const PlaneBox<T>& box)
    {
        Write(groups[levelStart[level] + index / fanOut], index % fanOut, box);
    }

    /// Replaces the box of a leaf; the boxes above are as they were until Raise or RaiseAll.
    void SetLeaf(unsigned int leaf, const PlaneBox<T>& box) { Write(groups[leaf / fanOut], leaf % fanOut, box); }

    /// Brings the boxes above a leaf up to date.
    void Raise(unsigned int leaf)
    {
        std::size_t group = leaf / fanOut;
        for (unsigned int level = 1; level < levelCount; ++level, group /= fanOut) RaiseGroup(level, group);
    }

    /// Brings all boxes above the leaves up to date.
    void RaiseAll()
    {
        for (unsigned int level = 1; level < levelCount; ++level)
            for (std::size_t group = 0; group < levelStart[level] - levelStart[level - 1]; ++group)
                RaiseGroup(level, group);
    }

    /// Visits, in ascending order, runs of leaves that a test picks, side by side within a group, from the leaf `first`
    /// on: test(level, group) has a bit for each box of a group that the search is to enter, and visit(from, to)
    /// returns whether it is to go on. Tests must pick a box where they would pick one below it. The groups of
    /// `entryLevel` are tested one after the other.
    template <class Test, class Visit>
    CORVEX_ALWAYS_INLINE void Traverse(unsigned int entryLevel, unsigned int first, Test test, Visit visit) const
    {
        unsigned int picked[mostLevels];
        unsigned int level = entryLevel;
        std::size_t group = std::size_t(first) >> levelShift * (level + 1);
        const auto enter = [&] {
            // Boxes that end before the first leaf, and places without a box, are passed over.
            const std::size_t firstBox = std::size_t(first) >> (levelShift * level);
            const std::size_t start = group * fanOut;
            const std::size_t passed = firstBox > start ? std::min<std::size_t>(firstBox - start, fanOut) : 0;
            const std::size_t there = std::min<std::size_t>(levelSize[level] - start, fanOut);
            picked[level] = test(level, group) & ((1u << there) - 1) & ~((1u << passed) - 1);
        };
        for (enter();;) {
            if (picked[level] == 0) {
                if (level != entryLevel) {
                    ++level;
                    group /= fanOut;
                } else {
                    if (++group * fanOut >= levelSize[level]) return;
                    enter();
                }
                continue;
            }
            const unsigned int from = static_cast<unsigned int>(__builtin_ctz(picked[level]));
            if (level == 0) {
                const unsigned int length = static_cast<unsigned int>(__builtin_ctz(~(picked[0] >> from)));
                picked[0] &= ~(((1u << length) - 1) << from);
                const unsigned int leaf = static_cast<unsigned int>(group) * fanOut + from;
                if (!visit(leaf, leaf + length)) return;
            } else {
                picked[level] &= picked[level] - 1;
                group = group * fanOut + from;
                --level;
                enter();
            }
        }
    }

    /// The boxes of a group that meet a box, borders included, as bits; by lanes of the given width.
    template <unsigned int Bytes>
    CORVEX_ALWAYS_INLINE unsigned int FindMeeting(unsigned int level, std::size_t group, const PlaneBox<T>& box) const
    {
        using Lane = typename Lanes<T, Bytes>::Type;
        constexpr unsigned int laneCount = Lanes<T, Bytes>::count < fanOut ? Lanes<T, Bytes>::count : fanOut;
        const Group& boxes = GetGroup(level, group);
        unsigned int bits = 0;
        decltype(Lane() < Lane()) marks = {};
        for (unsigned int from = 0; from < fanOut; from += laneCount) {
            Lane lowX, highX, lowY, highY;
            Load(lowX, boxes.lowX + from);
            Load(highX, boxes.highX + from);
            Load(lowY, boxes.lowY + from);
            Load(highY, boxes.highY + from);
            auto meets = (lowX <= box.highX) & (highX >= box.lowX) & (lowY <= box.highY) & (highY >= box.lowY);
            // A short register is soon packed by itself.
            if constexpr (Bytes == baselineBytes) {
                bits |= PackMask<T>(meets) << from;
            } else {
                MarkLanes(meets, from);
                marks |= meets;
            }
        }
        return bits | FoldBits(marks);
    }

private:
    static constexpr unsigned int levelShift = 3;
    static_assert(fanOut == 1u << levelShift);
    /// Enough for 2^32 leaves.
    static constexpr unsigned int mostLevels = 12;

    static void Write(Group& group, unsigned int k, const PlaneBox<T>& box)
    {
        group.lowX[k] = box.lowX;
        group.highX[k] = box.highX;
        group.lowY[k] = box.lowY;
        group.highY[k] = box.highY;
    }

    /// Makes the box that stands for a group of the level below.
    void RaiseGroup(unsigned int level, std::size_t below)
    {
        const Group& boxes = GetGroup(level - 1, below);
        PlaneBox<T> box;
        for (unsigned int k = 0; k < fanOut; ++k)
            box.Join({boxes.lowX[k], boxes.highX[k], boxes.lowY[k], boxes.highY[k]});
        Write(groups[levelStart[level] + below / fanOut], below % fanOut, box);
    }

    unsigned int levelCount = 0;
    /// Where the groups of each level begin, and how many boxes it has.
    std::size_t levelStart[mostLevels + 1];
    std::size_t levelSize[mostLevels];
    std::unique_ptr<Group[]> groups;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The crossing score of points against an outline, for many points.

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/vectors/TVector2.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A closed outline by runs of its sides, for the score of TPointSet::ExamineSegment summed over all of them: a run
/// that lies to one side of a point scores by its two ends alone.
template <class T>
class ContainmentTree
{
public:
    /// Copies x and y of `vertexCount` vertices, at least one; those of vertex i stand at i * stride.
    ContainmentTree(const T* points, unsigned int stride, unsigned int vertexCount);

    /// The sum of the scores of all sides, the closing one included.
    int GetScore(T x, T y) const;

    /// Counts one more owner than the first.
    void Join() const { owners.fetch_add(1, std::memory_order_relaxed); }
    /// Counts one owner less; true for the last one, who has to delete the tree.
    bool Leave() const { return owners.fetch_sub(1, std::memory_order_acq_rel) == 1; }

private:
    /// What a vertex exactly on a point's level adds to the score, by the side of the point that its key is on.
    struct LevelWeight
    {
        T y, key;
        int weight;
        /// The sum of the weights before.
        int before;
    };

    /// What is told of the runs of a group besides their boxes.
    struct RunGroup
    {
        T slope[BoxTree<T>::fanOut] = {}, startY[BoxTree<T>::fanOut] = {}, endY[BoxTree<T>::fanOut] = {};
    };

    void BoundRun(unsigned int level, std::size_t box, T sizeX, T sizeY);
    void AddLevelWeights(unsigned int vertex);
    void OrderLevelWeights();
    int ScoreSides(unsigned int first, unsigned int end, T x, T y) const;
    int ScoreLevel(T x, T y) const;

    /// Where a height is in the filter of heights: a word of it, and the bits there.
    struct LevelMark
    {
        std::size_t word;
        std::uint64_t bits;
        LevelMark(T y, std::uint64_t filterLength);
    };

    unsigned int count;
    /// The vertices, the first one again at the end.
    std::unique_ptr<TVector2<T>[]> vertices;
    /// What bounds the runs: their heights; and in x, less the slope times y, how far they reach.
    BoxTree<T, RunGroup> runs;
    /// By y, then by key.
    std::vector<LevelWeight> levels;
    /// A Bloom filter of the heights in `levels`, by three bits of one word; its length is a power of two.
    std::unique_ptr<std::uint64_t[]> levelFilter;
    std::size_t filterLength = 1;
    /// Any thread may copy an index.
    mutable std::atomic<unsigned int> owners{1};
};

extern template class ContainmentTree<float>;
extern template class ContainmentTree<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The crossing score of points against an outline, for many points.

#include <CorvexMaths/polygons/internal/BoxTree.h>

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

    void BoundRun(unsigned int level, std::size_t box, T sizeX, T sizeY);
    void AddLevelWeights(unsigned int vertex);
    void OrderLevelWeights();
    int ScoreRun(unsigned int level, std::size_t box, T y) const;
    int ScoreSides(unsigned int first, unsigned int end, T x, T y) const;
    int ScoreLevel(T x, T y) const;

    static std::uint64_t HashLevel(T y);

    unsigned int count;
    /// The vertices, the first one again at the end.
    std::unique_ptr<T[]> vertexX, vertexY;
    /// What bounds the runs: their heights; and in x, less the slope times y, how far they reach.
    BoxTree<T> runs;
    std::unique_ptr<T[]> slopes;
    /// By y, then by key.
    std::vector<LevelWeight> levels;
    /// A Bloom filter, with one hash, of the heights in `levels`; its length is a power of two.
    std::unique_ptr<std::uint64_t[]> levelFilter;
    std::size_t filterLength = 1;
    /// Any thread may copy an index.
    mutable std::atomic<unsigned int> owners{1};
};

extern template class ContainmentTree<float>;
extern template class ContainmentTree<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

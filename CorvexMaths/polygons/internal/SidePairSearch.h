#pragma once

/// The search for pairs of sides that cross, as vertices of an outline are exchanged to undo them.

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/primitives/TEdge.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The sides of a chain of vertices, side i from vertex i to the next, by runs of them. The vertices may be exchanged
/// while the search stands, but not moved elsewhere.
template <class T>
class SidePairSearch
{
public:
    /// x and y of vertex i stand at i * stride. There are two vertices or more.
    SidePairSearch(const T* points, unsigned int stride, unsigned int vertexCount);

    /// The first side from `first` on that crosses side i by TEdge2::Intersects, at the common tolerance, and shares no
    /// end with it, by exact comparisons; the number of sides if there is none.
    unsigned int FindNext(unsigned int i, unsigned int first) const;

    /// Has to be told of each vertex that an exchange changed.
    void Update(unsigned int vertex);

private:
    TEdge2<T> GetSide(unsigned int i) const;
    PlaneBox<T> MakeBox(const TEdge2<T>& side) const;
    /// FindNext among some sides, one by one; `end` if there is none.
    unsigned int FindAmong(const TEdge2<T>& side, unsigned int first, unsigned int end) const;
    void MeasureBlock(unsigned int block);
    void RaiseDirections(unsigned int level, std::size_t below);

    const T* vertices;
    unsigned int step;
    unsigned int sideCount;
    /// The greatest coordinate.
    T size = T(0);
    /// The boxes of the runs, unless there are but few sides.
    std::optional<BoxTree<T>> blocks;
    /// The directions of the sides in each box, a bit for each sector of half a turn.
    std::unique_ptr<std::uint64_t[]> directions;
};

extern template class SidePairSearch<float>;
extern template class SidePairSearch<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

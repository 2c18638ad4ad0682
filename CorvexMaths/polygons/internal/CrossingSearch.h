#pragma once

/// The search for self-crossings of an outline, on which the trimming of polygons spends its time.

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/polygons/internal/EdgeColumns.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Finds where one edge of an outline first meets a later one.
///
/// The lines of two edges cross as TLine2::IntersectWith finds it, at the common tolerance, and the point must pass
/// TEdge2::IsWithin of both. The search gives exactly the bits and decisions of those tests; it computes once what
/// depends on one edge alone, works on several pairs at a time, and passes over runs of edges that lie further off than
/// rounding can reach.
template <class T>
class CrossingSearch
{
public:
    /// Copies x and y of the vertices, at least one, of a closed outline; those of vertex i stand at i * stride, and
    /// edge i starts there.
    CrossingSearch(const T* points, unsigned int stride, unsigned int vertexCount);

    /// The crossing of edge i with a later edge that lies nearest to the start of edge i; among equally near ones that
    /// with the lowest index. The neighbours of edge i (the next, and the last one for the first) are passed over.
    /// Writes the index of the other edge and the point and returns true, or returns false and writes nothing. Costs
    /// what lies near edge i and the logarithm of the count, at worst all edges.
    bool FindFirst(unsigned int i, unsigned int* index, TVector2<T>* point) const;

    /// The end of edge i.
    TVector2<T> GetEnd(unsigned int i) const { return {edges.Column(endXColumn)[i], edges.Column(endYColumn)[i]}; }

private:
    EdgeColumns<T> edges;
    /// The boxes of successive edges.
    BoxTree<T> blocks;
    /// What rounding can move a crossing by.
    T margin;
};

extern template class CrossingSearch<float>;
extern template class CrossingSearch<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// How far points lie from an outline, as the offset of a polygon measures it.

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/polygons/internal/EdgeColumns.h>

#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Tells whether a point lies at a given distance from an outline, to within 1e-6.
///
/// The minimum starts at the largest `float` and runs through the edges in order. An edge that has the point beside it
/// offers the perpendicular distance, if that is strictly less than the minimum so far; failing that, the distances
/// from its two ends are offered. (Rounding can leave the distance from an end below that from the line.)
template <class T>
class OutlineDistance
{
public:
    /// The edges are copied.
    OutlineDistance(const TEdge2<T>* edges, unsigned int edgeCount);

    /// Whether the minimum differs from |distance| by less than a true `double` 1e-6, in either form. The first call
    /// looks at all edges; later ones pass over those that lie farther off.
    bool IsAt(const TVector2<T>& point, T distance);

private:
    T MeasureAll(const TVector2<T>& point) const;
    void MakeTree();

    EdgeColumns<T> columns;
    std::unique_ptr<BoxTree<T>> tree;
    /// The greatest coordinate, once there is a tree.
    T size = T(0);
};

extern template class OutlineDistance<float>;
extern template class OutlineDistance<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// Distances between the vertices and the edges of outlines, many at a time.

#include <CorvexMaths/polygons/internal/EdgeColumns.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// How far a point lies from an outline, as the offset of a polygon measures it.
///
/// The minimum starts at the largest `float` and runs through the edges in order. An edge that has the point beside it
/// offers the perpendicular distance, if that is strictly less than the minimum so far; failing that, the distances
/// from its two ends are offered. (Rounding can leave the distance from an end below that from the line.)
template <class T>
T DistanceFromOutline(const EdgeColumns<T>& edges, const TVector2<T>& point);

/// The vertex farthest from the chord between two others, among those strictly between them: by
/// TEdge2::DistanceToPoint, the lowest index on a tie. `points` holds x and y of vertex i at i * stride. Writes the
/// distance to `best`; if there is none to measure, that is -1 and the result is `first`.
template <class T>
unsigned int FarthestFromChord(const T* points, unsigned int stride, unsigned int first, unsigned int last, T* best);

extern template float DistanceFromOutline(const EdgeColumns<float>&, const TVector2<float>&);
extern template double DistanceFromOutline(const EdgeColumns<double>&, const TVector2<double>&);
extern template unsigned int FarthestFromChord(const float*, unsigned int, unsigned int, unsigned int, float*);
extern template unsigned int FarthestFromChord(const double*, unsigned int, unsigned int, unsigned int, double*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The geometry of the offset of polygons, on edges of the plane alone.

#include <CorvexMaths/primitives/TEdge.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The edge shifted by `distance` to its right, seen from start to end.
template <class T>
TEdge2<T> ShiftEdge(const TEdge2<T>& edge, const T& distance);

/// The vertices of the offset outline at the corner where edge `first` runs into edge `second`; see
/// TPolygon::AddOffsetPoints. Writes up to three to `points` and returns how many.
template <class T>
unsigned int OffsetCorner(const TEdge2<T>& first, const TEdge2<T>& second, const T& distance, bool negative,
                          TVector2<T>* points);

extern template TEdge2<float> ShiftEdge(const TEdge2<float>&, const float&);
extern template TEdge2<double> ShiftEdge(const TEdge2<double>&, const double&);
extern template unsigned int OffsetCorner(const TEdge2<float>&, const TEdge2<float>&, const float&, bool,
                                          TVector2<float>*);
extern template unsigned int OffsetCorner(const TEdge2<double>&, const TEdge2<double>&, const double&, bool,
                                          TVector2<double>*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

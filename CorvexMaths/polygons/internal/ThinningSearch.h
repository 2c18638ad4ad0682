#pragma once

/// The search for the vertices that an outline can do without, as it is thinned by deviation.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Clears the flags of the vertices strictly between `first` and `last` that TPolygon::SimplifySection clears. x and y
/// of vertex i stand at i * stride.
///
/// Splits that take evenly from both ends cost the logarithm of the count for each vertex. Where they do not, a tree
/// of boxes takes over from the scans: a run then costs what lies near its farthest vertex, unless all of it is about
/// as far from the chord.
template <class T>
void ThinRun(const T* points, unsigned int stride, unsigned int first, unsigned int last, bool* keep, T tolerance);

extern template void ThinRun(const float*, unsigned int, unsigned int, unsigned int, bool*, float);
extern template void ThinRun(const double*, unsigned int, unsigned int, unsigned int, bool*, double);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

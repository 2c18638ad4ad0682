#pragma once

/// Whether an object has the hooks of point sets. Internal.

#include <CorvexMaths/pointsets/TPointSet.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Whether a set has no hooks but those of `TPointSet`, so that additions change nothing but the set: whether it is
/// one, or of a class of the library that adds none. Which these are is known further up, where this is defined: with
/// the polygons, in TPolygon.cpp. A false answer costs time alone.
template <class T, template <class> class V>
bool HasHooksOfSets(const TPointSet<T, V>& set);

/// Its instantiations for T.
#define CORVEX_INSTANTIATE_SET_HOOKS(T)                                                                                \
    template bool Kernels::HasHooksOfSets(const TPointSet<T, TVector2>&);                                              \
    template bool Kernels::HasHooksOfSets(const TPointSet<T, TVector3>&);                                              \
    template bool Kernels::HasHooksOfSets(const TPointSet<T, TVector4>&)

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The outlines of a region, linked from the runs that bound it. Internal.

#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/Windings.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The outlines between inside and outside, in canonical form.
///
/// At a node a run goes on with the one that bounds the same inside: the first one clockwise from it. So the boundary
/// of each connected inside comes as cycles, one that may have an outer outline and others around holes. Where a cycle
/// passes several times through a node it is cut there: as its inside is connected, its visits to two nodes do not
/// alternate, so that there is one way to do it. Of the loops at most one runs counter-clockwise, which is
/// the outer outline of this inside; the others are holes that touch it or one another.
OutlineSet LinkOutlines(const RunGraph& graph, const InsideRule& isInside);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

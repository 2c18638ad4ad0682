#pragma once

/// Chains whose edges meet in common points alone, of chains that cross. Internal.

#include <CorvexMaths/regions/internal/EdgeTree.h>

#include <cstdint>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Chains whose edges meet in points that both have. They may still coincide, edge by edge.
struct NodedChains
{
    Chains chains;
    /// For each point whether other edges than the two next to it may end there. A chain that has such points starts
    /// with one.
    std::vector<std::uint8_t> isKnot;
};

/// Snap rounding (J. D. Hobby, 1999; L. J. Guibas and D. H. Marimont, 1998).
///
/// The pixel of a grid point is the half-open square of one step around it. A pixel is hot if it holds the end of an
/// edge or a crossing of two. Each edge is led through the centres of all hot pixels that it passes. Then no edge comes
/// to cross another, however they were moved: shrink all hot pixels at once to their centres, and let the edges be
/// drawn along; outside of hot pixels they do not meet, and none is pushed over another. The argument needs every
/// crossing and every passage, all of which are found here exactly; so one pass suffices, and there is nothing to
/// repeat.
///
/// Where all crossings are points of the grid nothing has to be moved: then only exact meetings count, and edges that
/// pass through the pixel of a vertex beside its centre stay as they are. So chains that cross nowhere come back
/// unchanged, and what was made here once is not moved again.
///
/// A passage of an edge g through the pixel of a crossing of e and f is found from the distances along e within which g
/// is as near to e as the width of a pixel, which are known from the pair of e and g: only there can it pass through
/// pixels that e passes. With a grid this fine hardly any two of these stretches overlap.
NodedChains Node(Chains&& chains);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

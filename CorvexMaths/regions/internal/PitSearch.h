#pragma once

/// The search for pits. Internal.

#include <CorvexMaths/regions/internal/OffsetChain.h>

#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The parts of a curve without those pits that a rolling disc finds, which are at most so broad in x or in y. Of what
/// is left out PitProof has the last word. Linear in the vertices, with a factor of at most 64 for what is looked at in
/// vain.
std::vector<Part> FindParts(const OffsetChain& chain, double widest);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

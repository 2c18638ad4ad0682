#pragma once

/// What may be left out of an offset curve. Internal.

#include <CorvexMaths/regions/internal/OffsetChain.h>

#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Makes raw all cuts of which it is not proved that nothing is lost with what they leave out. Linear in the vertices.
void CheckPits(const OffsetChain& chain, std::vector<Part>* parts);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

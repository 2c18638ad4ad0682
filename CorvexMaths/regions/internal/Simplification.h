#pragma once

/// Clean outlines with fewer vertices. Internal.

#include <CorvexMaths/regions/internal/Grid.h>

#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Outlines of which no two edges cross or overlap, without those vertices that are not needed within a tolerance in
/// steps, inclusive: each stretch of an outline that an edge replaces lies within the tolerance of that edge, and the
/// edge of it. No outline comes to cross, touch or overlap another or itself, and each keeps three vertices at least.
/// Points differ by less than 2^42 in x and in y.
std::vector<Ring> Simplify(const std::vector<Ring>& rings, double tolerance);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

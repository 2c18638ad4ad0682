#pragma once

/// Clean outlines as triangles. Internal.

#include <CorvexMaths/regions/internal/Grid.h>

#include <array>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The inside of outlines of which no two edges cross or overlap, outer ones counter-clockwise and holes clockwise,
/// as triangles between their vertices: counter-clockwise, side by side, and constrained Delaunay: no vertex that can
/// be seen from the inside of a triangle lies in its circle. Points differ by less than 2^42 in x and in y.
std::vector<std::array<GridPoint, 3>> Triangulate(const std::vector<Ring>& rings);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

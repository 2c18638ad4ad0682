#pragma once

/// The vertices of polygons in the x, y plane, where all their geometry happens.

#include <CorvexMaths/vectors/TVector2.h>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The vertex in the x, y plane.
template <class Vertex>
auto InPlane(const Vertex& vertex)
{
    return TVector2(vertex.x, vertex.y);
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

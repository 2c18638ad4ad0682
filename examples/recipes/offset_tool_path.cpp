// A cutter of 8 mm is to clear an L-shaped pocket. Its centre runs along the wall at a distance of its radius, and then
// further and further inside, until there is no room for another pass.

#include <CorvexMaths/polygons/TPolygon.h>

#include <cmath>
#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;
using Polygon = TPolygon<double, TVector2>;

/// The length of the closed path.
double LengthOf(const Polygon& path)
{
    double length = 0;
    for (unsigned int i = 0; i < path.GetCount(); ++i)
        length += (path[(i + 1) % path.GetCount()] - path[i]).GetLength();
    return length;
}

int main()
{
    // In millimetres.
    const TVector2<double> corners[] = {{0, 0}, {60, 0}, {60, 24}, {24, 24}, {24, 50}, {0, 50}};
    const double radius = 4;
    const double stepOver = 6;
    Polygon wall(corners, 6);
    // Run counter-clockwise, an outline keeps its distance from the corner that points inward, too.
    wall.MakeCCW();

    unsigned int passes = 0;
    for (double distance = radius;; distance += stepOver) {
        // Offset works in place. Each pass starts from the wall: offsets of offsets would add up their errors.
        Polygon path = wall;
        // A negative distance is inward; a spacing of 0 keeps every vertex. False: there is no path so far inside.
        if (!path.Offset(-distance, 0)) break;
        ++passes;
        std::printf("pass %u, %g mm from the wall: %u moves, %.2f mm of path around %.2f mm2\n", passes, distance,
                    path.GetCount(), LengthOf(path), path.GetSimpleArea());
        for (unsigned int i = 0; i < path.GetCount(); ++i) std::printf("  G1 X%.3f Y%.3f\n", path[i].x, path[i].y);
    }
    std::printf("%u passes\n", passes);
    return passes > 0 ? 0 : 1;
}

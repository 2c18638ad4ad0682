// A cutter of 6 mm is to clear a pocket with an island. Passes run at a distance of its radius from the wall and from
// the island, and then further and further away, until nothing is left. Where the pocket falls apart, each part is
// cleared by itself, from the outermost pass to the innermost, before the cutter is lifted to go to the next.

#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/regions/TRegion.h>

#include <cstdio>
#include <vector>

using namespace Halmont::Orrin::CorvexMaths;
using Polygon = TPolygon<double, TVector2>;
using Region = TRegion<double>;

namespace
{

// In millimetres.
const double radius = 3;
const double stepOver = 4;

/// A piece of a pass: closed paths, and the pieces of the next pass that lie inside it.
struct Pass
{
    Region::Piece paths;
    std::vector<Pass> inner;
};

/// The passes in a part of the pocket: the pieces of the offset that lie in it, and in each of them the next.
std::vector<Pass> FindPasses(const Region& pocket, const Region& part, double distance)
{
    std::vector<Pass> passes;
    // From the wall each time: offsets of offsets would add up their errors.
    for (const Region::Piece& piece : pocket.Offset(-distance, Join::Mitre).Intersect(part).GetPieces()) {
        std::vector<Polygon> outlines = piece.holes;
        outlines.push_back(piece.outline);
        const Region inside(outlines, WindingRule::Positive);
        passes.push_back({piece, FindPasses(pocket, inside, distance + stepOver)});
    }
    return passes;
}

void PrintPath(const Polygon& path, int depth)
{
    std::printf("%*s  G0 X%.3f Y%.3f\n", 2 * depth, "", path[0].x, path[0].y);
    for (unsigned int i = 1; i <= path.GetCount(); ++i)
        std::printf("%*s  G1 X%.3f Y%.3f\n", 2 * depth, "", path[i % path.GetCount()].x, path[i % path.GetCount()].y);
}

/// Prints passes from the outside to the inside, each indented by what it lies in, and returns how many closed paths
/// they have.
unsigned int Print(const std::vector<Pass>& passes, int depth)
{
    unsigned int count = 0;
    for (const Pass& pass : passes) {
        const unsigned int holes = static_cast<unsigned int>(pass.paths.holes.size());
        std::printf("%*spass %d, %g mm from the wall, around %.2f mm2, %u islands\n", 2 * depth, "", depth + 1,
                    radius + depth * stepOver, pass.paths.outline.GetSimpleArea(), holes);
        PrintPath(pass.paths.outline, depth);
        for (const Polygon& hole : pass.paths.holes) PrintPath(hole, depth);
        count += 1 + holes + Print(pass.inner, depth + 1);
    }
    return count;
}

} // namespace

int main()
{
    // Two chambers, joined by a passage of 12 mm, and an island in the first.
    const Region wall(Polygon{{0, 0},
                              {50, 0},
                              {50, 14},
                              {70, 14},
                              {70, 0},
                              {100, 0},
                              {100, 40},
                              {70, 40},
                              {70, 26},
                              {50, 26},
                              {50, 40},
                              {0, 40}});
    const Region island(Polygon{{18, 16}, {28, 16}, {28, 24}, {18, 24}});
    const Region pocket = wall.Subtract(island);

    const std::vector<Pass> passes = FindPasses(pocket, pocket, radius);
    const unsigned int count = Print(passes, 0);
    std::printf("%u closed paths\n", count);
    return count > 0 ? 0 : 1;
}

// The shapes of the robust family against other libraries: exact hulls, smallest circles and splines fitted to data.

#include "OurGeometry.h"
#include "PeersGeometry.h"
#include "Rows.h"

#include <string>

namespace
{

using namespace Peers;

/// The same work, its result the number of vertices and the area of a counter-clockwise outline.
Work Summary(const Work& work)
{
    return {work.run, [result = work.result] {
                const OutlinePointer<double> outline = MakeOutline<double>(result());
                return Values{static_cast<double>(outline->GetCount()), outline->GetSignedSimpleArea()};
            }};
}

Work RobustHull(const Coordinates& coordinates)
{
    const auto points = MakeOutline<double>(coordinates);
    const auto hull = std::make_shared<Robust::ConvexHull<double, TVector2>>();
    return {[=] { *hull = Robust::ConvexHull<double, TVector2>(*points); },
            [=] {
                Coordinates vertices;
                for (unsigned int i = 0; i < hull->polygon.GetCount(); ++i)
                    vertices.insert(vertices.end(), {hull->polygon[i].x, hull->polygon[i].y});
                return vertices;
            }};
}

/// A square grid row by row, whose every outer point lies on a side of the hull.
Coordinates MakeGrid(std::size_t count)
{
    const auto side = static_cast<std::size_t>(std::sqrt(static_cast<double>(count)));
    Coordinates points;
    for (std::size_t i = 0; i < side * side; ++i)
        points.insert(points.end(), {static_cast<double>(i % side), static_cast<double>(i / side)});
    return points;
}

void AddHull(const std::string& name, double bound, Coordinates (*make)(std::size_t))
{
    constexpr std::size_t count = 1000000;
    const Row row("robust-hull/" + name, bound, count);
    row.Add("ours", [=] { return Summary(RobustHull(make(count))); });
    if constexpr (hasCgal) row.Add("CGAL", [=] { return Summary(CgalHull(make(count))); });
}

const Registration robustShapeRows([] {
    AddHull("disc", 1e-12, [](std::size_t count) { return MakeCloud(count, false); });
    // Without exact arithmetic some of the vertices are taken for collinear.
    AddHull("circle", 2e-4, [](std::size_t count) { return MakeCloud(count, true); });
    AddHull("grid", 0, MakeGrid);
});

} // namespace

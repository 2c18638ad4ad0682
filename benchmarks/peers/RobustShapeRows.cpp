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

/// A spline that opens its knots.
struct Opened : TBSpline<double, TVector2>
{
    explicit Opened(const TBSpline<double, TVector2>& spline) : TBSpline(spline) {}

    /// The knots that differ, from 0 to 1.
    Values Breaks() const
    {
        Values breaks;
        for (unsigned int i = order - 1; i <= count; ++i) breaks.push_back(knots[i] / knots[count]);
        return breaks;
    }
};

void AddSplineFit()
{
    constexpr std::size_t count = 100000;
    constexpr unsigned int controlCount = 1000;
    const auto chain = [] { return MakeGear(count, 0.05 / size); };
    using Fit = Robust::SplineFit<double, TVector2>;
    // Ours also finds parameters, knots and distances.
    const Row row("robust-spline/" + std::to_string(count), 1e-9, count);
    row.Add("ours", [=]() -> Work {
        const auto points = MakeOutline<double>(chain());
        const auto fit = std::make_shared<Fit>();
        return {[=] { *fit = Fit(*points, controlCount); },
                [=] {
                    Values controls;
                    for (unsigned int i = 0; i < fit->spline.GetCount(); ++i)
                        controls.insert(controls.end(), {fit->spline[i].x, fit->spline[i].y});
                    return controls;
                }};
    });
    if constexpr (hasGsl)
        row.Add("GSL", [=] {
            const Coordinates points = chain();
            const Fit fit(*MakeOutline<double>(points), controlCount);
            Values parameters;
            for (unsigned int i = 0; i < count; ++i) parameters.push_back(fit.parameters[i]);
            return GslSplineFit(points, parameters, Opened(fit.spline).Breaks());
        });
}

void AddMinimumCircle()
{
    constexpr std::size_t count = 100000;
    const auto points = [] { return MakeCloud(count, false); };
    const Row row("robust-circle/" + std::to_string(count), 1e-12, count);
    row.Add("ours", [=]() -> Work {
        const auto set = MakeOutline<double>(points());
        const auto found = std::make_shared<Robust::MinimumCircle<double>>();
        return {[=] { *found = Robust::MinimumCircle<double>(*set); },
                [=] {
                    const TCircle2<double>& circle = found->circle;
                    return Values{circle.centre.x, circle.centre.y, circle.radius};
                }};
    });
    if constexpr (hasCgal) {
        row.Add("CGAL", [=] { return CgalBoundingCircle(points()); });
        row.Add("CGAL-spheres", [=] { return CgalBoundingSphere(points()); });
    }
}

const Registration robustShapeRows([] {
    AddHull("disc", 1e-12, [](std::size_t count) { return MakeCloud(count, false); });
    // Without exact arithmetic some of the vertices are taken for collinear.
    AddHull("circle", 2e-4, [](std::size_t count) { return MakeCloud(count, true); });
    AddHull("grid", 0, MakeGrid);
    AddMinimumCircle();
    AddSplineFit();
});

} // namespace

// What CGAL does for comparison, on plain `double`: its kernel of the fastest arithmetic, without exact predicates. For
// sets of polygons it needs one with exact constructions.

#include "PeersGeometry.h"

#include <CGAL/Boolean_set_operations_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Min_circle_2.h>
#include <CGAL/Min_circle_2_traits_2.h>
#include <CGAL/Min_sphere_of_points_d_traits_2.h>
#include <CGAL/Min_sphere_of_spheres_d.h>
#include <CGAL/Polygon_2_algorithms.h>
#include <CGAL/Polygon_set_2.h>
#include <CGAL/Simple_cartesian.h>
#include <CGAL/convex_hull_2.h>

#include <cmath>
#include <iterator>
#include <memory>

namespace Peers
{

namespace
{

using Kernel = CGAL::Simple_cartesian<double>;
using Points = std::vector<Kernel::Point_2>;
using BoundingCircle = CGAL::Min_circle_2<CGAL::Min_circle_2_traits_2<Kernel>>;
using BoundingSphere = CGAL::Min_sphere_of_spheres_d<CGAL::Min_sphere_of_points_d_traits_2<Kernel, double>>;

std::shared_ptr<Points> MakePoints(const Coordinates& coordinates)
{
    const auto points = std::make_shared<Points>();
    for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2)
        points->emplace_back(coordinates[i], coordinates[i + 1]);
    return points;
}

using ExactKernel = CGAL::Exact_predicates_exact_constructions_kernel;
using ExactPolygon = CGAL::Polygon_2<ExactKernel>;
using ExactPolygonSet = CGAL::Polygon_set_2<ExactKernel>;

ExactPolygon MakeExactPolygon(const Coordinates& outline)
{
    ExactPolygon polygon;
    for (std::size_t i = 0; i + 1 < outline.size(); i += 2)
        polygon.push_back(ExactKernel::Point_2(outline[i], outline[i + 1]));
    return polygon;
}

Values Summarise(const ExactPolygonSet& set)
{
    std::vector<CGAL::Polygon_with_holes_2<ExactKernel>> pieces;
    set.polygons_with_holes(std::back_inserter(pieces));
    double area = 0;
    const auto add = [&](const ExactPolygon& outline) { area += CGAL::to_double(outline.area()); };
    for (const auto& piece : pieces) {
        add(piece.outer_boundary());
        for (auto hole = piece.holes_begin(); hole != piece.holes_end(); ++hole) add(*hole);
    }
    return {area, static_cast<double>(pieces.size())};
}

} // namespace

Work CgalHull(const Coordinates& points)
{
    const auto source = MakePoints(points);
    const auto hull = std::make_shared<Points>();
    return {[=] {
                *hull = Points();
                CGAL::convex_hull_2(source->begin(), source->end(), std::back_inserter(*hull));
            },
            [=] {
                Coordinates coordinates;
                for (const Kernel::Point_2& point : *hull)
                    coordinates.insert(coordinates.end(), {point.x(), point.y()});
                return coordinates;
            }};
}

Work CgalContainment(const Coordinates& outline, const Coordinates& queries)
{
    const auto polygon = MakePoints(outline);
    const auto points = MakePoints(queries);
    const auto isWithin = std::make_shared<Values>(points->size());
    return {[=] {
                for (std::size_t i = 0; i < points->size(); ++i)
                    (*isWithin)[i] = CGAL::bounded_side_2(polygon->begin(), polygon->end(), (*points)[i], Kernel()) ==
                                     CGAL::ON_BOUNDED_SIDE;
            },
            [=] { return *isWithin; }};
}

Work CgalBoundingCircle(const Coordinates& points)
{
    const auto source = MakePoints(points);
    const auto circle = std::make_shared<Values>();
    return {[=] {
                // In random order already, so that it need not be shuffled.
                const BoundingCircle bounding(source->begin(), source->end(), false);
                const Kernel::Point_2& centre = bounding.circle().center();
                *circle = {centre.x(), centre.y(), std::sqrt(bounding.circle().squared_radius())};
            },
            [=] { return *circle; }};
}

Work CgalBoundingSphere(const Coordinates& points)
{
    const auto source = MakePoints(points);
    const auto circle = std::make_shared<Values>();
    return {[=] {
                BoundingSphere bounding(source->begin(), source->end());
                const double* const centre = bounding.center_cartesian_begin();
                *circle = {centre[0], centre[1], bounding.radius()};
            },
            [=] { return *circle; }};
}

Work CgalUnion(const Outlines& outlines)
{
    const auto polygons = std::make_shared<std::vector<ExactPolygon>>();
    const auto result = std::make_shared<ExactPolygonSet>();
    for (const Coordinates& outline : outlines) polygons->push_back(MakeExactPolygon(outline));
    return {[=] {
                result->clear();
                result->join(polygons->begin(), polygons->end());
            },
            [=] { return Summarise(*result); }};
}

Work CgalCombination(const Coordinates& first, const Coordinates& second, bool isIntersection)
{
    const auto a = std::make_shared<ExactPolygon>(MakeExactPolygon(first));
    const auto b = std::make_shared<ExactPolygon>(MakeExactPolygon(second));
    const auto result = std::make_shared<ExactPolygonSet>();
    return {[=] {
                *result = ExactPolygonSet(*a);
                isIntersection ? result->intersection(*b) : result->join(*b);
            },
            [=] { return Summarise(*result); }};
}

} // namespace Peers

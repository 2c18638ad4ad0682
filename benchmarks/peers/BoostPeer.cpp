// What Boost.Geometry does for comparison, on `double` and with its default strategies.

#include "PeersGeometry.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <memory>

namespace Peers
{

namespace
{

namespace bg = boost::geometry;

using Point = bg::model::d2::point_xy<double>;
using Chain = bg::model::linestring<Point>;
/// Counter-clockwise, the first vertex repeated at the end.
using Polygon = bg::model::polygon<Point, false>;

template <class Range>
void Append(Range& range, const Coordinates& coordinates)
{
    for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2)
        range.push_back(Point(coordinates[i], coordinates[i + 1]));
}

template <class Range>
Coordinates Flatten(const Range& range, std::size_t count)
{
    Coordinates coordinates;
    for (std::size_t i = 0; i < count; ++i) coordinates.insert(coordinates.end(), {range[i].x(), range[i].y()});
    return coordinates;
}

Polygon MakePolygon(const Coordinates& outline)
{
    Polygon polygon;
    Append(polygon.outer(), outline);
    polygon.outer().push_back(polygon.outer().front());
    return polygon;
}

} // namespace

Work BoostHull(const Coordinates& points)
{
    const auto source = std::make_shared<bg::model::multi_point<Point>>();
    const auto hull = std::make_shared<Polygon>();
    Append(*source, points);
    return {[=] {
                *hull = Polygon();
                bg::convex_hull(*source, *hull);
            },
            [=] { return Flatten(hull->outer(), hull->outer().size() - 1); }};
}

Work BoostContainment(const Coordinates& outline, const Coordinates& queries)
{
    const auto polygon = std::make_shared<Polygon>(MakePolygon(outline));
    const auto points = std::make_shared<std::vector<Point>>();
    const auto isWithin = std::make_shared<Values>(queries.size() / 2);
    Append(*points, queries);
    return {[=] {
                for (std::size_t i = 0; i < points->size(); ++i) (*isWithin)[i] = bg::within((*points)[i], *polygon);
            },
            [=] { return *isWithin; }};
}

Work BoostThinning(const Coordinates& chain, double tolerance)
{
    const auto source = std::make_shared<Chain>();
    const auto thinned = std::make_shared<Chain>();
    Append(*source, chain);
    return {[=] {
                *thinned = Chain();
                bg::simplify(*source, *thinned, tolerance);
            },
            [=] { return Flatten(*thinned, thinned->size()); }};
}

Work BoostOffset(const Coordinates& outline, double distance)
{
    const auto polygon = std::make_shared<Polygon>(MakePolygon(outline));
    const auto result = std::make_shared<bg::model::multi_polygon<Polygon>>();
    return {[=] {
                result->clear();
                bg::buffer(*polygon, *result, bg::strategy::buffer::distance_symmetric<double>(distance),
                           bg::strategy::buffer::side_straight(), bg::strategy::buffer::join_round(),
                           bg::strategy::buffer::end_round(), bg::strategy::buffer::point_circle());
            },
            [=] { return Values{bg::area(*result)}; }};
}

} // namespace Peers

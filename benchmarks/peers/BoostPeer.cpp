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
using Polygons = bg::model::multi_polygon<Polygon>;

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

Values Summarise(const Polygons& polygons)
{
    return {bg::area(polygons), static_cast<double>(polygons.size())};
}

/// Halves united by themselves and then with one another: there is no operation on many.
Polygons Unite(const std::vector<Polygon>& polygons, std::size_t first, std::size_t last)
{
    if (last - first == 1) return Polygons{polygons[first]};
    const std::size_t middle = first + (last - first) / 2;
    Polygons united;
    bg::union_(Unite(polygons, first, middle), Unite(polygons, middle, last), united);
    return united;
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
    const auto result = std::make_shared<Polygons>();
    return {[=] {
                result->clear();
                bg::buffer(*polygon, *result, bg::strategy::buffer::distance_symmetric<double>(distance),
                           bg::strategy::buffer::side_straight(), bg::strategy::buffer::join_round(),
                           bg::strategy::buffer::end_round(), bg::strategy::buffer::point_circle());
            },
            [=] { return Summarise(*result); }};
}

Work BoostUnion(const Outlines& outlines)
{
    const auto polygons = std::make_shared<std::vector<Polygon>>();
    const auto result = std::make_shared<Polygons>();
    for (const Coordinates& outline : outlines) polygons->push_back(MakePolygon(outline));
    return {[=] { *result = Unite(*polygons, 0, polygons->size()); }, [=] { return Summarise(*result); }};
}

Work BoostCombination(const Coordinates& first, const Coordinates& second, bool isIntersection)
{
    const auto a = std::make_shared<Polygon>(MakePolygon(first));
    const auto b = std::make_shared<Polygon>(MakePolygon(second));
    const auto result = std::make_shared<Polygons>();
    return {[=] {
                result->clear();
                if (isIntersection)
                    bg::intersection(*a, *b, *result);
                else
                    bg::union_(*a, *b, *result);
            },
            [=] { return Summarise(*result); }};
}

} // namespace Peers

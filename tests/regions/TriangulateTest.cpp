#include <CorvexMaths/regions/TRegion.h>
#include <CorvexMaths/robust/Predicates.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <utility>
#include <vector>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

using Vector = TVector2<double>;
using Outline = TPolygon<double, TVector2>;
using Region = TRegion<double>;
using Place = std::pair<double, double>;
using Side = std::pair<Place, Place>;

Place PlaceOf(const Vector& point)
{
    return {point.x, point.y};
}

/// The sides of the triangles, each with the corner opposite to it.
std::map<Side, Vector> SidesOf(const std::vector<TTriangle2<double>>& triangles)
{
    std::map<Side, Vector> sides;
    for (const TTriangle2<double>& triangle : triangles)
        for (int i = 0; i < 3; ++i) {
            const Vector& from = triangle.corners[i];
            const Vector& to = triangle.corners[(i + 1) % 3];
            EXPECT_TRUE(sides.emplace(Side(PlaceOf(from), PlaceOf(to)), triangle.corners[(i + 2) % 3]).second);
        }
    return sides;
}

/// What holds of any triangulation of a region: triangles run counter-clockwise, every side is an edge of the region or
/// that of a neighbour, all edges are sides, corners are vertices, areas add up, and no neighbour's corner lies in a
/// triangle's circle.
void ExpectTriangulation(const Region& region)
{
    const std::vector<TTriangle2<double>> triangles = region.Triangulate();
    double area = 0;
    for (const TTriangle2<double>& triangle : triangles) {
        const Vector* const c = triangle.corners;
        EXPECT_EQ(Robust::Predicates<double>::Orientation(c[0], c[1], c[2]), 1);
        area += 0.5 * triangle.GetDoubleArea();
    }
    EXPECT_NEAR(area, region.GetArea(), 1e-12 * region.GetArea());
    std::set<Side> edges;
    for (const Outline& outline : region.GetOutlines())
        for (unsigned int i = 0; i < outline.GetCount(); ++i)
            edges.emplace(PlaceOf(outline[i]), PlaceOf(outline[(i + 1) % outline.GetCount()]));
    const std::map<Side, Vector> sides = SidesOf(triangles);
    for (const Side& edge : edges) EXPECT_EQ(sides.count(edge), 1u);
    for (const auto& side : sides) {
        if (edges.count(side.first) != 0) continue;
        const auto behind = sides.find({side.first.second, side.first.first});
        ASSERT_NE(behind, sides.end());
        const Vector from(side.first.first.first, side.first.first.second);
        const Vector to(side.first.second.first, side.first.second.second);
        EXPECT_LE(Robust::Predicates<double>::InCircle(from, to, side.second, behind->second), 0);
    }
}

TEST(Triangulate, OutlinesWithHolesAndTouchingOnes)
{
    const Region square(Outline{{0, 0}, {12, 0}, {12, 12}, {0, 12}});
    const Region diamond(Outline{{6, 2}, {10, 6}, {6, 10}, {2, 6}});
    const Region reaching(Outline{{6, 0}, {12, 6}, {6, 12}, {0, 6}});
    EXPECT_EQ(square.Triangulate().size(), 2u);
    EXPECT_TRUE(Region().Triangulate().empty());
    // Of v vertices and h holes v + 2 h - 2 triangles.
    EXPECT_EQ(square.Subtract(diamond).Triangulate().size(), 8u);
    const Region corners = square.Subtract(reaching);
    EXPECT_EQ(corners.Triangulate().size(), 4u);
    for (const Region& region : {square, square.Subtract(diamond), corners, reaching.Subtract(diamond)})
        ExpectTriangulation(region);
}

TEST(Triangulate, RandomTanglesOnGridsAndDenseOutlines)
{
    for (unsigned int seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const unsigned int range = seed % 3 == 0 ? 6 : 1000;
        Outline outline;
        for (unsigned int i = 0; i < 5 + random() % 30; ++i)
            outline.Add(Vector(static_cast<double>(random() % range), static_cast<double>(random() % range)));
        ExpectTriangulation(Region(outline, WindingRule::EvenOdd));
    }
    // Two circles of vertices, joined by edges that cross those between neighbours, and a long comb.
    Outline star;
    Outline comb{{0, -1}, {4000, -1}};
    for (int i = 0; i < 400; ++i) {
        const double radius = i % 2 != 0 ? 1 : 0.5;
        star.Add(Vector(radius * std::cos(i * 0.0157), radius * std::sin(i * 0.0157)));
        comb.Add(Vector(3999 - 10 * i, i % 2 != 0 ? 1e6 : i % 7));
    }
    ExpectTriangulation(Region(star));
    ExpectTriangulation(Region(comb));
}

TEST(Triangulate, FloatsAreThoseOfTheGridRounded)
{
    const TRegion<float> region(TPolygon<float, TVector2>{{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}});
    float area = 0;
    for (const TTriangle2<float>& triangle : region.Triangulate()) area += 0.5f * triangle.GetDoubleArea();
    EXPECT_EQ(area, region.GetArea());
}

} // namespace

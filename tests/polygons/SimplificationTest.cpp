#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

template <class Family>
struct SimplificationTest : ::testing::Test
{};
TYPED_TEST_SUITE(SimplificationTest, PointFamily, TypeNames);

TYPED_TEST(SimplificationTest, SpacingIsMeasuredFromTheLastKeptVertexBehindTheList)
{
    const Plane run = {{0, 0}, {0.5, 0}, {1, 0}, {1.5, 0}}, repeated = {{0, 0}, {0, 0}, {1, 0}};
    const OutlineRow rows[] = {
        {"exactly at the spacing stays; sign of no account", -1, run, {{0, 0}, {1, 0}}},
        {"zero keeps duplicates", 0, repeated, repeated},
        {"wider than the whole", 50, run, {{0, 0}}},
        {"end too near the start", 1, {{0, 0}, {4, 0}, {0, 0.5}}, {{0, 0}, {4, 0}}},
        {"none", 1, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto spacing) {
        const auto range = polygon.GetBoxRange();
        polygon.Simplify(spacing);
        EXPECT_TRUE(polygon.GetBoxRange() == range && polygon.removed.empty());
    });
}

TYPED_TEST(SimplificationTest, DeviationIsMeasuredFromTheChordOfTheOpenRun)
{
    const Plane closed = {{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}, triangle = {{0, 0}, {1, 0}, {2, 0}};
    const OutlineRow rows[] = {
        {"exactly at the tolerance goes", 0.25, {{0, 0}, {1, 0.25}, {2, -0.25}, {4, 0}}, {{0, 0}, {4, 0}}},
        {"lowest index of a tie splits", 0.5, {{0, 0}, {1, 1}, {2, 1}, {3, 0}}, {{0, 0}, {1, 1}, {3, 0}}},
        {"beyond the ends by distance", 1, {{0, 0}, {-2, 0}, {1, 0.5}, {4, 0}}, {{0, 0}, {-2, 0}, {4, 0}}},
        {"a triangle is not judged", 50, triangle, triangle},
        {"a closed triangle opens", 0, {{0, 0}, {1, 0}, {0, 2}, {0, 0}}, {{0, 0}, {1, 0}, {0, 2}}},
        {"a closed square stays closed", 0, closed, closed},
        {"none", 1, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto tolerance) { polygon.SimplifyDPM(tolerance); });
}

TYPED_TEST(SimplificationTest, DeviationRemovesUnderTheCallersFlagAndDuplicatesWithout)
{
    // The last vertex equals the first in the plane alone: the outline counts as closed only without a third component.
    OpenPolygon<TypeParam> polygon(Plane{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {0, 1}, {0, 0}});
    if (TypeParam::dimension > 2) polygon[5][2] = 8;
    polygon.SimplifyDPM(0);
    EXPECT_EQ(polygon.GetCount(), TypeParam::dimension > 2 ? 4u : 5u);
    EXPECT_EQ(polygon.keptBox, (std::vector<bool>{false, true}));
}

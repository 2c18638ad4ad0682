#include <tests/polygons/PolygonSupport.h>

#include <memory>

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
        EXPECT_EQ(polygon.GetBoxRange(), range);
        EXPECT_TRUE(polygon.removed.empty());
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

TYPED_TEST(SimplificationTest, SectionsAreSplitAsByThePlainScanToTheBit)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(5551212);
    SCOPED_TRACE("seed 5551212");
    for (unsigned int round = 0; round < 300; ++round) {
        const auto outline = RandomOutline<T>(random);
        const auto count = static_cast<unsigned int>(outline.size());
        if (count < 2) continue;
        const T tolerance = static_cast<T>(random() % 5) * static_cast<T>(0.25);
        const std::unique_ptr<bool[]> kept(new bool[2 * count]);
        std::fill_n(kept.get(), 2 * count, true);
        OpenPolygon<TypeParam>(outline).SimplifySection(0, count - 1, kept.get(), tolerance);
        PlainSimplifySection(outline, 0, count - 1, tolerance, kept.get() + count);
        for (unsigned int i = 0; i < count; ++i) ASSERT_EQ(kept[i], kept[count + i]) << round << ", " << i;
    }
}

TYPED_TEST(SimplificationTest, OutlinesWithoutHooksOfTheirOwnAreThinnedToTheSameBits)
{
    using Polygon = typename TypeParam::Polygon;
    std::mt19937_64 random(27182);
    SCOPED_TRACE("seed 27182");
    for (unsigned int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        OpenPolygon<TypeParam> hooked(RandomOutline<typename TypeParam::T>(random));
        hooked.keepBox = round % 2 == 0;
        Polygon plain(hooked);
        const unsigned int count = hooked.GetCount();
        const auto tolerance = static_cast<typename TypeParam::T>(random() % 5) / 4;
        hooked.SimplifyDPM(tolerance);
        plain.SimplifyDPM(tolerance);
        ASSERT_EQ(plain.GetCount(), hooked.GetCount());
        for (unsigned int k = 0; k < 3; ++k) {
            ASSERT_TRUE(SameBits(plain.GetBoundingBox().minimum[k], hooked.GetBoundingBox().minimum[k]));
            ASSERT_TRUE(SameBits(plain.GetBoundingBox().maximum[k], hooked.GetBoundingBox().maximum[k]));
        }
        // What the removals leave in the slots behind the count shows once these count again.
        plain.Expand(count);
        hooked.Expand(count);
        for (unsigned int i = 0; i < count; ++i)
            for (unsigned int k = 0; k < TypeParam::dimension; ++k)
                ASSERT_TRUE(SameBits(plain[i][k], hooked[i][k])) << i;
    }
}

#include <tests/polygons/PolygonSupport.h>
#include <tests/support/plain/PlainReordering.h>

using namespace CorvexTest;

template <class Family>
class ReorderingTest : public ::testing::Test
{};
TYPED_TEST_SUITE(ReorderingTest, PointFamily, TypeNames);

/// Leaves its reordering, by throwing the outline, as soon as that is made: the removal of crossings need not end.
template <class Family>
struct RawReordering : OpenPolygon<Family>
{
    using OpenPolygon<Family>::OpenPolygon;
    void ElementsAdded(typename Family::Vector*, unsigned int) override { throw this->GetOutline(); }
};

TYPED_TEST(ReorderingTest, PointsEnterTheirNearestSideAndLeaveNoCrossing)
{
    const Plane crossed = {{1, 2}, {0, 8}, {0, 0}, {10, 2}, {2, 6}, {3, 3}, {1, 6}};
    const std::pair<double, double> right(4.25, 2);
    const OutlineRow rows[] = {
        {"on the hull", 0, {{8, 8}, {0, 0}, {0, 8}, {8, 0}, {8, 0}}, {{0, 0}, {8, 0}, {8, 8}, {0, 8}}},
        {"collinear", 0, {{3, 3}, {0, 0}, {2, 2}, {1, 1}}, {{0, 0}, {1, 1}, {2, 2}, {3, 3}}},
        {"after a corner", 1, {{0, 0}, {8, 0}, {4, 9}, {4, 1}, right}, {{0, 0}, {4, 1}, right, {8, 0}, {4, 9}}},
        {"crossing", 0, crossed, {{0, 0}, {10, 2}, {2, 6}, {0, 8}, {1, 6}, {3, 3}, {1, 2}}},
        {"none", 1, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto flag) {
        polygon.keepBox = flag != 0;
        polygon.ReorderCEC();
        EXPECT_EQ(polygon.keepBox, flag != 0);
    });
}

TYPED_TEST(ReorderingTest, OutlinesGrowAsInThePlainFormToTheBit)
{
    using Outline = PlainOutline<typename TypeParam::T>;
    std::mt19937_64 random(31337);
    SCOPED_TRACE("seed 31337");
    for (unsigned int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        const Outline cloud = RandomOutline<typename TypeParam::T>(random);
        OpenPolygon<TypeParam> polygon(cloud);
        polygon.RemoveDuplicateVertices();
        const Outline points = polygon.GetOutline();
        polygon.MakeConvexHull();
        try {
            RawReordering<TypeParam>(cloud).ReorderCEC();
            ADD_FAILURE() << "the outline was not added as a range";
        } catch (const Outline& grown) {
            ASSERT_TRUE(AreSameBits(grown, PlainGrowOutline(polygon.GetOutline(), points)));
        }
    }
}

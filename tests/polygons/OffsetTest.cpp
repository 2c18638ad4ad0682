#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

const Plane square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

template <class Family>
struct OffsetTest : ::testing::Test
{};
TYPED_TEST_SUITE(OffsetTest, PointFamily, TypeNames);

TYPED_TEST(OffsetTest, SquaresGrowAndShrinkInBothSenses)
{
    const double d = std::sqrt(0.5);
    const Plane clockwise = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    const Plane grown = {{1, -1}, {1 + d, -d}, {2, 0},  {2, 1},  {1 + d, 1 + d}, {1, 2},
                         {0, 2},  {-d, 1 + d}, {-1, 1}, {-1, 0}, {-d, -d},       {0, -1}};
    const Plane clockwiseGrown = {{1, 2}, {2, 1}, {2, 0}, {1, -1}, {0, -1}, {-1, 0}, {-1, 1}, {0, 2}};
    const Plane crowded = {{0, 0}, {0.25, 0}, {0.5, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0.5}, {0, 0}};
    const OutlineRow rows[] = {
        {"outward, bridged", 1, square, grown},
        {"clockwise, without bridges", 1, clockwise, clockwiseGrown},
        {"inward", -0.25, square, {{0.75, 0.25}, {0.75, 0.75}, {0.25, 0.75}, {0.25, 0.25}}},
        {"collinear and repeated vertices vanish", 1, crowded, grown},
    };
    for (const bool flag : {true, false})
        ExpectOutlines<TypeParam>(rows, 0, 1e-6, [flag](auto& polygon, auto distance) {
            polygon.keepBox = flag;
            EXPECT_TRUE(polygon.Offset(distance, -5) && polygon.keepBox == flag);
            const double reach = static_cast<double>(distance);
            EXPECT_EQ(polygon.GetBoxRange(), std::pair(-reach, 1 + reach));
        });
    const OutlineRow thinned[] = {
        {"thinned", 1, square, {{1, -1}, {2, 0}, {2, 1}, {1, 2}, {0, 2}, {-1, 1}, {-1, 0}, {0, -1}}}};
    ExpectOutlines<TypeParam>(thinned, 0, 0,
                              [](auto& polygon, auto spacing) { EXPECT_TRUE(polygon.Offset(1, spacing)); });
}

TYPED_TEST(OffsetTest, FailuresLeaveWhatTheyHadReached)
{
    const Plane level = {{0, 0}, {2, 0}, {1, 0}};
    const Plane repeated = {{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}};
    const Plane raw = {{3.375, 0.625}, {3.375, 0.375}, {0.625, 0.375}, {0.625, 0.625}};
    const OutlineRow rows[] = {
        {"no side tells: turned once round, less duplicates", -10, repeated, square},
        {"no area", 1, level, level},
        {"no vertex at the distance: the raw outline", -0.625, {{0, 0}, {4, 0}, {4, 1}, {0, 1}}, raw},
        {"every corner vanishes", 1e-5, square, {}},
        {"none", 1, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 0, 0, [](auto& polygon, auto distance) {
        const auto range = polygon.GetBoxRange();
        EXPECT_TRUE(!polygon.Offset(distance, 0) && polygon.GetBoxRange() == range && polygon.keepBox);
    });
    const OutlineRow untouched[] = {{"no distance", 0, repeated, repeated}};
    ExpectOutlines<TypeParam>(untouched, 7, 0, [](auto& polygon, auto d) { EXPECT_TRUE(polygon.Offset(d, 1)); });
}

TYPED_TEST(OffsetTest, CornersAreBridgedByTheCallersSignAndTheTurn)
{
    using T = typename TypeParam::T;
    using Edge = Maths::TEdge2<T>;
    OpenPolygon<TypeParam> polygon;
    const auto countOf = [&polygon](Edge second, T distance, bool negative) {
        polygon.Clear(false);
        polygon.AddOffsetPoints(Edge(0, 0, 1, 0), second, distance, negative);
        return polygon.GetCount();
    };
    EXPECT_TRUE(countOf({1, 0, T(1.5), 1}, 1000, false) == 3 && countOf({1, 0, T(1.5), 1}, 1000, true) == 2);
    EXPECT_EQ(countOf({1, 0, T(1.5), T(0.00009)}, 1000, false), 2u);
    EXPECT_EQ(countOf({1, 0, T(1.5), T(0.00011)}, 1000, false), 3u);
    EXPECT_EQ(countOf({1, 0, 0, 0}, 1, false), 0u) << "parallel";
    EXPECT_EQ(polygon.OffsetEdge(Edge(0, 0, 2, 0), T(0.5)), Edge(0, T(-0.5), 2, T(-0.5)));
    EXPECT_EQ(polygon.OffsetEdge(Edge(3, 3, 3, 3), T(0.5)), Edge(3, 3, 3, 3));
}

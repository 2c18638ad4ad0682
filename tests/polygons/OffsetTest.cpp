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
            EXPECT_TRUE(polygon.Offset(distance, -5));
            EXPECT_EQ(polygon.keepBox, flag);
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
        EXPECT_FALSE(polygon.Offset(distance, 0));
        EXPECT_EQ(polygon.GetBoxRange(), range);
        EXPECT_TRUE(polygon.keepBox);
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
    EXPECT_EQ(countOf({1, 0, T(1.5), 1}, 1000, false), 3u);
    EXPECT_EQ(countOf({1, 0, T(1.5), 1}, 1000, true), 2u);
    EXPECT_EQ(countOf({1, 0, T(1.5), T(0.00009)}, 1000, false), 2u);
    EXPECT_EQ(countOf({1, 0, T(1.5), T(0.00011)}, 1000, false), 3u);
    EXPECT_EQ(countOf({1, 0, 0, 0}, 1, false), 0u) << "parallel";
    EXPECT_EQ(polygon.OffsetEdge(Edge(0, 0, 2, 0), T(0.5)), Edge(0, T(-0.5), 2, T(-0.5)));
    EXPECT_EQ(polygon.OffsetEdge(Edge(3, 3, 3, 3), T(0.5)), Edge(3, 3, 3, 3));
}

TYPED_TEST(OffsetTest, StartsWhereThePlainScanStarts)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(424242);
    SCOPED_TRACE("seed 424242");
    std::uniform_real_distribution<T> radius(T(1), T(2));
    for (unsigned int round = 0; round < 200; ++round) {
        // A star around the origin, counter-clockwise; a large inward distance makes many vertices that lie too near.
        PlainOutline<T> source(3 + random() % 90);
        for (std::size_t i = 0; i < source.size(); ++i) {
            const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(source.size());
            const T r = radius(random);
            source[i] = {r * static_cast<T>(std::cos(angle)), r * static_cast<T>(std::sin(angle))};
        }
        const T distance = static_cast<T>(-0.01) * static_cast<T>(1 + random() % 20);
        OpenPolygon<TypeParam> polygon(source), raw;
        // Sides that do not tell the inside from the outside are turned to the end first.
        auto edges = PlainEdges(source);
        const auto isWithin = [&](T shift) { return polygon.IsWithin(raw.OffsetEdge(edges[0], shift).GetMid()); };
        while (isWithin(distance) == isWithin(-distance)) std::rotate(edges.begin(), edges.begin() + 1, edges.end());
        const T shift = isWithin(distance) ? distance : -distance;
        for (std::size_t i = 0; i < edges.size(); ++i)
            raw.AddOffsetPoints(edges[i], edges[(i + 1) % edges.size()], shift, true);
        auto expected = PlainReorderOffset(raw.GetOutline(), edges, shift);
        ASSERT_EQ(polygon.Offset(distance, 0), !expected.empty()) << round;
        expected = expected.empty() ? raw.GetOutline() : PlainTrimCrossings(expected);
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), expected)) << round;
    }
}

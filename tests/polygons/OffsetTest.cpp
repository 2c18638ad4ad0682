#include <tests/polygons/PolygonSupport.h>

#include <algorithm>

using namespace CorvexTest;

template <class Family>
class OffsetTest : public ::testing::Test
{};
TYPED_TEST_SUITE(OffsetTest, PointFamily, TypeNames);

template <class T>
class OffsetScanTest : public ::testing::Test
{};
TYPED_TEST_SUITE(OffsetScanTest, Scalars, TypeNames);

namespace
{

const double diagonal = std::sqrt(0.5);
const Plane square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
const Plane grown = {{1, -1}, {1 + diagonal, -diagonal}, {2, 0},  {2, 1},  {1 + diagonal, 1 + diagonal}, {1, 2},
                     {0, 2},  {-diagonal, 1 + diagonal}, {-1, 1}, {-1, 0}, {-diagonal, -diagonal},       {0, -1}};

} // namespace

TYPED_TEST(OffsetTest, SquaresGrowAndShrinkInBothSenses)
{
    const Plane clockwise = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    const Plane clockwiseGrown = {{1, 2}, {2, 1}, {2, 0}, {1, -1}, {0, -1}, {-1, 0}, {-1, 1}, {0, 2}};
    const Plane crowded = {{0, 0}, {0.25, 0}, {0.5, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0.5}, {0, 0}};
    const OutlineRow rows[] = {
        {"outward, bridged", 1, square, grown},
        {"clockwise, without bridges", 1, clockwise, clockwiseGrown},
        {"inward", -0.25, square, {{0.75, 0.25}, {0.75, 0.75}, {0.25, 0.75}, {0.25, 0.25}}},
        {"clockwise inward", -0.25, clockwise, {{0.75, 0.75}, {0.75, 0.25}, {0.25, 0.25}, {0.25, 0.75}}},
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
    ExpectOutlines<TypeParam>(thinned, 0, 0, [](auto& polygon, auto spacing) { polygon.Offset(1, spacing); });
}

TYPED_TEST(OffsetTest, LoopsOfWallsThatGrowPastEachOtherAreCut)
{
    const Plane notched = {{0, 0}, {5, 0}, {5, 3}, {3, 3}, {3, 1}, {2, 1}, {2, 3}, {0, 3}};
    OpenPolygon<TypeParam> polygon(notched);
    ASSERT_TRUE(polygon.Offset(static_cast<typename TypeParam::T>(0.75), 0));
    EXPECT_EQ(polygon.GetBoxRange(), std::pair(-0.75, 5.75));
    bool isBridged = false;
    for (const auto& [x, y] : polygon.GetPlane()) {
        EXPECT_FALSE(x > -0.5 && x < 5.5 && y > -0.5 && y < 3.5) << x << ", " << y;
        isBridged |= std::fabs(x - 2.5) < 1e-6;
    }
    EXPECT_TRUE(isBridged);
}

TYPED_TEST(OffsetTest, FailuresLeaveWhatTheyHadReached)
{
    const Plane repeated = {{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}}, level = {{0, 0}, {2, 0}, {1, 0}};
    const Plane raw = {{3.375, 0.625}, {3.375, 0.375}, {0.625, 0.375}, {0.625, 0.625}};
    const OutlineRow rows[] = {
        {"no side tells: turned once round, less duplicates", -10, repeated, square},
        {"no area", 1, level, level},
        {"one vertex", 1, {{1, 2}}, {{1, 2}}},
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
    const auto countOf = [](double turn, bool negative) {
        OpenPolygon<TypeParam> polygon;
        // The turn is the rise of the second edge.
        polygon.AddOffsetPoints(Edge(0, 0, 1, 0), Edge(1, 0, T(1.5), static_cast<T>(turn)), 1000, negative);
        return polygon.GetCount();
    };
    EXPECT_EQ(countOf(1, false), 3u);
    EXPECT_EQ(countOf(1, true), 2u);
    EXPECT_EQ(countOf(0.00009, false), 2u);
    EXPECT_EQ(countOf(0.00011, false), 3u);

    OpenPolygon<TypeParam> parallel;
    parallel.AddOffsetPoints(Edge(0, 0, 1, 0), Edge(1, 0, 0, 0), 1, false);
    EXPECT_EQ(parallel.GetCount(), 0u);
    EXPECT_EQ(parallel.OffsetEdge(Edge(0, 0, 2, 0), T(0.5)), Edge(0, T(-0.5), 2, T(-0.5)));
    EXPECT_EQ(parallel.OffsetEdge(Edge(3, 3, 3, 3), T(0.5)), Edge(3, 3, 3, 3));
}

TYPED_TEST(OffsetScanTest, StartsWhereThePlainScanStarts)
{
    using T = TypeParam;
    const unsigned int seed = 424242;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<T> radius(T(1), T(2));
    unsigned int turned = 0;
    for (unsigned int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        // A star around the origin, counter-clockwise; a large inward distance makes many vertices that lie too near.
        PlainOutline<T> source(3 + random() % 90);
        for (std::size_t i = 0; i < source.size(); ++i) {
            const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(source.size());
            const T r = radius(random);
            source[i] = {r * static_cast<T>(std::cos(angle)), r * static_cast<T>(std::sin(angle))};
        }
        const T distance = static_cast<T>(-0.01) * static_cast<T>(1 + random() % 20);
        PlanePolygon<T> polygon(source), raw;
        // Sides that do not tell the inside from the outside are turned to the end first.
        const auto isShiftWithin = [&](const Maths::TEdge2<T>& edge, T shift) {
            return polygon.IsWithin(raw.OffsetEdge(edge, shift).GetMid());
        };
        auto edges = PlainEdges(source);
        while (isShiftWithin(edges[0], distance) == isShiftWithin(edges[0], -distance))
            std::rotate(edges.begin(), edges.begin() + 1, edges.end());
        const T shift = isShiftWithin(edges[0], distance) ? distance : -distance;
        for (std::size_t i = 0; i < edges.size(); ++i)
            raw.AddOffsetPoints(edges[i], edges[(i + 1) % edges.size()], shift, true);
        const auto expected = PlainReorderOffset(raw.GetOutline(), edges, shift);
        turned += !expected.empty() && !AreSameBits(expected, raw.GetOutline()) ? 1 : 0;
        ASSERT_EQ(polygon.Offset(distance, 0), !expected.empty());
        ASSERT_TRUE(
            AreSameBits(polygon.GetOutline(), expected.empty() ? raw.GetOutline() : PlainTrimCrossings(expected)));
    }
    EXPECT_GT(turned, 20u);
}

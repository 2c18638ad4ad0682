#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

template <class Family>
class CrossingsTest : public ::testing::Test
{};
TYPED_TEST_SUITE(CrossingsTest, PointFamily, TypeNames);

template <class T>
class CrossingSearchTest : public ::testing::Test
{};
TYPED_TEST_SUITE(CrossingSearchTest, Scalars, TypeNames);

TYPED_TEST(CrossingsTest, TrimmingCutsLoopsAndFlattens)
{
    const Plane convex = {{0, 0}, {4, 0}, {5, 2}, {2, 3}};
    const Plane twice = {{0, 0}, {8, 0}, {8, 4}, {6, 4}, {6, -2}, {2, -2}, {2, 4}, {0, 4}};
    const Plane touching = {{0, 0}, {4, 0}, {4, 2}, {2, 0}, {2, 4}, {0, 4}};
    const OutlineRow rows[] = {
        {"bow tie", 0, {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, {{0, 0}, {1, 1}, {0, 2}}},
        {"convex", 0, convex, convex},
        {"one vertex", 0, {{3, 4}}, {{3, 4}}},
        {"none", 0, {}, {}},
        {"nearest of two crossings", 0, twice, {{0, 0}, {2, 0}, {2, 4}, {0, 4}}},
        {"tie at a vertex, to the lower side", 0, touching, {{0, 0}, {2, 0}, {2, 0}, {2, 4}, {0, 4}}},
    };
    ExpectOutlines<TypeParam>(rows, 0, 0, [](auto& polygon, auto) { polygon.TrimCrossings(); });
}

TYPED_TEST(CrossingsTest, DuplicatesAreThoseNearAnEarlierSurvivorInThePlane)
{
    OpenPolygon<TypeParam> polygon(
        Plane{{0, 0}, {1, 0}, {0.5e-6, 0.5e-6}, {2e-6, 0}, {1.2e-6, 0}, {1, 2e-6}, {1, 0}, {-0.9e-6, -0.9e-6}});
    if (TypeParam::dimension > 2) polygon[6][TypeParam::dimension - 1] = 50;
    const auto range = polygon.GetBoxRange();
    polygon.RemoveDuplicateVertices();
    const OpenPolygon<TypeParam> expected(Plane{{0, 0}, {1, 0}, {2e-6, 0}, {1, 2e-6}});
    EXPECT_EQ(polygon.GetPlane(), expected.GetPlane());
    EXPECT_TRUE(polygon.IsAt(7));
    EXPECT_EQ(polygon.GetBoxRange(), range);
    EXPECT_TRUE(polygon.keepBox);
}

TYPED_TEST(CrossingsTest, HooksRunUnderTheSavedOrTheCallersFlag)
{
    const Plane bowTieTwice = {{0, 0}, {2, 2}, {2, 2}, {2, 0}, {0, 2}};
    for (const bool flag : {true, false}) {
        SCOPED_TRACE(flag);
        OpenPolygon<TypeParam> polygon(bowTieTwice);
        polygon.keepBox = flag;
        polygon.MakeSimplePolygon();
        // The duplicate and the closing copy.
        EXPECT_EQ(polygon.keptBox, std::vector<bool>(2, false));
        EXPECT_EQ(polygon.keepBox, flag);

        OpenPolygon<TypeParam> trimmed(bowTieTwice);
        trimmed.keepBox = flag;
        trimmed.TrimCrossings();
        EXPECT_EQ(trimmed.keptBox, std::vector<bool>(1, flag));
        EXPECT_EQ(trimmed.GetBoxRange().second, flag ? 1 : 2);
    }
}

TYPED_TEST(CrossingsTest, SimplePolygonComesOfExchangesThatKeepTheStart)
{
    const Plane inside = {{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}};
    const OutlineRow rows[] = {
        {"bow tie", 0, {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, {{0, 0}, {2, 0}, {2, 2}, {0, 2}}},
        {"triangle", 0, {{0, 0}, {2, 2}, {2, 0}}, {{0, 0}, {2, 2}, {2, 0}}},
        {"two vertices", 0, {{0, 0}, {2, 2}, {0, 0}}, {{0, 0}, {2, 2}}},
        {"none", 0, {}, {}},
        {"vertex inside a side", 0, inside, {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto) { polygon.MakeSimplePolygon(); });
}

TYPED_TEST(CrossingSearchTest, TrimsAsThePlainSearchToTheBit)
{
    const unsigned int seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (unsigned int round = 0; round < 600; ++round) {
        SCOPED_TRACE(round);
        const auto outline = RandomOutline<TypeParam>(random);
        PlanePolygon<TypeParam> polygon(outline);
        polygon.TrimCrossings();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainTrimCrossings(outline)));
    }
}

TYPED_TEST(CrossingSearchTest, RemovesDuplicatesAsThePlainPassInItsOrder)
{
    using T = TypeParam;
    const unsigned int seed = 918273;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    const T infinity = std::numeric_limits<T>::infinity();
    const T bases[] = {T(0), T(-0.0), T(1), T(-7), T(1e3), T(8.5e9), infinity, -infinity, infinity - infinity};
    for (unsigned int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const std::uint64_t baseCount = 1 + random() % 9;
        // Steps of a third of the tolerance up to a hundred, so that some rounds cluster and some spread.
        const std::uint64_t steps = round % 2 == 0 ? 8 : 300;
        const auto coordinate = [&] {
            return bases[random() % baseCount] + static_cast<T>(random() % steps) * static_cast<T>(1e-6f) / 3;
        };
        PlainOutline<T> outline(random() % 120);
        for (auto& vertex : outline) vertex = {coordinate(), coordinate()};
        PlanePolygon<T> polygon(outline);
        polygon.RemoveDuplicateVertices();
        PlainOutline<T> removed;
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainRemoveDuplicates(outline, &removed)));
        ASSERT_TRUE(AreSameBits(polygon.removed, removed));
    }
}

#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

template <class Family>
struct CrossingsTest : ::testing::Test
{};
TYPED_TEST_SUITE(CrossingsTest, PointFamily, TypeNames);

TYPED_TEST(CrossingsTest, HooksRunUnderTheSavedOrTheCallersFlag)
{
    for (const bool flag : {true, false}) {
        SCOPED_TRACE(flag);
        OpenPolygon<TypeParam> polygon(Plane{{0, 0}, {2, 2}, {2, 2}, {2, 0}, {0, 2}}), trimmed(polygon.GetPlane());
        polygon.keepBox = trimmed.keepBox = flag;
        polygon.MakeSimplePolygon();
        // The duplicate and the closing copy.
        EXPECT_EQ(polygon.keptBox, std::vector<bool>(2, false));
        EXPECT_EQ(polygon.keepBox, flag);
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
        {"two vertices", 0, {{0, 0}, {2, 2}, {0, 0}}, {{0, 0}, {2, 2}}},
        {"none", 0, {}, {}},
        {"vertex inside a side", 0, inside, {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto) { polygon.MakeSimplePolygon(); });
}

TYPED_TEST(CrossingsTest, TrimmingFlattensAndHasTheBitsOfThePlainSearch)
{
    OpenPolygon<TypeParam>().TrimCrossings();
    std::mt19937_64 random(20240611);
    SCOPED_TRACE("seed 20240611");
    for (unsigned int round = 0; round < 600; ++round) {
        const auto outline = RandomOutline<typename TypeParam::T>(random);
        OpenPolygon<TypeParam> polygon(outline);
        polygon.TrimCrossings();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainTrimCrossings(outline)) && polygon.IsAt(0)) << round;
    }
}

TYPED_TEST(CrossingsTest, DuplicatesInThePlaneGoInTheOrderOfThePlainPass)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(918273);
    SCOPED_TRACE("seed 918273");
    const T infinity = std::numeric_limits<T>::infinity();
    const T bases[] = {T(0), T(-0.0), T(1), T(-7), T(1e3), T(8.5e9), infinity, -infinity, infinity - infinity};
    for (unsigned int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        // Steps of a third of the tolerance up to a hundred, so that some rounds cluster and some spread.
        const std::uint64_t baseCount = 1 + random() % 9, steps = round % 2 == 0 ? 8 : 300;
        const auto coordinate = [&] {
            return bases[random() % baseCount] - static_cast<T>(random() % steps) * static_cast<T>(1e-6f) / 3;
        };
        PlainOutline<T> outline(random() % 120), removed;
        for (auto& vertex : outline) vertex = {coordinate(), coordinate()};
        OpenPolygon<TypeParam> polygon(outline);
        if (TypeParam::dimension > 2 && !outline.empty()) polygon.GetLast()[TypeParam::dimension - 1] = 50;
        const auto range = polygon.GetBoxRange();
        polygon.RemoveDuplicateVertices();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainRemoveDuplicates(outline, &removed)));
        ASSERT_TRUE(AreSameBits(polygon.removed, removed));
        ASSERT_TRUE(polygon.keepBox && polygon.GetBoxRange() == range);
    }
}

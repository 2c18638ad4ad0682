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

/// Several hundred vertices, most of whose sides lie far apart: a ring that tangles with itself, some corners put on
/// earlier sides; or a side, level or upright, and the way back over it in flat bounds that end on it or the last bits
/// above. Some lie off the origin, some hold values that are not finite.
template <class T>
PlainOutline<T> RandomWalk(std::mt19937_64& random)
{
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    const bool isRing = random() % 4 == 0, isUpright = random() % 2 == 0, isHostile = random() % 8 == 0;
    const T epsilon = std::numeric_limits<T>::epsilon(), wave = std::fabs(uniform(random)) / 20;
    const T shift = random() % 2 == 0 ? T(0) : uniform(random) * T(1e-4f) / epsilon;
    const T halfBit = epsilon * std::fabs(shift) / 2;
    PlainOutline<T> outline(300 + random() % 300);
    const T last = static_cast<T>(outline.size() - 1);
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const T share = static_cast<T>(i) / last, x = i == 0 ? T(0) : T(1) - share / 2;
        const bool isLow = i < 2 || random() % 8 == 0;
        const T height = isLow ? halfBit * static_cast<T>(i < 2 ? 0 : random() % 4) : wave / last;
        outline[i] = {x + shift, height + shift};
        if (isRing) outline[i] = {std::cos(6 * share) + wave * uniform(random), std::sin(6 * share) + shift};
        if (isRing && i > 20 && random() % 4 == 0)
            outline[i] = TEdge2<T>(outline[i - random() % 9 - 2], outline[i - 1]).GetMid();
        if (isUpright) std::swap(outline[i].x, outline[i].y);
    }
    const T rare[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), T(1e30f), T(-0.0)};
    if (isHostile) outline[random() % outline.size()][random() % 2] = rare[random() % 4];
    return outline;
}

TYPED_TEST(CrossingsTest, TrimmingPassesOverNoSideThatThePlainSearchMeets)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(20261121);
    SCOPED_TRACE("seed 20261121");
    // A side so long that it counts as upright: it meets the first one, far above its own end.
    const T size = std::ldexp(T(1), std::numeric_limits<T>::max_exponent / 2);
    PlainOutline<T> far(40);
    for (std::size_t i = 0; i < 40; ++i) far[i] = {static_cast<T>(i), static_cast<T>(i % 2)};
    far[0] = {-1, size / 16};
    far[1] = {1, size / 16};
    far[20] = {0, 0};
    far[21] = {size, size / 32};
    for (unsigned int round = 0; round < 300; ++round) {
        const auto outline = round == 0 ? far : RandomWalk<T>(random);
        OpenPolygon<TypeParam> polygon(outline);
        polygon.TrimCrossings();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainTrimCrossings(outline))) << round;
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

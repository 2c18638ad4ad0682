// The searches that let cost grow in proportion to the outline, on outlines of some hundred to a thousand vertices that
// are made to mislead them, against the plain forms.

#include <tests/polygons/PolygonSupport.h>
#include <tests/support/plain/PlainReordering.h>

#include <limits>
#include <memory>
#include <random>
#include <utility>

using namespace CorvexTest;

template <class Family>
struct GrowthTest : ::testing::Test
{};
using GrowthFamilies = ::testing::Types<Family<float, Maths::TVector4>, Family<double, Maths::TVector2>>;
TYPED_TEST_SUITE(GrowthTest, GrowthFamilies, TypeNames);

/// Rings whose sides fold, spirals, combs whose teeth touch, grids of ties, lines there and back that lean, zigzags of
/// falling amplitude, all in one cell of the duplicates or among the denormals; some far off, repeated or not numbers.
template <class T>
PlainOutline<T> MisleadingOutline(std::mt19937_64& random)
{
    const auto pick = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    std::uniform_real_distribution<T> scatter(T(-1), T(1));
    const std::size_t kind = pick(8), count = 1 + pick(900);
    PlainOutline<T> outline(count);
    const T denormal = std::numeric_limits<T>::min() / 4, far = T(1e15);
    for (std::size_t i = 0; i < count; ++i) {
        const T place = static_cast<T>(i), share = place / static_cast<T>(count), side = static_cast<T>(pick(12));
        const T radius = static_cast<T>(count) / 6 + scatter(random), half = static_cast<T>(i / 2);
        if (kind == 0) outline[i] = {radius * std::cos(share * T(6.28)), radius * std::sin(share * T(6.28))};
        if (kind == 1) outline[i] = {(1 + 9 * share) * std::cos(60 * share), (1 + 9 * share) * std::sin(60 * share)};
        if (kind == 2) outline[i] = {half, (i / 2 + i) % 2 == 0 ? T(0) : T(50)};
        if (kind == 3) outline[i] = {side, static_cast<T>(pick(12)) * T(0.1)};
        if (kind == 4) outline[i] = {std::min(place, static_cast<T>(count) - place), place / 3};
        if (kind == 5) outline[i] = {place, (i % 2 == 0 ? 1 : -1) * (static_cast<T>(count) - place)};
        if (kind == 6) outline[i] = {side * static_cast<T>(3e-7f), scatter(random) * static_cast<T>(3e-6f)};
        if (kind == 7) outline[i] = {scatter(random) * (count % 2 == 0 ? denormal : far), scatter(random) * far};
    }
    for (std::size_t k = 0; random() % 3 == 0 && k < count / 9; ++k) outline[pick(count)] = outline[pick(count)];
    const T rare[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), far, T(-0.0)};
    for (std::size_t k = 0; random() % 5 == 0 && k <= count / 200; ++k) outline[pick(count)][pick(2)] = rare[pick(4)];
    return outline;
}

template <class Family>
typename Family::Polygon MakeUnwatched(const PlainOutline<typename Family::T>& outline, unsigned int growSize)
{
    typename Family::Polygon polygon(0u, growSize);
    for (const auto& vertex : outline) polygon.Add(static_cast<typename Family::Vector>(vertex));
    return polygon;
}

TYPED_TEST(GrowthTest, TrimmingAndThinningDecideAsThePlainForms)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(60606);
    SCOPED_TRACE("seed 60606");
    for (unsigned int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const auto outline = MisleadingOutline<T>(random);
        OpenPolygon<TypeParam> polygon(outline);
        polygon.TrimCrossings();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainTrimCrossings(outline)));

        const auto count = static_cast<unsigned int>(outline.size());
        const T tolerance = static_cast<T>(random() % 3) / 4;
        const std::unique_ptr<bool[]> kept(new bool[2 * count]);
        std::fill_n(kept.get(), 2 * count, true);
        OpenPolygon<TypeParam>(outline).SimplifySection(0, count - 1, kept.get(), tolerance);
        if (count > 1) PlainSimplifySection(outline, 0, count - 1, tolerance, kept.get() + count);
        ASSERT_TRUE(std::equal(kept.get(), kept.get() + count, kept.get() + count));
    }
}

TYPED_TEST(GrowthTest, WhatNobodyWatchesEndsAsStepByStep)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(70707);
    SCOPED_TRACE("seed 70707");
    for (unsigned int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        const auto outline = MisleadingOutline<T>(random);
        const unsigned int growSize = 1 + static_cast<unsigned int>(random() % 3) * 100;
        OpenPolygon<TypeParam> watched;
        watched.SetGrowSize(growSize);
        for (const auto& vertex : outline) watched.Add(static_cast<typename TypeParam::Vector>(vertex));
        auto unwatched = MakeUnwatched<TypeParam>(outline, growSize);
        watched.SetUseExponentialGrowth(round % 2 == 0);
        unwatched.SetUseExponentialGrowth(round % 2 == 0);
        // To the last slot of blocks of one capacity.
        watched.Contract();
        unwatched.Contract();
        const T distance = std::uniform_real_distribution<T>(T(-2), T(2))(random);
        if (round % 3 == 0) {
            watched.RemoveDuplicateVertices();
            unwatched.RemoveDuplicateVertices();
        } else {
            ASSERT_EQ(watched.Offset(distance, 0), unwatched.Offset(distance, 0));
        }
        ASSERT_EQ(watched.GetCount(), unwatched.GetCount());
        const unsigned int slots = std::max(watched.GetCount(), static_cast<unsigned int>(outline.size()));
        watched.Expand(slots);
        unwatched.Expand(slots);
        for (unsigned int i = 0; i < slots; ++i)
            for (unsigned int k = 0; k < TypeParam::dimension; ++k)
                ASSERT_TRUE(SameBits(watched[i][k], unwatched[i][k])) << i;
    }
}

/// One pass of TPolygon::MakeSimplePolygon over a closed list; returns whether any vertices were exchanged.
template <class T>
bool PlainExchangePass(PlainOutline<T>* closed)
{
    const T tolerance = static_cast<T>(1e-6f);
    PlainOutline<T>& p = *closed;
    bool isChanged = false;
    for (std::size_t k = 1; k + 2 < p.size(); ++k)
        for (std::size_t j = k + 2; j < p.size(); ++j) {
            const TEdge2<T> a(p[k - 1], p[k]), b(p[j - 1], p[j]);
            const bool sharesEnd = a.Vertex[0] == b.Vertex[0] || a.Vertex[0] == b.Vertex[1] ||
                                   a.Vertex[1] == b.Vertex[0] || a.Vertex[1] == b.Vertex[1];
            if (sharesEnd || !a.Intersects(b, tolerance, tolerance)) continue;
            std::swap(p[k], p[j - 1]);
            isChanged = true;
        }
    return isChanged;
}

TYPED_TEST(GrowthTest, ExchangesAreThoseOfThePlainPassesWhereTheseEnd)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(90909);
    SCOPED_TRACE("seed 90909");
    unsigned int comparedCount = 0;
    for (unsigned int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        auto outline = MisleadingOutline<T>(random);
        outline.resize(std::min<std::size_t>(outline.size(), 150));
        // Sides that lie along few slanted lines cross by rounding, however far apart they are.
        const T angle = static_cast<T>(random() % 100);
        if (round % 2 == 0)
            for (auto& vertex : outline) {
                vertex = {static_cast<T>(random() % 50), static_cast<T>(random() % 50 / 24)};
                vertex = {vertex.x * std::cos(angle) - vertex.y * std::sin(angle),
                          vertex.x * std::sin(angle) + vertex.y * std::cos(angle)};
            }
        PlainOutline<T> removed;
        auto expected = PlainRemoveDuplicates(outline, &removed);
        expected.push_back(expected[0]);
        unsigned int passes = 0;
        while (passes < 40 && PlainExchangePass(&expected)) ++passes;
        if (passes == 40) continue;
        ++comparedCount;
        expected.pop_back();
        OpenPolygon<TypeParam> polygon(outline);
        polygon.MakeSimplePolygon();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), expected));
    }
    EXPECT_GT(comparedCount, 20u);
}

/// Leaves its reordering, by throwing the outline, as soon as that is made: the removal of crossings need not end.
template <class Family>
struct RawReordering : OpenPolygon<Family>
{
    using OpenPolygon<Family>::OpenPolygon;
    void ElementsAdded(typename Family::Vector*, unsigned int) override { throw this->GetOutline(); }
};

TYPED_TEST(GrowthTest, CloudsGrowIntoTheOutlineAsInThePlainForm)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(10101);
    SCOPED_TRACE("seed 10101");
    for (unsigned int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        auto cloud = MisleadingOutline<T>(random);
        cloud.resize(std::min<std::size_t>(cloud.size(), 120));
        OpenPolygon<TypeParam> polygon(cloud);
        polygon.RemoveDuplicateVertices();
        const auto points = polygon.GetOutline();
        polygon.MakeConvexHull();
        try {
            RawReordering<TypeParam>(cloud).ReorderCEC();
            ADD_FAILURE() << "the outline was not added as a range";
        } catch (const PlainOutline<T>& grown) {
            ASSERT_TRUE(AreSameBits(grown, PlainGrowOutline(polygon.GetOutline(), points)));
        }
    }
}

TYPED_TEST(GrowthTest, PreparedContainmentAnswersAsTheSetDid)
{
    using T = typename TypeParam::T;
    using Point = Maths::TVector2<T>;
    std::mt19937_64 random(80808);
    SCOPED_TRACE("seed 80808");
    const T rare[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), T(1e15), T(-0.0)};
    for (unsigned int round = 0; round < 50; ++round) {
        SCOPED_TRACE(round);
        const auto outline = MisleadingOutline<T>(random);
        auto polygon = MakeUnwatched<TypeParam>(outline, 100);
        // A stale box answers as it stands.
        if (round % 9 == 0) polygon.RemoveAt(0, false);
        const Maths::TOutlineIndex<T> index(polygon);
        for (unsigned int k = 0; k < 200; ++k) {
            const Point a = outline[random() % outline.size()], b = outline[random() % outline.size()];
            Point points[] = {a, {a.x, b.y}, (a + b) * T(0.5), {(a.x + b.x) / 2, a.y}, {a.x, (a.y + b.y) / 2}, a};
            points[5][random() % 2] = rare[random() % 4];
            for (const Point& point : points)
                ASSERT_EQ(index.IsWithin(point), polygon.IsWithin(point)) << point.x << ", " << point.y;
        }
    }
    // Copies share what was made, and outlive each other.
    Maths::TOutlineIndex<T> copy{typename TypeParam::Polygon()};
    {
        const Maths::TOutlineIndex<T> index(MakeUnwatched<TypeParam>({{0, 0}, {2, 0}, {0, 2}}, 1));
        copy = Maths::TOutlineIndex<T>(index);
        copy = *&copy;
    }
    EXPECT_TRUE(copy.IsWithin(T(0.5), T(0.5)));
    EXPECT_FALSE(Maths::TOutlineIndex<T>(typename TypeParam::Polygon()).IsWithin(T(0), T(0)));
}

TYPED_TEST(GrowthTest, AZigzagOfFallingAmplitudeNeedsNoStack)
{
    using T = typename TypeParam::T;
    constexpr unsigned int count = 200000;
    typename TypeParam::Polygon polygon(count, 1);
    for (unsigned int i = 0; i < count; ++i) {
        const T size = static_cast<T>(count - i);
        polygon.Add(
            static_cast<typename TypeParam::Vector>(Maths::TVector2<T>(static_cast<T>(i), i % 2 ? size : -size)));
    }
    polygon.SimplifyDPM(static_cast<T>(1e-3));
    EXPECT_EQ(polygon.GetCount(), count);
}

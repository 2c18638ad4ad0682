// The searches that let cost grow in proportion to the outline, on outlines of some hundred to a thousand vertices that
// are made to mislead them, against the plain forms.

#include <tests/polygons/PolygonSupport.h>

#include <limits>
#include <memory>
#include <random>
#include <tuple>

using namespace CorvexTest;

/// Rings whose sides fold, spirals, combs whose teeth touch, grids of ties, lines there and back that lean, zigzags of
/// falling amplitude, all in one cell of the duplicates or among the denormals, and sides along few slanted lines,
/// which cross by rounding, however far apart they are; some far off, repeated or not numbers.
template <class T>
PlainOutline<T> MisleadingOutline(std::mt19937_64& random, std::size_t most)
{
    const auto pick = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    const auto place = [&pick](std::size_t n) { return static_cast<T>(pick(n)); };
    std::uniform_real_distribution<T> scatter(T(-1), T(1));
    const std::size_t kind = pick(12), count = 1 + pick(most);
    PlainOutline<T> outline(count);
    const T n = static_cast<T>(count), far = T(1e15), small = std::numeric_limits<T>::min() / 4, angle = place(100);
    for (std::size_t i = 0; i < count; ++i) {
        const T k = static_cast<T>(i), share = k / n, turn = share * T(6.28), u = place(50), v = place(3);
        const T radius = n / 6 + scatter(random), half = static_cast<T>(i / 2), sign = T(i % 2 == 0 ? 1 : -1);
        const Maths::TVector2<T> shapes[] = {
            {radius * std::cos(turn), radius * std::sin(turn)},
            {(1 + 9 * share) * std::cos(60 * share), (1 + 9 * share) * std::sin(60 * share)},
            {half, (i / 2 + i) % 2 == 0 ? T(0) : T(50)},
            {place(12), place(12) * T(0.1)},
            {std::min(k, n - k), k / 3},
            {k, sign * (n - k)},
            {place(12) * static_cast<T>(3e-7f), scatter(random) * static_cast<T>(3e-6f)},
            {scatter(random) * (count % 2 == 0 ? small : far), scatter(random) * far},
            {u * std::cos(angle) - v * std::sin(angle), u * std::sin(angle) + v * std::cos(angle)}};
        outline[i] = shapes[std::min<std::size_t>(kind, 8)];
    }
    for (std::size_t k = 0; random() % 3 == 0 && k < count / 9; ++k) outline[pick(count)] = outline[pick(count)];
    const T rare[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), far, T(-0.0)};
    for (std::size_t k = 0; random() % 5 == 0 && k <= count / 200; ++k) outline[pick(count)][pick(2)] = rare[pick(4)];
    return outline;
}

template <class Family>
struct GrowthTest : ::testing::Test
{
    /// Calls check(outline, random, round) on outlines of up to `most` vertices, until one fails.
    template <class Check>
    static void OnOutlines(unsigned int rounds, std::size_t most, Check check)
    {
        const unsigned int seed = 60606;
        std::mt19937_64 random(seed);
        for (unsigned int round = 0; round < rounds && !HasFatalFailure(); ++round) {
            SCOPED_TRACE(::testing::Message() << "seed " << seed << ", round " << round);
            check(MisleadingOutline<typename Family::T>(random, most), random, round);
        }
    }
    template <class Polygon>
    static void Add(Polygon* polygon, const PlainOutline<typename Family::T>& outline)
    {
        for (const auto& vertex : outline) polygon->Add(static_cast<typename Family::Vector>(vertex));
    }
};
using GrowthFamilies = ::testing::Types<Family<float, Maths::TVector4>, Family<double, Maths::TVector2>>;
TYPED_TEST_SUITE(GrowthTest, GrowthFamilies, TypeNames);

TYPED_TEST(GrowthTest, TrimmingAndThinningDecideAsThePlainForms)
{
    this->OnOutlines(70, 900, [](const auto& outline, auto& random, unsigned int) {
        OpenPolygon<TypeParam> polygon(outline), thinned(outline);
        polygon.TrimCrossings();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), PlainTrimCrossings(outline)));

        const auto count = static_cast<unsigned int>(outline.size());
        const auto tolerance = static_cast<typename TypeParam::T>(random() % 3) / 4;
        const std::unique_ptr<bool[]> kept(new bool[2 * count]);
        std::fill_n(kept.get(), 2 * count, true);
        thinned.SimplifySection(0, count - 1, kept.get(), tolerance);
        if (count > 1) PlainSimplifySection(outline, 0, count - 1, tolerance, kept.get() + count);
        ASSERT_TRUE(std::equal(kept.get(), kept.get() + count, kept.get() + count));
    });
}

TYPED_TEST(GrowthTest, WhatNobodyWatchesEndsAsStepByStep)
{
    using T = typename TypeParam::T;
    this->OnOutlines(120, 900, [](const auto& outline, auto& random, unsigned int round) {
        const unsigned int growSize = 1 + static_cast<unsigned int>(random() % 3) * 100;
        const T distance = std::uniform_real_distribution<T>(T(-2), T(2))(random);
        // The result, and the elements to the last slot of blocks of one capacity.
        const auto change = [&](auto polygon) {
            polygon.SetGrowSize(growSize);
            TestFixture::Add(&polygon, outline);
            polygon.SetUseExponentialGrowth(round % 2 == 0);
            polygon.Contract();
            const bool isDone = round % 3 == 0 || polygon.Offset(distance, 0);
            if (round % 3 == 0) polygon.RemoveDuplicateVertices();
            const unsigned int count = polygon.GetCount();
            polygon.Expand(std::max(count, static_cast<unsigned int>(outline.size())));
            return std::tuple(isDone, count, std::vector<typename TypeParam::Vector>(polygon.begin(), polygon.end()));
        };
        const auto [isDone, count, slots] = change(OpenPolygon<TypeParam>());
        const auto [isDoneAtOnce, countAtOnce, slotsAtOnce] = change(typename TypeParam::Polygon());
        ASSERT_TRUE(isDone == isDoneAtOnce && count == countAtOnce && slots.size() == slotsAtOnce.size());
        for (std::size_t i = 0; i < slots.size(); ++i)
            for (unsigned int k = 0; k < TypeParam::dimension; ++k)
                ASSERT_TRUE(SameBits(slots[i][k], slotsAtOnce[i][k])) << i;
    });
}

TYPED_TEST(GrowthTest, ExchangesAreThoseOfThePlainPassesWhereTheseEnd)
{
    using T = typename TypeParam::T;
    unsigned int comparedCount = 0;
    const auto compare = [&comparedCount](const PlainOutline<T>& outline) {
        PlainOutline<T> removed;
        auto expected = PlainRemoveDuplicates(outline, &removed);
        if (!PlainMakeSimple(&expected)) return;
        ++comparedCount;
        OpenPolygon<TypeParam> polygon(outline);
        polygon.MakeSimplePolygon();
        ASSERT_TRUE(AreSameBits(polygon.GetOutline(), expected));
    };
    this->OnOutlines(90, 150, [&compare](const auto& outline, auto&, unsigned int) { compare(outline); });
    EXPECT_GT(comparedCount, 30u);

    // To and fro along a line whose sides meet by rounding alone, y being x p / (1 - p) with p next to a power of two.
    comparedCount = 0;
    const T p = T(1) / 64 - T(0.75) * std::numeric_limits<T>::epsilon();
    for (unsigned int round = 0; round < 40; ++round) {
        PlainOutline<T> outline{{T(30), T(100)}};
        for (unsigned int i = 0; i < 60; ++i) {
            const T x = static_cast<T>(i) + static_cast<T>((7 * i * i + 13 * round * i) % 1000) / 100;
            outline.emplace_back(x, x * p / (1 - p));
        }
        compare(outline);
    }
    EXPECT_GT(comparedCount, 10u);
}

TYPED_TEST(GrowthTest, CopiesOfAPreparedOutlineOutliveEachOther)
{
    using Index = Maths::TOutlineIndex<typename TypeParam::T>;
    using Polygon = typename TypeParam::Polygon;
    Index copy{Polygon()};
    {
        const Index index(OpenPolygon<TypeParam>(Plane{{0, 0}, {2, 0}, {0, 2}}));
        copy = Index(index);
        copy = *&copy;
    }
    EXPECT_TRUE(copy.IsWithin(0.5, 0.5) && !Index(Polygon()).IsWithin(0, 0));
}

TYPED_TEST(GrowthTest, AZigzagOfFallingAmplitudeNeedsNoStack)
{
    using T = typename TypeParam::T;
    constexpr unsigned int count = 200000;
    typename TypeParam::Polygon polygon(count, 1);
    for (unsigned int i = 0; i < count; ++i)
        this->Add(&polygon, {{static_cast<T>(i), static_cast<T>(count - i) * T(i % 2 ? 1 : -1)}});
    polygon.SimplifyDPM(static_cast<T>(1e-3));
    EXPECT_EQ(polygon.GetCount(), count);
}

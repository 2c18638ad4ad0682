#include <tests/pointsets/OpenSet.h>
#include <tests/support/plain/PointSets.h>

using namespace CorvexTest;

template <class F>
struct PointSetContainment : ::testing::Test
{};
TYPED_TEST_SUITE(PointSetContainment, PointFamily, TypeNames);

TYPED_TEST(PointSetContainment, SquareTakesItsLevelSidesAndCornersAndLeavesTheOthers)
{
    using F = TypeParam;
    OpenSet<F> set = {Point<F>(9, 9), Point<F>(0, 0, 5), Point<F>(2, 0, -5), Point<F>(2, 2, 7), Point<F>(0, 2)};
    EXPECT_TRUE(set.IsWithin(1, 0, 1, 4) && set.IsWithin(1, 2, 1, 4) && set.IsWithin(2, 2, 1, 4));
    EXPECT_FALSE(set.IsWithin(0, 1, 1, 4) || set.IsWithin(2, 1, 1, 4) || set.IsWithin(1, 1, 1, 0));
    set.RemoveAt(0, false);
    EXPECT_TRUE(set.IsWithin(1, 1) && set.IsWithin({1, 1}));
    set.boundingBox = Maths::TBox<typename F::T>();
    EXPECT_FALSE(set.IsWithin({1, 1})) << "a stale box answers before the outline does";
}

TYPED_TEST(PointSetContainment, CountsLikeSegmentAfterSegment)
{
    using T = typename TypeParam::T;
    std::mt19937 random(7);
    SCOPED_TRACE("seed 7");
    for (unsigned int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        const auto pick = [&] {
            const T x = AwkwardValue<T>(random, 2 + round % 2);
            return Maths::TVector2<T>(x, AwkwardValue<T>(random, 2 + round % 2));
        };
        const unsigned int count = 1 + Below(random, 150), first = Below(random, count);
        const unsigned int used = 1 + Below(random, count - first);
        OpenSet<TypeParam> set(count);
        while (set.GetCount() < count) set.Add(static_cast<typename TypeParam::Vector>(pick()));
        const Maths::TVector2<T> point = pick();
        int plain = 0, examined = 0;
        for (unsigned int i = 0; i < used; ++i) {
            const unsigned int from = first + i, to = first + (i + 1) % used;
            plain += Plain::CrossingScore(set[from], set[to], point.x, point.y);
            set.ExamineSegment(from, to, point, &examined);
        }
        ASSERT_EQ(examined, plain);
        ASSERT_EQ(set.IsWithin(point, first, used), set.GetBoundingBox().IsWithin(point, T(0)) && plain != 0);
    }
}

TYPED_TEST(PointSetContainment, EdgeMeetsTheOutlineInItsOrder)
{
    using F = TypeParam;
    OpenSet<F> diamond = {Point<F>(0, -2, 0, 0), Point<F>(2, 0, 8, 4), Point<F>(0, 2, 4, 2), Point<F>(-2, 0, 6, 2)};
    OpenSet<F> hits, square = {Point<F>(0, 0, 0), Point<F>(2, 0, 4), Point<F>(2, 2, 8), Point<F>(0, 2, 4)};
    Maths::TEdge2<typename F::T> within(-1, 0, 1, 0), across(-3, 1, 3, 1), upright(0, -3, 0, 3);
    EXPECT_FALSE(diamond.IntersectWith(within, &hits));
    EXPECT_TRUE(diamond.IntersectWith(across, &hits));
    EXPECT_TRUE(diamond.IntersectWith(within, &hits)) << "what the list held already counts";
    diamond.IntersectWith(upright, &hits);
    square.IntersectWith(across, &hits);
    // Hits on corners come once of each side.
    const OpenSet<F> expected = {Point<F>(1, 1, 6, 3), Point<F>(-1, 1, 5, 2), diamond[0], diamond[2], diamond[2],
                                 diamond[0],           Point<F>(2, 1, 6)};
    ASSERT_EQ(hits.GetCount(), 8u);
    for (unsigned int i = 0; i < 7; ++i) EXPECT_EQ(hits[i], expected[i]) << i;
    // A side straight down has no share to interpolate by; one straight up has.
    EXPECT_TRUE(F::dimension == 2 || std::isnan(hits[7][F::dimension - 1]));
}

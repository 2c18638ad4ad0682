#include <tests/pointsets/OpenSet.h>
#include <tests/support/plain/PointSets.h>

namespace CorvexTest
{
namespace
{

using Maths::TEdge2;
using Maths::TVector2;

template <class F>
class PointSetContainment : public ::testing::Test
{};
TYPED_TEST_SUITE(PointSetContainment, PointFamily, TypeNames);

TYPED_TEST(PointSetContainment, SquareTakesItsLevelSidesAndCornersAndLeavesTheOthers)
{
    using F = TypeParam;
    using T = typename F::T;
    OpenSet<F> set = {Point<F>(9, 9), Point<F>(0, 0, 5), Point<F>(2, 0, -5), Point<F>(2, 2, 7), Point<F>(0, 2)};
    const struct
    {
        const char* name;
        T x, y;
        int score;
    } rows[] = {{"middle", 1, 1, -2},   {"right side", 2, 1, 0}, {"left side", 0, 1, 0}, {"bottom side", 1, 0, -1},
                {"top side", 1, 2, -1}, {"beside", 3, 1, 0},     {"above", 1, 3, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        int score = 0;
        for (unsigned int i = 0; i < 4; ++i)
            set.ExamineSegment(1 + i, 1 + (i + 1) % 4, TVector2<T>(row.x, row.y), &score);
        EXPECT_EQ(score, row.score);
        EXPECT_EQ(set.IsWithin(row.x, row.y, 1, 4), row.score != 0);
    }
    for (unsigned int i = 1; i < 5; ++i) EXPECT_TRUE(set.IsWithin(TVector2<T>(set[i].x, set[i].y), 1, 4));
    EXPECT_FALSE(set.IsWithin(1, 1, 1, 0));
    set.RemoveAt(0, false);
    EXPECT_TRUE(set.IsWithin(1, 1));
    set.boundingBox = Maths::TBox<T>();
    EXPECT_FALSE(set.IsWithin(TVector2<T>(1, 1))) << "a stale box answers before the outline does";
}

TYPED_TEST(PointSetContainment, CountsLikeSegmentAfterSegment)
{
    using F = TypeParam;
    using T = typename F::T;
    std::mt19937 random(7);
    int inside = 0;
    for (unsigned int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        const auto value = [&] { return AwkwardValue<T>(random, 2 + round % 2); };
        const unsigned int count = 1 + Below(random, 150), first = Below(random, count);
        const unsigned int used = 1 + Below(random, count - first);
        OpenSet<F> set(count);
        for (unsigned int i = 0; i < count; ++i)
            set.Add(static_cast<typename F::Vector>(TVector2<T>(value(), value())));
        const TVector2<T> point(value(), value());
        int plain = 0, examined = 0;
        for (unsigned int from = first, i = 1; i <= used; ++i) {
            const unsigned int to = first + i % used;
            plain += Plain::CrossingScore(set[from], set[to], point.x, point.y);
            set.ExamineSegment(from, to, point, &examined);
            from = to;
        }
        ASSERT_EQ(examined, plain);
        const bool expected = set.GetBoundingBox().IsWithin(point, T(0)) && plain != 0;
        ASSERT_EQ(set.IsWithin(point, first, used), expected);
        inside += expected ? 1 : 0;
    }
    EXPECT_TRUE(inside > 500 && inside < 3500) << inside;
}

TYPED_TEST(PointSetContainment, EdgeMeetsTheOutlineInItsOrder)
{
    using F = TypeParam;
    using T = typename F::T;
    OpenSet<F> diamond = {Point<F>(0, -2, 0, 0), Point<F>(2, 0, 8, 4), Point<F>(0, 2, 4, 2), Point<F>(-2, 0, 6, 2)};
    OpenSet<F> hits;
    TEdge2<T> within(-1, 0, 1, 0), across(-3, 1, 3, 1), upright(0, -3, 0, 3);
    EXPECT_FALSE(diamond.IntersectWith(within, &hits));
    EXPECT_TRUE(diamond.IntersectWith(across, &hits));
    EXPECT_TRUE(diamond.IntersectWith(within, &hits)) << "what the list held already counts";
    diamond.IntersectWith(upright, &hits);
    // Hits on corners come once of each side.
    const OpenSet<F> expected = {
        Point<F>(1, 1, 6, 3), Point<F>(-1, 1, 5, 2), diamond[0], diamond[2], diamond[2], diamond[0]};
    ASSERT_EQ(hits.GetCount(), expected.GetCount());
    for (unsigned int i = 0; i < hits.GetCount(); ++i) EXPECT_EQ(hits[i], expected[i]) << i;

    // A side straight down has no share to interpolate by; one straight up has.
    OpenSet<F> square = {Point<F>(0, 0, 0), Point<F>(2, 0, 4), Point<F>(2, 2, 8), Point<F>(0, 2, 4)};
    hits.Clear(false);
    square.IntersectWith(across, &hits);
    ASSERT_EQ(hits.GetCount(), 2u);
    EXPECT_EQ(hits[0], Point<F>(2, 1, 6));
    if constexpr (F::dimension > 2) {
        EXPECT_TRUE(std::isnan(hits[1].z));
    }
}

} // namespace
} // namespace CorvexTest

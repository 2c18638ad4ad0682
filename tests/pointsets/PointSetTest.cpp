#include <tests/pointsets/OpenSet.h>

#include <tuple>

using namespace CorvexTest;

template <class F>
struct PointSetTest : ::testing::Test
{
    static void ExpectRange(const OpenSet<F>& set, double lowest, double highest)
    {
        EXPECT_EQ(set.GetBoundingBox().minimum.x, static_cast<typename F::T>(lowest));
        EXPECT_EQ(set.GetBoundingBox().maximum.x, static_cast<typename F::T>(highest));
    }
};
TYPED_TEST_SUITE(PointSetTest, PointFamily, TypeNames);

TYPED_TEST(PointSetTest, FollowsTheHooksAsTheyFire)
{
    using F = TypeParam;
    using Set = OpenSet<F>;
    constexpr double unset = Maths::Numbers::unsetBound<double>;
    const std::tuple<const char*, void (*)(Set&), double, double> rows[] = {
        {"insertion", [](Set& s) { s.Insert(Point<F>(9, 0), 0); }, 0, 9},
        {"removal of the first sees the slots unmoved", [](Set& s) { s.RemoveAt(0, true); }, 0, 1},
        {"removal from the front likewise", [](Set& s) { s.RemoveFromFront(2); }, 0, 0},
        {"removal from the end is exact", [](Set& s) { s.RemoveFromEnd(1); }, 0, 1},
        {"removal without order goes unseen", [](Set& s) { s.RemoveAt(2, false); }, 0, 5},
        {"clearing", [](Set& s) { s.Clear(false); }, unset, -unset},
        {"self-assignment empties", [](Set& s) { static_cast<typename Set::Base&>(s) = s; }, unset, -unset}};
    for (const auto& [name, change, lowest, highest] : rows) {
        SCOPED_TRACE(name);
        Set kept = {Point<F>(0, 2, 7), Point<F>(1, 3, 7), Point<F>(5, 4, 7)}, still(kept);
        change(kept);
        this->ExpectRange(kept, lowest, highest);
        still.keepBox = false;
        change(still);
        this->ExpectRange(still, 0, 5);
    }
}

TYPED_TEST(PointSetTest, EdgeMeetsTheOutlineInItsOrder)
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

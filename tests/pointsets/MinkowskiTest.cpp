#include <tests/pointsets/OpenSet.h>
#include <tests/support/RecordingList.h>

using namespace CorvexTest;

template <class F>
struct PointSetMinkowski : ::testing::Test
{};
TYPED_TEST_SUITE(PointSetMinkowski, PointFamily, TypeNames);

TYPED_TEST(PointSetMinkowski, TakesTheFirstElementOutAgainWithItsRounding)
{
    using F = TypeParam;
    const double large = std::ldexp(1.0, std::numeric_limits<typename F::T>::digits);
    const OpenSet<F> other = {Point<F>(large, 0), Point<F>(3, 0)};
    OpenSet<F> sum = {Point<F>(1, -0.0)}, difference(sum);
    sum.MinkowskiSum(other);
    EXPECT_EQ(sum[1].x, 3);
    difference.MinkowskiDifference(other);
    EXPECT_EQ(difference[1].x, 1 - 3);
    EXPECT_FALSE(std::signbit(difference[0].y)) << "the first run adds its zero correction too";
}

/// Doubles the x of the slot behind each point that is added, or steps that of an operand.
template <class F>
struct MeddlingSet : OpenSet<F>
{
    using OpenSet<F>::OpenSet;
    typename F::Vector* operand = nullptr;
    void ElementAdded(typename F::Vector& point) override
    {
        operand != nullptr ? operand->x += 1 : (&point + 1)->x *= 2;
    }
};

TYPED_TEST(PointSetMinkowski, TellsADerivedClassOfEachResultBeforeTheNextIsComputed)
{
    using F = TypeParam;
    RecordingList<typename F::PointSet> told(OpenSet<F>{Point<F>(1, 0), Point<F>(2, 0)}.GetStream(), 2u);
    told.MinkowskiSum(told.GetStream(), 0);
    EXPECT_EQ(told.log, "ElementsRemoved(0: of 2) count 2; Cleared(0: of 0) count 0");
    const OpenSet<F> one = {Point<F>(1, 0, 0, 0)};
    told.log.clear();
    told.MinkowskiSum(one, one);
    EXPECT_EQ(told.log, "ElementsRemoved(0: of 1) count 1; Cleared(0: of 0) count 0; ElementAdded(0: of 1) count 1");
    MeddlingSet<F> meddling(0, 4);
    meddling.AddRange(OpenSet<F>{Point<F>(1, 0), Point<F>(2, 0), Point<F>(3, 0)});
    meddling.MinkowskiSum(one);
    EXPECT_EQ(meddling[1].x, 2 * 2 + 1);
    EXPECT_EQ(meddling[2].x, 2 * 3 + 1);
    const OpenSet<F> zeros = {Point<F>(0, 0), Point<F>(0, 0)};
    meddling.operand = one.GetStream();
    meddling.MinkowskiSum(one, zeros);
    EXPECT_EQ(meddling[1].x, 1 + 1);
}

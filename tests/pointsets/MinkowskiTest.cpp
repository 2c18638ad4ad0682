#include <tests/pointsets/OpenSet.h>

namespace CorvexTest
{
namespace
{

template <class F>
class PointSetMinkowski : public ::testing::Test
{};
TYPED_TEST_SUITE(PointSetMinkowski, PointFamily, TypeNames);

template <class F>
void ExpectPoints(const OpenSet<F>& set, const OpenSet<F>& expected)
{
    ASSERT_EQ(set.GetCount(), expected.GetCount());
    for (unsigned int i = 0; i < set.GetCount(); ++i) EXPECT_EQ(set[i], expected[i]) << i;
    EXPECT_TRUE(set.GetBoundingBox() == expected.GetBoundingBox());
}

TYPED_TEST(PointSetMinkowski, OrdersByTheOtherOperandInPlaceAndByTheFirstOtherwise)
{
    using F = TypeParam;
    OpenSet<F> a = {Point<F>(0, 0, 5, 1), Point<F>(1, 0, 5, 2)}, result;
    const OpenSet<F> b = {Point<F>(0, 0, 1, 3), Point<F>(0, 1, 2, 5)}, none;
    result.MinkowskiSum(a, b);
    ExpectPoints<F>(result, {Point<F>(0, 0, 6, 4), Point<F>(0, 1, 7, 6), Point<F>(1, 0, 6, 5), Point<F>(1, 1, 7, 7)});
    result.MinkowskiDifference(a, b);
    ExpectPoints<F>(result,
                    {Point<F>(0, 0, 4, -2), Point<F>(0, -1, 3, -4), Point<F>(1, 0, 4, -1), Point<F>(1, -1, 3, -3)});
    result = a;
    result.MinkowskiDifference(b);
    ExpectPoints<F>(result,
                    {Point<F>(0, 0, 4, -2), Point<F>(1, 0, 4, -1), Point<F>(0, -1, 3, -4), Point<F>(1, -1, 3, -3)});
    a.MinkowskiSum(b);
    ExpectPoints<F>(a, {Point<F>(0, 0, 6, 4), Point<F>(1, 0, 6, 5), Point<F>(0, 1, 7, 6), Point<F>(1, 1, 7, 7)});
    a.MinkowskiSum(none);
    ExpectPoints<F>(a, none);
    result.MinkowskiSum(none, b);
    ExpectPoints<F>(result, none);
}

TYPED_TEST(PointSetMinkowski, TakesTheFirstElementOutAgainWithItsRounding)
{
    using F = TypeParam;
    const double large = std::ldexp(1.0, std::numeric_limits<typename F::T>::digits);
    const OpenSet<F> start = {Point<F>(1, -0.0)}, other = {Point<F>(large, 0), Point<F>(3, 0)};
    OpenSet<F> sum(start), difference(start);
    sum.MinkowskiSum(other);
    EXPECT_EQ(sum[1].x, 3);
    difference.MinkowskiDifference(other);
    EXPECT_EQ(difference[1].x, 1 - 3);
    EXPECT_FALSE(std::signbit(difference[0].y)) << "the first run adds its zero correction too";
}

} // namespace
} // namespace CorvexTest

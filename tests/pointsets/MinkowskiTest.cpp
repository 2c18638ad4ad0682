#include <tests/pointsets/OpenSet.h>

using namespace CorvexTest;

template <class F>
struct PointSetMinkowski : ::testing::Test
{
    static void ExpectPoints(const OpenSet<F>& set, const OpenSet<F>& expected)
    {
        ASSERT_EQ(set.GetCount(), expected.GetCount());
        for (unsigned int i = 0; i < set.GetCount(); ++i) EXPECT_EQ(set[i], expected[i]) << i;
        EXPECT_TRUE(set.GetBoundingBox() == expected.GetBoundingBox());
    }
};
TYPED_TEST_SUITE(PointSetMinkowski, PointFamily, TypeNames);

TYPED_TEST(PointSetMinkowski, OrdersByTheOtherOperandInPlaceAndByTheFirstOtherwise)
{
    using F = TypeParam;
    OpenSet<F> a = {Point<F>(0, 0, 5, 1), Point<F>(1, 0, 5, 2)}, result;
    const OpenSet<F> b = {Point<F>(0, 0, 1, 3), Point<F>(0, 1, 2, 5)}, none;
    const auto p00 = Point<F>(0, 0, 6, 4), p01 = Point<F>(0, 1, 7, 6), p10 = Point<F>(1, 0, 6, 5);
    const auto p11 = Point<F>(1, 1, 7, 7), m00 = Point<F>(0, 0, 4, -2), m01 = Point<F>(0, -1, 3, -4);
    const auto m10 = Point<F>(1, 0, 4, -1), m11 = Point<F>(1, -1, 3, -3);
    result.MinkowskiSum(a, b);
    this->ExpectPoints(result, {p00, p01, p10, p11});
    result.MinkowskiDifference(a, b);
    this->ExpectPoints(result, {m00, m01, m10, m11});
    result = a;
    result.MinkowskiDifference(b);
    this->ExpectPoints(result, {m00, m10, m01, m11});
    a.MinkowskiSum(b);
    this->ExpectPoints(a, {p00, p10, p01, p11});
    a.MinkowskiSum(none);
    this->ExpectPoints(a, none);
}

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

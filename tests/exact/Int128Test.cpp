// Where the 128-bit integer differs from those of compilers.

#include "../support/Bits.h"

#include <CorvexMaths/exact/Int128.h>

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

using Halmont::Orrin::CorvexMaths::Int128;

TEST(Int128Test, HasItsOwnWayWithEqualMagnitudesTheLeastValueDoublesAndAssignment)
{
    const Int128 least(LLONG_MIN, 0);
    const std::tuple<Int128, Int128, long long> quotients[] = {
        {-5, 5, 0}, {5, -5, 0}, {-5, -5, 1}, {-7, 2, -3}, {3, 7, 0}, {least, 3, 0}, {least, least, 1}, {9, least, 0}};
    for (const auto& [a, b, quotient] : quotients) EXPECT_TRUE(a / b == quotient) << a.lo << " / " << b.lo;
    try {
        FAIL() << (least / 0).lo;
    } catch (const char* message) {
        EXPECT_STREQ(message, "Int128 operator/: divide by zero");
    }
    // In the last two the high half is rounded before the low one, which could have decided a tie, is added.
    const Int128 below(-(1ll << 54) - 3, 0), above((1ll << 54) + 2, 1);
    const std::tuple<Int128, double> doubles[] = {
        {1, 1.0}, {-1, -0.0}, {-2, -1.0}, {{-1, 0}, -0x1p64}, {below, -0x1.0000000000001p118}, {above, 0x1p118}};
    for (const auto& [value, expected] : doubles)
        EXPECT_TRUE(CorvexTest::SameBits(value.AsDouble(), expected)) << expected;

    Int128 x(5, ~0ull);
    x += x;
    EXPECT_TRUE(x == Int128(11, ~0ull - 1));
    EXPECT_EQ(1 + (x = -3), -2) << "an assigned long long comes back as one";
}

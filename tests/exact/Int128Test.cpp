// The 128-bit integer against the compiler's own, and where it differs from that.

#include "../support/Bits.h"

#include <CorvexMaths/exact/Int128.h>

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <tuple>
#include <vector>

using Halmont::Orrin::CorvexMaths::Int128;
__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 Bits;

TEST(Int128Test, CalculatesAsTheCompilerDoes)
{
    static_assert(sizeof(Int128) == 16 && std::is_trivially_copyable_v<Int128>);
    const auto toBits = [](const Int128& x) { return static_cast<Bits>(x.hi) << 64 | x.lo; };
    const auto magnitude = [&](const Int128& x) { return x.hi < 0 ? -toBits(x) : toBits(x); };
    std::mt19937_64 random(3);
    SCOPED_TRACE("seed 3");
    std::vector<Int128> values = {
        0, 1, -1, 2, LLONG_MIN, LLONG_MAX, {1, 0}, {-1, 0}, {LLONG_MAX, ~0ull}, {LLONG_MIN, 1}};
    for (int i = 0; i < 200; ++i) {
        const Bits x = (static_cast<Bits>(random()) << 64 | random()) >> random() % 128;
        values.push_back({static_cast<long long>(x >> 64), static_cast<unsigned long long>(x)});
        if (i % 2 == 0) values.back() = -values.back();
    }
    for (const Int128& x : values) {
        for (const Int128& y : values) {
            SCOPED_TRACE(::testing::Message() << "seed 3, " << x.hi << ':' << x.lo << ", " << y.hi << ':' << y.lo);
            const Bits a = toBits(x), b = toBits(y), n = magnitude(x), d = magnitude(y);
            const Wide s = static_cast<Wide>(a), t = static_cast<Wide>(b);
            ASSERT_TRUE(toBits(x + y) == a + b && toBits(x - y) == a - b && toBits(-x) == -a);
            ASSERT_TRUE((x < y) == (s < t) && (x > y) == (s > t) && (x <= y) == (s <= t) && (x >= y) == (s >= t));
            ASSERT_TRUE((x == y) == (s == t) && (x != y) == (s != t));
            ASSERT_TRUE(toBits(Int128::Mul(x.hi, y.hi)) == static_cast<Bits>(static_cast<Wide>(x.hi) * y.hi));
            if (y == 0 || (n == d && x != y)) continue;
            // The remainder is less than the divisor.
            const Bits quotient = magnitude(x / y);
            ASSERT_TRUE(n - quotient * d < d && (quotient == 0 || (x / y < 0) == ((s < 0) != (t < 0))));
        }
    }
}

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

// The arithmetic for compilers without integers of 128 bits against the other.

#include <CorvexMaths/exact/internal/PortableWide.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace
{

using Halmont::Orrin::CorvexMaths::Int128;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

/// A word of few or many bits: 0 and all ones, powers of 2 and their neighbours, anything.
unsigned long long Word(std::mt19937_64& random)
{
    const unsigned long long bits = random() >> random() % 64;
    switch (random() % 4) {
    case 0:
        return (1ull << random() % 64) + random() % 3 - 1;
    case 1:
        return random() % 2 ? ~0ull : 0;
    default:
        return random() % 2 ? bits : ~bits;
    }
}

TEST(PortableWide, GivesTheBitsOfTheCompilersOwn)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const long long a = static_cast<long long>(Word(random)), b = static_cast<long long>(Word(random));
        EXPECT_EQ(Kernels::PortableProduct(a, b), Int128::Mul(a, b)) << a << " * " << b;

        const Int128 dividend(a & std::numeric_limits<long long>::max(), Word(random));
        const Int128 divisor(random() % 2 ? b & std::numeric_limits<long long>::max() : 0, Word(random));
        if (dividend <= divisor || divisor == Int128(0)) continue;
        EXPECT_EQ(Kernels::PortableQuotient(dividend, divisor), dividend / divisor)
            << dividend.hi << ' ' << dividend.lo;
    }
}

} // namespace

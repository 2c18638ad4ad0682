#include "../support/Types.h"

#include <cmath>
#include <limits>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class Case>
struct Vectors : ::testing::Test
{
    static constexpr unsigned int n = Case::dimension;
    static constexpr typename Case::T nan = std::numeric_limits<typename Case::T>::quiet_NaN();

    // The first components of the four.
    static typename Case::Vector Make(TVector4<typename Case::T> v) { return static_cast<typename Case::Vector>(v); }
};

} // namespace

TYPED_TEST_SUITE(Vectors, PointFamily, TypeNames);

TYPED_TEST(Vectors, LengthsAndProductsIncludeTheLastComponent)
{
    using T = typename TypeParam::T;
    // 1 is lost beside big, but not after big has gone: the sum runs from the left.
    const T big = T(8) / std::numeric_limits<T>::epsilon(), expected[] = {big, T(0), T(1)};
    EXPECT_EQ(this->Make({big, 1, -big, 1}) % this->Make({1, 1, 1, 1}), expected[this->n - 2]);

    auto v = this->Make({3, 0, 0, 0}), tiny = v * std::sqrt(std::numeric_limits<T>::min());
    v[this->n - 1] = 4;
    EXPECT_TRUE((v + v).DiffVectLen(v) == 5 && (v + v).DiffVectLenSquared(v) == 25);
    EXPECT_TRUE((TVector3<T>(1, 2, 7).DiffVectLen2D({4, 6, 100}) == 5 && TVector2<T>(2, 1).SignedArea({1, 3}) == 5));
    v.Normalise();
    EXPECT_TRUE(v[0] == T(3) / T(5) && v[this->n - 1] == T(4) / T(5));
    tiny.Normalise();
    EXPECT_NEAR(tiny[0], T(1), std::numeric_limits<T>::epsilon()) << "there is no tolerance";
}

TYPED_TEST(Vectors, TheFirstDifferenceDecidesTheOrderAndTolerancesAreInclusive)
{
    const auto infinity = std::numeric_limits<typename TypeParam::T>::infinity();
    for (unsigned int i = 0; i < this->n; ++i) {
        auto low = this->Make({typename TypeParam::T(-0.), 1, 2, 3}), high = this->Make({0, 1, 2, 3}), a = high;
        EXPECT_TRUE(low == high && !(low < high) && !(low > high));
        for (unsigned int later = i; later < this->n; ++later) low[later] = 9, high[later] = 8;
        low[i] = -5;
        EXPECT_TRUE(low < high && high > low && !(low > high) && !(high < low) && low != high) << i;
        low[i] = this->nan;
        EXPECT_TRUE(!(low < high) && !(low > high) && !(high < low) && !(high > low) && low != low) << i;
        EXPECT_FALSE(low.IsEqualTo(low, infinity)) << i;

        auto b = a;
        b[i] += typename TypeParam::T(0.5);
        EXPECT_TRUE(a.IsEqualTo(b, 0.5) && b.IsEqualTo(a, 0.5) && !a.IsEqualTo(b, 0.4375)) << i;
        b[i] = infinity;
        EXPECT_TRUE(b.IsEqualTo(b, 0) && !a.IsEqualTo(b, 9)) << i;
    }
}

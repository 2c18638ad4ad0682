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
    static_assert(sizeof(typename Case::Vector) == n * sizeof(typename Case::T));
    static_assert(std::is_trivially_copyable_v<typename Case::Vector>);

    // The first components of the four.
    static typename Case::Vector Make(TVector4<typename Case::T> v) { return static_cast<typename Case::Vector>(v); }
};

} // namespace

TYPED_TEST_SUITE(Vectors, PointFamily, TypeNames);

TYPED_TEST(Vectors, ArithmeticTakesEveryComponentBeforeItStores)
{
    using T = typename TypeParam::T;
    auto a = this->Make({-3, 0, 2, 6});
    a += a;
    a /= a[0];
    EXPECT_EQ(a, this->Make({1, 0, T(4) / T(-6), -2}));
    a *= a[0] - 3;
    EXPECT_EQ(-a, this->Make({2, 0, -(T(4) / T(3)), -4}));
    EXPECT_TRUE(std::signbit((-a)[1]) != std::signbit(a[1])) << "also of a zero";
}

TYPED_TEST(Vectors, LengthsAndProductsIncludeTheLastComponent)
{
    using T = typename TypeParam::T;
    // 1 is lost beside big, but not after big has gone: the sum runs from the left.
    const T big = T(8) / std::numeric_limits<T>::epsilon(), expected[] = {big, T(0), T(1)};
    EXPECT_EQ(this->Make({big, 1, -big, 1}) % this->Make({1, 1, 1, 1}), expected[this->n - 2]);

    auto v = this->Make({3, 0, 0, 0}), tiny = v * std::sqrt(std::numeric_limits<T>::min());
    v[this->n - 1] = 4;
    EXPECT_TRUE((v + v).DiffVectLen(v) == 5 && (v + v).DiffVectLenSquared(v) == 25);
    v.Normalise();
    EXPECT_TRUE(v[0] == T(3) / T(5) && v[this->n - 1] == T(4) / T(5));
    tiny.Normalise();
    EXPECT_NEAR(tiny[0], T(1), std::numeric_limits<T>::epsilon()) << "there is no tolerance";
}

TYPED_TEST(Vectors, TheFirstDifferenceDecidesTheOrder)
{
    for (unsigned int i = 0; i < this->n; ++i) {
        auto low = this->Make({typename TypeParam::T(-0.), 1, 2, 3}), high = this->Make({0, 1, 2, 3});
        EXPECT_TRUE(low == high && !(low < high) && !(low > high));
        for (unsigned int later = i; later < this->n; ++later) low[later] = 9, high[later] = 8;
        low[i] = -5;
        EXPECT_TRUE(low < high && high > low && !(low > high) && !(high < low) && low != high && !(low == high)) << i;
        low[i] = this->nan;
        EXPECT_TRUE(!(low < high) && !(low > high) && !(high < low) && !(high > low) && low != low) << i;
    }
}

TYPED_TEST(Vectors, EqualityWithinAToleranceIsInclusive)
{
    const auto infinity = std::numeric_limits<typename TypeParam::T>::infinity();
    for (unsigned int i = 0; i < this->n; ++i) {
        auto a = this->Make({1, 1, 1, 1}), b = a;
        b[i] = 1.5;
        EXPECT_TRUE(a.IsEqualTo(b, 0.5) && b.IsEqualTo(a, 0.5) && a.IsEqualTo(a, 0)) << i;
        b[i] = 1.625;
        EXPECT_FALSE(a.IsEqualTo(b, 0.5) || b.IsEqualTo(a, 0.5)) << i;
        b[i] = infinity;
        EXPECT_TRUE(b.IsEqualTo(b, 0) && !a.IsEqualTo(b, 9)) << i;
        b[i] = this->nan;
        EXPECT_FALSE(b.IsEqualTo(b, infinity)) << i;
    }
}

TYPED_TEST(Vectors, ConversionsFillTheNewComponents)
{
    using T = typename TypeParam::T;
    const T values[] = {1, 2, 3, 4};
    const TVector2<T> two(values);
    const TVector3<T> three(values);
    const TVector4<T> four(values);
    EXPECT_TRUE(TVector3<T>() == TVector3<T>(TVector2<T>()) && TVector4<T>() == TVector4<T>(TVector2<T>()));
    EXPECT_TRUE(TVector3<T>(two) == TVector3<T>(1, 2, 0) && TVector4<T>(two) == TVector4<T>(1, 2, 0, 1));
    EXPECT_TRUE(TVector4<T>(three) == TVector4<T>(1, 2, 3, 1) && TVector2<T>(three) == two);
    EXPECT_TRUE(TVector2<T>(four) == two && TVector3<T>(four) == three);
    static_assert(!std::is_convertible_v<TVector3<float>, TVector3<double>>);
}

TYPED_TEST(Vectors, CrossProductsAreRightHanded)
{
    using V = TVector3<typename TypeParam::T>;
    V v(1, 2, 3);
    EXPECT_EQ(v *= V(5, 7, 11), V(1, 4, -3));
    EXPECT_EQ(v *= v, V(0, 0, 0));
    EXPECT_EQ(V(1, 2, 7).DiffVectLen2D(V(4, 6, 100)), 5);
    EXPECT_EQ((TVector2<typename TypeParam::T>(2, 1).SignedArea({1, 3})), 5);
}

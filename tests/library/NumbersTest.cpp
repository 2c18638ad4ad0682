#include "tests/support/Bits.h"
#include "tests/support/Types.h"

#include <limits>

using namespace Halmont::Orrin::CorvexMaths::Numbers;
using CorvexTest::SameBits;

template <class T>
struct NumbersTest : testing::Test
{
    static constexpr T infinity = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    static constexpr T tolerance = commonTolerance<T>, least = std::numeric_limits<T>::denorm_min();
    static T Next(T value) { return std::nextafter(value, infinity); }
};
TYPED_TEST_SUITE(NumbersTest, CorvexTest::Scalars, CorvexTest::TypeNames);

TYPED_TEST(NumbersTest, ConstantsKeepTheValueOfTheirFloatButTheFullTurn)
{
    EXPECT_EQ(commonTolerance<TypeParam>, TypeParam(0x1.0c6f7ap-20));
    EXPECT_EQ(pivotGuard<TypeParam>, TypeParam(0x1.79ca1p-67));
    EXPECT_EQ(unsetBound<TypeParam>, TypeParam(0x1.fffffep+127));
    EXPECT_EQ(fullTurn<TypeParam>, TypeParam(sizeof(TypeParam) == 4 ? 0x1.921fb6p+2 : 0x1.921fb54442d18p+2));
}

TYPED_TEST(NumbersTest, ZeroTestIncludesItsToleranceAndRefusesNaN)
{
    using T = TypeParam;
    EXPECT_TRUE(IsZero(this->tolerance, this->tolerance) && IsZero(-this->tolerance, this->tolerance));
    EXPECT_FALSE(IsZero(this->Next(this->tolerance), this->tolerance));
    EXPECT_FALSE(IsZero(-this->Next(this->tolerance), this->tolerance));
    EXPECT_TRUE(IsZero(T(0), T(-1)) && IsZero(T(-0.0), this->nan)) << "exact zeros, whatever the tolerance";
    EXPECT_FALSE(IsZero(this->least, T(0)));
    EXPECT_FALSE(IsZero(this->nan, this->infinity));
}

TYPED_TEST(NumbersTest, NearTestIncludesItsToleranceAndEqualInfinities)
{
    using T = TypeParam;
    EXPECT_TRUE(IsNear(T(1), T(1.25), T(0.25)) && IsNear(T(1.25), T(1), T(0.25)));
    EXPECT_FALSE(IsNear(T(1), this->Next(T(1.25)), T(0.25)));
    EXPECT_TRUE(IsNear(this->infinity, this->infinity, T(0)));
    EXPECT_FALSE(IsNear(this->infinity, -this->infinity, T(1)));
    EXPECT_FALSE(IsNear(this->nan, this->nan, this->infinity));
}

TYPED_TEST(NumbersTest, ClampTouchesOnlyCosinesOutsideTheirRange)
{
    using T = TypeParam;
    EXPECT_EQ(ClampCosine(this->Next(T(1))), 1);
    EXPECT_EQ(ClampCosine(-this->infinity), -1);
    for (const T kept : {T(1), T(-1), T(-0.0), T(-0.75), this->nan}) EXPECT_TRUE(SameBits(ClampCosine(kept), kept));
}

TYPED_TEST(NumbersTest, ElementaryFunctionsGoThroughDouble)
{
    using T = TypeParam;
    const T x = T(0.3);
    const double wide = static_cast<double>(x); // widens exactly; only the result is rounded to T
    EXPECT_TRUE(SquareRoot(x) == static_cast<T>(std::sqrt(wide)) && Sine(x) == static_cast<T>(std::sin(wide)));
    EXPECT_TRUE(Cosine(x) == static_cast<T>(std::cos(wide)) && ArcCosine(x) == static_cast<T>(std::acos(wide)));
    EXPECT_TRUE(SameBits(Absolute(T(-0.0)), T(0)));
    EXPECT_TRUE(std::isnan(ArcCosine(this->Next(T(1)))));
}

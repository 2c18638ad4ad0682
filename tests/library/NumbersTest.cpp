#include "tests/support/Bits.h"
#include "tests/support/Types.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace Numbers = Halmont::Orrin::CorvexMaths::Numbers;
using CorvexTest::SameBits;

namespace
{

/// The scalar with the given bits.
template <class T, class Bits>
T FromBits(Bits bits)
{
    static_assert(sizeof(T) == sizeof(Bits));
    T value;
    std::memcpy(&value, &bits, sizeof(T));
    return value;
}

/// The value of T that the `float` of the given bits has.
template <class T>
T Widened(std::uint32_t bits)
{
    return static_cast<T>(FromBits<float>(bits));
}

template <class T>
T Next(T value)
{
    return std::nextafter(value, std::numeric_limits<T>::infinity());
}

} // namespace

template <class T>
struct NumbersTest : testing::Test
{
    static constexpr T infinity = std::numeric_limits<T>::infinity();
    static constexpr T nan = std::numeric_limits<T>::quiet_NaN();
};
TYPED_TEST_SUITE(NumbersTest, CorvexTest::Scalars, CorvexTest::TypeNames);

TYPED_TEST(NumbersTest, ConstantsKeepTheValueOfTheirFloat)
{
    using T = TypeParam;
    EXPECT_TRUE(SameBits(Numbers::commonTolerance<T>, Widened<T>(0x358637BDu)));
    EXPECT_TRUE(SameBits(Numbers::pivotGuard<T>, Widened<T>(0x1E3CE508u)));
    EXPECT_TRUE(SameBits(Numbers::unsetBound<T>, Widened<T>(0x7F7FFFFFu)));
}

TEST(NumbersTest, FullTurnIsRoundedToEachTypeByItself)
{
    EXPECT_TRUE(SameBits(Numbers::fullTurn<float>, FromBits<float>(std::uint32_t{0x40C90FDBu})));
    EXPECT_TRUE(SameBits(Numbers::fullTurn<double>, FromBits<double>(std::uint64_t{0x401921FB54442D18u})));
}

TYPED_TEST(NumbersTest, ZeroTestIncludesItsToleranceAndRefusesNaN)
{
    using T = TypeParam;
    const T tolerance = Numbers::commonTolerance<T>;
    const struct
    {
        const char* name;
        T value, tolerance;
        bool zero;
    } rows[] = {
        {"at the tolerance", tolerance, tolerance, true},
        {"at the tolerance, negative", -tolerance, tolerance, true},
        {"a step above", Next(tolerance), tolerance, false},
        {"a step below, negative", -Next(tolerance), tolerance, false},
        {"exact zero without tolerance", T(-0.0), T(0), true},
        {"exact zero, negative tolerance", T(0), T(-1), true},
        {"exact zero, tolerance NaN", T(0), this->nan, true},
        {"least value without tolerance", std::numeric_limits<T>::denorm_min(), T(0), false},
        {"NaN", this->nan, this->infinity, false},
    };
    for (const auto& row : rows) EXPECT_EQ(Numbers::IsZero(row.value, row.tolerance), row.zero) << row.name;
}

TYPED_TEST(NumbersTest, NearTestIncludesItsToleranceAndEqualInfinities)
{
    using T = TypeParam;
    const struct
    {
        const char* name;
        T a, b, tolerance;
        bool near;
    } rows[] = {
        {"at the tolerance", T(1), T(1.25), T(0.25), true},
        {"at the tolerance, turned round", T(1.25), T(1), T(0.25), true},
        {"a step beyond", T(1), Next(T(1.25)), T(0.25), false},
        {"zeros of both signs", T(0), T(-0.0), T(0), true},
        {"equal infinities", this->infinity, this->infinity, T(0), true},
        {"opposite infinities", this->infinity, -this->infinity, T(1), false},
        {"NaN with itself", this->nan, this->nan, this->infinity, false},
    };
    for (const auto& row : rows) EXPECT_EQ(Numbers::IsNear(row.a, row.b, row.tolerance), row.near) << row.name;
}

TYPED_TEST(NumbersTest, ClampTouchesOnlyCosinesOutsideTheirRange)
{
    using T = TypeParam;
    const struct
    {
        T cosine, clamped;
    } rows[] = {{Next(T(1)), T(1)}, {-Next(T(1)), T(-1)}, {this->infinity, T(1)}, {-this->infinity, T(-1)},
                {T(1), T(1)},       {T(-0.0), T(-0.0)},   {T(-0.75), T(-0.75)},   {this->nan, this->nan}};
    for (const auto& row : rows) EXPECT_TRUE(SameBits(Numbers::ClampCosine(row.cosine), row.clamped)) << row.cosine;
}

TYPED_TEST(NumbersTest, ElementaryFunctionsGoThroughDouble)
{
    using T = TypeParam;
    // A spread of magnitudes; each widens exactly, and only the result is rounded to T.
    for (T x = T(1) / 1024; x < T(100); x *= T(1.0625)) {
        const double wide = static_cast<double>(x);
        EXPECT_TRUE(SameBits(Numbers::SquareRoot(x), static_cast<T>(std::sqrt(wide)))) << x;
        EXPECT_TRUE(SameBits(Numbers::Sine(x), static_cast<T>(std::sin(wide)))) << x;
        EXPECT_TRUE(SameBits(Numbers::Cosine(x), static_cast<T>(std::cos(wide)))) << x;
        EXPECT_TRUE(SameBits(Numbers::ArcCosine(x / 128), static_cast<T>(std::acos(wide / 128)))) << x;
    }
    EXPECT_TRUE(SameBits(Numbers::Absolute(T(-0.0)), T(0)));
    EXPECT_TRUE(std::isnan(Numbers::ArcCosine(Next(T(1)))));
}

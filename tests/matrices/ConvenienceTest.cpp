#include "Samples.h"

#include <new>
#include <type_traits>
#include <utility>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct MatrixConvenience : ::testing::Test
{};
TYPED_TEST_SUITE(MatrixConvenience, Scalars, TypeNames);

TYPED_TEST(MatrixConvenience, MovesHandOverTheBlockAndLeaveAnEmptyMatrix)
{
    using Matrix = TMatrixMxN<TypeParam>;
    static_assert(std::is_nothrow_move_constructible_v<Matrix> && std::is_nothrow_move_assignable_v<Matrix>);
    auto const content = Make<TypeParam>(2, 3, {1, 2, 3, 4, 5, 6});
    Matrix source = content, assigned(1, 1), other = -content;
    TypeParam* const row = source[1];
    Matrix constructed(std::move(source));
    EXPECT_TRUE(constructed[1] == row && constructed == content && source == Matrix());
    EXPECT_TRUE((source = content) == content) << "it is usable";
    assigned = std::move(constructed);
    EXPECT_TRUE(assigned[1] == row && assigned == content && constructed == Matrix());
    assigned = std::move(assigned);
    EXPECT_TRUE(assigned[1] == row && assigned == content) << "to itself";
    assigned = std::move(other);
    EXPECT_TRUE(assigned[1] == row && assigned == -content && other == Matrix()) << "of equal sizes, as a copy";
    EXPECT_EQ(assigned = Matrix(), Matrix());
}

TYPED_TEST(MatrixConvenience, StaysAsItWasWhereMemoryRunsOut)
{
#ifdef __has_feature
    if (__has_feature(address_sanitizer)) GTEST_SKIP() << "its allocator ends the program instead of throwing";
#endif
    auto matrix = Make<TypeParam>(1, 2, {1, 2});
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_THROW(matrix.AssignMemory(~0u, ~0u), std::bad_alloc);
        EXPECT_EQ(matrix, Make<TypeParam>(1, 2, {1, 2}));
    }
}

TYPED_TEST(MatrixConvenience, TakesAScalarOnTheLeftFindsElementsAndPadsByTheIdentity)
{
    using T = TypeParam;
    T const scalar = T(1) / T(3);
    TMatrix3x3<T> fixed(1, 2, 3, -0.0, 5, 6, 7, 8, 9);
    auto sized = Make<T>(1, 3, {T(0.1), -0.0, std::nan("")});
    EXPECT_TRUE(scalar * fixed == fixed * scalar && SameElements(scalar * sized, sized * scalar));
    TVector4<T> const vector(T(0.1), T(0.7), 3, 4);
    EXPECT_TRUE(scalar * vector == vector * scalar && 2 * vector == vector + vector);
    EXPECT_EQ((scalar * TQuaternion<T>(1, 2, 3, 4))[3], T(4) * scalar);

    EXPECT_TRUE(&std::as_const(fixed)(1, 2) == &fixed[1][2] && &std::as_const(sized)(0, 2) == &sized[0][2]);
    fixed(1, 0) = T(4), sized(0, 2) = T(9);
    EXPECT_TRUE(fixed[1][0] == T(4) && sized[0][2] == T(9));
    fixed *= Make<T>(1, 2, {10, 1});
    EXPECT_EQ(fixed, TMatrix3x3<T>(10, 3, 3, 40, 9, 6, 70, 15, 9));
}

TYPED_TEST(MatrixConvenience, ConvertsBetweenScalarsOnRequestAlone)
{
    using T = TypeParam;
    using S = std::conditional_t<std::is_same_v<T, float>, double, float>;
    S const third = S(1) / S(3);
    T const own = static_cast<T>(third);
    auto const expect = [](auto const& source, auto const& expected) {
        using Expected = std::decay_t<decltype(expected)>;
        static_assert(!std::is_convertible_v<decltype(source), Expected>);
        EXPECT_EQ(Expected(source), expected);
    };
    expect(TVector2<S>(1, third), TVector2<T>(1, own));
    expect(TVector3<S>(1, 2, third), TVector3<T>(1, 2, own));
    expect(TVector4<S>(1, 2, 3, third), TVector4<T>(1, 2, 3, own));
    expect(TMatrix2x2<S>(1, 2, 3, third), TMatrix2x2<T>(1, 2, 3, own));
    expect(Make<S>(1, 2, {2, third}), Make<T>(1, 2, {2, own}));
    EXPECT_EQ(TComplex<T>(TComplex<S>(1, third)).imaginary, own);
    EXPECT_EQ(TQuaternion<T>(TQuaternion<S>(1, 2, 3, third)).z, own);
}

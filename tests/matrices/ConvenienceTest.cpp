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
    using T = TypeParam;
    using Matrix = TMatrixMxN<T>;
    static_assert(std::is_nothrow_move_constructible_v<Matrix> && std::is_nothrow_move_assignable_v<Matrix>);
    auto const content = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    Matrix source = content;
    T* const row = source[1];
    Matrix constructed(std::move(source));
    EXPECT_TRUE(constructed[1] == row && constructed == content);
    EXPECT_TRUE(source == Matrix()) << "it is empty, and usable:";
    source = content;
    EXPECT_EQ(source, content);

    Matrix assigned(1, 1);
    assigned = std::move(constructed);
    EXPECT_TRUE(assigned[1] == row && assigned == content && constructed == Matrix());
    assigned = std::move(assigned);
    EXPECT_TRUE(assigned[1] == row && assigned == content) << "to itself";

    Matrix other = -content;
    assigned = std::move(other);
    EXPECT_TRUE(assigned[1] == row && assigned == -content && other == Matrix()) << "of equal sizes, as a copy";
    assigned = Matrix();
    EXPECT_EQ(assigned, Matrix());
}

TYPED_TEST(MatrixConvenience, StaysAsItWasWhereMemoryRunsOut)
{
#ifdef __has_feature
    if (__has_feature(address_sanitizer)) GTEST_SKIP() << "its allocator ends the program instead of throwing";
#endif
    auto const content = Make<TypeParam>(1, 2, {1, 2});
    auto matrix = content;
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_THROW(matrix.AssignMemory(~0u, ~0u), std::bad_alloc);
        EXPECT_EQ(matrix, content);
    }
}

TYPED_TEST(MatrixConvenience, TakesAScalarOnTheLeftWithTheSameBits)
{
    using T = TypeParam;
    T const scalar = T(1) / T(3);
    TMatrix3x3<T> const fixed(1, 2, 3, -0.0, 5, 6, 7, 8, 9);
    auto const sized = Make<T>(1, 3, {T(0.1), -0.0, std::nan("")});
    EXPECT_EQ(scalar * fixed, fixed * scalar);
    EXPECT_TRUE(SameElements(scalar * sized, sized * scalar));
    TVector4<T> const vector(T(0.1), T(0.7), 3, 4);
    EXPECT_TRUE(scalar * vector == vector * scalar && 2 * vector == vector + vector);
    EXPECT_EQ((scalar * TQuaternion<T>(1, 2, 3, 4))[3], T(4) * scalar);
}

TYPED_TEST(MatrixConvenience, ConvertsBetweenScalarsOnRequestAlone)
{
    using T = TypeParam;
    using S = std::conditional_t<std::is_same_v<T, float>, double, float>;
    static_assert(!std::is_convertible_v<TVector3<S>, TVector3<T>> &&
                  !std::is_convertible_v<TMatrixMxN<S>, TMatrixMxN<T>>);
    static_assert(!std::is_convertible_v<TMatrix4x4<S>, TMatrix4x4<T>>);
    S const third = S(1) / S(3);
    T const converted = static_cast<T>(third);
    EXPECT_EQ(TVector2<T>(TVector2<S>(1, third)), TVector2<T>(1, converted));
    EXPECT_EQ(TVector3<T>(TVector3<S>(1, 2, third)), TVector3<T>(1, 2, converted));
    EXPECT_EQ(TVector4<T>(TVector4<S>(1, 2, 3, third)), TVector4<T>(1, 2, 3, converted));
    EXPECT_EQ(TMatrix2x2<T>(TMatrix2x2<S>(1, 2, 3, third)), TMatrix2x2<T>(1, 2, 3, converted));
    EXPECT_EQ(TMatrixMxN<T>(Make<S>(1, 2, {2, third})), Make<T>(1, 2, {2, converted}));
    EXPECT_EQ(TComplex<T>(TComplex<S>(1, third)).imaginary, converted);
    EXPECT_EQ(TQuaternion<T>(TQuaternion<S>(1, 2, 3, third)).z, converted);
}

TYPED_TEST(MatrixConvenience, FindsElementsByRowAndColumn)
{
    using T = TypeParam;
    TMatrix3x3<T> fixed;
    fixed(1, 2) = T(5);
    auto sized = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    sized(0, 2) = T(9);
    EXPECT_TRUE(&std::as_const(fixed)(1, 2) == &fixed[1][2] && fixed[1][2] == T(5));
    EXPECT_TRUE(&std::as_const(sized)(0, 2) == &sized[0][2] && sized[0][2] == T(9));
}

TYPED_TEST(MatrixConvenience, PadsASmallerMatrixByTheIdentity)
{
    using T = TypeParam;
    TMatrix3x3<T> fixed(1, 2, 3, 4, 5, 6, 7, 8, 9);
    fixed *= Make<T>(1, 2, {10, 1});
    EXPECT_EQ(fixed, TMatrix3x3<T>(10, 3, 3, 40, 9, 6, 70, 15, 9));
}

#include "Samples.h"

#include <new>

using namespace CorvexTest;
using Maths::TMatrix2x2;
using Maths::TMatrix3x3;
using Maths::TMatrix4x4;
using Maths::TMatrixMxN;

template <class T>
class MatrixMxN : public ::testing::Test
{};
TYPED_TEST_SUITE(MatrixMxN, Scalars, TypeNames);

TYPED_TEST(MatrixMxN, KeepsItsBlockWhileTheSizesStay)
{
    using T = TypeParam;
    auto matrix = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    T* const row = matrix[1];
    matrix.AssignMemory(2, 3);
    EXPECT_EQ(matrix[1], row);
    EXPECT_EQ(matrix[1][2], T(6));
    matrix = Make<T>(2, 3, {6, 5, 4, 3, 2, 1});
    EXPECT_EQ(matrix[1], row);
    EXPECT_EQ(row[0], T(3));

    TMatrixMxN<T> const copy(matrix);
    matrix = *&matrix;
    matrix[0][0] = T(9);
    EXPECT_EQ(copy[0][0], T(6));
    EXPECT_EQ(copy[0] + 3, copy[1]) << "one block, row by row";
    matrix.AssignMemory(0, 5);
    EXPECT_EQ(matrix.GetN(), 5u);
    TMatrixMxN<T> const rowless(matrix);
    EXPECT_TRUE(rowless == matrix && rowless != TMatrixMxN<T>());
    EXPECT_TRUE(TMatrixMxN<T>() == TMatrixMxN<T>(0, 0));
}

TYPED_TEST(MatrixMxN, LeavesImpossibleSizesToTheAllocator)
{
    using T = TypeParam;
#ifdef __has_feature
    if (__has_feature(address_sanitizer)) GTEST_SKIP() << "its allocator ends the program instead of throwing";
#endif
    unsigned int const most = ~0u;
    EXPECT_THROW(TMatrixMxN<T>(most, most), std::bad_alloc);
    auto matrix = Make<T>(1, 1, {1});
    EXPECT_THROW(matrix.AssignMemory(most, most), std::bad_alloc);
    matrix.AssignMemory(1, 1);
    matrix.ToIdentity();
    EXPECT_EQ(matrix[0][0], T(1));
}

TYPED_TEST(MatrixMxN, TakesDefinedContentAndTransposes)
{
    using T = TypeParam;
    auto matrix = Make<T>(2, 3, {9, 9, 9, 9, 9, 9});
    matrix.ToIdentity();
    EXPECT_EQ(matrix, Make<T>(2, 3, {1, 0, 0, 0, 1, 0}));
    matrix.ToNull();
    EXPECT_EQ(matrix, Make<T>(2, 3, {0, 0, 0, 0, 0, 0}));
    matrix = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    matrix.Transpose();
    EXPECT_EQ(matrix, Make<T>(3, 2, {1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(matrix[0] + 2, matrix[1]);
    matrix = Make<T>(2, 2, {1, 2, 3, 4});
    T* const row = matrix[0];
    matrix.Transpose();
    EXPECT_EQ(matrix, Make<T>(2, 2, {1, 3, 2, 4}));
    EXPECT_EQ(matrix[0], row) << "a square matrix turns in place";
}

TYPED_TEST(MatrixMxN, ComparesSizesAndElementsExactly)
{
    using T = TypeParam;
    auto const a = Make<T>(2, 3, {0, 2, 3, 4, 5, 6});
    EXPECT_TRUE(a == Make<T>(2, 3, {-0.0, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(a != Make<T>(3, 2, {0, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(a != Make<T>(2, 3, {0, 2, 3, 4, 5, 7}));
    auto const odd = Make<T>(1, 2, {1, std::nan("")});
    EXPECT_FALSE(odd == odd);
}

TYPED_TEST(MatrixMxN, ComputesByElementOverItsOwnSizes)
{
    using T = TypeParam;
    auto a = Make<T>(2, 2, {1, 2, 3, 4});
    auto larger = Make<T>(3, 3, {10, 20, 99, 30, 40, 99, 99, 99, 99});
    EXPECT_EQ(a + larger, Make<T>(2, 2, {11, 22, 33, 44}));
    EXPECT_EQ(a - larger, Make<T>(2, 2, {-9, -18, -27, -36}));
    EXPECT_EQ(a += larger, Make<T>(2, 2, {11, 22, 33, 44}));
    EXPECT_EQ(a -= larger, Make<T>(2, 2, {1, 2, 3, 4}));
    EXPECT_TRUE(SameElements(Make<T>(2, 2, {-0.0, -0.0, -0.0, -0.0}), -(a - a)));
    EXPECT_EQ(a * T(2), Make<T>(2, 2, {2, 4, 6, 8}));
    for (unsigned int c = 0; c < 2; ++c) EXPECT_EQ((a / T(3))[1][c], T(3 + c) / T(3));
    EXPECT_EQ(a *= a[0][1], Make<T>(2, 2, {2, 4, 6, 8}));
    EXPECT_EQ(a /= a[0][0], Make<T>(2, 2, {1, 2, 3, 4}));
}

TYPED_TEST(MatrixMxN, MeetsFixedMatricesInItsUpperLeftBlock)
{
    using T = TypeParam;
    TMatrix2x2<T> two(10, 20, 30, 40);
    TMatrix3x3<T> three;
    TMatrix4x4<T> four;
    auto a = Make<T>(3, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    EXPECT_EQ(a + two, TMatrix2x2<T>(11, 22, 35, 46));
    EXPECT_EQ(a - two, TMatrix2x2<T>(-9, -18, -25, -34));
    EXPECT_EQ(a += two, Make<T>(3, 4, {11, 22, 3, 4, 35, 46, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(a -= two, Make<T>(3, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(a + three, TMatrix3x3<T>(2, 2, 3, 5, 7, 7, 9, 10, 12));
    EXPECT_EQ(a - three, TMatrix3x3<T>(0, 2, 3, 5, 5, 7, 9, 10, 10));
    EXPECT_EQ(a * four, a);
    // The fixed matrix brings its order as the inner length: the result takes its width from it.
    auto tall = Make<T>(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(tall * two, Make<T>(3, 2, {70, 100, 150, 220, 230, 340}));
    auto wider = Make<T>(1, 4, {1, 2, 3, 4});
    EXPECT_EQ(wider *= three, Make<T>(1, 3, {1, 2, 3}));
}

TYPED_TEST(MatrixMxN, ChecksTheSizesOfAProductButNotInPlace)
{
    using T = TypeParam;
    auto a = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    auto b = Make<T>(3, 1, {1, 10, 100});
    EXPECT_EQ((b * b).GetM(), 0u);
    EXPECT_EQ((a * a).GetN(), 0u);
    EXPECT_EQ(a * b, Make<T>(2, 1, {321, 654}));
    EXPECT_EQ(a *= b, Make<T>(2, 1, {321, 654}));
    // Rows of the left operand that are too long are read as far as the argument has rows.
    auto shorter = Make<T>(2, 2, {1, 0, 0, 2});
    auto longer = Make<T>(1, 3, {5, 7, 9});
    EXPECT_EQ(longer *= shorter, Make<T>(1, 2, {5, 14}));
}

TYPED_TEST(MatrixMxN, ConvertsItsOverlapOverTheIdentity)
{
    using T = TypeParam;
    EXPECT_EQ(TMatrix3x3<T>(Make<T>(1, 1, {5})), TMatrix3x3<T>(5, 0, 0, 0, 1, 0, 0, 0, 1));
    EXPECT_EQ(TMatrix2x2<T>(Make<T>(1, 3, {5, 6, 7})), TMatrix2x2<T>(5, 6, 0, 1));
    EXPECT_EQ(TMatrix4x4<T>(Make<T>(5, 1, {2, 3, 4, 5, 6})),
              TMatrix4x4<T>(2, 0, 0, 0, 3, 1, 0, 0, 4, 0, 1, 0, 5, 0, 0, 1));
    EXPECT_EQ(TMatrix4x4<T>(TMatrixMxN<T>()), TMatrix4x4<T>());
}

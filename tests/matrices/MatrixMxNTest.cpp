#include "Samples.h"

#include <new>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct MatrixMxN : ::testing::Test
{};
TYPED_TEST_SUITE(MatrixMxN, Scalars, TypeNames);

TYPED_TEST(MatrixMxN, KeepsItsBlockWhileTheSizesStay)
{
    using T = TypeParam;
    auto matrix = Make<T>(2, 3, {1, 2, 3, 4, 5, 6});
    T* const row = matrix[1];
    matrix.AssignMemory(2, 3);
    EXPECT_TRUE(matrix[1] == row && row[2] == T(6));
    matrix = Make<T>(2, 3, {6, 5, 4, 3, 2, 1});
    EXPECT_TRUE(matrix[1] == row && row[0] == T(3));
    TMatrixMxN<T> const copy(matrix);
    matrix = *&matrix;
    matrix[0][0] = T(9);
    EXPECT_TRUE(copy[0][0] == T(6) && copy[0] + 3 == copy[1]) << "one block, row by row";
    EXPECT_TRUE(TMatrixMxN<T>(0, 5) == TMatrixMxN<T>(0, 5) && TMatrixMxN<T>(0, 5) != TMatrixMxN<T>());
}

TYPED_TEST(MatrixMxN, ChecksTheSizesOfAProductButNotInPlace)
{
    using T = TypeParam;
    auto a = Make<T>(2, 3, {1, 2, 3, 4, 5, 6}), b = Make<T>(3, 1, {1, 10, 100}), longer = Make<T>(1, 3, {5, 7, 9});
    EXPECT_TRUE((b * b).GetM() == 0 && (a * a).GetN() == 0);
    EXPECT_EQ(a * b, Make<T>(2, 1, {321, 654}));
    // Rows of the left operand that are too long are read as far as the argument has rows; likewise by a fixed matrix.
    auto shorter = Make<T>(2, 2, {1, 0, 0, 2});
    TMatrix2x2<T> fixed = shorter;
    EXPECT_EQ(a *= fixed, Make<T>(2, 2, {1, 4, 4, 10}));
    EXPECT_EQ(longer *= shorter, Make<T>(1, 2, {5, 14}));
}

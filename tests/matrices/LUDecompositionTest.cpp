#include "Samples.h"
#include "tests/support/plain/PlainLU.h"

#include <CorvexMaths/matrices/PanelSolve.h>

using namespace CorvexTest;
using Maths::TMatrix2x2;
using Maths::TMatrix3x3;
using Maths::TMatrix4x4;
using Maths::TMatrixMxN;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

template <class T>
class LUDecomposition : public ::testing::Test
{};
TYPED_TEST_SUITE(LUDecomposition, Scalars, TypeNames);

/// Holds decomposition, solve and inverse of one matrix, of fixed or of run-time size, against the plain forms.
template <class T, class M>
void ExpectPlainBits(M matrix, std::mt19937& random, bool compareInverse)
{
    int const order = static_cast<int>(matrix.GetM());
    auto const size = static_cast<std::size_t>(order);
    Rows<T> const original(matrix);
    Rows<T> expected(matrix);
    std::vector<int> plainPivots(size), pivots(size);
    std::vector<T> scale(size), b(size), plainX(size), x(size);
    T plainParity, parity;
    bool const plain = PlainLUDRows(*expected, plainPivots.data(), scale.data(), &plainParity, order);
    M lu(matrix);
    ASSERT_EQ(matrix.LUD(&lu, pivots.data(), &parity), plain);
    EXPECT_TRUE(SameElements(expected, lu));
    EXPECT_EQ(pivots, plainPivots);
    EXPECT_EQ(parity, plainParity);
    if (plain) {
        // Right-hand sides with leading zeros, and one with a value that is not finite.
        for (std::size_t zeros = 0; zeros <= size; zeros += 1 + size / 3) {
            for (std::size_t i = 0; i < size; ++i) b[i] = i < zeros ? T(0) : T(int(random() % 9) - 4);
            if (zeros == 0 && size != 0) b[size / 2] = std::numeric_limits<T>::infinity();
            PlainBackSubRows<T>(*expected, plainPivots.data(), b.data(), plainX.data(), order);
            M::BackSub(lu, pivots.data(), b.data(), x.data());
            for (std::size_t i = 0; i < size; ++i) EXPECT_TRUE(SameBits(plainX[i], x[i])) << i;
        }
    }
    if (!compareInverse) return;
    Rows<T> inverse(original);
    if (plain) PlainInvertRows<T>(*inverse, *expected, plainPivots.data(), order);
    EXPECT_EQ(matrix.Invert(), plain && order != 0);
    EXPECT_TRUE(SameElements(inverse, matrix));
}

TYPED_TEST(LUDecomposition, HasTheBitsOfCroutsOrder)
{
    using T = TypeParam;
    std::mt19937 random(41);
    SCOPED_TRACE("seed 41");
    for (unsigned int order = 0; order <= 130; order = order < 40 ? order + 1 : order + 45) {
        for (Content const content : contents) {
            SCOPED_TRACE(::testing::Message() << "order " << order << ", content " << content);
            TMatrixMxN<T> matrix(order, order);
            Fill(matrix, content, random);
            ExpectPlainBits<T>(matrix, random, true);
        }
    }
}

TYPED_TEST(LUDecomposition, HasTheBitsOfCroutsOrderAtFixedOrders)
{
    using T = TypeParam;
    std::mt19937 random(42);
    SCOPED_TRACE("seed 42");
    auto const check = [&random](auto matrix, Content content) {
        unsigned int const order = matrix.GetM();
        TMatrixMxN<T> dynamic(order, order);
        Fill(dynamic, content, random);
        matrix = dynamic;
        T const determinant = matrix.Determinant();
        SCOPED_TRACE(::testing::Message() << "order " << order << ", content " << content);
        ExpectPlainBits<T>(matrix, random, !(std::fabs(determinant) <= T(1e-6f)));
    };
    for (unsigned int round = 0; round < 20; ++round) {
        for (Content const content : contents) {
            check(TMatrix2x2<T>(), content);
            check(TMatrix3x3<T>(), content);
            check(TMatrix4x4<T>(), content);
        }
    }
}

// A multiplier that is not finite must not touch the columns whose forward sums begin below it.
TYPED_TEST(LUDecomposition, SolvesPanelsAlikeAtEveryRegisterWidth)
{
    using T = TypeParam;
    std::mt19937 random(43);
    SCOPED_TRACE("seed 43");
    constexpr unsigned int order = 50, width = Kernels::panelBytes / sizeof(T);
    for (Content const content : {"uniform", "infinite", "NaN", "mixed"}) {
        SCOPED_TRACE(content.data());
        TMatrixMxN<T> factors(order, order);
        Fill(factors, content, random);
        Rows<T> lu(factors), inverse(order, order);
        std::vector<int> pivots(order);
        for (unsigned int i = 0; i < order; ++i) pivots[i] = int(i);
        PlainInvertRows<T>(*inverse, *lu, pivots.data(), int(order));
        for (unsigned int q = 0; q < order; q += width) {
            Rows<T> narrow(order, width), wide(order, width);
            Kernels::SolvePanel<T, 16>(narrow[0], *lu, order, q);
            Kernels::SolvePanel<T, 32>(wide[0], *lu, order, q);
            for (unsigned int i = 0; i < order; ++i)
                for (unsigned int l = 0; l < width && q + l < order; ++l)
                    EXPECT_TRUE(SameBits(inverse[i][q + l], narrow[i][l]) && SameBits(inverse[i][q + l], wide[i][l]))
                        << i << ", " << q + l;
        }
    }
}

TYPED_TEST(LUDecomposition, TakesTheLastOfEqualMeritsAndGuardsZeroPivots)
{
    using T = TypeParam;
    T const guard = static_cast<T>(1e-20f);
    TMatrix2x2<T> lu;
    int pivots[2];
    T parity;
    ASSERT_TRUE(TMatrix2x2<T>(1, 0, 1, 1).LUD(&lu, pivots, &parity));
    EXPECT_EQ(pivots[0], 1);
    EXPECT_EQ(parity, T(-1));

    TMatrix2x2<T> ones(1, 1, 1, 1);
    ASSERT_TRUE(ones.LUD(&lu, pivots, &parity));
    EXPECT_EQ(lu, TMatrix2x2<T>(1, 1, 1, guard));
    EXPECT_EQ(parity, T(-1));
    EXPECT_FALSE(ones.Invert());
    auto dynamic = Make<T>(2, 2, {1, 1, 1, 1});
    EXPECT_EQ(dynamic.Determinant(), -guard);
    EXPECT_TRUE(dynamic.Invert());
    EXPECT_EQ(dynamic[0][0], T(-1) / guard);
    EXPECT_EQ(dynamic[1][0], T(1) / guard);

    ASSERT_TRUE(ones.LUD(&ones, pivots, &parity)) << "the factors may replace the matrix";
    EXPECT_EQ(ones[1][1], guard);
}

TYPED_TEST(LUDecomposition, KeepsThePivotRowOverAColumnOfNaN)
{
    using T = TypeParam;
    T const nan = std::numeric_limits<T>::quiet_NaN();
    TMatrix3x3<T> lu;
    int pivots[3];
    T parity;
    // The first column's pivot is its own row 0; the second column has no merit and swaps row 0 again.
    ASSERT_TRUE(TMatrix3x3<T>(4, nan, 0, 1, nan, 4, 1, nan, 8).LUD(&lu, pivots, &parity));
    EXPECT_EQ(pivots[0], 0);
    EXPECT_EQ(pivots[1], 0);
    EXPECT_EQ(lu[1][0], T(4));
}

TYPED_TEST(LUDecomposition, FailsOnRowsOfZerosAndOnOtherShapes)
{
    using T = TypeParam;
    TMatrix4x4<T> zero;
    zero.ToNull();
    TMatrix4x4<T> out;
    EXPECT_EQ(zero.Determinant(), T(0));
    EXPECT_FALSE(zero.Invert(&out));
    EXPECT_EQ(out, zero);

    auto singular = Make<T>(2, 2, {1, 2, 0, 0});
    auto wide = Make<T>(1, 2, {1, 2});
    TMatrixMxN<T> lu, copy;
    int* pivots = nullptr;
    T parity = T(5);
    EXPECT_FALSE(wide.LUD(&lu, &pivots, &parity));
    EXPECT_EQ(parity, T(5));
    EXPECT_EQ(lu.GetM(), 0u);
    EXPECT_EQ(wide.Determinant(), T(0));
    EXPECT_FALSE(wide.Invert(&copy));
    EXPECT_EQ(copy, wide);
    EXPECT_FALSE(singular.LUD(&lu, &pivots, &parity));
    EXPECT_EQ(pivots, nullptr);
    EXPECT_EQ(parity, T(1));
    EXPECT_EQ(singular.Determinant(), T(0));
    EXPECT_FALSE(singular.Invert());
    EXPECT_EQ(singular, Make<T>(2, 2, {1, 2, 0, 0}));

    TMatrixMxN<T> empty;
    EXPECT_EQ(empty.Determinant(), T(1));
    EXPECT_FALSE(empty.Invert());
}

TYPED_TEST(LUDecomposition, MeasuresTheDeterminantOnlyAtFixedOrders)
{
    using T = TypeParam;
    T const tolerance = static_cast<T>(1e-6f);
    TMatrix2x2<T> small(T(1e-4), 0, 0, T(1e-4)), at(1, 0, 0, tolerance);
    TMatrix2x2<T> above(1, 0, 0, std::nextafter(tolerance, T(1)));
    TMatrix4x4<T> four;
    EXPECT_FALSE(small.Invert());
    EXPECT_FALSE(at.Invert());
    EXPECT_TRUE(above.Invert());
    four[3][3] = -tolerance;
    EXPECT_FALSE(four.Invert());
    EXPECT_EQ(four[3][3], -tolerance);
    auto dynamic = Make<T>(2, 2, {1e-4, 0, 0, 1e-4});
    EXPECT_TRUE(dynamic.Invert());
    EXPECT_EQ(dynamic[1][1], T(1) / T(1e-4));
}

TYPED_TEST(LUDecomposition, HandsOutArraysOfItsOwn)
{
    using T = TypeParam;
    auto const matrix = Make<T>(3, 3, {0, 2, 0, 0, 0, 4, 8, 0, 0});
    TMatrixMxN<T> lu;
    int* pivots = nullptr;
    T* x = nullptr;
    T const b[] = {2, 4, 8};
    T parity;
    ASSERT_TRUE(matrix.LUD(&lu, &pivots, &parity));
    TMatrixMxN<T>::BackSub(lu, pivots, b, &x);
    for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(x[i], T(1));
    EXPECT_EQ(matrix.Determinant(), T(64));
    delete[] pivots;
    delete[] x;
}

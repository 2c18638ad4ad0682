// Factors, solutions and eigenvectors where they fail or tie, and what they leave then.

#include "Samples.h"

#include <CorvexMaths/matrices/internal/PanelSolve.h>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct LUDecomposition : ::testing::Test
{};
TYPED_TEST_SUITE(LUDecomposition, Scalars, TypeNames);

// The processor decides which register width runs. A multiplier that is not finite must not touch the columns whose
// forward sums begin below it.
TYPED_TEST(LUDecomposition, SolvesPanelsAlikeAtEveryRegisterWidth)
{
    using T = TypeParam;
    constexpr unsigned int order = 50, width = Kernels::panelWidth<T>;
    std::mt19937 random(41);
    for (Content const content : {"uniform", "infinite", "mixed"}) {
        SCOPED_TRACE("seed 41, " + std::string(content));
        TMatrixMxN<T> factors(order, order);
        Fill(factors, content, random);
        Rows<T> lu(factors), panels[] = {{order, width}, {order, width}};
        std::vector<int> pivots(order);
        for (unsigned int i = 0; i < order; ++i) pivots[i] = int(i);
        for (unsigned int q = 0; q < order; q += width) {
            Kernels::SolvePanel<T, 16, width>(panels[0][0], *lu, order, q);
            Kernels::SolvePanel<T, 32, width>(panels[1][0], *lu, order, q);
            EXPECT_TRUE(SameElements(panels[0], panels[1])) << q;
            std::vector<T> unit(order), x(order);
            unit[q] = T(1);
            TMatrixMxN<T>::BackSub(factors, pivots.data(), unit.data(), x.data());
            for (unsigned int i = 0; i < order; ++i) EXPECT_TRUE(SameBits(x[i], panels[0][i][0])) << q << ' ' << i;
        }
    }
}

TYPED_TEST(LUDecomposition, TakesTheLastOfEqualMeritsAndGuardsZeroPivots)
{
    using T = TypeParam;
    T const guard = static_cast<T>(1e-20f);
    int pivots[2];
    T parity;
    TMatrix2x2<T> ones(1, 1, 1, 1);
    EXPECT_FALSE(ones.Invert());
    ASSERT_TRUE(ones.LUD(&ones, pivots, &parity)) << "the factors may replace the matrix";
    EXPECT_TRUE(ones == TMatrix2x2<T>(1, 1, 1, guard) && pivots[0] == 1 && parity == -1) << "the last of equal merits";
    auto dynamic = Make<T>(2, 2, {1, 1, 1, 1});
    EXPECT_TRUE(dynamic.Determinant() == -guard && dynamic.Invert() && dynamic[0][0] == -1 / guard);
}

TYPED_TEST(LUDecomposition, FailsOnRowsOfZerosAndOnOtherShapes)
{
    using T = TypeParam;
    TMatrix4x4<T> zero;
    zero.ToNull();
    EXPECT_TRUE(zero.Determinant() == 0 && !zero.Invert());
    auto singular = Make<T>(2, 2, {1, 2, 0, 0}), wide = Make<T>(1, 2, {1, 2});
    TMatrixMxN<T> lu, copy, empty;
    int* pivots = nullptr;
    int fixedPivots[4];
    T parity = T(5);
    EXPECT_FALSE(TMatrix4x4<T>(zero).LUD(&zero, fixedPivots, &parity));
    parity = T(5);
    EXPECT_FALSE(wide.LUD(&lu, &pivots, &parity) || wide.Invert(&copy) || empty.Invert());
    EXPECT_TRUE(parity == 5 && lu.GetM() == 0 && wide.Determinant() == 0 && copy == wide);
    EXPECT_FALSE(singular.LUD(&lu, &pivots, &parity));
    EXPECT_TRUE(!pivots && parity == 1 && singular.Determinant() == 0 && empty.Determinant() == 1);
    T *x = nullptr, b[] = {2, 4};
    ASSERT_TRUE(Make<T>(2, 2, {0, 2, 4, 0}).LUD(&lu, &pivots, &parity)) << "the arrays are the caller's";
    TMatrixMxN<T>::BackSub(lu, pivots, b, &x);
    EXPECT_TRUE(x[0] == 1 && x[1] == 1);
    delete[] pivots;
    delete[] x;
}

TYPED_TEST(LUDecomposition, MeasuresTheDeterminantOnlyAtFixedOrders)
{
    using T = TypeParam;
    T const tolerance = static_cast<T>(1e-6f);
    EXPECT_FALSE(TMatrix2x2<T>(1, 0, 0, tolerance).Invert());
    EXPECT_TRUE(TMatrix2x2<T>(1, 0, 0, std::nextafter(tolerance, T(1))).Invert());
    TMatrix4x4<T> four;
    four[3][3] = -tolerance;
    EXPECT_FALSE(four.Invert());
    auto dynamic = Make<T>(2, 2, {1e-4, 0, 0, 1e-4});
    EXPECT_TRUE(dynamic.Invert() && dynamic[1][1] == T(1) / T(1e-4));
}

TYPED_TEST(LUDecomposition, EigenvectorsNeedAnExactEndAndAValueAboveTheTolerance)
{
    using T = TypeParam;
    T const small = static_cast<T>(1e-6f), above = std::nextafter(small, T(1)), tiny = std::numeric_limits<T>::min();
    std::pair<TMatrixMxN<T>, bool> const rows[] = {
        {Make<T>(0, 0, {}), false},
        {Make<T>(2, 2, {small, 0, 7, -small}), false},
        {Make<T>(3, 3, {0, 0, 0, 0, 0, 0, 0, 0, -above}), true},
        {Make<T>(4, 4, {3, 0, 0, 0, 0, 2, 0, tiny, 0, 0, 1, 0, 0, 0, 0, 4}), false}};
    T one = T(0), *values = &one, **vectors = &values;
    EXPECT_FALSE(Make<T>(1, 2, {1, 2}).Eigenspace(&values, &vectors));
    EXPECT_TRUE(values == &one && vectors == &values) << "untouched where the matrix is not square";
    for (auto const& [matrix, found] : rows) {
        EXPECT_EQ(matrix.Eigenspace(&values, &vectors), found) << matrix.GetM();
        EXPECT_TRUE((values != nullptr) == found && (vectors != nullptr) == found);
        for (unsigned int i = 0; found && i < matrix.GetM(); ++i) {
            EXPECT_TRUE(values[i] == matrix[i][i] && vectors[i][i] == T(1));
            delete[] vectors[i];
        }
        delete[] vectors;
        delete[] values;
    }
    // The lower triangle plays no part: the values of 2 1, 1 2 are 1 and 3.
    T pair[2];
    TVector2<T> axes[2];
    EXPECT_TRUE(TMatrix2x2<T>(2, 1, 9, 2).Eigenspace(pair, axes));
    EXPECT_NEAR(pair[0], 1, small);
    EXPECT_NEAR(pair[1], 3, small);
    EXPECT_NEAR(std::fabs(axes[1] % TVector2<T>(1, 1)), std::sqrt(T(2)), small);
}

#include "Samples.h"
#include "tests/support/plain/PlainLU.h"

#include <CorvexMaths/matrices/internal/PanelSolve.h>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct LUDecomposition : ::testing::Test
{
    std::mt19937 random{41};
    ::testing::ScopedTrace seed{__FILE__, __LINE__, "seed 41"};
    std::vector<T> plainX;

    /// Solves for b with plain factors and expects the same bits in x.
    void ExpectSolution(Rows<T> const& lu, std::vector<int> const& pivots, std::vector<T> const& b, T const* x)
    {
        plainX.resize(b.size());
        PlainBackSubRows<T>(lu.rows.data(), pivots.data(), b.data(), plainX.data(), int(b.size()));
        EXPECT_TRUE(std::equal(plainX.begin(), plainX.end(), x, SameBits<T>));
    }

    /// The same for each column of the inverse.
    template <class M>
    void ExpectInverse(Rows<T> const& lu, std::vector<int> const& pivots, M const& inverse)
    {
        unsigned int const order = lu.GetM();
        std::vector<T> unit(order), x(order);
        for (unsigned int c = 0; c < order; ++c) {
            for (unsigned int r = 0; r < order; ++r) unit[r] = T(r == c), x[r] = inverse[r][c];
            ExpectSolution(lu, pivots, unit, x.data());
        }
    }

    /// Holds decomposition, solve and inverse of a matrix, of fixed or of run-time size, against the plain forms.
    template <class M>
    void ExpectPlainBits(M matrix, Content content)
    {
        unsigned int const order = matrix.GetM();
        SCOPED_TRACE(::testing::Message() << "seed 41, order " << order << ", content " << content);
        TMatrixMxN<T> values(order, order);
        Fill(values, content, random);
        matrix = static_cast<M>(values);
        M lu(matrix), inverse(matrix);
        Rows<T> expected(matrix);
        std::vector<int> plainPivots(order), pivots(order);
        std::vector<T> scale(order), b(order), x(order);
        T plainParity, parity;
        bool const plain = PlainLUDRows(*expected, plainPivots.data(), scale.data(), &plainParity, int(order));
        ASSERT_EQ(matrix.LUD(&lu, pivots.data(), &parity), plain);
        EXPECT_TRUE(SameElements(expected, lu) && pivots == plainPivots && parity == plainParity);
        // Right-hand sides with leading zeros, and one with a value that is not finite.
        for (unsigned int zeros = 0; plain && zeros <= order; zeros += 1 + order / 3) {
            for (unsigned int i = 0; i < order; ++i) b[i] = i < zeros ? T(0) : T(int(random() % 9) - 4);
            if (zeros == 0 && order != 0) b[order / 2] = std::numeric_limits<T>::infinity();
            M::BackSub(lu, pivots.data(), b.data(), x.data());
            ExpectSolution(expected, pivots, b, x.data());
        }
        bool const isSmall = !std::is_same_v<M, TMatrixMxN<T>> && std::fabs(matrix.Determinant()) <= T(1e-6f);
        EXPECT_EQ(inverse.Invert(), plain && order != 0 && !isSmall);
        if (plain && !isSmall) return ExpectInverse(expected, pivots, inverse);
        EXPECT_TRUE(SameElements(matrix, inverse)) << "a failure leaves it as it was";
    }
};
TYPED_TEST_SUITE(LUDecomposition, Scalars, TypeNames);

TYPED_TEST(LUDecomposition, HasTheBitsOfCroutsOrder)
{
    using T = TypeParam;
    for (Content const content : contents) {
        for (unsigned int order = 0; order <= 130; order = order < 40 ? order + 1 : order + 45)
            this->ExpectPlainBits(TMatrixMxN<T>(order, order), content);
        for (unsigned int round = 0; round < 20; ++round) {
            this->ExpectPlainBits(TMatrix2x2<T>(), content);
            this->ExpectPlainBits(TMatrix3x3<T>(), content);
            this->ExpectPlainBits(TMatrix4x4<T>(), content);
        }
    }
}

// A multiplier that is not finite must not touch the columns whose forward sums begin below it.
TYPED_TEST(LUDecomposition, SolvesPanelsAlikeAtEveryRegisterWidth)
{
    using T = TypeParam;
    constexpr unsigned int order = 50, width = Kernels::panelWidth<T>;
    std::vector<int> pivots(order);
    for (unsigned int i = 0; i < order; ++i) pivots[i] = int(i);
    for (Content const content : {"uniform", "infinite", "NaN", "mixed"}) {
        SCOPED_TRACE("seed 41, " + std::string(content));
        TMatrixMxN<T> factors(order, order);
        Fill(factors, content, this->random);
        Rows<T> lu(factors), panel(order, width), inverse(order, order + width);
        for (auto const solve : {Kernels::SolvePanel<T, 16, width>, Kernels::SolvePanel<T, 32, width>}) {
            for (unsigned int q = 0; q < order; q += width) {
                solve(panel[0], *lu, order, q);
                for (unsigned int i = 0; i < order; ++i) std::copy_n(panel[i], width, inverse[i] + q);
            }
            this->ExpectInverse(lu, pivots, inverse);
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
    T parity = T(5);
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

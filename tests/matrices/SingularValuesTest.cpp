#include "Samples.h"
#include "tests/support/plain/PlainSVD.h"

#include <CorvexMaths/matrices/SingularValueRotations.inl>
#include <CorvexMaths/matrices/SingularValueSolve.inl>

using namespace CorvexTest;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

template <class T>
class SingularValues : public ::testing::Test
{};
TYPED_TEST_SUITE(SingularValues, Scalars, TypeNames);

/// The number of kinds of content that take the iteration down its less common roads, and matrices of them: zero, rank
/// one, badly conditioned, diagonal, and bidiagonal with zeros on the diagonal, which ask for a cancellation.
constexpr unsigned int specialKinds = 5;

template <class T>
void FillSpecial(Maths::TMatrixMxN<T>& a, unsigned int kind)
{
    for (unsigned int r = 0; r < a.GetM(); ++r) {
        for (unsigned int c = 0; c < a.GetN(); ++c) {
            bool const split = c == r + 1 || (c == r && r % 3 != 1);
            T const x = T(r + 1), y = T(c + 1);
            T const values[specialKinds] = {T(0), x * y, T(1) / (x + y), c == r ? x - T(4) : T(0), split ? x : T(0)};
            a[r][c] = values[kind];
        }
    }
}

/// Decomposes a with the library, into matrices that hold what they held before, and with the plain form; then solves
/// with the result, wherever the iteration stopped.
template <class T>
void ExpectPlainBits(Maths::TMatrixMxN<T>& a, unsigned int limit, Maths::TMatrixMxN<T> (&outputs)[3])
{
    unsigned int const m = a.GetM(), n = a.GetN();
    SCOPED_TRACE(::testing::Message() << m << " by " << n << ", limit " << limit);
    Rows<T> u(a), w(n, n), v(n, n);
    std::vector<T> work(n), b(m, T(3)), plainX(n), x(n);
    EXPECT_EQ(Plain::SVDRows(*u, *w, *v, work.data(), m, n, limit),
              a.SVD(&outputs[0], &outputs[1], &outputs[2], limit));
    EXPECT_TRUE(SameElements(u, outputs[0]));
    EXPECT_TRUE(SameElements(w, outputs[1]));
    EXPECT_TRUE(SameElements(v, outputs[2]));
    EXPECT_EQ(Plain::BackSubstitute(*u, *w, *v, b.data(), plainX.data(), work.data(), m, n),
              Kernels::SVDBackSubstitute(*u, *w, *v, b.data(), x.data(), work.data(), m, n));
    EXPECT_TRUE(std::equal(x.begin(), x.end(), plainX.begin(), SameBits<T>));
}

TYPED_TEST(SingularValues, HaveTheBitsOfThePlainForm)
{
    using T = TypeParam;
    std::mt19937 random(75);
    SCOPED_TRACE("seed 75");
    Maths::TMatrixMxN<T> outputs[3];
    auto const expectAll = [&](unsigned int m, unsigned int n, unsigned int rounds) {
        constexpr unsigned int limits[] = {0, 1, 2, 29, 30, 31};
        Maths::TMatrixMxN<T> a(m, n);
        for (unsigned int i = 0; i < rounds * std::size(contents); ++i) {
            SCOPED_TRACE(contents[i / rounds]);
            Fill(a, contents[i / rounds], random);
            ExpectPlainBits(a, limits[random() % 6], outputs);
        }
        for (unsigned int kind = 0; kind < specialKinds; ++kind) {
            SCOPED_TRACE(kind);
            FillSpecial(a, kind);
            ExpectPlainBits(a, limits[random() % 6], outputs);
        }
    };
    for (unsigned int m = 0; m <= 12; ++m)
        for (unsigned int n = 0; n <= 12; ++n) expectAll(m, n, 2);
    for (auto const& size : {std::pair{70u, 70u}, {70u, 20u}, {20u, 45u}, {300u, 3u}, {41u, 4u}, {3u, 40u}})
        expectAll(size.first, size.second, 1);
}

TYPED_TEST(SingularValues, RebuildTheMatrixFromOrthonormalFactors)
{
    using T = TypeParam;
    std::mt19937 random(76);
    SCOPED_TRACE("seed 76");
    for (auto const& size : {std::pair{9u, 9u}, {40u, 6u}, {5u, 8u}, {30u, 30u}, {64u, 3u}}) {
        unsigned int const m = size.first, n = size.second;
        SCOPED_TRACE(::testing::Message() << m << " by " << n);
        Maths::TMatrixMxN<T> a(m, n), u(m, n), w(n, n), v(n, n);
        Fill(a, "uniform", random);
        Maths::TMatrixMxN<T> const copy(a);
        T* const storage[] = {u[0], w[0], v[0]};
        ASSERT_TRUE(a.SVD(&u, &w, &v, 30));
        EXPECT_EQ(a, copy);
        EXPECT_TRUE(u[0] == storage[0] && w[0] == storage[1] && v[0] == storage[2]);

        Maths::TMatrixMxN<T> uTransposed(u), vTransposed(v), rebuilt = u * w;
        uTransposed.Transpose();
        vTransposed.Transpose();
        rebuilt *= vTransposed;
        Maths::TMatrixMxN<T> const uProduct = uTransposed * u, vProduct = vTransposed * v;
        T const tolerance = T(100) * std::numeric_limits<T>::epsilon();
        for (unsigned int c = 0; c < n; ++c) {
            EXPECT_GE(w[c][c], T(0));
            for (unsigned int r = 0; r < m; ++r) EXPECT_NEAR(rebuilt[r][c], a[r][c], tolerance);
            for (unsigned int r = 0; r < n; ++r) {
                EXPECT_NEAR(vProduct[r][c], T(r == c), tolerance);
                EXPECT_NEAR(m < n ? T(r == c) : uProduct[r][c], T(r == c), tolerance);
                EXPECT_EQ(r == c ? T(0) : w[r][c], T(0));
            }
        }
    }
}

// The reduction turns the sign of a positive element, and V takes it back: the values keep their order.
TYPED_TEST(SingularValues, OfADiagonalMatrixStayInOrderWithTheirSignsInV)
{
    using Matrix = Maths::TMatrix3x3<TypeParam>;
    Matrix const a(1, 0, 0, 0, -2, 0, 0, 0, 4);
    Matrix u, w, v;
    EXPECT_TRUE(a.SVD(&u, &w, &v, 1));
    EXPECT_EQ(u, -Matrix());
    EXPECT_EQ(w, Matrix(1, 0, 0, 0, 2, 0, 0, 0, 4));
    EXPECT_EQ(v, Matrix(-1, 0, 0, 0, 1, 0, 0, 0, -1));
}

TYPED_TEST(SingularValues, OfZeroLeaveIdentities)
{
    using Matrix = Maths::TMatrixMxN<TypeParam>;
    for (auto const& size : {std::pair{4u, 2u}, {2u, 4u}, {0u, 3u}, {3u, 0u}}) {
        SCOPED_TRACE(::testing::Message() << size.first << " by " << size.second);
        Matrix a(size.first, size.second), zero(size.second, size.second), u, w, v;
        a.ToNull();
        zero.ToNull();
        EXPECT_TRUE(a.SVD(&u, &w, &v, 1));
        EXPECT_EQ(w, zero);
        a.ToIdentity();
        zero.ToIdentity();
        EXPECT_EQ(u, a);
        EXPECT_EQ(v, zero);
    }
}

TYPED_TEST(SingularValues, FailAtTheIterationLimitAndNeverOutsideOneToThirty)
{
    using Matrix = Maths::TMatrix2x2<TypeParam>;
    Matrix const sheared(1, 1, 0, 1), endless(std::numeric_limits<TypeParam>::quiet_NaN(), 1, 1, 1);
    Matrix u, w, v;
    EXPECT_FALSE(sheared.SVD(&u, &w, &v, 1));
    for (unsigned int const limit : {0u, 30u, 31u}) EXPECT_TRUE(sheared.SVD(&u, &w, &v, limit)) << limit;
    for (unsigned int const limit : {1u, 29u, 30u}) EXPECT_FALSE(endless.SVD(&u, &w, &v, limit)) << limit;
    for (unsigned int const limit : {0u, 31u, 1000u}) EXPECT_TRUE(endless.SVD(&u, &w, &v, limit)) << limit;
}

template <class T, class Fixed>
void ExpectDenseBits(Fixed fixed, std::mt19937& random)
{
    Maths::TMatrixMxN<T> dense(fixed.GetM(), fixed.GetN()), u, w, v;
    Fill(dense, "uniform", random);
    fixed = static_cast<Fixed>(dense);
    Fixed fixedU, fixedW, fixedV;
    EXPECT_TRUE(dense.SVD(&u, &w, &v, 30) && fixed.SVD(&fixedU, &fixedW, &fixedV, 30));
    EXPECT_TRUE(SameElements(u, fixedU) && SameElements(w, fixedW) && SameElements(v, fixedV));
}

TYPED_TEST(SingularValues, OfFixedMatricesAreThoseOfTheDenseMatrix)
{
    std::mt19937 random(77);
    SCOPED_TRACE("seed 77");
    ExpectDenseBits<TypeParam>(Maths::TMatrix2x2<TypeParam>(), random);
    ExpectDenseBits<TypeParam>(Maths::TMatrix3x3<TypeParam>(), random);
    ExpectDenseBits<TypeParam>(Maths::TMatrix4x4<TypeParam>(), random);
}

// More rotations than a run holds, columns further apart than a panel is wide, rows that fill panels of every kind.
TYPED_TEST(SingularValues, AreCollectedInRunsOfRotationsOfTheSameBits)
{
    using T = TypeParam;
    std::mt19937 random(78);
    SCOPED_TRACE("seed 78");
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    for (unsigned int const m : {1u, 8u, 9u, 12u, 47u}) {
        for (unsigned int const n : {5u, 250u, 400u, 1100u}) {
            SCOPED_TRACE(::testing::Message() << m << " by " << n);
            Maths::TMatrixMxN<T> matrix(m, n);
            Fill(matrix, "infinite", random);
            Rows<T> plain(matrix), inRuns(matrix);
            Kernels::RotationRun<T> run(*inRuns, m);
            for (unsigned int t = 0; t < 2500; ++t) {
                unsigned int const first = t % (n - 1);
                unsigned int const gap = t % 7 ? 1 : 1 + static_cast<unsigned int>(random() % (n - 1 - first));
                T const c = t % 5 ? uniform(random) : T(1), s = t % 5 ? uniform(random) : T(-0.0);
                run.Add(first, first + gap, c, s);
                Plain::Rotate(*plain, m, first, first + gap, c, s);
                if (t % 50 != 0) continue;
                run.Negate(first);
                for (T* row : plain.rows) row[first] = -row[first];
            }
            run.Flush();
            EXPECT_TRUE(SameElements(plain, inRuns));
        }
    }
}

TYPED_TEST(SingularValues, RefuseToSolveWhenOneOfThemCountsAsZero)
{
    using T = TypeParam;
    T const bound = T(1e-6f);
    for (T const value : {T(1), T(0), bound, -bound, std::nextafter(bound, T(1))}) {
        SCOPED_TRACE(value);
        Maths::TMatrixMxN<T> w = Make<T>(2, 2, {1, 0, 0, 1}), u(w), v(w), b(w), x = Make<T>(2, 2, {7, 7, 7, 7});
        w[1][1] = value;
        bool const solves = value > bound;
        EXPECT_EQ(Kernels::SVDSolveColumns(u, w, v, b, &x), solves);
        EXPECT_EQ(x[0][0], solves ? T(1) : T(7));
        EXPECT_EQ(x[1][1], solves ? T(1) / value : T(7));
    }
}

// The straight line y = 3 + 2 x through four points, and columns that leave the slope open.
TYPED_TEST(SingularValues, SolveLeastSquaresWithADecompositionOfTheirOwn)
{
    using T = TypeParam;
    Maths::TMatrixMxN<T> u, w, v, line = Make<T>(4, 2, {1, 0, 1, 1, 1, 2, 1, 3}),
                                  open = Make<T>(4, 2, {1, 1, 2, 2, 3, 3, 4, 4});
    T const b[] = {T(3), T(5), T(7), T(9)}, tolerance = T(100) * std::numeric_limits<T>::epsilon();
    T x[2], scratch[2];
    ASSERT_TRUE(Kernels::SVDSolve(line, &u, &w, &v, b, x, scratch));
    EXPECT_NEAR(x[0], T(3), tolerance);
    EXPECT_NEAR(x[1], T(2), tolerance);
    EXPECT_FALSE(Kernels::SVDSolve(open, &u, &w, &v, b, x, scratch));
}

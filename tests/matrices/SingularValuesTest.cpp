#include "Samples.h"
#include "tests/support/plain/PlainSVD.h"

#include <CorvexMaths/matrices/decomposition/Forms.inl>
#include <CorvexMaths/matrices/decomposition/Solve.inl>
#include <CorvexMaths/matrices/decomposition/TallSystem.h>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct SingularValues : ::testing::Test
{};
TYPED_TEST_SUITE(SingularValues, Scalars, TypeNames);

/// Fills a matrix with content that takes the iteration down its less common roads: zero, rank one, badly conditioned,
/// diagonal, and bidiagonal with zeros on the diagonal, which ask for a cancellation.
template <class T>
void FillSpecial(TMatrixMxN<T>& a, unsigned int kind)
{
    for (unsigned int i = 0; i < a.GetM() * a.GetN(); ++i) {
        unsigned int const r = i / a.GetN(), c = i % a.GetN();
        bool const split = c == r + 1 || (c == r && r % 3 != 1);
        T const x = T(r + 1), y = T(c + 1);
        T const values[] = {T(0), x * y, T(1) / (x + y), c == r ? x - T(4) : T(0), split ? x : T(0)};
        a[r][c] = values[kind];
    }
}

/// Decomposes a with the library, into matrices that hold what they held before, and with the plain form; then solves
/// with the result, wherever the iteration stopped.
template <class T, class M>
void ExpectPlainBits(M& a, unsigned int limit, M (&outputs)[3])
{
    unsigned int const m = a.GetM(), n = a.GetN();
    Rows<T> u(a), w(n, n), v(n, n);
    std::vector<T> work(n), b(m, T(3)), plainX(n), x(n);
    EXPECT_EQ(Plain::SVDRows(*u, *w, *v, work.data(), m, n, limit),
              a.SVD(&outputs[0], &outputs[1], &outputs[2], limit));
    EXPECT_TRUE(SameElements(u, outputs[0]) && SameElements(w, outputs[1]) && SameElements(v, outputs[2]));
    EXPECT_EQ(Plain::BackSubstitute(*u, *w, *v, b.data(), plainX.data(), work.data(), m, n),
              Kernels::BackSubstitute(*u, *w, *v, b.data(), x.data(), work.data(), m, n, Kernels::NoPanels()));
    EXPECT_TRUE(std::equal(x.begin(), x.end(), plainX.begin(), SameBits<T>));
}

TYPED_TEST(SingularValues, HaveTheBitsOfThePlainForm)
{
    using T = TypeParam;
    std::mt19937 random(75);
    auto const expectAll = [&random](auto a) {
        constexpr unsigned int limits[] = {0, 1, 2, 29, 30, 31}, kinds = std::size(contents);
        decltype(a) outputs[3];
        TMatrixMxN<T> values(a.GetM(), a.GetN());
        for (unsigned int kind = 0; kind < kinds + 5; ++kind) {
            SCOPED_TRACE(::testing::Message() << "seed 75, " << a.GetM() << " by " << a.GetN() << ", kind " << kind);
            kind < kinds ? Fill(values, contents[kind], random) : FillSpecial(values, kind - kinds);
            a = static_cast<decltype(a)>(values);
            ExpectPlainBits<T>(a, limits[random() % 6], outputs);
        }
    };
    expectAll(TMatrix2x2<T>());
    expectAll(TMatrix3x3<T>());
    expectAll(TMatrix4x4<T>());
    for (unsigned int size = 0; size < 169; ++size) expectAll(TMatrixMxN<T>(size / 13, size % 13));
    for (auto const& [m, n] : {std::pair{70u, 70u}, {70u, 20u}, {20u, 45u}, {300u, 3u}, {41u, 4u}, {3u, 40u}})
        expectAll(TMatrixMxN<T>(m, n));
    // Tall ones, in panels: none full, all full, and with every number of rows left for the head.
    for (auto const& [m, n] : {std::pair{64u, 1u}, {82u, 2u}, {131u, 3u}, {146u, 4u}, {213u, 19u}, {192u, 32u}})
        expectAll(TMatrixMxN<T>(m, n));
}

TYPED_TEST(SingularValues, TakeTheMatrixAsAnyOfTheirResults)
{
    using T = TypeParam;
    std::mt19937 random(77);
    for (unsigned int const m : {9u, 150u}) {
        TMatrixMxN<T> a(m, 3), outputs[3];
        Fill(a, "uniform", random);
        ASSERT_TRUE(a.SVD(&outputs[0], &outputs[1], &outputs[2], 30));
        for (unsigned int own = 0; own < 3; ++own) {
            TMatrixMxN<T> self(a), others[3];
            TMatrixMxN<T>* results[] = {&others[0], &others[1], &others[2]};
            results[own] = &self;
            ASSERT_TRUE(self.SVD(results[0], results[1], results[2], 30));
            for (unsigned int k = 0; k < 3; ++k) EXPECT_EQ(*results[k], outputs[k]) << "seed 77, " << m << ", " << own;
        }
    }
}

// The form without U takes rows less a shift.
TYPED_TEST(SingularValues, HaveTheBitsOfThePlainFormWithoutU)
{
    using T = TypeParam;
    std::mt19937 random(79);
    SCOPED_TRACE("seed 79");
    T const shift[] = {T(0.25), T(-0.0), T(-3), T(7)};
    for (auto const& [m, n] : {std::pair{4u, 4u}, {3u, 3u}, {18u, 3u}, {20u, 4u}, {19u, 2u}, {5u, 1u}, {215u, 3u}}) {
        for (auto const content : contents) {
            TMatrixMxN<T> a(m, n);
            Fill(a, content, random);
            Rows<T> const rows(a);
            Rows<T> u(a), w(n, n), v(n, n), plainW(n, n), plainV(n, n);
            std::vector<T> work(n), scratch(std::size_t(m) * n);
            for (unsigned int i = 0; i < m * n; ++i) u.rows[i / n][i % n] -= shift[i % n];
            EXPECT_EQ(Kernels::SVDWithoutU<T>(rows.rows[0], shift, scratch.data(), *w, *v, m, n, 30),
                      Plain::SVDRows(*u, *plainW, *plainV, work.data(), m, n, 30));
            EXPECT_TRUE(SameElements(w, plainW) && SameElements(v, plainV)) << m << " by " << n << ", " << content;
        }
    }
}

/// Solves a tall system of N unknowns with the library.
template <unsigned int N, class T>
bool SolveTall(TMatrixMxN<T>& a, TMatrixMxN<T>& b, std::vector<T>& x)
{
    Kernels::TallSystem<T, N> system(a.GetM());
    system.Fill([&](unsigned int i) {
        typename Kernels::TallSystem<T, N>::Row row;
        std::copy_n(a[i], N, row.coefficients);
        row.right = b[i][0];
        return row;
    });
    std::copy_n(x.data(), N, system.solution);
    bool const isSolved = system.Solve();
    std::copy_n(system.solution, N, x.data());
    return isSolved;
}

// A tall system is solved from its panels, with no U: the bits are those of the plain form and its U.
TYPED_TEST(SingularValues, SolveTallSystemsWithTheBitsOfThePlainForm)
{
    using T = TypeParam;
    std::mt19937 random(80);
    SCOPED_TRACE("seed 80");
    unsigned int solved = 0;
    for (auto const& [m, n] : {std::pair{2u, 4u}, {4u, 4u}, {18u, 3u}, {20u, 4u}, {19u, 2u}, {17u, 1u}, {215u, 4u}}) {
        for (auto const content : contents) {
            TMatrixMxN<T> a(m, n), b(m, 1);
            Fill(a, content, random);
            Fill(b, "uniform", random);
            Rows<T> u(a), w(n, n), v(n, n);
            std::vector<T> work(n), x(n, T(7)), plain(x);
            bool const isSolved = Plain::SVDRows(*u, *w, *v, work.data(), m, n, 30) &&
                                  Plain::BackSubstitute(*u, *w, *v, b[0], plain.data(), work.data(), m, n);
            bool (*const solve[])(TMatrixMxN<T>&, TMatrixMxN<T>&, std::vector<T>&) = {SolveTall<1, T>, SolveTall<2, T>,
                                                                                      SolveTall<3, T>, SolveTall<4, T>};
            EXPECT_EQ(solve[n - 1](a, b, x), isSolved);
            EXPECT_TRUE(std::equal(x.begin(), x.end(), plain.begin(), SameBits<T>)) << m << " by " << n << content;
            solved += isSolved;
        }
    }
    EXPECT_GT(solved, 20u);
}

TYPED_TEST(SingularValues, RebuildTheMatrixFromOrthonormalFactors)
{
    using T = TypeParam;
    using Dense = TMatrixMxN<T>;
    std::mt19937 random(76);
    for (auto const& [m, n] : {std::pair{9u, 9u}, {40u, 6u}, {5u, 8u}, {30u, 30u}, {64u, 3u}}) {
        SCOPED_TRACE(::testing::Message() << "seed 76, " << m << " by " << n);
        Dense a(m, n), u, w, v;
        Fill(a, "uniform", random);
        ASSERT_TRUE(a.SVD(&u, &w, &v, 30));
        Dense uTransposed(u), vTransposed(v), rebuilt = u * w;
        uTransposed.Transpose();
        vTransposed.Transpose();
        rebuilt *= vTransposed;
        Dense const uProduct = uTransposed * u, vProduct = vTransposed * v;
        T const tolerance = T(100) * std::numeric_limits<T>::epsilon();
        for (unsigned int c = 0; c < n; ++c) {
            for (unsigned int r = 0; r < m; ++r) EXPECT_NEAR(rebuilt[r][c], a[r][c], tolerance);
            for (unsigned int r = 0; r < n; ++r) {
                EXPECT_NEAR(vProduct[r][c], T(r == c), tolerance);
                EXPECT_NEAR(m < n ? T(r == c) : uProduct[r][c], T(r == c), tolerance);
                EXPECT_TRUE(r == c ? w[r][c] >= T(0) : w[r][c] == T(0));
            }
        }
    }
}

TYPED_TEST(SingularValues, FailAtTheIterationLimitAndNeverOutsideOneToThirty)
{
    using Matrix = TMatrix2x2<TypeParam>;
    Matrix const sheared(1, 1, 0, 1), endless(std::numeric_limits<TypeParam>::quiet_NaN(), 1, 1, 1);
    Matrix u, w, v;
    for (unsigned int const limit : {0u, 1u, 29u, 30u, 31u, 1000u}) {
        EXPECT_EQ(sheared.SVD(&u, &w, &v, limit), limit != 1) << limit;
        EXPECT_EQ(endless.SVD(&u, &w, &v, limit), limit < 1 || limit > 30) << limit;
    }
}

// More rotations than a run holds, columns further apart than a panel is wide, rows that fill panels of every kind.
TYPED_TEST(SingularValues, AreCollectedInRunsOfRotationsOfTheSameBits)
{
    using T = TypeParam;
    std::mt19937 random(78);
    SCOPED_TRACE("seed 78");
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    for (unsigned int const m : {1u, 8u, 9u, 12u, 47u}) {
        for (unsigned int const n : {5u, 400u, 1100u}) {
            TMatrixMxN<T> matrix(m, n);
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
            EXPECT_TRUE(SameElements(plain, inRuns)) << "seed 78, " << m << " by " << n;
        }
    }
}

TYPED_TEST(SingularValues, RefuseToSolveWhenOneOfThemCountsAsZero)
{
    using T = TypeParam;
    T const bound = T(1e-6f);
    for (T const value : {T(1), T(0), bound, -bound, std::nextafter(bound, T(1))}) {
        auto w = Make<T>(2, 2, {1, 0, 0, 1}), u = w, v = w, b = w, x = Make<T>(2, 2, {7, 7, 7, 7});
        w[1][1] = value;
        bool const solves = value > bound;
        EXPECT_EQ(Kernels::SVDSolveColumns(u, w, v, b, &x), solves) << value;
        EXPECT_TRUE(x[0][0] == (solves ? T(1) : T(7)) && x[1][1] == (solves ? T(1) / value : T(7))) << value;
    }
    // The straight line y = 3 + 2 x through four points, and columns that leave the slope open.
    auto line = Make<T>(4, 2, {1, 0, 1, 1, 1, 2, 1, 3}), open = Make<T>(4, 2, {1, 1, 2, 2, 3, 3, 4, 4}),
         right = Make<T>(4, 1, {3, 5, 7, 9});
    T const tolerance = T(100) * std::numeric_limits<T>::epsilon();
    std::vector<T> x(2);
    EXPECT_TRUE((SolveTall<2, T>(line, right, x)));
    EXPECT_TRUE(std::fabs(x[0] - 3) < tolerance && std::fabs(x[1] - 2) < tolerance);
    EXPECT_FALSE((SolveTall<2, T>(open, right, x)));
}

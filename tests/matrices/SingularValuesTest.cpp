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

// Tall matrices go in panels, which hold so many columns and no more.
TYPED_TEST(SingularValues, OfTallMatricesHaveTheSameBitsAtAndAboveTheWidestPanel)
{
    using T = TypeParam;
    std::mt19937 random(79);
    SCOPED_TRACE("seed 79");
    for (unsigned int const n : {Kernels::mostPanelColumns, Kernels::mostPanelColumns + 1}) {
        unsigned int const m = 4 * n;
        TMatrixMxN<T> u(m, n), w(n, n), v(n, n);
        Fill(u, "", random);
        Rows<T> plainU(u), plainW(w), plainV(v);
        std::vector<T> work(n);
        ASSERT_TRUE(Plain::SVDRows(*plainU, *plainW, *plainV, work.data(), m, n, 30u));
        ASSERT_TRUE(u.SVD(&u, &w, &v, 30));
        EXPECT_TRUE(SameElements(plainU, u) && SameElements(plainW, w) && SameElements(plainV, v)) << n << " columns";
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
    for (bool const isOpen : {false, true}) {
        Kernels::TallSystem<T, 2> line(4);
        line.Fill([isOpen](unsigned int i) {
            return typename Kernels::TallSystem<T, 2>::Row{{T(1), isOpen ? T(1) : T(i)}, T(3 + 2 * i)};
        });
        T const tolerance = T(100) * std::numeric_limits<T>::epsilon();
        EXPECT_EQ(line.Solve(), !isOpen);
        EXPECT_TRUE(isOpen ||
                    (std::fabs(line.solution[0] - 3) < tolerance && std::fabs(line.solution[1] - 2) < tolerance));
    }
}

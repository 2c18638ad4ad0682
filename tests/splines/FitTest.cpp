#include <tests/splines/OpenSpline.h>

using namespace CorvexTest;

template <class T>
using F4 = Family<T, Maths::TVector4>;

template <class T>
struct SplineFit : ::testing::Test
{
    /// Data whose centripetal parameters are 0, 1/8, 1/2, 7/8, 1: the roots of their distances are 1, 3, 3, 1.
    OpenSet<F4<T>> data{{4, 0, 0, 2}, {5, 0, 0, 2}, {5, 9, 0, 2}, {5, 9, 9, 2}, {5, 9, 9, 3}};
    const T parameters[5] = {0, T(0.125), T(0.5), T(0.875), 1};
};
TYPED_TEST_SUITE(SplineFit, Scalars, TypeNames);

TYPED_TEST(SplineFit, SolvesTheEquationsOfDataAndEnds)
{
    using T = TypeParam;
    for (const bool endConditions : {false, true}) {
        SCOPED_TRACE(endConditions);
        OpenSet<F4<T>> points = this->data;
        OpenSpline<F4<T>> spline = Straight<F4<T>>(endConditions ? 4 : 3, Clamped, 7);
        spline.Fit(points, 4, endConditions);
        EXPECT_TRUE(spline.GetCount() == 4 && points.GetCount() == (endConditions ? 7 : 5));
        EXPECT_EQ(points.GetLast(), endConditions ? Point<F4<T>>(0, 0, 0, 1) : this->data[4]);
        EXPECT_EQ(points.GetBoundingBox().minimum.x, endConditions ? 0 : 4) << "the points for the ends fire the hooks";
        EXPECT_EQ(spline.GetBoundingBox().maximum.x, 0) << "the box is that of the default vectors";
        if (endConditions) continue;
        // The residuals of a least-squares solution are orthogonal to every column.
        typename F4<T>::Vector sums[4]; // each begins at (0, 0, 0, 1)
        for (unsigned int i = 0; i < 5; ++i) {
            const auto residual = spline.Evaluate(this->parameters[i]) - points[i];
            for (unsigned int k = 0; k < 4; ++k) sums[k] += residual * spline.coefficients[k];
        }
        for (auto& sum : sums)
            EXPECT_TRUE((sum - typename F4<T>::Vector()).GetLength() < std::numeric_limits<T>::epsilon() * 1000);
    }
}

TYPED_TEST(SplineFit, KnotsAverageTheParametersUntilRebuilt)
{
    using T = TypeParam;
    OpenSpline<F4<T>> spline(3, Clamped, 0, 4), closed(3, Uniform, 0, 4);
    spline.Fit(this->data, 4, false);
    EXPECT_EQ(Values(spline.knots), (std::vector<T>{0, 0, 0, 0.3125, 1, 1, 1}));
    spline.Fit(this->data, 5, false);
    EXPECT_EQ(Values(spline.knots), (std::vector<T>{0, 0, 0, 0.3125, 0.6875, 1, 1, 1}));
    EXPECT_LT(spline.Evaluate(T(0.5)).DiffVectLen(this->data[2]), 1e-4) << "as many control points as data meet them";
    closed.Fit(this->data, 3, false);
    EXPECT_TRUE(closed.GetType() == Uniform && Values(closed.knots) == (std::vector<T>{0, 0, 0, 1, 1, 1}));
    closed.Fit(this->data, 5, false);
    EXPECT_TRUE(closed.GetCount() == 8 && closed.knots[1] == T(1) / T(10));
}

TYPED_TEST(SplineFit, ShowsAFailureByItsState)
{
    using T = TypeParam;
    // Two places cannot hold four control points; one place has no distances and no parameters.
    for (const unsigned int coincident : {4u, 5u}) {
        SCOPED_TRACE(coincident);
        OpenSet<F4<T>> points = this->data;
        for (unsigned int i = 1; i < coincident; ++i) points[i] = points[0];
        OpenSpline<F4<T>> spline = Straight<F4<T>>(3, Uniform, 2);
        spline.Fit(points, 4, true);
        EXPECT_EQ(spline.GetType(), Clamped);
        for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(spline[i], Point<F4<T>>(0, 0, 0, 1));
        EXPECT_TRUE(coincident == 5 || points.GetCount() == 7) << "decomposed, but not solved";
    }
}

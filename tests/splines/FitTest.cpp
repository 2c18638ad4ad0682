#include <tests/splines/OpenSpline.h>

#include <algorithm>

using namespace CorvexTest;

template <class T>
using F4 = Family<T, Maths::TVector4>;

// The second derivatives are private to the fit; an explicit instantiation may name them.
template <class T>
using SecondDerivatives = void (Maths::TBSpline<T, Maths::TVector4>::*)(T, T*);
template <class T>
SecondDerivatives<T> secondDerivatives = nullptr;
template <class T, SecondDerivatives<T> member>
struct Opened
{
    static inline const bool done = (secondDerivatives<T> = member) != nullptr;
};
template struct Opened<float, &Maths::TBSpline<float, Maths::TVector4>::GetSecondDerivatives>;
template struct Opened<double, &Maths::TBSpline<double, Maths::TVector4>::GetSecondDerivatives>;

template <class T>
struct SplineFit : ::testing::Test
{
    /// Data whose centripetal parameters are 0, 1/8, 1/2, 7/8, 1: the roots of their distances are 1, 3, 3, 1.
    OpenSet<F4<T>> data{{4, 0, 0, 2}, {5, 0, 0, 2}, {5, 9, 0, 2}, {5, 9, 9, 2}, {5, 9, 9, 3}};
};
TYPED_TEST_SUITE(SplineFit, Scalars, TypeNames);

TYPED_TEST(SplineFit, SecondDerivativesAreOfTheOrderBelow)
{
    using T = TypeParam;
    const auto at = [](T u, OpenSpline<F4<T>> spline) {
        std::vector<T> out(spline.GetCount(), T(7));
        return (spline.*secondDerivatives<T>)(u, out.data()), out;
    };
    using Row = std::vector<T>;
    const T inside = 1 - static_cast<T>(1e-6f);
    EXPECT_EQ(at(0, Straight<F4<T>>(3, Uniform, 3)), (Row{0, 0, 0}));
    EXPECT_EQ(at(0, Straight<F4<T>>(4, Uniform, 5)), (Row{0, 64, -128, 64, 0}));
    EXPECT_EQ(at(T(0.5), Straight<F4<T>>(4, Uniform, 5)), (Row{0, 32, -32, -32, 32}));
    EXPECT_EQ(at(1, Straight<F4<T>>(4, Clamped, 4)), (Row{0, 2 * inside, -4 * inside, 2 * inside}));
}

TYPED_TEST(SplineFit, SolvesTheEquationsOfDataAndEnds)
{
    using T = TypeParam;
    const T parameters[] = {0, T(0.125), T(0.5), T(0.875), 1};
    for (const bool endConditions : {false, true}) {
        SCOPED_TRACE(endConditions);
        OpenSet<F4<T>> points = this->data;
        OpenSpline<F4<T>> spline = Straight<F4<T>>(endConditions ? 4 : 3, Clamped, 7);
        spline.Fit(points, 4, endConditions);
        ASSERT_EQ(spline.GetCount(), 4u);
        ASSERT_EQ(points.GetCount(), endConditions ? 7u : 5u);
        EXPECT_EQ(points.GetLast(), endConditions ? Point<F4<T>>(0, 0, 0, 1) : this->data[4]);
        EXPECT_EQ(points.GetBoundingBox().minimum.x, endConditions ? 0 : 4) << "the points for the ends fire the hooks";
        EXPECT_EQ(spline.GetBoundingBox().maximum.x, 0) << "the box is that of the default vectors";
        // The residuals of a least-squares solution are orthogonal to every column.
        T row[4], sums[16] = {};
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            if (i < 5) spline.Evaluate(parameters[i]), std::copy_n(spline.coefficients.GetStream(), 4, row);
            if (i >= 5) (spline.*secondDerivatives<T>)(static_cast<T>(i - 5), row);
            typename F4<T>::Vector residual = -points[i];
            for (unsigned int k = 0; k < 4; ++k) residual += spline[k] * row[k];
            for (unsigned int k = 0; k < 16; ++k) sums[k] += row[k / 4] * residual[k % 4];
        }
        for (const T sum : sums) EXPECT_NEAR(sum, 0, std::numeric_limits<T>::epsilon() * 1000);
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
    EXPECT_EQ(closed.GetType(), Uniform);
    EXPECT_EQ(Values(closed.knots), (std::vector<T>{0, 0, 0, 1, 1, 1}));
    closed.Fit(this->data, 5, false);
    EXPECT_EQ(closed.GetCount(), 8u);
    EXPECT_EQ(closed.knots[1], T(1) / T(10));
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

#include "Values.h"

#include <algorithm>

template <class T>
struct OrthogonalFitTest : ::testing::Test
{
    TLine3<T> line{9, 9, 9, 0, 1, 0};
    TPlane<T> plane{9, 9, 9, 0, 1, 0};
    T spread, squares;
    // Fits either to the points, after writing 7 to both residuals.
    template <class Fitted>
    bool Fit(Fitted& fitted, const std::vector<TVector3<T>>& points)
    {
        TPointSet<T, TVector3> set(points.data(), static_cast<unsigned int>(points.size()));
        return fitted.Fit(set, &(spread = 7), &(squares = 7));
    }
};
TYPED_TEST_SUITE(OrthogonalFitTest, Scalars, TypeNames);

// Six points on the axes through a centre: all arithmetic is exact, and the singular values stand in axis order.
TYPED_TEST(OrthogonalFitTest, ChoosesTheExtremeAxisAndTheFirstOfEqualOnes)
{
    using V = TVector3<TypeParam>;
    for (int code = 0; code < 27; ++code) {
        const V size(TypeParam(1 << code % 3), TypeParam(1 << code / 3 % 3), TypeParam(1 << code / 9)), o(8, 16, -32);
        const V x(size.x, 0, 0), y(0, size.y, 0), z(0, 0, size.z);
        const std::vector<V> points{o + x, o - x, o + y, o - y, o + z, o - z};
        const auto most = std::max_element(&size.x, &size.x + 3) - &size.x;
        const auto least = std::min_element(&size.x, &size.x + 3) - &size.x;
        EXPECT_TRUE(this->Fit(this->line, points) && std::fabs(this->line.direction[most]) == 1) << code;
        EXPECT_EQ(this->squares, 7 + 2 * (size % size - size[most] * size[most])) << code;
        EXPECT_EQ(this->spread, 2 * std::max(size[(most + 1) % 3], size[(most + 2) % 3])) << code;
        EXPECT_TRUE(this->Fit(this->plane, points) && std::fabs(this->plane.normal[least]) == 1) << code;
        EXPECT_TRUE(this->squares == 2 * size[least] * size[least] && this->spread == 2 * size[least]) << code;
    }
}

TYPED_TEST(OrthogonalFitTest, LeavesWhatItsEarlyExitsSay)
{
    using V = TVector3<TypeParam>;
    const V a(1, 2, 3), b(1, 2, 7), c(1, 2, 8), nan(NAN, 0, 0), old(0, 1, 0), kept(9, 9, 9);
    EXPECT_TRUE(!this->Fit(this->line, {a}) && this->squares == 7 && this->line.origin == kept);
    EXPECT_TRUE(!this->Fit(this->line, {b, b}) && this->squares == 0 && this->line.origin == kept);
    EXPECT_TRUE(!this->Fit(this->line, {c, c, c}) && this->line.origin == c && this->line.direction == old);
    EXPECT_TRUE(!this->Fit(this->line, {a, b, nan}) && this->line.origin != c && this->line.direction == old);
    EXPECT_TRUE(this->Fit(this->line, {a, b}) && this->line.direction == V(0, 0, 1) && this->spread == 0);
    EXPECT_TRUE(!this->Fit(this->plane, {a, b}) && this->spread == 0 && this->plane.point == kept);
    EXPECT_TRUE(!this->Fit(this->plane, {a, b, c, nan}) && this->squares == 0 && this->plane.normal == old);
    EXPECT_TRUE(this->Fit(this->plane, {a, b, c}) && this->plane == TPlane<TypeParam>(a, V())) << "collinear";
    EXPECT_TRUE(this->Fit(this->plane, {c, c, c, c}) && this->plane == TPlane<TypeParam>(c, V(1, 0, 0))) << "one spot";
}

#include "../support/Types.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

constexpr double pi = 3.141592653589793;

template <class T>
struct Frames : ::testing::Test
{
    static constexpr T near = std::numeric_limits<T>::epsilon() * T(4);
};

template <class V>
V Normalised(V v)
{
    v.Normalise();
    return v;
}

} // namespace

TYPED_TEST_SUITE(Frames, Scalars, TypeNames);

TYPED_TEST(Frames, ParallelAndOrthogonalDependOnTheDimension)
{
    using V2 = TVector2<TypeParam>;
    using V3 = TVector3<TypeParam>;
    using V4 = TVector4<TypeParam>;
    EXPECT_TRUE(V2(4, 0).IsParallelTo({0.5, 0}, 0) && V4(0, 0, 0, 4).IsParallelTo({0, 0, 0, 2}, 0));
    EXPECT_FALSE(V2(1, 0).IsParallelTo({-1, 0}, 1) || V4(0, 0, 0, 4).IsParallelTo({0, 0, 0, -2}, 1));
    EXPECT_TRUE(V2(0, 0).IsParallelTo({1, 0}, 1) && !V2(0, 0).IsParallelTo({1, 0}, 0.75));
    EXPECT_TRUE(V3(1, 0, 0).IsParallelTo({-1, 0, 0}, 0) && V3(0, 0, 0).IsParallelTo({1, 2, 3}, 0));
    // Nothing is normalised: the squared length of the cross product is 4.
    EXPECT_TRUE(V3(2, 0, 0).IsParallelTo({0, 1, 0}, 4) && !V3(2, 0, 0).IsParallelTo({0, 1, 0}, 3));

    EXPECT_TRUE(V2(0.5, 1).IsOrthogonalTo({1, 0}, 0.5) && V3(0.5, 0, 1).IsOrthogonalTo({1, 0, 0}, 0.5));
    EXPECT_FALSE(V2(-5, 1).IsOrthogonalTo({1, 0}, 0.5) || V3(-5, 0, 1).IsOrthogonalTo({1, 0, 0}, 0.5));
    EXPECT_TRUE(V4(0, 0, 1, -5).IsOrthogonalTo({0, 0, 0, 1}, 0.5)) << "one-sided";
    EXPECT_FALSE(V4(0, 0, 1, 0.5).IsOrthogonalTo({0, 0, 0, 1}, 0.5) || V4(1, 0, 0, 0).IsOrthogonalTo({0, 1, 0, 0}, 0));
}

TYPED_TEST(Frames, AnglesRunCounterClockwiseInThePlaneAndClockwiseAboutAnAxis)
{
    using T = TypeParam;
    using V2 = TVector2<TypeParam>;
    using V3 = TVector3<TypeParam>;
    const std::pair<V2, double> rows[] = {
        {{3, 3}, pi / 4}, {{-4, T(-0.)}, pi}, {{-2, -2}, 5 * pi / 4}, {{0, -0.5}, 3 * pi / 2}, {{2, 0}, 2 * pi}};
    for (const auto& [v, angle] : rows) {
        EXPECT_NEAR(v.Angle(), angle < 6 ? T(angle) : T(0), this->near) << angle;
        EXPECT_NEAR(V2(5, 0).AngleWith(v), T(angle), this->near) << "one direction is a full turn away";
        EXPECT_NEAR(V3(5, 0, 0).AngleWith({v.x, -v.y, 0}, {0, 0, 7}), T(angle), this->near) << angle;
    }
    EXPECT_TRUE(V2(0, 0).Angle() == 0 && V2(0, 0).AngleWith({1, 2}) == 0);
    EXPECT_TRUE(std::isnan(V3(0, 0, 0).AngleWith({1, 0, 0}, {0, 0, 1}))) << "the clamp lets NaN through";
    for (V3 v(T(0.1), 1, 2); v.x < 3; v.x += T(0.01)) // rounding takes the cosine of some of these above 1
        EXPECT_FALSE(std::isnan(v.AngleWith(v * T(-3), V3(0, 0, 1))) || std::isnan(V2(v).AngleWith(V2(v) * T(3))));
}

TYPED_TEST(Frames, TheFirstOrthonormalComesFromTheAxisOfTheSmallestComponent)
{
    using V3 = TVector3<TypeParam>;
    const V3 rows[][2] = {{{-1, 2, -3}, {1, 0, 0}}, {{-2, -1, 3}, {0, 1, 0}}, {{2, -3, -1}, {0, 0, 1}},
                          {{0, 0, 1}, {0, 1, 0}},   {{1, 0, 0}, {0, 0, 1}},   {{1, 2, -1}, {0, 0, 1}},
                          {{1, -1, 1}, {0, 0, 1}},  {{0, 0, 0}, {0, 0, 1}}};
    for (const auto& [v, axis] : rows) {
        V3 x, y;
        v.OrthonormalXY(&x, &y);
        EXPECT_EQ(x, Normalised(v * axis)) << v.x << ' ' << v.y << ' ' << v.z;
        EXPECT_TRUE((x * y).IsEqualTo(Normalised(v), this->near)) << "the triple is right-handed";
    }
    TVector2<TypeParam> right(3, 4);
    right.Orthonormal(&right);
    EXPECT_TRUE(right.x == TypeParam(4) / 5 && right.y == -TypeParam(3) / 5);
}

TYPED_TEST(Frames, FourVectorsGetAFrameOfThreeWithZerosForWhatIsNotSolved)
{
    using T = TypeParam;
    using V4 = TVector4<T>;
    for (unsigned int zeros = 0; zeros < 4; ++zeros) { // there is no division by these
        V4 frame[] = {V4(T(0.3), T(-0.7), T(0.9), 2), V4(), V4(), V4()};
        std::fill_n(&frame[0][0], zeros, T(0));
        ASSERT_TRUE(frame[0].OrthonormalXYZ(&frame[1], &frame[2], &frame[3]));
        for (unsigned int a = 1; a < 4; ++a)
            for (unsigned int b = 0; b <= a; ++b)
                EXPECT_NEAR(frame[a] % frame[b], a == b ? 1 : 0, this->near * 1000) << a << b;
    }

    V4 x(7, 7, 7, 7), y(x), z(x);
    EXPECT_FALSE(V4(0, 0, 0, 0).OrthonormalXYZ(&x, &y, &z));
    EXPECT_TRUE(x == V4(7, 7, 7, 7) && y == x && z == x);
    EXPECT_TRUE(V4(1, 1, -2, 0).OrthonormalXYZ(&x, &y, &z));
    EXPECT_TRUE(x == V4(1, 1, 1, 1) / 2 && y == Normalised(V4(0, 0, 1, 1)));

    // The determinant of the first system is the component itself, judged by the float nearest 1e-6.
    const TypeParam e = static_cast<TypeParam>(1e-6f);
    EXPECT_TRUE(V4(e, 0, 0, 0).OrthonormalXYZ(&x, &y, &z) && y == Normalised(V4(0, 0, 1, 1)));
    EXPECT_TRUE(V4(std::nextafter(e, TypeParam(1)), 0, 0, 0).OrthonormalXYZ(&x, &y, &z));
    EXPECT_TRUE(x == Normalised(V4(0, 1, 1, 1)) && y == Normalised(V4(0, -2, 1, 1)));
}

TYPED_TEST(Frames, RotationFollowsRodriguesTermByTerm)
{
    using T = TypeParam;
    using V3 = TVector3<TypeParam>;
    // The second component is (big - big) + 1; added in any other order the 1 is lost.
    V3 v(1, 1, 0);
    V3(0, 1, 1).Rotate(&v, T(8) / std::numeric_limits<T>::epsilon(), 1);
    EXPECT_EQ(v.y, T(1));
    const T angle = T(-2.3); // sine and cosine pass through double
    V3(0, 0, 1).Rotate(&(v = V3(2, 0, 5)), angle);
    EXPECT_TRUE(v.x == 2 * T(std::cos(double(angle))) && v.y == 2 * T(std::sin(double(angle))));
}

#include "../support/Types.h"

#include <CorvexMaths/vectors/TComplex.h>
#include <CorvexMaths/vectors/TQuaternion.h>

#include <cstring>
#include <limits>
#include <tuple>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

template <class T>
class Quaternions : public ::testing::Test
{};
TYPED_TEST_SUITE(Quaternions, Scalars, TypeNames);

/// Equality to the bit of all components; for values that are not NaN.
template <class C>
bool Same(const C& a, const C& b)
{
    return std::memcmp(&a, &b, sizeof(C)) == 0;
}

TYPED_TEST(Quaternions, TurnAsTheVectorsDo)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T near = 64 * std::numeric_limits<T>::epsilon(), angle = T(2.5);
    const V axis(1, 2, -2);
    V turned(1, 2, 3), unit = axis;
    unit.Normalise();
    unit.Rotate(&turned, angle);
    const TQuaternion<T> q(angle, axis);
    EXPECT_TRUE(((q * T(3)).ToMatrix() * V(1, 2, 3)).IsEqualTo(turned, near)) << "normalised there";
    EXPECT_TRUE(std::isnan(TQuaternion<T>().ToMatrix()[1][2]));
}

TYPED_TEST(Quaternions, MatricesChooseTheLeadingComponent)
{
    using T = TypeParam;
    using Q = TQuaternion<T>;
    using M = TMatrix3x3<T>;
    const T s = 2 * std::sqrt(T(2)), step = static_cast<T>(std::ldexp(257., -25));
    // A scalar part of 0.00100000002 lies between 0.001 and the float nearest it; a float matrix cannot come as close.
    const T above = T(4 * 0.00100000002 * 0.00100000002 - (sizeof(T) == 4 ? 0.9999999 : 1)), below = T(3.6e-6 - 1);
    const std::tuple<const char*, M, Q> rows[] = {
        {"identity", M(), Q(1, 0, 0, 0)},
        {"half turn about x", M(1, 0, 0, 0, -1, 0, 0, 0, -1), Q(0, 1, 0, 0)},
        {"x ties with y", M(0, 1, 0, 1, 0, 0, 0, 0, -1), Q(0, 2 / s, s / 4, 0)},
        {"x ties with z", M(0, 0, 1, 0, -1, 0, 1, 0, 0), Q(0, 2 / s, 0, s / 4)},
        {"y ties with z", M(-1, 0, 0, 0, 0, 1, 0, 1, 0), Q(0, 0, 2 / s, s / 4)},
        {"trace in double", M(step, 0, 0, 0, -1, 0, 0, 0, 0), Q(T(std::sqrt(double(step)) / 2), 0, 0, 0)},
        {"above the threshold", M(0, 0, 0, 0, 0, 0, 0, 0, above), Q(T(std::sqrt(1. + double(above)) / 2), 0, 0, 0)},
        {"below the threshold", M(0, 0, 0, 0, 0, 0, 0, 0, below), Q(0, 0, std::sqrt(1 - below) / 2, 0)}};
    for (const auto& [name, matrix, expected] : rows) {
        M given = matrix;
        EXPECT_TRUE(Same(Q(given) + Q(), expected)) << name;
    }
}

TYPED_TEST(Quaternions, GetRotationTakesTheScalarPartAsItIs)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T pi = static_cast<T>(3.141592653589793), below = T(1) - static_cast<T>(9.99999999e-7);
    const V none(1, 0, 0), tip(0, 0, 2), up(0, 0, 1);
    const std::tuple<T, V, T, V> rows[] = {{T(1) - static_cast<T>(9.6e-7), tip, 0, none},
                                           {below, tip, 2 * static_cast<T>(std::acos(double(below))), up},
                                           {7, tip, 0, none},
                                           {T(0.5), V(), 2 * static_cast<T>(std::acos(0.5)), V()},
                                           {-1, tip, 2 * pi, up},
                                           {-7, tip, 2 * pi, up}};
    for (const auto& [w, vector, angle, axis] : rows) {
        T foundAngle;
        V foundAxis;
        TQuaternion<T>(w, vector.x, vector.y, vector.z).GetRotation(&foundAngle, &foundAxis);
        EXPECT_TRUE(foundAngle == angle && foundAxis == axis) << w;
    }
}

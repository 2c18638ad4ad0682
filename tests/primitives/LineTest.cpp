#include "Values.h"

template <class T>
using LineTest = Primitive<T>;
TYPED_TEST_SUITE(LineTest, Scalars, TypeNames);

TYPED_TEST(LineTest, CrossesUnlessBothAreVerticalOrSlopesAreNear)
{
    using T = TypeParam;
    using V = TVector2<T>;
    const V unwritten(-9, -9);
    const std::tuple<const char*, V, V, V, T, bool, V> rows[] = {
        {"coincident verticals", {0, 1}, {0, 1}, {0, 1}, 0, false, unwritten},
        {"vertical at the tolerance", {1, 0.5}, {4, 0}, {0.25, 1}, 0.25, true, {4, 3}},
        {"not vertical by less", {1, 0.5}, {3.5, 0}, {0.25, 1}, 0.125, true, {T(30) / 7, T(22) / 7}},
        {"slopes beyond the threshold", {1, 0}, {0, 4}, {1, -0x1p-19f}, 0.5, true, {T(3 << 19), 1}},
    };
    for (const auto& [name, direction, otherOrigin, otherDirection, tolerance, cross, expected] : rows) {
        TLine2<T> lines[2];
        lines[0].origin = V(0, 1), lines[0].direction = direction;
        lines[1].origin = otherOrigin, lines[1].direction = otherDirection;
        for (int i = 0; i < 2; ++i) {
            V point = unwritten;
            EXPECT_EQ(lines[i].IntersectWith(lines[1 - i], &point, tolerance), cross) << name;
            EXPECT_TRUE(point.IsEqualTo(expected, this->epsilon * 16)) << name << ' ' << point.x;
        }
    }
}

TYPED_TEST(LineTest, MeetsTrianglesFromTheSidesThatCount)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T at = T(1e-6f) / 4, inside = std::nextafter(at, T(0)), unwritten = -99;
    constexpr int none = 0, against = 1, along = 2;
    // Lines from 8 above (x, y) with this direction along z meet the triangle (0, 0, 0), (width, 0, 0), (0, 4, 0).
    const std::tuple<const char*, T, T, T, T, T, int> rows[] = {
        {"on the far side", 2, 2, -1, 4, 0, against},
        {"u and v at minus the tolerance", -1, -1, -1, 4, 0.25, against},
        {"v beyond it", 1, -1, -1, 4, 0.125, none},
        {"the sum at the tolerance", 3, 3, -1, 4, 0.5, against},
        {"u too great, though the sum is not", 6, -1, -1, 4, 0.25, none},
        {"determinant at the threshold", 0, 1, -1, at, 0, against},
        {"determinant at minus the threshold", 0, 1, 1, at, 0, along},
        {"determinant below it", 0, 1, -1, inside, 100, none},
        {"NaN is never rejected", 1, 1, this->nan, 4, 0, against | along},
    };
    using Form = bool (TLine3<T>::*)(const V&, const V&, const V&, V*, T*, T) const;
    const Form forms[] = {&TLine3<T>::IntersectWith, &TLine3<T>::IntersectWithBFC, &TLine3<T>::IntersectWithFFC};
    for (const auto& [name, x, y, direction, width, tolerance, sides] : rows) {
        for (int i = 0; i < 3; ++i) {
            const bool hits = i == 0 ? sides != none : (sides & i) != 0;
            const TLine3<T> line(V(x, y, 8), V(0, 0, direction));
            V point(unwritten, unwritten, unwritten);
            const V expected = hits ? V(x, y, 0) : point;
            T distance = unwritten;
            EXPECT_EQ((line.*forms[i])(V(), V(width, 0, 0), V(0, 4, 0), &point, &distance, tolerance), hits) << name;
            if (std::isnan(direction)) continue;
            EXPECT_TRUE(point.IsEqualTo(expected, this->epsilon * 4)) << name << ' ' << point.x;
            EXPECT_NEAR(distance, hits ? -8 * direction : unwritten, this->epsilon * 16) << name;
        }
    }
    // The first weight is (1 - u) - v: here 1 - (u + v) would be less by half an epsilon.
    V hit;
    const TLine3<T> line(V(this->epsilon, 1 + this->epsilon, 8), V(0, 0, -1));
    EXPECT_TRUE(line.IntersectWith(V(0, 0, 1), V(4, 0, 0), V(0, 4, 0), &hit, nullptr, T(0)) && hit.z == T(0.75));
}

#include "Values.h"

template <class T>
using BoxTest = Primitive<T>;
TYPED_TEST_SUITE(BoxTest, Scalars, TypeNames);

TYPED_TEST(BoxTest, IsEmptyUntilExtendedAndHoldsPointsInclusively)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const V p(1, 2, 3), ones(1, 1, 1), largest = ones * std::numeric_limits<float>::max();
    TBox<T> box, small(T(5));
    box.EnsureVolume();
    box.Extend(this->nan, this->nan, this->nan);
    EXPECT_TRUE(box.minimum == largest && box.maximum == -largest) << "neither an empty extent nor NaN moves a corner";
    box.Extend(p);
    box.EnsureVolume();
    EXPECT_TRUE(box.minimum == p - ones && box.maximum == p + ones);
    EXPECT_TRUE(box.IsWithin(TVector4<T>(2.5, 0.5, 4, this->nan), T(0.5)) && box.IsWithin(TVector2<T>(2, 1), T(0)));
    EXPECT_FALSE(box.IsWithin(V(1, 2, 4.5), T(0.25)) || box.IsWithin(V(1, this->nan, 3), T(9)));
    box.Extend(T(-1));
    EXPECT_EQ(box, TBox<T>(p, p, T(1))) << "a negative margin shrinks; limits are not compared";
    // The limit is a value: what lies beyond it moves one corner only.
    small.Extend(T(7), T(0), T(-7));
    EXPECT_TRUE(small.minimum == V(5, 0, -7) && small.maximum == V(7, 0, -5));
}

TYPED_TEST(BoxTest, OverlapsInclusivelyInThePlaneOrInSpace)
{
    using V = TVector3<TypeParam>;
    // The corners of another box, and whether it overlaps that from 0 to 2 in the plane and in space.
    const std::tuple<V, V, bool, bool> rows[] = {
        {V(2, 2, 2), V(3, 3, 3), true, true},         {V(2, 2, 2.5), V(3, 3, 3), true, false},
        {V(2.5, 0, 0), V(3, 2, 2), false, false},     {V(0, -3, 0), V(2, -0.5, 2), false, false},
        {V(1, 1, 1), V(1, 1, 1), true, true},         {V(-9, -9, -9), V(9, 9, 9), true, true},
        {V(0, 0, this->nan), V(2, 2, 2), true, true}, {V(-this->infinity, 0, 0), V(0, 2, 2), true, true}};
    const TBox<TypeParam> box(V(0, 0, 0), V(2, 2, 2), TypeParam(9));
    for (const auto& [low, high, inPlane, inSpace] : rows) {
        const TBox<TypeParam> other(low, high, TypeParam(9));
        EXPECT_TRUE(box.IsWithin(other, true) == inPlane && other.IsWithin(box, true) == inPlane) << low.x << low.y;
        EXPECT_TRUE(box.IsWithin(other, false) == inSpace && other.IsWithin(box, false) == inSpace) << low.x << low.z;
    }
}

TYPED_TEST(BoxTest, MeetsLinesPlaneByPlane)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const V none(-9, -9, -9);
    const std::tuple<const char*, V, V, T, bool, V, V> rows[] = {
        {"diagonal", {-1, -1, -1}, {1, 1, 1}, 0.125, true, {0, 0, 0}, {2, 2, 2}},
        {"a miss leaves the last rejected point", {-5, 3, 1}, {1, 0, 0}, 0.125, false, {2, 3, 1}, none},
        {"one hit at an edge, then rejected points", {-2, 2, 1}, {1, -1, 0}, 0.125, true, {0, 0, 1}, {-2, 2, 1}},
        {"beside a face, within tolerance", {-5, 2.5, 1}, {1, 0, 0}, 0.5, true, {0, 2.5, 1}, {2, 2.5, 1}},
        {"component below tolerance", {0, -4, 1}, {1, 0.25, 0}, 0.5, false, {2, -3.5, 1}, none},
        {"component at tolerance", {0, -4, 1}, {1, 0.5, 0}, 0.5, false, {12, 2, 1}, none},
    };
    const TBox<T> box(V(0, 0, 0), V(2, 2, 2), T(8));
    TLine3<T> line;
    V first, second;
    for (const auto& [name, origin, direction, tolerance, hits, expectedFirst, expectedSecond] : rows) {
        line.origin = origin, line.direction = direction, first = second = none;
        EXPECT_EQ(line.IntersectWith(box, &first, &second, tolerance), hits) << name;
        EXPECT_TRUE(first == expectedFirst && second == expectedSecond) << name << first.x << ' ' << second.x;
    }
    line.direction.x = this->nan;
    EXPECT_TRUE(!box.IntersectWith(line, &first, &second, T(1)) && std::isnan(first.x))
        << "NaN is parallel to no plane";
}

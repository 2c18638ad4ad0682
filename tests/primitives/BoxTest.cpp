#include "../support/Types.h"

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct BoxTest : ::testing::Test
{};
TYPED_TEST_SUITE(BoxTest, Scalars, TypeNames);

TYPED_TEST(BoxTest, IsEmptyUntilExtendedAndHoldsPointsInclusively)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T nan = std::numeric_limits<T>::quiet_NaN();
    const V p(1, 2, 3), ones(1, 1, 1), largest = ones * std::numeric_limits<float>::max();
    TBox<T> box, small(T(5));
    box.EnsureVolume();
    box.Extend(nan, nan, nan);
    EXPECT_TRUE(box.minimum == largest && box.maximum == -largest) << "neither an empty extent nor NaN moves a corner";
    EXPECT_FALSE(box.IsWithin(p, T(1)));
    box.Extend(p);
    box.EnsureVolume();
    EXPECT_TRUE(box.minimum == p - ones && box.maximum == p + ones);
    EXPECT_TRUE(box.IsWithin(TVector4<T>(2.5, 0.5, 4, nan), T(0.5)) && box.IsWithin(TVector2<T>(2, 1), T(0)));
    EXPECT_FALSE(box.IsWithin(V(1, 2, 4.5), T(0.25)) || box.IsWithin(V(1, 0, 3), T(0.5)) ||
                 box.IsWithin(V(1, nan, 3), T(9)));
    box.Extend(T(-1));
    EXPECT_EQ(box, TBox<T>(p, p, T(1))) << "a negative margin shrinks; limits are not compared";
    // The limit is a value: what lies beyond it moves one corner only, and a reset returns to it.
    small.Extend(T(7), T(0), T(-7));
    EXPECT_TRUE(small.minimum == V(5, 0, -7) && small.maximum == V(7, 0, -5));
    small.Reset();
    EXPECT_TRUE(small.minimum == ones * T(5) && small.maximum == ones * T(-5));
}

TYPED_TEST(BoxTest, TellsItsMeasuresAndCorners)
{
    using V = TVector3<TypeParam>;
    const TBox<TypeParam> box(V(1, 2, 3), V(2, 5, 10), TypeParam(1));
    EXPECT_EQ(V(box.GetWidth(), box.GetDepth(), box.GetHeight()), V(1, 3, 7));
    EXPECT_EQ(V(box.GetMinDim(), box.GetMaxDim(), box.GetArea()), V(1, 7, 3));
    const V expected[12] = {{1, 2, 3},  {1, 5, 3},  {2, 5, 3}, {2, 2, 3},  {2, 5, 10},  {1, 5, 10},
                            {1, 2, 10}, {2, 2, 10}, {1, 3, 7}, {-1, 3, 7}, {-1, -3, 7}, {1, -3, 7}};
    V actual[12];
    box.GetCorners(actual);
    box.GetDiagonals(actual + 8);
    for (int i = 0; i < 12; ++i) EXPECT_EQ(actual[i], expected[i]) << i;
}

TYPED_TEST(BoxTest, OverlapsWhereTheCornersDifferencesSurroundTheOrigin)
{
    using T = TypeParam;
    const T infinite = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    // Few distinct values, so that bounds coincide, stand in the wrong order, or are not finite.
    const T values[] = {-1, 0, 1, 2, T(1e38), -infinite, nan};
    std::mt19937 random(20240);
    const auto draw = [&] { return values[random() % (random() % 4 == 0 ? 7 : 4)]; };
    for (int i = 0; i < 40000; ++i) {
        const bool planar = i % 2 == 0;
        TVector3<T> corners[2][8];
        TBox<T> boxes[2], differences;
        for (int k = 0; k < 2; ++k) {
            for (int bound = 0; bound < 6; ++bound) reinterpret_cast<T*>(&boxes[k])[bound] = draw();
            boxes[k].GetCorners(corners[k]);
        }
        for (int j = 0; j < 64; ++j)
            if (!planar || (j / 8 < 4 && j % 8 < 4)) differences.Extend(corners[0][j / 8] - corners[1][j % 8]);
        const bool expected =
            differences.IsWithin(TVector2<T>(), T(0)) && (planar || differences.IsWithin(TVector3<T>(), T(0)));
        ASSERT_EQ(boxes[0].IsWithin(boxes[1], planar), expected) << "seed 20240, draw " << i;
    }
}

TYPED_TEST(BoxTest, MovesByTheBoxAroundItsCorners)
{
    using V = TVector3<TypeParam>;
    // A quarter turn about z for row vectors, a translation in the last row, and a w of 2 that is dropped.
    const TypeParam elements[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 2};
    TBox<TypeParam> box(V(0, 0, 0), V(2, 4, 6), TypeParam(1000));
    const TBox<TypeParam> moved = box * TMatrix4x4<TypeParam>(elements);
    EXPECT_TRUE(moved.minimum == V(6, 20, 30) && moved.maximum == V(10, 22, 36) && box.maximum == V(2, 4, 6));
    box.limit = TypeParam(8);
    box *= TMatrix4x4<TypeParam>(elements);
    EXPECT_TRUE(box.minimum == V(6, 8, 8) && box.maximum == moved.maximum) << "it is emptied to its own limit";
}

TYPED_TEST(BoxTest, MeetsLinesPlaneByPlane)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const V unwritten(-9, -9, -9);
    const std::tuple<const char*, V, V, T, bool, V, V> rows[] = {
        {"straight through", {-5, 1, 1}, {1, 0, 0}, 0.125, true, {0, 1, 1}, {2, 1, 1}},
        {"parallel planes are met at tolerance 0", {-5, 1, 1}, {1, 0, 0}, 0, true, {0, 1, 1}, {2, 1, 1}},
        {"diagonal", {-1, -1, -1}, {1, 1, 1}, 0.125, true, {0, 0, 0}, {2, 2, 2}},
        {"a miss leaves the last rejected point", {-5, 3, 1}, {1, 0, 0}, 0.125, false, {2, 3, 1}, unwritten},
        {"one hit at an edge, then rejected points", {-2, 2, 1}, {1, -1, 0}, 0.125, true, {0, 0, 1}, {-2, 2, 1}},
        {"beside a face, within tolerance", {-5, 2.5, 1}, {1, 0, 0}, 0.5, true, {0, 2.5, 1}, {2, 2.5, 1}},
        {"component below tolerance", {0, -4, 1}, {1, 0.25, 0}, 0.5, false, {2, -3.5, 1}, unwritten},
        {"component at tolerance", {0, -4, 1}, {1, 0.5, 0}, 0.5, false, {12, 2, 1}, unwritten},
    };
    const TBox<T> box(V(0, 0, 0), V(2, 2, 2), T(8));
    TLine3<T> line;
    for (const auto& [name, origin, direction, tolerance, hits, expectedFirst, expectedSecond] : rows) {
        SCOPED_TRACE(name);
        line.origin = origin;
        line.direction = direction;
        V first = unwritten, second = unwritten;
        EXPECT_EQ(line.IntersectWith(box, &first, &second, tolerance), hits);
        EXPECT_TRUE(first == expectedFirst && second == expectedSecond) << first.x << ' ' << second.x;
        EXPECT_EQ(box.IsWithin(line, tolerance), hits);
    }
    line.direction.x = std::numeric_limits<T>::quiet_NaN();
    V first, second;
    EXPECT_FALSE(box.IntersectWith(line, &first, &second, T(1)));
    EXPECT_TRUE(std::isnan(first.x)) << "NaN is not parallel to any plane";
}

TYPED_TEST(BoxTest, MeetsLinesOfThePlaneAtHeightZero)
{
    using V = TVector2<TypeParam>;
    const TypeParam tolerance = TypeParam(0.25);
    TBox<TypeParam> box(TVector3<TypeParam>(-100, 0, 0), TVector3<TypeParam>(100, 2, 0), TypeParam(1));
    TLine2<TypeParam> line;
    line.origin = V(1, -1);
    line.direction = V(8, TypeParam(0.5));
    V first(-9, -9), second(-9, -9);
    EXPECT_FALSE(box.IntersectWith(line, &first, &second, tolerance)) << "the tolerance sees a unit direction";
    EXPECT_TRUE(first == V(-9, -9) && second == V(-9, -9));
    line = TLine2<TypeParam>(V(0, 1), V(3, 0));
    EXPECT_TRUE(box.IntersectWith(line, &first, &second, tolerance));
    EXPECT_TRUE(first == V(-100, 1) && second == V(100, 1));
    box.minimum.z = TypeParam(0.125);
    EXPECT_FALSE(box.IntersectWith(line, &first, &second, tolerance)) << "the tolerance does not reach down to 0";
}

// Circles in the plane and in space, and spheres.

#include "Values.h"

template <class T>
using CircleTest = Primitive<T>;
TYPED_TEST_SUITE(CircleTest, Scalars, TypeNames);

TYPED_TEST(CircleTest, MeetsLinesWithTheFurtherHitFirst)
{
    using T = TypeParam;
    using V = TVector2<T>;
    const TCircle2<T> circle(T(5), T(1), T(0));
    V p1, p2;
    TLine2<T> line;
    line.origin = V(-9, 3), line.direction = V(-2, 0); // not of unit length
    EXPECT_TRUE(line.IntersectWith(circle, &p1, &p2) && p1 == V(-3, 3) && p2 == V(5, 3));
    EXPECT_TRUE(TLine2<T>(V(-1, 5), V(1, 0)).IntersectWith(circle, &p1, &p2) && p1 == V(1, 5) && p2 == p1);
    line.origin = V(-1, std::nextafter(T(5), T(6)));
    EXPECT_FALSE(line.IntersectWith(circle, &p1, &p2) || p1 != V(1, 5));
    bool on[2] = {true, true};
    const TEdge2<T> inwards(V(-9, 3), V(0, 3)), before(V(-9, 3), V(-8, 3)), past(V(0, 6), V(1, 6));
    EXPECT_FALSE(past.IntersectWith(circle, &p1, &p2, on, on + 1) || !on[0] || !on[1]);
    EXPECT_TRUE(inwards.IntersectWith(circle, &p1, &p2, on, on + 1) && !on[0] && on[1]);
    EXPECT_TRUE(before.IntersectWith(circle, &p1, &p2, nullptr, on + 1) && !on[1]) << "the line counts";
}

TYPED_TEST(CircleTest, BoundsPointsByTwoOrThreeOfThem)
{
    using T = TypeParam;
    using V = TVector2<T>;
    const T near = 16 * this->epsilon;
    // Three of a right angle, of an acute triangle and of an obtuse one, a line, one point, several at one place.
    const std::tuple<std::vector<V>, V, T> rows[] = {{{{0, 0}, {4, 0}, {0, 3}}, {2, 1.5}, 2.5},
                                                     {{{-4, -3}, {4, -3}, {0, 5}, {1, 1}, {3, -3.5}}, {0, 0}, 5},
                                                     {{{0, 0}, {2, 1}, {4, 0}, {2, -1}}, {2, 0}, 2},
                                                     {{{1, 1}, {3, 3}, {5, 5}, {2, 2}}, {3, 3}, std::sqrt(T(8))},
                                                     {{{7, 8}}, {7, 8}, 0},
                                                     {{{7, 8}, {7, 8}, {7, 8}}, {7, 8}, 0}};
    for (const auto& [points, centre, radius] : rows) {
        TCircle2<T> circle;
        const TList<V> list(points.data(), static_cast<unsigned int>(points.size()), 8u);
        circle.MinimumBoundingCircle(list);
        EXPECT_TRUE(circle.centre.IsEqualTo(centre, near)) << circle.centre.x << ' ' << circle.centre.y;
        EXPECT_NEAR(circle.radius, radius, near);
        TCircle2<T> around(T(90), centre);
        around.MinimumBoundingCircle(list);
        EXPECT_EQ(around.radius, 90) << "a circle that holds all of them stays";
    }
}

TYPED_TEST(CircleTest, InSpacePassesThroughThreePointsAndMeetsLinesInItsDisc)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T near = this->epsilon * 32;
    TCircle3<T> circle;
    EXPECT_TRUE(circle.Fit(V(2, 8, -1), V(2, 3, 4), V(2, 0, 3), T(0)) && circle.normal.IsEqualTo(V(-1, 0, 0), near));
    EXPECT_FALSE(circle.Fit(V(0, 0, 0), V(1, 0, 0), V(0, 1, 0), T(1.5))) << "twice the area is within the tolerance";
    EXPECT_TRUE(circle.normal == V(0, 0, -1) && std::fabs(circle.radius - 5) < near) << "only the normal is replaced";
    EXPECT_TRUE(circle.centre.IsEqualTo(V(2, 3, -1), near));

    const TCircle3<T> disc(T(5), V(1, 2, 3), V(0, 0, 4));
    V point;
    EXPECT_TRUE(disc.IntersectWith(TLine3<T>(V(4, 6, 9), V(0, 0, -1)), &point) && point == V(4, 6, 3)) << "on the rim";
    EXPECT_TRUE(!disc.IntersectWith(TLine3<T>(V(4, 7, 9), V(0, 0, 1)), &point) && point == V(4, 7, 3)) << "outside";
    EXPECT_FALSE(disc.IntersectWith(TLine3<T>(V(1, 2, 3), V(1, 0, T(5e-7))), &point)) << "parallel";
    EXPECT_EQ(point, V(4, 7, 3));
}

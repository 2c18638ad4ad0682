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

TYPED_TEST(CircleTest, PassesThroughThreePointsAndContainsThemInclusively)
{
    using T = TypeParam;
    using V = TVector2<T>;
    TCircle2<T> circle;
    const V points[] = {{8, -1}, {3, 4}, {0, 3}, {9, -1}};
    const TList<V> list(points, 4, 1000u);
    EXPECT_TRUE(circle.Fit(points[0], points[1], points[2]) && !circle.Fit(points[0], points[1], points[1]));
    EXPECT_TRUE(circle.radius == 5 && circle.centre == V(3, -1)) << "a failed fit leaves the circle";
    EXPECT_TRUE(circle.Contains(list, 3, T(0)) && !circle.Contains(list, 4, T(0)) && circle.Contains(list, 4, T(1)));
}

// The smallest circle through p and q about the first points, one candidate at a time.
template <class T, class V>
TCircle2<T> BoundPlainly(const std::vector<V>& points, unsigned int count, V p, V q)
{
    TCircle2<T> left, right, candidate, diameter(T(0.5) * p.DiffVectLen(q), (p + q) * T(0.5));
    const T reach = diameter.radius + T(1e-4f);
    const auto lead = [&](const TCircle2<T>& circle) { return (q - p).SignedArea(circle.centre - p); };
    bool all = true;
    for (unsigned int i = 0; i < count; ++i) {
        all &= !(diameter.centre.DiffVectLenSquared(points[i]) > reach * reach);
        const T k = (q - p).SignedArea(points[i] - p);
        if (!candidate.Fit(p, q, points[i])) continue;
        if (k > 0 && (left.radius == 0 || lead(candidate) > lead(left))) left = candidate;
        if (k < 0 && (right.radius == 0 || lead(right) > lead(candidate))) right = candidate;
    }
    if (all) return diameter;
    return right.radius == 0 || (left.radius != 0 && left.radius <= right.radius) ? left : right;
}

// The circle about the first points; a rim that is not null is a point it passes through.
template <class T, class V>
TCircle2<T> BoundPlainly(const std::vector<V>& points, unsigned int count, const V* rim)
{
    TCircle2<T> circle(T(0), rim ? *rim : V());
    for (unsigned int i = 0; i < count; ++i) {
        if (circle.Contains(points[i], T(1e-6f))) continue;
        if (rim && circle.radius == 0)
            circle.centre = (*rim + points[i]) / T(2), circle.radius = circle.centre.DiffVectLen(*rim);
        else
            circle = rim ? BoundPlainly<T>(points, i + 1, *rim, points[i]) : BoundPlainly<T>(points, i + 1, &points[i]);
    }
    return circle;
}

TYPED_TEST(CircleTest, BoundsPointsToTheBitsOfThePlainScans)
{
    using T = TypeParam;
    using V = TVector2<T>;
    const T special[] = {0, -T(0), this->infinity, -this->infinity, this->nan, T(1e-6f), T(1e-4f), this->least};
    std::mt19937 random(5);
    SCOPED_TRACE("seed 5");
    std::uniform_real_distribution<T> coordinate(T(-1), T(1));
    for (unsigned int round = 0; round < 3000; ++round) {
        const unsigned int kind = round % 5, count = 1 + static_cast<unsigned int>(random() % 60);
        const auto draw = [&] {
            if (kind == 0) return static_cast<T>(random() % 7) - T(3); // ties and collinear points
            if (kind == 1 && random() % 8 == 0) return special[random() % 8];
            return coordinate(random) * (kind == 2 ? T(100) : T(1)) + (kind == 4 ? T(round) : T(0));
        };
        std::vector<V> points(count);
        for (V& p : points) {
            p = V(draw(), draw());
            if (kind == 3) p.Normalise(), p *= 1 + draw() / 1000; // near one rim
        }
        TCircle2<T> circle;
        circle.MinimumBoundingCircle(TList<V>(points.data(), count, 1000u));
        const TCircle2<T> plain = BoundPlainly<T, V>(points, count, nullptr);
        ASSERT_TRUE(SameBits(circle.centre.x, plain.centre.x) && SameBits(circle.centre.y, plain.centre.y) &&
                    SameBits(circle.radius, plain.radius))
            << "seed 5, " << round;
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

TYPED_TEST(CircleTest, InSpaceIsFittedToPointsBySteps)
{
    using T = TypeParam;
    using V = TVector3<T>;
    // At distances 6 and 4 along two axes across (0, 3, 4) / 5: the radius is 5, every residual 1. The algebraic fit
    // leaves minus the mean square, -26, for the radius, and so residuals of 32 and 30 for the first step.
    const V middle(1, 2, 3), u(6, 0, 0), v(0, T(-3.2), T(2.4));
    const V around[] = {middle + u, middle + v, middle - u, middle - v};
    const T none = std::is_same_v<T, float> ? T(-2 * 1e30f) : T(-2e30);
    const std::tuple<const char*, unsigned int, unsigned int, T, bool, T, T, T> rows[] = {
        {"no steps", 4, 0, 0, false, -26, none, 0},
        {"tallies from before the step", 4, 1, T(0.01), false, 5, 2, 3848},
        {"a step within the tolerance", 4, 1, 200, true, 5, 2, 3848},
        {"two steps", 4, 2, T(0.01), true, 5, 2, 4},
        {"three points", 3, 0, 0, true, 6.5, 0, 0},
    };
    for (const auto& [name, count, iterations, tolerance, isFitted, radius, width, sum] : rows) {
        TPointSet<T, TVector3> points(around, count);
        TCircle3<T> circle;
        T spread = -1, squares = -1;
        EXPECT_EQ(circle.Fit(points, &spread, &squares, tolerance, iterations), isFitted) << name;
        EXPECT_NEAR(circle.radius, radius, 1e-4) << name;
        EXPECT_NEAR(spread, width, std::fabs(width) * T(1e-4)) << name;
        EXPECT_NEAR(squares, sum, std::fabs(sum) * T(1e-4)) << name;
        EXPECT_TRUE(count == 3 || circle.centre.IsEqualTo(middle, T(1e-4))) << name;
    }
}

TYPED_TEST(CircleTest, SphereMeetsLinesWithTheEarlierHitFirst)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const TSphere<T> sphere(T(5), V(1, 2, 3));
    const TLine3<T> tangent(V(0, 2, 8), V(1, 0, 0)), secant(V(0, 5, 3), V(-1, 0, 0));
    V p1, p2;
    EXPECT_TRUE(tangent.IntersectWith(sphere, &p1, &p2, T(0)) && p1 == V(1, 2, 8) && p2 == p1);
    EXPECT_FALSE(secant.IntersectWith(sphere, &p1, &p2, T(65)) || p1 != V(1, 2, 8)) << "the discriminant is 64";
    EXPECT_TRUE(secant.IntersectWith(sphere, &p1, &p2, T(64)) && p1 == V(5, 5, 3) && p2 == V(-3, 5, 3));
    EXPECT_TRUE(sphere.IntersectWith(TLine3<T>(V(0, 2, 9), V(1, 0, 0)), &p1, &p2, T(-44)) && std::isnan(p1.x + p2.x));
}

TYPED_TEST(CircleTest, SphereIsFittedToPointsWhereTheirSystemIsSound)
{
    using T = TypeParam;
    using V = TVector3<T>;
    using S = TVector4<T>;
    const auto axes = [](const V& m, T r, T z) {
        const V x(r, 0, 0), y(0, r, 0), up(0, 0, z);
        return std::vector<V>{m + x, m - x, m + y, m - y, m + up, m - up};
    };
    const auto corner = [](T s) { return std::vector<V>{V(0, 0, 0), V(s, 0, 0), V(0, s, 0), V(0, 0, s)}; };
    // Residuals of 1, 1, 1.2, -1.6, -1.6, 0, 0 from a radius of 5, whose sum and whose pull on the centre are 0.
    const V c(1, 2, 3), a(T(3.6), T(4.8), 0), b(T(3.6), T(-4.8), 0), d(T(6.2), 0, 0), e(0, T(3.4), 0), f(0, 0, 5);
    const std::vector<V> uneven = {c + a, c + b, c - d, c + e, c - e, c + f, c - f};
    const T s = T(0x1p-17), half = s / 2, outer = std::sqrt(T(0.75)), near = T(0x1p-19), mean = std::sqrt(T(27));
    const unsigned int steps = std::is_same_v<T, double> ? 50 : 0; // in float rounding alone makes the step count
    const std::tuple<const char*, std::vector<V>, unsigned int, bool, S, T> rows[] = {
        {"four of determinant 2^-51, above 1e-16", corner(s), 9, true, S(half, half, half, s * outer), 0},
        {"four of determinant 2^-54", corner(half), 9, false, S(0, 0, 0, 7), -1},
        {"three", {V(3, 0, 0), V(0, 3, 0), V(0, 0, 3)}, 9, false, S(1, 1, 1, 7), -1},
        {"a centre near 0 becomes 0", axes(V(near, near, near) / 4, 1, 1), 0, true, S(0, 0, 0, 1), 0},
        {"one further off does not", axes(V(near, near, near), 1, 1), 0, true, S(near, near, near, 1), 0},
        {"steps to the least squares", uneven, 50, true, S(1, 2, 3, 5), T(2.8)},
        {"a step without the centre is not taken", axes(c, 6, 3), steps, true, S(1, 2, 3, mean), 3},
    };
    for (const auto& [name, around, iterations, isFitted, expected, width] : rows) {
        TPointSet<T, TVector3> points(around.data(), static_cast<unsigned int>(around.size()));
        TSphere<T> sphere(T(7));
        T spread = -1;
        EXPECT_EQ(sphere.Fit(points, &spread, iterations), isFitted) << name;
        EXPECT_TRUE(sphere.sphere.IsEqualTo(expected, T(2e-6) * (1 + expected.w))) << name << ' ' << sphere.sphere.w;
        EXPECT_EQ(sphere.sphere.x == 0, expected.x == 0) << name;
        EXPECT_NEAR(spread, width, 1e-5) << name;
        EXPECT_EQ(sphere.Fit(points, nullptr, 1), isFitted) << name << ": to run out of steps is no failure";
    }
}

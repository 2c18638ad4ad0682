#include "Support.h"

using namespace CorvexTest;
using namespace Maths::Robust;
using Plane = TPointSet<double, TVector2>;
using Space = TPointSet<double, TVector3>;
using Flat = TVector2<double>;
using Solid = TVector3<double>;

namespace
{

constexpr double slack = 10 * std::numeric_limits<double>::epsilon();

double Cross(const Flat& a, const Flat& b)
{
    return a.x * b.y - a.y * b.x;
}

/// The greatest less the least of a measure of the points.
template <class Points, class Measure>
double Spread(const Points& points, Measure measure)
{
    double least = infinity<double>, greatest = -least;
    for (const auto& point : points) {
        const double value = measure(point);
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    return greatest - least;
}

/// The narrowest of the zones that two pairs of points give, which may share a point.
template <class Points, class Width>
double Narrowest(const Points& points, Width width)
{
    const unsigned int count = points.GetCount();
    double least = infinity<double>;
    for (unsigned int i = 0; i < count * count; ++i)
        for (unsigned int k = 0; k < i; ++k)
            least = std::min(least, width(points[i / count], points[i % count], points[k / count], points[k % count]));
    return least;
}

/// A strip is held by the line through two points.
double NarrowestStrip(const Plane& points)
{
    return Narrowest(points, [&](const Flat& a, const Flat& b, const Flat&, const Flat&) {
        const Flat side = b - a;
        const double length = std::sqrt(side % side);
        if (length == 0) return infinity<double>;
        return Spread(points, [&](const Flat& p) { return Cross(side, p); }) / length;
    });
}

/// A slab is held by a face and a vertex or by two edges.
double NarrowestSlab(const Space& points)
{
    return Narrowest(points, [&](const Solid& a, const Solid& b, const Solid& c, const Solid& d) {
        const Solid normal = (b - a) * (d - c);
        const double length = std::sqrt(normal % normal);
        if (length < 1e-9) return infinity<double>;
        return Spread(points, [&](const Solid& p) { return p % normal; }) / length;
    });
}

double RingWidth(const Plane& points, const Flat& centre)
{
    return Spread(points, [&](const Flat& p) { return std::sqrt((p - centre) % (p - centre)); });
}

/// A ring is held by four points: its centre is equally far from both of a pair.
double NarrowestRing(const Plane& points)
{
    return Narrowest(points, [&](const Flat& a, const Flat& b, const Flat& c, const Flat& d) {
        const Flat u = b - a, v = d - c;
        const double area = Cross(u, v), p = 0.5 * (b % b - a % a), q = 0.5 * (d % d - c % c);
        if (std::fabs(area) < 1e-9) return infinity<double>;
        return RingWidth(points, {(p * v.y - q * u.y) / area, (q * u.x - p * v.x) / area});
    });
}

} // namespace

TEST(Zones, AreAsNarrowAsAnExhaustiveSearchFinds)
{
    Random random(21);
    for (unsigned int trial = 0; trial < 300; ++trial) {
        SCOPED_TRACE(testing::Message() << "trial " << trial);
        const unsigned int count = 3 + trial % 7;
        // From flat and round parts to mere clouds.
        const double form = trial % 3 == 0 ? 1.0 : trial % 3 == 1 ? 0.1 : 1e-3;
        Plane line, circle;
        Space plane;
        for (unsigned int i = 0; i < count; ++i) {
            line.Add(random.Within(Flat(1, form)));
            plane.Add(random.Within(Solid(1, 1, form)));
            const Flat direction = random.Within(Flat(1, 1));
            circle.Add(direction * ((1.0 + form * random.Uniform()) / std::sqrt(direction % direction)));
        }
        const LineZone strip(line);
        ASSERT_TRUE(strip);
        EXPECT_NEAR(strip.width, NarrowestStrip(line), 1e-12 * strip.width + slack);
        const auto across = [&](const Flat& p) { return Cross(strip.line.direction, p - strip.line.origin); };
        EXPECT_NEAR(Spread(line, across), strip.width, slack);

        const PlaneZone slab(plane);
        ASSERT_TRUE(slab);
        EXPECT_NEAR(slab.width, count < 4 ? 0.0 : NarrowestSlab(plane), 1e-12 * slab.width + slack);
        const auto above = [&](const Solid& p) { return (p - slab.plane.point) % slab.plane.normal; };
        EXPECT_NEAR(Spread(plane, above), slab.width, slack);

        const CircleZone ring(circle);
        const double least = NarrowestRing(circle), rounding = slack * (1.0 + ring.circle.radius);
        ASSERT_EQ(ring.status, least <= NarrowestStrip(circle) ? Status::Done : Status::Degenerate);
        if (!ring) continue;
        EXPECT_NEAR(ring.width, least, 1e-12 * ring.width + rounding);
        EXPECT_NEAR(RingWidth(circle, ring.circle.centre), ring.width, rounding);
    }
}

TEST(Zones, TellWhyThereIsNone)
{
    Space line, same;
    for (int i = 0; i < 9; ++i) {
        same.Add(Solid(0.1, 0.2, 0.3));
        line.Add(same[0] * static_cast<double>(i));
    }
    EXPECT_LT(LineZone(Plane(line)).width, 1e-15);
    const auto expect = [](const Space& points, Status strip, Status others) {
        EXPECT_EQ(LineZone(Plane(points)).status, strip);
        EXPECT_EQ(PlaneZone(points).status, others);
        EXPECT_EQ(CircleZone(Plane(points)).status, others);
    };
    expect(Space(), Status::TooFewPoints, Status::TooFewPoints);
    expect(same, Status::Degenerate, Status::Degenerate);
    expect(line, Status::Done, Status::Degenerate);
    line[4].y = infinity<double>;
    expect(line, Status::NotFinite, Status::NotFinite);
}

TEST(Zones, OfASquareAndACubeAreTheirSides)
{
    Space cube;
    for (int i = 0; i < 8; ++i) cube.Add(Solid((i & 1) * 4 + 1000, (i & 2) * 1.5 + 1000, (i & 4) * 0.5 + 1000));
    const PlaneZone slab(cube);
    ASSERT_TRUE(slab);
    EXPECT_EQ(slab.width, 2);
    EXPECT_EQ(slab.plane.point.z, 1001);
    EXPECT_EQ(slab.plane.normal.z, 1);
    const LineZone strip{Plane(cube)};
    ASSERT_TRUE(strip);
    EXPECT_EQ(strip.width, 3);
    EXPECT_EQ(strip.line.origin.y, 1001.5);
    EXPECT_EQ(strip.line.direction.x, 1);
}

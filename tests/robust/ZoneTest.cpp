#include <CorvexMaths/robust/Robust.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace Halmont::Orrin::CorvexMaths;
using Robust::Status;

namespace
{

using Plane = TPointSet<double, TVector2>;
using Space = TPointSet<double, TVector3>;

class Random
{
public:
    explicit Random(unsigned int seed) : generator(seed) { std::printf("seed %u\n", seed); }
    double Uniform() { return std::ldexp(static_cast<double>(generator()), -31) - 1.0; }

private:
    std::mt19937 generator;
};

/// The greatest less the least of a measure of the points.
template <class Points, class Measure>
double Spread(const Points& points, Measure measure)
{
    double least = std::numeric_limits<double>::infinity();
    double greatest = -least;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const double value = measure(points[i]);
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    return greatest - least;
}

/// A slab is held by a face and a vertex or by two edges: all normals of two differences of points are tried.
double NarrowestSlab(const Space& points)
{
    const unsigned int count = points.GetCount();
    double width = std::numeric_limits<double>::infinity();
    for (unsigned int i = 0; i < count * count; ++i) {
        for (unsigned int k = 0; k < i; ++k) {
            const TVector3<double> normal =
                (points[i / count] - points[i % count]) * (points[k / count] - points[k % count]);
            const double length = std::sqrt(normal % normal);
            if (length < 1e-9) continue;
            width = std::min(width, Spread(points, [&](const TVector3<double>& p) { return p % normal; }) / length);
        }
    }
    return width;
}

double RingWidth(const Plane& points, const TVector2<double>& centre)
{
    return Spread(points, [&](const TVector2<double>& p) { return std::sqrt((p - centre) % (p - centre)); });
}

/// A ring is held by four points: its centre is equally far from two pairs of them, which may share a point.
double NarrowestRing(const Plane& points)
{
    const unsigned int count = points.GetCount();
    double width = std::numeric_limits<double>::infinity();
    for (unsigned int i = 0; i < count * count; ++i) {
        for (unsigned int k = 0; k < i; ++k) {
            const TVector2<double> a = points[i / count];
            const TVector2<double> b = points[i % count];
            const TVector2<double> c = points[k / count];
            const TVector2<double> d = points[k % count];
            const TVector2<double> u = b - a;
            const TVector2<double> v = d - c;
            const double area = u.x * v.y - u.y * v.x;
            if (std::fabs(area) < 1e-9) continue;
            const double p = 0.5 * (b % b - a % a);
            const double q = 0.5 * (d % d - c % c);
            width = std::min(width, RingWidth(points, {(p * v.y - q * u.y) / area, (q * u.x - p * v.x) / area}));
        }
    }
    return width;
}

double NarrowestStrip(const Plane& points)
{
    double width = std::numeric_limits<double>::infinity();
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        for (unsigned int k = 0; k < i; ++k) {
            const TVector2<double> side = points[k] - points[i];
            const double length = std::sqrt(side % side);
            const auto across = [&](const TVector2<double>& p) { return side.x * p.y - side.y * p.x; };
            width = std::min(width, Spread(points, across) / length);
        }
    }
    return width;
}

constexpr double slack = 10 * std::numeric_limits<double>::epsilon();

} // namespace

TEST(Zones, AreAsNarrowAsAnExhaustiveSearchFinds)
{
    Random random(21);
    for (unsigned int trial = 0; trial < 300; ++trial) {
        const unsigned int count = 3 + trial % 7;
        // From flat and round parts to mere clouds.
        const double form = trial % 3 == 0 ? 1.0 : trial % 3 == 1 ? 0.1 : 1e-3;
        SCOPED_TRACE(testing::Message() << "trial " << trial);
        Plane line;
        Plane circle;
        Space plane;
        for (unsigned int i = 0; i < count; ++i) {
            line.Add(TVector2<double>(random.Uniform(), form * random.Uniform()));
            plane.Add(TVector3<double>(random.Uniform(), random.Uniform(), form * random.Uniform()));
            TVector2<double> direction(random.Uniform(), random.Uniform());
            direction *= (1.0 + form * random.Uniform()) / std::sqrt(direction % direction);
            circle.Add(direction);
        }
        const Robust::LineZone strip(line);
        ASSERT_TRUE(strip);
        EXPECT_NEAR(strip.width, NarrowestStrip(line), 1e-12 * strip.width + slack);
        const auto across = [&](const TVector2<double>& p) {
            return strip.line.direction.x * (p.y - strip.line.origin.y) -
                   strip.line.direction.y * (p.x - strip.line.origin.x);
        };
        EXPECT_NEAR(Spread(line, across), strip.width, slack);

        const Robust::PlaneZone slab(plane);
        ASSERT_TRUE(slab);
        const double narrowest = count < 4 ? 0.0 : NarrowestSlab(plane);
        EXPECT_NEAR(slab.width, narrowest, 1e-12 * slab.width + slack);
        EXPECT_NEAR(Spread(plane, [&](const auto& p) { return (p - slab.plane.point) % slab.plane.normal; }),
                    slab.width, slack);

        const Robust::CircleZone ring(circle);
        const double least = NarrowestRing(circle);
        if (least <= NarrowestStrip(circle)) {
            ASSERT_TRUE(ring);
            EXPECT_NEAR(ring.width, least, 1e-12 * ring.width + slack * (1.0 + ring.circle.radius));
            EXPECT_NEAR(RingWidth(circle, ring.circle.centre), ring.width, slack * (1.0 + ring.circle.radius));
        } else {
            EXPECT_EQ(ring.status, Status::Degenerate);
        }
    }
}

TEST(Zones, TellWhyThereIsNone)
{
    const TVector3<double> same(0.1, 0.2, 0.3);
    Space points;
    EXPECT_EQ(Robust::LineZone(Plane(points)).status, Status::TooFewPoints);
    EXPECT_EQ(Robust::PlaneZone(points).status, Status::TooFewPoints);
    EXPECT_EQ(Robust::CircleZone(Plane(points)).status, Status::TooFewPoints);
    for (int i = 0; i < 9; ++i) points.Add(same);
    EXPECT_EQ(Robust::LineZone(Plane(points)).status, Status::Degenerate);
    EXPECT_EQ(Robust::PlaneZone(points).status, Status::Degenerate);
    EXPECT_EQ(Robust::CircleZone(Plane(points)).status, Status::Degenerate);
    for (unsigned int i = 0; i < 9; ++i) points[i] = same * static_cast<double>(i);
    const Robust::LineZone strip{Plane(points)};
    EXPECT_TRUE(strip);
    EXPECT_LT(strip.width, 1e-15);
    EXPECT_EQ(Robust::PlaneZone(points).status, Status::Degenerate);
    EXPECT_EQ(Robust::CircleZone(Plane(points)).status, Status::Degenerate);
    points[4].y = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Robust::LineZone(Plane(points)).status, Status::NotFinite);
    EXPECT_EQ(Robust::PlaneZone(points).status, Status::NotFinite);
    EXPECT_EQ(Robust::CircleZone(Plane(points)).status, Status::NotFinite);
}

TEST(Zones, OfASquareAndACubeAreTheirSides)
{
    Space cube;
    for (int i = 0; i < 8; ++i)
        cube.Add(TVector3<double>((i & 1) * 4, (i & 2) * 1.5, (i & 4) * 0.5) + TVector3<double>(1000, 1000, 1000));
    const Robust::PlaneZone slab(cube);
    ASSERT_TRUE(slab);
    EXPECT_EQ(slab.width, 2);
    EXPECT_EQ(slab.plane.point.z, 1001);
    EXPECT_EQ(slab.plane.normal.z, 1);
    const Robust::LineZone strip{Plane(cube)};
    ASSERT_TRUE(strip);
    EXPECT_EQ(strip.width, 3);
    EXPECT_EQ(strip.line.origin.y, 1001.5);
    EXPECT_EQ(strip.line.direction.x, 1);
}

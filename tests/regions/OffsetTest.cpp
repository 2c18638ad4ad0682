#include <tests/support/plain/PlainRegion.h>

#include <CorvexMaths/regions/TRegion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

const double pi = std::acos(-1.0);

template <class T>
class OffsetTest : public testing::Test
{};
using Scalars = testing::Types<float, double>;
TYPED_TEST_SUITE(OffsetTest, Scalars, );

template <class T>
TPolygon<T, TVector2> Turned(const TPolygon<T, TVector2>& outline, unsigned int start)
{
    TPolygon<T, TVector2> turned;
    for (unsigned int i = 0; i < outline.GetCount(); ++i) turned.Add(outline[(start + i) % outline.GetCount()]);
    return turned;
}

TYPED_TEST(OffsetTest, SquareWithEveryJoin)
{
    using T = TypeParam;
    const TRegion<T> square(TPolygon<T, TVector2>{{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    const struct
    {
        T distance;
        Join join;
        T limit;
        double least, most; // of the area
    } rows[] = {
        {2, Join::Mitre, 0, 196, 196},
        {2, Join::Mitre, T(1.41), 196 - 4 * 0.68630,
         196 - 4 * 0.68629}, // cut off across the bisector: (2 sqrt 2 - 2)^2
        {2, Join::Bevel, 0, 188, 188},
        {2, Join::Round, 0, 180 + 4 * pi, 180 + 4 * pi * 1.002},
        {2, Join::Round, T(1e-5), 180 + 4 * pi, 180 + 4 * pi * 1.00001},
        {2, Join::Round, 2, 196, 196}, // tangents turn by a right angle at most
        {-2, Join::Round, 0, 36, 36},
        {-2, Join::Mitre, 0, 36, 36},
        {-2, Join::Bevel, 0, 36, 36},
        {-5, Join::Round, 0, 0, 0},
        {-7, Join::Mitre, 0, 0, 0},
        {0, Join::Round, 0, 100, 100},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.distance << " join " << static_cast<int>(row.join));
        const TRegion<T> offset = square.Offset(row.distance, row.join, row.limit);
        EXPECT_EQ(offset.GetStatus(), RegionStatus::Done);
        EXPECT_GE(offset.GetArea(), T(row.least) * (1 - std::numeric_limits<T>::epsilon()));
        EXPECT_LE(offset.GetArea(), T(row.most) * (1 + std::numeric_limits<T>::epsilon()));
    }
    // A hole shrinks where its region grows.
    const TRegion<T> frame = TRegion<T>(TPolygon<T, TVector2>{{-9, -9}, {19, -9}, {19, 19}, {-9, 19}}).Subtract(square);
    EXPECT_EQ(frame.Offset(2, Join::Mitre).GetArea(), T(32 * 32 - 36));
    EXPECT_EQ(frame.Offset(5, Join::Mitre).GetOutlineCount(), 1u);
    EXPECT_EQ(frame.Offset(-2, Join::Bevel).GetArea(), T(24 * 24 - 188));
}

TYPED_TEST(OffsetTest, DumbbellFallsInTwoWhateverTheStart)
{
    using T = TypeParam;
    const TPolygon<T, TVector2> outline{{0, 0},    {44, 0},  {44, 16}, {66, 16}, {66, 2},  {112, 2},
                                        {112, 46}, {66, 46}, {66, 28}, {44, 28}, {44, 50}, {0, 50}};
    for (const Join join : {Join::Round, Join::Mitre, Join::Bevel}) {
        const TRegion<T> first = TRegion<T>(outline).Offset(-8, join);
        EXPECT_EQ(first.GetPieces().size(), 2u);
        // Arcs and bevels about the corners of the neck leave a little between them.
        EXPECT_GE(first.GetArea(), T(28 * 34 + 30 * 28));
        if (join == Join::Mitre) {
            EXPECT_EQ(first.GetArea(), T(28 * 34 + 30 * 28));
        }
        for (unsigned int start = 1; start < outline.GetCount(); ++start)
            EXPECT_TRUE(TRegion<T>(Turned(outline, start)).Offset(-8, join) == first) << start;
    }
}

TYPED_TEST(OffsetTest, BayClosesAndKeepsItsHoleAndIsland)
{
    using T = TypeParam;
    // A bay of 40 by 40 behind a mouth 6 wide, with an island of 4 by 4 in its midst.
    const TPolygon<T, TVector2> coast{{0, 0},   {60, 0},  {60, 27}, {50, 27}, {50, 10}, {10, 10},
                                      {10, 50}, {50, 50}, {50, 33}, {60, 33}, {60, 60}, {0, 60}};
    const TPolygon<T, TVector2> island{{28, 28}, {32, 28}, {32, 32}, {28, 32}};
    for (unsigned int start = 0; start < coast.GetCount(); ++start) {
        const TRegion<T> land = TRegion<T>(Turned(coast, start)).Unite(TRegion<T>(island));
        const auto pieces = land.Offset(4, Join::Mitre).GetPieces();
        ASSERT_EQ(pieces.size(), 2u) << start;
        EXPECT_EQ(pieces[0].holes.size(), 1u);
        EXPECT_EQ(pieces[0].holes[0].GetSimpleArea(), T(32 * 32));
        EXPECT_EQ(pieces[1].outline.GetSimpleArea(), T(12 * 12));
    }
}

TYPED_TEST(OffsetTest, LinesWithEveryEnd)
{
    using T = TypeParam;
    const TPolygon<T, TVector2> straight{{0, 0}, {10, 0}};
    const TPolygon<T, TVector2> doubled{{0, 0}, {10, 0}, {10, 0}, {3, 0}, {10, 0}};
    const TPolygon<T, TVector2> point{{1, 2}, {1, 2}};
    const TPolygon<T, TVector2> loop{{0, 0}, {20, 0}, {20, 20}, {10, 20}, {10, -10}};
    const struct
    {
        const char* name;
        const TPolygon<T, TVector2>& line;
        Cap cap;
        double area;
        unsigned int outlines;
    } rows[] = {
        {"butt", straight, Cap::Butt, 40, 1},
        {"square", straight, Cap::Square, 56, 1},
        {"round", straight, Cap::Round, 40 + 4 * pi, 1},
        {"turning back", doubled, Cap::Square, 56, 1},
        {"point, butt", point, Cap::Butt, 0, 0},
        {"point, square", point, Cap::Square, 16, 1},
        {"point, round", point, Cap::Round, 4 * pi, 1},
        // With mitres: 22 by 4, 4 by 20, 10 by 4, and above and below it 4 by 8 and 4 by 16.
        {"crossing itself", loop, Cap::Butt, 88 + 80 + 40 + 32 + 64, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TRegion<T> band = TRegion<T>::OffsetLine(row.line, 2, Join::Mitre, row.cap);
        EXPECT_EQ(band.GetOutlineCount(), row.outlines);
        EXPECT_GE(band.GetArea(), T(row.area) * (1 - std::numeric_limits<T>::epsilon()));
        EXPECT_LE(band.GetArea(), T(row.area * (row.cap == Cap::Round ? 1.002 : 1)));
        EXPECT_EQ(band.GetStatus(), row.area > 0 ? RegionStatus::Done : RegionStatus::NoArea);
    }
}

TYPED_TEST(OffsetTest, WhatHasNoOffset)
{
    using T = TypeParam;
    const T infinity = std::numeric_limits<T>::infinity();
    const T nan = std::numeric_limits<T>::quiet_NaN();
    const TRegion<T> square(TPolygon<T, TVector2>{{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    for (const T bad : {infinity, -infinity, nan}) {
        EXPECT_EQ(square.Offset(bad).GetStatus(), RegionStatus::NotFinite);
        EXPECT_EQ(square.Offset(1, Join::Mitre, bad).GetStatus(), RegionStatus::NotFinite);
        EXPECT_TRUE(square.Offset(bad).IsEmpty());
        EXPECT_EQ(TRegion<T>::OffsetLine(TPolygon<T, TVector2>{{0, 0}, {bad, 1}}, 1).GetStatus(),
                  RegionStatus::NotFinite);
    }
    // On the grid that a circle of this size needs the square would be a point.
    EXPECT_EQ(square.Offset(T(1e30)).GetStatus(), RegionStatus::NotFinite);
    EXPECT_TRUE(square.Offset(T(-1e30)).IsEmpty());
    EXPECT_TRUE(square.Offset(T(1e-30)) == square);
    EXPECT_TRUE(TRegion<T>().Offset(1).IsEmpty());
    EXPECT_EQ(TRegion<T>::OffsetLine(TPolygon<T, TVector2>(), 1).GetStatus(), RegionStatus::TooFewPoints);
    EXPECT_EQ(TRegion<T>::OffsetLine(TPolygon<T, TVector2>{{0, 0}, {1, 1}}, -1).GetStatus(), RegionStatus::NoArea);
    // A coarser grid, on which the square still tells.
    EXPECT_NEAR(square.Offset(1000, Join::Mitre).GetArea(), T(2001.0 * 2001.0), T(0.25));
}

using Vector = TVector2<double>;
using Outline = TPolygon<double, TVector2>;
using Region = TRegion<double>;

/// A whole number below a limit.
double Draw(std::mt19937* random, unsigned int limit)
{
    return static_cast<double>((*random)() % limit);
}

Vector Normal(const Vector& from, const Vector& to)
{
    const Vector way = to - from;
    return Vector(way.y, -way.x) * (1 / way.GetLength());
}

double Dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y;
}

/// Adds the rectangles and the wedges to the right of an outline.
void AddShapes(const Outline& outline, double r, Join join, double limit, std::vector<Region>* shapes)
{
    for (unsigned int i = 0; i < outline.GetCount(); ++i) {
        const Vector& a = outline[i];
        const Vector& b = outline[(i + 1) % outline.GetCount()];
        const Vector& c = outline[(i + 2) % outline.GetCount()];
        const Vector m = Normal(a, b);
        const Vector n = Normal(b, c);
        shapes->emplace_back(Outline{a, a + m * r, b + m * r, b});
        if (!(m.x * n.y - m.y * n.x > 0)) continue;
        const double cosine = std::sqrt(0.5 * (1 + Dot(m, n)));
        const Vector middle = Vector(n.y - m.y, m.x - n.x) * (1 / (n - m).GetLength());
        const auto tip = [&](const Vector& p, const Vector& q) { return b + (p + q) * (r / (1 + Dot(p, q))); };
        if (join == Join::Bevel)
            shapes->emplace_back(Outline{b, b + m * r, b + n * r});
        else if (cosine * limit >= 1)
            shapes->emplace_back(Outline{b, b + m * r, tip(m, n), b + n * r});
        else
            shapes->emplace_back(Outline{b, b + m * r, tip(m, middle), tip(middle, n), b + n * r});
    }
}

/// Tangled, star-shaped and noisy outlines, and some on a coarse grid.
Region MakeRegion(std::mt19937* random)
{
    const auto draw = [&] { return Draw(random, 4096) / 4096; };
    const unsigned int kind = (*random)() % 4;
    const int count = kind == 3 ? 60 : 9;
    Outline outline;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * pi * i / count;
        const double radius = kind == 3 ? 5 + draw() : 5 * (0.2 + 0.8 * draw());
        if (kind == 0)
            outline.Add(Vector(Draw(random, 6), Draw(random, 6)));
        else if (kind == 1)
            outline.Add(Vector(10 * draw(), 10 * draw()));
        else
            outline.Add(Vector(radius * std::cos(angle), radius * std::sin(angle)));
    }
    return Region(outline, WindingRule::EvenOdd);
}

// The offset as the union of its parts, each made by itself.
TEST(OffsetShapes, MitresAndBevelsAreTheirRectanglesAndWedges)
{
    for (unsigned int seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const Region region = MakeRegion(&random);
        const Join join = random() % 2 != 0 ? Join::Mitre : Join::Bevel;
        const double limit = 1.25 + Draw(&random, 8) * 0.25;
        const double r = 0.125 * (1 + Draw(&random, 12));
        std::vector<Region> outward{region};
        std::vector<Region> inward;
        for (Outline outline : region.GetOutlines()) {
            AddShapes(outline, r, join, limit, &outward);
            outline.Reverse();
            AddShapes(outline, r, join, limit, &inward);
        }
        EXPECT_LT(region.Offset(r, join, limit).Exclude(Region::Unite(outward)).GetArea(), 1e-8);
        EXPECT_LT(region.Offset(-r, join, limit).Exclude(region.Subtract(Region::Unite(inward))).GetArea(), 1e-8);
    }
}

double DistanceToRim(const std::vector<Outline>& rim, const Vector& p)
{
    return CorvexTest::PlainDistance(CorvexTest::PlainSides(rim), p);
}

/// How far a point lies outside; negative inside.
double Depth(const Region& region, const std::vector<Outline>& rim, const Vector& p)
{
    return region.IsWithin(p) == RegionSide::Outside ? DistanceToRim(rim, p) : -DistanceToRim(rim, p);
}

TEST(OffsetDistances, RoundOffsetsAreTrueToDistance)
{
    for (unsigned int seed = 0; seed < 250; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const Region region = MakeRegion(&random);
        const std::vector<Outline> rim = region.GetOutlines();
        const double r = 0.01 * (1 + Draw(&random, 200));
        const double deviation = r / (10 + Draw(&random, 1000));
        for (const double distance : {r, -r}) {
            const Region offset = region.Offset(distance, Join::Round, deviation);
            const double step = offset.GetStep();
            for (const Outline& outline : offset.GetOutlines())
                for (unsigned int i = 0; i < outline.GetCount(); ++i) {
                    EXPECT_GE(DistanceToRim(rim, outline[i]), r - step);
                    EXPECT_LE(DistanceToRim(rim, outline[i]), r + deviation + step);
                }
            for (int i = 0; i < 40; ++i) {
                const Vector p(Draw(&random, 1000) * 0.024 - 8, Draw(&random, 1000) * 0.024 - 8);
                const double beyond = Depth(region, rim, p) - distance;
                // Growing reaches up to the deviation further out, shrinking further in.
                const double slackOut = 2 * step + (distance > 0 ? deviation : 0);
                const double slackIn = 2 * step + (distance < 0 ? deviation : 0);
                if (beyond > slackOut || beyond < -slackIn) {
                    EXPECT_EQ(offset.IsWithin(p), beyond > 0 ? RegionSide::Outside : RegionSide::Inside);
                }
            }
            // Out and in again nothing is lost, in and out nothing is won, but for what the joins deviate.
            const Region back = offset.Offset(-distance, Join::Round, deviation);
            const Region lost = distance > 0 ? region.Subtract(back) : back.Subtract(region);
            EXPECT_TRUE(lost.Offset(-(deviation + 4 * step)).IsEmpty());
        }
    }
}

// Sharp notches between the stretches of a path, with other sides across them.
TEST(OffsetDistances, CrossingsBesideSharpNotchesLieNoNearerThanAStep)
{
    for (unsigned int seed = 1; seed <= 700; ++seed) {
        std::mt19937 random(seed);
        Outline path;
        for (unsigned int i = 0; i < 11; ++i) {
            const double x = Draw(&random, 1 << 20);
            path.Add(Vector(x, Draw(&random, 1 << 20)));
        }
        const double r = (1 + Draw(&random, 1000)) * 160;
        const Region band = Region::OffsetLine(path, r, Join::Round, Cap::Round, r / 100);
        std::vector<CorvexTest::PlainSide> sides = CorvexTest::PlainSides({path});
        sides.pop_back();
        for (const CorvexTest::PlainSide& side : CorvexTest::PlainSides(band.GetOutlines()))
            EXPECT_GE(CorvexTest::PlainDistance(sides, side.a), r - band.GetStep()) << seed;
    }
}

// Where the sides of what is left would be shorter than a step, it is not turned inside out.
TEST(OffsetDistances, TrianglesVanishAtTheirInnerRadius)
{
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        Outline corners;
        for (int i = 0; i < 3; ++i) {
            const double x = Draw(&random, 1000);
            corners.Add(Vector(x, Draw(&random, 1000)));
        }
        const Region triangle(corners);
        double length = 0;
        for (unsigned int i = 0; i < 3; ++i) length += (corners[(i + 1) % 3] - corners[i]).GetLength();
        const double r = 2 * triangle.GetArea() / length;
        for (const Join join : {Join::Round, Join::Mitre, Join::Bevel}) {
            const Region rest = triangle.Offset(-r, join);
            for (const CorvexTest::PlainSide& side : CorvexTest::PlainSides(rest.GetOutlines()))
                EXPECT_GE(DistanceToRim({corners}, side.a), r - rest.GetStep()) << seed;
        }
    }
}

// Tips 0.03 apart and 0.5 deep: all but a rim of arcs about the tips is in pits.
TEST(OffsetPits, DenseOutlinesNeedNoMoreVerticesThanTheirRim)
{
    const unsigned int count = 400;
    Outline star;
    for (unsigned int i = 0; i < count; ++i) {
        const double radius = i % 2 != 0 ? 1 : 0.5;
        star.Add(Vector(radius * std::cos(2 * pi * i / count), radius * std::sin(2 * pi * i / count)));
    }
    const Region grown = Region(star).Offset(0.05);
    EXPECT_EQ(grown.GetOutlineCount(), 1u);
    // Between neighbouring tips the arcs meet at r cos a + sqrt(d^2 - r^2 sin^2 a) from the centre, a half their angle.
    const double a = 2 * pi / count;
    const double low = std::cos(a) + std::sqrt(0.0025 - std::sin(a) * std::sin(a));
    EXPECT_GT(grown.GetArea(), pi * low * low * 0.9999);
    EXPECT_LT(grown.GetArea(), pi * 1.0501 * 1.0501);
    EXPECT_EQ(grown.GetVertexCount(), Region(Turned(star, 7)).Offset(0.05).GetVertexCount());
}

} // namespace

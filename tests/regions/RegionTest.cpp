#include <tests/support/plain/PlainRegion.h>

#include <CorvexMaths/regions/TRegion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

using Vector = TVector2<double>;
using Outline = TPolygon<double, TVector2>;
using Region = TRegion<double>;

Outline MakeOutline(const std::vector<Vector>& points)
{
    return Outline(points.data(), static_cast<unsigned int>(points.size()));
}

Outline MakeRectangle(double left, double bottom, double right, double top)
{
    return Outline{{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

unsigned int Draw(std::mt19937* random, std::size_t count)
{
    return static_cast<unsigned int>((*random)() % count);
}

/// Outlines of few vertices on a grid of whole numbers, so that vertices coincide, edges overlap and run back.
std::vector<Outline> MakeRandomOutlines(std::mt19937* random, unsigned int side)
{
    std::vector<Outline> outlines(1 + Draw(random, 4));
    for (Outline& outline : outlines) {
        const unsigned int count = Draw(random, 12);
        for (unsigned int i = 0; i < count; ++i) {
            const double x = Draw(random, side);
            outline.Add(Vector(x, Draw(random, side)));
        }
    }
    return outlines;
}

/// Slivers from end to end of a grid, which pass near the crossings of others without meeting these.
std::vector<Outline> MakeSlivers(std::mt19937* random)
{
    const unsigned int side = 20 + Draw(random, 60);
    std::vector<Outline> outlines(2 + Draw(random, 5));
    for (Outline& outline : outlines) {
        const double x = Draw(random, side);
        const double y = Draw(random, side);
        outline = Outline{{double(Draw(random, side)), double(Draw(random, side))},
                          {x, y},
                          {x + Draw(random, 5) - 2.0, y + Draw(random, 5) - 2.0}};
    }
    return outlines;
}

/// The same outlines in another order, from other vertices on.
std::vector<Outline> Shuffle(std::vector<Outline> outlines, std::mt19937* random)
{
    if (outlines.empty()) return outlines;
    std::rotate(outlines.begin(), outlines.begin() + Draw(random, outlines.size()), outlines.end());
    for (Outline& outline : outlines) {
        std::vector<Vector> points;
        for (unsigned int i = 0; i < outline.GetCount(); ++i) points.push_back(outline[i]);
        if (points.empty()) continue;
        std::rotate(points.begin(), points.begin() + Draw(random, points.size()), points.end());
        outline = MakeOutline(points);
    }
    return outlines;
}

/// A triangle so far away that the step of the grid becomes 1, and all crossings beside whole numbers are rounded.
const Outline farAway{{0x1p41 - 9.0, 0.0}, {0x1p41 - 8.0, 0.0}, {0x1p41 - 8.0, 1.0}};

class Rules : public testing::TestWithParam<WindingRule>
{};

TEST_P(Rules, ResultIsCanonicalAndStaysAsItIs)
{
    for (unsigned int seed = 1; seed <= 700; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const bool isSlender = seed % 2 == 0;
        std::vector<Outline> outlines =
            isSlender ? MakeSlivers(&random) : MakeRandomOutlines(&random, 4 + Draw(&random, 20));
        if (isSlender || seed % 8 != 1) outlines.push_back(farAway);
        const Region region(outlines, GetParam());
        ASSERT_EQ(FindFault(region), "");
        ASSERT_EQ(Region(region.GetOutlines(), WindingRule::EvenOdd), region);
        ASSERT_EQ(Region(Shuffle(region.GetOutlines(), &random), WindingRule::Positive), region);
        ASSERT_EQ(Region(Shuffle(outlines, &random), GetParam()), region);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Rules,
                         testing::Values(WindingRule::NonZero, WindingRule::EvenOdd, WindingRule::Positive));

TEST(Region, RoundsCrossingsToTheNearestPointOfTheGrid)
{
    // The two cross at (1.5, 1), and mirrored at (-1.5, 1); of two points as near the one to the right is taken.
    for (const double sign : {1.0, -1.0}) {
        const Outline bow{{0, 0}, {3 * sign, 2}, {3 * sign, 0}, {0, 2}};
        const Region region(std::vector<Outline>{bow, farAway});
        const double x = sign > 0.0 ? 2.0 : -1.0;
        const Region expected(
            std::vector<Outline>{{{0, 0}, {x, 1}, {0, 2}}, {{x, 1}, {3 * sign, 0}, {3 * sign, 2}}, farAway});
        EXPECT_EQ(region, expected);
    }
}

TEST(Region, LinksOutlinesThatTouchWithoutCrossing)
{
    struct
    {
        const char* name;
        std::vector<Outline> outlines;
        std::vector<std::size_t> holesOfPieces;
        double area;
    } const rows[] = {
        {"pieces touching in a corner", {MakeRectangle(0, 0, 1, 1), MakeRectangle(1, 1, 2, 2)}, {0, 0}, 2.0},
        {"figure of eight", {{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}, {0, 0}, 2.0},
        {"hole touching its outline", {MakeRectangle(0, 0, 4, 4), {{0, 2}, {2, 1}, {2, 3}}}, {1}, 14.0},
        {"hole touching at two places", {MakeRectangle(0, 0, 4, 4), {{0, 2}, {2, 1}, {4, 2}, {2, 3}}}, {0, 0}, 12.0},
        {"holes touching one another",
         {MakeRectangle(0, 0, 4, 4), MakeRectangle(1, 1, 2, 2), MakeRectangle(2, 2, 3, 3)},
         {2},
         14.0},
        {"island touching its hole",
         {MakeRectangle(0, 0, 4, 4), MakeRectangle(1, 1, 3, 3), {{2, 1}, {3, 2}, {2, 2}}},
         {1, 0},
         12.5},
        {"islands in holes",
         {MakeRectangle(0, 0, 8, 8), MakeRectangle(1, 1, 7, 7), MakeRectangle(2, 2, 6, 6), MakeRectangle(3, 3, 5, 5),
          MakeRectangle(9, 0, 10, 1)},
         {1, 0, 1},
         41.0},
        {"hole reached from below through a notch",
         {{{0, 0}, {2, 2}, {4, 0}, {4, 4}, {0, 4}}, {{2, 2}, {3, 3}, {1, 3}}},
         {1},
         11.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Region region(row.outlines, WindingRule::EvenOdd);
        EXPECT_EQ(FindFault(region), "");
        EXPECT_EQ(region.GetArea(), row.area);
        std::vector<std::size_t> holes;
        for (const Region::Piece& piece : region.GetPieces()) holes.push_back(piece.holes.size());
        EXPECT_EQ(holes, row.holesOfPieces);
    }
}

TEST(Region, MeetsLongSlantedTeethSideBySide)
{
    constexpr unsigned int count = 4000;
    constexpr double height = 20000.0;
    Outline comb{{4.0 * count, -1.0}, {0.0, -1.0}};
    // The left flank of each tooth halves a square.
    std::vector<Outline> squares;
    for (unsigned int i = 0; i < count; ++i) {
        comb.Add(Vector(4.0 * i, 0.0));
        comb.Add(Vector(4.0 * i + 2.0 + height, height));
        const double x = 4.0 * i + 1.0 + 0.5 * height;
        squares.push_back(MakeRectangle(x - 0.5, 0.5 * height - 0.5, x + 0.5, 0.5 * height + 0.5));
    }
    comb.Add(Vector(4.0 * count, 0.0));
    const Region halves = Region(comb).Intersect(Region(squares));
    EXPECT_EQ(halves.GetOutlineCount(), count);
    EXPECT_NEAR(halves.GetArea(), 0.5 * count, 1e-3);
}

TEST(Region, MeetsRaysFromNearlyOneCentre)
{
    constexpr unsigned int count = 2000;
    const double angle = std::acos(-1.0) / count;
    for (const double inner : {0.5, 1e-3, 1e-6}) {
        SCOPED_TRACE(inner);
        // Two stars with the spikes of one over the gaps of the other.
        Outline stars[2];
        for (unsigned int i = 0; i < 2 * count; ++i)
            for (unsigned int k = 0; k < 2; ++k) {
                const double radius = i % 2 == k ? 1 : inner;
                stars[k].Add(Vector(radius * std::cos(i * angle), radius * std::sin(i * angle)));
            }
        const Region one(stars[0]), other(stars[1]);
        // Each side crosses one other, half way in angle.
        const double crossing = 2 * inner * std::cos(angle / 2) / (1 + inner);
        const double share = 2 * count * crossing * std::sin(angle / 2);
        const Region either = one.Unite(other), both = one.Intersect(other);
        EXPECT_EQ(either.GetVertexCount(), 4 * count);
        EXPECT_EQ(both.GetVertexCount(), 4 * count);
        EXPECT_NEAR(either.GetArea(), share, 1e-11);
        EXPECT_NEAR(both.GetArea(), inner * share, 1e-11);
    }
}

TEST(Region, TellsTheRimFromTheInside)
{
    const Region region(std::vector<Outline>{MakeRectangle(0, 0, 3, 3), {{1, 1}, {1, 2}, {2, 1}}});
    const double next = std::numeric_limits<double>::epsilon();
    EXPECT_EQ(region.IsWithin(Vector(1.5, 1.5)), RegionSide::OnRim);
    EXPECT_EQ(region.IsWithin(Vector(1.5, 1.5 + next)), RegionSide::Inside);
    EXPECT_EQ(region.IsWithin(Vector(1.5, 1.5 - next)), RegionSide::Outside);
    EXPECT_EQ(region.IsWithin(Vector(0.5, 0.0)), RegionSide::OnRim);
    EXPECT_EQ(region.IsWithin(Vector(3.0, 3.0)), RegionSide::OnRim);
    EXPECT_EQ(region.IsWithin(Vector(4.0, 3.0)), RegionSide::Outside);
    EXPECT_EQ(region.IsWithin(Vector(std::numeric_limits<double>::quiet_NaN(), 1.0)), RegionSide::Outside);
    EXPECT_EQ(region.GetBoundingBox(), TBox<double>(TVector3<double>(0, 0, 0), TVector3<double>(3, 3, 0), 1.0));
}

TEST(Region, SaysWhyItIsEmpty)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Region(Outline()).GetStatus(), RegionStatus::TooFewPoints);
    EXPECT_EQ(Region(Outline{{0, 0}, {1, 1}}).GetStatus(), RegionStatus::TooFewPoints);
    EXPECT_EQ(Region(Outline{{0, 0}, {1, 1}, {2, 2}, {0, 0}}).GetStatus(), RegionStatus::NoArea);
    EXPECT_EQ(Region(Outline{{0, 0}, {0, 1}, {1, 0}}, WindingRule::Positive).GetStatus(), RegionStatus::NoArea);
    EXPECT_EQ(Region(Outline{{0, 0}, {0, nan}, {1, 0}}).GetStatus(), RegionStatus::NotFinite);
    EXPECT_EQ(Region(Outline{{0, 0}, {0, 1}, {-infinite, 0}}).GetStatus(), RegionStatus::NotFinite);
    const Region far(std::vector<Outline>{farAway, MakeRectangle(0.1, 0.1, 0.2, 0.2)});
    EXPECT_EQ(far.GetStatus(), RegionStatus::Vanished);
    EXPECT_EQ(far.GetOutlineCount(), 1u);
    EXPECT_EQ(far.GetStep(), 1.0);
    const Region empty;
    const Region square(MakeRectangle(0, 0, 1, 1));
    EXPECT_EQ(square.Intersect(empty), empty);
    EXPECT_EQ(square.Unite(empty), square);
    EXPECT_EQ(Region::Unite(std::vector<Region>()), empty);
    EXPECT_EQ(square.Intersect(Region(MakeRectangle(2, 0, 3, 1))).GetStatus(), RegionStatus::Done);
}

TEST(Region, HoldsExtremeCoordinates)
{
    for (const double size : {0x1p-1070, 0x1p-500, 1.0, 0x1p52, 0x1p1000}) {
        const Region region(std::vector<Outline>{MakeRectangle(size, size, 3 * size, 3 * size),
                                                 MakeRectangle(2 * size, 2 * size, 4 * size, 4 * size)});
        EXPECT_EQ(FindFault(region), "");
        EXPECT_EQ(region.GetVertexCount(), 8u) << size;
        EXPECT_EQ(region.GetBoundingBox().minimum.x, size);
        EXPECT_EQ(region.GetBoundingBox().maximum.x, 4 * size);
    }
    // The scalar changes nothing.
    const TRegion<float> narrow(TPolygon<float, TVector2>{{0.1f, 0.0f}, {1.0f, 0.1f}, {0.3f, 1.0f}, {0.9f, 0.9f}});
    const Region wide(narrow);
    EXPECT_EQ(TRegion<float>(wide), narrow);
    EXPECT_EQ(wide.GetStep(), narrow.GetStep());
    EXPECT_EQ(static_cast<float>(wide.GetArea()), narrow.GetArea());
}

} // namespace

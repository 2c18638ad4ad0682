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

using Vector = TVector2<double>;
using Outline = TPolygon<double, TVector2>;
using Region = TRegion<double>;

/// The greatest distance of a vertex of some outlines from the rim of others.
double Farthest(const std::vector<Outline>& outlines, const std::vector<Outline>& rim)
{
    const std::vector<CorvexTest::PlainSide> sides = CorvexTest::PlainSides(rim);
    double farthest = 0;
    for (const CorvexTest::PlainSide& side : CorvexTest::PlainSides(outlines))
        farthest = std::max(farthest, CorvexTest::PlainDistance(sides, side.a));
    return farthest;
}

TEST(Simplify, KeepsWithinTheToleranceAndEveryPieceAndHole)
{
    for (unsigned int seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto draw = [&] { return static_cast<double>(random() % 4096) / 4096; };
        // Rings in one another, as near as their noise; and tangles.
        std::vector<Outline> rings(3);
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 150; ++i) {
                const double radius = 10 + 0.11 * k + 0.1 * draw();
                rings[static_cast<std::size_t>(k)].Add(
                    Vector(radius * std::cos(i * 0.0418879), radius * std::sin(i * 0.0418879)));
            }
        Outline tangle;
        for (int i = 0; i < 40; ++i) tangle.Add(Vector(10 * draw(), 10 * draw()));
        const Region region =
            seed % 2 != 0 ? Region(rings, WindingRule::EvenOdd) : Region(tangle, WindingRule::EvenOdd);
        for (const double tolerance : {0.01, 0.2, 3.0}) {
            const Region simple = region.Simplify(tolerance);
            // In a tangle every vertex may lean on another.
            EXPECT_LT(simple.GetVertexCount(), region.GetVertexCount() + (seed % 2 != 0 ? 0 : 1));
            EXPECT_EQ(simple.GetOutlineCount(), region.GetOutlineCount());
            EXPECT_EQ(simple.GetPieces().size(), region.GetPieces().size());
            EXPECT_LE(Farthest(region.GetOutlines(), simple.GetOutlines()), tolerance * (1 + 1e-12));
        }
    }
}

TEST(Simplify, TheToleranceIsInclusive)
{
    const Region house(Outline{{0, 0}, {8, 0}, {8, 8}, {4, 9}, {0, 8}});
    EXPECT_EQ(house.Simplify(1).GetVertexCount(), 4u);
    EXPECT_EQ(house.Simplify(0.999).GetVertexCount(), 5u);
    EXPECT_EQ(house.Simplify(100).GetVertexCount(), 3u);
    for (const double none : {0.0, -1.0}) EXPECT_TRUE(house.Simplify(none) == house);
    EXPECT_EQ(house.Simplify(std::numeric_limits<double>::infinity()).GetStatus(), RegionStatus::NotFinite);
    EXPECT_TRUE(Region().Simplify(1).IsEmpty());
}

TEST(Simplify, AVertexThatAnotherOutlineLeansOnStays)
{
    // The tip of the diamond touches the roof of the house from above.
    const Region house(Outline{{0, 0}, {8, 0}, {8, 8}, {4, 9}, {0, 8}});
    const Region diamond(Outline{{4, 9}, {5, 10}, {4, 11}, {3, 10}});
    const Region both = house.Unite(diamond).Simplify(1);
    EXPECT_EQ(both.GetPieces().size(), 2u);
    EXPECT_EQ(both.IsWithin({4, 9}), RegionSide::OnRim);
    EXPECT_EQ(both.IsWithin({4, 8.5}), RegionSide::Inside);
}

} // namespace

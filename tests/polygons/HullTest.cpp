#include <tests/polygons/PolygonSupport.h>
#include <tests/support/plain/PlainHull.h>

#include <algorithm>
#include <limits>

using namespace CorvexTest;

template <class Family>
class HullTest : public ::testing::Test
{};
TYPED_TEST_SUITE(HullTest, PointFamily, TypeNames);

TYPED_TEST(HullTest, HullsRunCounterClockwiseFromTheBottomLeft)
{
    // The argument is the keep box flag.
    const OutlineRow rows[] = {
        {"clockwise around a centre", 0, {{4, 4}, {4, 0}, {2, 2}, {0, 0}, {0, 4}}, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}},
        {"one place", 1, {{3, 2}, {3, 2}, {3, 2}}, {{3, 2}}},
        {"collinear", 0, {{1, 1}, {0, 0}, {4, 4}, {2, 2}}, {{0, 0}, {4, 4}}},
        {"none", 1, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto flag) {
        polygon.keepBox = flag != 0;
        polygon.MakeConvexHull();
        EXPECT_EQ(polygon.keepBox, flag != 0);
    });
}

TYPED_TEST(HullTest, TurnsThatOverflowEndNothingOnTheWayBack)
{
    using T = typename TypeParam::T;
    // Products above 3.4 overflow, and their differences are no numbers.
    const double unit = static_cast<double>(std::sqrt(std::numeric_limits<T>::max() / T(3.4)));
    const Plane plane = {{unit, 0}, {-unit, -unit}, {0, 3 * unit}, {2 * unit, -2 * unit}, {3 * unit, -2 * unit}};
    OpenPolygon<TypeParam> polygon(plane);
    const auto points = polygon.GetOutline();
    polygon.MakeConvexHull();
    EXPECT_EQ(polygon.GetOutline(), (std::vector{points[3], points[4], points[2]}));
}

TYPED_TEST(HullTest, GridsLieLeftOfTheirHullAndAreSortedByArcCosines)
{
    using T = typename TypeParam::T;
    std::mt19937_64 random(5150);
    SCOPED_TRACE("seed 5150");
    for (unsigned int round = 0; round < 1000; ++round) {
        SCOPED_TRACE(round);
        // No three in one direction from the bottom left one but the first: of those the scan promises no hull.
        Plane plane = {{0, 0}};
        for (auto tries = random() % 40; tries > 0; --tries) {
            const double y = static_cast<double>(random() % 7), x = static_cast<double>(random() % 7) - (y > 0 ? 3 : 0);
            const auto isAlong = [x, y](auto& point) { return point.first * y == point.second * x; };
            if (y == 0 || std::count_if(plane.begin() + 1, plane.end(), isAlong) < 2) plane.emplace_back(x, y);
        }
        std::swap(plane.front(), plane.back());
        OpenPolygon<TypeParam> polygon(plane);
        const auto points = polygon.GetOutline();
        polygon.sortedList.Expand(50u);
        polygon.MakeConvexHull();

        for (const auto& side : PlainEdges(polygon.GetOutline())) {
            const auto& [start, end] = side.Vertex;
            for (const auto& point : points) {
                const T turn = (end - start).SignedArea(point - start);
                ASSERT_TRUE(turn > 0 || (turn == 0 && (point - start) % (end - point) >= 0))
                    << point.x << ' ' << point.y;
            }
        }
        ASSERT_EQ(polygon.sortedList.GetCount(), points.size() - 1);
        for (unsigned int i = 0; i + 1 < points.size(); ++i) {
            const Maths::TVector2<T> vertex = polygon.sortedList[i].second;
            const T cosine = vertex.x == 0 && vertex.y == 0 ? T(1) : vertex.x / vertex.GetLength();
            ASSERT_EQ(polygon.sortedList[i].first, static_cast<T>(std::acos(static_cast<double>(cosine))));
        }
    }
}

TYPED_TEST(HullTest, PairsAreOrderedAsByThePlainSortToTheBit)
{
    using T = typename TypeParam::T;
    using Vector = typename TypeParam::Vector;
    std::mt19937_64 random(31415);
    SCOPED_TRACE("seed 31415");
    std::uniform_real_distribution<T> scatter(T(-1), T(1));
    for (unsigned int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        // Few are without ties; in double, the large ones of every other kind are: all around or in a wedge.
        PlainOutline<T> outline = RandomOutline<T>(random);
        if (round % 20 == 0) {
            outline.resize(3000 + round);
            for (auto& vertex : outline) vertex = {scatter(random), scatter(random)};
            if (round % 40 == 0) outline.front() = {T(-1e5), T(-1e5)};
        }
        OpenPolygon<TypeParam> polygon(outline);
        const auto pairs = PlainPolarOrder<T>(std::vector<Vector>(&polygon[0], &polygon[0] + polygon.GetCount()));
        polygon.MakeConvexHull();
        ASSERT_EQ(polygon.sortedList.GetCount(), pairs.GetCount());
        for (unsigned int i = 0; i < pairs.GetCount(); ++i) {
            const auto &actual = polygon.sortedList[i], &plain = pairs[i];
            bool isSame = SameBits(actual.first, plain.first);
            for (unsigned int k = 0; k < TypeParam::dimension; ++k)
                isSame &= SameBits(actual.second[k], plain.second[k]);
            ASSERT_TRUE(isSame) << i;
        }
    }
}

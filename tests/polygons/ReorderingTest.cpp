// What takes the vertices of an outline in another order, or some of them out: hulls, crossings, the growth of
// outlines.

#include <tests/polygons/PolygonSupport.h>

#include <limits>

using namespace CorvexTest;

template <class Family>
struct ReorderingTest : ::testing::Test
{};
TYPED_TEST_SUITE(ReorderingTest, PointFamily, TypeNames);

TYPED_TEST(ReorderingTest, HooksRunUnderTheSavedOrTheCallersFlag)
{
    for (const bool flag : {true, false}) {
        OpenPolygon<TypeParam> polygon(Plane{{0, 0}, {2, 2}, {2, 2}, {2, 0}, {0, 2}}), trimmed(polygon.GetPlane());
        polygon.keepBox = trimmed.keepBox = flag;
        polygon.MakeSimplePolygon(); // takes out the duplicate and the closing copy
        EXPECT_TRUE(polygon.keptBox == std::vector<bool>(2, false) && polygon.keepBox == flag);
        trimmed.TrimCrossings();
        EXPECT_TRUE(trimmed.keptBox == std::vector<bool>(1, flag) && trimmed.GetBoxRange().second == (flag ? 1 : 2));
    }
    OpenPolygon<TypeParam> near(Plane{{5, 5}, {0, 0}, {5, 5}, {9, 9}, {0, 0}, {5, 5}});
    near.RemoveDuplicateVertices();
    EXPECT_EQ(near.removed, (OpenPolygon<TypeParam>(Plane{{5, 5}, {5, 5}, {0, 0}}).GetOutline())) << "from the left";
}

TYPED_TEST(ReorderingTest, NearVerticesAreFoundOnAnySideOfEachOther)
{
    using T = typename TypeParam::T;
    PlainOutline<T> outline;
    for (int i = 1; i <= 200; ++i) outline.emplace_back(T(-i), T(i % 7));
    // The corners of the cells of a search are at halves of 16 or of 1024 tolerances.
    for (const double cell : {16e-6, 1024e-6})
        for (int k = 0; k < 9; ++k)
            for (const int side : {-1, 1})
                outline.emplace_back(static_cast<T>((100 * k + 0.5) * cell + side * (k % 3 - 1) * 0.45e-6),
                                     static_cast<T>(0.5 * cell + side * (k / 3 - 1) * 0.45e-6));
    OpenPolygon<TypeParam> polygon(outline);
    polygon.RemoveDuplicateVertices();
    EXPECT_EQ(polygon.removed.size(), 18u);
}

TYPED_TEST(ReorderingTest, OutlinesTakeTheirOrderAndKeepHeightAndFlag)
{
    const Plane inside = {{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}, bowTie = {{0, 0}, {2, 2}, {2, 0}, {0, 2}};
    const Plane crossed = {{1, 2}, {0, 8}, {0, 0}, {10, 2}, {2, 6}, {3, 3}, {1, 6}};
    const std::pair<double, double> right(4.25, 2);
    constexpr double simple = 0, hull = 1, growth = 2;
    const OutlineRow rows[] = {
        {"bow tie", simple, bowTie, {{0, 0}, {2, 0}, {2, 2}, {0, 2}}},
        {"two vertices", simple, {{0, 0}, {2, 2}, {0, 0}}, {{0, 0}, {2, 2}}},
        {"vertex inside a side", simple, inside, {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}}},
        {"around a centre", hull, {{4, 4}, {4, 0}, {2, 2}, {0, 0}, {0, 4}}, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}},
        {"one place", hull, {{3, 2}, {3, 2}, {3, 2}}, {{3, 2}}},
        {"collinear", hull, {{1, 1}, {0, 0}, {4, 4}, {2, 2}}, {{0, 0}, {4, 4}}},
        {"on the hull", growth, {{8, 8}, {0, 0}, {0, 8}, {8, 0}, {8, 0}}, {{0, 0}, {8, 0}, {8, 8}, {0, 8}}},
        {"into a line", growth, {{3, 3}, {0, 0}, {2, 2}, {1, 1}}, {{0, 0}, {1, 1}, {2, 2}, {3, 3}}},
        {"after a corner", growth, {{0, 0}, {8, 0}, {4, 9}, {4, 1}, right}, {{0, 0}, {4, 1}, right, {8, 0}, {4, 9}}},
        {"first of three as near",
         growth,
         {{0, 0}, {20, 0}, {10, 20}, {6, 2}, {13, 2}, {8, 4}, {6, 4}, {7, 2}},
         {{0, 0}, {6, 2}, {7, 2}, {6, 4}, {8, 4}, {13, 2}, {20, 0}, {10, 20}}},
        {"crossing", growth, crossed, {{0, 0}, {10, 2}, {2, 6}, {0, 8}, {1, 6}, {3, 3}, {1, 2}}},
        {"none", simple, {}, {}},
        {"no hull", hull, {}, {}},
        {"no growth", growth, {}, {}},
    };
    for (const bool flag : {true, false})
        ExpectOutlines<TypeParam>(rows, 7, 0, [flag](auto& polygon, auto operation) {
            polygon.keepBox = flag;
            operation == simple ? polygon.MakeSimplePolygon()
            : operation == hull ? polygon.MakeConvexHull()
                                : polygon.ReorderCEC();
            EXPECT_EQ(polygon.keepBox, flag);
        });
}

TYPED_TEST(ReorderingTest, TurnsThatOverflowEndNothingOnTheWayBack)
{
    using T = typename TypeParam::T;
    // Products above 3.4 overflow, and their differences are no numbers.
    const double unit = static_cast<double>(std::sqrt(std::numeric_limits<T>::max() / T(3.4)));
    OpenPolygon<TypeParam> polygon(
        Plane{{unit, 0}, {-unit, -unit}, {0, 3 * unit}, {2 * unit, -2 * unit}, {3 * unit, -2 * unit}});
    const auto points = polygon.GetOutline();
    polygon.MakeConvexHull();
    EXPECT_EQ(polygon.GetOutline(), (std::vector{points[3], points[4], points[2]}));
}

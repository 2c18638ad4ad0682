#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

const Plane square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, clockwise = {{0, 4}, {4, 4}, {4, 0}, {0, 0}};

template <class Family>
struct PolygonTest : ::testing::Test
{};
TYPED_TEST_SUITE(PolygonTest, PointFamily, TypeNames);

TYPED_TEST(PolygonTest, AreasOfRunsAreClosedByTheirChord)
{
    const OpenPolygon<TypeParam> level(square), turned(clockwise);
    EXPECT_EQ(turned.GetSignedSimpleArea(0, 3), -16);
    EXPECT_EQ(level.GetSignedSimpleArea(1, 3), 8) << "the triangle of a run";
    EXPECT_EQ(level.GetSignedSimpleArea(2, 1), 16) << "over the end";
    EXPECT_EQ(level.GetSignedSimpleArea(3, 1), 8) << "over the end, in part";
    EXPECT_EQ(level.GetSignedSimpleArea(2, 2), 16) << "a full turn";
    EXPECT_TRUE(turned.GetSimpleArea(0, 2) == 8 && turned.GetSimpleArea() == 16);
    EXPECT_TRUE(OpenPolygon<TypeParam>().GetSignedSimpleArea() == 0 &&
                level.GetSignedTriangleAreaWithOrigin(1, 2) == 16);
}

TYPED_TEST(PolygonTest, WindingAngleCountsTheTurnsOfTheShadow)
{
    // In the last row slopes of 0.0005 meet in a turn of 0.001, which is dropped.
    const double turn = 6.283185307179586;
    const std::pair<Plane, double> rows[] = {{{{1, 2}}, 0},
                                             {{{0, 0}, {3, 0}}, turn},
                                             {{{0, 2}, {2, 2}, {3, 2}, {2, 2}, {2, 0}, {0, 0}}, 0},
                                             {{{0, 10}, {6, -8}, {-10, 3}, {10, 3}, {-6, -8}}, -2 * turn},
                                             {{{0, 0}, {1, -0.0005}, {2, 0}, {2, 2}, {0, 2}}, turn - 0.001}};
    for (const auto& [plane, angle] : rows) {
        OpenPolygon<TypeParam> polygon(plane);
        if (TypeParam::dimension > 2) polygon[0][2] = 100;
        EXPECT_NEAR(polygon.GetWindingAngle(), angle, 2e-5) << plane.size() << " vertices";
    }
}

TYPED_TEST(PolygonTest, OpenConvexBoundaryKeepsAllLaterVerticesOnOneSide)
{
    using Vector = Maths::TVector3<typename TypeParam::T>;
    const Plane hills = {{0, 0}, {2, 4}, {3, 2}, {4, 2}, {5, 0}};
    const OutlineRow rows[] = {{"none", 1, {}, {}},
                               {"to the right of the vertex kept last", 1, hills, {{0, 0}, {2, 4}, {4, 2}, {5, 0}}},
                               {"to the left", -1, hills, {{0, 0}, {5, 0}}},
                               {"without a normal", 0, hills, hills}};
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& chain, auto z) {
        static_cast<typename TypeParam::Polygon&>(chain) = chain.GetOpenConvexBoundary(Vector(0, 0, z));
        EXPECT_EQ(chain.GetGrowSize(), 1u);
    });
    OpenPolygon<TypeParam> level(Plane{{0, 0}, {1, 0}, {2, 0}});
    if (TypeParam::dimension > 2) level[1][2] = 8;
    EXPECT_EQ(level.GetOpenConvexBoundary(Vector(0, 1, 0)).GetCount(), TypeParam::dimension > 2 ? 2u : 3u);
}

TYPED_TEST(PolygonTest, AreMadeOfRangesAndMovedWithTheirSortedList)
{
    using Vector = typename TypeParam::Vector;
    const Vector corners[] = {Vector(), Vector(), Vector()};
    const typename TypeParam::Polygon ofRange(std::begin(corners), std::end(corners)), ofBraces = {Vector(), Vector()};
    EXPECT_TRUE(ofRange.GetCount() == 3 && ofBraces.GetCount() == 2);
    OpenPolygon<TypeParam> polygon(Plane{{0, 0}, {1, 0}, {0, 1}}), target(Plane{{5, 5}});
    polygon.MakeConvexHull();
    const auto* const block = polygon.GetStream();
    target = std::move(polygon);
    EXPECT_TRUE(target.GetStream() == block && target.sortedList.GetCount() == 2 && target.removed.empty());
    EXPECT_EQ(polygon.GetCount() + polygon.sortedList.GetCount(), 0u);
}

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

TYPED_TEST(PolygonTest, BottomLeftIsLowestThenLeftmostThenFirst)
{
    EXPECT_EQ(OpenPolygon<TypeParam>(Plane{{1, 0}, {0, 0}, {0, 0}}).GetBottomLeft(), 1u);
    EXPECT_EQ(OpenPolygon<TypeParam>(Plane{{0, 1}, {5, -1}, {-5, 0}, {4, -1}}).GetBottomLeft(), 3u);
    EXPECT_EQ(OpenPolygon<TypeParam>().GetBottomLeft(), 0u);
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

TYPED_TEST(PolygonTest, ConstructionAndAssignmentCarryEveryField)
{
    using T = typename TypeParam::T;
    using Polygon = typename TypeParam::Polygon;
    OpenPolygon<TypeParam> source(square), assigned(Plane{{1, 1}});
    source.sortedList.Add(TPair<T, typename TypeParam::Vector>(T(1), source[2]));
    source.keepBox = false;
    source.AddVertex({T(9), T(9)});
    static_cast<Polygon&>(assigned) = source;
    const OpenPolygon<TypeParam> copy(source);
    EXPECT_TRUE(copy.GetPlane() == source.GetPlane() && assigned.GetPlane() == source.GetPlane());
    EXPECT_TRUE(copy.sortedList.GetCount() == 1 && assigned.sortedList.GetCount() == 1);
    EXPECT_FALSE(copy.keepBox || assigned.keepBox);
    EXPECT_TRUE(copy.GetBoxRange().second == 9 && assigned.GetBoxRange().second == 4);
    const Maths::TPointSet<T, Maths::TVector3> points(source);
    const Polygon converted(points);
    EXPECT_TRUE(converted.GetCount() == 5 && converted[1][0] == 4 && Polygon(0, 5).GetGrowSize() == 5);
    EXPECT_TRUE(TypeParam::dimension == 2 || converted[1][2] == 7);
}

TYPED_TEST(PolygonTest, PolygonsAreMadeOfRangesAndMovedWithTheirSortedList)
{
    using Vector = typename TypeParam::Vector;
    const Vector corners[] = {Vector(), Vector(), Vector()};
    const typename TypeParam::Polygon ofRange(std::begin(corners), std::end(corners)), ofBraces = {Vector(), Vector()};
    EXPECT_EQ(ofRange.GetCount(), 3u);
    EXPECT_EQ(ofBraces.GetCount(), 2u);
    OpenPolygon<TypeParam> polygon(Plane{{0, 0}, {1, 0}, {0, 1}}), target(Plane{{5, 5}});
    polygon.MakeConvexHull();
    const auto* const block = polygon.GetStream();
    target = std::move(polygon);
    EXPECT_EQ(target.GetStream(), block);
    EXPECT_EQ(target.sortedList.GetCount(), 2u);
    EXPECT_EQ(polygon.GetCount(), 0u);
    EXPECT_EQ(polygon.sortedList.GetCount(), 0u);
    EXPECT_TRUE(target.removed.empty());
}

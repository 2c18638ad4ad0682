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
    EXPECT_EQ(OpenPolygon<TypeParam>().GetSignedSimpleArea(), 0);
    EXPECT_EQ(level.GetSignedTriangleAreaWithOrigin(1, 2), 16);
}

TYPED_TEST(PolygonTest, BottomLeftIsLowestThenLeftmostThenFirst)
{
    EXPECT_EQ(OpenPolygon<TypeParam>(Plane{{1, 0}, {0, 0}, {0, 0}}).GetBottomLeft(), 1u);
    EXPECT_EQ(OpenPolygon<TypeParam>(Plane{{0, 1}, {5, -1}, {-5, 0}, {4, -1}}).GetBottomLeft(), 3u);
    EXPECT_EQ(OpenPolygon<TypeParam>().GetBottomLeft(), 0u);
}

TYPED_TEST(PolygonTest, OnlyClockwiseOutlinesAreReversed)
{
    const Plane line = {{0, 0}, {2, 2}, {1, 1}};
    const OutlineRow rows[] = {{"clockwise", 0, clockwise, square},
                               {"counter-clockwise", 0, square, square},
                               {"no area", 0, line, line},
                               {"none", 0, {}, {}}};
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto) { polygon.MakeCCW(); });
}

TYPED_TEST(PolygonTest, EdgesReplaceTheTargetAndCloseTheCycle)
{
    using Edge = Maths::TEdge2<typename TypeParam::T>;
    TList<Edge> edges(1u, 1u);
    for (const unsigned int count : {4u, 1u, 0u}) {
        const OpenPolygon<TypeParam> polygon(Plane(square.begin(), square.begin() + count));
        polygon.GetEdges(&edges);
        ASSERT_EQ(edges.GetCount(), count);
        EXPECT_TRUE(count == 0 || edges[0] == Edge(0, 0, count > 1 ? 4 : 0, 0));
        EXPECT_TRUE(count == 0 || edges[count - 1] == Edge(0, count > 1 ? 4 : 0, 0, 0));
    }
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
    ASSERT_EQ(converted.GetCount(), 5u);
    EXPECT_EQ(converted[1][0], T(4));
    EXPECT_TRUE(TypeParam::dimension == 2 || converted[1][2] == T(7));
    EXPECT_EQ(Polygon(source.GetStream(), 3).GetSimpleArea(), T(8));
    EXPECT_EQ(Polygon(0, 5).GetGrowSize(), 5u);
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

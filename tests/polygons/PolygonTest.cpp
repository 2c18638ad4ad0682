#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

template <class Family>
class PolygonTest : public ::testing::Test
{};
TYPED_TEST_SUITE(PolygonTest, PointFamily, TypeNames);

namespace
{
const Plane square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
const Plane clockwise = {{0, 4}, {4, 4}, {4, 0}, {0, 0}};
} // namespace

TYPED_TEST(PolygonTest, AreasOfRunsAreClosedByTheirChord)
{
    struct Row
    {
        const char* name;
        Plane vertices;
        unsigned int first, last;
        double area;
    };
    const Row rows[] = {
        {"whole square", square, 0, 3, 16},         {"clockwise", clockwise, 0, 3, -16},
        {"triangle of a run", square, 1, 3, 8},     {"over the end", square, 2, 1, 16},
        {"over the end, in part", square, 3, 1, 8}, {"full turn", square, 2, 2, 16},
        {"two vertices", square, 0, 1, 0},          {"one vertex", {{3, 5}}, 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const OpenPolygon<TypeParam> polygon(row.vertices);
        EXPECT_EQ(polygon.GetSignedSimpleArea(row.first, row.last), row.area);
        EXPECT_EQ(polygon.GetSimpleArea(row.first, row.last), std::fabs(row.area));
    }
    EXPECT_EQ(OpenPolygon<TypeParam>(clockwise).GetSimpleArea(), 16);
    EXPECT_EQ(OpenPolygon<TypeParam>().GetSignedSimpleArea(), 0);
    EXPECT_EQ(OpenPolygon<TypeParam>(Plane{{1, 0}, {0, 1}}).GetSignedTriangleAreaWithOrigin(0, 1), 1);
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
    const OutlineRow rows[] = {
        {"clockwise", 0, clockwise, square},
        {"counter-clockwise", 0, square, square},
        {"no area", 0, line, line},
        {"none", 0, {}, {}},
    };
    ExpectOutlines<TypeParam>(rows, 7, 0, [](auto& polygon, auto) { polygon.MakeCCW(); });
}

TYPED_TEST(PolygonTest, EdgesReplaceTheTargetAndCloseTheCycle)
{
    using Edge = Maths::TEdge2<typename TypeParam::T>;
    TList<Edge> edges(1u, 1u);
    edges.Add(Edge(9, 9, 9, 9));
    OpenPolygon<TypeParam>(square).GetEdges(&edges);
    ASSERT_EQ(edges.GetCount(), 4u);
    EXPECT_EQ(edges[0], Edge(0, 0, 4, 0));
    EXPECT_EQ(edges[3], Edge(0, 4, 0, 0));
    OpenPolygon<TypeParam>(Plane{{2, 3}}).GetEdges(&edges);
    ASSERT_EQ(edges.GetCount(), 1u);
    EXPECT_EQ(edges[0], Edge(2, 3, 2, 3));
    OpenPolygon<TypeParam>().GetEdges(&edges);
    EXPECT_EQ(edges.GetCount(), 0u);
}

TYPED_TEST(PolygonTest, ConstructionAndAssignmentCarryEveryField)
{
    using T = typename TypeParam::T;
    using Polygon = typename TypeParam::Polygon;
    OpenPolygon<TypeParam> source(square);
    source.sortedList.Add(TPair<T, typename TypeParam::Vector>(T(1), source[2]));
    source.keepBox = false;
    source.AddVertex({T(9), T(9)});

    OpenPolygon<TypeParam> copy(source);
    EXPECT_EQ(copy.GetPlane(), source.GetPlane());
    EXPECT_EQ(copy.sortedList.GetCount(), 1u);
    EXPECT_FALSE(copy.keepBox);
    EXPECT_EQ(copy.GetBoxRange().second, 9);

    OpenPolygon<TypeParam> assigned(Plane{{1, 1}});
    static_cast<Polygon&>(assigned) = source;
    EXPECT_EQ(assigned.GetPlane(), source.GetPlane());
    EXPECT_EQ(assigned.sortedList.GetCount(), 1u);
    EXPECT_FALSE(assigned.keepBox);
    EXPECT_EQ(assigned.GetBoxRange().second, 4);

    const Maths::TPointSet<T, Maths::TVector3> points(source);
    const Polygon converted(points);
    ASSERT_EQ(converted.GetCount(), 5u);
    const T* const vertex = converted[1];
    EXPECT_EQ(vertex[0], T(4));
    if (TypeParam::dimension > 2) {
        EXPECT_EQ(vertex[2], T(7));
    }

    EXPECT_EQ(Polygon(source.GetStream(), 3).GetSimpleArea(), T(8));
    EXPECT_EQ(Polygon(0, 5).GetGrowSize(), 5u);
}

#include <tests/polygons/PolygonSupport.h>

using namespace CorvexTest;

template <class Family>
class BoundaryTest : public ::testing::Test
{};
TYPED_TEST_SUITE(BoundaryTest, PointFamily, TypeNames);

TYPED_TEST(BoundaryTest, WindingAngleCountsTheTurnsOfTheShadow)
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

TYPED_TEST(BoundaryTest, OpenConvexBoundaryKeepsAllLaterVerticesOnOneSide)
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

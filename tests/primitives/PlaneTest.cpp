#include "Values.h"

template <class T>
using PlaneTest = Primitive<T>;
TYPED_TEST_SUITE(PlaneTest, Scalars, TypeNames);

TYPED_TEST(PlaneTest, MeetsEdgesAndTriangles)
{
    using V = TVector3<TypeParam>;
    const TPlane<TypeParam> level(0, 0, 0, 0, 0, 2);
    const V none(-9, -9, -9), corner;
    // Heights of the corners over (0, 0), (4, 0), (0, 4), and the points and indices of the edges that are found.
    const std::tuple<const char*, V, TypeParam, V, unsigned int, V, unsigned int, bool> rows[] = {
        {"through", {-1, 3, 1}, 0, {1, 0, 0}, 0, {0, 2, 0}, 2, true},
        {"touching", {0, 1, 1}, 0, corner, 0, corner, 2, false},
        {"through a corner", {0, 1, -1}, 0, corner, 0, {2, 2, 0}, 1, true},
        {"corner below the tolerance", {0.125, 1, 1}, 0.25, {0, 0, 0.125}, 0, {0, 0, 0.125}, 2, false},
        {"corner at the tolerance", {0.25, 1, 1}, 0.25, none, 9, none, 9, false},
        {"edge in the plane", {0, 0, -1}, 0, {4, 0, 0}, 1, corner, 2, false},
        {"product that underflows", {this->least, this->least, 1}, 0, {2, 0, this->least}, 0, none, 9, false}};
    for (const auto& [name, z, tolerance, first, edge1, second, edge2, intersects] : rows) {
        const TTriangle3<TypeParam> triangle(V(0, 0, z.x), V(4, 0, z.y), V(0, 4, z.z));
        V p1 = none, p2 = none, where = none;
        unsigned int e1 = 9, e2 = 9;
        EXPECT_EQ(level.IntersectWith(triangle, &p1, &p2, &e1, &e2, tolerance), edge2 != 9) << name;
        EXPECT_TRUE(p1 == first && e1 == edge1 && p2 == second && e2 == edge2) << name;
        const TEdge3<TypeParam> side(triangle.corners[0], triangle.corners[1]);
        EXPECT_EQ(side.IntersectWith(level, &where, tolerance), edge1 == 0) << name;
        EXPECT_TRUE(where == (edge1 == 0 ? first : none) && level.Intersects(triangle) == intersects) << name;
    }
}

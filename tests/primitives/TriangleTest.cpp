#include "Values.h"

template <class T>
using TriangleTest = Primitive<T>;
TYPED_TEST_SUITE(TriangleTest, Scalars, TypeNames);

TYPED_TEST(TriangleTest, HoldsTheSectorLeftOfItsWalk)
{
    const TVector2<TypeParam> compass[] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}, tip;
    for (int i = 0; i < 512; ++i) {
        const int a = i % 8, c = i / 8 % 8, p = i / 64, sweep = (a - c + 8) % 8, turn = (p - c + 8) % 8;
        const TTriangle2<TypeParam> corner(compass[a], tip, compass[c]);
        EXPECT_EQ(corner.WithinCone(compass[p] * 3), turn > 0 && turn < sweep) << a << c << p;
        EXPECT_EQ(corner.GetDoubleArea() > 0, sweep % 4 > 0 && sweep < 4) << a << c;
    }
}

TYPED_TEST(TriangleTest, MeasuresPointsAndMeetsLines)
{
    using V = TVector3<TypeParam>;
    const TTriangle3<TypeParam> flat(V(0, 0, 1), V(4, 0, 1), V(0, 4, 1)), thin(V(0, 0, 1), V(2, 0, 1), V(4, 0, 1));
    EXPECT_TRUE(flat.normal == V(0, 0, 1) && thin.normal == V() && flat.GetArea() == 2 && thin.GetArea() == 1);
    const std::tuple<const char*, TTriangle3<TypeParam>, V, TypeParam, TypeParam, int> rows[] = {
        {"below the inside, corners tied", flat, {2, 2, -1}, 0, 2, 0},
        {"beyond a corner", flat, {7, 0, 5}, 0, 5, 1},
        {"beside the last edge", flat, {-4, 3, 4}, 0, 5, 2},
        {"in tolerance", flat, {-1, 1, 4}, 0.25, 3, 0},
        {"no normal", thin, {3, 3, 5}, 100, 5, 1}};
    for (auto [name, triangle, p, tolerance, distance, closest] : rows) {
        EXPECT_EQ(triangle.DistanceToPoint(p, tolerance), distance) << name;
        EXPECT_EQ(&triangle.ClosestVert(p), &triangle.corners[closest]) << name;
    }
    const TLine3<TypeParam> line(V(1, 2, 4), V(0, 0, -1)); // Against the normal.
    V p, q;
    TypeParam d = 0, e = 0;
    TTriangle3<TypeParam> far(V(4e20f, 0, 0), V(3e20f, 0, 0), V(0, 4e20f, 0));
    EXPECT_EQ(&far.ClosestVert(p), far.corners) << "no squared distance below the largest float";
    EXPECT_TRUE(line.IntersectWith(flat, &p, &d, 0) && flat.IntersectWith(line, &q, &e, 0) && p == q && d == e);
    EXPECT_TRUE(line.IntersectWithBFC(flat, &p, &d, 0) && flat.IntersectWithBFC(line, &q, &e, 0));
    EXPECT_FALSE(line.IntersectWithFFC(flat, &p, &d, 0) || flat.IntersectWithFFC(line, &q, &e, 0));
}

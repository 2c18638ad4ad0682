#include "Values.h"

template <class T>
using EdgeTest = Primitive<T>;
TYPED_TEST_SUITE(EdgeTest, Scalars, TypeNames);

TYPED_TEST(EdgeTest, TouchesAndCrossesByItsEndpointRules)
{
    using Edge = TEdge2<TypeParam>;
    const TypeParam h = 4 * std::sqrt(std::numeric_limits<TypeParam>::min());
    // Whether the segments touch or cross, with that tolerance of the cross products; whether the lines that carry them
    // cross, and then whether within both.
    const std::tuple<const char*, Edge, Edge, TypeParam, bool, bool, bool> rows[] = {
        {"proper crossing, of products that underflow", {0, 0, h, h}, {0, h, h, 0}, 0, true, true, true},
        {"end on the middle", {0, 0, 4, 0}, {2, 0, 2, 4}, 0, true, true, true},
        {"in line, overlapping in part", {0, 0, 3, 0}, {2, 0, 5, 0}, 0, true, false, false},
        {"in line, inside with a common end", {0, 0, 4, 0}, {0, 0, 2, 0}, 0, true, false, false},
        {"reversed and vertical", {1, 0, 1, 4}, {1, 4, 1, 0}, 0, false, false, false},
        {"parallel within the tolerance, overlapping in part", {0, 0, 3, 0}, {2, 1, 5, 1}, 3, true, false, false},
        {"end near the middle, beyond the tolerance", {0, 0, 4, 0}, {2, 0.5, 2, 4}, 1.75, false, true, false},
        {"end near the middle, at the tolerance", {0, 0, 4, 0}, {2, 0.5, 2, 4}, 2, true, true, false},
        {"near in line, but out of range", {0, 0, 4, 0}, {4.5, 0, 8, 1}, 2, false, true, false},
        {"no length, on the middle", {0, 0, 4, 4}, {1, 1, 1, 1}, 0, false, true, true},
    };
    for (const auto& [name, first, second, tolerance, intersect, linesCross, crossWithin] : rows) {
        for (int i = 0; i < 4; ++i) {
            const bool before = i / 2 == 1;
            const Edge &a = i % 2 == 1 ? second : first, &b = i % 2 == 1 ? first : second;
            EXPECT_EQ(a.Intersects(b, before ? TypeParam(100) : TypeParam(0), tolerance), intersect) << name;
            TVector2<TypeParam> point;
            bool within = before;
            EXPECT_EQ(a.IntersectWith(b, &point, &within, TypeParam(0)), linesCross) << name;
            EXPECT_EQ(within, linesCross ? crossWithin : before) << name;
        }
    }
}

TYPED_TEST(EdgeTest, MeetsTrianglesByCode)
{
    using V = TVector3<TypeParam>;
    const V unwritten(-9, -9, -9);
    const V flat[3] = {{0, 0, 1}, {4, 0, 1}, {0, 4, 1}}, tilted[3] = {{0, 0, 1}, {4, 0, 1}, {0, 4, 5}};
    const std::tuple<const char*, const V*, V, V, TypeParam, int, V> rows[] = {
        {"on a side", flat, {2, 2, 0}, {2, 2, 4}, 0, 3, {2, 2, 1}},
        {"outside, the point is written", flat, {3, 3, 0}, {3, 3, 4}, 0, 1, {3, 3, 1}},
        {"beyond the range in x", flat, {5, 1, 0}, {6, 1, 4}, 0, 1, unwritten},
        {"in the plane", flat, {1, 1, 1}, {2, 1, 1}, 0, 2, unwritten},
        {"parallel, apart", tilted, {1, 1, 3}, {1, 2, 4}, 0, 1, unwritten},
        {"stops short, in range: taken as its line", tilted, {1, 1, 4}, {1, 1, 3}, 0, 0, {1, 1, 2}},
        {"one weight equal to the argument counts as zero", flat, {1, 0.5, 0}, {1, 0.5, 4}, 0.25, 3, {1, 0.5, 1}},
        {"two such weights do not", flat, {1, 2, 0}, {1, 2, 4}, 0.25, 0, {1, 2, 1}},
        {"a weight of one within the argument", flat, {3.5, 0.25, 0}, {3.5, 0.25, 4}, 0.125, 4, {3.5, 0.25, 1}},
        {"a product equal to the argument is parallel", flat, {1, 1, 0}, {1, 1, 4}, 64, 1, unwritten},
    };
    for (const auto& [name, corners, start, end, tolerance, code, expected] : rows) {
        V point = unwritten;
        const TEdge3<TypeParam> edge(start, end);
        EXPECT_EQ(edge.IntersectWith(corners[0], corners[1], corners[2], &point, tolerance), code) << name;
        EXPECT_EQ(point, expected) << name;
    }
}

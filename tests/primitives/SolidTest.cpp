// Cones and cylinders against lines, and spirals.

#include "tests/support/Bits.h"
#include "tests/support/Types.h"
#include "tests/support/plain/PlainSolids.h"

#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/primitives/TSpiral.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct SolidTest : ::testing::Test
{
    static_assert(sizeof(TCone<T>) == 8 * sizeof(T) && std::is_trivially_copyable_v<TCone<T>>);
    static_assert(sizeof(TCylinder<T>) == sizeof(void*) + 8 * sizeof(T) && std::has_virtual_destructor_v<TCylinder<T>>);
};
TYPED_TEST_SUITE(SolidTest, Scalars, TypeNames);

TYPED_TEST(SolidTest, MeetLinesInTheirEndsAndThenTheirSide)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const T nan = std::numeric_limits<T>::quiet_NaN(), h = T(0x1p-10), near = T(0x1p-21), apart = T(0x1p-20);
    const TCone<T> cones[] = {TCone<T>(4, 4, 1, 2, 3, 0, 0, 2), TCone<T>(h, h)};
    const TCylinder<T> cylinder(5, 8, V(1, 2, 3), V(0, 0, 2));
    const int cone = 0, tiny = 1, round = 2, endless = 3;
    // Directions of any length keep the table exact.
    const V rim(5, 2, 7), across(-1, 2, 5), edge(6, 2, 7), wall(-4, 2, 5), a(1, 0, 0), up(0, 0, 1);
    const std::tuple<const char*, int, V, V, bool, V, V> rows[] = {
        {"along the axis", cone, {1, 2, 0}, up, true, {1, 2, 7}, {1, 2, 3}},
        {"across", cone, {-9, 2, 5}, a, true, {3, 2, 5}, across},
        {"at the tolerance", cone, {9, 2, 7 + apart}, a, true, rim, {-3, 2, 7}},
        {"beyond it", cone, {9, 2, 7 + 2 * apart}, a, false, {}, {}},
        {"rim hit twice, then the side", cone, rim, {3, 0, 1}, true, rim, across},
        {"rim, side and rim", cone, rim, {-3, 0, -1}, true, rim, across},
        {"rim alone", cone, {5, 2, 0}, up, true, rim, rim},
        {"tangent", cone, {3, 9, 5}, {0, 1, 0}, false, {}, {}},
        {"along a generator", cone, {-1, 2, 3}, {1, 0, 1}, true, {3, 2, 7}, {0, 2, 4}},
        {"on a generator", cone, {1, 2, 3}, {1, 0, 1}, true, rim, {nan, nan, nan}},
        {"two of the side coincide", tiny, {near, 0, 0}, up, true, {near, 0, h}, {near, 0, -near}},
        {"three distinct hits at the tip", tiny, {apart, 0, 0}, up, false, {}, {}},
        {"both rims", round, {6, 2, 9}, -up, true, {6, 2, -1}, edge},
        {"parallel", endless, {4, 2, 9}, up, false, {}, {}},
        {"far off", endless, {-9, 6, 99}, a, true, {4, 6, 99}, {-2, 6, 99}},
        {"tangent", round, {-9, 7, 3}, a, true, {1, 7, 3}, {1, 7, 3}},
        {"cap and side", round, {6, 2, 3}, {-2, 0, 1}, true, {-2, 2, 7}, {6, 2, 3}},
        {"rim, rim and wall", round, {1, 2, 6}, {5, 0, 1}, true, edge, wall},
        {"rim, wall and rim", round, {1, 2, 6}, {-5, 0, -1}, true, edge, wall},
    };
    for (const auto& [name, solid, origin, direction, hits, first, second] : rows) {
        TLine3<T> line;
        line.origin = origin, line.direction = direction;
        V p1, p2;
        const bool met = solid < round ? cones[solid].IntersectWith(line, &p1, &p2)
                                       : cylinder.IntersectWith(line, &p1, &p2, solid == endless);
        EXPECT_TRUE(met == hits && p1.IsEqualTo(first, T(2e-6))) << solid << ' ' << name;
        EXPECT_TRUE(p2.IsEqualTo(second, T(2e-6)) || (std::isnan(p2.x) && std::isnan(second.x)))
            << solid << ' ' << name;
    }
}

TYPED_TEST(SolidTest, AreLeftOnBothSidesByLinesFromWithinWhateverTheAxis)
{
    using T = TypeParam;
    using V = TVector3<T>;
    std::mt19937 random(7);
    std::uniform_real_distribution<T> uniform(-1, 1);
    const auto draw = [&] { return V{uniform(random), uniform(random), uniform(random)}; };
    for (int i = 0; i < 1000; ++i) {
        SCOPED_TRACE(::testing::Message() << "seed 7, " << i);
        const TCone<T> cone{2, 3, draw(), draw()};
        const TCylinder<T> cylinder(2, 3, cone.apex, cone.axis);
        const bool isCone = i % 2 == 0;
        const TLine3<T> line{cone.apex + cone.axis * T(isCone ? 1.5 : 0) + draw() * T(0.3), draw()};
        V p[2];
        ASSERT_TRUE(isCone ? cone.IntersectWith(line, p, p + 1) : cylinder.IntersectWith(line, p, p + 1, false));
        ASSERT_LT((p[0] - line.origin) % (p[1] - line.origin), 0);
        for (const V& hit : p) { // the greater of its excesses over height and radius is 0
            const T up = (hit - cone.apex) % cone.axis, out = ((hit - cone.apex) * cone.axis).GetLength();
            const T excess = isCone ? std::max(up - 3, out - up * 2 / 3) : std::max(std::fabs(up) - T(1.5), out - 2);
            ASSERT_NEAR(excess, 0, std::numeric_limits<T>::epsilon() * 10000);
        }
    }
}

TYPED_TEST(SolidTest, SpiralWindsFromItsFirstPointByAngleAndGrowth)
{
    using T = TypeParam;
    using V = TVector3<T>;
    const V centre(1, 2, 3), expected[] = {{-1, 2, 3}, {1, 1, 3}, {1, 2, 3}, {1, 1, 3}, {3, 2, 3}};
    const TSpiral3<T> inwards(centre, V(0, 0, 3), T(2), 5, Numbers::fullTurn<T> / 4, T(-1));
    const TSpiral3<T> ray(centre, V(1, 2, 2), T(1), 1001, T(0), T(1)), still(V(), V(0, 0, 1), 0, 2, 0, 1);
    for (unsigned int i = 0; i < 5; ++i) EXPECT_TRUE(inwards.points[i].IsEqualTo(expected[i], T(1e-6))) << i;
    EXPECT_NEAR(ray.points.GetLast().DiffVectLen(centre), 1001, 1e-3);
    EXPECT_TRUE(still.points[0] == V() && std::isnan(still.points[1].x));
    for (const int n : {5, 1, -7}) EXPECT_EQ(TSpiral3<T>(V(), centre, 1, n, 1, 1).points.GetCount(), n > 1 ? 5u : 1u);
}

// Lines aimed at caps, rims, tips and walls, over coordinates full of ties, near the tolerance and not finite.
TYPED_TEST(SolidTest, KeepTheOrderOfOperationsToTheBit)
{
    using T = TypeParam;
    using V = TVector3<T>;
    using Plain = CorvexTest::Plain::Solids<T>;
    SCOPED_TRACE("seed 58");
    std::mt19937 random(58);
    const T odd[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), T(1e-6f), T(1e19)};
    const auto number = [&](unsigned int kind) {
        const T tie = T(static_cast<int>(random() % 9) - 4) / 2, spread = T(random() % 100000) / 25000 - 2;
        return kind == 0 ? tie : kind == 1 ? spread : kind == 2 ? tie + spread * T(1e-6f) : odd[random() % 4];
    };
    const auto same = [](const V& a, const V& b) {
        return SameBits(a.x, b.x) && SameBits(a.y, b.y) && SameBits(a.z, b.z);
    };
    for (unsigned int round = 0; round < 40000; ++round) {
        const auto kind = static_cast<unsigned int>(random() % 16 == 0 ? 3 : random() % 3);
        const auto vector = [&] { return V(number(kind), number(kind), number(kind)); };
        const V place = random() % 2 ? V() : vector(), axis = random() % 2 ? V(0, 0, 1) : vector();
        const TCone<T> cone(number(kind), random() % 2 ? T(2) : number(kind), place, axis);
        const TCylinder<T> cylinder(number(kind), random() % 2 ? T(2) : number(kind), place, axis);
        V side;
        cone.axis.OrthonormalX(&side);
        const V rim = place + cone.axis * cone.height + side * cone.radius;
        const TLine3<T> line(random() % 3 ? vector() : rim, random() % 3 ? vector() : rim - place);
        const bool infinite = random() % 3 == 0;
        V p[2], q[2];
        ASSERT_EQ(TCone<T>(cone).IntersectWith(line, p, p + 1), Plain::MeetCone(cone, line, q, q + 1)) << round;
        ASSERT_TRUE(same(p[0], q[0]) && same(p[1], q[1])) << "cone " << round;
        ASSERT_EQ(TCylinder<T>(cylinder).IntersectWith(line, p, p + 1, infinite),
                  Plain::MeetCylinder(cylinder, line, q, q + 1, infinite))
            << round;
        ASSERT_TRUE(same(p[0], q[0]) && same(p[1], q[1])) << "cylinder " << round;
        if (round % 40 != 0) continue;
        const T radius = number(kind), step = number(kind), growth = number(kind);
        const TSpiral3<T> spiral(place, axis, radius, 7, step, growth);
        const auto points = Plain::MakeSpiral(place, axis, radius, 7, step, growth);
        ASSERT_TRUE(std::equal(points.begin(), points.end(), spiral.points.GetStream(), same)) << "spiral " << round;
    }
}

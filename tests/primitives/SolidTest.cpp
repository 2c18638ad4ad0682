// Cones and cylinders against lines, and spirals.

#include "tests/support/Types.h"

#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/primitives/TSpiral.h>

#include <cmath>
#include <limits>
#include <tuple>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct SolidTest : ::testing::Test
{};
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

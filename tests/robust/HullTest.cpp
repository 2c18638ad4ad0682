#include <CorvexMaths/robust/ConvexHull.h>
#include <CorvexMaths/robust/Predicates.h>
#include <tests/support/Types.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace CorvexTest;
using namespace Maths::Robust;
using Maths::TVector2;

namespace
{

template <class T>
TVector2<T> Times(T unit, double x, double y)
{
    return TVector2<T>(static_cast<T>(x) * unit, static_cast<T>(y) * unit);
}

/// Units that take whole numbers of a few digits without rounding: where products underflow, where they overflow.
template <class T>
std::vector<T> Units()
{
    using Limits = std::numeric_limits<T>;
    return {T(1), Limits::denorm_min(), Limits::min(), std::ldexp(T(1), Limits::max_exponent - 24)};
}

} // namespace

template <class T>
struct Signs : ::testing::Test
{};
TYPED_TEST_SUITE(Signs, Scalars, TypeNames);

// Far from the origin a step of one unit aside from a long line, or from a circle, is lost to rounded arithmetic.
TYPED_TEST(Signs, TellAUnitAsideInAnyUnit)
{
    using P = Predicates<TypeParam>;
    const double far = std::ldexp(1, std::numeric_limits<TypeParam>::digits - 3);
    for (const TypeParam unit : Units<TypeParam>()) {
        SCOPED_TRACE(unit);
        if (unit * static_cast<TypeParam>(far) > std::numeric_limits<TypeParam>::max() / 16) continue;
        const auto at = [&](double x, double y) { return Times(unit, far + x, y - far); };
        const auto a = at(0, 0), b = at(1000, 3000), c = at(-3000, -9000);
        for (int step = -1; step <= 1; ++step) {
            const auto aside = at(-3000, -9000 + step);
            EXPECT_EQ(P::Orientation(a, b, aside), step);
            EXPECT_EQ(P::Orientation(b, aside, a), step);
            EXPECT_EQ(P::Orientation(b, a, aside), -step);
            // Counter-clockwise on a circle of 5000 about (0, 0), and a fourth point of it.
            const auto d = at(5000, 0), e = at(3000, 4000), f = at(-4000, 3000), g = at(-3000 + step, -4000);
            EXPECT_EQ(P::InCircle(d, e, f, g), step);
            EXPECT_EQ(P::InCircle(e, d, f, g), -step);
            EXPECT_EQ(P::InCircle(e, f, d, g), step);
        }
        EXPECT_EQ(P::Orientation(a, c, c), 0);
    }
}

TYPED_TEST(Signs, TellPointsOfEveryMagnitudeApart)
{
    using P = Predicates<TypeParam>;
    const TypeParam small = std::numeric_limits<TypeParam>::denorm_min(), large = std::numeric_limits<TypeParam>::max();
    const TVector2<TypeParam> origin(0, 0), top(large, large), left(-large, large);
    for (const TypeParam step : {small, -small, TypeParam(0)}) {
        const int sign = step > 0 ? 1 : step < 0 ? -1 : 0;
        EXPECT_EQ(P::Orientation(origin, top, {1, 1}), 0);
        EXPECT_EQ(P::Orientation({-large, 0}, {large, 0}, {1, step}), sign);
        // Three corners of a square; the origin is the fourth.
        EXPECT_EQ(P::InCircle({large, 0}, top, {0, large}, {step, step}), sign);
        EXPECT_EQ(P::InCircle(top, left, {-large, -large}, {1, -large}), 1);
    }
    for (const TypeParam bad :
         {std::numeric_limits<TypeParam>::infinity(), std::numeric_limits<TypeParam>::quiet_NaN()})
        EXPECT_EQ(P::Orientation(origin, top, {bad, 1}), 0);
}

template <class F>
struct Hull : ::testing::Test
{
    using T = typename F::T;
    using V = typename F::Vector;
    using Points = std::vector<V>;

    static V Point(double x, double y)
    {
        V point = V(TVector2<T>(static_cast<T>(x), static_cast<T>(y)));
        return point;
    }

    static auto HullOf(const Points& points)
    {
        return ConvexHull(typename F::PointSet(points.data(), static_cast<unsigned int>(points.size())));
    }

    static std::vector<std::pair<T, T>> Corners(const Points& points)
    {
        const auto hull = HullOf(points);
        EXPECT_TRUE(hull);
        std::vector<std::pair<T, T>> corners;
        for (unsigned int i = 0; i < hull.polygon.GetCount(); ++i)
            corners.emplace_back(hull.polygon[i].x, hull.polygon[i].y);
        return corners;
    }

    /// Strictly convex, from the lowest, of the points, and round all of them.
    static void ExpectHull(const Points& points)
    {
        const auto corners = Corners(points);
        const auto at = [&](std::size_t i) {
            return TVector2<T>(corners[i % corners.size()].first, corners[i % corners.size()].second);
        };
        const auto lowest = std::min_element(points.begin(), points.end(),
                                             [](const V& a, const V& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
        ASSERT_EQ(corners[0], std::make_pair(lowest->x, lowest->y));
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const bool isFlat = corners.size() <= 2;
            ASSERT_EQ(Predicates<T>::Orientation(at(i), at(i + 1), at(i + 2)), isFlat ? 0 : 1);
            ASSERT_TRUE(std::any_of(points.begin(), points.end(),
                                    [&](const V& p) { return p.x == at(i).x && p.y == at(i).y; }));
            for (const V& point : points) {
                const int sign = Predicates<T>::Orientation(at(i), at(i + 1), TVector2<T>(point.x, point.y));
                ASSERT_TRUE(isFlat ? sign == 0 : sign >= 0);
            }
        }
    }
};
TYPED_TEST_SUITE(Hull, PointFamily, TypeNames);

TYPED_TEST(Hull, OfAGridIsItsCornersInAnyUnitAndOrder)
{
    using S = typename TypeParam::T;
    std::mt19937 random(7);
    for (const S unit : Units<S>()) {
        typename TestFixture::Points grid;
        for (int i = 0; i < 3 * 21 * 13; ++i) {
            grid.push_back(this->Point(static_cast<S>(i % 21) * unit, static_cast<S>(i % 13) * unit));
        }
        for (int turn = 0; turn < 3; ++turn) {
            const std::vector<std::pair<S, S>> corners = {
                {0, 0}, {20 * unit, 0}, {20 * unit, 12 * unit}, {0, 12 * unit}};
            EXPECT_EQ(this->Corners(grid), corners);
            std::shuffle(grid.begin(), grid.end(), random);
        }
    }
}

TYPED_TEST(Hull, HoldsWhateverLiesOnALineOrCoincides)
{
    using S = typename TypeParam::T;
    std::mt19937 random(29);
    SCOPED_TRACE("seed 29");
    const std::vector<S> units = Units<S>();
    for (int trial = 0; trial < 400; ++trial) {
        const S unit = units[random() % units.size()];
        const auto range = 2 + random() % 5;
        typename TestFixture::Points points(1 + random() % 30);
        for (auto& point : points) {
            // Thirds are rounded, so that runs of them are almost straight.
            const double x = static_cast<double>(random() % range) - 1;
            const double y = trial % 3 == 0 ? x : static_cast<double>(random() % range) / 3;
            point = this->Point(static_cast<S>(x) * unit, static_cast<S>(y) * unit);
        }
        this->ExpectHull(points);
    }
}

TYPED_TEST(Hull, CarriesTheOtherComponentsOfTheFirstOfCoincidingPoints)
{
    if constexpr (TypeParam::dimension == 2) return;
    typename TestFixture::Points points;
    for (int i = 0; i < 12; ++i) {
        points.push_back(this->Point(i % 2, i % 4 / 2));
        points.back()[2] = static_cast<typename TypeParam::T>(i);
    }
    const auto hull = this->HullOf(points);
    ASSERT_EQ(hull.polygon.GetCount(), 4u);
    for (unsigned int i = 0; i < 4; ++i) EXPECT_TRUE(hull.polygon[i] == points[i ^ (i >> 1)]) << i;
}

TYPED_TEST(Hull, TellsWhyThereIsNone)
{
    using S = typename TypeParam::T;
    typename TestFixture::Points points;
    EXPECT_EQ(this->HullOf(points).status, Status::TooFewPoints);
    points.assign(3, this->Point(1, 2));
    EXPECT_EQ(this->Corners(points).size(), 1u);
    for (const S bad : {std::numeric_limits<S>::infinity(), std::numeric_limits<S>::quiet_NaN()}) {
        points[1].y = bad;
        const auto hull = this->HullOf(points);
        EXPECT_EQ(hull.status, Status::NotFinite);
        EXPECT_EQ(hull.polygon.GetCount(), 0u);
    }
}

#include "Support.h"

using namespace CorvexTest;
using namespace Maths::Robust;

namespace
{

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
        const auto at = [&](double x, double y) { return Point<TVector2<TypeParam>>(far + x, y - far, unit); };
        EXPECT_EQ(P::Orientation(at(0, 0), at(1000, 3000), at(1000, 3000)), 0);
        for (int step = -1; step <= 1; ++step) {
            EXPECT_EQ(P::Orientation(at(0, 0), at(1000, 3000), at(-3000, -9000 + step)), step);
            // Counter-clockwise on a circle of 5000 about (0, 0), and a fourth point of it.
            EXPECT_EQ(P::InCircle(at(5000, 0), at(3000, 4000), at(-4000, 3000), at(-3000 + step, -4000)), step);
        }
    }
}

TYPED_TEST(Signs, TellPointsOfEveryMagnitudeApart)
{
    using P = Predicates<TypeParam>;
    const TypeParam small = std::numeric_limits<TypeParam>::denorm_min(), large = std::numeric_limits<TypeParam>::max();
    const TVector2<TypeParam> origin(0, 0), top(large, large), left(-large, large);
    for (const int sign : {1, -1, 0}) {
        const TypeParam step = static_cast<TypeParam>(sign) * small;
        EXPECT_EQ(P::Orientation({-large, 0}, {large, 0}, {1, step}), sign);
        // Three corners of a square; the origin is the fourth.
        EXPECT_EQ(P::InCircle({large, 0}, top, {0, large}, {step, step}), sign);
    }
    EXPECT_EQ(P::InCircle(top, left, {-large, -large}, {1, -large}), 1);
    for (const TypeParam x : {TypeParam(1), infinity<TypeParam>, NaN<TypeParam>})
        EXPECT_EQ(P::Orientation(origin, top, {x, 1}), 0);
}

template <class F>
struct Hull : ::testing::Test
{
    using Points = std::vector<typename F::Vector>;

    static auto HullOf(const Points& points) { return ConvexHull(typename F::PointSet(points.begin(), points.end())); }
};
TYPED_TEST_SUITE(Hull, PointFamily, TypeNames);

TYPED_TEST(Hull, IsExactInAnyUnitAndOrder)
{
    using S = typename TypeParam::T;
    using Places = std::vector<std::pair<int, int>>;
    Places grid;
    for (int i = 0; i < 3 * 21 * 13; ++i) grid.emplace_back(i % 21, i % 13);
    const std::tuple<const char*, Places, Places> cases[] = {
        {"a grid, thrice", grid, {{0, 0}, {20, 0}, {20, 12}, {0, 12}}},
        {"coinciding", Places(3, {1, 2}), {{1, 2}}},
        {"level", {{5, 1}, {-3, 1}, {0, 1}, {5, 1}, {-3, 1}}, {{-3, 1}, {5, 1}}},
        {"upright", {{1, 5}, {1, -3}, {1, 0}, {1, 5}}, {{1, -3}, {1, 5}}},
        {"falling", {{0, 0}, {-1, 3}, {-3, 9}, {-2, 6}, {0, 0}}, {{0, 0}, {-3, 9}}},
        {"a unit aside",
         {{0, 0}, {3000, 9000}, {999, 2997}, {1000, 3001}, {1000, 3000}, {2000, 6000}, {2000, 5999}},
         {{0, 0}, {2000, 5999}, {3000, 9000}, {1000, 3001}}},
        {"runs on all sides",
         {{0, 0}, {2, 0}, {1, 0}, {3, 3}, {4, 6}, {2, 4}, {2, 0}, {0, 2}, {0, 1}, {1, 3}, {3, 5}},
         {{0, 0}, {2, 0}, {4, 6}, {0, 2}}},
    };
    Random random(7);
    for (const S unit : Units<S>())
        for (const auto& [name, places, corners] : cases) {
            SCOPED_TRACE(testing::Message() << name << ", unit " << unit);
            typename TestFixture::Points points;
            for (const auto& [x, y] : places) points.push_back(Point<typename TypeParam::Vector>(x, y, unit));
            for (int turn = 0; turn < 4; ++turn) {
                const auto hull = this->HullOf(points);
                ASSERT_EQ(hull.polygon.GetCount(), corners.size());
                for (unsigned int i = 0; i < corners.size(); ++i) {
                    EXPECT_EQ(hull.polygon[i].x, static_cast<S>(corners[i].first) * unit);
                    EXPECT_EQ(hull.polygon[i].y, static_cast<S>(corners[i].second) * unit);
                }
                std::shuffle(points.begin(), points.end(), random.generator);
            }
        }
}

TYPED_TEST(Hull, CarriesTheOtherComponentsOfTheFirstOfCoincidingPoints)
{
    if constexpr (TypeParam::dimension == 2) return;
    typename TestFixture::Points points;
    for (int i = 0; i < 12; ++i) {
        points.push_back(Point<typename TypeParam::Vector>(i % 2, i % 4 / 2));
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
    for (const S bad : {infinity<S>, NaN<S>}) {
        points.assign(3, Point<typename TypeParam::Vector>(1, bad));
        EXPECT_EQ(this->HullOf(points).status, Status::NotFinite);
        EXPECT_EQ(this->HullOf(points).polygon.GetCount(), 0u);
    }
}

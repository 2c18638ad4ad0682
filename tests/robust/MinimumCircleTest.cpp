#include "Support.h"

using namespace CorvexTest;
using Maths::Robust::MinimumCircle;

template <class T>
struct SmallestCircle : ::testing::Test
{
    using V = TVector2<T>;
    using Points = std::vector<V>;

    static auto CircleOf(const Points& points)
    {
        return MinimumCircle(TPointSet<T, TVector2>(points.begin(), points.end()));
    }

    /// The radius for three points: half the longest side, or that through all of them where no angle is wide.
    static double RadiusOf(const V& a, const V& b, const V& c)
    {
        const TVector2<double> u = TVector2<double>(b) - TVector2<double>(a),
                               v = TVector2<double>(c) - TVector2<double>(a);
        double squares[] = {u % u, v % v, (u - v) % (u - v)};
        std::sort(squares, squares + 3);
        if (squares[0] + squares[1] <= squares[2]) return std::sqrt(squares[2]) / 2;
        return std::sqrt(squares[0] * squares[1] * squares[2]) / (2 * std::fabs(u.x * v.y - u.y * v.x));
    }
};
TYPED_TEST_SUITE(SmallestCircle, Scalars, TypeNames);

TYPED_TEST(SmallestCircle, IsExactWhereItsValuesAreAnywhereAndInAnyOrder)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    const std::tuple<const char*, std::vector<TVector2<T>>, TVector2<T>, T> cases[] = {
        {"one", {{3, 4}}, {3, 4}, T(0)},
        {"coinciding", {{3, 4}, {3, 4}, {3, 4}}, {3, 4}, T(0)},
        {"on a line", {{0, 0}, {2, 2}, {-6, 8}, {3, -4}, {6, -8}}, {0, 0}, T(10)},
        {"obtuse", {{0, 0}, {8, 0}, {4, 2}}, {4, 0}, T(4)},
        {"acute", {{-4, -3}, {4, -3}, {0, 5}, {1, 1}}, {0, 0}, T(5)},
        {"rectangle", {{0, 0}, {6, 0}, {6, 8}, {0, 8}, {0, 0}}, {3, 4}, T(5)},
        {"many on the rim", {{5, 0}, {4, 3}, {3, 4}, {-3, 4}, {-4, 3}, {0, -5}, {3, -4}, {1, 1}}, {0, 0}, T(5)},
    };
    Random random(3);
    for (const auto& [name, places, centre, radius] : cases)
        for (const T unit : {T(1), 2 * Limits::denorm_min(), std::ldexp(T(1), Limits::max_exponent - 6)})
            for (const T far : {T(0), std::ldexp(unit, Limits::digits - 5)}) {
                SCOPED_TRACE(testing::Message() << name << ", unit " << unit << ", from " << far);
                if (!std::isfinite(far)) continue;
                auto points = places;
                for (auto& point : points) point = point * unit + TVector2<T>(far, -far);
                for (int turn = 0; turn < 6; ++turn) {
                    const auto found = this->CircleOf(points);
                    ASSERT_TRUE(found);
                    EXPECT_TRUE(found.circle.centre == centre * unit + TVector2<T>(far, -far));
                    EXPECT_EQ(found.circle.radius, radius * unit);
                    std::shuffle(points.begin(), points.end(), random.generator);
                }
            }
}

// By Helly's theorem as large as the largest that three of the points need.
TYPED_TEST(SmallestCircle, IsAsLargeAsThreeOfItsPointsNeed)
{
    using T = TypeParam;
    Random random(31);
    for (int trial = 0; trial < 100; ++trial) {
        const T far(trial % 2 == 0 ? 0 : 10000);
        typename TestFixture::Points points(2 + random.Below(40));
        for (auto& point : points) point = random.Within(TVector2<T>(1, 1)) + TVector2<T>(far, -far);
        const double slack = 4 * (1 + double(far)) * double(std::numeric_limits<T>::epsilon());
        double radius = 0;
        for (const auto& a : points)
            for (const auto& b : points)
                for (const auto& c : points) radius = std::max(radius, this->RadiusOf(a, b, c));
        EXPECT_NEAR(double(this->CircleOf(points).circle.radius), radius, slack);
    }
}

TYPED_TEST(SmallestCircle, TellsWhyThereIsNone)
{
    using Flat = TVector2<TypeParam>;
    const TypeParam large = std::numeric_limits<TypeParam>::max();
    EXPECT_EQ(this->CircleOf({}).status, Status::TooFewPoints);
    for (const Flat& bad : {Flat(NaN<TypeParam>, 1), Flat(0, -infinity<TypeParam>), Flat(large, large)}) {
        const auto found = this->CircleOf({{-large, -large}, bad});
        EXPECT_EQ(found.status, Status::NotFinite);
        EXPECT_EQ(found.circle.radius, 0);
    }
}

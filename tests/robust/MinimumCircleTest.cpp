#include <CorvexMaths/robust/MinimumCircle.h>
#include <tests/support/Types.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace CorvexTest;
using namespace Maths::Robust;

template <class T>
struct SmallestCircle : ::testing::Test
{
    using Points = std::vector<Maths::TVector2<T>>;

    static MinimumCircle<T> CircleOf(const Points& points)
    {
        return MinimumCircle(
            Maths::TPointSet<T, Maths::TVector2>(points.data(), static_cast<unsigned int>(points.size())));
    }

    static void ExpectCircle(const Points& points, T x, T y, T radius)
    {
        const MinimumCircle<T> found = CircleOf(points);
        ASSERT_TRUE(found);
        EXPECT_EQ(found.circle.centre.x, x);
        EXPECT_EQ(found.circle.centre.y, y);
        EXPECT_EQ(found.circle.radius, radius);
    }
};
TYPED_TEST_SUITE(SmallestCircle, Scalars, TypeNames);

TYPED_TEST(SmallestCircle, IsExactWhereItsValuesAreAnywhereAndInAnyOrder)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    const struct
    {
        const char* name;
        std::vector<std::pair<int, int>> points;
        int x, y, radius;
    } cases[] = {
        {"one", {{3, 4}}, 3, 4, 0},
        {"coinciding", {{3, 4}, {3, 4}, {3, 4}}, 3, 4, 0},
        {"on a line", {{0, 0}, {2, 2}, {-6, 8}, {3, -4}, {6, -8}}, 0, 0, 10},
        {"obtuse", {{0, 0}, {8, 0}, {4, 2}}, 4, 0, 4},
        {"acute", {{-4, -3}, {4, -3}, {0, 5}, {1, 1}}, 0, 0, 5},
        {"rectangle", {{0, 0}, {6, 0}, {6, 8}, {0, 8}, {0, 0}}, 3, 4, 5},
        {"many on the rim", {{5, 0}, {4, 3}, {3, 4}, {-3, 4}, {-4, 3}, {0, -5}, {3, -4}, {1, 1}}, 0, 0, 5},
    };
    std::mt19937 random(3);
    for (const auto& row : cases)
        for (const T unit : {T(1), 2 * Limits::denorm_min(), std::ldexp(T(1), Limits::max_exponent - 6)})
            for (const T far : {T(0), std::ldexp(unit, Limits::digits - 5)}) {
                SCOPED_TRACE(testing::Message() << row.name << ", unit " << unit << ", from " << far);
                if (!std::isfinite(far)) continue;
                typename TestFixture::Points points;
                for (const auto& [x, y] : row.points)
                    points.emplace_back(static_cast<T>(x) * unit + far, static_cast<T>(y) * unit - far);
                for (int turn = 0; turn < 6; ++turn) {
                    this->ExpectCircle(points, static_cast<T>(row.x) * unit + far, static_cast<T>(row.y) * unit - far,
                                       static_cast<T>(row.radius) * unit);
                    std::shuffle(points.begin(), points.end(), random);
                }
            }
}

TYPED_TEST(SmallestCircle, HoldsItsPointsAndRestsOnThemInAnyOrder)
{
    using T = TypeParam;
    std::mt19937 random(31);
    SCOPED_TRACE("seed 31");
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (int trial = 0; trial < 100; ++trial) {
        const double far = trial % 2 == 0 ? 0 : 1e4;
        typename TestFixture::Points points;
        for (auto i = random() % 40 + 2; i > 0; --i)
            points.emplace_back(static_cast<T>(uniform(random) + far), static_cast<T>(uniform(random) - far));
        const auto circle = this->CircleOf(points).circle;
        const double slack = 4 * (1 + far) * std::numeric_limits<T>::epsilon();
        // Of the points on the rim no half of the circle is free, else a smaller circle held them all.
        double covered = -1;
        for (int direction = 0; direction < 64; ++direction) {
            double most = -2;
            for (const auto& point : points) {
                const double x = static_cast<double>(point.x) - static_cast<double>(circle.centre.x);
                const double y = static_cast<double>(point.y) - static_cast<double>(circle.centre.y);
                const double distance = std::sqrt(x * x + y * y), radius = static_cast<double>(circle.radius);
                ASSERT_LE(distance, radius + slack);
                if (distance < radius - slack) continue;
                most = std::max(most, (x * std::cos(direction * 0.1) + y * std::sin(direction * 0.1)) / radius);
            }
            covered = direction == 0 ? most : std::min(covered, most);
        }
        EXPECT_GE(covered, -0.1);
        std::shuffle(points.begin(), points.end(), random);
        this->ExpectCircle(points, circle.centre.x, circle.centre.y, circle.radius);
    }
}

TYPED_TEST(SmallestCircle, TellsWhyThereIsNone)
{
    using Limits = std::numeric_limits<TypeParam>;
    EXPECT_EQ(this->CircleOf({}).status, Status::TooFewPoints);
    const TypeParam large = Limits::max();
    for (const typename TestFixture::Points& points : {typename TestFixture::Points{{0, 0}, {Limits::quiet_NaN(), 1}},
                                                       {{0, -Limits::infinity()}, {1, 1}},
                                                       {{large, large}, {-large, -large}}})
    {
        const auto found = this->CircleOf(points);
        EXPECT_EQ(found.status, Status::NotFinite);
        EXPECT_EQ(found.circle.radius, 0);
    }
}

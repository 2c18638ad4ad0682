#include <CorvexMaths/pointsets/TParameterization.h>
#include <tests/pointsets/OpenSet.h>
#include <tests/support/Bits.h>

using namespace CorvexTest;

template <class F>
class ParameterizationTest : public ::testing::Test
{};
TYPED_TEST_SUITE(ParameterizationTest, PointFamily, TypeNames);

/// The line through the origin and points along the last component; all others are 0.
template <class T, template <class> class V>
Maths::TParameterization<T, V> Through(Maths::TPointSet<T, V> points, std::initializer_list<int> values)
{
    points.Add(V<T>() - V<T>());
    for (const int value : values) points.Add(points[0]), points.GetLast()[sizeof(V<T>) / sizeof(T) - 1] = T(value);
    Maths::TParameterization<T, V> line(points);
    EXPECT_TRUE(std::isnan(line.Evaluate(T(0))[1]) && line.GetLength(0, 1) == T(0)) << "no positions yet";
    line.Parameterize();
    return line;
}

TYPED_TEST(ParameterizationTest, EvaluatesAndMeasuresByPosition)
{
    using T = typename TypeParam::T;
    auto line = Through(typename TypeParam::PointSet(), {2, 4, 8}); // at 0, 1/4, 1/2, 1
    auto point = Through(typename TypeParam::PointSet(), {}), none = Through(typename TypeParam::PointSet(), {0, 0});
    const T nan = std::numeric_limits<T>::quiet_NaN(),
            rows[][2] = {{0, 0},       {T(0.125), 1}, {T(0.25), 2},   {T(0.375), 3},
                         {T(0.75), 6}, {1, 8},        {T(-0.1), nan}, {T(1.1), nan}};
    for (const auto& [position, value] : rows)
        for (unsigned int k = 0; k < TypeParam::dimension; ++k)
            EXPECT_TRUE(SameBits(line.Evaluate(position)[k], k + 1 == TypeParam::dimension ? value : value * T(0)));
    EXPECT_TRUE(std::isnan(point.Evaluate(1)[1]) && std::isnan(none.Evaluate(1)[1])) << "no length";

    const T lengths[][3] = {{T(0.125), T(0.75), 5}, {T(0.5), T(0.5), 0},    {T(0.5), T(0.75), 2},
                            {T(0.25), T(0.5), 2},   {T(0.25), T(0.375), 1}, {0, 1, 8}};
    for (const auto& [from, to, length] : lengths)
        EXPECT_TRUE(line.GetLength(from, to) == length && line.GetLength(to, from) == length) << from << " to " << to;
    line[3] *= T(1.5);
    point = line;
    const auto copy = point;
    EXPECT_EQ(copy.GetLength(T(0.25), T(0.75)), 6) << "the points as they stand";
    EXPECT_EQ(copy.GetLength(), 8) << "the length as it was";
    point.RemoveFromEnd(2);
    EXPECT_EQ(point.Evaluate(T(0.75))[TypeParam::dimension - 1], 2) << "the last stands for points that have gone";
}

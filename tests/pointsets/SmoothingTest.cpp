#include <tests/polygons/PolygonSupport.h>
#include <tests/support/RecordingList.h>

using namespace CorvexTest;

template <class Family>
class SmoothingTest : public ::testing::Test
{};
TYPED_TEST_SUITE(SmoothingTest, PointFamily, TypeNames);

TYPED_TEST(SmoothingTest, AveragesNeighboursOrCutsLongSegments)
{
    using T = typename TypeParam::T;
    const double large = std::ldexp(1.0, std::numeric_limits<T>::digits);
    const T rounded = T(5) * static_cast<T>(sizeof(T) == sizeof(float) ? 0.3333333432674408 : 0.3333333333333333);
    // Below 0: as many passes, or such a spacing, of a closed line.
    const OutlineRow smoothed[] = {
        {"two passes", 2, {{0, 0}, {9, 0}, {0, 0}, {0, 0}}, {{0, 0}, {2, 0}, {2, 0}, {0, 0}}},
        {"sums from the left", 1, {{large, 0}, {1, 0}, {-large, 0}}, {{large, 0}, {0, 0}, {-large, 0}}},
        {"multiplies by a third", 1, {{2, 0}, {2, 0}, {1, 0}}, {{2, 0}, {rounded, 0}, {1, 0}}},
        {"closed", -1, {{3, 0}, {6, 0}, {9, 3}, {12, 9}}, {{7, 3}, {6, 1}, {9, 4}, {8, 4}}},
        {"two points", -1, {{0, 0}, {3, 0}}, {{0, 0}, {3, 0}}}};
    const OutlineRow filled[] = {{"none", 1, {}, {}},
                                 {"exactly the spacing", 3, {{0, 0}, {3, 0}}, {{0, 0}, {3, 0}}},
                                 {"closed", -2, {{0, 0}, {0, 1}, {0, 4}}, {{0, 0}, {0, 1}, {0, 2.5}, {0, 4}, {0, 2}}}};
    ExpectOutlines<TypeParam>(smoothed, 7, 0, [](auto& line, T n) { line.Smooth(n == T(2) ? 2 : 1, n < T(0)); });
    ExpectOutlines<TypeParam>(filled, 7, 0, [](auto& line, T n) { line.Infill(std::fabs(n), n < T(0)); });

    RecordingList<typename TypeParam::PointSet> line;
    line.Expand(2);
    for (unsigned int k = 0; k < TypeParam::dimension; ++k) line[0][k] = T(0), line[1][k] = T(k + 1250);
    // A third of 1251 by any other order of operations has other bits.
    const T length = line[1].GetLength(), step = (T(1251) / length) * (length / T(3));
    line.Infill(length * T(0.4), false);
    EXPECT_EQ(line[2][1], step + step);
    line.Smooth(1, false);
    EXPECT_EQ(line.log, "ElementAdded(1: of 1) count 3; ElementAdded(2: of 1) count 4; "
                        "ElementsRemoved(0: of 4) count 4; Cleared(0: of 0) count 0; ElementsAdded(0: of 4) count 4");
}

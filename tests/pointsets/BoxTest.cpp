#include <tests/pointsets/OpenSet.h>
#include <tests/support/plain/PointSets.h>

#include <cstring>

namespace CorvexTest
{
namespace
{

using Maths::TBox;
using Maths::TVector2;
using Maths::TVector3;
using Maths::TVector4;

static_assert(sizeof(Maths::TPointSet<float, TVector3>) == 72 && sizeof(Maths::TPointSet<double, TVector3>) == 96);

template <class F>
class PointSetBox : public ::testing::Test
{};
TYPED_TEST_SUITE(PointSetBox, PointFamily, TypeNames);

template <class F>
void ExpectRange(const OpenSet<F>& set, double lowest, double highest)
{
    EXPECT_EQ(set.GetBoundingBox().minimum.x, static_cast<typename F::T>(lowest));
    EXPECT_EQ(set.GetBoundingBox().maximum.x, static_cast<typename F::T>(highest));
}

TYPED_TEST(PointSetBox, FollowsTheHooksAsTheyFire)
{
    using F = TypeParam;
    using Set = OpenSet<F>;
    constexpr double unset = Maths::Numbers::unsetBound<double>;
    const struct
    {
        const char* name;
        void (*change)(Set&);
        double lowest, highest;
    } rows[] = {
        {"insertion", [](Set& s) { s.Insert(Point<F>(9, 0), 0); }, 0, 9},
        {"removal of the first sees the slots unmoved", [](Set& s) { s.RemoveAt(0, true); }, 0, 1},
        {"removal from the front likewise", [](Set& s) { s.RemoveFromFront(2); }, 0, 0},
        {"removal from the end is exact", [](Set& s) { s.RemoveFromEnd(1); }, 0, 1},
        {"removal without order goes unseen", [](Set& s) { s.RemoveAt(2, false); }, 0, 5},
        {"clearing", [](Set& s) { s.Clear(false); }, unset, -unset},
        {"self-assignment empties", [](Set& s) { static_cast<typename F::PointSet&>(s) = s; }, unset, -unset},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Set kept = {Point<F>(0, 2, 7), Point<F>(1, 3, 7), Point<F>(5, 4, 7)}, still(kept);
        row.change(kept);
        ExpectRange<F>(kept, row.lowest, row.highest);
        still.keepBox = false;
        row.change(still);
        ExpectRange<F>(still, 0, 5);
    }
    const Set one = {Point<F>(1, -2, 3, 9)};
    const TVector3<typename F::T> point = one[0];
    EXPECT_TRUE(one.GetBoundingBox() == TBox<typename F::T>(point, point, 1));
}

template <class F, template <class> class W>
void ExpectConvertedCopy()
{
    using T = typename F::T;
    using From = Family<T, W>;
    OpenSet<From> source = {Point<From>(1, 2, 3, 4), Point<From>(5, 6, 7, 8)};
    source.keepBox = false;
    source.boundingBox = TBox<T>(T(50));
    const OpenSet<F> copy(static_cast<const typename From::PointSet&>(source));
    EXPECT_TRUE(copy.GetCount() == 2 && copy.capacity == 2 && copy.GetGrowSize() == 3 && !copy.keepBox);
    EXPECT_EQ(copy[1], Point<F>(5, 6, From::dimension > 2 ? 7 : 0, From::dimension > 3 ? 8 : 1));
    ExpectRange<F>(copy, 1, 5);
    EXPECT_EQ(copy.GetBoundingBox().limit, Maths::Numbers::unsetBound<T>);
}

TYPED_TEST(PointSetBox, IsCalculatedByCopiesAndCopiedByAssignment)
{
    using F = TypeParam;
    ExpectConvertedCopy<F, TVector2>();
    ExpectConvertedCopy<F, TVector3>();
    ExpectConvertedCopy<F, TVector4>();
    EXPECT_EQ(OpenSet<F>(0, 5).GetGrowSize(), 5u);

    typename F::PointSet target;
    OpenSet<F> set = {Point<F>(4, 1)};
    set.boundingBox = TBox<typename F::T>(50);
    target = set;
    EXPECT_EQ(target.GetBoundingBox().limit, 50);
    EXPECT_EQ(target.GetBoundingBox().minimum.x, 50) << "a stale box is copied as it stands";
}

TYPED_TEST(PointSetBox, MovesWithOffsetsAndIsRecalculatedByScales)
{
    using F = TypeParam;
    OpenSet<F> set = {Point<F>(1, 2, 3, 4), Point<F>(5, 6, 7, 8)};
    set.RemoveAt(0, false);
    set.keepBox = false;
    set += set[0];
    EXPECT_EQ(set[0], Point<F>(10, 12, 14, 16));
    ExpectRange<F>(set, 6, 10);
    set -= Point<F>(2, 0, 0, 1);
    ExpectRange<F>(set, 4, 8);
    set.Add(Point<F>(-1, 0, 0, 0));
    set *= -2;
    EXPECT_EQ(set[0], Point<F>(-16, -24, -28, -30));
    ExpectRange<F>(set, -16, 2);
}

TYPED_TEST(PointSetBox, HasTheBitsOfAnExtensionPointByPoint)
{
    using F = TypeParam;
    using T = typename F::T;
    std::mt19937 random(20240611);
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE(round);
        const unsigned int count = Below(random, 90), later = Below(random, count + 1);
        OpenSet<F> points(count + 1);
        for (unsigned int i = 0; i < count * F::dimension; ++i) {
            // One sign alone leaves zeros as the extreme values.
            const T value = AwkwardValue<T>(random, 3);
            const bool turn = (round % 3 == 1 && value < 0) || (round % 3 == 2 && value > 0);
            points[i / F::dimension][i % F::dimension] = turn ? -value : value;
        }
        OpenSet<F> set(points.GetStream(), later);
        set.AddRange(points.GetStream() + later, count - later);
        TBox<T> plain;
        Plain::ExtendBox(plain, points.GetStream(), count);
        ASSERT_EQ(std::memcmp(&set.GetBoundingBox(), &plain, sizeof(plain)), 0);
    }
}

TYPED_TEST(PointSetBox, CentreIsTheMeanInListOrder)
{
    using F = TypeParam;
    EXPECT_EQ(OpenSet<F>().GetCentre(), Point<F>(0, 0, 0, 0));
    // The 1 is lost beside the large value, as in no other order.
    const double large = std::ldexp(1.0, std::numeric_limits<typename F::T>::digits);
    const OpenSet<F> set = {Point<F>(large, 1, 0, 1), Point<F>(1, 2, 3, 1), Point<F>(-large, 3, 0, 4),
                            Point<F>(8, 2, 5, 2)};
    EXPECT_EQ(set.GetCentre(), Point<F>(2, 2, 2, 2));
}

TYPED_TEST(PointSetBox, RectangleIsInclusiveAlongAxesAsGiven)
{
    using F = TypeParam;
    using T = typename F::T;
    const struct
    {
        const char* name;
        T x, y, uLength, vLength;
        bool within;
    } rows[] = {{"far end of both axes", 3, 4, 4, 3, true},      {"a projection, not a length", 3, 4, 3.5, 3, false},
                {"above the second axis", 3, 4, 4, 2.5, false},  {"behind the first axis", 0.5, 2, 4, 3, false},
                {"behind the second axis", 2, 0.5, 4, 3, false}, {"no width, at the corner", 1, 1, 0, 3, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const OpenSet<F> set = {Point<F>(-50, 0), Point<F>(row.x, row.y, 9)};
        EXPECT_EQ(
            set.WithinRectangle(TVector2<T>(1, 1), TVector2<T>(2, 0), Point<F>(0, 1, 7, 7), row.uLength, row.vLength),
            row.within);
    }
}

} // namespace
} // namespace CorvexTest

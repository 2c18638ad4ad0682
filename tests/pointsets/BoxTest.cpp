#include <tests/pointsets/OpenSet.h>

#include <cstring>
#include <tuple>

using namespace CorvexTest;

static_assert(sizeof(Maths::TPointSet<float, Maths::TVector3>) == 72 &&
              sizeof(Maths::TPointSet<double, Maths::TVector3>) == 96);

template <class F>
struct PointSetBox : ::testing::Test
{
    static void ExpectRange(const OpenSet<F>& set, double lowest, double highest)
    {
        EXPECT_EQ(set.GetBoundingBox().minimum.x, static_cast<typename F::T>(lowest));
        EXPECT_EQ(set.GetBoundingBox().maximum.x, static_cast<typename F::T>(highest));
    }
};
TYPED_TEST_SUITE(PointSetBox, PointFamily, TypeNames);

TYPED_TEST(PointSetBox, FollowsTheHooksAsTheyFire)
{
    using F = TypeParam;
    using Set = OpenSet<F>;
    constexpr double unset = Maths::Numbers::unsetBound<double>;
    const std::tuple<const char*, void (*)(Set&), double, double> rows[] = {
        {"insertion", [](Set& s) { s.Insert(Point<F>(9, 0), 0); }, 0, 9},
        {"removal of the first sees the slots unmoved", [](Set& s) { s.RemoveAt(0, true); }, 0, 1},
        {"removal from the front likewise", [](Set& s) { s.RemoveFromFront(2); }, 0, 0},
        {"removal from the end is exact", [](Set& s) { s.RemoveFromEnd(1); }, 0, 1},
        {"removal without order goes unseen", [](Set& s) { s.RemoveAt(2, false); }, 0, 5},
        {"clearing", [](Set& s) { s.Clear(false); }, unset, -unset},
        {"self-assignment empties", [](Set& s) { static_cast<typename Set::Base&>(s) = s; }, unset, -unset}};
    for (const auto& [name, change, lowest, highest] : rows) {
        SCOPED_TRACE(name);
        Set kept = {Point<F>(0, 2, 7), Point<F>(1, 3, 7), Point<F>(5, 4, 7)}, still(kept);
        change(kept);
        this->ExpectRange(kept, lowest, highest);
        still.keepBox = false;
        change(still);
        this->ExpectRange(still, 0, 5);
    }
}

TYPED_TEST(PointSetBox, IsCalculatedByCopiesAndCopiedByAssignment)
{
    using F = TypeParam;
    using T = typename F::T;
    const auto expectCopy = [this](auto from) {
        using From = decltype(from);
        OpenSet<From> source = {Point<From>(1, 2, 3, 4), Point<From>(5, 6, 7, 8)};
        source.keepBox = false;
        source.boundingBox = Maths::TBox<T>(50);
        const OpenSet<F> copy(static_cast<const typename From::PointSet&>(source));
        EXPECT_TRUE(copy.GetCount() == 2 && copy.capacity == 2 && copy.GetGrowSize() == 3 && !copy.keepBox);
        EXPECT_EQ(copy[1], Point<F>(5, 6, From::dimension > 2 ? 7 : 0, From::dimension > 3 ? 8 : 1));
        this->ExpectRange(copy, 1, 5);
        EXPECT_EQ(copy.GetBoundingBox().limit, Maths::Numbers::unsetBound<T>);
    };
    expectCopy(Family<T, Maths::TVector2>());
    expectCopy(Family<T, Maths::TVector3>());
    expectCopy(Family<T, Maths::TVector4>());
    OpenSet<F> stale = {Point<F>(1, 2, 3, 4)}, target;
    stale.boundingBox = Maths::TBox<T>(50);
    target = stale;
    this->ExpectRange(target, 50, -50);
}

TYPED_TEST(PointSetBox, MovesWithOffsetsAndIsRecalculatedByScales)
{
    using F = TypeParam;
    OpenSet<F> set = {Point<F>(1, 2, 3, 4), Point<F>(5, 6, 7, 8), Point<F>(-2, 0, 0, 0)};
    set.RemoveAt(2, false);
    set.keepBox = false;
    set += set[0];
    EXPECT_EQ(set[1], Point<F>(6, 8, 10, 12));
    this->ExpectRange(set, -1, 6);
    set -= set[0];
    EXPECT_EQ(set[1], Point<F>(4, 4, 4, 4));
    this->ExpectRange(set, -3, 4);
    set *= -2;
    EXPECT_EQ(set[1], Point<F>(-8, -8, -8, -8));
    this->ExpectRange(set, -8, 0);
}

TYPED_TEST(PointSetBox, HasTheBitsOfAnExtensionPointByPoint)
{
    using F = TypeParam;
    using T = typename F::T;
    std::mt19937 random(20240611);
    SCOPED_TRACE("seed 20240611");
    for (int round = 0; round < 600; ++round) {
        const unsigned int count = Below(random, 90), later = Below(random, count + 1);
        OpenSet<F> points(count + 1);
        T* const values = *points.GetStream();
        for (unsigned int i = 0; i < count * F::dimension; ++i) {
            // One sign alone leaves zeros as the extreme values.
            const T value = AwkwardValue<T>(random, 3);
            const bool turn = (round % 3 == 1 && value < 0) || (round % 3 == 2 && value > 0);
            values[i] = turn ? -value : value;
        }
        OpenSet<F> set(points.GetStream(), later);
        set.AddRange(points.GetStream() + later, count - later);
        Maths::TBox<T> plain;
        for (unsigned int i = 0; i < count; ++i) plain.Extend(static_cast<Maths::TVector3<T>>(points.GetStream()[i]));
        ASSERT_EQ(std::memcmp(&set.GetBoundingBox(), &plain, sizeof(plain)), 0) << round;
    }
}

TYPED_TEST(PointSetBox, CentreIsTheMeanInListOrder)
{
    using F = TypeParam;
    EXPECT_EQ(OpenSet<F>().GetCentre(), Point<F>(0, 0, 0, 0));
    // The 1 is lost beside the large value, as in no other order.
    const double large = std::ldexp(1.0, std::numeric_limits<typename F::T>::digits);
    const OpenSet<F> set = {Point<F>(large, 1), Point<F>(1, 2, 8), Point<F>(-large, 3, 0, 4), Point<F>(8, 2, 0, 2)};
    EXPECT_EQ(set.GetCentre(), Point<F>(2, 2, 2, 2));
}

TYPED_TEST(PointSetBox, RectangleIsInclusiveAlongAxesAsGiven)
{
    using T = typename TypeParam::T;
    const auto isWithin = [](T x, T y, T uLength, T vLength) {
        const OpenSet<TypeParam> set = {Point<TypeParam>(-50, 0), Point<TypeParam>(x, y, 9)};
        return set.WithinRectangle({1, 1}, {2, 0}, Point<TypeParam>(0, 2, 7, 7), uLength, vLength);
    };
    EXPECT_TRUE(isWithin(3, 4, 4, 6)) << "the far end of both axes";
    EXPECT_FALSE(isWithin(3, 4, 3.5, 6) || isWithin(3, 4, 4, 5.5)) << "projections, not lengths";
    EXPECT_FALSE(isWithin(0.5, 2, 4, 6) || isWithin(2, 0.5, 4, 6)) << "behind an axis";
    EXPECT_TRUE(isWithin(1, 1, 0, 6)) << "no width, at the corner";
}

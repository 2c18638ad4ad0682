#include <tests/splines/OpenSpline.h>
#include <tests/support/Bits.h>
#include <tests/support/plain/PlainBasis.h>

#include <algorithm>

namespace CorvexTest
{
namespace
{

static_assert(sizeof(Maths::TBSpline<double, Maths::TVector3>) ==
              sizeof(Maths::TPointSet<double, Maths::TVector3>) + 80);

template <class F>
class SplineCurve : public ::testing::Test
{};
TYPED_TEST_SUITE(SplineCurve, PointFamily, TypeNames);

template <class T>
constexpr T inset = static_cast<T>(1e-6f);

TYPED_TEST(SplineCurve, IsEvaluatedOnTheScaleOfItsKnots)
{
    using F = TypeParam;
    using T = typename F::T;
    EXPECT_EQ(Straight<F>(3, Clamped, 4).Evaluate(T(0.75))[0], 17) << "in the second span";
    EXPECT_EQ(Straight<F>(2, Clamped, 2).Evaluate(7)[0], (1 - inset<T>)*8) << "beyond the end";
    EXPECT_EQ(Straight<F>(2, Clamped, 2).Evaluate(inset<T>)[0], 0) << "a term at the tolerance is dropped";
    EXPECT_EQ(Straight<F>(2, Clamped, 2).Evaluate(2 * inset<T>)[0], 16 * inset<T>) << "a term above it stays";
    EXPECT_EQ(Straight<F>(1, Clamped, 4).Evaluate(T(0.75))[0], 24) << "order 1 is a staircase";
    EXPECT_EQ(Straight<F>(3, Uniform, 6).Evaluate(0)[0], 12) << "uniform, from the knot of the order";
    EXPECT_EQ(Straight<F>(3, Uniform, 6).Evaluate(T(0.5))[0], 24) << "uniform, halfway";
    // The sum starts from zeros in all components: basis functions that add up to 1 keep a w of 1.
    const typename F::Vector points[] = {Point<F>(8, 0, 8), Point<F>(16, 8, 0), Point<F>(0, -8, 8), Point<F>(0, 16, 0)};
    OpenSpline<F> cubic(4, Clamped, 0, 5);
    cubic.AddRange(points, 4);
    EXPECT_EQ(cubic.Evaluate(T(0.5)), Point<F>(7, 2, 4));
    EXPECT_EQ(cubic.Evaluate(-1), Point<F>(0, 0, 0, 0)) << "nothing left of the start";
}

/// Knots as built (kind 0), sorted with near ones among them (1), descending (2), spoilt and sorted (3), spoilt (4).
template <class T>
void FillKnots(std::mt19937& random, unsigned int kind, TList<T>& knots)
{
    T *values = knots.GetStream(), *end = values + knots.GetCount();
    if (kind == 0) return;
    for (T* k = values; k < end; ++k)
        *k = static_cast<T>(Below(random, 12)) / 8 + T(5e-7) * static_cast<T>(random() % 3);
    std::sort(values, end);
    if (kind == 2) std::reverse(values, end);
    if (kind < 3) return;
    using Limits = std::numeric_limits<T>;
    const T spoilt[] = {
        -3, T(0.5), Limits::infinity(), -Limits::infinity(), Limits::max(), -Limits::max(), Limits::quiet_NaN()};
    for (unsigned int i = Below(random, 4); i > 0; --i) values[Below(random, knots.GetCount())] = spoilt[random() % 7];
    if (kind == 3) std::sort(values, end, [](T a, T b) { return a < b || (b != b && a == a); });
}

TYPED_TEST(SplineCurve, HasTheBitsOfTheWholeRecursion)
{
    using F = TypeParam;
    using T = typename F::T;
    constexpr unsigned int seed = 20240807;
    std::mt19937 random(seed);
    this->RecordProperty("seed", static_cast<int>(seed));
    for (int round = 0; round < 6000; ++round) {
        SCOPED_TRACE(round);
        const unsigned int n = 1 + Below(random, 20), order = 1 + Below(random, 6);
        const bool uniform = Below(random, 2) == 0;
        OpenSpline<F> spline = Straight<F>(order, uniform ? Uniform : Clamped, n);
        if (Below(random, 4) == 0) spline[Below(random, n)][Below(random, F::dimension)] = AwkwardValue<T>(random, 3);
        FillKnots(random, Below(random, 5), spline.knots);
        const T* knots = spline.knots.GetStream();
        T u = std::uniform_real_distribution<T>(T(-0.1), T(1.1))(random);
        if (Below(random, 2)) u = knots[Below(random, spline.knotCount)];
        if (Below(random, 16) == 0) u = AwkwardValue<T>(random, 3) * T(1e35);

        const T upper = knots[uniform ? n : spline.knotCount - 1], lower = knots[uniform ? order : 0];
        T x = (upper - lower) * u + lower;
        if (x >= upper) x = upper - inset<T>;
        std::vector<T> plain(spline.coefficientCount);
        Plain::FillBasis(knots, spline.knotCount, plain.data(), x, order);
        typename F::Vector sum = Point<F>(0, 0, 0, 0);
        for (unsigned int i = 0; i < n; ++i) sum += spline[i] * plain[i];

        const typename F::Vector point = spline.Evaluate(u);
        for (unsigned int i = 0; i < plain.size(); ++i)
            ASSERT_TRUE(SameBits(spline.coefficients[i], plain[i])) << i << ": " << spline.coefficients[i];
        for (unsigned int k = 0; k < F::dimension; ++k) ASSERT_TRUE(SameBits(point[k], sum[k])) << point[k];
    }
}

TYPED_TEST(SplineCurve, FollowsItsControlPointsByTheHooks)
{
    using S = OpenSpline<TypeParam>;
    using Knots = std::vector<typename TypeParam::T>;
    const Knots four = {0, 0, 0, 0.5, 1, 1, 1}, quarters = {0, 0.25, 0.5, 0.75, 1};
    const struct
    {
        const char* name;
        void (*change)(S&, S&);
        Knots knots;
    } rows[] = {{"added", [](S& s, S& other) { s.RemoveFromEnd(2), s.Add(other[0]), s.Add(other[0]); }, four},
                {"added as a range", [](S& s, S& other) { s.RemoveFromEnd(1), s.AddRange(&other[0], 1); }, four},
                {"removed in order", [](S& s, S&) { s.RemoveAt(1, true); }, {0, 0, 0, 1, 1, 1}},
                {"removed from the end", [](S& s, S&) { s.RemoveFromEnd(2); }, {0, 0, 0, 1, 1}},
                {"removed without order", [](S& s, S&) { s.RemoveAt(1, false); }, four},
                {"cleared", [](S& s, S&) { s.Clear(false); }, four},
                {"of another order", [](S& s, S&) { s.SetOrder(1); }, quarters},
                {"uniform", [](S& s, S&) { s.SetOrder(1), s.SetType(Uniform); }, quarters},
                {"of no type", [](S& s, S&) { s.SetType(static_cast<Maths::KnotType>(2)); }, {}},
                {"assigned", [](S& s, S& other) { s = other; }, {0, 0.25, 0.875, 0.75, 1}},
                {"wrapped in vain", [](S& s, S&) { s.RemoveAt(0), s.Wrap(); }, {0, 0, 0, 1, 1, 1}}};
    S other = Straight<TypeParam>(2, Uniform, 3);
    other.knots[2] = 0.875;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S spline = Straight<TypeParam>(3, Clamped, 4);
        row.change(spline, other);
        EXPECT_EQ(Values(S(spline).knots), row.knots);
        EXPECT_EQ(spline.coefficients.GetCount(), spline.knotCount - 1);
    }
    S spline = Straight<TypeParam>(3, Clamped, 4);
    spline.RemoveAt(1, true);
    EXPECT_EQ(spline.GetBoundingBox().maximum.x, 16) << "the box is kept as the point set keeps it";
    spline = other;
    EXPECT_EQ(spline.Evaluate(0), other.Evaluate(0));
    spline = static_cast<const S&>(spline);
    EXPECT_EQ(spline.GetCount() + spline.knots.GetCount() + spline.coefficients.GetCount(), 0u);
}

/// The capacity of a list.
template <class T>
struct OpenList : TList<T>
{
    static unsigned int Capacity(const TList<T>& list) { return list.*&OpenList::capacity; }
};

TYPED_TEST(SplineCurve, AllocatesFromTheGrowSize)
{
    using List = OpenList<typename TypeParam::T>;
    OpenSpline<TypeParam> spline(4, Clamped, 10, 5), wide = Straight<TypeParam>(4, Clamped, 28);
    EXPECT_EQ(spline.knotCount + spline.coefficientCount + spline.knots.GetCount(), 0u);
    EXPECT_EQ(List::Capacity(spline.knots), 11u);
    EXPECT_EQ(List::Capacity(spline.coefficients), 10u);
    spline.AddRange(wide);
    EXPECT_EQ(List::Capacity(spline.knots), 36u) << "32 knots, by steps of 5";
    OpenSpline<TypeParam> tight(4, Clamped, 0, 0);
    tight.AddRange(wide);
    EXPECT_EQ(List::Capacity(tight.knots), 32u) << "a grow size of 0: as many as needed";
    OpenSpline<TypeParam> ofSet(wide, 2, Uniform);
    EXPECT_EQ(List::Capacity(ofSet.knots) + List::Capacity(ofSet.coefficients), 32u + 31u);
    EXPECT_EQ(ofSet.knotCount, 30u);
}

TYPED_TEST(SplineCurve, IsMeasuredAndSampledByChords)
{
    using T = typename TypeParam::T;
    // A point of this line lies at 8 u, but for the end.
    OpenSpline<TypeParam> line = Straight<TypeParam>(2, Clamped, 2);
    const T end = (1 - inset<T>)*8, huge = std::ldexp(T(1), std::numeric_limits<T>::digits - 1);
    EXPECT_EQ(line.GetLength(T(0.25)), 6 + (end - 6));
    EXPECT_EQ(line.GetLength(0, T(0.75), T(0.5)), 6) << "a shorter chord at the end";
    EXPECT_EQ(line.GetLength(T(0.75), T(0.25), 2), 4) << "backwards";
    EXPECT_EQ(line.GetLength(T(0.25), T(0.75), huge), 6) << "the last chord starts where rounding puts it";

    const T byLength = 3 / line.GetLength(static_cast<T>(0.01f)) * 8;
    const struct
    {
        T step;
        bool byLength;
        std::vector<T> places;
    } rows[] = {{T(0.25), false, {0, 2, 4, 6, end}},
                {0, false, {}},
                {2, false, {0, end}},
                {3, true, {0, byLength, 2 * byLength, end}},
                {50, true, {0, end}}};
    typename TypeParam::PointSet out(0, 3);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.step);
        line.Evaluate(&out, row.step, row.byLength);
        ASSERT_EQ(out.GetCount(), row.places.size());
        for (unsigned int i = 0; i < out.GetCount(); ++i)
            EXPECT_NEAR(out[i][0], row.places[i], std::numeric_limits<T>::epsilon() * 8);
    }
}

TYPED_TEST(SplineCurve, IsClosedByWrapping)
{
    OpenSpline<TypeParam> ring = Straight<TypeParam>(4, Uniform, 6);
    ring.Wrap();
    EXPECT_EQ(ring.knotCount, 14u);
    EXPECT_LT(ring.Evaluate(0).DiffVectLen(ring.Evaluate(1)), 1e-3);
    ring.Wrap();
    EXPECT_EQ(ring.GetCount(), 14u);
}

} // namespace
} // namespace CorvexTest

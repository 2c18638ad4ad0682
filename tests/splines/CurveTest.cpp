#include <tests/splines/OpenSpline.h>
#include <tests/support/Bits.h>
#include <tests/support/plain/PlainBasis.h>

#include <algorithm>
#include <tuple>

using namespace CorvexTest;

static_assert(sizeof(Maths::TBSpline<double, Maths::TVector3>) ==
              sizeof(Maths::TPointSet<double, Maths::TVector3>) + 80);

template <class F>
struct SplineCurve : ::testing::Test
{};
TYPED_TEST_SUITE(SplineCurve, PointFamily, TypeNames);

template <class T>
constexpr T inset = static_cast<T>(1e-6f);

TYPED_TEST(SplineCurve, IsEvaluatedOnTheScaleOfItsKnots)
{
    constexpr auto small = inset<typename TypeParam::T>;
    OpenSpline<TypeParam> line = Straight<TypeParam>(2, Clamped, 2), uniform = Straight<TypeParam>(3, Uniform, 6);
    EXPECT_EQ(line.Evaluate(7)[0], (1 - small) * 8) << "beyond the end";
    EXPECT_EQ(line.Evaluate(small)[0], 0) << "a term at the tolerance is dropped";
    EXPECT_EQ(line.Evaluate(2 * small)[0], 16 * small) << "a term above it stays";
    EXPECT_EQ(uniform.Evaluate(0), Point<TypeParam>(12, 0, 0, 0)) << "from the knot of the order";
}

/// Knots as built (kind 0), sorted with near ones among them (1), descending (2), spoilt and sorted (3), spoilt (4),
/// sorted but for two neighbours (5).
template <class T>
void FillKnots(std::mt19937& random, unsigned int kind, TList<T>& knots)
{
    T *values = knots.GetStream(), *end = values + knots.GetCount();
    if (kind == 0) return;
    for (T* k = values; k < end; ++k)
        *k = static_cast<T>(Below(random, 12)) / 8 + T(5e-7) * static_cast<T>(random() % 3);
    std::sort(values, end);
    if (kind == 2) std::reverse(values, end);
    T* const swapped = values + Below(random, knots.GetCount() - 1);
    if (kind == 5) std::swap(swapped[0], swapped[1]);
    if (kind < 3 || kind == 5) return;
    using Limits = std::numeric_limits<T>;
    const T infinity = Limits::infinity(), max = Limits::max();
    const T spoilt[] = {-3, T(0.5), infinity, -infinity, max, -max, Limits::quiet_NaN()};
    for (unsigned int i = Below(random, 4); i > 0; --i) values[Below(random, knots.GetCount())] = spoilt[random() % 7];
    if (kind == 3) std::sort(values, end, [](T a, T b) { return a < b || (b != b && a == a); });
}

TYPED_TEST(SplineCurve, IsTheBezierCurveOfFourPointsAndWeighsThemToOne)
{
    using T = typename TypeParam::T;
    OpenSpline<TypeParam> bezier(4, Clamped, 4, 1), wide = Straight<TypeParam>(4, Uniform, 12);
    const auto points = {Point<TypeParam>(1, 2), Point<TypeParam>(3, 9), Point<TypeParam>(7, -4),
                         Point<TypeParam>(8, 5)};
    for (const auto& point : points) bezier.Add(point);
    for (T u = 0; u < 1; u += T(0.0625)) {
        const T v = 1 - u, weights[] = {v * v * v, 3 * v * v * u, 3 * v * u * u, u * u * u};
        T x = 0, y = 0, sum = 0;
        for (unsigned int i = 0; i < 4; ++i) x += weights[i] * bezier[i].x, y += weights[i] * bezier[i].y;
        EXPECT_NEAR(bezier.Evaluate(u).x, x, T(2e-5)) << u;
        EXPECT_NEAR(bezier.Evaluate(u).y, y, T(2e-5)) << u;
        wide.Evaluate(u);
        for (unsigned int i = 0; i < wide.GetCount(); ++i) sum += wide.coefficients[i];
        EXPECT_NEAR(sum, 1, T(1.2e-5)) << u << ": each of 12 terms may be dropped up to 1e-6";
    }
}

TYPED_TEST(SplineCurve, HasTheBitsOfTheWholeRecursion)
{
    using F = TypeParam;
    using T = typename F::T;
    std::mt19937 random(20240807);
    SCOPED_TRACE("seed 20240807");
    for (int round = 0; round < 6000; ++round) {
        SCOPED_TRACE(round);
        const unsigned int most = round % 2 == 0 ? 20 : round % 8 == 1 ? 400 : 90;
        const unsigned int n = 1 + Below(random, most), order = 1 + Below(random, 6);
        const bool uniform = Below(random, 2) == 0;
        OpenSpline<F> spline = Straight<F>(order, uniform ? Uniform : Clamped, n);
        const T stranger = Below(random, 2) == 0 ? AwkwardValue<T>(random, 3) : std::numeric_limits<T>::infinity();
        if (Below(random, 4) == 0) spline[Below(random, n)][Below(random, F::dimension)] = stranger;
        if (Below(random, 8) == 0) std::fill_n(&spline[0][0], n, std::numeric_limits<T>::max());
        std::fill_n(spline.coefficients.GetStream(), spline.coefficientCount, T(7));
        FillKnots(random, Below(random, 6), spline.knots);
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
        for (unsigned int i = 0; i < plain.size(); ++i) ASSERT_TRUE(SameBits(spline.coefficients[i], plain[i])) << i;
        for (unsigned int k = 0; k < F::dimension; ++k) ASSERT_TRUE(SameBits(point[k], sum[k])) << k;
    }
}

TYPED_TEST(SplineCurve, FollowsItsControlPointsByTheHooks)
{
    using S = OpenSpline<TypeParam>;
    using Knots = std::vector<typename TypeParam::T>;
    const Knots four = {0, 0, 0, 0.5, 1, 1, 1}, three = {0, 0, 0, 1, 1, 1}, quarters = {0, 0.25, 0.5, 0.75, 1};
    const std::tuple<const char*, void (*)(S&, S&), Knots> rows[] = {
        {"added", [](S& s, S& other) { s.RemoveFromEnd(2), s.Add(other[0]), s.Add(other[0]); }, four},
        {"added as a range", [](S& s, S& other) { s.RemoveFromEnd(1), s.AddRange(&other[0], 1); }, four},
        {"removed in order", [](S& s, S&) { s.RemoveAt(1, true); }, three},
        {"removed without order", [](S& s, S&) { s.RemoveAt(1, false); }, four},
        {"cleared", [](S& s, S&) { s.Clear(false); }, four},
        {"uniform", [](S& s, S&) { s.SetOrder(1), s.SetType(Uniform); }, quarters},
        {"of no type", [](S& s, S&) { s.SetType(static_cast<Maths::KnotType>(2)); }, {}},
        {"assigned", [](S& s, S& other) { s = other; }, {0, 0.25, 0.875, 0.75, 1}},
        {"wrapped in vain", [](S& s, S&) { s.RemoveAt(0), s.Wrap(); }, three}};
    S other = Straight<TypeParam>(2, Uniform, 3);
    other.knots[2] = 0.875;
    for (const auto& [name, change, knots] : rows) {
        SCOPED_TRACE(name);
        S spline = Straight<TypeParam>(3, Clamped, 4);
        change(spline, other);
        EXPECT_EQ(Values(S(spline).knots), knots);
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

TYPED_TEST(SplineCurve, AllocatesFromTheGrowSize)
{
    struct Open : TList<typename TypeParam::T>
    {
        static unsigned int Capacity(const TList<typename TypeParam::T>& list) { return list.*&Open::capacity; }
    };
    OpenSpline<TypeParam> spline(4, Clamped, 10, 5), tight(4, Clamped, 0, 0),
        wide = Straight<TypeParam>(4, Clamped, 28);
    EXPECT_TRUE(Open::Capacity(spline.knots) == 11 && Open::Capacity(spline.coefficients) == 10);
    spline.AddRange(wide);
    EXPECT_EQ(Open::Capacity(spline.knots), 36u) << "32 knots, by steps of 5";
    tight.AddRange(wide);
    EXPECT_EQ(Open::Capacity(tight.knots), 32u) << "a grow size of 0: as many as needed";
    OpenSpline<TypeParam> ofSet(wide, 2, Uniform);
    EXPECT_TRUE(ofSet.knotCount == 30 && Open::Capacity(ofSet.knots) == 32 && Open::Capacity(ofSet.coefficients) == 31);
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

    using Places = std::vector<T>;
    const auto places = [&line](T step, bool byLength) {
        typename TypeParam::PointSet out(0, 3);
        line.Evaluate(&out, step, byLength);
        Places values;
        for (unsigned int i = 0; i < out.GetCount(); ++i) values.push_back(out[i][0]);
        return values;
    };
    const T byLength = 3 / line.GetLength(static_cast<T>(0.01f)) * 8;
    EXPECT_EQ(places(T(0.25), false), (Places{0, 2, 4, 6, end}));
    EXPECT_EQ(places(0, false), Places());
    EXPECT_EQ(places(2, false), (Places{0, end}));
    EXPECT_EQ(places(3, true), (Places{0, byLength, 2 * byLength, end}));
}

TYPED_TEST(SplineCurve, IsClosedByWrapping)
{
    OpenSpline<TypeParam> ring = Straight<TypeParam>(4, Uniform, 6);
    ring.Wrap();
    EXPECT_LT(ring.Evaluate(0).DiffVectLen(ring.Evaluate(1)), 1e-3);
}

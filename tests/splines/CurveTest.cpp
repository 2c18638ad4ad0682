// Splines as curves and as sets whose hooks keep the knots.

#include <tests/splines/OpenSpline.h>

#include <new>
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
    OpenSpline<TypeParam> ring = Straight<TypeParam>(4, Uniform, 6);
    EXPECT_EQ(line.Evaluate(7)[0], (1 - small) * 8) << "beyond the end";
    EXPECT_EQ(line.Evaluate(small)[0], 0) << "a term at the tolerance is dropped";
    EXPECT_EQ(line.Evaluate(2 * small)[0], 16 * small) << "a term above it stays";
    EXPECT_EQ(uniform.Evaluate(0), Point<TypeParam>(12, 0, 0, 0)) << "from the knot of the order";
    ring.Wrap();
    EXPECT_LT(ring.Evaluate(0).DiffVectLen(ring.Evaluate(1)), 1e-3) << "closed";
    for (const unsigned int count : {4u, 64u}) {
        OpenSpline<TypeParam> far = Straight<TypeParam>(2, Uniform, count);
        for (unsigned int i = 0; i < 3; ++i) far.knots[i] = -std::numeric_limits<typename TypeParam::T>::max() / 1e5f;
        for (unsigned int i = 3; i < count + 2; ++i) far.knots[i] = small * static_cast<float>(2 * i);
        EXPECT_NE(far.Evaluate(0)[0], far.Evaluate(0)[0]) << "0 times a quotient that overflows, of other spans";
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

TYPED_TEST(SplineCurve, AllocatesFromTheGrowSizeAndSamplesMakeTheRoomOfSingleAdditions)
{
    using Set = typename TypeParam::PointSet;
    OpenSpline<TypeParam> spline(4, Clamped, 10, 5), tight(4, Clamped, 0, 0), line = Straight<TypeParam>(2, Clamped, 2);
    const OpenSpline<TypeParam> wide = Straight<TypeParam>(4, Clamped, 28), ofSet(wide, 2, Uniform);
    EXPECT_TRUE(CapacityOf(spline.knots) == 11 && CapacityOf(spline.coefficients) == 10);
    spline.AddRange(wide);
    EXPECT_EQ(CapacityOf(spline.knots), 36u) << "32 knots, by steps of 5";
    tight.AddRange(wide);
    EXPECT_EQ(CapacityOf(tight.knots), 32u) << "a grow size of 0: as many as needed";
    EXPECT_TRUE(ofSet.knotCount == 30 && CapacityOf(ofSet.knots) == 32 && CapacityOf(ofSet.coefficients) == 31);
    // A set with room for 5, its grow size, and its room for the 33 samples: by steps or by doubling.
    const unsigned int rows[][3] = {{0, 0, 33}, {7, 0, 33}, {1000, 0, 1005}, {0, 1, 40}, {7, 1, 48}};
    for (const auto& [growSize, isExponential, room] : rows) {
        Set sampled(5, growSize);
        sampled.SetUseExponentialGrowth(isExponential != 0);
        line.Evaluate(&sampled, typename TypeParam::T(0.03125), false);
        EXPECT_TRUE(sampled.GetCount() == 33 && CapacityOf(sampled) == room) << CapacityOf(sampled) << ' ' << growSize;
    }
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
    EXPECT_EQ(line.GetLength(T(0.5) - huge, huge, huge), end) << "a whole step that ends at the end";

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

/// A set whose hook moves a control point of the spline that is being sampled.
template <class F>
struct MeddlingSet : F::PointSet
{
    OpenSpline<F>* spline = nullptr;
    void ElementAdded(typename F::Vector&) override { (*spline)[0][0] += 1; }
};

TYPED_TEST(SplineCurve, IsSampledPointByPointWhereAHookLooksOn)
{
    OpenSpline<TypeParam> line = Straight<TypeParam>(2, Clamped, 2);
    MeddlingSet<TypeParam> set;
    set.spline = &line;
    line.Evaluate(&set, typename TypeParam::T(0.25), false);
    EXPECT_TRUE(set.GetCount() == 5 && set[0].x == 0 && set[1].x == 2.75 && set[2].x == 5 && set[3].x == 6.75);
}

TYPED_TEST(SplineCurve, IsEmptyWithoutItsKnots)
{
    OpenSpline<TypeParam> spline = Straight<TypeParam>(3, Clamped, 4);
    const auto knots = Values(spline.knots);
    EXPECT_THROW(spline.SetOrder(~0u), std::bad_alloc) << "more knots than a list can hold";
    EXPECT_TRUE(Values(spline.knots) == knots && spline.GetOrder() == 3);

#ifdef NDEBUG
    // As an edit leaves it whose hook ran out of memory.
    OpenSpline<TypeParam> unbuilt = spline, fresh(3, Uniform, 0, 5);
    unbuilt.knots.Clear(true);
    for (OpenSpline<TypeParam>* s : {&unbuilt, &fresh}) {
        typename TypeParam::PointSet out(0, 3);
        s->Evaluate(&out, typename TypeParam::T(0.25), false);
        EXPECT_TRUE(out.GetCount() == 0 && s->Evaluate(0) == Point<TypeParam>(0, 0, 0, 0) && s->GetLength(1) == 0);
    }
#endif
}

// What the list forms share with the evaluation of single points: every bit, whatever the spline holds.

#include <tests/splines/OpenSpline.h>
#include <tests/support/Bits.h>

#include <CorvexMaths/polygons/TPolygon.h>

#include <new>

using namespace CorvexTest;

template <class F>
struct SplineSampling : ::testing::Test
{};
TYPED_TEST_SUITE(SplineSampling, PointFamily, TypeNames);

/// A set whose hook moves a control point of the spline that is being sampled.
template <class F>
struct MeddlingSet : F::PointSet
{
    explicit MeddlingSet(OpenSpline<F>& sampled) : F::PointSet(0, 3), spline(sampled) {}
    void ElementAdded(typename F::Vector& point) override
    {
        F::PointSet::ElementAdded(point);
        spline[0][0] += 1;
    }
    OpenSpline<F>& spline;
};

/// Samples into a set of a class, and point by point.
template <class F, class Set>
void ExpectBitsOfSinglePoints(OpenSpline<F>& spline, Set& out, typename F::T step)
{
    using T = typename F::T;
    OpenSpline<F> other(spline);
    const bool meddles = std::is_same_v<Set, MeddlingSet<F>>;
    spline.Evaluate(&out, step, false);
    unsigned int i = 0;
    const auto expectNext = [&](T u) {
        const typename F::Vector point = other.Evaluate(u);
        if (meddles) other[0][0] += 1;
        ASSERT_LT(i, out.GetCount());
        for (unsigned int k = 0; k < F::dimension; ++k) ASSERT_TRUE(SameBits(out[i][k], point[k])) << i << " " << k;
        ++i;
    };
    for (T u = 0; i == 0 || u < 1; u += step) expectNext(u);
    expectNext(1);
    EXPECT_EQ(i, out.GetCount());
    for (unsigned int k = 0; k < spline.coefficientCount; ++k)
        ASSERT_TRUE(SameBits(spline.coefficients[k], other.coefficients[k])) << k;
}

TYPED_TEST(SplineSampling, HasTheBitsOfSinglePoints)
{
    using F = TypeParam;
    using T = typename F::T;
    std::mt19937 random(20261122);
    SCOPED_TRACE("seed 20261122");
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const unsigned int n = 1 + Below(random, round % 2 == 0 ? 12 : 300), order = 1 + Below(random, 6);
        OpenSpline<F> spline = Straight<F>(order, Below(random, 2) == 0 ? Uniform : Clamped, n);
        if (Below(random, 4) == 0) spline[Below(random, n)][1] = AwkwardValue<T>(random, 3);
        for (unsigned int spoilt = Below(random, 3); spoilt > 0; --spoilt) // a knot above the next, or none
            spline.knots[Below(random, spline.knotCount)] = AwkwardValue<T>(random, 7);
        const T step = T(0.01) + static_cast<T>(Below(random, 64)) / 32;
        typename F::PointSet plain(0, 1);
        typename F::Polygon polygon(0, 7);
        MeddlingSet<F> meddling(spline);
        ExpectBitsOfSinglePoints<F>(spline, plain, step);
        ExpectBitsOfSinglePoints<F>(spline, polygon, step);
        ExpectBitsOfSinglePoints<F>(spline, meddling, step);
    }
}

TYPED_TEST(SplineSampling, MakesTheRoomThatSingleAdditionsMake)
{
    using Set = typename TypeParam::PointSet;
    struct Open : Set
    {
        static unsigned int Capacity(const Set& set) { return set.*&Open::capacity; }
    };
    OpenSpline<TypeParam> line = Straight<TypeParam>(2, Clamped, 2);
    for (const unsigned int growSize : {0u, 1u, 7u, 1000u}) {
        for (const bool isExponential : {false, true}) {
            Set sampled(5, growSize), added(5, growSize);
            sampled.SetUseExponentialGrowth(isExponential);
            added.SetUseExponentialGrowth(isExponential);
            line.Evaluate(&sampled, typename TypeParam::T(0.03125), false);
            for (unsigned int i = 0; i < sampled.GetCount(); ++i) added.Add(sampled[i]);
            EXPECT_EQ(sampled.GetCount(), 33u);
            EXPECT_EQ(Open::Capacity(sampled), Open::Capacity(added)) << growSize << isExponential;
        }
    }
}

TYPED_TEST(SplineSampling, OfASplineWithoutItsKnotsIsEmpty)
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
        EXPECT_EQ(out.GetCount(), 0u);
        EXPECT_EQ(s->Evaluate(0), Point<TypeParam>(0, 0, 0, 0));
        EXPECT_EQ(s->GetLength(1), 0);
    }
#endif
}

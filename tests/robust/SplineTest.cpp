#include "Support.h"

using namespace CorvexTest;
using namespace Maths::Robust;

/// The classes over the vectors of a set. Taken apart, as the template of a family is not, to every compiler, that of
/// its sets.
template <class Set>
struct Related;
template <class T, template <class> class V>
struct Related<Maths::TPointSet<T, V>>
{
    using Spline = Maths::TBSpline<T, V>;
    using Fit = SplineFit<T, V>;
};

template <class F>
struct Splines : ::testing::Test
{
    using T = typename F::T;
    using V = typename F::Vector;
    using Points = typename F::PointSet;
    using Spline = typename Related<typename F::PointSet>::Spline;
    using Fit = typename Related<typename F::PointSet>::Fit;

    static constexpr T epsilon = std::numeric_limits<T>::epsilon();

    static V At(double x, double y) { return Point<V>(x, y); }

    /// Points along an ellipse, unevenly; all of it without its start again, or the first part.
    static Points Ellipse(unsigned int count, double part, double unit = 1)
    {
        Points points(count);
        for (unsigned int i = 0; i < count; ++i) {
            const double share = i / (part < 1 ? count - 1.0 : count);
            const double angle = 6.283185307179586 * part * (share + (part < 1 ? 0 : 0.05 * std::sin(6 * share)));
            points.Add(At(unit * 8 * std::cos(angle), unit * 5 * std::sin(angle)));
        }
        return points;
    }
    static Points Cloud(Random& random, unsigned int count)
    {
        Points points(count);
        for (unsigned int i = 0; i < count; ++i) points.Add(V(random.Within(TVector2<T>(1, 1))));
        return points;
    }
    static Spline Curve(const Points& control, unsigned int order) { return Spline(control, order, Maths::Clamped); }
};
TYPED_TEST_SUITE(Splines, PointFamily, TypeNames);

TYPED_TEST(Splines, FollowDataOpenAndClosedInAnyUnit)
{
    using S = typename TestFixture::T;
    // Second to higher order of a step of a fortieth.
    const double bounds[] = {0.05, 0.02, 2e-3, 5e-4}, units[] = {1.0, 0x1p-40, 0x1p40};
    const unsigned int orders[] = {2, 3, 4, 7};
    for (unsigned int row = 0; row < 24; ++row) {
        const bool closed = row % 2 == 1;
        const unsigned int order = orders[row / 2 % 4];
        const double unit = units[row / 8], part = closed ? 1 : 0.7;
        SCOPED_TRACE(testing::Message() << "order " << order << (closed ? ", closed" : "") << ", in " << unit);
        const auto points = this->Ellipse(400, part, unit);
        const typename TestFixture::Fit fit(points, 40, order, closed, true);
        ASSERT_TRUE(fit);
        EXPECT_EQ(fit.spline.GetCount(), closed ? 40 + order : 40);
        EXPECT_LT(fit.largest, unit * bounds[row / 2 % 4]);
        double largest = 0, sum = 0;
        for (unsigned int i = 0; i < 400; ++i) {
            const double distance = fit.Evaluate(fit.parameters[i]).DiffVectLen(points[i]);
            largest = std::max(largest, distance);
            sum += distance * distance;
        }
        const double rounding = 40 * unit * double(this->epsilon);
        EXPECT_NEAR(fit.largest, largest, rounding);
        EXPECT_NEAR(fit.rms, std::sqrt(sum / 400), rounding);
        EXPECT_TRUE(closed || (fit.Evaluate(0) == points[0] && fit.Evaluate(1) == points[399]));
        EXPECT_TRUE(!closed || fit.Evaluate(0).DiffVectLen(fit.Evaluate(1)) <= rounding);
        // The spline evaluates by the fitted knots; it drops terms within its tolerance.
        auto copy = fit.spline;
        const double dropped = unit * (std::is_same_v<S, double> ? 5e-5 : 1e-3);
        for (const S u : {S(0), S(0.3), S(0.55), S(1)}) {
            const TVector2<S> by = copy.Evaluate(u), exact = fit.Evaluate(u);
            EXPECT_LE(by.DiffVectLen(exact), dropped);
        }
        const typename TestFixture::Fit plain(this->Ellipse(400, part), 40, order, closed, true);
        EXPECT_EQ(double(plain.rms) * unit, double(fit.rms)) << "scale by 2^n";
    }
}

TYPED_TEST(Splines, PassThroughAsManyPointsAsTheyHaveControlPoints)
{
    Random random(11);
    for (unsigned int trial = 0; trial < 60; ++trial) {
        const unsigned int count = 3 + trial % 9, order = 2 + trial % std::min(count - 1, 4u);
        auto points = this->Cloud(random, count);
        const bool closed = trial % 2 == 0;
        // A repeated point, or one that closes the curve by itself, is no further condition.
        points.Add(typename TypeParam::Vector(points[closed ? 0 : count - 1]));
        const typename TestFixture::Fit fit(points, count, order, closed);
        ASSERT_TRUE(fit) << count << " " << order;
        EXPECT_LT(fit.largest, 400 * this->epsilon);
        EXPECT_EQ(typename TestFixture::Fit(points, count + 1, order, closed).status, Status::TooFewPoints);
    }
}

// On a grid the centring is exact, and so the fit moves with its data but for the rounding of the sum.
TYPED_TEST(Splines, MoveWithTheirData)
{
    typename TestFixture::Points near;
    for (int i = 0; i < 60; ++i) near.Add(this->At(i, i * i % 17));
    auto far = near;
    const auto shift = this->At(1 << 16, -(1 << 16));
    far += shift;
    const typename TestFixture::Fit here(near, 12), there(far, 12);
    for (unsigned int i = 0; i < 12; ++i) {
        EXPECT_NEAR(here.spline[i].x + shift.x, there.spline[i].x, shift.x * this->epsilon);
        EXPECT_NEAR(here.spline[i].y + shift.y, there.spline[i].y, shift.x * this->epsilon);
    }
}

TYPED_TEST(Splines, KeepToATolerance)
{
    using F = typename TestFixture::Fit;
    for (const bool closed : {false, true}) {
        unsigned int before = 0;
        for (const double tolerance : {0.5, 0.01, 2e-4}) {
            const F fit(this->Ellipse(500, closed ? 1 : 0.6), tolerance, 4, closed);
            EXPECT_TRUE(fit && fit.largest <= tolerance) << fit.largest;
            EXPECT_TRUE(fit.spline.GetCount() >= before && fit.spline.GetCount() < 120) << fit.spline.GetCount();
            before = fit.spline.GetCount();
        }
    }
    EXPECT_EQ(F(this->Ellipse(50, 0.5), 1e-30).status, Status::NotConverged);
}

TYPED_TEST(Splines, TellWhyThereIsNoFit)
{
    using S = typename TestFixture::T;
    using F = typename TestFixture::Fit;
    const auto points = this->Ellipse(50, 0.5);
    typename TestFixture::Points none, equal, bad = points, wide = points;
    for (int i = 0; i < 9; ++i) equal.Add(this->At(1, 2));
    bad[7].y = NaN<S>;
    wide[3].x = -std::numeric_limits<S>::max();
    wide[4].x = -wide[3].x;
    EXPECT_EQ(F(none, 6).status, Status::TooFewPoints);
    EXPECT_EQ(F(points, 51).status, Status::TooFewPoints);
    for (const unsigned int order : {0u, 1u, 6u}) EXPECT_EQ(F(points, 5, order).status, Status::Degenerate) << order;
    for (const F& fit : {F(equal, 5), F(points, 3), F(points, -3), F(points, 0.0)})
        EXPECT_EQ(fit.status, Status::Degenerate);
    // It overflows, or is so far from the others that their knots coincide.
    EXPECT_EQ(F(wide, 5).status, sizeof(S) == 8 ? Status::NotFinite : Status::Degenerate);
    const F fit(bad, 5);
    EXPECT_EQ(fit.status, Status::NotFinite);
    EXPECT_TRUE(fit.spline.GetCount() == 0 && fit.largest == 0 && fit.Evaluate(0).x == 0);
}

TYPED_TEST(Splines, HaveTheLengthOfTheirArc)
{
    using S = typename TestFixture::T;
    // A parabola as a Bezier curve: y = x^2 / 2 from 0 to 2, of length sqrt 5 + asinh 2 / 2.
    typename TestFixture::Points bend{this->At(0, 0), this->At(1, 0), this->At(2, 2)};
    auto parabola = this->Curve(bend, 3);
    const SplineLength length(parabola);
    ASSERT_TRUE(length);
    const auto arc = [](double x) { return (x * std::sqrt(1 + x * x) + std::asinh(x)) / 2; };
    EXPECT_NEAR(length.total, arc(2), 4 * this->epsilon);
    EXPECT_TRUE(length.At(-1) == bend[0] && length.At(9) == bend[2]);
    const auto sample = length.Sample(33);
    ASSERT_EQ(sample.GetCount(), 33u);
    for (unsigned int i = 0; i + 1 < 33; ++i)
        EXPECT_NEAR(arc(sample[i + 1].x) - arc(sample[i].x), arc(2) / 32, 1e-12 + 4 * this->epsilon);
    for (const S share : {S(0.1), S(0.5), S(0.8)})
        EXPECT_LE(parabola.Evaluate(length.ParameterAt(share)).DiffVectLen(length.At(share)), S(1e-5));
    bend += this->At(1 << 20, -(1 << 20));
    EXPECT_EQ(SplineLength(this->Curve(bend, 3)).total, length.total);

    // There and back on a line, with a stop at x = 3/4 where the speed is 0: twice that.
    typename TestFixture::Points line{this->At(0, 0), this->At(1.5, 0), this->At(0, 0)};
    EXPECT_NEAR(SplineLength(this->Curve(line, 3)).total, 1.5, 1e-9 + this->epsilon);
    EXPECT_EQ(SplineLength(this->Curve(line, 4)).status, Status::Degenerate);
    EXPECT_EQ(SplineLength(typename TestFixture::Spline(4, Maths::Uniform, 3, 3)).status, Status::TooFewPoints);
    line[1].y = infinity<S>;
    EXPECT_EQ(SplineLength(this->Curve(line, 3)).status, Status::NotFinite);
}

// Four units in the last place of its knots hold eight tenths of a polyline from x = 0 to 10.
TYPED_TEST(Splines, TellPlacesApartInShortSpans)
{
    struct Squeezed : TestFixture::Spline
    {
        explicit Squeezed(const typename TestFixture::Points& points) : TestFixture::Spline(points, 2, Maths::Clamped)
        {
            this->knots[3] = this->knots[2] * (1 + 4 * TestFixture::epsilon);
        }
    };
    const Squeezed line({this->At(0, 0), this->At(1, 0), this->At(9, 0), this->At(10, 0)});
    const auto sample = SplineLength(line).Sample(21);
    ASSERT_EQ(sample.GetCount(), 21u);
    for (unsigned int i = 0; i < 21; ++i) {
        EXPECT_NEAR(sample[i].x, i / 2.0, 10 * this->epsilon);
        EXPECT_NEAR(ClosestPoint(line, this->At(i / 2.0, 1)).point.x, i / 2.0, 10 * this->epsilon);
    }
}

TYPED_TEST(Splines, TellTheirClosestPointOfAll)
{
    using S = typename TestFixture::T;
    Random random(13);
    for (unsigned int trial = 0; trial < 60; ++trial) {
        const auto knots = trial % 3 == 0 ? Maths::Uniform : Maths::Clamped;
        const typename TestFixture::Spline spline(this->Cloud(random, 9), 2 + trial % 4, knots);
        const auto sample = SplineLength(spline).Sample(800);
        const auto target = trial % 5 == 0 ? sample[300] : this->Cloud(random, 1)[0];
        const ClosestPoint closest(spline, target);
        ASSERT_TRUE(closest);
        S least = trial % 5 == 0 ? 4 * this->epsilon : S(3);
        for (const auto& point : sample) least = std::min(least, point.DiffVectLen(target));
        EXPECT_LE(closest.distance, least + 4 * this->epsilon);
        EXPECT_GE(closest.distance, least - S(0.02)) << "half a step of the samples";
    }
    // From the centre the ends of the short diameter are nearest, from the end of the long diameter that is.
    const auto ellipse = typename TestFixture::Fit(this->Ellipse(400, 1), 60, 4, true).spline;
    EXPECT_NEAR(ClosestPoint(ellipse, this->At(0, 0)).distance, 5, 1e-3);
    EXPECT_NEAR(ClosestPoint(ellipse, this->At(20, 0)).point.x, 8, 1e-3);
    EXPECT_EQ(ClosestPoint(typename TestFixture::Spline(4, Maths::Clamped, 3, 3), this->At(0, 0)).status,
              Status::TooFewPoints);
    EXPECT_EQ(ClosestPoint(ellipse, this->At(NaN<double>, 0)).status, Status::NotFinite);
}

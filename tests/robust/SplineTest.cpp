#include <CorvexMaths/robust/ClosestPoint.h>
#include <CorvexMaths/robust/SplineFit.h>
#include <CorvexMaths/robust/SplineLength.h>
#include <tests/support/Types.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace CorvexTest;
using namespace Maths::Robust;
using Maths::TBSpline;
using Maths::TPointSet;
using Maths::TVector2;
using Maths::TVector3;

template <class F>
struct Splines : ::testing::Test
{
    using T = typename F::T;
    using V = typename F::Vector;
    using Points = typename F::PointSet;
    using Spline = TBSpline<T, F::template V>;
    using Fit = SplineFit<T, F::template V>;

    static constexpr T epsilon = std::numeric_limits<T>::epsilon();

    static V Point(double x, double y) { return V(TVector2<T>(static_cast<T>(x), static_cast<T>(y))); }

    /// Points along an ellipse, unevenly; all of it without its start again, or the first part.
    static Points Ellipse(unsigned int count, double part, double unit = 1, double x = 0)
    {
        Points points(count);
        for (unsigned int i = 0; i < count; ++i) {
            const double share = i / (part < 1 ? count - 1.0 : count);
            const double angle = 6.283185307179586 * part * (share + (part < 1 ? 0 : 0.05 * std::sin(6 * share)));
            points.Add(Point(unit * (x + 8 * std::cos(angle)), unit * 5 * std::sin(angle)));
        }
        return points;
    }

    /// The largest and the root mean square distance of points from a fit, as whoever uses it finds them.
    static std::pair<double, double> Distances(const Fit& fit, const Points& points)
    {
        double largest = 0, sum = 0;
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            const auto distance = static_cast<double>(fit.Evaluate(fit.parameters[i]).DiffVectLen(points[i]));
            largest = std::max(largest, distance);
            sum += distance * distance;
        }
        return {largest, std::sqrt(sum / points.GetCount())};
    }
};
TYPED_TEST_SUITE(Splines, PointFamily, TypeNames);

TYPED_TEST(Splines, FollowDataOpenAndClosedInAnyUnit)
{
    using S = typename TestFixture::T;
    for (const bool closed : {false, true})
        for (const unsigned int order : {2u, 3u, 4u, 7u})
            for (const double unit : {1.0, 0x1p-40, 0x1p40}) {
                SCOPED_TRACE(testing::Message() << "order " << order << (closed ? ", closed" : "") << ", in " << unit);
                const auto points = this->Ellipse(400, closed ? 1 : 0.7, unit);
                const typename TestFixture::Fit fit(points, 40, order, closed, true);
                ASSERT_TRUE(fit);
                EXPECT_EQ(fit.spline.GetCount(), closed ? 40 + order : 40);
                // Second to higher order of a step of a fortieth.
                const double bounds[] = {0, 0, 0.05, 0.02, 2e-3, 0, 0, 5e-4};
                EXPECT_LT(fit.largest, unit * bounds[order]);
                EXPECT_LE(fit.rms, fit.largest);
                const auto [largest, rms] = this->Distances(fit, points);
                const double rounding = 40 * unit * static_cast<double>(this->epsilon);
                EXPECT_NEAR(fit.largest, largest, rounding);
                EXPECT_NEAR(fit.rms, rms, rounding);
                if (!closed) {
                    EXPECT_TRUE(fit.Evaluate(0) == points[0]);
                    EXPECT_TRUE(fit.Evaluate(1) == points[399]);
                } else
                    EXPECT_LE(fit.Evaluate(0).DiffVectLen(fit.Evaluate(1)), static_cast<S>(rounding));
                // The spline evaluates by the fitted knots; it drops terms within its tolerance.
                auto copy = fit.spline;
                const double dropped = unit * (std::is_same_v<S, double> ? 5e-5 : 1e-3);
                for (const S u : {S(0), S(0.3), S(0.55), S(1)}) {
                    const TVector2<S> by = copy.Evaluate(u), exact = fit.Evaluate(u);
                    EXPECT_LE(by.DiffVectLen(exact), static_cast<S>(dropped));
                }
                if (unit == 1) continue;
                const typename TestFixture::Fit plain(this->Ellipse(400, closed ? 1 : 0.7), 40, order, closed, true);
                EXPECT_EQ(static_cast<double>(plain.rms) * unit, static_cast<double>(fit.rms)) << "scale by 2^n";
            }
}

TYPED_TEST(Splines, PassThroughAsManyPointsAsTheyHaveControlPoints)
{
    std::mt19937 random(11);
    SCOPED_TRACE("seed 11");
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (int trial = 0; trial < 60; ++trial) {
        const unsigned int count = 3 + static_cast<unsigned int>(trial) % 9;
        const unsigned int order = 2 + static_cast<unsigned int>(trial) % std::min(count - 1, 4u);
        typename TestFixture::Points points(count + 1);
        for (unsigned int i = 0; i < count; ++i) points.Add(this->Point(uniform(random), uniform(random)));
        const bool closed = trial % 2 == 0;
        // A repeated point, or one that closes the curve by itself, is no further condition.
        points.Add(points[closed ? 0 : count - 1]);
        const typename TestFixture::Fit fit(points, count, order, closed);
        ASSERT_TRUE(fit) << count << " " << order;
        EXPECT_LT(fit.largest, 400 * this->epsilon);
        EXPECT_EQ(typename TestFixture::Fit(points, count + 1, order, closed).status, Status::TooFewPoints);
    }
}

// On a grid the centring is exact, and so the fit moves with its data but for the rounding of the sum.
TYPED_TEST(Splines, MoveWithTheirData)
{
    using S = typename TestFixture::T;
    typename TestFixture::Points near, far;
    const S shift = S(1 << 16);
    for (int i = 0; i < 60; ++i) {
        near.Add(this->Point(i, i * i % 17));
        far.Add(this->Point(i + static_cast<double>(shift), i * i % 17 - static_cast<double>(shift)));
    }
    const typename TestFixture::Fit here(near, 12), there(far, 12);
    for (unsigned int i = 0; i < 12; ++i) {
        EXPECT_NEAR(here.spline[i].x + shift, there.spline[i].x, shift * this->epsilon);
        EXPECT_NEAR(here.spline[i].y - shift, there.spline[i].y, shift * this->epsilon);
    }
}

TYPED_TEST(Splines, KeepToATolerance)
{
    using S = typename TestFixture::T;
    for (const bool closed : {false, true}) {
        const auto points = this->Ellipse(500, closed ? 1 : 0.6);
        unsigned int before = 0;
        for (const double tolerance : {0.5, 0.01, 2e-4}) {
            const typename TestFixture::Fit fit(points, static_cast<S>(tolerance), 4, closed);
            ASSERT_TRUE(fit);
            EXPECT_LE(fit.largest, static_cast<S>(tolerance));
            EXPECT_GE(fit.spline.GetCount(), before);
            EXPECT_LT(fit.spline.GetCount(), 120u);
            before = fit.spline.GetCount();
        }
    }
    EXPECT_EQ(typename TestFixture::Fit(this->Ellipse(50, 0.5), 1e-30).status, Status::NotConverged);
}

TYPED_TEST(Splines, TellWhyThereIsNoFit)
{
    using S = typename TestFixture::T;
    using F = typename TestFixture::Fit;
    const auto points = this->Ellipse(50, 0.5);
    typename TestFixture::Points none, equal, bad = points;
    for (int i = 0; i < 9; ++i) equal.Add(this->Point(1, 2));
    bad[7].y = std::numeric_limits<S>::quiet_NaN();
    typename TestFixture::Points wide = points;
    wide[3].x = -std::numeric_limits<S>::max();
    wide[4].x = -wide[3].x;
    const bool overflows = std::is_same_v<S, double>;
    const struct
    {
        const char* name;
        F fit;
        Status status;
    } cases[] = {
        {"none", F(none, 6), Status::TooFewPoints},
        {"fewer than control points", F(points, 51), Status::TooFewPoints},
        {"coinciding", F(equal, 5), Status::Degenerate},
        {"order 0", F(points, 5, 0), Status::Degenerate},
        {"order 1", F(points, 5, 1), Status::Degenerate},
        {"fewer than the order", F(points, 3), Status::Degenerate},
        {"a count below 0", F(points, -3), Status::Degenerate},
        {"tolerance 0", F(points, 0.0), Status::Degenerate},
        {"NaN", F(bad, 5), Status::NotFinite},
        {"overflow, or knots that coincide", F(wide, 5), overflows ? Status::NotFinite : Status::Degenerate},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.fit.status, row.status);
        if (row.fit) continue;
        EXPECT_EQ(row.fit.spline.GetCount(), 0u);
        EXPECT_EQ(row.fit.largest, 0);
        EXPECT_EQ(row.fit.Evaluate(0).x, 0);
    }
}

TYPED_TEST(Splines, HaveTheLengthOfTheirArc)
{
    using S = typename TestFixture::T;
    // A parabola as a Bezier curve: y = x^2 / 2 from -1 to 1, of length sqrt 2 + asinh 1.
    typename TestFixture::Points bend;
    for (const auto& [x, y] : {std::pair<double, double>{-1, 0.5}, {0, -0.5}, {1, 0.5}}) bend.Add(this->Point(x, y));
    const typename TestFixture::Spline parabola(bend, 3, Maths::Clamped);
    const SplineLength length(parabola);
    ASSERT_TRUE(length);
    EXPECT_NEAR(length.total, 2.295587149392638, 4 * this->epsilon);
    EXPECT_NEAR(length.At(length.total / 2).x, 0, 4 * this->epsilon);
    typename TestFixture::Points far = bend;
    far += this->Point(1 << 20, -(1 << 20));
    EXPECT_EQ(SplineLength(typename TestFixture::Spline(far, 3, Maths::Clamped)).total, length.total);
    EXPECT_TRUE(length.At(-1) == bend[0]);
    EXPECT_TRUE(length.At(9) == bend[2]);
    const auto arc = [](double x) { return (x * std::sqrt(1 + x * x) + std::asinh(x)) / 2; };
    const auto sample = length.Sample(33);
    ASSERT_EQ(sample.GetCount(), 33u);
    for (unsigned int i = 0; i + 1 < 33; ++i)
        EXPECT_NEAR(arc(sample[i + 1].x) - arc(sample[i].x), 2.295587149392638 / 32, 1e-12 + 4 * this->epsilon);
    for (const S share : {S(0.1), S(0.5), S(0.8)})
        EXPECT_LE(
            typename TestFixture::Spline(parabola).Evaluate(length.ParameterAt(share)).DiffVectLen(length.At(share)),
            S(1e-5));

    // There and back on a line, with a stop at x = 3/4 where the speed is 0: twice that.
    typename TestFixture::Points line;
    for (const double x : {0.0, 1.5, 0.0}) line.Add(this->Point(x, 0));
    EXPECT_NEAR(SplineLength(typename TestFixture::Spline(line, 3, Maths::Clamped)).total, 1.5, 1e-9 + this->epsilon);
    EXPECT_EQ(SplineLength(typename TestFixture::Spline(line, 4, Maths::Clamped)).status, Status::Degenerate);
    EXPECT_EQ(SplineLength(typename TestFixture::Spline(4, Maths::Uniform, 3, 3)).status, Status::TooFewPoints);
    line[1].y = std::numeric_limits<S>::infinity();
    EXPECT_EQ(SplineLength(typename TestFixture::Spline(line, 3, Maths::Clamped)).status, Status::NotFinite);
}

TYPED_TEST(Splines, TellTheirClosestPointOfAll)
{
    using S = typename TestFixture::T;
    std::mt19937 random(13);
    SCOPED_TRACE("seed 13");
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (int trial = 0; trial < 60; ++trial) {
        typename TestFixture::Points control;
        for (int i = 0; i < 9; ++i) control.Add(this->Point(uniform(random), uniform(random)));
        const typename TestFixture::Spline spline(control, 2 + static_cast<unsigned int>(trial) % 4,
                                                  trial % 3 == 0 ? Maths::Uniform : Maths::Clamped);
        const auto sample = SplineLength(spline).Sample(800);
        const auto target = trial % 5 == 0 ? sample[300] : this->Point(uniform(random), uniform(random));
        const ClosestPoint closest(spline, target);
        ASSERT_TRUE(closest);
        EXPECT_NEAR(closest.distance, closest.point.DiffVectLen(target), 4 * this->epsilon);
        S least = std::numeric_limits<S>::max();
        for (unsigned int i = 0; i < 800; ++i) least = std::min(least, sample[i].DiffVectLen(target));
        EXPECT_LE(closest.distance, least + 4 * this->epsilon);
        EXPECT_GE(closest.distance, least - S(0.02)) << "half a step of the samples";
        EXPECT_LE(closest.distance, trial % 5 == 0 ? 8 * this->epsilon : S(3));
    }
    // From the centre every point is as near, from the end of a diameter the end is.
    const typename TestFixture::Fit circle(this->Ellipse(400, 1), 60, 4, true);
    EXPECT_NEAR(ClosestPoint(circle.spline, this->Point(0, 0)).distance, 5, 1e-3);
    EXPECT_NEAR(ClosestPoint(circle.spline, this->Point(20, 0)).point.x, 8, 1e-3);
    EXPECT_EQ(ClosestPoint(typename TestFixture::Spline(4, Maths::Clamped, 3, 3), this->Point(0, 0)).status,
              Status::TooFewPoints);
    EXPECT_EQ(ClosestPoint(circle.spline, this->Point(std::numeric_limits<double>::quiet_NaN(), 0)).status,
              Status::NotFinite);
}

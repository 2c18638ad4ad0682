#include "Support.h"

#include <benchmarks/accuracy/Reference.h>

using namespace CorvexTest;
using Accuracy::Result;
using Accuracy::RobustFit;
using Accuracy::Set;
using Points = std::vector<std::vector<double>>;

namespace
{

const std::vector<Set>& Sets()
{
    static const std::vector<Set> sets = Accuracy::Read(CORVEX_ACCURACY_REFERENCE);
    return sets;
}

} // namespace

TEST(Fit, AgreesWithTheReferenceOfSixtyDigits)
{
    unsigned int motions = 0;
    for (const Set& set : Sets()) {
        SCOPED_TRACE(set.feature + " " + set.name);
        const bool isMotion = set.feature == "Motion";
        motions += isMotion ? 1 : 0;
        const Result result = RobustFit<double>(set);
        ASSERT_EQ(result.status, Status::Done);
        for (const Accuracy::Value& value : set.values) {
            SCOPED_TRACE(value.name);
            ASSERT_TRUE(result.values.count(value.name));
            // A third of what a careful computation in double may be off by; a half for motions.
            EXPECT_LE(value.Error(result.values.at(value.name)), set.Bound(value) / (isMotion ? 2.0 : 3.0));
            if (isMotion || value.kind == "spread") continue;
            // The table tells sensitivities to three digits; the least ones drown in the rounding of directions.
            const double rms = result.values.at("rms"), expected = rms * value.sensitivity;
            EXPECT_NEAR(result.deviations.at(value.name), expected, 0.01 * expected + 1e-9 * rms);
        }
    }
    EXPECT_EQ(motions, 20u);
    EXPECT_GT(Sets().size(), 120u);
}

TEST(Fit, KeepsItsBitsUnderPowersOfTwoAndItsAnswerUnderTheOrderOfPoints)
{
    Random random(1);
    for (const Set& set : Sets()) {
        SCOPED_TRACE(set.feature + " " + set.name);
        Set scaled = set, shuffled = set;
        for (auto& point : scaled.points)
            for (double& x : point) x = std::ldexp(x, -37);
        std::shuffle(shuffled.points.begin(), shuffled.points.end(), random.generator);
        const Result result = RobustFit<double>(set), small = RobustFit<double>(scaled);
        const Result other = RobustFit<double>(shuffled);
        for (const Accuracy::Value& value : set.values) {
            SCOPED_TRACE(value.name);
            const double told = result.values.at(value.name);
            EXPECT_EQ(std::ldexp(told, value.kind == "angle" ? 0 : -37), small.values.at(value.name));
            EXPECT_NEAR(told, other.values.at(value.name), set.Bound(value) / 2.0);
        }
    }
}

TEST(Fit, OfFloatsIsThatOfDoublesRoundedOnce)
{
    for (Set set : Sets()) {
        // In float the points of a small arc far away are no arc.
        if (set.group != "full" && set.group != "form_error") continue;
        SCOPED_TRACE(set.feature + " " + set.name);
        for (auto& point : set.points)
            for (double& x : point) x = static_cast<float>(x);
        const Result wide = RobustFit<double>(set), narrow = RobustFit<float>(set);
        ASSERT_EQ(narrow.status, wide.status);
        for (const auto& [name, value] : wide.values)
            EXPECT_EQ(static_cast<float>(value), narrow.values.at(name)) << name;
    }
}

TEST(Fit, TellsWhyThereIsNoAnswer)
{
    Points line, plane, cylinder, cone{{0, 0, -0.5}};
    for (const double k : {0, 1, 2, 3, 5, 6, 7, 9}) line.push_back({k, 2 * k, 3 * k});
    const double sides[4][2] = {{3, 4}, {-4, 3}, {-5, 0}, {0, -5}};
    for (int i = 0; i < 20; ++i) {
        plane.push_back({1.0 * (i / 4), 2.0 * (i % 4) + i / 4 * (i % 4), 0.0});
        cylinder.push_back({sides[i % 4][0], sides[i % 4][1], 1.0 * (i / 4)});
        const double height = 1.0 + i / 4, slope = 0.1 * height;
        cone.push_back({slope * sides[i % 4][0], slope * sides[i % 4][1], height});
    }
    const auto expect = [](const char* feature, const Points& points, Status status) {
        Set set;
        set.feature = feature;
        set.points = points;
        const Result result = RobustFit<double>(set);
        EXPECT_EQ(result.status, status);
        for (const auto& [name, value] : result.values) EXPECT_TRUE(std::isfinite(value)) << name;
    };
    // The least number of points, and points that leave the feature open.
    const std::tuple<const char*, long, Points> features[] = {
        {"Line2", 2, {{1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {-1, -1, 0}}},
        {"Line3", 2, {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}}},
        {"Plane", 3, line},
        {"Circle2", 3, line},
        {"Circle3", 3, line},
        {"Sphere", 4, plane},
        {"Cylinder", 6, plane},
        {"Cone", 7, cylinder},
    };
    // The first point lies beyond the apex.
    expect("Cone", cone, Status::Degenerate);
    for (const auto& [feature, least, open] : features) {
        SCOPED_TRACE(feature);
        expect(feature, open, Status::Degenerate);
        expect(feature, Points(20, {0.1, 0.7, 0.3}), Status::Degenerate);
        expect(feature, {}, Status::TooFewPoints);
        expect(feature, Points(line.begin(), line.begin() + least - 1), Status::TooFewPoints);
        // Among the points that are looked at side by side, and among the last ones, which are too few for that.
        for (const double bad : {NaN<double>, infinity<double>, -infinity<double>})
            for (const std::size_t place : {0u, 7u, 18u}) {
                Points spoilt(plane.begin(), plane.begin() + 19);
                spoilt[place][1] = bad;
                expect(feature, spoilt, Status::NotFinite);
            }
    }
}

TEST(Fit, TellsTheDistanceOfEachPointOnRequest)
{
    TPointSet<double, TVector2> points{{0, 1}, {1, -1}, {2, -1}, {3, 1}};
    TList<double> distances;
    distances.Add(7.0);
    const Maths::Robust::LineFit fit(points, &distances);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit.line.origin.x, 1.5);
    EXPECT_EQ(fit.line.direction.x, 1);
    EXPECT_EQ(fit.rms, 1);
    EXPECT_EQ(fit.peakToValley, 2);
    ASSERT_EQ(distances.GetCount(), 4u);
    for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(distances[i], points[i].y);

    points[2].x = NaN<double>;
    EXPECT_EQ(Maths::Robust::LineFit(points, &distances).status, Status::NotFinite);
    EXPECT_EQ(distances.GetCount(), 0u);
}

TEST(Fit, TellsTheFormOfWhatIsAllButFlatOrStraight)
{
    // These signs have neither a mean nor a slope, so that the line or plane they rise from is the best one.
    const double height = 0x1p-44, signs[] = {1, -1, -1, 1, -1, 1, 1, -1};
    TPointSet<double, TVector2> flat;
    TPointSet<double, TVector3> line, plane;
    for (int i = 0; i < 16; ++i) {
        const double x = i < 8 ? 2 * i - 7 : 5 * i - 40, s = signs[i % 8] * height;
        flat.Add(TVector2<double>(3 * x - 4 * s, 4 * x + 3 * s));
        line.Add(TVector3<double>(2 * x + 2 * s, 2 * x - s, 2 * s - x));
        for (int k = 0; k < 8; ++k) {
            const double y = 3 * k + x, t = s * signs[k];
            plane.Add(TVector3<double>(2 * x - y + 2 * t, 2 * x + 2 * y - t, 2 * y - x + 2 * t));
        }
    }
    const auto expect = [](const auto& fit, double distance) {
        ASSERT_TRUE(fit);
        EXPECT_NEAR(fit.rms, distance, 1e-12 * distance);
        EXPECT_NEAR(fit.peakToValley, 2 * distance, 1e-12 * distance);
    };
    expect(Maths::Robust::LineFit(flat), 5 * height);
    expect(Maths::Robust::LineFit(line), 3 * height);
    expect(Maths::Robust::PlaneFit(plane), 3 * height);
}

TEST(Fit, FollowsShortArcsInSpaceToAMinimumBelowTheTrueCircle)
{
    Random random(3);
    for (int trial = 0; trial < 60; ++trial) {
        const unsigned int count = 8 + 4 * static_cast<unsigned int>(trial);
        TPointSet<double, TVector3> points;
        double squares = 0;
        for (unsigned int i = 0; i < count; ++i) {
            // Ten degrees, whose rise of 0.004 is not much above the error.
            const double angle = 0.1745 * i / (count - 1), radius = 1 + 2e-3 * random.Uniform();
            const double across = 2e-3 * random.Uniform(), x = radius * std::cos(angle), y = radius * std::sin(angle);
            points.Add(TVector3<double>(0.6 * x + 0.8 * across, y, 0.6 * across - 0.8 * x));
            squares += (radius - 1) * (radius - 1) + across * across;
        }
        const Maths::Robust::CircleFit fit(points);
        ASSERT_TRUE(fit) << count;
        EXPECT_LE(fit.rms, std::sqrt(squares / count));
    }
}

TEST(Fit, SeesAllSidesOfWhatIsScannedByTurns)
{
    // Every 500th point, of which a first look at 100000 might make do, has one of two angles.
    TPointSet<double, TVector3> cylinder, ring;
    for (int i = 0; i < 100000; ++i) {
        const double angle = 3.14159265358979 * (i % 250) / 125, x = std::cos(angle), y = std::sin(angle);
        cylinder.Add(TVector3<double>(x, y, 2e-5 * i));
        ring.Add(TVector3<double>(x, y, 1e-9 * (i % 3)));
    }
    const Maths::Robust::CylinderFit fit(cylinder);
    ASSERT_TRUE(fit);
    EXPECT_NEAR(fit.cylinder.radius, 1, 1e-12);
    const Maths::Robust::CircleFit circle(ring);
    ASSERT_TRUE(circle);
    EXPECT_NEAR(circle.circle.radius, 1, 1e-12);
}

#include <CorvexMaths/robust/Robust.h>

#include <benchmarks/accuracy/Reference.h>
#include <tests/support/Types.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace Halmont::Orrin::CorvexMaths;
using Accuracy::Result;
using Accuracy::RobustFit;
using Accuracy::Set;
using Robust::Status;

namespace
{

/// The sets for fits of the committed table; those of the alignment are another test's.
std::vector<Set> FitSets()
{
    std::vector<Set> sets;
    for (const Set& set : Accuracy::Read(CORVEX_ACCURACY_REFERENCE)) {
        if (set.feature != "Motion") sets.push_back(set);
    }
    return sets;
}

using Points = std::vector<std::vector<double>>;

Status StatusOf(const std::string& feature, const Points& points)
{
    Set set;
    set.feature = feature;
    set.points = points;
    const Result result = RobustFit<double>(set);
    for (const auto& [name, value] : result.values) EXPECT_TRUE(std::isfinite(value)) << name;
    return result.status;
}

} // namespace

TEST(Fit, AgreesWithTheReferenceOfSixtyDigits)
{
    const std::vector<Set> sets = FitSets();
    ASSERT_GT(sets.size(), 100u);
    for (const Set& set : sets) {
        SCOPED_TRACE(set.feature + " " + set.name);
        const Result result = RobustFit<double>(set);
        ASSERT_EQ(result.status, Status::Done);
        const double rms = result.values.at("rms");
        for (const Accuracy::Value& value : set.values) {
            SCOPED_TRACE(value.name);
            ASSERT_TRUE(result.values.count(value.name));
            // A third of what a careful computation in double may be off by.
            EXPECT_LE(value.Error(result.values.at(value.name)), set.Bound(value) / 3.0);
            if (value.kind == "spread") continue;
            // The table tells sensitivities to three digits; the least ones drown in the rounding of directions.
            const double expected = rms * value.sensitivity;
            EXPECT_NEAR(result.deviations.at(value.name), expected, 0.01 * expected + 1e-9 * rms);
        }
    }
}

TEST(Fit, KeepsItsBitsUnderPowersOfTwoAndItsAnswerUnderTheOrderOfPoints)
{
    std::mt19937 generator(1);
    for (const Set& set : FitSets()) {
        SCOPED_TRACE(set.feature + " " + set.name);
        const Result result = RobustFit<double>(set);
        Set scaled = set;
        for (auto& point : scaled.points) {
            for (double& x : point) x = std::ldexp(x, -37);
        }
        const Result small = RobustFit<double>(scaled);
        Set shuffled = set;
        for (std::size_t i = shuffled.points.size(); i-- > 1;)
            std::swap(shuffled.points[i], shuffled.points[generator() % (i + 1)]);
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
    for (Set set : FitSets()) {
        // In float the points of a small arc far away are no arc.
        if (set.group != "full" && set.group != "form_error") continue;
        SCOPED_TRACE(set.feature + " " + set.name);
        for (auto& point : set.points) {
            for (double& x : point) x = static_cast<float>(x);
        }
        const Result wide = RobustFit<double>(set);
        const Result narrow = RobustFit<float>(set);
        ASSERT_EQ(narrow.status, wide.status);
        for (const auto& [name, value] : wide.values)
            EXPECT_EQ(static_cast<float>(value), narrow.values.at(name)) << name;
    }
}

TEST(Fit, TellsWhyThereIsNoAnswer)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const Points line{{0, 0, 0}, {1, 2, 3}, {2, 4, 6}, {3, 6, 9}, {5, 10, 15}, {6, 12, 18}, {7, 14, 21}, {9, 18, 27}};
    Points plane;
    Points cylinder;
    for (int i = 0; i < 5; ++i) {
        for (int k = 0; k < 4; ++k) {
            plane.push_back({1.0 * i, 2.0 * k + i * k, 0.0});
            const double sides[4][2] = {{3, 4}, {-4, 3}, {-5, 0}, {0, -5}};
            cylinder.push_back({sides[k][0], sides[k][1], 1.0 * i});
        }
    }
    struct Case
    {
        const char* feature;
        std::size_t least;
        Points open; ///< Points that leave the feature open.
    };
    const Case cases[] = {
        {"Line2", 2, {{1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {-1, -1, 0}}},
        {"Line3", 2, {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}}},
        {"Plane", 3, line},
        {"Circle2", 3, line},
        {"Circle3", 3, line},
        {"Sphere", 4, plane},
        {"Cylinder", 6, plane},
        {"Cone", 7, cylinder},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.feature);
        EXPECT_EQ(StatusOf(row.feature, row.open), Status::Degenerate);
        EXPECT_EQ(StatusOf(row.feature, {}), Status::TooFewPoints);
        EXPECT_EQ(StatusOf(row.feature, Points(line.begin(), line.begin() + static_cast<long>(row.least) - 1)),
                  Status::TooFewPoints);
        EXPECT_EQ(StatusOf(row.feature, Points(20, {0.1, 0.7, 0.3})), Status::Degenerate);
        for (const double bad : {nan, infinity, -infinity}) {
            Points spoilt = plane;
            spoilt[7][1] = bad;
            EXPECT_EQ(StatusOf(row.feature, spoilt), Status::NotFinite);
        }
    }
}

TEST(Fit, HoldsWhereTheContractGivesUp)
{
    // Four points, a hundred thousand sizes away: exact, as the coordinates are.
    TPointSet<double, TVector3> four;
    for (const TVector3<double>& p :
         {TVector3<double>(1, 0, 0), TVector3<double>(-1, 0, 0), TVector3<double>(0, 1, 0), TVector3<double>(0, 0, 1)})
    {
        four.Add(p + TVector3<double>(131072, -131072, 262144));
    }
    const Robust::SphereFit sphere(four);
    ASSERT_TRUE(sphere);
    EXPECT_EQ(sphere.sphere.sphere.x, 131072);
    EXPECT_EQ(sphere.sphere.sphere.y, -131072);
    EXPECT_EQ(sphere.sphere.sphere.z, 262144);
    EXPECT_EQ(sphere.sphere.sphere.w, 1);
    EXPECT_LT(sphere.rms, 1e-30);
}

TEST(Fit, TellsTheDistanceOfEachPointOnRequest)
{
    TPointSet<double, TVector2> points;
    for (const auto& [x, y] : {std::pair(0.0, 1.0), {1.0, -1.0}, {2.0, -1.0}, {3.0, 1.0}})
        points.Add(TVector2<double>(x, y));
    TList<double> distances;
    distances.Add(7.0);
    const Robust::LineFit fit(points, &distances);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit.line.origin.x, 1.5);
    EXPECT_EQ(fit.line.direction.x, 1);
    EXPECT_EQ(fit.rms, 1);
    EXPECT_EQ(fit.peakToValley, 2);
    ASSERT_EQ(distances.GetCount(), 4u);
    for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(distances[i], points[i].y);

    points[2].x = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Robust::LineFit(points, &distances).status, Status::NotFinite);
    EXPECT_EQ(distances.GetCount(), 0u);
}

// What the report of the example says of a fit, against the plain definitions.

#include <examples/inspect_part/Inspection.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

using namespace Inspect;

/// The point of a curve of one piece, by repeated division of the lines between its control points.
Vector Divide(Points controls, double u)
{
    for (unsigned int left = controls.GetCount() - 1; left > 0; --left)
        for (unsigned int i = 0; i < left; ++i) controls[i] = controls[i] * (1 - u) + controls[i + 1] * u;
    return controls[0];
}

/// The distance of a point from such a curve: the nearest of many parameters, then thirds of the way to its neighbours.
double DistanceFromCurve(const Points& controls, const Vector& p)
{
    const auto distance = [&](double u) { return (Divide(controls, u) - p).GetLength(); };
    int nearest = 1;
    for (int i = 1; i < 400; ++i)
        if (distance(i / 400.0) < distance(nearest / 400.0)) nearest = i;
    double low = (nearest - 1) / 400.0;
    double high = (nearest + 1) / 400.0;
    for (int pass = 0; pass < 40; ++pass) {
        const double third = (high - low) / 3;
        if (distance(low + third) < distance(high - third))
            high -= third;
        else
            low += third;
    }
    return distance(low);
}

/// The distances of the points from the fitted geometry; with a sign where it has two sides.
std::vector<double> DistancesFrom(const Fitted& fitted, Kind kind, const std::vector<Deviation>& points)
{
    std::vector<double> distances;
    for (const Deviation& one : points) {
        const Vector offset = one.actual - fitted.point;
        const double along = offset % fitted.axis;
        const double across = (offset - fitted.axis * along).GetLength();
        switch (kind) {
        case Kind::Plane:
            distances.push_back(along);
            break;
        case Kind::Line:
            distances.push_back(across);
            break;
        case Kind::Circle:
        case Kind::Sphere:
            distances.push_back(across - fitted.diameter / 2);
            break;
        case Kind::Profile:
            distances.push_back(DistanceFromCurve(fitted.controls, one.actual));
        }
    }
    return distances;
}

TEST(Inspection, ResidualsAreThoseOfTheFittedParameters)
{
    const Part part = ReadPart(CORVEX_EXAMPLE_DATA "flange.txt");
    for (const char* const file : {"flange_a.txt", "flange_b.txt"})
        for (const Result& result :
             InspectPart(part, ReadMeasurement(CORVEX_EXAMPLE_DATA + std::string(file), part)).results) {
            SCOPED_TRACE(file + (" " + result.feature.name));
            const std::vector<double> distances = DistancesFrom(result.fitted, result.feature.kind, result.deviations);
            const auto ends = std::minmax_element(distances.begin(), distances.end());
            const bool twoSided = result.feature.kind != Kind::Line && result.feature.kind != Kind::Profile;
            double squares = 0;
            for (const double distance : distances) squares += distance * distance;
            // The example measures a profile from short chords of its curve.
            const double tolerance = result.feature.kind == Kind::Profile ? 1e-5 : 1e-8;
            EXPECT_NEAR(result.fitted.spread, twoSided ? *ends.second - *ends.first : 2 * *ends.second, tolerance);
            EXPECT_NEAR(result.fitted.squares, squares, tolerance);
            EXPECT_GT(squares, 0);
        }
}

} // namespace

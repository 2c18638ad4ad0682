// What the report of the example says of a fit, against the plain definitions.

#include <examples/inspect_part/Inspection.h>

#include <CorvexMaths/robust/ClosestPoint.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

using namespace Inspect;

/// The distance of a point from the fitted geometry; with a sign where it has two sides.
double DistanceFrom(const Fitted& fitted, Kind kind, const Vector& point)
{
    if (kind == Kind::Profile) {
        const Maths::TBSpline<double, Maths::TVector3> curve(fitted.controls, fitted.controls.GetCount(),
                                                             Maths::Clamped);
        return Maths::Robust::ClosestPoint(curve, point).distance;
    }
    const double along = (point - fitted.point) % fitted.axis;
    if (kind == Kind::Plane) return along;
    const double across = (point - fitted.point - fitted.axis * along).GetLength();
    return kind == Kind::Line ? across : across - fitted.diameter / 2;
}

TEST(Inspection, ResidualsAreThoseOfTheFittedParameters)
{
    const Part part = ReadPart(CORVEX_EXAMPLE_DATA "flange.txt");
    for (const std::string file : {"flange_a.txt", "flange_b.txt"})
        for (const Result& result : InspectPart(part, ReadMeasurement(CORVEX_EXAMPLE_DATA + file, part)).results)
            for (const Fitted* fitted : {&result.fitted, &result.robust}) {
                SCOPED_TRACE(file + " " + result.feature.name + (fitted == &result.robust ? " robust" : ""));
                const Kind kind = result.feature.kind;
                const bool isOneSided = kind == Kind::Line || kind == Kind::Profile;
                double least = isOneSided ? 0 : 1e9, greatest = -1e9, squares = 0;
                for (const Deviation& one : result.deviations) {
                    const double distance = DistanceFrom(*fitted, kind, one.actual);
                    least = std::min(least, distance);
                    greatest = std::max(greatest, distance);
                    squares += distance * distance;
                }
                // One-sided distances spread to both sides. The example measures a profile from short chords of its
                // curve.
                const double tolerance = kind == Kind::Profile ? 1e-5 : 1e-8;
                EXPECT_NEAR(fitted->spread, isOneSided ? 2 * greatest : greatest - least, tolerance);
                EXPECT_NEAR(fitted->squares, squares, tolerance);
                EXPECT_GT(squares, 0);
            }
}

} // namespace

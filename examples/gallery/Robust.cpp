// What holds on every input: hulls by exact decisions, splines that follow their data.

#include "Gallery.h"

#include <CorvexMaths/robust/ClosestPoint.h>
#include <CorvexMaths/robust/ConvexHull.h>
#include <CorvexMaths/robust/MinimumCircle.h>
#include <CorvexMaths/robust/SplineFit.h>
#include <CorvexMaths/robust/SplineLength.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

Card DrawGridHull()
{
    Card card{"robust_hull", "Hull of a grid"};
    // A slanted grid with steps that binary fractions do not hold: its sides are long runs almost on a line.
    Points grid;
    for (int i = 0; i < 6; ++i)
        for (int k = 0; k < 7; ++k) grid.Add(TVector2<double>(0.7 * i - 0.1 * k, 0.1 * i + 0.7 * k));
    SHOWN(Robust::ConvexHull hull(grid));
    SHOWN(Robust::MinimumCircle ring(grid));

    card.caption = "The exact hull of " + std::to_string(grid.GetCount()) +
                   " points, and the smallest circle around them. Rounded angles lose a corner to "
                   "TPolygon::MakeConvexHull.";
    TPolygon<double, TVector2> rounded(grid);
    rounded.MakeConvexHull();
    card.figure.Circle(ring.circle.centre, ring.circle.radius, {"smallest circle", Colours::accent, 1.4});
    card.figure.Outline(hull.polygon, {"exact hull", Colours::result, 2.6, Colours::inside});
    card.figure.Outline(rounded, {"hull by angles", Colours::second, 1.6, "none", "5 4"});
    card.figure.Dots(grid, {"points", Colours::given, 2.4});
    return card;
}

/// A wave that becomes shorter, measured ever more densely.
Points MeasureWave()
{
    Noise noise(11);
    Points data;
    for (int i = 0; i <= 400; ++i) {
        const double u = std::sqrt(i / 400.0);
        data.Add(TVector2<double>(110 * u + noise.Next(0.5), 22 * std::cos(16 * u * u * u) + noise.Next(0.9)));
    }
    return data;
}

Card DrawFit()
{
    Card card{"robust_spline", "Spline that follows its data"};
    Points data = MeasureWave();
    Points curve;
    SHOWN(Robust::SplineFit fit(data, 24));
    for (int i = 0; i <= 500; ++i) curve.Add(fit.Evaluate(i / 500.0));

    card.caption = "24 control points to " + std::to_string(data.GetCount()) +
                   " data points; the knots lie where the data do, where those of TBSpline::Fit gather near the start.";
    card.figure.Dots(data, {"data", Colours::faint, 1.6});
    TBSpline<double, TVector2> spline(4, Clamped, 30, 30);
    spline.Fit(data, 24, false);
    Points other;
    spline.Evaluate(&other, 0.002, false);
    card.figure.Chain(other, {"fit of TBSpline", Colours::second, 1.4, "none", "5 4"});
    card.figure.Chain(curve, {"robust fit", Colours::result, 2.6});
    return card;
}

Card DrawLength()
{
    Card card{"robust_length", "Even steps along a spline, and its closest point"};
    const TVector2<double> corners[] = {{0, 0}, {4, 60}, {90, 66}, {30, -20}, {120, -10}, {112, 56}};
    Points control(corners, 6u);
    const TVector2<double> place(76, 26);
    SHOWN(TBSpline<double, TVector2> spline(control, 4, Clamped));
    SHOWN(Robust::SplineLength length(spline));
    SHOWN(Points steps = length.Sample(31));
    SHOWN(Robust::ClosestPoint closest(spline, place));
    Points curve = length.Sample(400);

    card.caption = "30 steps of equal length, and of all points of the curve that which is closest to the one marked.";
    card.figure.Chain(control, {"control polygon", Colours::faint, 1.3, "none", "5 4"});
    card.figure.Chain(curve, {"curve", Colours::result, 2.2});
    card.figure.Dots(steps, {"equal steps", Colours::result, 3.2});
    card.figure.Segment(place, closest.point, {"", Colours::second, 1.6});
    card.figure.Dot(closest.point, {"closest point", Colours::second, 4});
    card.figure.Dot(place, {"given", Colours::given, 4});
    return card;
}

} // namespace

std::vector<Card> DrawRobust()
{
    return {DrawGridHull(), DrawFit(), DrawLength()};
}

} // namespace Gallery

// Splines and spirals.

#include "Gallery.h"

#include <CorvexMaths/primitives/TSpiral.h>
#include <CorvexMaths/splines/TBSpline.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

Points ControlPoints()
{
    const TVector2<double> corners[] = {{0, 0}, {10, 44}, {40, 56}, {52, 6}, {82, 2}, {108, 36}, {84, 58}};
    return Points(corners, 7u);
}

void DrawCurve(Card& card, const Points& control, const Points& curve)
{
    card.figure.Chain(control, {"control polygon", Colours::faint, 1.3, "none", "5 4"});
    card.figure.Chain(curve, {"curve", Colours::result, 2.6});
    card.figure.Dots(control, {"control points", Colours::given, 3.6});
}

Card DrawUniform()
{
    Card card{"spline_uniform", "Spline with uniform knots"};
    Points control = ControlPoints();
    Points curve;
    SHOWN(TBSpline<double, TVector2> spline(control, 4, Uniform));
    SHOWN(spline.Evaluate(&curve, 0.005, false));

    card.caption = "A cubic spline over evenly spaced knots starts and ends within its control polygon.";
    DrawCurve(card, control, curve);
    return card;
}

Card DrawClamped()
{
    Card card{"spline_clamped", "Spline with clamped knots"};
    Points control = ControlPoints();
    Points curve;
    SHOWN(TBSpline<double, TVector2> spline(control, 4, Clamped));
    SHOWN(spline.Evaluate(&curve, 0.005, false));

    card.caption =
        "Over clamped knots it starts at its first control point and ends next to its last, which it misses by "
        "about the common tolerance of the parameter.";
    DrawCurve(card, control, curve);
    return card;
}

Card DrawWrapped()
{
    Card card{"spline_closed", "Closed spline"};
    Points control = ControlPoints();
    Points curve;
    SHOWN(TBSpline<double, TVector2> spline(control, 4, Uniform));
    SHOWN(spline.Wrap());
    SHOWN(spline.Evaluate(&curve, 0.005, false));

    card.caption = "With its first control points repeated at the end a spline over uniform knots closes smoothly.";
    card.figure.Outline(control, {"control polygon", Colours::faint, 1.3, "none", "5 4"});
    card.figure.Outline(curve, {"curve", Colours::result, 2.6});
    card.figure.Dots(control, {"control points", Colours::given, 3.6});
    return card;
}

Card DrawFit()
{
    Card card{"spline_fit", "Spline fitted to data"};
    Noise noise(53);
    Points data;
    for (int i = 0; i <= 17; ++i) {
        const double u = i / 17.0;
        data.Add(TVector2<double>(110 * u + noise.Next(0.4), 24 * std::sin(6.5 * u) + 14 * u + noise.Next(0.6)));
    }
    Points curve;
    SHOWN(TBSpline<double, TVector2> spline(4, Clamped, 20, 20));
    SHOWN(spline.Fit(data, 17, false));
    SHOWN(spline.Evaluate(&curve, 0.005, false));

    card.caption =
        "The 17 control points whose curve is nearest to " + std::to_string(data.GetCount()) +
        " data points in the sense of least squares. It takes about as many controls as data: with fewer the "
        "knots do not reach all of them.";
    DrawCurve(card, spline, curve);
    card.figure.Dots(data, {"data", Colours::second, 2.6});
    return card;
}

Card DrawSpiral()
{
    Card card{"spiral", "Spiral"};
    SHOWN(TVector3<double> centre(0, 0, 0), axis(0, 0, 1));
    SHOWN(TSpiral3<double> spiral(centre, axis, 4, 150, 0.2, 0.25));

    card.caption = "150 points in the plane across the axis, each 0.2 radians further on and 0.25 further out than the "
                   "one before.";
    card.figure.Chain(spiral.points, {"spiral", Colours::result, 1.6});
    card.figure.Dots(spiral.points, {"points", Colours::result, 2.4});
    card.figure.Dot(centre, {"centre", Colours::given, 3.4});
    return card;
}

} // namespace

std::vector<Card> DrawCurves()
{
    return {DrawUniform(), DrawClamped(), DrawWrapped(), DrawFit(), DrawSpiral()};
}

} // namespace Gallery

// Smoothing, infill, positions along a line, the bounding circle, and registration.

#include "Gallery.h"

#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/pointsets/TParameterization.h>
#include <CorvexMaths/primitives/TCircle.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

Card DrawSmoothing()
{
    Card card{"smoothing", "Smoothing"};
    Noise noise(17);
    Points trace;
    for (int i = 0; i <= 90; ++i)
        trace.Add(TVector2<double>(1.2 * i, 16 * std::sin(0.09 * i) + 6 * std::cos(0.2 * i) + noise.Next(4.5)));
    SHOWN(TPointSet<double, TVector2> smooth(trace));
    SHOWN(smooth.Smooth(8, false));

    card.caption = "In each of 8 passes every point becomes the mean of itself and its two neighbours. The ends of an "
                   "open line stay.";
    card.figure.Chain(trace, {"as measured", Colours::faint, 1.2});
    card.figure.Chain(smooth, {"smoothed", Colours::result, 2.6});
    return card;
}

Card DrawInfill()
{
    Card card{"infill", "Infill"};
    const TVector2<double> corners[] = {{0, 6}, {30, 0}, {84, 10}, {92, 46}, {58, 38}, {40, 58}, {6, 40}};
    const Points sparse(corners, 7u);
    SHOWN(TPointSet<double, TVector2> dense(sparse));
    SHOWN(dense.Infill(6, true));

    card.caption = "Each segment longer than 6, the closing one too, is cut into the least number of equal pieces: " +
                   std::to_string(sparse.GetCount()) + " points become " + std::to_string(dense.GetCount()) + ".";
    card.figure.Outline(sparse, {"line as given", Colours::faint, 1.4});
    card.figure.Dots(dense, {"added", Colours::result, 3});
    card.figure.Dots(sparse, {"given", Colours::given, 4.6});
    return card;
}

Card DrawParameterization()
{
    Card card{"parameterization", "Positions along a line"};
    const TVector2<double> corners[] = {{0, 8},   {9, 30},  {14, 27}, {20, 40}, {48, 46},
                                        {56, 14}, {62, 10}, {70, 12}, {98, 34}, {110, 4}};
    const Points line(corners, 10u);
    Points places;
    SHOWN(TParameterization<double, TVector2> path(line));
    SHOWN(path.Parameterize());
    SHOWN(for (int i = 0; i <= 10; ++i) places.Add(path.Evaluate(i / 10.0)));

    char length[32];
    std::snprintf(length, sizeof(length), "%.1f", path.GetLength());
    card.caption = std::string("Eleven places at equal distances along a line of length ") + length +
                   ", however unevenly its own points lie.";
    card.figure.Chain(line, {"line", Colours::given, 1.8});
    card.figure.Dots(line, {"its points", Colours::given, 2.6});
    card.figure.Dots(places, {"at 0, 0.1 ... 1", Colours::accent, 5});
    return card;
}

Card DrawBoundingCircle()
{
    Card card{"bounding_circle", "Minimum bounding circle"};
    Noise noise(31);
    Points cloud;
    for (int i = 0; i < 50; ++i)
        cloud.Add(TVector2<double>(noise.Next(22) + noise.Next(22), noise.Next(20) + noise.Next(20)));
    SHOWN(TCircle2<double> circle);
    SHOWN(circle.MinimumBoundingCircle(cloud));

    Points rim;
    for (unsigned int i = 0; i < cloud.GetCount(); ++i)
        if (circle.radius - (cloud[i] - circle.centre).GetLength() < 1e-3) rim.Add(cloud[i]);
    char radius[32];
    std::snprintf(radius, sizeof(radius), "%.2f", circle.radius);
    card.caption = std::string("The smallest circle about all points, of radius ") + radius + ", is held by " +
                   std::to_string(rim.GetCount()) + " of them.";
    card.figure.Circle(circle.centre, circle.radius, {"circle", Colours::result, 2.2, Colours::inside});
    card.figure.Dots(cloud, {"points", Colours::given, 2.8});
    card.figure.Dots(rim, {"on the rim", Colours::accent, 4.4});
    card.figure.Dot(circle.centre, {"centre", Colours::result, 3.4});
    return card;
}

Card DrawRegistration()
{
    Card card{"registration", "Registration"};
    const TVector2<double> corners[] = {{0, 0},   {16, 0},  {32, 0},  {48, 0}, {64, 0}, {64, 16}, {48, 20}, {32, 24},
                                        {24, 36}, {20, 50}, {12, 50}, {0, 50}, {0, 38}, {0, 25},  {0, 12}};
    Points nominal(corners, 15u);
    Points measured;
    Noise noise(41);
    for (const TVector2<double>& corner : corners) {
        const double x = corner.x + noise.Next(1.2);
        const double y = corner.y + noise.Next(1.2);
        measured.Add(TVector2<double>(0.86 * x - 0.51 * y + 80, 0.51 * x + 0.86 * y - 4));
    }
    const Points before(measured);
    SHOWN(TMatrixMxN<double> rotation);
    SHOWN(TVector2<double> translation);
    SHOWN(bool found = nominal.Register(&measured, &rotation, &translation, true));
    if (!found) return card;

    card.caption = "The rotation and the translation that bring measured points to nominal ones with the least sum of "
                   "squared distances, point to point.";
    for (unsigned int i = 0; i < before.GetCount(); ++i)
        card.figure.Segment(before[i], measured[i], {i == 0 ? "pairs" : "", "#b9c1c9", 0.9});
    card.figure.Outline(nominal, {"nominal", Colours::given, 2.2, Colours::inside});
    card.figure.Outline(before, {"measured", Colours::second, 1.6, "none", "5 4"});
    card.figure.Dots(before, {"measured points", Colours::second, 3});
    card.figure.Outline(measured, {"registered", Colours::result, 1.6});
    card.figure.Dots(measured, {"registered points", Colours::result, 3});
    return card;
}

} // namespace

std::vector<Card> DrawPoints()
{
    return {DrawSmoothing(), DrawInfill(), DrawParameterization(), DrawBoundingCircle(), DrawRegistration()};
}

} // namespace Gallery

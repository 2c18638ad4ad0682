// Regions: offsets that fall apart and close, unions, a noisy scan, bands along paths, simplification and triangles.

#include "Gallery.h"

#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/regions/TRegion.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

using Polygon = TPolygon<double, TVector2>;
using Region = TRegion<double>;

/// Adds the outlines of a region, the first of them to the legend.
void AddRegion(const Region& region, Stroke stroke, Figure* figure)
{
    for (const Polygon& outline : region.GetOutlines()) {
        // A hole is drawn over the fill of what surrounds it.
        Stroke own = stroke;
        if (outline.GetSignedSimpleArea() < 0 && stroke.fill != "none") own.fill = "#ffffff";
        figure->Outline(outline, own);
        stroke.label.clear();
    }
}

std::string Count(const Points& points)
{
    return std::to_string(points.GetCount());
}

/// Two plates joined by a neck, cleared by passes from the wall.
Card DrawPieces()
{
    Card card{"region_pieces", "A pocket that falls in two"};
    const TVector2<double> corners[] = {{0, 0},    {44, 0},  {44, 16}, {66, 16}, {66, 2},  {112, 2},
                                        {112, 46}, {66, 46}, {66, 28}, {44, 28}, {44, 50}, {0, 50}};
    const Polygon outline(corners, 12u);
    card.figure.Outline(outline, {"wall", Colours::given, 2.2, Colours::inside});
    SHOWN(const TRegion<double> pocket(outline));
    for (double distance = 4; distance < 25; distance += 4) {
        SHOWN(const TRegion<double> path = pocket.Offset(-distance));
        if (distance > 4) card.code.pop_back();
        const bool isApart = path.GetPieces().size() > 1;
        const std::string label = distance == 4 ? "in one piece" : distance == 8 ? "in two" : "";
        AddRegion(path, {label, isApart ? Colours::result : Colours::second, 1.8}, &card.figure);
    }
    card.caption =
        "Offsets inwards by 4, 8, 12 and so on, each from the wall. The neck is 12 wide, so that from 8 on there "
        "is a piece on either side; both are kept until nothing is left of them.";
    return card;
}

Card DrawBay()
{
    Card card{"region_bay", "A closed bay with its island"};
    Polygon coast;
    for (int i = 0; i <= 120; ++i) {
        const double angle = 0.16 + (2 * std::acos(-1.0) - 0.32) * i / 120;
        coast.Add(TVector2<double>(60 + 30 * std::cos(angle), 40 + 30 * std::sin(angle)));
    }
    for (const TVector2<double>& corner :
         {TVector2<double>(110, 35.2), TVector2<double>(110, -5), TVector2<double>(10, -5), TVector2<double>(10, 85),
          TVector2<double>(110, 85), TVector2<double>(110, 44.8)})
        coast.Add(corner);
    const Polygon island{{50, 34}, {63, 30}, {69, 43}, {57, 49}};
    SHOWN(const TRegion<double> land = TRegion<double>(coast).Unite(TRegion<double>(island)));
    SHOWN(const TRegion<double> grown = land.Offset(7));
    card.caption =
        "Grown by 7, the land closes the mouth of the bay, which becomes a hole, and the island in it stays: " +
        std::to_string(grown.GetPieces().size()) + " pieces, one of them with a hole.";
    AddRegion(grown, {"grown by 7", Colours::result, 2.4, "#f4eef8"}, &card.figure);
    AddRegion(land, {"land", Colours::given, 1.8, Colours::inside}, &card.figure);
    AddRegion(grown, {"", Colours::result, 2.4}, &card.figure);
    return card;
}

/// A wheel with teeth.
Polygon Gear(double x, double y, double radius, int teeth, double turn)
{
    Polygon gear;
    for (int i = 0; i < 4 * teeth; ++i) {
        const double angle = turn + 2 * std::acos(-1.0) * (i + (i % 2 != 0 ? 0.2 : -0.2)) / (4 * teeth);
        const double reach = radius + ((i / 2) % 2 != 0 ? 3 : -3);
        gear.Add(TVector2<double>(x + reach * std::cos(angle), y + reach * std::sin(angle)));
    }
    return gear;
}

Card DrawGears()
{
    Card card{"region_gears", "Union of gears"};
    const std::vector<Polygon> gears = {Gear(0, 0, 26, 18, 0), Gear(44, 8, 20, 14, 0.1), Gear(30, 40, 17, 12, 0.2),
                                        Gear(-8, 44, 23, 16, 0)};
    SHOWN(const TRegion<double> train(gears, WindingRule::NonZero));
    SHOWN(const TRegion<double> overlaps(gears, WindingRule::EvenOdd));
    card.caption =
        "Outlines are taken together: inside is what any of them goes round, the gaps between them are its " +
        std::to_string(train.GetOutlineCount() - 1) + " holes. By the other rule what two share is outside.";
    AddRegion(train, {"union", Colours::result, 2.6, "#f4eef8"}, &card.figure);
    for (const Polygon& gear : gears) card.figure.Outline(gear, {"", Colours::faint, 1});
    AddRegion(train, {"", Colours::result, 2.6}, &card.figure);
    AddRegion(train.Subtract(overlaps), {"shared by two", Colours::second, 1.4, "#fdeee4"}, &card.figure);
    return card;
}

Card DrawScan()
{
    Card card{"region_scan", "A noisy scan and its offsets"};
    Noise noise(11);
    Polygon scan;
    for (int i = 0; i < 900; ++i) {
        const double angle = 2 * std::acos(-1.0) * i / 900;
        const double radius = 36 + 7 * std::cos(3 * angle) + 3 * std::sin(5 * angle) + noise.Next(1.2);
        scan.Add(TVector2<double>(1.5 * radius * std::cos(angle), radius * std::sin(angle)));
    }
    SHOWN(const TRegion<double> part(scan));
    SHOWN(const TRegion<double> outer = part.Offset(6));
    SHOWN(const TRegion<double> inner = part.Offset(-6));
    card.caption = "A contour of " + Count(scan) +
                   " points with their noise. A disc that rolls along it does not reach into the notches: " +
                   std::to_string(outer.GetVertexCount()) + " vertices are left outside and " +
                   std::to_string(inner.GetVertexCount()) + " inside.";
    AddRegion(outer, {"by 6", Colours::second, 2}, &card.figure);
    AddRegion(part, {"scan", Colours::given, 0.8, Colours::inside}, &card.figure);
    AddRegion(inner, {"by \u22126", Colours::result, 2}, &card.figure);
    return card;
}

Card DrawPath()
{
    Card card{"region_path", "What a wide pen draws"};
    Polygon path;
    for (int i = 0; i < 150; ++i) {
        const double t = 3 * std::acos(-1.0) * i / 149;
        path.Add(TVector2<double>(11 * t + 20 * std::sin(t * 2.2), 26 * std::cos(t * 1.1)));
    }
    SHOWN(const TRegion<double> band = TRegion<double>::OffsetLine(path, 5, Join::Round, Cap::Square));
    card.caption = "All points nearer than 5 to a path that crosses itself, with square ends: one piece with " +
                   std::to_string(band.GetOutlineCount() - 1) + " holes.";
    AddRegion(band, {"band", Colours::result, 2.2, "#f4eef8"}, &card.figure);
    card.figure.Chain(path, {"path", Colours::given, 1.4, "none", "6 4"});
    return card;
}

Card DrawTriangles()
{
    Card card{"region_triangles", "Simplified, and cut into triangles"};
    Noise noise(3);
    std::vector<Polygon> rings(2);
    for (int k = 0; k < 2; ++k)
        for (int i = 0; i < 300; ++i) {
            const double angle = 2 * std::acos(-1.0) * i / 300;
            const double radius = (k == 0 ? 40 : 15) + (5 - k) * std::cos(5 * angle + k) + noise.Next(0.6);
            rings[static_cast<std::size_t>(k)].Add(
                TVector2<double>(1.5 * radius * std::cos(angle), radius * std::sin(angle)));
        }
    SHOWN(const TRegion<double> ring(rings, WindingRule::EvenOdd));
    SHOWN(const TRegion<double> simple = ring.Simplify(1.2));
    SHOWN(const std::vector<TTriangle2<double>> triangles = simple.Triangulate());
    card.caption = "The outlines of " + std::to_string(ring.GetVertexCount()) + " vertices keep within 1.2 with " +
                   std::to_string(simple.GetVertexCount()) +
                   ", without meeting. The triangles between these are as little slender as the outlines let them be.";
    for (const TTriangle2<double>& triangle : triangles)
        card.figure.Outline(Polygon(triangle.corners, 3u),
                            {&triangle == &triangles[0] ? "triangles" : "", Colours::accent, 0.9, "#f7f2ea"});
    AddRegion(ring, {"as given", Colours::faint, 0.8}, &card.figure);
    AddRegion(simple, {"simplified", Colours::result, 2.2}, &card.figure);
    return card;
}

} // namespace

std::vector<Card> DrawRegions()
{
    return {DrawPieces(), DrawBay(), DrawGears(), DrawScan(), DrawPath(), DrawTriangles()};
}

} // namespace Gallery

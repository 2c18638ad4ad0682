// Offsets, crossings, hulls, reordering, thinning, and sums of outlines.

#include "Gallery.h"

#include <CorvexMaths/polygons/TPolygon.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

using Polygon = TPolygon<double, TVector2>;

Polygon Bracket()
{
    const TVector2<double> corners[] = {{0, 0}, {84, 0}, {84, 22}, {56, 22}, {70, 56}, {35, 42}, {0, 56}};
    return Polygon(corners, 7u);
}

/// Points spread over a disc, denser towards the middle.
Points Cloud(unsigned int count, std::uint64_t seed)
{
    Noise noise(seed);
    Points cloud;
    for (unsigned int i = 0; i < count; ++i) {
        const double radius = 40 + noise.Next(38);
        const double angle = noise.Next(3.2);
        cloud.Add(TVector2<double>(1.4 * radius * std::cos(angle), radius * std::sin(angle)));
    }
    return cloud;
}

/// A rough outline of many vertices.
Polygon Coast()
{
    Noise noise(5);
    Polygon coast;
    for (int i = 0; i < 400; ++i) {
        const double angle = 2 * std::acos(-1.0) * i / 400;
        const double radius =
            40 + 8 * std::cos(2 * angle + 1) + 5 * std::sin(3 * angle) + 3 * std::cos(7 * angle) + noise.Next(0.9);
        coast.Add(TVector2<double>(1.4 * radius * std::cos(angle), radius * std::sin(angle)));
    }
    return coast;
}

std::string Count(const Points& points)
{
    return std::to_string(points.GetCount());
}

/// The offsets of an outline that runs clockwise, or the other way round.
Card DrawOffset(bool clockwise)
{
    Card card;
    Polygon outline = Bracket();
    if (clockwise) {
        card = {"offset_clockwise", "Offset of a clockwise outline"};
        card.caption = "Run clockwise, the outline gets no additional vertex: the sides of a corner that opens are "
                       "joined by one cut.";
        SHOWN(outline.Reverse());
    } else {
        card = {"offset", "Offset of a counter-clockwise outline"};
        card.caption = "A corner that an offset opens is joined through an additional vertex on its bisector, at the "
                       "full distance. Negative distances lead inwards.";
        SHOWN(outline.MakeCCW());
    }
    SHOWN(TPolygon<double, TVector2> outer(outline), inner(outline));
    SHOWN(if (!outer.Offset(7, 0)) return {});
    SHOWN(if (!inner.Offset(-5, 0)) return {});

    card.figure.Outline(outer, {"offset by 7", Colours::second});
    card.figure.Outline(outline, {"outline", Colours::given, 2.2, Colours::inside});
    card.figure.Outline(inner, {"offset by \u22125", Colours::result});
    card.figure.Dots(outer, {"vertices of the outer", Colours::second, 3.2});
    card.figure.Dots(inner, {"of the inner", Colours::result, 3.2});
    return card;
}

/// Two plates joined by a neck that is narrower than twice the distance.
Card DrawPieces()
{
    Card card{"offset_pieces", "An offset that falls apart"};
    const TVector2<double> corners[] = {{0, 0},    {44, 0},  {44, 16}, {66, 16}, {66, 2},  {112, 2},
                                        {112, 46}, {66, 46}, {66, 28}, {44, 28}, {44, 50}, {0, 50}};
    Polygon outline(corners, 12u);
    SHOWN(TPolygon<double, TVector2> inner(outline));
    SHOWN(const bool done = inner.Offset(-8, 0));

    card.caption =
        std::string("The neck is 12 wide, so that an offset inwards by 8 leaves a piece on either side. One of them "
                    "is kept, and the result is ") +
        (done ? "true" : "false") + ": compare the area with what is expected.";
    card.figure.Outline(outline, {"outline", Colours::given, 2.2, Colours::inside});
    card.figure.Outline(inner, {"offset by \u22128", Colours::result, 2.4, "#f4eef8"});
    return card;
}

Card DrawTrimming()
{
    Card card{"trimming", "Trimming of crossings"};
    Polygon looped;
    for (int i = 0; i < 240; ++i) {
        const double angle = 2 * std::acos(-1.0) * (i + 20.5) / 240;
        looped.Add(TVector2<double>(56 * std::cos(angle) - 17 * std::cos(7 * angle),
                                    40 * std::sin(angle) - 17 * std::sin(7 * angle)));
    }
    SHOWN(TPolygon<double, TVector2> trimmed(looped));
    SHOWN(trimmed.TrimCrossings());

    card.caption = "The walk along the outline changes over to the other side wherever two sides cross, so that the "
                   "loops are gone: " +
                   Count(looped) + " vertices before, " + Count(trimmed) + " after.";
    card.figure.Outline(looped, {"outline", Colours::faint, 1.4});
    card.figure.Outline(trimmed, {"trimmed", Colours::result, 2.6});
    return card;
}

Card DrawUncrossing()
{
    Card card{"uncrossing", "Crossings undone by exchange"};
    const TVector2<double> corners[] = {{0, 0},   {60, 8},  {22, 44}, {74, 50}, {30, 2},
                                        {88, 22}, {52, 60}, {4, 28},  {40, 26}, {14, 58}};
    const Polygon crossed(corners, 10u);
    SHOWN(TPolygon<double, TVector2> simple(crossed));
    SHOWN(simple.MakeSimplePolygon());

    card.caption = "Vertices are exchanged, two at a time, until no two sides cross. The first vertex stays first.";
    card.figure.Outline(crossed, {"as given", Colours::faint, 1.4, "none", "5 4"});
    card.figure.Outline(simple, {"without crossings", Colours::result, 2.2});
    card.figure.Dots(simple, {"vertices", Colours::given, 3.4});
    return card;
}

Card DrawHull()
{
    Card card{"hull", "Convex hull"};
    const Points cloud = Cloud(70, 11);
    SHOWN(TPolygon<double, TVector2> hull(cloud));
    SHOWN(hull.MakeConvexHull());

    card.caption = "The hull runs counter-clockwise from its lowest vertex: " + Count(hull) + " of " + Count(cloud) +
                   " points are on it.";
    card.figure.Outline(hull, {"hull", Colours::result, 2.2, Colours::inside});
    card.figure.Dots(cloud, {"points", Colours::given, 2.8});
    card.figure.Dots(hull, {"corners", Colours::result, 4});
    return card;
}

Card DrawReordering()
{
    Card card{"reordering", "Reordering of scattered vertices"};
    const Points cloud = Cloud(44, 23);
    SHOWN(TPolygon<double, TVector2> tour(cloud));
    SHOWN(tour.ReorderCEC());

    card.caption = "From the hull inwards, the nearest vertex is taken into the nearest side, until all are in one "
                   "cycle without crossings.";
    card.figure.Outline(cloud, {"order as given", "#cdd3da", 1});
    card.figure.Outline(tour, {"reordered", Colours::result, 2.2});
    card.figure.Dots(cloud, {"vertices", Colours::given, 3.2});
    return card;
}

Card DrawSpacing()
{
    Card card{"simplify_spacing", "Thinning by spacing"};
    const Polygon coast = Coast();
    SHOWN(TPolygon<double, TVector2> thinned(coast));
    SHOWN(thinned.Simplify(12));

    card.caption = "Kept vertices are at least 12 apart, whatever the shape between them: " + Count(thinned) + " of " +
                   Count(coast) + " vertices stay.";
    card.figure.Outline(coast, {"outline", "#c3cad1", 3});
    card.figure.Outline(thinned, {"thinned", Colours::result, 1.8});
    card.figure.Dots(thinned, {"vertices kept", Colours::result, 3.4});
    return card;
}

Card DrawDeviation()
{
    Card card{"simplify_deviation", "Thinning by deviation"};
    const Polygon coast = Coast();
    SHOWN(TPolygon<double, TVector2> thinned(coast));
    SHOWN(thinned.SimplifyDPM(2.5));

    card.caption = "What is dropped lies within 2.5 of the line without it, so that vertices stay where the outline "
                   "bends: " +
                   Count(thinned) + " of " + Count(coast) + ".";
    card.figure.Outline(coast, {"outline", "#c3cad1", 3});
    card.figure.Outline(thinned, {"thinned", Colours::result, 1.8});
    card.figure.Dots(thinned, {"vertices kept", Colours::result, 3.4});
    return card;
}

Card DrawOpenBoundary()
{
    Card card{"open_boundary", "Open convex boundary"};
    Noise noise(3);
    Polygon profile;
    for (int i = 0; i <= 60; ++i)
        profile.Add(TVector2<double>(2.0 * i, 22 * std::sin(0.13 * i) + 9 * std::sin(0.41 * i) + noise.Next(5)));
    SHOWN(TVector3<double> normal(0, 0, 1));
    SHOWN(TPolygon<double, TVector2> rod(profile.GetOpenConvexBoundary(normal)));

    card.caption =
        "The chain from the first vertex to the last that leaves all others to its right, as a straight-edge "
        "laid on a profile: " +
        Count(rod) + " of " + Count(profile) + " vertices.";
    card.figure.Chain(profile, {"profile", Colours::given, 1.4});
    card.figure.Chain(rod, {"boundary", Colours::result, 2.4});
    card.figure.Dots(rod, {"its points", Colours::result, 4});
    return card;
}

Card DrawSum()
{
    Card card{"minkowski_sum", "Minkowski sum"};
    const TVector2<double> corners[] = {{-2, 3}, {52, -4}, {60, 24}, {24, 40}};
    const TVector2<double> tips[] = {{0, -9}, {9, 5}, {-8, 6}};
    const Polygon part(corners, 4u);
    const Polygon tool(tips, 3u);
    SHOWN(TPolygon<double, TVector2> sum(part));
    SHOWN(sum.MinkowskiSum(tool));
    const Points all(sum);
    SHOWN(sum.MakeConvexHull());

    card.caption =
        "Every point of the part plus every point of the tool. As both are convex, the hull of the sums is what "
        "the tool sweeps over when its origin moves over the part.";
    card.figure.Outline(sum, {"", Colours::result, 2.4, "#f4eef8"});
    card.figure.Outline(part, {"part", Colours::given, 2, Colours::inside});
    for (unsigned int i = 0; i < part.GetCount(); ++i) {
        Polygon placed(tool);
        placed += part[i];
        card.figure.Outline(placed, {i == 0 ? "tool" : "", Colours::second, 1.4});
    }
    card.figure.Outline(sum, {"hull of sums", Colours::result, 2.4});
    card.figure.Dots(all, {"sums", Colours::result, 3.4});
    return card;
}

Card DrawDifference()
{
    Card card{"minkowski_difference", "Minkowski difference"};
    const TVector2<double> left[] = {{22, 30}, {58, 24}, {64, 56}, {36, 62}};
    const TVector2<double> right[] = {{50, 42}, {84, 48}, {66, 78}};
    const TVector2<double> origin;
    const Polygon a(left, 4u);
    const Polygon b(right, 3u);
    SHOWN(TPolygon<double, TVector2> difference(a));
    SHOWN(difference.MinkowskiDifference(b));
    SHOWN(difference.MakeConvexHull());
    SHOWN(bool overlap = difference.IsWithin(origin));

    card.caption = std::string("Every point of one outline minus every point of the other. Of convex outlines the hull "
                               "holds the origin if and only if the two overlap; here they ") +
                   (overlap ? "do." : "do not.");
    card.figure.Outline(difference, {"hull of differences", Colours::result, 2.4, "#f4eef8"});
    card.figure.Outline(a, {"one", Colours::given, 2, Colours::inside});
    card.figure.Outline(b, {"other", Colours::second, 2});
    card.figure.Dot(origin, {"", Colours::given, 4});
    card.figure.Text(origin, "0", 8, 5);
    return card;
}

} // namespace

std::vector<Card> DrawPolygons()
{
    return {DrawOffset(false), DrawOffset(true),   DrawPieces(),     DrawTrimming(),
            DrawUncrossing(),  DrawHull(),         DrawReordering(), DrawSpacing(),
            DrawDeviation(),   DrawOpenBoundary(), DrawSum(),        DrawDifference()};
}

} // namespace Gallery

// What Clipper does for comparison, on whole numbers: coordinates in millionths.

#include "PeersGeometry.h"

#include <polyclipping/clipper.hpp>

#include <cmath>
#include <memory>

namespace Peers
{

namespace
{

constexpr double scale = 1e6;

ClipperLib::Path MakePath(const Coordinates& outline)
{
    ClipperLib::Path path;
    for (std::size_t i = 0; i < outline.size(); i += 2)
        path.emplace_back(std::llround(outline[i] * scale), std::llround(outline[i + 1] * scale));
    return path;
}

/// Outer outlines have positive areas, holes negative ones.
Values Summarise(const ClipperLib::Paths& paths)
{
    double area = 0;
    double count = 0;
    for (const ClipperLib::Path& path : paths) {
        area += ClipperLib::Area(path);
        if (ClipperLib::Orientation(path)) ++count;
    }
    return {area / (scale * scale), count};
}

Work Combine(ClipperLib::ClipType operation, const Outlines& subjects, const Outlines& clips)
{
    const auto ofSubject = std::make_shared<ClipperLib::Paths>();
    const auto ofClip = std::make_shared<ClipperLib::Paths>();
    const auto result = std::make_shared<ClipperLib::Paths>();
    for (const Coordinates& outline : subjects) ofSubject->push_back(MakePath(outline));
    for (const Coordinates& outline : clips) ofClip->push_back(MakePath(outline));
    return {[=] {
                ClipperLib::Clipper clipper;
                clipper.AddPaths(*ofSubject, ClipperLib::ptSubject, true);
                clipper.AddPaths(*ofClip, ClipperLib::ptClip, true);
                clipper.Execute(operation, *result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
            },
            [=] { return Summarise(*result); }};
}

} // namespace

Work ClipperOffset(const Coordinates& outline, double distance)
{
    const auto path = std::make_shared<ClipperLib::Path>(MakePath(outline));
    const auto result = std::make_shared<ClipperLib::Paths>();
    return {[=] {
                // Rounded by eight segments for a quarter of a circle, as GEOS does it.
                constexpr double sagitta = 0.0048;
                ClipperLib::ClipperOffset offset(2, sagitta * std::fabs(distance) * scale);
                offset.AddPath(*path, ClipperLib::jtRound, ClipperLib::etClosedPolygon);
                offset.Execute(*result, distance * scale);
            },
            [=] { return Summarise(*result); }};
}

Work ClipperUnion(const Outlines& outlines)
{
    return Combine(ClipperLib::ctUnion, outlines, {});
}

Work ClipperCombination(const Coordinates& first, const Coordinates& second, bool isIntersection)
{
    return Combine(isIntersection ? ClipperLib::ctIntersection : ClipperLib::ctUnion, {first}, {second});
}

} // namespace Peers

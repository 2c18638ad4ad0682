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

} // namespace

Work ClipperOffset(const Coordinates& outline, double distance)
{
    const auto path = std::make_shared<ClipperLib::Path>();
    const auto result = std::make_shared<ClipperLib::Paths>();
    for (std::size_t i = 0; i < outline.size(); i += 2)
        path->emplace_back(std::llround(outline[i] * scale), std::llround(outline[i + 1] * scale));
    return {[=] {
                // Rounded by eight segments for a quarter of a circle, as GEOS does it.
                constexpr double sagitta = 0.0048;
                ClipperLib::ClipperOffset offset(2, sagitta * std::fabs(distance) * scale);
                offset.AddPath(*path, ClipperLib::jtRound, ClipperLib::etClosedPolygon);
                offset.Execute(*result, distance * scale);
            },
            [=] {
                double area = 0;
                for (const ClipperLib::Path& piece : *result) area += ClipperLib::Area(piece);
                return Values{area / (scale * scale)};
            }};
}

} // namespace Peers

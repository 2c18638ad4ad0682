#pragma once

/// The curves from which an arrangement makes the offset of a region.

#include <CorvexMaths/regions/internal/Grid.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// What a curve does at a corner that turns away from it, or at the end of a line.
enum class CornerShape
{
    Round, ///< Tangents of the circle about the corner.
    Mitre, ///< The two copies extended to where they meet, or across the bisector at the distance, past the limit.
    Bevel, ///< Straight from the end of one copy to the start of the next.
    Square ///< The copies extended by the distance and joined at right angles; for ends of lines.
};

/// How curves are drawn; lengths are in steps of the grid of the rings.
struct OffsetRule
{
    /// What rounding may do to a computed place, in steps of the curve: well above its errors, below what anybody
    /// sees.
    static constexpr double slack = 1.0 / 256;

    double distance;  ///< Above 0.
    double deviation; ///< How far beyond the distance the corners of a round join may lie.
    double limit;     ///< The greatest ratio of the tip of a mitre to the distance.
    CornerShape join;
    CornerShape end;
    int coarser; ///< How many times the steps of the curve are doubled against those of the rings, up to 40.

    /// A length in steps of the curve, in steps of the rings.
    double Fine(double length) const { return std::ldexp(length, coarser); }
};

/// Closed curves, on their own grid, that run at the distance to the right of the rings, which have no repeated
/// neighbours and do not cross themselves or one another. The points about which the curves wind more often than the
/// rings do are those nearer to the right side of a ring than the distance, with what the joins add. Linear in the
/// vertices and what the round joins need.
std::vector<Ring> OffsetCurves(const std::vector<Ring>& rings, const OffsetRule& rule);

/// One closed curve round an open line, which may cross itself but has no repeated neighbours: it winds at least once
/// about every point nearer to the line than the distance, with what joins and ends add, and about no other. A line
/// of one point has a circle or a square about it, or none.
Ring OffsetCurve(const Ring& line, const OffsetRule& rule);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/regions/TRegion.h>

#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/OffsetCurve.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

using Kernels::Arrange;
using Kernels::CornerShape;
using Kernels::Grid;
using Kernels::GridPoint;
using Kernels::OffsetRule;
using Kernels::OutlineSet;
using Kernels::Ring;

/// How far a round join may deviate unless told, in distances: some 70 vertices to a circle.
constexpr double defaultDeviation = 1.0 / 1024;

/// How far a round join deviates at least, in distances: a tenth of a million vertices to a circle.
constexpr double leastDeviation = 1.0 / (std::int64_t(1) << 31);

/// How far the tip of a mitre may lie from its corner unless told, in distances.
constexpr double defaultMitreLimit = 4;

CornerShape ShapeOf(Join join)
{
    return join == Join::Round ? CornerShape::Round : join == Join::Mitre ? CornerShape::Mitre : CornerShape::Bevel;
}

CornerShape ShapeOf(Cap cap)
{
    return cap == Cap::Round ? CornerShape::Round : cap == Cap::Square ? CornerShape::Square : CornerShape::Bevel;
}

/// What an offset was asked for, in the unit of the coordinates.
struct Request
{
    double distance; ///< Without its sign.
    double deviation;
    double mitreLimit;
    CornerShape join, end;

    Request(double signedDistance, Join joinKind, Cap cap, double limit)
        : distance(std::fabs(signedDistance)),
          deviation(defaultDeviation * distance),
          mitreLimit(defaultMitreLimit),
          join(ShapeOf(joinKind)),
          end(ShapeOf(cap))
    {
        if (!(limit > 0)) return;
        if (joinKind == Join::Mitre)
            mitreLimit = limit;
        else
            deviation = limit;
    }

    /// How far anything may lie from the outline: a corner cut off across its bisector, or a square end, reaches
    /// sqrt(2) distances.
    double GetReach() const
    {
        const double mitre = join == CornerShape::Mitre ? mitreLimit : 1;
        return distance * std::max(mitre, 1.5);
    }

    /// The same for rings on a grid and a result on another. Rounding takes up a step and a half of what joins may
    /// deviate, and that of crossings another.
    OffsetRule GetRule(const Grid& grid, const Grid& result) const
    {
        const int coarser = result.GetExponent() - grid.GetExponent();
        const double r = std::ldexp(distance, -grid.GetExponent());
        const double least = std::max(std::ldexp(4.0, coarser), leastDeviation * r);
        // A greater deviation than this makes no difference: tangents turn by a right angle at most.
        const double given = std::min(std::ldexp(deviation, -grid.GetExponent()) - std::ldexp(3.0, coarser), r);
        return {r, std::max(given, least), mitreLimit, join, end, coarser};
    }
};

/// The least box round points of the grid.
struct GridBox
{
    GridPoint low, high;
    bool isEmpty = true;

    void Add(const GridPoint& point)
    {
        if (isEmpty) low = high = point;
        isEmpty = false;
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }

    double GetExtent() const { return static_cast<double>(std::max(high.x - low.x, high.y - low.y)); }
    double GetSize() const
    {
        return static_cast<double>(std::max({std::abs(low.x), std::abs(low.y), std::abs(high.x), std::abs(high.y)}));
    }
};

void Turn(std::vector<Ring>* rings)
{
    for (Ring& ring : *rings) std::reverse(ring.begin(), ring.end());
}

} // namespace

template <class T>
TRegion<T> TRegion<T>::Offset(T distance, Join join, T limit) const
{
    if (!std::isfinite(distance) || !std::isfinite(limit)) return TRegion(RegionStatus::NotFinite);
    if (!outlines) return *this;
    const Request request(static_cast<double>(distance), join, Cap::Round, static_cast<double>(limit));
    const bool isInward = distance < T(0);

    GridBox box;
    for (const Ring& ring : outlines->rings)
        for (const GridPoint& point : ring) box.Add(point);
    const Grid grid(stepExponent);
    const double extent = box.GetExtent() * grid.GetStep();
    // Further inside than half the extent there is nothing, and the curves on the way there may have twice the extent.
    if (isInward && request.distance > 0.5 * extent) return TRegion();
    const double room = (extent + 2 * request.GetReach()) * (isInward ? 0.51 : 1);
    const double size = box.GetSize() * grid.GetStep() + request.GetReach();
    if (!std::isfinite(room) || !std::isfinite(size)) return TRegion(RegionStatus::NotFinite);
    const Grid result(std::max(Grid::For(size, room).GetExponent(), stepExponent));
    // Nothing but a point could be told of the region on such a grid.
    constexpr int coarsest = 40;
    if (result.GetExponent() - stepExponent > coarsest) return TRegion(RegionStatus::NotFinite);
    const OffsetRule rule = request.GetRule(grid, result);
    if (rule.distance < 0.5) return *this;

    std::vector<Ring> turned;
    if (isInward) {
        turned = outlines->rings;
        Turn(&turned);
    }
    std::vector<Ring> curves = OffsetCurves(isInward ? turned : outlines->rings, rule);
    if (isInward) Turn(&curves);
    return TRegion(Arrange(curves, WindingRule::Positive), result, RegionStatus::Done);
}

template <class T>
TRegion<T> TRegion<T>::OffsetLine(const TPointSet<T, TVector2>& points, T distance, Join join, Cap cap, T limit)
{
    if (!std::isfinite(distance) || !std::isfinite(limit)) return TRegion(RegionStatus::NotFinite);
    if (points.GetCount() == 0) return TRegion(RegionStatus::TooFewPoints);
    if (!(distance > T(0))) return TRegion(RegionStatus::NoArea);
    const Request request(static_cast<double>(distance), join, cap, static_cast<double>(limit));
    double lowX = HUGE_VAL, lowY = HUGE_VAL, highX = -HUGE_VAL, highY = -HUGE_VAL;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const double x = static_cast<double>(points.GetStream()[i].x);
        const double y = static_cast<double>(points.GetStream()[i].y);
        if (!std::isfinite(x) || !std::isfinite(y)) return TRegion(RegionStatus::NotFinite);
        lowX = std::min(lowX, x);
        lowY = std::min(lowY, y);
        highX = std::max(highX, x);
        highY = std::max(highY, y);
    }
    const double reach = request.GetReach();
    const double size = std::max({std::fabs(lowX), std::fabs(lowY), std::fabs(highX), std::fabs(highY)});
    const double extent = std::max(highX - lowX, highY - lowY);
    if (!std::isfinite(size + reach) || !std::isfinite(extent + 2 * reach)) return TRegion(RegionStatus::NotFinite);
    const Grid grid = Grid::For(size + reach, extent + 2 * reach);
    const OffsetRule rule = request.GetRule(grid, grid);
    Ring line;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const GridPoint point{grid.ToGrid(static_cast<double>(points.GetStream()[i].x)),
                              grid.ToGrid(static_cast<double>(points.GetStream()[i].y))};
        if (line.empty() || line.back() != point) line.push_back(point);
    }
    if (rule.distance < 0.5) return TRegion(RegionStatus::Vanished);
    OutlineSet set = Arrange({OffsetCurve(line, rule)}, WindingRule::Positive);
    const RegionStatus became = set.rings.empty() ? RegionStatus::NoArea : RegionStatus::Done;
    return TRegion(std::move(set), grid, became);
}

template TRegion<float> TRegion<float>::Offset(float, Join, float) const;
template TRegion<double> TRegion<double>::Offset(double, Join, double) const;
template TRegion<float> TRegion<float>::OffsetLine(const TPointSet<float, TVector2>&, float, Join, Cap, float);
template TRegion<double> TRegion<double>::OffsetLine(const TPointSet<double, TVector2>&, double, Join, Cap, double);

} // namespace Halmont::Orrin::CorvexMaths

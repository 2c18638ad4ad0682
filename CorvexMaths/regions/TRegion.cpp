#include <CorvexMaths/regions/TRegion.h>

#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/GridRings.h>
#include <CorvexMaths/regions/internal/Predicates.h>
#include <CorvexMaths/robust/Predicates.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

using Kernels::Grid;
using Kernels::GridPoint;
using Kernels::GridRings;
using Kernels::OutlineSet;
using Kernels::Ring;

/// A ring as a polygon.
template <class T>
TPolygon<T, TVector2> MakePolygon(const Ring& ring, const Grid& grid)
{
    std::vector<TVector2<T>> points;
    points.reserve(ring.size());
    for (const GridPoint& p : ring)
        points.emplace_back(static_cast<T>(grid.FromGrid(p.x)), static_cast<T>(grid.FromGrid(p.y)));
    return TPolygon<T, TVector2>(points.data(), static_cast<unsigned int>(points.size()));
}

/// @{
/// Rules for the sums of weights.
bool IsSame(std::int64_t sum, std::int64_t other)
{
    return sum == other;
}

bool IsOther(std::int64_t sum, std::int64_t than)
{
    return sum != than;
}

bool IsOneOrTwo(std::int64_t sum, std::int64_t)
{
    return sum == 1 || sum == 2;
}
/// @}

} // namespace

template <class T>
TRegion<T>::TRegion() = default;

template <class T>
TRegion<T>::TRegion(RegionStatus became) : status(became)
{}

template <class T>
TRegion<T>::TRegion(OutlineSet&& set, const Grid& grid, RegionStatus became)
    : stepExponent(grid.GetExponent()), status(became)
{
    if (!set.rings.empty()) outlines.reset(new OutlineSet(std::move(set)));
}

template <class T>
TRegion<T>::TRegion(const TPolygon<T, TVector2>& outline, WindingRule rule)
{
    GridRings rings;
    rings.Measure(outline);
    rings.Add(outline);
    *this = TRegion(rings, rule);
}

template <class T>
TRegion<T>::TRegion(const std::vector<TPolygon<T, TVector2>>& polygons, WindingRule rule)
{
    GridRings rings;
    for (const TPolygon<T, TVector2>& outline : polygons) rings.Measure(outline);
    for (const TPolygon<T, TVector2>& outline : polygons) rings.Add(outline);
    *this = TRegion(rings, rule);
}

template <class T>
TRegion<T>::TRegion(const GridRings& rings, WindingRule rule) : status(rings.GetStatus())
{
    if (status == RegionStatus::NotFinite || status == RegionStatus::TooFewPoints) return;
    OutlineSet set = Kernels::Arrange(rings.rings, rule);
    const RegionStatus became = set.rings.empty() && status == RegionStatus::Done ? RegionStatus::NoArea : status;
    *this = TRegion(std::move(set), rings.GetGrid(), became);
}

template <class T>
const char* TRegion<T>::Describe(RegionStatus which)
{
    switch (which) {
    case RegionStatus::Done:
        return "done";
    case RegionStatus::TooFewPoints:
        return "no outline has three vertices";
    case RegionStatus::NoArea:
        return "the outlines bound no area";
    case RegionStatus::NotFinite:
        return "a number is not finite, or too large";
    case RegionStatus::Vanished:
        return "an outline is smaller than the step of the grid";
    }
    return "unknown status";
}

template <class T>
bool TRegion<T>::IsEmpty() const
{
    return !outlines;
}

template <class T>
double TRegion<T>::GetStep() const
{
    return Grid(stepExponent).GetStep();
}

template <class T>
unsigned int TRegion<T>::GetOutlineCount() const
{
    return outlines ? static_cast<unsigned int>(outlines->rings.size()) : 0;
}

template <class T>
unsigned int TRegion<T>::GetVertexCount() const
{
    std::size_t count = 0;
    if (outlines)
        for (const Ring& ring : outlines->rings) count += ring.size();
    return static_cast<unsigned int>(count);
}

template <class T>
std::vector<TPolygon<T, TVector2>> TRegion<T>::GetOutlines() const
{
    std::vector<TPolygon<T, TVector2>> result;
    if (!outlines) return result;
    result.reserve(outlines->rings.size());
    for (const Ring& ring : outlines->rings) result.push_back(MakePolygon<T>(ring, Grid(stepExponent)));
    return result;
}

template <class T>
std::vector<typename TRegion<T>::Piece> TRegion<T>::GetPieces() const
{
    std::vector<Piece> result;
    if (!outlines) return result;
    const Grid grid(stepExponent);
    const std::size_t count = outlines->rings.size();
    std::vector<std::size_t> places(count);
    for (std::size_t r = 0; r < count; ++r) {
        if (outlines->IsHole(r)) continue;
        places[r] = result.size();
        result.push_back(Piece{MakePolygon<T>(outlines->rings[r], grid), {}});
    }
    for (std::size_t r = 0; r < count; ++r)
        if (outlines->IsHole(r))
            result[places[outlines->owners[r]]].holes.push_back(MakePolygon<T>(outlines->rings[r], grid));
    return result;
}

template <class T>
T TRegion<T>::GetArea() const
{
    if (!outlines) return T(0);
    Kernels::Wide sum(0);
    for (const Ring& ring : outlines->rings) sum += Kernels::DoubleArea(ring);
    return static_cast<T>(std::ldexp(Kernels::ToDouble(sum), 2 * stepExponent - 1));
}

template <class T>
TBox<T> TRegion<T>::GetBoundingBox() const
{
    TBox<T> box;
    if (!outlines) return box;
    GridPoint low = outlines->rings[0][0];
    GridPoint high = low;
    for (const Ring& ring : outlines->rings) {
        for (const GridPoint& p : ring) {
            low = GridPoint{std::min(low.x, p.x), std::min(low.y, p.y)};
            high = GridPoint{std::max(high.x, p.x), std::max(high.y, p.y)};
        }
    }
    // Written rather than extended, as coordinates may lie beyond the limit of a box.
    const Grid grid(stepExponent);
    box.minimum = TVector3<T>(static_cast<T>(grid.FromGrid(low.x)), static_cast<T>(grid.FromGrid(low.y)), T(0));
    box.maximum = TVector3<T>(static_cast<T>(grid.FromGrid(high.x)), static_cast<T>(grid.FromGrid(high.y)), T(0));
    return box;
}

template <class T>
RegionSide TRegion<T>::IsWithin(const TVector2<T>& point) const
{
    if (!outlines || !(std::isfinite(point.x) && std::isfinite(point.y))) return RegionSide::Outside;
    const Grid grid(stepExponent);
    const TVector2<double> p(static_cast<double>(point.x), static_cast<double>(point.y));
    bool isInside = false;
    for (const Ring& ring : outlines->rings) {
        TVector2<double> a(grid.FromGrid(ring.back().x), grid.FromGrid(ring.back().y));
        for (const GridPoint& next : ring) {
            const TVector2<double> b(grid.FromGrid(next.x), grid.FromGrid(next.y));
            if (b.x == p.x && b.y == p.y) return RegionSide::OnRim;
            // A level edge does not cross the height of the point, but may pass through it.
            const bool isLevel = a.y == p.y && b.y == p.y;
            if (isLevel && (a.x < p.x) != (b.x < p.x)) return RegionSide::OnRim;
            // Of its ends an edge has the lower one.
            if ((a.y <= p.y) != (b.y <= p.y)) {
                const int side = Robust::Predicates<double>::Orientation(a, b, p);
                if (side == 0) return RegionSide::OnRim;
                if ((side > 0) == (b.y > a.y)) isInside = !isInside;
            }
            a = b;
        }
    }
    return isInside ? RegionSide::Inside : RegionSide::Outside;
}

template <class T>
bool TRegion<T>::operator==(const TRegion& other) const
{
    if (outlines == other.outlines && stepExponent == other.stepExponent) return true;
    if (!outlines || !other.outlines) return outlines == other.outlines;
    const Grid grid(stepExponent);
    const Grid otherGrid(other.stepExponent);
    const std::vector<Ring>& a = outlines->rings;
    const std::vector<Ring>& b = other.outlines->rings;
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const Ring& r, const Ring& s) {
        return std::equal(r.begin(), r.end(), s.begin(), s.end(), [&](const GridPoint& p, const GridPoint& q) {
            return grid.FromGrid(p.x) == otherGrid.FromGrid(q.x) && grid.FromGrid(p.y) == otherGrid.FromGrid(q.y);
        });
    });
}

template <class T>
TRegion<T> TRegion<T>::Combine(const std::vector<const TRegion*>& operands, const std::vector<long long>& weights,
                               const Kernels::InsideRule& isInside)
{
    GridRings rings;
    for (const TRegion* operand : operands)
        if (operand->outlines) rings.Measure(*operand->outlines, Grid(operand->stepExponent));
    std::vector<std::int64_t> ringWeights;
    for (std::size_t k = 0; k < operands.size(); ++k) {
        if (operands[k]->outlines) rings.Add(*operands[k]->outlines, Grid(operands[k]->stepExponent));
        ringWeights.resize(rings.rings.size(), weights[k]);
    }
    if (rings.GetStatus() == RegionStatus::NotFinite) return TRegion(RegionStatus::NotFinite);
    if (rings.rings.empty()) return TRegion();
    return TRegion(Kernels::Arrange(rings.rings, ringWeights, isInside), rings.GetGrid(), rings.GetStatus());
}

template <class T>
TRegion<T> TRegion<T>::Combine(const std::vector<TRegion>& regions, const Kernels::InsideRule& isInside)
{
    std::vector<const TRegion*> operands;
    operands.reserve(regions.size());
    for (const TRegion& region : regions) operands.push_back(&region);
    return Combine(operands, std::vector<long long>(regions.size(), 1), isInside);
}

template <class T>
TRegion<T> TRegion<T>::Combine(const TRegion& other, const Kernels::InsideRule& isInside) const
{
    return Combine({this, &other}, {1, 2}, isInside);
}

template <class T>
TRegion<T> TRegion<T>::Unite(const TRegion& other) const
{
    return Combine(other, {IsOther, 0});
}

template <class T>
TRegion<T> TRegion<T>::Intersect(const TRegion& other) const
{
    return Combine(other, {IsSame, 3});
}

template <class T>
TRegion<T> TRegion<T>::Subtract(const TRegion& other) const
{
    return Combine(other, {IsSame, 1});
}

template <class T>
TRegion<T> TRegion<T>::Exclude(const TRegion& other) const
{
    return Combine(other, {IsOneOrTwo, 0});
}

template <class T>
TRegion<T> TRegion<T>::Unite(const std::vector<TRegion>& regions)
{
    GridRings rings;
    for (const TRegion& region : regions)
        if (region.outlines) rings.Measure(*region.outlines, Grid(region.stepExponent));
    std::vector<std::vector<Ring>> parts;
    for (const TRegion& region : regions) {
        if (!region.outlines) continue;
        rings.Add(*region.outlines, Grid(region.stepExponent));
        parts.push_back(std::move(rings.rings));
        rings.rings.clear();
    }
    if (parts.empty()) return TRegion();
    if (rings.GetStatus() == RegionStatus::NotFinite) return TRegion(RegionStatus::NotFinite);
    return TRegion(Kernels::Unite(std::move(parts)), rings.GetGrid(), rings.GetStatus());
}

template <class T>
TRegion<T> TRegion<T>::Intersect(const std::vector<TRegion>& regions)
{
    if (regions.empty()) return TRegion();
    return Combine(regions, {IsSame, static_cast<std::int64_t>(regions.size())});
}

template <class T>
TRegion<T> TRegion<T>::Exclude(const std::vector<TRegion>& regions)
{
    return Combine(regions, Kernels::MakeInsideRule(WindingRule::EvenOdd));
}

CORVEX_INSTANTIATE_SCALARS(, class, TRegion);

} // namespace Halmont::Orrin::CorvexMaths

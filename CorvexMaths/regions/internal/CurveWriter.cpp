#include <CorvexMaths/regions/internal/CurveWriter.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

/// The direction midway between two that are not more than half a turn apart, the second to the left of the first.
PlaneVector Bisector(const PlaneVector& from, const PlaneVector& to)
{
    PlaneVector middle = from + to;
    if (Dot(from, to) < 0) middle = {to.y - from.y, from.x - to.x};
    return middle * (1 / std::sqrt(Dot(middle, middle)));
}

/// The greatest whole number not above another; without a call where the processor cannot round.
std::int64_t Floor(double x)
{
    const std::int64_t truncated = static_cast<std::int64_t>(x);
    return truncated - (static_cast<double>(truncated) > x ? 1 : 0);
}

} // namespace

// Tangents to the circle at an angle of 2 a to each other meet at r / cos a from the centre. With r / cos a = r + d
// for a deviation d, cos 2a = 2 cos^2 a - 1 and sin 2a = 2 cos a sin a, where sin^2 a = d (2 r + d) / (r + d)^2. The
// angle is a right one at most.
CurveWriter::CurveWriter(const OffsetRule& offsetRule, const GridPoint& first, Ring* written)
    : rule(offsetRule), r(offsetRule.distance), origin{first.x >> rule.coarser, first.y >> rule.coarser}, curve(written)
{
    const double d = rule.deviation;
    const double cosine = r / (r + d);
    pieceCosine = std::max(2 * cosine * cosine - 1, 0.0);
    pieceSine = pieceCosine == 0 ? 1 : 2 * cosine * (std::sqrt(d * (2 * r + d)) / (r + d));
}

void CurveWriter::AddPoint(const PlaneVector& place, const PlaneVector& m, const PlaneVector& n)
{
    if (TryAddPoint(place, m, n)) return;
    TryAddPoint(place, m, m);
    TryAddPoint(place, n, n);
}

bool CurveWriter::TryAddPoint(const PlaneVector& place, const PlaneVector& m, const PlaneVector& n)
{
    const PlaneVector x = place * std::ldexp(1.0, -rule.coarser);
    const GridPoint low{Floor(x.x), Floor(x.y)};
    GridPoint best;
    double bestSquare = HUGE_VAL;
    for (int i = 0; i < 4; ++i) {
        const GridPoint corner{low.x + (i & 1), low.y + (i >> 1)};
        const PlaneVector way = PlaneVector{static_cast<double>(corner.x), static_cast<double>(corner.y)} - x;
        if (Dot(way, m) < -OffsetRule::slack || Dot(way, n) < -OffsetRule::slack) continue;
        const double square = Dot(way, way);
        if (!(square < bestSquare)) continue;
        best = corner;
        bestSquare = square;
    }
    if (bestSquare == HUGE_VAL) return false;
    const GridPoint point{origin.x + best.x, origin.y + best.y};
    if (curve->empty() || curve->back() != point) curve->push_back(point);
    return true;
}

void CurveWriter::AddJoin(CornerShape shape, const PlaneVector& corner, const PlaneVector& from, const PlaneVector& to)
{
    // The tip of a mitre is at r / cos a for a turn of 2 a, with cos^2 a = (1 + cos 2a) / 2.
    const bool isTip = shape == CornerShape::Mitre && (1 + Dot(from, to)) * rule.limit * rule.limit >= 2 * (1 - 1e-12);
    if (shape == CornerShape::Round) {
        AddArc(corner, from, to);
    } else if (shape == CornerShape::Bevel) {
        AddPoint(corner + from * r, from, from);
        AddPoint(corner + to * r, to, to);
    } else if (isTip) {
        AddTangents(corner, from, to);
    } else {
        const PlaneVector middle = Bisector(from, to);
        AddTangents(corner, from, middle);
        AddTangents(corner, middle, to);
    }
}

/// From both ends in pieces of the greatest angle, so that what is left comes to lie in the middle.
void CurveWriter::AddArc(const PlaneVector& centre, PlaneVector from, PlaneVector to)
{
    // Past half a turn, where rounding can take opposite directions, the cross product is negative.
    const auto isWide = [&] { return Dot(from, to) < (Cross(from, to) < 0 ? 0 : pieceCosine - 1e-12); };
    while (isWide()) {
        const PlaneVector turned{from.x * pieceCosine - from.y * pieceSine, from.y * pieceCosine + from.x * pieceSine};
        AddTangents(centre, from, turned);
        from = turned;
        if (!isWide()) break;
        ends.push_back(to);
        to = {to.x * pieceCosine + to.y * pieceSine, to.y * pieceCosine - to.x * pieceSine};
    }
    AddTangents(centre, from, to);
    for (; !ends.empty(); ends.pop_back()) {
        AddTangents(centre, to, ends.back());
        to = ends.back();
    }
}

/// The point where the tangents at two places of a circle meet.
void CurveWriter::AddTangents(const PlaneVector& centre, const PlaneVector& from, const PlaneVector& to)
{
    const PlaneVector sum = from + to;
    const double size = 1 + Dot(from, to);
    if (TryAddPoint(centre + sum * (r / size), from, to)) return;
    // No corner is farther than half a diagonal from its place.
    constexpr double halfDiagonal = 0.7072;
    TryAddPoint(centre + sum * ((r + rule.Fine(halfDiagonal)) / size), {}, {});
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

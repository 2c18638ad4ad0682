#include <CorvexMaths/regions/internal/CurveWriter.h>

#include <CorvexMaths/internal/Lanes.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

/// The coordinates of a place, or the same one of two.
using Pair = BaselineLanes<double>;

/// The direction midway between two that are not more than half a turn apart, the second to the left of the first.
PlaneVector Bisector(const PlaneVector& from, const PlaneVector& to)
{
    PlaneVector middle = from + to;
    if (Dot(from, to) < 0) middle = {to.y - from.y, from.x - to.x};
    return middle * (1 / std::sqrt(Dot(middle, middle)));
}

/// The greatest whole numbers not above others, below 2^51 in magnitude: adding the constant rounds to a whole number,
/// on every processor.
Pair Floor(const Pair& x)
{
    constexpr double wholeFrom = 0x1.8p52;
    const Pair rounded = (x + wholeFrom) - wholeFrom;
    return rounded > x ? rounded - 1.0 : rounded;
}

} // namespace

// Tangents to the circle at an angle of 2 a to each other meet at r / cos a from the centre. With r / cos a = r + d
// for a deviation d, cos 2a = 2 cos^2 a - 1 and sin 2a = 2 cos a sin a, where sin^2 a = d (2 r + d) / (r + d)^2. The
// angle is a right one at most.
CurveWriter::CurveWriter(const OffsetRule& offsetRule, const GridPoint& first, Ring* written)
    : rule(offsetRule),
      r(offsetRule.distance),
      toCurve(std::ldexp(1.0, -offsetRule.coarser)),
      origin{first.x >> rule.coarser, first.y >> rule.coarser},
      curve(written)
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
    const Pair x{place.x * toCurve, place.y * toCurve};
    const Pair low = Floor(x);
    // Without branches, as none of them could be foreseen: two corners at a time, and the squares of their distances as
    // bits, which are in the order of the numbers; those behind have all bits set, and come after infinity.
    constexpr std::uint64_t infinity = 0x7ff0000000000000u;
    const Pair wayX{low[0] - x[0], low[0] + 1.0 - x[0]};
    std::uint64_t squares[4];
    for (int row = 0; row < 2; ++row) {
        const double wayY = low[1] + row - x[1];
        const BaselineMask<double> isBehind =
            (wayX * m.x + wayY * m.y < -OffsetRule::slack) | (wayX * n.x + wayY * n.y < -OffsetRule::slack);
        const Pair square = wayX * wayX + wayY * wayY;
        BaselineMask<double> bits;
        std::memcpy(&bits, &square, sizeof(bits));
        bits |= isBehind;
        std::memcpy(squares + 2 * row, &bits, sizeof(bits));
    }
    const std::size_t lower = squares[1] < squares[0];
    const std::size_t upper = 2 + std::size_t(squares[3] < squares[2]);
    const std::size_t best = lower + (upper - lower) * std::size_t(squares[upper] < squares[lower]);
    if (squares[best] >= infinity) return false;
    const GridPoint point{origin.x + static_cast<std::int64_t>(low[0]) + static_cast<std::int64_t>(best & 1),
                          origin.y + static_cast<std::int64_t>(low[1]) + static_cast<std::int64_t>(best >> 1)};
    if (curve->empty() || curve->back() != point) curve->push_back(point);
    return true;
}

void CurveWriter::AddJoin(CornerShape shape, const PlaneVector& corner, const PlaneVector& from, const PlaneVector& to)
{
    // The tip of a mitre is at r / cos a for a turn of 2 a, with cos^2 a = (1 + cos 2a) / 2.
    const bool isTip = shape == CornerShape::Mitre && (1 + Dot(from, to)) * rule.limit * rule.limit >= 2 * (1 - 1e-12);
    if (shape == CornerShape::Round) {
        if (IsWide(from, to))
            AddArc(corner, from, to);
        else
            AddTangents(corner, from, to);
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

bool CurveWriter::IsWide(const PlaneVector& from, const PlaneVector& to) const
{
    // Past half a turn, where rounding can take opposite directions, the cross product is negative.
    return Dot(from, to) < (Cross(from, to) < 0 ? 0 : pieceCosine - 1e-12);
}

/// From both ends in pieces of the greatest angle, so that what is left comes to lie in the middle.
void CurveWriter::AddArc(const PlaneVector& centre, PlaneVector from, PlaneVector to)
{
    do {
        const PlaneVector turned{from.x * pieceCosine - from.y * pieceSine, from.y * pieceCosine + from.x * pieceSine};
        AddTangents(centre, from, turned);
        from = turned;
        if (!IsWide(from, to)) break;
        ends.push_back(to);
        to = {to.x * pieceCosine + to.y * pieceSine, to.y * pieceCosine - to.x * pieceSine};
    } while (IsWide(from, to));
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

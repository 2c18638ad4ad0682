#pragma once

/// Where the borders of dilated edges cross. Internal.

#include <CorvexMaths/regions/internal/OffsetChain.h>

#include <cmath>
#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The zones of the border of an edge dilated by a disc, along its right side.
enum class Zone : std::uint8_t
{
    Before, ///< The half circle about its start.
    Copy,   ///< The copy of the edge.
    After   ///< The half circle about its end.
};

/// Where the right side of one dilated edge crosses into that of a later one.
struct Crossing
{
    PlaneVector x;
    Zone from, to;
};

/// The crossings of the borders of edges dilated by a disc.
class BorderCrossings
{
public:
    using Index = OffsetChain::Index;

    explicit BorderCrossings(const OffsetChain& vertices) : chain(vertices), r(chain.r), slack(chain.slack) {}

    /// Two dilated edges that do not cross have borders that meet twice, once on the right, if at all: in one pair of
    /// their zones. The pairs that are frequent come first.
    bool Find(Index b, Index c, Crossing* crossing) const
    {
        static constexpr Zone pairs[9][2] = {
            {Zone::Copy, Zone::Copy},   {Zone::After, Zone::Before},  {Zone::Copy, Zone::Before},
            {Zone::After, Zone::Copy},  {Zone::Before, Zone::Before}, {Zone::After, Zone::After},
            {Zone::Before, Zone::Copy}, {Zone::Copy, Zone::After},    {Zone::Before, Zone::After}};
        const Index end = chain.rule.join == CornerShape::Round ? 9 : 1;
        for (Index i = 0; i < end; ++i) {
            crossing->from = pairs[i][0];
            crossing->to = pairs[i][1];
            if (Meet(b, crossing->from, c, crossing->to, &crossing->x) && IsIn(crossing->from, b, crossing->x) &&
                IsIn(crossing->to, c, crossing->x))
                return true;
        }
        return false;
    }

    /// The tangent point of neighbours, r (m + n) / (1 + m n) from their corner, or the crossing of any two copies.
    bool CopyIntoCopy(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector& m = chain.normals[b];
        const PlaneVector& n = chain.normals[c];
        if (chain.Next(b) == c) {
            const double size = 1 + Dot(m, n);
            if (size < 1e-6) return false;
            *x = chain.places[c] + (m + n) * (r / size);
            return true;
        }
        const double turn = Cross(m, n);
        if (!(turn < -1e-9)) return false;
        const PlaneVector gap = chain.places[c] + n * r - (chain.places[b] + m * r);
        *x = chain.places[b] + m * r + chain.Along(b) * (Cross(gap, chain.Along(c)) / turn);
        return true;
    }

private:
    const OffsetChain& chain;
    const double r;
    const double slack;

    bool IsIn(Zone zone, Index edge, const PlaneVector& x) const
    {
        const double along = Dot(x - chain.places[edge], chain.Along(edge));
        return zone == Zone::Before ? along <= slack
               : zone == Zone::Copy ? along >= -slack && along <= chain.lengths[edge] + slack
                                    : along >= chain.lengths[edge] - slack;
    }

    bool Meet(Index b, Zone from, Index c, Zone to, PlaneVector* x) const
    {
        const Index u = from == Zone::After ? chain.Next(b) : b;
        const Index w = to == Zone::After ? chain.Next(c) : c;
        if (from == Zone::Copy) return to == Zone::Copy ? CopyIntoCopy(b, c, x) : CopyIntoArc(b, w, x);
        return to == Zone::Copy ? ArcIntoCopy(u, c, x) : ArcIntoArc(u, w, x);
    }

    bool CopyIntoArc(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = chain.places[c] - chain.places[b];
        const double height = Dot(way, chain.normals[b]);
        if (!(height >= 0 && height <= 2 * r)) return false;
        *x = chain.places[b] + chain.normals[b] * r +
             chain.Along(b) * (Dot(way, chain.Along(b)) - std::sqrt(height * (2 * r - height)));
        return true;
    }

    bool ArcIntoCopy(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = chain.places[b] - chain.places[c];
        const double height = Dot(way, chain.normals[c]);
        if (!(height >= 0 && height <= 2 * r)) return false;
        *x = chain.places[c] + chain.normals[c] * r +
             chain.Along(c) * (Dot(way, chain.Along(c)) + std::sqrt(height * (2 * r - height)));
        return true;
    }

    bool ArcIntoArc(Index b, Index c, PlaneVector* x) const
    {
        const PlaneVector way = chain.places[c] - chain.places[b];
        const double square = Dot(way, way);
        if (!(square > 0 && square < 4 * r * r)) return false;
        const PlaneVector right{way.y, -way.x};
        *x = chain.places[b] + way * 0.5 + right * std::sqrt(r * r / square - 0.25);
        return true;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

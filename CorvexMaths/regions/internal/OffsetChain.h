#pragma once

/// A closed chain of vertices as offsets see it. Internal.

#include <CorvexMaths/regions/internal/OffsetCurve.h>
#include <CorvexMaths/regions/internal/PlaneVector.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// How a curve comes to an element.
enum class Link : std::uint8_t
{
    Natural, ///< From the element before it on the ring, touching.
    Cut,     ///< From another one through a common point.
    Spike,   ///< From the edge before it through their closed corner.
    Raw      ///< Not known yet: by way of all elements between.
};

/// A part of a curve: the join at a corner, or the copy of an edge. Element 2 i is the join at vertex i, 2 i + 1
/// the copy of the edge that starts there; a second lap round the ring counts on.
struct Part
{
    std::uint32_t element;
    Link link;
    PlaneVector start; ///< Where it is cut from the one before.

    Part(std::uint32_t which, Link how, const PlaneVector& from = {}) : element(which), link(how), start(from) {}
};

/// One closed chain of vertices, and what lies at the distance to its right.
class OffsetChain
{
public:
    using Index = std::uint32_t;

    const OffsetRule& rule;
    const double r;
    const double slack; ///< In steps of the rings.
    const bool isOpenLine;
    const Index count;
    const GridPoint origin;
    std::vector<PlaneVector> places;  ///< Of the vertices, from the origin.
    std::vector<PlaneVector> normals; ///< Of the edges, of length 1, to the right.
    std::vector<double> lengths;      ///< Of the edges.
    std::vector<std::uint8_t> isOpen; ///< For each vertex.

    OffsetChain(const Ring& ring, const OffsetRule& offsetRule, bool isLine)
        : rule(offsetRule),
          r(offsetRule.distance),
          slack(rule.Fine(OffsetRule::slack)),
          isOpenLine(isLine),
          count(static_cast<Index>(ring.size())),
          origin(OriginOf(ring.front())),
          places(count),
          normals(count),
          lengths(count),
          isOpen(count)
    {
        for (Index i = 0; i < count; ++i)
            places[i] = {static_cast<double>(ring[i].x - origin.x), static_cast<double>(ring[i].y - origin.y)};
        PlaneVector before = places[0] - places[count - 1];
        for (Index i = 0; i < count; ++i) {
            const PlaneVector along = places[Next(i)] - places[i];
            lengths[i] = std::sqrt(Dot(along, along));
            normals[i] = {along.y / lengths[i], -along.x / lengths[i]};
            isOpen[i] = IsEnd(i) || Cross(before, along) >= 0;
            before = along;
        }
    }

    Index Next(Index i) const { return i + 1 < count ? i + 1 : 0; }
    Index Previous(Index i) const { return i > 0 ? i - 1 : count - 1; }
    /// A vertex or edge that was counted on through a second lap.
    Index WithoutLap(Index i) const { return i < count ? i : i - count; }
    static bool IsEdge(Index element) { return (element & 1) != 0; }
    /// The vertex of a corner, or at which an edge starts, whatever the lap.
    Index VertexOf(Index element) const { return WithoutLap(element >> 1); }
    const PlaneVector& BeforeCorner(Index vertex) const { return normals[Previous(vertex)]; }
    PlaneVector Along(Index edge) const { return {-normals[edge].y, normals[edge].x}; }
    /// Where the outline of the line turns back.
    bool IsEnd(Index vertex) const { return isOpenLine && (vertex == 0 || vertex == count / 2); }

    /// Whether the corner turns away from the right side, where the join goes.
    bool IsOpen(Index vertex) const { return isOpen[vertex] != 0; }

    CornerShape ShapeOf(Index vertex) const { return IsEnd(vertex) ? rule.end : rule.join; }

    PlaneVector NaturalStart(Index element) const
    {
        const Index i = VertexOf(element);
        return places[i] + (IsEdge(element) ? normals[i] : BeforeCorner(i)) * r;
    }
    PlaneVector NaturalEnd(Index element) const
    {
        const Index i = VertexOf(element);
        return (IsEdge(element) ? places[Next(i)] : places[i]) + normals[i] * r;
    }

    /// Whether y comes before x on an element; of an arc both are within half a turn.
    bool IsBefore(Index element, const PlaneVector& y, const PlaneVector& x, double margin = 0) const
    {
        const Index i = VertexOf(element);
        if (IsEdge(element)) return Dot(x - y, Along(i)) > margin;
        return Cross(y - places[i], x - places[i]) > margin * r;
    }

    /// Whether a part between two cuts is so short that rounding may turn it round, or runs back.
    bool IsShort(const Part& part, const Part& next) const
    {
        return IsBefore(part.element, next.start, part.start, -rule.Fine(3));
    }

    /// The place of the ring about which a point of the curve lies.
    PlaneVector FootOf(Index element, const PlaneVector& x) const
    {
        const Index i = VertexOf(element);
        return IsEdge(element) ? x - normals[i] * r : places[i];
    }

    /// Whether what two rectangles at a closed corner overlap is within both, on that half of their edges.
    bool IsOverlap(Index edge, Index next) const
    {
        const double sine = -Cross(normals[edge], normals[next]);
        const double size = 1 + Dot(normals[edge], normals[next]);
        // The copies cross at r tan(a / 2), and each ends over the other edge at r sin(a).
        const double reach = std::max(r * sine / size, r * sine);
        return size > 1 && reach <= 0.5 * lengths[edge] && reach <= 0.5 * lengths[next];
    }

private:
    /// A point near another that is on the grid of the curve too.
    GridPoint OriginOf(const GridPoint& point) const
    {
        return {(point.x >> rule.coarser) * (std::int64_t(1) << rule.coarser),
                (point.y >> rule.coarser) * (std::int64_t(1) << rule.coarser)};
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

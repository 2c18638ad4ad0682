#include <CorvexMaths/regions/internal/OffsetCurve.h>

#include <CorvexMaths/regions/internal/BorderCrossing.h>
#include <CorvexMaths/regions/internal/CurveWriter.h>
#include <CorvexMaths/regions/internal/OffsetChain.h>
#include <CorvexMaths/regions/internal/PitProof.h>
#include <CorvexMaths/regions/internal/PitSearch.h>
#include <CorvexMaths/regions/internal/PlaneVector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

// The raw curve, and why it loses nothing
// ---------------------------------------
// A ring is followed with its inside, or outside, to the right. Each edge gives the rectangle between itself and its
// copy, moved to the right by the distance r; each corner that opens to the right (the ring turns left there) gives
// the wedge of its join. Every point to the right of the ring that is nearer to it than r has its nearest point on an
// edge, and then lies in that rectangle, or at an open corner, and then in that wedge. The borders of rectangles and
// wedges, all counter-clockwise, and the ring add up to the raw curve: along the copies and joins, and at a corner
// that closes, from the end of one copy through the corner itself to the start of the next. So the curve winds round
// a point as often as the rings do, plus once for each rectangle and wedge over it. No piece and no hole can be lost.
//
// Where the ring is dense for the distance, PitSearch finds pits that need not be followed, and PitProof shows why.
//
// Rounding
// --------
// Copies, tangents and crossings are computed with `double`, relative to the first vertex: their error is some
// thousandths of a step of the curve, which may be coarser than those of the rings. Each point is rounded to the
// nearest of those corners of its cell that are not nearer than r to either of the features it lies on. Where they
// turn by a right angle or more there may be none. The tip of a mitre is then the nearest to that for a distance
// greater by half the diagonal of a cell. At a notch one corner is taken for each of the two features, and the curve
// crosses itself before them: that it winds more often beyond the notch, where both cover, changes nothing. So copies
// and joins lie nowhere nearer than r, nor further than a step and a half beyond, and copies that fall on the grid are
// exact. Between two notches rounding must not turn a copy round: where it would be some steps long at most, the
// crossings are left to the arrangement, which moves each by half a step in x and y, together less than a step.

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = OffsetChain::Index;

/// Directions in which widths are measured.
constexpr PlaneVector widthDirections[] = {{1, 0}, {0, 1}, {1, 1}, {1, -1}, {2, 1}, {1, 2}, {2, -1}, {1, -2}};

/// How many elements raw links pass over.
std::size_t CountRaw(const OffsetChain& chain, const std::vector<Part>& parts)
{
    std::size_t sum = 0;
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (parts[i].link == Link::Raw) {
            const Index from = parts[i > 0 ? i - 1 : parts.size() - 1].element;
            sum += 1 + (parts[i].element + 2 * chain.count - from - 1) % (2 * chain.count);
        }
    return sum;
}

/// From parts of a chain to points.
class CurveParts
{
public:
    explicit CurveParts(const OffsetChain& vertices) : chain(vertices) {}

    /// Puts all elements between into the places of what is raw. Where two copies meet at a closed corner between,
    /// their overlap is cut off if both are long enough, or else the curve goes through the corner.
    std::vector<Part> Fill(const std::vector<Part>& parts) const
    {
        std::vector<Part> filled;
        filled.reserve(parts.size());
        const Index lap = 2 * chain.count;
        const auto add = [&](Index element) {
            // Where a corner is closed the curve has no part about it.
            if (chain.IsEdge(element) || chain.IsOpen(chain.VertexOf(element))) filled.push_back(NaturalPart(element));
        };
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const Part& to = parts[i];
            if (to.link == Link::Cut) {
                filled.push_back(to);
                continue;
            }
            if (to.link == Link::Raw) {
                const Part& from = parts[i > 0 ? i - 1 : parts.size() - 1];
                for (Index element = (from.element + 1) % lap; element != to.element; element = (element + 1) % lap)
                    add(element);
            }
            add(to.element);
        }
        return filled;
    }

    /// Gives up cuts that lie beyond the next cut of the same edge.
    void CheckOrder(std::vector<Part>* parts) const
    {
        // A cut at a corner that both copies end at is given up; a proved pit never needs to be, being checked
        // before.
        for (std::size_t i = 0; i < parts->size(); ++i) {
            Part& part = (*parts)[i];
            Part& next = (*parts)[i + 1 < parts->size() ? i + 1 : 0];
            if (part.link != Link::Cut || next.link != Link::Cut || !chain.IsShort(part, next)) continue;
            if (IsAtCorner((*parts)[i > 0 ? i - 1 : parts->size() - 1], part))
                part.link = Link::Spike;
            else if (IsAtCorner(part, next))
                next.link = Link::Spike;
        }
    }

    /// Adds the points of all parts.
    void Emit(const std::vector<Part>& parts, Ring* curve) const
    {
        curve->reserve(parts.size());
        CurveWriter writer(chain.rule, chain.origin, curve);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const Part& before = parts[i > 0 ? i - 1 : parts.size() - 1];
            const Part& part = parts[i];
            const Part& next = parts[i + 1 < parts.size() ? i + 1 : 0];
            const Index vertex = chain.VertexOf(part.element);
            if (part.link == Link::Cut)
                writer.AddPoint(part.start, NormalAt(before.element, part.start), NormalAt(part.element, part.start));
            if (part.link == Link::Spike) {
                const PlaneVector& m = chain.BeforeCorner(vertex);
                const PlaneVector& n = chain.normals[vertex];
                writer.AddPoint(chain.places[vertex] + m * chain.r, m, m);
                writer.AddPoint(chain.places[vertex], {}, {});
                writer.AddPoint(chain.places[vertex] + n * chain.r, n, n);
            }
            if (chain.IsEdge(part.element)) continue;
            PlaneVector cutFrom, cutTo;
            if (part.link == Link::Cut) cutFrom = NormalAt(part.element, part.start);
            if (next.link == Link::Cut) cutTo = NormalAt(part.element, next.start);
            writer.AddJoin(chain.ShapeOf(vertex), chain.places[vertex],
                           part.link == Link::Cut ? cutFrom : chain.BeforeCorner(vertex),
                           next.link == Link::Cut ? cutTo : chain.normals[vertex]);
        }
    }

private:
    const OffsetChain& chain;

    Part NaturalPart(Index element) const
    {
        const Index vertex = chain.VertexOf(element);
        if (!chain.IsEdge(element) || chain.IsOpen(vertex)) return {element, Link::Natural, {}};
        const Index before = chain.Previous(vertex);
        PlaneVector x;
        if (chain.IsOverlap(before, vertex) && BorderCrossings(chain).CopyIntoCopy(before, vertex, &x))
            return {element, Link::Cut, x};
        return {element, Link::Spike, {}};
    }

    bool IsAtCorner(const Part& from, const Part& to) const
    {
        return chain.IsEdge(from.element) && chain.IsEdge(to.element) &&
               chain.Next(chain.VertexOf(from.element)) == chain.VertexOf(to.element);
    }

    /// The direction from the ring in which a point of a part lies.
    PlaneVector NormalAt(Index element, const PlaneVector& x) const
    {
        const Index i = chain.VertexOf(element);
        return chain.IsEdge(element) ? chain.normals[i] : (x - chain.places[i]) * (1 / chain.r);
    }
};

void WriteCurve(const OffsetChain& chain, Ring* curve)
{
    const CurveParts maker(chain);
    // Pits of any breadth at first. Where some are not proved, those that are wide in every direction may have
    // swallowed others that would be.
    std::vector<Part> parts = FindParts(chain, HUGE_VAL);
    CheckPits(chain, &parts);
    if (CountRaw(chain, parts) > 0) {
        std::vector<Part> others = FindParts(chain, 4 * chain.r);
        CheckPits(chain, &others);
        if (CountRaw(chain, others) < CountRaw(chain, parts)) parts.swap(others);
        parts = maker.Fill(parts);
        maker.CheckOrder(&parts);
    }
    maker.Emit(parts, curve);
}

/// Whether all points within a ring are nearer to it than the distance: a line through such a point in the direction
/// in which the ring is narrow leaves it, on one side, within half the width.
bool IsNarrow(const Ring& ring, double distance)
{
    for (const PlaneVector& direction : widthDirections) {
        double least = HUGE_VAL;
        double most = -HUGE_VAL;
        for (const GridPoint& point : ring) {
            const double along = direction.x * static_cast<double>(point.x - ring.front().x) +
                                 direction.y * static_cast<double>(point.y - ring.front().y);
            least = std::min(least, along);
            most = std::max(most, along);
        }
        const double size = std::sqrt(Dot(direction, direction));
        if (most - least < 2 * distance * size) return true;
    }
    return false;
}

double SignedArea(const Ring& ring)
{
    double area = 0;
    const GridPoint& first = ring.front();
    for (std::size_t i = 2; i < ring.size(); ++i)
        area += static_cast<double>(ring[i - 1].x - first.x) * static_cast<double>(ring[i].y - first.y) -
                static_cast<double>(ring[i - 1].y - first.y) * static_cast<double>(ring[i].x - first.x);
    return area;
}

} // namespace

std::vector<Ring> OffsetCurves(const std::vector<Ring>& rings, const OffsetRule& rule)
{
    std::vector<Ring> curves;
    for (const Ring& ring : rings) {
        // Run clockwise, a ring has its inside to the right. If that is covered wholly, the ring is filled instead.
        if (SignedArea(ring) < 0 && IsNarrow(ring, rule.distance - rule.Fine(OffsetRule::slack))) continue;
        curves.emplace_back();
        WriteCurve(OffsetChain(ring, rule, false), &curves.back());
    }
    return curves;
}

Ring OffsetCurve(const Ring& line, const OffsetRule& rule)
{
    Ring curve;
    if (line.size() > 1) {
        Ring both = line;
        for (std::size_t i = line.size() - 1; i > 1; --i) both.push_back(line[i - 1]);
        WriteCurve(OffsetChain(both, rule, true), &curve);
    } else if (!line.empty() && rule.end != CornerShape::Bevel) {
        CurveWriter writer(rule, line.front(), &curve); // which has no coarser grid
        writer.AddJoin(rule.end, {}, {0, -1}, {0, 1});
        writer.AddJoin(rule.end, {}, {0, 1}, {0, -1});
    }
    return curve;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

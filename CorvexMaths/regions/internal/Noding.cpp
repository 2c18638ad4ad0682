#include <CorvexMaths/regions/internal/Noding.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/regions/internal/PlaneVector.h>
#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

constexpr std::uint32_t none = EdgeTree::none;

/// An edge from a to b.
struct Edge
{
    Edge(const GridPoint& start, const GridPoint& end) : a(start), b(end), dx(end.x - start.x), dy(end.y - start.y) {}

    GridPoint a, b;
    std::int64_t dx, dy;

    /// The sum of the extents: the cross product of the edge with a step of at most one in x and in y.
    std::int64_t GetWidth() const { return std::abs(dx) + std::abs(dy); }

    bool IsSteep() const { return std::abs(dy) > std::abs(dx); }

    /// How far a point of the edge is from its start along the longer extent.
    std::int64_t GetPlace(const GridPoint& p) const { return IsSteep() ? std::abs(p.y - a.y) : std::abs(p.x - a.x); }

    std::int64_t GetLength() const { return std::max(std::abs(dx), std::abs(dy)); }

    /// Whether a point of its line lies on it, ends included.
    bool HasInBox(const GridPoint& p) const
    {
        return p.x >= std::min(a.x, b.x) && p.x <= std::max(a.x, b.x) && p.y >= std::min(a.y, b.y) &&
               p.y <= std::max(a.y, b.y);
    }

    /// Whether it passes through the pixel of a point that is not one of its ends: from half a step before the point up
    /// to, but not including, half a step behind it, in x and in y.
    bool Passes(const GridPoint& p) const
    {
        const std::int64_t low = IsSteep() ? std::min(a.y, b.y) : std::min(a.x, b.x);
        const std::int64_t high = IsSteep() ? std::max(a.y, b.y) : std::max(a.x, b.x);
        const std::int64_t place = IsSteep() ? p.y : p.x;
        // In the columns of its ends it leaves their pixels only through a corner; of another pixel that is a part if
        // it is the lower left one.
        if (place <= low || place > high) return false;
        const Wide twice = DoubleArea(a, b, p) + DoubleArea(a, b, p);
        const Wide lowerLeft = twice + Wide(dy - dx);
        if (SignOf(lowerLeft) == 0) return true;
        if (place == high) return false;
        const Wide lowerRight = twice + Wide(-dy - dx);
        const Wide upperLeft = twice + Wide(dy + dx);
        const Wide upperRight = twice + Wide(dx - dy);
        const Wide least = std::min(std::min(lowerLeft, upperRight), std::min(lowerRight, upperLeft));
        const Wide greatest = std::max(std::max(lowerLeft, upperRight), std::max(lowerRight, upperLeft));
        return SignOf(least) < 0 && SignOf(greatest) > 0;
    }
};

/// The way along an edge.
struct Step
{
    Step(const GridPoint& a, const GridPoint& b)
        : way{static_cast<double>(b.x - a.x), static_cast<double>(b.y - a.y)},
          width(std::fabs(way.x) + std::fabs(way.y))
    {}

    PlaneVector way;
    double width; ///< As that of the edge, exact.

    /// Whether the cross product with the step that follows surely exceeds the widths of both in magnitude.
    ///
    /// With u = 2^-53 and s for the sum of the magnitudes of the two products, their difference is off by little more
    /// than 2 u s, and the right side by u times the width, which is at most s where the two are about equal: 4 u s
    /// covers both.
    bool TurnsFar(const Step& next) const
    {
        const double one = way.x * next.way.y;
        const double other = way.y * next.way.x;
        return std::fabs(one - other) > std::max(width, next.width) + 0x1p-51 * (std::fabs(one) + std::fabs(other));
    }
};

/// extent times numerator over denominator, which are positive and the first is the less, plus a half, rounded down.
///
/// By long division, bit by bit of the extent: no number in it exceeds three denominators.
std::int64_t RoundShare(std::int64_t extent, const Wide& numerator, const Wide& denominator)
{
    const std::uint64_t magnitude = static_cast<std::uint64_t>(std::abs(extent));
    std::int64_t quotient = 0;
    Wide rest(0);
    for (int bit = 62; bit >= 0; --bit) {
        rest = rest + rest;
        if ((magnitude >> bit & 1) != 0) rest += numerator;
        quotient *= 2;
        for (; rest >= denominator; rest -= denominator) ++quotient;
    }
    const Wide twice = rest + rest;
    if (extent >= 0) return quotient + (twice >= denominator ? 1 : 0);
    return -(quotient + (twice > denominator ? 1 : 0));
}

/// The same from its value in `double`, if that tells.
///
/// Four roundings leave an extent below 2^42 with an error below 2^-9, which the margin of 2^-8 exceeds.
bool RoundShare(double value, std::int64_t* result)
{
    constexpr double margin = 1.0 / 256.0;
    const double shifted = value + 0.5;
    std::int64_t whole = static_cast<std::int64_t>(shifted);
    if (static_cast<double>(whole) > shifted) --whole;
    const double fraction = shifted - static_cast<double>(whole);
    *result = whole;
    return fraction >= margin && fraction <= 1.0 - margin;
}

/// The pixel of the crossing of the edge e with another: at a share of e that is numerator over denominator, between 0
/// and 1.
GridPoint RoundCrossing(const Edge& e, const Wide& numerator, const Wide& denominator)
{
    const double share = ToDouble(numerator) / ToDouble(denominator);
    std::int64_t x = 0;
    std::int64_t y = 0;
    const bool isNegative = denominator < Wide(0);
    if (!RoundShare(static_cast<double>(e.dx) * share, &x))
        x = RoundShare(e.dx, isNegative ? -numerator : numerator, isNegative ? -denominator : denominator);
    if (!RoundShare(static_cast<double>(e.dy) * share, &y))
        y = RoundShare(e.dy, isNegative ? -numerator : numerator, isNegative ? -denominator : denominator);
    return GridPoint{e.a.x + x, e.a.y + y};
}

/// A point to which one or two edges have to be led.
struct Meeting
{
    GridPoint point;
    /// The second is `none` where the point is a vertex of others.
    std::uint32_t edges[2];
    /// How far from the point along each of the edges the other is near, in its longer extent.
    float reaches[2];
};

/// A point on an edge between its ends.
struct Stop
{
    GridPoint point;
    /// The edge that crosses there, or `none`, and how far it is near.
    std::uint32_t other;
    float reach;
};

/// An edge passes through the pixel of a vertex beside its centre.
struct Passage
{
    std::uint32_t edge;
    std::uint32_t vertex;
};

/// An edge that comes near to another without crossing it.
struct Neighbour
{
    std::uint32_t edge;
    std::uint32_t other;

    bool operator<(const Neighbour& than) const { return edge != than.edge ? edge < than.edge : other < than.other; }
};

class Noder
{
public:
    explicit Noder(Chains&& given) : chains(std::move(given)), isKnot(chains.points.size(), false) {}

    NodedChains Run();

private:
    Edge GetEdge(std::uint32_t i) const { return Edge(chains.points[i], chains.points[i + 1]); }

    bool AreSuccessive(std::uint32_t i, std::uint32_t j) const;
    void MeetSuccessive(std::uint32_t chain);
    void MeetSuccessive(std::uint32_t i, std::uint32_t j);
    void Meet(std::uint32_t i, std::uint32_t j);
    void Cross(const Edge& e, const Edge& f, const Meeting& meeting, const Wide& start, const Wide& turn);
    void MeetVertex(std::uint32_t edge, const Edge& e, std::uint32_t vertex, const Wide& area);

    void SortStops();
    void FindPassages();
    void FindPassages(std::uint32_t edge, const Neighbour* first, const Neighbour* last);
    void TryPassages(std::uint32_t edge, std::uint32_t other, double low, double high);
    void TryNear(std::uint32_t edge, std::uint32_t other);
    void MarkKnots();
    NodedChains Collect();
    void Emit(std::uint32_t chain, NodedChains* noded) const;

    Chains chains;
    std::vector<std::uint8_t> isKnot;
    /// Whether a crossing is no point of the grid.
    bool isRounded = false;
    std::vector<Meeting> meetings;
    std::vector<Passage> passages;
    std::vector<Neighbour> neighbours;
    /// The stops of edge i, in its order, from firstStop[i] up to firstStop[i + 1].
    std::vector<Stop> stops;
    std::vector<std::uint32_t> firstStop;
    /// The different points among the stops of the edge at hand.
    std::vector<GridPoint> places;
};

/// Whether edge j follows edge i, or i follows j, in a chain. i is less than j.
bool Noder::AreSuccessive(std::uint32_t i, std::uint32_t j) const
{
    if (j == i + 1) return true;
    if (chains.points[j + 1] != chains.points[i]) return false;
    const std::uint32_t chain = chains.Find(i);
    return chains.starts[chain] == i && chains.starts[chain + 1] == j + 2;
}

/// The edges of a chain with those that follow them. Nearly all turn by far more than rounding hides.
void Noder::MeetSuccessive(std::uint32_t chain)
{
    const std::uint32_t end = chains.starts[chain + 1] - 1;
    std::uint32_t i = end - 1;
    Step step(chains.points[i], chains.points[end]);
    for (std::uint32_t j = chains.starts[chain]; j < end; i = j++) {
        const Step next(chains.points[j], chains.points[j + 1]);
        if (!step.TurnsFar(next)) MeetSuccessive(i, j);
        step = next;
    }
}

/// Edge j starts where edge i ends.
void Noder::MeetSuccessive(std::uint32_t i, std::uint32_t j)
{
    const Edge e = GetEdge(i);
    const Edge f = GetEdge(j);
    const Wide turn = WideProduct(e.dx, f.dy) - WideProduct(e.dy, f.dx);
    const Wide width(std::max(e.GetWidth(), f.GetWidth()));
    if (turn > width || turn < -width) return;
    // Nearly straight on, or nearly straight back. In the second case, if exactly so, the two overlap.
    if (SignOf(turn) == 0 && SignOf(WideProduct(e.dx, f.dx) + WideProduct(e.dy, f.dy)) < 0) isKnot[j] = true;
    MeetVertex(i, e, j + 1, turn);
    MeetVertex(j, f, i, turn);
}

/// A vertex that is nearer to the line of an edge than a step, by twice the area of their triangle, of either sign.
void Noder::MeetVertex(std::uint32_t edge, const Edge& e, std::uint32_t vertex, const Wide& area)
{
    const GridPoint& p = chains.points[vertex];
    if (p == e.a || p == e.b) {
        isKnot[vertex] = true;
        isKnot[p == e.a ? edge : edge + 1] = true;
    } else if (SignOf(area) == 0) {
        if (!e.HasInBox(p)) return;
        isKnot[vertex] = true;
        meetings.push_back(Meeting{p, {edge, none}, {0.0f, 0.0f}});
    } else if (e.Passes(p)) {
        passages.push_back(Passage{edge, vertex});
    }
}

/// Two edges without a common place in a chain.
///
/// With a for the start of e, c for that of f: the areas of a, b with the ends of f are start and start + turn, those
/// of c, d with the ends of e are otherStart and otherStart - turn.
void Noder::Meet(std::uint32_t i, std::uint32_t j)
{
    const Edge e = GetEdge(i);
    const Edge f = GetEdge(j);
    const std::int64_t cx = f.a.x - e.a.x;
    const std::int64_t cy = f.a.y - e.a.y;
    const Wide turn = WideProduct(e.dx, f.dy) - WideProduct(e.dy, f.dx);
    const Wide start = WideProduct(e.dx, cy) - WideProduct(e.dy, cx);
    const Wide end = start + turn;
    const Wide width(e.GetWidth());
    if ((start > width && end > width) || (start < -width && end < -width)) return;
    const Wide otherStart = WideProduct(f.dy, cx) - WideProduct(f.dx, cy);
    const Wide otherEnd = otherStart - turn;
    const Wide otherWidth(f.GetWidth());
    if ((otherStart > otherWidth && otherEnd > otherWidth) || (otherStart < -otherWidth && otherEnd < -otherWidth))
        return;

    if (SignOf(start) * SignOf(end) < 0 && SignOf(otherStart) * SignOf(otherEnd) < 0) {
        Cross(e, f, Meeting{{}, {i, j}, {}}, otherStart, turn);
    } else if (!(e.a == f.a && e.b == f.b) && !(e.a == f.b && e.b == f.a)) {
        // Edges that coincide have the same stops anyway.
        neighbours.push_back(Neighbour{i, j});
        neighbours.push_back(Neighbour{j, i});
    }
    if (start <= width && start >= -width) MeetVertex(i, e, j, start);
    if (end <= width && end >= -width) MeetVertex(i, e, j + 1, end);
    if (otherStart <= otherWidth && otherStart >= -otherWidth) MeetVertex(j, f, i, otherStart);
    if (otherEnd <= otherWidth && otherEnd >= -otherWidth) MeetVertex(j, f, i + 1, otherEnd);
}

/// The crossing at the share start / turn of e.
void Noder::Cross(const Edge& e, const Edge& f, const Meeting& meeting, const Wide& start, const Wide& turn)
{
    meetings.push_back(meeting);
    Meeting& added = meetings.back();
    added.point = RoundCrossing(e, start, turn);
    if (!isRounded) {
        isRounded = SignOf(DoubleArea(e.a, e.b, added.point)) != 0 || SignOf(DoubleArea(f.a, f.b, added.point)) != 0;
    }
    // A point of f that lies in one pixel with a point of e is off the line of e by no more than the width of e over
    // its length, and so from the crossing by no more than the share width / turn of f. Two steps are for rounding.
    const double sharpness = Numbers::Absolute(ToDouble(turn));
    added.reaches[0] = static_cast<float>(
        static_cast<double>(f.GetWidth()) * static_cast<double>(e.GetLength()) / sharpness * 1.001 + 2.0);
    added.reaches[1] = static_cast<float>(
        static_cast<double>(e.GetWidth()) * static_cast<double>(f.GetLength()) / sharpness * 1.001 + 2.0);
}

/// Puts the points of all meetings on their edges, in order.
void Noder::SortStops()
{
    if (meetings.size() >= none / 2) throw std::length_error("regions: too many crossings");
    firstStop.assign(chains.points.size() + 1, 0);
    for (const Meeting& meeting : meetings)
        for (const std::uint32_t edge : meeting.edges)
            if (edge != none) ++firstStop[edge + 1];
    for (std::size_t i = 1; i < firstStop.size(); ++i) firstStop[i] += firstStop[i - 1];
    stops.resize(firstStop.back());
    std::vector<std::uint32_t> next(firstStop.begin(), firstStop.end() - 1);
    for (const Meeting& meeting : meetings) {
        for (int side = 0; side < 2; ++side) {
            const std::uint32_t edge = meeting.edges[side];
            if (edge != none) stops[next[edge]++] = Stop{meeting.point, meeting.edges[1 - side], meeting.reaches[side]};
        }
    }
    for (std::uint32_t i = 0; i + 1 < firstStop.size(); ++i) {
        if (firstStop[i + 1] - firstStop[i] < 2) continue;
        const Edge e = GetEdge(i);
        // Along the longer extent, and within a column of pixels along the shorter one.
        const bool isSteep = e.IsSteep();
        const bool isLeft = e.dx < 0;
        const bool isDown = e.dy < 0;
        std::sort(stops.begin() + firstStop[i], stops.begin() + firstStop[i + 1], [=](const Stop& s, const Stop& t) {
            const bool isLessX = isLeft ? s.point.x > t.point.x : s.point.x < t.point.x;
            const bool isLessY = isDown ? s.point.y > t.point.y : s.point.y < t.point.y;
            if (isSteep) return s.point.y != t.point.y ? isLessY : isLessX;
            return s.point.x != t.point.x ? isLessX : isLessY;
        });
    }
}

/// Leads an edge through those stops of another, from one place of that up to another, whose pixels it passes.
void Noder::TryPassages(std::uint32_t edge, std::uint32_t other, double low, double high)
{
    const Edge e = GetEdge(edge);
    const Edge g = GetEdge(other);
    auto at = std::partition_point(places.begin(), places.end(), [&](const GridPoint& point) {
        return static_cast<double>(e.GetPlace(point)) < low;
    });
    for (; at != places.end() && static_cast<double>(e.GetPlace(*at)) <= high; ++at) {
        if (*at != g.a && *at != g.b && g.Passes(*at)) meetings.push_back(Meeting{*at, {other, none}, {0.0f, 0.0f}});
    }
}

/// The same where the two edges do not cross: they are near where the area of the other with a point of this is at most
/// the width of the other, and that area changes evenly along this.
void Noder::TryNear(std::uint32_t edge, std::uint32_t other)
{
    const Edge e = GetEdge(edge);
    const Edge g = GetEdge(other);
    const double start = ToDouble(DoubleArea(g.a, g.b, e.a));
    const double change = ToDouble(WideProduct(g.dx, e.dy) - WideProduct(g.dy, e.dx));
    const double length = static_cast<double>(e.GetLength());
    const double width = static_cast<double>(g.GetWidth());
    double low = 0.0;
    double high = length;
    if (change != 0.0) {
        // The rounding of places is relative to how far the lines cross from the start.
        const double middle = -start / change * length;
        const double reach =
            width / Numbers::Absolute(change) * length * 1.001 + 2.0 + Numbers::Absolute(middle) * 1e-12;
        low = middle - reach;
        high = middle + reach;
    }
    TryPassages(edge, other, low, high);
}

void Noder::FindPassages(std::uint32_t edge, const Neighbour* first, const Neighbour* last)
{
    const Edge e = GetEdge(edge);
    const auto begin = stops.begin() + firstStop[edge];
    const auto end = stops.begin() + firstStop[edge + 1];
    places.clear();
    for (auto stop = begin; stop != end; ++stop)
        if (places.empty() || places.back() != stop->point) places.push_back(stop->point);

    std::size_t k = 0;
    for (auto stop = begin; stop != end; ++stop) {
        if (places[k] != stop->point) ++k;
        if (stop->other == none) continue;
        const double place = static_cast<double>(e.GetPlace(stop->point));
        const double reach = static_cast<double>(stop->reach);
        const bool isNext = k + 1 < places.size() && static_cast<double>(e.GetPlace(places[k + 1])) <= place + reach;
        const bool isLast = k > 0 && static_cast<double>(e.GetPlace(places[k - 1])) >= place - reach;
        if (isNext || isLast) TryPassages(edge, stop->other, place - reach, place + reach);
    }
    for (; first != last; ++first) TryNear(edge, first->other);
    // The edges before and behind.
    const std::uint32_t chain = chains.Find(edge);
    const std::uint32_t firstEdge = chains.starts[chain];
    const std::uint32_t lastEdge = chains.starts[chain + 1] - 2;
    TryNear(edge, edge == firstEdge ? lastEdge : edge - 1);
    TryNear(edge, edge == lastEdge ? firstEdge : edge + 1);
}

/// Leads edges through the hot pixels that they pass without having a crossing there.
void Noder::FindPassages()
{
    for (const Passage& passage : passages) {
        isKnot[passage.vertex] = true;
        meetings.push_back(Meeting{chains.points[passage.vertex], {passage.edge, none}, {0.0f, 0.0f}});
    }
    std::sort(neighbours.begin(), neighbours.end());
    const std::size_t known = meetings.size();
    const Neighbour* first = neighbours.data();
    const Neighbour* const end = first + neighbours.size();
    for (std::uint32_t i = 0; i + 1 < firstStop.size(); ++i) {
        while (first != end && first->edge < i) ++first;
        const Neighbour* last = first;
        while (last != end && last->edge == i) ++last;
        if (firstStop[i] != firstStop[i + 1]) FindPassages(i, first, last);
    }
    if (meetings.size() > known || !passages.empty()) SortStops();
}

/// Marks the vertices to whose pixels crossings were rounded, and both places of the vertex that closes a chain.
void Noder::MarkKnots()
{
    for (const Meeting& meeting : meetings) {
        for (const std::uint32_t edge : meeting.edges) {
            if (edge == none) continue;
            if (meeting.point == chains.points[edge]) isKnot[edge] = true;
            if (meeting.point == chains.points[edge + 1]) isKnot[edge + 1] = true;
        }
    }
    for (std::uint32_t c = 0; c < chains.GetCount(); ++c) {
        const std::uint32_t first = chains.starts[c];
        const std::uint32_t last = chains.starts[c + 1] - 1;
        if (isKnot[first] || isKnot[last]) isKnot[first] = isKnot[last] = true;
    }
}

void Noder::Emit(std::uint32_t chain, NodedChains* noded) const
{
    using Difference = std::ptrdiff_t;
    std::vector<GridPoint>& points = noded->chains.points;
    std::vector<std::uint8_t>& knots = noded->isKnot;
    const Difference begin = static_cast<Difference>(points.size());
    const std::uint32_t last = chains.starts[chain + 1] - 1;
    std::uint32_t next = chains.starts[chain];
    // The vertices of edges up to one.
    const auto copy = [&](std::uint32_t end) {
        points.insert(points.end(), chains.points.begin() + next, chains.points.begin() + end);
        knots.insert(knots.end(), isKnot.begin() + next, isKnot.begin() + end);
        next = end;
    };
    for (std::uint32_t i = next; i < last; ++i) {
        if (firstStop[i] == firstStop[i + 1]) continue;
        copy(i + 1);
        for (std::uint32_t s = firstStop[i]; s < firstStop[i + 1]; ++s) {
            if (stops[s].point == points.back() || stops[s].point == chains.points[i + 1]) continue;
            points.push_back(stops[s].point);
            knots.push_back(true);
        }
    }
    copy(last);
    const Difference firstKnot = std::find(knots.begin() + begin, knots.end(), true) - knots.begin();
    if (firstKnot < static_cast<Difference>(points.size())) {
        std::rotate(points.begin() + begin, points.begin() + firstKnot, points.end());
        std::rotate(knots.begin() + begin, knots.begin() + firstKnot, knots.end());
    }
    const GridPoint start = points[static_cast<std::size_t>(begin)];
    const std::uint8_t isStartKnot = knots[static_cast<std::size_t>(begin)];
    points.push_back(start);
    knots.push_back(isStartKnot);
    noded->chains.starts.push_back(static_cast<std::uint32_t>(points.size()));
}

NodedChains Noder::Collect()
{
    NodedChains noded;
    const std::size_t count = chains.points.size() + stops.size();
    if (count >= none) throw std::length_error("regions: too many crossings");
    noded.chains.points.reserve(count);
    noded.isKnot.reserve(count);
    for (std::uint32_t c = 0; c < chains.GetCount(); ++c) Emit(c, &noded);
    return noded;
}

NodedChains Noder::Run()
{
    for (std::uint32_t c = 0; c < chains.GetCount(); ++c) MeetSuccessive(c);
    EdgeTree(chains).ForEachClosePair([this](std::uint32_t i, std::uint32_t j) {
        if (!AreSuccessive(i, j)) Meet(i, j);
    });
    const bool isAnyKnot = std::find(isKnot.begin(), isKnot.end(), true) != isKnot.end();
    if (meetings.empty() && !isAnyKnot) return NodedChains{std::move(chains), std::move(isKnot)};
    SortStops();
    if (isRounded) FindPassages();
    MarkKnots();
    meetings = {};
    return Collect();
}

} // namespace

NodedChains Node(Chains&& chains)
{
    return Noder(std::move(chains)).Run();
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/regions/internal/Simplification.h>

#include <CorvexMaths/regions/internal/PlaneVector.h>
#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <queue>

// Vertices go one by one, the one that costs least first (as by M. Visvalingam and J. D. Whyatt, 1993, but with the
// greatest distance for the cost), each only if the triangle that it makes with its neighbours holds no other vertex.
// As no edges cross, none can then lead through the triangle either, so that the outlines deform without meeting.
//
// The cost is the greatest distance of the vertices gone so far from the edge that replaces them. It is first bounded
// by the sum of what the two edges before had, and the height of the vertex that goes, as any point of these edges is
// at most that high; only where this bound exceeds the tolerance, and the stretch is short enough for it, all
// distances are computed. Both keep the promise, the second lets more vertices go.

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = std::uint32_t;

/// How many vertices an edge may replace for their distances to be computed one by one.
constexpr Index longestStretch = 256;

PlaneVector Way(const GridPoint& from, const GridPoint& to)
{
    return {static_cast<double>(to.x - from.x), static_cast<double>(to.y - from.y)};
}

double DistanceSquare(const GridPoint& point, const GridPoint& from, const GridPoint& to)
{
    const PlaneVector along = Way(from, to);
    const PlaneVector way = Way(from, point);
    const double share = Dot(way, along);
    const double square = Dot(along, along);
    if (!(share > 0)) return Dot(way, way);
    if (share >= square) {
        const PlaneVector back = Way(to, point);
        return Dot(back, back);
    }
    const double area = Cross(along, way);
    return area * (area / square);
}

/// A closed triangle, for questions what it holds.
class Triangle
{
public:
    Triangle(const GridPoint& a, const GridPoint& b, const GridPoint& c) : corners{a, b, c}
    {
        if (Orientation(a, b, c) < 0) std::swap(corners[1], corners[2]);
        low = {std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
        high = {std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
    }

    bool Holds(const GridPoint& point) const { return MayMeet(point, point); }

    /// False only if no point of a box lies in the triangle; right for a single point.
    bool MayMeet(const GridPoint& boxLow, const GridPoint& boxHigh) const
    {
        if (boxLow.x > high.x || boxHigh.x < low.x || boxLow.y > high.y || boxHigh.y < low.y) return false;
        for (int i = 0; i < 3; ++i) {
            const GridPoint& from = corners[i];
            const GridPoint& to = corners[i < 2 ? i + 1 : 0];
            // The corner of the box that is furthest to the left of the side.
            const GridPoint corner{to.y > from.y ? boxLow.x : boxHigh.x, to.x > from.x ? boxHigh.y : boxLow.y};
            if (Orientation(from, to, corner) < 0) return false;
        }
        return true;
    }

private:
    GridPoint corners[3];
    GridPoint low, high;
};

/// A tree of the vertices that are left, halved in turn where they spread the widest (J. L. Bentley, 1975).
class VertexTree
{
public:
    explicit VertexTree(const std::vector<GridPoint>& vertices)
        : points(vertices), order(vertices.size()), places(vertices.size())
    {
        for (Index i = 0; i < order.size(); ++i) order[i] = i;
        if (!order.empty()) Build(0, static_cast<Index>(order.size()));
        for (Index i = 0; i < order.size(); ++i) places[order[i]] = i;
    }

    void Remove(Index vertex)
    {
        const Index place = places[vertex];
        Index first = 0;
        Index end = static_cast<Index>(order.size());
        for (Index node = 0;;) {
            --nodes[node].left;
            if (end - first <= leafSize) break;
            const Index middle = first + (end - first) / 2;
            if (place < middle) {
                node = node + 1;
                end = middle;
            } else {
                node = nodes[node].second;
                first = middle;
            }
        }
        order[place] = gone;
    }

    /// Whether a triangle holds a vertex other than these three.
    bool IsAnyIn(const Triangle& triangle, Index a, Index b, Index c) const
    {
        const Index own[3] = {a, b, c};
        return IsAnyIn(triangle, own, 0, 0, static_cast<Index>(order.size()));
    }

private:
    struct Node
    {
        GridPoint low, high;
        Index left;   ///< How many vertices.
        Index second; ///< The node of the second half; that of the first follows.
    };

    static constexpr Index leafSize = 8;
    static constexpr Index gone = ~Index(0);

    const std::vector<GridPoint>& points;
    std::vector<Index> order;
    std::vector<Index> places;
    std::vector<Node> nodes;

    void Build(Index first, Index end)
    {
        GridPoint low = points[order[first]];
        GridPoint high = low;
        for (Index i = first; i < end; ++i) {
            const GridPoint& point = points[order[i]];
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
        const std::size_t node = nodes.size();
        nodes.push_back({low, high, end - first, 0});
        if (end - first <= leafSize) return;
        const Index middle = first + (end - first) / 2;
        const bool isWide = high.x - low.x > high.y - low.y;
        std::nth_element(order.begin() + first, order.begin() + middle, order.begin() + end, [&](Index a, Index b) {
            const std::int64_t from = isWide ? points[a].x : points[a].y;
            const std::int64_t to = isWide ? points[b].x : points[b].y;
            return from != to ? from < to : a < b;
        });
        Build(first, middle);
        nodes[node].second = static_cast<Index>(nodes.size());
        Build(middle, end);
    }

    bool IsAnyIn(const Triangle& triangle, const Index* own, Index node, Index first, Index end) const
    {
        if (nodes[node].left == 0 || !triangle.MayMeet(nodes[node].low, nodes[node].high)) return false;
        if (end - first > leafSize) {
            const Index middle = first + (end - first) / 2;
            return IsAnyIn(triangle, own, node + 1, first, middle) ||
                   IsAnyIn(triangle, own, nodes[node].second, middle, end);
        }
        for (Index i = first; i < end; ++i) {
            const Index vertex = order[i];
            if (vertex == gone || vertex == own[0] || vertex == own[1] || vertex == own[2]) continue;
            if (triangle.Holds(points[vertex])) return true;
        }
        return false;
    }
};

class Simplifier
{
public:
    Simplifier(const std::vector<Ring>& rings, double greatest) : tolerance(greatest), points(Join(rings)), tree(points)
    {
        vertices.resize(points.size());
        Index first = 0;
        for (const Ring& ring : rings) {
            const Index size = static_cast<Index>(ring.size());
            for (Index i = 0; i < size; ++i)
                vertices[first + i] = {first + (i + size - 1) % size, first + (i + 1) % size,
                                       static_cast<Index>(sizes.size())};
            sizes.push_back(size);
            firsts.push_back(first);
            first += size;
        }
    }

    std::vector<Ring> Run()
    {
        std::vector<Index> waiting(points.size());
        for (Index i = 0; i < points.size(); ++i) waiting[i] = i;
        // What another vertex was in the way of may go once that has gone.
        for (bool isLess = true; isLess && !waiting.empty();) isLess = RunOnce(&waiting);
        return Collect();
    }

private:
    struct Vertex
    {
        Index previous, next;
        Index ring;
        Index version = 0; ///< Counts the changes of the neighbours.
        double error = 0;  ///< Of the edge that starts here.
        bool isGone = false;
    };

    struct Candidate
    {
        double cost;
        Index vertex;
        Index version;

        bool operator<(const Candidate& other) const
        {
            return cost != other.cost ? cost > other.cost : vertex > other.vertex;
        }
    };

    const double tolerance;
    const std::vector<GridPoint> points;
    VertexTree tree;
    std::vector<Vertex> vertices;
    std::vector<Index> sizes;  // of the rings
    std::vector<Index> firsts; // vertices of the rings
    std::priority_queue<Candidate> candidates;

    static std::vector<GridPoint> Join(const std::vector<Ring>& rings)
    {
        std::vector<GridPoint> all;
        for (const Ring& ring : rings) all.insert(all.end(), ring.begin(), ring.end());
        return all;
    }

    /// Takes out what can go, beginning with the waiting; leaves in their place those that others were in the way of.
    /// False if nothing went.
    bool RunOnce(std::vector<Index>* waiting)
    {
        for (const Index vertex : *waiting)
            if (!vertices[vertex].isGone) Propose(vertex);
        waiting->clear();
        bool isLess = false;
        while (!candidates.empty()) {
            const Candidate candidate = candidates.top();
            candidates.pop();
            const Vertex& vertex = vertices[candidate.vertex];
            if (vertex.isGone || vertex.version != candidate.version || sizes[vertex.ring] <= 3) continue;
            const Triangle triangle(points[vertex.previous], points[candidate.vertex], points[vertex.next]);
            if (tree.IsAnyIn(triangle, vertex.previous, candidate.vertex, vertex.next)) {
                waiting->push_back(candidate.vertex);
                continue;
            }
            TakeOut(candidate.vertex, candidate.cost);
            isLess = true;
        }
        return isLess;
    }

    void Propose(Index vertex)
    {
        const double cost = CostOf(vertex);
        if (cost <= tolerance) candidates.push({cost, vertex, vertices[vertex].version});
    }

    double CostOf(Index vertex) const
    {
        const Index from = vertices[vertex].previous;
        const Index to = vertices[vertex].next;
        const double height = std::sqrt(DistanceSquare(points[vertex], points[from], points[to]));
        const double bound = std::max(vertices[from].error, vertices[vertex].error) + height;
        if (bound <= tolerance || height > tolerance) return bound;
        const Index first = firsts[vertices[vertex].ring];
        const Index size = (vertices[vertex].ring + 1 < firsts.size() ? firsts[vertices[vertex].ring + 1]
                                                                      : static_cast<Index>(points.size())) -
                           first;
        if ((to + size - from) % size > longestStretch) return bound;
        double most = 0;
        for (Index i = from + 1 < first + size ? from + 1 : first; i != to; i = i + 1 < first + size ? i + 1 : first)
            most = std::max(most, DistanceSquare(points[i], points[from], points[to]));
        return std::sqrt(most);
    }

    void TakeOut(Index vertex, double cost)
    {
        Vertex& taken = vertices[vertex];
        taken.isGone = true;
        tree.Remove(vertex);
        --sizes[taken.ring];
        vertices[taken.previous].next = taken.next;
        vertices[taken.previous].error = cost;
        vertices[taken.next].previous = taken.previous;
        for (const Index neighbour : {taken.previous, taken.next}) {
            ++vertices[neighbour].version;
            Propose(neighbour);
        }
    }

    std::vector<Ring> Collect() const
    {
        std::vector<Ring> rings(sizes.size());
        for (Index i = 0; i < points.size(); ++i)
            if (!vertices[i].isGone) rings[vertices[i].ring].push_back(points[i]);
        return rings;
    }
};

} // namespace

std::vector<Ring> Simplify(const std::vector<Ring>& rings, double tolerance)
{
    return Simplifier(rings, tolerance).Run();
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

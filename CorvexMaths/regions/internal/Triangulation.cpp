#include <CorvexMaths/regions/internal/Triangulation.h>

#include <CorvexMaths/internal/HilbertCurve.h>
#include <CorvexMaths/internal/Signs.h>
#include <CorvexMaths/regions/internal/Predicates.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

// Vertices are inserted one by one into a Delaunay triangulation of a wide box (C. L. Lawson, 1977): in rounds of
// twice as many each time, drawn at random, so that no order of theirs makes for many flips, and in each round along
// a curve that fills the plane, so that each lies near the one before (N. Amenta, S. Choi and G. Rote, 2003). The
// edges of the outlines are then forced in by flips of the diagonals that they cross (S. W. Sloan, 1993), and the
// others flipped until they are Delaunay again. All decisions are exact; where four vertices lie on a circle the
// diagonal that is there stays. Insertion takes n log n time on average over the draws, whatever the points; the
// edges take linear time where few diagonals cross them, and at worst the square.

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

using Index = std::uint32_t;

class Mesh
{
public:
    explicit Mesh(const std::vector<Ring>& rings)
    {
        CollectPoints(rings);
        MakeBox();
        for (const Index point : InsertionOrder()) Insert(point);
        for (const Ring& ring : rings) {
            Index from = Find(ring.back());
            for (const GridPoint& point : ring) {
                const Index to = Find(point);
                Force(from, to);
                from = to;
            }
        }
        Restore();
    }

    std::vector<std::array<GridPoint, 3>> GetInside() const
    {
        std::vector<char> isInside(triangles.size(), 0);
        std::vector<Index> open;
        const auto enter = [&](Index triangle) {
            if (isInside[triangle]) return;
            isInside[triangle] = 1;
            open.push_back(triangle);
        };
        for (Index i = 0; i < triangles.size(); ++i)
            if (triangles[i].isRim[0] == Rim::Inside || triangles[i].isRim[1] == Rim::Inside ||
                triangles[i].isRim[2] == Rim::Inside)
                enter(i);
        while (!open.empty()) {
            const Triangle& triangle = triangles[open.back()];
            open.pop_back();
            for (int k = 0; k < 3; ++k)
                if (triangle.isRim[k] == Rim::None) enter(triangle.beyond[k]);
        }
        std::vector<std::array<GridPoint, 3>> inside;
        for (Index i = 0; i < triangles.size(); ++i)
            if (isInside[i]) {
                const Index* const corners = triangles[i].corners;
                inside.push_back({points[corners[0]], points[corners[1]], points[corners[2]]});
            }
        return inside;
    }

private:
    /// What the outlines say about a side of a triangle: whether it is an edge of theirs, and if so which face it is.
    enum class Rim : std::uint8_t
    {
        None,
        Inside,
        Outside
    };

    /// Counter-clockwise; side k is opposite to corner k.
    struct Triangle
    {
        Index corners[3];
        Index beyond[3];
        Rim isRim[3];
    };

    static constexpr Index none = ~Index(0);
    static constexpr int after[3] = {1, 2, 0};

    std::vector<GridPoint> points; ///< In canonical order, then the four corners of the box.
    Index inner = 0;               ///< How many there are without the box.
    std::vector<Triangle> triangles;
    std::vector<Index> triangleAt; ///< For each point a triangle that has it for a corner.
    std::vector<std::pair<Index, int>> doubtful;
    Index recent = 0;

    void CollectPoints(const std::vector<Ring>& rings)
    {
        for (const Ring& ring : rings) points.insert(points.end(), ring.begin(), ring.end());
        std::sort(points.begin(), points.end());
        points.erase(std::unique(points.begin(), points.end()), points.end());
        inner = static_cast<Index>(points.size());
    }

    Index Find(const GridPoint& point) const
    {
        return static_cast<Index>(std::lower_bound(points.begin(), points.begin() + inner, point) - points.begin());
    }

    GridPoint low, high;

    void MakeBox()
    {
        low = high = points.front();
        for (const GridPoint& point : points) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
        const std::int64_t margin = 2 + std::max(high.x - low.x, high.y - low.y) / 8;
        points.push_back({low.x - margin, low.y - margin});
        points.push_back({high.x + margin, low.y - margin});
        points.push_back({high.x + margin, high.y + margin});
        points.push_back({low.x - margin, high.y + margin});
        triangleAt.assign(points.size(), none);
        triangles.reserve(2 * points.size());
        Add({{inner, inner + 1, inner + 2}, {none, 1, none}, {}});
        Add({{inner, inner + 2, inner + 3}, {none, none, 0}, {}});
    }

    std::vector<Index> InsertionOrder() const
    {
        int shift = 0;
        while (std::max(high.x - low.x, high.y - low.y) >> shift > 0x7fffffff) ++shift;
        struct Entry
        {
            std::uint64_t place;
            Index point;
            int round;
        };
        std::vector<Entry> entries(inner);
        std::uint64_t random = 1;
        for (Index i = 0; i < inner; ++i) {
            random = random * 6364136223846793005u + 1442695040888963407u;
            int round = 0;
            for (std::uint64_t bits = random >> 33; round < 31 && (bits & 1) != 0; bits >>= 1) ++round;
            entries[i] = {
                GetHilbertPlace<31, std::uint64_t>(static_cast<std::uint32_t>((points[i].x - low.x) >> shift),
                                                   static_cast<std::uint32_t>((points[i].y - low.y) >> shift)),
                i, round};
        }
        std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
            if (a.round != b.round) return a.round > b.round;
            return a.place != b.place ? a.place < b.place : a.point < b.point;
        });
        std::vector<Index> order(inner);
        for (Index i = 0; i < inner; ++i) order[i] = entries[i].point;
        return order;
    }

    int Turn(Index a, Index b, Index c) const { return Orientation(points[a], points[b], points[c]); }

    /// Whether d lies in the circle through the counter-clockwise a, b, c.
    bool IsInCircle(Index a, Index b, Index c, Index d) const
    {
        const auto place = [this](Index i) -> Place {
            return {static_cast<double>(points[i].x - low.x), static_cast<double>(points[i].y - low.y)};
        };
        return InCircleSign(place(a), place(b), place(c), place(d)) > 0;
    }

    Index Add(const Triangle& triangle)
    {
        triangles.push_back(triangle);
        const Index added = static_cast<Index>(triangles.size() - 1);
        for (const Index corner : triangle.corners) triangleAt[corner] = added;
        return added;
    }

    /// The side of a triangle behind which another lies.
    int SideTo(Index triangle, Index neighbour) const
    {
        const Triangle& t = triangles[triangle];
        return t.beyond[0] == neighbour ? 0 : t.beyond[1] == neighbour ? 1 : 2;
    }

    int CornerOf(Index triangle, Index point) const
    {
        const Triangle& t = triangles[triangle];
        return t.corners[0] == point ? 0 : t.corners[1] == point ? 1 : 2;
    }

    void Relink(Index neighbour, Index from, Index to)
    {
        if (neighbour != none) triangles[neighbour].beyond[SideTo(neighbour, from)] = to;
    }

    /// Exchanges the diagonal of the two triangles at a side: a b c and d c b become a b d and a d c, under the
    /// numbers of the first and the second.
    void Flip(Index first, int side)
    {
        const Triangle t = triangles[first];
        const Index second = t.beyond[side];
        const Triangle u = triangles[second];
        const int b = after[side];
        const int c = after[b];
        const int d = SideTo(second, first);
        const int uc = after[d];
        const int ub = after[uc];
        triangles[first] = {{t.corners[side], t.corners[b], u.corners[d]},
                            {u.beyond[uc], second, t.beyond[c]},
                            {u.isRim[uc], Rim::None, t.isRim[c]}};
        triangles[second] = {{t.corners[side], u.corners[d], t.corners[c]},
                             {u.beyond[ub], t.beyond[b], first},
                             {u.isRim[ub], t.isRim[b], Rim::None}};
        Relink(u.beyond[uc], second, first);
        Relink(t.beyond[b], first, second);
        triangleAt[t.corners[side]] = triangleAt[t.corners[b]] = triangleAt[u.corners[d]] = first;
        triangleAt[t.corners[c]] = second;
    }

    /// The triangle in which or on whose side a point lies, by a walk from the one before. In a Delaunay
    /// triangulation it cannot go round in circles.
    Index Locate(Index point) const
    {
        Index triangle = recent;
        for (;;) {
            const Triangle& t = triangles[triangle];
            int side = 0;
            while (side < 3 && Turn(t.corners[after[side]], t.corners[after[after[side]]], point) >= 0) ++side;
            if (side == 3) return triangle;
            triangle = t.beyond[side];
        }
    }

    /// Splits the triangle of a point into three. One that the point makes flat, lying on its side, is flipped away.
    void Insert(Index point)
    {
        const Index first = Locate(point);
        const Triangle t = triangles[first];
        const Index second = static_cast<Index>(triangles.size());
        const Index third = second + 1;
        triangles[first] = {{point, t.corners[1], t.corners[2]}, {t.beyond[0], second, third}, {}};
        Add({{point, t.corners[2], t.corners[0]}, {t.beyond[1], third, first}, {}});
        Add({{point, t.corners[0], t.corners[1]}, {t.beyond[2], first, second}, {}});
        triangleAt[t.corners[1]] = triangleAt[t.corners[2]] = first;
        Relink(t.beyond[1], first, second);
        Relink(t.beyond[2], first, third);
        for (const Index triangle : {first, second, third}) doubtful.emplace_back(triangle, 0);
        while (!doubtful.empty()) {
            const Index triangle = doubtful.back().first;
            doubtful.pop_back();
            const Triangle& around = triangles[triangle];
            const Index neighbour = around.beyond[0];
            if (neighbour == none) continue;
            const Index opposite = triangles[neighbour].corners[SideTo(neighbour, triangle)];
            if (Turn(point, around.corners[1], around.corners[2]) == 0 ||
                IsInCircle(point, around.corners[1], around.corners[2], opposite))
            {
                Flip(triangle, 0);
                doubtful.emplace_back(triangle, 0);
                doubtful.emplace_back(neighbour, 0);
            }
        }
        recent = triangleAt[point];
    }

    /// Makes the way between two points a side, and notes that the inside lies on its left. Points that lie on the
    /// way divide it.
    void Force(Index from, Index to)
    {
        while (from != to) {
            std::vector<Index> strip;
            const Index reached = FindStrip(from, to, &strip);
            while (strip.size() > 1) PassStrip(from, reached, &strip);
            Mark(from, reached);
            from = reached;
        }
    }

    /// Collects the triangles through which the way leads from a point towards another, up to the first point on it;
    /// none if that is a neighbour.
    Index FindStrip(Index from, Index to, std::vector<Index>* strip) const
    {
        Index triangle = triangleAt[from];
        int corner = CornerOf(triangle, from);
        // Turns round the point until the way leads through the triangle or along its first side.
        for (;;) {
            const Triangle& t = triangles[triangle];
            const Index right = t.corners[after[corner]];
            const Index left = t.corners[after[after[corner]]];
            const int rightTurn = Turn(from, to, right);
            if (rightTurn == 0 && IsAhead(from, to, right)) return right;
            if (rightTurn < 0 && Turn(from, to, left) > 0) break;
            triangle = t.beyond[after[corner]];
            corner = CornerOf(triangle, from);
        }
        strip->push_back(triangle);
        int side = corner;
        for (;;) {
            const Index next = triangles[triangle].beyond[side];
            const int entry = SideTo(next, triangle);
            strip->push_back(next);
            const Index ahead = triangles[next].corners[entry];
            const int turn = Turn(from, to, ahead);
            if (turn == 0) return ahead;
            // The corner after the one ahead is on the left; it is left behind if the one ahead is on the left too.
            side = turn > 0 ? after[entry] : after[after[entry]];
            triangle = next;
        }
    }

    bool IsAhead(Index from, Index to, Index point) const
    {
        const GridPoint& a = points[from];
        const GridPoint& b = points[to];
        const GridPoint& c = points[point];
        return SignOf(WideProduct(b.x - a.x, c.x - a.x) + WideProduct(b.y - a.y, c.y - a.y)) > 0;
    }

    /// Flips what diagonals of the strip can be flipped, once along it, and drops the triangles that the way then no
    /// longer crosses. The last one that is left has the way for a side, or its neighbour has.
    void PassStrip(Index from, Index to, std::vector<Index>* strip)
    {
        std::size_t kept = 0;
        std::vector<Index>& s = *strip;
        for (std::size_t i = 1; i < s.size(); ++i) {
            const Index first = s[kept];
            const Index second = s[i];
            const int side = SideTo(first, second);
            const Index a = triangles[first].corners[side];
            const Index b = triangles[first].corners[after[side]];
            const Index c = triangles[first].corners[after[after[side]]];
            const Index d = triangles[second].corners[SideTo(second, first)];
            if (Turn(a, b, d) <= 0 || Turn(a, d, c) <= 0) {
                s[++kept] = second;
                continue;
            }
            Flip(first, side);
            // Now a b d and a d c. Which of them does the way lead through?
            const int aTurn = Turn(from, to, a);
            const int dTurn = Turn(from, to, d);
            if (aTurn * dTurn < 0) {
                const bool isFirstNext = kept > 0 && IsNeighbour(s[kept - 1], first);
                s[kept] = isFirstNext ? first : second;
                s[++kept] = isFirstNext ? second : first;
            } else if (aTurn == 0 && dTurn == 0) {
                s[kept] = first;
            } else {
                const bool isLeft = aTurn > 0 || dTurn > 0;
                s[kept] = (Turn(from, to, b) < 0) == isLeft ? first : second;
            }
        }
        s.resize(kept + 1);
    }

    bool IsNeighbour(Index triangle, Index other) const
    {
        const Triangle& t = triangles[triangle];
        return t.beyond[0] == other || t.beyond[1] == other || t.beyond[2] == other;
    }

    /// Marks the side between two neighbours on both faces.
    void Mark(Index from, Index to)
    {
        Index triangle = triangleAt[from];
        int corner = CornerOf(triangle, from);
        while (triangles[triangle].corners[after[corner]] != to) {
            triangle = triangles[triangle].beyond[after[corner]];
            corner = CornerOf(triangle, from);
        }
        const int side = after[after[corner]];
        const Index outside = triangles[triangle].beyond[side];
        triangles[triangle].isRim[side] = Rim::Inside;
        triangles[outside].isRim[SideTo(outside, triangle)] = Rim::Outside;
    }

    /// Flips until all sides but those of the outlines are Delaunay.
    void Restore()
    {
        for (Index i = 0; i < triangles.size(); ++i)
            for (int side = 0; side < 3; ++side)
                if (triangles[i].beyond[side] > i) doubtful.emplace_back(i, side);
        while (!doubtful.empty()) {
            const Index triangle = doubtful.back().first;
            const int side = doubtful.back().second;
            doubtful.pop_back();
            const Triangle& t = triangles[triangle];
            const Index neighbour = t.beyond[side];
            if (neighbour == none || t.isRim[side] != Rim::None) continue;
            const Index opposite = triangles[neighbour].corners[SideTo(neighbour, triangle)];
            if (!IsInCircle(t.corners[0], t.corners[1], t.corners[2], opposite)) continue;
            Flip(triangle, side);
            doubtful.insert(doubtful.end(), {{triangle, 0}, {triangle, 2}, {neighbour, 0}, {neighbour, 1}});
        }
    }
};

} // namespace

std::vector<std::array<GridPoint, 3>> Triangulate(const std::vector<Ring>& rings)
{
    if (rings.empty()) return {};
    return Mesh(rings).GetInside();
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

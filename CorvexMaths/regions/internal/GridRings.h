#pragma once

/// Outlines brought to a common grid. Internal.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/regions/TRegion.h>
#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/Grid.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Takes everything twice: first its extent, for the grid, then its points.
class GridRings
{
public:
    /// The rings so far.
    std::vector<Ring> rings;

    template <class T>
    void Measure(const TPolygon<T, TVector2>& outline)
    {
        for (unsigned int i = 0; i < outline.GetCount(); ++i)
            Extend(static_cast<double>(outline[i].x), static_cast<double>(outline[i].y));
    }

    void Measure(const OutlineSet& set, const Grid& from)
    {
        coarsest = std::max(coarsest, from.GetExponent());
        for (const Ring& ring : set.rings)
            for (const GridPoint& p : ring) Extend(from.FromGrid(p.x), from.FromGrid(p.y));
    }

    /// The grid for all that was measured: fine enough for its extent, but not finer than those of sets.
    Grid GetGrid() const
    {
        const double size = std::max(std::max(Numbers::Absolute(lowX), Numbers::Absolute(highX)),
                                     std::max(Numbers::Absolute(lowY), Numbers::Absolute(highY)));
        if (!(lowX <= highX) || !isFinite) return Grid();
        return Grid(std::max(coarsest, Grid::For(size, std::max(highX - lowX, highY - lowY)).GetExponent()));
    }

    template <class T>
    void Add(const TPolygon<T, TVector2>& outline)
    {
        if (!isFinite || outline.GetCount() < 3) return;
        hasOutline = true;
        const Grid grid = GetGrid();
        Ring ring(outline.GetCount());
        double x[2] = {infinity, -infinity};
        double y[2] = {infinity, -infinity};
        for (unsigned int i = 0; i < outline.GetCount(); ++i) {
            const double px = static_cast<double>(outline[i].x);
            const double py = static_cast<double>(outline[i].y);
            x[0] = std::min(x[0], px);
            x[1] = std::max(x[1], px);
            y[0] = std::min(y[0], py);
            y[1] = std::max(y[1], py);
            ring[i] = GridPoint{grid.ToGrid(px), grid.ToGrid(py)};
        }
        const bool isWide = x[0] < x[1] && y[0] < y[1];
        if (isWide && (grid.ToGrid(x[0]) == grid.ToGrid(x[1]) || grid.ToGrid(y[0]) == grid.ToGrid(y[1])))
            hasVanished = true;
        rings.push_back(std::move(ring));
    }

    /// Adds clean outlines; where they had to be rounded again they are clean once more.
    void Add(const OutlineSet& set, const Grid& from)
    {
        const Grid grid = GetGrid();
        if (!isFinite) return;
        hasOutline = true;
        if (grid == from) {
            rings.insert(rings.end(), set.rings.begin(), set.rings.end());
            return;
        }
        std::vector<Ring> moved = set.rings;
        bool isExact = true;
        for (Ring& ring : moved) {
            for (GridPoint& p : ring) {
                const GridPoint q{grid.ToGrid(from.FromGrid(p.x)), grid.ToGrid(from.FromGrid(p.y))};
                isExact =
                    isExact && grid.FromGrid(q.x) == from.FromGrid(p.x) && grid.FromGrid(q.y) == from.FromGrid(p.y);
                p = q;
            }
            const auto isLeft = [](const GridPoint& p, const GridPoint& q) { return p.x < q.x; };
            const auto isLower = [](const GridPoint& p, const GridPoint& q) { return p.y < q.y; };
            const auto width = std::minmax_element(ring.begin(), ring.end(), isLeft);
            const auto height = std::minmax_element(ring.begin(), ring.end(), isLower);
            if (width.first->x == width.second->x || height.first->y == height.second->y) hasVanished = true;
        }
        if (!isExact) moved = Arrange(moved, WindingRule::Positive).rings;
        std::move(moved.begin(), moved.end(), std::back_inserter(rings));
    }

    RegionStatus GetStatus() const
    {
        if (!isFinite) return RegionStatus::NotFinite;
        if (!hasOutline) return RegionStatus::TooFewPoints;
        return hasVanished ? RegionStatus::Vanished : RegionStatus::Done;
    }

private:
    static constexpr double infinity = std::numeric_limits<double>::infinity();
    /// Beyond, a sum of a few coordinates might not be finite.
    static constexpr double greatest = 0x1p1020;

    void Extend(double x, double y)
    {
        // Written so that NaN fails.
        if (!(Numbers::Absolute(x) <= greatest && Numbers::Absolute(y) <= greatest)) isFinite = false;
        lowX = std::min(lowX, x);
        highX = std::max(highX, x);
        lowY = std::min(lowY, y);
        highY = std::max(highY, y);
    }

    double lowX = infinity, highX = -infinity, lowY = infinity, highY = -infinity;
    int coarsest = std::numeric_limits<int>::min();
    bool isFinite = true;
    bool hasOutline = false;
    bool hasVanished = false;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

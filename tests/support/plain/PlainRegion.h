#pragma once

/// What a region must be, one edge or one pair of edges at a time, by exact signs.

#include <CorvexMaths/regions/TRegion.h>
#include <CorvexMaths/robust/Predicates.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace CorvexTest
{

using Halmont::Orrin::CorvexMaths::TPolygon;
using Halmont::Orrin::CorvexMaths::TRegion;
using Halmont::Orrin::CorvexMaths::TVector2;
using Halmont::Orrin::CorvexMaths::WindingRule;

using PlainRim = std::vector<TPolygon<double, TVector2>>;

struct PlainSide
{
    TVector2<double> a, b;
};

inline std::vector<PlainSide> PlainSides(const PlainRim& rim)
{
    std::vector<PlainSide> sides;
    for (const auto& outline : rim)
        for (unsigned int i = 0; i < outline.GetCount(); ++i)
            sides.push_back({outline[i], outline[(i + 1) % outline.GetCount()]});
    return sides;
}

inline int Turn(const TVector2<double>& a, const TVector2<double>& b, const TVector2<double>& c)
{
    return Halmont::Orrin::CorvexMaths::Robust::Predicates<double>::Orientation(a, b, c);
}

inline bool IsOn(const PlainSide& side, const TVector2<double>& p)
{
    const auto& [a, b] = side;
    return p.x >= std::min(a.x, b.x) && p.x <= std::max(a.x, b.x) && p.y >= std::min(a.y, b.y) &&
           p.y <= std::max(a.y, b.y) && Turn(a, b, p) == 0;
}

/// Whether a point is farther than a distance from all sides, as far as `double` can tell.
inline bool IsClear(const PlainRim& rim, const TVector2<double>& p, double distance)
{
    for (const auto& [a, b] : PlainSides(rim)) {
        const double dx = b.x - a.x, dy = b.y - a.y, width = distance * (std::fabs(dx) + std::fabs(dy));
        const bool isApart = std::min(a.x, b.x) - p.x > distance || p.x - std::max(a.x, b.x) > distance ||
                             std::min(a.y, b.y) - p.y > distance || p.y - std::max(a.y, b.y) > distance;
        // Written so that what overflowed is not clear.
        if (!isApart && !(std::fabs(dx * (p.y - a.y) - dy * (p.x - a.x)) > width && width > 0)) return false;
    }
    return true;
}

/// The distance of a point from the nearest of some sides, as `double` has it.
inline double PlainDistance(const std::vector<PlainSide>& sides, const TVector2<double>& p)
{
    double least = HUGE_VAL;
    for (const auto& [a, b] : sides) {
        const double x = b.x - a.x, y = b.y - a.y, square = x * x + y * y;
        const double along = square > 0 ? std::clamp(((p.x - a.x) * x + (p.y - a.y) * y) / square, 0.0, 1.0) : 0;
        least = std::min(least, std::hypot(p.x - a.x - along * x, p.y - a.y - along * y));
    }
    return least;
}

/// How often outlines go round a point; sets a flag where it is on one of them.
inline int PlainWindingNumber(const PlainRim& rim, const TVector2<double>& p, bool* isOnRim)
{
    int number = 0;
    for (const PlainSide& side : PlainSides(rim)) {
        if (IsOn(side, p)) *isOnRim = true;
        if (side.a.y <= p.y && side.b.y > p.y && Turn(side.a, side.b, p) > 0) ++number;
        if (side.b.y <= p.y && side.a.y > p.y && Turn(side.a, side.b, p) < 0) --number;
    }
    return number;
}

inline bool IsInsideBy(WindingRule rule, int number)
{
    return rule == WindingRule::EvenOdd ? number % 2 != 0 : rule == WindingRule::Positive ? number > 0 : number != 0;
}

/// The turn at the first vertex, which is extreme.
inline int GetSense(const TPolygon<double, TVector2>& outline)
{
    return Turn(outline[outline.GetCount() - 1], outline[0], outline[1]);
}

/// What is wrong with one of two sides of a region beside the other.
inline const char* FindFault(const PlainSide& e, const PlainSide& f)
{
    const auto isApart = [](double a, double b, double c, double d) {
        return std::max(a, b) < std::min(c, d) || std::max(c, d) < std::min(a, b);
    };
    if (isApart(e.a.x, e.b.x, f.a.x, f.b.x) || isApart(e.a.y, e.b.y, f.a.y, f.b.y)) return "";
    if ((e.a == f.a && e.b == f.b) || (e.a == f.b && e.b == f.a)) return "overlap";
    if ((f.a != e.a && f.a != e.b && IsOn(e, f.a)) || (e.a != f.a && e.a != f.b && IsOn(f, e.a)))
        return "vertex inside an edge";
    if (Turn(e.a, e.b, f.a) * Turn(e.a, e.b, f.b) < 0 && Turn(f.a, f.b, e.a) * Turn(f.a, f.b, e.b) < 0)
        return "crossing";
    return "";
}

/// What is wrong with the outlines of a region; empty if nothing is.
inline std::string FindFault(const TRegion<double>& region)
{
    const PlainRim rim = region.GetOutlines();
    const auto isBefore = [](const auto& p, const auto& q) { return p.y != q.y ? p.y < q.y : p.x < q.x; };
    for (const auto& outline : rim) {
        std::vector<TVector2<double>> points(outline.GetStream(), outline.GetStream() + outline.GetCount());
        if (std::min_element(points.begin(), points.end(), isBefore) != points.begin()) return "start";
        std::sort(points.begin(), points.end(), isBefore);
        if (points.size() < 3 || std::adjacent_find(points.begin(), points.end()) != points.end()) return "vertices";
    }
    const std::vector<PlainSide> sides = PlainSides(rim);
    for (std::size_t i = 0; i < sides.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (*FindFault(sides[i], sides[j]) != 0) return FindFault(sides[i], sides[j]);
    std::size_t outlineCount = 0;
    for (const auto& piece : region.GetPieces()) {
        outlineCount += 1 + piece.holes.size();
        if (GetSense(piece.outline) <= 0) return "sense of an outer outline";
        for (const auto& hole : piece.holes) {
            if (GetSense(hole) >= 0) return "sense of a hole";
            for (unsigned int i = 0; i < hole.GetCount(); ++i) {
                bool isOnRim = false;
                if (PlainWindingNumber({piece.outline}, hole[i], &isOnRim) != 1 && !isOnRim) return "hole outside";
            }
        }
    }
    return outlineCount == rim.size() ? "" : "pieces";
}

} // namespace CorvexTest

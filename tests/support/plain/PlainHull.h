#pragma once

/// The polar order behind convex hulls, one vertex at a time and sorted by the standard sort.

#include <CorvexMaths/CorvexMaths.h>

#include <cmath>
#include <vector>

namespace CorvexTest
{

/// The pairs of angle and vertex that TPolygon::MakeConvexHull leaves.
template <class T, class Vector>
Halmont::Orrin::CorvexUtilities::TList<Halmont::Orrin::CorvexUtilities::TPair<T, Vector>>
PlainPolarOrder(const std::vector<Vector>& vertices)
{
    std::size_t lowest = 0;
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        const Vector &best = vertices[lowest], &vertex = vertices[i];
        if (best.y > vertex.y || (best.y == vertex.y && best.x > vertex.x)) lowest = i;
    }
    Halmont::Orrin::CorvexUtilities::TList<Halmont::Orrin::CorvexUtilities::TPair<T, Vector>> pairs;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (i == lowest) continue;
        const T x = vertices[i].x - vertices[lowest].x, y = vertices[i].y - vertices[lowest].y;
        const T length = std::sqrt(x * x + y * y);
        T angle = 0;
        if (length != 0) {
            T cosine = x / length;
            if (cosine > 1) cosine = 1;
            if (cosine < -1) cosine = -1;
            angle = static_cast<T>(std::acos(static_cast<double>(cosine)));
            if (y < 0) angle = static_cast<T>(6.283185307179586) - angle;
        }
        pairs.Add({angle, vertices[i]});
    }
    pairs.Sort();
    return pairs;
}

} // namespace CorvexTest

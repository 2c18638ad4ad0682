#pragma once

/// The growth of an outline through a cloud in its plain form: all distances afresh for each insertion, through the
/// public test of edges.

#include <tests/support/plain/PlainCrossings.h>

#include <algorithm>

namespace CorvexTest
{

/// The outline that TPolygon::ReorderCEC makes of points and their hull, crossings and all.
template <class T>
PlainOutline<T> PlainGrowOutline(PlainOutline<T> outline, const PlainOutline<T>& points)
{
    PlainOutline<T> rest;
    for (const auto& point : points)
        if (std::find(outline.begin(), outline.end(), point) == outline.end()) rest.push_back(point);
    outline.push_back(outline[0]);
    const auto unit = [](auto v) { return v.Normalise(), v; };
    while (!rest.empty()) {
        T best = static_cast<T>(3.4028234663852886e+38f);
        auto point = rest.begin();
        std::size_t position = 0;
        bool isAtCorner = false;
        for (auto p = rest.begin(); p != rest.end(); ++p) {
            for (std::size_t j = 1; j < outline.size(); ++j) {
                bool isWithin = false, isBefore = false;
                const Halmont::Orrin::CorvexMaths::TEdge2<T> side(outline[j - 1], outline[j]);
                const T distance = side.DistanceToPoint(*p, &isWithin, &isBefore);
                if (!(best > distance)) continue;
                best = distance;
                point = p;
                isAtCorner = !isWithin;
                position = isAtCorner && isBefore ? j - 1 : j;
            }
        }
        if (position == 0) position = outline.size() - 1;
        const auto &a = outline[position - 1], &b = outline[position];
        const std::size_t next = position + 1 == outline.size() ? 1 : position + 1;
        const auto s = unit(b - a) + unit(b - outline[next]), w = *point - b;
        if (isAtCorner && w.y * s.x - w.x * s.y < 0) position = next;
        outline.insert(outline.begin() + static_cast<std::ptrdiff_t>(position), *point);
        rest.erase(point);
    }
    outline.pop_back();
    return outline;
}

} // namespace CorvexTest

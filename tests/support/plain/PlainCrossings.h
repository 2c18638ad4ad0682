#pragma once

/// The plain forms of the searches behind the reshaping of polygons: one pair at a time, through the public tests of
/// edges and lines. The library's faster forms must give the same bits.

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace CorvexTest
{

using Halmont::Orrin::CorvexMaths::TEdge2;

template <class T>
using PlainOutline = std::vector<Halmont::Orrin::CorvexMaths::TVector2<T>>;

template <class T>
std::vector<TEdge2<T>> PlainEdges(const PlainOutline<T>& outline)
{
    std::vector<TEdge2<T>> edges;
    for (std::size_t i = 0; i < outline.size(); ++i) edges.emplace_back(outline[i], outline[(i + 1) % outline.size()]);
    return edges;
}

/// TPolygon::TrimCrossings.
template <class T>
PlainOutline<T> PlainTrimCrossings(const PlainOutline<T>& outline)
{
    const auto edges = PlainEdges(outline);
    const std::size_t count = edges.size();
    PlainOutline<T> result = {outline[0]};
    for (std::size_t i = 0, next; i < count; i = next) {
        double nearest = 3.4028234663852886e+38;
        next = i + 1;
        auto best = edges[i].Vertex[1], point = best;
        for (std::size_t j = i + 2; j < (i == 0 ? count - 1 : count); ++j) {
            if (!edges[i].GetLine().IntersectWith(edges[j].GetLine(), &point, static_cast<T>(1e-6f))) continue;
            if (!edges[i].IsWithin(point) || !edges[j].IsWithin(point)) continue;
            const double distance = static_cast<double>((point - edges[i].Vertex[0]).GetLength());
            if (!(nearest > distance)) continue;
            nearest = distance;
            next = j;
            best = point;
        }
        result.push_back(best);
    }
    if (static_cast<double>((result.back() - result.front()).GetLengthSquared()) < 1e-8) result.pop_back();
    return result;
}

/// TPolygon::RemoveDuplicateVertices; each removed vertex is appended to `removed`.
template <class T>
PlainOutline<T> PlainRemoveDuplicates(PlainOutline<T> outline, PlainOutline<T>* removed)
{
    const auto isNear = [](T a, T b) { return a == b || std::fabs(a - b) <= static_cast<T>(1e-6f); };
    for (auto i = outline.begin(); i != outline.end(); ++i)
        for (auto j = i + 1; j != outline.end();) {
            const bool isRepeat = isNear(i->x, j->x) && isNear(i->y, j->y);
            if (isRepeat) removed->push_back(*j);
            j = isRepeat ? outline.erase(j) : j + 1;
        }
    return outline;
}

/// TPolygon::MakeSimplePolygon of vertices that hold no duplicates; returns whether 40 of its passes, which have no
/// limit there, suffice.
template <template <class> class V, class T>
bool PlainMakeSimple(std::vector<V<T>>* vertices)
{
    auto& p = *vertices;
    p.push_back(p.front());
    const auto sideAt = [&p](std::size_t i) { return TEdge2<T>(p[i - 1].x, p[i - 1].y, p[i].x, p[i].y); };
    bool isChanged = true;
    for (unsigned int pass = 0; isChanged && pass < 40; ++pass) {
        isChanged = false;
        for (std::size_t k = 1; k + 2 < p.size(); ++k)
            for (std::size_t j = k + 2; j < p.size(); ++j) {
                const TEdge2<T> side = sideAt(k), other = sideAt(j);
                const auto isEnd = [&other](const auto& v) { return v == other.Vertex[0] || v == other.Vertex[1]; };
                if (isEnd(side.Vertex[0]) || isEnd(side.Vertex[1])) continue;
                if (!side.Intersects(other, static_cast<T>(1e-6f), static_cast<T>(1e-6f))) continue;
                std::swap(p[k], p[j - 1]);
                isChanged = true;
            }
    }
    p.pop_back();
    return !isChanged;
}

/// TPolygon::SimplifySection.
template <class T>
void PlainSimplifySection(const PlainOutline<T>& outline, std::size_t first, std::size_t last, T tolerance, bool* keep)
{
    if (first + 1 == last) return;
    T best = -1;
    std::size_t bestIndex = first;
    for (std::size_t i = first + 1; i < last; ++i) {
        const T distance = TEdge2<T>(outline[first], outline[last]).DistanceToPoint(outline[i], nullptr, nullptr);
        if (distance > best) bestIndex = i;
        if (distance > best) best = distance;
    }
    if (!(tolerance < best)) return std::fill(keep + first + 1, keep + last, false);
    PlainSimplifySection(outline, first, bestIndex, tolerance, keep);
    PlainSimplifySection(outline, bestIndex, last, tolerance, keep);
}

} // namespace CorvexTest

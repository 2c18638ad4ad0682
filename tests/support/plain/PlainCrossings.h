#pragma once

/// The plain forms of the searches behind the reshaping of polygons: one pair at a time, through the public tests of
/// edges and lines. The library's faster forms must give the same bits.

#include <CorvexMaths/CorvexMaths.h>

#include <cmath>
#include <vector>

namespace CorvexTest
{

template <class T>
using PlainOutline = std::vector<Halmont::Orrin::CorvexMaths::TVector2<T>>;

template <class T>
std::vector<Halmont::Orrin::CorvexMaths::TEdge2<T>> PlainEdges(const PlainOutline<T>& outline)
{
    std::vector<Halmont::Orrin::CorvexMaths::TEdge2<T>> edges;
    for (std::size_t i = 0; i < outline.size(); ++i) edges.emplace_back(outline[i], outline[(i + 1) % outline.size()]);
    return edges;
}

/// TPolygon::TrimCrossings.
template <class T>
PlainOutline<T> PlainTrimCrossings(const PlainOutline<T>& outline)
{
    const T tolerance = static_cast<T>(1e-6f);
    const auto edges = PlainEdges(outline);
    const std::size_t count = edges.size();
    PlainOutline<T> result = {edges[0].Vertex[0]};
    for (std::size_t i = 0; i < count;) {
        double best = 3.4028234663852886e+38;
        std::size_t bestIndex = count;
        Halmont::Orrin::CorvexMaths::TVector2<T> bestPoint, point;
        for (std::size_t j = i + 2; j < count; ++j) {
            if (i == 0 && j == count - 1) continue;
            if (!edges[i].GetLine().IntersectWith(edges[j].GetLine(), &point, tolerance)) continue;
            if (!edges[i].IsWithin(point) || !edges[j].IsWithin(point)) continue;
            const double distance = static_cast<double>((point - edges[i].Vertex[0]).GetLength());
            if (best > distance) {
                best = distance;
                bestIndex = j;
                bestPoint = point;
            }
        }
        const bool isFound = bestIndex != count;
        result.push_back(isFound ? bestPoint : edges[i].Vertex[1]);
        i = isFound ? bestIndex : i + 1;
    }
    if (static_cast<double>((result.back() - result.front()).GetLengthSquared()) < 1e-8) result.pop_back();
    return result;
}

/// TPolygon::RemoveDuplicateVertices; each removed vertex is appended to `removed`.
template <class T>
PlainOutline<T> PlainRemoveDuplicates(PlainOutline<T> outline, PlainOutline<T>* removed)
{
    const T tolerance = static_cast<T>(1e-6f);
    const auto isNear = [tolerance](T a, T b) { return a == b || std::fabs(a - b) <= tolerance; };
    for (std::size_t i = 0; i + 1 < outline.size(); ++i) {
        for (std::size_t j = i + 1; j < outline.size();) {
            if (isNear(outline[i].x, outline[j].x) && isNear(outline[i].y, outline[j].y)) {
                removed->push_back(outline[j]);
                outline.erase(outline.begin() + static_cast<std::ptrdiff_t>(j));
            } else {
                ++j;
            }
        }
    }
    return outline;
}

/// TPolygon::SimplifySection.
template <class T>
void PlainSimplifySection(const PlainOutline<T>& outline, std::size_t first, std::size_t last, T tolerance, bool* keep)
{
    if (first + 1 == last) return;
    const Halmont::Orrin::CorvexMaths::TEdge2<T> chord(outline[first], outline[last]);
    T best = -1;
    std::size_t bestIndex = first;
    for (std::size_t i = first + 1; i < last; ++i) {
        const T distance = chord.DistanceToPoint(outline[i], nullptr, nullptr);
        if (distance > best) {
            best = distance;
            bestIndex = i;
        }
    }
    if (!(tolerance < best)) {
        for (std::size_t i = first + 1; i < last; ++i) keep[i] = false;
        return;
    }
    PlainSimplifySection(outline, first, bestIndex, tolerance, keep);
    PlainSimplifySection(outline, bestIndex, last, tolerance, keep);
}

/// The turn of a raw offset outline to its first vertex at the distance from the source; empty if there is none.
template <class T>
PlainOutline<T> PlainReorderOffset(const PlainOutline<T>& raw,
                                   const std::vector<Halmont::Orrin::CorvexMaths::TEdge2<T>>& source, T distance)
{
    for (std::size_t start = 0; start < raw.size(); ++start) {
        T nearest = static_cast<T>(3.4028234663852886e+38f);
        for (const auto& edge : source) {
            bool isWithin = false;
            const T toEdge = edge.DistanceToPoint(raw[start], &isWithin, nullptr);
            if (isWithin && nearest > toEdge) {
                nearest = toEdge;
                continue;
            }
            for (const auto& end : edge.Vertex) {
                const T toEnd = (raw[start] - end).GetLength();
                if (nearest > toEnd) nearest = toEnd;
            }
        }
        if (static_cast<double>(std::fabs(nearest - std::fabs(distance))) < 1e-6) {
            PlainOutline<T> result(raw.begin() + static_cast<std::ptrdiff_t>(start), raw.end());
            result.insert(result.end(), raw.begin(), raw.begin() + static_cast<std::ptrdiff_t>(start));
            return result;
        }
    }
    return {};
}

} // namespace CorvexTest

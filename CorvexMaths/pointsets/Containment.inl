#pragma once

/// Point sets as closed outlines in the x-y plane: containment by crossing count, and where an edge meets the outline.
///
/// A point is inside unless the scores of all segments add up to 0. What counts on the outline itself follows from the
/// comparisons in CrossesLevel and ScoresAhead: but for rounding, a side that rises or falls scores 1 for its own
/// points. So on a convex outline the points of these sides are inside if it runs clockwise and outside if it runs
/// counter-clockwise; those between the ends of level sides are inside either way.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

using namespace Kernels;

// A value is a scalar of T or a register of them, of as many segments side by side.

/// Whether a segment crosses the level 0, given the heights of its ends above it. A start on the level counts, an end
/// does not.
template <class T, class Value>
inline auto CrossesLevel(Value fromHeight, Value toHeight)
{
    return ((fromHeight <= T(0)) & (toHeight > T(0))) | ((toHeight < T(0)) & (fromHeight >= T(0)));
}

/// Whether a segment that crosses the level of a point at x scores 1 for it and not -1: a falling one does where its
/// crossing has an x not below that of the point, a rising one where it has one not above. A crossing that is not a
/// number scores -1.
template <class T, class Value>
inline auto ScoresAhead(Value fromX, Value toX, Value fromHeight, Value toHeight, T x)
{
    const Value rise = toHeight - fromHeight;
    const auto falls = rise < T(0);
    const Value fromSize = fromHeight < T(0) ? -fromHeight : fromHeight;
    const Value riseSize = falls ? -rise : rise;
    const Value place = (fromSize / riseSize) * (toX - fromX) + fromX;
    return falls ? place >= x : x >= place;
}

/// Consecutive segments side by side in lanes: the heights of their ends above the level.
template <class T, unsigned int components>
struct SegmentLanes
{
    BaselineLanes<T> fromHeight;
    BaselineLanes<T> toHeight;

    SegmentLanes(const T* values, T y)
        : fromHeight(GatherLanes<T, components>(values + 1) - y),
          toHeight(GatherLanes<T, components>(values + components + 1) - y)
    {}

    /// The scores, 0 where a segment does not cross.
    BaselineMask<T> Scores(const T* values, T x) const
    {
        const BaselineLanes<T> fromX = GatherLanes<T, components>(values);
        const BaselineLanes<T> toX = GatherLanes<T, components>(values + components);
        const BaselineMask<T> ahead = ScoresAhead(fromX, toX, fromHeight, toHeight, x);
        return CrossesLevel<T>(fromHeight, toHeight) & ((ahead & 2) - 1);
    }
};

/// How many vectors of segments are looked at before any is scored.
constexpr unsigned int vectorsPerBlock = 8;

/// Whether any segment of a block crosses the level.
template <class T, unsigned int components>
inline bool BlockCrosses(const T* values, T y)
{
    BaselineMask<T> crossing = {};
    for (unsigned int i = 0; i < vectorsPerBlock; ++i) {
        const SegmentLanes<T, components> segments(values + i * baselineCount<T> * components, y);
        crossing |= CrossesLevel<T>(segments.fromHeight, segments.toHeight);
    }
    return AnyLane(crossing);
}

/// The sum of the scores round the closed outline of at least one point. Scores are integers, so that their order is
/// free. Most blocks of a long outline nowhere cross the level, and cost no division.
template <class T, unsigned int components>
int OutlineScore(const T* values, unsigned int pointCount, T x, T y)
{
    constexpr unsigned int vectorStep = baselineCount<T> * components;
    constexpr unsigned int blockSize = vectorsPerBlock * baselineCount<T>;
    const T* const first = values;
    unsigned int left = pointCount - 1;

    BaselineMask<T> scores = {};
    while (left >= baselineCount<T>) {
        const bool wholeBlock = left >= blockSize;
        const unsigned int vectors = wholeBlock ? vectorsPerBlock : left / baselineCount<T>;
        if (!wholeBlock || BlockCrosses<T, components>(values, y)) {
            for (unsigned int i = 0; i < vectors; ++i)
                scores += SegmentLanes<T, components>(values + i * vectorStep, y).Scores(values + i * vectorStep, x);
        }
        values += vectors * vectorStep;
        left -= vectors * baselineCount<T>;
    }
    int score = 0;
    for (unsigned int i = 0; i < baselineCount<T>; ++i) score += static_cast<int>(scores[i]);

    // What is left, and the side that closes the outline.
    for (;; --left, values += components) {
        const T* const to = left > 0 ? values + components : first;
        if (CrossesLevel<T>(values[1] - y, to[1] - y))
            score += ScoresAhead(values[0], to[0], values[1] - y, to[1] - y, x) ? 1 : -1;
        if (left == 0) return score;
    }
}

} // namespace

template <class T, template <class> class V>
void TPointSet<T, V>::ExamineSegment(unsigned int from, unsigned int to, const TVector2<T>& point, int* crossings) const
{
    CORVEX_PRECONDITION("TPointSet::ExamineSegment", from < this->count && to < this->count, from, to, this->count);
    CORVEX_PRECONDITION("TPointSet::ExamineSegment", crossings != nullptr, crossings);
    const V<T>& start = this->storage[from];
    const V<T>& end = this->storage[to];
    const T fromHeight = start.y - point.y;
    const T toHeight = end.y - point.y;
    if (CrossesLevel<T>(fromHeight, toHeight))
        *crossings += ScoresAhead(start.x, end.x, fromHeight, toHeight, point.x) ? 1 : -1;
}

template <class T, template <class> class V>
bool TPointSet<T, V>::IsWithin(const TVector2<T>& point, unsigned int first, unsigned int pointCount) const
{
    CORVEX_PRECONDITION("TPointSet::IsWithin",
                        pointCount == 0 || (first < this->count && pointCount <= this->count - first), first,
                        pointCount, this->count);
    if (!boundingBox.IsWithin(point, T(0)) || pointCount == 0) return false;
    const T* values = this->storage[first];
    return OutlineScore<T, componentsOf<T, V>>(values, pointCount, point.x, point.y) != 0;
}

template <class T, template <class> class V>
bool TPointSet<T, V>::IntersectWith(const TEdge2<T>& edge, TList<V<T>>* points) const
{
    CORVEX_PRECONDITION("TPointSet::IntersectWith", points != nullptr && points != this, points, this);
    const TLine2<T> edgeLine = edge.GetLine();
    for (unsigned int i = 0; i < this->count; ++i) {
        const V<T>& start = this->storage[i];
        const V<T>& end = this->storage[(i + 1) % this->count];
        const TEdge2<T> segment(TVector2<T>(start.x, start.y), TVector2<T>(end.x, end.y));

        TVector2<T> hit;
        if (!edgeLine.IntersectWith(segment.GetLine(), &hit, Numbers::commonTolerance<T>)) continue;
        if (!edge.IsWithin(hit) || !segment.IsWithin(hit)) continue;

        V<T> result;
        result.x = hit.x;
        result.y = hit.y;
        constexpr unsigned int components = componentsOf<T, V>;
        if constexpr (components > 2) {
            // The signed differences decide, not their sizes: a side straight down, or level and backwards, divides by
            // 0.
            const T dx = end.x - start.x;
            const T dy = end.y - start.y;
            const T share = dx > dy ? (hit.x - start.x) / dx : (hit.y - start.y) / dy;
            const T* startValues = start;
            const T* endValues = end;
            T* resultValues = result;
            for (unsigned int k = 2; k < components; ++k)
                resultValues[k] = startValues[k] + share * (endValues[k] - startValues[k]);
        }
        points->Add(result);
    }
    return points->GetCount() > 0;
}

} // namespace Halmont::Orrin::CorvexMaths

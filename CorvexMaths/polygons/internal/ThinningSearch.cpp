#include <CorvexMaths/polygons/internal/ThinningSearch.h>

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/polygons/internal/EdgeColumns.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Writes how far `length` vertices lie from the line of a chord, by lanes of the given width, and raises `greatest` to
/// the greatest of these; NaN exceeds nothing. Returns whether all of the vertices lie beside the chord, so that these
/// are their distances from it.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE bool MeasureBeside(const EdgeValues<T>& chord, const T* vertices, std::size_t stride,
                                        unsigned int length, T* distance, T& greatest)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using Mask = decltype(Lane() < Lane());
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    Lane minusZero;
    Broadcast(minusZero, T(-0.0));
    // The bounds of how far the vertices reach along the chord, which NaN does not move.
    Lane leastFromStart = {}, greatestFromEnd = {}, farthest;
    Broadcast(farthest, greatest);
    unsigned int k = 0;
    for (; length - k >= laneCount; k += laneCount) {
        Lane x, y;
        for (unsigned int j = 0; j < laneCount; ++j) {
            x[j] = vertices[j * stride];
            y[j] = vertices[j * stride + 1];
        }
        vertices += laneCount * stride;
        const PointAndEdge<T, Lane> pairs(chord, x, y);
        const Lane fromLine = pairs.fromStartX * chord.directionY - pairs.fromStartY * chord.directionX;
        // The absolute value.
        const Lane size = reinterpret_cast<Lane>(reinterpret_cast<Mask>(fromLine) & ~reinterpret_cast<Mask>(minusZero));
        Store(distance + k, size);
        farthest = size > farthest ? size : farthest;
        leastFromStart = pairs.alongFromStart < leastFromStart ? pairs.alongFromStart : leastFromStart;
        greatestFromEnd = pairs.alongFromEnd > greatestFromEnd ? pairs.alongFromEnd : greatestFromEnd;
    }
    bool isTailBeyond = false;
    for (; k < length; ++k, vertices += stride) {
        const PointAndEdge<T> pair(chord, vertices[0], vertices[1]);
        distance[k] = pair.DistanceFromLine(chord);
        greatest = distance[k] > greatest ? distance[k] : greatest;
        isTailBeyond = isTailBeyond || pair.IsBeforeStart() || pair.IsPastEnd();
    }
    for (unsigned int j = 0; j < laneCount; ++j) greatest = farthest[j] > greatest ? farthest[j] : greatest;
    return !isTailBeyond && !AnyLane((leastFromStart < 0) | (greatestFromEnd > 0));
}

/// The index of the first of some values that is equal to one of them, by lanes of the given width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE unsigned int FindFirst(T value, const T* values, unsigned int count)
{
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    unsigned int k = 0;
    for (; count - k >= laneCount; k += laneCount) {
        typename Lanes<T, Bytes>::Type lane;
        Load(lane, values + k);
        if (AnyLane(lane == value)) break;
    }
    while (values[k] != value) ++k;
    return k;
}

/// FarthestFromChord by lanes of the given width, a run of vertices at a time. The maximum of a run is found first and
/// its lowest index after it, which is where a scan for ever greater distances ends.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE unsigned int FindFarthest(const EdgeValues<T>& chord, const T* points, unsigned int stride,
                                               unsigned int first, unsigned int last, T* best)
{
    unsigned int farthest = first;
    *best = T(-1);
    T distance[runLength];
    for (unsigned int from = first + 1; from < last; from += runLength) {
        const T* const run = points + std::size_t(from) * stride;
        const unsigned int length = last - from < runLength ? last - from : runLength;
        T greatest = *best;
        if (!MeasureBeside<Bytes>(chord, run, stride, length, distance, greatest)) {
            greatest = *best;
            for (unsigned int k = 0; k < length; ++k) {
                distance[k] = PointAndEdge<T>(chord, run[k * stride], run[k * stride + 1]).Distance(chord);
                greatest = distance[k] > greatest ? distance[k] : greatest;
            }
        }
        if (!(greatest > *best)) continue;
        *best = greatest;
        farthest = from + FindFirst<Bytes>(greatest, distance, length);
    }
    return farthest;
}

// The farthest vertex is where a scan for ever greater distances ends: the first of those with the greatest distance.
// Where a tree of boxes over the vertices is searched instead, a box is passed over if no vertex of it can have that
// distance, or none before the one found.
//
// Let M be the greatest coordinate, epsilon / 2 the unit roundoff, s and e the ends of a chord, D their difference. The
// distance from a segment is convex, so that its exact value over a box is bounded by the offsets of the box from the
// chord's line and beyond the chord's ends: by the root of the sum of their squares. With M <= 1e12 and |D.x| + |D.y|
// >= 1e-12 nothing overflows or gets lost below the normal numbers, and the stored direction is a unit vector but for
// 3/2 epsilon. A distance from an end errs by 2 epsilon M at most, one from the line, as the product of a difference of
// 2 sqrt(2) M with that direction, by 8 epsilon M. Where rounding makes a vertex count as beside the chord, or beyond
// its end, that is not, it lies within 8 epsilon M of being so, and its distance errs by as much. So it does not exceed
// the bound by more than 18 epsilon M; and the bound as computed is short by 16 epsilon M at most, since the centre,
// the extents and the products err as above. The margin is nearly twice the sum.

/// The search for the vertex farthest from the chord of a run.
template <class T>
class FarthestSearch
{
public:
    FarthestSearch(const T* outline, unsigned int pointStride, unsigned int first, unsigned int last)
        : points(outline), stride(pointStride), start(first), end(last)
    {}

    /// The vertex farthest from the chord between two others, among those strictly between them: by
    /// TEdge2::DistanceToPoint, the lowest index on a tie. Writes the distance to `best`; if there is none to measure,
    /// that is -1 and the result is `first`.
    unsigned int Find(unsigned int first, unsigned int last, T* best)
    {
        const T* const from = GetVertex(first);
        const T* const to = GetVertex(last);
        EdgeValues<T> chord;
        chord.Measure(TEdge2<T>(from[0], from[1], to[0], to[1]));

        // Few outlines need as many scans as this, by far.
        constexpr unsigned int scansPerVertex = 64;
        constexpr unsigned int shortRun = 8 * leafLength;
        constexpr T shortest = T(1e-12);
        if (last - first <= shortRun || scanned / scansPerVertex <= end - start ||
            !(Numbers::Absolute(chord.deltaX) + Numbers::Absolute(chord.deltaY) >= shortest) || !MakeTree())
        {
            scanned += last - first;
            return Scan(chord, first, last, best);
        }
        Farthest farthest{first, last, first, T(-1)};
        SearchGroup(chord, tree->GetTop(), 0, &farthest);
        *best = farthest.distance;
        return farthest.index;
    }

private:
    /// What is known of the farthest vertex strictly between two others.
    struct Farthest
    {
        unsigned int first, last;
        unsigned int index;
        T distance;
    };

    static constexpr unsigned int leafLength = runLength;

    const T* GetVertex(unsigned int i) const { return points + std::size_t(i) * stride; }

    unsigned int Scan(const EdgeValues<T>& chord, unsigned int first, unsigned int last, T* best) const
    {
        const EdgeValues<T> edge = chord;
        const T* const vertices = points;
        const unsigned int step = stride;
        return ForThisProcessor(
            [=](auto bytes) { return FindFarthest<bytes>(edge, vertices, step, first, last, best); });
    }

    /// Makes the tree, unless that has been done, and returns whether it has bounds. Vertices that are not numbers have
    /// no distance and no place in a box.
    bool MakeTree()
    {
        if (tree) return margin < std::numeric_limits<T>::infinity();
        CoordinateSize<T> size;
        tree = std::make_unique<BoxTree<T>>((end - start) / leafLength + 1);
        PlaneBox<T> box;
        for (unsigned int i = start; i <= end; ++i) {
            const T* const vertex = GetVertex(i);
            for (unsigned int k = 0; k < 2; ++k)
                if (vertex[k] == vertex[k]) size.Add(vertex[k]);
            if (vertex[0] == vertex[0] && vertex[1] == vertex[1])
                box.Join({vertex[0], vertex[0], vertex[1], vertex[1]});
            if ((i - start) % leafLength != leafLength - 1 && i != end) continue;
            tree->SetLeaf((i - start) / leafLength, box);
            box = PlaneBox<T>();
        }
        tree->RaiseAll();
        margin = 64 * std::numeric_limits<T>::epsilon() * size.Get();
        return margin < std::numeric_limits<T>::infinity();
    }

    /// Searches the boxes of a group, the most promising one first.
    void SearchGroup(const EdgeValues<T>& chord, unsigned int level, std::size_t group, Farthest* farthest) const
    {
        constexpr unsigned int fanOut = BoxTree<T>::fanOut;
        T bounds[fanOut];
        BoundDistances(chord, tree->GetGroup(level, group), bounds);
        std::uint64_t length = leafLength;
        for (unsigned int k = 0; k < level; ++k) length *= fanOut;
        for (unsigned int remaining = (1u << fanOut) - 1; remaining != 0;) {
            unsigned int next = static_cast<unsigned int>(__builtin_ctz(remaining));
            for (unsigned int k = next + 1; k < fanOut; ++k)
                if ((remaining >> k & 1) != 0 && bounds[k] > bounds[next]) next = k;
            remaining &= ~(1u << next);

            // A box that is no nearer than others in the order has its vertices after them.
            const std::uint64_t from = start + (group * fanOut + next) * length;
            if (from >= farthest->last || from + length <= farthest->first + std::uint64_t(1)) continue;
            if (!(bounds[next] > farthest->distance || (bounds[next] == farthest->distance && from < farthest->index)))
                continue;
            if (level == 0)
                SearchLeaf(chord, static_cast<unsigned int>(from), farthest);
            else
                SearchGroup(chord, level - 1, group * fanOut + next, farthest);
        }
    }

    void SearchLeaf(const EdgeValues<T>& chord, unsigned int from, Farthest* farthest) const
    {
        // A scan leaves out the vertices that it leads between.
        const unsigned int before = from > farthest->first ? from - 1 : farthest->first;
        const unsigned int after = farthest->last - from < leafLength ? farthest->last : from + leafLength;
        T distance;
        const unsigned int index = Scan(chord, before, after, &distance);
        if (index == before) return;
        if (distance > farthest->distance || (distance == farthest->distance && index < farthest->index)) {
            farthest->distance = distance;
            farthest->index = index;
        }
    }

    /// Writes upper bounds of the distances that vertices in the boxes of a group can have from a chord.
    void BoundDistances(const EdgeValues<T>& chord, const typename BoxTree<T>::Group& boxes, T* bounds) const
    {
        const T acrossX = Numbers::Absolute(chord.directionX);
        const T acrossY = Numbers::Absolute(chord.directionY);
        for (unsigned int k = 0; k < BoxTree<T>::fanOut; ++k) {
            const T extentX = (boxes.highX[k] - boxes.lowX[k]) / 2;
            const T extentY = (boxes.highY[k] - boxes.lowY[k]) / 2;
            const T centreX = boxes.lowX[k] + extentX;
            const T centreY = boxes.lowY[k] + extentY;
            const T fromStartX = centreX - chord.startX;
            const T fromStartY = centreY - chord.startY;
            const T offset = Numbers::Absolute(fromStartX * chord.directionY - fromStartY * chord.directionX) +
                             (extentX * acrossY + extentY * acrossX);
            const T reach = extentX * acrossX + extentY * acrossY;
            const T beforeStart = reach - (fromStartX * chord.directionX + fromStartY * chord.directionY);
            const T pastEnd =
                reach + ((centreX - chord.endX) * chord.directionX + (centreY - chord.endY) * chord.directionY);
            const T beyond = std::max(T(0), std::max(beforeStart, pastEnd));
            // Boxes of nothing are not numbers here, and are never entered.
            bounds[k] = Numbers::SquareRoot(offset * offset + beyond * beyond) + margin;
        }
    }

    const T* points;
    unsigned int stride;
    unsigned int start, end;
    std::uint64_t scanned = 0;
    std::unique_ptr<BoxTree<T>> tree;
    T margin = T(0);
};

} // namespace

template <class T>
void ThinRun(const T* points, unsigned int stride, unsigned int first, unsigned int last, bool* keep, T tolerance)
{
    struct Run
    {
        unsigned int first, last;
    };
    // The shorter part of a split goes first, so that the run at hand halves, at least, for each one that waits.
    Run waiting[32];
    unsigned int waitingCount = 0;
    FarthestSearch<T> search(points, stride, first, last);
    for (Run run = {first, last};;) {
        T distance = T(-1);
        unsigned int farthest = run.first;
        if (run.last - run.first > 1) {
            farthest = search.Find(run.first, run.last, &distance);
            if (!(tolerance < distance)) std::fill(keep + run.first + 1, keep + run.last, false);
        }
        // Vertices that are not numbers have no distance; there is then nothing to split at.
        if (farthest != run.first && tolerance < distance) {
            const Run before = {run.first, farthest}, after = {farthest, run.last};
            const bool isFirstShorter = farthest - run.first < run.last - farthest;
            waiting[waitingCount++] = isFirstShorter ? after : before;
            run = isFirstShorter ? before : after;
        } else {
            if (waitingCount == 0) return;
            run = waiting[--waitingCount];
        }
    }
}

template void ThinRun(const float*, unsigned int, unsigned int, unsigned int, bool*, float);
template void ThinRun(const double*, unsigned int, unsigned int, unsigned int, bool*, double);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

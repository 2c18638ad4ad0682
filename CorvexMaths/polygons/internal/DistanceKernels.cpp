#include <CorvexMaths/polygons/internal/DistanceKernels.h>

#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

template <class T>
T DistanceFromOutline(const EdgeColumns<T>& edges, const TVector2<T>& point)
{
    T nearest = Numbers::unsetBound<T>;
    T fromLine[runLength], fromStart[runLength], fromEnd[runLength];
    for (unsigned int from = 0; from < edges.GetCount(); from += runLength) {
        const unsigned int length = edges.GetCount() - from < runLength ? edges.GetCount() - from : runLength;
        for (unsigned int k = 0; k < length; ++k) {
            EdgeValues<T> edge;
            edge.Read(edges, from + k);
            const PointAndEdge<T> pair(edge, point.x, point.y);
            const bool isBeside = !(pair.IsBeforeStart() || pair.IsPastEnd());
            bool isWithin;
            pair.IsWithin(isWithin);
            fromLine[k] = isBeside && isWithin ? pair.DistanceFromLine(edge) : std::numeric_limits<T>::infinity();
            fromStart[k] = pair.DistanceFromStart();
            fromEnd[k] = pair.DistanceFromEnd();
        }
        for (unsigned int k = 0; k < length; ++k) {
            if (nearest > fromLine[k]) {
                nearest = fromLine[k];
                continue;
            }
            if (nearest > fromStart[k]) nearest = fromStart[k];
            if (nearest > fromEnd[k]) nearest = fromEnd[k];
        }
    }
    return nearest;
}

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
    Spread(minusZero, T(-0.0));
    // The bounds of how far the vertices reach along the chord, which NaN does not move.
    Lane leastFromStart = {}, greatestFromEnd = {}, farthest;
    Spread(farthest, greatest);
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

#ifdef CORVEX_WIDE_LANES
template <class T>
CORVEX_WIDE_LANES unsigned int FindFarthestWide(const EdgeValues<T>& chord, const T* points, unsigned int stride,
                                                unsigned int first, unsigned int last, T* best)
{
    return FindFarthest<wideBytes>(chord, points, stride, first, last, best);
}
#endif

} // namespace

template <class T>
unsigned int FarthestFromChord(const T* points, unsigned int stride, unsigned int first, unsigned int last, T* best)
{
    const T* const start = points + std::size_t(first) * stride;
    const T* const end = points + std::size_t(last) * stride;
    EdgeValues<T> chord;
    chord.Measure(TEdge2<T>(start[0], start[1], end[0], end[1]));
#ifdef CORVEX_WIDE_LANES
    if (hasWideLanes) return FindFarthestWide(chord, points, stride, first, last, best);
#endif
    return FindFarthest<baselineBytes>(chord, points, stride, first, last, best);
}

template float DistanceFromOutline(const EdgeColumns<float>&, const TVector2<float>&);
template double DistanceFromOutline(const EdgeColumns<double>&, const TVector2<double>&);
template unsigned int FarthestFromChord(const float*, unsigned int, unsigned int, unsigned int, float*);
template unsigned int FarthestFromChord(const double*, unsigned int, unsigned int, unsigned int, double*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

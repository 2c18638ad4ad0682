#include <CorvexMaths/polygons/DistanceKernels.h>

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

/// Writes how far `length` vertices lie from the line of a chord, by lanes of the given width; returns whether all of
/// them lie beside the chord, so that these are their distances from it.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE bool MeasureBeside(const EdgeValues<T>& chord, const T* vertices, std::size_t stride,
                                        unsigned int length, T* distance)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using Mask = decltype(Lane() < Lane());
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    Lane minusZero;
    Spread(minusZero, T(-0.0));
    Mask isBeyond = {};
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
        Store(distance + k, reinterpret_cast<Mask>(fromLine) & ~reinterpret_cast<Mask>(minusZero));
        isBeyond |= (pairs.alongFromStart < 0) | (pairs.alongFromEnd > 0);
    }
    bool isTailBeyond = false;
    for (; k < length; ++k, vertices += stride) {
        const PointAndEdge<T> pair(chord, vertices[0], vertices[1]);
        distance[k] = pair.DistanceFromLine(chord);
        isTailBeyond = isTailBeyond || pair.IsBeforeStart() || pair.IsPastEnd();
    }
    return !isTailBeyond && !AnyLane(isBeyond);
}

/// The greatest of a bound and some values, by lanes of the given width; NaN exceeds nothing.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE T Greatest(T bound, const T* values, unsigned int count)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    Lane greatest;
    Spread(greatest, bound);
    unsigned int k = 0;
    for (; count - k >= laneCount; k += laneCount) {
        Lane lane;
        Load(lane, values + k);
        greatest = lane > greatest ? lane : greatest;
    }
    for (; k < count; ++k) bound = values[k] > bound ? values[k] : bound;
    for (unsigned int j = 0; j < laneCount; ++j) bound = greatest[j] > bound ? greatest[j] : bound;
    return bound;
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
        if (!MeasureBeside<Bytes>(chord, run, stride, length, distance))
            for (unsigned int k = 0; k < length; ++k)
                distance[k] = PointAndEdge<T>(chord, run[k * stride], run[k * stride + 1]).Distance(chord);
        const T greatest = Greatest<Bytes>(*best, distance, length);
        if (!(greatest > *best)) continue;
        *best = greatest;
        unsigned int k = 0;
        while (distance[k] != greatest) ++k;
        farthest = from + k;
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

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

template <class T>
unsigned int FarthestFromChord(const T* points, unsigned int stride, unsigned int first, unsigned int last, T* best)
{
    const auto coordinates = [points, stride](unsigned int i) { return points + std::size_t(i) * stride; };
    EdgeValues<T> chord;
    chord.Measure(TEdge2<T>(coordinates(first)[0], coordinates(first)[1], coordinates(last)[0], coordinates(last)[1]));
    unsigned int farthest = first;
    *best = T(-1);
    T distance[runLength];
    for (unsigned int from = first + 1; from < last; from += runLength) {
        const unsigned int length = last - from < runLength ? last - from : runLength;
        for (unsigned int k = 0; k < length; ++k) {
            const T* const vertex = coordinates(from + k);
            distance[k] = PointAndEdge<T>(chord, vertex[0], vertex[1]).Distance(chord);
        }
        for (unsigned int k = 0; k < length; ++k) {
            if (distance[k] > *best) {
                *best = distance[k];
                farthest = from + k;
            }
        }
    }
    return farthest;
}

template float DistanceFromOutline(const EdgeColumns<float>&, const TVector2<float>&);
template double DistanceFromOutline(const EdgeColumns<double>&, const TVector2<double>&);
template unsigned int FarthestFromChord(const float*, unsigned int, unsigned int, unsigned int, float*);
template unsigned int FarthestFromChord(const double*, unsigned int, unsigned int, unsigned int, double*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

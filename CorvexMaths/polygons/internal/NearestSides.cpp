#include <CorvexMaths/polygons/internal/NearestSides.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

template <class T>
NearestSides<T>::NearestSides(const T* outline, unsigned int outlineCount, const T* points, unsigned int cloudCount,
                              unsigned int stride)
    : sideEnd(outlineCount),
      sides(new EdgeValues<T>[std::size_t(outlineCount) + cloudCount]),
      positions(new unsigned int[std::size_t(outlineCount) + cloudCount]),
      pointCount(cloudCount),
      x(new T[cloudCount]),
      y(new T[cloudCount]),
      nearest(new T[cloudCount]),
      nearestSide(new unsigned int[cloudCount])
{
    positions[0] = 0;
    for (unsigned int j = 1; j < outlineCount; ++j) {
        const T* const end = outline + std::size_t(j) * stride;
        const T* const start = end - stride;
        sides[j].Measure(TEdge2<T>(start[0], start[1], end[0], end[1]));
        positions[j] = j;
    }
    for (unsigned int k = 0; k < cloudCount; ++k) {
        x[k] = points[std::size_t(k) * stride];
        y[k] = points[std::size_t(k) * stride + 1];
        MeasureAgainstAll(k);
    }
}

template <class T>
typename NearestSides<T>::Place NearestSides<T>::FindNearest() const
{
    Place place = {0, 0, false};
    T best = Numbers::unsetBound<T>;
    for (unsigned int k = 0; k < pointCount; ++k) {
        if (best > nearest[k]) {
            best = nearest[k];
            place.point = k;
        }
    }
    const unsigned int side = nearestSide[place.point];
    if (side == 0) return place;

    const PointAndEdge<T> pair(sides[side], x[place.point], y[place.point]);
    const bool isBeforeStart = pair.IsBeforeStart();
    bool isWithin;
    pair.IsWithin(isWithin);
    place.position = isBeforeStart ? positions[side] - 1 : positions[side];
    place.isAtCorner = isBeforeStart || pair.IsPastEnd() || !isWithin;
    return place;
}

template <class T>
void NearestSides<T>::Insert(unsigned int point, unsigned int position)
{
    // 1. The side that ends at the position leads to the point from now on, and a new one leads on from there.
    unsigned int split = 0;
    for (unsigned int side = 1; side < sideEnd; ++side) {
        if (positions[side] == position) split = side;
        if (positions[side] > position) ++positions[side];
    }
    const unsigned int added = sideEnd++;
    const EdgeValues<T> former = sides[split];
    sides[split].Measure(TEdge2<T>(former.startX, former.startY, x[point], y[point]));
    sides[added].Measure(TEdge2<T>(x[point], y[point], former.endX, former.endY));
    positions[added] = position + 1;

    // 2. The point leaves the cloud.
    --pointCount;
    for (unsigned int k = point; k < pointCount; ++k) {
        x[k] = x[k + 1];
        y[k] = y[k + 1];
        nearest[k] = nearest[k + 1];
        nearestSide[k] = nearestSide[k + 1];
    }

    MeasureAfterSplit(split, added);
}

template <class T>
void NearestSides<T>::MeasureAfterSplit(unsigned int split, unsigned int added)
{
    const EdgeValues<T> first = sides[split];
    const EdgeValues<T> second = sides[added];
    T toSplit[runLength], toAdded[runLength];
    for (unsigned int from = 0; from < pointCount; from += runLength) {
        const unsigned int length = pointCount - from < runLength ? pointCount - from : runLength;
        for (unsigned int k = 0; k < length; ++k) {
            toSplit[k] = PointAndEdge<T>(first, x[from + k], y[from + k]).Distance(first);
            toAdded[k] = PointAndEdge<T>(second, x[from + k], y[from + k]).Distance(second);
        }
        for (unsigned int k = 0; k < length; ++k) {
            const unsigned int point = from + k;
            const bool wasNearest = nearestSide[point] == split;
            const T former = nearest[point];
            if (wasNearest) Forget(point);
            Offer(point, split, toSplit[k]);
            Offer(point, added, toAdded[k]);
            if (wasNearest && nearest[point] > former) MeasureAgainstAll(point);
        }
    }
}

template <class T>
void NearestSides<T>::MeasureAgainstAll(unsigned int point)
{
    Forget(point);
    for (unsigned int side = 1; side < sideEnd; ++side)
        Offer(point, side, PointAndEdge<T>(sides[side], x[point], y[point]).Distance(sides[side]));
}

template <class T>
inline void NearestSides<T>::Forget(unsigned int point)
{
    nearest[point] = Numbers::unsetBound<T>;
    nearestSide[point] = 0;
}

template <class T>
inline void NearestSides<T>::Offer(unsigned int point, unsigned int side, T distance)
{
    // Whichever order the sides come in, the earliest of the nearest ones stays.
    if (nearest[point] > distance || (nearest[point] == distance && positions[side] < positions[nearestSide[point]])) {
        nearest[point] = distance;
        nearestSide[point] = side;
    }
}

template class NearestSides<float>;
template class NearestSides<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

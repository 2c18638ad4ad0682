#include <CorvexMaths/polygons/internal/OutlineDistance.h>

#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

// The later points pass over edges that offer nothing below a bound just above the distance in question.
//
// 1. Rounding. Let M be the greatest coordinate of the edges and the point, epsilon / 2 the unit roundoff. With
//    M <= 1e12 and an edge of |D.x| + |D.y| >= 1e-12 nothing overflows or gets lost below the normal numbers. An end's
//    distance errs by 2 epsilon of itself. The distance from the line is a product of the difference from the start, of
//    2 sqrt(2) M, with a direction that is a unit vector but for 3/2 epsilon, and errs by 9 epsilon M; a point that
//    counts as beside the edge, and is not, is off it by 6 epsilon M at most. So no edge whose box is further off by
//    more than 15 epsilon M than the bound, on either axis, offers a value below it. The margin is twice that.
// 2. Order. What matters of the minimum above the bound is that it is above. While it is, an edge that has the point
//    beside it, its line above the bound and an end below it, would offer the end or not by the minimum itself:
//    rounding alone can make such an edge, and all edges are measured then. Any other edge that offers something below
//    the bound offers the same whatever the minimum. From then on the minimum is exact, as edges passed over offer
//    nothing less.

/// The limit is a true double in both forms.
constexpr double distanceTolerance = 1e-6;

/// How many successive edges share a box.
constexpr unsigned int blockSize = 8;

/// As many edges are measured in less time than a tree of them is made and asked.
constexpr unsigned int fewEdges = 16;

/// What an edge offers: the distance from its line, infinite unless the point lies beside it, and from its ends.
template <class T>
struct Offers
{
    T fromLine, fromStart, fromEnd;

    CORVEX_ALWAYS_INLINE Offers(const EdgeColumns<T>& edges, unsigned int i, const TVector2<T>& point)
    {
        EdgeValues<T> edge;
        edge.Read(edges, i);
        const PointAndEdge<T> pair(edge, point.x, point.y);
        const bool isBeside = !(pair.IsBeforeStart() || pair.IsPastEnd());
        bool isWithin;
        pair.IsWithin(isWithin);
        fromLine = isBeside && isWithin ? pair.DistanceFromLine(edge) : std::numeric_limits<T>::infinity();
        fromStart = pair.DistanceFromStart();
        fromEnd = pair.DistanceFromEnd();
    }

    CORVEX_ALWAYS_INLINE void Lower(T& nearest) const
    {
        if (nearest > fromLine) {
            nearest = fromLine;
            return;
        }
        if (nearest > fromStart) nearest = fromStart;
        if (nearest > fromEnd) nearest = fromEnd;
    }
};

} // namespace

template <class T>
OutlineDistance<T>::OutlineDistance(const TEdge2<T>* edges, unsigned int edgeCount) : columns(edges, edgeCount)
{}

template <class T>
bool OutlineDistance<T>::IsAt(const TVector2<T>& point, T distance)
{
    const T wanted = Numbers::Absolute(distance);
    const auto isAt = [wanted](T nearest) {
        return static_cast<double>(Numbers::Absolute(nearest - wanted)) < distanceTolerance;
    };
    if (!tree) {
        // As a rule the first point is at the distance.
        if (isAt(MeasureAll(point))) return true;
        if (columns.GetCount() > fewEdges) MakeTree();
        return false;
    }
    CoordinateSize<T> greatest;
    for (const T value : {size, point.x, point.y, wanted}) greatest.Add(value);
    if (!(greatest.Get() < std::numeric_limits<T>::infinity())) return isAt(MeasureAll(point));

    // Above the bound and at the floor or below it the difference rounds to more than the tolerance.
    constexpr T epsilon = std::numeric_limits<T>::epsilon();
    const T clearance = 8 * epsilon * wanted + static_cast<T>(2 * distanceTolerance);
    const T bound = wanted + clearance, floor = wanted - clearance;
    const PlaneBox<T> box = PlaneBox<T>::Around(point.x, point.y, bound + 32 * epsilon * greatest.Get());
    T nearest = Numbers::unsetBound<T>;
    bool isSure = true;
    tree->Traverse(
        tree->GetTop(), 0,
        [&](unsigned int level, std::size_t group) {
            return tree->template FindMeeting<baselineBytes>(level, group, box);
        },
        [&](unsigned int from, unsigned int to) {
            const unsigned int end = std::min(to * blockSize, columns.GetCount());
            for (unsigned int i = from * blockSize; i < end && isSure && !(nearest <= floor); ++i) {
                const Offers<T> offers(columns, i, point);
                const bool isEndBelow = offers.fromStart <= bound || offers.fromEnd <= bound;
                isSure = !(nearest > bound && isEndBelow && offers.fromLine > bound &&
                           offers.fromLine < std::numeric_limits<T>::infinity());
                offers.Lower(nearest);
            }
            return isSure && !(nearest <= floor);
        });
    return isAt(isSure ? nearest : MeasureAll(point));
}

template <class T>
T OutlineDistance<T>::MeasureAll(const TVector2<T>& point) const
{
    T nearest = Numbers::unsetBound<T>;
    for (unsigned int from = 0; from < columns.GetCount(); from += runLength) {
        const unsigned int length = std::min(columns.GetCount() - from, runLength);
        T fromLine[runLength], fromStart[runLength], fromEnd[runLength];
        for (unsigned int k = 0; k < length; ++k) {
            const Offers<T> offers(columns, from + k, point);
            fromLine[k] = offers.fromLine;
            fromStart[k] = offers.fromStart;
            fromEnd[k] = offers.fromEnd;
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
void OutlineDistance<T>::MakeTree()
{
    constexpr T shortest = T(1e-12);
    const unsigned int count = columns.GetCount();
    tree = std::make_unique<BoxTree<T>>((count + blockSize - 1) / blockSize);
    CoordinateSize<T> greatest;
    PlaneBox<T> box;
    for (unsigned int i = 0; i < count; ++i) {
        EdgeValues<T> edge;
        edge.Read(columns, i);
        for (const T value : {edge.startX, edge.startY, edge.endX, edge.endY}) greatest.Add(value);
        // Written so that NaN counts as too short.
        const bool isLong = Numbers::Absolute(edge.deltaX) + Numbers::Absolute(edge.deltaY) >= shortest;
        box.Join(isLong ? PlaneBox<T>::Around(edge.startX, edge.startY, edge.endX, edge.endY, T(0))
                        : PlaneBox<T>::Unbounded());
        if (i % blockSize != blockSize - 1 && i != count - 1) continue;
        tree->SetLeaf(i / blockSize, box);
        box = PlaneBox<T>();
    }
    tree->RaiseAll();
    size = greatest.Get();
}

template class OutlineDistance<float>;
template class OutlineDistance<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/polygons/CrossingSearch.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The columns that the search adds to those of the edges.
enum LineColumn : unsigned int
{
    /// The line of the edge as y = slope * x + intercept.
    slopeColumn = EdgeColumns<float>::edgeColumnCount,
    interceptColumn,
    /// The merit of -slope as a pivot of the row (-slope, 1): its absolute value over the largest of the row.
    meritColumn,
    /// 1 where the line counts as vertical, which leaves the other three without meaning; else 0.
    verticalColumn,
    endOfColumns
};

/// The line of an edge, or of several.
template <class Value>
struct EdgeLine
{
    Value startX, slope, intercept, merit, vertical;

    template <class T>
    CORVEX_ALWAYS_INLINE void Read(const EdgeColumns<T>& edges, unsigned int i)
    {
        edges.Read(startX, startXColumn, i);
        edges.Read(slope, slopeColumn, i);
        edges.Read(intercept, interceptColumn, i);
        edges.Read(merit, meritColumn, i);
        edges.Read(vertical, verticalColumn, i);
    }
};

/// Crosses a line that is not vertical with others; writes the points, and the mask of those that exist. Where the
/// other line is vertical, the point lies on it at the height of the first. Else the rows (-slope, 1 | intercept) of
/// both lines are solved as the pivoted decomposition of order 2 does it, step by step, unless the determinant counts
/// as zero.
///
/// A slope is finite or NaN, as a direction that does not count as vertical has an x above the tolerance and a y of
/// about 1 at most. Of the decomposition's rules only these can then come into play: the second row becomes the pivot
/// if its merit is not below the first's; a zero on the diagonal of the second column gives way to the pivot guard; a
/// leading zero on the right side is skipped. If a slope is NaN, so is x, under any of the rules, and the point lies on
/// no edge.
template <class T, class Lane, class Mask>
CORVEX_ALWAYS_INLINE void CrossSloping(const EdgeLine<T>& a, const EdgeLine<Lane>& b, Lane* x, Lane* y, Mask* exists)
{
    // 1. The pivot row and the other one.
    const Mask isSwapped = b.merit >= a.merit;
    Lane aSlope, aIntercept, guard;
    Spread(aSlope, -a.slope);
    Spread(aIntercept, a.intercept);
    const Lane pivot = isSwapped ? -b.slope : aSlope;
    const Lane other = isSwapped ? aSlope : -b.slope;
    const Lane pivotSide = isSwapped ? b.intercept : aIntercept;
    const Lane otherSide = isSwapped ? aIntercept : b.intercept;

    // 2. Elimination.
    const Lane factor = other * (T(1) / pivot);
    const Lane remainder = T(1) - factor;
    Spread(guard, Numbers::pivotGuard<T>);
    const Lane diagonal = remainder == T(0) ? guard : remainder;

    // 3. Substitution, forwards and backwards.
    const Lane reducedSide = pivotSide != T(0) ? otherSide - factor * pivotSide : otherSide;
    const Lane solvedY = reducedSide / diagonal;
    const Lane solvedX = (pivotSide - solvedY) / pivot;

    const Mask isVertical = b.vertical != T(0);
    const Lane determinant = b.slope - a.slope;
    const T tolerance = Numbers::commonTolerance<T>;
    const Mask isParallel = (determinant <= tolerance) & (determinant >= -tolerance);
    *x = isVertical ? b.startX : solvedX;
    *y = isVertical ? a.intercept + b.startX * a.slope : solvedY;
    *exists = isVertical | ~isParallel;
}

/// Crosses a vertical line with others: the points lie on it at the height of the other line, unless that is vertical
/// too.
template <class T, class Lane, class Mask>
CORVEX_ALWAYS_INLINE void CrossVertical(const EdgeLine<T>& a, const EdgeLine<Lane>& b, Lane* x, Lane* y, Mask* exists)
{
    Spread(*x, a.startX);
    *y = b.intercept + a.startX * b.slope;
    *exists = b.vertical == T(0);
}

/// CrossingSearch::FindFirst by lanes of the given width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE bool FindFirstCrossing(const EdgeColumns<T>& edges, unsigned int i, unsigned int* index,
                                            TVector2<T>* point)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using Mask = decltype(Lane() == Lane());
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    EdgeValues<T> edge;
    EdgeLine<T> line;
    edge.Read(edges, i);
    line.Read(edges, i);
    const TVector2<T> start(edge.startX, edge.startY);
    const unsigned int end = i == 0 ? edges.GetCount() - 1 : edges.GetCount();
    // The nearest distance so far is held as a double in both forms.
    double nearest = static_cast<double>(Numbers::unsetBound<T>);
    bool isFound = false;

    for (unsigned int from = i + 2; from < end; from += laneCount) {
        EdgeLine<Lane> others;
        others.Read(edges, from);
        Lane x, y;
        Mask exists, isOnFirst, isHit;
        if (line.vertical != T(0))
            CrossVertical(line, others, &x, &y, &exists);
        else
            CrossSloping(line, others, &x, &y, &exists);

        // Few points lie on the first edge, and fewer on both.
        PointAndEdge<T, Lane>(edge, x, y).IsWithin(isOnFirst);
        isOnFirst &= exists;
        if (!AnyLane(isOnFirst)) continue;
        EdgeValues<Lane> otherEdges;
        otherEdges.Read(edges, from);
        PointAndEdge<Lane, Lane>(otherEdges, x, y).IsWithin(isHit);
        isHit &= isOnFirst;
        if (!AnyLane(isHit)) continue;

        // The last lanes may lie past the end.
        for (unsigned int k = 0; k < laneCount && from + k < end; ++k) {
            if (isHit[k] == 0) continue;
            const TVector2<T> crossing(x[k], y[k]);
            const double distance = static_cast<double>(crossing.DiffVectLen(start));
            if (nearest > distance) {
                nearest = distance;
                *index = from + k;
                *point = crossing;
                isFound = true;
            }
        }
    }
    return isFound;
}

#ifdef CORVEX_WIDE_LANES
template <class T>
CORVEX_WIDE_LANES bool FindFirstWide(const EdgeColumns<T>& edges, unsigned int i, unsigned int* index,
                                     TVector2<T>* point)
{
    return FindFirstCrossing<wideBytes>(edges, i, index, point);
}
#endif

} // namespace

template <class T>
CrossingSearch<T>::CrossingSearch(const TEdge2<T>* edgeArray, unsigned int edgeCount)
    : edges(edgeArray, edgeCount, endOfColumns - EdgeColumns<T>::edgeColumnCount)
{
    for (unsigned int i = 0; i < edgeCount; ++i) {
        EdgeValues<T> edge;
        edge.Read(edges, i);
        const T slope = edge.directionY / edge.directionX;
        const T size = Numbers::Absolute(slope);
        edges.Column(slopeColumn)[i] = slope;
        edges.Column(interceptColumn)[i] = edge.startY - edge.startX * slope;
        edges.Column(meritColumn)[i] = (T(1) / (size > T(1) ? size : T(1))) * size;
        edges.Column(verticalColumn)[i] = Numbers::IsZero(edge.directionX, Numbers::commonTolerance<T>) ? T(1) : T(0);
    }
}

template <class T>
bool CrossingSearch<T>::FindFirst(unsigned int i, unsigned int* index, TVector2<T>* point) const
{
#ifdef CORVEX_WIDE_LANES
    if (hasWideLanes) return FindFirstWide(edges, i, index, point);
#endif
    return FindFirstCrossing<baselineBytes>(edges, i, index, point);
}

template class CrossingSearch<float>;
template class CrossingSearch<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/polygons/internal/CrossingSearch.h>

#include <CorvexMaths/matrices/internal/SolvePair.h>

#include <algorithm>
#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The columns that the search adds to those of the edges, or puts in the place of the direction, which is not needed
/// any more once they are known.
enum LineColumn : unsigned int
{
    /// The line of the edge as y = slope * x + intercept.
    slopeColumn = directionXColumn,
    interceptColumn = directionYColumn,
    /// PairMerit of the slope.
    meritColumn = EdgeColumns<float>::edgeColumnCount,
    /// 1 where the line counts as vertical, which leaves the other three without meaning; else 0.
    verticalColumn,
    endOfColumns
};

/// How many successive edges make a block.
constexpr unsigned int blockSize = 8;

// Edges whose boxes lie apart are passed over. They cannot pass the tests, for a point p = (x, y) that does lies in the
// boxes of both:
//
// Let u = epsilon / 2 be the unit roundoff, M the greatest coordinate of the outline, t the common tolerance; s and e
// the start and end of an edge, D their exact difference; m and c its slope and intercept as stored. A residual of
// y = m x + c is r = sqrt(1 + m^2) times a distance. Bounds are given to the first order in u.
//
// 0. Range. A box is unbounded unless M <= 1e12 and the edge's extent |D.x| + |D.y| is at least 1e-12. So the length of
//    D comes of normal numbers in `float` too, |m| <= 1 / t unless the line counts as vertical, and nothing overflows
//    before the quotient by the diagonal. What underflow adds, below 1e-38 M and 1e-32, is nothing beside u M.
// 1. The stored line. Five roundings reach m: two differences, two divisions by the length, whose own error cancels,
//    and that of y by x. As d(atan m) = dm / (1 + m^2), they turn the line about s by at most 5/2 u. The intercept
//    errs by u (|s.y| + 2 |m s.x|), which is a distance of 3 u M at most.
// 2. The residuals. Lines that cross have slopes further than t apart, so that the pivot's slope m' is above t / 2, and
//    its reciprocal does not overflow. By the rule of merits |m'| >= 1 - 2 u or |m'| >= |m|, m being the other slope;
//    so |f| <= r, f being the factor, and |f c'| <= r (|s'.x| + |s'.y|) <= 2 r M. Substitution leaves a residual of
//    2 u |m' x| in the pivot's row, a distance of 2 u |x|, and in the other row at most
//      4 u |m x| + 3 u |y| (1 + |f|) + u |f c'|;
//    where the guard stands for 1 - f, f is 1, and it errs by less than u. On a vertical line the residual of the other
//    one is u (|m x| + |y|). With 1, p lies within u (4 |x| + 6 |y| + 5 M) of the line through s of slope m.
// 3. The edge. The products of TEdge2::IsWithin err by 4 u |p - s| |D| and 4 u |p - e| |D|. So if p passes, its foot on
//    the exact line of the edge lies on the edge, or off it by 5 u h, h being the distance of p from that line. Then
//    |x| and |y| exceed M by h at most, and as |D| <= 2 sqrt(2) M,
//      h <= u (4 (M + h) + 6 (M + h) + 5 M) + 5/2 u |D| <= u (22.1 M + 10 h), hence h < 12 epsilon M.
//    On a vertical edge x is s.x, and y goes by the foot; as the edge leans by t |D|, y is off by t^2 |D| at most.
// 4. Overflow, which only `float` knows. An infinite coordinate of p adds the same infinity, or NaN, to both products,
//    so that they have one sign or fail. Where p is finite and a product overflows, p is further than 1e26 >= 1e14 M
//    away along the line: of the terms of either product the greater one has the sign of p's side, which is the same
//    for both, and the other one has it too or is far smaller. The sums have that sign or are NaN. Either way p fails.
//
// The margin is more than five times the bound of 3, and what it grows by with the extent a million times t^2 |D|.

/// The edges of a closed outline, made as they are asked for: a list of them would take more room than the vertices.
template <class T>
struct OutlineEdges
{
    const T* points;
    unsigned int stride;
    unsigned int count;

    TVector2<T> GetVertex(unsigned int i) const
    {
        const T* const point = points + std::size_t(i) * stride;
        return {point[0], point[1]};
    }
    TEdge2<T> operator[](unsigned int i) const { return {GetVertex(i), GetVertex(i + 1 < count ? i + 1 : 0)}; }
};

/// What rounding can move a crossing by, with much to spare; infinite for coordinates that are too large or NaN.
template <class T>
T RoundingMargin(const EdgeColumns<T>& edges)
{
    CoordinateSize<T> size;
    // Each edge ends where another starts.
    for (const unsigned int c : {startXColumn, startYColumn})
        for (unsigned int i = 0; i < edges.GetCount(); ++i) size.Add(edges.Column(c)[i]);
    return 64 * std::numeric_limits<T>::epsilon() * size.Get();
}

/// Edges that reach less far in x and y together have no box.
template <class T>
constexpr T shortest = T(1e-12);

/// The boxes of several edges, or that of one, by the margin that all edges share.
template <class Value>
struct EdgeBoxes
{
    Value lowX, highX, lowY, highY;
    /// How far the edges reach in x and y together.
    Value extent;

    template <class T>
    CORVEX_ALWAYS_INLINE EdgeBoxes(const EdgeValues<Value>& edges, T margin)
    {
        lowX = edges.startX < edges.endX ? edges.startX : edges.endX;
        highX = edges.startX < edges.endX ? edges.endX : edges.startX;
        lowY = edges.startY < edges.endY ? edges.startY : edges.endY;
        highY = edges.startY < edges.endY ? edges.endY : edges.startY;
        extent = (highX - lowX) + (highY - lowY);
        const Value reach = margin + Numbers::commonTolerance<T> * extent;
        lowX -= reach;
        highX += reach;
        lowY -= reach;
        highY += reach;
    }

    /// Which of them meet another box. Edges that are too short have none, and meet any. Written so that NaN, as two
    /// equal infinities give it, counts as too short.
    template <class T, class Mask>
    CORVEX_ALWAYS_INLINE void Meet(const PlaneBox<T>& box, Mask& meet) const
    {
        meet = (lowX <= box.highX) & (highX >= box.lowX) & (lowY <= box.highY) & (highY >= box.lowY);
        meet |= ~(extent >= shortest<T>);
    }
};

/// The box of one edge; unbounded where the margin is infinite.
template <class T>
CORVEX_ALWAYS_INLINE PlaneBox<T> MakeBox(const EdgeValues<T>& edge, T margin)
{
    const EdgeBoxes<T> box(edge, margin);
    if (!(box.extent >= shortest<T>)) return PlaneBox<T>::Unbounded();
    return {box.lowX, box.highX, box.lowY, box.highY};
}

/// The box of a whole block of edges, by lanes of the given width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE PlaneBox<T> BoundBlock(const EdgeColumns<T>& edges, unsigned int first, T margin)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    static_assert(blockSize % laneCount == 0);
    Lane lowX, highX, lowY, highY;
    Broadcast(lowX, PlaneBox<T>::infinity);
    Broadcast(highX, -PlaneBox<T>::infinity);
    lowY = lowX;
    highY = highX;
    decltype(lowX < highX) areShort = {};
    for (unsigned int i = first; i < first + blockSize; i += laneCount) {
        EdgeValues<Lane> values;
        values.Read(edges, i);
        const EdgeBoxes<Lane> boxes(values, margin);
        lowX = boxes.lowX < lowX ? boxes.lowX : lowX;
        highX = boxes.highX > highX ? boxes.highX : highX;
        lowY = boxes.lowY < lowY ? boxes.lowY : lowY;
        highY = boxes.highY > highY ? boxes.highY : highY;
        areShort |= ~(boxes.extent >= shortest<T>);
    }
    if (AnyLane(areShort)) return PlaneBox<T>::Unbounded();

    PlaneBox<T> block;
    for (unsigned int k = 0; k < laneCount; ++k) block.Join({lowX[k], highX[k], lowY[k], highY[k]});
    return block;
}

/// Sets the boxes of all blocks.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE void BoundBlocks(const EdgeColumns<T>& edges, T margin, BoxTree<T>* blocks)
{
    const unsigned int count = edges.GetCount();
    const unsigned int wholeBlocks = count / blockSize;
    for (unsigned int block = 0; block < wholeBlocks; ++block)
        blocks->SetLeaf(block, BoundBlock<Bytes>(edges, block * blockSize, margin));
    if (count % blockSize == 0) return;
    PlaneBox<T> rest;
    for (unsigned int i = wholeBlocks * blockSize; i < count; ++i) {
        EdgeValues<T> edge;
        edge.Read(edges, i);
        rest.Join(MakeBox(edge, margin));
    }
    blocks->SetLeaf(wholeBlocks, rest);
}

/// Fills the columns of the lines, by lanes of the given width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE void MeasureLines(const EdgeColumns<T>& edges)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr T tolerance = Numbers::commonTolerance<T>;
    Lane one, merit;
    Broadcast(one, T(1));
    for (unsigned int i = 0; i < edges.GetCount(); i += Lanes<T, Bytes>::count) {
        EdgeValues<Lane> edge;
        edge.Read(edges, i);
        const Lane slope = edge.directionY / edge.directionX;
        MeasurePairMerit<T>(slope, merit);
        const auto isVertical = (edge.directionX <= tolerance) & (edge.directionX >= -tolerance);
        edges.Write(slope, slopeColumn, i);
        edges.Write(edge.startY - edge.startX * slope, interceptColumn, i);
        edges.Write(merit, meritColumn, i);
        edges.Write(isVertical ? one : Lane{}, verticalColumn, i);
    }
}

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

    /// Repeats the line of edge i in all lanes.
    template <class T>
    CORVEX_ALWAYS_INLINE void Repeat(const EdgeColumns<T>& edges, unsigned int i)
    {
        Broadcast(startX, edges.Column(startXColumn)[i]);
        Broadcast(slope, edges.Column(slopeColumn)[i]);
        Broadcast(intercept, edges.Column(interceptColumn)[i]);
        Broadcast(merit, edges.Column(meritColumn)[i]);
        Broadcast(vertical, edges.Column(verticalColumn)[i]);
    }
};

/// Crosses a line that is not vertical with others; writes the points, and the mask of those that exist. Where the
/// other line is vertical, the point lies on it at the height of the first. Else the rows (-slope, 1 | intercept) of
/// both lines are solved, unless the determinant counts as zero.
///
/// A slope is finite or NaN, as SolvePair asks, since a direction that does not count as vertical has an x above the
/// tolerance and a y of about 1 at most. If a slope is NaN, the point lies on no edge.
template <class T, class Lane, class Mask>
CORVEX_ALWAYS_INLINE void CrossSloping(const EdgeLine<Lane>& a, const EdgeLine<Lane>& b, Lane* x, Lane* y, Mask* exists)
{
    const PairRow<Lane> first = {-a.slope, a.intercept, a.merit};
    const PairRow<Lane> second = {-b.slope, b.intercept, b.merit};
    Lane solvedX, solvedY;
    SolvePair<T>(first, second, solvedX, solvedY);

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
template <class Lane, class Mask>
CORVEX_ALWAYS_INLINE void CrossVertical(const EdgeLine<Lane>& a, const EdgeLine<Lane>& b, Lane* x, Lane* y,
                                        Mask* exists)
{
    *x = a.startX;
    *y = b.intercept + a.startX * b.slope;
    *exists = b.vertical == 0;
}

/// The search for the nearest crossing of an edge, as far as it has come.
template <class T>
struct Nearest
{
    /// Held as a double in both forms.
    double distance = static_cast<double>(Numbers::unsetBound<T>);
    unsigned int index = 0;
    TVector2<T> point;
    bool isFound = false;
};

/// Looks for a nearer crossing with the edges from `first` on, by lanes of the given width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE void SearchRun(const EdgeColumns<T>& edges, const EdgeValues<T>& edge,
                                    const EdgeLine<typename Lanes<T, Bytes>::Type>& line, unsigned int first,
                                    unsigned int end, Nearest<T>* nearest)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using Mask = decltype(Lane() == Lane());
    constexpr unsigned int laneCount = Lanes<T, Bytes>::count;
    const TVector2<T> start(edge.startX, edge.startY);

    for (unsigned int from = first; from < end; from += laneCount) {
        EdgeLine<Lane> others;
        others.Read(edges, from);
        Lane x, y;
        Mask exists, isOnFirst, isHit;
        if (line.vertical[0] != T(0))
            CrossVertical(line, others, &x, &y, &exists);
        else
            CrossSloping<T>(line, others, &x, &y, &exists);

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
            if (nearest->distance > distance) *nearest = {distance, from + k, crossing, true};
        }
    }
}

/// Where to begin among some edges: behind those, a register at a time, of which none has a box that meets another box.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE unsigned int PassOver(const EdgeColumns<T>& edges, unsigned int first, unsigned int end,
                                           const PlaneBox<T>& box, T margin)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    for (; first < end; first += Lanes<T, Bytes>::count) {
        EdgeValues<Lane> values;
        values.Read(edges, first);
        decltype(Lane() == Lane()) meet;
        EdgeBoxes<Lane>(values, margin).Meet(box, meet);
        if (AnyLane(meet)) break;
    }
    return first;
}

/// CrossingSearch::FindFirst by lanes of the given width, block by block.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE bool FindFirstCrossing(const EdgeColumns<T>& edges, const BoxTree<T>& blocks, T margin,
                                            unsigned int i, unsigned int* index, TVector2<T>* point)
{
    EdgeValues<T> edge;
    EdgeLine<typename Lanes<T, Bytes>::Type> line = {};
    edge.Read(edges, i);
    line.Repeat(edges, i);
    const PlaneBox<T> box = MakeBox(edge, margin);
    const unsigned int first = i + 2;
    const unsigned int end = i == 0 ? edges.GetCount() - 1 : edges.GetCount();
    Nearest<T> nearest;

    // 1. The first block lies beside the edge: its box nearly always meets the edge's, so its edges go by their own.
    const unsigned int nextBlock = first / blockSize + 1;
    const unsigned int blockEnd = std::min(nextBlock * blockSize, end);
    SearchRun<Bytes>(edges, edge, line, PassOver<Bytes>(edges, first, blockEnd, box, margin), blockEnd, &nearest);

    // 2. The other blocks by their boxes.
    if (blockEnd < end)
        blocks.Traverse(
            blocks.GetBelowTop(), nextBlock,
            [&](unsigned int level, std::size_t group)
                CORVEX_INLINE_LAMBDA { return blocks.template FindMeeting<Bytes>(level, group, box); },
            [&](unsigned int from, unsigned int to) CORVEX_INLINE_LAMBDA {
                SearchRun<Bytes>(edges, edge, line, from * blockSize, std::min(to * blockSize, end), &nearest);
                return true;
            });
    if (!nearest.isFound) return false;
    *index = nearest.index;
    *point = nearest.point;
    return true;
}

} // namespace

template <class T>
CrossingSearch<T>::CrossingSearch(const T* points, unsigned int stride, unsigned int vertexCount)
    : edges(OutlineEdges<T>{points, stride, vertexCount}, vertexCount, endOfColumns - EdgeColumns<T>::edgeColumnCount),
      blocks((vertexCount + blockSize - 1) / blockSize),
      margin(RoundingMargin(edges))
{
    ForThisProcessor([this](auto bytes) {
        MeasureLines<bytes>(edges);
        BoundBlocks<bytes>(edges, margin, &blocks);
    });
    blocks.RaiseAll();
}

template <class T>
bool CrossingSearch<T>::FindFirst(unsigned int i, unsigned int* index, TVector2<T>* point) const
{
    return ForThisProcessor(
        [=](auto bytes) { return FindFirstCrossing<bytes>(edges, blocks, margin, i, index, point); });
}

template class CrossingSearch<float>;
template class CrossingSearch<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

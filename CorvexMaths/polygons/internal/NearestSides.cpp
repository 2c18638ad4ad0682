#include <CorvexMaths/internal/HilbertCurve.h>
#include <CorvexMaths/polygons/internal/NearestSides.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

// A box of sides, or of points, is passed over where it is further off than a distance in question. Let M be the
// greatest coordinate and epsilon / 2 the unit roundoff. With M <= 1e12 and |D.x| + |D.y| >= 1e-12 for the difference D
// of a side's ends nothing overflows or gets lost below the normal numbers. The distance from an end errs by 2 epsilon
// of itself, that from the line, a product of a difference of 2 sqrt(2) M with a direction that is a unit vector but
// for 3/2 epsilon, by 9 epsilon M; and a point that counts as beside a side, and is not, is off it by 6 epsilon M at
// most. So no distance is short of the exact one from the segment by more than 15 epsilon M. How far a box is off, from
// the gaps between boxes or from the side's line, errs by as much again. The margin is twice the sum. Vertices with
// greater coordinates or NaN, and sides that are shorter, have unbounded boxes.

template <class T>
constexpr T largest = T(1e12);
template <class T>
constexpr T shortest = T(1e-12);

template <class T>
bool IsSound(T x, T y)
{
    return Numbers::Absolute(x) <= largest<T> && Numbers::Absolute(y) <= largest<T>;
}

/// As many vertices keep their order, as places along the curve gain nothing.
constexpr unsigned int fewVertices = 32;

/// The distance between two ranges on an axis; 0 where they meet.
template <class T>
T Gap(T lowA, T highA, T lowB, T highB)
{
    return std::max(T(0), std::max(lowA - highB, lowB - highA));
}

/// Whether a point p nearest to the corner b of an outline belongs between b and the next vertex c, rather than between
/// the vertex a before and b: it lies strictly to the right of the bisector b - a + b - c (of unit vectors), seen from
/// b.
template <class T>
bool BelongsAfterCorner(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& p)
{
    TVector2<T> u = b - a;
    TVector2<T> v = b - c;
    u.Normalise();
    v.Normalise();
    return (u + v).SignedArea(p - b) < T(0);
}

} // namespace

/// A side that was replaced by two: itself, which now ends earlier, and an added one.
template <class T>
struct NearestSides<T>::Split
{
    /// A side with its box, to pass over boxes of points that lie too far from it.
    struct Reach
    {
        EdgeValues<T> side;
        PlaneBox<T> box;

        /// Whether a point in a box may lie within a bound of the side.
        bool MayMeet(const typename BoxTree<T>::Group& boxes, unsigned int k, T bound) const
        {
            const T gapX = Gap(box.lowX, box.highX, boxes.lowX[k], boxes.highX[k]);
            const T gapY = Gap(box.lowY, box.highY, boxes.lowY[k], boxes.highY[k]);
            // Written so that NaN, from unbounded boxes, may meet.
            if (gapX * gapX + gapY * gapY > bound * bound) return false;
            const T extentX = (boxes.highX[k] - boxes.lowX[k]) / 2, extentY = (boxes.highY[k] - boxes.lowY[k]) / 2;
            const T fromStartX = boxes.lowX[k] + extentX - side.startX;
            const T fromStartY = boxes.lowY[k] + extentY - side.startY;
            const T offset = Numbers::Absolute(fromStartX * side.directionY - fromStartY * side.directionX);
            const T reach = extentX * Numbers::Absolute(side.directionY) + extentY * Numbers::Absolute(side.directionX);
            return !(offset - reach > bound) || box.lowX == -PlaneBox<T>::infinity;
        }
    };

    unsigned int kept, added;
    T margin;
    /// The side as it was, and the two.
    Reach former, first, second;
};

template <class T>
NearestSides<T>::NearestSides(const T* points, unsigned int stride, unsigned int outlineCount, unsigned int vertexCount)
    : count(vertexCount),
      vertexBlock(new unsigned int[4 * std::size_t(count)]),
      valueBlock(new T[5 * std::size_t(count)]),
      numbers(vertexBlock.get()),
      x(valueBlock.get()),
      y(x + count),
      next(numbers + count),
      previous(next + count),
      directionX(y + count),
      directionY(directionX + count),
      labels(new std::uint64_t[count]),
      nearest(directionY + count),
      nearestSide(previous + count),
      size(T(0)),
      sideBoxes((count + blockSize - 1) / blockSize),
      pointBoxes((count + blockSize - 1) / blockSize),
      farthest(new T[pointBoxes.GetGroupCount() * BoxTree<T>::fanOut]),
      first(new unsigned int[pointBoxes.GetGroupCount() * BoxTree<T>::fanOut])
{
    OrderAlongCurve(points, stride);
    std::fill_n(next, count, none);
    std::fill_n(nearest, count, T(-1));
    std::fill_n(nearestSide, count, none);
    std::fill_n(farthest.get(), pointBoxes.GetGroupCount() * BoxTree<T>::fanOut, T(-1));
    std::fill_n(first.get(), pointBoxes.GetGroupCount() * BoxTree<T>::fanOut, none);

    // 1. The sides.
    {
        const std::unique_ptr<unsigned int[]> places(new unsigned int[outlineCount]);
        for (unsigned int place = 0; place < count; ++place)
            if (numbers[place] < outlineCount) places[numbers[place]] = place;
        start = places[0];
        const std::uint64_t share = (std::uint64_t(1) << 62) / outlineCount;
        for (unsigned int i = 0; i < outlineCount; ++i) {
            const unsigned int place = places[i], after = places[i + 1 < outlineCount ? i + 1 : 0];
            next[place] = after;
            previous[after] = place;
            labels[place] = i * share;
            MeasureSide(place);
        }
    }
    for (unsigned int block = 0; block < sideBoxes.GetSize(0); ++block) MeasureBlock(block);
    sideBoxes.RaiseAll();

    // 2. The points.
    for (unsigned int place = 0; place < count; ++place) {
        if (next[place] != none) continue;
        nearest[place] = Numbers::unsetBound<T>;
        MeasureAgainstOthers(place);
    }
    for (unsigned int block = 0; block < pointBoxes.GetSize(0); ++block) {
        PlaneBox<T> box;
        for (unsigned int i = block * blockSize; i < std::min((block + 1) * blockSize, count); ++i)
            box.Join(IsSound(x[i], y[i]) ? PlaneBox<T>::Around(x[i], y[i], T(0)) : PlaneBox<T>::Unbounded());
        pointBoxes.SetLeaf(block, box);
    }
    pointBoxes.RaiseAll();
    for (unsigned int level = 0; level <= pointBoxes.GetTop(); ++level)
        for (std::size_t box = 0; box < pointBoxes.GetSize(level); ++box) Summarise(level, box);
}

template <class T>
void NearestSides<T>::OrderAlongCurve(const T* points, unsigned int stride)
{
    const auto coordinates = [=](unsigned int i) { return points + std::size_t(i) * stride; };
    for (unsigned int i = 0; i < count; ++i) {
        const T* const point = coordinates(i);
        if (IsSound(point[0], point[1]))
            size = std::max(size, std::max(Numbers::Absolute(point[0]), Numbers::Absolute(point[1])));
    }
    // Vertices closer than this to the origin share a cell, for the quotient must not overflow.
    const double scale = size >= shortest<T> ? 0x1p30 / static_cast<double>(size) : 0;
    const auto cell = [=](T coordinate) {
        return static_cast<std::uint32_t>((static_cast<double>(coordinate) * scale + 0x1p30) * 0.999999);
    };
    const std::unique_ptr<std::pair<std::uint64_t, unsigned int>[]> order(
        new std::pair<std::uint64_t, unsigned int>[count]);
    for (unsigned int i = 0; i < count; ++i) {
        const T* const point = coordinates(i);
        const bool hasPlace = count > fewVertices && IsSound(point[0], point[1]);
        order[i] = {hasPlace ? GetHilbertPlace<31, std::uint64_t>(cell(point[0]), cell(point[1])) : 0, i};
    }
    std::sort(order.get(), order.get() + count);
    for (unsigned int place = 0; place < count; ++place) {
        numbers[place] = order[place].second;
        x[place] = coordinates(numbers[place])[0];
        y[place] = coordinates(numbers[place])[1];
    }
}

template <class T>
void NearestSides<T>::MeasureSide(unsigned int side)
{
    EdgeValues<T> values;
    values.Measure(TEdge2<T>(GetPoint(side), GetPoint(next[side])));
    directionX[side] = values.directionX;
    directionY[side] = values.directionY;
}

template <class T>
inline EdgeValues<T> NearestSides<T>::GetSide(unsigned int side) const
{
    const unsigned int end = next[side];
    return {x[side], y[side], x[end], y[end], x[end] - x[side], y[end] - y[side], directionX[side], directionY[side]};
}

template <class T>
PlaneBox<T> NearestSides<T>::MakeBox(unsigned int side) const
{
    const EdgeValues<T> values = GetSide(side);
    const bool isSound = IsSound(values.startX, values.startY) && IsSound(values.endX, values.endY) &&
                         Numbers::Absolute(values.deltaX) + Numbers::Absolute(values.deltaY) >= shortest<T>;
    return isSound ? PlaneBox<T>::Around(values.startX, values.startY, values.endX, values.endY, T(0))
                   : PlaneBox<T>::Unbounded();
}

template <class T>
void NearestSides<T>::MeasureBlock(unsigned int block)
{
    PlaneBox<T> box;
    for (unsigned int i = block * blockSize; i < std::min((block + 1) * blockSize, count); ++i)
        if (next[i] != none) box.Join(MakeBox(i));
    sideBoxes.SetLeaf(block, box);
}

/// Finds the greatest distance in a box of points and the point to go first, from those below it.
template <class T>
void NearestSides<T>::Summarise(unsigned int level, std::size_t box)
{
    T greatest = T(-1);
    unsigned int best = none;
    const auto take = [&](T distance, unsigned int point) {
        greatest = std::max(greatest, distance);
        if (point == none || nearest[point] < T(0)) return;
        const bool goesFirst = best == none || nearest[best] > nearest[point] ||
                               (nearest[best] == nearest[point] && numbers[point] < numbers[best]);
        if (goesFirst) best = point;
    };
    constexpr unsigned int fanOut = BoxTree<T>::fanOut;
    if (level == 0) {
        const unsigned int from = static_cast<unsigned int>(box) * blockSize;
        for (unsigned int i = from; i < std::min(from + blockSize, count); ++i) take(nearest[i], i);
    } else {
        const std::size_t below = pointBoxes.GetNumber(level - 1, box) * fanOut;
        for (unsigned int k = 0; k < fanOut; ++k) take(farthest[below + k], first[below + k]);
    }
    const std::size_t own = pointBoxes.GetNumber(level, box / fanOut) * fanOut + box % fanOut;
    farthest[own] = greatest;
    first[own] = best;
}

template <class T>
unsigned int NearestSides<T>::FindNearestPoint() const
{
    const std::size_t top = pointBoxes.GetNumber(pointBoxes.GetTop(), 0) * BoxTree<T>::fanOut;
    unsigned int best = none;
    for (unsigned int k = 0; k < BoxTree<T>::fanOut; ++k) {
        const unsigned int point = first[top + k];
        if (point == none) continue;
        if (best == none || nearest[best] > nearest[point] ||
            (nearest[best] == nearest[point] && numbers[point] < numbers[best]))
            best = point;
    }
    return best;
}

template <class T>
unsigned int NearestSides<T>::FindSideToSplit(unsigned int point) const
{
    // A point without a distance goes to the end.
    const unsigned int side = nearestSide[point];
    if (side == none) return previous[start];

    const PointAndEdge<T> pair(GetSide(side), x[point], y[point]);
    const bool isBeforeStart = pair.IsBeforeStart();
    bool isWithin;
    pair.IsWithin(isWithin);
    if (!isBeforeStart && !pair.IsPastEnd() && isWithin) return side;
    const unsigned int corner = isBeforeStart ? side : next[side];
    const bool isAfter =
        BelongsAfterCorner(GetPoint(previous[corner]), GetPoint(corner), GetPoint(next[corner]), GetPoint(point));
    return isAfter ? corner : previous[corner];
}

template <class T>
void NearestSides<T>::InsertNearest()
{
    const unsigned int point = FindNearestPoint(), side = FindSideToSplit(point);

    // 1. The point leaves the cloud.
    nearest[point] = T(-1);
    nearestSide[point] = none;
    std::size_t box = point / blockSize;
    for (unsigned int level = 0; level <= pointBoxes.GetTop(); ++level, box /= BoxTree<T>::fanOut)
        Summarise(level, box);

    // 2. The side leads to it from now on, and a new one leads on from there.
    const EdgeValues<T> former = GetSide(side);
    const PlaneBox<T> formerBox = MakeBox(side);
    LabelBetween(side, point);
    next[point] = next[side];
    previous[point] = side;
    previous[next[side]] = point;
    next[side] = point;
    for (const unsigned int changed : {side, point}) MeasureSide(changed);
    for (const unsigned int changed : {side, point}) {
        MeasureBlock(changed / blockSize);
        sideBoxes.Raise(changed / blockSize);
    }

    // 3. The points that are near to any of the three.
    const T margin = 64 * std::numeric_limits<T>::epsilon() * size;
    const Split split = {
        side, point, margin, {former, formerBox}, {GetSide(side), MakeBox(side)}, {GetSide(point), MakeBox(point)}};
    MeasureAfterSplit(split, pointBoxes.GetTop(), 0);
}

template <class T>
void NearestSides<T>::MeasureAfterSplit(const Split& split, unsigned int level, std::size_t group)
{
    constexpr unsigned int fanOut = BoxTree<T>::fanOut;
    const auto& boxes = pointBoxes.GetGroup(level, group);
    const T* const reach = &farthest[pointBoxes.GetNumber(level, group) * fanOut];
    for (unsigned int k = 0; k < fanOut; ++k) {
        // A box without points of the cloud is of none.
        if (reach[k] < T(0)) continue;
        const T bound = reach[k] + split.margin;
        if (!split.first.MayMeet(boxes, k, bound) && !split.second.MayMeet(boxes, k, bound) &&
            !split.former.MayMeet(boxes, k, bound))
            continue;
        const std::size_t box = group * fanOut + k;
        if (level == 0)
            MeasureBlockAfterSplit(split, static_cast<unsigned int>(box));
        else
            MeasureAfterSplit(split, level - 1, box);
        Summarise(level, box);
    }
}

template <class T>
void NearestSides<T>::MeasureBlockAfterSplit(const Split& split, unsigned int block)
{
    const unsigned int from = block * blockSize, length = std::min(blockSize, count - from);
    T toKept[blockSize], toAdded[blockSize];
    for (unsigned int k = 0; k < length; ++k) {
        toKept[k] = PointAndEdge<T>(split.first.side, x[from + k], y[from + k]).Distance(split.first.side);
        toAdded[k] = PointAndEdge<T>(split.second.side, x[from + k], y[from + k]).Distance(split.second.side);
    }
    for (unsigned int k = 0; k < length; ++k) {
        const unsigned int point = from + k;
        if (nearest[point] < T(0)) continue;
        const bool wasNearest = nearestSide[point] == split.kept;
        const T former = nearest[point];
        if (wasNearest) {
            nearest[point] = Numbers::unsetBound<T>;
            nearestSide[point] = none;
        }
        Offer(point, split.kept, toKept[k]);
        Offer(point, split.added, toAdded[k]);
        if (wasNearest && nearest[point] > former) MeasureAgainstOthers(point);
    }
}

template <class T>
void NearestSides<T>::MeasureAgainstOthers(unsigned int point)
{
    SearchSides(point, sideBoxes.GetTop(), 0);
}

template <class T>
void NearestSides<T>::SearchSides(unsigned int point, unsigned int level, std::size_t group)
{
    // The boxes in the order of how far they are off; places without a box are infinitely far.
    constexpr unsigned int fanOut = BoxTree<T>::fanOut;
    const auto& boxes = sideBoxes.GetGroup(level, group);
    const T margin = 64 * std::numeric_limits<T>::epsilon() * size;
    const bool isSound = IsSound(x[point], y[point]);
    T off[fanOut];
    for (unsigned int k = 0; k < fanOut; ++k) {
        const T gapX = Gap(x[point], x[point], boxes.lowX[k], boxes.highX[k]);
        const T gapY = Gap(y[point], y[point], boxes.lowY[k], boxes.highY[k]);
        const T distance = Numbers::SquareRoot(gapX * gapX + gapY * gapY);
        const bool isEmpty = boxes.lowX[k] > boxes.highX[k];
        off[k] = isEmpty ? PlaneBox<T>::infinity : isSound ? distance : T(0);
    }
    for (unsigned int remaining = (1u << fanOut) - 1; remaining != 0;) {
        unsigned int closest = static_cast<unsigned int>(__builtin_ctz(remaining));
        for (unsigned int k = closest + 1; k < fanOut; ++k)
            if ((remaining >> k & 1) != 0 && off[k] < off[closest]) closest = k;
        remaining &= ~(1u << closest);
        if (off[closest] > nearest[point] + margin) return;
        const std::size_t box = group * fanOut + closest;
        if (level > 0) {
            SearchSides(point, level - 1, box);
            continue;
        }
        const unsigned int from = static_cast<unsigned int>(box) * blockSize;
        for (unsigned int side = from; side < std::min(from + blockSize, count); ++side) {
            if (next[side] == none) continue;
            const EdgeValues<T> values = GetSide(side);
            Offer(point, side, PointAndEdge<T>(values, x[point], y[point]).Distance(values));
        }
    }
}

template <class T>
inline void NearestSides<T>::Offer(unsigned int point, unsigned int side, T distance)
{
    // Whichever order the sides come in, the earliest of the nearest ones stays.
    const bool isNearer = nearest[point] > distance;
    const bool isEarlier =
        nearest[point] == distance && nearestSide[point] != none && labels[side] < labels[nearestSide[point]];
    if (isNearer || isEarlier) {
        nearest[point] = distance;
        nearestSide[point] = side;
    }
}

/// Labels a side that is to come after another, before it is linked: halfway to the one after that.
template <class T>
void NearestSides<T>::LabelBetween(unsigned int side, unsigned int added)
{
    const auto gapAfter = [&] {
        const unsigned int after = next[side];
        return (after == start ? std::uint64_t(1) << 62 : labels[after]) - labels[side];
    };
    if (gapAfter() < 2) SpreadLabels(side);
    labels[added] = labels[side] + gapAfter() / 2;
}

/// Makes room after a label: spreads those of the smallest range of labels around it, a power of two long, that holds
/// few enough (M. A. Bender and others, "Two simplified algorithms for maintaining order in a list", 2002).
template <class T>
void NearestSides<T>::SpreadLabels(unsigned int side)
{
    constexpr double density = 2 / 1.4;
    unsigned int earliest = side, latest = side;
    std::uint64_t held = 1;
    double most = 1;
    for (unsigned int bits = 1;; ++bits) {
        const std::uint64_t length = std::uint64_t(1) << bits, low = labels[side] & ~(length - 1);
        most *= density;
        for (; earliest != start && labels[previous[earliest]] >= low; earliest = previous[earliest]) ++held;
        for (; next[latest] != start && labels[next[latest]] - low < length; latest = next[latest]) ++held;
        if (static_cast<double>(held) > most && bits < 62) continue;
        const std::uint64_t share = length / held;
        if (share < 2) continue;
        std::uint64_t label = low;
        for (unsigned int i = earliest; held > 0; i = next[i], label += share, --held) labels[i] = label;
        return;
    }
}

template <class T>
void NearestSides<T>::WriteOutline(unsigned int* order) const
{
    unsigned int place = start;
    do {
        *order++ = numbers[place];
        place = next[place];
    } while (place != start);
}

template class NearestSides<float>;
template class NearestSides<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The convex hull of polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/pointsets/internal/KeepBoxGuard.h>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/polygons/internal/Ascending.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The direction of `vertex` from `pivot`, in radians from the x axis up to a full turn; 0 where they coincide.
template <class T>
T PolarAngle(const TVector2<T>& pivot, const TVector2<T>& vertex)
{
    const TVector2<T> difference = vertex - pivot;
    const T length = difference.GetLength();
    if (length == T(0)) return T(0);
    const T angle = Numbers::ArcCosine(Numbers::ClampCosine(difference.x / length));
    return difference.y < T(0) ? Numbers::fullTurn<T> - angle : angle;
}

/// Twice the signed area of the triangle a, b, c: positive where the way from a through b to c turns left.
template <class T>
T Turn(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    return (b - a).SignedArea(c - a);
}

/// Whether c lies strictly farther from a than b does.
template <class T>
bool IsFarther(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    return c.DiffVectLenSquared(a) > b.DiffVectLenSquared(a);
}

/// Counting sort of items 0 to count - 1 by bucket(i): place(i, slot) puts item i into its slot. Linear time, stable.
/// `ends` has one entry for each bucket and one more; it gets their ends.
template <class Bucket, class Place>
void CountingSort(unsigned int count, unsigned int bucketCount, unsigned int* ends, Bucket bucket, Place place)
{
    std::fill_n(ends, bucketCount + std::size_t(1), 0u);
    for (unsigned int i = 0; i < count; ++i) ++ends[bucket(i) + std::size_t(1)];
    for (std::size_t b = 1; b <= bucketCount; ++b) ends[b] += ends[b - 1];
    for (unsigned int i = 0; i < count; ++i) place(i, ends[bucket(i)]++);
}

/// The vertices of a polygon but its lowest one, the pivot, as pairs of their polar angle and themselves, ordered by
/// angle. Where no two angles are equal there is but one order, which is found in linear time for directions that
/// lie evenly; that it is strictly ascending is checked at the end, whatever came before.
template <class T, template <class> class V>
class PolarOrder
{
public:
    using Pair = CorvexUtilities::TPair<T, V<T>>;

    PolarOrder(const V<T>* polygon, unsigned int vertexCount, unsigned int pivot)
        : vertices(polygon),
          count(vertexCount - 1),
          pivotIndex(pivot),
          start(InPlane(polygon[pivot])),
          bucketCount(count / bucketShare < mostBuckets ? count / bucketShare + 1 : mostBuckets)
    {}

    const V<T>& operator[](unsigned int i) const { return vertices[i < pivotIndex ? i : i + 1]; }

    T Angle(const V<T>& vertex) const { return PolarAngle(start, InPlane(vertex)); }

    /// Writes the ordered pairs; returns false, and leaves any pairs, where two angles are equal or an argument is
    /// such that angles may be no numbers.
    bool WriteOrdered(Pair* pairs) const
    {
        const std::unique_ptr<std::uint16_t[]> bucket(new std::uint16_t[count]);
        if (!FindBuckets(bucket.get())) return false;
        const std::unique_ptr<unsigned int[]> ends(new unsigned int[bucketCount + std::size_t(1)]);
        CountingSort(
            count, bucketCount, ends.get(), [&](unsigned int i) { return bucket[i]; },
            [&](unsigned int i, unsigned int slot) { pairs[slot].second = (*this)[i]; });

        // Bucket by bucket the arc cosine keeps to one range, which it is faster for.
        unsigned int largest = 0;
        for (unsigned int b = 0, first = 0; b < bucketCount; first = ends[b++])
            largest = std::max(largest, ends[b] - first);
        const Scratch scratch(largest);
        T previous = T(-1);
        for (unsigned int b = 0, first = 0; b < bucketCount; first = ends[b++])
            if (!OrderBucket(pairs + first, ends[b] - first, scratch, &previous)) return false;
        return true;
    }

private:
    /// So many pairs stay in the nearest cache.
    static constexpr unsigned int bucketShare = 1024;
    static constexpr unsigned int mostBuckets = std::numeric_limits<std::uint16_t>::max();

    /// What the ordering of a bucket of at most so many pairs works in.
    struct Scratch
    {
        explicit Scratch(unsigned int most) : pairs(new Pair[most]), ends(new unsigned int[most + std::size_t(1)]) {}

        std::unique_ptr<Pair[]> pairs;
        std::unique_ptr<unsigned int[]> ends;
    };

    /// Writes, for each vertex, which of the buckets its direction falls into. They part the upper half of a diamond
    /// around the pivot evenly, and so part its angles in their order but for rounding. Returns false where a vertex
    /// lies in the pivot or below it, or where its angle may be no number.
    bool FindBuckets(std::uint16_t* bucket) const
    {
        const T scale = static_cast<T>(bucketCount) * T(0.5);
        bool isSound = true;
        for (unsigned int i = 0; i < count; ++i) {
            const TVector2<T> difference = InPlane((*this)[i]) - start;
            const T share = T(1) - difference.x / (Numbers::Absolute(difference.x) + difference.y);
            isSound &= difference.y >= T(0) && share >= T(0) && share <= T(2);
            const T place = share * scale;
            // NaN goes to the last one, too.
            bucket[i] = place < static_cast<T>(bucketCount) ? static_cast<std::uint16_t>(place)
                                                            : static_cast<std::uint16_t>(bucketCount - 1);
        }
        return isSound;
    }

    /// Computes the angles of the pairs of a bucket and orders them, by a counting sort into as many buckets as there
    /// are pairs. Returns whether they ascend strictly from the previous angle on, which becomes the last one.
    bool OrderBucket(Pair* pairs, unsigned int pairCount, const Scratch& scratch, T* previous) const
    {
        Pair* const sorted = scratch.pairs.get();
        unsigned int* const ends = scratch.ends.get();
        if (pairCount == 0) return true;
        for (unsigned int i = 0; i < pairCount; ++i) pairs[i].first = Angle(pairs[i].second);
        const auto range = std::minmax_element(pairs, pairs + pairCount);
        const T least = range.first->first;
        const T scale = static_cast<T>(pairCount) / (range.second->first - least);
        const auto bucket = [=](unsigned int i) {
            const T place = (pairs[i].first - least) * scale;
            // NaN, which angles that are all equal lead to, goes to the last one, too.
            return place < static_cast<T>(pairCount) ? static_cast<unsigned int>(place) : pairCount - 1;
        };
        CountingSort(pairCount, pairCount, ends, bucket,
                     [=](unsigned int i, unsigned int slot) { sorted[slot] = pairs[i]; });
        unsigned int first = 0;
        for (unsigned int b = 0; b < pairCount; first = ends[b++])
            if (ends[b] - first > 1) std::sort(sorted + first, sorted + ends[b], Ascending());
        bool isAscending = true;
        for (unsigned int i = 0; i < pairCount; ++i) {
            isAscending &= sorted[i].first > *previous;
            *previous = sorted[i].first;
            pairs[i] = sorted[i];
        }
        return isAscending;
    }

    const V<T>* vertices;
    unsigned int count;
    unsigned int pivotIndex;
    TVector2<T> start;
    unsigned int bucketCount;
};

} // namespace

template <class T, template <class> class V>
void TPolygon<T, V>::MakeConvexHull()
{
    if (this->count == 0) return;

    const Kernels::KeepBoxGuard guard(this->keepBox);
    const unsigned int pivotIndex = GetBottomLeft();
    const V<T> pivot = this->storage[pivotIndex];
    const TVector2<T> start = InPlane(pivot);

    // 1. The other vertices in polar order around the pivot.
    const unsigned int pairCount = this->count - 1;
    sortedList.Clear(false);
    sortedList.Expand(pairCount);
    const PolarOrder<T, V> order(this->storage, this->count, pivotIndex);
    if (!order.WriteOrdered(sortedList.GetStream())) {
        // The order of equal angles is what the sort makes of that of the vertices.
        for (unsigned int i = 0; i < pairCount; ++i) sortedList[i] = TPair<T, V<T>>(order.Angle(order[i]), order[i]);
        sortedList.Sort();
    }

    // 2. The hull begins with the pivot and the first vertex elsewhere.
    this->Clear(false);
    this->Add(pivot);
    unsigned int pair = 0;
    while (pair < pairCount && InPlane(sortedList[pair].second) == start) ++pair;
    if (pair < pairCount) this->Add(sortedList[pair++].second);

    // 3. Each further vertex is put on, which may undo some of those before it.
    for (; pair < pairCount; ++pair) AddHullVertex(sortedList[pair].second);

    // 4. The last vertex must turn left on the way back to the pivot, too.
    if (this->count >= 3) {
        const TVector2<T> last = InPlane(this->storage[this->count - 1]);
        const TVector2<T> beforeLast = InPlane(this->storage[this->count - 2]);
        if (last == start || !(Turn(beforeLast, last, start) > T(0))) --this->count;
    }
}

template <class T, template <class> class V>
void TPolygon<T, V>::AddHullVertex(const V<T>& vertex)
{
    const TVector2<T> c = InPlane(vertex);
    if (c == InPlane(this->storage[this->count - 1])) return;

    // From the last side backwards: the first side that has the vertex to its left or on its line is where the hull
    // goes on.
    for (unsigned int k = this->count - 1; k >= 1; --k) {
        const TVector2<T> a = InPlane(this->storage[k - 1]);
        const TVector2<T> b = InPlane(this->storage[k]);
        const T turn = Turn(a, b, c);
        if (turn > T(0)) {
            if (k + 1 == this->count) {
                this->Add(vertex);
            } else {
                this->storage[k + 1] = vertex;
                this->count = k + 2;
            }
            return;
        }
        if (turn == T(0)) {
            if (IsFarther(a, b, c)) this->storage[k] = vertex;
            this->count = k + 1;
            return;
        }
        // A turn of NaN at the last side drops the vertex; further back it ends nothing.
        if (k + 1 == this->count && !(turn < T(0))) return;
    }
}

} // namespace Halmont::Orrin::CorvexMaths

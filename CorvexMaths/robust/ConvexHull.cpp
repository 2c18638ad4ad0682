#include <CorvexMaths/robust/ConvexHull.h>

#include <CorvexMaths/internal/Signs.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::OrientationSign;
using Kernels::Place;

/// A point that may be on the hull, and where it stands in the set.
struct Candidate
{
    Place place;
    unsigned int index;

    /// The lower, of equally low ones the one to the left, of coinciding ones the earlier.
    bool operator<(const Candidate& other) const
    {
        if (place.y != other.place.y) return place.y < other.place.y;
        if (place.x != other.place.x) return place.x < other.place.x;
        return index < other.index;
    }
};

template <class T, template <class> class V>
Place PlaceOf(const TPointSet<T, V>& points, unsigned int index)
{
    const V<T>& point = points.GetStream()[index];
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

/// Points of the set that are extreme in eight directions, but for rounding, counter-clockwise from the lowest, and
/// whether all coordinates are finite.
class Extremes
{
public:
    static constexpr unsigned int count = 8;

    template <class T, template <class> class V>
    explicit Extremes(const TPointSet<T, V>& points)
    {
        for (double& most : reach) most = -HUGE_VAL;
        double finite = 0;
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            const Place place = PlaceOf(points, i);
            // Once it is not 0, it stays NaN.
            finite += 0 * place.x + 0 * place.y;
            Look(place);
        }
        areFinite = finite == 0;
    }

    bool AreFinite() const { return areFinite; }
    const Place& operator[](unsigned int i) const { return places[i % count]; }

    double Width() const { return reach[2] + reach[6]; }
    double Height() const { return reach[4] + reach[0]; }

private:
    Place places[count];
    double reach[count];
    bool areFinite;

    void Look(const Place& place)
    {
        const double falling = place.x - place.y;
        const double rising = place.x + place.y;
        const double along[count] = {-place.y, falling, place.x, rising, place.y, -falling, -place.x, -rising};
        for (unsigned int k = 0; k < count; ++k)
            if (along[k] > reach[k]) {
                reach[k] = along[k];
                places[k] = place;
            }
    }
};

/// Tells which points lie strictly inside the closed chain of the extremes. A point to the left of each of its sides is
/// gone round by the chain, so that it lies strictly inside the hull, even where rounding made the chain not convex.
class Sieve
{
public:
    static constexpr unsigned int blockSize = 128;

    explicit Sieve(const Extremes& extremes)
    {
        for (unsigned int i = 0; i < Extremes::count; ++i) {
            const Place& from = extremes[i];
            const Place& to = extremes[i + 1];
            if (from.x == to.x && from.y == to.y) continue;
            Side& side = sides[sideCount++];
            side = {from, {to.x - from.x, to.y - from.y}, 0};
            // With (u, v) the side and (x, y) the way from its start to a point, u y - v x is computed with an error of
            // at most 3 half units and a little of |u y| + |v x|, which the extents bound for all points. A bound that
            // overflows lets no point pass.
            const double size =
                std::fabs(side.along.x) * extremes.Height() + std::fabs(side.along.y) * extremes.Width();
            side.bound = 4 * Kernels::halfUnit * size + Kernels::underflow;
        }
    }

    /// Whether there is no side, so that no point is inside.
    bool IsEmpty() const { return sideCount == 0; }

    /// Sets `inside` to 1 for those of `count` points, at most a block, that lie inside, and to 0 for the others.
    void Mark(const double* x, const double* y, unsigned int count, double* inside) const
    {
        for (unsigned int i = 0; i < count; ++i) inside[i] = 1;
        for (unsigned int k = 0; k < sideCount; ++k) {
            const Side side = sides[k];
            for (unsigned int i = 0; i < count; ++i) {
                const double turn = side.along.x * (y[i] - side.from.y) - side.along.y * (x[i] - side.from.x);
                inside[i] = turn > side.bound ? inside[i] : 0;
            }
        }
    }

private:
    struct Side
    {
        Place from;
        Place along;
        double bound;
    };

    Side sides[Extremes::count];
    unsigned int sideCount = 0;
};

/// Writes those points that the sieve does not hold back, or all if it has no sides, and returns their number.
template <class T, template <class> class V>
unsigned int Sift(const TPointSet<T, V>& points, const Sieve& sieve, Candidate* candidates)
{
    double x[Sieve::blockSize], y[Sieve::blockSize], inside[Sieve::blockSize] = {};
    unsigned int kept = 0;
    for (unsigned int first = 0; first < points.GetCount();) {
        const unsigned int count = std::min(Sieve::blockSize, points.GetCount() - first);
        for (unsigned int i = 0; i < count; ++i) {
            const Place place = PlaceOf(points, first + i);
            x[i] = place.x;
            y[i] = place.y;
        }
        if (!sieve.IsEmpty()) sieve.Mark(x, y, count, inside);
        for (unsigned int i = 0; i < count; ++i) {
            candidates[kept] = {{x[i], y[i]}, first + i};
            kept += inside[i] == 0 ? 1 : 0;
        }
        first += count;
    }
    return kept;
}

/// Writes the candidates in order. They are dealt by height into slices, a few to each where they are evenly spread,
/// and each slice is sorted by itself. The slice of a height never falls as the height rises, whatever rounding does;
/// where all come to lie in one slice the time is that of one sort.
void SortBySlices(const Candidate* candidates, unsigned int count, double bottom, double height, Candidate* sorted)
{
    const unsigned int sliceCount = count / 4 + 1;
    const double scale = sliceCount / height;
    // No height, one that overflows, or one so small that its inverse does.
    if (!(scale > 0 && scale < HUGE_VAL)) {
        std::sort(sorted, std::copy(candidates, candidates + count, sorted));
        return;
    }
    const auto sliceOf = [=](const Candidate& candidate) {
        const double share = (candidate.place.y - bottom) * scale;
        return share < sliceCount - 1 ? static_cast<unsigned int>(share) : sliceCount - 1;
    };
    const std::unique_ptr<unsigned int[]> ends(new unsigned int[sliceCount]());
    for (unsigned int i = 0; i < count; ++i) ++ends[sliceOf(candidates[i])];
    for (unsigned int i = 0, start = 0; i < sliceCount; ++i) {
        const unsigned int size = ends[i];
        ends[i] = start;
        start += size;
    }
    for (unsigned int i = 0; i < count; ++i) sorted[ends[sliceOf(candidates[i])]++] = candidates[i];
    for (unsigned int i = 0, start = 0; i < sliceCount; ++i) {
        std::sort(sorted + start, sorted + ends[i]);
        start = ends[i];
    }
}

/// Takes the last vertices of a chain, that begins at `first`, back as long as they do not turn to the left on the way
/// to the next one, and adds that.
void Advance(const Candidate& next, unsigned int first, Candidate* chain, unsigned int* count)
{
    while (*count > first + 1 && OrientationSign(chain[*count - 2].place, chain[*count - 1].place, next.place) <= 0)
        --*count;
    chain[(*count)++] = next;
}

/// Walks up the points, of which there is one at least, along the right side of the hull and down along the left. They
/// are sorted and no two coincide. Writes the vertices, for which there must be room for one more than there are
/// points, and returns their number.
unsigned int Walk(const Candidate* sorted, unsigned int count, Candidate* chain)
{
    unsigned int vertexCount = 0;
    for (unsigned int i = 0; i < count; ++i) Advance(sorted[i], 0, chain, &vertexCount);
    if (count == 1) return 1;
    const unsigned int top = vertexCount - 1;
    for (unsigned int i = count - 1; i-- > 0;) Advance(sorted[i], top, chain, &vertexCount);
    return vertexCount - 1;
}

} // namespace

template <class T, template <class> class V>
ConvexHull<T, V>::ConvexHull(const TPointSet<T, V>& points)
{
    const unsigned int count = points.GetCount();
    if (count == 0) return;
    const Extremes extremes(points);
    if (!extremes.AreFinite()) {
        status = Status::NotFinite;
        return;
    }
    // One slot more than there are points: a candidate is written before it is known whether it stays, and the walk
    // ends where it began.
    const std::unique_ptr<Candidate[]> candidates(new Candidate[count + std::size_t(1)]);
    const unsigned int kept = Sift(points, Sieve(extremes), candidates.get());
    const std::unique_ptr<Candidate[]> sorted(new Candidate[kept]);
    SortBySlices(candidates.get(), kept, extremes[0].y, extremes.Height(), sorted.get());
    const Candidate* const end = std::unique(sorted.get(), sorted.get() + kept, [](const auto& a, const auto& b) {
        return a.place.x == b.place.x && a.place.y == b.place.y;
    });
    Candidate* const chain = candidates.get();
    const unsigned int vertexCount = Walk(sorted.get(), static_cast<unsigned int>(end - sorted.get()), chain);

    const std::unique_ptr<V<T>[]> vertices(new V<T>[vertexCount]);
    for (unsigned int i = 0; i < vertexCount; ++i) vertices[i] = points[chain[i].index];
    polygon.AddRange(vertices.get(), vertexCount);
    status = Status::Done;
}

CORVEX_INSTANTIATE_SETS(, ConvexHull);

} // namespace Halmont::Orrin::CorvexMaths::Robust

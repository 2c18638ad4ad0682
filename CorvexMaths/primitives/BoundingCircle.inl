#pragma once

/// Containment in a circle and the minimum bounding circle. Included by TCircle.cpp.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/primitives/TCircle.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The circle through three points a, b, c, by Cramer's rule on the bisectors of two sides. A value is a scalar, or a
/// register of scalars of T of as many circles side by side.
template <class T, class Value>
struct ThreePointCircle
{
    /// 0 where there is no circle.
    Value determinant;
    /// The centre.
    Value x, y;

    CORVEX_ALWAYS_INLINE ThreePointCircle(Value ax, Value ay, Value bx, Value by, Value cx, Value cy)
        : determinant(T(2) * (ax * (by - cy) + bx * (cy - ay) + cx * (ay - by)))
    {
        const Value sa = ax * ax + ay * ay;
        const Value sb = bx * bx + by * by;
        const Value sc = cx * cx + cy * cy;
        x = (sa * (by - cy) + sb * (cy - ay) + sc * (ay - by)) / determinant;
        y = (sb * (ax - cx) + sa * (cx - bx) + sc * (bx - ax)) / determinant;
    }
};

/// Reads x and y of as many points as a register has lanes, in the order of lanes that takes the least shuffling.
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void LoadPoints(Lane& x, Lane& y, const TVector2<T>* points)
{
    constexpr unsigned int laneCount = sizeof(Lane) / sizeof(T);
    Lane low, high;
    Kernels::Load(low, static_cast<const T*>(points[0]));
    Kernels::Load(high, static_cast<const T*>(points[laneCount / 2]));
    if constexpr (laneCount == 2) {
        x = __builtin_shufflevector(low, high, 0, 2);
        y = __builtin_shufflevector(low, high, 1, 3);
    } else if constexpr (sizeof(T) == sizeof(double)) {
        x = __builtin_shufflevector(low, high, 0, 4, 2, 6);
        y = __builtin_shufflevector(low, high, 1, 5, 3, 7);
    } else if constexpr (laneCount == 4) {
        x = __builtin_shufflevector(low, high, 0, 2, 4, 6);
        y = __builtin_shufflevector(low, high, 1, 3, 5, 7);
    } else {
        x = __builtin_shufflevector(low, high, 0, 2, 8, 10, 4, 6, 12, 14);
        y = __builtin_shufflevector(low, high, 1, 3, 9, 11, 5, 7, 13, 15);
    }
}

/// The index of the first point, from one on, that a test does not pass, one by one; `count` for none. The test takes x
/// and y, as scalars or as lanes, and tells what passes.
template <class T, class Test>
CORVEX_ALWAYS_INLINE unsigned int SkipOneByOne(const Test& test, const TVector2<T>* points, unsigned int from,
                                               unsigned int count)
{
    for (unsigned int i = from; i < count; ++i) {
        bool passes;
        test.Apply(passes, points[i].x, points[i].y);
        if (!passes) return i;
    }
    return count;
}

/// The same by lanes of the given width.
template <unsigned int Bytes, class T, class Test>
CORVEX_ALWAYS_INLINE unsigned int SkipBy(const Test& test, const TVector2<T>* points, unsigned int from,
                                         unsigned int count)
{
    using Lane = typename Kernels::Lanes<T, Bytes>::Type;
    using Mask = decltype(Lane() < Lane());
    constexpr unsigned int laneCount = Kernels::Lanes<T, Bytes>::count;
    constexpr unsigned int step = 4 * laneCount;
    unsigned int i = from;
    for (; count - i >= step; i += step) {
        Mask passes = ~Mask{};
        for (unsigned int k = i; k < i + step; k += laneCount) {
            Lane x, y;
            LoadPoints(x, y, points + k);
            Mask isPassing;
            test.Apply(isPassing, x, y);
            passes &= isPassing;
        }
        if (Kernels::AnyLane(~passes)) break;
    }
    return SkipOneByOne(test, points, i, count);
}

/// The index of the first point, from one on, that a test does not pass; `count` for none.
template <class T, class Test>
unsigned int Skip(const Test& test, const TVector2<T>* points, unsigned int from, unsigned int count)
{
    // Few points are not worth a call.
    constexpr unsigned int fewPoints = 16;
    if (count - from < fewPoints) return SkipOneByOne(test, points, from, count);
    const auto skipBy = [&test, points, from, count](auto bytes) { return SkipBy<bytes>(test, points, from, count); };
    // One reference fits into a register, where four would be copied through memory.
    return Kernels::ForThisProcessor([&skipBy](auto bytes) __attribute__((flatten)) { return skipBy(bytes); });
}

/// Whether a point lies in a circle with a margin around it, its rim included. A distance that is not a number passes
/// or not, as said.
template <class T, bool passesNaN>
struct InsideTest
{
    TVector2<T> centre;
    T bound;

    InsideTest(const TCircle2<T>& circle, T margin) : centre(circle.centre)
    {
        const T reach = circle.radius + margin;
        bound = reach * reach;
    }

    template <class Mask, class Value>
    CORVEX_ALWAYS_INLINE void Apply(Mask& passes, const Value& x, const Value& y) const
    {
        const Value fromX = x - centre.x;
        const Value fromY = y - centre.y;
        const Value distance = fromX * fromX + fromY * fromY;
        if constexpr (passesNaN)
            passes = Mask(distance > bound) == Mask{};
        else
            passes = bound >= distance;
    }
};

/// The index of the first point, from one on, that lies outside a circle with a margin; NaN is outside.
template <class T>
unsigned int FindOutsider(const TCircle2<T>& circle, const TList<TVector2<T>>& points, unsigned int from,
                          unsigned int count, T margin)
{
    return Skip(InsideTest<T, false>(circle, margin), points.GetStream(), from, count);
}

/// Whether a point r is clear of improving on the circles through p, q and a third point that a RimSearch has found,
/// told without a division. Only where this is certain does a point pass.
///
/// With w the distance from p to q, k = cross(q - p, r - p) and L the offset of the best circle on the side of r, a
/// number that was computed and need not be that of any circle, let
///
///     power = (r - p) . (r - q) - 2 k L / w^2.
///
/// The exact offset of the circle through p, q and r is L + w^2 power / (2 k): no better where the power is negative,
/// on either side. It remains to bound what rounding does to the computed offset. Let u be the unit roundoff, and let B
/// bound all coordinates, w and |L| / w. A computed power below 0 implies that r is no farther from p than
/// w + 2 |L| / w, give or take roundings, as all points of a circle with that offset are; with the coordinates of p and
/// q this gives B. As w is at least 1024 u B, the reserve in it outweighs its own rounding.
///
/// The computed determinant is within 50 u B^2 of 2 k, and both numerators of the centre within 80 u B^3 of theirs. The
/// computed side, which has the sign that decides for the search, is within 12 u B^2 of k; with 512 u B^2 or more it
/// leaves |2 k| above 1000 u B^2. This moves the computed offset away from the exact one by no more than
///
///     u w B^2 (948 B + 306 w |power| / |2 k|) / |2 k|.
///
/// The second term is at most half of w^2 |power| / |2 k|, by which the exact offset falls short of L, and so is the
/// first where -power is at least 1896 u B^3 / w. The power itself is computed to within 58 u B^2. Hence a power of
/// at most -4096 u B^3 / w settles it, with a reserve of two for what products of roundings add.
///
/// A product that overflows makes the power infinite or NaN, never negative: (r - p) . (r - q) overflows first. Where B
/// or w is so large or small that another step might overflow, or underflow by what matters, no point passes; nor does
/// one where there is no circle yet: the bounds are then NaN.
template <class T>
class ClearTest
{
public:
    /// What a point on one side is held to.
    struct Side
    {
        T leastSide = std::numeric_limits<T>::quiet_NaN();
        T slope = leastSide;
        T greatestPower = leastSide;
    };

    Side left;
    Side right;

    ClearTest(const TVector2<T>& first, const TVector2<T>& second)
        : p(first), q(second), along(second - first), width(along.GetLength())
    {}

    /// The bounds for a best circle of that offset.
    Side Bound(T offset) const
    {
        constexpr T roundoff = std::numeric_limits<T>::epsilon() / 2;
        const T greatest = std::ldexp(T(1), std::numeric_limits<T>::max_exponent / 5);
        const T lead = Numbers::Absolute(offset) / width;
        const T extent =
            std::max({Numbers::Absolute(p.x), Numbers::Absolute(p.y), Numbers::Absolute(q.x), Numbers::Absolute(q.y)});
        const T bound = extent + T(1.125) * (width + 2 * lead);
        Side side;
        if (!(bound <= greatest && bound * greatest >= T(1) && width >= 1024 * roundoff * bound)) return side;
        side.leastSide = 512 * roundoff * bound * bound;
        side.slope = 2 * offset / (width * width);
        side.greatestPower = -(4096 * roundoff * bound * bound * bound / width);
        return side;
    }

    template <class Mask, class Value>
    CORVEX_ALWAYS_INLINE void Apply(Mask& passes, const Value& x, const Value& y) const
    {
        const Value fromX = x - p.x;
        const Value fromY = y - p.y;
        const Value side = along.x * fromY - along.y * fromX;
        const Value product = fromX * (x - q.x) + fromY * (y - q.y);
        passes = ((side >= left.leastSide) & (product - side * left.slope <= left.greatestPower)) |
                 ((side <= -right.leastSide) & (product - side * right.slope <= right.greatestPower));
    }

private:
    TVector2<T> p;
    TVector2<T> q;
    TVector2<T> along;
    T width;
};

/// The search for the circle through p, q and a third point, on either side of the line from p to q, that bulges
/// furthest there.
template <class T>
class RimSearch
{
public:
    RimSearch(const TVector2<T>& first, const TVector2<T>& second)
        : p(first), q(second), along(second - first), clear(first, second)
    {}

    /// Considers points as third ones, in their order.
    void Consider(const TVector2<T>* points, unsigned int count)
    {
        constexpr unsigned int runLength = 16;
        unsigned int i = 0;
        while ((i = Skip(clear, points, i, count)) < count) {
            // Where one is not clear, others may follow.
            const unsigned int end = count - i < runLength ? count : i + runLength;
            for (; end - i >= laneCount; i += laneCount)
                if (AnyMayImprove(points + i))
                    for (unsigned int k = 0; k < laneCount; ++k) Consider(points[i + k]);
            for (; i < end; ++i) Consider(points[i]);
        }
    }

    /// The smaller of the two circles, the left one on a tie; one of radius 0 stands for none.
    const TCircle2<T>& GetSmaller() const
    {
        if (right.circle.radius == T(0)) return left.circle;
        if (left.circle.radius == T(0)) return right.circle;
        return left.circle.radius <= right.circle.radius ? left.circle : right.circle;
    }

private:
    using Lane = Kernels::BaselineLanes<T>;
    static constexpr unsigned int laneCount = Kernels::baselineCount<T>;

    /// The best circle so far on one side.
    struct Best
    {
        TCircle2<T> circle;
        /// How far to the left of the line its centre lies, in units of the distance from p to q. NaN while the radius
        /// is 0, which stands for no circle, even if a candidate had it.
        T offset = std::numeric_limits<T>::quiet_NaN();
    };

    /// A candidate and its place; a value is a scalar or a register of them.
    template <class Value>
    struct Candidate
    {
        /// On which side of the line the third point lies: to the left above 0, to the right below it.
        Value side;
        ThreePointCircle<T, Value> circle;
        Value offset;

        /// 0 is subtracted to spread the scalars over the lanes: added, it would lose the sign of a zero.
        CORVEX_ALWAYS_INLINE Candidate(const RimSearch& s, Value x, Value y)
            : side(s.along.x * (y - s.p.y) - s.along.y * (x - s.p.x)),
              circle(s.p.x - Value{}, s.p.y - Value{}, s.q.x - Value{}, s.q.y - Value{}, x, y),
              offset(s.along.x * (circle.y - s.p.y) - s.along.y * (circle.x - s.p.x))
        {}
    };

    /// Whether any of the next few points may give a better circle, which is rare. A comparison with NaN leaves it
    /// open.
    bool AnyMayImprove(const TVector2<T>* points) const
    {
        const T* const scalars = *points;
        const Candidate<Lane> candidate(*this, Kernels::GatherLanes<T, 2>(scalars),
                                        Kernels::GatherLanes<T, 2>(scalars + 1));
        const Lane zero = {};
        return Kernels::AnyLane(((candidate.side > zero) & ~(candidate.offset <= left.offset - zero)) |
                                ((candidate.side < zero) & ~(right.offset - zero <= candidate.offset)));
    }

    void Consider(const TVector2<T>& point)
    {
        const Candidate<T> candidate(*this, point.x, point.y);
        if (candidate.circle.determinant == T(0)) return;
        const T offset = candidate.offset;
        if (candidate.side > T(0) && (left.circle.radius == T(0) || offset > left.offset))
            Take(left, clear.left, candidate);
        if (candidate.side < T(0) && (right.circle.radius == T(0) || right.offset > offset))
            Take(right, clear.right, candidate);
    }

    void Take(Best& best, typename ClearTest<T>::Side& side, const Candidate<T>& candidate)
    {
        best.circle.centre = TVector2<T>(candidate.circle.x, candidate.circle.y);
        best.circle.radius = best.circle.centre.DiffVectLen(p);
        best.offset = best.circle.radius == T(0) ? Best().offset : candidate.offset;
        side = clear.Bound(best.offset);
    }

    TVector2<T> p;
    TVector2<T> q;
    TVector2<T> along;
    Best left;
    Best right;
    ClearTest<T> clear;
};

} // namespace

template <class T>
bool TCircle2<T>::Contains(const TVector2<T>& p, T tolerance) const
{
    const T reach = radius + tolerance;
    return reach * reach >= centre.DiffVectLenSquared(p);
}

template <class T>
bool TCircle2<T>::Contains(const TList<TVector2<T>>& points, unsigned int count, T tolerance) const
{
    CORVEX_PRECONDITION("TCircle2::Contains", count <= points.GetCount(), count, points.GetCount());
    return FindOutsider(*this, points, 0, count, tolerance) == count;
}

// Welzl's scheme, "Smallest enclosing disks (balls and ellipsoids)" (1991): a point outside the circle of its
// predecessors lies on the rim of theirs and its own. Each level holds one more point on the rim and scans the
// predecessors again.

template <class T>
void TCircle2<T>::MinimumBoundingCircle(const TList<TVector2<T>>& points)
{
    const unsigned int count = points.GetCount();
    const T margin = Numbers::commonTolerance<T>;
    for (unsigned int i = 0; (i = FindOutsider(*this, points, i, count, margin)) < count; ++i)
        MinimumBoundingCircle(points, i + 1, points[i]);
}

template <class T>
void TCircle2<T>::MinimumBoundingCircle(const TList<TVector2<T>>& points, unsigned int count, const TVector2<T>& q)
{
    const T margin = Numbers::commonTolerance<T>;
    radius = T(0);
    centre = q;
    for (unsigned int i = 0; (i = FindOutsider(*this, points, i, count, margin)) < count; ++i) {
        if (radius == T(0)) {
            centre = (q + points[i]) / T(2);
            radius = centre.DiffVectLen(q);
        } else
            MinimumBoundingCircle(points, i + 1, q, points[i]);
    }
}

template <class T>
void TCircle2<T>::MinimumBoundingCircle(const TList<TVector2<T>>& points, unsigned int count, const TVector2<T>& p,
                                        const TVector2<T>& q)
{
    // 1. The circle whose diameter they are, if it holds all points. The margin is wider than that of the other levels,
    //    and the comparison is turned round: NaN is inside.
    constexpr T margin = static_cast<T>(1e-4f);
    centre = (p + q) * T(0.5);
    radius = T(0.5) * p.DiffVectLen(q);
    if (Skip(InsideTest<T, true>(*this, margin), points.GetStream(), 0, count) == count) return;

    // 2. Else the circle through both and a third point.
    RimSearch<T> search(p, q);
    search.Consider(points.GetStream(), count);
    *this = search.GetSmaller();
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// Containment in a circle and the minimum bounding circle. Included by TCircle.cpp.

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

/// The index of the first point, from one on, whose squared distance from the centre is outside; `count` for none.
template <class T, class IsOutside>
unsigned int FindOutsider(const TVector2<T>* points, unsigned int from, unsigned int count, const TVector2<T>& centre,
                          IsOutside isOutside)
{
    unsigned int i = from;
    while (i < count && !isOutside(points[i].DiffVectLenSquared(centre))) ++i;
    return i;
}

/// The same for a circle: a squared distance at the square of radius plus margin is inside, NaN is outside.
template <class T>
unsigned int FindOutsider(const TCircle2<T>& circle, const TList<TVector2<T>>& points, unsigned int from,
                          unsigned int count, T margin)
{
    const T reach = circle.radius + margin;
    const auto isOutside = [bound = reach * reach](T distance) { return !(bound >= distance); };
    return FindOutsider(points.GetStream(), from, count, circle.centre, isOutside);
}

/// The search for the circle through p, q and a third point, on either side of the line from p to q, that bulges
/// furthest there.
template <class T>
class RimSearch
{
public:
    RimSearch(const TVector2<T>& first, const TVector2<T>& second) : p(first), q(second), along(second - first) {}

    /// Considers points as third ones, in their order.
    void Consider(const TVector2<T>* points, unsigned int count)
    {
        unsigned int i = 0;
        for (; count - i >= laneCount; i += laneCount)
            if (AnyMayImprove(points + i))
                for (unsigned int k = 0; k < laneCount; ++k) Consider(points[i + k]);
        for (; i < count; ++i) Consider(points[i]);
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
        if (candidate.side > T(0) && (left.circle.radius == T(0) || offset > left.offset)) Take(left, candidate);
        if (candidate.side < T(0) && (right.circle.radius == T(0) || right.offset > offset)) Take(right, candidate);
    }

    void Take(Best& best, const Candidate<T>& candidate)
    {
        best.circle.centre = TVector2<T>(candidate.circle.x, candidate.circle.y);
        best.circle.radius = best.circle.centre.DiffVectLen(p);
        best.offset = best.circle.radius == T(0) ? Best().offset : candidate.offset;
    }

    TVector2<T> p;
    TVector2<T> q;
    TVector2<T> along;
    Best left;
    Best right;
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
    const T reach = radius + margin;
    const auto isOutside = [bound = reach * reach](T distance) { return distance > bound; };
    if (FindOutsider(points.GetStream(), 0, count, centre, isOutside) == count) return;

    // 2. Else the circle through both and a third point.
    RimSearch<T> search(p, q);
    search.Consider(points.GetStream(), count);
    *this = search.GetSmaller();
}

} // namespace Halmont::Orrin::CorvexMaths

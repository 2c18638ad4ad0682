#pragma once

/// The basis functions of a B-spline and the point they weigh out.
///
/// N of order 1 is 1 on its knot span and 0 elsewhere; then, over j = 1, 2 ... order - 1,
///
///     N[i] = (x - K[i]) / (K[i + j] - K[i]) N[i] + (K[i + j + 1] - x) / (K[i + j + 1] - K[i + 1]) N[i + 1],
///
/// where a span or a term that is zero within the common tolerance gives 0. For ordinary knots all but `order` of the
/// functions are 0, and the recursion need not visit those; for any others it sweeps over all of them.

#include <CorvexMaths/Lanes.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/pointsets/PointValues.inl>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

using namespace Kernels;

/// A run of basis functions outside of which, among those of the control points, all are +0.
struct Support
{
    unsigned int first;
    unsigned int end;
};

/// One term of the recursion.
template <class T>
inline T BasisTerm(T distance, T span, T lowerOrder)
{
    if (Numbers::IsZero(span, Numbers::commonTolerance<T>)) return T(0);
    const T term = distance / span * lowerOrder;
    return Numbers::IsZero(term, Numbers::commonTolerance<T>) ? T(0) : term;
}

/// The recursion over all functions, in place.
template <class T>
void SweepBasis(const T* knots, T* basis, unsigned int basisCount, T x, unsigned int levels)
{
    for (unsigned int i = 0; i < basisCount; ++i) basis[i] = x >= knots[i] && knots[i + 1] > x ? T(1) : T(0);
    for (unsigned int j = 1; j < levels; ++j) {
        for (unsigned int i = 0; i + j < basisCount; ++i) {
            const T rising = BasisTerm(x - knots[i], knots[i + j] - knots[i], basis[i]);
            const T falling = BasisTerm(knots[i + j + 1] - x, knots[i + j + 1] - knots[i + 1], basis[i + 1]);
            basis[i] = rising + falling;
        }
    }
}

/// The recursion over the functions that can differ from +0, given the one span that holds x: after step j those from
/// `span` - j to `span`. All others are +0 and stay it. Each function enters two results, over one and the same span.
template <class T>
Support SweepSupport(const T* knots, T* basis, unsigned int basisCount, T x, unsigned int levels, unsigned int span)
{
    basis[span] = T(1);
    unsigned int first = span;
    for (unsigned int j = 1; j < levels; ++j) {
        T rising = T(0);
        if (first > 0)
            --first;
        else
            rising = BasisTerm(x - knots[0], knots[j] - knots[0], basis[0]);
        for (unsigned int i = first; i < span && i + j < basisCount; ++i) {
            const T width = knots[i + 1 + j] - knots[i + 1];
            const T falling = BasisTerm(knots[i + 1 + j] - x, width, basis[i + 1]);
            const T nextRising = BasisTerm(x - knots[i + 1], width, basis[i + 1]);
            basis[i] = rising + falling;
            rising = nextRising;
        }
        if (span + j < basisCount) basis[span] = rising;
    }
    return {first, span + 1};
}

/// Whether no value is below the one before it. NaN makes it false.
template <class T>
bool IsAscending(const T* values, unsigned int valueCount)
{
    BaselineMask<T> all = ~BaselineMask<T>{};
    unsigned int i = 0;
    for (; i + baselineCount<T> < valueCount; i += baselineCount<T>)
        all &= LoadLanes(values + i) <= LoadLanes(values + i + 1);
    bool ascending = !AnyLane(~all);
    for (; i + 1 < valueCount; ++i) ascending &= values[i] <= values[i + 1];
    return ascending;
}

/// Sets the basis functions at x, `basisCount` of them over one knot more, to those of the order `levels`.
template <class T>
Support FillBasis(const T* knots, T* basis, unsigned int basisCount, T x, unsigned int levels)
{
    // Within this bound no quotient of a span above the tolerance overflows, in `float` too, and 0 times it is 0.
    constexpr T bound = T(1e30);
    if (!(x > -bound && knots[0] >= -bound && knots[basisCount] <= bound && IsAscending(knots, basisCount + 1))) {
        SweepBasis(knots, basis, basisCount, x, levels);
        return {0, basisCount};
    }
    for (unsigned int i = 0; i < basisCount; ++i) basis[i] = T(0);
    if (x < knots[0] || x >= knots[basisCount]) return {0, 0};
    unsigned int span = 0;
    unsigned int end = basisCount;
    while (end - span > 1) {
        const unsigned int middle = span + (end - span) / 2;
        const bool reached = x >= knots[middle];
        span = reached ? middle : span;
        end = reached ? end : middle;
    }
    return SweepSupport(knots, basis, basisCount, x, levels, span);
}

/// The bits of values less themselves: none of a finite value, some of NaN and the infinities.
template <class T>
inline BaselineMask<T> StrangerBits(const T* values)
{
    const BaselineLanes<T> lanes = LoadLanes(values);
    return reinterpret_cast<BaselineMask<T>>(lanes - lanes);
}

/// Whether neither NaN nor an infinity is among the values.
template <class T>
bool IsFinite(const T* values, std::size_t valueCount)
{
    constexpr std::size_t width = baselineCount<T>;
    BaselineMask<T> strangers = {};
    std::size_t i = 0;
    for (; i + 4 * width <= valueCount; i += 4 * width)
        strangers |= StrangerBits(values + i) | StrangerBits(values + i + width) |
                     StrangerBits(values + i + 2 * width) | StrangerBits(values + i + 3 * width);
    bool finite = !AnyLane(strangers);
    for (; i < valueCount; ++i) finite &= values[i] - values[i] == T(0);
    return finite;
}

/// The sum of the basis functions times the points, ascending. A sum that starts from +0 never becomes -0, so that a
/// function of +0 times a finite point adds nothing to it.
template <class T, template <class> class V>
V<T> WeighPoints(const TList<V<T>>& points, const T* basis, Support support)
{
    const unsigned int pointCount = points.GetCount();
    if (!IsFinite(ValuesOf<T, V>(points), static_cast<std::size_t>(pointCount) * componentsOf<T, V>))
        support = {0, pointCount};
    V<T> sum = ZeroVector<T, V>();
    for (unsigned int i = support.first; i < support.end && i < pointCount; ++i) sum += points[i] * basis[i];
    return sum;
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

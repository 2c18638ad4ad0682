#pragma once

/// The basis functions of a B-spline and the point they weigh out.
///
/// N of order 1 is 1 on its knot span and 0 elsewhere; then, over j = 1, 2 ... order - 1,
///
///     N[i] = (x - K[i]) / (K[i + j] - K[i]) N[i] + (K[i + j + 1] - x) / (K[i + j + 1] - K[i + 1]) N[i + 1],
///
/// where a span or a term that is zero within the common tolerance gives 0. For ordinary knots all but `order` of the
/// functions are 0, and the recursion need not visit those; for any others it sweeps over all of them.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/pointsets/PointValues.inl>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// One term of the recursion; 0 where the span or the term is zero within the common tolerance.
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
/// `span` - j to `span`. All others are +0 and stay so. Each function enters two results, in both divided by the same
/// width: its two terms are formed side by side, each as BasisTerm does.
template <class T>
Support SweepSupport(const T* knots, T* basis, unsigned int basisCount, T x, unsigned int levels, unsigned int span)
{
    typedef T Pair __attribute__((vector_size(2 * sizeof(T))));
    constexpr T tolerance = Numbers::commonTolerance<T>;
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
            Pair terms = {};
            if (!Numbers::IsZero(width, tolerance)) {
                terms = Pair{knots[i + 1 + j] - x, x - knots[i + 1]} / width * basis[i + 1];
                terms = ((terms <= tolerance) & (terms >= -tolerance)) ? Pair{} : terms;
            }
            basis[i] = rising + terms[0];
            rising = terms[1];
        }
        if (span + j < basisCount) basis[span] = rising;
    }
    return {first, span + 1};
}

/// With knots within this bound no quotient by a width that is not zero within the tolerance overflows, in `float` too,
/// whatever the sign of the width, so that 0 times the quotient is 0. (x is within the bound where it lies between two
/// knots.)
template <class T>
constexpr T knotBound = T(1e30);

/// The most bytes of a register in which knots are compared: g++ compares wider ones value by value.
constexpr unsigned int mostKnotBytes = 32;

/// The greatest stride at which knots are compared: the lanes of such a register.
template <class T>
constexpr unsigned int knotStride = mostKnotBytes / sizeof(T);

/// The register in which knots are compared where values take registers of some width.
template <unsigned int Bytes, class T>
using KnotLanes = Lanes<T, std::min(Bytes, mostKnotBytes)>;

/// How many functions, and how many control points, ClearAndTest takes at a time.
template <unsigned int Bytes, class T>
constexpr std::size_t blockSize = 2 * Lanes<T, Bytes>::count;

/// Clears the lanes of a mask in which a knot of a block is above the one a register later, or one of the two is NaN.
template <unsigned int Bytes, class T, class Mask>
CORVEX_ALWAYS_INLINE void CompareKnots(const T* knots, Mask& ordered)
{
    constexpr std::size_t width = KnotLanes<Bytes, T>::count;
    typename KnotLanes<Bytes, T>::Type knot, next;
    Load(knot, knots);
    for (std::size_t k = width; k <= blockSize<Bytes, T>; k += width) {
        Load(next, knots + k);
        ordered &= knot <= next;
        knot = next;
    }
}

/// Sets the functions of a block to +0.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE void ClearFunctions(T* basis)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    for (std::size_t k = 0; k < blockSize<Bytes, T>; k += Lanes<T, Bytes>::count) Store(basis + k, Lane{});
}

/// Adds the values of a block of control points to sums.
template <class T, class Lane, std::size_t sumCount>
CORVEX_ALWAYS_INLINE void AddValues(const T* values, Lane (&sums)[sumCount])
{
    for (std::size_t k = 0; k < sumCount; ++k) {
        Lane lane;
        Load(lane, values + k * (sizeof(Lane) / sizeof(T)));
        sums[k] += lane;
    }
}

/// How many values stand before the next aligned address after the first of them.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE std::size_t CountToAligned(const T* values)
{
    return (Bytes - reinterpret_cast<std::uintptr_t>(values) % Bytes) / sizeof(T);
}

/// Whether there are enough functions and control points for ClearAndTestBy.
template <unsigned int Bytes, class T>
constexpr bool IsEnough(std::size_t basisCount, std::size_t pointCount)
{
    return basisCount >= blockSize<Bytes, T> + KnotLanes<Bytes, T>::count && pointCount >= blockSize<Bytes, T>;
}

/// ClearAndTest by lanes of the given width. Blocks may overlap; all but those at the ends are aligned where it counts,
/// for a write across two lines of the cache is slow.
template <unsigned int Bytes, unsigned int components, class T>
CORVEX_ALWAYS_INLINE bool ClearAndTestBy(const T* knots, T* basis, std::size_t basisCount, const T* values,
                                         std::size_t pointCount)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using Knots = typename KnotLanes<Bytes, T>::Type;
    using Mask = decltype(Knots() <= Knots());
    constexpr std::size_t size = blockSize<Bytes, T>;
    const std::size_t lastRegister = basisCount + 1 - KnotLanes<Bytes, T>::count;
    const std::size_t lastKnots = lastRegister - size;
    const std::size_t lastValues = (pointCount - size) * components;

    Mask ordered = ~Mask{};
    Lane sums[2 * components] = {};
    CompareKnots<Bytes>(knots, ordered);
    ClearFunctions<Bytes>(basis);
    AddValues(values, sums);
    std::size_t i = CountToAligned<Bytes>(basis);
    std::size_t j = CountToAligned<Bytes>(values);
    for (; i < lastKnots && j < lastValues; i += size, j += size * components) {
        CompareKnots<Bytes>(knots + i, ordered);
        ClearFunctions<Bytes>(basis + i);
        AddValues(values + j, sums);
    }
    for (; i < lastKnots; i += size) {
        CompareKnots<Bytes>(knots + i, ordered);
        ClearFunctions<Bytes>(basis + i);
    }
    for (; j < lastValues; j += size * components) AddValues(values + j, sums);
    CompareKnots<Bytes>(knots + lastKnots, ordered);
    ClearFunctions<Bytes>(basis + lastKnots);
    ClearFunctions<Bytes>(basis + (basisCount - size));
    AddValues(values + lastValues, sums);

    Knots first, last, bound;
    Load(first, knots);
    Load(last, knots + lastRegister);
    Broadcast(bound, knotBound<T>);
    ordered &= (first >= -bound) & (last <= bound);
    Lane sum = sums[0];
    for (std::size_t k = 1; k < 2 * components; ++k) sum += sums[k];
    for (unsigned int k = 0; k < sizeof(Lane); k += sizeof(Knots)) {
        Knots part;
        std::memcpy(&part, reinterpret_cast<const char*>(&sum) + k, sizeof(part));
        ordered &= part - part == Knots{};
    }
    return !AnyLane(~ordered);
}

/// ClearAndTest with a stride of 1.
template <unsigned int components, class T>
bool ClearAndTestFew(const T* knots, T* basis, std::size_t basisCount, const T* values, std::size_t pointCount)
{
    bool holds = knots[0] >= -knotBound<T> && knots[basisCount] <= knotBound<T>;
    for (std::size_t i = 0; i < basisCount; ++i) {
        holds &= knots[i] <= knots[i + 1];
        basis[i] = T(0);
    }
    T sums[components] = {};
    for (std::size_t i = 0; i < pointCount; ++i)
        for (unsigned int k = 0; k < components; ++k) sums[k] += values[i * components + k];
    for (const T sum : sums) holds &= sum - sum == T(0);
    return holds;
}

/// Sets the basis functions to +0 and returns whether the recursion and the sum may pass over those that stay +0:
///
/// - the knots, one more than there are functions, are ordered: those at some stride, at most `knotStride`, ascend, and
///   each of them is within the bound. A NaN fails this;
/// - all control points are finite, by sums of their values, which never recover from NaN or an infinity. Where a sum
///   overflows, finite values are taken for infinite ones, which costs time and changes nothing.
template <unsigned int components, class T>
bool ClearAndTest(const T* knots, T* basis, std::size_t basisCount, const T* values, std::size_t pointCount)
{
    const auto clearAndTestBy = [=](auto bytes) {
        return ClearAndTestBy<bytes, components>(knots, basis, basisCount, values, pointCount);
    };
    // One reference fits into a register, where five values would be copied through memory.
    const auto clearAndTest = [&clearAndTestBy](auto bytes) __attribute__((flatten))
    {
        return clearAndTestBy(bytes);
    };
    // For few points the widest registers spend more on the ends than they save between them.
    constexpr std::size_t manyPoints = 200;
    static_assert(IsEnough<widestBytes, T>(manyPoints, manyPoints));
    if (pointCount >= manyPoints && basisCount >= manyPoints) return ForThisProcessor<widestBytes>(clearAndTest);
    if (IsEnough<wideBytes, T>(basisCount, pointCount)) return ForThisProcessor(clearAndTest);
    if (IsEnough<baselineBytes, T>(basisCount, pointCount)) return RunBaseline(clearAndTest);
    return ClearAndTestFew<components>(knots, basis, basisCount, values, pointCount);
}

/// How many knots x reaches if they ascend; any number up to their count if they do not.
template <class T>
unsigned int CountReached(const T* knots, unsigned int knotCount, T x, unsigned int levels)
{
    // Where the inner knots are evenly spaced, x's share of the way between the outermost of them gives the count, but
    // for rounding.
    const unsigned int first = levels - 1;
    const unsigned int last = knotCount - levels;
    if (first < last && last < knotCount) {
        const T share = (x - knots[first]) / (knots[last] - knots[first]);
        if (share >= T(0) && share < T(1)) {
            const unsigned int guess = first + static_cast<unsigned int>(share * static_cast<T>(last - first));
            if (guess < last && x >= knots[guess] && knots[guess + 1] > x) return guess + 1;
        }
    }
    unsigned int reached = 0;
    for (unsigned int left = knotCount; left > 0;) {
        const unsigned int half = (left + 1) / 2;
        reached += x >= knots[reached + half - 1] ? half : 0;
        left -= half;
    }
    return reached;
}

/// Whether x reaches the first `reached` knots and none of the others; there are knots of both kinds. Where knots are
/// ordered, those within a stride of the boundary decide for all: every other knot is ordered against one of them.
template <class T>
bool IsReached(const T* knots, unsigned int knotCount, T x, unsigned int reached)
{
    const unsigned int last = knotCount - 1;
    bool holds = true;
    for (unsigned int i = 0; i < knotStride<T>; ++i) {
        const unsigned int before = reached > i ? reached - i - 1 : 0;
        const unsigned int behind = last - reached > i ? reached + i : last;
        holds &= x >= knots[before];
        holds &= knots[behind] > x;
    }
    return holds;
}

/// Sets basis functions of +0 to those of the order `levels` at x, which reaches `reached` of the knots. Those outside
/// the result may be left out of the sum over the control points. `isPlain` is what ClearAndTest found.
template <class T>
Support SweepReached(const T* knots, T* basis, unsigned int basisCount, T x, unsigned int levels, unsigned int reached,
                     bool isPlain)
{
    if (isPlain && reached > 0 && reached <= basisCount && IsReached(knots, basisCount + 1, x, reached))
        return SweepSupport(knots, basis, basisCount, x, levels, reached - 1);
    SweepBasis(knots, basis, basisCount, x, levels);
    return {0, basisCount};
}

/// Sets the basis functions at x, `basisCount` of them over one knot more, to those of the order `levels`. Those
/// outside the result may be left out of the sum over the control points.
template <class T, template <class> class V>
Support FillBasis(const T* knots, T* basis, unsigned int basisCount, const TList<V<T>>& points, T x,
                  unsigned int levels)
{
    // The count does not depend on what the test finds, so that a processor can do both at once.
    const unsigned int reached = CountReached(knots, basisCount + 1, x, levels);
    const bool isPlain =
        ClearAndTest<componentsOf<T, V>>(knots, basis, basisCount, ValuesOf<T, V>(points), points.GetCount());
    return SweepReached(knots, basis, basisCount, x, levels, reached, isPlain);
}

/// The sum of the basis functions times the points, ascending. A sum that starts from +0 never becomes -0, so that a
/// function of +0 times a finite point adds nothing to it.
template <class T, template <class> class V>
V<T> WeighPoints(const TList<V<T>>& points, const T* basis, Support support)
{
    const unsigned int pointCount = points.GetCount();
    V<T> sum = ZeroVector<T, V>();
    for (unsigned int i = support.first; i < support.end && i < pointCount; ++i) sum += points[i] * basis[i];
    return sum;
}

/// SweepSupport from one order to the next, for a parameter to a lane: of j functions before, j + 1 after. `knots` are
/// the 2 levels - 2 around each span that enter its functions.
template <unsigned int j, unsigned int levels, class T, class Lane>
CORVEX_ALWAYS_INLINE void RaiseOrder(const Lane* knots, const Lane& x, Lane* basis)
{
    constexpr T tolerance = Numbers::commonTolerance<T>;
    Lane rising = {};
    for (unsigned int k = 0; k < j; ++k) {
        const Lane start = knots[levels - 1 + k - j];
        const Lane end = knots[levels - 1 + k];
        const Lane width = end - start;
        const auto isZero = (width <= tolerance) & (width >= -tolerance);
        Lane terms[2] = {(end - x) / width * basis[k], (x - start) / width * basis[k]};
        for (Lane& term : terms) term = (isZero | ((term <= tolerance) & (term >= -tolerance))) ? Lane{} : term;
        basis[k] = rising + terms[0];
        rising = terms[1];
    }
    basis[j] = rising;
}

/// Reads a value for each lane, from its own place; from the first one's for all where `isShared`.
template <bool isShared, class T, class Lane>
CORVEX_ALWAYS_INLINE void Gather(Lane& lane, const T* values, const std::size_t* places)
{
    if constexpr (isShared)
        Broadcast(lane, values[places[0]]);
    else
        for (unsigned int k = 0; k < sizeof(Lane) / sizeof(T); ++k) lane[k] = values[places[k]];
}

/// The points at as many parameters as a register has lanes. `spans` are those that hold them, one for all where
/// `isShared`.
template <bool isShared, unsigned int levels, unsigned int components, class Lane, class T>
CORVEX_ALWAYS_INLINE void WeighLanes(const T* knots, const T* values, const T* parameters, const unsigned int* spans,
                                     T* out)
{
    constexpr unsigned int width = sizeof(Lane) / sizeof(T);
    std::size_t first[width];
    for (unsigned int lane = 0; lane < width; ++lane) first[lane] = std::size_t(spans[lane]) + 1 - levels;
    Lane x, near[2 * levels - 2], basis[levels];
    Load(x, parameters);
    for (unsigned int k = 0; k < 2 * levels - 2; ++k) {
        Lane knot = {};
        Gather<isShared>(knot, knots + k + 1, first);
        near[k] = knot;
    }
    Broadcast(basis[0], T(1));
    RaiseOrder<1, levels, T>(near, x, basis);
    if constexpr (levels > 2) RaiseOrder<2, levels, T>(near, x, basis);
    if constexpr (levels > 3) RaiseOrder<3, levels, T>(near, x, basis);
    if constexpr (levels > 4) RaiseOrder<4, levels, T>(near, x, basis);

    for (std::size_t& place : first) place *= components;
    Lane sums[components] = {};
    for (unsigned int i = 0; i < levels; ++i) {
        for (unsigned int k = 0; k < components; ++k) {
            Lane value = {};
            Gather<isShared>(value, values + i * components + k, first);
            sums[k] += value * basis[i];
        }
    }
    for (unsigned int lane = 0; lane < width; ++lane)
        for (unsigned int k = 0; k < components; ++k) out[lane * components + k] = sums[k][lane];
}

/// The points at parameters whose spans are given. Reads and writes whole registers, up to one beyond the last.
template <unsigned int Bytes, unsigned int levels, unsigned int components, class T>
CORVEX_ALWAYS_INLINE void WeighSpansBy(const T* knots, const T* values, const T* parameters, const unsigned int* spans,
                                       unsigned int count, T* out)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int width = Lanes<T, Bytes>::count;
    for (unsigned int i = 0; i < count; i += width) {
        unsigned int differences = 0;
        for (unsigned int lane = 1; lane < width; ++lane) differences |= spans[i + lane] ^ spans[i];
        if (differences == 0)
            WeighLanes<true, levels, components, Lane>(knots, values, parameters + i, spans + i, out + i * components);
        else
            WeighLanes<false, levels, components, Lane>(knots, values, parameters + i, spans + i, out + i * components);
    }
}

/// FillBasis for one parameter after another, as long as knots and control points stay as they are: these are tested
/// once.
template <class T, template <class> class V>
class RepeatedBasis
{
public:
    RepeatedBasis(const T* knotValues, T* functions, unsigned int functionCount, const TList<V<T>>& controlPoints)
        : knots(knotValues),
          basis(functions),
          basisCount(functionCount),
          points(controlPoints),
          isPlain(ClearAndTest<componentsOf<T, V>>(knots, basis, basisCount, ValuesOf<T, V>(points), points.GetCount()))
    {}

    /// Sets the basis functions.
    void Fill(T x, unsigned int levels)
    {
        // Outside the support of the last parameter all functions are still 0.
        for (unsigned int i = support.first; i < support.end; ++i) basis[i] = T(0);
        const unsigned int reached = CountReached(knots, basisCount + 1, x, levels);
        support = SweepReached(knots, basis, basisCount, x, levels, reached, isPlain);
    }

    /// Sets the basis functions and returns the point that they weigh out.
    V<T> PointAt(T x, unsigned int levels)
    {
        Fill(x, levels);
        return WeighPoints<T, V>(points, basis, support);
    }

    /// How many parameters PointsAt takes at most.
    static constexpr unsigned int most = 64;
    /// The room behind the parameters, and behind the points, that it may read and write.
    static constexpr unsigned int slack = Lanes<T, wideBytes>::count;

    /// Writes the points at several parameters, side by side where there is a kernel for the order.
    void PointsAt(const T* parameters, unsigned int count, unsigned int levels, V<T>* out)
    {
        unsigned int spans[most + slack] = {};
        for (unsigned int first = 0; first < count;) {
            const unsigned int run = FindSpans(parameters + first, count - first, levels, spans);
            if (run == 0) {
                out[first] = PointAt(parameters[first], levels);
                ++first;
                continue;
            }
            std::fill_n(spans + run, slack, spans[run - 1]);
            T* const point = out[first];
            if (levels == 2) WeighSpans<2>(parameters + first, spans, run, point);
            if (levels == 3) WeighSpans<3>(parameters + first, spans, run, point);
            if (levels == 4) WeighSpans<4>(parameters + first, spans, run, point);
            if (levels == 5) WeighSpans<5>(parameters + first, spans, run, point);
            first += run;
        }
    }

private:
    /// Writes the spans that hold the first parameters, as long as the functions over each belong to knots and control
    /// points, and returns how many these are; 0 where there is no kernel for the order.
    unsigned int FindSpans(const T* parameters, unsigned int count, unsigned int levels, unsigned int* spans) const
    {
        if (!isPlain || levels < 2 || levels > 5) return 0;
        const unsigned int knotCount = basisCount + 1;
        T lower = T(0);
        T upper = T(0);
        for (unsigned int i = 0; i < count; ++i) {
            const T x = parameters[i];
            if (x >= lower && upper > x) {
                spans[i] = spans[i - 1];
                continue;
            }
            const unsigned int reached = CountReached(knots, knotCount, x, levels);
            if (reached < levels || reached > points.GetCount() || reached + levels > knotCount) return i;
            if (!IsReached(knots, knotCount, x, reached)) return i;
            spans[i] = reached - 1;
            // What IsReached compares with, at once.
            const T* const behind = knots + reached;
            lower = *std::max_element(behind - std::min(reached, knotStride<T>), behind);
            upper = *std::min_element(behind, behind + std::min(knotCount - reached, knotStride<T>));
        }
        return count;
    }

    template <unsigned int levels>
    void WeighSpans(const T* parameters, const unsigned int* spans, unsigned int count, T* out) const
    {
        const T* const values = ValuesOf<T, V>(points);
        ForThisProcessor([=, from = knots](auto bytes) {
            WeighSpansBy<bytes, levels, componentsOf<T, V>>(from, values, parameters, spans, count, out);
        });
    }

    const T* const knots;
    T* const basis;
    const unsigned int basisCount;
    const TList<V<T>>& points;
    const bool isPlain;
    Support support = {0, 0};
};

/// Collects parameters, and hands on the points at them, in order and some at a time: take(points, count).
template <class T, template <class> class V, class Take>
class PointStream
{
public:
    PointStream(RepeatedBasis<T, V>& repeatedBasis, unsigned int splineOrder, Take takePoints)
        : basis(repeatedBasis), order(splineOrder), take(takePoints)
    {}

    void Add(T x)
    {
        parameters[count++] = x;
        if (count == RepeatedBasis<T, V>::most) HandOn();
    }

    /// Hands on the last points and leaves the basis functions as those at the last parameter.
    void Finish()
    {
        const T last = parameters[count > 0 ? count - 1 : RepeatedBasis<T, V>::most - 1];
        HandOn();
        basis.Fill(last, order);
    }

private:
    void HandOn()
    {
        basis.PointsAt(parameters, count, order, points);
        take(points, count);
        count = 0;
    }

    RepeatedBasis<T, V>& basis;
    const unsigned int order;
    Take take;
    unsigned int count = 0;
    T parameters[RepeatedBasis<T, V>::most + RepeatedBasis<T, V>::slack] = {};
    V<T> points[RepeatedBasis<T, V>::most + RepeatedBasis<T, V>::slack];
};

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

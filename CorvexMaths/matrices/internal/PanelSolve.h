#pragma once

/// The solve for many unit vectors at once. Internal.
///
/// If the row swaps of a decomposition all go downwards, they can be done before the forward sums, and turn a unit
/// vector into another with its 1 at some q. Its forward sums begin at q and leave zeros above. The solutions for
/// `Width` neighbouring q stand side by side in a panel, one row of it for each row of the system. Every element is a
/// sum of its own in the stated order.

#include <CorvexMaths/internal/Lanes.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The values of a panel's row: enough to hide the latency of the sums, few enough to stay in the first-level cache up
/// to an order of some hundreds.
template <class T>
inline constexpr unsigned int panelWidth = 128 / sizeof(T);

/// Subtracts from a row of the panel the products of `factors` with the panel's rows from `begin` to before `end`, and
/// divides it by the divisor if there is one.
template <class T, unsigned int Bytes, unsigned int Width>
CORVEX_ALWAYS_INLINE void SubtractPanelRows(T* row, const T* factors, const T* panel, unsigned int begin,
                                            unsigned int end, const T* divisor)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int lane = Lanes<T, Bytes>::count;
    constexpr unsigned int laneCount = Width / lane;
    Lane sums[laneCount];
    for (unsigned int l = 0; l < laneCount; ++l) Load(sums[l], row + l * lane);
    const T* source = panel + static_cast<decltype(sizeof(T))>(begin) * Width;
    for (unsigned int j = begin; j < end; ++j, source += Width) {
        const T factor = factors[j];
        for (unsigned int l = 0; l < laneCount; ++l) {
            Lane other;
            Load(other, source + l * lane);
            sums[l] -= factor * other;
        }
    }
    if (divisor)
        for (unsigned int l = 0; l < laneCount; ++l) sums[l] /= *divisor;
    for (unsigned int l = 0; l < laneCount; ++l) Store(row + l * lane, sums[l]);
}

/// Whether all values are finite.
template <class T>
CORVEX_ALWAYS_INLINE bool AreFinite(const T* values, unsigned int begin, unsigned int end)
{
    T probe = T(0);
    for (unsigned int j = begin; j < end; ++j) probe += values[j] * T(0);
    return probe == T(0);
}

/// Fills the panel with the solutions for the unit vectors with their 1 at q, q + 1, ... (those from `order` on, which
/// do not exist, hold undefined values).
template <class T, unsigned int Bytes, unsigned int Width>
CORVEX_ALWAYS_INLINE void SolvePanel(T* panel, const T* const* lu, unsigned int order, unsigned int q)
{
    const auto rowOf = [panel](unsigned int i) { return panel + static_cast<decltype(sizeof(T))>(i) * Width; };
    for (unsigned int i = 0; i < order; ++i)
        for (unsigned int l = 0; l < Width; ++l) rowOf(i)[l] = T(0);

    for (unsigned int i = q; i < order; ++i) {
        // Column q + l of the panel is 0 above row q + l. The products of finite factors with it there are zeros, and
        // +0 less a zero of either sign is +0; other factors would make NaN, so there those products are left out.
        unsigned int begin = q;
        const unsigned int end = i - q < Width ? i : q + Width;
        if (!AreFinite(lu[i], q, end)) {
            for (; begin < end; ++begin)
                for (unsigned int l = 0; l <= begin - q; ++l) rowOf(i)[l] -= lu[i][begin] * rowOf(begin)[l];
        }
        SubtractPanelRows<T, Bytes, Width>(rowOf(i), lu[i], panel, begin, i, nullptr);
        if (i - q < Width) rowOf(i)[i - q] = T(1);
    }

    for (unsigned int i = order; i-- > 0;)
        SubtractPanelRows<T, Bytes, Width>(rowOf(i), lu[i], panel, i + 1, order, lu[i] + i);
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

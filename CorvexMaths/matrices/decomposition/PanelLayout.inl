#pragma once

/// How a tall matrix of few columns stands in panels.
///
/// Its first rows, the head, stand apart as rows. The others follow in panels: up to `longestPanel` rows at a time,
/// transposed, so that the elements of a column are contiguous. Each panel takes the memory that its rows would take.

#include <CorvexMaths/internal/Lanes.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Panels hold a multiple of this number of rows, those of registers that a sweep works on at a time.
constexpr unsigned int stripRows = 16;

/// The most rows of a panel. Were it a power of two, some columns would lie 4 KiB apart, and the processor would hold
/// up loads from one for stores to another, whose addresses it takes for the same.
constexpr unsigned int longestPanel = 3 * stripRows;

/// The number of rows in the head: those in which reflections from the right start, and those that fill no strip.
constexpr unsigned int HeadRows(unsigned int m, unsigned int n)
{
    return m < n ? m : n + (m - n) % stripRows;
}

/// Calls operation(panel, number of its rows, state) for panels of n columns from the top down, or up. The state is
/// held in a copy, which can stay in registers.
template <bool upwards = false, class T, class State, class Operation>
void ForPanels(T* first, unsigned int rowCount, unsigned int n, State* state, Operation operation)
{
    ForThisProcessor([&](auto) __attribute__((flatten)) {
        State held = *state;
        const unsigned int panelCount = (rowCount + longestPanel - 1) / longestPanel;
        for (unsigned int p = 0; p < panelCount; ++p) {
            const unsigned int from = (upwards ? panelCount - 1 - p : p) * longestPanel;
            const unsigned int left = rowCount - from;
            operation(first + std::size_t(from) * n, left < longestPanel ? left : longestPanel, held);
        }
        *state = held;
    });
}

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

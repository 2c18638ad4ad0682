#pragma once

/// Tall linear systems of few unknowns, filled row by row in the layout that the decomposition works on.

#include <CorvexMaths/matrices/decomposition/PanelLayout.inl>
#include <CorvexMaths/matrices/decomposition/Rows.inl>
#include <CorvexMaths/matrices/decomposition/SingularValues.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// A linear system of N unknowns, 1 to 4, that is filled and solved again and again in the same storage.
template <class T, unsigned int N>
class TallSystem
{
public:
    /// The solution of the last system that could be solved.
    T solution[N] = {};

    struct Row
    {
        T coefficients[N];
        T right;
    };

    /// A system of undefined elements.
    explicit TallSystem(unsigned int rowCount)
        : count(rowCount),
          memory(std::size_t(rowCount) * (N + 1)),
          panels(memory.Get()),
          right(panels + std::size_t(rowCount) * N)
    {}

    /// Sets row i to rowOf(i), a Row, for all rows, in no particular order and several at once.
    template <class RowOf>
    void Fill(RowOf rowOf)
    {
        const unsigned int head = HeadRows(count, N);
        T* const headRows = right - head * N;
        for (unsigned int i = 0; i < head; ++i) SetRow(headRows + i * N, 1, right + i, rowOf(i));
        unsigned int first = head;
        ForPanels(panels, count - head, N, &first, [&](T* panel, unsigned int rowCount, unsigned int& from) {
            // Copies, so that what they hold stays in registers while rows are written.
            const RowOf held = rowOf;
            T* const rights = right + from;
            CORVEX_INDEPENDENT_STEPS
            for (unsigned int r = 0; r < rowCount; ++r) SetRow(panel + r, rowCount, rights + r, held(from + r));
            from += rowCount;
        });
    }

    /// The right side of a row.
    T GetRight(unsigned int row) const { return right[row]; }

    /// Solves in the sense of least squares; the coefficients are overwritten. False, with the old solution kept, when
    /// the decomposition does not converge or a singular value is zero within the common tolerance.
    bool Solve() { return SVDSolve<T>(panels, right, solution, count, N); }

private:
    static void SetRow(T* elements, unsigned int step, T* rightSide, const Row& row)
    {
        for (unsigned int j = 0; j < N; ++j) elements[j * step] = row.coefficients[j];
        *rightSide = row.right;
    }

    unsigned int count;
    PanelMemory<T> memory;
    T* panels;
    T* right;
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

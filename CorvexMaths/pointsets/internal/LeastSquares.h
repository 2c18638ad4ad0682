#pragma once

/// What the fits of circles and spheres share: the linear system of a Gauss-Newton step. Internal to the library.

#include <CorvexMaths/matrices/decomposition/SingularValuePanels.inl>
#include <CorvexMaths/matrices/decomposition/SingularValues.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Where the measures of a fit's steps start: the step before the first one, above any real measure, and the first one,
/// below it, so that the first step is always taken. In `double` the second is the quotient, one step above 1e29.
template <class T>
inline constexpr T measureBeforeSteps = T(1e30);
template <>
inline constexpr float measureBeforeSteps<float> = 1e30f;
template <class T>
inline constexpr T measureOfNoStep = T(1e30) / T(10);
template <>
inline constexpr float measureOfNoStep<float> = 1e29f;

/// A linear system of N unknowns, one row for each point, that is filled and solved again and again in the same
/// storage. The coefficient of the last unknown is -1 in all rows.
template <class T, unsigned int N>
class LeastSquares
{
public:
    /// The solution of the last system that could be solved.
    T solution[N] = {};

    /// A system of undefined elements.
    explicit LeastSquares(unsigned int rowCount)
        : count(rowCount),
          memory(std::size_t(rowCount) * (N + 1)),
          matrix(memory.Get()),
          right(matrix + std::size_t(rowCount) * N)
    {}

    /// What differs from row to row.
    struct Row
    {
        T coefficients[N - 1];
        T right;
    };

    /// Sets row i to rowOf(i) for all rows, in no order and several at once.
    template <class RowOf>
    void Fill(RowOf rowOf)
    {
        const unsigned int head = HeadRows(count, N);
        T* const headRows = right - head * N;
        for (unsigned int i = 0; i < head; ++i) SetRow(headRows + i * N, 1, right + i, rowOf(i));
        unsigned int first = head;
        ForPanels(matrix, count - head, N, &first, [&](T* panel, unsigned int rowCount, unsigned int& from) {
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

    /// Solves in the sense of least squares; the coefficients are lost. False, with the old solution kept, when the
    /// decomposition does not converge or a singular value is zero within the common tolerance.
    bool Solve() { return SVDSolve<T>(matrix, right, solution, count, N); }

private:
    static void SetRow(T* elements, unsigned int step, T* rightSide, const Row& row)
    {
        for (unsigned int j = 0; j + 1 < N; ++j) elements[j * step] = row.coefficients[j];
        elements[(N - 1) * step] = T(-1);
        *rightSide = row.right;
    }

    unsigned int count;
    PanelMemory<T> memory;
    T* matrix;
    T* right;
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

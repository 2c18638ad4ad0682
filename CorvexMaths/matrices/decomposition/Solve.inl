#pragma once

/// Linear systems through the decomposition: x = V W^-1 U-transposed b.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/decomposition/Panels.inl>
#include <CorvexMaths/matrices/decomposition/SingularValues.h>

#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Solves A x = b from the decomposition of an m by n matrix A, in the sense of least squares where m is above n. u, w
/// and v are matrices or arrays of rows. `b` has m elements, x and scratch have n; x may be b. False, with x and
/// scratch untouched, when any singular value is zero within the common tolerance (absolute, inclusive): such a system
/// is not solved through a truncated inverse. Further rows of U may stand in `below`, which finishes them as it
/// multiplies, and so is called only once the singular values have been tested.
template <class T, class Rows, class Below>
bool BackSubstitute(Rows&& u, Rows&& w, Rows&& v, const T* b, T* x, T* scratch, unsigned int m, unsigned int n,
                    const Below& below)
{
    for (unsigned int i = 0; i < n; ++i)
        if (Numbers::IsZero(w[i][i], Numbers::commonTolerance<T>)) return false;

    // scratch = W^-1 U-transposed b, its products row by row.
    SetZero(scratch, n);
    WithAnyWidth(n, [=, &u](auto width) {
        ForRows<width.rowsAtOnce>(0, m, [&](auto size, unsigned int i) {
            RowBlock<T, size.Get()> block;
            for (unsigned int r = 0; r < size.Get(); ++r) {
                block.rows[r] = u[i + r];
                block.factors[r] = b[i + r];
            }
            AddRows(block, scratch, width);
        });
    });
    below.AddRowProducts(b + m, scratch);
    for (unsigned int j = 0; j < n; ++j) scratch[j] = scratch[j] / w[j][j];

    // x = V scratch.
    WithAnyWidth(n, [=, &v](auto width) {
        ForRows<width.rowsAtOnce>(0, n, [&](auto size, unsigned int k) {
            RowBlock<T, size.Get()> block;
            for (unsigned int r = 0; r < size.Get(); ++r) block.rows[r] = v[k + r];
            DotRows(block, scratch, width);
            for (unsigned int r = 0; r < size.Get(); ++r) x[k + r] = block.factors[r];
        });
    });
    return true;
}

} // namespace

template <class T>
bool SVDSolveColumns(TMatrixMxN<T>& u, TMatrixMxN<T>& w, TMatrixMxN<T>& v, const TMatrixMxN<T>& b, TMatrixMxN<T>* x)
{
    const unsigned int m = u.GetM();
    const unsigned int n = v.GetM();
    const std::unique_ptr<T[]> buffer(new T[std::size_t(m) + n + n]);
    T* const column = buffer.get();
    T* const solution = column + m;
    for (unsigned int c = 0; c < b.GetN(); ++c) {
        for (unsigned int r = 0; r < m; ++r) column[r] = b[r][c];
        if (!BackSubstitute(u, w, v, column, solution, solution + n, m, n, NoPanels())) return false;
        for (unsigned int r = 0; r < n; ++r) (*x)[r][c] = solution[r];
    }
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The singular value decomposition and the solve through it, on arrays of row pointers. Internal to the library.

#include <CorvexMaths/Forward.h>

#include <cstddef>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Factors an m by n matrix A as U W V-transposed, by Householder reduction to bidiagonal form and implicitly shifted
/// QR iteration (G. H. Golub, C. Reinsch, "Singular value decomposition and least squares solutions", 1970).
///
/// `u`, m rows of n, enters holding A and leaves holding U. `w`, n by n, leaves with the singular values on its
/// diagonal, none negative, and zeros elsewhere. `v`, n by n, leaves holding V, not transposed. `work` has n elements.
/// What `w`, `v` and `work` held before does not matter. Nothing sorts the singular values: they stand in the order in
/// which the iteration finds them, column j of u and v with w[j][j]. m may be less than n.
///
/// `iterationLimit`: from 1 to 30, the result is false when a value has not converged at that pass, that is, after one
/// QR transformation fewer. With 0, or above 30, a value is left as it is after 30 passes, and the result is true.
/// After a false result u, w, v and work hold the state the iteration had reached.
///
/// No two of the arrays may overlap. Nothing is allocated; rotations wait on the stack, some 140 KiB of it in `double`,
/// 100 KiB in `float`. Time grows as m n^2 + n^3.
template <class T>
bool SVDRows(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit);

/// The bytes of a line of the cache.
constexpr std::size_t lineBytes = 64;

/// Room for panels: it begins a line of the cache, so that no register of a panel lies across two.
template <class T>
class PanelMemory
{
public:
    /// Room for so many undefined values.
    explicit PanelMemory(std::size_t count) : lines(new Line[(count + lineValues - 1) / lineValues]) {}
    T* Get() const { return reinterpret_cast<T*>(lines.get()); }

private:
    static constexpr std::size_t lineValues = lineBytes / sizeof(T);
    struct alignas(lineBytes) Line
    {
        T values[lineValues];
    };
    std::unique_ptr<Line[]> lines;
};

/// `w` and `v` of `SVDRows`, and its result, for the m by n matrix whose rows follow one another in `rows`, each less
/// `shift`. n is 1 to 4 and m no less than n; `scratch` is room for the matrix, best `PanelMemory`. U is not formed.
template <class T>
bool SVDWithoutU(const T* rows, const T* shift, T* scratch, T** w, T** v, unsigned int m, unsigned int n,
                 unsigned int iterationLimit);

/// Solves A X = B column by column from the decomposition of A, in the sense of least squares where it has more rows
/// than columns. `b` has the rows of u and `x` at least the rows of v, and columns no fewer than b. False, with x
/// untouched, when any singular value is zero within the common tolerance (absolute, inclusive): such a system is not
/// solved through a truncated inverse.
template <class T>
bool SVDSolveColumns(TMatrixMxN<T>& u, TMatrixMxN<T>& w, TMatrixMxN<T>& v, const TMatrixMxN<T>& b, TMatrixMxN<T>* x);

/// Solves A x = b with a decomposition of its own, at most 29 QR transformations for a singular value. A is m by n with
/// n from 1 to 4, as TallSystem lays it out: in panels, and the head after them. It is overwritten; U is not formed.
/// False, with x untouched, when the decomposition does not converge or a singular value counts as zero.
template <class T>
bool SVDSolve(T* a, const T* b, T* x, unsigned int m, unsigned int n);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

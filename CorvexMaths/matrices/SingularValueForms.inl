#pragma once

/// The forms of the decomposition: of rows, of a tall matrix in panels, and of one whose U is not asked for.

#include <CorvexMaths/matrices/SingularValues.h>

// The steps, each in a file of its own.
#include <CorvexMaths/matrices/SingularValueAccumulation.inl>
#include <CorvexMaths/matrices/SingularValueIteration.inl>
#include <CorvexMaths/matrices/SingularValuePanels.inl>
#include <CorvexMaths/matrices/SingularValueReduction.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Decomposes a matrix of which u holds the first m rows and `below` the rest. Without `withU`, what neither the
/// singular values nor V take part in is left out: the accumulation of U reads them and writes to u alone, which is not
/// read again, and the iteration hands rotations to U without looking at what becomes of them.
template <bool withU, class T, class Below, class Left>
bool Decompose(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit, Below& below,
               Left left)
{
    // The steps write every element of v, but of w only the diagonal.
    for (unsigned int i = 0; i < n; ++i) SetZero(w[i], n);
    const T norm = ReduceToBidiagonal(u, w, v, work, m, n, below);
    AccumulateRight(u, v, work, n);
    if constexpr (withU) AccumulateLeft(u, w, m, n, below);
    return SingularValueIteration<T, Left>(&left, w, v, work, norm, n).Run(iterationLimit);
}

} // namespace

template <class T>
bool SVDRows(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit)
{
    NoPanels below;
    return n == 0 || Decompose<true>(u, w, v, work, m, n, iterationLimit, below, RotationRun<T>(u, m));
}

namespace
{

template <class T>
bool DecomposeRows(const T*, T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit)
{
    return SVDRows(u, w, v, work, m, n, iterationLimit);
}

/// The same in panels, for rows that follow one another in `source` and in u, which may be one; m is at least n.
template <class T>
bool DecomposeInPanels(const T* source, T** u, T** w, T** v, T* work, unsigned int m, unsigned int n,
                       unsigned int iterationLimit)
{
    const unsigned int head = HeadRows(m, n);
    const unsigned int headSize = head * n;
    for (unsigned int e = 0; e < headSize; ++e) u[0][e] = source[e];
    Panels<T> below(source + headSize, nullptr, u[0] + headSize, m - head, n);
    return Decompose<true>(u, w, v, work, head, n, iterationLimit, below, PanelRotations<T>(u, head, &below));
}

} // namespace

template <class T>
bool SVDWithoutU(const T* rows, const T* shift, T* scratch, T** w, T** v, unsigned int m, unsigned int n,
                 unsigned int iterationLimit)
{
    constexpr unsigned int mostColumns = 4;
    T* u[mostColumns + stripRows];
    T work[mostColumns];
    const unsigned int head = HeadRows(m, n);
    const unsigned int headSize = head * n;
    for (unsigned int i = 0; i < head; ++i) {
        u[i] = scratch + i * n;
        for (unsigned int j = 0; j < n; ++j) u[i][j] = rows[i * n + j] - shift[j];
    }
    Panels<T> below(rows + headSize, shift, scratch + headSize, m - head, n);
    return Decompose<false>(u, w, v, work, head, n, iterationLimit, below, NoRotations<T>());
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The forms of the decomposition: on rows, on a tall matrix in panels, without U, and for the solution of a system
/// alone.

#include <CorvexMaths/matrices/decomposition/SingularValues.h>

// The steps, each in a file of its own.
#include <CorvexMaths/matrices/decomposition/Accumulation.inl>
#include <CorvexMaths/matrices/decomposition/Iteration.inl>
#include <CorvexMaths/matrices/decomposition/Panels.inl>
#include <CorvexMaths/matrices/decomposition/Reduction.inl>
#include <CorvexMaths/matrices/decomposition/Solve.inl>

#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Decomposes a matrix of which u holds the first m rows and `below` the rest. Without `withU`, U is not accumulated,
/// which changes neither the singular values nor V: the accumulation writes to u alone, which is not read again, and
/// the iteration never reads what it rotates of U.
template <bool withU, class T, class Below, class Left>
bool Decompose(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit, Below& below,
               Left& left)
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
    RotationRun<T> left(u, m);
    return n == 0 || Decompose<true>(u, w, v, work, m, n, iterationLimit, below, left);
}

namespace
{

/// The most rows of the head of a matrix of so many columns.
constexpr unsigned int MostHeadRows(unsigned int n)
{
    return n + stripRows - 1;
}

/// `SVDRows` in panels, for rows that follow one another in `source` and in u, which may be the same; m is at least n.
/// The head is copied out, so that the panels can begin at a line of the cache in the memory it leaves.
template <class T>
bool DecomposeInPanels(const T* source, T** u, T** w, T** v, T* work, unsigned int m, unsigned int n,
                       unsigned int iterationLimit)
{
    const unsigned int head = HeadRows(m, n);
    const unsigned int headSize = head * n;
    T headElements[MostHeadRows(mostPanelColumns) * mostPanelColumns];
    T* headRows[MostHeadRows(mostPanelColumns)];
    for (unsigned int e = 0; e < headSize; ++e) headElements[e] = source[e];
    for (unsigned int i = 0; i < head; ++i) headRows[i] = headElements + i * n;
    constexpr std::size_t lineValues = lineBytes / sizeof(T);
    const std::size_t toLine =
        (lineValues - reinterpret_cast<std::uintptr_t>(u[0]) / sizeof(T) % lineValues) % lineValues;
    Panels<T> below(source + headSize, nullptr, u[0] + (toLine < headSize ? toLine : headSize), m - head, n);
    PanelRotations<T> left(headRows, head, &below);
    const bool isConverged = Decompose<true>(headRows, w, v, work, head, n, iterationLimit, below, left);
    left.GiveBackRows(u[0] + headSize);
    for (unsigned int e = 0; e < headSize; ++e) u[0][e] = headElements[e];
    return isConverged;
}

/// The most columns of the forms that return no U.
constexpr unsigned int mostFewColumns = 4;

} // namespace

template <class T>
bool SVDWithoutU(const T* rows, const T* shift, T* scratch, T** w, T** v, unsigned int m, unsigned int n,
                 unsigned int iterationLimit)
{
    T* u[MostHeadRows(mostFewColumns)];
    T work[mostFewColumns];
    const unsigned int head = HeadRows(m, n);
    for (unsigned int i = 0; i < head; ++i) {
        u[i] = scratch + std::size_t(m - head + i) * n;
        for (unsigned int j = 0; j < n; ++j) u[i][j] = rows[i * n + j] - shift[j];
    }
    Panels<T> below(rows + head * n, shift, scratch, m - head, n);
    NoRotations<T> left;
    return Decompose<false>(u, w, v, work, head, n, iterationLimit, below, left);
}

template <class T>
bool SVDSolve(T* a, const T* b, T* x, unsigned int m, unsigned int n)
{
    constexpr unsigned int iterationLimit = 30;
    T* rows[MostHeadRows(mostFewColumns) + 2 * mostFewColumns];
    T** const u = rows;
    T** const w = u + MostHeadRows(mostFewColumns);
    T** const v = w + mostFewColumns;
    T squares[2][mostFewColumns][mostFewColumns];
    T work[mostFewColumns];
    const unsigned int head = HeadRows(m, n);
    for (unsigned int i = 0; i < head; ++i) u[i] = a + std::size_t(m - head + i) * n;
    for (unsigned int i = 0; i < n; ++i) {
        w[i] = squares[0][i];
        v[i] = squares[1][i];
    }
    Panels<T> below(nullptr, nullptr, a, m - head, n);
    PanelRotations<T> left(u, head, &below);
    return Decompose<true>(u, w, v, work, head, n, iterationLimit, below, left) &&
           BackSubstitute(u, w, v, b, x, work, head, n, left);
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

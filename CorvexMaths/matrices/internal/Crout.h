#pragma once

/// The triangular decomposition and its solve in their plain form, for an order known at compile time or at run time.
/// Internal.
///
/// Crout's method computes, column by column,
///     u(i, j) = a(i, j) - sum over k < i of l(i, k)*u(k, j)                      for i < j,
///     l(i, j) = (a(i, j) - sum over k < j of l(i, k)*u(k, j)) * (1 / u(j, j))    for i > j,
/// with products subtracted one at a time in ascending k. The pivot of a column is the row of the greatest candidate,
/// measured against the greatest element of its row before the decomposition (implicit scaling).
///
/// `Order` is unsigned int, or a std::integral_constant of it, by which loops unroll.

#include <CorvexMaths/Numbers.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Initialises parity and pivots, and sets scale to the reciprocal of each row's greatest absolute value.
/// False at the first row whose greatest is 0; NaN compares as not greater and is passed over.
template <class T, class Order>
bool ScaleRows(T* const* rows, int* pivots, T* scale, T* parity, Order order)
{
    *parity = T(1);
    for (unsigned int i = 0; i < order; ++i) {
        scale[i] = T(0);
        pivots[i] = 0;
    }
    for (unsigned int i = 0; i < order; ++i) {
        T greatest = T(0);
        for (unsigned int j = 0; j < order; ++j) {
            const T size = Numbers::Absolute(rows[i][j]);
            if (size > greatest) greatest = size;
        }
        if (greatest == T(0)) return false;
        scale[i] = T(1) / greatest;
    }
    return true;
}

/// Considers a candidate for a column's pivot. Of equal merits the last wins; a merit of NaN never does, so where all
/// are NaN the pivot stays that of the previous column.
template <class T>
inline void Consider(T merit, unsigned int row, T& best, unsigned int& pivot)
{
    if (merit >= best) {
        best = merit;
        pivot = row;
    }
}

/// Brings the pivot to row j, moving elements and not row pointers. One that is exactly 0 is replaced by the pivot
/// guard.
template <class T, class Order>
void PlacePivot(T* const* rows, int* pivots, T* scale, T* parity, unsigned int j, unsigned int pivot, Order order)
{
    if (pivot != j) {
        T* const pivotRow = rows[pivot];
        T* const row = rows[j];
        for (unsigned int k = 0; k < order; ++k) {
            const T element = pivotRow[k];
            pivotRow[k] = row[k];
            row[k] = element;
        }
        *parity = -*parity;
        scale[pivot] = scale[j];
    }
    pivots[j] = static_cast<int>(pivot);
    if (rows[j][j] == T(0)) rows[j][j] = Numbers::pivotGuard<T>;
}

/// Subtracts the first `count` products of row i and column j from element (i, j).
template <class T>
inline void Reduce(T* const* rows, unsigned int i, unsigned int j, unsigned int count)
{
    T sum = rows[i][j];
    for (unsigned int k = 0; k < count; ++k) sum -= rows[i][k] * rows[k][j];
    rows[i][j] = sum;
}

/// The decomposition of scaled rows, column by column.
template <class T, class Order>
void FactorByColumns(T* const* rows, int* pivots, T* scale, T* parity, Order order)
{
    unsigned int pivot = 0;
    for (unsigned int j = 0; j < order; ++j) {
        for (unsigned int i = 0; i < j; ++i) Reduce(rows, i, j, i);
        T best = T(0);
        for (unsigned int i = j; i < order; ++i) {
            Reduce(rows, i, j, j);
            Consider(scale[i] * Numbers::Absolute(rows[i][j]), i, best, pivot);
        }
        PlacePivot(rows, pivots, scale, parity, j, pivot, order);
        if (j == order - 1) break;
        const T reciprocal = T(1) / rows[j][j];
        for (unsigned int i = j + 1; i < order; ++i) rows[i][j] *= reciprocal;
    }
}

/// Whether all pivots name a row of a matrix of that order.
inline bool AreRows(const int* pivots, unsigned int order)
{
    for (unsigned int i = 0; i < order; ++i)
        if (pivots[i] < 0 || static_cast<unsigned int>(pivots[i]) >= order) return false;
    return true;
}

/// Solves for one right-hand side: the swaps interleaved with the forward sums, which begin at the first value that is
/// not 0, then the backward sums.
template <class T, class Order>
void Substitute(T* const* rows, const int* pivots, const T* b, T* x, Order order)
{
    for (unsigned int i = 0; i < order; ++i) x[i] = b[i];

    unsigned int first = order;
    for (unsigned int i = 0; i < order; ++i) {
        const int pivot = pivots[i];
        T sum = x[pivot];
        x[pivot] = x[i];
        if (first != order) {
            for (unsigned int j = first; j < i; ++j) sum -= rows[i][j] * x[j];
        } else if (sum != T(0)) {
            first = i;
        }
        x[i] = sum;
    }

    for (unsigned int i = order; i-- > 0;) {
        T sum = x[i];
        for (unsigned int j = i + 1; j < order; ++j) sum -= rows[i][j] * x[j];
        x[i] = sum / rows[i][i];
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

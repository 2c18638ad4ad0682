#pragma once

/// Where a row of a compressed matrix is read. Internal.

#include <CorvexMaths/sparse/TCRSMatrixMxN.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The positions `begin` to `end` - 1.
struct RowRange
{
    int begin;
    int end;

    bool IsEmpty() const { return begin == end; }
};

/// The range of a row: 0 to 0 for one that is empty or that the matrix does not have. Before an empty row, whose start
/// is a sentinel above every position, a range ends with the arrays.
template <class T>
inline RowRange RangeOfRow(const TCRSMatrixMxN<T>& matrix, int row)
{
    if (row < 0 || row >= matrix.rowCount) return {0, 0};
    const int begin = matrix.rowStarts[row];
    const int next = matrix.rowStarts[row + 1];
    const int end = next < matrix.capacity ? next : matrix.capacity;
    return begin < end ? RowRange{begin, end} : RowRange{0, 0};
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// Rows of one matrix against the columns of another that is stored by columns. Internal.

#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/internal/RowRange.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Whether the column indices of a row ascend strictly.
template <class T>
inline bool IsAscending(const TCRSMatrixMxN<T>& matrix, RowRange range)
{
    for (int k = range.begin + 1; k < range.end; ++k)
        if (matrix.columnIndices[k] <= matrix.columnIndices[k - 1]) return false;
    return true;
}

/// Sums the products of a row with a column over their common indices, both walked forwards once. An index out of order
/// is passed over or ends the walk, as it comes.
template <class T>
inline T WalkTogether(const TCRSMatrixMxN<T>& left, RowRange range, const TCCSMatrixMxN<T>& b, int column)
{
    const TList<T>& values = b.columnValues[column];
    const TList<int>& rows = b.columnRows[column];
    const unsigned int count = values.GetCount();
    unsigned int j = 0;
    T sum = T(0);
    for (int k = range.begin; k < range.end && j < count; ++k) {
        const int index = left.columnIndices[k];
        while (j < count && rows[j] < index) ++j;
        if (j < count && rows[j] == index) {
            sum += left.values[k] * values[j];
            ++j;
        }
    }
    return sum;
}

/// A matrix stored by columns, stored anew by rows. A row of another matrix with strictly ascending indices can then
/// add its multiples of these rows: if each column ascends strictly too, the sums have the terms of the walk in the
/// order of the walk. Unusable for other columns, and for indices so far apart that the rows would be mostly empty.
template <class T>
class RowForm
{
public:
    explicit RowForm(const TCCSMatrixMxN<T>& source)
    {
        int rowCount = 0;
        int elementCount = 0;
        for (int c = 0; c < source.columnCount; ++c) {
            const TList<int>& indices = source.columnRows[c];
            int previous = -1;
            for (unsigned int j = 0; j < indices.GetCount(); ++j) {
                if (indices[j] <= previous) return;
                previous = indices[j];
            }
            elementCount += static_cast<int>(indices.GetCount());
            if (rowCount <= previous) rowCount = previous + 1;
        }
        if (rowCount / emptyRowsAllowed > elementCount) return;
        Fill(source, rowCount, elementCount);
    }

    bool IsUsable() const { return isUsable; }
    /// The rows, columns ascending in each. An empty one starts where the next one does.
    const TCRSMatrixMxN<T>& GetRows() const { return rows; }

private:
    /// How many rows there may be for each element.
    static constexpr int emptyRowsAllowed = 16;

    TCRSMatrixMxN<T> rows;
    bool isUsable = false;

    /// Sorts the elements by rows: it counts them, and then places them column after column. While it places them,
    /// the entry behind that of a row is the row's next free position; the extra row makes room for that.
    void Fill(const TCCSMatrixMxN<T>& source, int rowCount, int elementCount)
    {
        rows.Redefine(rowCount + 1, source.columnCount, elementCount);
        int* const starts = rows.rowStarts;
        for (int r = 0; r < rowCount + 2; ++r) starts[r] = 0;
        ForEachElement(source, [starts](int row, int, T) { ++starts[row + 2]; });
        for (int r = 2; r < rowCount + 2; ++r) starts[r] += starts[r - 1];
        ForEachElement(source, [this, starts](int row, int column, T value) {
            const int position = starts[row + 1]++;
            rows.values[position] = value;
            rows.columnIndices[position] = column;
        });
        rows.elementCount = elementCount;
        isUsable = true;
    }

    template <class Visit>
    static void ForEachElement(const TCCSMatrixMxN<T>& source, const Visit& visit)
    {
        for (int c = 0; c < source.columnCount; ++c)
            for (unsigned int j = 0; j < source.columnRows[c].GetCount(); ++j)
                visit(source.columnRows[c][j], c, source.columnValues[c][j]);
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/internal/Owners.h>
#include <CorvexMaths/sparse/Products.inl>
#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>
#include <CorvexMaths/sparse/internal/RowRange.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
TCRSMatrixMxN<T>& TCRSMatrixMxN<T>::operator=(const TCRSMatrixMxN& other)
{
    // Joined before anything is released: both may hold the same arrays already.
    Kernels::JoinOwners(other.owners);
    Release();
    CopyFields(other);
    return *this;
}

template <class T>
TCRSMatrixMxN<T>& TCRSMatrixMxN<T>::operator=(TCRSMatrixMxN&& other) noexcept
{
    if (this == &other) return *this;
    Release();
    CopyFields(other);
    other.CopyFields(TCRSMatrixMxN());
    return *this;
}

template <class T>
void TCRSMatrixMxN<T>::Redefine(int rows, int columns, int elements)
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Redefine", rows >= 0 && columns >= 0 && elements >= 0, rows, columns, elements);
    const int type = matrixType;
    *this = TCRSMatrixMxN();
    matrixType = type;
    std::unique_ptr<unsigned int> ownCount(new unsigned int(1));
    std::unique_ptr<T[]> ownValues(new T[static_cast<std::size_t>(elements)]);
    // What is not added yet reads as column 0, not as a wild index.
    std::unique_ptr<int[]> ownIndices(new int[static_cast<std::size_t>(elements)]());
    rowStarts = new int[static_cast<std::size_t>(rows) + 1];
    columnIndices = ownIndices.release();
    values = ownValues.release();
    owners = ownCount.release();
    rowCount = rows;
    columnCount = columns;
    capacity = elements;
    for (int r = 0; r < rows; ++r) rowStarts[r] = emptyRow;
    rowStarts[rows] = elements;
}

/// Gives up a share of the arrays, and deletes them with the last. Counts and pointers keep their values and must be
/// set at once, unless the matrix is being destroyed. When a matrix is assigned to itself, they are still valid.
template <class T>
void TCRSMatrixMxN<T>::Release()
{
    if (!Kernels::LeaveOwners(owners)) return;
    delete[] values;
    delete[] columnIndices;
    delete[] rowStarts;
}

template <class T>
void TCRSMatrixMxN<T>::CopyFields(const TCRSMatrixMxN& other)
{
    matrixType = other.matrixType;
    rowCount = other.rowCount;
    columnCount = other.columnCount;
    capacity = other.capacity;
    values = other.values;
    columnIndices = other.columnIndices;
    rowStarts = other.rowStarts;
    elementCount = other.elementCount;
    owners = other.owners;
}

template <class T>
void TCRSMatrixMxN<T>::TransposeFrom(const TCCSMatrixMxN<T>& source)
{
    Redefine(source.columnCount, source.rowCount, source.elementCount);
    for (int c = 0; c < source.columnCount; ++c) {
        const TList<T>& column = source.columnValues[c];
        for (unsigned int k = 0; k < column.GetCount() && elementCount < capacity; ++k)
            Append(column[k], c, source.columnRows[c][k]);
    }
}

template <class T>
void TCRSMatrixMxN<T>::Transpose(TCRSMatrixMxN* result) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Transpose", result != nullptr && result != this, result, this);
    result->Redefine(columnCount, rowCount, capacity);
    for (int c = 0; c < columnCount; ++c) {
        for (int r = 0; r < rowCount; ++r) {
            const Kernels::RowRange range = Kernels::RangeOfRow(*this, r);
            int k = range.begin;
            while (k < range.end && columnIndices[k] != c) ++k;
            // A row before an empty one reaches into later rows, whose elements could then come twice.
            if (k < range.end && result->elementCount < result->capacity) result->AddElement(values[k], c, r);
        }
    }
}

CORVEX_INSTANTIATE_SCALARS(, class, TCRSMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

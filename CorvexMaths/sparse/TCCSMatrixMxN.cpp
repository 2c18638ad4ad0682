#include <CorvexMaths/internal/Owners.h>
#include <CorvexMaths/sparse/TCCSMatrixMxN.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
TCCSMatrixMxN<T>& TCCSMatrixMxN<T>::operator=(const TCCSMatrixMxN& other)
{
    // Joined before anything is released: both may hold the same lists already.
    Kernels::JoinOwners(other.owners);
    Release();
    CopyFields(other);
    return *this;
}

template <class T>
TCCSMatrixMxN<T>& TCCSMatrixMxN<T>::operator=(TCCSMatrixMxN&& other) noexcept
{
    if (this == &other) return *this;
    Release();
    CopyFields(other);
    other.CopyFields(TCCSMatrixMxN());
    return *this;
}

template <class T>
void TCCSMatrixMxN<T>::Redefine(int columns, unsigned int growSize)
{
    CORVEX_PRECONDITION("TCCSMatrixMxN::Redefine", columns >= 0, columns);
    *this = TCCSMatrixMxN();
    std::unique_ptr<unsigned int> ownCount(new unsigned int(1));
    std::unique_ptr<TList<T>[]> ownValues(new TList<T>[static_cast<std::size_t>(columns)]);
    columnRows = new TList<int>[static_cast<std::size_t>(columns)];
    columnValues = ownValues.release();
    owners = ownCount.release();
    columnCount = columns;
    for (int c = 0; c < columns; ++c) {
        columnValues[c].SetGrowSize(growSize);
        columnRows[c].SetGrowSize(growSize);
    }
}

/// Gives up a share of the lists, and deletes them with the last. Counts and pointers keep their values and must be set
/// at once, unless the matrix is being destroyed. When a matrix is assigned to itself, they are still valid.
template <class T>
void TCCSMatrixMxN<T>::Release()
{
    if (!Kernels::LeaveOwners(owners)) return;
    delete[] columnValues;
    delete[] columnRows;
}

template <class T>
void TCCSMatrixMxN<T>::CopyFields(const TCCSMatrixMxN& other)
{
    rowCount = other.rowCount;
    columnCount = other.columnCount;
    elementCount = other.elementCount;
    columnValues = other.columnValues;
    columnRows = other.columnRows;
    owners = other.owners;
}

CORVEX_INSTANTIATE_SCALARS(, class, TCCSMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/internal/Owners.h>
#include <CorvexMaths/sparse/TCCSMatrixMxN.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
TCCSMatrixMxN<T>::TCCSMatrixMxN(int columns, unsigned int growSize) : TCCSMatrixMxN()
{
    Redefine(columns, growSize);
}

template <class T>
TCCSMatrixMxN<T>::TCCSMatrixMxN(const TCCSMatrixMxN& other) : TCCSMatrixMxN()
{
    *this = other;
}

template <class T>
TCCSMatrixMxN<T>::~TCCSMatrixMxN()
{
    Release();
}

template <class T>
TCCSMatrixMxN<T>& TCCSMatrixMxN<T>::operator=(const TCCSMatrixMxN& other)
{
    // Joined before anything is let go: both may hold the same lists already.
    Kernels::JoinOwners(other.owners);
    Release();
    rowCount = other.rowCount;
    columnCount = other.columnCount;
    elementCount = other.elementCount;
    columnValues = other.columnValues;
    columnRows = other.columnRows;
    owners = other.owners;
    return *this;
}

template <class T>
void TCCSMatrixMxN<T>::Redefine(int columns, unsigned int growSize)
{
    CORVEX_PRECONDITION("TCCSMatrixMxN::Redefine", columns >= 0, columns);
    Release();
    // Should the allocator give up, the destructor finds nothing to release twice.
    owners = nullptr;
    columnValues = nullptr;
    columnRows = nullptr;

    rowCount = 0;
    elementCount = 0;
    columnCount = columns;
    owners = new unsigned int(1);
    columnValues = new TList<T>[static_cast<std::size_t>(columns)];
    columnRows = new TList<int>[static_cast<std::size_t>(columns)];
    for (int c = 0; c < columns; ++c) {
        columnValues[c].SetGrowSize(growSize);
        columnRows[c].SetGrowSize(growSize);
    }
}

/// Leaves the owners, and releases the lists as the last of them. Counts and pointers keep their values, and must be
/// set anew at once unless the matrix is at its end. In assignment to itself they are still good, for it has joined.
template <class T>
void TCCSMatrixMxN<T>::Release()
{
    if (!Kernels::LeaveOwners(owners)) return;
    delete[] columnValues;
    delete[] columnRows;
}

CORVEX_INSTANTIATE_SCALARS(, class, TCCSMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// TCCSMatrixMxN: a sparse matrix that grows a column at a time.

#include <CorvexMaths/containers/TList.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A sparse matrix stored by columns in lists that grow, for T of `float` and `double`. The number of columns is fixed
/// by Redefine; the number of rows follows the elements added. Indices count from 0.
///
/// Nothing is checked and nothing is sorted: indices in range are preconditions, and within a column the elements stand
/// in the order in which they were added.
///
/// Copies share their lists, and the last of the sharers to go releases them. What one sharer adds therefore stands in
/// the lists of all, but raises the counts of that one alone. Redefine gives a matrix lists of its own. The sharers are
/// counted without locks: to several threads they are one object.
template <class T>
class CORVEX_API TCCSMatrixMxN
{
public:
    /// One more than the largest row index added so far; 0 when empty.
    int rowCount = 0;
    /// The number of columns.
    int columnCount = 0;
    /// How many elements were added so far.
    int elementCount = 0;
    /// The values of each column: `columnCount` lists.
    TList<T>* columnValues = nullptr;
    /// The row index of each of these values: `columnCount` lists.
    TList<int>* columnRows = nullptr;

    /// The empty matrix: no columns, nothing allocated.
    TCCSMatrixMxN() = default;
    /// A matrix without elements; see Redefine.
    TCCSMatrixMxN(int columns, unsigned int growSize);
    /// Copies the fields, so that both matrices share the lists.
    TCCSMatrixMxN(const TCCSMatrixMxN& other);
    /// Releases the lists unless another matrix shares them.
    ~TCCSMatrixMxN();

    /// Copies the fields, so that both matrices share the lists; those held before are let go. May be given itself.
    TCCSMatrixMxN& operator=(const TCCSMatrixMxN& other);

    /// Lets go of all content and begins anew with a number of columns and no rows. Each list gets the grow size; one
    /// of 0 leaves the 1000 of a new list.
    void Redefine(int columns, unsigned int growSize);

    /// Appends an element to its column and raises the number of rows to hold it if need be.
    void AddElement(T value, int row, int column)
    {
        columnValues[column].Add(value);
        columnRows[column].Add(row);
        ++elementCount;
        if (rowCount < row + 1) rowCount = row + 1;
    }

private:
    /// How many matrices share the lists, this one included; null while there are none.
    unsigned int* owners = nullptr;

    void Release();
};

extern template class TCCSMatrixMxN<float>;
extern template class TCCSMatrixMxN<double>;

} // namespace Halmont::Orrin::CorvexMaths

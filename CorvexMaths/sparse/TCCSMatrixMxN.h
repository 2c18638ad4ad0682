#pragma once

/// TCCSMatrixMxN: a sparse matrix that grows a column at a time.

#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/containers/TList.h>

#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

/// A sparse matrix stored by columns in lists that grow, for T of `float` and `double`. The number of columns is fixed
/// by Redefine; the number of rows follows the elements added. Indices count from 0.
///
/// Nothing is sorted: within a column the elements stand in the order in which they were added, and an element added
/// twice is there twice. Indices in range are preconditions.
///
/// Copies share their lists, which are released with the last of them. What is added to one of them therefore stands in
/// the lists of all, but raises the counts of that one alone. Redefine gives a matrix lists of its own. The reference
/// count is not atomic: matrices that share lists belong to one thread.
///
/// Exhausted memory surfaces as the allocator's exception: Redefine then leaves the empty matrix, and AddElement the
/// matrix as it was.
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
    /// A matrix without rows and elements, of a number of columns that is not negative. Each list gets the grow size;
    /// one of 0 leaves the 1000 of a new list.
    TCCSMatrixMxN(int columns, unsigned int growSize) : TCCSMatrixMxN() { Redefine(columns, growSize); }
    /// Copies the counts and shares the lists with the other matrix. Allocates nothing.
    TCCSMatrixMxN(const TCCSMatrixMxN& other) : TCCSMatrixMxN() { *this = other; }
    /// Releases the lists unless another matrix shares them.
    ~TCCSMatrixMxN() { Release(); }

    /// Copies the counts and shares the lists with the other matrix, which may be this one; the own ones are released
    /// unless another matrix shares them. Allocates nothing.
    TCCSMatrixMxN& operator=(const TCCSMatrixMxN& other);
    /// Takes over the counts and lists of the other matrix, which is left empty. Those that share its lists share them
    /// with this matrix from then on.
    TCCSMatrixMxN(TCCSMatrixMxN&& other) noexcept : TCCSMatrixMxN() { *this = std::move(other); }
    /// Takes over the counts and lists of the other matrix, which is left empty, unless it is this one; the own lists
    /// are released unless another matrix shares them.
    TCCSMatrixMxN& operator=(TCCSMatrixMxN&& other) noexcept;

    /// Drops all content, which stays in other matrices that share it, and begins anew with lists of its own: `columns`
    /// of each kind, which is not negative, and no rows. Each list gets the grow size; one of 0 leaves the 1000 of a
    /// new list.
    void Redefine(int columns, unsigned int growSize);

    /// Appends an element to its column, and raises the number of rows to row + 1 where it is less. The column is from
    /// 0 to columnCount - 1, the row at least 0 and below 0x7fffffff. Any value is taken, 0 and NaN too, and an element
    /// added before at the same place stays.
    void AddElement(T value, int row, int column)
    {
        CORVEX_PRECONDITION("TCCSMatrixMxN::AddElement", 0 <= column && column < columnCount, column, columnCount);
        CORVEX_PRECONDITION("TCCSMatrixMxN::AddElement", 0 <= row && row < 0x7fffffff, row);
        TList<int>& rows = columnRows[column];
        rows.Add(row);
        // Both lists or neither, should there be memory for one alone.
        struct Undo
        {
            TList<int>* list;
            ~Undo()
            {
                if (list) list->RemoveFromEnd(1);
            }
        } undo{&rows};
        columnValues[column].Add(value);
        undo.list = nullptr;
        ++elementCount;
        if (rowCount < row + 1) rowCount = row + 1;
    }

private:
    /// The reference count of the lists; null while there are none.
    unsigned int* owners = nullptr;

    void Release();
    void CopyFields(const TCCSMatrixMxN& other);

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCCSMatrixMxN);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TCCSMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

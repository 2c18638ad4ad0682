#pragma once

/// TMap: a table of cells that gains and loses rows and columns.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Precondition.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace Halmont::Orrin::CorvexUtilities
{

/// A two-dimensional table, addressed as `map[column][row]`. Each column is a block of its own, so a table grows more
/// cheaply by columns than by rows: a new row moves every column to a new block, a new column only the array of
/// pointers.
///
/// New cells are default-initialised: numbers and pointers in them are undefined until set, pairs are
/// default-constructed. Cells of pointer type own nothing. Cells that survive a change of size keep their column and
/// row; they are copied by `=` where their column moves to a new block.
///
/// Copies share their storage with the original: changing a cell of one changes it in the other, and only one of them
/// may be resized, cleared or destroyed. A column index below the width is a precondition, which debug builds check.
/// There are no locks.
///
/// Where memory runs out, or a cell's constructor or assignment throws, the table stays as it was.
template <class T>
class CORVEX_API TMap
{
public:
    /// A table of no columns and no rows, without storage.
    TMap() = default;
    /// A table of a number of columns and rows, its cells default-initialised. Without columns there is no storage, but
    /// the number of rows is kept for columns to come.
    explicit TMap(unsigned int columnCount, unsigned int rowCount = 0) { Alter(columnCount, rowCount); }
    /// A table that shares the other's storage; no cell is copied. Only one of the two may be resized, cleared or
    /// destroyed.
    TMap(const TMap<T>& other) = default;
    /// Shares the other table's storage; no cell is copied, and what this table held before is not released. Only one
    /// of the two may be resized, cleared or destroyed from then on.
    TMap<T>& operator=(const TMap<T>& other) = default;
    /// Takes over the other table's storage and leaves it without columns and rows.
    TMap(TMap<T>&& other) noexcept { *this = std::move(other); }
    /// Takes over the other table's storage and leaves it without columns and rows. As in an assignment by copy, what
    /// this table held before is not released, for a copy may share it: Clear comes first where none does. A table
    /// moved to itself stays as it is.
    TMap<T>& operator=(TMap<T>&& other) noexcept
    {
        if (this == &other) return *this;
        width = std::exchange(other.width, 0u);
        height = std::exchange(other.height, 0u);
        columns = std::exchange(other.columns, nullptr);
        return *this;
    }
    /// Releases all columns and the array of them, not what cells of pointer type point to.
    virtual ~TMap() { Clear(); }

    /// The cells of a column, one for each row: `map[column][row]`. The column index is below the width; the row index
    /// meets a plain pointer, which no build checks.
    T* operator[](unsigned int column) const
    {
        CORVEX_PRECONDITION("TMap::operator[]", column < width, column, width);
        return columns[column];
    }
    /// The number of columns.
    unsigned int GetWidth() const { return width; }
    /// The number of rows.
    unsigned int GetHeight() const { return height; }

    /// Resizes the table; cells inside both the old and the new size keep their place and value, new ones are
    /// default-initialised. Columns keep their blocks when only the width changes; otherwise each moves to a new one. A
    /// table without columns merely takes the new height. Equal sizes change nothing.
    void Alter(unsigned int newWidth, unsigned int newHeight);
    /// Adds n columns and n rows at the end, of default-initialised cells. A size of 2^32 or more is more than there is
    /// memory for.
    void Grow(unsigned int n) { Alter(Sum(width, n), Sum(height, n)); }
    /// Removes the last n columns and the last n rows. The differences are unsigned and not tested: a width or height
    /// below n wraps round to a size near 2^32.
    void Shrink(unsigned int n) { Alter(width - n, height - n); }
    /// Adds a row of default-initialised cells at the end. Every column moves to a new block.
    void AddRow() { Alter(width, Sum(height, 1)); }
    /// Adds a column of default-initialised cells at the end. The other columns keep their blocks.
    void AddColumn() { Alter(Sum(width, 1), height); }
    /// Removes a row; those after it close the gap. An index past the end removes the last row; a table without rows
    /// stays as it is. Every column moves to a new block.
    void RemoveRow(unsigned int row);
    /// Removes a column and releases its cells; those after it close the gap and keep their blocks. An index past the
    /// end removes nothing.
    void RemoveColumn(unsigned int column);
    /// Releases all columns and the array of them, not what cells of pointer type point to; width and height become 0.
    void Clear();

protected:
    unsigned int width = 0;  ///< The number of columns.
    unsigned int height = 0; ///< The number of rows.
    T** columns = nullptr;   ///< The cells of each column; null if there never was a column, and after Clear.

private:
    static unsigned int Sum(unsigned int size, unsigned int n)
    {
        if (size + n < size) throw std::bad_array_new_length();
        return size + n;
    }
    void Replace(T** replacement, unsigned int newWidth, unsigned int newHeight);
    void Rebuild(unsigned int newWidth, unsigned int newHeight, unsigned int removedRow);
};

template <class T>
void TMap<T>::Replace(T** replacement, unsigned int newWidth, unsigned int newHeight)
{
    delete[] columns;
    columns = replacement;
    width = newWidth;
    height = newHeight;
}

/// Alters the size and leaves a row out, or none for the height. Columns keep their blocks if the height stays.
template <class T>
void TMap<T>::Rebuild(unsigned int newWidth, unsigned int newHeight, unsigned int removedRow)
{
    // All that can throw comes before the first change.
    const unsigned int kept = std::min(width, newWidth);
    const unsigned int reused = newHeight == height ? kept : 0;
    std::unique_ptr<T*[]> altered(new T*[newWidth]);
    const std::unique_ptr<std::unique_ptr<T[]>[]> fresh(new std::unique_ptr<T[]>[newWidth]);
    for (unsigned int i = reused; i < newWidth; ++i) {
        fresh[i].reset(new T[newHeight]);
        for (unsigned int j = 0; i < kept && j < std::min(height, newHeight); ++j)
            fresh[i][j] = columns[i][j < removedRow ? j : j + 1];
    }

    for (unsigned int i = 0; i < newWidth; ++i) altered[i] = i < reused ? columns[i] : fresh[i].release();
    for (unsigned int i = reused; i < width; ++i) delete[] columns[i];
    Replace(altered.release(), newWidth, newHeight);
}

template <class T>
void TMap<T>::Alter(unsigned int newWidth, unsigned int newHeight)
{
    if (width == 0 && newWidth == 0)
        height = newHeight;
    else if (newWidth != width || newHeight != height)
        Rebuild(newWidth, newHeight, height);
}

template <class T>
void TMap<T>::RemoveRow(unsigned int row)
{
    if (height == 0) return;
    if (width == 0)
        --height;
    else
        Rebuild(width, height - 1, row);
}

template <class T>
void TMap<T>::RemoveColumn(unsigned int column)
{
    if (column >= width) return;
    const unsigned int remaining = width - 1;
    T** const narrowed = new T*[remaining];
    for (unsigned int i = 0; i < remaining; ++i) narrowed[i] = columns[i < column ? i : i + 1];
    delete[] columns[column];
    Replace(narrowed, remaining, height);
}

template <class T>
void TMap<T>::Clear()
{
    for (unsigned int i = 0; i < width; ++i) delete[] columns[i];
    Replace(nullptr, 0, 0);
}

} // namespace Halmont::Orrin::CorvexUtilities

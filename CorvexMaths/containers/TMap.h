#pragma once

/// TMap: a table of cells that gains and loses rows and columns.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Precondition.h>

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
    /// Adds n columns and n rows at the end, of default-initialised cells.
    void Grow(unsigned int n) { Alter(width + n, height + n); }
    /// Removes the last n columns and the last n rows. The differences are unsigned and not tested: a width or height
    /// below n wraps round to a size near 2^32.
    void Shrink(unsigned int n) { Alter(width - n, height - n); }
    /// Adds a row of default-initialised cells at the end. Every column moves to a new block.
    void AddRow() { Alter(width, height + 1); }
    /// Adds a column of default-initialised cells at the end. The other columns keep their blocks.
    void AddColumn() { Alter(width + 1, height); }
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
    static void CopyCells(T* target, const T* source, unsigned int n);
    static unsigned int Lesser(unsigned int a, unsigned int b) { return a < b ? a : b; }

    void ReplaceColumns(T** replacement, unsigned int newWidth);
    T* MakeResizedColumn(unsigned int column, unsigned int newHeight) const;
};

template <class T>
void TMap<T>::CopyCells(T* target, const T* source, unsigned int n)
{
    for (unsigned int i = 0; i < n; ++i) target[i] = source[i];
}

/// A block of a new height with the cells of a column that fit.
template <class T>
T* TMap<T>::MakeResizedColumn(unsigned int column, unsigned int newHeight) const
{
    T* const resized = new T[newHeight];
    CopyCells(resized, columns[column], Lesser(height, newHeight));
    return resized;
}

template <class T>
void TMap<T>::ReplaceColumns(T** replacement, unsigned int newWidth)
{
    delete[] columns;
    columns = replacement;
    width = newWidth;
}

template <class T>
void TMap<T>::Alter(unsigned int newWidth, unsigned int newHeight)
{
    if (newHeight != height) {
        // Columns beyond the new width go below; they need no new block.
        for (unsigned int i = 0; i < Lesser(width, newWidth); ++i) {
            T* const resized = MakeResizedColumn(i, newHeight);
            delete[] columns[i];
            columns[i] = resized;
        }
        height = newHeight;
    }
    if (newWidth != width) {
        T** const altered = new T*[newWidth];
        for (unsigned int i = 0; i < Lesser(width, newWidth); ++i) altered[i] = columns[i];
        for (unsigned int i = newWidth; i < width; ++i) delete[] columns[i];
        for (unsigned int i = width; i < newWidth; ++i) altered[i] = new T[newHeight];
        ReplaceColumns(altered, newWidth);
    }
}

template <class T>
void TMap<T>::RemoveRow(unsigned int row)
{
    if (height == 0) return;
    const unsigned int remaining = height - 1;
    const unsigned int kept = Lesser(row, remaining);
    for (unsigned int i = 0; i < width; ++i) {
        T* const shortened = new T[remaining];
        CopyCells(shortened, columns[i], kept);
        CopyCells(shortened + kept, columns[i] + kept + 1, remaining - kept);
        delete[] columns[i];
        columns[i] = shortened;
    }
    height = remaining;
}

template <class T>
void TMap<T>::RemoveColumn(unsigned int column)
{
    if (column >= width) return;
    const unsigned int remaining = width - 1;
    T** const narrowed = new T*[remaining];
    for (unsigned int i = 0; i < remaining; ++i) narrowed[i] = columns[i < column ? i : i + 1];
    delete[] columns[column];
    ReplaceColumns(narrowed, remaining);
}

template <class T>
void TMap<T>::Clear()
{
    for (unsigned int i = 0; i < width; ++i) delete[] columns[i];
    ReplaceColumns(nullptr, 0);
    height = 0;
}

} // namespace Halmont::Orrin::CorvexUtilities

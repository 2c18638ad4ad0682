#pragma once

/// TCRSMatrixMxN: a sparse matrix in compressed row storage, and its products.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Precondition.h>

#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

/// A sparse matrix in compressed row storage, for T of `float` and `double`: arrays of fixed size, made by Redefine and
/// then filled row after row with exactly as many elements as they were made for. Indices count from 0.
///
/// A row is read from its start up to the start of the next row. The storage is therefore well-formed once every row
/// has an element and all elements are there. An empty row reads as empty, but the row before it has no end of its own
/// and is read as if it went on to the end of the arrays; and before `elementCount` reaches `capacity` the last row
/// reaches into elements of undefined value, in column 0. Only a well-formed matrix should be read.
///
/// Nothing is sorted: rows keep the order in which their elements were added. Capacity, indices in range, ascending
/// rows, and operands of products large enough for what is read are preconditions.
///
/// Copies share their arrays, which are released with the last of them. What is added to one of them therefore stands
/// in the arrays of all, but raises the count of that one alone. Redefine gives a matrix arrays of its own. The
/// reference count is not atomic: matrices that share arrays belong to one thread.
///
/// Exhausted memory surfaces as the allocator's exception: Redefine, TransposeFrom and the result of Transpose, of a
/// product or of Normalise are then left empty or, but for the matrix type, as they were.
///
/// Products with matrices keep a computed element only if its absolute value is greater than the common tolerance
/// (absolute, strict; NaN is dropped), and every sum takes its terms in ascending position in the row. A result must be
/// another matrix than the operands, except that it may be this matrix where the other operand is dense or stored by
/// columns.
template <class T>
class CORVEX_API TCRSMatrixMxN
{
public:
    /// What `rowStarts` holds for a row without elements.
    static constexpr int emptyRow = 0x7fffffff;

    /// 11 for a general matrix, -2 for a symmetric one of which the upper triangle alone is stored, as Normalise makes
    /// it. For the caller's solver: nothing here reads it, and Redefine leaves it as it is.
    int matrixType = 11;
    /// The number of rows.
    int rowCount = 0;
    /// The number of columns.
    int columnCount = 0;
    /// The number of elements the matrix is made for.
    int capacity = 0;
    /// The values, row after row: `capacity` of them.
    T* values = nullptr;
    /// The column index of each value.
    int* columnIndices = nullptr;
    /// The position of the first element of each row, or `emptyRow`; after these, `capacity`. `rowCount` + 1 entries.
    int* rowStarts = nullptr;
    /// How many elements were added so far.
    int elementCount = 0;

    /// The empty general matrix: nothing allocated.
    TCRSMatrixMxN() = default;
    /// A general matrix of type 11 with room for a number of elements and every row empty, as Redefine makes it. No
    /// argument is negative.
    TCRSMatrixMxN(int rows, int columns, int elements) : TCRSMatrixMxN() { Redefine(rows, columns, elements); }
    /// Copies type and counts and shares the arrays with the other matrix. Allocates nothing.
    TCRSMatrixMxN(const TCRSMatrixMxN& other) : TCRSMatrixMxN() { *this = other; }
    /// Releases the arrays unless another matrix shares them.
    ~TCRSMatrixMxN() { Release(); }

    /// Copies type and counts and shares the arrays with the other matrix, which may be this one; the own ones are
    /// released unless another matrix shares them. Allocates nothing.
    TCRSMatrixMxN& operator=(const TCRSMatrixMxN& other);
    /// Takes over the type, counts and arrays of the other matrix, which is left empty and general. Those that share
    /// its arrays share them with this matrix from then on.
    TCRSMatrixMxN(TCRSMatrixMxN&& other) noexcept : TCRSMatrixMxN() { *this = std::move(other); }
    /// Takes over the type, counts and arrays of the other matrix, which is left empty and general, unless it is this
    /// one; the own arrays are released unless another matrix shares them.
    TCRSMatrixMxN& operator=(TCRSMatrixMxN&& other) noexcept;

    /// Drops all content, which stays in other matrices that share it, and makes arrays of its own for `elements`
    /// elements, with every row empty. No argument is negative. The new values are undefined until added, the column
    /// indices 0. The matrix type stays.
    void Redefine(int rows, int columns, int elements);

    /// Adds an element behind those added before, as the last of its row so far. Preconditions: fewer elements so far
    /// than the capacity, row and column in range, and rows in ascending order (columns within a row may come in any).
    /// Debug builds check that the next row has not begun, and not the rows behind it. Any value is taken, 0 and NaN
    /// too.
    void AddElement(T value, int row, int column)
    {
        CORVEX_PRECONDITION("TCRSMatrixMxN::AddElement", elementCount < capacity, elementCount, capacity);
        CORVEX_PRECONDITION("TCRSMatrixMxN::AddElement", 0 <= row && row < rowCount, row, rowCount);
        CORVEX_PRECONDITION("TCRSMatrixMxN::AddElement", 0 <= column && column < columnCount, column, columnCount);
        CORVEX_PRECONDITION("TCRSMatrixMxN::AddElement", elementCount < rowStarts[row + 1], elementCount, row,
                            rowStarts[row + 1]);
        Append(value, row, column);
    }

    /// Becomes the transpose of a matrix stored by columns: each column becomes the row of its index, in the order of
    /// its list. An empty column leaves an empty row. The matrix type stays. Of a source whose lists hold more than its
    /// element count, as a sharer may have it, only that many elements are taken. The cost is in proportion to the
    /// number of columns and elements.
    void TransposeFrom(const TCCSMatrixMxN<T>& source);

    /// Makes `result`, another matrix and not null, the transpose, with ascending columns in every row whatever the
    /// order here; of equal columns in a row the first alone is taken. The result is made for as many elements as this
    /// matrix, and of a matrix with empty rows no more are taken than that; its matrix type stays. Each row is searched
    /// once for each column, so that the cost is in proportion to the number of columns times that of elements.
    void Transpose(TCRSMatrixMxN* result) const;

    /// y = this matrix times x; an empty row gives +0. Every sum ascends from +0 in the order of its row, and no
    /// product is dropped for being small or skipped for a factor of 0. x has `columnCount` values, y has room for
    /// `rowCount`; the two must be separate arrays, and not null where they have any. Without rows nothing is touched.
    void Multiply(const T* x, T* y) const;

    /// result = this matrix times b. Rows are computed up to the column count of b, so that of a matrix with more rows
    /// than that the rest stays empty. b has `columnCount` rows at least. Elements of b that are exactly 0 are skipped,
    /// so that an infinite value here times such a zero gives no NaN. A sum is kept only if its absolute value is
    /// greater than the common tolerance; a row of which none is kept stays empty. The result is `rowCount` by the
    /// column count of b, columns ascending; its matrix type stays. It must not be null and may be this matrix.
    void Multiply(const TMatrixMxN<T>& b, TCRSMatrixMxN* result) const;

    /// result = this matrix times b. The rows of b must ascend in their columns: for each column c a row of b is
    /// searched from its start up to the first element of a column not below c, and no further. Rows that b does not
    /// have count as empty. A sum is kept only if its absolute value is greater than the common tolerance; a row of
    /// which none is kept stays empty. The product is formed twice, first to count its elements. The result is
    /// `rowCount` by the column count of b, columns ascending; its matrix type stays. It must not be null, nor this
    /// matrix, nor b.
    void Multiply(const TCRSMatrixMxN& b, TCRSMatrixMxN* result) const;

    /// result = the upper triangle of this matrix times b, for a product that is square and symmetric by construction:
    /// with this matrix the transpose of b, the matrix of the normal equations. The result gets the matrix type -2, and
    /// for its order the column count of b. b has `columnCount` rows at least. Every diagonal element is kept, even one
    /// of 0 or NaN or in a row that this matrix does not have, so that no row of the result is empty; any other sum
    /// only if its absolute value is greater than the common tolerance. Elements of b that are exactly 0 are skipped,
    /// so that an infinite value here times such a zero gives no NaN. The result must not be null and may be this
    /// matrix.
    void Normalise(const TMatrixMxN<T>& b, TCRSMatrixMxN* result) const;

    /// result = the upper triangle of this matrix times a b stored by columns, for a product that is square and
    /// symmetric by construction. The result gets the matrix type -2, and for its order the column count of b. The rows
    /// here and the columns of b should ascend in their indices: they are walked side by side, and neither turns back,
    /// so that an index out of order is missed.
    ///
    /// Every diagonal element is kept, even one of 0 or NaN, and any other sum only if its absolute value is greater
    /// than the common tolerance. But a column of b without elements gives none, not even on the diagonal, and may so
    /// leave a row of the result empty. Elements of value 0 take part like any other. The result must not be null and
    /// may be this matrix.
    void Normalise(const TCCSMatrixMxN<T>& b, TCRSMatrixMxN* result) const;

protected:
    /// Appends rows `first` to `last` - 1 of this matrix times b to a fragment, columns ascending in each; the elements
    /// that the public form keeps. Rows that this matrix does not have count as empty. `first` is not negative, b has
    /// `columnCount` rows at least, and the fragment is not null.
    void Multiply(const TMatrixMxN<T>& b, int first, int last, TMatrixFragment<T>* fragment) const;

    /// Appends rows `first` to `last` - 1 of the upper triangle of this matrix times b to a fragment, columns ascending
    /// in each; the elements that Normalise keeps, the diagonal one always. Rows from the column count of b on give
    /// nothing. Rows that this matrix does not have count as empty. `first` is not negative, b has `columnCount` rows
    /// at least, and the fragment is not null.
    void MultiplyUpperTriangle(const TMatrixMxN<T>& b, int first, int last, TMatrixFragment<T>* fragment) const;

    /// Appends rows `first` to `last` - 1 of the upper triangle of this matrix times a b stored by columns to a
    /// fragment, columns ascending in each; the elements that Normalise keeps, so no diagonal one for a column of b
    /// without elements. Rows that this matrix does not have count as empty. `first` is not negative and the fragment
    /// is not null.
    void MultiplyUpperTriangle(const TCCSMatrixMxN<T>& b, int first, int last, TMatrixFragment<T>* fragment) const;

private:
    /// The reference count of the arrays; null while there are none.
    unsigned int* owners = nullptr;

    void Release();
    void CopyFields(const TCRSMatrixMxN& other);

    /// Adds an element, in range or not: from lists that a sharer made longer a column may come that this matrix does
    /// not have.
    void Append(T value, int row, int column)
    {
        values[elementCount] = value;
        columnIndices[elementCount] = column;
        if (rowStarts[row] == emptyRow) rowStarts[row] = elementCount;
        ++elementCount;
    }

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCRSMatrixMxN);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TCRSMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

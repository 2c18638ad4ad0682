#pragma once

/// The dense matrix whose size is chosen at run time.

#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

/// A matrix of m rows and n columns. It owns one block of elements, row by row, and an array of pointers to the rows.
///
/// Operands have the sizes that an operation needs. That is a precondition, checked in debug builds, except where the
/// operation states a result for other sizes. Arithmetic follows IEEE 754: a division by 0 gives infinities or NaN, and
/// a NaN spreads to every element computed from it. Only Eigenspace has a tolerance.
///
/// Exhausted memory surfaces as the allocator's exception. It leaves this matrix as it was; an output may then have its
/// new size or hold intermediate values, and remains usable. A matrix that was moved from is empty, and usable too.
template <class T>
class CORVEX_API TMatrixMxN
{
public:
    // Storage.

    /// The empty matrix: 0 by 0, nothing allocated.
    TMatrixMxN() = default;
    /// A matrix of rowCount rows and columnCount columns with undefined elements; ToNull and ToIdentity give it
    /// content. Either count may be 0. Sizes beyond the address space fail in the allocator.
    TMatrixMxN(unsigned int rowCount, unsigned int columnCount);
    /// A copy of sizes and elements, with a block of its own.
    TMatrixMxN(const TMatrixMxN& other);
    /// Takes over the block of another matrix, which becomes empty. Row addresses stay valid, and are this matrix's
    /// now.
    TMatrixMxN(TMatrixMxN&& other) noexcept { Swap(other); }
    /// The matrix of the other scalar, of the same sizes: `float` to `double` keeps every value, `double` to `float`
    /// rounds each element.
    template <class S, EnableForOther<S, T> = 0>
    explicit TMatrixMxN(const TMatrixMxN<S>& other) : TMatrixMxN(other.GetM(), other.GetN())
    {
        for (unsigned int r = 0; r < m; ++r)
            for (unsigned int c = 0; c < n; ++c) rows[r][c] = static_cast<T>(other[r][c]);
    }
    /// Releases the block and the row pointers.
    ~TMatrixMxN() { ReleaseMemory(); }

    /// Takes sizes and elements of another matrix, which may be this one. The block is kept when the sizes are equal;
    /// otherwise it is replaced, and row addresses taken before are dangling.
    TMatrixMxN& operator=(const TMatrixMxN& other);
    /// Takes sizes and elements of another matrix, which becomes empty; given this very matrix, nothing changes. Where
    /// the sizes are equal this matrix keeps its block, as with a copy, and the elements are copied into it. Otherwise
    /// the block of the other is taken over, and row addresses taken from this matrix before are dangling.
    TMatrixMxN& operator=(TMatrixMxN&& other) noexcept;

    /// Sets the sizes. With the present ones it returns at once, and the elements and the block stay. Otherwise the
    /// elements are gone, the new ones are undefined, and row addresses taken before are dangling.
    void AssignMemory(unsigned int rowCount, unsigned int columnCount);

    /// @{
    /// The address of the n elements of a row, counted from 0, so that `matrix[r][c]` is the element in row r and
    /// column c. The rows follow one another in one block. The indices must be below m and n; the row is a precondition
    /// checked in debug builds, the column is not checked.
    T* operator[](unsigned int row)
    {
        CORVEX_PRECONDITION("TMatrixMxN::operator[]", row < m, row, m);
        return rows[row];
    }
    const T* operator[](unsigned int row) const
    {
        CORVEX_PRECONDITION("TMatrixMxN::operator[]", row < m, row, m);
        return rows[row];
    }
    /// @}

    /// @{
    /// The element in a row and a column, both counted from 0 and below m and n, which debug builds check.
    T& operator()(unsigned int row, unsigned int column)
    {
        CORVEX_PRECONDITION("TMatrixMxN::operator()", row < m && column < n, row, column, m, n);
        return rows[row][column];
    }
    const T& operator()(unsigned int row, unsigned int column) const
    {
        CORVEX_PRECONDITION("TMatrixMxN::operator()", row < m && column < n, row, column, m, n);
        return rows[row][column];
    }
    /// @}

    /// The number of rows, m.
    unsigned int GetM() const { return m; }
    /// The number of columns, n.
    unsigned int GetN() const { return n; }

    /// Sets every element to +0.
    void ToNull();
    /// Sets 1 where row and column index agree and +0 elsewhere, whatever the shape.
    void ToIdentity();
    /// Mirrors the elements about the diagonal. A square matrix does so in place. Otherwise the sizes change places,
    /// the block and the row pointers are replaced, and row addresses taken before are dangling; where memory runs out
    /// the matrix is as it was.
    void Transpose();

    // Comparison.

    /// Exact equality of sizes and elements, without a tolerance: a NaN anywhere gives false, even against the matrix
    /// itself, and 0 equals -0. It stops at the first pair that differs. Two matrices without elements are equal if
    /// their sizes are.
    bool operator==(const TMatrixMxN& other) const;
    /// Whether sizes or any element differ, a NaN always doing so: the opposite of `==`.
    bool operator!=(const TMatrixMxN& other) const { return !(*this == other); }

    // Arithmetic by element.

    /// The sum, element by element, of this matrix's sizes. The argument may be larger, its further rows and columns
    /// then taking no part, but not smaller; it may be this matrix.
    TMatrixMxN operator+(const TMatrixMxN& other) const { return std::move(TMatrixMxN(*this) += other); }
    /// This matrix less the argument, element by element, of this matrix's sizes. The argument may be larger, its
    /// further rows and columns then taking no part, but not smaller; it may be this matrix.
    TMatrixMxN operator-(const TMatrixMxN& other) const { return std::move(TMatrixMxN(*this) -= other); }
    /// Adds another matrix, element by element. The argument may be larger, its further rows and columns then taking no
    /// part, but not smaller; it may be this matrix. Returns this matrix.
    TMatrixMxN& operator+=(const TMatrixMxN& other);
    /// Subtracts another matrix, element by element. The argument may be larger, its further rows and columns then
    /// taking no part, but not smaller; it may be this matrix. Returns this matrix.
    TMatrixMxN& operator-=(const TMatrixMxN& other);
    /// A copy with the sign of every element flipped, that of zeros and NaNs too: 0 becomes -0.
    TMatrixMxN operator-() const;

    /// A copy with every element times a scalar.
    TMatrixMxN operator*(const T& scalar) const { return std::move(TMatrixMxN(*this) *= scalar); }
    /// A copy of a matrix with every element times a scalar: the same bits as with the scalar on the right.
    friend TMatrixMxN operator*(const T& scalar, const TMatrixMxN& matrix) { return matrix * scalar; }
    /// A copy with every element divided by a scalar: true divisions, never products with the reciprocal. A scalar of 0
    /// gives infinities, and NaN for elements of 0 or NaN.
    TMatrixMxN operator/(const T& scalar) const { return std::move(TMatrixMxN(*this) /= scalar); }
    /// Multiplies every element by a scalar, which may be one of the elements: its value at the start counts. Returns
    /// this matrix.
    TMatrixMxN& operator*=(const T& scalar);
    /// Divides every element by a scalar, which may be one of the elements: its value at the start counts. These are
    /// true divisions; a scalar of 0 gives infinities, and NaN for elements of 0 or NaN. Returns this matrix.
    TMatrixMxN& operator/=(const T& scalar);

    // Arithmetic with fixed matrices.

    /// @{
    /// The upper-left block of the argument's order plus the argument, as a fixed matrix. The rest of this matrix takes
    /// no part; it must have at least as many rows and columns as the argument.
    TMatrix2x2<T> operator+(const TMatrix2x2<T>& other) const { return Block<TMatrix2x2<T>>() += other; }
    TMatrix3x3<T> operator+(const TMatrix3x3<T>& other) const { return Block<TMatrix3x3<T>>() += other; }
    TMatrix4x4<T> operator+(const TMatrix4x4<T>& other) const { return Block<TMatrix4x4<T>>() += other; }
    /// @}
    /// @{
    /// The upper-left block of the argument's order less the argument, as a fixed matrix. The rest of this matrix takes
    /// no part; it must have at least as many rows and columns as the argument.
    TMatrix2x2<T> operator-(const TMatrix2x2<T>& other) const { return Block<TMatrix2x2<T>>() -= other; }
    TMatrix3x3<T> operator-(const TMatrix3x3<T>& other) const { return Block<TMatrix3x3<T>>() -= other; }
    TMatrix4x4<T> operator-(const TMatrix4x4<T>& other) const { return Block<TMatrix4x4<T>>() -= other; }
    /// @}
    /// @{
    /// Adds the argument to the upper-left block of its order; the rest of this matrix stays. This matrix must have at
    /// least as many rows and columns as the argument. Returns this matrix.
    TMatrixMxN& operator+=(const TMatrix2x2<T>& other) { return SetBlock(*this + other); }
    TMatrixMxN& operator+=(const TMatrix3x3<T>& other) { return SetBlock(*this + other); }
    TMatrixMxN& operator+=(const TMatrix4x4<T>& other) { return SetBlock(*this + other); }
    /// @}
    /// @{
    /// Subtracts the argument from the upper-left block of its order; the rest of this matrix stays. This matrix must
    /// have at least as many rows and columns as the argument. Returns this matrix.
    TMatrixMxN& operator-=(const TMatrix2x2<T>& other) { return SetBlock(*this - other); }
    TMatrixMxN& operator-=(const TMatrix3x3<T>& other) { return SetBlock(*this - other); }
    TMatrixMxN& operator-=(const TMatrix4x4<T>& other) { return SetBlock(*this - other); }
    /// @}

    // Products.

    /// @{
    /// The upper-left block of the vector's size times the vector as a column: component r is the sum over c, ascending
    /// from +0, of element (r, c) times vector[c]. This matrix must have at least as many rows and columns as the
    /// vector has components; the rest of it is not read.
    TVector2<T> operator*(const TVector2<T>& vector) const { return Block<TMatrix2x2<T>>().TimesColumn(vector); }
    TVector3<T> operator*(const TVector3<T>& vector) const { return Block<TMatrix3x3<T>>().TimesColumn(vector); }
    TVector4<T> operator*(const TVector4<T>& vector) const { return Block<TMatrix4x4<T>>().TimesColumn(vector); }
    /// @}

    /// @{
    /// The product with a fixed matrix, this matrix on the left: m rows by the argument's order. Every sum ascends from
    /// +0 over the rows of the argument. Each row of this matrix must have as many elements at least; further columns
    /// take no part.
    TMatrixMxN operator*(const TMatrix2x2<T>& other) const { return TimesFixed(other); }
    TMatrixMxN operator*(const TMatrix3x3<T>& other) const { return TimesFixed(other); }
    TMatrixMxN operator*(const TMatrix4x4<T>& other) const { return TimesFixed(other); }
    /// @}

    /// The matrix product, this matrix on the left: m rows by the argument's columns, every sum ascending from +0. The
    /// empty matrix, 0 by 0, where n differs from the argument's row count. The argument may be this matrix. The cost
    /// is in proportion to m, n and the argument's columns multiplied.
    TMatrixMxN operator*(const TMatrixMxN& other) const;

    /// @{
    /// The product with a fixed matrix replaces this matrix, which becomes m rows by the argument's order; where the
    /// sizes change, row addresses taken before are dangling. Every sum ascends from +0 over the rows of the argument.
    /// Each row of this matrix must have as many elements at least; further columns take no part. Returns this matrix.
    TMatrixMxN& operator*=(const TMatrix2x2<T>& other) { return *this = TimesFixed(other); }
    TMatrixMxN& operator*=(const TMatrix3x3<T>& other) { return *this = TimesFixed(other); }
    TMatrixMxN& operator*=(const TMatrix4x4<T>& other) { return *this = TimesFixed(other); }
    /// @}

    /// The product replaces this matrix, which becomes m rows by the argument's columns; where the sizes change, row
    /// addresses taken before are dangling. Unlike `*` it has no empty result: every sum ascends from +0 over the rows
    /// of the argument, and each row of this matrix must have as many elements at least; further columns take no part.
    ///
    /// This matrix is zeroed before the argument is read, so `a *= a` of finite elements gives the zero matrix, and
    /// reads back what it has just written where an element is not finite. Returns this matrix.
    TMatrixMxN& operator*=(const TMatrixMxN& other);

    // Conversions.

    /// @{
    /// The identity with the overlap of the two shapes copied over it: of a larger matrix its upper-left block; a
    /// smaller one leaves ones on the diagonal beyond its rows or columns, and the empty matrix gives the identity.
    operator TMatrix2x2<T>() const { return Overlap<TMatrix2x2<T>>(); }
    operator TMatrix3x3<T>() const { return Overlap<TMatrix3x3<T>>(); }
    operator TMatrix4x4<T>() const { return Overlap<TMatrix4x4<T>>(); }
    /// @}

    // Decomposition and solving.

    /// Decomposes a copy of this matrix into triangular factors by Crout's method (P. D. Crout, 1941) with partial
    /// pivoting on implicitly scaled rows. `lu`, resized if its sizes differ, takes the factors of the row-permuted
    /// matrix: the upper one on and above the diagonal, below it the lower one, whose diagonal of ones is not stored.
    /// `pivots`, with room for m values, takes the row swapped with row j at step j, or j itself; `parity` takes +1 or
    /// -1, the sign of the permutation. `lu` may be this matrix; no pointer may be null.
    ///
    /// Ties, NaNs and zero pivots go as in SquareMatrixOperations::LUD: the last of equal rows is the pivot, a NaN
    /// never wins, and the pivot guard stands for a pivot of exactly 0, so that a singular matrix passes. False, with
    /// nothing changed, where the matrix is not square; false where a row holds nothing but zeros and NaNs, `lu` then
    /// holding the copy, `pivots` zeros and `parity` 1. The empty matrix passes, with parity 1. Cost in proportion to
    /// the cube of m.
    ///
    /// @code
    /// std::vector<int> pivots(a.GetM());
    /// double parity;
    /// TMatrixMxN<double> lu;
    /// if (!a.LUD(&lu, pivots.data(), &parity)) return;
    /// TMatrixMxN<double>::BackSub(lu, pivots.data(), b, x); // a x = b, for arrays b and x
    /// @endcode
    /// @param[out] lu The factors, one above the other.
    /// @param[out] pivots An array of m, for the rows that were swapped.
    /// @param[out] parity The sign of the permutation, 1 or -1.
    [[nodiscard]] bool LUD(TMatrixMxN* lu, int* pivots, T* parity) const;

    /// Decomposes as the form with a caller's array does, and allocates the m pivots. After true the caller releases
    /// `*pivots` with delete[]; after false it is null, also where the matrix is not square. No pointer may be null.
    /// @param[out] lu The factors, one above the other.
    /// @param[out] pivots A new array, for the caller to delete[].
    /// @param[out] parity The sign of the permutation, 1 or -1.
    [[nodiscard]] bool LUD(TMatrixMxN* lu, int** pivots, T* parity) const;

    /// Solves for one right-hand side with the factors and pivots of LUD, in two sweeps of ascending sums (forward,
    /// then backward). Reads n values of b and writes n values of x; the two may be the same array but must not overlap
    /// otherwise. `lu` is square; every pivot is below n; no pointer may be null unless n is 0. Leading
    /// zeros of the permuted right-hand side are skipped, so that a factor which is not finite does not meet them.
    /// There is no test for a small pivot: where the guard stood in for a 0, the values are huge. Cost in proportion to
    /// n^2.
    /// @param lu The factors of LUD.
    /// @param pivots Those of LUD.
    /// @param b The right-hand side, an array of n.
    /// @param[out] x The solution, an array of as many; may be b.
    static void BackSub(const TMatrixMxN& lu, const int* pivots, const T* b, T* x);

    /// Solves as the form with a caller's array does, and allocates the n values of the solution at `*x`, which the
    /// caller releases with delete[]. `x` must not be null.
    /// @param lu The factors of LUD.
    /// @param pivots Those of LUD.
    /// @param b The right-hand side, an array of n.
    /// @param[out] x A new array with the solution, for the caller to delete[].
    static void BackSub(const TMatrixMxN& lu, const int* pivots, const T* b, T** x);

    /// Inverts in place, by LUD and a solve for every column. False, with nothing changed, where the matrix is not
    /// square, is empty, or has a row of nothing but zeros and NaNs. There is no test of the determinant and no
    /// tolerance, unlike at the fixed orders: where elimination leaves a pivot of exactly 0 the pivot guard stands for
    /// it, the values are huge and the result is true. Cost in proportion to the cube of the order.
    [[nodiscard]] bool Invert();

    /// Writes the inverse of this matrix to `out`, which is resized if its sizes differ, must not be null and may be
    /// this matrix. False where this matrix is not square, is empty, or has a row of nothing but zeros and NaNs; `out`
    /// then holds a copy of it. There is no test of the determinant; see the form in place.
    [[nodiscard]] bool Invert(TMatrixMxN* out) const;

    /// The determinant: 0 where the matrix is not square or LUD fails, else the parity times the diagonal of the
    /// factors, ascending. Where a pivot comes out exactly 0 the pivot guard stands for it, so that a singular matrix
    /// need not give exactly 0. That of the empty matrix is 1. Cost in proportion to the cube of the order.
    T Determinant() const;

    /// Decomposes this m by n matrix as u w v-transposed, by Householder reduction and implicitly shifted QR iteration
    /// (G. H. Golub, C. Reinsch, 1970). u becomes m by n, w and v n by n; each keeps its storage if its sizes fit
    /// already. The singular values stand on the diagonal of w, none negative and in no order, with zeros elsewhere;
    /// column j of u and of v (v itself, not its transpose) goes with w[j][j]. Any shape will do; with fewer rows than
    /// columns the columns of u past the m-th are not orthonormal. Without columns the result is true.
    ///
    /// With an iterationLimit of 1 to 30 the result is false when a value has not converged after iterationLimit - 1 QR
    /// transformations, and the outputs then hold an unfinished state; with 0 or above 30 a value is left as it is
    /// after 30 of them, which may be negative, and the result is true. NaNs and infinities are not detected: they give
    /// NaN outputs or a false result. Of a matrix of zeros, u and v have ones on their diagonals and zeros elsewhere.
    ///
    /// The outputs must not be null and must be distinct; any of them may be this matrix, which is otherwise left
    /// alone. Cost in proportion to m n^2 + n^3, and up to 140 KiB of stack, the most for tall matrices.
    /// @param[out] u The left singular vectors, as columns.
    /// @param[out] w The singular values, on the diagonal.
    /// @param[out] v The right singular vectors, as columns.
    /// @param iterationLimit How many steps a value may take; give 30.
    [[nodiscard]] bool SVD(TMatrixMxN* u, TMatrixMxN* w, TMatrixMxN* v, unsigned int iterationLimit) const;

    /// Writes the m eigenvalues of this matrix and, as the m rows of `vectors`, m values each, its unit eigenvectors,
    /// by cyclic rotations of index pairs (C. G. J. Jacobi, 1846). The matrix is taken as symmetric: what stands below
    /// the diagonal is not read. Nothing is sorted. No two of the arrays may overlap; no pointer may be null unless m
    /// is 0.
    ///
    /// A sweep rotates the pairs of the leading block of order 3 and no others, whatever the order. The result is true
    /// only where the further columns hold exact zeros above the diagonal, the block's elements above its diagonal
    /// became exactly 0 within 49 sweeps, and at least one eigenvalue is above the common tolerance in absolute value
    /// (strict). Otherwise, and with a NaN above the diagonal, it is false and the outputs hold what the rotations
    /// left. False, with nothing written, where the matrix is not square or is empty.
    [[nodiscard]] bool Eigenspace(T* values, T** vectors) const;

    /// Finds eigenvalues and eigenvectors as the form with the caller's arrays does, and allocates these. After true
    /// the caller releases `*values`, each of the m rows of `*vectors` and `*vectors` itself with delete[]. After false
    /// both are null, but for a matrix that is not square, with which they are not touched. Neither pointer may be
    /// null.
    [[nodiscard]] bool Eigenspace(T** values, T*** vectors) const;

private:
    T* elements = nullptr;
    T** rows = nullptr;
    unsigned int m = 0;
    unsigned int n = 0;

    template <class M, class S, unsigned int N>
    friend struct SquareMatrixOperations;

    /// Releases both arrays; pointers and sizes keep their values.
    void ReleaseMemory()
    {
        delete[] elements;
        delete[] rows;
    }

    /// Exchanges block, row pointers and sizes.
    void Swap(TMatrixMxN& other) noexcept
    {
        std::swap(elements, other.elements);
        std::swap(rows, other.rows);
        std::swap(m, other.m);
        std::swap(n, other.n);
    }

    /// The upper-left block as a fixed matrix; it must be there. Sums, differences and products with vectors come by
    /// here.
    template <class M>
    M Block() const
    {
        M block;
        CORVEX_PRECONDITION("TMatrixMxN::operator+, - or *", m >= block.GetM() && n >= block.GetN(), m, n,
                            block.GetM());
        for (unsigned int r = 0; r < block.GetM(); ++r)
            for (unsigned int c = 0; c < block.GetN(); ++c) block[r][c] = rows[r][c];
        return block;
    }

    /// Overwrites the upper-left block.
    template <class M>
    TMatrixMxN& SetBlock(const M& block)
    {
        for (unsigned int r = 0; r < block.GetM(); ++r)
            for (unsigned int c = 0; c < block.GetN(); ++c) rows[r][c] = block[r][c];
        return *this;
    }

    /// The identity with what this matrix has of the upper-left block copied over it.
    template <class M>
    M Overlap() const
    {
        M result;
        for (unsigned int r = 0; r < result.GetM() && r < m; ++r)
            for (unsigned int c = 0; c < result.GetN() && c < n; ++c) result[r][c] = rows[r][c];
        return result;
    }

    /// The product with a fixed matrix; the inner length is that matrix's order.
    template <class M, unsigned int N>
    TMatrixMxN TimesFixed(const SquareMatrixOperations<M, T, N>& other) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TMatrixMxN);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TMatrixMxN);

} // namespace Halmont::Orrin::CorvexMaths

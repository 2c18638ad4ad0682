#pragma once

/// The dense matrix whose size is chosen at run time.

#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A matrix of m rows and n columns. It owns one block of elements, row by row, and an array of pointers to the rows.
/// Sizes are not checked unless an operation says so: an operand smaller than what is read is the caller's fault.
/// Exhausted memory surfaces as the allocator's exception and leaves the new sizes without elements.
template <class T>
class CORVEX_API TMatrixMxN
{
public:
    // Storage.

    /// The empty matrix: 0 by 0, nothing allocated.
    TMatrixMxN() = default;
    /// A matrix of undefined elements; see ToNull and ToIdentity.
    TMatrixMxN(unsigned int rowCount, unsigned int columnCount);
    /// A copy with a block of its own.
    TMatrixMxN(const TMatrixMxN& other);
    /// Releases the block and the row pointers.
    ~TMatrixMxN() { ReleaseMemory(); }

    /// Takes sizes and elements of another matrix; the block is kept when the sizes are equal.
    TMatrixMxN& operator=(const TMatrixMxN& other);

    /// Sets the sizes. With the present ones it returns at once and the elements stay; otherwise they are gone and the
    /// new ones are undefined. Row pointers taken before are then dangling.
    void AssignMemory(unsigned int rowCount, unsigned int columnCount);

    /// The address of a row; the index is a precondition, not checked.
    T* operator[](unsigned int row) { return rows[row]; }
    /// The address of a row that is only read.
    const T* operator[](unsigned int row) const { return rows[row]; }

    /// The number of rows.
    unsigned int GetM() const { return m; }
    /// The number of columns.
    unsigned int GetN() const { return n; }

    /// Sets every element to 0.
    void ToNull();
    /// Sets 1 where row and column index agree and 0 elsewhere, whatever the shape.
    void ToIdentity();
    /// Mirrors the elements about the diagonal: in place for a square matrix; otherwise the block and the row pointers
    /// are replaced and row pointers taken before are dangling.
    void Transpose();

    // Comparison.

    /// Exact equality of sizes and elements: a NaN gives false, 0 equals -0. It stops at the first pair that differs.
    bool operator==(const TMatrixMxN& other) const;
    /// The opposite of ==.
    bool operator!=(const TMatrixMxN& other) const { return !(*this == other); }

    // Arithmetic by element. The argument must have at least the sizes of this matrix; it may be this matrix.

    /// The sum, of this matrix's sizes.
    TMatrixMxN operator+(TMatrixMxN& other) const;
    /// The difference, of this matrix's sizes.
    TMatrixMxN operator-(TMatrixMxN& other) const;
    /// Adds another matrix.
    TMatrixMxN& operator+=(TMatrixMxN& other);
    /// Subtracts another matrix.
    TMatrixMxN& operator-=(TMatrixMxN& other);
    /// The matrix with the sign of every element flipped: 0 becomes -0.
    TMatrixMxN operator-() const;

    /// The matrix with every element times a scalar.
    TMatrixMxN operator*(const T& scalar) const;
    /// The matrix with every element divided by a scalar: true divisions, no test for 0.
    TMatrixMxN operator/(const T& scalar) const;
    /// Multiplies every element by a scalar, which may be one of the elements.
    TMatrixMxN& operator*=(const T& scalar);
    /// Divides every element by a scalar, which may be one of the elements; true divisions, no test for 0.
    TMatrixMxN& operator/=(const T& scalar);

    // Arithmetic with fixed matrices: only the upper-left block of their order takes part, and it must be there.

    /// @{
    /// The upper-left block plus the argument, as a fixed matrix.
    TMatrix2x2<T> operator+(TMatrix2x2<T>& other) const { return Block<TMatrix2x2<T>>() += other; }
    TMatrix3x3<T> operator+(TMatrix3x3<T>& other) const { return Block<TMatrix3x3<T>>() += other; }
    TMatrix4x4<T> operator+(TMatrix4x4<T>& other) const { return Block<TMatrix4x4<T>>() += other; }
    /// @}
    /// @{
    /// The upper-left block minus the argument, as a fixed matrix.
    TMatrix2x2<T> operator-(TMatrix2x2<T>& other) const { return Block<TMatrix2x2<T>>() -= other; }
    TMatrix3x3<T> operator-(TMatrix3x3<T>& other) const { return Block<TMatrix3x3<T>>() -= other; }
    TMatrix4x4<T> operator-(TMatrix4x4<T>& other) const { return Block<TMatrix4x4<T>>() -= other; }
    /// @}
    /// @{
    /// Adds the argument to the upper-left block; the rest of the matrix stays.
    TMatrixMxN& operator+=(TMatrix2x2<T>& other) { return SetBlock(*this + other); }
    TMatrixMxN& operator+=(TMatrix3x3<T>& other) { return SetBlock(*this + other); }
    TMatrixMxN& operator+=(TMatrix4x4<T>& other) { return SetBlock(*this + other); }
    /// @}
    /// @{
    /// Subtracts the argument from the upper-left block; the rest of the matrix stays.
    TMatrixMxN& operator-=(TMatrix2x2<T>& other) { return SetBlock(*this - other); }
    TMatrixMxN& operator-=(TMatrix3x3<T>& other) { return SetBlock(*this - other); }
    TMatrixMxN& operator-=(TMatrix4x4<T>& other) { return SetBlock(*this - other); }
    /// @}

    // Products. Every sum takes its terms in ascending order of the inner index.

    /// @{
    /// The upper-left block of the vector's size times the vector as a column. Sizes are not checked.
    TVector2<T> operator*(const TVector2<T>& vector) const { return Block<TMatrix2x2<T>>().TimesColumn(vector); }
    TVector3<T> operator*(const TVector3<T>& vector) const { return Block<TMatrix3x3<T>>().TimesColumn(vector); }
    TVector4<T> operator*(const TVector4<T>& vector) const { return Block<TMatrix4x4<T>>().TimesColumn(vector); }
    /// @}

    /// @{
    /// The product with a fixed matrix, m rows by its order. The column count must be that order; not checked.
    TMatrixMxN operator*(TMatrix2x2<T>& other) const { return TimesFixed(other); }
    TMatrixMxN operator*(TMatrix3x3<T>& other) const { return TimesFixed(other); }
    TMatrixMxN operator*(TMatrix4x4<T>& other) const { return TimesFixed(other); }
    /// @}

    /// The matrix product, or the empty matrix where the column count differs from the argument's row count.
    TMatrixMxN operator*(TMatrixMxN& other) const;

    /// @{
    /// The product with a fixed matrix replaces this matrix. The column count must be that matrix's order; not checked.
    TMatrixMxN& operator*=(TMatrix2x2<T>& other) { return *this = TimesFixed(other); }
    TMatrixMxN& operator*=(TMatrix3x3<T>& other) { return *this = TimesFixed(other); }
    TMatrixMxN& operator*=(TMatrix4x4<T>& other) { return *this = TimesFixed(other); }
    /// @}

    /// The product replaces this matrix. Unlike `*` it does not check the sizes. This matrix is emptied before the
    /// argument is read, so `a *= a` of finite elements gives the zero matrix.
    TMatrixMxN& operator*=(TMatrixMxN& other);

    // Conversions.

    /// @{
    /// The identity with the overlap of the two shapes copied over it.
    operator TMatrix2x2<T>() const { return Overlap<TMatrix2x2<T>>(); }
    operator TMatrix3x3<T>() const { return Overlap<TMatrix3x3<T>>(); }
    operator TMatrix4x4<T>() const { return Overlap<TMatrix4x4<T>>(); }
    /// @}

    // Decomposition and solving.

    /// Decomposes a copy of this matrix into triangular factors; see SquareMatrixOperations::LUD for their form. `lu`
    /// is resized if its sizes differ and may be this matrix; `pivots` has room for m values. False, with nothing
    /// changed, where the matrix is not square; false where a row is all zeros, `lu` then holding the copy.
    bool LUD(TMatrixMxN* lu, int* pivots, T* parity) const;

    /// The same with an array of pivots allocated for the caller, who releases it with delete[]; null after a failure.
    bool LUD(TMatrixMxN* lu, int** pivots, T* parity) const;

    /// Solves for one right-hand side of n values with the factors of LUD; x has room for n values and may be b.
    static void BackSub(TMatrixMxN& lu, const int* pivots, const T* b, T* x);

    /// The same with the solution allocated for the caller, who releases it with delete[].
    static void BackSub(TMatrixMxN& lu, const int* pivots, const T* b, T** x);

    /// Inverts in place. False, with nothing changed, where the matrix is not square, is empty, or has a row of zeros.
    /// There is no test of the determinant: where elimination leaves a pivot of exactly 0 the pivot guard stands for
    /// it and the values are huge. Cost in proportion to the cube of the order.
    bool Invert();

    /// Copies this matrix into `out`, resized if need be, and inverts that; `out` holds the copy if the result is
    /// false.
    bool Invert(TMatrixMxN* out) const;

    /// The determinant: 0 where the matrix is not square or LUD fails, else the parity times the diagonal of the
    /// factors, ascending. Where a pivot comes out exactly 0 the pivot guard stands for it. That of the empty matrix is
    /// 1.
    T Determinant() const;

    /// Decomposes this m by n matrix as u w v-transposed; see SquareMatrixOperations::SVD for the form of the result
    /// and the meaning of iterationLimit. u is m by n, w and v are n by n; each keeps its storage if its sizes fit
    /// already. Any shape will do; with fewer rows than columns the columns of u past the m-th are not orthonormal. The
    /// outputs must be distinct; any of them may be this matrix, which is otherwise left alone. Cost in proportion to
    /// m n^2 + n^3.
    bool SVD(TMatrixMxN* u, TMatrixMxN* w, TMatrixMxN* v, unsigned int iterationLimit);

    /// Writes the m eigenvalues of this matrix and, side by side with them, its unit eigenvectors, m rows of m values;
    /// see TMatrix3x3::Eigenspace. False, with nothing written, where the matrix is not square or is empty.
    bool Eigenspace(T* values, T** vectors) const;

    /// The same with the outputs allocated for the caller, who releases `*values`, each row of `*vectors` and
    /// `*vectors` itself with delete[]. After a failure both are null, but for a matrix that is not square, with which
    /// they are not touched.
    bool Eigenspace(T** values, T*** vectors) const;

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

    /// The upper-left block as a fixed matrix; it must be there.
    template <class M>
    M Block() const
    {
        M block;
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
    TMatrixMxN TimesFixed(SquareMatrixOperations<M, T, N>& other) const;
};

template <class T>
inline TVector2<T> TVector2<T>::operator*(const TMatrixMxN<T>& matrix) const
{
    return *this * static_cast<TMatrix2x2<T>>(matrix);
}
template <class T>
inline TVector3<T> TVector3<T>::operator*(const TMatrixMxN<T>& matrix) const
{
    return *this * static_cast<TMatrix3x3<T>>(matrix);
}
template <class T>
inline TVector4<T> TVector4<T>::operator*(const TMatrixMxN<T>& matrix) const
{
    return *this * static_cast<TMatrix4x4<T>>(matrix);
}

template <class T>
inline TVector2<T>& TVector2<T>::operator*=(const TMatrixMxN<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector3<T>& TVector3<T>::operator*=(const TMatrixMxN<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector4<T>& TVector4<T>::operator*=(const TMatrixMxN<T>& matrix)
{
    return *this = *this * matrix;
}

extern template class TMatrixMxN<float>;
extern template class TMatrixMxN<double>;

} // namespace Halmont::Orrin::CorvexMaths

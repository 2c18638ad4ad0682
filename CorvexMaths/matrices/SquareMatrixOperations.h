#pragma once

/// What the fixed matrices of order 2, 3 and 4 have in common.
///
/// The base holds no data: the elements stand in the derived class, row by row, so that a matrix is exactly its N*N
/// values and can be copied as such. Every sum of a product starts at +0 and takes its terms in ascending order of the
/// inner index, rounded to T at each step.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/RealPointer.h>

namespace Halmont::Orrin::CorvexMaths
{

/// The operations shared by TMatrix2x2, TMatrix3x3 and TMatrix4x4. M is the matrix class itself, T its scalar, N its
/// order.
///
/// Nothing here allocates, except the product with a TMatrixMxN, and nothing has a tolerance but Invert. Arithmetic
/// follows IEEE 754: a division by 0 gives infinities or NaN, and a NaN spreads to every element computed from it.
template <class M, class T, unsigned int N>
struct CORVEX_API SquareMatrixOperations
{
    // Accessors.

    /// The number of rows, N.
    unsigned int GetM() const { return N; }
    /// The number of columns, N.
    unsigned int GetN() const { return N; }

    /// Writes the addresses of the N rows into the caller's array, which has room for N. They point into this matrix
    /// and live as long as it does.
    void GetRows(T** const rows)
    {
        CORVEX_PRECONDITION("SquareMatrixOperations::GetRows", rows != nullptr, rows);
        for (unsigned int r = 0; r < N; ++r) rows[r] = (*this)[r];
    }

    /// The address of the N elements of a row, counted from 0, so that `matrix[r][c]` is the element in row r and
    /// column c. Both indices must be below N; the row is a precondition checked in debug builds, the column is not
    /// checked.
    T* operator[](unsigned int row)
    {
        CORVEX_PRECONDITION("SquareMatrixOperations::operator[]", row < N, row, N);
        return Self().elements + row * N;
    }
    /// The address of the N elements of a row of a matrix that is only read; the index as in the form for writing.
    const T* operator[](unsigned int row) const
    {
        CORVEX_PRECONDITION("SquareMatrixOperations::operator[]", row < N, row, N);
        return Self().elements + row * N;
    }

    /// The element in a row and a column, both counted from 0 and below N, which debug builds check.
    T& operator()(unsigned int row, unsigned int column)
    {
        CORVEX_PRECONDITION("SquareMatrixOperations::operator()", row < N && column < N, row, column, N);
        return Self().elements[row * N + column];
    }
    /// The element in a row and a column, both counted from 0 and below N, which debug builds check.
    const T& operator()(unsigned int row, unsigned int column) const
    {
        CORVEX_PRECONDITION("SquareMatrixOperations::operator()", row < N && column < N, row, column, N);
        return Self().elements[row * N + column];
    }

    /// Sets every element to +0.
    void ToNull()
    {
        for (T& element : Self().elements) element = T(0);
    }

    /// Sets the diagonal to 1 and every other element to +0.
    void ToIdentity()
    {
        ToNull();
        for (unsigned int r = 0; r < N; ++r) (*this)[r][r] = T(1);
    }

    /// Mirrors the elements about the diagonal, in place.
    void Transpose()
    {
        for (unsigned int r = 0; r < N; ++r) {
            for (unsigned int c = r + 1; c < N; ++c) {
                const T above = (*this)[r][c];
                (*this)[r][c] = (*this)[c][r];
                (*this)[c][r] = above;
            }
        }
    }

    // Arithmetic by element.

    /// The sum, element by element, of this matrix and another, which may be this one.
    M operator+(const M& other) const { return M(Self()) += other; }
    /// This matrix less another, element by element; the other may be this one.
    M operator-(const M& other) const { return M(Self()) -= other; }

    /// Adds another matrix, element by element; it may be this one, which is then doubled. Returns this matrix.
    M& operator+=(const M& other)
    {
        for (unsigned int i = 0; i < N * N; ++i) Self().elements[i] += other.elements[i];
        return Self();
    }

    /// Subtracts another matrix, element by element; it may be this one. Returns this matrix.
    M& operator-=(const M& other)
    {
        for (unsigned int i = 0; i < N * N; ++i) Self().elements[i] -= other.elements[i];
        return Self();
    }

    /// The matrix with the sign of every element flipped, that of zeros and NaNs too: 0 becomes -0.
    M operator-() const
    {
        M result(Self());
        for (T& element : result.elements) element = -element;
        return result;
    }

    /// A copy of this matrix with every element times a scalar.
    M operator*(const T& scalar) const { return M(Self()) *= scalar; }

    /// A copy of a matrix with every element times a scalar: the same bits as with the scalar on the right.
    friend M operator*(const T& scalar, const M& matrix) { return matrix * scalar; }

    /// Multiplies every element by a scalar, which may be one of the elements: its value at the start counts. Returns
    /// this matrix.
    M& operator*=(const T& scalar)
    {
        const T factor = scalar;
        for (T& element : Self().elements) element *= factor;
        return Self();
    }

    /// A copy of this matrix with every element divided by a scalar: N*N true divisions, never a product with the
    /// reciprocal. A scalar of 0 gives infinities, and NaN for elements of 0 or NaN.
    M operator/(const T& scalar) const
    {
        M result(Self());
        result /= scalar;
        return result;
    }

    /// Divides every element by a scalar, which may be one of the elements: its value at the start counts. These are
    /// N*N true divisions; a scalar of 0 gives infinities, and NaN for elements of 0 or NaN. Returns this matrix (the
    /// form of TMatrix2x2 returns a copy).
    M& operator/=(const T& scalar)
    {
        const T divisor = scalar;
        for (T& element : Self().elements) element /= divisor;
        return Self();
    }

    // Products.

    /// The matrix product, this matrix on the left. Element (r, c) is the sum over k, ascending from +0, of
    /// (*this)[r][k] times other[k][c]. The other may be this matrix.
    M operator*(const M& other) const
    {
        M result;
        for (unsigned int r = 0; r < N; ++r) {
            T sums[N] = {};
            for (unsigned int k = 0; k < N; ++k)
                for (unsigned int c = 0; c < N; ++c) sums[c] += (*this)[r][k] * other[k][c];
            for (unsigned int c = 0; c < N; ++c) result[r][c] = sums[c];
        }
        return result;
    }

    /// This matrix times another replaces this matrix. The product, as `*` forms it, is complete before it is stored,
    /// so that the other may be this matrix. Returns this matrix.
    M& operator*=(const M& other) { return Self() = Self() * other; }

    /// This matrix times a matrix of run-time size: N rows, and as many columns as the argument. Each sum takes as many
    /// terms as the argument has rows, ascending from +0; it must have no more than N. With fewer the columns of this
    /// matrix beyond them take no part; with none the result is zeros. Allocates the result. Not const: for a const
    /// fixed matrix the argument is converted instead and the result is a fixed matrix.
    TMatrixMxN<T> operator*(const TMatrixMxN<T>& other);

    /// This matrix times the upper-left N by N block of the argument replaces this matrix; the rest of the argument
    /// is not read. Where the argument has fewer rows or columns, the identity stands beyond them. Returns this matrix.
    M& operator*=(const TMatrixMxN<T>& other) { return *this *= static_cast<M>(other); }

    /// The product with a column vector of two components: (x, y) times the upper-left block of order 2. The further
    /// rows and columns of a larger matrix take no part. Sums start at +0 and take x first.
    TVector2<T> operator*(const TVector2<T>& vector) const
    {
        return static_cast<TMatrix2x2<T>>(Self()).TimesColumn(vector);
    }
    /// The product with a column vector of three components: the vector times the upper-left block of order 3. So no
    /// translation of a 4x4 matrix is applied; a 2x2 matrix is widened by the identity and leaves z as it is, but for a
    /// -0, which becomes +0, and for NaN where x or y is infinite or NaN. Sums start at +0 and ascend.
    TVector3<T> operator*(const TVector3<T>& vector) const
    {
        return static_cast<TMatrix3x3<T>>(Self()).TimesColumn(vector);
    }
    /// The product with a column vector of four components. A smaller matrix is widened by the identity and leaves w,
    /// and one of order 2 also z, as it is, but for a -0, which becomes +0, and for NaN where another component is
    /// infinite or NaN. Sums start at +0 and ascend.
    TVector4<T> operator*(const TVector4<T>& vector) const
    {
        return static_cast<TMatrix4x4<T>>(Self()).TimesColumn(vector);
    }

    // Comparison. C++20 tries `==` with the operands swapped too, which is ambiguous unless M takes it over by a
    // using-declaration.

    /// Exact equality of all elements, without a tolerance: a NaN anywhere gives false, even against the matrix itself,
    /// and 0 equals -0. It stops at the first pair that differs.
    bool operator==(const M& other) const
    {
        for (unsigned int i = 0; i < N * N; ++i)
            if (!(Self().elements[i] == other.elements[i])) return false;
        return true;
    }
    /// Whether any element differs, a NaN always doing so: the opposite of `==`.
    bool operator!=(const M& other) const { return !(*this == other); }

    // Decomposition and solving.

    /// Decomposes a copy of this matrix into triangular factors by Crout's method (P. D. Crout, 1941) with partial
    /// pivoting on implicitly scaled rows. `lu` takes the factors of the row-permuted matrix: the upper one on and
    /// above the diagonal, below it the lower one, whose diagonal of ones is not stored. `pivots` takes N row indices,
    /// entry j being the row swapped with row j at step j, or j itself; `parity` takes +1 or -1, the sign of the
    /// permutation. The three must not be null; `lu` may be this matrix.
    ///
    /// The pivot of a column is the row whose element is largest against the largest of its row before the
    /// decomposition; on a tie the last such row. A merit of NaN never wins; where all are NaN the pivot row of the
    /// column before is taken again. A pivot of exactly 0 is replaced by Numbers::pivotGuard, so a singular matrix
    /// passes. False only where a row holds nothing but zeros and NaNs; then `lu` holds the copy, `pivots` zeros and
    /// `parity` 1.
    /// @param[out] lu The factors, one above the other.
    /// @param[out] pivots An array of N, for the rows that were swapped.
    /// @param[out] parity The sign of the permutation, 1 or -1.
    [[nodiscard]] bool LUD(M* lu, int* const pivots, T* parity) const;

    /// Solves for one right-hand side with the factors and pivots of LUD, in two sweeps of ascending sums (forward,
    /// then backward). Reads the N values of b and writes the N values of x; the two may be the same array but must not
    /// overlap otherwise. No pointer may be null and every pivot is below N. Leading zeros of the permuted right-hand
    /// side are skipped, so that a factor which is not finite does not meet them. There is no test for a small pivot:
    /// where the guard stood in for a 0, the values are huge.
    /// @param lu The factors of LUD.
    /// @param pivots Those of LUD.
    /// @param b The right-hand side, an array of N.
    /// @param[out] x The solution, an array of as many; may be b.
    static void BackSub(const M& lu, const int* const pivots, const T* const b, T* x);

    /// Inverts in place, by LUD and one BackSub for each column. False, and this matrix unchanged, where the
    /// determinant (that of Determinant) is zero within the common tolerance or where LUD fails. The tolerance is
    /// absolute and inclusive, whatever the elements: 1e-4 times the identity of order 2 counts as singular. A
    /// determinant of NaN does not; unless LUD fails, the result is then true and holds NaNs.
    [[nodiscard]] bool Invert();

    /// Writes the inverse of this matrix to `out`, which must not be null and may be this matrix. False where the
    /// determinant is zero within the common tolerance (absolute, inclusive) or LUD fails; `out` then holds a copy of
    /// this matrix.
    [[nodiscard]] bool Invert(M* out) const;

    /// Decomposes this matrix as u w v-transposed, by Householder reduction and implicitly shifted QR iteration (G. H.
    /// Golub, C. Reinsch, 1970). The singular values stand on the diagonal of w, none negative, in the order in which
    /// the iteration leaves them: nothing sorts them. Column j of u and of v (v itself, not its transpose) goes with
    /// w[j][j]; every other element of w is 0. What is negligible is so against the largest sum of a column of the
    /// bidiagonal form: there is no tolerance.
    ///
    /// With an iterationLimit of 1 to 30 the result is false when a value has not converged after iterationLimit - 1 QR
    /// transformations, and the outputs then hold an unfinished state; with 0 or above 30 a value is left as it is
    /// after 30 of them, which may be negative, and the result is true. NaNs and infinities are not detected: they give
    /// NaN outputs or a false result. Of a matrix of zeros, u and v have ones on their diagonals and zeros elsewhere.
    /// The outputs must not be null and must be distinct; any of them may be this matrix. What they held does not
    /// matter. Takes about 50 KiB of stack.
    /// @param[out] u The left singular vectors, as columns.
    /// @param[out] w The singular values, on the diagonal.
    /// @param[out] v The right singular vectors, as columns.
    /// @param iterationLimit How many steps a value may take; give 30.
    [[nodiscard]] bool SVD(M* u, M* w, M* v, unsigned int iterationLimit) const;

private:
    template <class OtherM, class S, unsigned int OtherN>
    friend struct SquareMatrixOperations;
    friend struct TVector2<T>;
    friend struct TVector3<T>;
    friend struct TVector4<T>;
    friend class TMatrixMxN<T>;

    /// The product with a column vector of N components: component r is the sum over c of element (r, c) times
    /// vector[c].
    template <class V>
    V TimesColumn(const V& vector) const
    {
        V result;
        const T* const in = vector;
        T* const out = result;
        for (unsigned int r = 0; r < N; ++r) {
            T sum = T(0);
            for (unsigned int c = 0; c < N; ++c) sum += (*this)[r][c] * in[c];
            out[r] = sum;
        }
        return result;
    }

    /// The product of a row vector of N components on the left: component c is the sum over r of vector[r] times
    /// element (r, c). This is the product `vector * matrix` of the vectors.
    template <class V>
    V TimesRow(const V& vector) const
    {
        V result;
        const T* const in = vector;
        T* const out = result;
        T sums[N] = {};
        for (unsigned int r = 0; r < N; ++r)
            for (unsigned int c = 0; c < N; ++c) sums[c] += in[r] * (*this)[r][c];
        for (unsigned int c = 0; c < N; ++c) out[c] = sums[c];
        return result;
    }

    /// The outer product of two vectors of N components: element (r, c) is left[r] times right[c].
    template <class V>
    static M Outer(const V& left, const V& right)
    {
        M result;
        const T* const rows = left;
        const T* const columns = right;
        for (unsigned int r = 0; r < N; ++r)
            for (unsigned int c = 0; c < N; ++c) result[r][c] = rows[r] * columns[c];
        return result;
    }

    M& Self() { return static_cast<M&>(*this); }
    const M& Self() const { return static_cast<const M&>(*this); }

    CORVEX_INCLUDE_STREAM_TO_PRINT(SquareMatrixOperations);
};

} // namespace Halmont::Orrin::CorvexMaths

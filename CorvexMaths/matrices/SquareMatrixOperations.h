#pragma once

/// What the fixed matrices of order 2, 3 and 4 have in common.
///
/// The base holds no data: the elements stand in the derived class, row by row, so that a matrix is exactly its N*N
/// values and can be copied as such. Every sum of a product starts at +0 and takes its terms in ascending order of the
/// inner index, rounded to T at each step.

#include <CorvexMaths/Forward.h>

#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{

/// The operations shared by TMatrix2x2, TMatrix3x3 and TMatrix4x4. M is the matrix class itself, T its scalar, N its
/// order.
template <class M, class T, unsigned int N>
struct CORVEX_API SquareMatrixOperations
{
    // Accessors.

    /// The number of rows, N.
    unsigned int GetM() const { return N; }
    /// The number of columns, N.
    unsigned int GetN() const { return N; }

    /// Writes the addresses of the N rows into the caller's array. They point into this matrix and live as long as it
    /// does.
    void GetRows(T** const rows)
    {
        for (unsigned int r = 0; r < N; ++r) rows[r] = (*this)[r];
    }

    /// The address of a row; the index is a precondition, not checked.
    T* operator[](unsigned int row) { return Self().elements + row * N; }
    /// The address of a row that is only read.
    const T* operator[](unsigned int row) const { return Self().elements + row * N; }

    /// Sets every element to 0.
    void ToNull()
    {
        for (T& element : Self().elements) element = T(0);
    }

    /// Sets the diagonal to 1 and every other element to 0.
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

    // Arithmetic by element. Operands may be the matrix itself.

    /// The sum, element by element.
    M operator+(const M& other) const { return M(Self()) += other; }
    /// The difference, element by element.
    M operator-(const M& other) const { return M(Self()) -= other; }

    /// Adds another matrix, element by element.
    M& operator+=(const M& other)
    {
        for (unsigned int i = 0; i < N * N; ++i) Self().elements[i] += other.elements[i];
        return Self();
    }

    /// Subtracts another matrix, element by element.
    M& operator-=(const M& other)
    {
        for (unsigned int i = 0; i < N * N; ++i) Self().elements[i] -= other.elements[i];
        return Self();
    }

    /// The matrix with the sign of every element flipped: 0 becomes -0.
    M operator-() const
    {
        M result(Self());
        for (T& element : result.elements) element = -element;
        return result;
    }

    /// The matrix with every element times a scalar.
    M operator*(const T& scalar) const { return M(Self()) *= scalar; }

    /// Multiplies every element by a scalar, which may be one of the elements.
    M& operator*=(const T& scalar)
    {
        const T factor = scalar;
        for (T& element : Self().elements) element *= factor;
        return Self();
    }

    /// The matrix with every element divided by a scalar: N*N true divisions, with infinities or NaN where it is 0.
    M operator/(const T& scalar) const
    {
        M result(Self());
        result /= scalar;
        return result;
    }

    /// Divides every element by a scalar, which may be one of the elements; true divisions, no test for 0.
    M& operator/=(const T& scalar)
    {
        const T divisor = scalar;
        for (T& element : Self().elements) element /= divisor;
        return Self();
    }

    // Products.

    /// The matrix product, this matrix on the left.
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

    /// This matrix times another replaces this matrix; the product is complete before it is stored.
    M& operator*=(const M& other) { return Self() = Self() * other; }

    /// This matrix times a matrix of run-time size: N rows, and as many columns as the argument. The inner length is
    /// the argument's row count, which must be N; that is not checked. Not const: for a const fixed matrix the argument
    /// is converted instead and the result is a fixed matrix.
    TMatrixMxN<T> operator*(const TMatrixMxN<T>& other);

    /// This matrix times the upper-left N by N block of the argument replaces this matrix. The argument must have that
    /// block; its size is not checked.
    M& operator*=(TMatrixMxN<T>& other)
    {
        M block;
        for (unsigned int r = 0; r < N; ++r)
            for (unsigned int c = 0; c < N; ++c) block[r][c] = other[r][c];
        return *this *= block;
    }

    /// The product with a column vector. A matrix of another order is first converted to the vector's: a larger one
    /// gives up its further rows and columns, a smaller one leaves the further components as they are.
    TVector2<T> operator*(const TVector2<T>& vector) const
    {
        return static_cast<TMatrix2x2<T>>(Self()).TimesColumn(vector);
    }
    /// The product with a column vector of three components; no translation of a 4x4 matrix is applied.
    TVector3<T> operator*(const TVector3<T>& vector) const
    {
        return static_cast<TMatrix3x3<T>>(Self()).TimesColumn(vector);
    }
    /// The product with a column vector of four components.
    TVector4<T> operator*(const TVector4<T>& vector) const
    {
        return static_cast<TMatrix4x4<T>>(Self()).TimesColumn(vector);
    }

    // Comparison.

    /// Exact equality of all elements: a NaN anywhere gives false, 0 equals -0. It stops at the first pair that
    /// differs.
    bool operator==(const M& other) const
    {
        for (unsigned int i = 0; i < N * N; ++i)
            if (!(Self().elements[i] == other.elements[i])) return false;
        return true;
    }
    /// The opposite of ==.
    bool operator!=(const M& other) const { return !(*this == other); }

    // Decomposition and solving.

    /// Decomposes a copy of this matrix into triangular factors by Crout's method (P. D. Crout, 1941) with partial
    /// pivoting on implicitly scaled rows. `lu` takes the factors of the row-permuted matrix: the upper one on and
    /// above the diagonal, below it the lower one, whose diagonal of ones is not stored. `pivots` takes N row indices,
    /// entry j being the row swapped with row j at step j; `parity` takes +1 or -1, the sign of the permutation. `lu`
    /// may be this matrix. A pivot of exactly 0 is replaced by Numbers::pivotGuard, so a singular matrix passes; false
    /// only where a row is all zeros (or NaN), and then `lu` holds the copy, `pivots` zeros and `parity` 1.
    bool LUD(M* lu, int* const pivots, T* parity) const;

    /// Solves for one right-hand side with the factors of LUD. Reads the N values of b, writes the N values of x; the
    /// two may be the same array. Leading zeros of the permuted right-hand side are skipped.
    static void BackSub(M& lu, const int* const pivots, const T* const b, T* x);

    /// Inverts in place. False, and this matrix unchanged, where the determinant is 0 or within the common tolerance of
    /// it (absolute and inclusive, so a matrix of small elements counts as singular) or where LUD fails.
    bool Invert();

    /// Copies this matrix into `out` and inverts that; `out` holds the copy if the result is false.
    bool Invert(M* out) const;

    /// Decomposes this matrix as u w v-transposed, by Householder reduction and implicitly shifted QR iteration (G. H.
    /// Golub, C. Reinsch, 1970). The singular values stand on the diagonal of w, none negative, in the order in which
    /// the iteration leaves them: nothing sorts them. Column j of u and of v (v itself, not its transpose) goes with
    /// w[j][j]. With an iterationLimit of 1 to 30 the result is false when a value has not converged after
    /// iterationLimit - 1 QR transformations, and the outputs then hold an unfinished state; with 0 or above 30 a value
    /// is left as it is after 30 of them and the result is true. NaNs are not detected. The outputs must be distinct; u
    /// may be this matrix. Takes up to 100 KiB of stack.
    bool SVD(M* u, M* w, M* v, unsigned int iterationLimit) const;

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
};

/// The type of a constructor's argument that stands for an array of T: real pointers only, never a class that converts
/// to one.
template <class P, class T>
using EnableForPointer = std::enable_if_t<std::is_same_v<P, T*> || std::is_same_v<P, const T*>, int>;

} // namespace Halmont::Orrin::CorvexMaths

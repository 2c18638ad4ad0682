#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/internal/Crout.h>
#include <CorvexMaths/matrices/internal/Kernels.h>

#include <cstddef>
#include <cstring>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Copies values as one block; nothing is touched where there are none.
template <class T>
void CopyBlock(T* target, const T* source, std::size_t count)
{
    if (count != 0) std::memmove(target, source, count * sizeof(T));
}

/// The row pointers into a block.
template <class T>
void PointRows(T** rows, T* elements, unsigned int rowCount, unsigned int columnCount)
{
    for (unsigned int r = 0; r < rowCount; ++r) rows[r] = elements + std::size_t(r) * columnCount;
}

} // namespace

// Storage.

template <class T>
TMatrixMxN<T>::TMatrixMxN(unsigned int rowCount, unsigned int columnCount) : TMatrixMxN()
{
    AssignMemory(rowCount, columnCount);
}

template <class T>
TMatrixMxN<T>::TMatrixMxN(const TMatrixMxN& other) : TMatrixMxN()
{
    *this = other;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator=(const TMatrixMxN& other)
{
    AssignMemory(other.m, other.n);
    CopyBlock(elements, other.elements, std::size_t(m) * n);
    return *this;
}

template <class T>
void TMatrixMxN<T>::AssignMemory(unsigned int rowCount, unsigned int columnCount)
{
    if (rowCount == m && columnCount == n) return;
    ReleaseMemory();
    // Should the allocator give up, the destructor finds nothing to release twice.
    elements = nullptr;
    rows = nullptr;
    m = rowCount;
    n = columnCount;
    elements = new T[std::size_t(m) * n];
    rows = new T*[m];
    PointRows(rows, elements, m, n);
}

template <class T>
void TMatrixMxN<T>::ToNull()
{
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) rows[r][c] = T(0);
}

template <class T>
void TMatrixMxN<T>::ToIdentity()
{
    ToNull();
    for (unsigned int r = 0; r < m && r < n; ++r) rows[r][r] = T(1);
}

template <class T>
void TMatrixMxN<T>::Transpose()
{
    if (m == n) {
        for (unsigned int r = 0; r < m; ++r) {
            for (unsigned int c = r + 1; c < n; ++c) {
                const T above = rows[r][c];
                rows[r][c] = rows[c][r];
                rows[c][r] = above;
            }
        }
        return;
    }

    std::unique_ptr<T[]> turned(new T[std::size_t(n) * m]);
    T** const turnedRows = new T*[n];
    PointRows(turnedRows, turned.get(), n, m);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) turnedRows[c][r] = rows[r][c];
    ReleaseMemory();
    elements = turned.release();
    rows = turnedRows;
    const unsigned int rowCount = m;
    m = n;
    n = rowCount;
}

// Comparison.

template <class T>
bool TMatrixMxN<T>::operator==(const TMatrixMxN& other) const
{
    if (m != other.m || n != other.n) return false;
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c)
            if (!(rows[r][c] == other.rows[r][c])) return false;
    return true;
}

// Arithmetic.

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator+(TMatrixMxN& other) const
{
    TMatrixMxN result(*this);
    result += other;
    return result;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator-(TMatrixMxN& other) const
{
    TMatrixMxN result(*this);
    result -= other;
    return result;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator+=(TMatrixMxN& other)
{
    CORVEX_PRECONDITION("TMatrixMxN::operator+ or +=", m <= other.m && n <= other.n, m, n, other.m, other.n);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) rows[r][c] += other.rows[r][c];
    return *this;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator-=(TMatrixMxN& other)
{
    CORVEX_PRECONDITION("TMatrixMxN::operator- or -=", m <= other.m && n <= other.n, m, n, other.m, other.n);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) rows[r][c] -= other.rows[r][c];
    return *this;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator-() const
{
    TMatrixMxN result(m, n);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) result.rows[r][c] = -rows[r][c];
    return result;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator*(const T& scalar) const
{
    TMatrixMxN result(*this);
    result *= scalar;
    return result;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator/(const T& scalar) const
{
    TMatrixMxN result(*this);
    result /= scalar;
    return result;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator*=(const T& scalar)
{
    const T factor = scalar;
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) rows[r][c] *= factor;
    return *this;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator/=(const T& scalar)
{
    const T divisor = scalar;
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) rows[r][c] /= divisor;
    return *this;
}

// Products.

template <class T>
template <class M, unsigned int N>
TMatrixMxN<T> TMatrixMxN<T>::TimesFixed(SquareMatrixOperations<M, T, N>& other) const
{
    CORVEX_PRECONDITION("TMatrixMxN::operator* or *=", m == 0 || N <= n, m, n, N);
    TMatrixMxN result(m, N);
    result.ToNull();
    T* otherRows[N];
    other.GetRows(otherRows);
    Kernels::MultiplyRows(result.rows, rows, otherRows, m, N, N);
    return result;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator*(TMatrixMxN& other) const
{
    if (n != other.m) return TMatrixMxN();
    TMatrixMxN result(m, other.n);
    result.ToNull();
    Kernels::MultiplyRows(result.rows, rows, other.rows, m, n, other.n);
    return result;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator*=(TMatrixMxN& other)
{
    CORVEX_PRECONDITION("TMatrixMxN::operator*=", m == 0 || other.m <= n, m, n, other.m);
    const TMatrixMxN aside(*this);
    AssignMemory(m, other.n);
    ToNull();
    Kernels::MultiplyRows(rows, aside.rows, other.rows, m, other.m, n);
    return *this;
}

// Decomposition and solving.

template <class T>
bool TMatrixMxN<T>::LUD(TMatrixMxN* lu, int* pivots, T* parity) const
{
    if (m != n) return false;
    CORVEX_PRECONDITION("TMatrixMxN::LUD", lu != nullptr && parity != nullptr, lu, parity);
    CORVEX_PRECONDITION("TMatrixMxN::LUD", m == 0 || pivots != nullptr, m, pivots);
    *lu = *this;
    const std::unique_ptr<T[]> scale(new T[m]);
    return Kernels::LUDRows(lu->rows, pivots, scale.get(), parity, m);
}

template <class T>
bool TMatrixMxN<T>::LUD(TMatrixMxN* lu, int** pivots, T* parity) const
{
    CORVEX_PRECONDITION("TMatrixMxN::LUD", pivots != nullptr, pivots);
    *pivots = nullptr;
    std::unique_ptr<int[]> owned(new int[m]);
    if (!LUD(lu, owned.get(), parity)) return false;
    *pivots = owned.release();
    return true;
}

template <class T>
void TMatrixMxN<T>::BackSub(TMatrixMxN& lu, const int* pivots, const T* b, T* x)
{
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", lu.m == lu.n, lu.m, lu.n);
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", lu.n == 0 || (pivots != nullptr && b != nullptr && x != nullptr), pivots,
                        b, x);
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", Kernels::AreRows(pivots, lu.n), lu.n);
    Kernels::BackSubRows(lu.rows, pivots, b, x, lu.n);
}

template <class T>
void TMatrixMxN<T>::BackSub(TMatrixMxN& lu, const int* pivots, const T* b, T** x)
{
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", x != nullptr, x);
    *x = new T[lu.n];
    BackSub(lu, pivots, b, *x);
}

template <class T>
bool TMatrixMxN<T>::Invert()
{
    if (m != n || m == 0) return false;
    const std::unique_ptr<int[]> pivots(new int[m]);
    TMatrixMxN lu;
    T parity;
    if (!LUD(&lu, pivots.get(), &parity)) return false;
    Kernels::InvertRows(rows, lu.rows, pivots.get(), m);
    return true;
}

template <class T>
bool TMatrixMxN<T>::Invert(TMatrixMxN* out) const
{
    CORVEX_PRECONDITION("TMatrixMxN::Invert", out != nullptr, out);
    *out = *this;
    return out->Invert();
}

template <class T>
T TMatrixMxN<T>::Determinant() const
{
    if (m != n) return T(0);
    const std::unique_ptr<int[]> pivots(new int[m]);
    TMatrixMxN lu;
    T determinant;
    if (!LUD(&lu, pivots.get(), &determinant)) return T(0);
    for (unsigned int i = 0; i < m; ++i) determinant *= lu.rows[i][i];
    return determinant;
}

template class TMatrixMxN<float>;
template class TMatrixMxN<double>;

// The products with fixed matrices stand in the header; what they share is compiled here.
template TMatrixMxN<float> TMatrixMxN<float>::TimesFixed(SquareMatrixOperations<TMatrix2x2<float>, float, 2>&) const;
template TMatrixMxN<float> TMatrixMxN<float>::TimesFixed(SquareMatrixOperations<TMatrix3x3<float>, float, 3>&) const;
template TMatrixMxN<float> TMatrixMxN<float>::TimesFixed(SquareMatrixOperations<TMatrix4x4<float>, float, 4>&) const;
template TMatrixMxN<double>
TMatrixMxN<double>::TimesFixed(SquareMatrixOperations<TMatrix2x2<double>, double, 2>&) const;
template TMatrixMxN<double>
TMatrixMxN<double>::TimesFixed(SquareMatrixOperations<TMatrix3x3<double>, double, 3>&) const;
template TMatrixMxN<double>
TMatrixMxN<double>::TimesFixed(SquareMatrixOperations<TMatrix4x4<double>, double, 4>&) const;

} // namespace Halmont::Orrin::CorvexMaths

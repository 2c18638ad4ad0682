#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/internal/Crout.h>
#include <CorvexMaths/matrices/internal/Kernels.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The number of elements, or one that no allocator can provide where it is beyond the address space.
std::size_t CountElements(unsigned int rowCount, unsigned int columnCount)
{
    return static_cast<std::size_t>(std::min<unsigned long long>(1ull * rowCount * columnCount, SIZE_MAX));
}

/// Copies values as one block; nothing is touched where there are none.
template <class T>
void CopyBlock(T* target, const T* source, std::size_t count)
{
    if (count != 0) std::memmove(target, source, count * sizeof(T));
}

/// Applies a function to every element.
template <class T, class F>
void ForEach(TMatrixMxN<T>& matrix, F f)
{
    for (unsigned int r = 0; r < matrix.GetM(); ++r) {
        T* const row = matrix[r];
        for (unsigned int c = 0; c < matrix.GetN(); ++c) f(row[c]);
    }
}

/// Applies a function to every element of a matrix and the one in the same place of another, which is no smaller.
template <class T, class F>
void ForEach(TMatrixMxN<T>& matrix, const TMatrixMxN<T>& other, F f)
{
    for (unsigned int r = 0; r < matrix.GetM(); ++r) {
        T* const row = matrix[r];
        const T* const otherRow = other[r];
        for (unsigned int c = 0; c < matrix.GetN(); ++c) f(row[c], otherRow[c]);
    }
}

} // namespace

// Storage.

template <class T>
TMatrixMxN<T>::TMatrixMxN(unsigned int rowCount, unsigned int columnCount) : TMatrixMxN()
{
    if (rowCount == 0 && columnCount == 0) return;
    elements = new T[CountElements(rowCount, columnCount)];
    rows = new T*[rowCount];
    m = rowCount;
    n = columnCount;
    for (unsigned int r = 0; r < m; ++r) rows[r] = elements + std::size_t(r) * n;
}

template <class T>
TMatrixMxN<T>::TMatrixMxN(const TMatrixMxN& other) : TMatrixMxN(other.m, other.n)
{
    CopyBlock(elements, other.elements, std::size_t(m) * n);
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator=(const TMatrixMxN& other)
{
    AssignMemory(other.m, other.n);
    CopyBlock(elements, other.elements, std::size_t(m) * n);
    return *this;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator=(TMatrixMxN&& other) noexcept
{
    TMatrixMxN taken(std::move(other)); // leaves this matrix empty if it is the other
    if (m == taken.m && n == taken.n)
        CopyBlock(elements, taken.elements, std::size_t(m) * n);
    else
        Swap(taken);
    return *this;
}

template <class T>
void TMatrixMxN<T>::AssignMemory(unsigned int rowCount, unsigned int columnCount)
{
    if (rowCount == m && columnCount == n) return;
    TMatrixMxN resized(rowCount, columnCount);
    Swap(resized);
}

template <class T>
void TMatrixMxN<T>::ToNull()
{
    ForEach(*this, [](T& element) { element = T(0); });
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
        for (unsigned int r = 0; r < m; ++r)
            for (unsigned int c = r + 1; c < n; ++c) std::swap(rows[r][c], rows[c][r]);
        return;
    }
    TMatrixMxN transposed(n, m);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) transposed.rows[c][r] = rows[r][c];
    Swap(transposed);
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
TMatrixMxN<T>& TMatrixMxN<T>::operator+=(const TMatrixMxN& other)
{
    CORVEX_PRECONDITION("TMatrixMxN::operator+ or +=", m <= other.m && n <= other.n, m, n, other.m, other.n);
    ForEach(*this, other, [](T& element, T addend) { element += addend; });
    return *this;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator-=(const TMatrixMxN& other)
{
    CORVEX_PRECONDITION("TMatrixMxN::operator- or -=", m <= other.m && n <= other.n, m, n, other.m, other.n);
    ForEach(*this, other, [](T& element, T subtrahend) { element -= subtrahend; });
    return *this;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator-() const
{
    TMatrixMxN result(*this);
    ForEach(result, [](T& element) { element = -element; });
    return result;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator*=(const T& scalar)
{
    ForEach(*this, [factor = scalar](T& element) { element *= factor; });
    return *this;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator/=(const T& scalar)
{
    ForEach(*this, [divisor = scalar](T& element) { element /= divisor; });
    return *this;
}

// Products.

template <class T>
template <class M, unsigned int N>
TMatrixMxN<T> TMatrixMxN<T>::TimesFixed(const SquareMatrixOperations<M, T, N>& other) const
{
    CORVEX_PRECONDITION("TMatrixMxN::operator* or *=", m == 0 || N <= n, m, n, N);
    TMatrixMxN result(m, N);
    result.ToNull();
    M copy(other.Self());
    T* otherRows[N];
    copy.GetRows(otherRows);
    Kernels::MultiplyRows(result.rows, rows, otherRows, m, N, N);
    return result;
}

template <class T>
TMatrixMxN<T> TMatrixMxN<T>::operator*(const TMatrixMxN& other) const
{
    if (n != other.m) return TMatrixMxN();
    TMatrixMxN result(m, other.n);
    result.ToNull();
    Kernels::MultiplyRows(result.rows, rows, other.rows, m, n, other.n);
    return result;
}

template <class T>
TMatrixMxN<T>& TMatrixMxN<T>::operator*=(const TMatrixMxN& other)
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
void TMatrixMxN<T>::BackSub(const TMatrixMxN& lu, const int* pivots, const T* b, T* x)
{
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", lu.m == lu.n, lu.m, lu.n);
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", lu.n == 0 || (pivots != nullptr && b != nullptr && x != nullptr), pivots,
                        b, x);
    CORVEX_PRECONDITION("TMatrixMxN::BackSub", Kernels::AreRows(pivots, lu.n), lu.n);
    Kernels::BackSubRows(lu.rows, pivots, b, x, lu.n);
}

template <class T>
void TMatrixMxN<T>::BackSub(const TMatrixMxN& lu, const int* pivots, const T* b, T** x)
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

CORVEX_INSTANTIATE_SCALARS(, class, TMatrixMxN);

// The products with fixed matrices are defined in the header; what they share is compiled here.
#define CORVEX_INSTANTIATE_PRODUCTS(T)                                                                                 \
    template TMatrixMxN<T> TMatrixMxN<T>::TimesFixed(const SquareMatrixOperations<TMatrix2x2<T>, T, 2>&) const;        \
    template TMatrixMxN<T> TMatrixMxN<T>::TimesFixed(const SquareMatrixOperations<TMatrix3x3<T>, T, 3>&) const;        \
    template TMatrixMxN<T> TMatrixMxN<T>::TimesFixed(const SquareMatrixOperations<TMatrix4x4<T>, T, 4>&) const;

CORVEX_INSTANTIATE_PRODUCTS(float)
CORVEX_INSTANTIATE_PRODUCTS(double)

} // namespace Halmont::Orrin::CorvexMaths

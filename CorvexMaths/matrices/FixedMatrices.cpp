#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/internal/Crout.h>
#include <CorvexMaths/matrices/internal/Kernels.h>

/// What the fixed matrices do not do inline, and their one compilation.

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

template <unsigned int N>
using FixedOrder = std::integral_constant<unsigned int, N>;

/// The parity times the diagonal of the factors, in ascending order.
template <class M, class T>
T DiagonalProduct(const M& lu, T parity)
{
    T product = parity;
    for (unsigned int i = 0; i < lu.GetM(); ++i) product *= lu[i][i];
    return product;
}

/// The identity, to take rows from.
template <class T, unsigned int N>
struct UnitRows
{
    T elements[N][N] = {};

    constexpr UnitRows()
    {
        for (unsigned int i = 0; i < N; ++i) elements[i][i] = T(1);
    }
};
template <class T, unsigned int N>
constexpr UnitRows<T, N> unitRows;

/// Writes the inverse for all columns side by side. That needs swaps that may all be done first, so pivots at or below
/// their rows, and finite multipliers: then a column whose 1 is still to come takes only zeros from its zeros, which
/// leaves them +0 as if they had been passed over. False, with nothing written, where that does not hold.
template <unsigned int N, class T>
bool InvertSideBySide(T (&inverse)[N * N], const T (&lu)[N * N], const int* pivots)
{
    T probe = T(0);
    for (unsigned int i = 0; i < N; ++i) {
        if (pivots[i] < static_cast<int>(i)) return false;
        for (unsigned int j = 0; j < i; ++j) probe += lu[i * N + j] * T(0);
    }
    if (probe != T(0)) return false;

    T x[N][N];
    unsigned int columns[N];
    for (unsigned int i = 0; i < N; ++i) columns[i] = i;
    for (unsigned int i = 0; i < N; ++i) {
        const unsigned int column = columns[pivots[i]];
        columns[pivots[i]] = columns[i];
        for (unsigned int c = 0; c < N; ++c) x[i][c] = unitRows<T, N>.elements[column][c];
    }

    for (unsigned int i = 1; i < N; ++i)
        for (unsigned int j = 0; j < i; ++j)
            for (unsigned int c = 0; c < N; ++c) x[i][c] -= lu[i * N + j] * x[j][c];
    for (unsigned int i = N; i-- > 0;) {
        for (unsigned int j = i + 1; j < N; ++j)
            for (unsigned int c = 0; c < N; ++c) x[i][c] -= lu[i * N + j] * x[j][c];
        for (unsigned int c = 0; c < N; ++c) x[i][c] /= lu[i * N + i];
    }
    for (unsigned int i = 0; i < N * N; ++i) inverse[i] = x[i / N][i % N];
    return true;
}

} // namespace

template <class M, class T, unsigned int N>
TMatrixMxN<T> SquareMatrixOperations<M, T, N>::operator*(const TMatrixMxN<T>& other)
{
    CORVEX_PRECONDITION("SquareMatrixOperations::operator*", other.m <= N, other.m, N);
    TMatrixMxN<T> result(N, other.n);
    result.ToNull();
    T* rows[N];
    GetRows(rows);
    Kernels::MultiplyRows(result.rows, rows, other.rows, N, other.m, other.n);
    return result;
}

template <class M, class T, unsigned int N>
bool SquareMatrixOperations<M, T, N>::LUD(M* lu, int* const pivots, T* parity) const
{
    CORVEX_PRECONDITION("SquareMatrixOperations::LUD", lu != nullptr && pivots != nullptr && parity != nullptr, lu,
                        pivots, parity);
    *lu = Self();
    T* rows[N];
    T scale[N];
    lu->GetRows(rows);
    if (!Kernels::ScaleRows(rows, pivots, scale, parity, FixedOrder<N>())) return false;
    Kernels::FactorByColumns(rows, pivots, scale, parity, FixedOrder<N>());
    return true;
}

template <class M, class T, unsigned int N>
void SquareMatrixOperations<M, T, N>::BackSub(const M& lu, const int* const pivots, const T* const b, T* x)
{
    CORVEX_PRECONDITION("SquareMatrixOperations::BackSub", pivots != nullptr && b != nullptr && x != nullptr, pivots, b,
                        x);
    CORVEX_PRECONDITION("SquareMatrixOperations::BackSub", Kernels::AreRows(pivots, N), N);
    T* rows[N];
    for (unsigned int r = 0; r < N; ++r) rows[r] = const_cast<T*>(lu[r]); // only read
    Kernels::Substitute(rows, pivots, b, x, FixedOrder<N>());
}

template <class M, class T, unsigned int N>
bool SquareMatrixOperations<M, T, N>::Invert()
{
    M lu(Self());
    int pivots[N];
    T parity;
    T determinant;
    if constexpr (N == 4) {
        // The determinant of order 4 comes from these very factors; where there are none it counts as 0.
        if (!lu.LUD(&lu, pivots, &parity)) return false;
        determinant = DiagonalProduct(lu, parity);
    } else {
        determinant = Self().Determinant();
    }
    if (Numbers::IsZero(determinant, Numbers::commonTolerance<T>)) return false;
    if (N != 4 && !lu.LUD(&lu, pivots, &parity)) return false;

    if (InvertSideBySide<N>(Self().elements, lu.elements, pivots)) return true;
    for (unsigned int c = 0; c < N; ++c) {
        T unit[N] = {};
        T solution[N];
        unit[c] = T(1);
        BackSub(lu, pivots, unit, solution);
        for (unsigned int r = 0; r < N; ++r) (*this)[r][c] = solution[r];
    }
    return true;
}

template <class M, class T, unsigned int N>
bool SquareMatrixOperations<M, T, N>::Invert(M* out) const
{
    CORVEX_PRECONDITION("SquareMatrixOperations::Invert", out != nullptr, out);
    *out = Self();
    return out->Invert();
}

template <class T>
T TMatrix4x4<T>::Determinant() const
{
    TMatrix4x4 lu(*this);
    int pivots[4];
    T parity;
    if (!lu.LUD(&lu, pivots, &parity)) return T(0);
    return DiagonalProduct(lu, parity);
}

#define CORVEX_INSTANTIATE_FIXED_MATRICES(T)                                                                           \
    template struct SquareMatrixOperations<TMatrix2x2<T>, T, 2>;                                                       \
    template struct SquareMatrixOperations<TMatrix3x3<T>, T, 3>;                                                       \
    template struct SquareMatrixOperations<TMatrix4x4<T>, T, 4>;                                                       \
    template struct TMatrix2x2<T>;                                                                                     \
    template struct TMatrix3x3<T>;                                                                                     \
    template struct TMatrix4x4<T>;

CORVEX_INSTANTIATE_FIXED_MATRICES(float)
CORVEX_INSTANTIATE_FIXED_MATRICES(double)

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

template class TList<CorvexMaths::TMatrix4x4<float>>;
template class TList<CorvexMaths::TMatrix4x4<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

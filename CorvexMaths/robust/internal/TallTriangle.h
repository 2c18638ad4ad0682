#pragma once

#include <CorvexMaths/internal/DoubleDouble.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

/// The triangular factor of a tall matrix, row block by row block.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

using namespace CorvexMaths::Kernels;

/// The factor R of the QR decomposition of a matrix of N columns and any number of rows, by Householder reflections
/// (A. S. Householder, 1958) of what there is so far with the next block beneath it. The error of each column is a few
/// units in the last place of that column's length, so that columns need no scaling.
template <unsigned int N>
class TallTriangle
{
public:
    /// The rows that a block holds; a multiple of the number of partial sums.
    static constexpr unsigned int blockRows = 64;
    /// Row i, column j at [i][j]; zeros below the diagonal.
    double elements[N][N] = {};

    /// A row to fill: element j belongs to Next()[j * blockRows].
    double* Next()
    {
        if (rows == blockRows) Reduce();
        return &block[0][rows++];
    }
    /// Takes in what rows are left.
    void Finish() { Reduce(); }

    /// Writes R rows for each of n points of D coordinates, a column to blockRows numbers, and maybe those of seven
    /// points more. `make(place, row)` sets row[j][k] for as many points as there are lanes in place[0] to
    /// place[D - 1].
    template <unsigned int R, unsigned int D, class Make>
    static void Rows(const double* points, unsigned int n, const Make& make, double* to)
    {
        ForThisProcessor<widestBytes>([=, &make](auto bytes) { Fill<bytes, R, D>(points, n, make, to); });
    }
    /// Takes in R rows for each of `count` points of D coordinates. `look(block, n)` is shown the rows of n points,
    /// column after column, before they are taken in.
    template <unsigned int R, unsigned int D, class Make, class Look>
    void Take(const double* points, unsigned int count, const Make& make, const Look& look)
    {
        constexpr unsigned int most = blockRows / R;
        for (unsigned int first = 0; first < count; first += most) {
            const unsigned int n = std::min(most, count - first);
            Rows<R, D>(points + std::size_t(first) * D, n, make, &block[0][0]);
            rows = n * R;
            look(&block[0][0], n);
            Reduce();
        }
    }
    template <unsigned int R, unsigned int D, class Make>
    void Take(const double* points, unsigned int count, const Make& make)
    {
        Take<R, D>(points, count, make, [](const double*, unsigned int) {});
    }

    /// The length of column j of the matrix, without the rows below `last`.
    double ColumnLength(unsigned int j, unsigned int last = N) const
    {
        double sum = 0.0;
        for (unsigned int i = 0; i < last; ++i) sum += elements[i][j] * elements[i][j];
        return std::sqrt(sum);
    }

private:
    double block[N][blockRows];
    unsigned int rows = 0;

    /// The rows of n points, one after the other; what is beside them in the last lanes is of no account.
    template <unsigned int Bytes, unsigned int R, unsigned int D, class Make>
    CORVEX_ALWAYS_INLINE static void Fill(const double* points, unsigned int n, const Make& make, double* to)
    {
        using Lane = typename Lanes<double, Bytes>::Type;
        constexpr unsigned int count = Lanes<double, Bytes>::count;
        static_assert(blockRows % (count * R) == 0);
        for (unsigned int i = 0; i < n; i += count) {
            double padded[count * D] = {};
            const double* from = points + i * D;
            if (n - i < count) from = std::copy_n(from, (n - i) * D, padded) - (n - i) * D;
            Lane place[D];
            for (unsigned int k = 0; k < D; ++k) SetEvery<D>(place[k], from + k, std::make_index_sequence<count>());
            Lane row[R][N];
            make(place, row);
            for (unsigned int k = 0; k < N; ++k) {
                double* const column = to + k * blockRows + i * R;
                if constexpr (R == 1)
                    Store(column, row[0][k]);
                else
                    for (unsigned int lane = 0; lane < count; ++lane)
                        for (unsigned int j = 0; j < R; ++j) column[lane * R + j] = row[j][k][lane];
            }
        }
    }

    void Reduce()
    {
        if (rows == 0) return;
        for (unsigned int j = 0; j < N; ++j) std::memset(&block[j][rows], 0, (blockRows - rows) * sizeof(double));
        rows = 0;
        ForThisProcessor(
            [this](auto bytes) { this->template ReduceColumns<bytes>(std::make_integer_sequence<unsigned int, N>()); });
    }

    template <unsigned int Bytes, unsigned int... columns>
    CORVEX_ALWAYS_INLINE void ReduceColumns(std::integer_sequence<unsigned int, columns...>)
    {
        double dots[N];
        double shares[N];
        Sweep<Bytes, 0, false>(shares, dots);
        (ReduceColumn<Bytes, columns>(shares, dots), ...);
    }

    /// Column j of the block goes into the diagonal, by a reflection that takes both to (beta, 0). `dots` holds the
    /// products of the column with itself and those after it; afterwards those of the next column.
    template <unsigned int Bytes, unsigned int j>
    CORVEX_ALWAYS_INLINE void ReduceColumn(double (&shares)[N], double (&dots)[N])
    {
        const double below = dots[j];
        const bool isTurned = below > 0.0;
        if (isTurned) {
            // The sign of beta is such that alpha - beta adds.
            const double alpha = elements[j][j];
            const double root = std::sqrt(alpha * alpha + below);
            const double beta = alpha > 0.0 ? -root : root;
            const double top = alpha - beta;
            const double half = -beta * top;
            elements[j][j] = beta;
            for (unsigned int k = j + 1; k < N; ++k) {
                shares[k] = (top * elements[j][k] + dots[k]) / half;
                elements[j][k] -= shares[k] * top;
            }
        }
        if constexpr (j + 1 < N) {
            if (isTurned)
                Sweep<Bytes, j + 1, true>(shares, dots);
            else
                Sweep<Bytes, j + 1, false>(shares, dots);
        }
    }

    /// Takes from column j of the block, and from those after it, their shares of column j - 1 if they have one, and
    /// sums the products of column j with itself and those after it: in four partial sums that run side by side.
    template <unsigned int Bytes, unsigned int j, bool isShared>
    CORVEX_ALWAYS_INLINE void Sweep(const double (&shares)[N], double (&dots)[N])
    {
        using Lane = typename Lanes<double, Bytes>::Type;
        constexpr unsigned int count = Lanes<double, Bytes>::count;
        constexpr unsigned int parts = 4 / count;
        Lane sums[N][parts] = {};
        Lane share[N];
        for (unsigned int k = j; k < N; ++k) Broadcast(share[k], isShared ? shares[k] : 0.0);
        for (unsigned int i = 0; i < blockRows; i += 4) {
            for (unsigned int part = 0; part < parts; ++part) {
                const unsigned int at = i + part * count;
                Lane taken;
                Lane first;
                if (isShared) Load(taken, &block[isShared ? j - 1 : 0][at]);
                for (unsigned int k = j; k < N; ++k) {
                    Lane x;
                    Load(x, &block[k][at]);
                    if (isShared) {
                        x -= share[k] * taken;
                        Store(&block[k][at], x);
                    }
                    if (k == j) first = x;
                    sums[k][part] += first * x;
                }
            }
        }
        for (unsigned int k = j; k < N; ++k) {
            double s[4];
            for (unsigned int part = 0; part < parts; ++part) Store(s + part * count, sums[k][part]);
            dots[k] = (s[0] + s[1]) + (s[2] + s[3]);
        }
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

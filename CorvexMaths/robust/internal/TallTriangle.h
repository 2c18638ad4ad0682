#pragma once

#include <cmath>
#include <cstring>

/// The triangular factor of a tall matrix, row block by row block.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

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

    /// In four partial sums, so that they may run side by side.
    static double Dot(const double* a, const double* b)
    {
        double s[4] = {};
        for (unsigned int i = 0; i < blockRows; i += 4) {
            for (unsigned int k = 0; k < 4; ++k) s[k] += a[i + k] * b[i + k];
        }
        return (s[0] + s[1]) + (s[2] + s[3]);
    }

    void Reduce()
    {
        if (rows == 0) return;
        for (unsigned int j = 0; j < N; ++j) std::memset(&block[j][rows], 0, (blockRows - rows) * sizeof(double));
        rows = 0;
        for (unsigned int j = 0; j < N; ++j) {
            const double* const v = block[j];
            const double below = Dot(v, v);
            if (!(below > 0.0)) continue;
            // The reflection takes (alpha, v) to (beta, 0); the sign of beta is such that alpha - beta adds.
            const double alpha = elements[j][j];
            const double root = std::sqrt(alpha * alpha + below);
            const double beta = alpha > 0.0 ? -root : root;
            const double top = alpha - beta;
            const double half = -beta * top;
            elements[j][j] = beta;
            for (unsigned int k = j + 1; k < N; ++k) {
                const double share = (top * elements[j][k] + Dot(v, block[k])) / half;
                elements[j][k] -= share * top;
                for (unsigned int i = 0; i < blockRows; ++i) block[k][i] -= share * v[i];
            }
        }
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

/// Linear least squares where each equation has few unknowns in a row, by QR decomposition with Givens rotations.

#include <cmath>
#include <cstddef>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// The least-squares solution of equations that are given one by one, in linear time and with room for the triangle
/// alone (W. M. Gentleman, 1973; C. L. Lawson and R. J. Hanson, 1974, chapter 27).
///
/// Each equation has `band` unknowns in a row, and where these wrap round, the last `border` unknowns stand apart: the
/// triangle is a band with a border of full columns on its right. The equations must come with ascending first unknown;
/// then no rotation fills anything outside. A row is: band, border, right sides.
class BandedLeastSquares
{
public:
    BandedLeastSquares(unsigned int unknowns, unsigned int bandWidth, unsigned int borderWidth, unsigned int rightSides)
        : count(unknowns),
          band(bandWidth),
          border(borderWidth),
          width(bandWidth + borderWidth + rightSides),
          triangle(new double[std::size_t(unknowns) * width]())
    {}

    /// The length of a row.
    unsigned int Width() const { return width; }

    /// Prescribes the value of an unknown, to which no equation may refer. The right sides are its values.
    void Fix(unsigned int unknown, const double* rightSides)
    {
        double* const r = Row(unknown);
        r[0] = 1;
        for (unsigned int k = band + border; k < width; ++k) r[k] = rightSides[k - band - border];
    }

    /// Adds an equation whose band starts at an unknown. The row is used up.
    void Add(unsigned int start, double* row)
    {
        const unsigned int core = count - border;
        for (unsigned int k = 0; k < band && start + k < core; ++k)
            if (Rotate(start + k, row, k, 0, band - k)) return;
        for (unsigned int k = 0; k < border; ++k)
            if (Rotate(core + k, row, band + k, band + k, 0)) return;
    }

    /// Writes the unknowns, with all their right sides one after the other. False where the equations leave one open.
    ///
    /// A diagonal element is the part of its column that the columns before it do not share. Rounding makes up to about
    /// 2^-52 of a column times the root of the number of its equations out of nothing; what is not above 2^-40 of it,
    /// enough for millions of equations, is taken for that.
    bool Solve(double* unknowns) const
    {
        const unsigned int core = count - border;
        const unsigned int sides = width - band - border;
        const std::unique_ptr<double[]> squares = SquareColumns();
        for (unsigned int i = count; i-- > 0;) {
            const double* const r = Row(i);
            const unsigned int diagonal = i < core ? 0 : band + (i - core);
            if (!(std::fabs(r[diagonal]) > 0x1p-40 * std::sqrt(squares[i]))) return false;
            for (unsigned int s = 0; s < sides; ++s) {
                double sum = r[band + border + s];
                for (unsigned int k = i + 1; k < core && k < i + band; ++k) sum -= r[k - i] * unknowns[k * sides + s];
                for (unsigned int k = i < core ? 0 : i + 1 - core; k < border; ++k)
                    sum -= r[band + k] * unknowns[(core + k) * sides + s];
                unknowns[i * sides + s] = sum / r[diagonal];
            }
        }
        return true;
    }

private:
    unsigned int count, band, border, width;
    std::unique_ptr<double[]> triangle;

    double* Row(unsigned int i) const { return triangle.get() + std::size_t(i) * width; }

    /// The squared lengths of the columns, which the rotations left as they were.
    std::unique_ptr<double[]> SquareColumns() const
    {
        const unsigned int core = count - border;
        std::unique_ptr<double[]> squares(new double[count]());
        for (unsigned int i = 0; i < count; ++i) {
            const double* const r = Row(i);
            for (unsigned int k = 0; k < band && i + k < core; ++k) squares[i + k] += r[k] * r[k];
            for (unsigned int k = 0; k < border; ++k) squares[core + k] += r[band + k] * r[band + k];
        }
        return squares;
    }

    /// Turns a row against that of the triangle whose diagonal meets its element `at`, so that this becomes 0: `head`
    /// elements from there on, and the border and the right sides; or all from there on if there is no head. True when
    /// the row has found an empty place in the triangle and is done with.
    bool Rotate(unsigned int unknown, double* row, unsigned int at, unsigned int diagonal, unsigned int head)
    {
        const double b = row[at];
        // So small a weight is not felt beside any other, and its square would be lost.
        if (std::fabs(b) < 1e-140) return false;
        double* const r = Row(unknown);
        const double a = r[diagonal];
        const unsigned int rest = head > 0 ? band : diagonal;
        if (a == 0) {
            for (unsigned int k = 0; k < head; ++k) r[k] = row[at + k];
            for (unsigned int k = rest; k < width; ++k) r[k] = row[k];
            return true;
        }
        const double length = std::sqrt(a * a + b * b);
        const double c = a / length;
        const double s = b / length;
        for (unsigned int k = 0; k < head; ++k) Turn(c, s, &r[k], &row[at + k]);
        for (unsigned int k = rest; k < width; ++k) Turn(c, s, &r[k], &row[k]);
        return false;
    }

    static void Turn(double c, double s, double* x, double* y)
    {
        const double turned = c * *x + s * *y;
        *y = c * *y - s * *x;
        *x = turned;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

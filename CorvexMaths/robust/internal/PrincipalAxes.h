#pragma once

#include <CorvexMaths/robust/internal/JacobiRotations.h>
#include <CorvexMaths/robust/internal/LocalPoints.h>
#include <CorvexMaths/robust/internal/TallTriangle.h>

#include <utility>

/// Starting values that need no iteration over the points: principal axes, and linear least squares.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// Solves R x = q for the triangle of [A q], N unknowns. False, and nothing written, where the columns of A are not
/// independent as far as rounding lets that be seen.
template <unsigned int N>
bool SolveTriangle(const TallTriangle<N + 1>& triangle, double (&x)[N])
{
    for (unsigned int j = 0; j < N; ++j) {
        if (!(std::fabs(triangle.elements[j][j]) > 0x1p-47 * triangle.ColumnLength(j, N))) return false;
    }
    for (unsigned int j = N; j-- > 0;) {
        double rest = triangle.elements[j][N];
        for (unsigned int k = j + 1; k < N; ++k) rest -= triangle.elements[j][k] * x[k];
        x[j] = rest / triangle.elements[j][j];
    }
    return true;
}

/// The mean of points and their principal axes, that of the greatest extent first, to twice the digits, where these
/// follow from the second moments: eigenvectors lose what the lesser moments lack beside the greatest.
template <unsigned int D>
class Moments
{
public:
    DoubleDouble mean[D];
    /// Unit vectors, one a row.
    DoubleDouble axes[D][D];
    /// The moments about them.
    DoubleDouble values[D];

    explicit Moments(const LocalPoints<D>& points)
    {
        ForThisProcessor<widestBytes>([this, source = points[0], count = points.GetCount()](auto bytes) {
            this->template SumBy<bytes>(source, count);
        });
        const DoubleDouble count(points.GetCount());
        for (unsigned int i = 0; i < D; ++i) mean[i] = Total(i) / count;
        DoubleDouble matrix[D][D];
        for (unsigned int i = 0, sum = D; i < D; ++i) {
            for (unsigned int k = i; k < D; ++k, ++sum) {
                matrix[i][k] = Total(sum) - count * mean[i] * mean[k];
                matrix[k][i] = matrix[i][k];
            }
        }
        DoubleDouble vectors[D][D];
        Diagonalise(matrix, vectors);
        unsigned int order[D];
        for (unsigned int i = 0; i < D; ++i) order[i] = i;
        for (unsigned int i = 0; i < D; ++i) {
            for (unsigned int k = i + 1; k < D; ++k) {
                if (matrix[order[i]][order[i]] < matrix[order[k]][order[k]]) std::swap(order[i], order[k]);
            }
            values[i] = matrix[order[i]][order[i]];
            for (unsigned int k = 0; k < D; ++k) axes[i][k] = vectors[k][order[i]];
        }
    }

    /// Whether two axes are told apart so well that they lack no digit of `double`: what rounding leaves of a moment is
    /// about 2^-98 of the greatest one, and axes are off by that over the difference of theirs.
    bool Separates(unsigned int longer, unsigned int shorter) const
    {
        return (values[longer] - values[shorter]).high > 0x1p-36 * values[0].high;
    }

private:
    /// Each sum is of eight parts, whatever the width of registers.
    static constexpr unsigned int parts = widestBytes / sizeof(double);
    static constexpr unsigned int sums = D + D * (D + 1) / 2;
    double high[sums][parts] = {};
    double low[sums][parts] = {};

    /// The components, then the products of each with itself and those after it.
    template <unsigned int Bytes>
    CORVEX_ALWAYS_INLINE void SumBy(const double* source, unsigned int count)
    {
        const unsigned int whole = count - count % parts;
        for (unsigned int i = 0; i < whole; i += Lanes<double, Bytes>::count)
            AddAt<Bytes>(i % parts, source + std::size_t(i) * D);
        for (unsigned int i = whole; i < count; ++i) AddAt<sizeof(double)>(i % parts, source + std::size_t(i) * D);
    }

    template <unsigned int Bytes>
    CORVEX_ALWAYS_INLINE void AddAt(unsigned int part, const double* points)
    {
        using Lane = typename Lanes<double, Bytes>::Type;
        Lane x[D];
        for (unsigned int k = 0; k < D; ++k)
            SetEvery<D>(x[k], points + k, std::make_index_sequence<Lanes<double, Bytes>::count>());
        for (unsigned int i = 0, sum = D; i < D; ++i) {
            AddTo(&high[i][part], &low[i][part], Twofold<Lane>(x[i]));
            for (unsigned int k = i; k < D; ++k, ++sum)
                AddTo(&high[sum][part], &low[sum][part], Twofold<Lane>::Product(x[i], x[k]));
        }
    }

    DoubleDouble Total(unsigned int sum) const
    {
        DoubleDouble total;
        for (unsigned int k = 0; k < parts; ++k) total += DoubleDouble(high[sum][k], low[sum][k]);
        return total;
    }
};

/// The mean of points and their principal axes, that of the greatest extent first: the right singular vectors of the
/// centred points, by QR and one-sided rotations of the triangle (M. R. Hestenes, 1958).
template <unsigned int D>
class PrincipalAxes
{
public:
    std::array<DoubleDouble, D> mean;
    /// Unit vectors, one a row.
    double axes[D][D] = {};
    /// The singular values.
    double lengths[D];

    explicit PrincipalAxes(const LocalPoints<D>& points) : mean(points.Mean())
    {
        TallTriangle<D> triangle;
        triangle.template Take<1, D>(
            points[0], points.GetCount(), [&](const auto* place, auto& row) __attribute__((always_inline)) {
                using Real = Twofold<std::decay_t<decltype(*place)>>;
                for (unsigned int k = 0; k < D; ++k) row[0][k] = (Real(place[k]) - As<Real>(mean[k])).high;
            });
        for (unsigned int k = 0; k < D; ++k) axes[k][k] = 1.0;
        for (unsigned int sweep = 0; sweep < 60 && Sweep(triangle.elements); ++sweep) {
        }
        for (unsigned int k = 0; k < D; ++k) lengths[k] = triangle.ColumnLength(k);
        for (unsigned int i = 0; i < D; ++i) {
            for (unsigned int k = i + 1; k < D; ++k) {
                if (!(lengths[k] > lengths[i])) continue;
                std::swap(lengths[k], lengths[i]);
                std::swap(axes[k], axes[i]);
            }
        }
    }

    /// Whether two axes are told apart by their lengths: by more than the rounding of the coordinates as given can move
    /// singular values (H. Weyl).
    bool Separates(unsigned int longer, unsigned int shorter, const LocalPoints<D>& points) const
    {
        const double rounding = std::max(points.rounding, 0x1p-52);
        return lengths[longer] - lengths[shorter] > 2.0 * rounding * std::sqrt(static_cast<double>(points.GetCount()));
    }

private:
    /// Turns each pair of columns until they are at right angles; false when all were.
    bool Sweep(double (&columns)[D][D])
    {
        bool turned = false;
        for (unsigned int a = 0; a < D; ++a) {
            for (unsigned int b = a + 1; b < D; ++b) {
                double aa = 0.0;
                double bb = 0.0;
                double ab = 0.0;
                for (unsigned int i = 0; i < D; ++i) {
                    aa += columns[i][a] * columns[i][a];
                    bb += columns[i][b] * columns[i][b];
                    ab += columns[i][a] * columns[i][b];
                }
                if (!(std::fabs(ab) > 0x1p-52 * std::sqrt(aa) * std::sqrt(bb))) continue;
                turned = true;
                const double ratio = (bb - aa) / (2.0 * ab);
                const double tangent = (ratio < 0.0 ? -1.0 : 1.0) / (std::fabs(ratio) + std::sqrt(1.0 + ratio * ratio));
                const double cosine = 1.0 / std::sqrt(1.0 + tangent * tangent);
                const double sine = tangent * cosine;
                for (unsigned int i = 0; i < D; ++i) {
                    const double x = columns[i][a];
                    columns[i][a] = cosine * x - sine * columns[i][b];
                    columns[i][b] = sine * x + cosine * columns[i][b];
                    const double y = axes[a][i];
                    axes[a][i] = cosine * y - sine * axes[b][i];
                    axes[b][i] = sine * y + cosine * axes[b][i];
                }
            }
        }
        return turned;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

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

#include <CorvexMaths/robust/Alignment.h>

#include <CorvexMaths/robust/internal/JacobiRotations.h>
#include <CorvexMaths/robust/internal/PrincipalAxes.h>

#include <utility>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::DoubleDouble;
using Kernels::LocalPoints;
using Kernels::Rounded;

namespace
{

/// The pairs of an alignment, each set in coordinates of its own.
struct Pairs
{
    const LocalPoints<3>& measured;
    const LocalPoints<3>& nominal;
    const double* weights; ///< Null where all are 1.

    double Weight(unsigned int i) const { return weights == nullptr ? 1.0 : weights[i]; }
};

/// The sum of a term of each pair for N results at once: in partial sums of some hundred terms, whose sum is to twice
/// the digits, so that rounding does not grow with the number of pairs; with `Real` of twice the digits all of it is.
template <class Real, unsigned int N, class Term>
std::array<DoubleDouble, N> SumPairs(unsigned int count, Term term)
{
    constexpr unsigned int run = 128;
    std::array<DoubleDouble, N> total;
    for (unsigned int first = 0; first < count; first += run) {
        Real part[N] = {};
        for (unsigned int i = first; i < std::min(count, first + run); ++i) term(i, part);
        for (unsigned int k = 0; k < N; ++k) total[k] += part[k];
    }
    return total;
}

/// The rotation of an alignment, its sums of terms in `Real`. All that comes of the sums is to twice the digits of
/// double: rounded, they would leave a thin part as many times more uncertain as the greatest eigenvalue exceeds its
/// gap to the next.
template <class Real>
class Turn
{
public:
    Real rotation[3][3];
    /// The eigenvalues, the greatest first. With s1, s2, s3 the singular values of the cross-covariance, the last one
    /// negative where the best orthogonal matrix is a reflection, they are s1 + s2 + s3, s1 - s2 - s3, s2 - s1 - s3 and
    /// s3 - s1 - s2, each a sum of weights times what a pair gives.
    DoubleDouble values[4];

    explicit Turn(const Pairs& pairs)
    {
        const unsigned int count = pairs.measured.GetCount();
        const auto means = SumPairs<Real, 7>(count, [&](unsigned int i, Real(&part)[7]) {
            const Real weight = pairs.Weight(i);
            for (unsigned int k = 0; k < 3; ++k) {
                part[k] = part[k] + weight * Real(pairs.measured[i][k]);
                part[3 + k] = part[3 + k] + weight * Real(pairs.nominal[i][k]);
            }
            part[6] = part[6] + weight;
        });
        for (unsigned int k = 0; k < 3; ++k) {
            measured[k] = means[k] / means[6];
            nominal[k] = means[3 + k] / means[6];
        }
        const auto sums = SumPairs<Real, 9>(count, [&](unsigned int i, Real(&part)[9]) {
            const Real weight = pairs.Weight(i);
            Real to[3];
            for (unsigned int k = 0; k < 3; ++k) to[k] = Real(pairs.nominal[i][k]) - static_cast<Real>(nominal[k]);
            for (unsigned int j = 0; j < 3; ++j) {
                const Real from = weight * (Real(pairs.measured[i][j]) - static_cast<Real>(measured[j]));
                for (unsigned int k = 0; k < 3; ++k) part[3 * j + k] = part[3 * j + k] + from * to[k];
            }
        });
        DoubleDouble s[3][3];
        for (unsigned int k = 0; k < 9; ++k) s[k / 3][k % 3] = sums[k];
        DoubleDouble matrix[4][4] = {
            {s[0][0] + s[1][1] + s[2][2], s[1][2] - s[2][1], s[2][0] - s[0][2], s[0][1] - s[1][0]},
            {s[1][2] - s[2][1], s[0][0] - s[1][1] - s[2][2], s[0][1] + s[1][0], s[2][0] + s[0][2]},
            {s[2][0] - s[0][2], s[0][1] + s[1][0], s[1][1] - s[0][0] - s[2][2], s[1][2] + s[2][1]},
            {s[0][1] - s[1][0], s[2][0] + s[0][2], s[1][2] + s[2][1], s[2][2] - s[0][0] - s[1][1]}};
        DoubleDouble vectors[4][4];
        Kernels::Diagonalise(matrix, vectors);
        SetRotation(vectors, matrix);
    }

    /// What is left of a pair: its squared distance, in the scale of the nominal points.
    double Rest(const Pairs& pairs, unsigned int i, double scale) const
    {
        double sum = 0.0;
        Real from[3];
        for (unsigned int k = 0; k < 3; ++k) from[k] = Real(pairs.measured[i][k]) - static_cast<Real>(measured[k]);
        for (unsigned int j = 0; j < 3; ++j) {
            Real moved = rotation[j][0] * from[0] + rotation[j][1] * from[1] + rotation[j][2] * from[2];
            moved = moved * Real(scale) - (Real(pairs.nominal[i][j]) - static_cast<Real>(nominal[j]));
            sum += Rounded(moved) * Rounded(moved);
        }
        return sum;
    }

    DoubleDouble measured[3]; ///< The centroid of the measured points.
    DoubleDouble nominal[3];  ///< That of the nominal ones.

private:
    /// The rotation of the unit quaternion that belongs to the greatest eigenvalue.
    void SetRotation(const DoubleDouble (&vectors)[4][4], const DoubleDouble (&matrix)[4][4])
    {
        unsigned int order[4] = {0, 1, 2, 3};
        for (unsigned int i = 0; i < 4; ++i) {
            for (unsigned int k = i + 1; k < 4; ++k) {
                if (matrix[order[i]][order[i]] < matrix[order[k]][order[k]]) {
                    std::swap(order[i], order[k]);
                }
            }
            values[i] = matrix[order[i]][order[i]];
        }
        DoubleDouble q[4];
        for (unsigned int k = 0; k < 4; ++k) q[k] = vectors[k][order[0]];
        const DoubleDouble square = q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3];
        const DoubleDouble two = DoubleDouble(2.0) / square;
        const auto diagonal = [&](unsigned int a, unsigned int b) {
            return DoubleDouble(1.0) - two * (q[a] * q[a] + q[b] * q[b]);
        };
        const auto sum = [&](unsigned int a, unsigned int b, unsigned int c) {
            return two * (q[a] * q[b] + q[0] * q[c]);
        };
        const auto difference = [&](unsigned int a, unsigned int b, unsigned int c) {
            return two * (q[a] * q[b] - q[0] * q[c]);
        };
        const DoubleDouble elements[3][3] = {{diagonal(2, 3), difference(1, 2, 3), sum(1, 3, 2)},
                                             {sum(1, 2, 3), diagonal(1, 3), difference(2, 3, 1)},
                                             {difference(1, 3, 2), sum(2, 3, 1), diagonal(1, 2)}};
        for (unsigned int k = 0; k < 9; ++k) rotation[k / 3][k % 3] = static_cast<Real>(elements[k / 3][k % 3]);
    }
};

/// Whether the points spread across their longest extent by more than the rounding of their coordinates.
bool Spreads(const LocalPoints<3>& points)
{
    const Kernels::PrincipalAxes<3> principal(points);
    return principal.lengths[1] > 4.0 * points.rounding * std::sqrt(static_cast<double>(points.GetCount()));
}

/// Whether the eigenvalues tell one rotation from all others. A turn about the axis of s1 changes the sum by s2 + s3,
/// half the gap between the first two. Rounding by u of points that reach c across that axis, c^2 being s2 for each
/// unit of weight, moves that by at most 2 u c + u^2.
template <class Real>
bool IsDetermined(const Turn<Real>& turn, double rounding, double weight)
{
    const double gap = 0.5 * Rounded(turn.values[0] - turn.values[1]) / weight;
    const double across = std::sqrt(std::max(0.0, 0.5 * Rounded(turn.values[0] + turn.values[2]) / weight));
    return gap > 4.0 * (2.0 * rounding * across + rounding * rounding);
}

template <class T, class Real>
void Tell(const Turn<Real>& turn, const Pairs& pairs, double weight, Alignment<T>* answer)
{
    const LocalPoints<3>& measured = pairs.measured;
    const LocalPoints<3>& nominal = pairs.nominal;
    for (unsigned int k = 0; k < 9; ++k) {
        answer->rotation.elements[k] = static_cast<T>(Rounded(turn.rotation[k / 3][k % 3]));
    }
    // The centroids meet under the rotation as it was rounded.
    const int exponent = std::max(measured.GetOuterExponent(), nominal.GetOuterExponent());
    for (unsigned int j = 0; j < 3; ++j) {
        DoubleDouble move = nominal.ToScaledPlace(j, turn.nominal[j], exponent);
        for (unsigned int k = 0; k < 3; ++k) {
            const DoubleDouble element(static_cast<double>(answer->rotation.elements[3 * j + k]));
            move = move - element * measured.ToScaledPlace(k, turn.measured[k], exponent);
        }
        answer->translation[j] = static_cast<T>(std::ldexp(move.high, exponent));
    }
    const double scale = std::ldexp(1.0, measured.GetExponent() - nominal.GetExponent());
    double greatest = 0.0;
    const auto squares = SumPairs<double, 1>(measured.GetCount(), [&](unsigned int i, double(&part)[1]) {
        const double rest = turn.Rest(pairs, i, scale);
        greatest = std::max(greatest, rest);
        part[0] += pairs.Weight(i) * rest;
    });
    answer->rms = static_cast<T>(nominal.ToLength(std::sqrt(squares[0].high / weight)));
    answer->largest = static_cast<T>(nominal.ToLength(std::sqrt(greatest)));
    answer->status = Status::Done;
}

template <class T>
void Align(const TPointSet<T, TVector3>& from, const TPointSet<T, TVector3>& to, const double* weights,
           Alignment<T>* answer)
{
    const LocalPoints<3> measured(from, 3);
    const LocalPoints<3> nominal(to, 3);
    answer->status = measured.status != Status::Done ? measured.status : nominal.status;
    if (answer->status != Status::Done) return;
    const Pairs pairs{measured, nominal, weights};
    double weight = 0.0;
    for (unsigned int i = 0; i < measured.GetCount(); ++i) weight += pairs.Weight(i);
    const double rounding = std::max(measured.rounding, nominal.rounding);

    answer->status = Status::Degenerate;
    Alignment<T> told = *answer;
    // Double serves where there are many points, so that its rounding is lost among them, and turns about every axis
    // matter about as much. Elsewhere the lesser eigenvalues, which are squares of widths, have lost digits.
    const bool many = measured.GetCount() > 1000;
    bool serves = false;
    if (many) {
        const Turn<double> turn(pairs);
        serves = Rounded(turn.values[0] - turn.values[1]) > 0.05 * Rounded(turn.values[0]) && rounding < 1e-4;
        if (serves) Tell(turn, pairs, weight, &told);
    }
    if (!serves) {
        const Turn<DoubleDouble> turn(pairs);
        if (!Spreads(measured) || !Spreads(nominal) || !IsDetermined(turn, rounding, weight)) return;
        Tell(turn, pairs, weight, &told);
    }
    for (unsigned int k = 0; k < 3; ++k) {
        if (!std::isfinite(told.translation[k])) return;
    }
    if (std::isfinite(told.rms) && std::isfinite(told.largest)) *answer = told;
}

} // namespace

template <class T>
Alignment<T>::Alignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& nominal)
{
    if (measured.GetCount() != nominal.GetCount()) {
        status = Status::Degenerate;
        return;
    }
    Align(measured, nominal, nullptr, this);
}

template <class T>
Alignment<T>::Alignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& nominal,
                        const TList<T>& weights)
{
    const unsigned int count = measured.GetCount();
    status = Status::Degenerate;
    if (nominal.GetCount() != count || weights.GetCount() != count) return;

    double greatest = 0.0;
    for (unsigned int i = 0; i < count; ++i) {
        const double weight = static_cast<double>(weights[i]);
        if (!std::isfinite(weight)) {
            status = Status::NotFinite;
            return;
        }
        if (weight < 0.0) return;
        greatest = std::max(greatest, weight);
    }
    // Weights up to 1, so that no sum overflows; a pair whose weight vanishes beside the greatest has no say.
    int exponent = 0;
    std::frexp(greatest, &exponent);
    TPointSet<T, TVector3> from;
    TPointSet<T, TVector3> to;
    const std::unique_ptr<double[]> shares = std::make_unique<double[]>(count);
    unsigned int kept = 0;
    for (unsigned int i = 0; i < count; ++i) {
        const double share = std::ldexp(static_cast<double>(weights[i]), -exponent);
        if (!(share > 0.0)) continue;
        from.Add(measured[i]);
        to.Add(nominal[i]);
        shares[kept++] = share;
    }
    Align(from, to, shares.get(), this);
}

template class Alignment<float>;
template class Alignment<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

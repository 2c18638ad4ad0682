#pragma once

#include <CorvexMaths/robust/internal/DistanceFit.h>
#include <CorvexMaths/robust/internal/Features.h>
#include <CorvexMaths/robust/internal/PrincipalAxes.h>

#include <memory>
#include <utility>

/// Where the fits start.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// A frame whose axes are principal ones in a given order.
template <unsigned int D, class Axes>
Placement<D> PlaceAlong(const Axes& principal, const unsigned int (&order)[D])
{
    std::decay_t<decltype(principal.axes[0][0])> axes[D][D];
    for (unsigned int i = 0; i < D; ++i) std::copy(principal.axes[order[i]], principal.axes[order[i]] + D, axes[i]);
    return {&principal.mean[0], axes};
}

/// The same of points of which two axes must be told apart; false where they are not. To twice the digits wherever the
/// moments have them, which spares a step.
template <unsigned int D>
bool PlaceAlong(const LocalPoints<D>& points, const unsigned int (&order)[D], unsigned int longer, unsigned int shorter,
                Placement<D>* place)
{
    const Moments<D> moments(points);
    if (moments.Separates(longer, shorter)) {
        *place = PlaceAlong(moments, order);
        return true;
    }
    const PrincipalAxes<D> principal(points);
    *place = PlaceAlong(principal, order);
    return principal.Separates(longer, shorter, points);
}

/// The circle or sphere of least |p|^2 - 2 c.p + |c|^2 - r^2 in squares, which is linear in c and |c|^2 - r^2 (I. Kasa,
/// 1976), about the mean of the points. False where the points lie in a line or a plane, as far as rounding lets that
/// be seen. `place(point, p)` sets the D coordinates of a point, or of as many as there are lanes.
template <unsigned int D, class Points, class Place>
bool AlgebraicRound(const Points& points, Place place, double (&centre)[D], double* radius)
{
    TallTriangle<D + 2> triangle;
    triangle.template Take<1, Points::dimension>(
        points[0], points.GetCount(), [&](const auto* point, auto& row) __attribute__((always_inline)) {
            std::decay_t<decltype(*point)> p[D];
            place(point, p);
            Spread(row[0][0], 1.0);
            row[0][D + 1] = p[0] * p[0];
            row[0][1] = 2.0 * p[0];
            for (unsigned int k = 1; k < D; ++k) {
                row[0][1 + k] = 2.0 * p[k];
                row[0][D + 1] += p[k] * p[k];
            }
        });
    double x[D + 1];
    if (!SolveTriangle(triangle, x)) return false;
    double square = x[0];
    for (unsigned int k = 0; k < D; ++k) {
        centre[k] = x[k + 1];
        square += x[k + 1] * x[k + 1];
    }
    *radius = std::sqrt(square);
    return *radius > 0.0;
}

template <unsigned int D>
bool Start(const LocalPoints<D>& points, Flat<D>* flat)
{
    unsigned int order[D];
    for (unsigned int k = 0; k < D; ++k) order[k] = k;
    return PlaceAlong(points, order, D - 2, D - 1, &flat->place);
}

inline bool Start(const LocalPoints<3>& points, Straight* straight)
{
    return PlaceAlong(points, {2, 1, 0}, 0, 1, &straight->place);
}

template <unsigned int D>
bool Start(const LocalPoints<D>& points, Round<D>* round)
{
    const auto& mean = points.Mean();
    double centre[D];
    double radius;
    const auto place = [&](const auto* point, auto* p) __attribute__((always_inline))
    {
        for (unsigned int k = 0; k < D; ++k) p[k] = point[k] - mean[k].high;
    };
    if (!AlgebraicRound<D>(points, place, centre, &radius)) return false;
    for (unsigned int k = 0; k < D; ++k) round->centre[k] = mean[k] + DoubleDouble(centre[k]);
    round->radius = radius;
    return true;
}

/// The circle about a given one of the principal axes: that of the points' projection along it.
inline bool StartAcross(const LocalPoints<3>& points, const PrincipalAxes<3>& principal, unsigned int axis, Ring* ring)
{
    ring->place = PlaceAlong<3>(principal, {axis == 0 ? 1u : 0u, axis == 2 ? 1u : 2u, axis});
    double centre[2];
    double radius;
    const auto place = [&frame = ring->place](const auto* point, auto* p) __attribute__((always_inline))
    {
        for (unsigned int k = 0; k < 2; ++k) frame.SetAlong(p[k], k, point);
    };
    if (!AlgebraicRound<2>(points, place, centre, &radius)) return false;
    for (unsigned int k = 0; k < 2; ++k) ring->place.Shift(k, centre[k]);
    ring->radius = radius;
    return true;
}

/// The best of the circles about the three principal axes, followed some way on some of the points: on a short arc with
/// form errors the normal may be any axis but the first, or none.
inline bool Start(const LocalPoints<3>& points, Ring* ring)
{
    const PrincipalAxes<3> principal(points);
    const LocalPoints<3> sample = points.Sample((points.GetCount() + 199) / 200);
    double least = std::numeric_limits<double>::infinity();
    for (unsigned int axis = 3; axis-- > 0;) {
        Ring start;
        if (!StartAcross(sample, principal, axis, &start)) continue;
        DistanceFit<Arc> fit(sample, Arc(start, principal.mean.data()));
        fit.Approach(60);
        if (!(fit.squares < least) || !(fit.feature.curvature > 0.0)) continue;
        least = fit.squares;
        *ring = fit.feature.ToRing();
    }
    return std::isfinite(least);
}

/// The cylinder or cone about a given direction. With the cone's slope t, x^2 + y^2 = (R + t z)^2 about its axis, which
/// is linear in the place of the axis, 2 R t, t^2 and a constant; a cylinder has no terms in z.
template <bool isCone>
bool StartAlong(const LocalPoints<3>& points, const DoubleDouble* mean, const double (&axes)[3][3],
                Tapered<isCone>* tapered)
{
    Placement<3> place(mean, axes);
    double centre[2];
    double radius;
    double slope = 0.0;
    if constexpr (isCone) {
        TallTriangle<6> triangle;
        triangle.template Take<1, 3>(
            points[0], points.GetCount(), [&](const auto* point, auto& row) __attribute__((always_inline)) {
                std::decay_t<decltype(*point)> p[3];
                for (unsigned int k = 0; k < 3; ++k) place.SetAlong(p[k], k, point);
                Spread(row[0][0], 1.0);
                row[0][1] = 2.0 * p[0];
                row[0][2] = 2.0 * p[1];
                row[0][3] = p[2];
                row[0][4] = p[2] * p[2];
                row[0][5] = p[0] * p[0] + p[1] * p[1];
            });
        double x[5];
        if (!SolveTriangle(triangle, x)) return false;
        centre[0] = x[1];
        centre[1] = x[2];
        radius = std::sqrt(x[0] + x[1] * x[1] + x[2] * x[2]);
        slope = x[3] / (2.0 * radius);
    } else {
        const auto flat = [&](const auto* point, auto* p) __attribute__((always_inline))
        {
            for (unsigned int k = 0; k < 2; ++k) place.SetAlong(p[k], k, point);
        };
        if (!AlgebraicRound<2>(points, flat, centre, &radius)) return false;
    }
    if (!(radius > 0.0) || !(std::fabs(slope) < 1e6)) return false;
    tapered->place = place;
    tapered->place.Shift(0, centre[0]);
    tapered->place.Shift(1, centre[1]);
    tapered->radius = radius;
    tapered->cosine = 1.0;
    tapered->sine = 0.0;
    if constexpr (isCone) tapered->Open(slope);
    return true;
}

inline void Normalise(double (&v)[3])
{
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    for (double& x : v) x /= length;
}

/// Unit vectors at right angles, the last one along the direction.
inline void FrameAbout(const double (&direction)[3], double (&axes)[3][3])
{
    // The axis of the least component is the furthest from the direction.
    unsigned int least = 0;
    for (unsigned int k = 1; k < 3; ++k) {
        if (std::fabs(direction[k]) < std::fabs(direction[least])) least = k;
    }
    const auto cross = [](const double(&a)[3], const double(&b)[3], double(&out)[3]) {
        for (unsigned int k = 0; k < 3; ++k) {
            out[k] = a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3];
        }
    };
    double unit[3] = {};
    unit[least] = 1.0;
    std::copy(direction, direction + 3, axes[2]);
    Normalise(axes[2]);
    cross(unit, axes[2], axes[0]);
    Normalise(axes[0]);
    cross(axes[2], axes[0], axes[1]);
}

/// Turns the direction of a start to where the best cylinder or cone about it fits best: Gauss-Newton steps on the two
/// tilts alone, by differences, in which place, radius and angle follow each tilt. On a small arc these hang together
/// so closely that steps in all of them at once would have to follow a bent and narrow valley.
template <bool isCone>
class DirectionSearch
{
public:
    Tapered<isCone> feature;
    /// The sum of the squared distances; infinite where there is no such feature.
    double squares = std::numeric_limits<double>::infinity();

    DirectionSearch(const LocalPoints<3>& sample, const DoubleDouble* centroid, const double (&direction)[3])
        : points(sample), mean(centroid), distances(Buffer()), ahead(Buffer())
    {
        FrameAbout(direction, axes);
        squares = Try(axes, &feature, &distances[0]);
    }

    void Refine()
    {
        constexpr double difference = 1e-4;
        for (unsigned int pass = 0; pass < 20 && squares > 0.0; ++pass) {
            std::unique_ptr<double[]> columns[2];
            for (unsigned int k = 0; k < 2; ++k) {
                double turned[3][3];
                Turn(k == 0 ? difference : 0.0, k == 1 ? difference : 0.0, turned);
                Tapered<isCone> other;
                if (!std::isfinite(Try(turned, &other, &ahead[0]))) return;
                columns[k] = std::exchange(ahead, Buffer());
            }
            TallTriangle<3> triangle;
            for (std::size_t i = 0; i < points.GetCount(); ++i) {
                double* const row = triangle.Next();
                for (unsigned int k = 0; k < 2; ++k) {
                    row[k * TallTriangle<3>::blockRows] = (columns[k][i] - distances[i]) / difference;
                }
                row[2 * TallTriangle<3>::blockRows] = -distances[i];
            }
            triangle.Finish();
            double step[2];
            if (!SolveTriangle(triangle, step) || !Advance(step)) return;
        }
    }

private:
    const LocalPoints<3>& points;
    const DoubleDouble* mean;
    double axes[3][3];
    std::unique_ptr<double[]> distances;
    std::unique_ptr<double[]> ahead;

    /// Room for a number of each point, and for what lanes write beyond the last one.
    std::unique_ptr<double[]> Buffer() const
    {
        constexpr std::size_t lanes = widestBytes / sizeof(double);
        return std::make_unique<double[]>(points.GetCount() + lanes - 1);
    }

    double Try(const double (&frame)[3][3], Tapered<isCone>* found, double* out) const
    {
        if (!StartAlong(points, mean, frame, found)) return std::numeric_limits<double>::infinity();
        TallTriangle<1>::Rows<1, 3>(
            points[0], points.GetCount(),
            [feature = *found](const auto* point, auto& distance) __attribute__((always_inline)) {
                using Real = std::decay_t<decltype(*point)>;
                Real row[1][Tapered<isCone>::parameters + 1];
                feature.template Row<Real>(point, row);
                distance[0][0] = row[0][Tapered<isCone>::parameters];
            },
            out);
        double sum = 0.0;
        for (unsigned int i = 0; i < points.GetCount(); ++i) sum += out[i] * out[i];
        return sum;
    }

    void Turn(double a, double b, double (&turned)[3][3]) const
    {
        double direction[3];
        for (unsigned int k = 0; k < 3; ++k) direction[k] = axes[2][k] + a * axes[0][k] + b * axes[1][k];
        FrameAbout(direction, turned);
    }

    /// Takes as much of a step as lowers the sum by a thousandth at least; false where none does.
    bool Advance(const double (&step)[2])
    {
        for (double part = 1.0; part > 1e-3; part *= 0.5) {
            double turned[3][3];
            Turn(part * step[0], part * step[1], turned);
            Tapered<isCone> found;
            const double sum = Try(turned, &found, &ahead[0]);
            if (!(sum < 0.999 * squares)) continue;
            std::copy(&turned[0][0], &turned[0][0] + 9, &axes[0][0]);
            feature = found;
            squares = sum;
            distances.swap(ahead);
            return true;
        }
        return false;
    }
};

/// The best of several starts: directions on a net over half a sphere, in the frame of the principal axes and these
/// among them, are tried with the algebraic fit on some of the points. No single choice leads to the least minimum from
/// everywhere, so the best ones, well apart, are followed some way, and the one that came lowest is taken.
template <bool isCone>
bool Start(const LocalPoints<3>& points, Tapered<isCone>* tapered)
{
    using Fit = DistanceFit<Tapered<isCone>>;
    struct Candidate
    {
        double squares;
        double direction[3];
    };
    const PrincipalAxes<3> principal(points);
    const DoubleDouble* const mean = principal.mean.data();
    const LocalPoints<3> sample = points.Sample((points.GetCount() + 199) / 200);

    constexpr int half = 4;
    constexpr int directions =
        ((2 * half + 1) * (2 * half + 1) * (2 * half + 1) - (2 * half - 1) * (2 * half - 1) * (2 * half - 1)) / 2;
    Candidate candidates[directions];
    int count = 0;
    for (int a = -half; a <= half; ++a) {
        for (int b = -half; b <= half; ++b) {
            for (int c = 0; c <= half; ++c) {
                // On the surface of the cube, and one of two opposite directions.
                if (std::max({std::abs(a), std::abs(b), c}) != half) continue;
                if (c == 0 && (b < 0 || (b == 0 && a < 0))) continue;
                Candidate& candidate = candidates[count];
                for (unsigned int k = 0; k < 3; ++k) {
                    candidate.direction[k] =
                        a * principal.axes[0][k] + b * principal.axes[1][k] + c * principal.axes[2][k];
                }
                Normalise(candidate.direction);
                candidate.squares = DirectionSearch<isCone>(sample, mean, candidate.direction).squares;
                if (std::isfinite(candidate.squares)) ++count;
            }
        }
    }
    std::stable_sort(candidates, candidates + count,
                     [](const Candidate& a, const Candidate& b) { return a.squares < b.squares; });

    constexpr int most = 8;
    const Candidate* followed[most];
    int taken = 0;
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < count && taken < most; ++i) {
        const Candidate& candidate = candidates[i];
        bool apart = true;
        for (int j = 0; j < taken; ++j) {
            double cosine = 0.0;
            for (unsigned int k = 0; k < 3; ++k) cosine += candidate.direction[k] * followed[j]->direction[k];
            apart = apart && std::fabs(cosine) < 0.94;
        }
        if (!apart) continue;
        followed[taken++] = &candidate;
        DirectionSearch<isCone> search(sample, mean, candidate.direction);
        search.Refine();
        Fit fit(sample, search.feature);
        fit.Approach(60);
        if (fit.squares < least) {
            least = fit.squares;
            *tapered = fit.feature;
        }
    }
    return taken > 0;
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

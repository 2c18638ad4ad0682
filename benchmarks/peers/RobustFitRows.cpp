// The fits and the alignment of the robust family against the same by Eigen: Gauss-Newton steps on its Householder QR,
// singular vectors, and its own alignment. The robust ones compute their last steps to twice the digits.

#include "PeersAlgebra.h"
#include "Rows.h"

#include <CorvexMaths/robust/Robust.h>

#include <cmath>
#include <memory>
#include <random>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using namespace Peers;

constexpr int pointCount = 100000;

/// Points on a flat and oblong part, or on a sphere, with form errors of a thousandth.
Array<double> MakePart(bool isSphere)
{
    std::mt19937 random(6);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Array<double> points;
    for (int i = 0; i < pointCount; ++i) {
        const double x = uniform(random), y = uniform(random), z = uniform(random), form = 1e-3 * uniform(random);
        if (isSphere) {
            const double scale = (10 + form) / std::sqrt(x * x + y * y + z * z);
            points.insert(points.end(), {scale * x + 1, scale * y + 2, scale * z + 3});
        } else {
            points.insert(points.end(), {8 * x + 0.6 * y + 1, 2 * y - 6 * x + 2, form + 0.1 * y + 3});
        }
    }
    return points;
}

/// Points all around an axis through (1, 2, 3), with form errors of a thousandth: on a ring, a cylinder or a cone of
/// radius 10 there and slope `widening`, up to `reach` to either side of that place.
Array<double> MakeTurned(double reach, double widening)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Array<double> points;
    for (int i = 0; i < pointCount; ++i) {
        const double angle = 3.14159265358979 * uniform(random), form = 1e-3 * uniform(random);
        const double z = reach > 0 ? reach * uniform(random) : 1e-3 * uniform(random);
        const double r = 10 + widening * z + form, x = r * std::cos(angle), y = r * std::sin(angle);
        // The axis points to (0.48, 0.6, 0.64).
        points.insert(points.end(),
                      {0.8 * x - 0.36 * y + 0.48 * z + 1, 0.8 * y + 0.6 * z + 2, -0.6 * x - 0.48 * y + 0.64 * z + 3});
    }
    return points;
}

/// What the peer starts from: a little beside the place.
Array<double> BesideTurned(double slope)
{
    Array<double> about{1.02, 1.99, 3.01, 0.47, 0.61, 0.65, 10.05};
    if (slope > 0) about.push_back(std::atan(slope) + 0.02);
    return about;
}

std::shared_ptr<TPointSet<double, TVector3>> MakeSet(const Array<double>& scalars)
{
    const auto points = std::make_shared<TPointSet<double, TVector3>>();
    for (std::size_t i = 0; i < scalars.size(); i += 3)
        points->Add(TVector3<double>(scalars[i], scalars[i + 1], scalars[i + 2]));
    return points;
}

/// The work of a fit; `tell` gives the values of one.
template <class Fit, class Tell>
Work FitOf(const Array<double>& scalars, Tell tell)
{
    const auto points = MakeSet(scalars);
    const auto values = std::make_shared<Values>();
    return {[=] { *values = tell(Fit(*points)); }, [=] { return *values; }};
}

Values Together(const TVector3<double>& place, const TVector3<double>& direction)
{
    return {place.x, place.y, place.z, direction.x, direction.y, direction.z};
}

const Registration robustFitRows([] {
    const Row line("robust-fit/line", 1e-10);
    line.Add("ours", [] {
        return FitOf<Robust::LineFit<double, TVector3>>(
            MakePart(false), [](const auto& fit) { return Together(fit.line.origin, fit.line.direction); });
    });
    const Row plane("robust-fit/plane", 1e-10);
    plane.Add("ours", [] {
        return FitOf<Robust::PlaneFit<double>>(
            MakePart(false), [](const auto& fit) { return Together(fit.plane.point, fit.plane.normal); });
    });
    // The peer leaves out its last step, of 1e-8 at most.
    const Row sphere("robust-fit/sphere", 1e-8);
    sphere.Add("ours", [] {
        return FitOf<Robust::SphereFit<double>>(MakePart(true), [](const auto& fit) {
            const TVector4<double>& s = fit.sphere.sphere;
            return Values{s.x, s.y, s.z, s.w};
        });
    });
    const Row flat("robust-fit/circle", 1e-10);
    const auto makeFlat = [] {
        const Array<double> turned = MakeTurned(0, 0);
        Array<double> points;
        for (std::size_t i = 0; i < turned.size(); i += 3) {
            const double x = turned[i] - 1, y = turned[i + 2] - 3;
            points.insert(points.end(), {0.8 * x - 0.6 * y + 1, (turned[i + 1] - 2) / 0.8 + 2});
        }
        return points;
    };
    flat.Add("ours", [=]() -> Work {
        const Array<double> scalars = makeFlat();
        const auto points = std::make_shared<TPointSet<double, TVector2>>();
        for (std::size_t i = 0; i < scalars.size(); i += 2) points->Add(TVector2<double>(scalars[i], scalars[i + 1]));
        const auto values = std::make_shared<Values>();
        return {[=] {
                    const TCircle2<double> c = Robust::CircleFit<double, TVector2>(*points).circle;
                    *values = {c.centre.x, c.centre.y, c.radius};
                },
                [=] { return *values; }};
    });
    const Row ring("robust-fit/ring", 1e-10);
    ring.Add("ours", [] {
        return FitOf<Robust::CircleFit<double, TVector3>>(MakeTurned(0, 0), [](const auto& fit) {
            Values values = Together(fit.circle.centre, fit.circle.normal);
            values.push_back(fit.circle.radius);
            return values;
        });
    });
    const Row cylinder("robust-fit/cylinder", 1e-10);
    cylinder.Add("ours", [] {
        return FitOf<Robust::CylinderFit<double>>(MakeTurned(15, 0), [](const auto& fit) {
            const TVector3<double>&p = fit.cylinder.centre, &d = fit.cylinder.axis;
            Values values = Together(p - d * (p.x * d.x + p.y * d.y + p.z * d.z), d);
            values.push_back(fit.cylinder.radius);
            return values;
        });
    });
    const Row cone("robust-fit/cone", 1e-10);
    cone.Add("ours", [] {
        return FitOf<Robust::ConeFit<double>>(MakeTurned(15, 0.4), [](const auto& fit) {
            Values values = Together(fit.cone.apex, fit.cone.axis);
            values.push_back(fit.halfAngle);
            return values;
        });
    });
    const auto moved = [] {
        Array<double> points = MakePart(true);
        for (std::size_t i = 0; i < points.size(); i += 3) {
            const double x = points[i], y = points[i + 1];
            points[i] = 0.6 * x - 0.8 * y + 0.5;
            points[i + 1] = 0.8 * x + 0.6 * y - 0.25;
        }
        return points;
    };
    const Row alignment("robust-alignment/100000", 1e-10);
    alignment.Add("ours", [=]() -> Work {
        const auto from = MakeSet(MakePart(true));
        const auto to = MakeSet(moved());
        const auto values = std::make_shared<Values>();
        return {[=] {
                    const Robust::Alignment<double> motion(*from, *to);
                    values->assign(motion.rotation.elements, motion.rotation.elements + 9);
                    const TVector3<double>& t = motion.translation;
                    values->insert(values->end(), {t.x, t.y, t.z});
                },
                [=] { return *values; }};
    });
    if constexpr (hasEigen) {
        line.Add("Eigen", [] { return EigenLineFit(MakePart(false)); });
        plane.Add("Eigen", [] { return EigenPlaneFit(MakePart(false)); });
        flat.Add("Eigen", [=] { return EigenFlatCircleFit(makeFlat()); });
        ring.Add("Eigen", [] { return EigenRingFit(MakeTurned(0, 0), BesideTurned(0)); });
        cylinder.Add("Eigen", [] { return EigenCylinderFit(MakeTurned(15, 0), BesideTurned(0)); });
        cone.Add("Eigen", [] { return EigenConeFit(MakeTurned(15, 0.4), BesideTurned(0.4)); });
        sphere.Add("Eigen", [] { return EigenSphereFit(MakePart(true), 20); });
        alignment.Add("Eigen", [=] { return EigenRegistration(MakePart(true), moved()); });
    }
});

} // namespace

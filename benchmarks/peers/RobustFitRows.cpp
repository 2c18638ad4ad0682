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
    const Row sphere("robust-fit/sphere", 1e-10);
    sphere.Add("ours", [] {
        return FitOf<Robust::SphereFit<double>>(MakePart(true), [](const auto& fit) {
            const TVector4<double>& s = fit.sphere.sphere;
            return Values{s.x, s.y, s.z, s.w};
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
        sphere.Add("Eigen", [] { return EigenSphereFit(MakePart(true), 20); });
        alignment.Add("Eigen", [=] { return EigenRegistration(MakePart(true), moved()); });
    }
});

} // namespace

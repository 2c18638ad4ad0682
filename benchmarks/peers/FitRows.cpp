// Fits and registration against the same in another library.

#include "PeersAlgebra.h"
#include "Rows.h"

#include <CorvexMaths/CorvexMaths.h>

#include <cmath>
#include <memory>
#include <random>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using namespace Peers;

using Vector = TVector3<double>;
using PointSet = TPointSet<double, TVector3>;

void Append(const Vector& vector, Values* values)
{
    values->insert(values->end(), {vector.x, vector.y, vector.z});
}

/// Appends a direction, turned so that its largest component is positive.
void AppendDirection(const Vector& direction, Values* values)
{
    double largest = 0;
    for (const double component : {direction.x, direction.y, direction.z})
        if (std::abs(component) > std::abs(largest)) largest = component;
    Append(largest < 0 ? -direction : direction, values);
}

std::shared_ptr<PointSet> MakePoints(const Array<double>& scalars)
{
    const auto points = std::make_shared<PointSet>(static_cast<unsigned int>(scalars.size() / 3), 1000u);
    for (std::size_t i = 0; i < scalars.size(); i += 3) points->Add(Vector(scalars[i], scalars[i + 1], scalars[i + 2]));
    return points;
}

/// A cloud that is flat and oblong.
Array<double> MakeCloud()
{
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    Array<double> points;
    for (int i = 0; i < 100000; ++i) {
        const double x = normal(random), y = 5 * normal(random), z = 20 * normal(random);
        points.insert(points.end(), {0.8 * x + 0.6 * z + 1, y + 2, 0.8 * z - 0.6 * x + 3});
    }
    return points;
}

/// Points near a sphere, or near a circle in a plane across (0, -0.6, 0.8): random directions times a radius that
/// varies by a hundredth.
Array<double> MakeRound(bool isFlat)
{
    std::mt19937 random(2);
    std::normal_distribution<double> normal;
    Array<double> points;
    for (int i = 0; i < 10000; ++i) {
        Vector p(normal(random), normal(random), isFlat ? 0 : normal(random));
        p.Normalise();
        p *= 10 + normal(random) / 10;
        if (isFlat) p = Vector(p.x, 0.8 * p.y, 0.6 * p.y);
        points.insert(points.end(), {p.x + 1, p.y + 2, p.z + 3});
    }
    return points;
}

void AddOrthogonalFitRows()
{
    constexpr double bound = 1e-10;
    const Row plane("fit/plane", bound);
    plane.Add("ours", []() -> Work {
        const auto points = MakePoints(MakeCloud());
        const auto fitted = std::make_shared<TPlane<double>>();
        return {[=] { static_cast<void>(fitted->Fit(*points, nullptr, nullptr)); },
                [=] {
                    Values values;
                    Append(fitted->point, &values);
                    AppendDirection(fitted->normal, &values);
                    return values;
                }};
    });
    const Row line("fit/line", bound);
    line.Add("ours", []() -> Work {
        const auto points = MakePoints(MakeCloud());
        const auto fitted = std::make_shared<TLine3<double>>();
        return {[=] { static_cast<void>(fitted->Fit(*points, nullptr, nullptr)); },
                [=] {
                    Values values;
                    Append(fitted->origin, &values);
                    AppendDirection(fitted->direction, &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) {
        plane.Add("Eigen", [] { return EigenPlaneFit(MakeCloud()); });
        line.Add("Eigen", [] { return EigenLineFit(MakeCloud()); });
    }
}

void AddRoundFitRows()
{
    constexpr double bound = 1e-7;
    constexpr double tolerance = 1e-6;
    constexpr int steps = 20;
    const Row sphere("fit/sphere", bound);
    sphere.Add("ours", []() -> Work {
        const auto points = MakePoints(MakeRound(false));
        const auto fitted = std::make_shared<TSphere<double>>();
        return {[=] { static_cast<void>(fitted->Fit(*points, nullptr, steps)); },
                [=] {
                    const TVector4<double>& s = fitted->sphere;
                    return Values{s.x, s.y, s.z, s.w};
                }};
    });
    const Row circle("fit/circle", bound);
    circle.Add("ours", []() -> Work {
        const auto points = MakePoints(MakeRound(true));
        const auto fitted = std::make_shared<TCircle3<double>>();
        return {[=] { static_cast<void>(fitted->Fit(*points, nullptr, nullptr, tolerance, steps)); },
                [=] {
                    Values values;
                    Append(fitted->centre, &values);
                    values.push_back(fitted->radius);
                    AppendDirection(fitted->normal, &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) {
        sphere.Add("Eigen", [] { return EigenSphereFit(MakeRound(false), steps); });
        circle.Add("Eigen", [] { return EigenCircleFit(MakeRound(true), tolerance, steps); });
    }
}

// The spline fit.

constexpr unsigned int dataCount = 500;
constexpr unsigned int controlCount = 50;

/// Data on a rising spiral with a wave on it.
Array<double> MakeSpiral()
{
    Array<double> points;
    for (unsigned int i = 0; i < dataCount; ++i) {
        const double angle = 12.566370614359172 * i / dataCount, radius = 2 + 0.1 * std::cos(7 * angle);
        points.insert(points.end(), {radius * std::cos(angle), radius * std::sin(angle), angle});
    }
    return points;
}

/// A cubic that shows its basis functions.
class Cubic : public TBSpline<double, TVector3>
{
public:
    Cubic() : TBSpline(4, Clamped, controlCount, 1000) {}

    /// The design matrix of the last fit to these points, by rows: the basis functions at the parameters of the points,
    /// each farther than the one before by its share of the root distances.
    Array<double> GetDesignMatrix(const PointSet& points)
    {
        Array<double> roots;
        double total = 0;
        for (unsigned int i = 1; i < points.GetCount(); ++i) {
            roots.push_back(std::sqrt(points[i].DiffVectLen(points[i - 1])));
            total += roots.back();
        }
        Array<double> matrix;
        double parameter = 0;
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            if (i > 0) parameter += roots[i - 1] / total;
            Evaluate(parameter);
            for (unsigned int k = 0; k < GetCount(); ++k) matrix.push_back(coefficients[k]);
        }
        return matrix;
    }
};

void AddSplineFitRow()
{
    const Row row("fit/spline", 1e-9);
    row.Add("ours", []() -> Work {
        const auto points = MakePoints(MakeSpiral());
        const auto spline = std::make_shared<Cubic>();
        return {[=] { spline->Fit(*points, controlCount, false); },
                [=] {
                    Values values;
                    for (unsigned int i = 0; i < spline->GetCount(); ++i) Append((*spline)[i], &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) {
        row.Add("Eigen", [] {
            const auto points = MakePoints(MakeSpiral());
            Cubic spline;
            spline.Fit(*points, controlCount, false);
            return EigenLeastSquares(spline.GetDesignMatrix(*points), MakeSpiral(), dataCount, controlCount);
        });
    }
}

void AddRegistrationRow()
{
    // A turn about z and a shift.
    const auto move = [](Array<double> points) {
        for (std::size_t i = 0; i < points.size(); i += 3) {
            const double x = points[i], y = points[i + 1];
            points[i] = 0.6 * x - 0.8 * y + 0.5;
            points[i + 1] = 0.8 * x + 0.6 * y - 0.25;
            points[i + 2] += 0.125;
        }
        return points;
    };
    const Row row("registration/100000", 1e-9);
    row.Add("ours", [=]() -> Work {
        struct Motion
        {
            TMatrixMxN<double> rotation;
            Vector translation;
        };
        const auto from = MakePoints(MakeCloud());
        const auto to = MakePoints(move(MakeCloud()));
        const auto motion = std::make_shared<Motion>();
        return {[=] { static_cast<void>(to->Register(from.get(), &motion->rotation, &motion->translation, false)); },
                [=] {
                    Values values;
                    for (unsigned int r = 0; r < 3; ++r)
                        for (unsigned int c = 0; c < 3; ++c) values.push_back(motion->rotation[r][c]);
                    Append(motion->translation, &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) row.Add("Eigen", [=] { return EigenRegistration(MakeCloud(), move(MakeCloud())); });
}

const Registration rows([] {
    AddOrthogonalFitRows();
    AddRoundFitRows();
    AddSplineFitRow();
    AddRegistrationRow();
});

} // namespace

// The fit of a circle in space to points.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/pointsets/internal/LeastSquares.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/primitives/internal/PlanePoint.h>

#include <cstddef>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

using Kernels::PlanePoint;

/// The fit of a circle to points in the coordinates X, Y of their plane, in the unknowns a, b (the centre) and r.
template <class T>
class CircleFit
{
public:
    T a = T(0);
    T b = T(0);
    T r = T(0);

    explicit CircleFit(unsigned int pointCount)
        : count(pointCount),
          buffer(new T[std::size_t(pointCount) * 2]),
          x(buffer.get()),
          y(x + pointCount),
          system(pointCount)
    {}

    /// Takes points to the axes e1 and e2 through an origin and makes the algebraic fit, linear in its unknowns:
    /// 2 X a + 2 Y b - k = X^2 + Y^2, where k = a^2 + b^2 - r^2. It leaves k in r, which the first step corrects, the
    /// residual being linear in r. False when it could not be solved.
    bool FitAlgebraically(const TVector3<T>* points, const TVector3<T>& origin, const TVector3<T>& e1,
                          const TVector3<T>& e2)
    {
        system.Fill([=, x = x, y = y](unsigned int i) {
            const PlanePoint<T> point(points[i] - origin, e1, e2);
            x[i] = point.x;
            y[i] = point.y;
            return Row{{T(2) * point.x, T(2) * point.y, T(-1)}, point.s};
        });
        if (!system.Solve()) return false;
        a = system.solution[0];
        b = system.solution[1];
        r = system.solution[2];
        return true;
    }

    /// Gauss-Newton steps on the distances, at most `iterations`. With L the distance of a point from the centre, the
    /// step satisfies -(X - a) / L da - (Y - b) / L db - dr = -(L - r). Ends when the measure of a step is below the
    /// tolerance, or no longer falls. False when a system could not be solved or the steps ran out.
    bool Refine(T tolerance, unsigned int iterations)
    {
        T last = Kernels::measureBeforeSteps<T>;
        T measure = Kernels::measureOfNoStep<T>;
        for (unsigned int i = 0; i < iterations; ++i) {
            if (!(last > measure)) return true;
            last = measure;
            Linearise();
            if (!system.Solve()) return false;

            // The measure is the product of parameters and step, not the step's length: a step against the parameters
            // ends the fit at once.
            const T* const step = system.solution;
            a += step[0];
            b += step[1];
            r += step[2];
            measure = a * step[0] + b * step[1] + r * step[2];
            if (measure < tolerance) return true;
        }
        return false;
    }

    /// The residuals of the last step, from before it was taken, as far as the caller wants them. They are the negative
    /// right sides of its system, which solving it leaves alone.
    void Tally(T* spread, T* squares) const
    {
        T sum = T(0);
        T lowest = Kernels::measureBeforeSteps<T>;
        T highest = -Kernels::measureBeforeSteps<T>;
        for (unsigned int i = 0; i < residualCount; ++i) {
            const T residual = -system.GetRight(i);
            sum += residual * residual;
            if (residual < lowest) lowest = residual;
            if (residual > highest) highest = residual;
        }
        if (squares != nullptr) *squares = sum;
        if (spread != nullptr) *spread = highest - lowest;
    }

private:
    using Row = typename Kernels::TallSystem<T, 3>::Row;

    /// Fills the system of a step.
    void Linearise()
    {
        system.Fill([x = x, y = y, a = a, b = b, r = r](unsigned int i) {
            const T dx = x[i] - a;
            const T dy = y[i] - b;
            const T length = Numbers::SquareRoot(dx * dx + dy * dy);
            return Row{{-dx / length, -dy / length, T(-1)}, -(length - r)};
        });
        residualCount = count;
    }

    unsigned int count;
    unsigned int residualCount = 0;
    std::unique_ptr<T[]> buffer;
    T* x;
    T* y;
    Kernels::TallSystem<T, 3> system;
};

} // namespace

template <class T>
bool TCircle3<T>::Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares, T tolerance, unsigned int iterations)
{
    const unsigned int count = points.GetCount();
    if (count < 3) return false;
    if (count == 3) {
        if (spread != nullptr) *spread = T(0);
        if (squares != nullptr) *squares = T(0);
        return Fit(points[0], points[1], points[2], tolerance);
    }

    // 1. The plane of the points, and axes in it.
    TPlane<T> plane;
    if (!plane.Fit(points, nullptr, nullptr)) return false;
    TVector3<T> e1, e2;
    plane.normal.OrthonormalXY(&e1, &e2);

    // 2. The circle in these axes: a linear fit, then steps on the distances.
    CircleFit<T> fit(count);
    const bool isFitted =
        fit.FitAlgebraically(points.GetStream(), plane.point, e1, e2) && fit.Refine(tolerance, iterations);

    // 3. The result, whatever came of the steps.
    radius = fit.r;
    centre = plane.point + e1 * fit.a + e2 * fit.b;
    normal = plane.normal;
    if (spread != nullptr || squares != nullptr) fit.Tally(spread, squares);
    return isFitted;
}

template bool TCircle3<float>::Fit(const TPointSet<float, TVector3>&, float*, float*, float, unsigned int);
template bool TCircle3<double>::Fit(const TPointSet<double, TVector3>&, double*, double*, double, unsigned int);

} // namespace Halmont::Orrin::CorvexMaths

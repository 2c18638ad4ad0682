// The fit of a sphere to points.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/pointsets/internal/LeastSquares.h>
#include <CorvexMaths/primitives/TSphere.h>

#include <cmath>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// What counts as zero, inclusively, for the determinant of four points and for the squared step of a fit, which then
/// stops: a true `double`, in `float` code too, where the value is widened to be compared.
constexpr double leastSize = 1e-16;

/// Overwrites a column of a matrix.
template <class T>
void SetColumn(TMatrix4x4<T>& matrix, unsigned int column, const T (&values)[4])
{
    for (unsigned int row = 0; row < 4; ++row) matrix[row][column] = values[row];
}

/// The sphere through four points: it satisfies the determinant equation
///   | x^2 + y^2 + z^2  x  y  z  1 |
///   |      s_i        x_i y_i z_i 1 | = 0,  i = 1 .. 4,  s_i the squared lengths,
/// whose minors along the first row, d0 to d4, give centre and radius.
template <class T>
bool FitThroughFour(const TVector3<T>* points, TVector4<T>* sphere)
{
    const TVector3<T>* const p = points;
    const T x[4] = {p[0].x, p[1].x, p[2].x, p[3].x};
    const T y[4] = {p[0].y, p[1].y, p[2].y, p[3].y};
    const T z[4] = {p[0].z, p[1].z, p[2].z, p[3].z};
    const T s[4] = {p[0].GetLengthSquared(), p[1].GetLengthSquared(), p[2].GetLengthSquared(), p[3].GetLengthSquared()};
    const T one[4] = {T(1), T(1), T(1), T(1)};

    TMatrix4x4<T> matrix;
    SetColumn(matrix, 0, x);
    SetColumn(matrix, 1, y);
    SetColumn(matrix, 2, z);
    SetColumn(matrix, 3, one);
    const T d0 = matrix.Determinant();
    if (std::isnan(d0) || Numbers::IsZero<double>(d0, leastSize)) return false;

    SetColumn(matrix, 0, s); // s y z 1
    const T d1 = matrix.Determinant();
    SetColumn(matrix, 1, x); // s x z 1
    const T d2 = matrix.Determinant();
    SetColumn(matrix, 2, y); // s x y 1
    const T d3 = matrix.Determinant();
    SetColumn(matrix, 3, z); // s x y z
    const T d4 = matrix.Determinant();

    const T root = Numbers::SquareRoot(d2 * d2 + d1 * d1 + d3 * d3 - d4 * (T(4) * d0));
    const TVector3<T> centre = TVector3<T>(d1, -d2, d3) / (T(2) * d0);
    *sphere = TVector4<T>(centre.x, centre.y, centre.z, root / Numbers::Absolute(d0) * T(0.5));
    return true;
}

/// The fit to any other number of points, in the unknowns centre c and radius r.
template <class T>
class SphereFit
{
public:
    SphereFit(const TPointSet<T, TVector3>& set, TVector4<T>& result)
        : points(set.GetStream()), sphere(result), system(set.GetCount())
    {
        SetCentre(set.GetCentre());
    }

    /// The algebraic fit, linear in its unknowns (u, k): with d = p - c for the present centre, the points satisfy
    ///   2 d . u - k = |d|^2,  where u = the step of the centre and k = |u|^2 - r^2.
    bool FitAlgebraically()
    {
        // Component by component, for the compiler to vectorise over the points.
        system.Fill([p = points, x = sphere.x, y = sphere.y, z = sphere.z](unsigned int i) {
            const T dx = p[i].x - x, dy = p[i].y - y, dz = p[i].z - z;
            return Row{{dx * T(2), dy * T(2), dz * T(2), T(-1)}, dx * dx + dy * dy + dz * dz};
        });
        if (!system.Solve()) return false;

        const TVector3<T> step = GetStep();
        SetCentre(TVector3<T>(sphere) + step);
        for (unsigned int i = 0; i < 3; ++i)
            if (Numbers::IsZero(sphere[i], Numbers::commonTolerance<T>)) sphere[i] = T(0);
        sphere.w = Numbers::SquareRoot(step.GetLengthSquared() - system.solution[3]);
        return true;
    }

    /// Gauss-Newton steps on the distances, at most `iterations`. With d = c - p and L = |d|, the step satisfies
    ///   (d / L) . step of c - step of r = r - L.
    /// Ends when the squared step of the centre counts as zero, or no longer falls. False when a system could not be
    /// solved.
    bool Refine(unsigned int iterations)
    {
        T last = Kernels::measureBeforeSteps<T>;
        T measure = Kernels::measureOfNoStep<T>;
        for (unsigned int pass = 1; pass <= iterations && last > measure; ++pass) {
            last = measure;
            const TVector3<T> centre = sphere;
            system.Fill([p = points, x = sphere.x, y = sphere.y, z = sphere.z, radius = sphere.w](unsigned int i) {
                const T dx = x - p[i].x, dy = y - p[i].y, dz = z - p[i].z;
                const T length = Numbers::SquareRoot(dx * dx + dy * dy + dz * dz);
                return Row{{dx / length, dy / length, dz / length, T(-1)}, radius - length};
            });
            if (!system.Solve()) return false;

            // A step that is too small to count is not taken.
            const TVector3<T> step = GetStep();
            measure = step.GetLengthSquared();
            if (Numbers::IsZero<double>(measure, leastSize)) break;
            SetCentre(centre + step);
            sphere.w += system.solution[3];
        }
        return true;
    }

private:
    using Row = typename Kernels::TallSystem<T, 4>::Row;

    TVector3<T> GetStep() const { return TVector3<T>(system.solution); }
    void SetCentre(const TVector3<T>& centre) { sphere = TVector4<T>(centre.x, centre.y, centre.z, sphere.w); }

    const TVector3<T>* points;
    TVector4<T>& sphere;
    Kernels::TallSystem<T, 4> system;
};

/// The width of the shell about the centre of a sphere that holds all points.
template <class T>
T GetSpread(const TPointSet<T, TVector3>& points, const TVector4<T>& sphere)
{
    const TVector3<T> centre = sphere;
    T lowest = Numbers::unsetBound<T>;
    T highest = -Numbers::unsetBound<T>;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const T residual = centre.DiffVectLen(points[i]) - sphere.w;
        if (residual < lowest) lowest = residual;
        if (residual > highest) highest = residual;
    }
    return highest - lowest;
}

} // namespace

template <class T>
bool TSphere<T>::Fit(const TPointSet<T, TVector3>& points, T* spread, unsigned int iterations)
{
    if (points.GetCount() == 4) {
        if (!FitThroughFour(points.GetStream(), &sphere)) return false;
    } else {
        SphereFit<T> fit(points, sphere);
        if (!fit.FitAlgebraically() || !fit.Refine(iterations)) return false;
    }
    if (spread != nullptr) *spread = GetSpread(points, sphere);
    return true;
}

template bool TSphere<float>::Fit(const TPointSet<float, TVector3>&, float*, unsigned int);
template bool TSphere<double>::Fit(const TPointSet<double, TVector3>&, double*, unsigned int);

} // namespace Halmont::Orrin::CorvexMaths

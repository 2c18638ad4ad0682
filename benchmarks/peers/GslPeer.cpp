// What the GNU Scientific Library does for comparison.

#include "PeersGeometry.h"

#include <gsl/gsl_bspline.h>
#include <gsl/gsl_linalg.h>

#include <memory>

namespace Peers
{

namespace
{

/// A cubic on evenly spaced clamped knots from 0 to 1.
class Cubic
{
public:
    explicit Cubic(const Values& points)
        : controls(points), workspace(gsl_bspline_alloc(order, points.size() / 3 - order + 2))
    {
        gsl_bspline_knots_uniform(0, 1, workspace);
    }

    Cubic(const Cubic&) = delete;
    Cubic& operator=(const Cubic&) = delete;

    ~Cubic()
    {
        gsl_vector_free(basis);
        gsl_bspline_free(workspace);
    }

    void Evaluate(double parameter, double* point)
    {
        std::size_t first = 0;
        std::size_t last = 0;
        gsl_bspline_eval_nonzero(parameter, basis, &first, &last, workspace);
        point[0] = point[1] = point[2] = 0;
        for (std::size_t i = first; i <= last; ++i) {
            const double factor = gsl_vector_get(basis, i - first);
            for (std::size_t k = 0; k < 3; ++k) point[k] += factor * controls[3 * i + k];
        }
    }

private:
    static constexpr std::size_t order = 4;

    Values controls;
    gsl_bspline_workspace* workspace;
    gsl_vector* basis = gsl_vector_alloc(order);
};

} // namespace

Work GslSplinePoints(const Values& controls, const Values& parameters)
{
    const auto cubic = std::make_shared<Cubic>(controls);
    const auto points = std::make_shared<Values>(3 * parameters.size());
    return {[=] {
                for (std::size_t i = 0; i < parameters.size(); ++i) cubic->Evaluate(parameters[i], &(*points)[3 * i]);
            },
            [=] { return *points; }};
}

namespace
{

/// What has to be released, with how.
template <class Type>
using Owned = std::unique_ptr<Type, void (*)(Type*)>;

/// Sums the products of the basis functions of each point into the lower band of the normal equations and its right
/// sides.
void AddNormalEquations(const Coordinates& points, const Values& parameters, gsl_bspline_workspace* workspace,
                        gsl_matrix* band, gsl_vector* (&right)[2])
{
    const Owned<gsl_vector> basis(gsl_vector_alloc(4), gsl_vector_free);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        std::size_t first = 0;
        std::size_t last = 0;
        gsl_bspline_eval_nonzero(parameters[i], basis.get(), &first, &last, workspace);
        for (std::size_t k = 0; k < 4; ++k) {
            const double factor = gsl_vector_get(basis.get(), k);
            for (std::size_t c = 0; c < 2; ++c) *gsl_vector_ptr(right[c], first + k) += factor * points[2 * i + c];
            for (std::size_t j = k; j < 4; ++j)
                *gsl_matrix_ptr(band, first + k, j - k) += factor * gsl_vector_get(basis.get(), j);
        }
    }
}

} // namespace

Work GslSplineFit(const Coordinates& points, const Values& parameters, const Values& breaks)
{
    const auto controls = std::make_shared<Values>();
    return {[=] {
                const std::size_t count = breaks.size() + 2;
                const Owned<gsl_bspline_workspace> workspace(gsl_bspline_alloc(4, breaks.size()), gsl_bspline_free);
                const gsl_vector_const_view knots = gsl_vector_const_view_array(breaks.data(), breaks.size());
                gsl_bspline_knots(&knots.vector, workspace.get());
                const Owned<gsl_matrix> band(gsl_matrix_calloc(count, 4), gsl_matrix_free);
                const Owned<gsl_vector> x(gsl_vector_calloc(count), gsl_vector_free);
                const Owned<gsl_vector> y(gsl_vector_calloc(count), gsl_vector_free);
                gsl_vector* right[] = {x.get(), y.get()};
                AddNormalEquations(points, parameters, workspace.get(), band.get(), right);
                gsl_linalg_cholesky_band_decomp(band.get());
                for (gsl_vector* side : right) gsl_linalg_cholesky_band_svx(band.get(), side);
                controls->resize(2 * count);
                for (std::size_t i = 0; i < count; ++i)
                    for (std::size_t c = 0; c < 2; ++c) (*controls)[2 * i + c] = gsl_vector_get(right[c], i);
            },
            [=] { return *controls; }};
}

} // namespace Peers

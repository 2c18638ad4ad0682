// What the GNU Scientific Library does for comparison.

#include "PeersGeometry.h"

#include <gsl/gsl_bspline.h>

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

} // namespace Peers

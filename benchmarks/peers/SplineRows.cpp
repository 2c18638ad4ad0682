// Points of a cubic spline, evenly spaced in the parameter, against another library.

#include "PeersAlgebra.h"
#include "Rows.h"

#include <CorvexMaths/splines/TBSpline.h>

#include <cmath>

namespace
{

using namespace Peers;
using namespace Halmont::Orrin::CorvexMaths;

constexpr int stepCount = 1024;

/// Control points on a rising spiral.
Array<double> MakeControls(int count)
{
    Array<double> controls;
    for (int i = 0; i < count; ++i) {
        const double angle = 12.5 * i / count;
        controls.insert(controls.end(), {2 * std::cos(angle), 2 * std::sin(angle), angle});
    }
    return controls;
}

Work OurSpline(const Array<double>& controls)
{
    TPointSet<double, TVector3> points(0, 1000);
    for (std::size_t i = 0; i < controls.size(); i += 3)
        points.Add(TVector3<double>(controls[i], controls[i + 1], controls[i + 2]));
    const auto spline = std::make_shared<TBSpline<double, TVector3>>(points, 4u, Clamped);
    const auto out = std::make_shared<TPointSet<double, TVector3>>(0u, 2000u);
    return {[=] { spline->Evaluate(out.get(), 1.0 / stepCount, false); },
            [=] {
                Values values;
                for (unsigned int i = 0; i < out->GetCount(); ++i)
                    values.insert(values.end(), {(*out)[i].x, (*out)[i].y, (*out)[i].z});
                return values;
            }};
}

const Registration splineRows([] {
    for (const int count : {100, 1000}) {
        // Ours ends just inside the last knot, and drops terms of 1e-6.
        const Row row("spline/" + std::to_string(count), 1e-4, stepCount + 1);
        row.Add("ours", [=] { return OurSpline(MakeControls(count)); });
        if constexpr (hasEigen) row.Add("Eigen", [=] { return EigenSpline(MakeControls(count), stepCount); });
    }
});

} // namespace

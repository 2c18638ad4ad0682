#include <CorvexMaths/robust/LineFit.h>

#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::FitReport;
using Kernels::FitTo;

template <class T, template <class> class V>
LineFit<T, V>::LineFit(const TPointSet<T, V>& points, TList<T>* distances)
{
    if constexpr (std::is_same_v<V<T>, TVector2<T>>) {
        using Feature = Kernels::Flat<2>;
        FitTo<Feature>(points, 2, this, distances, [](FitReport<T, Feature>& report, LineFit* fit) {
            const auto& [along, normal] = report.feature.place.axes;
            const double sign = Kernels::SignOf(along);
            report.Place(report.feature.place.origin, &fit->line.origin);
            report.Direction(along, sign, &fit->line.direction);
            typename FitReport<T, Feature>::Derivatives shift;
            shift.Add(0, normal);
            report.PlaceDeviation(shift, &fit->deviation.origin);
            typename FitReport<T, Feature>::Derivatives turn;
            turn.Add(1, normal);
            report.DirectionDeviation(turn, &fit->deviation.direction);
            // Whether the normal is the direction turned to the left.
            const bool left = (along[0] * normal[1] - along[1] * normal[0]).high * sign > 0.0;
            return left ? 1.0 : -1.0;
        });
    } else {
        using Feature = Kernels::Straight;
        FitTo<Feature>(points, 2, this, distances, [](FitReport<T, Feature>& report, LineFit* fit) {
            const auto& axes = report.feature.place.axes;
            report.Place(report.feature.place.origin, &fit->line.origin);
            report.Direction(axes[2], Kernels::SignOf(axes[2]), &fit->line.direction);
            typename FitReport<T, Feature>::Derivatives shift;
            typename FitReport<T, Feature>::Derivatives turn;
            for (unsigned int k = 0; k < 2; ++k) {
                shift.Add(k, axes[k]);
                turn.Add(2 + k, axes[k]);
            }
            report.PlaceDeviation(shift, &fit->deviation.origin);
            report.DirectionDeviation(turn, &fit->deviation.direction);
            return 1.0;
        });
    }
}

template class LineFit<float, TVector2>;
template class LineFit<float, TVector3>;
template class LineFit<double, TVector2>;
template class LineFit<double, TVector3>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

#include <CorvexMaths/robust/CircleFit.h>

#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::FitReport;
using Kernels::FitTo;

template <class T, template <class> class V>
CircleFit<T, V>::CircleFit(const TPointSet<T, V>& points, TList<T>* distances)
{
    if constexpr (std::is_same_v<V<T>, TVector2<T>>) {
        using Feature = Kernels::Round<2>;
        FitTo<Feature>(points, 3, this, distances, [](FitReport<T, Feature>& report, CircleFit* fit) {
            report.Place(report.feature.centre, &fit->circle.centre);
            fit->circle.radius = report.Length(report.feature.radius.high);
            for (unsigned int k = 0; k < 2; ++k) fit->deviation.centre[k] = report.Length(report.Deviation(k));
            fit->deviation.radius = report.Length(report.Deviation(2));
            return 1.0;
        });
    } else {
        using Feature = Kernels::Ring;
        FitTo<Feature>(points, 3, this, distances, [](FitReport<T, Feature>& report, CircleFit* fit) {
            const auto& axes = report.feature.place.axes;
            report.Place(report.feature.place.origin, &fit->circle.centre);
            report.Direction(axes[2], Kernels::SignOf(axes[2]), &fit->circle.normal);
            fit->circle.radius = report.Length(report.feature.radius.high);
            typename FitReport<T, Feature>::Derivatives shift;
            for (unsigned int k = 0; k < 3; ++k) shift.Add(k, axes[k]);
            report.PlaceDeviation(shift, &fit->deviation.centre);
            typename FitReport<T, Feature>::Derivatives turn;
            for (unsigned int k = 0; k < 2; ++k) turn.Add(3 + k, axes[k]);
            report.DirectionDeviation(turn, &fit->deviation.normal);
            fit->deviation.radius = report.Length(report.Deviation(5));
            return 1.0;
        });
    }
}

template class CircleFit<float, TVector2>;
template class CircleFit<float, TVector3>;
template class CircleFit<double, TVector2>;
template class CircleFit<double, TVector3>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

#include <CorvexMaths/robust/PlaneFit.h>

#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

template <class T>
PlaneFit<T>::PlaneFit(const TPointSet<T, TVector3>& points, TList<T>* distances)
{
    using Feature = Kernels::Flat<3>;
    using Report = Kernels::FitReport<T, Feature>;
    Kernels::FitTo<Feature>(points, 3, this, distances, [](Report& report, PlaneFit* fit) {
        const auto& axes = report.feature.place.axes;
        const double sign = Kernels::SignOf(axes[2]);
        report.Place(report.feature.place.origin, &fit->plane.point);
        report.Direction(axes[2], sign, &fit->plane.normal);
        typename Report::Derivatives shift;
        shift.Add(0, axes[2]);
        report.PlaceDeviation(shift, &fit->deviation.point);
        typename Report::Derivatives turn;
        turn.Add(1, axes[0]);
        turn.Add(2, axes[1]);
        report.DirectionDeviation(turn, &fit->deviation.normal);
        return sign;
    });
}

template class PlaneFit<float>;
template class PlaneFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

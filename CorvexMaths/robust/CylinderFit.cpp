#include <CorvexMaths/robust/CylinderFit.h>

#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

template <class T>
CylinderFit<T>::CylinderFit(const TPointSet<T, TVector3>& points, TList<T>* distances)
{
    using Feature = Kernels::Tapered<false>;
    using Report = Kernels::FitReport<T, Feature>;
    Kernels::FitTo<Feature>(points, 6, this, distances, [](Report& report, CylinderFit* fit) {
        Kernels::Placement<3> place = report.feature.place;
        const auto [lowest, highest] = report.HeightRange();
        const Kernels::DoubleDouble middle = (lowest.value + highest.value) * Kernels::DoubleDouble(0.5);
        place.Shift(2, middle);
        report.Place(place.origin, &fit->cylinder.centre);
        report.Direction(place.axes[2], Kernels::SignOf(place.axes[2]), &fit->cylinder.axis);
        fit->cylinder.radius = report.Length(report.feature.radius.high);
        fit->cylinder.height = report.Length((highest.value - lowest.value).high);

        typename Report::Derivatives shift;
        typename Report::Derivatives turn;
        double height[5] = {};
        for (unsigned int k = 0; k < 2; ++k) {
            shift.Add(k, place.axes[k]);
            shift.Add(2 + k, place.axes[k], middle.high);
            shift.Add(2 + k, place.axes[2], 0.5 * (highest.byTilt[k] + lowest.byTilt[k]));
            turn.Add(2 + k, place.axes[k]);
            height[2 + k] = highest.byTilt[k] - lowest.byTilt[k];
        }
        report.PlaceDeviation(shift, &fit->deviation.centre);
        report.DirectionDeviation(turn, &fit->deviation.axis);
        fit->deviation.radius = report.Length(report.Deviation(4));
        fit->deviation.height = report.Length(report.Deviation(height));
        return 1.0;
    });
}

template class CylinderFit<float>;
template class CylinderFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

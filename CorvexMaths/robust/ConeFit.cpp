#include <CorvexMaths/robust/ConeFit.h>

#include <CorvexMaths/robust/internal/ArcTangent.h>
#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

template <class T>
ConeFit<T>::ConeFit(const TPointSet<T, TVector3>& points, TList<T>* distances)
{
    using Feature = Kernels::Tapered<true>;
    using Kernels::DoubleDouble;
    using Report = Kernels::FitReport<T, Feature>;
    Kernels::FitTo<Feature>(points, 7, this, distances, [](Report& report, ConeFit* fit) {
        const Feature& feature = report.feature;
        const auto& axes = feature.place.axes;
        report.Place(feature.place.origin, &fit->point);
        fit->radius = report.Length(feature.radius.high);
        fit->halfAngle = report.Number(Kernels::ArcTangent(feature.cosine, feature.sine));

        // The apex lies at -R / tan h, the base at the greatest height of a point.
        const DoubleDouble slope = feature.sine / feature.cosine;
        const DoubleDouble tip = -(feature.radius / slope);
        const auto highest = report.HeightRange()[1];
        const DoubleDouble height = highest.value - tip;
        Kernels::Placement<3> place = feature.place;
        place.Shift(2, tip);
        report.Place(place.origin, &fit->cone.apex);
        report.Direction(axes[2], 1.0, &fit->cone.axis);
        fit->cone.height = report.Length(height.high);
        fit->cone.radius = report.Length((height * slope).high);

        // By R and h the apex moves by -dR / tan h + R dh / sin^2 h along the axis, and the radius R + z tan h of the
        // base by dR + z dh / cos^2 h; a tilt moves the height z of the base as it does that of its point.
        const double byAngle = feature.radius.high / (feature.sine.high * feature.sine.high);
        // A tilt raises the foot of the centroid on the axis, as it does the centroid.
        const std::array<double, 2> centroid = report.CentroidAcross();
        typename Report::Derivatives shift;
        typename Report::Derivatives turn;
        typename Report::Derivatives apex;
        for (unsigned int k = 0; k < 2; ++k) {
            shift.Add(k, axes[k]);
            shift.Add(2 + k, axes[2], centroid[k]);
            turn.Add(2 + k, axes[k]);
            apex.Add(k, axes[k]);
            apex.Add(2 + k, axes[k], tip.high);
        }
        apex.Add(4, axes[2], -1.0 / slope.high);
        apex.Add(5, axes[2], byAngle);
        const double x = highest.byTilt[0];
        const double y = highest.byTilt[1];
        const double opened = highest.value.high / (feature.cosine.high * feature.cosine.high);
        const double tall[6] = {0.0, 0.0, x, y, 1.0 / slope.high, -byAngle};
        const double wide[6] = {0.0, 0.0, x * slope.high, y * slope.high, 1.0, opened};
        const double level[6] = {0.0, 0.0, centroid[0] * slope.high, centroid[1] * slope.high, 1.0, 0.0};
        report.PlaceDeviation(shift, &fit->pointDeviation);
        report.DirectionDeviation(turn, &fit->deviation.axis);
        report.PlaceDeviation(apex, &fit->deviation.apex);
        fit->radiusDeviation = report.Length(report.Deviation(level));
        fit->halfAngleDeviation = report.Number(report.Deviation(5));
        fit->deviation.height = report.Length(report.Deviation(tall));
        fit->deviation.radius = report.Length(report.Deviation(wide));
        return 1.0;
    });
}

template class ConeFit<float>;
template class ConeFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

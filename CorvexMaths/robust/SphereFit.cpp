#include <CorvexMaths/robust/SphereFit.h>

#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

template <class T>
SphereFit<T>::SphereFit(const TPointSet<T, TVector3>& points, TList<T>* distances)
{
    using Feature = Kernels::Round<3>;
    using Report = Kernels::FitReport<T, Feature>;
    Kernels::FitTo<Feature>(points, 4, this, distances, [](Report& report, SphereFit* fit) {
        report.Place(report.feature.centre, &fit->sphere.sphere);
        fit->sphere.sphere.w = report.Length(report.feature.radius.high);
        for (unsigned int k = 0; k < 4; ++k) fit->deviation.sphere[k] = report.Length(report.Deviation(k));
        return 1.0;
    });
}

template class SphereFit<float>;
template class SphereFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

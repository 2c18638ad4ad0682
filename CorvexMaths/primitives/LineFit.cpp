#include <CorvexMaths/primitives/TLine.h>

#include <CorvexMaths/primitives/OrthogonalFit.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
bool TLine3<T>::Fit(TPointSet<T, TVector3>& points, T* spread, T* squares)
{
    const unsigned int count = points.GetCount();
    if (count < 2) return false;
    if (count == 2) {
        if (spread != nullptr) *spread = T(0);
        if (squares != nullptr) *squares = T(0);
        return Fit(points[0], points[1]);
    }

    // The axis of the largest extent, if there is one.
    Kernels::PrincipalAxes<T> axes;
    if (!axes.Decompose(points, &origin)) return false;
    const unsigned int longest = axes.Find([](T a, T b) { return a > b; });
    if (!(axes.GetValue(longest) > T(0))) return false;
    direction = axes.GetDirection(longest);

    if (spread == nullptr && squares == nullptr) return true;
    T largest = T(0);
    for (unsigned int i = 0; i < count; ++i) {
        const T distance = DistanceToPoint(points[i], Numbers::commonTolerance<T>);
        if (distance > largest) largest = distance;
        if (squares != nullptr) *squares += distance * distance;
    }
    if (spread != nullptr) *spread = T(2) * largest;
    return true;
}

template bool TLine3<float>::Fit(TPointSet<float, TVector3>&, float*, float*);
template bool TLine3<double>::Fit(TPointSet<double, TVector3>&, double*, double*);

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/primitives/TSphere.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/primitives/TLine.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
bool TSphere<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const
{
    CORVEX_PRECONDITION("TSphere::IntersectWith", p1 != nullptr && p2 != nullptr, p1, p2);
    CORVEX_PRECONDITION("TSphere::IntersectWith", p1 != &line.origin && p1 != &line.direction, p1);

    // |o + d t - centre|^2 = radius^2 is t^2 + b t + c = 0, as |d| = 1.
    const TVector3<T> m = line.origin - TVector3<T>(sphere);
    const T b = T(2) * (line.direction % m);
    const T c = m % m - sphere.w * sphere.w;
    const T discriminant = b * b - T(4) * c;
    if (tolerance > discriminant) return false;

    const T root = Numbers::SquareRoot(discriminant);
    *p1 = line.Evaluate((-b - root) * T(0.5));
    *p2 = line.Evaluate((root - b) * T(0.5));
    return true;
}

template <class T>
bool TLine3<T>::IntersectWith(const TSphere<T>& sphere, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const
{
    return sphere.IntersectWith(*this, p1, p2, tolerance);
}

CORVEX_INSTANTIATE_SCALARS(, class, TSphere);
template bool TLine3<float>::IntersectWith(const TSphere<float>&, TVector3<float>*, TVector3<float>*, float) const;
template bool TLine3<double>::IntersectWith(const TSphere<double>&, TVector3<double>*, TVector3<double>*, double) const;

} // namespace Halmont::Orrin::CorvexMaths

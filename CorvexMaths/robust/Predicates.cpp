#include <CorvexMaths/robust/Predicates.h>

#include <CorvexMaths/internal/Signs.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

namespace
{

template <class T>
Kernels::Place ToPlace(const TVector2<T>& point)
{
    return {point.x, point.y};
}

} // namespace

template <class T>
int Predicates<T>::Orientation(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    return Kernels::OrientationSign(ToPlace(a), ToPlace(b), ToPlace(c));
}

template <class T>
int Predicates<T>::InCircle(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& d)
{
    return Kernels::InCircleSign(ToPlace(a), ToPlace(b), ToPlace(c), ToPlace(d));
}

CORVEX_INSTANTIATE_SCALARS(, class, Predicates);

} // namespace Halmont::Orrin::CorvexMaths::Robust

#include <CorvexMaths/primitives/TSpiral.h>

#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/vectors/TQuaternion.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
TSpiral3<T>::TSpiral3(TVector3<T> centre, TVector3<T> axis, T radius, int count, T angleStep, T growth)
{
    // The block that so many additions would end with, without the copies on the way there.
    const unsigned int total = count > 1 ? static_cast<unsigned int>(count) : 1;
    const unsigned int step = points.GetGrowSize();
    points.Grow((total + step - 1) / step * step);

    TVector3<T> v;
    axis.OrthonormalX(&v);
    v *= radius;
    points.Add(centre + v);
    for (int i = 1; i < count; ++i) {
        TQuaternion<T> rotation(static_cast<T>(i) * angleStep, axis);
        const T scale = (static_cast<T>(i) * growth + radius) / radius;
        points.Add(centre + rotation.ToMatrix() * (v * scale));
    }
}

CORVEX_INSTANTIATE_SCALARS(, struct, TSpiral3);

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// A point in the plane of a circle in space. Internal.

#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A point in the coordinates of a circle's plane, with its squared distance from their origin.
template <class T>
struct PlanePoint
{
    T x, y, s;

    PlanePoint(const TVector3<T>& point, const TVector3<T>& e1, const TVector3<T>& e2)
        : x(point % e1), y(point % e2), s(x * x + y * y)
    {}
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

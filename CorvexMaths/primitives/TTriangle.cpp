#include <CorvexMaths/primitives/TTriangle.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
bool TTriangle2<T>::WithinCone(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& p)
{
    if (GetDoubleArea(b, c, a) >= T(0)) return GetDoubleArea(b, p, a) > T(0) && GetDoubleArea(p, b, c) > T(0);
    return !(GetDoubleArea(b, p, c) >= T(0) && GetDoubleArea(p, b, a) >= T(0));
}

template <class T>
T TTriangle3<T>::DistanceToPoint(const TVector3<T>& p, T tolerance) const
{
    // The constructor of the line normalises the stored normal again.
    const TLine3<T> perpendicular(p, normal);
    TVector3<T> foot;
    T distance = T(0);
    if (IntersectWith(perpendicular, &foot, &distance, tolerance)) return Numbers::Absolute(distance);

    T smallest = TEdge3<T>(corners[0], corners[1]).DistanceToPoint(p, nullptr, nullptr);
    for (unsigned int i = 1; i < 3; ++i) {
        const T fromEdge = TEdge3<T>(corners[i], corners[(i + 1) % 3]).DistanceToPoint(p, nullptr, nullptr);
        if (fromEdge < smallest) smallest = fromEdge;
    }
    return Numbers::Absolute(smallest);
}

template <class T>
TVector3<T>& TTriangle3<T>::ClosestVert(const TVector3<T>& p)
{
    unsigned int closest = 0;
    T smallest = Numbers::unsetBound<T>;
    for (unsigned int i = 0; i < 3; ++i) {
        const T squared = corners[i].DiffVectLenSquared(p);
        if (squared < smallest) {
            smallest = squared;
            closest = i;
        }
    }
    return corners[closest];
}

template <class T>
bool TTriangle3<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const
{
    return line.IntersectWith(corners[0], corners[1], corners[2], point, distance, tolerance);
}

template <class T>
bool TTriangle3<T>::IntersectWithBFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const
{
    return line.IntersectWithBFC(corners[0], corners[1], corners[2], point, distance, tolerance);
}

template <class T>
bool TTriangle3<T>::IntersectWithFFC(const TLine3<T>& line, TVector3<T>* point, T* distance, T tolerance) const
{
    return line.IntersectWithFFC(corners[0], corners[1], corners[2], point, distance, tolerance);
}

// The forms of the line that take a triangle.

template <class T>
bool TLine3<T>::IntersectWith(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const
{
    return tri.IntersectWith(*this, point, distance, tolerance);
}

template <class T>
bool TLine3<T>::IntersectWithBFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const
{
    return tri.IntersectWithBFC(*this, point, distance, tolerance);
}

template <class T>
bool TLine3<T>::IntersectWithFFC(const TTriangle3<T>& tri, TVector3<T>* point, T* distance, T tolerance) const
{
    return tri.IntersectWithFFC(*this, point, distance, tolerance);
}

CORVEX_INSTANTIATE_SCALARS(, struct, TTriangle2);
CORVEX_INSTANTIATE_SCALARS(, struct, TTriangle3);

#define CORVEX_INSTANTIATE_LINE_AND_TRIANGLE(T)                                                                        \
    template bool TLine3<T>::IntersectWith(const TTriangle3<T>&, TVector3<T>*, T*, T) const;                           \
    template bool TLine3<T>::IntersectWithBFC(const TTriangle3<T>&, TVector3<T>*, T*, T) const;                        \
    template bool TLine3<T>::IntersectWithFFC(const TTriangle3<T>&, TVector3<T>*, T*, T) const;
CORVEX_INSTANTIATE_LINE_AND_TRIANGLE(float)
CORVEX_INSTANTIATE_LINE_AND_TRIANGLE(double)

} // namespace Halmont::Orrin::CorvexMaths

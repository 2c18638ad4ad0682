#include <CorvexMaths/pointsets/TPointSet.h>

#include <CorvexMaths/pointsets/BoxExtension.inl>
#include <CorvexMaths/pointsets/Containment.inl>
#include <CorvexMaths/pointsets/MatrixOperations.inl>
#include <CorvexMaths/pointsets/Minkowski.inl>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/Smoothing.inl>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(unsigned int initialCapacity, unsigned int stepSize)
    : TList<V<T>>(initialCapacity, stepSize), keepBox(true), dimension(componentsOf<T, V>)
{}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(const V<T>* points, unsigned int pointCount, unsigned int stepSize)
    : TList<V<T>>(points, pointCount, stepSize), keepBox(true), dimension(componentsOf<T, V>)
{
    RecalculateBoundingBox();
}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(TList<V<T>>&& points)
    : TList<V<T>>(std::move(points)), keepBox(true), dimension(componentsOf<T, V>)
{
    RecalculateBoundingBox();
}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(TPointSet&& other) noexcept : TList<V<T>>(std::move(other))
{
    TakeBox(other);
}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(const TPointSet<T, TVector2>& other) : TPointSet(other.GetCount(), other.GetGrowSize())
{
    CopyPoints(other);
}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(const TPointSet<T, TVector3>& other) : TPointSet(other.GetCount(), other.GetGrowSize())
{
    CopyPoints(other);
}

template <class T, template <class> class V>
TPointSet<T, V>::TPointSet(const TPointSet<T, TVector4>& other) : TPointSet(other.GetCount(), other.GetGrowSize())
{
    CopyPoints(other);
}

template <class T, template <class> class V>
template <template <class> class W>
void TPointSet<T, V>::CopyPoints(const TPointSet<T, W>& other)
{
    keepBox = other.keepBox;
    this->count = other.GetCount();
    for (unsigned int i = 0; i < this->count; ++i) this->storage[i] = static_cast<V<T>>(other[i]);
    RecalculateBoundingBox();
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator=(const TPointSet& other)
{
    TList<V<T>>::operator=(other);
    boundingBox = other.boundingBox;
    keepBox = other.keepBox;
    dimension = other.dimension;
    return *this;
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator=(TPointSet&& other)
{
    if (this == &other) return *this;
    TList<V<T>>::operator=(static_cast<TList<V<T>>&&>(other)); // the rest of it follows
    TakeBox(other);
    return *this;
}

template <class T, template <class> class V>
void TPointSet<T, V>::TakeBox(TPointSet& other) noexcept
{
    boundingBox = other.boundingBox;
    keepBox = other.keepBox;
    dimension = other.dimension;
    other.boundingBox.Reset();
}

template <class T, template <class> class V>
V<T> TPointSet<T, V>::GetCentre() const
{
    V<T> sum = ZeroVector<T, V>();
    for (unsigned int i = 0; i < this->count; ++i) sum += this->storage[i];
    if (this->count > 0) sum /= static_cast<T>(this->count);
    return sum;
}

template <class T, template <class> class V>
void TPointSet<T, V>::RecalculateBoundingBox()
{
    boundingBox.Reset();
    ExtendBox<T, componentsOf<T, V>>(boundingBox, ValuesOf<T, V>(*this), this->count);
}

template <class T, template <class> class V>
bool TPointSet<T, V>::WithinRectangle(const TVector2<T>& corner, const TVector2<T>& uAxis, const V<T>& vAxis,
                                      const T& uLength, const T& vLength) const
{
    const TVector2<T> planarVAxis(vAxis.x, vAxis.y);
    for (unsigned int i = 0; i < this->count; ++i) {
        const TVector2<T> offset(this->storage[i].x - corner.x, this->storage[i].y - corner.y);
        const T u = uAxis % offset;
        const T v = planarVAxis % offset;
        if (u >= T(0) && u <= uLength && v >= T(0) && v <= vLength) return true;
    }
    return false;
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator+=(const V<T>& offset)
{
    const V<T> step = offset;
    for (unsigned int i = 0; i < this->count; ++i) this->storage[i] += step;
    boundingBox.minimum += static_cast<TVector3<T>>(step);
    boundingBox.maximum += static_cast<TVector3<T>>(step);
    return *this;
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator-=(const V<T>& offset)
{
    const V<T> step = offset;
    for (unsigned int i = 0; i < this->count; ++i) this->storage[i] -= step;
    boundingBox.minimum -= static_cast<TVector3<T>>(step);
    boundingBox.maximum -= static_cast<TVector3<T>>(step);
    return *this;
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator*=(const T& factor)
{
    const T scale = factor;
    T* values = ValuesOf<T, V>(*this);
    const std::size_t valueCount = static_cast<std::size_t>(this->count) * componentsOf<T, V>;
    for (std::size_t i = 0; i < valueCount; ++i) values[i] *= scale;
    RecalculateBoundingBox();
    return *this;
}

template <class T, template <class> class V>
void TPointSet<T, V>::ElementAdded(V<T>& point)
{
    if (keepBox) boundingBox.Extend(static_cast<TVector3<T>>(point));
}

template <class T, template <class> class V>
void TPointSet<T, V>::ElementsAdded(V<T>* points, unsigned int pointCount)
{
    if (!keepBox || pointCount == 0) return;
    const T* values = *points;
    ExtendBox<T, componentsOf<T, V>>(boundingBox, values, pointCount);
}

template <class T, template <class> class V>
void TPointSet<T, V>::ElementRemoved(V<T>& /*point*/)
{
    if (keepBox) RecalculateBoundingBox();
}

template <class T, template <class> class V>
void TPointSet<T, V>::ElementsRemoved(V<T>* /*points*/, unsigned int /*pointCount*/)
{
    if (keepBox) RecalculateBoundingBox();
}

template <class T, template <class> class V>
void TPointSet<T, V>::Cleared()
{
    if (keepBox) boundingBox.Reset();
}

CORVEX_INSTANTIATE_SETS(, TPointSet);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_SET_POINTERS(, TList, TPointSet);

} // namespace Halmont::Orrin::CorvexUtilities

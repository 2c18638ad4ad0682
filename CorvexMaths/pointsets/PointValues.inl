#pragma once

/// Points read as plain values.

#include <CorvexMaths/containers/TList.h>

#include <functional>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The number of components of a point, and so the stride from a coordinate of one point of a list to that of the next.
template <class T, template <class> class V>
constexpr unsigned int componentsOf = sizeof(V<T>) / sizeof(T);

/// The vector of zeros, w included: a default four-dimensional one has a w of 1.
template <class T, template <class> class V>
V<T> ZeroVector()
{
    V<T> zero;
    T* values = zero;
    for (unsigned int k = 0; k < componentsOf<T, V>; ++k) values[k] = T(0);
    return zero;
}

/// The points of a list as one run of values, point after point; null when the list has no block.
template <class T, template <class> class V>
T* ValuesOf(const TList<V<T>>& points)
{
    if (points.GetStream() == nullptr) return nullptr;
    return *points.GetStream();
}

/// Whether an operand exists and shares nothing with a block of slots; true for one without vectors, which may be null.
template <class Vector>
bool IsApart(const Vector* operand, unsigned int vectorCount, const Vector* block, unsigned int slotCount)
{
    if (vectorCount == 0) return true;
    const std::less_equal<const Vector*> isUpTo;
    return operand != nullptr &&
           (slotCount == 0 || isUpTo(operand + vectorCount, block) || isUpTo(block + slotCount, operand));
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// Room for many additions to a list, made at once. Internal to the library.

#include <CorvexMaths/containers/TList.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Makes room for n more elements in one block, of the capacity that as many additions one by one would have led to.
/// Where memory runs out the list stays as it was.
template <class T>
void MakeRoomForAdditions(TList<T>& list, unsigned int n)
{
    struct Fields : TList<T>
    {
        static unsigned int CapacityOf(const TList<T>& of) { return of.*(&Fields::capacity); }
        static bool IsExponential(const TList<T>& of) { return of.*(&Fields::useExponentialGrowth); }
    };
    const std::uint64_t needed = std::uint64_t(list.GetCount()) + n;
    std::uint64_t capacity = Fields::CapacityOf(list);
    if (capacity >= needed) return;

    const std::uint64_t step = std::max(list.GetGrowSize(), 1u);
    if (Fields::IsExponential(list))
        while (capacity < needed) capacity += std::max(step, capacity);
    else
        capacity += (needed - capacity + step - 1) / step * step;
    const std::uint64_t most = std::numeric_limits<unsigned int>::max();
    list.Grow(static_cast<unsigned int>(std::min(capacity, most)) - list.GetCount());
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

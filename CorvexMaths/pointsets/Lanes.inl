#pragma once

/// Values side by side, in the vector types that g++ and clang++ share: independent results at once, each with the
/// rounding it has alone.

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Sixteen bytes of values, which every supported processor holds in one register.
template <class T>
struct LaneTypes
{
    typedef T Values __attribute__((vector_size(16)));
};
template <class T>
using Lanes = typename LaneTypes<T>::Values;

/// What a comparison of lanes gives: integers of the width of T, all bits set where it holds.
template <class T>
using LaneMask = decltype(Lanes<T>() < Lanes<T>());

/// How many values stand side by side.
template <class T>
constexpr unsigned int laneCount = sizeof(Lanes<T>) / sizeof(T);

/// Reads values from an address of any alignment.
template <class T>
inline Lanes<T> LoadLanes(const T* values)
{
    Lanes<T> lanes;
    __builtin_memcpy(&lanes, values, sizeof(lanes));
    return lanes;
}

/// Reads every `stride`-th value.
template <class T, unsigned int stride>
inline Lanes<T> GatherLanes(const T* values)
{
    if constexpr (laneCount<T> == 2)
        return Lanes<T>{values[0], values[stride]};
    else
        return Lanes<T>{values[0], values[stride], values[2 * stride], values[3 * stride]};
}

/// One value in all lanes.
template <class T>
inline Lanes<T> FillLanes(T value)
{
    return Lanes<T>{} + value;
}

/// Whether a comparison holds in any lane.
template <class T>
inline bool AnyLane(LaneMask<T> mask)
{
    bool any = false;
    for (unsigned int i = 0; i < laneCount<T>; ++i) any |= mask[i] != 0;
    return any;
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

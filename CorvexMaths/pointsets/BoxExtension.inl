#pragma once

/// Extension of a box by many points at once, in lanes.

#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/primitives/TBox.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

using namespace Kernels;

/// Keeps the greater and the smaller of two values, or of values in lanes. Strict comparisons: NaN changes nothing, and
/// of equal values (zeros of either sign) the earlier stays.
template <class Value>
inline void ExtendRange(Value& lowest, Value& highest, Value value)
{
    highest = value > highest ? value : highest;
    lowest = lowest > value ? value : lowest;
}

/// Goes through the values in as many whole steps as there are, each lane keeping the range of every n-th value, and
/// then merges the lanes into the range of each component. Returns how many points that took in.
template <class T, unsigned int components, unsigned int axes>
unsigned int ExtendInLanes(T* lowest, T* highest, const T* values, unsigned int pointCount)
{
    // A step is a whole number of points and of vectors, both ranges of which stay in registers.
    constexpr unsigned int vectors = components == 3 ? 6 : 4;
    constexpr unsigned int stepSize = vectors * baselineCount<T>;
    const unsigned int steps = pointCount / (stepSize / components);
    if (steps < 2) return 0;

    T lowValues[stepSize];
    T highValues[stepSize];
    for (unsigned int i = 0; i < stepSize; ++i) {
        const unsigned int component = i % components;
        lowValues[i] = component < axes ? lowest[component] : T(0);
        highValues[i] = component < axes ? highest[component] : T(0);
    }
    BaselineLanes<T> low[vectors];
    BaselineLanes<T> high[vectors];
    for (unsigned int i = 0; i < vectors; ++i) {
        low[i] = LoadLanes(lowValues + i * baselineCount<T>);
        high[i] = LoadLanes(highValues + i * baselineCount<T>);
    }
    for (unsigned int step = 0; step < steps; ++step, values += stepSize) {
        for (unsigned int i = 0; i < vectors; ++i)
            ExtendRange(low[i], high[i], LoadLanes(values + i * baselineCount<T>));
    }
    for (unsigned int i = 0; i < stepSize; ++i) {
        const unsigned int component = i % components;
        if (component >= axes) continue;
        const T lowValue = low[i / baselineCount<T>][i % baselineCount<T>];
        const T highValue = high[i / baselineCount<T>][i % baselineCount<T>];
        if (highValue > highest[component]) highest[component] = highValue;
        if (lowest[component] > lowValue) lowest[component] = lowValue;
    }
    return steps * (stepSize / components);
}

/// The first value of a component that equals 0.
template <class T, unsigned int components>
T FirstZero(const T* values, unsigned int component)
{
    const T* value = values + component;
    while (*value != T(0)) value += components;
    return *value;
}

/// Extends a box by points that follow one another in memory, with the bits of an extension point by point. Points of
/// two components have a z of 0; a fourth component is not looked at.
///
/// Lanes find the extreme values in another order, which shows in one case alone: among zeros of both signs the first
/// in the list must win. So a bound that became 0 is looked up again.
template <class T, unsigned int components>
void ExtendBox(TBox<T>& box, const T* values, unsigned int pointCount)
{
    if (pointCount == 0) return;
    constexpr unsigned int axes = components < 3 ? components : 3;
    T lowest[3] = {box.minimum.x, box.minimum.y, box.minimum.z};
    T highest[3] = {box.maximum.x, box.maximum.y, box.maximum.z};

    const unsigned int done = ExtendInLanes<T, components, axes>(lowest, highest, values, pointCount);
    for (unsigned int i = done; i < pointCount; ++i) {
        const T* point = values + static_cast<std::size_t>(i) * components;
        for (unsigned int axis = 0; axis < axes; ++axis) ExtendRange(lowest[axis], highest[axis], point[axis]);
    }
    if constexpr (axes < 3) ExtendRange(lowest[2], highest[2], T(0));

    if (done > 0) {
        const T oldLowest[3] = {box.minimum.x, box.minimum.y, box.minimum.z};
        const T oldHighest[3] = {box.maximum.x, box.maximum.y, box.maximum.z};
        for (unsigned int axis = 0; axis < axes; ++axis) {
            if (highest[axis] == T(0) && oldHighest[axis] != T(0))
                highest[axis] = FirstZero<T, components>(values, axis);
            if (lowest[axis] == T(0) && oldLowest[axis] != T(0)) lowest[axis] = FirstZero<T, components>(values, axis);
        }
    }
    box.minimum = TVector3<T>(lowest[0], lowest[1], lowest[2]);
    box.maximum = TVector3<T>(highest[0], highest[1], highest[2]);
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

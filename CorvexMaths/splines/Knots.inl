#pragma once

/// The knot vectors of a B-spline.

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/pointsets/internal/Additions.h>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Makes room for a number of values in a list, whatever it holds, as MakeCount does.
template <class T>
void MakeRoomFor(TList<T>& list, unsigned int valueCount)
{
    if (valueCount > list.GetCount()) Kernels::MakeRoomForAdditions(list, valueCount - list.GetCount());
}

/// Gives an empty list a count, with the capacity that as many additions would lead to, and returns its first slot.
template <class T>
T* MakeCount(TList<T>& list, unsigned int valueCount)
{
    Kernels::MakeRoomForAdditions(list, valueCount);
    list.Expand(valueCount);
    return list.GetStream();
}

/// Knots evenly spaced from 0 to 1. A single one is NaN.
template <class T>
void FillUniformKnots(T* knots, unsigned int knotCount)
{
    for (unsigned int i = 0; i < knotCount; ++i) knots[i] = static_cast<T>(i) / static_cast<T>(knotCount - 1);
}

/// The first `order` knots 0, those from the control point count on 1, and between them what `inner` gives for an
/// index.
template <class T, class Inner>
void FillClampedKnots(T* knots, unsigned int knotCount, unsigned int order, unsigned int controlCount, Inner inner)
{
    for (unsigned int i = 0; i < knotCount; ++i) knots[i] = i < order ? T(0) : i < controlCount ? inner(i) : T(1);
}

/// Clamped knots, evenly spaced between the ends.
template <class T>
void FillClampedKnots(T* knots, unsigned int knotCount, unsigned int order, unsigned int controlCount)
{
    FillClampedKnots(knots, knotCount, order, controlCount, [=](unsigned int i) {
        return static_cast<T>(i - order + 1) / static_cast<T>(controlCount - order + 1);
    });
}

/// Clamped knots whose inner ones are each the mean of the `order` - 1 parameters before the knot's own index.
template <class T>
void FillAveragedKnots(T* knots, unsigned int knotCount, unsigned int order, unsigned int controlCount,
                       const TList<T>& parameters)
{
    const T inverse = T(1) / static_cast<T>(order - 1);
    FillClampedKnots(knots, knotCount, order, controlCount, [&parameters, order, inverse](unsigned int i) {
        T sum = T(0);
        for (unsigned int k = i - order + 1; k < i; ++k) sum += parameters[k];
        return inverse * sum;
    });
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

#pragma once

#include <CorvexMaths/splines/TBSpline.h>
#include <tests/pointsets/OpenSet.h>

#include <vector>

namespace CorvexTest
{

using Maths::Clamped, Maths::Uniform;

/// A spline that shows its state.
template <class PointSet>
struct OpenSplineOf;
template <class T, template <class> class V>
struct OpenSplineOf<Maths::TPointSet<T, V>> : Maths::TBSpline<T, V>
{
    using Base = Maths::TBSpline<T, V>;
    using Base::Base, Base::coefficientCount, Base::coefficients, Base::knotCount, Base::knots;
};
template <class F>
using OpenSpline = OpenSplineOf<typename F::PointSet>;

/// A spline with control points at 0, 8, 16 ... along x; all other components are 0.
template <class F>
OpenSpline<F> Straight(unsigned int order, Maths::KnotType type, unsigned int controlCount)
{
    OpenSpline<F> spline(order, type, 0, 5);
    for (unsigned int i = 0; i < controlCount; ++i) spline.Add(Point<F>(8 * i, 0, 0, 0));
    return spline;
}

/// The values of a list, each as T has it, for comparison with such.
template <class T>
std::vector<T> Values(const TList<T>& list)
{
    return {list.GetStream(), list.GetStream() + list.GetCount()};
}

/// The capacity of a list, or of a class over one.
template <class E>
unsigned int CapacityOf(const TList<E>& list)
{
    struct Open : TList<E>
    {
        static unsigned int Get(const TList<E>& any) { return any.*&Open::capacity; }
    };
    return Open::Get(list);
}

} // namespace CorvexTest

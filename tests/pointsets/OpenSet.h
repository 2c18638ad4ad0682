#pragma once

#include <tests/support/Types.h>

#include <cmath>
#include <limits>

namespace CorvexTest
{

/// A point of any dimension from four components, as many as it has.
template <class F>
typename F::Vector Point(double x, double y, double z = 0, double w = 1)
{
    using T = typename F::T;
    const T values[4] = {static_cast<T>(x), static_cast<T>(y), static_cast<T>(z), static_cast<T>(w)};
    return typename F::Vector(values);
}

/// A point set that shows its state.
template <class F>
struct OpenSet : F::PointSet
{
    using Base = typename F::PointSet;
    using Base::Base, Base::operator=, Base::boundingBox, Base::capacity, Base::keepBox;
    explicit OpenSet(const Base& other) : Base(other) {}
    OpenSet(std::initializer_list<typename F::Vector> points) : Base(0, 3)
    {
        for (const auto& point : points) this->Add(point);
    }
};

} // namespace CorvexTest

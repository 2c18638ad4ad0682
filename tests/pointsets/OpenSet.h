#pragma once

#include <tests/support/Types.h>

#include <cmath>
#include <limits>
#include <random>

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

/// A random number from 0 to below the bound.
inline unsigned int Below(std::mt19937& random, unsigned int bound)
{
    return static_cast<unsigned int>(random()) % bound;
}

/// A coordinate that invites ties: mostly a small multiple of a third or a half, a zero of either sign, now and then an
/// infinity or a NaN.
template <class T>
T AwkwardValue(std::mt19937& random, unsigned int divisor)
{
    using Limits = std::numeric_limits<T>;
    const T rare[] = {0, -T(0), 0, -T(0), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()};
    const unsigned int kind = Below(random, 64);
    return kind < 7 ? rare[kind] : (static_cast<T>(Below(random, 25)) - 12) / static_cast<T>(divisor);
}

} // namespace CorvexTest

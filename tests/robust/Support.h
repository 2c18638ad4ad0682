#pragma once

/// Random numbers and limits that the tests of the robust answers share.

#include <CorvexMaths/robust/Robust.h>
#include <tests/support/Types.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <tuple>
#include <vector>

namespace CorvexTest
{

using Maths::TPointSet;
using Maths::TVector2;
using Maths::TVector3;
using Maths::Robust::Status;

template <class T>
constexpr T NaN = std::numeric_limits<T>::quiet_NaN();
template <class T>
constexpr T infinity = std::numeric_limits<T>::infinity();

/// The same numbers on every machine, out of a seed that failures tell.
struct Random
{
    explicit Random(unsigned int seed) : trace(__FILE__, __LINE__, "seed " + std::to_string(seed)), generator(seed) {}

    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(generator()) % bound; }
    /// From -1 to 1.
    double Uniform() { return std::ldexp(static_cast<double>(generator()), -31) - 1.0; }
    /// In a box of that size about the origin.
    template <class V>
    V Within(V size)
    {
        for (unsigned int k = 0; k < sizeof(V) / sizeof(size.x); ++k)
            size[k] *= static_cast<decltype(size.x)>(Uniform());
        return size;
    }

    testing::ScopedTrace trace;
    std::mt19937 generator;
};

template <class V>
V Point(double x, double y, decltype(V().x) unit = 1)
{
    using T = decltype(V().x);
    return V(TVector2<T>(static_cast<T>(x) * unit, static_cast<T>(y) * unit));
}

} // namespace CorvexTest

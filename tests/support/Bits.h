#pragma once

/// Comparison to the bit: what `==` cannot see (the sign of a zero) counts, and any NaN equals any other.

#include <cmath>
#include <cstring>

namespace CorvexTest
{

template <class T>
inline bool SameBits(T a, T b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof(T)) == 0;
}

} // namespace CorvexTest

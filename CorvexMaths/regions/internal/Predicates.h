#pragma once

/// Exact decisions about points of the grid. Internal.
///
/// A product of two differences is formed in 128 bits at once: where the compiler has such integers that takes two
/// multiplications, fewer instructions than a `double` with a bound on its error, and never needs a second attempt.

#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/regions/internal/Grid.h>

#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

#if defined(__SIZEOF_INT128__)

/// A signed integer of 128 bits.
__extension__ typedef __int128 Wide;

inline Wide WideProduct(std::int64_t a, std::int64_t b)
{
    return static_cast<Wide>(a) * b;
}

/// The nearest `double`, the even one of two.
inline double ToDouble(const Wide& value)
{
    return static_cast<double>(value);
}

#else

/// A signed integer of 128 bits.
using Wide = Int128;

inline Wide WideProduct(std::int64_t a, std::int64_t b)
{
    return Int128::Mul(a, b);
}

/// The nearest `double`, the even one of two.
inline double ToDouble(const Wide& value)
{
    const bool isNegative = value.hi < 0;
    const Wide magnitude = isNegative ? -value : value;
    unsigned long long high = static_cast<unsigned long long>(magnitude.hi);
    unsigned long long low = magnitude.lo;
    // Shifts out what lies beyond 64 bits, and keeps whether it was 0 in the last bit: more than the 53 bits and one
    // remain, so that the conversion rounds as if it saw all.
    int shift = 0;
    for (; high != 0; ++shift) {
        low = low >> 1 | (low & 1) | high << 63;
        high >>= 1;
    }
    const double result = std::ldexp(static_cast<double>(low), shift);
    return isNegative ? -result : result;
}

#endif

/// -1, 0 or 1.
inline int SignOf(const Wide& value)
{
    return (value > Wide(0)) - (value < Wide(0));
}

/// The cross product of the steps from a to b and from c to d.
inline Wide Cross(const GridPoint& a, const GridPoint& b, const GridPoint& c, const GridPoint& d)
{
    return WideProduct(b.x - a.x, d.y - c.y) - WideProduct(b.y - a.y, d.x - c.x);
}

/// Twice the signed area of the triangle a, b, c: positive where it turns counter-clockwise.
inline Wide DoubleArea(const GridPoint& a, const GridPoint& b, const GridPoint& c)
{
    return Cross(a, b, a, c);
}

/// 1 where the way from a over b to c turns to the left, -1 where it turns to the right, 0 on a line.
inline int Orientation(const GridPoint& a, const GridPoint& b, const GridPoint& c)
{
    return SignOf(DoubleArea(a, b, c));
}

/// Twice the signed area of a ring, exact.
inline Wide DoubleArea(const Ring& ring)
{
    Wide sum(0);
    for (std::size_t i = 2; i < ring.size(); ++i) sum += DoubleArea(ring[0], ring[i - 1], ring[i]);
    return sum;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

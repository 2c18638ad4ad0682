#pragma once

/// The product and the quotient of Int128 by integers of 64 bits alone, for compilers that have none of 128. Internal.

#include <CorvexMaths/exact/Int128.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The exact product, by 32-bit halves.
inline Int128 PortableProduct(long long a, long long b)
{
    using Word = unsigned long long;
    constexpr Word mask = 0xffffffffu;
    const Word x = static_cast<Word>(a);
    const Word y = static_cast<Word>(b);
    // No sum of a product of halves and a half or two exceeds a word.
    const Word low = (x & mask) * (y & mask);
    const Word middle = (x >> 32) * (y & mask) + (low >> 32);
    const Word other = (x & mask) * (y >> 32) + (middle & mask);
    const Word high = (x >> 32) * (y >> 32) + (middle >> 32) + (other >> 32);
    // A negative factor was read as one that is 2^64 greater.
    return Int128(static_cast<long long>(high - (a < 0 ? y : 0) - (b < 0 ? x : 0)), other << 32 | (low & mask));
}

/// The quotient of two values read as unsigned, by long division in base 2. The divisor is from 1 to 2^127.
inline Int128 PortableQuotient(const Int128& dividend, const Int128& divisor)
{
    using Word = unsigned long long;
    const Word divisorHigh = static_cast<Word>(divisor.hi);
    Word rest[2] = {0, 0}; // Low word first, as in the quotient.
    Word quotient[2] = {0, 0};
    for (int bit = 127; bit >= 0; --bit) {
        const Word word = bit >= 64 ? static_cast<Word>(dividend.hi) : dividend.lo;
        rest[1] = rest[1] << 1 | rest[0] >> 63;
        rest[0] = rest[0] << 1 | (word >> bit % 64 & 1);
        if (rest[1] < divisorHigh || (rest[1] == divisorHigh && rest[0] < divisor.lo)) continue;
        rest[1] -= divisorHigh + (rest[0] < divisor.lo ? 1 : 0);
        rest[0] -= divisor.lo;
        quotient[bit / 64] |= Word(1) << bit % 64;
    }
    return Int128(static_cast<long long>(quotient[1]), quotient[0]);
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// An order of the plane in which neighbours are near. Internal.

#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The place of a cell on the curve through a square of 2^bits by 2^bits cells (D. Hilbert, 1891): cells near on the
/// curve are near in the plane. `Place` holds twice as many bits.
template <unsigned int bits, class Place>
Place GetHilbertPlace(std::uint32_t x, std::uint32_t y)
{
    static_assert(bits <= 32 && 2 * bits <= 8 * sizeof(Place));
    Place place = 0;
    for (unsigned int bit = bits; bit-- > 0;) {
        const std::uint32_t right = x >> bit & 1, upper = y >> bit & 1;
        place = place << 2 | ((3 * right) ^ upper);
        // Turns a lower quarter so that the curve within it starts where that before it ends: the right one is turned
        // round, and both have their axes exchanged. Without branches, as none of them could be foreseen.
        const std::uint32_t turned = 0 - (right & ~upper);
        x ^= turned;
        y ^= turned;
        const std::uint32_t exchanged = (x ^ y) & (upper - 1);
        x ^= exchanged;
        y ^= exchanged;
    }
    return place;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

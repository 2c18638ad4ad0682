#pragma once

/// An order of the plane in which neighbours are near. Internal.

#include <cstdint>
#include <utility>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The place of a cell on the curve through a square of 2^bits by 2^bits cells (D. Hilbert, 1891): cells near on the
/// curve are near in the plane. `Place` holds twice as many bits.
template <unsigned int bits, class Place>
Place GetHilbertPlace(std::uint32_t x, std::uint32_t y)
{
    static_assert(bits <= 32 && 2 * bits <= 8 * sizeof(Place));
    Place place = 0;
    for (std::uint32_t side = std::uint32_t(1) << (bits - 1); side != 0; side >>= 1) {
        const std::uint32_t right = (x & side) != 0 ? 1 : 0;
        const std::uint32_t upper = (y & side) != 0 ? 1 : 0;
        place = place << 2 | ((3 * right) ^ upper);
        // Turns the quarter so that the curve within it starts where that before it ends.
        if (upper == 0) {
            if (right == 1) {
                x = ~x;
                y = ~y;
            }
            std::swap(x, y);
        }
    }
    return place;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

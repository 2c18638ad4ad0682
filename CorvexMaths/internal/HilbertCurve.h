#pragma once

/// An order of the plane in which neighbours are near. Internal.

#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Four levels of the curve at a time. Within a cell the curve may have its axes exchanged, run the other way round in
/// both, or both: these are four states.
class HilbertSteps
{
public:
    static constexpr unsigned int bitCount = 4;

    constexpr HilbertSteps()
    {
        for (unsigned int state = 0; state < 4; ++state)
            for (unsigned int cell = 0; cell < 256; ++cell)
                steps[state][cell] = Make(state, cell >> bitCount, cell & 15);
    }

    /// From a state and four bits of x and of y, the eight bits of the place, and above them the next state.
    constexpr unsigned int Get(unsigned int state, unsigned int x, unsigned int y) const
    {
        return steps[state][x << bitCount | y];
    }

private:
    std::uint16_t steps[4][256] = {};

    static constexpr std::uint16_t Make(unsigned int state, unsigned int x, unsigned int y)
    {
        unsigned int exchanged = state & 1, turned = state >> 1, place = 0;
        for (unsigned int bit = bitCount; bit-- > 0;) {
            const unsigned int a = (x >> bit & 1) ^ turned, b = (y >> bit & 1) ^ turned;
            const unsigned int right = exchanged != 0 ? b : a, upper = exchanged != 0 ? a : b;
            place = place << 2 | ((3 * right) ^ upper);
            // A lower quarter is turned so that the curve within it starts where that before it ends: the right one
            // runs the other way round, and both have their axes exchanged.
            exchanged ^= upper ^ 1;
            turned ^= right & (upper ^ 1);
        }
        return static_cast<std::uint16_t>(place | exchanged << 2 * bitCount | turned << (2 * bitCount + 1));
    }
};

inline constexpr HilbertSteps hilbertSteps;

/// The place of a cell on the curve through a square of 2^bits by 2^bits cells (D. Hilbert, 1891): cells near on the
/// curve are near in the plane. `Place` holds twice as many bits.
template <unsigned int bits, class Place>
Place GetHilbertPlace(std::uint32_t x, std::uint32_t y)
{
    constexpr unsigned int stepBits = HilbertSteps::bitCount;
    constexpr unsigned int stepCount = (bits + stepBits - 1) / stepBits;
    static_assert(bits <= 32 && 2 * bits <= 8 * sizeof(Place));
    Place place = 0;
    // Each leading 0 that fills up the first step exchanges the axes.
    unsigned int state = (stepCount * stepBits - bits) & 1;
    for (unsigned int bit = stepCount * stepBits; bit > 0;) {
        bit -= stepBits;
        const unsigned int step = hilbertSteps.Get(state, x >> bit & 15, y >> bit & 15);
        place = place << 2 * stepBits | (step & 255);
        state = step >> 2 * stepBits;
    }
    return place;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

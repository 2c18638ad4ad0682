#pragma once

/// The cards of the gallery, each with a picture and the lines of code that made it.

#include "Figure.h"

#include <CorvexMaths/pointsets/TPointSet.h>

#include <cstdint>
#include <string>
#include <vector>

/// Runs a statement and keeps its text for the page, so that what is shown is what was done. A `card` must be in scope.
#define SHOWN(...)                                                                                                     \
    __VA_ARGS__;                                                                                                       \
    card.code.push_back(#__VA_ARGS__ ";")

namespace Gallery
{

using Points = Halmont::Orrin::CorvexMaths::TPointSet<double, Halmont::Orrin::CorvexMaths::TVector2>;

/// One picture with what stands beside it. The name is that of its file, without the extension.
struct Card
{
    std::string name;
    std::string title;
    std::string caption = {};
    std::vector<std::string> code = {};
    Figure figure = {};
};

/// Numbers that look random and are the same on every machine.
class Noise
{
public:
    explicit Noise(std::uint64_t seed) : state(seed) {}

    /// The next number, evenly spread from -range to range.
    double Next(double range)
    {
        // The linear congruential generator that D. E. Knuth gives; its high bits are good enough to draw with.
        state = state * 6364136223846793005u + 1442695040888963407u;
        return range * (static_cast<double>(state >> 11) / 4503599627370496.0 - 1);
    }

private:
    std::uint64_t state;
};

std::vector<Card> DrawPolygons();
std::vector<Card> DrawRegions();
std::vector<Card> DrawPoints();
std::vector<Card> DrawCurves();
std::vector<Card> DrawSolids();
std::vector<Card> DrawRobust();

} // namespace Gallery

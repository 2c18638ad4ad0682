#pragma once

/// The grid of whole numbers on which regions are computed. Internal.

#include <cmath>
#include <cstdint>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A point of the grid: its numbers times the step of the grid are its coordinates, exactly.
///
/// Points of one arrangement differ by less than 2^42 in x and in y. A cross product of two differences is then below
/// 2^85 in magnitude, and a sum of 2^40 of them fits into 128 bits.
struct GridPoint
{
    std::int64_t x = 0;
    std::int64_t y = 0;

    bool operator==(const GridPoint& other) const { return x == other.x && y == other.y; }
    bool operator!=(const GridPoint& other) const { return !(*this == other); }
    /// The canonical order: lower before higher, then left before right.
    bool operator<(const GridPoint& other) const { return y != other.y ? y < other.y : x < other.x; }
};

/// A closed outline; the edge from the last point to the first is implied.
using Ring = std::vector<GridPoint>;

/// A grid through the origin whose step is a power of two.
///
/// Its step is the smallest that leaves both of these whole: an extent of at most 2^41 steps, and numbers of at most
/// 2^53, which a `double` holds exactly. The first leaves as much room again for offsets: whoever moves points further
/// than the extent takes a grid for the extent to come.
class Grid
{
public:
    /// How many steps the extent has at most, as an exponent of two. It has at least half as many, unless the
    /// coordinates are so far from the origin that `double` tells fewer of them apart.
    static constexpr int extentBits = 41;

    /// Of the step 2^stepExponent.
    explicit Grid(int stepExponent = 0) : exponent(stepExponent)
    {
        const int half = exponent / 2;
        up[0] = std::ldexp(1.0, half);
        up[1] = std::ldexp(1.0, exponent - half);
        down[0] = std::ldexp(1.0, -half);
        down[1] = std::ldexp(1.0, half - exponent);
    }

    /// The grid for finite coordinates of at most `size` in magnitude, and of at most `extent` from the least to the
    /// greatest in x and in y.
    static Grid For(double size, double extent)
    {
        constexpr int finest = -1074; // the step of denormal numbers
        int result = finest;
        if (size > 0.0) result = std::ilogb(size) - 52;
        if (extent > 0.0) {
            int extentExponent = 0;
            // extent = fraction 2^extentExponent with a fraction from a half up to 1
            const double fraction = std::frexp(extent, &extentExponent);
            const int needed = extentExponent - extentBits - (fraction == 0.5 ? 1 : 0);
            if (needed > result) result = needed;
        }
        return Grid(result < finest ? finest : result);
    }

    int GetExponent() const { return exponent; }

    /// The distance of neighbouring grid lines.
    double GetStep() const { return std::ldexp(1.0, exponent); }

    /// The number of the grid line nearest to a coordinate, the even one of two.
    std::int64_t ToGrid(double coordinate) const { return std::llrint(coordinate * down[0] * down[1]); }

    /// The coordinate of a grid line, exact up to 2^53.
    double FromGrid(std::int64_t number) const { return static_cast<double>(number) * up[0] * up[1]; }

    bool operator==(const Grid& other) const { return exponent == other.exponent; }
    bool operator!=(const Grid& other) const { return exponent != other.exponent; }

private:
    int exponent;
    /// The step and its reciprocal, each as two factors, as the whole may lie beyond what a `double` holds.
    double up[2];
    double down[2];
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

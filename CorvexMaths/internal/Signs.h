#pragma once

/// The exact signs of three determinants, on plain coordinates.
///
/// Each is computed with `double` and taken where it exceeds the greatest error that rounding can have made; that bound
/// grows with the sum of the magnitudes of its terms, by factors that J. R. Shewchuk derived in 1997. A few of the
/// smallest denormal numbers are added for products that underflow. NaN and infinite intermediate results fail the
/// comparison. What is left goes to exact arithmetic.

#include <cmath>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Half a unit in the last place of 1.
constexpr double halfUnit = 1.1102230246251565e-16;

/// What a product that underflows can be off by, several times over.
constexpr double underflow = 8 * 4.9406564584124654e-324;

/// A point of the plane.
struct Place
{
    double x, y;
};

/// The signs by exact arithmetic; 0 where a coordinate is not finite.
/// @{
int ExactOrientation(Place a, Place b, Place c);
int ExactInCircle(Place a, Place b, Place c, Place d);
int ExactDot(Place p, Place q, Place apex);
/// @}

/// The sign of a sum of two products of differences, or 2 where rounding may have changed it.
inline int FilteredSign(double first, double second)
{
    const double sum = first + second;
    const double bound = (3 + 16 * halfUnit) * halfUnit * (std::fabs(first) + std::fabs(second)) + underflow;
    if (sum > bound) return 1;
    if (-sum > bound) return -1;
    return 2;
}

/// 1 where a, b, c turn to the left, -1 to the right, 0 on a line.
inline int OrientationSign(Place a, Place b, Place c)
{
    const double ax = a.x - c.x, ay = a.y - c.y;
    const double bx = b.x - c.x, by = b.y - c.y;
    const int sign = FilteredSign(ax * by, -(ay * bx));
    if (sign != 2) return sign;
    // A difference is 0 for equal numbers alone: lines along the axes need no more.
    if ((ax == 0 || by == 0) && (ay == 0 || bx == 0)) return 0;
    return ExactOrientation(a, b, c);
}

/// The sign of the dot product of p - apex and q - apex: 1 where the angle at the apex is acute, 0 where it is right.
inline int DotSign(Place p, Place q, Place apex)
{
    const int sign = FilteredSign((p.x - apex.x) * (q.x - apex.x), (p.y - apex.y) * (q.y - apex.y));
    return sign != 2 ? sign : ExactDot(p, q, apex);
}

/// 1 where d lies within the circle through a, b, c, that turn to the left, 0 on it, -1 outside; where they turn to the
/// right the sign is the opposite.
inline int InCircleSign(Place a, Place b, Place c, Place d)
{
    const double ax = a.x - d.x, ay = a.y - d.y;
    const double bx = b.x - d.x, by = b.y - d.y;
    const double cx = c.x - d.x, cy = c.y - d.y;
    const double aa = ax * ax + ay * ay;
    const double bb = bx * bx + by * by;
    const double cc = cx * cx + cy * cy;
    const double sum = aa * (bx * cy - cx * by) + bb * (cx * ay - ax * cy) + cc * (ax * by - bx * ay);
    const double aMinor = std::fabs(bx * cy) + std::fabs(cx * by);
    const double bMinor = std::fabs(cx * ay) + std::fabs(ax * cy);
    const double cMinor = std::fabs(ax * by) + std::fabs(bx * ay);
    // What a square or a minor loses by underflow is multiplied by the other factor of its term.
    const double bound = (10 + 96 * halfUnit) * halfUnit * (aa * aMinor + bb * bMinor + cc * cMinor) +
                         underflow * (1 + (aa + bb + cc) + (aMinor + bMinor + cMinor));
    if (sum > bound) return 1;
    if (-sum > bound) return -1;
    return ExactInCircle(a, b, c, d);
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

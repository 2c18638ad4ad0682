#pragma once

/// Vectors of the plane as kernels of regions use them: plain, and without tolerances.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A place or a direction, in steps of the grid.
struct PlaneVector
{
    double x = 0;
    double y = 0;
};

inline PlaneVector operator+(const PlaneVector& a, const PlaneVector& b)
{
    return {a.x + b.x, a.y + b.y};
}

inline PlaneVector operator-(const PlaneVector& a, const PlaneVector& b)
{
    return {a.x - b.x, a.y - b.y};
}

inline PlaneVector operator*(const PlaneVector& a, double factor)
{
    return {a.x * factor, a.y * factor};
}

inline double Dot(const PlaneVector& a, const PlaneVector& b)
{
    return a.x * b.x + a.y * b.y;
}

/// Positive where b is to the left of a.
inline double Cross(const PlaneVector& a, const PlaneVector& b)
{
    return a.x * b.y - a.y * b.x;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// Cones: solids of revolution between a tip and a base, and their intersection with lines.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A cone with its base, for T of `float` and `double`: a plain value of eight scalars. Lengths and tolerances are
/// absolute, in the caller's unit.
template <class T>
struct TCone
{
    /// The tip.
    TVector3<T> apex;
    /// The unit vector from the tip into the cone.
    TVector3<T> axis;
    /// The radius of the base.
    T radius;
    /// The distance from the tip to the base along the axis.
    T height;

    /// Radius and height 1, the tip at the origin, the axis along z.
    TCone() : TCone(T(1), T(1)) {}
    /// The cone of a base radius and a height with its tip at the origin, the axis along z.
    TCone(const T& baseRadius, const T& length) : axis(T(0), T(0), T(1)), radius(baseRadius), height(length) {}
    /// The cone of a base radius and a height from a tip along a vector, which is normalised; the zero vector stays.
    TCone(const T& baseRadius, const T& length, const TVector3<T>& tip, const TVector3<T>& along)
        : apex(tip), axis(along), radius(baseRadius), height(length)
    {
        axis.Normalise();
    }
    /// The cone of a base radius and a height from the tip (x, y, z) along (ax, ay, az), which is normalised; the zero
    /// vector stays.
    TCone(const T& baseRadius, const T& length, const T& x, const T& y, const T& z, const T& ax, const T& ay,
          const T& az)
        : TCone(baseRadius, length, TVector3<T>(x, y, z), TVector3<T>(ax, ay, az))
    {}

    /// Where a line of unit direction passes through the surface, base included: true when exactly two hits remain. A
    /// hit of the base comes first, then those of the side by the formula (-b + root) / 2a before the other: further
    /// along the line first, unless it is steeper than the side.
    ///
    /// The base is the disc of `TCircle3::IntersectWith`. A hit of the side counts from the tip to the base, to within
    /// the common tolerance, inclusively. The exception is a line along a generator, where the leading coefficient of
    /// the quadratic is zero within that tolerance: its one hit counts wherever it lies, on the mirrored cone behind
    /// the tip too, and is NaN where the line is a generator itself. Of three hits one that coincides with an earlier
    /// one, in each component to within the tolerance, is dropped; two hits stay as they are, at the rim equal ones.
    ///
    /// False, and nothing written, with one hit or none, as on a tangent of the side or with NaN in the line, and with
    /// three distinct ones.
    /// That the direction is of unit length is not checked, and a height of 0 not guarded against. Neither pointer may
    /// be null; what they point to may be part of this cone or of the line.
    /// @param line The line, of unit direction.
    /// @param[out] p1 The first hit: that of the base if there is one.
    /// @param[out] p2 The second hit.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* p1, TVector3<T>* p2) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCone);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TCone);

} // namespace Halmont::Orrin::CorvexMaths

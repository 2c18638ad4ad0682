#pragma once

/// Spirals in space, as polylines.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/containers/Instantiations.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// The points of a flat spiral, for T of `float` and `double`: the constructor generates them, afterwards this is a
/// list of them and nothing else.
template <class T>
struct TSpiral3
{
    /// The points, from the start outwards. Its grow size is 1000.
    TList<TVector3<T>> points;

    /// Generates a spiral in the plane through a centre across an axis, which need not be of unit length. Point i lies
    /// at an angle of i times `angleStep` radians from the first, counter-clockwise as seen from the tip of the axis,
    /// and at a distance of `radius` + i times `growth` from the centre, on the opposite side where that is negative.
    /// The first point lies in the direction of `TVector3::OrthonormalX` of the axis.
    ///
    /// There are `count` points, and one if `count` is below 1. Each is turned and scaled afresh from the first, so
    /// that errors do not add up. A radius of 0 makes all points after the first NaN; an axis of zero puts all of them
    /// at the centre. Time in proportion to the number of points.
    /// @param centre The middle of the spiral.
    /// @param axis Across its plane; of any length.
    /// @param radius The distance of the first point from the centre.
    /// @param count How many points.
    /// @param angleStep The angle from point to point, in radians.
    /// @param growth The increase of the distance from point to point.
    TSpiral3(TVector3<T> centre, TVector3<T> axis, T radius, int count, T angleStep, T growth);
    /// A copy of the points and the grow size, as `TList` makes it.
    TSpiral3(const TSpiral3& other) = default;
    /// Assigns the points and the grow size as `TList` does: a spiral assigned to itself ends empty.
    TSpiral3& operator=(const TSpiral3& other) = default;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TSpiral3);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TSpiral3);

} // namespace Halmont::Orrin::CorvexMaths

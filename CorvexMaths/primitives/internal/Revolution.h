#pragma once

/// What the intersections of cones and cylinders with a line share: small numbers and a frame of their own. Internal to
/// the library.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/internal/Quadratic.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The same line with its point nearest to another point as origin, so that parameters stay small where it matters. The
/// direction is copied, not normalised again.
template <class T>
TLine3<T> StartNear(const TLine3<T>& line, const TVector3<T>& point)
{
    TLine3<T> moved = line;
    moved.origin = line.Evaluate((point - line.origin) % line.direction);
    return moved;
}

/// A line as it stands in the frame of a solid of revolution: z along the solid's axis, the origin on it.
template <class T>
struct LineInFrame
{
    /// The unit vectors of the frame, as columns.
    TMatrix3x3<T> axes;
    /// The origin of the frame in the world.
    TVector3<T> start;
    /// The line in the frame.
    TVector3<T> origin, direction;

    /// The frame at a point along a unit vector, which is taken as it is.
    LineInFrame(const TLine3<T>& line, const TVector3<T>& point, const TVector3<T>& axis) : start(point)
    {
        TVector3<T> x, y;
        axis.OrthonormalXY(&x, &y);
        axes = TMatrix3x3<T>(x, y, axis);
        TMatrix3x3<T> toFrame = axes;
        toFrame.Transpose();
        origin = toFrame * (line.origin - start);
        direction = toFrame * line.direction;
    }

    /// The point at a parameter, in the frame.
    TVector3<T> Evaluate(T t) const { return origin + direction * t; }
    /// A point of the frame in the world.
    TVector3<T> ToWorld(const TVector3<T>& point) const { return axes * point + start; }
};

/// Whether a height lies between the ends of a solid, to within the common tolerance, inclusively. NaN does not.
template <class T>
bool IsBetweenEnds(T z, T height)
{
    return -Numbers::commonTolerance<T> <= z && z <= height + Numbers::commonTolerance<T>;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

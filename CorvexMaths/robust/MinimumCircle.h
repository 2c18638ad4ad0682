#pragma once

/// The smallest circle around points of the plane, by exact decisions.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The smallest circle that holds all points, whatever the size of their coordinates and their distance from the
/// origin.
///
/// Which points the circle rests on is decided exactly, on the coordinates as they are given; a point that lies on the
/// circle of others is neither in nor out by rounding. The circle is then computed from those points in exact
/// expansions: each of its values is within two units in the last place, of the coordinate of greatest magnitude for
/// the centre and of itself for the radius. A point on the rim can thus be outside the rounded circle by as much. The
/// values are the same in whatever order the points are given.
///
/// One point, or several that coincide, have a circle of radius 0. There is none, and all is zero, for an empty set
/// (`TooFewPoints`), and where a coordinate is NaN or infinite or the radius is beyond the greatest number
/// (`NotFinite`).
///
/// The method: a circle on two or three points is exchanged for that which the point farthest outside demands (B.
/// Gaertner, 1999), with the signs of `Predicates` for the decisions. The circle grows with each exchange, so that no
/// support comes twice and the search ends; it takes about ten passes over the points.
template <class T>
class CORVEX_API MinimumCircle : public Answer
{
public:
    /// The circle.
    TCircle2<T> circle;

    /// No answer yet.
    MinimumCircle() = default;

    /// The smallest circle around the points.
    explicit MinimumCircle(const TPointSet<T, TVector2>& points);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, MinimumCircle);

} // namespace Halmont::Orrin::CorvexMaths::Robust

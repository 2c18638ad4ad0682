#pragma once

/// The convex hull of points of the plane, by exact decisions.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The convex hull of a set, right for grids, runs of points on a line, repeated points, and coordinates of any size.
///
/// x and y alone decide; a vertex is a copy of an input point with all its components, of points that coincide in x and
/// y the first one in the set. Vertices run counter-clockwise from the lowest, of equally low ones the leftmost, and
/// the polygon is strictly convex: no vertex lies on the line of its neighbours.
///
/// Points on a line have a hull of its two ends, coinciding points a hull of one vertex; those are answers too, with
/// the status `Done`. There is none, and the polygon has no vertices, for an empty set (`TooFewPoints`) and where an x
/// or a y is NaN or infinite (`NotFinite`).
///
/// The method: points that lie strictly inside a polygon of eight extreme ones are left out (S. G. Akl and G. T.
/// Toussaint, 1978), the others sorted and walked up and down (A. M. Andrew, 1979), all by the signs of `Predicates`.
/// Time grows as n log n at most, and in proportion to the points where few of them are near the outline. Where points
/// do not coincide the result does not depend on their order.
template <class T, template <class> class V>
class CORVEX_API ConvexHull : public Answer
{
public:
    /// The hull; its box is calculated.
    TPolygon<T, V> polygon;

    /// No answer yet.
    ConvexHull() = default;

    /// The hull of the points. A failed allocation passes to the caller.
    explicit ConvexHull(const TPointSet<T, V>& points);
};

CORVEX_INSTANTIATE_SETS(extern, ConvexHull);

} // namespace Halmont::Orrin::CorvexMaths::Robust

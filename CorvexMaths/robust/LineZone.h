#pragma once

/// Straightness in the plane: the narrowest strip that holds all points.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The minimum zone of points of the plane between two parallel lines, the straightness of ISO 1101, for T of `float`
/// and `double`; made from at least 2 points. The narrowest strip lies along a side of the convex hull, and all sides
/// are tried (M. E. Houle and G. T. Toussaint, "Computing the width of a set", 1988): it is the least of all, not a
/// local one. Where several strips tie, one of them is told. Points that coincide leave the direction open.
///
/// Time is that of the exact hull.
template <class T>
class CORVEX_API LineZone : public Answer
{
public:
    /// The line midway, from the middle of the hull's side; of the two directions it has that whose greatest component
    /// is positive.
    TLine2<T> line;
    /// The width of the strip.
    T width = T(0);

    /// The zone of the points.
    explicit LineZone(const TPointSet<T, TVector2>& points);
};

extern template class LineZone<float>;
extern template class LineZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

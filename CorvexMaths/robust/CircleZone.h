#pragma once

/// Roundness: the narrowest ring that holds all points.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The minimum zone of points of the plane between two circles of one centre, the roundness of ISO 1101, for T of
/// `float` and `double`; made from at least 3 points. From the circle of least squares, and from centres all around,
/// the linear problem of the least greatest distance is solved by exchange and its step taken until none narrows the
/// ring; the narrowest one is told. Where several tie, one of them is. Where even the narrowest strip between two lines
/// is narrower, which is a ring without end, the status is `Status::Degenerate`.
///
/// Each exchange is a pass over the points, of which there are some ten from each start.
template <class T>
class CORVEX_API CircleZone : public Answer
{
public:
    /// The circle midway.
    TCircle2<T> circle;
    /// The width of the ring.
    T width = T(0);

    /// The zone of the points.
    explicit CircleZone(const TPointSet<T, TVector2>& points);
};

extern template class CircleZone<float>;
extern template class CircleZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

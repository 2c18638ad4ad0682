#pragma once

/// Flatness: the narrowest slab that holds all points.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The minimum zone of points between two parallel planes, the flatness of ISO 1101, for T of `float` and `double`;
/// made from at least 3 points. From the plane of least squares, and from directions all around, the best plane of the
/// least greatest distance is found by exchange and turned to until it turns no more; the narrowest zone is told. Where
/// several tie, one of them is. Points on a line leave the plane open.
///
/// Each exchange is a pass over the points, of which there are some ten from each start.
template <class T>
class CORVEX_API PlaneZone : public Answer
{
public:
    /// The plane midway, nearest to the points' centroid; of the two normals it has that whose greatest component is
    /// positive.
    TPlane<T> plane;
    /// The width of the slab.
    T width = T(0);

    /// The zone of the points.
    explicit PlaneZone(const TPointSet<T, TVector3>& points);
};

extern template class PlaneZone<float>;
extern template class PlaneZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

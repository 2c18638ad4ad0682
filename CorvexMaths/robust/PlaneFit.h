#pragma once

/// The plane of least squared distances.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/robust/FitAnswer.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The plane of least squared distances from points, for T of `float` and `double`; made from at least 3 points. Its
/// point is the centroid; of the two normals it has that whose greatest component is positive. A distance is positive
/// on the side of the normal.
template <class T>
class CORVEX_API PlaneFit : public FitAnswer<T>
{
public:
    /// The plane.
    TPlane<T> plane;
    /// The standard deviations of its fields.
    TPlane<T> deviation;

    /// Fits the plane. `distances`, which may be null, receives the signed distance of each point in order; it is
    /// emptied where the status is not `Status::Done`.
    explicit PlaneFit(const TPointSet<T, TVector3>& points, TList<T>* distances = nullptr);
};

extern template class PlaneFit<float>;
extern template class PlaneFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

#pragma once

/// The sphere of least squared distances.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TSphere.h>
#include <CorvexMaths/robust/FitAnswer.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The sphere of least squared distances from points, for T of `float` and `double`; made from at least 4 points.
template <class T>
class CORVEX_API SphereFit : public FitAnswer<T>
{
public:
    /// The sphere.
    TSphere<T> sphere;
    /// The standard deviations of its components.
    TSphere<T> deviation;

    /// Fits the sphere. `distances`, which may be null, receives the signed distance of each point in order, positive
    /// outside; it is emptied where the status is not `Status::Done`.
    explicit SphereFit(const TPointSet<T, TVector3>& points, TList<T>* distances = nullptr);
};

extern template class SphereFit<float>;
extern template class SphereFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

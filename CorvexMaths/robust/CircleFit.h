#pragma once

/// The circle of least squared distances, in the plane and in space.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/robust/FitAnswer.h>

#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The circle of least squared distances from points, for T of `float` and `double` and V of `TVector2` and `TVector3`;
/// made from at least 3 points.
///
/// In space, centre, normal and radius are fitted together: the distance is that from the rim, in its plane and across
/// it, and not that of a projection. Its sign says on which side of the cylinder over the circle the point lies,
/// positive outside, and not on which side of the plane: right above and below the rim it jumps between a distance and
/// its negative, so that errors across the plane count up to twice in `peakToValley`, and `rms` is that of the whole
/// distances. Of the two normals the circle has that whose greatest component is positive.
template <class T, template <class> class V>
class CORVEX_API CircleFit : public FitAnswer<T>
{
public:
    /// `TCircle2` for points of the plane, `TCircle3` for points in space.
    using Circle = std::conditional_t<std::is_same_v<V<T>, TVector2<T>>, TCircle2<T>, TCircle3<T>>;

    /// The circle.
    Circle circle;
    /// The standard deviations of its fields.
    Circle deviation;

    /// Fits the circle. `distances`, which may be null, receives the signed distance of each point in order, positive
    /// outside; it is emptied where the status is not `Status::Done`.
    explicit CircleFit(const TPointSet<T, V>& points, TList<T>* distances = nullptr);
};

extern template class CircleFit<float, TVector2>;
extern template class CircleFit<float, TVector3>;
extern template class CircleFit<double, TVector2>;
extern template class CircleFit<double, TVector3>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

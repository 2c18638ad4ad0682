#pragma once

/// The cone of least squared distances.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/robust/FitAnswer.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The cone of least squared distances from points, for T of `float` and `double`; made from at least 7 points. No
/// starting value is asked for: directions all around are tried, and the best minimum is taken.
///
/// The side alone is fitted; the distance of a point is that from the line that generates the cone, in the plane of the
/// point and the axis. Points whose foot on that line lies beyond the apex make the status `Status::Degenerate`, and so
/// does a half angle that the points do not tell from 0, as those of a cylinder.
///
/// The apex of a slender cone lies far from the points, and there its rounding, with that of the axis, moves the
/// surface at the points. Whoever computes on with the cone takes `point`, `halfAngle` and `radius` instead.
///
/// The standard deviations take heights along the axis as given. Those of `radius`, `halfAngle` and `point` are those
/// at the height of the centroid, which itself counts as known, and those of `cone.height` and `cone.radius` are those
/// at the outermost point, whose own error is left out: what they tell is how apex, axis, radius and angle vary between
/// the two, tilts of the axis that raise the point included.
template <class T>
class CORVEX_API ConeFit : public FitAnswer<T>
{
public:
    /// The cone, its axis from the apex towards the points, its base at the outermost point along the axis.
    TCone<T> cone;
    /// The standard deviations of its fields.
    TCone<T> deviation;

    /// The point of the axis at the height of the points' centroid.
    TVector3<T> point;
    /// The radius there.
    T radius = T(0);
    /// The angle between axis and side, in radians, from 0 to a quarter turn.
    T halfAngle = T(0);
    /// The standard deviations of the components of `point`.
    TVector3<T> pointDeviation;
    /// The standard deviation of `radius`, at that height. Elsewhere that of `halfAngle` enters with the distance.
    T radiusDeviation = T(0);
    /// The standard deviation of `halfAngle`.
    T halfAngleDeviation = T(0);

    /// Fits the cone. `distances`, which may be null, receives the signed distance of each point from the endless side
    /// in order, positive outside; it is emptied where the status is not `Status::Done`.
    explicit ConeFit(const TPointSet<T, TVector3>& points, TList<T>* distances = nullptr);
};

extern template class ConeFit<float>;
extern template class ConeFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

#pragma once

/// The line of least squared distances, in the plane and in space.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/robust/FitAnswer.h>

#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The line of least squared distances from points, for T of `float` and `double` and V of `TVector2` and `TVector3`;
/// made from at least 2 points. Its origin is the centroid; of the two directions it has that whose greatest component
/// is positive.
///
/// In the plane a distance is positive to the left of the direction. In space a distance has no sign, and
/// `peakToValley` is the diameter of the least cylinder about the line that holds all points.
template <class T, template <class> class V>
class CORVEX_API LineFit : public FitAnswer<T>
{
public:
    /// `TLine2` for points of the plane, `TLine3` for points in space.
    using Line = std::conditional_t<std::is_same_v<V<T>, TVector2<T>>, TLine2<T>, TLine3<T>>;

    /// The line.
    Line line;
    /// The standard deviations of its fields.
    Line deviation;

    /// Fits the line. `distances`, which may be null, receives the distance of each point in order; it is emptied
    /// where the status is not `Status::Done`.
    explicit LineFit(const TPointSet<T, V>& points, TList<T>* distances = nullptr);
};

extern template class LineFit<float, TVector2>;
extern template class LineFit<float, TVector3>;
extern template class LineFit<double, TVector2>;
extern template class LineFit<double, TVector3>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

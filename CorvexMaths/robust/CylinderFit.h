#pragma once

/// The cylinder of least squared distances.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/robust/FitAnswer.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The cylinder of least squared distances from points, for T of `float` and `double`; made from at least 6 points. No
/// starting value is asked for: directions all around are tried, and the best minimum is taken.
///
/// The side alone is fitted. The caps lie at the outermost points along the axis, the centre midway between them. Of
/// the two directions the axis has that whose greatest component is positive.
template <class T>
class CORVEX_API CylinderFit : public FitAnswer<T>
{
public:
    /// The cylinder.
    TCylinder<T> cylinder;
    /// The standard deviations of its fields.
    TCylinder<T> deviation;

    /// Fits the cylinder. `distances`, which may be null, receives the signed distance of each point from the endless
    /// side in order, positive outside; it is emptied where the status is not `Status::Done`.
    explicit CylinderFit(const TPointSet<T, TVector3>& points, TList<T>* distances = nullptr);
};

extern template class CylinderFit<float>;
extern template class CylinderFit<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

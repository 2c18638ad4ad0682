#pragma once

/// The rigid motion that carries a scan onto a nominal cloud, where nobody knows which point belongs to which.

#include <CorvexMaths/robust/Alignment.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// Carries measured points onto a cloud by turns of two steps, each of which lowers the sum of squared distances: every
/// point is paired with the nearest of the cloud, and the pairs are aligned (P. J. Besl and N. D. McKay, "A method for
/// registration of 3-D shapes", 1992). It begins where the points lie, and comes to the minimum next to that: bring
/// them near beforehand. For T of `float` and `double`; the cloud should be dense beside the form error.
///
/// It ends, with `Status::Done`, when every point keeps its partner, and with `Status::NotConverged` when the limit is
/// reached before, the motion being the best so far. The other statuses are those of `Alignment` on the pairs.
///
/// A search is logarithmic in the size of the cloud for points near it, by a balanced tree (J. L. Bentley, 1975), so
/// that an iteration of n points takes n log m. Of equally near points of the cloud the first in its order is taken.
template <class T>
class CORVEX_API NearestAlignment : public Answer
{
public:
    /// The rotation, for column vectors: a measured point p is carried to rotation * p + translation.
    TMatrix3x3<T> rotation;
    /// The translation.
    TVector3<T> translation;
    /// The root of the mean of the squared distances from the nearest points.
    T rms = T(0);
    /// The greatest distance from a nearest point.
    T largest = T(0);
    /// How many times the points were paired.
    unsigned int iterations = 0;

    /// Carries `measured` onto `cloud`, with at most `limit` pairings.
    /// @param measured The points that are carried.
    /// @param cloud What they are carried onto, in any number and order.
    /// @param limit How many times at most they are paired.
    NearestAlignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& cloud,
                     unsigned int limit = 200);
};

extern template class NearestAlignment<float>;
extern template class NearestAlignment<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

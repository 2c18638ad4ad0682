#pragma once

/// What every Gaussian fit tells besides its primitive.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// What the fits by least squares have in common. Each minimises the sum of the squared distances of the points from a
/// feature, measured at right angles to it, from a starting value of its own finding, by Gauss-Newton steps on a QR
/// decomposition, damped where that is needed (A. B. Forbes, "Least-squares best-fit geometric elements", NPL DITC
/// 140/89, 1989; C. M. Shakarji, "Least-squares fitting algorithms of the NIST algorithm testing system", 1998). The
/// last steps compute the distances to twice the digits of `double`, so that the primitive is that of the points as
/// they are to within a unit in the last place, wherever the points lie, whatever their unit and order.
///
/// Beside each primitive stands `deviation`, a primitive whose fields hold the standard deviation of the field of that
/// name, as it follows from `rms` where the distances are independent: rms times the root of the diagonal of the
/// inverse normal matrix.
///
/// The status is `Status::Degenerate` where a parameter's standard deviation, or its bound by the rounding of the
/// coordinates as they were given, exceeds the size of the feature or a radian, or where two lines or planes are
/// equally good (of other features that tie, such as circles about the corners of a cube, one is taken);
/// `Status::NotConverged` where 400 steps did not come to rest, which data near no such feature can cause.
///
/// Time is linear in the number of points, and so is memory: one copy of them in `double`.
template <class T>
struct FitAnswer : Answer
{
    /// The root of the mean of the squared distances, by the number of points.
    T rms = T(0);
    /// The greatest signed distance less the least.
    T peakToValley = T(0);
    /// How many times the distances of all points were computed.
    unsigned int iterations = 0;
};

} // namespace Halmont::Orrin::CorvexMaths::Robust

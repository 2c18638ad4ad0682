#include <CorvexMaths/robust/PlaneZone.h>

#include <CorvexMaths/robust/internal/ChebyshevPlane.h>
#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::DoubleDouble;
using Kernels::LocalPoints;
using Kernels::Placement;

namespace
{

/// A slab about a place: its bounds along the last axis.
struct Slab
{
    Placement<3> place;
    DoubleDouble least;
    DoubleDouble greatest;
    double width = std::numeric_limits<double>::infinity();
};

/// Turns a slab to the best plane of the least greatest distance along its normal, and again along that one's, until it
/// gets no narrower: across the normal the width changes with the square of a turn only, so that what is best along it
/// is best about it.
class Narrowing
{
public:
    Slab best;

    explicit Narrowing(const LocalPoints<3>& set) : points(set), plane(set.GetCount()) {}

    void From(const Placement<3>& start)
    {
        Slab slab;
        slab.place = start;
        Measure(&slab);
        for (unsigned int turn = 0; turn < 50 && plane.Solve(); ++turn) {
            Slab next;
            next.place = slab.place;
            const double tangents[2] = {-plane.a, -plane.b};
            next.place.Tilt(tangents);
            Measure(&next);
            if (!(next.width < slab.width)) break;
            slab = next;
        }
        if (slab.width < best.width) best = slab;
    }

private:
    const LocalPoints<3>& points;
    Kernels::ChebyshevPlane plane;

    void Measure(Slab* slab)
    {
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            plane.x[i] = slab->place.Along<double>(0, points[i]);
            plane.y[i] = slab->place.Along<double>(1, points[i]);
            const DoubleDouble height = slab->place.Along<DoubleDouble>(2, points[i]);
            plane.z[i] = height.high;
            if (i == 0 || height < slab->least) slab->least = height;
            if (i == 0 || slab->greatest < height) slab->greatest = height;
        }
        slab->width = (slab->greatest - slab->least).high;
    }
};

/// The narrowest slab from many starts: the principal axes, and directions all around in their frame; then turned to
/// all sides by about the width, where thick sets have other minima.
Slab Narrowest(const LocalPoints<3>& points, const Kernels::PrincipalAxes<3>& principal)
{
    Narrowing narrowing(points);
    const auto from = [&](const double(&direction)[3]) {
        double axes[3][3];
        Kernels::FrameAbout(direction, axes);
        narrowing.From(Placement<3>(principal.mean.data(), axes));
    };
    from(principal.axes[2]);
    // A flat part has its minima near the plane of least squares.
    if (principal.lengths[2] < 0.02 * principal.lengths[1]) return narrowing.best;
    const int half = points.GetCount() > 2000 ? 1 : 2;
    for (int a = -half; a <= half; ++a) {
        for (int b = -half; b <= half; ++b) {
            for (int c = 0; c <= half; ++c) {
                if (std::max({std::abs(a), std::abs(b), c}) != half) continue;
                if (c == 0 && (b < 0 || (b == 0 && a < 0))) continue;
                double direction[3];
                for (unsigned int k = 0; k < 3; ++k) {
                    direction[k] = a * principal.axes[0][k] + b * principal.axes[1][k] + c * principal.axes[2][k];
                }
                from(direction);
            }
        }
    }
    return narrowing.best;
}

} // namespace

template <class T>
PlaneZone<T>::PlaneZone(const TPointSet<T, TVector3>& points)
{
    const LocalPoints<3> local(points, 3);
    status = local.status;
    if (status != Status::Done) return;
    status = Status::Degenerate;
    const Kernels::PrincipalAxes<3> principal(local);
    const double rounding = std::max(local.rounding, 0x1p-52);
    if (!(principal.lengths[1] > 4.0 * rounding * std::sqrt(static_cast<double>(local.GetCount())))) return;

    Slab slab = Narrowest(local, principal);
    const double distance = local.ToLength(slab.width);
    if (!(distance <= static_cast<double>(std::numeric_limits<T>::max()))) return;
    slab.place.Shift(2, (slab.least + slab.greatest) * DoubleDouble(0.5));
    const auto& normal = slab.place.axes[2];
    const double sign = Kernels::SignOf(normal);
    for (unsigned int k = 0; k < 3; ++k) {
        plane.point[k] = static_cast<T>(local.ToPlace(k, slab.place.origin[k]));
        plane.normal[k] = static_cast<T>(sign * normal[k].high);
    }
    width = static_cast<T>(distance);
    status = Status::Done;
}

template class PlaneZone<float>;
template class PlaneZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

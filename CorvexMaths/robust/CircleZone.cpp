#include <CorvexMaths/robust/CircleZone.h>

#include <CorvexMaths/robust/LineZone.h>
#include <CorvexMaths/robust/internal/ChebyshevPlane.h>
#include <CorvexMaths/robust/internal/Starts.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::DoubleDouble;
using Kernels::LocalPoints;

namespace
{

/// A ring: its centre and its two radii.
struct Ring
{
    DoubleDouble centre[2];
    DoubleDouble least;
    DoubleDouble greatest;
    double width = std::numeric_limits<double>::infinity();
};

/// Moves the centre of a ring by the step d that makes the spread of r - e d least, where r are the distances of the
/// points from it and e their directions, or by as much of it as narrows the ring, until none does. At a minimum four
/// points hold the ring, so that the steps end as Newton's do.
class Narrowing
{
public:
    Ring best;

    explicit Narrowing(const LocalPoints<2>& set) : points(set), plane(set.GetCount()) {}

    void From(const DoubleDouble& x, const DoubleDouble& y)
    {
        Ring ring;
        ring.centre[0] = x;
        ring.centre[1] = y;
        Measure(&ring);
        for (unsigned int step = 0; step < 100 && plane.Solve(); ++step) {
            if (!Advance(plane.a, plane.b, &ring)) break;
        }
        if (ring.width < best.width) best = ring;
    }

private:
    const LocalPoints<2>& points;
    Kernels::ChebyshevPlane plane;

    /// Takes the step, or its half, quarter and so on; false where none narrows the ring.
    bool Advance(double x, double y, Ring* ring)
    {
        for (double part = 1.0; part > 1e-4; part *= 0.5) {
            Ring next;
            next.centre[0] = ring->centre[0] + DoubleDouble(part * x);
            next.centre[1] = ring->centre[1] + DoubleDouble(part * y);
            Measure(&next);
            if (!(next.width < ring->width)) continue;
            *ring = next;
            return true;
        }
        return false;
    }

    void Measure(Ring* ring)
    {
        double common = 0.0;
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            const DoubleDouble x = DoubleDouble(points[i][0]) - ring->centre[0];
            const DoubleDouble y = DoubleDouble(points[i][1]) - ring->centre[1];
            const DoubleDouble radius = SquareRoot(x * x + y * y);
            double divisor;
            Kernels::Round<2>::SetDivisor(divisor, radius.high);
            plane.x[i] = x.high / divisor;
            plane.y[i] = y.high / divisor;
            if (i == 0 || radius < ring->least) ring->least = radius;
            if (i == 0 || ring->greatest < radius) ring->greatest = radius;
            // Less a common part, so that the differences keep their digits.
            if (i == 0) common = radius.high;
            plane.z[i] = (radius - DoubleDouble(common)).high;
        }
        ring->width = (ring->greatest - ring->least).high;
    }
};

/// The narrowest ring from many starts: the centre of the circle of least squares, centres all around, near and far,
/// and centres of rings that hardly differ from the narrowest strip, whose width and direction are given.
Ring Narrowest(const LocalPoints<2>& points, double strip, const double (&along)[2])
{
    Narrowing narrowing(points);
    Kernels::Round<2> round;
    if (Kernels::Start(points, &round)) {
        Kernels::DistanceFit<Kernels::Round<2>> fit(points, round);
        fit.Approach();
        narrowing.From(fit.feature.centre[0], fit.feature.centre[1]);
        // A round part has its minimum near the circle of least squares. A ring about a nearly straight part is narrow
        // beside its radius in any case: what tells is the strip.
        if (points.ToLength(narrowing.best.width) < 0.02 * strip) return narrowing.best;
    }
    const auto& mean = points.Mean();
    const int half = points.GetCount() > 2000 ? 1 : 2;
    for (const double reach : {0.3, 1.0, 4.0}) {
        for (int a = -half; a <= half; ++a) {
            for (int b = -half; b <= half; ++b) {
                narrowing.From(mean[0] + DoubleDouble(reach * a / half), mean[1] + DoubleDouble(reach * b / half));
            }
        }
    }
    for (double reach = 0.5; reach < 1e5; reach *= 2.0) {
        for (const double side : {-reach, reach}) {
            narrowing.From(mean[0] - DoubleDouble(side * along[1]), mean[1] + DoubleDouble(side * along[0]));
        }
    }
    return narrowing.best;
}

} // namespace

template <class T>
CircleZone<T>::CircleZone(const TPointSet<T, TVector2>& points)
{
    const LocalPoints<2> local(points, 3);
    status = local.status;
    if (status != Status::Done) return;
    status = Status::Degenerate;
    const LineZone<T> strip(points);
    if (!strip) return;
    const double along[2] = {static_cast<double>(strip.line.direction.x), static_cast<double>(strip.line.direction.y)};
    const Ring ring = Narrowest(local, static_cast<double>(strip.width), along);
    const double distance = local.ToLength(ring.width);
    const double radius = local.ToLength(((ring.least + ring.greatest) * DoubleDouble(0.5)).high);
    if (!(distance <= static_cast<double>(strip.width))) return;
    if (!(radius <= static_cast<double>(std::numeric_limits<T>::max()))) return;
    for (unsigned int k = 0; k < 2; ++k) circle.centre[k] = static_cast<T>(local.ToPlace(k, ring.centre[k]));
    circle.radius = static_cast<T>(radius);
    width = static_cast<T>(distance);
    status = Status::Done;
}

template class CircleZone<float>;
template class CircleZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

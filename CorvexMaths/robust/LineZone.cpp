#include <CorvexMaths/robust/LineZone.h>

#include <CorvexMaths/robust/ConvexHull.h>
#include <CorvexMaths/robust/internal/FitReport.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

using Kernels::DoubleDouble;

namespace
{

/// How far a vertex of a counter-clockwise outline lies from the line of a side, times the side's length.
DoubleDouble Across(const Kernels::LocalPoints<2>& hull, unsigned int side, unsigned int vertex)
{
    const double* const a = hull[side];
    const double* const b = hull[(side + 1) % hull.GetCount()];
    const double* const p = hull[vertex];
    const auto difference = [](double to, double from) { return DoubleDouble::Sum(to, -from); };
    return difference(b[0], a[0]) * difference(p[1], a[1]) - difference(b[1], a[1]) * difference(p[0], a[0]);
}

DoubleDouble Length(const Kernels::LocalPoints<2>& hull, unsigned int side)
{
    const double* const a = hull[side];
    const double* const b = hull[(side + 1) % hull.GetCount()];
    const DoubleDouble x = DoubleDouble::Sum(b[0], -a[0]);
    const DoubleDouble y = DoubleDouble::Sum(b[1], -a[1]);
    return SquareRoot(x * x + y * y);
}

} // namespace

template <class T>
LineZone<T>::LineZone(const TPointSet<T, TVector2>& points)
{
    if (points.GetCount() < 2) return;
    const ConvexHull hull(points);
    status = hull.status;
    if (status != Status::Done) return;
    const Kernels::LocalPoints<2> outline(hull.polygon, 2);
    status = Status::Degenerate;
    if (outline.status != Status::Done) return;

    // The vertex furthest from a side moves on with the side.
    const unsigned int count = outline.GetCount();
    unsigned int best = 0;
    unsigned int far = 1;
    DoubleDouble least(std::numeric_limits<double>::max());
    for (unsigned int side = 0; side < count; ++side) {
        while (Across(outline, side, far) < Across(outline, side, (far + 1) % count)) far = (far + 1) % count;
        const DoubleDouble distance = Across(outline, side, far) / Length(outline, side);
        if (!(distance < least)) continue;
        least = distance;
        best = side;
    }

    const double* const a = outline[best];
    const double* const b = outline[(best + 1) % count];
    const DoubleDouble length = Length(outline, best);
    const DoubleDouble along[2] = {DoubleDouble::Sum(b[0], -a[0]) / length, DoubleDouble::Sum(b[1], -a[1]) / length};
    const double sign = Kernels::SignOf(along);
    const DoubleDouble half = least * DoubleDouble(0.5);
    const DoubleDouble middle[2] = {DoubleDouble::Sum(a[0], b[0]) * DoubleDouble(0.5) - along[1] * half,
                                    DoubleDouble::Sum(a[1], b[1]) * DoubleDouble(0.5) + along[0] * half};
    TLine2<T> found;
    for (unsigned int k = 0; k < 2; ++k) {
        found.origin[k] = static_cast<T>(outline.ToPlace(k, middle[k]));
        found.direction[k] = static_cast<T>(sign * along[k].high);
    }
    const double distance = outline.ToLength(least.high);
    if (!(distance <= static_cast<double>(std::numeric_limits<T>::max()))) return;
    line = found;
    width = static_cast<T>(distance);
    status = Status::Done;
}

template class LineZone<float>;
template class LineZone<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

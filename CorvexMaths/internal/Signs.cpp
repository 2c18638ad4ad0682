#include <CorvexMaths/internal/Signs.h>

#include <CorvexMaths/internal/Expansion.h>
#include <CorvexMaths/internal/LongAccumulator.h>

#include <cmath>
#include <initializer_list>

namespace Halmont::Orrin::CorvexMaths::Kernels
{
namespace
{

/// Between which magnitudes the numbers must be, unless they are 0, for a product of so many of their differences to be
/// an exact expansion. All terms are multiples of the last place of the smallest, 2^-52 of it, and must stay multiples
/// of 2^-1074 to the power asked for; a difference can be twice the largest, and the sum many times a product.
struct Range
{
    double least, greatest;
};
constexpr Range squares = {0x1p-480, 0x1p+500};
constexpr Range fourthPowers = {0x1p-214, 0x1p+250};

enum class Extent
{
    Inside,
    Outside,
    NotFinite
};

template <unsigned int count>
Extent FindExtent(const Range& range, const Place (&places)[count])
{
    Extent extent = Extent::Inside;
    for (const Place& place : places)
        for (const double value : {std::fabs(place.x), std::fabs(place.y)}) {
            if (!(value < HUGE_VAL)) return Extent::NotFinite;
            if (value != 0 && (value < range.least || value > range.greatest)) extent = Extent::Outside;
        }
    return extent;
}

/// The sign of the in-circle determinant with twice the digits of a `double`, or 2 where these do not suffice: enough
/// for all points but those on the circle, as a rule. The error is at most some 60 2^-106 of the sum of the magnitudes
/// of all terms.
int NearInCircle(Place a, Place b, Place c, Place d)
{
    const DoubleDouble ax = DoubleDouble::Sum(a.x, -d.x), ay = DoubleDouble::Sum(a.y, -d.y);
    const DoubleDouble bx = DoubleDouble::Sum(b.x, -d.x), by = DoubleDouble::Sum(b.y, -d.y);
    const DoubleDouble cx = DoubleDouble::Sum(c.x, -d.x), cy = DoubleDouble::Sum(c.y, -d.y);
    const DoubleDouble aa = ax * ax + ay * ay;
    const DoubleDouble bb = bx * bx + by * by;
    const DoubleDouble cc = cx * cx + cy * cy;
    const double sum = (aa * (bx * cy - cx * by) + bb * (cx * ay - ax * cy) + cc * (ax * by - bx * ay)).high;
    const auto size = [](DoubleDouble lift, DoubleDouble x, DoubleDouble y, DoubleDouble u, DoubleDouble v) {
        return lift.high * (std::fabs(x.high * y.high) + std::fabs(u.high * v.high));
    };
    const double bound = 0x1p-98 * (size(aa, bx, cy, cx, by) + size(bb, cx, ay, ax, cy) + size(cc, ax, by, bx, ay));
    return sum > bound ? 1 : -sum > bound ? -1 : 2;
}

int ExpandedInCircle(Place a, Place b, Place c, Place d)
{
    const Expansion<2> ax = Difference(a.x, d.x), ay = Difference(a.y, d.y);
    const Expansion<2> bx = Difference(b.x, d.x), by = Difference(b.y, d.y);
    const Expansion<2> cx = Difference(c.x, d.x), cy = Difference(c.y, d.y);
    return ((ax * ax + ay * ay) * (bx * cy - cx * by) + (bx * bx + by * by) * (cx * ay - ax * cy) +
            (cx * cx + cy * cy) * (ax * by - bx * ay))
        .Sign();
}

} // namespace

int ExactOrientation(Place a, Place b, Place c)
{
    switch (FindExtent(squares, {a, b, c})) {
    case Extent::NotFinite:
        return 0;
    case Extent::Inside:
        return (Difference(a.x, c.x) * Difference(b.y, c.y) - Difference(a.y, c.y) * Difference(b.x, c.x)).Sign();
    case Extent::Outside:
        break;
    }
    LongAccumulator<2> sum;
    const Place cycle[] = {a, b, c, a};
    for (unsigned int i = 0; i < 3; ++i) {
        sum.Add(1, {cycle[i].x, cycle[i + 1].y});
        sum.Add(-1, {cycle[i].y, cycle[i + 1].x});
    }
    return sum.Sign();
}

int ExactDot(Place p, Place q, Place apex)
{
    switch (FindExtent(squares, {p, q, apex})) {
    case Extent::NotFinite:
        return 0;
    case Extent::Inside:
        return (Difference(p.x, apex.x) * Difference(q.x, apex.x) + Difference(p.y, apex.y) * Difference(q.y, apex.y))
            .Sign();
    case Extent::Outside:
        break;
    }
    LongAccumulator<2> sum;
    for (double Place::*axis : {&Place::x, &Place::y}) {
        sum.Add(1, {p.*axis, q.*axis});
        sum.Add(-1, {p.*axis, apex.*axis});
        sum.Add(-1, {apex.*axis, q.*axis});
        sum.Add(1, {apex.*axis, apex.*axis});
    }
    return sum.Sign();
}

int ExactInCircle(Place a, Place b, Place c, Place d)
{
    switch (FindExtent(fourthPowers, {a, b, c, d})) {
    case Extent::NotFinite:
        return 0;
    case Extent::Inside: {
        const int sign = NearInCircle(a, b, c, d);
        return sign != 2 ? sign : ExpandedInCircle(a, b, c, d);
    }
    case Extent::Outside:
        break;
    }
    // Rows (x, y, x x + y y, 1), expanded along the third column: each square times the orientation of the other three.
    const Place rows[] = {a, b, c, d};
    LongAccumulator<4> sum;
    for (unsigned int i = 0; i < 4; ++i) {
        const Place& lifted = rows[i];
        Place others[4];
        for (unsigned int k = 0; k < 3; ++k) others[k] = rows[k < i ? k : k + 1];
        others[3] = others[0];
        const int sign = i % 2 == 0 ? 1 : -1;
        for (const double value : {lifted.x, lifted.y})
            for (unsigned int k = 0; k < 3; ++k) {
                sum.Add(sign, {value, value, others[k].x, others[k + 1].y});
                sum.Add(-sign, {value, value, others[k].y, others[k + 1].x});
            }
    }
    return sum.Sign();
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

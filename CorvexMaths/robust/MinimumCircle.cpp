#include <CorvexMaths/robust/MinimumCircle.h>

#include <CorvexMaths/internal/Expansion.h>
#include <CorvexMaths/internal/Signs.h>
#include <CorvexMaths/robust/ConvexHull.h>

#include <algorithm>
#include <cmath>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::Difference;
using Kernels::DotSign;
using Kernels::Expansion;
using Kernels::InCircleSign;
using Kernels::OrientationSign;
using Kernels::Place;

/// A circle in coordinates that were scaled to 1.
struct Disc
{
    Place centre;
    double radius;
};

/// Two points at the ends of a diameter, three of a triangle without an obtuse angle, or one point.
struct Support
{
    Place places[3];
    unsigned int count;
};

template <class T>
Place PlaceOf(const TPointSet<T, TVector2>& points, unsigned int index)
{
    const TVector2<T>& point = points.GetStream()[index];
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

Place Scaled(Place place, double scale)
{
    return {place.x * scale, place.y * scale};
}

/// 1 where a point lies within the circle of a support, 0 on it, -1 outside.
int WithinSign(const Support& support, Place place)
{
    const Place* const p = support.places;
    if (support.count == 1) return p[0].x == place.x && p[0].y == place.y ? 0 : -1;
    // A diameter is seen at an obtuse angle from within.
    if (support.count == 2) return -DotSign(p[0], p[1], place);
    return OrientationSign(p[0], p[1], p[2]) * InCircleSign(p[0], p[1], p[2], place);
}

/// Whether the circle through three points is the smallest around them and not that of two of them.
bool IsAcute(Place a, Place b, Place c)
{
    return DotSign(a, b, c) > 0 && DotSign(b, c, a) > 0 && DotSign(c, a, b) > 0;
}

/// The support of the smallest circle around a support and a point outside its circle, which is part of the new one.
/// The count is 0 if there is none, which exact signs rule out.
Support Exchange(const Support& old, Place added)
{
    const auto holdsOthers = [&](const Support& support) {
        for (unsigned int i = 0; i < old.count; ++i)
            if (WithinSign(support, old.places[i]) < 0) return false;
        return true;
    };
    for (unsigned int i = 0; i < old.count; ++i) {
        const Support pair = {{added, old.places[i], {}}, 2};
        if (holdsOthers(pair)) return pair;
    }
    for (unsigned int i = 0; i < old.count; ++i)
        for (unsigned int k = i + 1; k < old.count; ++k) {
            const Support triangle = {{added, old.places[i], old.places[k]}, 3};
            if (IsAcute(added, old.places[i], old.places[k]) && holdsOthers(triangle)) return triangle;
        }
    return {{}, 0};
}

/// A quotient of two expansions, rounded but for a tiny part of the last place: one step of correction by the exact
/// remainder.
template <unsigned int first, unsigned int second>
double Quotient(const Expansion<first>& dividend, const Expansion<second>& divisor)
{
    const double size = divisor.Estimate();
    const double quotient = dividend.Estimate() / size;
    return quotient + (dividend - divisor * quotient).Estimate() / size;
}

/// The circle over a diameter.
Disc DiscOver(Place a, Place b)
{
    const double x = b.x - a.x;
    const double y = b.y - a.y;
    return {{(a.x + b.x) / 2, (a.y + b.y) / 2}, std::sqrt(x * x + y * y) / 2};
}

/// The circle of a support, scaled. The centre of three points a, b, c is a + (u, v) / D with
///     D = 2 (b x c),   u = c.y |b|^2 - b.y |c|^2,   v = b.x |c|^2 - c.x |b|^2,   b and c taken from a.
Disc DiscOf(const Support& support, double scale)
{
    const Place a = Scaled(support.places[0], scale);
    if (support.count == 1) return {a, 0};
    const Place b = Scaled(support.places[1], scale);
    if (support.count == 2) return DiscOver(a, b);
    const Place c = Scaled(support.places[2], scale);
    const Expansion<2> bx = Difference(b.x, a.x), by = Difference(b.y, a.y);
    const Expansion<2> cx = Difference(c.x, a.x), cy = Difference(c.y, a.y);
    const Expansion<16> bb = bx * bx + by * by;
    const Expansion<16> cc = cx * cx + cy * cy;
    const Expansion<32> divisor = (bx * cy - by * cx) * 2.0;
    // The products of a needle this thin leave the range of exact ones. Its circle is that over its longest side, but
    // for the square of its width.
    if (std::fabs(divisor.Estimate()) < 0x1p-800) {
        const Disc sides[] = {DiscOver(a, b), DiscOver(b, c), DiscOver(c, a)};
        return *std::max_element(sides, sides + 3, [](const Disc& p, const Disc& q) { return p.radius < q.radius; });
    }
    const Expansion<128> u = bb * cy - cc * by;
    const Expansion<128> v = cc * bx - bb * cx;
    const double x = Quotient(u, divisor);
    const double y = Quotient(v, divisor);
    return {{Quotient(u + divisor * a.x, divisor), Quotient(v + divisor * a.y, divisor)}, std::sqrt(x * x + y * y)};
}

/// The square of a distance from the centre, in scaled coordinates, up to which a point lies within the circle whatever
/// rounding did. All coordinates are at most 1 in magnitude and the centre lies between them, so that the centre, the
/// radius and a distance are each off by no more than 2^-50.
double SafeSquare(const Disc& disc)
{
    const double safe = disc.radius - 0x1p-48;
    return safe > 0 ? safe * safe * (1 - 0x1p-50) : -1;
}

double SquareFrom(const Disc& disc, Place place)
{
    const double x = place.x - disc.centre.x;
    const double y = place.y - disc.centre.y;
    return x * x + y * y;
}

/// Finds a point outside the circle of a support: the farthest by its rounded distance if that one is, else any. False
/// where there is none.
template <class T>
bool FindOutsider(const TPointSet<T, TVector2>& points, const Support& support, double scale, Place* outsider)
{
    const Disc disc = DiscOf(support, scale);
    const double safe = SafeSquare(disc);
    double greatest = -1;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const Place place = PlaceOf(points, i);
        const double square = SquareFrom(disc, Scaled(place, scale));
        if (square > greatest) {
            greatest = square;
            *outsider = place;
        }
    }
    if (greatest <= safe) return false;
    if (WithinSign(support, *outsider) < 0) return true;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        *outsider = PlaceOf(points, i);
        if (SquareFrom(disc, Scaled(*outsider, scale)) > safe && WithinSign(support, *outsider) < 0) return true;
    }
    return false;
}

/// Of all supports of one circle that which does not depend on the order of the points: the points on the circle,
/// counter-clockwise from the lowest, are cut into triangles from the first of them, and the one that holds the centre
/// is taken; of a triangle with a right angle the longest side.
template <class T>
Support ChooseSupport(const TPointSet<T, TVector2>& points, const Support& found, double scale)
{
    const Disc disc = DiscOf(found, scale);
    const double safe = SafeSquare(disc);
    TPointSet<double, TVector2> rim;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const Place place = PlaceOf(points, i);
        if (SquareFrom(disc, Scaled(place, scale)) > safe && WithinSign(found, place) == 0)
            rim.Add(TVector2<double>(place.x, place.y));
    }
    const ConvexHull<double, TVector2> hull(rim);
    const auto place = [&](unsigned int i) { return PlaceOf(hull.polygon, i); };
    if (hull.polygon.GetCount() == 2) return {{place(0), place(1), {}}, 2};
    const Place a = place(0);
    for (unsigned int i = 1; i + 1 < hull.polygon.GetCount(); ++i) {
        const Place b = place(i);
        const Place c = place(i + 1);
        const int atA = DotSign(b, c, a);
        const int atB = DotSign(c, a, b);
        const int atC = DotSign(a, b, c);
        if (atA < 0 || atB < 0 || atC < 0) continue;
        if (atA == 0) return {{b, c, {}}, 2};
        if (atB == 0) return {{a, c, {}}, 2};
        if (atC == 0) return {{a, b, {}}, 2};
        return {{a, b, c}, 3};
    }
    return found;
}

/// The power of two that takes the greatest coordinate to between 1/2 and 1, or as near as a factor can; 1 for zeros,
/// and 0 where a coordinate is not finite.
template <class T>
int FindExponent(const TPointSet<T, TVector2>& points, bool* areFinite)
{
    double greatest = 0;
    double finite = 0;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const Place place = PlaceOf(points, i);
        finite += 0 * place.x + 0 * place.y;
        greatest = std::fmax(greatest, std::fmax(std::fabs(place.x), std::fabs(place.y)));
    }
    *areFinite = finite == 0;
    int exponent = 0;
    std::frexp(greatest, &exponent);
    return exponent;
}

} // namespace

template <class T>
MinimumCircle<T>::MinimumCircle(const TPointSet<T, TVector2>& points)
{
    if (points.GetCount() == 0) return;
    bool areFinite = false;
    // A factor of 2^1023 suffices for denormal numbers too: they come near enough to 1.
    const int exponent = std::max(FindExponent(points, &areFinite), -1023);
    status = Status::NotFinite;
    if (!areFinite) return;
    const double scale = std::ldexp(1.0, -exponent);

    Support support = {{PlaceOf(points, 0), {}, {}}, 1};
    for (Place outsider; FindOutsider(points, support, scale, &outsider);) {
        support = Exchange(support, outsider);
        if (support.count == 0) {
            status = Status::NotConverged;
            return;
        }
    }
    const Disc disc = DiscOf(support.count == 1 ? support : ChooseSupport(points, support, scale), scale);
    const T radius = static_cast<T>(std::ldexp(disc.radius, exponent));
    if (!std::isfinite(radius)) return;
    circle.radius = radius;
    circle.centre.x = static_cast<T>(std::ldexp(disc.centre.x, exponent));
    circle.centre.y = static_cast<T>(std::ldexp(disc.centre.y, exponent));
    status = Status::Done;
}

CORVEX_INSTANTIATE_SCALARS(, class, MinimumCircle);

} // namespace Halmont::Orrin::CorvexMaths::Robust

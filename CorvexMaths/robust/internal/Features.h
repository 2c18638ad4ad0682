#pragma once

#include <CorvexMaths/robust/internal/Placement.h>

#include <algorithm>
#include <utility>

/// The features to fit: for each the distances of a point and their derivatives by the parameters, and how a step moves
/// it. `Row` writes the derivatives and then the distance; it is written once for double and for twice its digits, in
/// which the distance is computed before it is rounded, of one point or of as many as there are lanes. A feature with
/// two rows has a distance in two components at right angles, which `Join` joins to one.
///
/// `hasHalves` tells whether the two rows have the same derivatives, the first by the even parameters alone and the
/// second by the odd ones; `hasSign` whether distances have a sign, `startsThere` whether the starting value is the
/// minimum but for rounding.
///
/// The parameters of a step are those of the feature's own placement, which moves along, so that all features far from
/// convergence and near it are described by the same short derivatives (A. B. Forbes, "Least-squares best-fit geometric
/// elements", NPL DITC 140/89, 1989).
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// A plane in space, a line in the plane: the last axis is the normal. The distance is the coordinate along it; a shift
/// along the normal lowers it by as much, a tilt towards axis k raises it by the coordinate along k.
template <unsigned int D>
struct Flat
{
    static constexpr bool startsThere = true;
    static constexpr bool hasSign = true;
    static constexpr unsigned int dimension = D;
    static constexpr unsigned int parameters = D;
    static constexpr unsigned int rows = 1;
    static constexpr bool hasHalves = false;
    static constexpr bool isAngle(unsigned int parameter) { return parameter > 0; }

    Placement<D> place;

    template <class Real, class Value = RoundedType<Real>>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        Real distance;
        place.SetAlong(distance, D - 1, point);
        Spread(row[0][0], -1.0);
        for (unsigned int k = 0; k < D - 1; ++k) place.SetAlong(row[0][1 + k], k, point);
        row[0][D] = Rounded(distance);
    }

    void Move(const double* step)
    {
        place.Shift(D - 1, step[0]);
        place.Tilt(step + 1);
    }
    double Size() const { return 1.0; }
};

/// A line in space along the last axis: the distance has the coordinates along the other two axes as its components.
struct Straight
{
    static constexpr bool startsThere = true;
    static constexpr bool hasSign = false;
    static constexpr unsigned int dimension = 3;
    static constexpr unsigned int parameters = 4;
    static constexpr unsigned int rows = 2;
    static constexpr bool hasHalves = true;
    static constexpr bool isAngle(unsigned int parameter) { return parameter > 1; }

    Placement<3> place;

    template <class Real, class Value = RoundedType<Real>>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        Value z;
        place.SetAlong(z, 2, point);
        for (unsigned int k = 0; k < 2; ++k) {
            Real distance;
            place.SetAlong(distance, k, point);
            Spread(row[k][k], -1.0);
            row[k][1 - k] = Value{};
            row[k][2 + k] = -z;
            row[k][3 - k] = Value{};
            row[k][4] = Rounded(distance);
        }
    }
    template <class Value>
    CORVEX_ALWAYS_INLINE static void Join(Value& distance, const Value& x, const Value& y)
    {
        SetRoot(distance, Value(x * x + y * y));
    }

    void Move(const double* step)
    {
        place.Shift(0, step[0]);
        place.Shift(1, step[1]);
        place.Tilt(step + 2);
    }
    double Size() const { return 1.0; }
};

/// A circle in the plane, a sphere in space: the distance is that from the centre less the radius.
template <unsigned int D>
struct Round
{
    static constexpr bool startsThere = false;
    static constexpr bool hasSign = true;
    static constexpr unsigned int dimension = D;
    static constexpr unsigned int parameters = D + 1;
    static constexpr unsigned int rows = 1;
    static constexpr bool hasHalves = false;
    static constexpr bool isAngle(unsigned int) { return false; }

    DoubleDouble centre[D];
    DoubleDouble radius;

    template <class Real, class Value = RoundedType<Real>>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        Real out[D];
        Real square{};
        for (unsigned int k = 0; k < D; ++k) {
            out[k] = Real(point[k]) - As<Real>(centre[k]);
            square = square + out[k] * out[k];
        }
        Real length;
        SetRoot(length, square);
        Value divisor;
        SetDivisor(divisor, Rounded(length));
        for (unsigned int k = 0; k < D; ++k) row[0][k] = -Rounded(out[k]) / divisor;
        Spread(row[0][D], -1.0);
        row[0][D + 1] = Rounded(Real(length - As<Real>(radius)));
    }

    /// A point at the centre itself has no direction, and no derivative by the centre.
    template <class Value>
    CORVEX_ALWAYS_INLINE static void SetDivisor(Value& divisor, const Value& length)
    {
        Broadcast(divisor, 1.0);
        divisor = length > 0.0 ? length : divisor;
    }

    void Move(const double* step)
    {
        for (unsigned int k = 0; k < D; ++k) centre[k] += step[k];
        radius += step[D];
    }
    double Size() const { return std::max(1.0, std::fabs(radius.high)); }
};

/// What features about an axis share: the coordinates of a point about the last axis.
template <class Real>
struct AboutAxis
{
    using Value = RoundedType<Real>;

    Real length; ///< The distance from the axis.
    Value x, y;  ///< The unit vector from the axis to the point, along the first two axes; zeros on the axis.

    CORVEX_ALWAYS_INLINE AboutAxis(const Placement<3>& place, const Value* point)
    {
        Real u;
        Real v;
        place.SetAlong(u, 0, point);
        place.SetAlong(v, 1, point);
        SetRoot(length, Real(u * u + v * v));
        Value divisor;
        Round<2>::SetDivisor(divisor, Rounded(length));
        x = Rounded(u) / divisor;
        y = Rounded(v) / divisor;
    }
};

/// A circle in space about the last axis: the components of the distance are that in the circle's plane, from the axis
/// less the radius, and that along the axis.
struct Ring
{
    static constexpr bool startsThere = false;
    static constexpr bool hasSign = true;
    static constexpr unsigned int dimension = 3;
    static constexpr unsigned int parameters = 6;
    static constexpr unsigned int rows = 2;
    static constexpr bool hasHalves = false;
    static constexpr bool isAngle(unsigned int parameter) { return parameter == 3 || parameter == 4; }

    Placement<3> place;
    DoubleDouble radius;

    template <class Real, class Value = RoundedType<Real>>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        const AboutAxis<Real> about(place, point);
        const Real outside = about.length - As<Real>(radius);
        Real height;
        place.SetAlong(height, 2, point);
        const Value z = Rounded(height);
        const Value flat = Rounded(about.length);
        const Value zero{};
        Value minusOne;
        Spread(minusOne, -1.0);
        const Value in[] = {-about.x, -about.y, zero, -z * about.x, -z * about.y, minusOne, Rounded(outside)};
        const Value along[] = {zero, zero, minusOne, flat * about.x, flat * about.y, zero, z};
        std::copy(in, in + 7, row[0]);
        std::copy(along, along + 7, row[1]);
    }
    /// Positive outside the circle.
    template <class Value>
    CORVEX_ALWAYS_INLINE static void Join(Value& distance, const Value& out, const Value& along)
    {
        SetRoot(distance, Value(out * out + along * along));
        distance = out < 0.0 ? -distance : distance;
    }

    void Move(const double* step)
    {
        for (unsigned int k = 0; k < 3; ++k) place.Shift(k, step[k]);
        place.Tilt(step + 3);
        radius += step[5];
    }
    double Size() const { return std::max(1.0, std::fabs(radius.high)); }
};

/// A circle in space by a point of its rim, for the first steps: axis 0 points outwards there, axis 1 is the normal and
/// the last one the tangent. Place and direction at the rim and the vector of curvature have bounds on a short arc,
/// where centre, tilt and radius hang together so closely that steps in them would have to follow a bent and narrow
/// valley; a straight line has the curvature 0.
///
/// With k the curvature and u, w, v the coordinates along the axes, the distance from the cylinder over the circle is
/// (q - 1) / k with q^2 = (1 + k u)^2 + (k v)^2. A turn about the tangent by 1 / k moves the vector of curvature
/// sideways by 1. It turns the two components of a distance too; they are told in the frame before it, since their
/// squares add to the same.
struct Arc
{
    static constexpr unsigned int dimension = 3;
    static constexpr unsigned int parameters = 6;
    static constexpr unsigned int rows = 2;
    static constexpr bool hasHalves = false;

    Placement<3> place;
    double curvature = 0.0;

    explicit Arc(const Ring& ring, const DoubleDouble* mean) : curvature(1.0 / ring.radius.high)
    {
        // The point of the rim towards the mean is about amid a short arc.
        double x = 0.0;
        double y = 0.0;
        for (unsigned int k = 0; k < 3; ++k) {
            const double out = (mean[k] - ring.place.origin[k]).high;
            x += out * ring.place.axes[0][k].high;
            y += out * ring.place.axes[1][k].high;
        }
        const double length = std::sqrt(x * x + y * y);
        x = length > 0.0 ? x / length : 1.0;
        y = length > 0.0 ? y / length : 0.0;
        double axes[3][3];
        for (unsigned int k = 0; k < 3; ++k) {
            const double first = ring.place.axes[0][k].high;
            const double second = ring.place.axes[1][k].high;
            axes[0][k] = x * first + y * second;
            axes[1][k] = ring.place.axes[2][k].high;
            axes[2][k] = x * second - y * first;
        }
        place = Placement<3>(ring.place.origin, axes);
        place.Shift(0, ring.radius);
    }
    /// The same by its centre.
    Ring ToRing() const
    {
        Ring ring;
        ring.radius = DoubleDouble(1.0) / DoubleDouble(curvature);
        ring.place = place;
        ring.place.Shift(0, -ring.radius);
        std::swap(ring.place.axes[1], ring.place.axes[2]);
        ring.place.Shift(0, 0.0);
        return ring;
    }

    template <class Value>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        Value u;
        Value w;
        Value v;
        place.SetAlong(u, 0, point);
        place.SetAlong(w, 1, point);
        place.SetAlong(v, 2, point);
        const double k = curvature;
        const Value ahead = 1.0 + k * u;
        Value q;
        SetRoot(q, Value(ahead * ahead + (k * v) * (k * v)));
        Value divisor;
        Round<2>::SetDivisor(divisor, q);
        const Value outwards = ahead / divisor;
        const Value forwards = k * v / divisor;
        // (q - 1 - k u) / k^2, where the point does not lie behind the centre without a difference.
        const Value sag = ahead > 0.0 ? v * v / (q + ahead) : (q - ahead) / (k * k);
        const Value distance = (2.0 * u + k * (u * u + v * v)) / (1.0 + q);
        const Value zero{};
        Value minusOne;
        Spread(minusOne, -1.0);
        const Value in[] = {-outwards,    zero,          u * forwards - v * outwards,
                            w * forwards, sag / divisor, -k * w * sag / divisor,
                            distance};
        const Value along[] = {zero, minusOne, zero, -v, zero, sag, w};
        std::copy(in, in + 7, row[0]);
        std::copy(along, along + 7, row[1]);
    }
    template <class Value>
    CORVEX_ALWAYS_INLINE static void Join(Value& distance, const Value& out, const Value& along)
    {
        Ring::Join(distance, out, along);
    }

    void Move(const double* step)
    {
        place.Shift(0, step[0]);
        place.Shift(1, step[1]);
        place.Tilt(step + 2);
        const double inwards = curvature + step[4];
        curvature = std::sqrt(inwards * inwards + step[5] * step[5]);
        if (curvature > 0.0) place.Turn(inwards / curvature, step[5] / curvature);
    }
    double Size() const { return 1.0; }
};

/// A cylinder about the last axis, or a cone that widens along it. With r the distance from the axis, z the height
/// above the origin, R the radius there and h the half angle, the distance from the line that generates the cone is (r
/// - R) cos h - z sin h; a cylinder has h = 0. A tilt towards an axis moves z by the coordinate along that axis.
template <bool isCone>
struct Tapered
{
    static constexpr bool startsThere = false;
    static constexpr bool hasSign = true;
    static constexpr unsigned int dimension = 3;
    static constexpr unsigned int parameters = isCone ? 6 : 5;
    static constexpr unsigned int rows = 1;
    static constexpr bool hasHalves = false;
    static constexpr bool isAngle(unsigned int k) { return k == 2 || k == 3 || k == 5; }

    Placement<3> place;
    DoubleDouble radius;
    DoubleDouble cosine = 1.0;
    DoubleDouble sine;

    template <class Real, class Value = RoundedType<Real>>
    CORVEX_ALWAYS_INLINE void Row(const Value* point, Value (&row)[rows][parameters + 1]) const
    {
        const AboutAxis<Real> about(place, point);
        const Real outside = about.length - As<Real>(radius);
        Value z;
        place.SetAlong(z, 2, point);
        const double c = cosine.high;
        const double s = sine.high;
        const Value lever = -z * c - Rounded(about.length) * s;
        row[0][0] = -about.x * c;
        row[0][1] = -about.y * c;
        row[0][2] = about.x * lever;
        row[0][3] = about.y * lever;
        Spread(row[0][4], -c);
        if constexpr (isCone) {
            Real height;
            place.SetAlong(height, 2, point);
            row[0][5] = -Rounded(outside) * s - z * c;
            row[0][6] = Rounded(Real(outside * As<Real>(cosine) - height * As<Real>(sine)));
        } else {
            row[0][5] = Rounded(outside);
        }
    }

    void Move(const double* step)
    {
        place.Shift(0, step[0]);
        place.Shift(1, step[1]);
        place.Tilt(step + 2);
        radius += step[4];
        if constexpr (isCone) Open(step[5]);
    }
    /// Turns the frame by half a turn about its first axis, which leaves the surface as it is.
    void Reverse()
    {
        for (unsigned int axis = 1; axis < 3; ++axis) {
            for (DoubleDouble& x : place.axes[axis]) x = -x;
        }
        place.Shift(0, 0.0);
        sine = -sine;
    }
    /// Turns (cosine, sine) by the angle whose tangent is given.
    void Open(double tangent)
    {
        const DoubleDouble c = cosine - sine * DoubleDouble(tangent);
        const DoubleDouble s = sine + cosine * DoubleDouble(tangent);
        const DoubleDouble length = SquareRoot(c * c + s * s);
        cosine = c / length;
        sine = s / length;
    }
    double Size() const { return std::max(1.0, std::fabs(radius.high)); }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

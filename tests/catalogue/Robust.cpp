// Answers that hold on every input: fits, zones, alignments, hulls, circles, signs, and splines.

#include "Sets.h"

#include <CorvexMaths/robust/Robust.h>

#include <algorithm>

namespace CorvexCatalogue
{
namespace
{

/// Points about a line, a plane, a circle, a sphere, a cylinder or a cone, the whole or a narrow part of it, exactly or
/// nearly, evenly or scattered; now and then huge or tiny or far from the origin.
template <class T, template <class> class V>
std::vector<V<T>> DrawFeature(Source& in, unsigned int most)
{
    const unsigned int kind = in.Below(6), count = in.Size(most), narrow = in.Below(10), noise = in.Below(24);
    const bool isEven = in.Flag(), isWhole = narrow < 4, isScaled = in.Below(4) == 0, isFar = in.Below(4) == 0;
    const int range = std::numeric_limits<T>::max_exponent;
    const int exponent = static_cast<int>(in.Below(2 * static_cast<unsigned int>(range))) - range;
    const T scale = std::ldexp(T(1), isScaled ? exponent : 0);
    const T far = isFar ? std::ldexp(scale, static_cast<int>(in.Below(40))) : T(0);
    Source many = in.Fork();
    std::vector<V<T>> points;
    for (unsigned int i = 0; i < count; ++i) {
        const T place = many.Unit<T>(), height = isEven ? static_cast<T>(i % 3) - 1 : many.Unit<T>();
        T u = isEven ? static_cast<T>(2 * i + 1) / static_cast<T>(count) - 1 : place;
        if (!isWhole) u = std::ldexp(u, 3 - static_cast<int>(narrow));
        // By the rational parameter of the circle: no sine is needed.
        const T square = u * u, side = isWhole && many.Flag() ? T(-1) : T(1);
        const T radius = kind == 3 ? std::sqrt(1 - height * height) : kind == 5 ? 1 + height / 2 : T(1);
        T at[4] = {side * radius * (1 - square) / (1 + square), 2 * radius * u / (1 + square), height, T(1)};
        if (kind < 2) at[0] = u, at[1] = kind == 0 ? u / 4 : height;
        if (kind < 3) at[2] = kind == 0 ? u / 2 : T(0);
        // A half of them turned.
        if (noise % 2 == 0) {
            const T y = at[1];
            at[1] = T(0.6) * y - T(0.8) * at[2];
            at[2] = T(0.8) * y + T(0.6) * at[2];
        }
        for (unsigned int k = 0; k < 3; ++k) {
            if (noise < 12) at[k] += std::ldexp(many.Unit<T>(), -2 * static_cast<int>(noise));
            at[k] = at[k] * scale + far;
        }
        points.push_back(V<T>(static_cast<const T*>(at)));
    }
    return points;
}

template <class T, template <class> class V>
struct RobustState : State
{
    using State::State;
    using Vector = V<T>;
    using Flat = TVector2<T>;
    using Set = TPointSet<T, V>;
    using Spline = TBSpline<T, V>;
    static constexpr unsigned int dimension = sizeof(Vector) / sizeof(T);
    static constexpr T epsilon = std::numeric_limits<T>::epsilon(), least = std::numeric_limits<T>::denorm_min();

    Set points{0, 16}, other{0, 16};
    Spline spline{3, Clamped, 0, 16};
    TList<T> distances{0, 16};

    void Fill() override
    {
        points = Draw(129);
        other = Draw(65);
        const unsigned int order = in.Between(1, 9), type = in.Byte();
        spline = Spline(Draw(33), order, static_cast<KnotType>(type % 16 == 15 ? 2 : type % 2));
        if (in.Below(4) == 0) spline.Wrap();
    }
    void Show() const override { out << points << other << spline << distances; }

    Set Draw(unsigned int most)
    {
        const std::vector<Vector> drawn = in.Flag() ? DrawPoints<T, V>(in, most) : DrawFeature<T, V>(in, most);
        return Set(drawn.data(), static_cast<unsigned int>(drawn.size()));
    }
    /// The answer to a question, which changes nothing that it is given. It is not constant, so that a compiler which
    /// does not build it in place moves it: a copy would have other capacities.
    template <class Question>
    auto Ask(Question ask)
    {
        Sink before, after;
        before << points << other << spline;
        auto answer = ask();
        after << points << other << spline;
        Require(before.Get() == after.Get());
        out << answer.status;
        return answer;
    }
    /// Fields of an answer, which are never NaN.
    template <class... Fields>
    void Tell(const Fields&... fields)
    {
        const auto tell = [this](const auto& field) {
            T values[sizeof(field) / sizeof(T)];
            std::memcpy(values, static_cast<const void*>(&field), sizeof(values));
            for (const T value : values) Require(value == value);
            out << field;
        };
        (tell(fields), ...);
    }
    void Tell(const TSphere<T>& ball) { Tell(ball.sphere); }
    void Tell(const TCylinder<T>& solid) { Tell(solid.centre, solid.axis, solid.radius, solid.height); }

    static Set Reversed(const Set& set)
    {
        std::vector<Vector> elements = Contents<Vector>(set);
        std::reverse(elements.begin(), elements.end());
        return Set(elements.data(), set.GetCount());
    }
    /// The greatest coordinate.
    static T Size(const Set& set, T size = T(0))
    {
        for (const Vector& point : Contents<Vector>(set))
            for (unsigned int k = 0; k < dimension; ++k) size = std::max(size, Numbers::Absolute(point[k]));
        return size;
    }
    /// Infinite where it overflows.
    static T Distance(const Vector& a, const Vector& b)
    {
        T distance(0);
        for (unsigned int k = 0; k < dimension; ++k) distance = std::hypot(distance, a[k] - b[k]);
        return distance;
    }

    template <class Fit, auto... fields>
    void FitTo()
    {
        const bool keep = in.Flag();
        const Fit fit = Ask([&] { return Fit(points, keep ? &distances : nullptr); });
        Tell(fit.rms, fit.peakToValley);
        (Tell(fit.*fields), ...);
        out << fit.iterations;
        Require(fit.iterations <= 400 && (!keep || distances.GetCount() == (fit ? points.GetCount() : 0)));
        if (!keep || !fit) return;
        const Aside aside;
        T largest(0);
        for (const T distance : Contents(distances)) largest = std::max(largest, Numbers::Absolute(distance));
        // Squares of distances as small as this, beside the size, may vanish.
        const T slack = 4 * epsilon * largest + std::ldexp(Size(points), -500) + 2 * least;
        Require(fit.rms <= largest + slack && fit.peakToValley <= 2 * (largest + slack));
        Require(fit.rms >= (largest - slack) / std::sqrt(static_cast<T>(points.GetCount())) - slack);
    }
    /// No zone is wider than that about the feature of least squares.
    template <class Zone, auto feature, class Fit>
    void FindZone()
    {
        const Zone zone = Ask([&] { return Zone(points); });
        Tell(zone.*feature, zone.width);
        const Fit fit(points);
        if (zone && fit) Require(zone.width <= fit.peakToValley * (1 + 4 * epsilon) + 8 * epsilon * Size(points));
    }
    /// The points turned, mirrored or moved, as a rule, and the other set else, by weights or to what is nearest.
    template <unsigned int form>
    void Align()
    {
        const unsigned int kind = in.Below(8), limit = in.Below(24);
        const unsigned int count = in.Below(16) == 0 ? in.Size(65) : points.GetCount();
        Set partner(kind == 0 ? other : points);
        const Vector shift = kind < 3 ? in.template Vector<Vector>() : Vector(0, 0, 0);
        for (unsigned int i = 0; kind > 0 && i < partner.GetCount(); ++i) {
            const auto [x, y, z] = points[i];
            partner[i] = Vector(T(0.6) * x - T(0.8) * y, T(0.8) * x + T(0.6) * y, kind == 1 ? -z : z) + shift;
        }
        TList<T> weights(0, 16);
        for (unsigned int i = 0; form == 1 && i < count; ++i)
            weights.Add(kind == 7 ? in.template Scalar<T>() : static_cast<T>(i * 5 % 8) / 2);
        const auto motion = Ask([&] {
            if constexpr (form == 0) return Robust::Alignment<T>(points, partner);
            if constexpr (form == 1) return Robust::Alignment<T>(points, partner, weights);
            if constexpr (form == 2) return Robust::NearestAlignment<T>(points, partner, limit);
        });
        Tell(motion.rotation, motion.translation, motion.rms, motion.largest);
        if constexpr (form == 2) Require(motion.iterations <= limit);
        Require(!motion || motion.rms <= motion.largest * (1 + 4 * epsilon) + least);
        Require(!motion || Numbers::Absolute(motion.rotation.Determinant() - 1) <= 16 * epsilon);
    }
    /// Strictly convex about all points, from the lowest point on, and the same from points the other way round.
    void Hull()
    {
        const auto hull = Ask([&] { return Robust::ConvexHull<T, V>(points); });
        const Robust::ConvexHull<T, V> again(Reversed(points));
        const unsigned int n = hull.polygon.GetCount();
        out << hull.polygon;
        Require((n != 0) == static_cast<bool>(hull) && again.polygon.GetCount() == n);
        const auto flat = [](const Vector& point) { return Flat(point.x, point.y); };
        for (unsigned int i = 0; i < n; ++i) {
            const Flat a = flat(hull.polygon[i]), b = flat(hull.polygon[(i + 1) % n]);
            Require(a.x == again.polygon[i].x && a.y == again.polygon[i].y && a.y >= hull.polygon[0].y);
            Require(n < 3 || Robust::Predicates<T>::Orientation(a, b, flat(hull.polygon[(i + 2) % n])) == 1);
            for (const Vector& point : Contents<Vector>(points)) {
                const int side = Robust::Predicates<T>::Orientation(a, b, flat(point));
                Require(n < 3 ? side == 0 : side >= 0);
            }
        }
    }
    /// Holds all points, and is the same from points the other way round.
    void Surround()
    {
        const auto found = Ask([&] { return Robust::MinimumCircle<T>(points); });
        Tell(found.circle);
        const auto& [centre, radius] = found.circle;
        const auto [again, size] = Robust::MinimumCircle<T>(Reversed(points)).circle;
        Require(centre.x == again.x && centre.y == again.y && radius == size);
        const T slack = 8 * epsilon * Size(points, radius / 2) + 8 * least;
        for (unsigned int i = 0; found && i < points.GetCount(); ++i)
            Require(std::hypot(points[i].x / 2 - centre.x / 2, points[i].y / 2 - centre.y / 2) <= radius / 2 + slack);
    }
    /// Four points in any place, three of them nearly on a line or all four nearly on a circle.
    void Signs()
    {
        using Exact = Robust::Predicates<double>;
        using Signs = Robust::Predicates<T>;
        for (unsigned int round = 0; round < 8; ++round) {
            const auto a = in.template Vector<Flat>(), b = in.template Vector<Flat>();
            auto c = in.template Vector<Flat>(), d = in.template Vector<Flat>();
            const unsigned int kind = in.Below(6), nudge = in.Below(3);
            if (kind < 2) c = a + (b - a) * (static_cast<T>(in.Byte()) / 64);
            if (kind == 2 || kind == 3) c = Flat(b.x, a.y), d = Flat(a.x, b.y);
            if (nudge == 1) d.x = std::nextafter(d.x, T(9));
            if (nudge == 2) c.y = std::nextafter(c.y, T(-9));
            const int turn = Signs::Orientation(a, b, c), side = Signs::InCircle(a, b, c, d);
            Require(turn == Signs::Orientation(b, c, a) && turn == -Signs::Orientation(b, a, c));
            Require(side == Signs::InCircle(b, c, a, d) && side == -Signs::InCircle(a, b, d, c));
            const TVector2<double> e(a), f(b), g(c), h(d);
            Require(turn == Exact::Orientation(e, f, g) && side == Exact::InCircle(e, f, g, h));
            out << turn << side;
        }
    }

    /// Of a number of control points or to a tolerance; a fit that is found is the spline from now on.
    template <class Kind>
    void FitSpline()
    {
        const unsigned int drawn = in.Below(24), order = in.Below(9);
        const bool isClosed = in.Below(3) == 0, meetEnds = in.Flag();
        const T any = in.template Scalar<T>(), size = Size(points);
        const T tolerance = drawn == 0 ? any : std::ldexp(size, 3 - static_cast<int>(drawn));
        const Kind kind = std::is_integral_v<Kind> ? static_cast<Kind>(drawn) : static_cast<Kind>(tolerance);
        const auto fit = Ask([&] { return Robust::SplineFit<T, V>(points, kind, order, isClosed, meetEnds); });
        Tell(fit.rms, fit.largest, fit.Evaluate(in.template Unit<T>()));
        out << fit.spline << fit.parameters;
        Require(fit.parameters.GetCount() == (fit ? points.GetCount() : 0) && (fit || fit.spline.GetCount() == 0));
        if (!fit) return;
        Require(fit.rms <= fit.largest * (1 + 4 * epsilon) + least);
        if (std::is_floating_point_v<Kind>) Require(fit.largest <= tolerance);
        if (meetEnds && !isClosed)
            Require(Distance(fit.Evaluate(T(0)), points[0]) == T(0) &&
                    Distance(fit.Evaluate(T(1)), points.GetLast()) == T(0));
        for (const T parameter : Contents(fit.parameters)) Require(parameter >= T(0) && parameter <= T(1));
        const Aside aside;
        spline = fit.spline;
    }
    /// Points at equal lengths are no farther apart than along the curve.
    void Measure()
    {
        const auto length = Ask([&] { return Robust::SplineLength<T, V>(spline); });
        const unsigned int count = in.Below(20);
        const Set sample = length.Sample(count);
        const T at = length.total * in.template Unit<T>(), parameter = length.ParameterAt(at);
        Tell(length.total, parameter, length.At(at));
        out << sample;
        Require(sample.GetCount() == (length ? count : 0) && parameter >= T(0) && parameter <= T(1));
        const T slack = length.total / 16384 + 8 * epsilon * Size(spline) + least;
        for (unsigned int i = 1; i < sample.GetCount(); ++i)
            Require(Distance(sample[i - 1], sample[i]) <= length.total / static_cast<T>(count - 1) + slack);
    }
    /// None of the points at equal lengths is closer.
    void FindClosest()
    {
        auto target = in.template Vector<Vector>();
        const unsigned int index = in.Below(130);
        if (index < spline.GetCount()) target = spline[index];
        const auto closest = Ask([&] { return Robust::ClosestPoint<T, V>(spline, target); });
        const T distance = closest.distance;
        Tell(closest.point, closest.parameter, distance);
        if (!closest) return;
        const T slack = 16 * epsilon * Size(spline, Distance(target, spline[0])) + T(1e-13) * distance + least;
        Require(Numbers::Absolute(Distance(closest.point, target) - distance) <= slack);
        for (const Vector& point : Contents<Vector>(Robust::SplineLength<T, V>(spline).Sample(9)))
            Require(distance <= Distance(point, target) + slack);
    }

    static std::vector<Operation> GetOperations()
    {
        using namespace Robust;
        using S = RobustState;
        std::vector<Operation> all = {{"points", &S::Fill, Promise::Valid},
                                      {"ConvexHull", &S::Hull},
                                      {"SplineFit(count)", &S::template FitSpline<unsigned int>},
                                      {"SplineFit(tolerance)", &S::template FitSpline<T>},
                                      {"SplineLength", &S::Measure},
                                      {"ClosestPoint", &S::FindClosest}};
        const auto add = [&](const char* name, void (S::*method)()) { all.push_back({name, method}); };
        // The list of distances is emptied first.
        const auto addFit = [&](const char* name, void (S::*fit)()) { all.push_back({name, fit, Promise::Valid}); };
        if constexpr (dimension < 4) {
            using Line = LineFit<T, V>;
            using Circle = CircleFit<T, V>;
            addFit("LineFit", &S::template FitTo<Line, &Line::line, &Line::deviation>);
            addFit("CircleFit", &S::template FitTo<Circle, &Circle::circle, &Circle::deviation>);
        }
        if constexpr (dimension == 2) {
            add("LineZone", &S::template FindZone<LineZone<T>, &LineZone<T>::line, LineFit<T, V>>);
            add("CircleZone", &S::template FindZone<CircleZone<T>, &CircleZone<T>::circle, CircleFit<T, V>>);
            add("MinimumCircle", &S::Surround);
            add("Predicates", &S::Signs);
        }
        if constexpr (dimension == 3) {
            using Plane = PlaneFit<T>;
            using Sphere = SphereFit<T>;
            using Cylinder = CylinderFit<T>;
            using Cone = ConeFit<T>;
            addFit("PlaneFit", &S::template FitTo<Plane, &Plane::plane, &Plane::deviation>);
            addFit("SphereFit", &S::template FitTo<Sphere, &Sphere::sphere, &Sphere::deviation>);
            addFit("CylinderFit", &S::template FitTo<Cylinder, &Cylinder::cylinder, &Cylinder::deviation>);
            addFit(
                "ConeFit",
                &S::template FitTo<Cone, &Cone::cone, &Cone::deviation, &Cone::point, &Cone::radius, &Cone::halfAngle,
                                   &Cone::pointDeviation, &Cone::radiusDeviation, &Cone::halfAngleDeviation>);
            add("PlaneZone", &S::template FindZone<PlaneZone<T>, &PlaneZone<T>::plane, Plane>);
            add("Alignment", &S::template Align<0>);
            add("Alignment(weights)", &S::template Align<1>);
            add("NearestAlignment", &S::template Align<2>);
        }
        return all;
    }
};

const Family robust([] { AddOverPoints<RobustState>("Robust", 150); });

} // namespace
} // namespace CorvexCatalogue

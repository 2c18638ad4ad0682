#pragma once

/// Outlines and curves to compare on, and what we do to them: the counterpart of PeersGeometry.h.

#include "PeersGeometry.h"

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>

namespace Peers
{

using namespace Halmont::Orrin::CorvexMaths;

template <class T>
using Outline = TPolygon<T, TVector2>;

template <class T>
using OutlinePointer = std::shared_ptr<const Outline<T>>;

constexpr double size = 1000;
constexpr double fullTurn = 6.283185307179586;

inline void AddPoint(Coordinates& points, double radius, double angle)
{
    points.insert(points.end(), {radius * std::cos(angle), radius * std::sin(angle)});
}

/// Points in a disc, where few lie on the hull, or on its circle, where all do but for rounding.
inline Coordinates MakeCloud(std::size_t count, bool isOnCircle)
{
    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> uniform(0, 1);
    Coordinates points;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = fullTurn * uniform(random);
        AddPoint(points, size * (isOnCircle ? 1 : std::sqrt(uniform(random))), angle);
    }
    return points;
}

/// A counter-clockwise outline around the origin with the waves of a gear on it, each vertex nearer or farther at
/// random by up to a share of the radius.
inline Coordinates MakeGear(std::size_t count, double noise)
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> uniform(-noise, noise);
    Coordinates outline;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = fullTurn * static_cast<double>(i) / static_cast<double>(count);
        AddPoint(outline, size * (1 + 0.01 * std::sin(12 * angle) + uniform(random)), angle);
    }
    return outline;
}

/// A counter-clockwise ring of sides about 1 long, each vertex nearer or farther at random by up to `noise`.
inline Coordinates MakeRing(std::size_t count, double noise)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> uniform(-noise, noise);
    Coordinates outline;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = fullTurn * static_cast<double>(i) / static_cast<double>(count);
        AddPoint(outline, static_cast<double>(count) / fullTurn + uniform(random), angle);
    }
    return outline;
}

/// The points of a cloud in another order, at random.
inline Coordinates Shuffle(const Coordinates& points)
{
    std::mt19937_64 random(9);
    std::vector<std::size_t> order(points.size() / 2);
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = 2 * i;
    std::shuffle(order.begin(), order.end(), random);
    Coordinates shuffled;
    for (const std::size_t i : order) shuffled.insert(shuffled.end(), {points[i], points[i + 1]});
    return shuffled;
}

/// Points over the square around such a gear, most of them inside its box, so that the box alone decides few.
inline Coordinates MakeQueries(std::size_t count, double noise)
{
    std::mt19937_64 random(6);
    const double half = size * (1 + noise);
    std::uniform_real_distribution<double> uniform(-half, half);
    Coordinates points(2 * count);
    for (double& coordinate : points) coordinate = uniform(random);
    return points;
}

/// Control points of a rising spiral with a wave on it, two turns long: x, y, z.
inline Values MakeSpiral(std::size_t count)
{
    Values points;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2 * fullTurn * static_cast<double>(i) / static_cast<double>(count);
        const double radius = 2 + 0.1 * std::cos(7 * angle);
        points.insert(points.end(), {radius * std::cos(angle), radius * std::sin(angle), angle});
    }
    return points;
}

/// Numbers from a range, at random.
inline Values MakeNumbers(std::size_t count, double least, double greatest)
{
    std::mt19937_64 random(8);
    std::uniform_real_distribution<double> uniform(least, greatest);
    Values numbers(count);
    for (double& number : numbers) number = uniform(random);
    return numbers;
}

template <class T>
OutlinePointer<T> MakeOutline(const Coordinates& points)
{
    const auto outline = std::make_shared<Outline<T>>(static_cast<unsigned int>(points.size() / 2), 1000u);
    for (std::size_t i = 0; i < points.size(); i += 2)
        outline->Add(TVector2<T>(static_cast<T>(points[i]), static_cast<T>(points[i + 1])));
    return outline;
}

/// Work in place done to a copy of an outline: the others, too, leave what they are given as it is. The copy counts.
template <class T, class Operation, class Result>
Work OnCopy(OutlinePointer<T> source, Operation operation, Result result)
{
    const auto outline = std::make_shared<std::optional<Outline<T>>>();
    return {[=] {
                outline->emplace(*source);
                operation(**outline);
            },
            [=] { return result(**outline); }};
}

inline Values Flatten(const Outline<double>& outline)
{
    Values points;
    for (unsigned int i = 0; i < outline.GetCount(); ++i) points.insert(points.end(), {outline[i].x, outline[i].y});
    return points;
}

inline Work OurHull(const Coordinates& points)
{
    return OnCopy(
        MakeOutline<double>(points), [](Outline<double>& cloud) { cloud.MakeConvexHull(); }, Flatten);
}

inline Work OurContainment(const Coordinates& points, const Coordinates& queryPoints)
{
    const OutlinePointer<double> outline = MakeOutline<double>(points);
    const OutlinePointer<double> queries = MakeOutline<double>(queryPoints);
    const auto isWithin = std::make_shared<Values>(queries->GetCount());
    return {[=] {
                for (unsigned int i = 0; i < queries->GetCount(); ++i)
                    (*isWithin)[i] = outline->IsWithin((*queries)[i]) ? 1 : 0;
            },
            [=] { return *isWithin; }};
}

/// The same through an index, which is made beforehand.
inline Work OurPreparedContainment(const Coordinates& points, const Coordinates& queryPoints)
{
    const auto index = std::make_shared<const TOutlineIndex<double>>(*MakeOutline<double>(points));
    const OutlinePointer<double> queries = MakeOutline<double>(queryPoints);
    const auto isWithin = std::make_shared<Values>(queries->GetCount());
    return {[=] {
                for (unsigned int i = 0; i < queries->GetCount(); ++i)
                    (*isWithin)[i] = index->IsWithin((*queries)[i]) ? 1 : 0;
            },
            [=] { return *isWithin; }};
}

/// An outline without box work: a box kept through single removals costs a pass for each.
struct BoxlessOutline : Outline<double>
{
    explicit BoxlessOutline(const Outline<double>& source) : Outline<double>(source) { keepBox = false; }
};

inline Work OurThinning(const Coordinates& chain, double tolerance)
{
    return OnCopy<double>(
        std::make_shared<BoxlessOutline>(*MakeOutline<double>(chain)),
        [=](Outline<double>& outline) { outline.SimplifyDPM(tolerance); }, Flatten);
}

/// The area, or NaN where the offset failed.
inline Work OurOffset(const Coordinates& points, double distance)
{
    const auto isDone = std::make_shared<bool>(false);
    return OnCopy(
        MakeOutline<double>(points), [=](Outline<double>& outline) { *isDone = outline.Offset(distance, 0); },
        [=](const Outline<double>& outline) {
            return Values{*isDone ? outline.GetSimpleArea() : std::numeric_limits<double>::quiet_NaN()};
        });
}

inline Work OurBoundingCircle(const Coordinates& points)
{
    const OutlinePointer<double> source = MakeOutline<double>(points);
    const auto circle = std::make_shared<TCircle2<double>>();
    return {[=] {
                *circle = TCircle2<double>();
                circle->MinimumBoundingCircle(*source);
            },
            [=] {
                return Values{circle->centre.x, circle->centre.y, circle->radius};
            }};
}

inline Work OurSplinePoints(const Values& controls, const Values& parameters)
{
    using Vector = TVector3<double>;
    TPointSet<double, TVector3> set;
    for (std::size_t i = 0; i < controls.size(); i += 3) set.Add(Vector(controls[i], controls[i + 1], controls[i + 2]));
    constexpr unsigned int order = 4;
    const auto spline = std::make_shared<TBSpline<double, TVector3>>(set, order, Clamped);
    const auto points = std::make_shared<std::vector<Vector>>(parameters.size());
    return {[=] {
                for (std::size_t i = 0; i < parameters.size(); ++i) (*points)[i] = spline->Evaluate(parameters[i]);
            },
            [=] {
                Values values;
                for (const Vector& point : *points) values.insert(values.end(), {point.x, point.y, point.z});
                return values;
            }};
}

} // namespace Peers

#include "Inspection.h"

#include "../support/Input.h"

#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/primitives/TSphere.h>
#include <CorvexMaths/splines/TBSpline.h>

#include <algorithm>
#include <cmath>

namespace Inspect
{

namespace
{

/// The refinement of a circle stops at a step that changes nothing which a report would show; some five rounds get
/// there.
constexpr double fitTolerance = 1e-12;
constexpr unsigned int fitIterations = 50;

void Align(const Part& part, const Measurement& measurement, Inspection* inspection)
{
    Points nominal;
    Points measured;
    for (const Datum& datum : part.datums) {
        nominal.Add(datum.point);
        measured.Add(measurement.at(datum.name)[0]);
    }
    inspection->robust = AlignRobustly(measured, nominal);
    Alignment& alignment = inspection->alignment;
    Maths::TMatrixMxN<double> rotation;
    // Moves the measured datum points onto the drawn ones; all else that was measured follows by the same motion.
    if (!nominal.Register(&measured, &rotation, &alignment.shift, true))
        throw InputError("the measured datum points are a mirror image of the drawn ones");
    alignment.rotation = Maths::TMatrix3x3<double>(rotation[0]);
    for (unsigned int i = 0; i < measured.GetCount(); ++i) {
        const double distance = (measured[i] - part.datums[i].point).GetLength();
        if (distance < alignment.residual) continue;
        alignment.residual = distance;
        alignment.worst = part.datums[i].name;
    }
}

Points Move(const Points& points, const Alignment& alignment)
{
    Points moved(points.GetCount());
    for (unsigned int i = 0; i < points.GetCount(); ++i) moved.Add(alignment.rotation * points[i] + alignment.shift);
    return moved;
}

/// Adds up the squared distances of the points, where the fit itself does not, and returns the largest distance.
template <class Distance>
double AddSquares(const Points& points, const Distance& distanceOf, double* squares)
{
    double largest = 0;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const double distance = std::fabs(distanceOf(points[i]));
        *squares += distance * distance;
        largest = std::max(largest, distance);
    }
    return largest;
}

bool FitPlane(Points& points, Fitted* fitted)
{
    Maths::TPlane<double> plane;
    const bool done = plane.Fit(points, &fitted->spread, &fitted->squares);
    fitted->point = plane.point;
    fitted->axis = plane.normal;
    return done;
}

bool FitLine(Points& points, Fitted* fitted)
{
    Maths::TLine3<double> line;
    // Adds to the squares, which start at 0 here.
    const bool done = line.Fit(points, &fitted->spread, &fitted->squares);
    fitted->point = line.origin;
    fitted->axis = line.direction;
    return done;
}

bool FitCircle(Points& points, Fitted* fitted)
{
    Maths::TCircle3<double> circle;
    const bool done = circle.Fit(points, &fitted->spread, &fitted->squares, fitTolerance, fitIterations);
    fitted->point = circle.centre;
    fitted->axis = circle.normal;
    fitted->diameter = 2 * circle.radius;
    return done;
}

bool FitSphere(Points& points, Fitted* fitted)
{
    Maths::TSphere<double> ball;
    const bool done = ball.Fit(points, &fitted->spread, fitIterations);
    fitted->point = Vector(ball.sphere.x, ball.sphere.y, ball.sphere.z);
    fitted->diameter = 2 * ball.sphere.w;
    AddSquares(
        points, [&](const Vector& p) { return (p - fitted->point).GetLength() - ball.sphere.w; }, &fitted->squares);
    return done;
}

bool FitProfile(Points& points, unsigned int controlCount, Fitted* fitted)
{
    // The knots of a fit to many points gather near the first of them, so the curve is one piece without inner knots:
    // its order is the number of its control points.
    const Points curve = SampleProfile(points, controlCount, controlCount, &fitted->controls);
    if (curve.GetCount() == 0) return false;
    fitted->spread =
        2 * AddSquares(
                points, [&](const Vector& p) { return (p - NearestOn(curve, p)).GetLength(); }, &fitted->squares);
    return true;
}

Fitted Fit(const Feature& feature, Points& points)
{
    Fitted fitted;
    bool done = false;
    switch (feature.kind) {
    case Kind::Plane:
        done = FitPlane(points, &fitted);
        break;
    case Kind::Line:
        done = FitLine(points, &fitted);
        break;
    case Kind::Circle:
        done = FitCircle(points, &fitted);
        break;
    case Kind::Sphere:
        done = FitSphere(points, &fitted);
        break;
    case Kind::Profile:
        done = FitProfile(points, feature.controlCount, &fitted);
        break;
    }
    if (!done) throw InputError(feature.name + ": no " + NameOf(feature.kind) + " fits the measured points");
    // A fit knows no sides.
    if (fitted.axis % feature.axis < 0) fitted.axis *= -1;
    return fitted;
}

/// The point of the drawn feature nearest to a measured one.
Vector NearestNominal(const Result& result, const Vector& p)
{
    const Feature& feature = result.feature;
    const Vector offset = p - feature.point;
    const Vector along = feature.axis * (offset % feature.axis);
    switch (feature.kind) {
    case Kind::Plane:
        return p - along;
    case Kind::Line:
        return feature.point + along;
    case Kind::Circle:
    case Kind::Sphere:
        break;
    case Kind::Profile:
        return NearestOn(result.curve, p);
    }
    // A bore may be probed at any depth: only the distance from its axis counts. A sphere has no axis, and along is 0.
    Vector outward = offset - along;
    outward.Normalise();
    return feature.point + along + outward * (feature.diameter / 2);
}

/// Twice the largest distance from what is drawn: of the centre, where there is one, else of the points.
double PositionOf(const Result& result, const Fitted& fitted)
{
    const Feature& feature = result.feature;
    if (feature.kind == Kind::Circle || feature.kind == Kind::Sphere) {
        const Vector offset = fitted.point - feature.point;
        return 2 * (offset - feature.axis * (offset % feature.axis)).GetLength();
    }
    double largest = 0;
    for (const Deviation& deviation : result.deviations)
        largest = std::max(largest, (deviation.actual - deviation.nominal).GetLength());
    return 2 * largest;
}

std::vector<Characteristic> CharacteristicsOf(const Result& result, const Fitted& fitted)
{
    const Feature& feature = result.feature;
    std::vector<Characteristic> all;
    if (feature.kind == Kind::Circle || feature.kind == Kind::Sphere) {
        // The coordinate along the axis of a bore tells how deep it was probed, nothing of the bore.
        if (std::fabs(feature.axis.x) < 0.99) all.push_back({"x", feature.point.x, fitted.point.x, {}, {}});
        if (std::fabs(feature.axis.y) < 0.99) all.push_back({"y", feature.point.y, fitted.point.y, {}, {}});
        if (std::fabs(feature.axis.z) < 0.99) all.push_back({"z", feature.point.z, fitted.point.z, {}, {}});
        all.push_back({"diameter", feature.diameter, fitted.diameter, feature.size, {}});
    }
    all.push_back({"position", {}, PositionOf(result, fitted), feature.position, {}});
    all.push_back({"form", {}, fitted.spread, feature.form, {}});
    return all;
}

/// The characteristics by what the feature is judged by, with those by the robust fit beside them.
std::vector<Characteristic> Characterise(const Result& result)
{
    std::vector<Characteristic> all = CharacteristicsOf(result, result.fitted);
    if (result.robust.status != Status::Done) return all;
    const std::vector<Characteristic> robust = CharacteristicsOf(result, result.robust);
    for (std::size_t i = 0; i < all.size(); ++i) all[i].robust = robust[i].actual;
    return all;
}

template <class All>
bool AllInTolerance(const All& all)
{
    return std::all_of(all.begin(), all.end(), [](const auto& one) { return one.InTolerance(); });
}

} // namespace

// Written so that what is not a number is out of tolerance.
bool Characteristic::InTolerance() const
{
    return !tolerance || std::fabs(nominal ? actual - *nominal : actual) <= *tolerance;
}
bool Result::InTolerance() const
{
    return AllInTolerance(characteristics);
}
bool Inspection::InTolerance() const
{
    return AllInTolerance(results);
}

Inspection InspectPart(const Part& part, const Measurement& measurement)
{
    Inspection inspection;
    Align(part, measurement, &inspection);
    for (const Feature& feature : part.features) {
        Result result;
        result.feature = feature;
        Points points = Move(measurement.at(feature.name), inspection.alignment);
        result.fitted = Fit(feature, points);
        result.robust = FitRobustly(feature, points);
        result.zone = FindZone(feature, points);
        if (feature.kind == Kind::Profile) {
            result.curve = SampleProfile(feature.profile, feature.profile.GetCount(), 4, nullptr);
            if (result.curve.GetCount() == 0)
                throw InputError(feature.name + ": no curve runs through the drawn points");
        }
        for (unsigned int i = 0; i < points.GetCount(); ++i)
            result.deviations.push_back({NearestNominal(result, points[i]), points[i]});
        result.characteristics = Characterise(result);
        inspection.results.push_back(result);
    }
    return inspection;
}

Points SampleProfile(const Points& points, unsigned int controlCount, unsigned int order, Points* controls)
{
    Maths::TBSpline<double, Maths::TVector3> spline(order, Maths::Clamped, controlCount, 1);
    Points data(points);
    spline.Fit(data, controlCount, false);
    // A fit that fails leaves control points of zeros behind and tells nothing else.
    bool solved = false;
    for (unsigned int i = 0; i < spline.GetCount(); ++i) solved = solved || spline[i] != Vector();
    Points curve;
    if (!solved) return curve;
    spline.Evaluate(&curve, 1.0 / 2048, false);
    if (controls)
        for (unsigned int i = 0; i < spline.GetCount(); ++i) controls->Add(spline[i]);
    return curve;
}

Vector NearestOn(const Points& polyline, const Vector& p)
{
    Vector nearest;
    double least = HUGE_VAL;
    for (unsigned int i = 1; i < polyline.GetCount(); ++i) {
        const Vector start = polyline[i - 1];
        const Vector side = polyline[i] - start;
        const double square = side % side;
        const double share = square > 0 ? std::clamp((p - start) % side / square, 0.0, 1.0) : 0;
        const Vector foot = start + side * share;
        const double distance = (p - foot).GetLengthSquared();
        if (distance >= least) continue;
        least = distance;
        nearest = foot;
    }
    return nearest;
}

} // namespace Inspect

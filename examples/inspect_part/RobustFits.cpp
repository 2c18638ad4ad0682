// The same questions to the Robust family: each answer is made from its question, and tells in its status whether it
// holds.

#include "Inspection.h"

#include <CorvexMaths/robust/Alignment.h>
#include <CorvexMaths/robust/CircleFit.h>
#include <CorvexMaths/robust/CircleZone.h>
#include <CorvexMaths/robust/ClosestPoint.h>
#include <CorvexMaths/robust/LineFit.h>
#include <CorvexMaths/robust/PlaneFit.h>
#include <CorvexMaths/robust/PlaneZone.h>
#include <CorvexMaths/robust/SphereFit.h>
#include <CorvexMaths/robust/SplineFit.h>

#include <algorithm>

namespace Inspect
{

namespace
{

namespace Robust = Maths::Robust;

/// The points of a bore or boss as seen along its axis, which is the normal of the plane that fits them.
struct AxialView
{
    Robust::PlaneFit<double> plane;
    Vector right;
    Vector up;
    Maths::TPointSet<double, Maths::TVector2> points;

    explicit AxialView(const Points& measured) : plane(measured)
    {
        if (!plane) return;
        plane.plane.normal.OrthonormalXY(&right, &up);
        for (unsigned int i = 0; i < measured.GetCount(); ++i) {
            const Vector offset = measured[i] - plane.plane.point;
            points.Add(Maths::TVector2<double>(offset % right, offset % up));
        }
    }
};

/// What all fits of the family tell.
Fitted ResidualsOf(const Robust::FitAnswer<double>& fit, const Points& points)
{
    Fitted fitted;
    fitted.status = fit.status;
    fitted.spread = fit.peakToValley;
    fitted.squares = fit.rms * fit.rms * points.GetCount();
    return fitted;
}

Fitted FitPlane(const Points& points)
{
    const Robust::PlaneFit fit(points);
    Fitted fitted = ResidualsOf(fit, points);
    fitted.point = fit.plane.point;
    fitted.axis = fit.plane.normal;
    return fitted;
}

Fitted FitLine(const Points& points)
{
    const Robust::LineFit fit(points);
    Fitted fitted = ResidualsOf(fit, points);
    fitted.point = fit.line.origin;
    fitted.axis = fit.line.direction;
    return fitted;
}

Fitted FitCircle(const Points& points)
{
    const AxialView view(points);
    if (!view.plane) return ResidualsOf(view.plane, points);
    const Robust::CircleFit fit(view.points);
    Fitted fitted = ResidualsOf(fit, points);
    fitted.point = view.plane.plane.point + view.right * fit.circle.centre.x + view.up * fit.circle.centre.y;
    fitted.axis = view.plane.plane.normal;
    fitted.diameter = 2 * fit.circle.radius;
    return fitted;
}

Fitted FitSphere(const Points& points)
{
    const Robust::SphereFit fit(points);
    Fitted fitted = ResidualsOf(fit, points);
    fitted.point = Vector(fit.sphere.sphere.x, fit.sphere.sphere.y, fit.sphere.sphere.z);
    fitted.diameter = 2 * fit.sphere.sphere.w;
    return fitted;
}

/// A curve of one piece, as that beside which it is shown.
Fitted FitProfile(const Points& points, unsigned int controlCount)
{
    const Robust::SplineFit fit(points, controlCount, controlCount);
    Fitted fitted;
    fitted.status = fit.status;
    if (!fit) return fitted;
    for (unsigned int i = 0; i < fit.spline.GetCount(); ++i) fitted.controls.Add(fit.spline[i]);
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        const double distance = Robust::ClosestPoint(fit.spline, points[i]).distance;
        fitted.spread = std::max(fitted.spread, 2 * distance);
        fitted.squares += distance * distance;
    }
    return fitted;
}

Fitted Fit(const Feature& feature, const Points& points)
{
    switch (feature.kind) {
    case Kind::Plane:
        return FitPlane(points);
    case Kind::Line:
        return FitLine(points);
    case Kind::Circle:
        return FitCircle(points);
    case Kind::Sphere:
        return FitSphere(points);
    case Kind::Profile:
        break;
    }
    return FitProfile(points, feature.controlCount);
}

template <class Answer>
Zone WidthOf(const Answer& zone)
{
    return {zone.status, zone.width};
}

} // namespace

Alignment AlignRobustly(const Points& measured, const Points& nominal)
{
    const Robust::Alignment best(measured, nominal);
    Alignment alignment;
    alignment.status = best.status;
    alignment.rotation = best.rotation;
    alignment.shift = best.translation;
    alignment.residual = best.largest;
    return alignment;
}

Fitted FitRobustly(const Feature& feature, const Points& points)
{
    Fitted fitted = Fit(feature, points);
    if (fitted.axis % feature.axis < 0) fitted.axis *= -1;
    return fitted;
}

std::optional<Zone> FindZone(const Feature& feature, const Points& points)
{
    if (feature.kind == Kind::Plane) return WidthOf(Robust::PlaneZone(points));
    if (feature.kind != Kind::Circle) return {};
    const AxialView view(points);
    if (!view.plane) return Zone{view.plane.status, 0};
    return WidthOf(Robust::CircleZone(view.points));
}

} // namespace Inspect

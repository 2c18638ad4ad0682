#pragma once

/// What was measured of a part against what is drawn: alignment, fitted geometry, deviations and verdicts. This is
/// where the library does its work.

#include "PartFiles.h"

#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/robust/Status.h>

namespace Inspect
{

/// Whether there is an answer, and if not, why. Only the answers of the Robust family tell why; of the others, what is
/// not there is thrown as an InputError.
using Status = Maths::Robust::Status;

/// The rigid motion that carries the measured datum points onto the drawn ones: p goes to rotation * p + shift.
struct Alignment
{
    Status status = Status::Done;
    Maths::TMatrix3x3<double> rotation;
    Vector shift;
    double residual = 0; ///< The largest distance that remains at a datum point,
    std::string worst;   ///< and the name of that point; of the robust alignment none is kept.
};

/// The geometry of a kind that fits the measured points best, in the coordinates of the drawing.
struct Fitted
{
    Status status = Status::Done;
    Vector point; ///< As in Feature.
    Vector axis;  ///< As in Feature; turned to the side of the drawn one.
    double diameter = 0;
    Points controls;    ///< The control points of a profile's spline, whose order is their number.
    double spread = 0;  ///< Width of the zone about the geometry that holds all points.
    double squares = 0; ///< Sum of the squared distances of the points from it.
};

/// The narrowest zone of the form of a feature that holds all points, as ISO 1101 judges it: a slab of a plane, a ring
/// of a circle. That about a fit by least squares, `Fitted::spread`, is never narrower.
struct Zone
{
    Status status = Status::Done;
    double width = 0;
};

/// A measured point and the nearest point of the drawn feature.
struct Deviation
{
    Vector nominal;
    Vector actual;
};

/// One line of the report. What has no nominal value is a width of which 0 is perfect.
struct Characteristic
{
    std::string name;
    std::optional<double> nominal;
    double actual = 0;
    std::optional<double> tolerance;
    std::optional<double> robust; ///< The actual value by the robust fit, where there is one.

    bool InTolerance() const;
};

struct Result
{
    Feature feature;
    Fitted fitted;            ///< What the feature is judged by.
    Fitted robust;            ///< The fit of the Robust family to the same points, shown beside it.
    std::optional<Zone> zone; ///< Of a plane or circle.
    Points curve;             ///< The drawn profile in close steps; empty for the other kinds.
    std::vector<Deviation> deviations;
    std::vector<Characteristic> characteristics;

    bool InTolerance() const;
};

struct Inspection
{
    Alignment alignment;
    Alignment robust; ///< That of the Robust family, shown beside it; what was measured is not moved by it.
    std::vector<Result> results;

    bool InTolerance() const;
};

/// Aligns what was measured by the datum points and judges each feature. Throws an InputError when the datum points
/// cannot be aligned or no geometry fits a feature.
Inspection InspectPart(const Part& part, const Measurement& measurement);

/// The alignment by the Robust family.
Alignment AlignRobustly(const Points& measured, const Points& nominal);

/// The fit of the Robust family to a feature's points.
Fitted FitRobustly(const Feature& feature, const Points& points);

/// The narrowest zone of a plane's or circle's points; nothing for the other kinds.
std::optional<Zone> FindZone(const Feature& feature, const Points& points);

/// The points of a profile's fitted or drawn curve in close steps, from its control points or through its points.
Points SampleProfile(const Points& points, unsigned int controlCount, unsigned int order, Points* controls);

/// The point of a polyline nearest to another.
Vector NearestOn(const Points& polyline, const Vector& p);

} // namespace Inspect

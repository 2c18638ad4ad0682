#pragma once

/// What was measured of a part against what is drawn: alignment, fitted geometry, deviations and verdicts. This is
/// where the library does its work.

#include "PartFiles.h"

#include <CorvexMaths/matrices/TMatrixMxN.h>

namespace Inspect
{

/// The rigid motion that carries the measured datum points onto the drawn ones: p goes to rotation * p + shift.
struct Alignment
{
    Maths::TMatrixMxN<double> rotation;
    Vector shift;
    double residual = 0; ///< The largest distance that remains at a datum point,
    std::string worst;   ///< and the name of that point.
};

/// The geometry of a kind that fits the measured points best, in the coordinates of the drawing.
struct Fitted
{
    Vector point; ///< As in Feature.
    Vector axis;  ///< As in Feature; turned to the side of the drawn one.
    double diameter = 0;
    Points controls;    ///< The control points of a profile's spline, whose order is their number.
    double spread = 0;  ///< Width of the zone about the geometry that holds all points.
    double squares = 0; ///< Sum of the squared distances of the points from it.
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

    bool InTolerance() const;
};

struct Result
{
    Feature feature;
    Fitted fitted;
    Points curve; ///< The drawn profile in close steps; empty for the other kinds.
    std::vector<Deviation> deviations;
    std::vector<Characteristic> characteristics;

    bool InTolerance() const;
};

struct Inspection
{
    Alignment alignment;
    std::vector<Result> results;

    bool InTolerance() const;
};

/// Aligns what was measured by the datum points and judges each feature. Throws an InputError when the datum points
/// cannot be aligned or no geometry fits a feature.
Inspection InspectPart(const Part& part, const Measurement& measurement);

/// The points of a profile's fitted or drawn curve in close steps, from its control points or through its points.
Points SampleProfile(const Points& points, unsigned int controlCount, unsigned int order, Points* controls);

/// The point of a polyline nearest to another.
Vector NearestOn(const Points& polyline, const Vector& p);

} // namespace Inspect

#pragma once

/// The points of an offset curve: its joins, and their rounding. Internal.

#include <CorvexMaths/regions/internal/OffsetCurve.h>
#include <CorvexMaths/regions/internal/PlaneVector.h>

#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Adds points to a curve. Places are in steps of the rings from an origin; directions are of length 1.
class CurveWriter
{
public:
    /// `first` is the origin, a point of the grid of the curve too.
    CurveWriter(const OffsetRule& offsetRule, const GridPoint& first, Ring* written);

    /// Adds the grid point next to a place that is not behind it in either direction, or the nearest if both are
    /// null.
    void AddPoint(const PlaneVector& place, const PlaneVector& m, const PlaneVector& n);

    /// Adds a join about a corner, between copies in two directions from it, the second to the left of the first or
    /// opposite to it.
    void AddJoin(CornerShape shape, const PlaneVector& corner, const PlaneVector& from, const PlaneVector& to);

private:
    const OffsetRule& rule;
    const double r;
    const GridPoint origin; ///< On the grid of the curve.
    Ring* const curve;
    double pieceCosine; ///< Of the greatest angle between tangents of a round join.
    double pieceSine;
    std::vector<PlaneVector> ends;

    void AddArc(const PlaneVector& centre, PlaneVector from, PlaneVector to);
    void AddTangents(const PlaneVector& centre, const PlaneVector& from, const PlaneVector& to);
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

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

    /// Adds the nearest of those corners of the cell of a place that are not behind it in either direction: in none if
    /// both are null. Where each corner is behind it in one of the two, it adds one for each direction.
    void AddPoint(const PlaneVector& place, const PlaneVector& m, const PlaneVector& n);

    /// Adds a join about a corner, between copies in two directions from it, the second to the left of the first or
    /// opposite to it.
    void AddJoin(CornerShape shape, const PlaneVector& corner, const PlaneVector& from, const PlaneVector& to);

private:
    const OffsetRule& rule;
    const double r;
    const double toCurve;   ///< A step of the rings, in steps of the curve.
    const GridPoint origin; ///< On the grid of the curve.
    Ring* const curve;
    double pieceCosine; ///< Of the greatest angle between tangents of a round join.
    double pieceSine;
    std::vector<PlaneVector> ends;

    /// Adds nothing where each corner is behind the place.
    bool TryAddPoint(const PlaneVector& place, const PlaneVector& m, const PlaneVector& n);
    /// Whether an arc takes more than one piece.
    bool IsWide(const PlaneVector& from, const PlaneVector& to) const;
    void AddArc(const PlaneVector& centre, PlaneVector from, PlaneVector to);
    void AddTangents(const PlaneVector& centre, const PlaneVector& from, const PlaneVector& to);
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

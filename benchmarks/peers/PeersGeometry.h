#pragma once

/// The work on outlines, splines and containers that other libraries do for comparison, and what it results in.

#include "Peers.h"

#include <cstddef>

namespace Peers
{

/// x, y, x, y ... of points or of the vertices of an outline, whose first vertex is not repeated.
using Coordinates = std::vector<double>;

// The convex hull of points: its vertices, counter-clockwise from any of them.
Work BoostHull(const Coordinates& points);
Work CgalHull(const Coordinates& points);

// For each query point 1 if it lies within a counter-clockwise outline, else 0.
Work BoostContainment(const Coordinates& outline, const Coordinates& queries);
Work CgalContainment(const Coordinates& outline, const Coordinates& queries);
// Through an outline that was prepared beforehand.
Work GeosContainment(const Coordinates& outline, const Coordinates& queries);

// The vertices that Douglas and Peucker's method keeps of an open chain.
Work BoostThinning(const Coordinates& chain, double tolerance);

/// Any number of outlines, counter-clockwise each.
using Outlines = std::vector<Coordinates>;

// Whatever any of many outlines goes round: the area, and the number of pieces.
Work BoostUnion(const Outlines& outlines);
Work CgalUnion(const Outlines& outlines);
Work ClipperUnion(const Outlines& outlines);
Work GeosUnion(const Outlines& outlines);

// What two outlines have between them, or in common: the area, and the number of pieces.
Work BoostCombination(const Coordinates& first, const Coordinates& second, bool isIntersection);
Work CgalCombination(const Coordinates& first, const Coordinates& second, bool isIntersection);
Work ClipperCombination(const Coordinates& first, const Coordinates& second, bool isIntersection);
Work GeosCombination(const Coordinates& first, const Coordinates& second, bool isIntersection);

// The outlines at a distance from a counter-clockwise one, corners rounded as the library does if not told: the area,
// and the number of pieces.
Work BoostOffset(const Coordinates& outline, double distance);
Work GeosOffset(const Coordinates& outline, double distance);
Work ClipperOffset(const Coordinates& outline, double distance);

// The smallest circle around points: x and y of the centre, and the radius. By the incremental method for circles, and
// by the search from the farthest point for spheres of any dimension.
Work CgalBoundingCircle(const Coordinates& points);
Work CgalBoundingSphere(const Coordinates& points);

/// Points of a clamped cubic B-spline in space at many parameters from 0 to 1, from the basis functions that are not
/// zero alone. `controls` are x, y, z of its control points; so is the result of its points.
Work GslSplinePoints(const Values& controls, const Values& parameters);

/// The control points, x, y of each, of the clamped cubic that fits points with given parameters best, on given break
/// points: banded normal equations, by the banded decomposition of Cholesky.
Work GslSplineFit(const Coordinates& points, const Values& parameters, const Values& breaks);

// Appends vectors (i, 1, 2), or numbers i, one by one to an empty container that doubles: the count and the last i.
Work StandardVectorAppend3(std::size_t count);
Work StandardVectorAppend(std::size_t count);

// Sorts numbers ascending: the sorted numbers. Each run is prepared with a fresh copy.
Work StandardSort(const Values& numbers);

/// All sums of a point of the first set and one of the second, and the box around them, by a plain loop: least x and y,
/// greatest x and y, x and y of the last sum.
Work PlainMinkowskiSum(const Coordinates& first, const Coordinates& second);

} // namespace Peers

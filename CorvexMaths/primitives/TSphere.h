#pragma once

/// Spheres: intersection with lines, and the fit to points.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A sphere, for T of `float` and `double`: four scalars behind a virtual destructor. Lengths are in the caller's unit.
template <class T>
class CORVEX_API TSphere
{
public:
    /// The centre in x, y and z, the radius in w.
    TVector4<T> sphere;

    /// Radius 0 at the origin.
    TSphere() : TSphere(T(0)) {}
    /// The sphere of a radius about the origin. Not explicit: a number converts to a sphere.
    TSphere(const T& radius) : TSphere(radius, T(0), T(0), T(0)) {}
    /// The sphere of a radius about a point: the radius comes first.
    TSphere(const T& radius, const TVector3<T>& centre) : TSphere(radius, centre.x, centre.y, centre.z) {}
    /// The sphere of a radius about (x, y, z): the radius comes first.
    TSphere(const T& radius, const T& x, const T& y, const T& z) : sphere(x, y, z, radius) {}
    /// A copy of the four scalars.
    TSphere(const TSphere& other) = default;
    /// Copies the four scalars.
    TSphere& operator=(const TSphere& other) = default;
    /// Nothing to release.
    virtual ~TSphere() = default;

    /// Where a line of unit direction meets the sphere: `p1` lies earlier along the line than `p2`, unlike the hits of
    /// `TCircle2::IntersectWith`. The tolerance is the least discriminant (four times the squared half chord) that
    /// counts as a hit, inclusively: above 0 it rejects lines near a tangent, and below 0 it lets misses through with
    /// NaN in both points; a NaN discriminant passes. False writes nothing. That the direction is of unit length is not
    /// checked. Neither pointer may be null, nor `p1` part of the line; they may be parts of this sphere.
    /// @param line The line, of unit direction.
    /// @param[out] p1 The hit that is earlier along the line.
    /// @param[out] p2 The later one.
    /// @param tolerance The least discriminant of a hit.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const;

    /// Fits a sphere to points.
    ///
    /// Four points are fitted by determinants of their coordinates, which lose all digits away from the origin:
    /// subtract the centre of the points first, and add it to that of the sphere, or use `Robust::SphereFit`.
    ///
    /// To four points the sphere is exact but for rounding, whatever `iterations` says. False, and the sphere as it
    /// was, when the determinant of the points (six times the volume of their tetrahedron) is not above 1e-16 in
    /// absolute value.
    ///
    /// To any other number by an algebraic fit about the centroid, from which at most `iterations` Gauss-Newton steps
    /// on the distances to the surface follow. A component of the algebraic centre that is zero within the common
    /// tolerance becomes exactly 0. The steps end when the squared step of the centre is not above 1e-16 (that step is
    /// not taken) or has not become less than the one before; to run out of iterations is no failure. False when a
    /// system could not be solved, as for fewer than four points (unless rounding at large coordinates hides that): the
    /// sphere then holds what it had reached, which after the first system is the centroid with the old radius. Each
    /// step decomposes a matrix of as many rows as points and 4 columns. NaN among the points gives false. Where memory
    /// runs out, the sphere stays as it was.
    ///
    /// `spread`, which may be null, receives the width of the shell about the centre that holds all points: the
    /// greatest less the least signed distance to the surface, never negative. It is untouched after a false result.
    /// @param points Four or more.
    /// @param[out] spread The width of the shell that holds all points; may be null.
    /// @param iterations How many steps at most.
    [[nodiscard]] bool Fit(const TPointSet<T, TVector3>& points, T* spread, unsigned int iterations);

    CORVEX_INCLUDE_STREAM_TO_PRINT(TSphere);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TSphere);

} // namespace Halmont::Orrin::CorvexMaths

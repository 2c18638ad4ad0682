#pragma once

/// Cylinders: solids of revolution between two caps, and their intersection with lines.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A cylinder with its caps, for T of `float` and `double`: eight scalars behind a virtual destructor. Lengths and
/// tolerances are absolute, in the caller's unit.
template <class T>
class CORVEX_API TCylinder
{
public:
    /// The midpoint of the axis.
    TVector3<T> centre;
    /// The unit vector along the axis.
    TVector3<T> axis;
    /// The radius.
    T radius;
    /// The whole length: each cap lies half of it from the centre.
    T height;

    /// Radius and height 1 about the origin, the axis along z.
    TCylinder() : TCylinder(T(1), T(1)) {}
    /// The cylinder of a radius and a height about the origin, the axis along z.
    TCylinder(const T& capRadius, const T& length) : axis(T(0), T(0), T(1)), radius(capRadius), height(length) {}
    /// The cylinder of a radius and a height about a point, its axis along a vector, which is normalised; the zero
    /// vector stays.
    TCylinder(const T& capRadius, const T& length, const TVector3<T>& middle, const TVector3<T>& along)
        : centre(middle), axis(along), radius(capRadius), height(length)
    {
        axis.Normalise();
    }
    /// The cylinder of a radius and a height about (x, y, z), its axis along (ax, ay, az), which is normalised; the
    /// zero vector stays.
    TCylinder(const T& capRadius, const T& length, const T& x, const T& y, const T& z, const T& ax, const T& ay,
              const T& az)
        : TCylinder(capRadius, length, TVector3<T>(x, y, z), TVector3<T>(ax, ay, az))
    {}
    /// A copy of the fields.
    TCylinder(const TCylinder& other) = default;
    /// Copies the fields.
    TCylinder& operator=(const TCylinder& other) = default;
    /// Nothing to release.
    virtual ~TCylinder() = default;

    /// Where a line of unit direction passes through the surface, caps included.
    ///
    /// The caps are the discs of `TCircle3::IntersectWith`, the one at the start of the axis first; with a line through
    /// both, that is all. Else the hits of the side follow, the one further along the line first, if they lie between
    /// the caps to within the common tolerance, inclusively. If `infinite`, the side has no ends and there are no caps.
    /// A line passes the side by as parallel only where its direction has exactly nothing across the axis; there is no
    /// tolerance.
    ///
    /// Of three hits, `p1` is that of the cap, and `p2` the one of the others that is further from it, by squared
    /// distance; the first on a tie. A tangent of the side gives two equal points and true, unlike that of a cone.
    /// False, and nothing written, with fewer than two hits. NaN in the line gives false, but true and NaN where
    /// `infinite`. That the direction is of unit length is not checked.
    /// Neither pointer may be null; what they point to may be part of this cylinder or of the line.
    /// @param line The line, of unit direction.
    /// @param[out] p1 The first hit: that of a cap if there is one.
    /// @param[out] p2 The second hit.
    /// @param infinite Whether the side has no ends, and no caps.
    [[nodiscard]] bool IntersectWith(TLine3<T> line, TVector3<T>* p1, TVector3<T>* p2, bool infinite) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TCylinder);
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TCylinder);

} // namespace Halmont::Orrin::CorvexMaths

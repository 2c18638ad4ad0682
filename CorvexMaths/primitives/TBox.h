#pragma once

/// The axis-aligned box in space.
///
/// A box is empty by its values alone: every component of `minimum` is the limit and every component of `maximum` is
/// minus the limit, so the first point extended into it becomes both corners. The extents of an empty box are negative.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// An axis-aligned box, for T of `float` and `double`: a plain value of seven scalars, always three-dimensional.
/// Nothing orders or checks the corners. Tolerances are absolute, in the caller's unit of length. Copies copy the limit
/// too. Points of two or four components enter a box by their conversion to `TVector3`.
template <class T>
struct TBox
{
    /// The lowest corner: the limit in every component of an empty box.
    TVector3<T> minimum;
    /// The highest corner: minus the limit in every component of an empty box.
    TVector3<T> maximum;
    /// The magnitude that stands for "no bound yet" in this box; positive.
    T limit;

    /// An empty box with this limit, by default the largest `float` in both instantiations. The limit must be positive;
    /// it bounds what the box can follow: a first point beyond it moves one corner and leaves the other at the limit.
    /// Not explicit: a number converts to an empty box.
    TBox(T sentinel = Numbers::unsetBound<T>)
        : minimum(sentinel, sentinel, sentinel), maximum(-sentinel, -sentinel, -sentinel), limit(sentinel)
    {}

    /// A box of these three fields, taken as they are; a lowest corner above the highest is kept so.
    TBox(const TVector3<T>& lowest, const TVector3<T>& highest, T sentinel)
        : minimum(lowest), maximum(highest), limit(sentinel)
    {}

    /// Whether both corners are equal, exactly. The limit is not compared; NaN is equal to nothing.
    bool operator==(const TBox<T>& other) const { return minimum == other.minimum && maximum == other.maximum; }
    /// Whether any component of a corner differs, exactly: the opposite of `operator==`, so true with a NaN. The limit
    /// is not compared.
    bool operator!=(const TBox<T>& other) const { return !(*this == other); }

    /// The box around the eight moved corners of this one: each is taken as a row vector with w of 1 times the matrix,
    /// and the resulting w dropped without division. The box therefore grows under rotation. It is extended from empty,
    /// with this box's limit, so that NaN coordinates are passed over and those beyond the limit leave a corner at it.
    /// The sentinel corners of an empty box are moved like any others.
    TBox<T> operator*(const TMatrix4x4<T>& matrix) const;
    /// Becomes the box around its eight moved corners: each is taken as a row vector with w of 1 times the matrix, and
    /// the resulting w dropped without division. The box therefore grows under rotation. It is extended from empty,
    /// with its own limit, so that NaN coordinates are passed over and those beyond the limit leave a corner at it. The
    /// sentinel corners of an empty box are moved like any others.
    TBox<T>& operator*=(const TMatrix4x4<T>& matrix);

    /// Empties the box: every component of the minimum becomes its own limit, of the maximum minus that.
    void Reset() { *this = TBox<T>(limit); }

    /// Grows to hold the point (x, y, z). On each axis a value above the maximum becomes the maximum, and one below the
    /// minimum the minimum. Both comparisons are strict and independent: NaN leaves its axis as it was, and the first
    /// point of an empty box moves both corners. The coordinates may be those of this box.
    void Extend(const T& x, const T& y, const T& z)
    {
        ExtendAxis(x, &minimum.x, &maximum.x);
        ExtendAxis(y, &minimum.y, &maximum.y);
        ExtendAxis(z, &minimum.z, &maximum.z);
    }
    /// Grows to hold a point: on each axis a value above the maximum becomes the maximum, and one below the minimum the
    /// minimum, by strict comparisons. NaN leaves its axis as it was. The point may be a corner of this box.
    void Extend(const TVector3<T>& p) { Extend(p.x, p.y, p.z); }
    /// Grows to hold the other box's minimum, then its maximum, each as a point. Nothing asks whether the other is
    /// empty: an empty one extends this box to both of its sentinels. The other may be this box.
    void Extend(const TBox<T>& other)
    {
        Extend(other.minimum);
        Extend(other.maximum);
    }
    /// Moves every face outwards by a margin, which is added to all of the maximum and subtracted from all of the
    /// minimum; a negative margin shrinks the box, past its centre too. Not a point. An empty box keeps its negative
    /// extents unless the margin outweighs the limit. The margin may be a component of this box.
    void Extend(const T& margin)
    {
        const TVector3<T> step(margin, margin, margin);
        maximum += step;
        minimum -= step;
    }
    /// Gives every axis whose extent is exactly 0 an extent of 2 around its place: 1 down and 1 up, not scaled to the
    /// data; where 1 is lost in the rounding of the coordinate nothing changes. Other axes stay, those of an empty box
    /// and those with NaN too.
    void EnsureVolume();

    /// The middle between the corners, (minimum + maximum) times 0.5; zero for an empty box.
    TVector3<T> GetCentre() const { return (minimum + maximum) * T(0.5); }
    /// The extent along x, maximum minus minimum; negative for an empty box, in `float` minus infinity with the default
    /// limit.
    T GetWidth() const { return maximum.x - minimum.x; }
    /// The extent along y, maximum minus minimum; negative for an empty box, in `float` minus infinity with the default
    /// limit.
    T GetDepth() const { return maximum.y - minimum.y; }
    /// The extent along z, maximum minus minimum; negative for an empty box, in `float` minus infinity with the default
    /// limit. 0 for a box of points in the plane.
    T GetHeight() const { return maximum.z - minimum.z; }
    /// The largest of the three extents; negative for an empty box. A NaN in y or z is passed over, one in x is the
    /// result.
    T GetMaxDim() const;
    /// The smallest of the three extents; negative for an empty box. A NaN in y or z is passed over, one in x is the
    /// result.
    T GetMinDim() const;
    /// The area of the face in x and y alone, depth times width. Of an empty box, whose extents are both negative, it
    /// is positive and means nothing.
    T GetArea() const { return GetDepth() * GetWidth(); }
    /// Depth times width times height, in this order; 0 for a box that is flat along any axis, negative and without
    /// meaning for an empty one.
    T GetVolume() const { return GetDepth() * GetWidth() * GetHeight(); }
    /// Writes the 8 corners, with 0 for the minimum and 1 for the maximum: the ring at z0, (x0, y0), (x0, y1), (x1,
    /// y1), (x1, y0), then the ring at z1 from the opposite corner, (x1, y1), (x0, y1), (x0, y0), (x1, y0). `out` must
    /// have room for 8 vectors and be no part of this box.
    void GetCorners(TVector3<T>* out) const;
    /// Writes the 4 diagonals of the box, all upwards, with dx, dy, dz for the extents: (dx, dy, dz), (-dx, dy, dz),
    /// (-dx, -dy, dz), (dx, -dy, dz). `out` must have room for 4 vectors.
    void GetDiagonals(TVector3<T>* out) const;

    /// Whether a point lies in the box widened by the tolerance on every side: on each axis from minimum - tolerance to
    /// maximum + tolerance, inclusively. A negative tolerance narrows the box. NaN lies nowhere, and nothing lies in an
    /// empty box unless the tolerance outweighs the limit.
    bool IsWithin(const TVector3<T>& p, T tolerance) const;
    /// Whether a point of the plane lies in the box on x and y, z left alone: from minimum - tolerance to maximum +
    /// tolerance, inclusively. A negative tolerance narrows the box. NaN lies nowhere, and nothing lies in an empty box
    /// unless the tolerance outweighs the limit.
    bool IsWithin(const TVector2<T>& p, T tolerance) const;
    /// Whether the x, y and z of a point lie in the box, w not looked at: on each axis from minimum - tolerance to
    /// maximum + tolerance, inclusively. A negative tolerance narrows the box. NaN lies nowhere, and nothing lies in an
    /// empty box unless the tolerance outweighs the limit.
    bool IsWithin(const TVector4<T>& p, T tolerance) const;
    /// Whether two boxes overlap, either way round; touching is overlapping, exactly and without tolerance. When
    /// planar, z plays no part. Not containment. The origin is sought in the Minkowski difference of the two: the range
    /// of the differences of their corners, axis by axis, started from the largest `float` in both instantiations. Only
    /// the corners count, in whatever order they stand, so an empty box overlaps all that lies between its sentinels.
    /// NaN differences are passed over; an axis without any other does not overlap.
    bool IsWithin(const TBox<T>& other, const bool& planar) const;
    /// Whether a line touches the box: whether it passes through any face plane at a point in the box widened by the
    /// tolerance, inclusively. A face plane is passed over when the direction's component across it lies strictly
    /// between -tolerance and tolerance. `IntersectWith` gives the points.
    bool IsWithin(const TLine3<T>& line, T tolerance) const;

    /// Where a line meets the faces. The planes through the minimum (x, y, z), then those through the maximum, are met
    /// in turn until two hits are held; the hits come in this order, not in that of the line. A plane is skipped when
    /// the direction's component along its axis lies strictly between -tolerance and tolerance; with a tolerance of 0
    /// none is, and the points of parallel ones, which are not finite, do not count. A point counts when it lies in the
    /// box widened by the tolerance, inclusively, and as a second hit only if it is not equal to the first within the
    /// common tolerance, so a line through an edge or a corner hits once.
    ///
    /// True when at least one point counted; how many, the result does not tell. The slots are written during the
    /// search: after false the first, and after a single hit the second, may hold a rejected point or be unwritten.
    /// Neither pointer may be null; they must differ, and point into neither the box nor the line.
    /// @param line The line.
    /// @param[out] first The first hit, by the order of the faces.
    /// @param[out] second The second hit.
    /// @param tolerance By which the box is widened, and up to which a direction runs along a face.
    [[nodiscard]] bool IntersectWith(const TLine3<T>& line, TVector3<T>* first, TVector3<T>* second, T tolerance) const;
    /// Where a line in the plane z = 0 meets the faces. False where the minimum z is above 0 or the maximum z below it.
    /// Else the line is taken into space, its direction normalised once more, and the hits are those of the form for
    /// `TLine3`, in its order and with its tolerances, z dropped.
    ///
    /// True when at least one point counted. A false result leaves the outputs untouched; after a single hit the second
    /// output holds a rejected point or zeros. Neither pointer may be null; what they point to may be part of the line.
    /// @param line The line.
    /// @param[out] first The first hit, by the order of the faces.
    /// @param[out] second The second hit.
    /// @param tolerance By which the box is widened, and up to which a direction runs along a face.
    [[nodiscard]] bool IntersectWith(const TLine2<T>& line, TVector2<T>* first, TVector2<T>* second, T tolerance) const;

private:
    static void ExtendAxis(const T& value, T* lowest, T* highest)
    {
        if (value > *highest) *highest = value;
        if (*lowest > value) *lowest = value;
    }

    CORVEX_INCLUDE_STREAM_TO_PRINT(TBox);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TBox);

} // namespace Halmont::Orrin::CorvexMaths

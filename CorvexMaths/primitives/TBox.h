#pragma once

/// The axis-aligned box in space.
///
/// A box is empty by its values alone: every component of `minimum` is the limit and every component of `maximum` is
/// minus the limit, so the first point extended into it becomes both corners. The extents of an empty box are negative.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// An axis-aligned box, for T of `float` and `double`: a plain value of seven scalars, always three-dimensional.
/// Nothing orders or checks the corners. Tolerances are absolute, in the caller's unit of length.
template <class T>
struct TBox
{
    /// The lowest corner.
    TVector3<T> minimum;
    /// The highest corner.
    TVector3<T> maximum;
    /// The magnitude that stands for "no bound yet" in this box; positive.
    T limit;

    /// An empty box with this limit, by default the largest `float` in both instantiations. The limit bounds what the
    /// box can follow: coordinates beyond it leave one corner at the limit.
    TBox(T sentinel = Numbers::unsetBound<T>)
        : minimum(sentinel, sentinel, sentinel), maximum(-sentinel, -sentinel, -sentinel), limit(sentinel)
    {}

    /// A box of these three fields, taken as they are.
    TBox(const TVector3<T>& lowest, const TVector3<T>& highest, T sentinel)
        : minimum(lowest), maximum(highest), limit(sentinel)
    {}

    /// Whether both corners are equal, exactly. The limit is not compared; NaN is equal to nothing.
    bool operator==(const TBox<T>& other) const { return minimum == other.minimum && maximum == other.maximum; }
    /// The opposite of `operator==`.
    bool operator!=(const TBox<T>& other) const { return !(*this == other); }

    /// The box around the eight corners moved by a full transform; see `operator*=`.
    TBox<T> operator*(const TMatrix4x4<T>& matrix) const;
    /// Becomes the box around its eight corners, each taken as a row vector with w of 1 times the matrix, the resulting
    /// w dropped without division. It therefore grows under rotation. The box's own limit serves; an empty box has its
    /// sentinel corners moved like any others.
    TBox<T>& operator*=(const TMatrix4x4<T>& matrix);

    /// Empties the box, with its own limit.
    void Reset() { *this = TBox<T>(limit); }

    /// Grows to hold a point. Both comparisons of an axis are strict and independent: NaN changes nothing, and a point
    /// can move both corners.
    void Extend(const T& x, const T& y, const T& z)
    {
        ExtendAxis(x, &minimum.x, &maximum.x);
        ExtendAxis(y, &minimum.y, &maximum.y);
        ExtendAxis(z, &minimum.z, &maximum.z);
    }
    /// Grows to hold a point.
    void Extend(const TVector3<T>& p) { Extend(p.x, p.y, p.z); }
    /// Grows to hold the other box's minimum, then its maximum, each as a point.
    void Extend(const TBox<T>& other)
    {
        Extend(other.minimum);
        Extend(other.maximum);
    }
    /// Moves every face outwards by a margin; a negative margin shrinks the box. Not a point.
    void Extend(const T& margin)
    {
        const TVector3<T> step(margin, margin, margin);
        maximum += step;
        minimum -= step;
    }
    /// Gives every axis whose extent is exactly 0 an extent of 2 around its place: 1 down and 1 up, not scaled to the
    /// data. Other axes stay, those of an empty box too.
    void EnsureVolume();

    /// The middle between the corners.
    TVector3<T> GetCentre() const { return (minimum + maximum) * T(0.5); }
    /// The extent along x; negative for an empty box, as are the other two.
    T GetWidth() const { return maximum.x - minimum.x; }
    /// The extent along y.
    T GetDepth() const { return maximum.y - minimum.y; }
    /// The extent along z.
    T GetHeight() const { return maximum.z - minimum.z; }
    /// The largest of the three extents.
    T GetMaxDim() const;
    /// The smallest of the three extents.
    T GetMinDim() const;
    /// The area of the face in x and y alone.
    T GetArea() const { return GetDepth() * GetWidth(); }
    /// The product of the three extents.
    T GetVolume() const { return GetDepth() * GetWidth() * GetHeight(); }
    /// Writes the 8 corners: the ring at the lowest z, (x0, y0), (x0, y1), (x1, y1), (x1, y0), then the ring at the
    /// highest z from the opposite corner, (x1, y1), (x0, y1), (x0, y0), (x1, y0).
    void GetCorners(TVector3<T>* out) const;
    /// Writes the 4 diagonals of the box, all upwards: (dx, dy, dz), (-dx, dy, dz), (-dx, -dy, dz), (dx, -dy, dz).
    void GetDiagonals(TVector3<T>* out) const;

    /// Whether a point lies in the box widened by the tolerance on every side, inclusively; NaN lies nowhere.
    bool IsWithin(const TVector3<T>& p, T tolerance) const;
    /// The same on x and y only.
    bool IsWithin(const TVector2<T>& p, T tolerance) const;
    /// The same as for a point in space; w is not looked at.
    bool IsWithin(const TVector4<T>& p, T tolerance) const;
    /// Whether two boxes overlap; touching is overlapping. When planar, z plays no part. The origin is sought in the
    /// Minkowski difference of the two: the range of the differences of their corners, axis by axis, started from the
    /// largest `float` in both instantiations. Only the corners count, in whatever order they stand, so an empty box
    /// overlaps all that lies between its sentinels.
    bool IsWithin(const TBox<T>& other, const bool& planar) const;
    /// Whether a line touches the box; see `IntersectWith`.
    bool IsWithin(const TLine3<T>& line, T tolerance) const;

    /// Where a line meets the faces. The planes through the minimum (x, y, z), then those through the maximum, are met
    /// in turn until two hits are held. A plane is skipped when the direction's component along its axis lies strictly
    /// between -tolerance and tolerance; a point counts when it lies in the box widened by the tolerance, and as a
    /// second hit only if it is not equal to the first within the common tolerance, so a line through an edge or a
    /// corner hits once. True when at least one point counted. The slots are written during the search: after false the
    /// first, and after a single hit the second, may hold a rejected point or be unwritten.
    bool IntersectWith(const TLine3<T>& line, TVector3<T>* first, TVector3<T>* second, T tolerance) const;
    /// The same for a line in the plane z = 0, which the box must reach. The direction is normalised once more on its
    /// way into space. A false result leaves the outputs untouched; after a single hit the second output holds a
    /// rejected point or zeros.
    bool IntersectWith(const TLine2<T>& line, TVector2<T>* first, TVector2<T>* second, T tolerance) const;

private:
    static void ExtendAxis(const T& value, T* lowest, T* highest)
    {
        if (value > *highest) *highest = value;
        if (*lowest > value) *lowest = value;
    }
};

extern template struct TBox<float>;
extern template struct TBox<double>;

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// A list of points that keeps a box around itself, and what is done to points as a set.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/containers/Instantiations.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/primitives/TBox.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

/// A `TList` of points that also keeps a bounding box, through the list's change hooks.
///
/// T is `float` or `double`, V one of `TVector2`, `TVector3` and `TVector4`. The box is always three-dimensional:
/// points in the plane enter it with a z of 0, and the w of a four-dimensional point is not looked at. An addition
/// extends the box, in constant time for each point; a removal that fires a hook recalculates it, in a pass over the
/// set; and what reaches the points behind the hooks (`Expand`, `Sort`, `Reverse`, writes through `operator[]` or
/// `GetStream`, a removal without order kept) leaves the box as it was.
///
/// A removal fires its hook when the count is lowered and the tail not yet moved. The box therefore covers the first
/// `GetCount()` slots as they lie at that moment: after the removal of an inner point it may still hold that point and
/// miss the last one. `RecalculateBoundingBox` makes it exact.
///
/// Where memory runs out, the allocator's exception passes. The set, and any other that the operation was given, is
/// then as it was, unless the member says otherwise; it can be used in any case.
///
/// Lengths and tolerances are in the caller's unit, and absolute. Nothing is reported but by the bool results;
/// preconditions are checked in debug builds alone, see Precondition.h. One set must not be changed by two threads, nor
/// read while it is changed.
template <class T, template <class> class V>
class TPointSet : public TList<V<T>>
{
    static_assert(std::is_floating_point_v<T>);

    template <class, template <class> class>
    friend class TPointSet;

protected:
    /// The box of the points, with the default limit unless one was assigned; exact only as the class comment tells.
    TBox<T> boundingBox;

    /// When false, the five hooks do nothing, for bulk rewriting of the points; whoever clears it puts the old value
    /// back and sees to the box.
    bool keepBox;

    /// The number of components of a point: 2, 3 or 4.
    unsigned int dimension;

public:
    /// An empty set with an empty box and the keep box flag set. Arguments are those of the list: slots to allocate,
    /// and the least step of growth.
    explicit TPointSet(unsigned int initialCapacity = 0, unsigned int stepSize = 1000);

    /// Copies `pointCount` points from an array, which may be null for none; the grow size is 1000, the keep box flag
    /// set, and the box calculated from the points. No hook fires. Takes part only for pointers to points, so that
    /// `TPointSet(0, 5)` means sizes.
    template <class Pointer, class = IfRealPointer<Pointer, const V<T>*>>
    TPointSet(Pointer points, unsigned int pointCount) : TPointSet(static_cast<const V<T>*>(points), pointCount, 1000u)
    {}

    /// Copies the points in braces; the grow size is 1000, the keep box flag set, and the box calculated from the
    /// points. No hook fires. Two numbers in braces are sizes, as they are in parentheses.
    TPointSet(std::initializer_list<V<T>> points)
        : TPointSet(points.begin(), static_cast<unsigned int>(points.size()), 1000u)
    {}

    /// Copies the points from one iterator up to another, as the copy of an array does. Numbers are no iterators.
    template <class Iterator, class = IfIterator<Iterator, V<T>>>
    TPointSet(Iterator first, Iterator last) : TPointSet(TList<V<T>>(first, last))
    {}

    /// Copies the points of a `std::vector`, a `std::span`, a list, an array or another class with `data()` and
    /// `size()`, of exactly this type of point, as the copy from a pointer does.
    template <class Range, class = IfRange<Range, V<T>, TPointSet>>
    explicit TPointSet(const Range& range)
        : TPointSet(static_cast<const V<T>*>(std::data(range)), CountOf(range), 1000u)
    {}

    /// Takes over the block and the grow size of a list, which is left empty; the keep box flag is set, and the box
    /// calculated from the points. No hook fires.
    explicit TPointSet(TList<V<T>>&& points);

    /// Converts a set of the other scalar, component by component, each rounded to T. The capacity is the count, the
    /// grow size and the keep box flag are the other's, and the box is calculated from the new points. No hook fires.
    template <class U, class = std::enable_if_t<!std::is_same_v<U, T>>>
    explicit TPointSet(const TPointSet<U, V>& other) : TPointSet(other.GetCount(), other.GetGrowSize())
    {
        keepBox = other.keepBox;
        this->count = other.GetCount();
        for (unsigned int i = 0; i < this->count; ++i) {
            const U* const from = other[i];
            T* const to = this->storage[i];
            for (unsigned int k = 0; k < dimension; ++k) to[k] = static_cast<T>(from[k]);
        }
        RecalculateBoundingBox();
    }

    /// Copies a set of points of any dimension, each point by the conversion between vectors; a plane set becomes a
    /// spatial one with z of 0, and a four-dimensional one with w of 1. The capacity is the count, the grow size and
    /// the keep box flag are the other's, growth is not exponential, and the box is calculated from the new points,
    /// whatever the flag says. No hook fires. The form of this set's own dimension is its copy constructor.
    /// @{
    TPointSet(const TPointSet<T, TVector2>& other);
    TPointSet(const TPointSet<T, TVector3>& other);
    TPointSet(const TPointSet<T, TVector4>& other);
    /// @}

    /// Takes over the points of another set: block, grow size, box as it stands and keep box flag. The other set is
    /// left without points and without a block, its box empty. No hook fires on either.
    TPointSet(TPointSet&& other) noexcept;

    /// Assigns the list, points and grow size, with the hooks of this set running under its old flag and box, then
    /// copies the box as the source has it, stale or not, its limit, the flag and the dimension. `ElementsRemoved` (if
    /// a block exists), `Cleared` and `ElementsAdded` fire. A set assigned to itself ends empty, its box empty too
    /// unless the flag is off. Memory that runs out leaves what it leaves of a list, and the box as the hooks keep it.
    TPointSet& operator=(const TPointSet& other);

    /// Takes over the points of another set: block, grow size, box as it stands and keep box flag. The other set is
    /// left without points and without a block, its box empty. No hook fires on either, unless the two are of different
    /// classes: those of this set then fire as in an assignment by copy, and may throw. A set moved to itself stays as
    /// it is.
    TPointSet& operator=(TPointSet&& other);

    /// Frees the points; no hook fires.
    ~TPointSet() override = default;

    /// The box as it stands; see the class on when it is not exact.
    const TBox<T>& GetBoundingBox() const { return boundingBox; }

    /// The mean of the points: the sum in list order, in T, each component divided by the count. All components are 0
    /// for an empty set, w included. Linear time.
    V<T> GetCentre() const;

    /// Empties the box, with its own limit, and extends it by every point, whatever the keep box flag says. A NaN
    /// coordinate changes nothing. Linear time.
    void RecalculateBoundingBox();

    /// Whether any point lies in a rectangle of the x-y plane: the dot products of the two axes with the point minus
    /// the corner, x and y alone, are from 0 to `uLength` and from 0 to `vLength`, inclusive at both ends. The axes are
    /// used as given, so that the lengths are in units of projection on them. NaN lies nowhere; an empty set has no
    /// such point. Stops at the first one. The box is not consulted.
    /// @param corner Where the rectangle begins.
    /// @param uAxis, vAxis The directions of its sides.
    /// @param uLength, vLength Their lengths, in units of the axes.
    bool WithinRectangle(const TVector2<T>& corner, const TVector2<T>& uAxis, const V<T>& vAxis, const T& uLength,
                         const T& vLength) const;

    /// Adds the offset to every point, all components, and to both corners of the box, whatever the keep box flag says;
    /// the box is not recalculated and an empty one moves too. No hook fires. The offset may be one of the points.
    TPointSet& operator+=(const V<T>& offset);

    /// Subtracts the offset from every point, all components, and from both corners of the box, whatever the keep box
    /// flag says; the box is not recalculated and an empty one moves too. No hook fires. The offset may be one of the
    /// points.
    TPointSet& operator-=(const V<T>& offset);

    /// Multiplies every component of every point, w included, and recalculates the box, whatever the keep box flag
    /// says. No hook fires. The factor may be a component of a point.
    TPointSet& operator*=(const T& factor);

    /// Multiplies every point by a matrix, as a row vector on the left, and recalculates the box, whatever the keep box
    /// flag says. No hook fires.
    ///
    /// A matrix of the points' own dimension, or a smaller one, acts as in the product of the vector: it is linear, and
    /// a smaller one is padded with the identity. A larger one takes the point as homogeneous, and a last row moves it:
    /// (x, y) enters as (x, y, 1) or (x, y, 0, 1), (x, y, z) as (x, y, z, 1), and what the product has beyond the point
    /// is dropped, without division by the last coordinate. So a TMatrix3x3 holds a rigid motion of the plane for
    /// TVector2 and a linear map for TVector3. Every sum takes all its terms, those of zeros too, so infinite elements
    /// make NaN as they do in the product of the vector.
    /// @{
    TPointSet& operator*=(const TMatrix2x2<T>& matrix);
    TPointSet& operator*=(const TMatrix3x3<T>& matrix);
    TPointSet& operator*=(const TMatrix4x4<T>& matrix);
    /// @}
    /// Multiplies every point by a matrix of any size, as a row vector on the left, and recalculates the box, whatever
    /// the keep box flag says. No hook fires. The map is linear whatever the size: the upper left block of the points'
    /// dimension serves, padded with the identity where the matrix is smaller.
    TPointSet& operator*=(const TMatrixMxN<T>& matrix);

    /// Writes the points as the rows of a matrix of `GetCount()` rows and as many columns as a point has components.
    /// The matrix is resized if its sizes differ; an empty set gives one of 0 rows. `out` must not be null.
    void ToMatrix(TMatrixMxN<T>* out) const;

    /// Writes the points less their centre, that of GetCentre, as the rows of a matrix of `GetCount()` rows and as many
    /// columns as a point has components, and returns the centre. The matrix is resized if its sizes differ; an empty
    /// set gives one of 0 rows and a centre of zeros. `out` must not be null.
    V<T> ToTransToCentMatrix(TMatrixMxN<T>* out) const;

    /// Finds the rigid motion that carries another set onto this one with the least sum of squared distances, point i
    /// to point i.
    ///
    /// Three points, and flat parts that do not lie in the plane z = 0, get a wrong motion or none in 40 percent of
    /// cases: see the repair of reflections below. `Robust::Alignment` is right for them, and leaves both sets alone.
    ///
    /// The method is the singular value decomposition of the cross-covariance of the two (Arun, Huang and Blostein,
    /// "Least-squares fitting of two 3-D point sets", 1987). Four-dimensional points are taken as such, w included.
    ///
    /// `rotation` is resized and takes the matrix for column vectors: a point b of the other set goes to rotation times
    /// b, plus `translation`. To multiply a vector from the left, transpose it. With `applyToOther` the other set is
    /// moved so, its box recalculated and then moved along.
    ///
    /// Both sets are centred in place for the work and moved back, without hooks and with their boxes, whatever their
    /// keep box flags say: points that are not moved on purpose return up to rounding. `other` must not be this set. No
    /// pointer may be null, nor `translation` a point of either set.
    ///
    /// False where the counts differ, with nothing touched; where the decomposition does not converge in 29
    /// transformations for a value, `rotation` then holding the cross-covariance; and where the best orthogonal matrix
    /// is a reflection and no singular value is zero within the common tolerance (absolute, inclusive), which would
    /// allow for its repair, `rotation` then holding that reflection, for row vectors. After the latter two both sets
    /// stay centred, with their boxes, and `translation` is untouched: keep copies, or the centres, where that can
    /// happen. So it is where memory runs out.
    ///
    /// A coordinate that is NaN or infinite spoils that component of its whole set, since the centre does not come off
    /// again; the decomposition then does not converge.
    ///
    /// The repair negates the last column of v, which need not belong to the value that is zero: values are not sorted.
    /// Where it does not, the result can be another rotation than the best.
    ///
    /// Two empty sets give the identity and a translation of zeros. Time grows with the count; nothing is allocated for
    /// each point.
    ///
    /// @code
    /// TMatrixMxN<double> rotation;
    /// TVector3<double> translation;
    /// if (!nominal.Register(&measured, &rotation, &translation, true)) return; // measured now lies on nominal
    /// @endcode
    /// @param[in,out] other The set that is carried onto this one.
    /// @param[out] rotation For column vectors, of the order of the points.
    /// @param[out] translation What is added after the rotation.
    /// @param applyToOther Whether `other` is moved, or only the motion told.
    [[nodiscard]] bool Register(TPointSet* other, TMatrixMxN<T>* rotation, V<T>* translation, bool applyToOther);

    /// Smooths the points as a polyline: in each pass every point becomes the mean of itself and its two neighbours as
    /// they were before the pass, all components, multiplied by T's nearest value to a third. With `closed` the last
    /// point joins the first; otherwise both ends stay. Two points or fewer are left as they are.
    ///
    /// Each pass replaces the points in their block and fires `ElementsRemoved`, `Cleared` and `ElementsAdded`, which
    /// make the box exact unless the keep box flag is off. One block is allocated for all passes.
    void Smooth(unsigned int passes, bool closed);

    /// Adds points to the polyline, with `closed` to its closing segment too, until no segment is longer than
    /// `maxSpacing`: each that is, strictly, is cut into the least number of equal pieces, each new point built on the
    /// one before. All components count in a length. The old points stay as they are; the closing segment's new points
    /// come at the end of the list. Segments whose length is NaN are left alone, and so is an empty set.
    ///
    /// `maxSpacing` must be above 0 and go into every segment fewer than 2^32 times; one of NaN adds nothing. It may be
    /// a component of a point.
    /// Each new point is inserted by itself and fires `ElementAdded`, at the cost of a move of all points behind it.
    /// Memory that runs out leaves the points added so far.
    void Infill(const T& maxSpacing, bool closed);

    /// The Minkowski sum in place: every old point plus every element of the other operand, all old points with its
    /// first element first. The old points are replaced; an empty operand leaves the set empty. The set's own block is
    /// the only buffer, so that a result beyond the first run is ((p + other[0]) - other[0]) + other[j], rounded at
    /// each step. All components are added, w included. `ElementsRemoved` (if a block exists) and `Cleared` fire once,
    /// `ElementAdded` for each result, so that the box is exact unless the keep box flag is off. The operand must not
    /// lie in this set's own storage, and the product of the counts must be below 2^32. The block is sized once.
    /// @{
    void MinkowskiSum(const V<T>* other, unsigned int otherCount);
    void MinkowskiSum(const TList<V<T>>& other) { MinkowskiSum(other.GetStream(), other.GetCount()); }
    /// @}

    /// The Minkowski sum of two operands: a[i] + b[j], all of b with a[0] first, over all components, w included. The
    /// old points are dropped; an empty operand leaves the set empty. `ElementsRemoved` (if a block exists) and
    /// `Cleared` fire once, `ElementAdded` for each result, so that the box is exact unless the keep box flag is off.
    /// The operands may be the same, but must not lie in this set's own storage, which is reused; the product of their
    /// counts must be below 2^32. The block is sized once.
    /// @{
    void MinkowskiSum(const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount);
    void MinkowskiSum(const TList<V<T>>& a, const TList<V<T>>& b)
    {
        MinkowskiSum(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
    }
    /// @}

    /// The Minkowski difference in place: every old point minus every element of the other operand, all old points with
    /// its first element first. The old points are replaced; an empty operand leaves the set empty. The set's own block
    /// is the only buffer, so that a result beyond the first run is ((p - other[0]) + other[0]) - other[j], rounded at
    /// each step. All components are subtracted, w included. `ElementsRemoved` (if a block exists) and `Cleared` fire
    /// once, `ElementAdded` for each result, so that the box is exact unless the keep box flag is off. The operand must
    /// not lie in this set's own storage, and the product of the counts must be below 2^32. The block is sized once.
    /// @{
    void MinkowskiDifference(const V<T>* other, unsigned int otherCount);
    void MinkowskiDifference(const TList<V<T>>& other) { MinkowskiDifference(other.GetStream(), other.GetCount()); }
    /// @}

    /// The Minkowski difference of two operands: a[i] - b[j], all of b with a[0] first, over all components, w
    /// included. The old points are dropped; an empty operand leaves the set empty. `ElementsRemoved` (if a block
    /// exists) and `Cleared` fire once, `ElementAdded` for each result, so that the box is exact unless the keep box
    /// flag is off. The operands may be the same, but must not lie in this set's own storage, which is reused; the
    /// product of their counts must be below 2^32. The block is sized once.
    /// @{
    void MinkowskiDifference(const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount);
    void MinkowskiDifference(const TList<V<T>>& a, const TList<V<T>>& b)
    {
        MinkowskiDifference(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
    }
    /// @}

    /// Whether a point of the plane lies in the closed outline of `pointCount` points from `first` on, by the sum of
    /// the scores of `ExamineSegment` over its sides, the closing one included: inside unless the sum is 0. On the
    /// outline itself these scores decide too, so that the points of some sides are inside and those of others are not.
    ///
    /// A point outside the bounding box of the whole set, inclusive and with no tolerance, is outside before any side
    /// is looked at; a stale box is used as it stands. A range of 0 points holds nothing; any other must lie within the
    /// set. Only x and y count. A point of NaN is outside. Linear time.
    /// @{
    bool IsWithin(const TVector2<T>& point, unsigned int first, unsigned int pointCount) const;
    bool IsWithin(const T& x, const T& y, unsigned int first, unsigned int pointCount) const
    {
        return IsWithin(TVector2<T>(x, y), first, pointCount);
    }
    /// @}
    /// Whether a point of the plane lies in the closed outline of all points, by the sum of the scores of
    /// `ExamineSegment` over its sides, the closing one included: inside unless the sum is 0. On the outline itself
    /// these scores decide too, so that the points of some sides are inside and those of others are not.
    ///
    /// A point outside the bounding box, inclusive and with no tolerance, is outside before any side is looked at; a
    /// stale box is used as it stands. An empty set holds nothing. Only x and y count. A point of NaN is outside.
    /// Linear time.
    /// @{
    bool IsWithin(const TVector2<T>& point) const { return IsWithin(point, 0, this->count); }
    bool IsWithin(const T& x, const T& y) const { return IsWithin(TVector2<T>(x, y), 0, this->count); }
    /// @}

    /// Adds to `crossings` what the segment between two points of the set contributes to the crossing count of a point:
    /// 0 when the segment does not cross the point's level, else 1 or -1 by its direction and the side on which it
    /// passes. A start exactly on the level counts and an end on it does not, whether the segment rises or falls. A
    /// falling segment scores 1 when it passes at the point's x or beyond, a rising one when it passes at that x or
    /// short of it; otherwise, or where the place is no number, the score is -1. Both indices must be below the count,
    /// and `crossings` must not be null.
    void ExamineSegment(unsigned int from, unsigned int to, const TVector2<T>& point, int* crossings) const;

    /// Appends to `points` where an edge of the plane meets the closed outline, in the order of the outline; a hit on a
    /// vertex may come twice, once of each side. Components beyond x and y are interpolated along the side, by its y
    /// unless its x grows by more; on a side straight down, or level towards falling x, they are not finite. Lines
    /// whose direction has an x within the common tolerance, inclusively, count as vertical.
    ///
    /// A hit is where `TLine2::IntersectWith`, at the common tolerance, crosses the line of a side with that of the
    /// edge, if it is within both by `TEdge2::IsWithin`. Parallel sides, coincident ones too, have none. An edge
    /// without length counts as the vertical line through its point, and so does a side between repeated vertices,
    /// which thus can give hits that lie on no side: remove them beforehand.
    ///
    /// Returns whether `points` holds anything at the end: it is not emptied first. It must be neither null nor this
    /// set. Each hit is added by itself and fires the list's `ElementAdded`; memory that runs out leaves the hits so
    /// far. Linear time.
    bool IntersectWith(const TEdge2<T>& edge, TList<V<T>>* points) const;

protected:
    /// Extends the box by the point, by strict comparisons, w not looked at; a plane point has a z of 0. Nothing when
    /// the keep box flag is off.
    void ElementAdded(V<T>& point) override;
    /// Extends the box by `pointCount` points in order, as the addition of each by itself would. Nothing when the keep
    /// box flag is off or there are none.
    void ElementsAdded(V<T>* points, unsigned int pointCount) override;
    /// Recalculates the box over the slots in use at this moment, in which the tail has not yet moved. Nothing when the
    /// keep box flag is off.
    void ElementRemoved(V<T>& point) override;
    /// Recalculates the box over the slots in use at this moment, in which the tail has not yet moved. Nothing when the
    /// keep box flag is off.
    void ElementsRemoved(V<T>* points, unsigned int pointCount) override;
    /// Empties the box, with its own limit. Nothing when the keep box flag is off.
    void Cleared() override;

private:
    /// Takes over what a set has besides the points, whose owner is left with an empty box.
    void TakeBox(TPointSet& other) noexcept;

    /// Copies points from an array, with a grow size, and calculates the box.
    TPointSet(const V<T>* points, unsigned int pointCount, unsigned int stepSize);

    /// Fills the slots made by construction, and the box.
    template <template <class> class W>
    void CopyPoints(const TPointSet<T, W>& other);

    /// Multiplies every point by a fixed matrix of any order, and recalculates the box.
    template <unsigned int order, class Matrix>
    TPointSet& Transform(const Matrix& matrix);
};

CORVEX_INSTANTIATE_SETS(extern, TPointSet);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_SET_POINTERS(extern, TList, TPointSet);

} // namespace Halmont::Orrin::CorvexUtilities

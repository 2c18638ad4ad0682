#pragma once

/// Polylines whose points have positions from 0 to 1 by their distance along the line.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/pointsets/TPointSet.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A point set read as an open polyline, with the normalised chord length at each point, which turns a position from 0
/// to 1 into a point of the line, and two positions into the length between them. All components count in a length, w
/// included.
///
/// The positions are those of the last `Parameterize`: a new set, be it a copy of points, has none, and a change of the
/// points leaves them as they are, which nothing detects. Points may move in between; each is then found at its old
/// position. Points beyond the parameters are not reached, and positions of points that have gone since lead to the
/// last one.
template <class T, template <class> class V>
class CORVEX_API TParameterization : public TPointSet<T, V>
{
protected:
    /// The position of each point, from 0 to 1, not decreasing. Empty before the first `Parameterize`.
    TList<T> parameters;

    /// The length of the whole line at the last `Parameterize`; 0 before the first.
    T length;

public:
    /// An empty set with an empty box, without parameters and of length 0. The arguments are those of the list, and
    /// apply to the parameters too: slots to allocate, and the least step of growth.
    explicit TParameterization(unsigned int initialCapacity = 0, unsigned int stepSize = 1000)
        : TPointSet<T, V>(initialCapacity, stepSize), parameters(initialCapacity, stepSize), length(T(0))
    {}

    /// Copies `pointCount` points from an array; the grow size is 1000, and the box is calculated. There are no
    /// parameters yet, and the length is 0. Takes part only for pointers to points, so that two numbers are always
    /// sizes.
    template <class Pointer, class = IfRealPointer<Pointer, const V<T>*>>
    TParameterization(Pointer points, unsigned int pointCount)
        : TPointSet<T, V>(points, pointCount), parameters(pointCount, 1000u), length(T(0))
    {}

    /// Copies the points in braces, or from one iterator up to another, or those of a `std::vector`, a `std::span`, a
    /// list, an array or another class with `data()` and `size()`; otherwise as the copy of an array. Ranges hold
    /// points of exactly this type. There are no parameters yet, and the length is 0.
    /// @{
    TParameterization(std::initializer_list<V<T>> points) : TParameterization(TPointSet<T, V>(points)) {}
    template <class Iterator, class = IfIterator<Iterator, V<T>>>
    TParameterization(Iterator first, Iterator last) : TParameterization(TPointSet<T, V>(first, last))
    {}
    template <class Range, class = IfRange<Range, V<T>, TPointSet<T, V>>>
    explicit TParameterization(const Range& range) : TParameterization(TPointSet<T, V>(range))
    {}
    /// @}

    /// Converts a set of the other scalar, component by component, each rounded to T; the box is calculated anew, the
    /// grow size and the keep box flag are the other's. There are no parameters yet, and the length is 0.
    template <class U, class = std::enable_if_t<!std::is_same_v<U, T>>>
    explicit TParameterization(const TPointSet<U, V>& other) : TParameterization(TPointSet<T, V>(other))
    {}

    /// Copies a set of points of any dimension, each converted to V; the box is calculated anew, the grow size and the
    /// keep box flag are the other's. There are no parameters yet, and the length is 0.
    /// @{
    TParameterization(const TPointSet<T, TVector2>& other)
        : TPointSet<T, V>(other), parameters(other.GetCount(), other.GetGrowSize()), length(T(0))
    {}
    TParameterization(const TPointSet<T, TVector3>& other)
        : TPointSet<T, V>(other), parameters(other.GetCount(), other.GetGrowSize()), length(T(0))
    {}
    TParameterization(const TPointSet<T, TVector4>& other)
        : TPointSet<T, V>(other), parameters(other.GetCount(), other.GetGrowSize()), length(T(0))
    {}
    /// @}

    /// Takes over points, box, parameters and length of another, which is left without any. No hook fires.
    TParameterization(TParameterization&& other) noexcept;

    /// A copy of the points, the box calculated anew, and of the parameters and the length as they stand.
    TParameterization(const TParameterization& other);

    /// Assigns the point set, its box as it stands, the parameters and the length, all as the source holds them, stale
    /// or not. The hooks fire as in the assignment of a point set. A set assigned to itself ends without points and
    /// parameters, as every list does, but keeps its length. Memory that runs out leaves some of the parts assigned:
    /// assign once more, or call Parameterize.
    TParameterization& operator=(const TParameterization& other);

    /// Takes over points, box, parameters and length of another, which is left without any. No hook fires, unless the
    /// two are of different classes, as in the assignment of a point set. A set moved to itself stays as it is.
    TParameterization& operator=(TParameterization&& other);

    /// Frees the parameters and the points; no hook fires.
    ~TParameterization() override;

    /// Gives each point its position: the distances from point to point added up in T, in order, and divided by their
    /// sum. The last position is 1 whatever rounding made of it, on a set of one point too. Without points there are no
    /// positions, and the length is 0.
    ///
    /// Where all points coincide the length is 0, and all positions but the first and the last are NaN. Points and box
    /// stay as they are. Memory that runs out leaves the positions as they were. Linear time.
    void Parameterize();

    /// The point at a position, linear between the two points around it; at the position of a point that point as it
    /// stands, of coinciding ones any. NaN in every component where the position is below 0 or above 1, there are fewer
    /// than two points, or the length is exactly 0, as it is before `Parameterize`. A position of NaN is not refused,
    /// and gives some point. Costs one binary search.
    V<T> Evaluate(const T& position) const;

    /// The length of the whole line at the last `Parameterize`, whatever became of the points since; 0 before the
    /// first.
    T GetLength() const { return length; }

    /// The length of the line between two positions, in either order: that of the points as they stand now, with whole
    /// segments in between and shares of those at the ends by the positions of the last `Parameterize`. 0 for equal
    /// positions, and with fewer than two points or parameters. Positions that differ must be from 0 to 1. NaN where
    /// positions of points are NaN, as those of coinciding points, and where points have been removed since and both
    /// positions lie beyond the last one left. Costs two binary searches and a pass over the segments between.
    T GetLength(T from, T to) const;

private:
    /// Two points that enclose a position, the same one twice where it is exactly at a point.
    struct Bracket
    {
        unsigned int lower = 0;
        unsigned int upper = 0;
    };

    /// The points around a position from 0 to 1, by the parameters.
    Bracket FindBracket(const T& position) const;

    /// The distance between two points as they stand.
    T Distance(unsigned int from, unsigned int to) const;

    /// The part of the segment of a bracket between two positions in it.
    T ShareOf(const Bracket& segment, T from, T to) const;
};

CORVEX_INSTANTIATE_SETS(extern, TParameterization);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_SET_POINTERS(extern, TList, TParameterization);

} // namespace Halmont::Orrin::CorvexUtilities

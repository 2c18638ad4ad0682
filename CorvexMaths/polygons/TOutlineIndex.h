#pragma once

/// Containment in a closed outline, prepared for many points.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/vectors/TVector2.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace Kernels
{
template <class T>
class ContainmentTree;
}

/// A closed outline in the x, y plane, made ready to be asked about many points: whether each lies within.
///
///     const TOutlineIndex<double> index(polygon);
///     bool isWithin = index.IsWithin(point);
///
/// Every answer is that of TPointSet::IsWithin of the set it was made from, as that was then, to the last bit: with its
/// bounding box, stale or not, its rule for points on the outline, and vertices of NaN. Later changes of the set do not
/// reach the index. Worth its making from some ten points on; for one point ask the set.
///
/// Making it costs linear time, and a sort of those vertices at which the outline turns from rising to falling or back,
/// or is level. An answer costs the logarithm of the number of vertices where the outline does not pass near the point
/// again and again: runs of sides to one side of the point count by their two ends. At worst it is linear, as where
/// coordinates are NaN or within a factor 2^20 of the largest number throughout.
///
/// An index never changes. Any number of threads may ask one at once, and copies share what was made. About 25 to 60
/// bytes for each vertex in `double`, more where the outline is jagged.
template <class T>
class CORVEX_API TOutlineIndex
{
public:
    /// The index of the outline of a point set or polygon; only x and y count. An empty set holds nothing.
    /// @{
    explicit TOutlineIndex(const TPointSet<T, TVector2>& outline);
    explicit TOutlineIndex(const TPointSet<T, TVector3>& outline);
    explicit TOutlineIndex(const TPointSet<T, TVector4>& outline);
    /// @}

    /// Shares what was made.
    TOutlineIndex(const TOutlineIndex& other);
    /// Shares what was made for another index, and leaves its own to the other copies.
    TOutlineIndex& operator=(const TOutlineIndex& other);
    /// Releases what was made if no copy shares it.
    ~TOutlineIndex();

    /// Whether a point of the plane lies in the outline: what TPointSet::IsWithin answered for it. A point of NaN is
    /// outside.
    /// @{
    [[nodiscard]] bool IsWithin(const TVector2<T>& point) const;
    [[nodiscard]] bool IsWithin(const T& x, const T& y) const { return IsWithin(TVector2<T>(x, y)); }
    /// @}

    /// The box that answers first: the bounding box of the set as it was.
    const TBox<T>& GetBoundingBox() const { return boundingBox; }

private:
    TBox<T> boundingBox;
    /// Null for an outline without vertices. Counts its owners.
    const Kernels::ContainmentTree<T>* tree;
};

CORVEX_INSTANTIATE_SCALARS(extern, class, TOutlineIndex);

} // namespace Halmont::Orrin::CorvexMaths

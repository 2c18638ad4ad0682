#pragma once

/// The search for the point of a cloud that lies nearest to an outline, as the outline grows through the cloud.

#include <CorvexMaths/polygons/internal/EdgeColumns.h>

#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The points of a cloud, each with the side of a closed outline that it lies nearest to, by TEdge2::DistanceToPoint.
///
/// A distance depends on one point and one side alone, and an insertion replaces one side by two: a point is measured
/// against these, and against all sides only if the replaced one was its nearest and neither of the two is as near.
/// Distances that do not stay below the largest `float` count as none.
template <class T>
class NearestSides
{
public:
    /// Where the outline is to grow next.
    struct Place
    {
        /// The point that lies nearest to the outline, the first on a tie, by its number among those left.
        unsigned int point;
        /// The outline's vertex that the point lies nearest to, or else the end of that side, the first on a tie; 0 if
        /// no point has a distance.
        unsigned int position;
        /// Whether it lies nearest to a vertex.
        bool isAtCorner;
    };

    /// The sides lead from each vertex of the outline to the next; the last vertex closes it. x and y of vertex i stand
    /// at i * stride, and so for the points.
    NearestSides(const T* outline, unsigned int outlineCount, const T* points, unsigned int cloudCount,
                 unsigned int stride);

    /// The next place. There must be a point left.
    Place FindNearest() const;

    /// Moves a point from the cloud into the outline, where it becomes vertex `position`, which is neither 0 nor beyond
    /// the closing one. The points and vertices after it change their numbers.
    void Insert(unsigned int point, unsigned int position);

private:
    /// Leaves a point without a nearest side.
    void Forget(unsigned int point);
    /// Takes a side as the nearest one of a point if it is nearer than that so far, or as near and earlier.
    void Offer(unsigned int point, unsigned int side, T distance);
    /// Measures a point against all sides.
    void MeasureAgainstAll(unsigned int point);
    /// Measures all points after the side `split` was replaced by that and the side `added`.
    void MeasureAfterSplit(unsigned int split, unsigned int added);

    // The sides stand in no order; the first entry is none, at position 0.
    unsigned int sideEnd;
    std::unique_ptr<EdgeValues<T>[]> sides;
    std::unique_ptr<unsigned int[]> positions; ///< The number of the vertex that a side ends at.

    // The points in their order.
    unsigned int pointCount;
    std::unique_ptr<T[]> x, y, nearest;
    std::unique_ptr<unsigned int[]> nearestSide;
};

extern template class NearestSides<float>;
extern template class NearestSides<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

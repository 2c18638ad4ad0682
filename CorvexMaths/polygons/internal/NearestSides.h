#pragma once

/// The search for the point of a cloud that lies nearest to an outline, as the outline grows through the cloud.

#include <CorvexMaths/polygons/internal/BoxTree.h>
#include <CorvexMaths/polygons/internal/EdgeColumns.h>

#include <cstdint>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A closed outline and the points of a cloud, each with the side that it lies nearest to, by TEdge2::DistanceToPoint.
///
/// A distance depends on one point and one side alone, and an insertion replaces one side by two: a point is measured
/// against these, and against other sides only if the replaced one was its nearest and neither of the two is as near.
/// Distances that do not stay below the largest `float` count as none.
///
/// Vertices and points stand along a curve that fills the plane (Hilbert, 1891), in two trees over runs of it: one of
/// the boxes around the sides that start there; one of the boxes around the points, with the greatest of their
/// distances, so that a new side passes over those that it is too far from, and with the nearest of the points.
template <class T>
class NearestSides
{
public:
    /// The sides lead from each of the first `outlineCount` vertices to the next and from the last to the first; the
    /// others are the cloud. x and y of vertex i stand at i * stride.
    NearestSides(const T* points, unsigned int stride, unsigned int outlineCount, unsigned int vertexCount);

    /// Moves the point that lies nearest to the outline, the first on a tie, into the outline: into its nearest side,
    /// the first on a tie, or next to the vertex that it lies nearest to, on the side of it that the bisector tells.
    /// There must be one left.
    void InsertNearest();

    /// Writes the numbers of the vertices in the order of the outline.
    void WriteOutline(unsigned int* order) const;

private:
    static constexpr unsigned int none = ~0u;
    static constexpr unsigned int blockSize = 8;

    void OrderAlongCurve(const T* points, unsigned int stride);
    void MeasureSide(unsigned int side);
    PlaneBox<T> MakeBox(unsigned int side) const;
    void MeasureBlock(unsigned int block);
    void Summarise(unsigned int level, std::size_t box);
    unsigned int FindNearestPoint() const;
    unsigned int FindSideToSplit(unsigned int point) const;
    EdgeValues<T> GetSide(unsigned int side) const;
    TVector2<T> GetPoint(unsigned int place) const { return {x[place], y[place]}; }

    void Offer(unsigned int point, unsigned int side, T distance);
    void MeasureAgainstOthers(unsigned int point);
    void SearchSides(unsigned int point, unsigned int level, std::size_t group);
    struct Split;
    void MeasureAfterSplit(const Split& split, unsigned int level, std::size_t group);
    void MeasureBlockAfterSplit(const Split& split, unsigned int block);

    void LabelBetween(unsigned int side, unsigned int added);
    void SpreadLabels(unsigned int side);

    unsigned int count;
    /// The columns below, in one block for each type.
    std::unique_ptr<unsigned int[]> vertexBlock;
    std::unique_ptr<T[]> valueBlock;
    /// All by the place of a vertex along the curve. A side goes by the place that it starts at.
    unsigned int* numbers;
    T *x, *y;
    unsigned int start = 0; ///< The first vertex of the outline.
    unsigned int *next, *previous;
    T *directionX, *directionY;
    std::unique_ptr<std::uint64_t[]> labels; ///< Ascending from the first side to the last.
    /// The distance of a point of the cloud, below 0 for any other, and its side.
    T* nearest;
    unsigned int* nearestSide;

    T size; ///< The greatest coordinate of those that have bounds on rounding.
    BoxTree<T> sideBoxes, pointBoxes;
    /// For each box of points the greatest distance, and the point to go first.
    std::unique_ptr<T[]> farthest;
    std::unique_ptr<unsigned int[]> first;
};

extern template class NearestSides<float>;
extern template class NearestSides<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The edges of an outline laid out column by column, so that loops over them work on many edges at once.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/primitives/TEdge.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// How many distances are computed side by side before they are compared in order.
inline constexpr unsigned int runLength = 64;

/// The columns of the values of an edge.
enum EdgeColumn : unsigned int
{
    startXColumn,
    startYColumn,
    endXColumn,
    endYColumn,
    deltaXColumn,
    deltaYColumn,
    directionXColumn,
    directionYColumn
};

template <class T>
class EdgeColumns;

/// An edge with what TEdge2 computes afresh for each test: the difference of its ends, and its direction, which is zero
/// for an edge without length. Value is a scalar, or lanes of it for as many edges.
template <class Value>
struct EdgeValues
{
    Value startX, startY, endX, endY, deltaX, deltaY, directionX, directionY;

    /// Measures one edge.
    template <class T>
    void Measure(const TEdge2<T>& edge)
    {
        startX = edge.Vertex[0].x;
        startY = edge.Vertex[0].y;
        endX = edge.Vertex[1].x;
        endY = edge.Vertex[1].y;
        MeasureBetweenEnds();
    }

    /// Finds the difference and the direction of edges whose ends are known, as TEdge2::GetDirection does.
    CORVEX_ALWAYS_INLINE void MeasureBetweenEnds()
    {
        deltaX = endX - startX;
        deltaY = endY - startY;
        Value length = deltaX * deltaX + deltaY * deltaY;
        if constexpr (std::is_floating_point_v<Value>)
            length = Numbers::SquareRoot(length);
        else
            for (unsigned int k = 0; k < sizeof(Value) / sizeof(length[0]); ++k)
                length[k] = Numbers::SquareRoot(length[k]);
        directionX = length == 0 ? deltaX : deltaX / length;
        directionY = length == 0 ? deltaY : deltaY / length;
    }

    /// Reads edge i of a table, or as many edges as there are lanes from edge i on.
    template <class T>
    CORVEX_ALWAYS_INLINE void Read(const EdgeColumns<T>& edges, unsigned int i)
    {
        edges.Read(startX, startXColumn, i);
        edges.Read(startY, startYColumn, i);
        edges.Read(endX, endXColumn, i);
        edges.Read(endY, endYColumn, i);
        edges.Read(deltaX, deltaXColumn, i);
        edges.Read(deltaY, deltaYColumn, i);
        edges.Read(directionX, directionXColumn, i);
        edges.Read(directionY, directionYColumn, i);
    }
};

/// What the tests of TEdge2 ask about a point and an edge, by the same expressions and without a branch; either may be
/// lanes of several. The products with the reversed edge, of which those tests speak, differ from `alongFromEnd` in the
/// sign alone; here the comparisons are turned round instead.
template <class EdgeValue, class Value = EdgeValue>
struct PointAndEdge
{
    Value fromStartX, fromStartY, fromEndX, fromEndY;
    /// The products of these with the difference of the edge's ends.
    Value alongFromStart, alongFromEnd;

    CORVEX_ALWAYS_INLINE PointAndEdge(const EdgeValues<EdgeValue>& edge, const Value& x, const Value& y)
        : fromStartX(x - edge.startX),
          fromStartY(y - edge.startY),
          fromEndX(x - edge.endX),
          fromEndY(y - edge.endY),
          alongFromStart(fromStartX * edge.deltaX + fromStartY * edge.deltaY),
          alongFromEnd(fromEndX * edge.deltaX + fromEndY * edge.deltaY)
    {}

    CORVEX_ALWAYS_INLINE bool IsBeforeStart() const { return alongFromStart < 0; }
    CORVEX_ALWAYS_INLINE bool IsPastEnd() const { return alongFromEnd > 0; }

    /// TEdge2::IsWithin: a bool or a mask. (Lanes go through arguments alone; returned, they would depend on the
    /// target.)
    template <class Mask>
    CORVEX_ALWAYS_INLINE void IsWithin(Mask& isWithin) const
    {
        isWithin = (alongFromStart == 0) | (alongFromEnd == 0) | ((alongFromStart > 0) & (alongFromEnd < 0));
    }

    CORVEX_ALWAYS_INLINE Value DistanceFromStart() const
    {
        return Numbers::SquareRoot(fromStartX * fromStartX + fromStartY * fromStartY);
    }
    CORVEX_ALWAYS_INLINE Value DistanceFromEnd() const
    {
        return Numbers::SquareRoot(fromEndX * fromEndX + fromEndY * fromEndY);
    }

    /// The distance from the edge's line.
    CORVEX_ALWAYS_INLINE Value DistanceFromLine(const EdgeValues<EdgeValue>& edge) const
    {
        return Numbers::Absolute(fromStartX * edge.directionY - fromStartY * edge.directionX);
    }

    /// TEdge2::DistanceToPoint, of scalars.
    CORVEX_ALWAYS_INLINE Value Distance(const EdgeValues<EdgeValue>& edge) const
    {
        const bool isBeforeStart = IsBeforeStart();
        const bool isPastEnd = IsPastEnd();
        const Value fromCornerX = isBeforeStart ? fromStartX : fromEndX;
        const Value fromCornerY = isBeforeStart ? fromStartY : fromEndY;
        const Value fromCorner = Numbers::SquareRoot(fromCornerX * fromCornerX + fromCornerY * fromCornerY);
        const Value fromLine = DistanceFromLine(edge);
        return (isBeforeStart | isPastEnd) ? fromCorner : fromLine;
    }
};

/// A table of edges with one column for each of their values, and room for more columns. A column ends with zeros, so
/// that lanes of any width can be read from any edge on.
template <class T>
class EdgeColumns
{
public:
    static constexpr unsigned int edgeColumnCount = directionYColumn + 1;

    /// Edge i is edges[i].
    template <class Edges>
    EdgeColumns(const Edges& edges, unsigned int edgeCount, unsigned int furtherColumns = 0)
        : count(edgeCount),
          height(std::size_t(edgeCount) + padding),
          block(new T[height * (edgeColumnCount + furtherColumns)])
    {
        for (unsigned int i = 0; i < edgeCount; ++i) {
            const TEdge2<T>& edge = edges[i];
            Column(startXColumn)[i] = edge.Vertex[0].x;
            Column(startYColumn)[i] = edge.Vertex[0].y;
            Column(endXColumn)[i] = edge.Vertex[1].x;
            Column(endYColumn)[i] = edge.Vertex[1].y;
        }
        for (unsigned int c = 0; c < edgeColumnCount + furtherColumns; ++c)
            std::fill_n(Column(c) + count, padding, T(0));
        ForThisProcessor([this](auto bytes) { this->template MeasureAll<bytes>(); });
    }

    unsigned int GetCount() const { return count; }

    CORVEX_ALWAYS_INLINE T* Column(unsigned int c) const { return block.get() + c * height; }

    /// Reads the entry of a column at edge i, or lanes of them from edge i on.
    template <class Value>
    CORVEX_ALWAYS_INLINE void Read(Value& value, unsigned int c, unsigned int i) const
    {
        Load(value, Column(c) + i);
    }

    /// Writes the entry of a column at edge i, or lanes of them from edge i on.
    template <class Value>
    CORVEX_ALWAYS_INLINE void Write(const Value& value, unsigned int c, unsigned int i) const
    {
        Store(Column(c) + i, value);
    }

private:
    /// Fills the columns that follow from the ends of the edges, by lanes of the given width.
    template <unsigned int Bytes>
    CORVEX_ALWAYS_INLINE void MeasureAll() const
    {
        for (unsigned int i = 0; i < count; i += Lanes<T, Bytes>::count) {
            EdgeValues<typename Lanes<T, Bytes>::Type> edge;
            Read(edge.startX, startXColumn, i);
            Read(edge.startY, startYColumn, i);
            Read(edge.endX, endXColumn, i);
            Read(edge.endY, endYColumn, i);
            edge.MeasureBetweenEnds();
            Write(edge.deltaX, deltaXColumn, i);
            Write(edge.deltaY, deltaYColumn, i);
            Write(edge.directionX, directionXColumn, i);
            Write(edge.directionY, directionYColumn, i);
        }
    }

    static constexpr std::size_t padding = widestBytes / sizeof(T);

    unsigned int count;
    std::size_t height;
    std::unique_ptr<T[]> block;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

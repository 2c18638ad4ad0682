#pragma once

/// The offset of polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/containers/internal/ExactClass.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/internal/Additions.h>
#include <CorvexMaths/pointsets/internal/KeepBoxGuard.h>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/polygons/internal/ContainmentTree.h>
#include <CorvexMaths/polygons/internal/OffsetKernels.h>
#include <CorvexMaths/polygons/internal/OutlineDistance.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
bool TPolygon<T, V>::Offset(T distance, T spacing)
{
    if (distance == T(0)) return true;
    if (this->count == 0) return false;

    bool isDone;
    {
        const Kernels::KeepBoxGuard guard(this->keepBox);
        RemoveDuplicateVertices();
        isDone = MakeRawOffset(distance);
        if (isDone) {
            TrimCrossings();
            if (spacing > T(0)) Simplify(spacing);
        }
    }
    if (isDone) this->RecalculateBoundingBox();
    return isDone;
}

template <class T, template <class> class V>
bool TPolygon<T, V>::MakeRawOffset(T distance)
{
    const bool negative = distance < T(0);
    TList<TEdge2<T>> edges(this->count, 1u);
    GetEdges(&edges);
    if (!OrientOffset(&edges, negative, &distance)) return false;

    // The edges hold all that is needed to build the raw outline, corner by corner.
    AddCorners(edges, distance, negative);
    return ReorderOffset(std::move(edges), distance);
}

template <class T, template <class> class V>
void TPolygon<T, V>::AddCorners(const TList<TEdge2<T>>& edges, const T& distance, bool negative)
{
    const unsigned int edgeCount = edges.GetCount();
    const auto edgeAfter = [&](unsigned int i) -> const TEdge2<T>& { return edges[i + 1 < edgeCount ? i + 1 : 0]; };
    if (!IsExactly(*this)) {
        this->Clear(false);
        for (unsigned int i = 0; i < edgeCount; ++i) AddOffsetPoints(edges[i], edgeAfter(i), distance, negative);
        return;
    }
    const std::unique_ptr<TVector2<T>[]> points(new TVector2<T>[3 * std::size_t(edgeCount)]);
    unsigned int pointCount = 0;
    for (unsigned int i = 0; i < edgeCount; ++i)
        pointCount += Kernels::OffsetCorner(edges[i], edgeAfter(i), distance, negative, &points[pointCount]);
    // Room first: if there is none, the vertices stay.
    if (pointCount > this->count) Kernels::MakeRoomForAdditions(*this, pointCount - this->count);
    this->Clear(false);
    AddInPlane(points.get(), pointCount);
}

template <class T, template <class> class V>
bool TPolygon<T, V>::OrientOffset(TList<TEdge2<T>>* edges, bool negative, T* distance)
{
    if (IsExactly(*this)) return OrientUnseen(edges, negative, distance);

    const unsigned int edgeCount = edges->GetCount();
    for (unsigned int attempt = 0; attempt < edgeCount; ++attempt) {
        const TVector2<T> shifted = OffsetEdge((*edges)[0], *distance).GetMid();
        const TVector2<T> shiftedBack = OffsetEdge((*edges)[0], -*distance).GetMid();
        const bool isWithin = this->IsWithin(shifted, 0, this->count);
        const bool isBackWithin = this->IsWithin(shiftedBack, 0, this->count);
        if (isWithin != isBackWithin) {
            if (isWithin != negative) *distance *= T(-1);
            return true;
        }

        // This edge tells nothing: the next one is brought to the front.
        const TVector2<T> vertex = InPlane(this->storage[0]);
        this->RemoveAt(0, true);
        this->Add(static_cast<V<T>>(vertex));
        GetEdges(edges);
    }
    return false;
}

template <class T, template <class> class V>
bool TPolygon<T, V>::OrientUnseen(TList<TEdge2<T>>* edges, bool negative, T* distance)
{
    // The scores of all sides add up to the same from whichever of them they start.
    const unsigned int edgeCount = edges->GetCount();
    std::unique_ptr<Kernels::ContainmentTree<T>> tree;
    const auto isWithin = [&](const TVector2<T>& point) {
        if (!tree) return this->IsWithin(point, 0, this->count);
        return this->GetBoundingBox().IsWithin(point, T(0)) && tree->GetScore(point.x, point.y) != 0;
    };
    bool isSettled = false;
    unsigned int turns = 0;
    for (; turns < edgeCount; ++turns) {
        // As a rule the first edge tells.
        if (turns == 1) {
            tree =
                std::make_unique<Kernels::ContainmentTree<T>>(ValuesOf<T, V>(*this), componentsOf<T, V>, this->count);
        }
        const TEdge2<T>& edge = (*edges)[turns];
        const bool isForthWithin = isWithin(OffsetEdge(edge, *distance).GetMid());
        const bool isBackWithin = isWithin(OffsetEdge(edge, -*distance).GetMid());
        if (isForthWithin == isBackWithin) continue;
        if (isForthWithin != negative) *distance *= T(-1);
        isSettled = true;
        break;
    }

    // Each vertex that was turned to the end on the way has lost what it had beyond the plane.
    for (unsigned int i = 0; i < turns; ++i) this->storage[i] = static_cast<V<T>>(InPlane(this->storage[i]));
    std::rotate(this->storage, this->storage + turns, this->storage + this->count);
    std::rotate(&edges->GetFirst(), &edges->GetFirst() + turns, &edges->GetFirst() + edgeCount);
    return isSettled;
}

template <class T, template <class> class V>
TEdge2<T> TPolygon<T, V>::OffsetEdge(const TEdge2<T>& edge, const T& distance) const
{
    return Kernels::ShiftEdge(edge, distance);
}

template <class T, template <class> class V>
void TPolygon<T, V>::AddOffsetPoints(const TEdge2<T>& first, const TEdge2<T>& second, const T& distance, bool negative)
{
    TVector2<T> points[3];
    const unsigned int pointCount = Kernels::OffsetCorner(first, second, distance, negative, points);
    for (unsigned int i = 0; i < pointCount; ++i) this->Add(static_cast<V<T>>(points[i]));
}

template <class T, template <class> class V>
bool TPolygon<T, V>::ReorderOffset(TList<TEdge2<T>> sourceEdges, T distance)
{
    // A vertex of a true offset lies at the distance from the nearest edge; one that a crossing of edges made, which
    // pass too near other parts of the outline, lies closer.
    Kernels::OutlineDistance<T> source(sourceEdges.GetStream(), sourceEdges.GetCount());
    unsigned int start = 0;
    while (start < this->count && !source.IsAt(InPlane(this->storage[start]), distance)) ++start;
    if (start == this->count) return false;

    if (IsExactly(*this)) {
        // With the keep box flag off nobody sees the vertices go and come.
        std::rotate(this->storage, this->storage + start, this->storage + this->count);
        return true;
    }
    TList<TEdge2<T>> edges(this->count, 1u);
    GetEdges(&edges);
    this->Clear(false);
    for (unsigned int i = start; i < edges.GetCount(); ++i) this->Add(static_cast<V<T>>(edges[i].Vertex[0]));
    for (unsigned int i = 0; i < start; ++i) this->Add(static_cast<V<T>>(edges[i].Vertex[0]));
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// The reordering of polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/internal/KeepBoxGuard.h>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/polygons/internal/Ascending.h>
#include <CorvexMaths/polygons/internal/NearestSides.h>

#include <algorithm>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Whether vertices equal any of a hull, exactly and in all components; what is not a number equals nothing.
template <class Vertex>
class HullMembers
{
public:
    HullMembers(const Vertex* hull, unsigned int hullCount) : members(new Vertex[hullCount])
    {
        for (unsigned int i = 0; i < hullCount; ++i)
            if (hull[i] == hull[i]) members[count++] = hull[i];
        std::sort(members.get(), members.get() + count, Ascending());
    }

    bool Has(const Vertex& vertex) const
    {
        return vertex == vertex && std::binary_search(members.get(), members.get() + count, vertex, Ascending());
    }

private:
    std::unique_ptr<Vertex[]> members;
    unsigned int count = 0;
};

/// Moves all vertices but the first `outlineCount`, which are an outline, into that, always the one nearest to it next;
/// returns them in the new order.
template <class T, class Vertex>
std::unique_ptr<Vertex[]> InsertNearestFirst(const Vertex* vertices, unsigned int outlineCount, unsigned int count)
{
    const std::unique_ptr<unsigned int[]> order(new unsigned int[count]);
    {
        Kernels::NearestSides<T> search(&vertices[0].x, sizeof(Vertex) / sizeof(T), outlineCount, count);
        for (unsigned int i = outlineCount; i < count; ++i) search.InsertNearest();
        search.WriteOutline(order.get());
    }
    std::unique_ptr<Vertex[]> ordered(new Vertex[count]);
    for (unsigned int i = 0; i < count; ++i) ordered[i] = vertices[order[i]];
    return ordered;
}

} // namespace

template <class T, template <class> class V>
void TPolygon<T, V>::ReorderCEC()
{
    if (this->count == 0) return;

    const Kernels::KeepBoxGuard guard(this->keepBox);
    RemoveDuplicateVertices();

    // The hull, and after it what it leaves out.
    TPolygon outline(*this);
    outline.keepBox = false;
    outline.MakeConvexHull();
    outline.sortedList.Clear(true);
    const unsigned int hullCount = outline.count;
    {
        const HullMembers<V<T>> hull(outline.storage, hullCount);
        for (unsigned int i = 0; i < this->count; ++i)
            if (!hull.Has(this->storage[i])) outline.Add(this->storage[i]);
    }
    const unsigned int vertexCount = outline.count;
    if (vertexCount > hullCount) {
        const auto ordered = InsertNearestFirst<T>(outline.storage, hullCount, vertexCount);
        std::copy_n(ordered.get(), vertexCount, outline.storage);
    }

    // Room first: if there is none, the vertices stay. There are more where some are no numbers.
    if (vertexCount > this->count) this->Grow(vertexCount - this->count);
    this->Clear(false);
    this->AddRange(outline);
    outline.Clear(true);
    MakeSimplePolygon();
}

} // namespace Halmont::Orrin::CorvexMaths

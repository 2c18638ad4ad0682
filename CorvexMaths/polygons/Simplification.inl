#pragma once

/// The thinning of polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/containers/internal/ExactClass.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/polygons/internal/ThinningSearch.h>

#include <algorithm>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
void TPolygon<T, V>::Simplify(T spacing)
{
    if (this->count == 0) return;

    const T spacingSquared = spacing * spacing;
    const auto isTooNear = [spacingSquared](const V<T>& a, const V<T>& b) {
        return InPlane(a).DiffVectLenSquared(InPlane(b)) < spacingSquared;
    };
    V<T>* const kept = new V<T>[this->count];
    unsigned int keptCount = 1;
    kept[0] = this->storage[0];
    for (unsigned int i = 1; i < this->count; ++i)
        if (!isTooNear(this->storage[i], kept[keptCount - 1])) kept[keptCount++] = this->storage[i];

    // The outline is closed: its end is measured against its start.
    while (keptCount > 1 && isTooNear(kept[keptCount - 1], kept[0])) --keptCount;

    delete[] this->storage;
    this->storage = kept;
    this->capacity = this->count;
    this->count = keptCount;
}

template <class T, template <class> class V>
void TPolygon<T, V>::SimplifyDPM(T tolerance)
{
    if (this->count == 0) return;

    const bool isClosed = this->storage[0] == this->storage[this->count - 1];
    RemoveDuplicateVertices();
    if (this->count <= 3) return;

    const unsigned int vertexCount = this->count;
    const std::unique_ptr<bool[]> keep(new bool[vertexCount]);
    for (unsigned int i = 0; i < vertexCount; ++i) keep[i] = true;
    SimplifySection(0, vertexCount - 1, keep.get(), tolerance);

    unsigned int end = vertexCount;
    if (IsExactly(*this)) {
        // The hook of this very class recalculates the box and does nothing else, so that the last removal, that of the
        // first vertex to go, decides; the others go at once. Each leaves the last vertex, which stays, in a slot.
        const V<T> last = this->storage[vertexCount - 1];
        end = static_cast<unsigned int>(std::find(keep.get(), keep.get() + vertexCount, false) - keep.get());
        if (end < vertexCount) ++end;
        this->count = end;
        for (unsigned int i = end; i < vertexCount; ++i)
            if (keep[i]) this->storage[this->count++] = this->storage[i];
        std::fill(this->storage + this->count, this->storage + vertexCount, last);
    }
    // Downwards, so that the flags stay in step with the vertices still to be visited.
    for (unsigned int i = end; i-- > 0;)
        if (!keep[i]) this->RemoveAt(i, true);

    if (isClosed) {
        const V<T> first = this->storage[0];
        this->Add(first);
    }
}

template <class T, template <class> class V>
void TPolygon<T, V>::SimplifySection(unsigned int first, unsigned int last, bool* keep, T tolerance) const
{
    CORVEX_PRECONDITION("TPolygon::SimplifySection", first <= last && last < this->count, first, last, this->count);
    CORVEX_PRECONDITION("TPolygon::SimplifySection", keep != nullptr, keep);
    Kernels::ThinRun(&this->storage[0].x, componentsOf<T, V>, first, last, keep, tolerance);
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// The removal of duplicates and crossings from polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/containers/internal/ExactClass.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/internal/Additions.h>
#include <CorvexMaths/pointsets/internal/KeepBoxGuard.h>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/polygons/internal/CrossingSearch.h>
#include <CorvexMaths/polygons/internal/DuplicateSearch.h>
#include <CorvexMaths/polygons/internal/SidePairSearch.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// One pass of MakeSimplePolygon over a closed list. Returns whether any vertices were exchanged.
template <class T, class Vertex>
bool ExchangeCrossingVertices(Vertex* vertices, unsigned int vertexCount, Kernels::SidePairSearch<T>* search)
{
    bool isChanged = false;
    for (unsigned int k = 1; k < vertexCount - 2; ++k) {
        // The side that ends at vertex k, against each after the next.
        unsigned int other = k + 1;
        while ((other = search->FindNext(k - 1, other)) < vertexCount - 1) {
            std::swap(vertices[k], vertices[other]);
            search->Update(k);
            search->Update(other);
            isChanged = true;
            ++other;
        }
    }
    return isChanged;
}

} // namespace

template <class T, template <class> class V>
void TPolygon<T, V>::RemoveDuplicateVertices()
{
    if (this->count <= 1) return;

    const Kernels::KeepBoxGuard guard(this->keepBox);
    const unsigned int vertexCount = this->count;
    const std::unique_ptr<unsigned int[]> original(new unsigned int[vertexCount]);
    const unsigned int repeatCount =
        Kernels::FindDuplicates(&this->storage[0].x, componentsOf<T, V>, vertexCount, original.get());
    if (repeatCount != 0) RemoveRepeats(original.get(), repeatCount);
}

template <class T, template <class> class V>
void TPolygon<T, V>::RemoveRepeats(const unsigned int* original, unsigned int repeatCount)
{
    // The order of removal: the repeats of each vertex in turn, ascending, by a counting sort.
    const unsigned int vertexCount = this->count;
    const std::unique_ptr<unsigned int[]> order(new unsigned int[repeatCount]);
    {
        const std::unique_ptr<unsigned int[]> places(new unsigned int[vertexCount]());
        for (unsigned int j = 0; j < vertexCount; ++j)
            if (original[j] != Kernels::noVertex) ++places[original[j]];
        unsigned int place = 0;
        for (unsigned int i = 0; i < vertexCount; ++i) place += std::exchange(places[i], place);
        for (unsigned int j = 0; j < vertexCount; ++j)
            if (original[j] != Kernels::noVertex) order[places[original[j]]++] = j;
    }
    if (IsExactly(*this)) {
        RemoveUnseen(order.get(), repeatCount);
        return;
    }

    // How many of the vertices before one are gone: a binary indexed tree (P. M. Fenwick, "A new data structure for
    // cumulative frequency tables", 1994).
    const std::unique_ptr<unsigned int[]> removed(new unsigned int[std::size_t(vertexCount) + 1]());
    for (unsigned int r = 0; r < repeatCount; ++r) {
        const unsigned int j = order[r];
        unsigned int removedBefore = 0;
        for (unsigned int k = j; k != 0; k &= k - 1) removedBefore += removed[k];
        this->RemoveAt(j - removedBefore, true);
        for (std::size_t k = std::size_t(j) + 1; k <= vertexCount; k += k & (~k + 1)) ++removed[k];
    }
}

template <class T, template <class> class V>
void TPolygon<T, V>::RemoveUnseen(const unsigned int* order, unsigned int removalCount)
{
    // 1. Each removal in turn leaves a copy of the last vertex, as the list then is, in the slot that falls free.
    const unsigned int vertexCount = this->count;
    const std::unique_ptr<bool[]> isRemoved(new bool[vertexCount]());
    const std::unique_ptr<unsigned int[]> copied(new unsigned int[removalCount]);
    unsigned int last = vertexCount - 1;
    for (unsigned int r = 0; r < removalCount; ++r) {
        while (isRemoved[last]) --last;
        copied[r] = last;
        isRemoved[order[r]] = true;
    }

    // 2. What stays closes up.
    this->count = 0;
    for (unsigned int i = 0; i < vertexCount; ++i)
        if (!isRemoved[i]) this->storage[this->count++] = this->storage[i];

    // 3. The slots behind, first to last: what is copied to one never stands before it, so that it is still there.
    for (unsigned int r = removalCount; r-- > 0;) this->storage[vertexCount - 1 - r] = this->storage[copied[r]];
}

template <class T, template <class> class V>
void TPolygon<T, V>::MakeSimplePolygon()
{
    if (this->count == 0) return;

    const Kernels::KeepBoxGuard guard(this->keepBox);
    RemoveDuplicateVertices();
    const V<T> first = this->storage[0];
    this->Add(first);

    try {
        if (this->count > 3) {
            Kernels::SidePairSearch<T> search(&this->storage[0].x, componentsOf<T, V>, this->count);
            while (ExchangeCrossingVertices(this->storage, this->count, &search)) {
            }
        }
    } catch (...) {
        // Without memory for the search the closing vertex goes all the same.
        this->RemoveAt(this->count - 1, true);
        throw;
    }

    this->RemoveAt(this->count - 1, true);
}

template <class T, template <class> class V>
void TPolygon<T, V>::TrimCrossings()
{
    if (this->count == 0) return;

    // Each step of the walk adds a vertex, and there are at most as many as sides.
    const unsigned int edgeCount = this->count;
    const std::unique_ptr<TVector2<T>[]> walk(new TVector2<T>[std::size_t(edgeCount) + 1]);
    walk[0] = InPlane(this->storage[0]);
    unsigned int walkCount = 1;
    {
        const Kernels::CrossingSearch<T> search(&this->storage[0].x, componentsOf<T, V>, edgeCount);
        for (unsigned int i = 0; i < edgeCount; ++walkCount) {
            unsigned int crossed;
            if (search.FindFirst(i, &crossed, &walk[walkCount]))
                i = crossed;
            else
                walk[walkCount] = search.GetEnd(i++);
        }
    }
    // Room first: if there is none, the vertices stay.
    if (walkCount > this->count) Kernels::MakeRoomForAdditions(*this, walkCount - this->count);
    this->Clear(false);
    AddInPlane(walk.get(), walkCount);

    // The walk ends on a copy of its start. The limit is a true double in both forms.
    constexpr double sameVertexSquared = 1e-8;
    const T gapSquared = this->GetLast().DiffVectLenSquared(this->GetFirst());
    if (static_cast<double>(gapSquared) < sameVertexSquared) this->RemoveAt(this->count - 1, true);
}

} // namespace Halmont::Orrin::CorvexMaths

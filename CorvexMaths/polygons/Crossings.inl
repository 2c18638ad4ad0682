// The removal of duplicates and crossings from polygons; included by TPolygon.cpp alone.

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
void TPolygon<T, V>::RemoveDuplicateVertices()
{
    if (this->count <= 1) return;

    const bool savedKeepBox = this->keepBox;
    this->keepBox = false;
    const unsigned int vertexCount = this->count;
    const std::unique_ptr<unsigned int[]> original(new unsigned int[vertexCount]);
    if (Kernels::FindDuplicates(&this->storage[0].x, componentsOf<T, V>, vertexCount, original.get()) != 0)
        RemoveRepeats(original.get());
    this->keepBox = savedKeepBox;
}

template <class T, template <class> class V>
void TPolygon<T, V>::RemoveRepeats(const unsigned int* original)
{
    // The repeats of each vertex as a chain, ascending.
    const unsigned int vertexCount = this->count;
    const std::unique_ptr<unsigned int[]> firstRepeat(new unsigned int[vertexCount]);
    const std::unique_ptr<unsigned int[]> nextRepeat(new unsigned int[vertexCount]);
    for (unsigned int i = 0; i < vertexCount; ++i) firstRepeat[i] = Kernels::noVertex;
    for (unsigned int j = vertexCount; j-- > 0;) {
        if (original[j] == Kernels::noVertex) continue;
        nextRepeat[j] = firstRepeat[original[j]];
        firstRepeat[original[j]] = j;
    }

    // How many of the vertices before one are gone: a binary indexed tree (P. M. Fenwick, "A new data structure for
    // cumulative frequency tables", 1994).
    const std::unique_ptr<unsigned int[]> removed(new unsigned int[std::size_t(vertexCount) + 1]());
    for (unsigned int i = 0; i < vertexCount; ++i) {
        for (unsigned int j = firstRepeat[i]; j != Kernels::noVertex; j = nextRepeat[j]) {
            unsigned int removedBefore = 0;
            for (unsigned int k = j; k != 0; k &= k - 1) removedBefore += removed[k];
            this->RemoveAt(j - removedBefore, true);
            for (std::size_t k = std::size_t(j) + 1; k <= vertexCount; k += k & (~k + 1)) ++removed[k];
        }
    }
}

template <class T, template <class> class V>
void TPolygon<T, V>::MakeSimplePolygon()
{
    if (this->count == 0) return;

    const bool savedKeepBox = this->keepBox;
    this->keepBox = false;
    RemoveDuplicateVertices();
    const V<T> first = this->storage[0];
    this->Add(first);

    while (ExchangeCrossingVertices()) {
    }

    this->RemoveAt(this->count - 1, true);
    this->keepBox = savedKeepBox;
}

template <class T, template <class> class V>
bool TPolygon<T, V>::ExchangeCrossingVertices()
{
    const auto vertex = [this](unsigned int i) { return InPlane(this->storage[i]); };
    bool isChanged = false;
    for (unsigned int k = 1; k < this->count - 2; ++k) {
        for (unsigned int j = k + 2; j < this->count; ++j) {
            const TEdge2<T> a(vertex(k - 1), vertex(k));
            const TEdge2<T> b(vertex(j - 1), vertex(j));
            if (a.Vertex[0] == b.Vertex[0] || a.Vertex[0] == b.Vertex[1] || a.Vertex[1] == b.Vertex[0] ||
                a.Vertex[1] == b.Vertex[1])
                continue;
            if (!a.Intersects(b, Numbers::commonTolerance<T>, Numbers::commonTolerance<T>)) continue;

            const V<T> exchanged = this->storage[k];
            this->storage[k] = this->storage[j - 1];
            this->storage[j - 1] = exchanged;
            isChanged = true;
        }
    }
    return isChanged;
}

template <class T, template <class> class V>
void TPolygon<T, V>::TrimCrossings()
{
    if (this->count == 0) return;

    TList<TEdge2<T>> edges(this->count, 1u);
    GetEdges(&edges);
    const unsigned int edgeCount = edges.GetCount();
    const Kernels::CrossingSearch<T> search(edges.GetStream(), edgeCount);
    this->Clear(false);
    this->Add(static_cast<V<T>>(edges[0].Vertex[0]));
    for (unsigned int i = 0; i < edgeCount;) {
        unsigned int crossed;
        TVector2<T> crossing;
        if (search.FindFirst(i, &crossed, &crossing)) {
            this->Add(static_cast<V<T>>(crossing));
            i = crossed;
        } else {
            this->Add(static_cast<V<T>>(edges[i].Vertex[1]));
            ++i;
        }
    }

    // The walk ends on a copy of its start. The limit is a true double in both forms.
    constexpr double sameVertexSquared = 1e-8;
    const T gapSquared = this->GetLast().DiffVectLenSquared(this->GetFirst());
    if (static_cast<double>(gapSquared) < sameVertexSquared) this->RemoveAt(this->count - 1, true);
}

} // namespace Halmont::Orrin::CorvexMaths

// The offset of polygons; included by TPolygon.cpp alone.

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
bool TPolygon<T, V>::Offset(T distance, T spacing)
{
    if (distance == T(0)) return true;
    if (this->count == 0) return false;

    const bool negative = distance < T(0);
    const bool savedKeepBox = this->keepBox;
    this->keepBox = false;
    RemoveDuplicateVertices();

    TList<TEdge2<T>> edges(this->count, 1u);
    GetEdges(&edges);
    bool isDone = false;
    if (OrientOffset(&edges, negative, &distance)) {
        // The edges hold all that is needed to build the raw outline, corner by corner.
        this->Clear(false);
        const unsigned int edgeCount = edges.GetCount();
        for (unsigned int i = 1; i < edgeCount; ++i) AddOffsetPoints(edges[i - 1], edges[i], distance, negative);
        AddOffsetPoints(edges[edgeCount - 1], edges[0], distance, negative);
        isDone = ReorderOffset(edges, distance);
    }
    if (isDone) {
        TrimCrossings();
        if (spacing > T(0)) Simplify(spacing);
    }

    this->keepBox = savedKeepBox;
    if (isDone) this->RecalculateBoundingBox();
    return isDone;
}

template <class T, template <class> class V>
bool TPolygon<T, V>::OrientOffset(TList<TEdge2<T>>* edges, bool negative, T* distance)
{
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
    TList<TEdge2<T>> edges(this->count, 1u);
    GetEdges(&edges);

    // A vertex of a true offset lies at the distance from the nearest edge; one that a crossing of edges made, which
    // pass too near other parts of the outline, lies closer. The limit is a true double in both forms.
    constexpr double distanceTolerance = 1e-6;
    const Kernels::EdgeColumns<T> source(sourceEdges.GetStream(), sourceEdges.GetCount());
    const unsigned int vertexCount = this->count;
    unsigned int start = 0;
    for (; start < vertexCount; ++start) {
        const T nearest = Kernels::DistanceFromOutline(source, InPlane(this->storage[start]));
        const T deviation = Numbers::Absolute(nearest - Numbers::Absolute(distance));
        if (static_cast<double>(deviation) < distanceTolerance) break;
    }
    if (start == vertexCount) return false;

    this->Clear(false);
    for (unsigned int i = start; i < vertexCount; ++i) this->Add(static_cast<V<T>>(edges[i].Vertex[0]));
    for (unsigned int i = 0; i < start; ++i) this->Add(static_cast<V<T>>(edges[i].Vertex[0]));
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths

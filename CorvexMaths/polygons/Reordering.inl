// The reordering of polygons; included by TPolygon.cpp alone.

#include <CorvexMaths/polygons/internal/NearestSides.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Whether a point p nearest to the corner b of an outline belongs between b and the next vertex c, rather than between
/// the vertex a before and b: it lies strictly to the right of the bisector b - a + b - c (of unit vectors), seen from
/// b.
template <class T>
bool BelongsAfterCorner(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c, const TVector2<T>& p)
{
    TVector2<T> u = b - a;
    TVector2<T> v = b - c;
    u.Normalise();
    v.Normalise();
    return (u + v).SignedArea(p - b) < T(0);
}

/// Moves all points of the rest into the closed outline, always the one nearest to it next.
template <class T, template <class> class V>
void InsertNearestFirst(TPolygon<T, V>* outline, TList<V<T>>* rest)
{
    if (rest->GetCount() == 0) return;

    Kernels::NearestSides<T> search(&outline->GetFirst().x, outline->GetCount(), &rest->GetFirst().x, rest->GetCount(),
                                    componentsOf<T, V>);
    while (rest->GetCount() != 0) {
        const auto place = search.FindNearest();
        const V<T>& point = (*rest)[place.point];

        // The start of the first side is the closing vertex as well, and has its place there.
        const unsigned int closing = outline->GetCount() - 1;
        unsigned int position = place.position == 0 ? closing : place.position;
        if (place.isAtCorner) {
            const unsigned int next = position == closing ? 1 : position + 1;
            const auto vertex = [outline](unsigned int i) { return InPlane((*outline)[i]); };
            if (BelongsAfterCorner(vertex(position - 1), vertex(position), vertex(next), InPlane(point)))
                position = next;
        }

        outline->Insert(point, position);
        rest->RemoveAt(place.point, true);
        search.Insert(place.point, position);
    }
}

} // namespace

template <class T, template <class> class V>
void TPolygon<T, V>::ReorderCEC()
{
    if (this->count == 0) return;

    const bool savedKeepBox = this->keepBox;
    this->keepBox = false;
    RemoveDuplicateVertices();

    TPolygon outline(*this);
    outline.keepBox = false;
    outline.MakeConvexHull();
    TList<V<T>> rest(this->count - outline.count, 1u);
    for (unsigned int i = 0; i < this->count; ++i)
        if (outline.Search(this->storage[i]) < 0) rest.Add(this->storage[i]);

    // The outline is closed while it grows.
    outline.Add(outline.storage[0]);
    InsertNearestFirst(&outline, &rest);
    outline.RemoveAt(outline.count - 1, true);

    this->Clear(false);
    this->AddRange(outline);
    MakeSimplePolygon();
    this->keepBox = savedKeepBox;
}

} // namespace Halmont::Orrin::CorvexMaths

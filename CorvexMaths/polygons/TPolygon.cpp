#include <CorvexMaths/polygons/TPolygon.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/containers/internal/ExactClass.h>
#include <CorvexMaths/pointsets/internal/Additions.h>
#include <CorvexMaths/pointsets/internal/SetHooks.h>
#include <CorvexMaths/polygons/InPlane.inl>

#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Twice the signed area of the triangle of two vertices with the origin.
template <class Vertex>
auto ShoelaceTerm(const Vertex& p, const Vertex& q)
{
    return p.x * q.y - q.x * p.y;
}

} // namespace

template <class T, template <class> class V>
TPolygon<T, V>::TPolygon(TPolygon&& other) noexcept
    : TPointSet<T, V>(std::move(other)), sortedList(std::move(other.sortedList))
{}

template <class T, template <class> class V>
TPolygon<T, V>& TPolygon<T, V>::operator=(TPolygon&& other)
{
    if (this == &other) return *this;
    TPointSet<T, V>::operator=(static_cast<TPointSet<T, V>&&>(other)); // the rest of it follows
    sortedList = std::move(other.sortedList);
    return *this;
}

template <class T, template <class> class V>
TPolygon<T, V>& TPolygon<T, V>::operator=(const TPolygon& other)
{
    TPointSet<T, V>::operator=(other);
    sortedList = other.sortedList;
    return *this;
}

template <class T, template <class> class V>
TPolygon<T, V>::~TPolygon() = default;

template <class T, template <class> class V>
T TPolygon<T, V>::GetSignedSimpleArea(unsigned int first, unsigned int last) const
{
    CORVEX_PRECONDITION("TPolygon::GetSignedSimpleArea", first < this->count && last < this->count, first, last,
                        this->count);
    T sum = T(0);
    if (first < last) {
        for (unsigned int i = first; i < last; ++i) sum += GetSignedTriangleAreaWithOrigin(i, i + 1);
    } else {
        // The run passes over the end of the list.
        for (unsigned int i = first; i + 1 < this->count; ++i) sum += GetSignedTriangleAreaWithOrigin(i, i + 1);
        sum += GetSignedTriangleAreaWithOrigin(this->count - 1, 0);
        for (unsigned int i = 0; i < last; ++i) sum += GetSignedTriangleAreaWithOrigin(i, i + 1);
    }
    sum += GetSignedTriangleAreaWithOrigin(last, first);
    return sum * T(0.5);
}

template <class T, template <class> class V>
T TPolygon<T, V>::GetSignedTriangleAreaWithOrigin(unsigned int a, unsigned int b) const
{
    CORVEX_PRECONDITION("TPolygon::GetSignedTriangleAreaWithOrigin", a < this->count && b < this->count, a, b,
                        this->count);
    return ShoelaceTerm(this->storage[a], this->storage[b]);
}

template <class T, template <class> class V>
unsigned int TPolygon<T, V>::GetBottomLeft() const
{
    unsigned int best = 0;
    for (unsigned int i = 1; i < this->count; ++i) {
        const V<T>& lowest = this->storage[best];
        const V<T>& vertex = this->storage[i];
        if (lowest.y > vertex.y || (lowest.y == vertex.y && lowest.x > vertex.x)) best = i;
    }
    return best;
}

template <class T, template <class> class V>
void TPolygon<T, V>::GetEdges(TList<TEdge2<T>>* edges) const
{
    CORVEX_PRECONDITION("TPolygon::GetEdges", edges != nullptr, edges);
    edges->Clear(false);
    if (this->count == 0) return;
    if (IsExactly(*edges)) Kernels::MakeRoomForAdditions(*edges, this->count);
    for (unsigned int i = 0; i + 1 < this->count; ++i)
        edges->Add(TEdge2<T>(InPlane(this->storage[i]), InPlane(this->storage[i + 1])));
    edges->Add(TEdge2<T>(InPlane(this->storage[this->count - 1]), InPlane(this->storage[0])));
}

template <class T, template <class> class V>
void TPolygon<T, V>::AddInPlane(const TVector2<T>* points, unsigned int n)
{
    if (!IsExactly(*this)) {
        for (unsigned int i = 0; i < n; ++i) this->Add(static_cast<V<T>>(points[i]));
        return;
    }
    Kernels::MakeRoomForAdditions(*this, n);
    V<T>* const added = this->storage + this->count;
    for (unsigned int i = 0; i < n; ++i) added[i] = static_cast<V<T>>(points[i]);
    this->count += n;
    // Extends the box as each by itself would.
    this->ElementsAdded(added, n);
}

template <class T, template <class> class V>
void TPolygon<T, V>::MakeCCW()
{
    if (GetSignedSimpleArea() < T(0)) this->Reverse();
}

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/polygons/Boundary.inl>
#include <CorvexMaths/polygons/ConvexHull.inl>
#include <CorvexMaths/polygons/Crossings.inl>
#include <CorvexMaths/polygons/Offset.inl>
#include <CorvexMaths/polygons/Reordering.inl>
#include <CorvexMaths/polygons/Simplification.inl>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
bool Kernels::HasHooksOfSets(const TPointSet<T, V>& set)
{
    return IsExactly(set) || HasHooksOf<TPolygon<T, V>>(set);
}

CORVEX_INSTANTIATE_SETS(, TPolygon);
CORVEX_INSTANTIATE_SET_HOOKS(float);
CORVEX_INSTANTIATE_SET_HOOKS(double);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_SET_POINTERS(, TList, TPolygon);
CORVEX_INSTANTIATE_SET_POINTERS(, TMap, TPolygon);

} // namespace Halmont::Orrin::CorvexUtilities

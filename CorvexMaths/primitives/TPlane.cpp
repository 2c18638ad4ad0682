#include <CorvexMaths/primitives/TPlane.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TTriangle.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The signed distance of an edge's end, with one strictly below the tolerance taken as in the plane.
template <class T>
T SnappedDistance(const TPlane<T>& plane, const TVector3<T>& end, T tolerance)
{
    const T distance = plane.SignedDistanceToPoint(end);
    return Numbers::Absolute(distance) < tolerance ? T(0) : distance;
}

/// Where the edge from a to b, whose ends are at the signed distances da and db, crosses the plane.
template <class T>
bool CrossEdge(const TVector3<T>& a, T da, const TVector3<T>& b, T db, TVector3<T>* where)
{
    // The product, not the signs: one that underflows to zero is a crossing.
    if (da * db > T(0)) return false;
    const T fromA = Numbers::Absolute(da);
    const T fromB = Numbers::Absolute(db);
    if (fromA == T(0) && fromB == T(0)) return false;
    *where = a + (b - a) * (fromA / (fromA + fromB));
    return true;
}

} // namespace

template <class T>
bool TPlane<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* where, T tolerance) const
{
    CORVEX_PRECONDITION("TPlane::IntersectWith", where != nullptr, where);
    const T k = normal % line.direction;
    if (-tolerance < k && k < tolerance) return false;
    const T t = ((point - line.origin) % normal) / k;
    *where = line.Evaluate(t);
    return true;
}

template <class T>
bool TPlane<T>::IntersectWith(const TEdge3<T>& edge, TVector3<T>* where, T tolerance) const
{
    CORVEX_PRECONDITION("TPlane::IntersectWith", where != nullptr, where);
    const TVector3<T>& a = edge.Vertex[0];
    const TVector3<T>& b = edge.Vertex[1];
    return CrossEdge(a, SnappedDistance(*this, a, tolerance), b, SnappedDistance(*this, b, tolerance), where);
}

template <class T>
bool TPlane<T>::IntersectWith(const TPlane& other, TLine3<T>* line, T tolerance) const
{
    CORVEX_PRECONDITION("TPlane::IntersectWith", line != nullptr, line);
    const T cosine = other.normal % normal;
    if (Numbers::IsNear(cosine, T(1), tolerance) || Numbers::IsNear(cosine, T(-1), tolerance)) return false;

    line->direction = normal * other.normal;
    line->direction.Normalise();

    // The three vectors stand in the columns. Where they have no inverse the origin stays as it was.
    TMatrix3x3<T> matrix(normal, other.normal, line->direction);
    if (matrix.Invert()) line->origin = matrix * TVector3<T>(normal % point, other.normal % other.point, T(0));
    return true;
}

template <class T>
bool TPlane<T>::IntersectWith(const TTriangle3<T>& tri, TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1,
                              unsigned int* edge2, T tolerance) const
{
    return IntersectWith(tri.corners[0], tri.corners[1], tri.corners[2], p1, p2, edge1, edge2, tolerance);
}

template <class T>
bool TPlane<T>::IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                              TVector3<T>* p1, TVector3<T>* p2, unsigned int* edge1, unsigned int* edge2,
                              T tolerance) const
{
    CORVEX_PRECONDITION("TPlane::IntersectWith", p1 != nullptr && p2 != nullptr, p1, p2);
    CORVEX_PRECONDITION("TPlane::IntersectWith", edge1 != nullptr && edge2 != nullptr, edge1, edge2);

    // Each corner ends two edges; its distance is the same from both.
    const TVector3<T> corners[3] = {corner0, corner1, corner2};
    T distances[3];
    for (unsigned int i = 0; i < 3; ++i) distances[i] = SnappedDistance(*this, corners[i], tolerance);

    TVector3<T>* const points[2] = {p1, p2};
    unsigned int* const edges[2] = {edge1, edge2};
    unsigned int hits = 0;
    for (unsigned int i = 0; i < 3 && hits < 2; ++i) {
        const unsigned int next = (i + 1) % 3;
        if (!CrossEdge(corners[i], distances[i], corners[next], distances[next], points[hits])) continue;
        *edges[hits] = i;
        ++hits;
    }
    return hits == 2;
}

template <class T>
bool TPlane<T>::Intersects(const TTriangle3<T>& tri) const
{
    return Intersects(tri.corners[0], tri.corners[1], tri.corners[2]);
}

template <class T>
bool TPlane<T>::Intersects(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2) const
{
    const T d0 = SignedDistanceToPoint(corner0);
    const T d1 = SignedDistanceToPoint(corner1);
    const T d2 = SignedDistanceToPoint(corner2);
    const bool noneBelow = d0 >= T(0) && d1 >= T(0) && d2 >= T(0);
    const bool noneAbove = d0 <= T(0) && d1 <= T(0) && d2 <= T(0);
    return !noneBelow && !noneAbove;
}

// The forms of the line and of the edge that take a plane.

template <class T>
bool TLine3<T>::IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const
{
    return plane.IntersectWith(*this, point, tolerance);
}

template <class T>
bool TEdge3<T>::IntersectWith(const TPlane<T>& plane, TVector3<T>* point, T tolerance) const
{
    return plane.IntersectWith(*this, point, tolerance);
}

CORVEX_INSTANTIATE_SCALARS(, struct, TPlane);

#define CORVEX_INSTANTIATE_WITH_PLANE(T)                                                                               \
    template bool TLine3<T>::IntersectWith(const TPlane<T>&, TVector3<T>*, T) const;                                   \
    template bool TEdge3<T>::IntersectWith(const TPlane<T>&, TVector3<T>*, T) const;
CORVEX_INSTANTIATE_WITH_PLANE(float)
CORVEX_INSTANTIATE_WITH_PLANE(double)

} // namespace Halmont::Orrin::CorvexMaths

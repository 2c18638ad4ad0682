#pragma once

/// How often an outline winds, and the convex boundary of an open chain; included by TPolygon.cpp alone.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/polygons/InPlane.inl>
#include <CorvexMaths/polygons/TPolygon.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The unit vector in the plane from one vertex to another; zero where they coincide.
template <class Vertex>
auto PlaneDirection(const Vertex& from, const Vertex& to)
{
    auto direction = InPlane(to) - InPlane(from);
    direction.Normalise();
    return direction;
}

/// The angle by which an outline turns from one side into the next, given their directions: positive to the left, half
/// a turn for a reversal, and 0 where the cosine is that of a straight corner within the common tolerance.
template <class T>
T TurningAngle(const TVector2<T>& before, const TVector2<T>& after)
{
    const T cosine = after % before;
    if (Numbers::IsNear(T(1), cosine, Numbers::commonTolerance<T>)) return T(0);
    const T angle = Numbers::ArcCosine(Numbers::ClampCosine(cosine));
    return before.SignedArea(after) < T(0) ? -angle : angle;
}

} // namespace

template <class T, template <class> class V>
T TPolygon<T, V>::GetWindingAngle() const
{
    T total = T(0);
    if (this->count < 2) return total;

    // The side that leaves a corner is the one that enters the next.
    TVector2<T> before = PlaneDirection(this->storage[0], this->storage[1]);
    for (unsigned int i = 0; i < this->count; ++i) {
        const unsigned int corner = (i + 1) % this->count;
        const TVector2<T> after = PlaneDirection(this->storage[corner], this->storage[(corner + 1) % this->count]);
        total += TurningAngle(before, after);
        before = after;
    }
    return total;
}

template <class T, template <class> class V>
TPolygon<T, V> TPolygon<T, V>::GetOpenConvexBoundary(const TVector3<T>& normal) const
{
    TPolygon boundary(this->count, 1u);
    if (this->count == 0) return boundary;

    boundary.Add(this->storage[0]);
    TVector3<T> current = static_cast<TVector3<T>>(this->storage[0]);
    for (unsigned int i = 1; i < this->count; ++i) {
        const TVector3<T> candidate = static_cast<TVector3<T>>(this->storage[i]);
        TVector3<T> side = (candidate - current) * normal;
        side.Normalise();

        // One later vertex on the negative side is enough.
        unsigned int j = i + 1;
        while (j < this->count && !((static_cast<TVector3<T>>(this->storage[j]) - current) % side < T(0))) ++j;
        if (j < this->count) continue;
        boundary.Add(this->storage[i]);
        current = candidate;
    }
    return boundary;
}

} // namespace Halmont::Orrin::CorvexMaths

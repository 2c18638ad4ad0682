#include <CorvexMaths/primitives/TEdge.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Where the foot of a point falls along a segment.
enum class Foot
{
    BeforeStart,
    BesideEdge,
    PastEnd
};

/// Places the foot of a point along the segment from start to end by the signs of two dot products with the segment's
/// direction, of whatever length; a product of NaN counts as beside.
template <class V>
Foot FindFoot(const V& start, const V& end, const V& direction, const V& point)
{
    constexpr auto zero = decltype(direction % direction)(0);
    if ((point - start) % direction < zero) return Foot::BeforeStart;
    if ((point - end) % -direction < zero) return Foot::PastEnd;
    return Foot::BesideEdge;
}

/// The distance of a point whose foot is not beside the segment, and the flags that go with it.
template <class Edge, class V>
auto DistanceToEnds(const Edge& edge, Foot foot, const V& point, bool* within, bool* beforeStart)
{
    const bool isBefore = foot == Foot::BeforeStart;
    if (within != nullptr) *within = false;
    if (beforeStart != nullptr) *beforeStart = isBefore;
    return point.DiffVectLen(edge.Vertex[isBefore ? 0 : 1]);
}

/// Whether both ends of a segment lie strictly beyond a triangle's range, on the same side of one axis.
template <class T>
bool IsBeyond(const TEdge3<T>& edge, const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c)
{
    const TVector3<T>& start = edge.Vertex[0];
    const TVector3<T>& end = edge.Vertex[1];
    for (unsigned int axis = 0; axis < 3; ++axis) {
        T lowest = a[axis];
        if (lowest > b[axis]) lowest = b[axis];
        if (lowest > c[axis]) lowest = c[axis];
        if (lowest > start[axis] && lowest > end[axis]) return true;

        T highest = a[axis];
        if (b[axis] > highest) highest = b[axis];
        if (c[axis] > highest) highest = c[axis];
        if (start[axis] > highest && end[axis] > highest) return true;
    }
    return false;
}

/// The weights of three corners that add up to a point, by pivoted decomposition of the matrix of the corners. They
/// mean nothing if that is singular.
template <class T>
void SolveWeights(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, const TVector3<T>& point,
                  T* weights)
{
    const TMatrix3x3<T> corners(a, b, c);
    TMatrix3x3<T> factors;
    int pivots[3];
    T parity;
    static_cast<void>(corners.LUD(&factors, pivots, &parity));
    TMatrix3x3<T>::BackSub(factors, pivots, static_cast<const T*>(point), weights);
}

/// Whether exactly one of three weights is near a value, inclusively.
template <class T>
bool IsOneNear(const T* weights, T value, T margin)
{
    int count = 0;
    for (unsigned int i = 0; i < 3; ++i) count += Numbers::IsNear(weights[i], value, margin) ? 1 : 0;
    return count == 1;
}

} // namespace

// The segment in the plane.

template <class T>
TEdge2<T> TEdge2<T>::operator*(const TMatrix2x2<T>& matrix) const
{
    return TEdge2<T>(Vertex[0] * matrix, Vertex[1] * matrix);
}

template <class T>
TEdge2<T>& TEdge2<T>::operator*=(const TMatrix2x2<T>& matrix)
{
    return *this = TEdge2<T>(matrix * Vertex[0], matrix * Vertex[1]);
}

template <class T>
bool TEdge2<T>::IsWithin(const TVector2<T>& point) const
{
    const TVector2<T> direction = Vertex[1] - Vertex[0];
    const T s = (point - Vertex[0]) % direction;
    const T e = (point - Vertex[1]) % -direction;
    return s == T(0) || e == T(0) || (s > T(0) && e > T(0));
}

template <class T>
bool TEdge2<T>::IsWithinCollinear(const TVector2<T>& point, T tolerance) const
{
    const bool useY = Vertex[0].x == Vertex[1].x || tolerance >= Numbers::Absolute(Vertex[0].x - Vertex[1].x);
    const T a = useY ? Vertex[0].y : Vertex[0].x;
    const T b = useY ? Vertex[1].y : Vertex[1].x;
    const T p = useY ? point.y : point.x;
    return (p >= a - tolerance && b + tolerance >= p) || (p >= b - tolerance && a + tolerance >= p);
}

template <class T>
T TEdge2<T>::DistanceToPoint(const TVector2<T>& point, bool* within, bool* beforeStart) const
{
    const Foot foot = FindFoot(Vertex[0], Vertex[1], Vertex[1] - Vertex[0], point);
    if (foot != Foot::BesideEdge) return DistanceToEnds(*this, foot, point, within, beforeStart);
    if (within != nullptr) *within = IsWithin(point);
    return GetLine().DistanceToPoint(point);
}

template <class T>
bool TEdge2<T>::Intersects(const TEdge2<T>& other, [[maybe_unused]] T ignoredTolerance, T crossTolerance) const
{
    // 1. On which side of each segment's line the ends of the other lie.
    const TVector2<T> along = Vertex[1] - Vertex[0];
    const TVector2<T> alongOther = other.Vertex[1] - other.Vertex[0];
    const T c1 = along.SignedArea(other.Vertex[0] - Vertex[0]);
    const T c2 = along.SignedArea(other.Vertex[1] - Vertex[0]);
    const T c3 = alongOther.SignedArea(Vertex[0] - other.Vertex[0]);
    const T c4 = alongOther.SignedArea(Vertex[1] - other.Vertex[0]);

    // 2. An end on the other's line touches when it is in range. Both ends of one segment in range of the other are no
    //    crossing: that is containment.
    const auto touches = [crossTolerance](T cross, const TEdge2<T>& edge, const TVector2<T>& end) {
        return Numbers::IsZero(cross, crossTolerance) && edge.IsWithinCollinear(end, T(0));
    };
    if (touches(c1, *this, other.Vertex[0]) != touches(c2, *this, other.Vertex[1])) return true;
    if (touches(c3, other, Vertex[0]) != touches(c4, other, Vertex[1])) return true;

    // 3. A proper crossing: each separates the ends of the other. The signs are compared, zero with the negative ones.
    return (c2 > T(0)) != (c1 > T(0)) && (c4 > T(0)) != (c3 > T(0));
}

template <class T>
bool TEdge2<T>::IntersectWith(const TEdge2<T>& other, TVector2<T>* point, bool* within, T tolerance) const
{
    CORVEX_PRECONDITION("TEdge2::IntersectWith", point != nullptr, point);
    CORVEX_PRECONDITION(
        "TEdge2::IntersectWith",
        point != &Vertex[0] && point != &Vertex[1] && point != &other.Vertex[0] && point != &other.Vertex[1], point);
    if (!GetLine().IntersectWith(other.GetLine(), point, tolerance)) return false;
    if (within != nullptr) *within = IsWithin(*point) && other.IsWithin(*point);
    return true;
}

// The segment in space.

template <class T>
TEdge3<T> TEdge3<T>::operator*(const TMatrix3x3<T>& matrix) const
{
    return TEdge3<T>(Vertex[0] * matrix, Vertex[1] * matrix);
}

template <class T>
TEdge3<T>& TEdge3<T>::operator*=(const TMatrix3x3<T>& matrix)
{
    return *this = *this * matrix;
}

template <class T>
T TEdge3<T>::DistanceToPoint(const TVector3<T>& point, bool* within, bool* beforeStart) const
{
    const Foot foot = FindFoot(Vertex[0], Vertex[1], GetDirection(), point);
    if (foot != Foot::BesideEdge) return DistanceToEnds(*this, foot, point, within, beforeStart);
    if (within != nullptr) *within = true;
    // Equal ends fit no line; the line without a direction is at distance 0 from every point.
    TLine3<T> line;
    static_cast<void>(line.Fit(Vertex[0], Vertex[1]));
    return line.DistanceToPoint(point, Numbers::commonTolerance<T>);
}

template <class T>
TVector3<T> TEdge3<T>::GetClosestPoint(const TVector3<T>& point) const
{
    const T length = (Vertex[1] - Vertex[0]).GetLength();
    const TVector3<T> direction = GetDirection();
    const T s = (point - Vertex[0]) % direction;
    if (s > length) return Vertex[1];
    if (s < T(0)) return Vertex[0];
    return Vertex[0] + direction * s;
}

template <class T>
int TEdge3<T>::IntersectWith(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, TVector3<T>* point,
                             T tolerance) const
{
    CORVEX_PRECONDITION("TEdge3::IntersectWith", point != nullptr && point != &a && point != &b && point != &c, point);
    constexpr int inside = 0, none = 1, inPlane = 2, onSide = 3, atCorner = 4;
    if (IsBeyond(*this, a, b, c)) return none;

    // The segment's line meets the plane n . x = n . a at the parameter t. The argument is what a zero is compared
    // with, the common tolerance the margin.
    const TVector3<T> n = (b - a) * (c - a);
    const TVector3<T> d = Vertex[1] - Vertex[0];
    const T denominator = n % d;
    const T numerator = n % a - n % Vertex[0];
    constexpr T margin = Numbers::commonTolerance<T>;
    if (Numbers::IsNear(denominator, tolerance, margin))
        return Numbers::IsNear(numerator, tolerance, margin) ? inPlane : none;
    const T t = numerator / denominator;
    const TVector3<T> crossing = Vertex[0] + d * t;
    *point = crossing;

    // Which weights of the corners make up the crossing. Comparisons that NaN passes.
    T weights[3];
    SolveWeights(a, b, c, crossing, weights);
    const T u = weights[0], v = weights[1], w = weights[2];
    if (u < T(0) || u > T(1) || v < T(0) || v > T(1) || w < T(0)) return none;

    // On a side one weight vanishes; at a corner two do and the third is 1, for which the argument is the margin.
    if (IsOneNear(weights, tolerance, margin)) return onSide;
    if (IsOneNear(weights, T(1), tolerance)) return atCorner;
    return inside;
}

CORVEX_INSTANTIATE_SCALARS(, struct, TEdge2);
CORVEX_INSTANTIATE_SCALARS(, struct, TEdge3);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_EDGE_LISTS(, float);
CORVEX_INSTANTIATE_EDGE_LISTS(, double);

} // namespace Halmont::Orrin::CorvexUtilities

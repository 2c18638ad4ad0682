#include <CorvexMaths/primitives/TCircle.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/primitives/BoundingCircle.inl>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/internal/PlanePoint.h>
#include <CorvexMaths/primitives/internal/Quadratic.h>

#include <cmath>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
bool TCircle2<T>::Fit(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    const ThreePointCircle<T, T> circle(a.x, a.y, b.x, b.y, c.x, c.y);
    if (circle.determinant == T(0)) return false;
    const TVector2<T> found(circle.x, circle.y);
    radius = found.DiffVectLen(a);
    centre = found;
    return true;
}

template <class T>
bool TCircle2<T>::IntersectWith(const TLine2<T>& line, TVector2<T>* p1, TVector2<T>* p2) const
{
    CORVEX_PRECONDITION("TCircle2::IntersectWith", p1 != nullptr && p2 != nullptr, p1, p2);
    CORVEX_PRECONDITION("TCircle2::IntersectWith", p1 != &line.origin && p1 != &line.direction, p1);

    // |o + d t - centre|^2 = radius^2 is a t^2 + b t + c = 0.
    const TVector2<T> m = line.origin - centre;
    const T a = line.direction % line.direction;
    const T b = T(2) * (line.direction % m);
    const T c = m % m - radius * radius;
    T roots[2];
    if (!Kernels::SolveQuadratic(a, b, c, roots)) return false;
    *p1 = line.Evaluate(roots[0]);
    *p2 = line.Evaluate(roots[1]);
    return true;
}

template <class T>
bool TCircle2<T>::IntersectWith(const TEdge2<T>& edge, TVector2<T>* p1, TVector2<T>* p2, bool* within1,
                                bool* within2) const
{
    CORVEX_PRECONDITION("TCircle2::IntersectWith", p1 != &edge.Vertex[0] && p1 != &edge.Vertex[1], p1);
    CORVEX_PRECONDITION("TCircle2::IntersectWith", p2 != &edge.Vertex[0] && p2 != &edge.Vertex[1], p2);
    if (!IntersectWith(edge.GetLine(), p1, p2)) return false;
    if (within1 != nullptr) *within1 = edge.IsWithin(*p1);
    if (within2 != nullptr) *within2 = edge.IsWithin(*p2);
    return true;
}

template <class T>
bool TLine2<T>::IntersectWith(const TCircle2<T>& circle, TVector2<T>* p1, TVector2<T>* p2) const
{
    return circle.IntersectWith(*this, p1, p2);
}

template <class T>
bool TEdge2<T>::IntersectWith(const TCircle2<T>& circle, TVector2<T>* first, TVector2<T>* second, bool* firstWithin,
                              bool* secondWithin) const
{
    return circle.IntersectWith(*this, first, second, firstWithin, secondWithin);
}

template <class T>
bool TCircle3<T>::Fit(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c, T tolerance)
{
    // 1. The points about their centroid, in the axes of their plane.
    const TVector3<T> middle = (a + b + c) / T(3);
    const TVector3<T> fromMiddle[3] = {a - middle, b - middle, c - middle};
    normal = (a - b) * (c - b);
    if (normal.GetLengthSquared() == T(0)) return false;
    normal.Normalise();
    TVector3<T> e1, e2;
    normal.OrthonormalXY(&e1, &e2);
    const auto [x1, y1, s1] = Kernels::PlanePoint<T>(fromMiddle[0], e1, e2);
    const auto [x2, y2, s2] = Kernels::PlanePoint<T>(fromMiddle[1], e1, e2);
    const auto [x3, y3, s3] = Kernels::PlanePoint<T>(fromMiddle[2], e1, e2);

    // 2. The circle is d (x^2 + y^2) - e x + f y - g = 0, with the minors of the determinant equation of the points.
    const T d = (x3 - x2) * y1 + (y2 - y3) * x1 + (y3 * x2 - y2 * x3);
    if (std::isnan(d) || Numbers::IsZero(d, tolerance)) return false;
    const T e = (y2 - y3) * s1 + (s3 - s2) * y1 + (s2 * y3 - s3 * y2);
    const T f = (x2 - x3) * s1 + (s3 - s2) * x1 + (s2 * x3 - s3 * x2);
    const T g = (s3 * y2 - s2 * y3) * x1 + (y3 * x2 - y2 * x3) * s1 + (s2 * x3 - s3 * x2) * y1;

    // 3. Centre and radius.
    const T u = e / d * T(0.5);
    const T v = f / d * T(-0.5);
    centre = middle + e1 * u + e2 * v;
    radius = Numbers::SquareRoot(T(4) * d * g + f * f + e * e) / Numbers::Absolute(d) * T(0.5);
    return true;
}

template <class T>
bool TCircle3<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* point) const
{
    CORVEX_PRECONDITION("TCircle3::IntersectWith", point != nullptr && point != &centre, point);
    TVector3<T> n = normal;
    n.Normalise();
    const T cosine = n % line.direction;
    if (-Numbers::commonTolerance<T> < cosine && cosine < Numbers::commonTolerance<T>) return false;
    *point = line.Evaluate(((centre - line.origin) % n) / cosine);
    return radius * radius >= point->DiffVectLenSquared(centre);
}

CORVEX_INSTANTIATE_SCALARS(, struct, TCircle2);
CORVEX_INSTANTIATE_SCALARS(, struct, TCircle3);
#define CORVEX_INSTANTIATE_WITH_CIRCLE(T)                                                                              \
    template bool TLine2<T>::IntersectWith(const TCircle2<T>&, TVector2<T>*, TVector2<T>*) const;                      \
    template bool TEdge2<T>::IntersectWith(const TCircle2<T>&, TVector2<T>*, TVector2<T>*, bool*, bool*) const;
CORVEX_INSTANTIATE_WITH_CIRCLE(float)
CORVEX_INSTANTIATE_WITH_CIRCLE(double)

} // namespace Halmont::Orrin::CorvexMaths

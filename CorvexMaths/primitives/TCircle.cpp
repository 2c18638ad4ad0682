#include <CorvexMaths/primitives/TCircle.h>

#include <CorvexMaths/Lanes.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/LeastSquares.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>

#include <cmath>
#include <limits>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The circle through three points a, b, c, by Cramer's rule on the bisectors of two sides. A value is a scalar, or a
/// register of scalars of T of as many circles side by side.
template <class T, class Value>
struct ThreePointCircle
{
    /// 0 where there is no circle.
    Value determinant;
    /// The centre.
    Value x, y;

    CORVEX_ALWAYS_INLINE ThreePointCircle(Value ax, Value ay, Value bx, Value by, Value cx, Value cy)
        : determinant(T(2) * (ax * (by - cy) + bx * (cy - ay) + cx * (ay - by)))
    {
        const Value sa = ax * ax + ay * ay;
        const Value sb = bx * bx + by * by;
        const Value sc = cx * cx + cy * cy;
        x = (sa * (by - cy) + sb * (cy - ay) + sc * (ay - by)) / determinant;
        y = (sb * (ax - cx) + sa * (cx - bx) + sc * (bx - ax)) / determinant;
    }
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/primitives/BoundingCircle.inl>

#include <CorvexMaths/primitives/CircleFit.inl>

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
    // |o + d t - centre|^2 = radius^2 is a t^2 + b t + c = 0.
    const TVector2<T> m = line.origin - centre;
    const T a = line.direction % line.direction;
    const T b = T(2) * (line.direction % m);
    const T c = m % m - radius * radius;
    const T discriminant = b * b - T(4) * a * c;
    const T inverse = T(1) / (T(2) * a);

    T t1 = -b * inverse;
    T t2 = t1;
    if (discriminant < T(0)) {
        // Complex roots, unless their imaginary part is too small to be represented.
        if (Numbers::SquareRoot(Numbers::Absolute(discriminant)) * inverse != T(0)) return false;
    } else {
        const T root = Numbers::SquareRoot(discriminant);
        t1 = (root - b) * inverse;
        t2 = (-b - root) * inverse;
    }
    *p1 = line.Evaluate(t1);
    *p2 = line.Evaluate(t2);
    return true;
}

template <class T>
bool TCircle2<T>::IntersectWith(const TEdge2<T>& edge, TVector2<T>* p1, TVector2<T>* p2, bool* within1,
                                bool* within2) const
{
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
bool TCircle3<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* point) const
{
    TVector3<T> n = normal;
    n.Normalise();
    const T cosine = n % line.direction;
    if (-Numbers::commonTolerance<T> < cosine && cosine < Numbers::commonTolerance<T>) return false;
    *point = line.Evaluate(((centre - line.origin) % n) / cosine);
    return radius * radius >= point->DiffVectLenSquared(centre);
}

template struct TCircle2<float>;
template struct TCircle2<double>;
template struct TCircle3<float>;
template struct TCircle3<double>;
template bool TLine2<float>::IntersectWith(const TCircle2<float>&, TVector2<float>*, TVector2<float>*) const;
template bool TLine2<double>::IntersectWith(const TCircle2<double>&, TVector2<double>*, TVector2<double>*) const;
template bool TEdge2<float>::IntersectWith(const TCircle2<float>&, TVector2<float>*, TVector2<float>*, bool*,
                                           bool*) const;
template bool TEdge2<double>::IntersectWith(const TCircle2<double>&, TVector2<double>*, TVector2<double>*, bool*,
                                            bool*) const;

} // namespace Halmont::Orrin::CorvexMaths

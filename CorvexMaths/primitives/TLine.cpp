#include <CorvexMaths/primitives/TLine.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/internal/SolvePair.h>
#include <CorvexMaths/primitives/TBox.h>

#include <cmath>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Sets a line of either dimension through two points, unless they are exactly equal.
template <class Line, class V>
bool FitThrough(Line* line, const V& a, const V& b)
{
    if (a == b) return false;
    *line = Line(a, b - a);
    return true;
}

/// Solves -m1 x + y = c1, -m2 x + y = c2 through the matrix class, for slopes whose difference is not finite.
template <class T>
bool SolveNonFinite(T m1, T c1, T m2, T c2, TVector2<T>* point)
{
    const TMatrix2x2<T> system(-m1, T(1), -m2, T(1));
    const T intercepts[2] = {c1, c2};
    TMatrix2x2<T> factors;
    int pivots[2];
    T parity;
    if (!system.LUD(&factors, pivots, &parity)) return false;
    T solution[2];
    TMatrix2x2<T>::BackSub(factors, pivots, intercepts, solution);
    *point = TVector2<T>(solution[0], solution[1]);
    return true;
}

/// The test of Möller and Trumbore, "Fast, minimum storage ray/triangle intersection" (1997). With the edges e1, e2 of
/// the triangle from corner0, the line's origin o and direction d, Cramer's rule on
///   o + d t = corner0 + e1 u + e2 v
/// gives t, u and v over the determinant e1 . (d x e2). `rejects` tells which determinants are no hit.
template <class T, class Rejects>
bool MeetTriangle(const TLine3<T>& line, const TVector3<T>& corner0, const TVector3<T>& corner1,
                  const TVector3<T>& corner2, TVector3<T>* point, T* distance, T tolerance, Rejects rejects)
{
    const TVector3<T> e1 = corner1 - corner0;
    const TVector3<T> e2 = corner2 - corner0;
    const TVector3<T> p = line.direction * e2;
    const T determinant = e1 % p;
    if (rejects(determinant)) return false;

    const T inverse = T(1) / determinant;
    const TVector3<T> s = line.origin - corner0;
    const TVector3<T> q = s * e1;
    const T u = (s % p) * inverse;
    const T v = (line.direction % q) * inverse;
    if (u < -tolerance || u > T(1) + tolerance || v < -tolerance || u + v > T(1) + tolerance) return false;

    // Rebuilt from the weights, the point lies in the triangle's plane whatever the line's rounding.
    *point = corner0 * (T(1) - u - v) + corner1 * u + corner2 * v;
    if (distance != nullptr) *distance = (e2 % q) * inverse;
    return true;
}

} // namespace

template <class T>
bool TLine2<T>::Fit(const TVector2<T>& a, const TVector2<T>& b)
{
    return FitThrough(this, a, b);
}

template <class T>
bool TLine2<T>::IntersectWith(const TLine2<T>& other, TVector2<T>* point, T tolerance) const
{
    CORVEX_PRECONDITION("TLine2::IntersectWith", point != nullptr, point);

    // 1. A vertical line has no slope; the other one, if it has, is evaluated there.
    const bool isVertical = Numbers::IsZero(direction.x, tolerance);
    const bool otherIsVertical = Numbers::IsZero(other.direction.x, tolerance);
    if (isVertical && otherIsVertical) return false;
    if (otherIsVertical) {
        *point = TVector2<T>(other.origin.x, EvaluateCart(other.origin.x));
        return true;
    }
    if (isVertical) {
        *point = TVector2<T>(origin.x, other.EvaluateCart(origin.x));
        return true;
    }

    // 2. Slopes and intercepts. The determinant of the system is the difference of the slopes: near-parallel lines do
    //    not cross.
    const T slope = GetGrad();
    const T otherSlope = other.GetGrad();
    const T intercept = GetIntercept(slope);
    const T otherIntercept = other.GetIntercept(otherSlope);
    const T determinant = otherSlope - slope; // -m1 * 1 - 1 * -m2
    if (Numbers::IsZero(determinant, Numbers::commonTolerance<T>)) return false;

    // 3. Solve -slope x + y = intercept for both. A finite difference means that both slopes are finite.
    if (!std::isfinite(determinant)) return SolveNonFinite(slope, intercept, otherSlope, otherIntercept, point);
    const Kernels::PairRow<T> row = {-slope, intercept, Kernels::PairMerit(slope)};
    const Kernels::PairRow<T> otherRow = {-otherSlope, otherIntercept, Kernels::PairMerit(otherSlope)};
    Kernels::SolvePair<T>(row, otherRow, point->x, point->y);
    return true;
}

template <class T>
bool TLine3<T>::Fit(const TVector3<T>& a, const TVector3<T>& b)
{
    return FitThrough(this, a, b);
}

template <class T>
T TLine3<T>::DistanceToPoint(const TVector3<T>& p, T tolerance) const
{
    const TVector3<T> a = p - origin;
    TVector3<T> n = (a * direction) * direction;
    if (Numbers::IsZero(n.x, tolerance) && Numbers::IsZero(n.y, tolerance) && Numbers::IsZero(n.z, tolerance))
        return T(0);
    n.Normalise();
    return Numbers::Absolute(a % n);
}

template <class T>
bool TLine3<T>::ClosestPoints(const TLine3<T>& other, TVector3<T>* onThis, TVector3<T>* onOther, T tolerance) const
{
    CORVEX_PRECONDITION("TLine3::ClosestPoints", onThis != nullptr && onOther != nullptr, onThis, onOther);
    CORVEX_PRECONDITION("TLine3::ClosestPoints", onThis != &other.origin && onThis != &other.direction, onThis);
    const TVector3<T> w = origin - other.origin;
    const T a = other.direction % direction;
    const T b = direction % w;
    const T c = other.direction % w;

    // The squared sine of the angle between the two.
    const T d = T(1) - a * a;
    const bool areParallel = Numbers::IsZero(d, tolerance);
    const T s = areParallel ? T(0) : (c * a - b) / d;
    const T t = areParallel ? c : (c - b * a) / d;
    *onThis = Evaluate(s);
    *onOther = other.Evaluate(t);
    return true;
}

// The three forms of the triangle test differ in the determinants they reject; NaN passes each.

template <class T>
bool TLine3<T>::IntersectWith(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                              TVector3<T>* point, T* distance, T tolerance) const
{
    CORVEX_PRECONDITION("TLine3::IntersectWith", point != nullptr, point);
    const auto isParallel = [](T determinant) {
        return determinant > -Numbers::commonTolerance<T> && determinant < Numbers::commonTolerance<T>;
    };
    return MeetTriangle(*this, corner0, corner1, corner2, point, distance, tolerance, isParallel);
}

template <class T>
bool TLine3<T>::IntersectWithBFC(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                                 TVector3<T>* point, T* distance, T tolerance) const
{
    CORVEX_PRECONDITION("TLine3::IntersectWithBFC", point != nullptr, point);
    const auto isParallelOrBack = [](T determinant) { return determinant < Numbers::commonTolerance<T>; };
    return MeetTriangle(*this, corner0, corner1, corner2, point, distance, tolerance, isParallelOrBack);
}

template <class T>
bool TLine3<T>::IntersectWithFFC(const TVector3<T>& corner0, const TVector3<T>& corner1, const TVector3<T>& corner2,
                                 TVector3<T>* point, T* distance, T tolerance) const
{
    CORVEX_PRECONDITION("TLine3::IntersectWithFFC", point != nullptr, point);
    const auto isParallelOrFront = [](T determinant) { return determinant > -Numbers::commonTolerance<T>; };
    return MeetTriangle(*this, corner0, corner1, corner2, point, distance, tolerance, isParallelOrFront);
}

template <class T>
bool TLine3<T>::IntersectWith(const TBox<T>& box, TVector3<T>* p1, TVector3<T>* p2, T tolerance) const
{
    return box.IntersectWith(*this, p1, p2, tolerance);
}

CORVEX_INSTANTIATE_SCALARS(, struct, TLine2);
CORVEX_INSTANTIATE_SCALARS(, struct, TLine3);

} // namespace Halmont::Orrin::CorvexMaths

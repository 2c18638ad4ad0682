#include <CorvexMaths/splines/TBSpline.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/splines/Basis.inl>
#include <CorvexMaths/splines/Knots.inl>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
TBSpline<T, V>::TBSpline(unsigned int splineOrder, KnotType knotType, unsigned int initialCapacity,
                         unsigned int stepSize)
    : TPointSet<T, V>(initialCapacity, stepSize),
      knotCount(0),
      coefficientCount(0),
      knots(stepSize + splineOrder + 2, stepSize),
      coefficients(stepSize + splineOrder + 1, stepSize),
      type(knotType),
      order(splineOrder)
{
    CORVEX_PRECONDITION("TBSpline::TBSpline", splineOrder >= 1, splineOrder);
}

template <class T, template <class> class V>
TBSpline<T, V>::TBSpline(TPointSet<T, V>& points, unsigned int splineOrder, KnotType knotType)
    : TPointSet<T, V>(points),
      knotCount(0),
      coefficientCount(0),
      knots(points.GetCount() + splineOrder + 2, points.GetGrowSize()),
      coefficients(points.GetCount() + splineOrder + 1, points.GetGrowSize()),
      type(knotType),
      order(splineOrder)
{
    CORVEX_PRECONDITION("TBSpline::TBSpline", splineOrder >= 1, splineOrder);
    AssignPersistentMembers();
}

template <class T, template <class> class V>
TBSpline<T, V>::TBSpline(const TBSpline& other)
    : TPointSet<T, V>(other),
      knotCount(other.knotCount),
      coefficientCount(other.coefficientCount),
      knots(other.knots),
      coefficients(other.coefficients),
      type(other.type),
      order(other.order)
{}

template <class T, template <class> class V>
TBSpline<T, V>& TBSpline<T, V>::operator=(const TBSpline& other)
{
    TPointSet<T, V>::operator=(other);
    knotCount = other.knotCount;
    coefficientCount = other.coefficientCount;
    knots = other.knots;
    coefficients = other.coefficients;
    type = other.type;
    order = other.order;
    return *this;
}

template <class T, template <class> class V>
TBSpline<T, V>::~TBSpline() = default;

template <class T, template <class> class V>
void TBSpline<T, V>::SetOrder(unsigned int splineOrder)
{
    CORVEX_PRECONDITION("TBSpline::SetOrder", splineOrder >= 1, splineOrder);
    order = splineOrder;
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::SetType(KnotType knotType)
{
    type = knotType;
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::ElementAdded(V<T>& point)
{
    TPointSet<T, V>::ElementAdded(point);
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::ElementsAdded(V<T>* points, unsigned int pointCount)
{
    TPointSet<T, V>::ElementsAdded(points, pointCount);
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::ElementRemoved(V<T>& point)
{
    TPointSet<T, V>::ElementRemoved(point);
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::ElementsRemoved(V<T>* points, unsigned int pointCount)
{
    TPointSet<T, V>::ElementsRemoved(points, pointCount);
    AssignPersistentMembers();
}

template <class T, template <class> class V>
void TBSpline<T, V>::AssignPersistentMembers()
{
    knots.Clear(false);
    coefficients.Clear(false);
    knotCount = order + this->count;
    coefficientCount = knotCount - 1;
    T* coefficient = MakeCount(coefficients, coefficientCount);
    for (unsigned int i = 0; i < coefficientCount; ++i) coefficient[i] = T(0);
    if (type == Uniform)
        FillUniformKnots(MakeCount(knots, knotCount), knotCount);
    else if (type == Clamped)
        FillClampedKnots(MakeCount(knots, knotCount), knotCount, order, this->count);
}

template <class T, template <class> class V>
T TBSpline<T, V>::MapToKnots(T u) const
{
    T upper = T(0);
    T x = u;
    if (type == Uniform) {
        upper = knots[this->count];
        x = (knots[this->count] - knots[order]) * u + knots[order];
    } else if (type == Clamped) {
        upper = knots[knotCount - 1];
        x = (upper - knots[0]) * u + knots[0];
    }
    return x >= upper ? upper - Numbers::commonTolerance<T> : x;
}

template <class T, template <class> class V>
void TBSpline<T, V>::CalculateCoefficients(T u)
{
    CalculateCoefficients(u, order);
}

template <class T, template <class> class V>
void TBSpline<T, V>::CalculateCoefficients(T u, unsigned int levels)
{
    FillBasis<T, V>(knots.GetStream(), coefficients.GetStream(), coefficientCount, *this, MapToKnots(u), levels);
}

template <class T, template <class> class V>
V<T> TBSpline<T, V>::Evaluate(T u)
{
    CORVEX_PRECONDITION("TBSpline::Evaluate", this->count >= 1, this->count);
    CORVEX_PRECONDITION("TBSpline::Evaluate", knots.GetCount() == order + this->count, knots.GetCount(), order,
                        this->count, type);
    T* basis = coefficients.GetStream();
    const Support support = FillBasis<T, V>(knots.GetStream(), basis, coefficientCount, *this, MapToKnots(u), order);
    return WeighPoints<T, V>(*this, basis, support);
}

template <class T, template <class> class V>
void TBSpline<T, V>::Evaluate(TPointSet<T, V>* out, T step, bool byLength)
{
    CORVEX_PRECONDITION("TBSpline::Evaluate", out != nullptr && out != this, out, this);
    CORVEX_PRECONDITION("TBSpline::Evaluate", !(step < T(0)), step);
    T increment = step;
    if (byLength) {
        increment = step / GetLength(T(0), T(1), static_cast<T>(0.01f));
        if (increment > T(1)) increment = T(1);
    }
    out->Clear(false);
    if (increment == T(0)) return;
    T u = T(0);
    do {
        out->Add(Evaluate(u));
        u = u + increment;
    } while (T(1) > u);
    out->Add(Evaluate(T(1)));
}

template <class T, template <class> class V>
void TBSpline<T, V>::Wrap()
{
    if (order >= this->count) return;
    for (unsigned int i = 0; i < order; ++i) this->Add(this->storage[i]);
}

template <class T, template <class> class V>
T TBSpline<T, V>::GetLength(T start, T end, T step)
{
    CORVEX_PRECONDITION("TBSpline::GetLength", step > T(0), step);
    T total = T(0);
    T b = start + step;
    if (end >= b) {
        // The end of one chord is the start of the next.
        V<T> from = Evaluate(start);
        do {
            const V<T> to = Evaluate(b);
            total = total + from.DiffVectLen(to);
            from = to;
            b = b + step;
        } while (end >= b);
    }
    // Rounding may have put this beside the last point.
    const T last = b - step;
    if (last == end) return total;
    const V<T> from = Evaluate(last);
    return total + from.DiffVectLen(Evaluate(end));
}

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/splines/Fitting.inl>

namespace Halmont::Orrin::CorvexMaths
{

template class TBSpline<float, TVector2>;
template class TBSpline<float, TVector3>;
template class TBSpline<float, TVector4>;
template class TBSpline<double, TVector2>;
template class TBSpline<double, TVector3>;
template class TBSpline<double, TVector4>;

} // namespace Halmont::Orrin::CorvexMaths

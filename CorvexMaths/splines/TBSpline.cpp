#include <CorvexMaths/splines/TBSpline.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/pointsets/internal/Additions.h>
#include <CorvexMaths/pointsets/internal/SetHooks.h>
#include <CorvexMaths/splines/Basis.inl>
#include <CorvexMaths/splines/Knots.inl>

#include <new>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Calls visit(u) for u of 0 and on in steps as long as it is below 1, and then for 1.
template <class T, class Visit>
void ForParameters(T increment, Visit visit)
{
    T u = T(0);
    do {
        visit(u);
        u = u + increment;
    } while (T(1) > u);
    visit(T(1));
}

} // namespace

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
TBSpline<T, V>::TBSpline(const TPointSet<T, V>& points, unsigned int splineOrder, KnotType knotType)
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
TBSpline<T, V>::TBSpline(TBSpline&& other) noexcept : TPointSet<T, V>(std::move(other))
{
    TakeKnots(other);
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
    // The count comes last: where memory runs out before the knots match the rest, it tells that there are none.
    const unsigned int newCount = other.knotCount;
    knotCount = 0;
    type = other.type;
    order = other.order;
    coefficientCount = other.coefficientCount;
    coefficients = other.coefficients;
    knots = other.knots;
    knotCount = newCount;
    return *this;
}

template <class T, template <class> class V>
TBSpline<T, V>& TBSpline<T, V>::operator=(TBSpline&& other)
{
    if (this == &other) return *this;
    TPointSet<T, V>::operator=(static_cast<TPointSet<T, V>&&>(other)); // the rest of it follows
    TakeKnots(other);
    return *this;
}

template <class T, template <class> class V>
void TBSpline<T, V>::TakeKnots(TBSpline& other) noexcept
{
    knotCount = std::exchange(other.knotCount, 0u);
    coefficientCount = std::exchange(other.coefficientCount, 0u);
    knots = std::move(other.knots);
    coefficients = std::move(other.coefficients);
    type = other.type;
    order = other.order;
}

template <class T, template <class> class V>
TBSpline<T, V>::~TBSpline() = default;

template <class T, template <class> class V>
void TBSpline<T, V>::SetOrder(unsigned int splineOrder)
{
    CORVEX_PRECONDITION("TBSpline::SetOrder", splineOrder >= 1, splineOrder);
    BuildKnots(splineOrder, type);
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
void TBSpline<T, V>::BuildKnots(unsigned int newOrder, KnotType newType)
{
    // Room comes first: where memory runs out, all stays as it was.
    const unsigned int newCount = newOrder + this->count;
    if (newCount < newOrder) throw std::bad_alloc();
    MakeRoomFor(coefficients, newCount - 1);
    if (newType == Uniform || newType == Clamped) MakeRoomFor(knots, newCount);

    order = newOrder;
    type = newType;
    knotCount = newCount;
    coefficientCount = newCount - 1;
    knots.Clear(false);
    coefficients.Clear(false);
    T* coefficient = MakeCount(coefficients, coefficientCount);
    for (unsigned int i = 0; i < coefficientCount; ++i) coefficient[i] = T(0);
    if (type == Uniform)
        FillUniformKnots(MakeCount(knots, knotCount), knotCount);
    else if (type == Clamped)
        FillClampedKnots(MakeCount(knots, knotCount), knotCount, order, this->count);
}

template <class T, template <class> class V>
bool TBSpline<T, V>::CanEvaluate() const
{
    CORVEX_PRECONDITION("TBSpline::Evaluate", this->count >= 1, this->count);
    CORVEX_PRECONDITION("TBSpline::Evaluate", knots.GetCount() == order + this->count, knots.GetCount(), order,
                        this->count, type);
    return knots.GetCount() == knotCount && knotCount > order && knotCount > this->count;
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
void TBSpline<T, V>::CalculateCoefficients(T u, unsigned int levels)
{
    FillBasis<T, V>(knots.GetStream(), coefficients.GetStream(), coefficientCount, *this, MapToKnots(u), levels);
}

template <class T, template <class> class V>
V<T> TBSpline<T, V>::Evaluate(T u)
{
    if (!CanEvaluate()) return ZeroVector<T, V>();
    T* const basis = coefficients.GetStream();
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
    if (increment == T(0) || !CanEvaluate()) return;

    // A derived class may change the spline in its hooks, so there each point is computed by itself.
    if (!Kernels::HasHooksOfSets(*out)) {
        ForParameters(increment, [&](T u) { out->Add(Evaluate(u)); });
        return;
    }
    unsigned int pointCount = 0;
    ForParameters(increment, [&](T) { ++pointCount; });
    Kernels::MakeRoomForAdditions(*out, pointCount);
    RepeatedBasis<T, V> basis(knots.GetStream(), coefficients.GetStream(), coefficientCount, *this);
    const auto add = [out](const V<T>* points, unsigned int n) { out->AddRange(points, n); };
    PointStream stream(basis, order, add);
    ForParameters(increment, [&](T u) { stream.Add(MapToKnots(u)); });
    stream.Finish();
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
    if (!CanEvaluate()) return T(0);
    RepeatedBasis<T, V> basis(knots.GetStream(), coefficients.GetStream(), coefficientCount, *this);
    const auto pointAt = [&](T u) { return basis.PointAt(MapToKnots(u), order); };
    T total = T(0);
    T b = start + step;
    if (end >= b) {
        // The end of one chord is the start of the next.
        V<T> from = pointAt(start);
        PointStream stream(basis, order, [&](const V<T>* points, unsigned int n) {
            for (unsigned int i = 0; i < n; ++i) {
                total = total + from.DiffVectLen(points[i]);
                from = points[i];
            }
        });
        do {
            stream.Add(MapToKnots(b));
            b = b + step;
        } while (end >= b);
        stream.Finish();
    }
    // Rounding may have put this beside the last point.
    const T last = b - step;
    if (last == end) return total;
    const V<T> from = pointAt(last);
    return total + from.DiffVectLen(pointAt(end));
}

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/splines/Fitting.inl>

namespace Halmont::Orrin::CorvexMaths
{

CORVEX_INSTANTIATE_SETS(, TBSpline);

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// The least-squares fit of a B-spline.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/decomposition/SingularValues.h>
#include <CorvexMaths/splines/Basis.inl>
#include <CorvexMaths/splines/Knots.inl>
#include <CorvexMaths/splines/TBSpline.h>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The square root of the distance between two points, over all components.
template <class Point>
auto RootDistance(const Point& a, const Point& b)
{
    return Numbers::SquareRoot(a.DiffVectLen(b));
}

/// Appends a parameter for each point: from 0 on, each farther by its share of the root distances. Points that all
/// coincide get NaN.
template <class T, template <class> class V>
void AddCentripetalParameters(const TPointSet<T, V>& points, TList<T>* parameters)
{
    const unsigned int pointCount = points.GetCount();
    T total = T(0);
    for (unsigned int i = 1; i < pointCount; ++i) total += RootDistance(points[i - 1], points[i]);
    T parameter = T(0);
    for (unsigned int i = 0; i < pointCount; ++i) {
        if (i > 0) parameter = parameter + RootDistance(points[i - 1], points[i]) / total;
        parameters->Add(parameter);
    }
}

} // namespace

template <class T, template <class> class V>
void TBSpline<T, V>::GetSecondDerivatives(T u, T* out)
{
    const unsigned int level = order - 2;
    CalculateCoefficients(u, level);
    const unsigned int factor = (level - 1) * level;
    if (factor == 0) {
        for (unsigned int i = 0; i < this->count; ++i) out[i] = T(0);
        return;
    }
    const auto quotient = [](T numerator, T denominator) {
        return denominator == T(0) ? T(0) : numerator / denominator;
    };
    for (unsigned int i = 0; i < this->count; ++i) {
        const T* k = &knots[i];
        const T* c = &coefficients[i];
        const T r = k[level] - k[0];
        const T s = k[level + 1] - k[1];
        const T q = k[level] - k[1];
        const T t1 = quotient(c[0], (k[level - 1] - k[0]) * r);
        const T t2 = quotient(c[1], q * r);
        const T t3 = quotient(c[1], s * q);
        const T t4 = quotient(c[2], (k[level + 1] - k[2]) * s);
        out[i] = (t1 - t2 - t3 + t4) * static_cast<T>(factor);
    }
}

template <class T, template <class> class V>
void TBSpline<T, V>::FillDesignMatrix(const TList<T>& parameters, unsigned int controlCount, bool endConditions,
                                      TMatrixMxN<T>* matrix)
{
    const unsigned int dataCount = parameters.GetCount();
    matrix->AssignMemory(endConditions ? dataCount + 2 : dataCount, controlCount);
    RepeatedBasis<T, V> basis(knots.GetStream(), coefficients.GetStream(), coefficientCount, *this);
    for (unsigned int i = 0; i < dataCount; ++i) {
        basis.Fill(MapToKnots(parameters[i]), order);
        for (unsigned int k = 0; k < controlCount; ++k) (*matrix)[i][k] = coefficients[k];
    }
    if (!endConditions) return;
    GetSecondDerivatives(T(0), (*matrix)[dataCount]);
    GetSecondDerivatives(T(1), (*matrix)[dataCount + 1]);
}

template <class T, template <class> class V>
void TBSpline<T, V>::Fit(TPointSet<T, V>& points, unsigned int controlCount, bool endConditions)
{
    const unsigned int dataCount = points.GetCount();
    CORVEX_PRECONDITION("TBSpline::Fit", order >= 2, order);
    CORVEX_PRECONDITION("TBSpline::Fit", dataCount >= 1 && controlCount <= dataCount, dataCount, controlCount);
    CORVEX_PRECONDITION("TBSpline::Fit", &points != this, &points, this);
    this->Clear(false);
    const KnotType typeBefore = type;
    type = Clamped;
    for (unsigned int i = 0; i < controlCount; ++i) this->Add(V<T>());
    AssignPersistentMembers();

    TList<T> parameters(dataCount, 1u);
    AddCentripetalParameters(points, &parameters);
    knots.Clear(true);
    FillAveragedKnots(MakeCount(knots, knotCount), knotCount, order, controlCount, parameters);

    TMatrixMxN<T> a, u, w, v;
    FillDesignMatrix(parameters, controlCount, endConditions, &a);
    if (!a.SVD(&u, &w, &v, 30)) return;

    // The right sides of the end conditions: homogeneous points have a w of 1.
    if (endConditions) {
        points.Add(V<T>());
        points.Add(V<T>());
    }
    TMatrixMxN<T> b(points.GetCount(), this->dimension);
    for (unsigned int i = 0; i < b.GetM(); ++i)
        for (unsigned int k = 0; k < b.GetN(); ++k) b[i][k] = points[i][k];
    TMatrixMxN<T> x(dataCount, b.GetN());
    if (!Kernels::SVDSolveColumns(u, w, v, b, &x)) return;

    for (unsigned int i = 0; i < this->count; ++i)
        for (unsigned int k = 0; k < x.GetN(); ++k) this->storage[i][k] = x[i][k];
    type = typeBefore;
    if (type == Uniform) Wrap();
}

} // namespace Halmont::Orrin::CorvexMaths

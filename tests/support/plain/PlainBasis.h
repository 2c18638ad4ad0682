#pragma once

/// The basis functions of a B-spline in their plain form: the whole recursion, over every knot.

#include <cmath>

namespace CorvexTest::Plain
{

/// One term of the recursion; 1e-6 is the `float` in `double` too.
template <class T>
T BasisTerm(T distance, T span, T basis)
{
    const auto vanishes = [](T value) { return value == 0 || std::fabs(value) <= static_cast<T>(1e-6f); };
    const T term = vanishes(span) ? T(0) : distance / span * basis;
    return vanishes(term) ? T(0) : term;
}

/// Sets the basis functions, one less than there are knots, at a place on the scale of the knots.
template <class T>
void FillBasis(const T* knots, unsigned int knotCount, T* basis, T x, unsigned int levels)
{
    for (unsigned int i = 0; i + 1 < knotCount; ++i) basis[i] = x >= knots[i] && knots[i + 1] > x ? T(1) : T(0);
    for (unsigned int j = 1; j < levels; ++j)
        for (unsigned int i = 0; i + j + 1 < knotCount; ++i)
            basis[i] = BasisTerm(x - knots[i], knots[i + j] - knots[i], basis[i]) +
                       BasisTerm(knots[i + j + 1] - x, knots[i + j + 1] - knots[i + 1], basis[i + 1]);
}

} // namespace CorvexTest::Plain

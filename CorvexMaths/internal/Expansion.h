#pragma once

/// Exact sums and products of `double`s, as sums of terms that do not overlap.
///
/// J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast robust geometric predicates", 1997. Terms
/// ascend in magnitude, none is zero, and each has its bits below those of the next, so that the last one tells the
/// sign of the sum. All holds exactly as long as nothing overflows and no product of two terms falls below the smallest
/// denormal number; whoever computes sees to that. Rounding must be to nearest even. No fused operation is used.

#include <CorvexMaths/internal/DoubleDouble.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// An exact number of at most `capacity` terms.
template <unsigned int capacity>
struct Expansion
{
    unsigned int count = 0;
    double terms[capacity];

    /// Adds a term on top unless it is zero.
    void Append(double term)
    {
        if (term != 0) terms[count++] = term;
    }

    int Sign() const { return count == 0 ? 0 : terms[count - 1] > 0 ? 1 : -1; }

    /// The nearest `double` but for one rounding in the last place.
    double Estimate() const
    {
        double sum = 0;
        for (unsigned int i = 0; i < count; ++i) sum += terms[i];
        return sum;
    }

    Expansion operator-() const
    {
        Expansion negative = *this;
        for (unsigned int i = 0; i < count; ++i) negative.terms[i] = -terms[i];
        return negative;
    }
};

/// a - b, exactly.
inline Expansion<2> Difference(double a, double b)
{
    const DoubleDouble difference = DoubleDouble::Sum(a, -b);
    Expansion<2> result;
    result.Append(difference.low);
    result.Append(difference.high);
    return result;
}

/// Writes the sum of two expansions into a third, which is neither of them: merged by magnitude, then added up from
/// below (Shewchuk's fast expansion sum, with zeros left out).
template <unsigned int capacity, unsigned int first, unsigned int second>
void Sum(const Expansion<first>& a, const Expansion<second>& b, Expansion<capacity>* sum)
{
    sum->count = 0;
    unsigned int i = 0;
    unsigned int k = 0;
    const auto next = [&] {
        if (k == b.count) return a.terms[i++];
        if (i == a.count) return b.terms[k++];
        const double x = a.terms[i] < 0 ? -a.terms[i] : a.terms[i];
        const double y = b.terms[k] < 0 ? -b.terms[k] : b.terms[k];
        return x < y ? a.terms[i++] : b.terms[k++];
    };
    if (a.count + b.count == 0) return;
    double carried = next();
    bool isSecond = true;
    while (i < a.count || k < b.count) {
        const double term = next();
        const DoubleDouble partial =
            isSecond ? DoubleDouble::OrderedSum(term, carried) : DoubleDouble::Sum(carried, term);
        isSecond = false;
        sum->Append(partial.low);
        carried = partial.high;
    }
    sum->Append(carried);
}

template <unsigned int first, unsigned int second>
Expansion<first + second> operator+(const Expansion<first>& a, const Expansion<second>& b)
{
    Expansion<first + second> sum;
    Sum(a, b, &sum);
    return sum;
}

template <unsigned int first, unsigned int second>
Expansion<first + second> operator-(const Expansion<first>& a, const Expansion<second>& b)
{
    return a + -b;
}

/// An expansion times a number.
template <unsigned int count>
Expansion<2 * count> operator*(const Expansion<count>& a, double factor)
{
    Expansion<2 * count> result;
    if (a.count == 0) return result;
    DoubleDouble product = DoubleDouble::Product(a.terms[0], factor);
    result.Append(product.low);
    double carried = product.high;
    for (unsigned int i = 1; i < a.count; ++i) {
        product = DoubleDouble::Product(a.terms[i], factor);
        const DoubleDouble lower = DoubleDouble::Sum(carried, product.low);
        result.Append(lower.low);
        const DoubleDouble upper = DoubleDouble::OrderedSum(product.high, lower.high);
        result.Append(upper.low);
        carried = upper.high;
    }
    result.Append(carried);
    return result;
}

/// The product of two expansions: the sum of the first times each term of the second.
template <unsigned int first, unsigned int second>
Expansion<2 * first * second> operator*(const Expansion<first>& a, const Expansion<second>& b)
{
    Expansion<2 * first * second> sums[2];
    unsigned int current = 0;
    for (unsigned int i = 0; i < b.count; ++i) {
        Sum(sums[current], a * b.terms[i], &sums[1 - current]);
        current = 1 - current;
    }
    return sums[current];
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

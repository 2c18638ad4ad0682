#pragma once

/// Exact sums and products of `double`s, as sums of terms that do not overlap.
///
/// J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast robust geometric predicates", 1997. Terms
/// ascend in magnitude, none is zero, and each has its bits below those of the next, so that the last one tells the sign
/// of the sum. All holds exactly as long as nothing overflows and no product of two terms falls below the smallest
/// denormal number; whoever computes sees to that. Rounding must be to nearest even. No fused operation is used.

namespace Halmont::Orrin::CorvexMaths::Robust::Internal
{

/// A rounded result and what rounding took from it: `high` + `low` is exact.
struct TwoTerms
{
    double high, low;
};

/// The sum of two numbers (Knuth, 1969).
inline TwoTerms TwoSum(double a, double b)
{
    const double sum = a + b;
    const double bPart = sum - a;
    const double aPart = sum - bPart;
    return {sum, (a - aPart) + (b - bPart)};
}

/// The sum of two numbers of which the first is not the smaller in magnitude (Dekker, 1971).
inline TwoTerms FastTwoSum(double a, double b)
{
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// A number in halves of 26 bits at most (Veltkamp, 1968).
inline TwoTerms Split(double a)
{
    const double scaled = 134217729.0 * a; // 2^27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

/// The product of two numbers (Dekker, 1971).
inline TwoTerms TwoProduct(double a, double b)
{
    const double product = a * b;
    const TwoTerms x = Split(a);
    const TwoTerms y = Split(b);
    return {product, x.low * y.low - (((product - x.high * y.high) - x.low * y.high) - x.high * y.low)};
}

// Arithmetic with twice the digits: rounded to about 106 bits, relative to the operands.

/// The sum, off by no more than 4 2^-106 of the magnitudes of the operands.
inline TwoTerms operator+(TwoTerms a, TwoTerms b)
{
    const TwoTerms sum = TwoSum(a.high, b.high);
    return FastTwoSum(sum.high, sum.low + (a.low + b.low));
}

inline TwoTerms operator-(TwoTerms a, TwoTerms b)
{
    return a + TwoTerms{-b.high, -b.low};
}

/// The product, off by no more than 8 2^-106 of itself.
inline TwoTerms operator*(TwoTerms a, TwoTerms b)
{
    const TwoTerms product = TwoProduct(a.high, b.high);
    return FastTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

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
    const TwoTerms difference = TwoSum(a, -b);
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
        const TwoTerms partial = isSecond ? FastTwoSum(term, carried) : TwoSum(carried, term);
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
    TwoTerms product = TwoProduct(a.terms[0], factor);
    result.Append(product.low);
    double carried = product.high;
    for (unsigned int i = 1; i < a.count; ++i) {
        product = TwoProduct(a.terms[i], factor);
        const TwoTerms lower = TwoSum(carried, product.low);
        result.Append(lower.low);
        const TwoTerms upper = FastTwoSum(product.high, lower.high);
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

} // namespace Halmont::Orrin::CorvexMaths::Robust::Internal

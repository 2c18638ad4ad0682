#pragma once

#include <cmath>

/// Numbers of about 32 digits, each the unevaluated sum of two doubles (T. J. Dekker, "A floating-point technique for
/// extending the available precision", 1971). Plain additions and multiplications alone, so that every machine gives
/// the same bits. They serve values scaled to about 1: products near the ends of the range of double are not guarded.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// The sum high + low, with low at most half a unit in the last place of high.
struct DoubleDouble
{
    double high = 0.0;
    double low = 0.0;

    DoubleDouble() = default;
    DoubleDouble(double value) : high(value) {}
    DoubleDouble(double h, double l) : high(h), low(l) {}

    explicit operator double() const { return high; }

    /// The sum of two doubles without error (D. E. Knuth).
    static DoubleDouble Sum(double a, double b)
    {
        const double s = a + b;
        const double t = s - a;
        return {s, (a - (s - t)) + (b - t)};
    }
    /// The same where a is 0 or not below b in absolute value.
    static DoubleDouble OrderedSum(double a, double b)
    {
        const double s = a + b;
        return {s, b - (s - a)};
    }
    /// The product of two doubles without error; each is split into halves of 26 bits (G. W. Veltkamp).
    static DoubleDouble Product(double a, double b)
    {
        const double splitter = 134217729.0; // 2^27 + 1
        const double p = a * b;
        const double ta = splitter * a;
        const double tb = splitter * b;
        const double ah = ta - (ta - a);
        const double bh = tb - (tb - b);
        const double al = a - ah;
        const double bl = b - bh;
        return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
    }

    DoubleDouble operator-() const { return {-high, -low}; }
};

/// To within 2^-103 of the greater term.
inline DoubleDouble operator+(const DoubleDouble& a, const DoubleDouble& b)
{
    const DoubleDouble s = DoubleDouble::Sum(a.high, b.high);
    return DoubleDouble::OrderedSum(s.high, s.low + (a.low + b.low));
}
inline DoubleDouble operator-(const DoubleDouble& a, const DoubleDouble& b)
{
    return a + -b;
}
inline DoubleDouble operator*(const DoubleDouble& a, const DoubleDouble& b)
{
    const DoubleDouble p = DoubleDouble::Product(a.high, b.high);
    return DoubleDouble::OrderedSum(p.high, p.low + (a.high * b.low + a.low * b.high));
}
/// One step of Newton's on the double quotient.
inline DoubleDouble operator/(const DoubleDouble& a, const DoubleDouble& b)
{
    const double q = a.high / b.high;
    const DoubleDouble rest = a - b * DoubleDouble(q);
    return DoubleDouble::OrderedSum(q, rest.high / b.high);
}
inline DoubleDouble& operator+=(DoubleDouble& a, const DoubleDouble& b)
{
    return a = a + b;
}

inline bool operator<(const DoubleDouble& a, const DoubleDouble& b)
{
    return a.high < b.high || (a.high == b.high && a.low < b.low);
}

/// The square root of a number that is not negative: one step of Newton's on the double root.
inline DoubleDouble SquareRoot(const DoubleDouble& a)
{
    const double root = std::sqrt(a.high);
    if (!(root > 0.0)) return {};
    const DoubleDouble rest = a - DoubleDouble::Product(root, root);
    return DoubleDouble::OrderedSum(root, rest.high / (root + root));
}
inline double SquareRoot(double a)
{
    return std::sqrt(a);
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

#include <CorvexMaths/internal/Lanes.h>

#include <cmath>
#include <type_traits>

/// Numbers of about 32 digits, each the unevaluated sum of two doubles (T. J. Dekker, "A floating-point technique for
/// extending the available precision", 1971). Plain additions and multiplications alone, so that every machine gives
/// the same bits. They serve values scaled to about 1: products near the ends of the range of double are not guarded.
namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The sum high + low, with low at most half a unit in the last place of high; or as many of them as Value has lanes.
template <class Value>
struct Twofold
{
    Value high = {};
    Value low = {};

    Twofold() = default;
    Twofold(Value value) : high(value) {}
    Twofold(Value h, Value l) : high(h), low(l) {}

    explicit operator Value() const { return high; }

    /// The sum of two numbers without error (D. E. Knuth).
    static Twofold Sum(Value a, Value b)
    {
        const Value s = a + b;
        const Value t = s - a;
        return {s, (a - (s - t)) + (b - t)};
    }
    /// The same where a is 0 or not below b in absolute value.
    static Twofold OrderedSum(Value a, Value b)
    {
        const Value s = a + b;
        return {s, b - (s - a)};
    }
    /// The product of two numbers without error; each is split into halves of 26 bits (G. W. Veltkamp).
    static Twofold Product(Value a, Value b)
    {
        const double splitter = 134217729.0; // 2^27 + 1
        const Value p = a * b;
        const Value ta = splitter * a;
        const Value tb = splitter * b;
        const Value ah = ta - (ta - a);
        const Value bh = tb - (tb - b);
        const Value al = a - ah;
        const Value bl = b - bh;
        return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
    }

    Twofold operator-() const { return {-high, -low}; }

    /// To within 2^-103 of the greater term.
    friend Twofold operator+(const Twofold& a, const Twofold& b)
    {
        const Twofold s = Sum(a.high, b.high);
        return OrderedSum(s.high, s.low + (a.low + b.low));
    }
    friend Twofold operator-(const Twofold& a, const Twofold& b) { return a + -b; }
    friend Twofold operator*(const Twofold& a, const Twofold& b)
    {
        const Twofold p = Product(a.high, b.high);
        return OrderedSum(p.high, p.low + (a.high * b.low + a.low * b.high));
    }
    /// One step of Newton's on the quotient of the first parts.
    friend Twofold operator/(const Twofold& a, const Twofold& b)
    {
        const Value q = a.high / b.high;
        const Twofold rest = a - b * Twofold(q);
        return OrderedSum(q, rest.high / b.high);
    }
    friend Twofold& operator+=(Twofold& a, const Twofold& b) { return a = a + b; }
    friend bool operator<(const Twofold& a, const Twofold& b)
    {
        return a.high < b.high || (a.high == b.high && a.low < b.low);
    }
};

using DoubleDouble = Twofold<double>;

/// A number for each lane of a register that every processor has.
using DoubleLanes = BaselineLanes<double>;

/// The number of the first parts: what Real stands for, rounded.
template <class Value>
Value Rounded(const Value& x)
{
    return x;
}
template <class Value>
Value Rounded(const Twofold<Value>& x)
{
    return x.high;
}

/// What a number is rounded to: `double`, or lanes of it.
template <class Real>
using RoundedType = decltype(Rounded(Real()));

/// A double for all lanes.
template <class Value>
Value Spread(double x)
{
    Value value;
    Broadcast(value, x);
    return value;
}

/// A number to twice the digits as Real, which may have fewer digits, or several lanes.
template <class Real>
Real As(const DoubleDouble& x)
{
    using Value = RoundedType<Real>;
    if constexpr (std::is_same_v<Real, Value>)
        return Spread<Value>(x.high);
    else
        return {Spread<Value>(x.high), Spread<Value>(x.low)};
}

inline double SquareRoot(double a)
{
    return std::sqrt(a);
}
inline DoubleLanes SquareRoot(const DoubleLanes& a)
{
    DoubleLanes root;
    for (unsigned int k = 0; k < baselineCount<double>; ++k) root[k] = std::sqrt(a[k]);
    return root;
}
/// The square root of a number that is not negative: one step of Newton's on the root of its first part.
template <class Value>
Twofold<Value> SquareRoot(const Twofold<Value>& a)
{
    const Value root = SquareRoot(a.high);
    const Twofold<Value> rest = a - Twofold<Value>::Product(root, root);
    const Twofold<Value> better = Twofold<Value>::OrderedSum(root, rest.high / (root + root));
    const auto isPositive = root > 0.0;
    return {isPositive ? better.high : Value{}, isPositive ? better.low : Value{}};
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

#include <CorvexMaths/internal/Lanes.h>

#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

/// Numbers of about 32 digits, each the unevaluated sum of two doubles (T. J. Dekker, "A floating-point technique for
/// extending the available precision", 1971). Plain additions and multiplications alone, so that every machine gives
/// the same bits. They serve values scaled to about 1: products near the ends of the range of double are not guarded.
namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The sum high + low, with low at most half a unit in the last place of high; or as many of them as Value has lanes.
/// Lanes go through references, and what takes them is inlined, as kernels ask for.
template <class Value>
struct Twofold
{
    Value high = {};
    Value low = {};

    Twofold() = default;
    CORVEX_ALWAYS_INLINE Twofold(const Value& value) : high(value) {}
    CORVEX_ALWAYS_INLINE Twofold(const Value& h, const Value& l) : high(h), low(l) {}

    explicit operator double() const { return high; }

    /// The sum of two numbers without error (D. E. Knuth).
    CORVEX_ALWAYS_INLINE static Twofold Sum(const Value& a, const Value& b)
    {
        const Value s = a + b;
        const Value t = s - a;
        return {s, (a - (s - t)) + (b - t)};
    }
    /// The same where a is 0 or not below b in absolute value.
    CORVEX_ALWAYS_INLINE static Twofold OrderedSum(const Value& a, const Value& b)
    {
        const Value s = a + b;
        return {s, b - (s - a)};
    }
    /// The product of two numbers without error; each is split into halves of 26 bits (G. W. Veltkamp).
    CORVEX_ALWAYS_INLINE static Twofold Product(const Value& a, const Value& b)
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

    CORVEX_ALWAYS_INLINE Twofold operator-() const { return {-high, -low}; }

    /// To within 2^-103 of the greater term.
    CORVEX_ALWAYS_INLINE friend Twofold operator+(const Twofold& a, const Twofold& b)
    {
        const Twofold s = Sum(a.high, b.high);
        return OrderedSum(s.high, s.low + (a.low + b.low));
    }
    CORVEX_ALWAYS_INLINE friend Twofold operator-(const Twofold& a, const Twofold& b) { return a + -b; }
    CORVEX_ALWAYS_INLINE friend Twofold operator*(const Twofold& a, const Twofold& b)
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
    CORVEX_ALWAYS_INLINE friend Twofold& operator+=(Twofold& a, const Twofold& b) { return a = a + b; }
    friend bool operator<(const Twofold& a, const Twofold& b)
    {
        return a.high < b.high || (a.high == b.high && a.low < b.low);
    }
};

using DoubleDouble = Twofold<double>;

/// Sets lanes to every `stride`-th of the values.
template <unsigned int stride, class Lane, std::size_t... indices>
CORVEX_ALWAYS_INLINE void SetEvery(Lane& lane, const double* values, std::index_sequence<indices...>)
{
    const double every[] = {values[indices * stride]...};
    Load(lane, every);
}

/// Adds a number, or as many as there are lanes, to sums of which the high and the low parts stand apart.
template <class Value>
CORVEX_ALWAYS_INLINE void AddTo(double* high, double* low, const Value& x)
{
    Value h;
    Value l;
    Load(h, high);
    Load(l, low);
    const Twofold<Value> sum = Twofold<Value>::Sum(h, x);
    Store(high, sum.high);
    Store(low, Value(l + sum.low));
}
/// The same for numbers of twice the digits, to within 2^-103 of each sum.
template <class Value>
CORVEX_ALWAYS_INLINE void AddTo(double* high, double* low, const Twofold<Value>& x)
{
    Twofold<Value> sum;
    Load(sum.high, high);
    Load(sum.low, low);
    sum += x;
    Store(high, sum.high);
    Store(low, sum.low);
}

/// The number of the first parts: what Real stands for, rounded.
template <class Value>
CORVEX_ALWAYS_INLINE const Value& Rounded(const Value& x)
{
    return x;
}
template <class Value>
CORVEX_ALWAYS_INLINE const Value& Rounded(const Twofold<Value>& x)
{
    return x.high;
}

/// What a number is rounded to: `double`, or lanes of it.
template <class Real>
using RoundedType = std::decay_t<decltype(Rounded(std::declval<Real>()))>;

/// Sets all lanes to a number. The register is filled before it is written, else g++ takes it for one read too early.
template <class Lane>
CORVEX_ALWAYS_INLINE void Spread(Lane& lane, double x)
{
    Lane all;
    Broadcast(all, x);
    std::memcpy(&lane, &all, sizeof(Lane));
}

/// A number as another of as many digits as Real, whose lanes it fills.
template <class Real>
CORVEX_ALWAYS_INLINE auto As(const DoubleDouble& x)
{
    using Value = RoundedType<Real>;
    if constexpr (std::is_same_v<Real, Value>) {
        return x.high;
    } else {
        Real value;
        Spread(value.high, x.high);
        Spread(value.low, x.low);
        return value;
    }
}

/// Sets a number, or lanes of them, to the square root of another.
CORVEX_ALWAYS_INLINE void SetRoot(double& root, double a)
{
    root = std::sqrt(a);
}
template <class Lane>
CORVEX_ALWAYS_INLINE void SetRoot(Lane& root, const Lane& a)
{
    constexpr unsigned int count = sizeof(Lane) / sizeof(double);
    double values[count];
    Store(values, a);
    for (double& x : values) x = std::sqrt(x);
    Load(root, values);
}
/// That of a number that is not negative: one step of Newton's on the root of its first part.
template <class Value>
CORVEX_ALWAYS_INLINE void SetRoot(Twofold<Value>& result, const Twofold<Value>& a)
{
    Value root;
    SetRoot(root, a.high);
    const Twofold<Value> rest = a - Twofold<Value>::Product(root, root);
    const Twofold<Value> better = Twofold<Value>::OrderedSum(root, rest.high / (root + root));
    const auto isPositive = root > 0.0;
    result.high = isPositive ? better.high : Value{};
    result.low = isPositive ? better.low : Value{};
}

inline double SquareRoot(double a)
{
    return std::sqrt(a);
}
inline DoubleDouble SquareRoot(const DoubleDouble& a)
{
    DoubleDouble root;
    SetRoot(root, a);
    return root;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

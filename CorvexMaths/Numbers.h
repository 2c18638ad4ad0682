#pragma once

/// The numerical rules of the library in one place: its tolerances, its sentinel, its full turn, the zero test, and the
/// elementary functions as every class evaluates them.
///
/// Tolerances are absolute, never scaled to the data. Constants that began as `float` literals keep the value of that
/// `float` in `double` code too, so that both instantiations decide alike.

#include <cmath>

#ifdef CORVEX_BUILDING_LIBRARY
#include <cfloat>
// Every step rounds to its own type; wider intermediate results would change the bits.
static_assert(FLT_EVAL_METHOD == 0, "CorvexMaths needs arithmetic that rounds to the type of its operands");
#endif

namespace Halmont::Orrin::CorvexMaths::Numbers
{

/// The common tolerance: the `float` nearest 1e-6, in `double` that same `float` widened (9.999999974752427e-07).
template <class T>
inline constexpr T commonTolerance = static_cast<T>(1e-6f);

/// What replaces a pivot that is exactly zero: the `float` nearest 1e-20, in `double` widened (9.999999682655225e-21).
template <class T>
inline constexpr T pivotGuard = static_cast<T>(1e-20f);

/// The sentinel for a bound not yet set: the largest `float`, in `double` code too.
template <class T>
inline constexpr T unsetBound = static_cast<T>(3.4028234663852886e+38f);

/// The full turn in radians: 6.2831854820251465 in `float`, 6.283185307179586 in `double`.
template <class T>
inline constexpr T fullTurn = static_cast<T>(6.283185307179586);

/// The absolute value; the sign bit is cleared, so -0 gives 0, and NaN stays NaN.
template <class T>
inline T Absolute(T value)
{
    return std::fabs(value);
}

/// The square root; NaN below 0. In `float` the correctly rounded `float` root, which equals the narrowed `double` one.
template <class T>
inline T SquareRoot(T value)
{
    return std::sqrt(value);
}

/// The sine of an angle in radians, evaluated in `double` and narrowed to T.
template <class T>
inline T Sine(T angle)
{
    return static_cast<T>(std::sin(static_cast<double>(angle)));
}

/// The cosine of an angle in radians, evaluated in `double` and narrowed to T.
template <class T>
inline T Cosine(T angle)
{
    return static_cast<T>(std::cos(static_cast<double>(angle)));
}

/// The arc cosine in radians, from 0 to pi, evaluated in `double` and narrowed to T; NaN outside -1 to 1.
template <class T>
inline T ArcCosine(T cosine)
{
    return static_cast<T>(std::acos(static_cast<double>(cosine)));
}

/// Whether a value is zero within a tolerance: exactly 0, or of an absolute value not above it. The bound is inclusive,
/// a tolerance of 0 still accepts an exact zero, and NaN is never zero.
template <class T>
inline bool IsZero(T value, T tolerance)
{
    return value == T(0) || Absolute(value) <= tolerance;
}

/// Whether two values are equal within a tolerance: exactly equal (equal infinities are), or of an absolute difference
/// not above it. Inclusive; NaN is near nothing.
template <class T>
inline bool IsNear(T a, T b, T tolerance)
{
    return a == b || Absolute(a - b) <= tolerance;
}

/// A cosine that rounding took outside -1 to 1, put back to the bound. NaN passes through.
template <class T>
inline T ClampCosine(T cosine)
{
    if (cosine > T(1)) return T(1);
    if (cosine < T(-1)) return T(-1);
    return cosine;
}

} // namespace Halmont::Orrin::CorvexMaths::Numbers

#pragma once

/// The complex number.

#include <CorvexMaths/vectors/HypercomplexOperations.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A complex number: exactly its two components, contiguous, trivially copyable and without further state.
template <class T>
struct TComplex : HypercomplexOperations<TComplex<T>, T>
{
    T real = T(0);      ///< The real part.
    T imaginary = T(0); ///< The imaginary part.

    /// Zero.
    constexpr TComplex() = default;

    /// The number of the given parts.
    constexpr TComplex(const T& realPart, const T& imaginaryPart) : real(realPart), imaginary(imaginaryPart) {}

    /// The number of the other scalar: `float` to `double` keeps the values, `double` to `float` rounds each part.
    template <class S, EnableForOther<S, T> = 0>
    constexpr explicit TComplex(const TComplex<S>& other)
        : real(static_cast<T>(other.real)), imaginary(static_cast<T>(other.imaginary))
    {}

    /// The complex product, each part a sum of two rounded products. Infinite parts can give NaN, which is not mended.
    TComplex operator*(const TComplex& other) const
    {
        return TComplex(real * other.real - imaginary * other.imaginary,
                        real * other.imaginary + imaginary * other.real);
    }

    /// Replaces the number by its complex product with another, which may be this number.
    TComplex& operator*=(const TComplex& other) { return *this = *this * other; }

    /// The quotient: this times the conjugate of the divisor, each part divided by the divisor's squared length. There
    /// is no test for 0, which gives NaN, and nothing is scaled against overflow: a divisor whose square leaves the
    /// range of T gives zeros, infinities or NaN.
    TComplex operator/(TComplex other) const
    {
        const T lengthSquared = other.imaginary * other.imaginary + other.real * other.real;
        other.imaginary *= T(-1);
        return *this * other / lengthSquared;
    }

    /// Replaces the number by its quotient by another, which may be this number: this times the conjugate of the
    /// divisor, each part divided by the divisor's squared length. There is no test for 0, which gives NaN, and nothing
    /// is scaled against overflow: a divisor whose square leaves the range of T gives zeros, infinities or NaN.
    TComplex& operator/=(TComplex other) { return *this = *this / other; }

    using HypercomplexOperations<TComplex, T>::operator*;
    using HypercomplexOperations<TComplex, T>::operator*=;
    using HypercomplexOperations<TComplex, T>::operator/;
    using HypercomplexOperations<TComplex, T>::operator/=;

private:
    friend struct HypercomplexOperations<TComplex, T>;

    template <class F>
    static TComplex Each(F f)
    {
        return TComplex(f(&TComplex::real), f(&TComplex::imaginary));
    }
};

extern template struct HypercomplexOperations<TComplex<float>, float>;
extern template struct HypercomplexOperations<TComplex<double>, double>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TComplex);

} // namespace Halmont::Orrin::CorvexMaths

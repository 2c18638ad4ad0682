#pragma once

/// The 2 by 2 matrix, and the products of vectors with it.

#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 2 by 2 matrix by value, its elements row by row.
template <class T>
struct CORVEX_API TMatrix2x2 : SquareMatrixOperations<TMatrix2x2<T>, T, 2>
{
    T elements[4]; ///< Element (r, c) at r*2 + c.

    /// The identity.
    TMatrix2x2() { this->ToIdentity(); }
    /// Reads four values, row by row.
    template <class P, EnableForPointer<P, T> = 0>
    TMatrix2x2(P values) : elements{values[0], values[1], values[2], values[3]}
    {}
    /// Takes four values, row by row.
    TMatrix2x2(const T& a00, const T& a01, const T& a10, const T& a11) : elements{a00, a01, a10, a11} {}
    /// Takes two vectors as columns: the first row is (a.x, b.x).
    TMatrix2x2(const TVector2<T>& a, const TVector2<T>& b) : elements{a.x, b.x, a.y, b.y} {}

    /// This block in the upper left, 1 at (2, 2).
    operator TMatrix3x3<T>() const
    {
        const T* const e = elements;
        return TMatrix3x3<T>(e[0], e[1], T(0), e[2], e[3], T(0), T(0), T(0), T(1));
    }
    /// This block in the upper left, 1 at (2, 2) and (3, 3).
    operator TMatrix4x4<T>() const { return static_cast<TMatrix3x3<T>>(*this); }

    /// Divides every element by a scalar, which may be one of the elements. Unlike the other matrices, it returns a
    /// copy.
    TMatrix2x2 operator/=(const T& scalar)
    {
        SquareMatrixOperations<TMatrix2x2<T>, T, 2>::operator/=(scalar);
        return *this;
    }

    /// The determinant in closed form.
    T Determinant() const
    {
        const T* const e = elements;
        return e[3] * e[0] - e[2] * e[1];
    }

    /// Writes the eigenvalues of this matrix and, side by side with them, its unit eigenvectors, 2 each; see
    /// TMatrix3x3::Eigenspace.
    bool Eigenspace(T* const values, TVector2<T>* const vectors) const;
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
inline TMatrix2x2<T> TVector2<T>::operator^(const TVector2<T>& other) const
{
    return TMatrix2x2<T>::Outer(*this, other);
}

template <class T>
inline TVector2<T> TVector2<T>::operator*(const TMatrix2x2<T>& matrix) const
{
    return matrix.TimesRow(*this);
}
template <class T>
inline TVector2<T> TVector2<T>::operator*(const TMatrix3x3<T>& matrix) const
{
    return *this * static_cast<TMatrix2x2<T>>(matrix);
}
template <class T>
inline TVector2<T> TVector2<T>::operator*(const TMatrix4x4<T>& matrix) const
{
    return *this * static_cast<TMatrix2x2<T>>(matrix);
}

template <class T>
inline TVector2<T>& TVector2<T>::operator*=(const TMatrix2x2<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector2<T>& TVector2<T>::operator*=(const TMatrix3x3<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector2<T>& TVector2<T>::operator*=(const TMatrix4x4<T>& matrix)
{
    return *this = *this * matrix;
}

extern template struct SquareMatrixOperations<TMatrix2x2<float>, float, 2>;
extern template struct SquareMatrixOperations<TMatrix2x2<double>, double, 2>;
extern template struct TMatrix2x2<float>;
extern template struct TMatrix2x2<double>;

} // namespace Halmont::Orrin::CorvexMaths

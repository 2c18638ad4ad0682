#pragma once

/// The 3 by 3 matrix, and the products of vectors with it.

#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 3 by 3 matrix by value, its elements row by row.
template <class T>
struct CORVEX_API TMatrix3x3 : SquareMatrixOperations<TMatrix3x3<T>, T, 3>
{
    T elements[9]; ///< Element (r, c) at r*3 + c.

    /// The identity.
    TMatrix3x3() { this->ToIdentity(); }
    /// Reads nine values, row by row.
    template <class P, EnableForPointer<P, T> = 0>
    TMatrix3x3(P values)
        : elements{values[0], values[1], values[2], values[3], values[4], values[5], values[6], values[7], values[8]}
    {}
    /// Takes nine values, row by row.
    TMatrix3x3(T const& a00, T const& a01, T const& a02, T const& a10, T const& a11, T const& a12, T const& a20,
               T const& a21, T const& a22)
        : elements{a00, a01, a02, a10, a11, a12, a20, a21, a22}
    {}
    /// Takes three vectors as columns: the first row is (a.x, b.x, c.x).
    TMatrix3x3(TVector3<T> const& a, TVector3<T> const& b, TVector3<T> const& c)
        : elements{a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z}
    {}

    /// The upper-left block.
    operator TMatrix2x2<T>() const { return TMatrix2x2<T>(elements[0], elements[1], elements[3], elements[4]); }
    /// This block in the upper left, 1 at (3, 3).
    operator TMatrix4x4<T>() const
    {
        T const* const e = elements;
        return TMatrix4x4<T>(e[0], e[1], e[2], T(0), e[3], e[4], e[5], T(0), e[6], e[7], e[8], T(0), T(0), T(0), T(0),
                             T(1));
    }

    /// The determinant in closed form, expanded along the first row; the term of its middle element comes first.
    T Determinant() const
    {
        T const* const e = elements;
        return (e[5] * e[6] - e[3] * e[8]) * e[1] + (e[4] * e[8] - e[7] * e[5]) * e[0] +
               (e[7] * e[3] - e[4] * e[6]) * e[2];
    }
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
inline TMatrix3x3<T> TVector3<T>::operator^(TVector3<T> const& other) const
{
    return TMatrix3x3<T>::Outer(*this, other);
}

template <class T>
inline TVector3<T> TVector3<T>::operator*(TMatrix3x3<T> const& matrix) const
{
    return matrix.TimesRow(*this);
}
template <class T>
inline TVector3<T> TVector3<T>::operator*(TMatrix2x2<T> const& matrix) const
{
    return *this * static_cast<TMatrix3x3<T>>(matrix);
}
template <class T>
inline TVector3<T> TVector3<T>::operator*(TMatrix4x4<T> const& matrix) const
{
    return *this * static_cast<TMatrix3x3<T>>(matrix);
}

template <class T>
inline TVector3<T>& TVector3<T>::operator*=(TMatrix2x2<T> const& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector3<T>& TVector3<T>::operator*=(TMatrix3x3<T> const& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector3<T>& TVector3<T>::operator*=(TMatrix4x4<T> const& matrix)
{
    return *this = *this * matrix;
}

extern template struct SquareMatrixOperations<TMatrix3x3<float>, float, 3>;
extern template struct SquareMatrixOperations<TMatrix3x3<double>, double, 3>;
extern template struct TMatrix3x3<float>;
extern template struct TMatrix3x3<double>;

} // namespace Halmont::Orrin::CorvexMaths

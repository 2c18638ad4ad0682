#pragma once

/// The 4 by 4 matrix, and the products of vectors with it.

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 4 by 4 matrix by value, its elements row by row.
template <class T>
struct CORVEX_API TMatrix4x4 : SquareMatrixOperations<TMatrix4x4<T>, T, 4>
{
    T elements[16]; ///< Element (r, c) at r*4 + c.

    /// The identity.
    TMatrix4x4() { this->ToIdentity(); }
    /// Reads sixteen values, row by row.
    template <class P, EnableForPointer<P, T> = 0>
    TMatrix4x4(P values)
    {
        for (unsigned int i = 0; i < 16; ++i) elements[i] = values[i];
    }
    /// Takes sixteen values, row by row.
    TMatrix4x4(const T& a00, const T& a01, const T& a02, const T& a03, const T& a10, const T& a11, const T& a12,
               const T& a13, const T& a20, const T& a21, const T& a22, const T& a23, const T& a30, const T& a31,
               const T& a32, const T& a33)
        : elements{a00, a01, a02, a03, a10, a11, a12, a13, a20, a21, a22, a23, a30, a31, a32, a33}
    {}
    /// Takes four vectors as columns: the first row is (a.x, b.x, c.x, d.x).
    TMatrix4x4(const TVector4<T>& a, const TVector4<T>& b, const TVector4<T>& c, const TVector4<T>& d)
        : elements{a.x, b.x, c.x, d.x, a.y, b.y, c.y, d.y, a.z, b.z, c.z, d.z, a.w, b.w, c.w, d.w}
    {}

    /// The upper-left block of order 2.
    operator TMatrix2x2<T>() const { return TMatrix2x2<T>(elements[0], elements[1], elements[4], elements[5]); }
    /// The upper-left block of order 3.
    operator TMatrix3x3<T>() const
    {
        const T* const e = elements;
        return TMatrix3x3<T>(e[0], e[1], e[2], e[4], e[5], e[6], e[8], e[9], e[10]);
    }

    /// Always true: it makes lists of matrices compile and carries no ordering.
    bool operator<(const TMatrix4x4&) const { return true; }
    /// Always false; see operator<.
    bool operator>(const TMatrix4x4&) const { return false; }

    /// The determinant by LUD of a copy: 0 where that fails, else the parity times the diagonal of the factors,
    /// ascending.
    T Determinant();

    /// Writes the eigenvalues of this matrix and, side by side with them, its unit eigenvectors, 4 each; see
    /// TMatrix3x3::Eigenspace. Only the leading block of order 3 is rotated.
    bool Eigenspace(T* const values, TVector4<T>* const vectors) const;

    // Transforms; see TMatrix3x3 for the flags. In the layout for row vectors a translation stands in the last row.

    /// Multiplies by the rotation by an angle in radians about an axis through the origin; see TMatrix3x3::Rotate.
    void Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows);

    /// Multiplies by the translation by minus the point, by the rotation, and by the translation by the point, one
    /// after the other and each with both flags. Where the flags are equal the result is the rotation about the line
    /// through the point; where they are not, the outer two stand on the wrong sides for that.
    void Rotate(const T& angle, const TVector3<T>& axis, const TVector3<T>& point, bool onRight, bool asRows);

    /// Multiplies by the scaling along the axes; w is not scaled.
    void Scale(T sx, T sy, T sz, bool onRight, bool asRows);

    /// The same about a point, in the three steps of the rotation about one. The point is only read.
    void Scale(TVector3<T>& point, T sx, T sy, T sz, bool onRight, bool asRows);

    /// Multiplies by the translation.
    void Translate(const TVector3<T>& offset, bool onRight, bool asRows);

private:
    /// Multiplies this matrix by m; see TMatrix3x3::Multiply.
    void Multiply(TMatrix4x4* m, bool onRight, bool asRows);
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
inline TMatrix4x4<T> TVector4<T>::operator^(const TVector4<T>& other) const
{
    return TMatrix4x4<T>::Outer(*this, other);
}

template <class T>
inline TVector4<T> TVector4<T>::operator*(const TMatrix4x4<T>& matrix) const
{
    return matrix.TimesRow(*this);
}
template <class T>
inline TVector4<T> TVector4<T>::operator*(const TMatrix2x2<T>& matrix) const
{
    return *this * static_cast<TMatrix4x4<T>>(matrix);
}
template <class T>
inline TVector4<T> TVector4<T>::operator*(const TMatrix3x3<T>& matrix) const
{
    return *this * static_cast<TMatrix4x4<T>>(matrix);
}

template <class T>
inline TVector4<T>& TVector4<T>::operator*=(const TMatrix2x2<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector4<T>& TVector4<T>::operator*=(const TMatrix3x3<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector4<T>& TVector4<T>::operator*=(const TMatrix4x4<T>& matrix)
{
    return *this = *this * matrix;
}

extern template struct SquareMatrixOperations<TMatrix4x4<float>, float, 4>;
extern template struct SquareMatrixOperations<TMatrix4x4<double>, double, 4>;
extern template struct TMatrix4x4<float>;
extern template struct TMatrix4x4<double>;

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

extern template class TList<CorvexMaths::TMatrix4x4<float>>;
extern template class TList<CorvexMaths::TMatrix4x4<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

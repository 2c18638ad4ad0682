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
    TMatrix3x3(const T& a00, const T& a01, const T& a02, const T& a10, const T& a11, const T& a12, const T& a20,
               const T& a21, const T& a22)
        : elements{a00, a01, a02, a10, a11, a12, a20, a21, a22}
    {}
    /// Takes three vectors as columns: the first row is (a.x, b.x, c.x).
    TMatrix3x3(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c)
        : elements{a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z}
    {}

    /// The upper-left block.
    operator TMatrix2x2<T>() const { return TMatrix2x2<T>(elements[0], elements[1], elements[3], elements[4]); }
    /// This block in the upper left, 1 at (3, 3).
    operator TMatrix4x4<T>() const
    {
        const T* const e = elements;
        return TMatrix4x4<T>(e[0], e[1], e[2], T(0), e[3], e[4], e[5], T(0), e[6], e[7], e[8], T(0), T(0), T(0), T(0),
                             T(1));
    }

    /// The determinant in closed form, expanded along the first row; the term of its middle element comes first.
    T Determinant() const
    {
        const T* const e = elements;
        return (e[5] * e[6] - e[3] * e[8]) * e[1] + (e[4] * e[8] - e[7] * e[5]) * e[0] +
               (e[7] * e[3] - e[4] * e[6]) * e[2];
    }

    /// Writes the eigenvalues of this matrix and, side by side with them, its unit eigenvectors, 3 each, by cyclic
    /// rotations of index pairs (C. G. J. Jacobi, 1846; the thresholds of H. Rutishauser, "The Jacobi method for real
    /// symmetric matrices", 1966). The matrix is taken as symmetric: what stands below the diagonal is not read.
    /// Nothing is sorted; values and vectors stand in the order in which the rotations leave them.
    ///
    /// True when the elements above the diagonal became exactly 0 within 49 sweeps and at least one eigenvalue is above
    /// the common tolerance in absolute value (strict). So a zero matrix gives false. The outputs are written either
    /// way.
    ///
    /// A sweep rotates the pairs (0, 1), (0, 2) and (1, 2) and no others, at order 4 and above too: there the result is
    /// true only where all elements above the diagonal in the further columns are 0, and otherwise false with what the
    /// rotations of the leading block left. At order 2 it is the pair (0, 1).
    bool Eigenspace(T* const values, TVector3<T>* const vectors) const;

    // Transforms. Each builder multiplies an elementary transform into this matrix: `onRight` puts the transform on the
    // right of this matrix, otherwise it stands on the left. With `asRows` the transform is laid out for row vectors on
    // the left of a matrix (`v * m`), as the vectors multiply; otherwise it is the transpose of that, for column
    // vectors.

    /// Multiplies this matrix by m. m is given in the layout for row vectors and is transposed in place where `asRows`
    /// is false; it is left that way.
    void Multiply(TMatrix3x3* m, bool onRight, bool asRows);

    /// Multiplies by the rotation by an angle in radians about an axis through the origin, counter-clockwise as seen
    /// from the tip of the axis. The axis need not be of unit length; one of length 0 leaves the quaternion of the
    /// rotation without a vector part, which makes the identity.
    void Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows);

    /// Multiplies by the scaling along the axes. Its layout is the same for rows and columns.
    void Scale(T sx, T sy, T sz, bool onRight, bool asRows);

    /// Makes the rows a right-handed orthonormal frame: the first row is normalised, the third becomes its cross
    /// product with the second, the second that of the third with the first, and both are normalised. Rows of length 0
    /// stay so: a first row of zeros, or parallel first rows (but for rounding), make the other two zeros.
    void ToOrthonormal();
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
inline TMatrix3x3<T> TVector3<T>::operator^(const TVector3<T>& other) const
{
    return TMatrix3x3<T>::Outer(*this, other);
}

template <class T>
inline TVector3<T> TVector3<T>::operator*(const TMatrix3x3<T>& matrix) const
{
    return matrix.TimesRow(*this);
}
template <class T>
inline TVector3<T> TVector3<T>::operator*(const TMatrix2x2<T>& matrix) const
{
    return *this * static_cast<TMatrix3x3<T>>(matrix);
}
template <class T>
inline TVector3<T> TVector3<T>::operator*(const TMatrix4x4<T>& matrix) const
{
    return *this * static_cast<TMatrix3x3<T>>(matrix);
}

template <class T>
inline TVector3<T>& TVector3<T>::operator*=(const TMatrix2x2<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector3<T>& TVector3<T>::operator*=(const TMatrix3x3<T>& matrix)
{
    return *this = *this * matrix;
}
template <class T>
inline TVector3<T>& TVector3<T>::operator*=(const TMatrix4x4<T>& matrix)
{
    return *this = *this * matrix;
}

extern template struct SquareMatrixOperations<TMatrix3x3<float>, float, 3>;
extern template struct SquareMatrixOperations<TMatrix3x3<double>, double, 3>;
extern template struct TMatrix3x3<float>;
extern template struct TMatrix3x3<double>;

} // namespace Halmont::Orrin::CorvexMaths

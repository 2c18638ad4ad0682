#pragma once

/// The 3 by 3 matrix, and the products of vectors with it.

#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 3 by 3 matrix by value, its elements row by row: 9 values, trivially copyable. What it shares with the other
/// orders stands in SquareMatrixOperations.
///
/// Rotate, Scale and Multiply multiply an elementary transform into this matrix and share two flags. `onRight` puts the
/// transform on the right of this matrix, otherwise it stands on the left. With `asRows` the transform is laid out for
/// row vectors on the left of a matrix (`v * m`), as the vectors multiply; otherwise it is the transpose of that, for
/// column vectors.
template <class T>
struct CORVEX_API TMatrix3x3 : SquareMatrixOperations<TMatrix3x3<T>, T, 3>
{
    T elements[9]; ///< Element (r, c) at r*3 + c.

    /// The identity.
    TMatrix3x3() { this->ToIdentity(); }
    /// Reads nine values, row by row. P is a pointer to T, and not null.
    template <class P, class = IfRealPointer<P, const T*>>
    TMatrix3x3(P values)
    {
        CORVEX_PRECONDITION("TMatrix3x3::TMatrix3x3", values != nullptr, values);
        for (unsigned int i = 0; i < 9; ++i) elements[i] = values[i];
    }
    /// The matrix of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each element.
    template <class S, EnableForOther<S, T> = 0>
    explicit TMatrix3x3(const TMatrix3x3<S>& other)
    {
        for (unsigned int i = 0; i < 9; ++i) elements[i] = static_cast<T>(other.elements[i]);
    }
    /// Takes nine values, row by row: `a01` is the element in row 0 and column 1.
    TMatrix3x3(const T& a00, const T& a01, const T& a02, const T& a10, const T& a11, const T& a12, const T& a20,
               const T& a21, const T& a22)
        : elements{a00, a01, a02, a10, a11, a12, a20, a21, a22}
    {}
    /// Takes three vectors as columns: the first row is (a.x, b.x, c.x).
    TMatrix3x3(const TVector3<T>& a, const TVector3<T>& b, const TVector3<T>& c)
        : elements{a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z}
    {}

    /// The upper-left block of order 2; the third row and column are dropped.
    operator TMatrix2x2<T>() const { return TMatrix2x2<T>(elements[0], elements[1], elements[3], elements[4]); }
    /// The matrix of order 4 with this block in the upper left, 1 at (3, 3) and 0 elsewhere.
    operator TMatrix4x4<T>() const
    {
        const T* const e = elements;
        return TMatrix4x4<T>(e[0], e[1], e[2], T(0), e[3], e[4], e[5], T(0), e[6], e[7], e[8], T(0), T(0), T(0), T(0),
                             T(1));
    }

    using SquareMatrixOperations<TMatrix3x3, T, 3>::operator==;
    using SquareMatrixOperations<TMatrix3x3, T, 3>::operator!=;

    /// The determinant in closed form, expanded along the first row; the term of its middle element comes first, then
    /// those of the first and the last. Every step is rounded to T.
    T Determinant() const
    {
        const T* const e = elements;
        return (e[5] * e[6] - e[3] * e[8]) * e[1] + (e[4] * e[8] - e[7] * e[5]) * e[0] +
               (e[7] * e[3] - e[4] * e[6]) * e[2];
    }

    /// Writes the 3 eigenvalues of this matrix and, entry by entry beside them, its unit eigenvectors, by cyclic
    /// rotations of index pairs (C. G. J. Jacobi, 1846; the thresholds of Rutishauser, "The Jacobi method for real
    /// symmetric matrices", 1966). The matrix is taken as symmetric: what stands below the diagonal is not read.
    /// Nothing is sorted; values and vectors stand in the order in which the rotations leave them. Neither array may be
    /// null, nor overlap the other.
    ///
    /// True when the elements above the diagonal became exactly 0 within 49 sweeps and at least one eigenvalue is above
    /// the common tolerance in absolute value (strict). So the zero matrix gives false, as does a NaN above the
    /// diagonal; an infinity can give true with values that are not finite. The outputs are written either way.
    [[nodiscard]] bool Eigenspace(T* const values, TVector3<T>* const vectors) const;

    // Transforms.

    /// Multiplies this matrix by m: this times m where `onRight`, else m times this. m is given in the layout for row
    /// vectors and is transposed in place where `asRows` is false; it is left that way. m must not be null; given this
    /// very matrix, it is squared, after it was transposed where `asRows` is false.
    /// @param[in,out] m The factor; transposed in place unless `asRows`.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
    void Multiply(TMatrix3x3* m, bool onRight, bool asRows);

    /// Multiplies by the rotation by an angle in radians about an axis through the origin, counter-clockwise as seen
    /// from the tip of the axis. `onRight` and `asRows` are those of the class. The axis need not be of unit length;
    /// one of length exactly 0 leaves the quaternion of the rotation without a vector part, which makes the identity,
    /// whatever the angle. The angle may be an element of this matrix.
    /// @param angle In radians.
    /// @param axis Of any length.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
    void Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows);

    /// Multiplies by the scaling by sx, sy and sz along the axes, on the side that `onRight` says. It is the same in
    /// both layouts, so that `asRows` changes nothing. Factors of 0 or below are taken as they are.
    /// @param sx, sy, sz The factors along the axes.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Has no effect.
    void Scale(T sx, T sy, T sz, bool onRight, bool asRows);

    /// Makes the rows a right-handed orthonormal frame: the first row is normalised, the third becomes its cross
    /// product with the second, the second that of the third with the first, and both are normalised. The third row as
    /// it was is not used. A row of length exactly 0 is not divided: a first row of zeros, or first and second rows
    /// that are parallel (but for rounding), make the other two zeros. Nothing reports it.
    void ToOrthonormal();
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

extern template struct SquareMatrixOperations<TMatrix3x3<float>, float, 3>;
extern template struct SquareMatrixOperations<TMatrix3x3<double>, double, 3>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TMatrix3x3);

} // namespace Halmont::Orrin::CorvexMaths

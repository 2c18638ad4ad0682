#pragma once

/// The 4 by 4 matrix, and the products of vectors with it.

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 4 by 4 matrix by value, its elements row by row: 16 values, trivially copyable. What it shares with the other
/// orders stands in SquareMatrixOperations.
///
/// Rotate, Scale and Translate multiply an elementary transform into this matrix and share two flags. `onRight` puts
/// the transform on the right of this matrix, otherwise it stands on the left. With `asRows` the transform is laid out
/// for row vectors on the left of a matrix (`v * m`), as the vectors multiply, and a translation stands in the last
/// row; otherwise it is the transpose of that, for column vectors.
template <class T>
struct CORVEX_API TMatrix4x4 : SquareMatrixOperations<TMatrix4x4<T>, T, 4>
{
    T elements[16]; ///< Element (r, c) at r*4 + c.

    /// The identity.
    TMatrix4x4() { this->ToIdentity(); }
    /// Reads sixteen values, row by row. P is a pointer to T, and not null.
    template <class P, class = IfRealPointer<P, const T*>>
    TMatrix4x4(P values)
    {
        CORVEX_PRECONDITION("TMatrix4x4::TMatrix4x4", values != nullptr, values);
        for (unsigned int i = 0; i < 16; ++i) elements[i] = values[i];
    }
    /// The matrix of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each element.
    template <class S, EnableForOther<S, T> = 0>
    explicit TMatrix4x4(const TMatrix4x4<S>& other)
    {
        for (unsigned int i = 0; i < 16; ++i) elements[i] = static_cast<T>(other.elements[i]);
    }
    /// Takes sixteen values, row by row: `a01` is the element in row 0 and column 1.
    TMatrix4x4(const T& a00, const T& a01, const T& a02, const T& a03, const T& a10, const T& a11, const T& a12,
               const T& a13, const T& a20, const T& a21, const T& a22, const T& a23, const T& a30, const T& a31,
               const T& a32, const T& a33)
        : elements{a00, a01, a02, a03, a10, a11, a12, a13, a20, a21, a22, a23, a30, a31, a32, a33}
    {}
    /// Takes four vectors as columns: the first row is (a.x, b.x, c.x, d.x).
    TMatrix4x4(const TVector4<T>& a, const TVector4<T>& b, const TVector4<T>& c, const TVector4<T>& d)
        : elements{a.x, b.x, c.x, d.x, a.y, b.y, c.y, d.y, a.z, b.z, c.z, d.z, a.w, b.w, c.w, d.w}
    {}

    /// The upper-left block of order 2; the further rows and columns are dropped.
    operator TMatrix2x2<T>() const { return TMatrix2x2<T>(elements[0], elements[1], elements[4], elements[5]); }
    /// The upper-left block of order 3; the last row and column, and with them any translation, are dropped.
    operator TMatrix3x3<T>() const
    {
        const T* const e = elements;
        return TMatrix3x3<T>(e[0], e[1], e[2], e[4], e[5], e[6], e[8], e[9], e[10]);
    }

    using SquareMatrixOperations<TMatrix4x4, T, 4>::operator==;
    using SquareMatrixOperations<TMatrix4x4, T, 4>::operator!=;

    /// Always true, whatever the operands: it makes lists of matrices compile and carries no ordering.
    bool operator<(const TMatrix4x4&) const { return true; }
    /// Always false, whatever the operands: it makes lists of matrices compile and carries no ordering.
    bool operator>(const TMatrix4x4&) const { return false; }

    /// The determinant by LUD of a copy: 0 where that fails, else the parity times the diagonal of the factors,
    /// ascending. Where a pivot comes out exactly 0 the pivot guard stands for it, so that a singular matrix need not
    /// give exactly 0.
    T Determinant() const;

    /// Writes 4 eigenvalues of this matrix and, entry by entry beside them, its unit eigenvectors, by cyclic rotations
    /// of index pairs (C. G. J. Jacobi, 1846). The matrix is taken as symmetric: what stands below the diagonal is not
    /// read. Nothing is sorted. Neither array may be null, nor overlap the other.
    ///
    /// A sweep rotates the pairs of the leading block of order 3 and no others. The result is therefore true only where
    /// the last column holds exact zeros above the diagonal, the block's elements above its diagonal became exactly 0
    /// within 49 sweeps, and at least one eigenvalue is above the common tolerance in absolute value (strict).
    /// Otherwise, and with a NaN above the diagonal, it is false and the outputs hold what the rotations left.
    [[nodiscard]] bool Eigenspace(T* const values, TVector4<T>* const vectors) const;

    // Transforms.

    /// Multiplies by the rotation by an angle in radians about an axis through the origin, counter-clockwise as seen
    /// from the tip of the axis. `onRight` and `asRows` are those of the class. The axis need not be of unit length;
    /// one of length exactly 0 makes the identity, whatever the angle. The angle may be an element of this matrix.
    /// @param angle In radians.
    /// @param axis Of any length.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
    void Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows);

    /// Multiplies by the translation by minus the point, by the rotation, and by the translation by the point, one
    /// after the other and each with both flags. The rotation is by an angle in radians about the axis, which need not
    /// be of unit length; one of length exactly 0 makes it the identity. Where the flags are equal the result is the
    /// rotation about the line through the point; where they are not, the outer two stand on the wrong sides for that.
    /// @param angle In radians.
    /// @param axis Of any length.
    /// @param point A point that stays where it is.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
    void Rotate(const T& angle, const TVector3<T>& axis, const TVector3<T>& point, bool onRight, bool asRows);

    /// Multiplies by the scaling by sx, sy and sz along the axes, on the side that `onRight` says; w is not scaled. It
    /// is the same in both layouts, so that `asRows` changes nothing. Factors of 0 or below are taken as they are.
    /// @param sx, sy, sz The factors along the axes.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Has no effect.
    void Scale(T sx, T sy, T sz, bool onRight, bool asRows);

    /// Multiplies by the translation by minus the point, by the scaling by sx, sy and sz along the axes, and by the
    /// translation by the point, one after the other and each with both flags. Where the flags are equal the point
    /// stays where it is; where they are not, the outer two stand on the wrong sides for that.
    /// @param point The point that stays where it is.
    /// @param sx, sy, sz The factors along the axes.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
    void Scale(const TVector3<T>& point, T sx, T sy, T sz, bool onRight, bool asRows);

    /// Multiplies by the translation by an offset, with `onRight` and `asRows` as the class has them: of the identity
    /// it makes a matrix with the offset in the last row where `asRows`, else in the last column.
    /// @param offset By which points move.
    /// @param onRight Whether it stands on the right of this matrix.
    /// @param asRows Whether it is laid out for row vectors, v * m.
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

extern template struct SquareMatrixOperations<TMatrix4x4<float>, float, 4>;
extern template struct SquareMatrixOperations<TMatrix4x4<double>, double, 4>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TMatrix4x4);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

extern template class TList<CorvexMaths::TMatrix4x4<float>>;
extern template class TList<CorvexMaths::TMatrix4x4<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

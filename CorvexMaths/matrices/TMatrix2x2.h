#pragma once

/// The 2 by 2 matrix, and the products of vectors with it.

#include <CorvexMaths/matrices/SquareMatrixOperations.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A 2 by 2 matrix by value, its elements row by row: 4 values, trivially copyable. What it shares with the other
/// orders stands in SquareMatrixOperations.
template <class T>
struct CORVEX_API TMatrix2x2 : SquareMatrixOperations<TMatrix2x2<T>, T, 2>
{
    T elements[4]; ///< Element (r, c) at r*2 + c.

    /// The identity.
    TMatrix2x2() { this->ToIdentity(); }
    /// Reads four values, row by row. P is a pointer to T, and not null.
    template <class P, class = IfRealPointer<P, const T*>>
    TMatrix2x2(P values)
    {
        CORVEX_PRECONDITION("TMatrix2x2::TMatrix2x2", values != nullptr, values);
        for (unsigned int i = 0; i < 4; ++i) elements[i] = values[i];
    }
    /// The matrix of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each element.
    template <class S, EnableForOther<S, T> = 0>
    explicit TMatrix2x2(const TMatrix2x2<S>& other)
    {
        for (unsigned int i = 0; i < 4; ++i) elements[i] = static_cast<T>(other.elements[i]);
    }
    /// Takes four values, row by row: `a01` is the element in row 0 and column 1.
    TMatrix2x2(const T& a00, const T& a01, const T& a10, const T& a11) : elements{a00, a01, a10, a11} {}
    /// Takes two vectors as columns: the first row is (a.x, b.x), the second (a.y, b.y).
    TMatrix2x2(const TVector2<T>& a, const TVector2<T>& b) : elements{a.x, b.x, a.y, b.y} {}

    /// The matrix of order 3 with this block in the upper left, 1 at (2, 2) and 0 elsewhere.
    operator TMatrix3x3<T>() const
    {
        const T* const e = elements;
        return TMatrix3x3<T>(e[0], e[1], T(0), e[2], e[3], T(0), T(0), T(0), T(1));
    }
    /// The matrix of order 4 with this block in the upper left, 1 at (2, 2) and (3, 3) and 0 elsewhere.
    operator TMatrix4x4<T>() const { return static_cast<TMatrix3x3<T>>(*this); }

    using SquareMatrixOperations<TMatrix2x2, T, 2>::operator==;
    using SquareMatrixOperations<TMatrix2x2, T, 2>::operator!=;

    /// Divides every element by a scalar, which may be one of the elements: its value at the start counts. These are
    /// true divisions; a scalar of 0 gives infinities, and NaN for elements of 0 or NaN. Unlike the other matrices, it
    /// returns a copy of the changed matrix, not a reference.
    TMatrix2x2 operator/=(const T& scalar)
    {
        SquareMatrixOperations<TMatrix2x2<T>, T, 2>::operator/=(scalar);
        return *this;
    }

    /// The determinant in closed form: a11*a00 - a10*a01, each product and the difference rounded to T.
    T Determinant() const
    {
        const T* const e = elements;
        return e[3] * e[0] - e[2] * e[1];
    }

    /// Writes the 2 eigenvalues of this matrix and, entry by entry beside them, its unit eigenvectors, by rotations of
    /// the index pair (0, 1) (C. G. J. Jacobi, 1846). The matrix is taken as symmetric: element (1, 0) is not read.
    /// Nothing is sorted. Neither array may be null, nor overlap the other.
    ///
    /// True when element (0, 1) became exactly 0 within 49 sweeps and at least one eigenvalue is above the common
    /// tolerance in absolute value (strict). So the zero matrix gives false, as does a NaN at (0, 1); an infinity there
    /// can give true with values that are not finite. The outputs are written either way.
    [[nodiscard]] bool Eigenspace(T* const values, TVector2<T>* const vectors) const;
};

} // namespace Halmont::Orrin::CorvexMaths

// The conversions join the three orders, so whoever has one has all.
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>

namespace Halmont::Orrin::CorvexMaths
{

extern template struct SquareMatrixOperations<TMatrix2x2<float>, float, 2>;
extern template struct SquareMatrixOperations<TMatrix2x2<double>, double, 2>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TMatrix2x2);

} // namespace Halmont::Orrin::CorvexMaths

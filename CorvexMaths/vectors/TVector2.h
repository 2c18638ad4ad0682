#pragma once

/// The vector of two components: points, directions and differences of the plane.

#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/vectors/VectorOperations.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A vector (x, y): exactly its two components, contiguous, trivially copyable and without further state.
///
/// VectorOperations holds the arithmetic that all vectors share; `%` is the dot product. Angles are in radians; lengths
/// have the unit of the components. Products with matrices need the headers of these. Outputs are not null, which debug
/// builds check.
template <class T>
struct TVector2 : VectorOperations<TVector2<T>, T>
{
    T x = T(0); ///< The first component.
    T y = T(0); ///< The second component.

    /// The zero vector.
    constexpr TVector2() = default;

    /// The vector of the given components.
    constexpr TVector2(T xValue, T yValue) : x(xValue), y(yValue) {}

    /// The vector of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each
    /// component.
    template <class S, EnableForOther<S, T> = 0>
    constexpr explicit TVector2(const TVector2<S>& other) : x(static_cast<T>(other.x)), y(static_cast<T>(other.y))
    {}

    /// Copies two components from an array, which is not null. Only real pointers take part, so that a vector of
    /// another size converts.
    template <class P, class = IfRealPointer<P, const T*>>
    constexpr TVector2(P components)
    {
        CORVEX_PRECONDITION("TVector2::TVector2", components != nullptr, components);
        x = components[0];
        y = components[1];
    }

    /// The vector (x, y, 0).
    operator TVector3<T>() const { return TVector3<T>(x, y, T(0)); }

    /// The homogeneous point (x, y, 0, 1).
    operator TVector4<T>() const { return TVector4<T>(x, y, T(0), T(1)); }

    using VectorOperations<TVector2, T>::operator==;
    using VectorOperations<TVector2, T>::operator!=;
    using VectorOperations<TVector2, T>::operator*;
    using VectorOperations<TVector2, T>::operator*=;

    /// The row vector times a matrix: component j is the sum over i, ascending, of this[i] times matrix[i][j].
    TVector2 operator*(const TMatrix2x2<T>& matrix) const { return matrix.TimesRow(*this); }
    /// The row vector times the upper left 2 by 2 block of a matrix: component j is the sum over i, ascending, of
    /// this[i] times matrix[i][j]. A translation in the last row is left out.
    TVector2 operator*(const TMatrix3x3<T>& matrix) const { return *this * static_cast<TMatrix2x2<T>>(matrix); }
    /// The row vector times the upper left 2 by 2 block of a matrix: component j is the sum over i, ascending, of
    /// this[i] times matrix[i][j]. A translation in the last row is left out.
    TVector2 operator*(const TMatrix4x4<T>& matrix) const { return *this * static_cast<TMatrix2x2<T>>(matrix); }
    /// The row vector times the matrix converted to TMatrix2x2: its upper left block, with the identity where it has no
    /// rows or columns. Component j is the sum over i, ascending, of this[i] times that matrix's element [i][j].
    TVector2 operator*(const TMatrixMxN<T>& matrix) const { return *this * static_cast<TMatrix2x2<T>>(matrix); }

    /// Replaces the row vector by its product with a matrix: component j is the sum over i, ascending, of this[i] times
    /// matrix[i][j]. It is computed in full before it is stored.
    TVector2& operator*=(const TMatrix2x2<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the upper left 2 by 2 block of a matrix: component j is the sum over
    /// i, ascending, of this[i] times matrix[i][j]. A translation in the last row is left out.
    TVector2& operator*=(const TMatrix3x3<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the upper left 2 by 2 block of a matrix: component j is the sum over
    /// i, ascending, of this[i] times matrix[i][j]. A translation in the last row is left out.
    TVector2& operator*=(const TMatrix4x4<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the matrix converted to TMatrix2x2: its upper left block, with the
    /// identity where it has no rows or columns. Component j is the sum over i, ascending, of this[i] times that
    /// matrix's element [i][j].
    TVector2& operator*=(const TMatrixMxN<T>& matrix) { return *this = *this * matrix; }

    /// The outer product: element [i][j] is this[i] times other[j].
    TMatrix2x2<T> operator^(const TVector2& other) const { return TMatrix2x2<T>::Outer(*this, other); }

    /// The two-dimensional cross product: twice the signed area of the triangle that the two vectors span from the
    /// origin, positive when the other lies counter-clockwise of this.
    T SignedArea(const TVector2& other) const { return x * other.y - y * other.x; }

    /// The direction of the vector in radians, counter-clockwise from the x axis, from 0 up to a full turn; a y of 0
    /// counts as the upper half, so that (-1, 0) gives pi. A length of exactly 0 gives 0; NaN gives NaN.
    T Angle() const;

    /// The angle in radians counter-clockwise from this vector to another, above 0 and up to and including a full turn:
    /// vectors of one direction give the full turn, or 0 or nearly so where rounding tells them apart; opposite ones
    /// give pi. If either has a length of exactly 0, the result is 0; NaN gives NaN. Neither needs to be of unit
    /// length.
    T AngleWith(const TVector2& other) const;

    /// Whether the two vectors have the same direction: the dot product of their normalised copies is 1 within the
    /// absolute, inclusive tolerance. Opposite vectors are not parallel here. A zero vector has the product 0 and is
    /// parallel to none unless the tolerance reaches 1; NaN gives false.
    bool IsParallelTo(const TVector2& other, T tolerance) const;

    /// Whether the dot product of the vectors as they are is 0 within the absolute, inclusive tolerance. Nothing is
    /// normalised, so the result depends on the lengths. The zero vector is orthogonal to all; NaN gives false.
    bool IsOrthogonalTo(const TVector2& other, T tolerance) const;

    /// Writes the unit vector a quarter turn clockwise from this, (y, -x) normalised; a length of exactly 0 gives a
    /// zero vector. `out` may be this vector, and is not null.
    void Orthonormal(TVector2* out) const;

private:
    friend struct VectorOperations<TVector2, T>;

    template <class F>
    static TVector2 Each(F f)
    {
        return TVector2(f(&TVector2::x), f(&TVector2::y));
    }
    template <class F>
    static T Sum(F f)
    {
        return f(&TVector2::x) + f(&TVector2::y);
    }
    template <class F>
    static bool All(F f)
    {
        return f(&TVector2::x) && f(&TVector2::y);
    }
};

extern template struct VectorOperations<TVector2<float>, float>;
extern template struct VectorOperations<TVector2<double>, double>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TVector2);

} // namespace Halmont::Orrin::CorvexMaths

// The vectors convert to one another; each header brings the others in once its own class is complete.
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

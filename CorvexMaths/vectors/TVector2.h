#pragma once

/// The vector of two components: points, directions and differences of the plane.

#include <CorvexMaths/vectors/VectorOperations.h>

#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{

/// A vector (x, y): exactly its two components, contiguous, trivially copyable and without further state.
///
/// The arithmetic that all vectors share stands in VectorOperations; `%` is the dot product. There is no conversion
/// between `float` and `double` vectors. Angles are in radians.
template <class T>
struct TVector2 : VectorOperations<TVector2<T>, T>
{
    T x = T(0); ///< The first component.
    T y = T(0); ///< The second component.

    /// The zero vector.
    constexpr TVector2() = default;

    /// The vector of the given components.
    constexpr TVector2(T xValue, T yValue) : x(xValue), y(yValue) {}

    /// Copies two components from an array. Only real pointers take part, so that a vector of another size converts.
    template <class P, std::enable_if_t<std::is_same_v<P, T*> || std::is_same_v<P, const T*>, int> = 0>
    constexpr TVector2(P components) : x(components[0]), y(components[1])
    {}

    /// The vector (x, y, 0).
    operator TVector3<T>() const { return TVector3<T>(x, y, T(0)); }

    /// The homogeneous point (x, y, 0, 1).
    operator TVector4<T>() const { return TVector4<T>(x, y, T(0), T(1)); }

    using VectorOperations<TVector2, T>::operator*;
    using VectorOperations<TVector2, T>::operator*=;

    /// The row vector times a matrix: component j is the sum over i, ascending, of this[i] times matrix[i][j].
    /// The body comes with the matrix, as do those of all products with matrices.
    inline TVector2 operator*(const TMatrix2x2<T>& matrix) const;
    /// The row vector times the upper left 2 by 2 block of a matrix.
    inline TVector2 operator*(const TMatrix3x3<T>& matrix) const;
    /// The row vector times the upper left 2 by 2 block of a matrix.
    inline TVector2 operator*(const TMatrix4x4<T>& matrix) const;
    /// The row vector times the matrix converted to TMatrix2x2.
    inline TVector2 operator*(const TMatrixMxN<T>& matrix) const;

    /// Replaces the vector by its product with a matrix, as `*` forms it; computed in full before it is stored.
    inline TVector2& operator*=(const TMatrix2x2<T>& matrix);
    /// Replaces the vector by its product with the upper left 2 by 2 block of a matrix.
    inline TVector2& operator*=(const TMatrix3x3<T>& matrix);
    /// Replaces the vector by its product with the upper left 2 by 2 block of a matrix.
    inline TVector2& operator*=(const TMatrix4x4<T>& matrix);
    /// Replaces the vector by its product with the matrix converted to TMatrix2x2.
    inline TVector2& operator*=(const TMatrixMxN<T>& matrix);

    /// The outer product: element [i][j] is this[i] times other[j].
    inline TMatrix2x2<T> operator^(const TVector2& other) const;

    /// The two-dimensional cross product: twice the signed area of the triangle that the two vectors span from the
    /// origin, positive when the other lies counter-clockwise of this.
    T SignedArea(const TVector2& other) const { return x * other.y - y * other.x; }

    /// The direction of the vector, counter-clockwise from the x axis, from 0 up to a full turn; 0 for the zero vector.
    T Angle() const;

    /// The angle counter-clockwise from this vector to another, above 0 and up to and including a full turn: vectors of
    /// one direction give the full turn, unless rounding tells them apart. If either has no length, the result is 0.
    T AngleWith(const TVector2& other) const;

    /// Whether the two vectors have the same direction: the dot product of their normalised copies is 1 within the
    /// absolute, inclusive tolerance. Opposite vectors are not parallel here; a zero vector has the product 0.
    bool IsParallelTo(const TVector2& other, T tolerance) const;

    /// Whether the dot product of the vectors as they are is 0 within the absolute, inclusive tolerance. Nothing is
    /// normalised, so the answer depends on the lengths.
    bool IsOrthogonalTo(const TVector2& other, T tolerance) const;

    /// Writes the unit vector a quarter turn clockwise from this, (y, -x) normalised. `out` may be this vector.
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
extern template struct TVector2<float>;
extern template struct TVector2<double>;

} // namespace Halmont::Orrin::CorvexMaths

// The vectors convert to one another; each header brings the others in once its own class is complete.
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

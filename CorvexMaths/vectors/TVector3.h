#pragma once

/// The vector of three components: points, directions and differences in space.

#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/vectors/VectorOperations.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A vector (x, y, z): exactly its three components, contiguous, trivially copyable and without further state.
///
/// VectorOperations holds the arithmetic that all vectors share; `%` is the dot product, `*` between two vectors the
/// cross product. Angles are in radians; lengths have the unit of the components. Products with matrices need the
/// headers of these. Outputs are not null, which debug builds check.
template <class T>
struct TVector3 : VectorOperations<TVector3<T>, T>
{
    T x = T(0); ///< The first component.
    T y = T(0); ///< The second component.
    T z = T(0); ///< The third component.

    /// The zero vector.
    constexpr TVector3() = default;

    /// The vector of the given components.
    constexpr TVector3(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}

    /// The vector of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each
    /// component.
    template <class S, EnableForOther<S, T> = 0>
    constexpr explicit TVector3(const TVector3<S>& other)
        : x(static_cast<T>(other.x)), y(static_cast<T>(other.y)), z(static_cast<T>(other.z))
    {}

    /// Copies three components from an array, which is not null. Only real pointers take part, so that a vector of
    /// another size converts.
    template <class P, class = IfRealPointer<P, const T*>>
    constexpr TVector3(P components)
    {
        CORVEX_PRECONDITION("TVector3::TVector3", components != nullptr, components);
        x = components[0];
        y = components[1];
        z = components[2];
    }

    /// The vector (x, y); z is dropped.
    operator TVector2<T>() const { return TVector2<T>(x, y); }

    /// The homogeneous point (x, y, z, 1).
    operator TVector4<T>() const { return TVector4<T>(x, y, z, T(1)); }

    /// The right-handed cross product, this on the left.
    TVector3 operator*(const TVector3& other) const
    {
        // By value: g++ makes better code of it than of six values in memory.
        const TVector3 a = *this;
        const TVector3 b = other;
        return TVector3(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }

    /// Replaces the vector by its cross product with another, this on the left. The other may be this vector.
    TVector3& operator*=(const TVector3& other) { return *this = *this * other; }

    using VectorOperations<TVector3, T>::operator==;
    using VectorOperations<TVector3, T>::operator!=;
    using VectorOperations<TVector3, T>::operator*;
    using VectorOperations<TVector3, T>::operator*=;

    /// The row vector times a matrix: component j is the sum over i, ascending, of this[i] times matrix[i][j].
    TVector3 operator*(const TMatrix3x3<T>& matrix) const { return matrix.TimesRow(*this); }
    /// The row vector times a matrix that is padded with the identity: component j is the sum over i, ascending, of
    /// this[i] times that matrix's element [i][j], its zeros included. So z is kept if all components are finite.
    TVector3 operator*(const TMatrix2x2<T>& matrix) const { return *this * static_cast<TMatrix3x3<T>>(matrix); }
    /// The row vector times the upper left 3 by 3 block of a matrix: component j is the sum over i, ascending, of
    /// this[i] times matrix[i][j]. A translation in the last row is left out: to move a point by a full transform,
    /// convert it to TVector4, multiply and convert back.
    TVector3 operator*(const TMatrix4x4<T>& matrix) const { return *this * static_cast<TMatrix3x3<T>>(matrix); }
    /// The row vector times the matrix converted to TMatrix3x3: its upper left block, with the identity where it has no
    /// rows or columns. Component j is the sum over i, ascending, of this[i] times that matrix's element [i][j].
    TVector3 operator*(const TMatrixMxN<T>& matrix) const { return *this * static_cast<TMatrix3x3<T>>(matrix); }

    /// Replaces the row vector by its product with a matrix: component j is the sum over i, ascending, of this[i] times
    /// matrix[i][j]. It is computed in full before it is stored.
    TVector3& operator*=(const TMatrix3x3<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with a matrix that is padded with the identity: component j is the sum
    /// over i, ascending, of this[i] times that matrix's element [i][j], its zeros included. So z is kept if all
    /// components are finite.
    TVector3& operator*=(const TMatrix2x2<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the upper left 3 by 3 block of a matrix: component j is the sum over
    /// i, ascending, of this[i] times matrix[i][j]. A translation in the last row is left out.
    TVector3& operator*=(const TMatrix4x4<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the matrix converted to TMatrix3x3: its upper left block, with the
    /// identity where it has no rows or columns. Component j is the sum over i, ascending, of this[i] times that
    /// matrix's element [i][j].
    TVector3& operator*=(const TMatrixMxN<T>& matrix) { return *this = *this * matrix; }

    /// The outer product: element [i][j] is this[i] times other[j].
    TMatrix3x3<T> operator^(const TVector3& other) const { return TMatrix3x3<T>::Outer(*this, other); }

    /// The distance between the tips of this vector and another in x and y alone.
    T DiffVectLen2D(const TVector3& other) const
    {
        const T dx = x - other.x;
        const T dy = y - other.y;
        return Numbers::SquareRoot(dx * dx + dy * dy);
    }

    /// The angle in radians from this vector to another, clockwise as seen from the tip of `axis`: above 0 and up to
    /// and including a full turn. It is below half a turn where the other lies strictly on the side of `this * axis`.
    /// Vectors of one direction give the full turn, or 0 or nearly so where rounding tells them apart. A vector without
    /// length gives NaN; so does any NaN. None needs to be of unit length. With an axis of 0 the result is never below
    /// half a turn.
    T AngleWith(const TVector3& other, const TVector3& axis) const;

    /// Whether the squared length of the cross product is 0 within the absolute, inclusive tolerance. Opposite vectors
    /// are parallel, and the zero vector is parallel to all. Nothing is normalised, so the test scales with the fourth
    /// power of the lengths. NaN gives false.
    bool IsParallelTo(const TVector3& other, T tolerance) const;

    /// Whether the dot product of the vectors as they are is 0 within the absolute, inclusive tolerance. Nothing is
    /// normalised, so the result depends on the lengths. The zero vector is orthogonal to all; NaN gives false.
    bool IsOrthogonalTo(const TVector3& other, T tolerance) const;

    /// Writes a unit vector orthogonal to this: this crossed with the axis of its smallest component in size,
    /// normalised. Ties that include z go to z, a tie of x and y alone to y. This need not be of unit length; a length
    /// of exactly 0 gives the zero vector. The output may be this vector, and is not null.
    void OrthonormalX(TVector3* xAxis) const;

    /// Writes two unit vectors that make a right-handed triple with this, in the order this, x, y: what OrthonormalX
    /// gives, and this crossed with it, normalised. This need not be of unit length; a length of exactly 0 gives zero
    /// vectors. `yAxis` may be this vector, `xAxis` may not, for it is written first; neither is null.
    void OrthonormalXY(TVector3* xAxis, TVector3* yAxis) const;

    /// Turns a vector about this one as axis, counter-clockwise as seen from the tip of the axis, by the angle of the
    /// given cosine and sine (O. Rodrigues, 1840). The axis is taken to be of unit length, which no build checks; any
    /// other gives what the formula does. The vector is not null; it may be this one, and cosine and sine its
    /// components.
    void Rotate(TVector3* v, const T& cosine, const T& sine) const;

    /// Turns a vector about this one as axis by an angle in radians, counter-clockwise as seen from the tip of the axis
    /// (O. Rodrigues, 1840). Sine and cosine are evaluated in `double` and narrowed to T. The axis is taken to be of
    /// unit length, which no build checks; any other gives what the formula does. The vector is not null; it may be
    /// this one, and the angle a component of it.
    void Rotate(TVector3* v, const T& angle) const;

private:
    friend struct VectorOperations<TVector3, T>;

    template <class F>
    static TVector3 Each(F f)
    {
        return TVector3(f(&TVector3::x), f(&TVector3::y), f(&TVector3::z));
    }
    template <class F>
    static T Sum(F f)
    {
        return f(&TVector3::x) + f(&TVector3::y) + f(&TVector3::z);
    }
    template <class F>
    static bool All(F f)
    {
        return f(&TVector3::x) && f(&TVector3::y) && f(&TVector3::z);
    }
};

extern template struct VectorOperations<TVector3<float>, float>;
extern template struct VectorOperations<TVector3<double>, double>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TVector3);

} // namespace Halmont::Orrin::CorvexMaths

// The vectors convert to one another; each header brings the others in once its own class is complete.
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector4.h>

#pragma once

/// The vector of four components: homogeneous points of space, or plain vectors of four dimensions.

#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/vectors/VectorOperations.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A vector (x, y, z, w): exactly its four components, contiguous, trivially copyable and without further state.
///
/// VectorOperations holds the arithmetic that all vectors share, which treats w like the other components: scaling,
/// normalising and lengths include it. `%` is the dot product. Lengths have the unit of the components. Products with
/// matrices need the headers of these. Outputs are not null, which debug builds check.
template <class T>
struct TVector4 : VectorOperations<TVector4<T>, T>
{
    T x = T(0); ///< The first component.
    T y = T(0); ///< The second component.
    T z = T(0); ///< The third component.
    T w = T(1); ///< The fourth component: 1 for a homogeneous point.

    /// The homogeneous origin (0, 0, 0, 1); not the zero vector.
    constexpr TVector4() = default;

    /// The vector of the given components.
    constexpr TVector4(T xValue, T yValue, T zValue, T wValue) : x(xValue), y(yValue), z(zValue), w(wValue) {}

    /// The vector of the other scalar: `float` to `double` keeps every value, `double` to `float` rounds each
    /// component.
    template <class S, EnableForOther<S, T> = 0>
    constexpr explicit TVector4(const TVector4<S>& other)
        : x(static_cast<T>(other.x)), y(static_cast<T>(other.y)), z(static_cast<T>(other.z)), w(static_cast<T>(other.w))
    {}

    /// Copies four components from an array, which is not null. Only real pointers take part, so that a vector of
    /// another size converts.
    template <class P, class = IfRealPointer<P, const T*>>
    constexpr TVector4(P components)
    {
        CORVEX_PRECONDITION("TVector4::TVector4", components != nullptr, components);
        x = components[0];
        y = components[1];
        z = components[2];
        w = components[3];
    }

    /// The vector (x, y); z and w are dropped.
    operator TVector2<T>() const { return TVector2<T>(x, y); }

    /// The vector (x, y, z); w is dropped without a division.
    operator TVector3<T>() const { return TVector3<T>(x, y, z); }

    using VectorOperations<TVector4, T>::operator==;
    using VectorOperations<TVector4, T>::operator!=;
    using VectorOperations<TVector4, T>::operator*;
    using VectorOperations<TVector4, T>::operator*=;

    /// The row vector times a matrix: component j is the sum over i, ascending, of this[i] times matrix[i][j].
    TVector4 operator*(const TMatrix4x4<T>& matrix) const { return matrix.TimesRow(*this); }
    /// The row vector times a matrix that is padded with the identity: component j is the sum over i, ascending, of
    /// this[i] times that matrix's element [i][j], its zeros included. So z and w are kept if all components are
    /// finite.
    TVector4 operator*(const TMatrix2x2<T>& matrix) const { return *this * static_cast<TMatrix4x4<T>>(matrix); }
    /// The row vector times a matrix that is padded with the identity: component j is the sum over i, ascending, of
    /// this[i] times that matrix's element [i][j], its zeros included. So w is kept if all components are finite.
    TVector4 operator*(const TMatrix3x3<T>& matrix) const { return *this * static_cast<TMatrix4x4<T>>(matrix); }
    /// The row vector times the matrix converted to TMatrix4x4: its upper left block, with the identity where it has no
    /// rows or columns. Component j is the sum over i, ascending, of this[i] times that matrix's element [i][j].
    TVector4 operator*(const TMatrixMxN<T>& matrix) const { return *this * static_cast<TMatrix4x4<T>>(matrix); }

    /// Replaces the row vector by its product with a matrix: component j is the sum over i, ascending, of this[i] times
    /// matrix[i][j]. It is computed in full before it is stored.
    TVector4& operator*=(const TMatrix4x4<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with a matrix that is padded with the identity: component j is the sum
    /// over i, ascending, of this[i] times that matrix's element [i][j], its zeros included. So z and w are kept if all
    /// components are finite.
    TVector4& operator*=(const TMatrix2x2<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with a matrix that is padded with the identity: component j is the sum
    /// over i, ascending, of this[i] times that matrix's element [i][j], its zeros included. So w is kept if all
    /// components are finite.
    TVector4& operator*=(const TMatrix3x3<T>& matrix) { return *this = *this * matrix; }
    /// Replaces the row vector by its product with the matrix converted to TMatrix4x4: its upper left block, with the
    /// identity where it has no rows or columns. Component j is the sum over i, ascending, of this[i] times that
    /// matrix's element [i][j].
    TVector4& operator*=(const TMatrixMxN<T>& matrix) { return *this = *this * matrix; }

    /// The outer product: element [i][j] is this[i] times other[j].
    TMatrix4x4<T> operator^(const TVector4& other) const { return TMatrix4x4<T>::Outer(*this, other); }

    /// Whether the two vectors have the same direction: the dot product of their normalised copies is 1 within the
    /// absolute, inclusive tolerance. Opposite vectors are not parallel here. A zero vector has the product 0 and is
    /// parallel to none unless the tolerance reaches 1; NaN gives false. w takes part like the others.
    bool IsParallelTo(const TVector4& other, T tolerance) const;

    /// Whether the dot product of the vectors as they are is below the tolerance. Unlike the test of the smaller
    /// vectors it is strict and takes no absolute value: any negative product passes, and 0 fails a tolerance of 0. w
    /// takes part like the others; NaN gives false.
    bool IsOrthogonalTo(const TVector4& other, T tolerance) const;

    /// Writes three unit vectors that are orthogonal to this and to one another, each found from a small linear system
    /// whose other components are set to 1. Costs two LU decompositions, of order 2 and 3.
    ///
    /// False only for the zero vector, which leaves the outputs untouched. A system whose determinant is 0 within the
    /// common tolerance is not solved: its unknowns are read as zeros and the result is still true, but the frame is
    /// not orthogonal, as for (1, 1, -2, 0). A NaN in this gives true and NaN. The outputs are written last: any of
    /// them may be this vector, but none may be another output, and none is null.
    [[nodiscard]] bool OrthonormalXYZ(TVector4* xAxis, TVector4* yAxis, TVector4* zAxis) const;

private:
    friend struct VectorOperations<TVector4, T>;

    template <class F>
    static TVector4 Each(F f)
    {
        return TVector4(f(&TVector4::x), f(&TVector4::y), f(&TVector4::z), f(&TVector4::w));
    }
    template <class F>
    static T Sum(F f)
    {
        return f(&TVector4::x) + f(&TVector4::y) + f(&TVector4::z) + f(&TVector4::w);
    }
    template <class F>
    static bool All(F f)
    {
        return f(&TVector4::x) && f(&TVector4::y) && f(&TVector4::z) && f(&TVector4::w);
    }
};

extern template struct VectorOperations<TVector4<float>, float>;
extern template struct VectorOperations<TVector4<double>, double>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TVector4);

} // namespace Halmont::Orrin::CorvexMaths

// The vectors convert to one another; each header brings the others in once its own class is complete.
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>

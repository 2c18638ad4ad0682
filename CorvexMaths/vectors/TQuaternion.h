#pragma once

/// The quaternion, which carries rotations between axis and angle and matrices.

#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/vectors/HypercomplexOperations.h>
#include <CorvexMaths/vectors/TVector3.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A quaternion (W. R. Hamilton, 1843): exactly its four components, contiguous, trivially copyable and without further
/// state. A unit quaternion stands for a rotation, its scalar part the cosine of half the angle, its vector part the
/// axis times the sine. Nothing keeps a quaternion at unit length; ToMatrix normalises for itself, GetRotation does
/// not. Angles are in radians, matrices are for column vectors on their right.
template <class T>
struct TQuaternion : HypercomplexOperations<TQuaternion<T>, T>
{
    T w = T(0); ///< The scalar part.
    T x = T(0); ///< The first component of the vector part.
    T y = T(0); ///< The second component of the vector part.
    T z = T(0); ///< The third component of the vector part.

    /// The zero quaternion, which is not the identity rotation.
    constexpr TQuaternion() = default;

    /// The quaternion of the given components.
    constexpr TQuaternion(const T& wValue, const T& xValue, const T& yValue, const T& zValue)
        : w(wValue), x(xValue), y(yValue), z(zValue)
    {}

    /// The quaternion of the other scalar: `float` to `double` keeps the values, `double` to `float` rounds each
    /// component.
    template <class S, EnableForOther<S, T> = 0>
    constexpr explicit TQuaternion(const TQuaternion<S>& other)
        : w(static_cast<T>(other.w)), x(static_cast<T>(other.x)), y(static_cast<T>(other.y)), z(static_cast<T>(other.z))
    {}

    /// The rotation by an angle about an axis, counter-clockwise as seen from the tip of the axis. The axis is
    /// normalised first and need not be of unit length; one of length 0 stays as it is and leaves a vector part of
    /// zeros. The angle is in radians. Sine and cosine are evaluated in `double` and narrowed to T.
    TQuaternion(const T& angle, const TVector3<T>& axis);

    /// The rotation of a matrix, which is taken to be proper and orthonormal, as no build checks; any other gives what
    /// the formulas do (S. W. Shepperd, "Quaternion from rotation matrix", 1978). It undoes ToMatrix up to the sign of
    /// the whole quaternion: a scalar part above 0.001 in size comes out positive. Below that the largest diagonal
    /// element leads, the last of equal ones, and its component of the vector part comes out positive.
    TQuaternion(const TMatrix3x3<T>& matrix);

    /// The Hamilton product, this on the left. Of two rotations it is the one that turns by the other first. Nothing is
    /// normalised.
    TQuaternion operator*(const TQuaternion& other) const
    {
        return TQuaternion(w * other.w - x * other.x - y * other.y - z * other.z,
                           w * other.x + x * other.w + y * other.z - z * other.y,
                           w * other.y - x * other.z + y * other.w + z * other.x,
                           w * other.z + x * other.y - y * other.x + z * other.w);
    }

    /// Replaces the quaternion by its Hamilton product with another, this on the left. The other may be this
    /// quaternion. Nothing is normalised.
    TQuaternion& operator*=(const TQuaternion& other) { return *this = *this * other; }

    using HypercomplexOperations<TQuaternion, T>::operator*;
    using HypercomplexOperations<TQuaternion, T>::operator*=;

    /// Flips the sign bits of the vector part in place; the scalar part stays. Of a unit quaternion that is the inverse
    /// rotation.
    void Conjugate()
    {
        x = -x;
        y = -y;
        z = -z;
    }

    /// The rotation matrix of the quaternion divided by its length. It turns a column vector on its right; for a row
    /// vector on the left (`v * m`) transpose it. There is no test of the length: the zero quaternion gives NaN.
    TMatrix3x3<T> ToMatrix() const;

    /// Writes the angle and the unit axis of the rotation. A scalar part that is 1 within the common tolerance
    /// (absolute, inclusive) or above 1 is no rotation: the angle is 0 and the axis (1, 0, 0). Otherwise the angle is
    /// above 0 and at most a full turn, and is not folded into the half turn. The quaternion is not normalised: a
    /// scalar part below -1 counts as -1, and an axis of length 0 stays zero. NaN gives NaN. The outputs are not null
    /// and lie outside this quaternion.
    void GetRotation(T* angle, TVector3<T>* axis) const;

private:
    friend struct HypercomplexOperations<TQuaternion, T>;

    template <class F>
    static TQuaternion Each(F f)
    {
        return TQuaternion(f(&TQuaternion::w), f(&TQuaternion::x), f(&TQuaternion::y), f(&TQuaternion::z));
    }
};

extern template struct HypercomplexOperations<TQuaternion<float>, float>;
extern template struct HypercomplexOperations<TQuaternion<double>, double>;
CORVEX_INSTANTIATE_SCALARS(extern, struct, TQuaternion);

} // namespace Halmont::Orrin::CorvexMaths

// Rotations as quaternions, from and to axis and angle and matrices.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/vectors/TComplex.h>
#include <CorvexMaths/vectors/TQuaternion.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

// The scalar part up to which the division by it is not trusted: 0.001 to the precision of T.
template <class T>
constexpr T smallScalarPart = static_cast<T>(0.001);

} // namespace

template <class T>
TQuaternion<T>::TQuaternion(const T& angle, const TVector3<T>& axis)
{
    const T half = angle * T(0.5);
    TVector3<T> direction = axis;
    direction.Normalise();
    direction *= Numbers::Sine(half);
    *this = TQuaternion(Numbers::Cosine(half), direction.x, direction.y, direction.z);
}

// With a, b, c, d for w, x, y, z, the trace plus 1 is 4a^2, and the differences of elements across the diagonal are
// 4ab, 4ac, 4ad. Likewise each diagonal element plus 1 minus the other two is 4b^2, 4c^2 or 4d^2, with 4bc, 4bd, 4cd as
// the sums across the diagonal. Whichever square is safely above 0 yields its root and, by division, the rest.
template <class T>
TQuaternion<T>::TQuaternion(const TMatrix3x3<T>& m)
{
    // The scalar part leads wherever it can. Its square is summed in double in float code too.
    const double square =
        static_cast<double>(m[0][0]) + 1.0 + static_cast<double>(m[1][1]) + static_cast<double>(m[2][2]);
    if (square > 0.0) w = static_cast<T>(0.5 * Numbers::SquareRoot(square));
    if (!Numbers::IsZero(w, smallScalarPart<T>)) {
        const T s = T(0.25) / w;
        x = (m[2][1] - m[1][2]) * s;
        y = (m[0][2] - m[2][0]) * s;
        z = (m[1][0] - m[0][1]) * s;
        return;
    }

    // Near half a turn a component of the vector part leads: that of the largest diagonal element.
    if (m[0][0] > m[1][1] && m[0][0] > m[2][2]) {
        const T s = T(2) * Numbers::SquareRoot(m[0][0] + T(1) - m[1][1] - m[2][2]);
        w = (m[2][1] - m[1][2]) / s;
        x = s * T(0.25);
        y = (m[1][0] + m[0][1]) / s;
        z = (m[2][0] + m[0][2]) / s;
    } else if (m[1][1] > m[2][2]) {
        const T s = T(2) * Numbers::SquareRoot(m[1][1] + T(1) - m[0][0] - m[2][2]);
        w = (m[0][2] - m[2][0]) / s;
        x = (m[1][0] + m[0][1]) / s;
        y = s * T(0.25);
        z = (m[2][1] + m[1][2]) / s;
    } else {
        const T s = T(2) * Numbers::SquareRoot(m[2][2] + T(1) - m[0][0] - m[1][1]);
        w = (m[1][0] - m[0][1]) / s;
        x = (m[2][0] + m[0][2]) / s;
        y = (m[2][1] + m[1][2]) / s;
        z = s * T(0.25);
    }
}

template <class T>
TMatrix3x3<T> TQuaternion<T>::ToMatrix() const
{
    const TQuaternion unit = *this / Numbers::SquareRoot(w * w + x * x + y * y + z * z);
    const T a = unit.w;
    const T b = unit.x;
    const T c = unit.y;
    const T d = unit.z;
    return TMatrix3x3<T>(b * b + a * a - c * c - d * d, T(2) * (b * c - a * d), T(2) * (b * d + a * c),
                         T(2) * (a * d + b * c), a * a - b * b + c * c - d * d, T(2) * (c * d - a * b),
                         T(2) * (b * d - a * c), T(2) * (a * b + c * d), a * a - b * b - c * c + d * d);
}

template <class T>
void TQuaternion<T>::GetRotation(T* angle, TVector3<T>* axis) const
{
    CORVEX_PRECONDITION("TQuaternion::GetRotation", angle != nullptr && axis != nullptr, angle, axis);
    if (Numbers::IsNear(T(1), w, Numbers::commonTolerance<T>) || w > T(1)) {
        *angle = T(0);
        *axis = TVector3<T>(T(1), T(0), T(0));
        return;
    }
    *angle = T(2) * Numbers::ArcCosine(Numbers::ClampCosine(w));
    *axis = TVector3<T>(x, y, z);
    axis->Normalise();
}

template struct HypercomplexOperations<TComplex<float>, float>;
template struct HypercomplexOperations<TComplex<double>, double>;
template struct HypercomplexOperations<TQuaternion<float>, float>;
template struct HypercomplexOperations<TQuaternion<double>, double>;
CORVEX_INSTANTIATE_SCALARS(, struct, TComplex);
CORVEX_INSTANTIATE_SCALARS(, struct, TQuaternion);

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

// The bodies of the vectors' products with matrices, so that the instantiations below hold them too.
#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

// An angle of 0 to pi when `upper`, else the rest of the full turn.
template <class T>
T UnfoldedAngle(T cosine, bool upper)
{
    const T angle = Numbers::ArcCosine(Numbers::ClampCosine(cosine));
    return upper ? angle : Numbers::fullTurn<T> - angle;
}

// Whether normalised copies have the dot product 1: the parallel test of the two- and the four-dimensional vectors.
template <class V, class T>
bool HaveSameDirection(V a, V b, T tolerance)
{
    a.Normalise();
    b.Normalise();
    return Numbers::IsNear(a % b, T(1), tolerance);
}

} // namespace

template <class T>
T TVector2<T>::Angle() const
{
    const T length = this->GetLength();
    if (length == T(0)) return T(0);
    return UnfoldedAngle(x / length, y >= T(0));
}

template <class T>
T TVector2<T>::AngleWith(const TVector2& other) const
{
    const T lengths = this->GetLength() * other.GetLength();
    if (lengths == T(0)) return T(0);
    const T signedArea = other.x * -y + other.y * x;
    return UnfoldedAngle((*this % other) / lengths, signedArea > T(0));
}

template <class T>
T TVector3<T>::AngleWith(const TVector3& other, const TVector3& axis) const
{
    const T lengths = Numbers::SquareRoot(this->GetLengthSquared() * other.GetLengthSquared());
    const TVector3 near = *this * axis;
    return UnfoldedAngle((*this % other) / lengths, near % other > T(0));
}

template <class T>
bool TVector2<T>::IsParallelTo(const TVector2& other, T tolerance) const
{
    return HaveSameDirection(*this, other, tolerance);
}

template <class T>
bool TVector3<T>::IsParallelTo(const TVector3& other, T tolerance) const
{
    return Numbers::IsZero((*this * other).GetLengthSquared(), tolerance);
}

template <class T>
bool TVector4<T>::IsParallelTo(const TVector4& other, T tolerance) const
{
    return HaveSameDirection(*this, other, tolerance);
}

template <class T>
bool TVector2<T>::IsOrthogonalTo(const TVector2& other, T tolerance) const
{
    return Numbers::IsZero(*this % other, tolerance);
}

template <class T>
bool TVector3<T>::IsOrthogonalTo(const TVector3& other, T tolerance) const
{
    return Numbers::IsZero(*this % other, tolerance);
}

template <class T>
bool TVector4<T>::IsOrthogonalTo(const TVector4& other, T tolerance) const
{
    return tolerance > *this % other;
}

template struct VectorOperations<TVector2<float>, float>;
template struct VectorOperations<TVector2<double>, double>;
template struct VectorOperations<TVector3<float>, float>;
template struct VectorOperations<TVector3<double>, double>;
template struct VectorOperations<TVector4<float>, float>;
template struct VectorOperations<TVector4<double>, double>;
CORVEX_INSTANTIATE_SCALARS(, struct, TVector2);
CORVEX_INSTANTIATE_SCALARS(, struct, TVector3);
CORVEX_INSTANTIATE_SCALARS(, struct, TVector4);

} // namespace Halmont::Orrin::CorvexMaths

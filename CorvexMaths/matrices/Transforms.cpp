// The builders that multiply elementary transforms into the matrices of order 3 and 4.

#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/vectors/TQuaternion.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Multiplies a transform, given in the layout for row vectors, into a matrix; the transform is transposed in place
/// where the layout for column vectors is asked for.
template <class M>
void MultiplyInto(M& matrix, M& transform, bool onRight, bool asRows)
{
    if (!asRows) transform.Transpose();
    matrix = onRight ? matrix * transform : transform * matrix;
}

/// The rotation about an axis through the origin, in the layout for row vectors.
template <class T>
TMatrix3x3<T> RotationAbout(const T& angle, const TVector3<T>& axis)
{
    TMatrix3x3<T> rotation = TQuaternion<T>(angle, axis).ToMatrix();
    rotation.Transpose();
    return rotation;
}

/// The scaling along the axes.
template <class M, class T>
M Scaling(T sx, T sy, T sz)
{
    M scaling;
    scaling[0][0] = sx;
    scaling[1][1] = sy;
    scaling[2][2] = sz;
    return scaling;
}

/// The steps of a transform about a point: the point to the origin, the transform, and back.
template <class T>
void MultiplyAbout(const TVector3<T>& point, TMatrix4x4<T>& matrix, TMatrix4x4<T>& transform, bool onRight, bool asRows)
{
    matrix.Translate(-point, onRight, asRows);
    MultiplyInto(matrix, transform, onRight, asRows);
    matrix.Translate(point, onRight, asRows);
}

} // namespace

// Order 3.

template <class T>
void TMatrix3x3<T>::Multiply(TMatrix3x3* m, bool onRight, bool asRows)
{
    CORVEX_PRECONDITION("TMatrix3x3::Multiply", m != nullptr, m);
    MultiplyInto(*this, *m, onRight, asRows);
}

template <class T>
void TMatrix3x3<T>::Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows)
{
    TMatrix3x3 rotation = RotationAbout(angle, axis);
    Multiply(&rotation, onRight, asRows);
}

template <class T>
void TMatrix3x3<T>::Scale(T sx, T sy, T sz, bool onRight, bool asRows)
{
    TMatrix3x3 scaling = Scaling<TMatrix3x3>(sx, sy, sz);
    Multiply(&scaling, onRight, asRows);
}

template <class T>
void TMatrix3x3<T>::ToOrthonormal()
{
    TVector3<T> first((*this)[0]);
    TVector3<T> second((*this)[1]);
    first.Normalise();
    TVector3<T> third = first * second;
    second = third * first;
    second.Normalise();
    third.Normalise();
    *this = TMatrix3x3(first.x, first.y, first.z, second.x, second.y, second.z, third.x, third.y, third.z);
}

// Order 4.

template <class T>
void TMatrix4x4<T>::Multiply(TMatrix4x4* m, bool onRight, bool asRows)
{
    MultiplyInto(*this, *m, onRight, asRows);
}

template <class T>
void TMatrix4x4<T>::Rotate(const T& angle, const TVector3<T>& axis, bool onRight, bool asRows)
{
    TMatrix4x4 rotation = RotationAbout(angle, axis);
    Multiply(&rotation, onRight, asRows);
}

template <class T>
void TMatrix4x4<T>::Rotate(const T& angle, const TVector3<T>& axis, const TVector3<T>& point, bool onRight, bool asRows)
{
    // Formed before the matrix changes, since the angle may be one of its elements.
    TMatrix4x4 rotation = RotationAbout(angle, axis);
    MultiplyAbout(point, *this, rotation, onRight, asRows);
}

template <class T>
void TMatrix4x4<T>::Scale(T sx, T sy, T sz, bool onRight, bool asRows)
{
    TMatrix4x4 scaling = Scaling<TMatrix4x4>(sx, sy, sz);
    Multiply(&scaling, onRight, asRows);
}

template <class T>
void TMatrix4x4<T>::Scale(const TVector3<T>& point, T sx, T sy, T sz, bool onRight, bool asRows)
{
    TMatrix4x4 scaling = Scaling<TMatrix4x4>(sx, sy, sz);
    MultiplyAbout(point, *this, scaling, onRight, asRows);
}

template <class T>
void TMatrix4x4<T>::Translate(const TVector3<T>& offset, bool onRight, bool asRows)
{
    TMatrix4x4 translation;
    translation[3][0] = offset.x;
    translation[3][1] = offset.y;
    translation[3][2] = offset.z;
    Multiply(&translation, onRight, asRows);
}

#define CORVEX_INSTANTIATE_TRANSFORMS(T)                                                                               \
    template void TMatrix3x3<T>::Multiply(TMatrix3x3*, bool, bool);                                                    \
    template void TMatrix3x3<T>::Rotate(const T&, const TVector3<T>&, bool, bool);                                     \
    template void TMatrix3x3<T>::Scale(T, T, T, bool, bool);                                                           \
    template void TMatrix3x3<T>::ToOrthonormal();                                                                      \
    template void TMatrix4x4<T>::Multiply(TMatrix4x4*, bool, bool);                                                    \
    template void TMatrix4x4<T>::Rotate(const T&, const TVector3<T>&, bool, bool);                                     \
    template void TMatrix4x4<T>::Rotate(const T&, const TVector3<T>&, const TVector3<T>&, bool, bool);                 \
    template void TMatrix4x4<T>::Scale(T, T, T, bool, bool);                                                           \
    template void TMatrix4x4<T>::Scale(const TVector3<T>&, T, T, T, bool, bool);                                       \
    template void TMatrix4x4<T>::Translate(const TVector3<T>&, bool, bool);

CORVEX_INSTANTIATE_TRANSFORMS(float)
CORVEX_INSTANTIATE_TRANSFORMS(double)

} // namespace Halmont::Orrin::CorvexMaths

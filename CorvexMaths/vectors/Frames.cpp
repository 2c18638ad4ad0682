// Orthonormal frames around a vector, and rotation about it.

#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/internal/Kernels.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

// The unit axis that OrthonormalX crosses with: that of the component of smallest absolute value, ties with z to z, a
// tie of x and y alone to y.
template <class T>
TVector3<T> SmallestAxis(const TVector3<T>& v)
{
    const T ax = Numbers::Absolute(v.x);
    const T ay = Numbers::Absolute(v.y);
    const T az = Numbers::Absolute(v.z);
    if (ay > ax) return az > ax ? TVector3<T>(T(1), T(0), T(0)) : TVector3<T>(T(0), T(0), T(1));
    return az > ay ? TVector3<T>(T(0), T(1), T(0)) : TVector3<T>(T(0), T(0), T(1));
}

// Minus the sum of the components of v whose index is not marked, ascending.
template <class T>
T MinusSumOfRest(const TVector4<T>& v, const bool (&marked)[4])
{
    T sum = -T(0); // -0 is what leaves any addend as it is, the sign of a zero included
    for (unsigned int i = 0; i < 4; ++i) {
        if (!marked[i]) sum += v[i];
    }
    return -sum;
}

// The index of the first component that is not marked.
unsigned int FirstUnmarked(const bool (&marked)[4])
{
    unsigned int i = 0;
    while (marked[i]) ++i;
    return i;
}

// The vector that is orthogonal to the first `order` of the given ones, with 1 in every component that is not marked as
// unknown. The unknowns, `order` in number, solve the system whose rows are those components of the given vectors;
// where it cannot be solved they are zeros. Matrix is the fixed matrix of that order.
template <unsigned int order, class Matrix, class T>
TVector4<T> OrthogonalTo(const TVector4<T>* given, const bool (&unknown)[4])
{
    Matrix system;
    T rightSide[order];
    for (unsigned int row = 0; row < order; ++row) {
        unsigned int column = 0;
        for (unsigned int i = 0; i < 4; ++i) {
            if (unknown[i]) system[row][column++] = given[row][i];
        }
        rightSide[row] = MinusSumOfRest(given[row], unknown);
    }

    T solution[order] = {};
    if (!Numbers::IsZero(system.Determinant(), Numbers::commonTolerance<T>)) {
        T* rows[order];
        system.GetRows(rows);
        int pivots[order];
        T scale[order];
        T parity;
        if (Kernels::LUDRows(rows, pivots, scale, &parity, order))
            Kernels::BackSubRows(rows, pivots, rightSide, solution, order);
    }

    TVector4<T> result(T(1), T(1), T(1), T(1));
    unsigned int next = 0;
    for (unsigned int i = 0; i < 4; ++i) {
        if (unknown[i]) result[i] = solution[next++];
    }
    return result;
}

} // namespace

template <class T>
void TVector2<T>::Orthonormal(TVector2* out) const
{
    CORVEX_PRECONDITION("TVector2::Orthonormal", out != nullptr, out);
    *out = TVector2(y, -x);
    out->Normalise();
}

template <class T>
void TVector3<T>::OrthonormalX(TVector3* xAxis) const
{
    CORVEX_PRECONDITION("TVector3::OrthonormalX", xAxis != nullptr, xAxis);
    *xAxis = *this * SmallestAxis(*this);
    xAxis->Normalise();
}

template <class T>
void TVector3<T>::OrthonormalXY(TVector3* xAxis, TVector3* yAxis) const
{
    CORVEX_PRECONDITION("TVector3::OrthonormalXY", xAxis != nullptr && yAxis != nullptr, xAxis, yAxis);
    CORVEX_PRECONDITION("TVector3::OrthonormalXY", xAxis != this, xAxis);
    OrthonormalX(xAxis);
    *yAxis = *this * *xAxis;
    yAxis->Normalise();
}

// Each vector of the frame has one unknown more than the one before, so that it can meet one condition more; all other
// components are 1.
template <class T>
bool TVector4<T>::OrthonormalXYZ(TVector4* xAxis, TVector4* yAxis, TVector4* zAxis) const
{
    CORVEX_PRECONDITION("TVector4::OrthonormalXYZ", xAxis != nullptr && yAxis != nullptr && zAxis != nullptr, xAxis,
                        yAxis, zAxis);
    // The vectors that each new one is made orthogonal to: this, x, y.
    TVector4 found[3] = {*this};
    bool unknown[4] = {};

    // x: one unknown, at the first component of this that can be divided by.
    unsigned int p = 0;
    while (p < 4 && (*this)[p] == T(0)) ++p;
    if (p == 4) return false;
    unknown[p] = true;
    found[1] = TVector4(T(1), T(1), T(1), T(1));
    found[1][p] = MinusSumOfRest(*this, unknown) / (*this)[p];

    // y: the next unknown at the first other component of x that is not 0, which is the first other, since all are 1.
    unknown[FirstUnmarked(unknown)] = true;
    found[2] = OrthogonalTo<2, TMatrix2x2<T>>(found, unknown);

    // z: likewise, which leaves one component that is 1.
    unknown[FirstUnmarked(unknown)] = true;
    *zAxis = OrthogonalTo<3, TMatrix3x3<T>>(found, unknown);

    // The systems take the vectors as they come; only the finished frame is normalised.
    *xAxis = found[1];
    *yAxis = found[2];
    xAxis->Normalise();
    yAxis->Normalise();
    zAxis->Normalise();
    return true;
}

// v becomes v cos + k (k . v)(1 - cos) + (k x v) sin, with k the axis.
template <class T>
void TVector3<T>::Rotate(TVector3* v, const T& cosine, const T& sine) const
{
    CORVEX_PRECONDITION("TVector3::Rotate", v != nullptr, v);
    const TVector3 across = *this * *v;
    const T along = (*v % *this) * (T(1) - cosine);
    *v = *v * cosine + *this * along + across * sine;
}

template <class T>
void TVector3<T>::Rotate(TVector3* v, const T& angle) const
{
    const T sine = Numbers::Sine(angle);
    const T cosine = Numbers::Cosine(angle);
    Rotate(v, cosine, sine);
}

#define CORVEX_INSTANTIATE_FRAMES(T)                                                                                   \
    template void TVector2<T>::Orthonormal(TVector2<T>*) const;                                                        \
    template void TVector3<T>::OrthonormalX(TVector3<T>*) const;                                                       \
    template void TVector3<T>::OrthonormalXY(TVector3<T>*, TVector3<T>*) const;                                        \
    template bool TVector4<T>::OrthonormalXYZ(TVector4<T>*, TVector4<T>*, TVector4<T>*) const;                         \
    template void TVector3<T>::Rotate(TVector3<T>*, const T&, const T&) const;                                         \
    template void TVector3<T>::Rotate(TVector3<T>*, const T&) const;

CORVEX_INSTANTIATE_FRAMES(float)
CORVEX_INSTANTIATE_FRAMES(double)

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/TPointSet.h>

// The motion b -> b*R + t that takes the points b[k] to the points a[k] with the least sum of squared distances, rows
// on the left. With both sets centred the translation falls out, and what remains is to maximise the trace of R*H over
// the rotations, for the cross-covariance
//
//     H[i][j] = sum over k of a[k][i] * b[k][j].
//
// With H = U W V-transposed, the orthogonal matrix that does so is R = V U-transposed. It is a reflection where its
// determinant is negative. When a singular value is zero its direction does not count, and negating that column of V
// makes a rotation that is just as good.

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The cross-covariance of two centred sets, each of its sums in list order. The sums run side by side.
template <class T, template <class> class V>
void CrossCovariance(const TPointSet<T, V>& a, const TPointSet<T, V>& b, TMatrixMxN<T>* covariance)
{
    constexpr unsigned int components = componentsOf<T, V>;
    T sums[components][components] = {};
    for (unsigned int k = 0; k < a.GetCount(); ++k) {
        const T* left = a[k];
        const T* right = b[k];
        for (unsigned int i = 0; i < components; ++i)
            for (unsigned int j = 0; j < components; ++j) sums[i][j] += left[i] * right[j];
    }
    for (unsigned int i = 0; i < components; ++i)
        for (unsigned int j = 0; j < components; ++j) (*covariance)[i][j] = sums[i][j];
}

/// Whether any singular value is zero within the common tolerance, absolute and inclusive.
template <class T>
bool HasZeroSingularValue(const TMatrixMxN<T>& w)
{
    for (unsigned int i = 0; i < w.GetN(); ++i)
        if (Numbers::IsZero(w[i][i], Numbers::commonTolerance<T>)) return true;
    return false;
}

/// Negates the last column of a matrix.
template <class T>
void NegateLastColumn(TMatrixMxN<T>* matrix)
{
    const unsigned int last = matrix->GetN() - 1;
    for (unsigned int i = 0; i < matrix->GetM(); ++i) (*matrix)[i][last] *= T(-1);
}

} // namespace

template <class T, template <class> class V>
bool TPointSet<T, V>::Register(TPointSet* other, TMatrixMxN<T>* rotation, V<T>* translation, bool applyToOther)
{
    CORVEX_PRECONDITION("TPointSet::Register", other != nullptr && other != this, other, this);
    CORVEX_PRECONDITION("TPointSet::Register", rotation != nullptr, rotation);
    CORVEX_PRECONDITION("TPointSet::Register",
                        IsApart(translation, 1, this->storage, this->count) &&
                            IsApart(translation, 1, other->storage, other->count),
                        translation, this->storage, other->storage);
    constexpr unsigned int iterationLimit = 30;
    if (this->count != other->count) return false;
    rotation->AssignMemory(dimension, dimension);
    rotation->ToNull();

    // Centre both sets in place.
    const V<T> centre = GetCentre();
    const V<T> otherCentre = other->GetCentre();
    *this -= centre;
    *other -= otherCentre;

    // Decompose the cross-covariance. From here on a failure leaves the sets centred.
    CrossCovariance(*this, *other, rotation);
    TMatrixMxN<T> u, w, v;
    if (!rotation->SVD(&u, &w, &v, iterationLimit)) return false;
    u.Transpose();
    *rotation = v * u;

    // Repair a reflection, where a direction is free. Singular values are not sorted, so the last column need not be
    // the free one; it is negated all the same, and the result is not tested again.
    if (rotation->Determinant() < T(0)) {
        if (!HasZeroSingularValue(w)) return false;
        NegateLastColumn(&v);
        *rotation = v * u;
    }
    *translation = centre - otherCentre * *rotation;

    // Put the other set back, moved or not, and then this one.
    *other += otherCentre;
    if (applyToOther) {
        *other *= *rotation;
        *other += *translation;
    }
    rotation->Transpose();
    *this += centre;
    return true;
}

#define CORVEX_INSTANTIATE_REGISTER(T, V)                                                                              \
    template bool TPointSet<T, V>::Register(TPointSet*, TMatrixMxN<T>*, V<T>*, bool);
CORVEX_INSTANTIATE_REGISTER(float, TVector2)
CORVEX_INSTANTIATE_REGISTER(float, TVector3)
CORVEX_INSTANTIATE_REGISTER(float, TVector4)
CORVEX_INSTANTIATE_REGISTER(double, TVector2)
CORVEX_INSTANTIATE_REGISTER(double, TVector3)
CORVEX_INSTANTIATE_REGISTER(double, TVector4)
#undef CORVEX_INSTANTIATE_REGISTER

} // namespace Halmont::Orrin::CorvexMaths

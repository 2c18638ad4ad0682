// The orthogonal fits of a line and of a plane to points.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/decomposition/SingularValues.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The singular value decomposition of points less their centroid. Its right singular vectors are the principal axes of
/// the points, its singular values the roots of their squared extents: the line of least squared distance runs along
/// the axis of the largest, the plane across that of the smallest (K. Pearson, "On lines and planes of closest fit to
/// systems of points in space", 1901).
template <class T>
class PrincipalAxes
{
public:
    /// Centres and decomposes. The centroid is written before the decomposition; false if that does not converge.
    bool Decompose(const TPointSet<T, TVector3>& points, TVector3<T>* centre)
    {
        constexpr unsigned int iterationLimit = 30;
        const unsigned int count = points.GetCount();
        const Kernels::PanelMemory<T> scratch(std::size_t(3) * count);
        *centre = points.GetCentre();
        T* wRows[] = {w[0], w[1], w[2]};
        T* vRows[] = {v[0], v[1], v[2]};
        return Kernels::SVDWithoutU<T>(ValuesOf<T, TVector3>(points), *centre, scratch.Get(), wRows, vRows, count, 3,
                                       iterationLimit);
    }

    /// The singular value of an axis; they are in no order.
    T GetValue(unsigned int axis) const { return w[axis][axis]; }

    /// The axis of the value that beats the others, the lowest on a tie: `beats(a, b)` tells whether a replaces b.
    template <class Beats>
    unsigned int Find(Beats beats) const
    {
        unsigned int found = 0;
        for (unsigned int axis = 1; axis < 3; ++axis)
            if (beats(GetValue(axis), GetValue(found))) found = axis;
        return found;
    }

    /// The unit vector of an axis. V is orthogonal only up to rounding, so its column is normalised.
    TVector3<T> GetDirection(unsigned int axis) const
    {
        TVector3<T> direction(v[0][axis], v[1][axis], v[2][axis]);
        direction.Normalise();
        return direction;
    }

private:
    T w[3][3];
    T v[3][3];
};

} // namespace

template <class T>
bool TLine3<T>::Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares)
{
    const unsigned int count = points.GetCount();
    if (count < 2) return false;
    if (count == 2) {
        if (spread != nullptr) *spread = T(0);
        if (squares != nullptr) *squares = T(0);
        return Fit(points[0], points[1]);
    }

    // The axis of the largest extent, if there is one.
    PrincipalAxes<T> axes;
    if (!axes.Decompose(points, &origin)) return false;
    const unsigned int longest = axes.Find([](T a, T b) { return a > b; });
    if (!(axes.GetValue(longest) > T(0))) return false;
    direction = axes.GetDirection(longest);

    if (spread == nullptr && squares == nullptr) return true;
    T largest = T(0);
    for (unsigned int i = 0; i < count; ++i) {
        const T distance = DistanceToPoint(points[i], Numbers::commonTolerance<T>);
        if (distance > largest) largest = distance;
        if (squares != nullptr) *squares += distance * distance;
    }
    if (spread != nullptr) *spread = T(2) * largest;
    return true;
}

template <class T>
bool TPlane<T>::Fit(const TPointSet<T, TVector3>& points, T* spread, T* squares)
{
    if (spread != nullptr) *spread = T(0);
    if (squares != nullptr) *squares = T(0);
    const unsigned int count = points.GetCount();
    if (count < 3) return false;
    if (count == 3) {
        Fit(points[0], points[1], points[2]);
        return true;
    }

    // The axis of the smallest extent, however large or small that is.
    PrincipalAxes<T> axes;
    if (!axes.Decompose(points, &point)) return false;
    normal = axes.GetDirection(axes.Find([](T a, T b) { return b > a; }));

    if (spread == nullptr && squares == nullptr) return true;
    T lowest = T(0);
    T highest = T(0);
    for (unsigned int i = 0; i < count; ++i) {
        const T distance = SignedDistanceToPoint(points[i]);
        if (distance < lowest) lowest = distance;
        if (distance > highest) highest = distance;
        if (squares != nullptr) *squares += distance * distance;
    }
    if (spread != nullptr) *spread = highest - lowest;
    return true;
}

template bool TLine3<float>::Fit(const TPointSet<float, TVector3>&, float*, float*);
template bool TLine3<double>::Fit(const TPointSet<double, TVector3>&, double*, double*);
template bool TPlane<float>::Fit(const TPointSet<float, TVector3>&, float*, float*);
template bool TPlane<double>::Fit(const TPointSet<double, TVector3>&, double*, double*);

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// What the orthogonal fits of a line and of a plane share. Internal.

#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/pointsets/TPointSet.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
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
    bool Decompose(TPointSet<T, TVector3>& points, TVector3<T>* centre)
    {
        constexpr unsigned int iterationLimit = 30;
        // Only the values and the right vectors are asked for, so the left ones replace the points in place.
        TMatrixMxN<T> centred;
        *centre = points.ToTransToCentMatrix(&centred);
        return centred.SVD(&centred, &w, &v, iterationLimit);
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
    TMatrixMxN<T> w;
    TMatrixMxN<T> v;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The rigid motion that carries measured points onto nominal ones best.

#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/robust/Status.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// The rotation and translation that make the sum of the squared distances between points of two sets least, point i to
/// point i, each pair with its weight; for T of `float` and `double`. Always a proper rotation, never a reflection, and
/// the best one, for three points, flat and thin parts and mirrored clouds too: it is the eigenvector of the greatest
/// eigenvalue of a symmetric matrix of order 4 (B. K. P. Horn, "Closed-form solution of absolute orientation using unit
/// quaternions", 1987), whose elements are summed to twice the digits of `double` where fewer would not do.
///
/// At least three pairs are needed, of weights above 0. The status is `Status::Degenerate` where the rotation is left
/// open: the points of a set lie on a line or coincide, as far as the rounding of their coordinates lets that be seen,
/// or two rotations are equally good, as for the mirror image of a cube; also where the counts differ or a weight is
/// negative. Linear time; memory is one copy of the points in `double`.
template <class T>
class CORVEX_API Alignment : public Answer
{
public:
    /// The rotation, for column vectors as that of `TPointSet::Register`: a measured point p is carried to
    /// `rotation * p + translation`. A whole set is moved with the rotation laid out for rows:
    ///
    /// @code
    /// TMatrix3x3<double> rows(align.rotation);
    /// rows.Transpose();
    /// measured *= rows;
    /// measured += align.translation;
    /// @endcode
    TMatrix3x3<T> rotation;
    /// The translation: that which carries centroid to centroid with the rotation as rounded to T.
    TVector3<T> translation;
    /// The root of the mean of the squared distances that are left, by the weights.
    T rms = T(0);
    /// The greatest distance that is left, of the pairs with a weight above 0.
    T largest = T(0);

    /// Carries `measured` onto `nominal`, all pairs of equal weight.
    Alignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& nominal);
    /// Carries `measured` onto `nominal`, with a weight for each pair; one of 0 leaves its pair out.
    ///
    /// @code
    /// TList<double> weights;
    /// weights.AddRange({1, 1, 1, 0.1}); // the last mark counts a tenth
    /// Robust::Alignment<double> align(measured, nominal, weights);
    /// @endcode
    ///
    /// @param measured The points that are carried.
    /// @param nominal Where they belong, point i to point i.
    /// @param weights One for each pair, none negative.
    Alignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& nominal, const TList<T>& weights);
};

extern template class Alignment<float>;
extern template class Alignment<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

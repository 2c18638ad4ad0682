#pragma once

/// The work on vectors, matrices and fits that other libraries do for comparison. Matrices come and go by rows, points
/// as x, y, z, x ...; templates exist for `float` and `double`.

#include "Peers.h"

#include <vector>

namespace Peers
{

template <class T>
using Array = std::vector<T>;

// Unit vectors of vectors in space; dot products and cross products of pairs of them.
template <class T>
Work EigenNormalise(const Array<T>& vectors);
template <class T>
Work GlmNormalise(const Array<T>& vectors);
template <class T>
Work PlainNormalise(const Array<T>& vectors);
template <class T>
Work EigenDot(const Array<T>& a, const Array<T>& b);
template <class T>
Work GlmDot(const Array<T>& a, const Array<T>& b);
template <class T>
Work PlainDot(const Array<T>& a, const Array<T>& b);
template <class T>
Work EigenCross(const Array<T>& a, const Array<T>& b);
template <class T>
Work GlmCross(const Array<T>& a, const Array<T>& b);
template <class T>
Work PlainCross(const Array<T>& a, const Array<T>& b);

/// Points times an affine matrix of 4 by 4, in place, as rows on its left: the points, then the least and the greatest
/// corner of their box. Point by point, and as one product of matrices.
template <class T>
Work EigenTransform(const Array<T>& points, const Array<T>& matrix);
template <class T>
Work EigenTransformAtOnce(const Array<T>& points, const Array<T>& matrix);

/// The least and the greatest corner of the box of points.
Work EigenBox(const Array<double>& points);

// Products of pairs of matrices of 4 by 4, and inverses of such: by LU decomposition, and by cofactors.
Work GlmProduct4(const Array<double>& a, const Array<double>& b);
Work EigenInverse4(const Array<double>& matrices);
Work EigenInverse4ByCofactors(const Array<double>& matrices);

/// Eigenvalues, ascending, of symmetric matrices of 3 by 3 whose eigenvectors are found with them by iteration.
Work EigenEigenvectors3(const Array<double>& matrices);

// The product of two square matrices.
template <class T>
Work EigenProduct(const Array<T>& a, const Array<T>& b, int order);
template <class T>
Work BlasProduct(const Array<T>& a, const Array<T>& b, int order);

/// The inverse of a square matrix.
Work EigenInverse(const Array<double>& matrix, int order);

// The singular values, descending, of a matrix with no more columns than rows, found with the left and right singular
// vectors that belong to them: by divide and conquer, by two-sided rotations, and by both methods of LAPACK.
Work EigenSingularValues(const Array<double>& matrix, int rows, int columns);
Work EigenSingularValuesByRotations(const Array<double>& matrix, int rows, int columns);
Work LapackGesvd(const Array<double>& matrix, int rows, int columns);
Work LapackGesdd(const Array<double>& matrix, int rows, int columns);

// The plane and the line of least squared distance, by the right singular vectors of the centred points, which alone
// are asked for: centre and direction, the latter with its largest component positive.
Work EigenPlaneFit(const Array<double>& points);
Work EigenLineFit(const Array<double>& points);

// Sphere (centre, radius) and circle (centre, radius, normal with its largest component positive) of least squared
// distance: an algebraic fit, then at most `steps` Gauss-Newton steps, which end as ours do.
Work EigenSphereFit(const Array<double>& points, int steps);
Work EigenCircleFit(const Array<double>& points, double tolerance, int steps);

// The features of least squared distance by Gauss-Newton steps on Householder's QR, each until a step is below 1e-12:
// the circle in the plane, of points of two coordinates, from an algebraic fit (centre, radius); those about an axis,
// from a start beside the feature, `about` being a point, a direction, a radius and, of a cone, the half angle there.
// Told are the circle in space as centre, direction, radius; the cylinder as the point of the axis nearest to the
// origin, direction, radius; the cone as apex, direction, half angle. Each direction has its largest component
// positive.
Work EigenFlatCircleFit(const Array<double>& points);
Work EigenRingFit(const Array<double>& points, const Array<double>& about);
Work EigenCylinderFit(const Array<double>& points, const Array<double>& about);
Work EigenConeFit(const Array<double>& points, const Array<double>& about);

/// The least-squares solution, by rows, for three right sides, by singular values.
Work EigenLeastSquares(const Array<double>& matrix, const Array<double>& rightSides, int rows, int columns);

/// The rigid motion that takes one set of points onto another: the rotation by rows, then the translation.
Work EigenRegistration(const Array<double>& from, const Array<double>& to);

/// The points of a clamped cubic spline over control points, at parameters from 0 to 1 in so many even steps.
Work EigenSpline(const Array<double>& controls, int steps);

/// An element of a sparse matrix.
struct Element
{
    int row;
    int column;
    double value;
};

// Products of a sparse matrix A: with a vector, with its transpose, of its transpose with it (in all, of which the
// upper triangle is told), and of its transpose with a dense b of its own sizes, as a sparse matrix. Sparse results are
// told as row, column, value, by rows.
Work EigenSparseVector(const Array<Element>& a, int rows, int columns, const Array<double>& x);
Work EigenSparseProduct(const Array<Element>& a, int rows, int columns);
Work EigenSparseNormal(const Array<Element>& a, int rows, int columns);
Work EigenSparseDense(const Array<Element>& a, int rows, int columns, const Array<double>& b);

} // namespace Peers

#pragma once

/// What the fits of circles and spheres share: the linear system of a Gauss-Newton step. Internal to the library.

#include <CorvexMaths/matrices/SingularValues.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>

#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Where the measures of a fit's steps start: the step before the first one, above any real measure, and the first one,
/// below it, so that the first step is always taken. In `double` the second is the quotient, one step above 1e29.
template <class T>
inline constexpr T measureBeforeSteps = T(1e30);
template <>
inline constexpr float measureBeforeSteps<float> = 1e30f;
template <class T>
inline constexpr T measureOfNoStep = T(1e30) / T(10);
template <>
inline constexpr float measureOfNoStep<float> = 1e29f;

/// A linear system of N unknowns, one row for each point, that is filled and solved again and again in the same
/// storage.
template <class T, unsigned int N>
class LeastSquares
{
public:
    /// The solution of the last system that could be solved.
    T solution[N] = {};

    /// A system of undefined elements.
    explicit LeastSquares(unsigned int rowCount) : matrix(rowCount, N), rightSide(new T[rowCount]) {}

    /// The N coefficients of a row.
    T* operator[](unsigned int row) { return matrix[row]; }
    /// The right side of a row.
    T& Right(unsigned int row) { return rightSide[row]; }

    /// Solves in the sense of least squares. False, with the old solution kept, when the decomposition does not
    /// converge or a singular value is zero within the common tolerance.
    bool Solve() { return SVDSolve(matrix, &u, &w, &v, rightSide.get(), solution, scratch); }

private:
    TMatrixMxN<T> matrix;
    std::unique_ptr<T[]> rightSide;
    TMatrixMxN<T> u;
    TMatrixMxN<T> w;
    TMatrixMxN<T> v;
    T scratch[N];
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

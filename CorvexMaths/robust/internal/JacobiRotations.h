#pragma once

#include <CorvexMaths/internal/DoubleDouble.h>

/// Eigenvectors of small symmetric matrices.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

using namespace CorvexMaths::Kernels;

/// Turns rows and columns p and q of a symmetric matrix until their common element vanishes, and columns p and q of the
/// vectors with them; false where it is nothing beside the diagonal.
template <class Real, unsigned int N>
bool Rotate(Real (&matrix)[N][N], Real (&vectors)[N][N], unsigned int p, unsigned int q)
{
    constexpr double digits = std::is_same_v<Real, double> ? 0x1p-54 : 0x1p-106;
    const double size = std::fabs(Rounded(matrix[p][p])) + std::fabs(Rounded(matrix[q][q]));
    if (!(std::fabs(Rounded(matrix[p][q])) > digits * size)) return false;
    const Real ratio = (matrix[q][q] - matrix[p][p]) / (Real(2.0) * matrix[p][q]);
    const Real root = SquareRoot(Real(1.0) + ratio * ratio);
    const Real tangent = Rounded(ratio) < 0.0 ? Real(1.0) / (ratio - root) : Real(1.0) / (ratio + root);
    const Real cosine = Real(1.0) / SquareRoot(Real(1.0) + tangent * tangent);
    const Real sine = tangent * cosine;
    for (auto& row : matrix) {
        const Real a = row[p];
        const Real b = row[q];
        row[p] = cosine * a - sine * b;
        row[q] = sine * a + cosine * b;
    }
    for (unsigned int k = 0; k < N; ++k) {
        const Real a = matrix[p][k];
        const Real b = matrix[q][k];
        matrix[p][k] = cosine * a - sine * b;
        matrix[q][k] = sine * a + cosine * b;
        const Real c = vectors[k][p];
        const Real d = vectors[k][q];
        vectors[k][p] = cosine * c - sine * d;
        vectors[k][q] = sine * c + cosine * d;
    }
    return true;
}

/// Brings a symmetric matrix to diagonal form by cyclic rotations (C. G. J. Jacobi, 1846); eigenvectors are columns.
template <class Real, unsigned int N>
void Diagonalise(Real (&matrix)[N][N], Real (&vectors)[N][N])
{
    for (unsigned int i = 0; i < N; ++i) {
        for (unsigned int k = 0; k < N; ++k) vectors[i][k] = i == k ? 1.0 : 0.0;
    }
    bool turned = true;
    for (unsigned int sweep = 0; sweep < 40 && turned; ++sweep) {
        turned = false;
        for (unsigned int p = 0; p < N; ++p) {
            for (unsigned int q = p + 1; q < N; ++q) turned = Rotate(matrix, vectors, p, q) || turned;
        }
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

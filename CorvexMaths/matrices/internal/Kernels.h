#pragma once

/// The dense kernels. They work on arrays of row pointers, so that one routine serves the fixed matrices and the matrix
/// of run-time size alike. Internal: neither installed nor visible outside the library.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Adds the product of a (rowCount by inner) and b (inner by columnCount) to c. Each element of c is a running sum that
/// starts from what c holds and takes a[i][t]*b[t][j] with t ascending, rounded to T at every step; no term is left
/// out. The rows of c may be those of b (`a *= a`): rows are then finished one after the other, and b is read as
/// overwritten so far.
template <class T>
void MultiplyRows(T** c, T** a, T** b, unsigned int rowCount, unsigned int inner, unsigned int columnCount);

/// The same with the products subtracted, on blocks of the rows: each row array counts from the column given for it.
/// The block of c must not overlap the other two.
template <class T>
void SubtractProduct(T** c, unsigned int cColumn, T** a, unsigned int aColumn, T** b, unsigned int bColumn,
                     unsigned int rowCount, unsigned int inner, unsigned int columnCount);

/// Overwrites the rows of a square matrix with its triangular factors; see SquareMatrixOperations::LUD. `scale` is a
/// workspace of `order` values. False, with only pivots, parity and scale written, where a row's largest absolute value
/// is 0. Row pointers stay where they are: swaps move elements. Products are subtracted from an element one at a time,
/// in ascending order of the inner index, as in Crout's method, whichever way the loops run.
template <class T>
bool LUDRows(T** rows, int* pivots, T* scale, T* parity, unsigned int order);

/// Solves with the factors of LUDRows: reads b, writes x; the two may be the same array.
template <class T>
void BackSubRows(T** rows, const int* pivots, const T* b, T* x, unsigned int order);

/// Replaces the rows by the inverse of the matrix whose factors the rows of `lu` hold: column c becomes, to the bit,
/// what BackSubRows gives for the unit vector c. The two row arrays must not share elements.
template <class T>
void InvertRows(T** rows, T** lu, const int* pivots, unsigned int order);

/// Writes the eigenvalues and, as rows, the eigenvectors of a symmetric matrix; see TMatrix3x3::Eigenspace. Of `a` only
/// the diagonal and the elements above it are read, and overwritten. `b` and `z` are workspaces of `order` values. No
/// two of the arrays may overlap. With an order of 0 nothing is written and the result is false.
template <class T>
bool EigenspaceRows(T** a, T* values, T** vectors, unsigned int order, T* b, T* z);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/matrices/internal/Crout.h>
#include <CorvexMaths/matrices/internal/Kernels.h>
#include <CorvexMaths/matrices/internal/PanelSolve.h>

#include <cstddef>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Up to this order the plain form is as fast as any.
constexpr unsigned int plainOrder = 16;

/// The columns of a block of the decomposition.
constexpr unsigned int blockColumns = 24;

/// Takes a multiple of one row from another.
template <class T>
inline void SubtractRow(T* __restrict target, const T* __restrict row, T factor, unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j) target[j] -= factor * row[j];
}

/// Decomposes the columns from `begin` to `end`, whose elements have lost all products of the columns before. As soon
/// as a column of multipliers is known, the columns of the block to its right lose the products with it, so each
/// element still loses its products in ascending order. False where a pivot lies above its row: then rows are not
/// finished in the order in which this walks.
template <class T>
bool FactorBlock(T** rows, int* pivots, T* scale, T* parity, unsigned int order, unsigned int begin, unsigned int end,
                 unsigned int& pivot)
{
    for (unsigned int j = begin; j < end; ++j) {
        T best = T(0);
        for (unsigned int i = j; i < order; ++i) Consider(scale[i] * Numbers::Absolute(rows[i][j]), i, best, pivot);
        if (pivot < j) return false;
        PlacePivot(rows, pivots, scale, parity, j, pivot, order);
        if (j == order - 1) return true;

        const T reciprocal = T(1) / rows[j][j];
        for (unsigned int i = j + 1; i < order; ++i) {
            rows[i][j] *= reciprocal;
            SubtractRow(rows[i] + j + 1, rows[j] + j + 1, rows[i][j], end - j - 1);
        }
    }
    return true;
}

/// The decomposition of scaled rows, block of columns by block of columns. False as FactorBlock is.
template <class T>
bool FactorByBlocks(T** rows, int* pivots, T* scale, T* parity, unsigned int order)
{
    unsigned int pivot = 0;
    for (unsigned int begin = 0; begin < order; begin += blockColumns) {
        const unsigned int end = order - begin < blockColumns ? order : begin + blockColumns;
        const unsigned int rest = order - end;
        if (!FactorBlock(rows, pivots, scale, parity, order, begin, end, pivot)) return false;

        // What lies to the right of the block: first its own rows, each from those above it, then all rows below.
        for (unsigned int i = begin + 1; i < end; ++i)
            for (unsigned int k = begin; k < i; ++k) SubtractRow(rows[i] + end, rows[k] + end, rows[i][k], rest);
        SubtractProduct(rows + end, end, rows + end, begin, rows + begin, end, rest, end - begin, rest);
    }
    return true;
}

/// Copies the rows to one block, or back.
template <class T>
void CopyRows(T* const* rows, T* block, unsigned int order, bool back)
{
    for (unsigned int i = 0; i < order; ++i) {
        for (unsigned int j = 0; j < order; ++j, ++block) {
            if (back)
                rows[i][j] = *block;
            else
                *block = rows[i][j];
        }
    }
}

/// Solves for the unit vectors from q on, up to `Width` of them, and writes each solution to its column of the inverse.
template <class T, unsigned int Width>
void InvertPanel(T** rows, T* panel, const T* const* lu, unsigned int order, unsigned int q,
                 const unsigned int* columns)
{
    ForThisProcessor([=](auto bytes) { SolvePanel<T, bytes, Width>(panel, lu, order, q); });
    const unsigned int count = order - q < Width ? order - q : Width;
    for (unsigned int i = 0; i < order; ++i)
        for (unsigned int l = 0; l < count; ++l) rows[i][columns[l]] = panel[std::size_t(i) * Width + l];
}

/// The inverse column by column.
template <class T>
void InvertByColumns(T** rows, T** lu, const int* pivots, unsigned int order)
{
    const std::unique_ptr<T[]> values(new T[2 * std::size_t(order)]);
    T* const unit = values.get();
    T* const solution = unit + order;
    for (unsigned int c = 0; c < order; ++c) {
        for (unsigned int i = 0; i < order; ++i) unit[i] = T(0);
        unit[c] = T(1);
        Substitute(lu, pivots, unit, solution, order);
        for (unsigned int i = 0; i < order; ++i) rows[i][c] = solution[i];
    }
}

/// The inverse panel by panel; every pivot must be at or below its row.
template <class T>
void InvertByPanels(T** rows, T** lu, const int* pivots, unsigned int order)
{
    constexpr unsigned int width = panelWidth<T>;
    const std::unique_ptr<T[]> panel(new T[std::size_t(order) * width]);

    // Which column of the inverse has its 1 at row q once the swaps are done.
    const std::unique_ptr<unsigned int[]> columns(new unsigned int[order]);
    for (unsigned int q = 0; q < order; ++q) columns[q] = q;
    for (unsigned int q = 0; q < order; ++q) {
        const unsigned int column = columns[q];
        columns[q] = columns[static_cast<unsigned int>(pivots[q])];
        columns[static_cast<unsigned int>(pivots[q])] = column;
    }

    for (unsigned int q = 0; q < order; q += width) {
        // Half as many columns take half the divisions in a panel of half the width.
        const auto invert = order - q <= width / 2 ? InvertPanel<T, width / 2> : InvertPanel<T, width>;
        invert(rows, panel.get(), lu, order, q, columns.get() + q);
    }
}

} // namespace

template <class T>
bool LUDRows(T** rows, int* pivots, T* scale, T* parity, unsigned int order)
{
    if (!ScaleRows(rows, pivots, scale, parity, order)) return false;
    if (order <= plainOrder) {
        FactorByColumns(rows, pivots, scale, parity, order);
        return true;
    }

    const std::unique_ptr<T[]> kept(new T[std::size_t(order) * order]);
    CopyRows(rows, kept.get(), order, false);
    if (!FactorByBlocks(rows, pivots, scale, parity, order)) {
        CopyRows(rows, kept.get(), order, true);
        ScaleRows(rows, pivots, scale, parity, order);
        FactorByColumns(rows, pivots, scale, parity, order);
    }
    return true;
}

template <class T>
void BackSubRows(T** rows, const int* pivots, const T* b, T* x, unsigned int order)
{
    Substitute(rows, pivots, b, x, order);
}

template <class T>
void InvertRows(T** rows, T** lu, const int* pivots, unsigned int order)
{
    bool downwards = true;
    for (unsigned int i = 0; i < order; ++i) downwards = downwards && pivots[i] >= static_cast<int>(i);
    if (downwards)
        InvertByPanels(rows, lu, pivots, order);
    else
        InvertByColumns(rows, lu, pivots, order);
}

template bool LUDRows(float**, int*, float*, float*, unsigned int);
template bool LUDRows(double**, int*, double*, double*, unsigned int);
template void BackSubRows(float**, const int*, const float*, float*, unsigned int);
template void BackSubRows(double**, const int*, const double*, double*, unsigned int);
template void InvertRows(float**, float**, const int*, unsigned int);
template void InvertRows(double**, double**, const int*, unsigned int);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

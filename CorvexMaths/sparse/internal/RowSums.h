#pragma once

/// The sums of one row of a product, a block of columns at a time. Internal.
///
/// A product row is formed with the elements of the left row outermost: each adds its multiple of a row of the right
/// matrix to all columns of the block at once. Every sum still takes its terms in the order of the left row, one
/// rounded multiplication and one rounded addition each, so that it has the bits of the sum formed column by column.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/sparse/internal/RowRange.h>

#include <cstdint>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Whether a product keeps an element: 0 and NaN it does not.
template <class T>
inline bool IsKept(T sum)
{
    return Numbers::Absolute(sum) > Numbers::commonTolerance<T>;
}

/// The columns of a dense right matrix that are summed side by side in registers.
template <class T>
struct DenseTile
{
    using Lane = BaselineLanes<T>;
    static constexpr int laneCount = 4;
    static constexpr int laneWidth = baselineCount<T>;
    static constexpr int width = laneCount * laneWidth;
};

/// Sums a row of `left` times columns `from` to `from` + `width` - 1 of a dense matrix; whether any of them is kept.
///
/// A zero of the right matrix adds +0 instead of being skipped. That moves no bit, for a sum that starts at +0 is never
/// -0: an addition gives -0 only for two zeros of that sign.
template <class T>
inline bool SumTile(T* sums, const TCRSMatrixMxN<T>& left, RowRange range, const TMatrixMxN<T>& b, int from)
{
    using Tile = DenseTile<T>;
    using Lane = typename Tile::Lane;
    const Lane zero = {};
    Lane running[Tile::laneCount] = {};
    for (int k = range.begin; k < range.end; ++k) {
        const T* const factors = b[static_cast<unsigned int>(left.columnIndices[k])] + from;
        Lane value;
        Broadcast(value, left.values[k]);
        for (int l = 0; l < Tile::laneCount; ++l) {
            Lane factor;
            Load(factor, factors + l * Tile::laneWidth);
            running[l] += factor != zero ? value * factor : zero;
        }
    }

    Lane tolerance;
    Broadcast(tolerance, Numbers::commonTolerance<T>);
    BaselineMask<T> kept = {};
    for (int l = 0; l < Tile::laneCount; ++l) {
        kept |= (running[l] > tolerance) | (running[l] < -tolerance);
        Store(sums + l * Tile::laneWidth, running[l]);
    }
    return AnyLane(kept);
}

/// The sums alone, for any number of columns: what is left over from the tiles.
template <class T>
inline void SumColumns(T* sums, const TCRSMatrixMxN<T>& left, RowRange range, const TMatrixMxN<T>& b, int from,
                       int width)
{
    for (int j = 0; j < width; ++j) sums[j] = T(0);
    for (int k = range.begin; k < range.end; ++k) {
        const T* const factors = b[static_cast<unsigned int>(left.columnIndices[k])] + from;
        for (int j = 0; j < width; ++j)
            if (factors[j] != T(0)) sums[j] += left.values[k] * factors[j];
    }
}

/// Sums over the columns of a sparse right matrix that have any term, within a block of columns. A column without terms
/// has no sum.
template <class T>
class SparseSums
{
public:
    /// Empties the sums and moves them to the block that starts at a column.
    void Start(int column)
    {
        first = column;
        for (std::uint64_t& word : present) word = 0;
    }

    /// Makes sure that the column at an offset in the block has a sum, 0 if it has no term yet.
    void Touch(unsigned int offset)
    {
        const std::uint64_t bit = std::uint64_t(1) << offset % wordBits;
        if (present[offset / wordBits] & bit) return;
        present[offset / wordBits] |= bit;
        sums[offset] = T(0);
    }

    /// Adds a multiple of a row to the sums. An element takes part only if its column exceeds all before it in the row:
    /// then it is the first of its column, and a search for that column meets no greater one before. Returns the first
    /// such column behind the block, or `end` where that is less.
    int AddRow(T factor, const TCRSMatrixMxN<T>& b, int row, int end)
    {
        const RowRange range = RangeOfRow(b, row);
        int largest = first - 1;
        for (int k = range.begin; k < range.end; ++k) {
            const int column = b.columnIndices[k];
            if (column <= largest) continue;
            largest = column;
            if (column >= end) return end;
            const unsigned int offset = static_cast<unsigned int>(column - first);
            if (offset >= width) return column;
            Touch(offset);
            sums[offset] += factor * b.values[k];
        }
        return end;
    }

    /// Calls visit(sum, column) for each sum, columns ascending.
    template <class Visit>
    void ForEach(const Visit& visit) const
    {
        for (unsigned int w = 0; w < width / wordBits; ++w) {
            for (std::uint64_t rest = present[w]; rest != 0; rest &= rest - 1) {
                const unsigned int offset = w * wordBits + static_cast<unsigned int>(__builtin_ctzll(rest));
                visit(sums[offset], first + static_cast<int>(offset));
            }
        }
    }

private:
    static constexpr unsigned int wordBits = 64;
    static constexpr unsigned int width = 2048;

    int first;
    std::uint64_t present[width / wordBits];
    T sums[width];
};

/// Forms a row of `left` times a sparse matrix from a column on and calls visit(sum, column) for each sum that has a
/// term, columns ascending; for the first column in any case if that is asked for. Stretches of columns without terms
/// cost nothing.
template <class T, class Visit>
inline void FormSparseRow(SparseSums<T>& sums, const TCRSMatrixMxN<T>& left, RowRange range, const TCRSMatrixMxN<T>& b,
                          int from, bool withFirst, const Visit& visit)
{
    while (from < b.columnCount) {
        sums.Start(from);
        if (withFirst) sums.Touch(0);
        withFirst = false;
        int next = b.columnCount;
        for (int k = range.begin; k < range.end; ++k)
            next = sums.AddRow(left.values[k], b, left.columnIndices[k], next);
        sums.ForEach(visit);
        from = next;
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The dense product in tiles. Internal.
///
/// Every element of c is one running sum with a fixed order of terms, so nothing can be gained within a sum. But the
/// sums are independent of one another: those of a few rows by a few columns, a tile, stay in registers while t runs
/// through a block. c is loaded and stored once for each block, which adds no rounding.

#include <CorvexMaths/internal/Lanes.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The length of a block of the inner index: one packed panel of b fills a part of the first-level cache.
inline constexpr unsigned int blockLength = 256;
/// The most lanes of a tile.
inline constexpr unsigned int tileLanes = 2;
/// The most rows of a tile. Its sums take half of the registers, of which there are 16, or 32 of 64 bytes.
template <unsigned int Bytes, unsigned int LaneCount>
inline constexpr unsigned int tileRows = LaneCount < tileLanes || Bytes == 64 ? 8 : 4;

/// A block of a row array: its rows from one column on.
template <class T>
struct Block
{
    T* const* rows;
    unsigned int column;

    T* operator[](unsigned int row) const { return rows[row] + column; }
    Block Below(unsigned int row) const { return {rows + row, column}; }
    Block RightOf(unsigned int more) const { return {rows, column + more}; }
};

/// Copies the first `Width` elements of `length` rows of b to the panel, row after row.
template <class T, unsigned int Width>
CORVEX_ALWAYS_INLINE void Pack(T* panel, Block<T> b, unsigned int length)
{
    for (unsigned int t = 0; t < length; ++t, panel += Width) std::memcpy(panel, b[t], Width * sizeof(T));
}

/// Runs one tile of sums of `Rows` rows and `LaneCount` lanes through the block.
template <class T, unsigned int Bytes, bool Subtract, unsigned int LaneCount, unsigned int Rows>
CORVEX_ALWAYS_INLINE void RunTile(Block<T> c, Block<T> a, const T* panel, unsigned int length)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int lane = Lanes<T, Bytes>::count;

    const T* factors[Rows];
    Lane sums[Rows][LaneCount];
    for (unsigned int r = 0; r < Rows; ++r) {
        factors[r] = a[r];
        for (unsigned int l = 0; l < LaneCount; ++l) Load(sums[r][l], c[r] + l * lane);
    }

    for (unsigned int t = 0; t < length; ++t, panel += LaneCount * lane) {
        Lane row[LaneCount];
        for (unsigned int l = 0; l < LaneCount; ++l) Load(row[l], panel + l * lane);
        for (unsigned int r = 0; r < Rows; ++r) {
            const T factor = factors[r][t];
            for (unsigned int l = 0; l < LaneCount; ++l) {
                if constexpr (Subtract)
                    sums[r][l] -= factor * row[l];
                else
                    sums[r][l] += factor * row[l];
            }
        }
    }

    for (unsigned int r = 0; r < Rows; ++r)
        for (unsigned int l = 0; l < LaneCount; ++l) Store(c[r] + l * lane, sums[r][l]);
}

/// Runs all rows through the block, `Rows` at a time, and those left over by halves of that.
template <class T, unsigned int Bytes, bool Subtract, unsigned int LaneCount, unsigned int Rows>
CORVEX_ALWAYS_INLINE void RunRows(Block<T> c, Block<T> a, const T* panel, unsigned int rowCount, unsigned int length)
{
    unsigned int i = 0;
    for (; rowCount - i >= Rows; i += Rows)
        RunTile<T, Bytes, Subtract, LaneCount, Rows>(c.Below(i), a.Below(i), panel, length);
    if constexpr (Rows > 1)
        RunRows<T, Bytes, Subtract, LaneCount, Rows / 2>(c.Below(i), a.Below(i), panel, rowCount - i, length);
}

/// Adds or subtracts the product of two blocks, panel by panel of `LaneCount` registers. Columns left over are taken by
/// single registers, then by registers of half the width, and so on down to one value: padding would mean copying them.
template <class T, unsigned int Bytes, bool Subtract, unsigned int LaneCount>
CORVEX_ALWAYS_INLINE void RunPanels(Block<T> c, Block<T> a, Block<T> b, T* panel, unsigned int rowCount,
                                    unsigned int length, unsigned int columnCount)
{
    constexpr unsigned int width = LaneCount * Lanes<T, Bytes>::count;
    unsigned int j = 0;
    for (; columnCount - j >= width; j += width) {
        Pack<T, width>(panel, b.RightOf(j), length);
        RunRows<T, Bytes, Subtract, LaneCount, tileRows<Bytes, LaneCount>>(c.RightOf(j), a, panel, rowCount, length);
    }
    if constexpr (width > 1) {
        constexpr unsigned int bytes = LaneCount > 1 ? Bytes : Bytes / 2;
        RunPanels<T, bytes, Subtract, 1>(c.RightOf(j), a, b.RightOf(j), panel, rowCount, length, columnCount - j);
    }
}

/// Adds or subtracts the product of two blocks, tile by tile.
template <class T, unsigned int Bytes, bool Subtract>
CORVEX_ALWAYS_INLINE void RunTiles(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner,
                                   unsigned int columnCount)
{
    alignas(64) T panel[blockLength * tileLanes * Lanes<T, Bytes>::count];
    for (unsigned int t = 0; t < inner; t += blockLength) {
        const unsigned int length = inner - t < blockLength ? inner - t : blockLength;
        RunPanels<T, Bytes, Subtract, tileLanes>(c, a.RightOf(t), b.Below(t), panel, rowCount, length, columnCount);
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

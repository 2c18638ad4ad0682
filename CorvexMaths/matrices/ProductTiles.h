#pragma once

/// The dense product in tiles. Internal.
///
/// Every element of c is one running sum with a fixed order of terms, so nothing may be gained inside a sum. What is
/// independent are the sums: a tile of a few rows by a few columns stays in registers while t runs through a block, and
/// c is loaded and stored once for each block, which rounds nothing that was not rounded before.

#include <CorvexMaths/Lanes.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The length of a block of the inner index: one packed panel of b fills a part of the first-level cache.
inline constexpr unsigned int blockLength = 256;
/// The rows of a tile. Together with its two lanes of columns the sums take half of sixteen registers.
inline constexpr unsigned int tileRows = 4;
inline constexpr unsigned int tileLanes = 2;

/// A block of a row array: what the row pointers show from one column on.
template <class T>
struct Block
{
    T* const* rows;
    unsigned int column;

    T* operator[](unsigned int row) const { return rows[row] + column; }
    Block Below(unsigned int row) const { return {rows + row, column}; }
    Block RightOf(unsigned int more) const { return {rows, column + more}; }
};

/// Takes `length` rows of b, `width` columns wide, side by side into the panel, padded with zeros to whole lanes.
template <class T, unsigned int PanelWidth>
inline void Pack(T* panel, Block<T> b, unsigned int length, unsigned int width)
{
    for (unsigned int t = 0; t < length; ++t, panel += PanelWidth) {
        const T* const row = b[t];
        for (unsigned int j = 0; j < width; ++j) panel[j] = row[j];
        for (unsigned int j = width; j < PanelWidth; ++j) panel[j] = T(0);
    }
}

/// Runs one tile of sums of `Rows` rows through the block.
template <class T, unsigned int Bytes, bool Subtract, unsigned int Rows>
CORVEX_ALWAYS_INLINE void RunTile(Block<T> c, Block<T> a, const T* panel, unsigned int length, unsigned int width)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int lane = Lanes<T, Bytes>::count;
    constexpr unsigned int panelWidth = tileLanes * lane;

    const T* factors[Rows];
    Lane sums[Rows][tileLanes];
    T edge[panelWidth] = {};
    for (unsigned int r = 0; r < Rows; ++r) {
        factors[r] = a[r];
        const T* source = c[r];
        if (width < panelWidth) {
            for (unsigned int j = 0; j < width; ++j) edge[j] = source[j];
            source = edge;
        }
        for (unsigned int l = 0; l < tileLanes; ++l) Load(sums[r][l], source + l * lane);
    }

    for (unsigned int t = 0; t < length; ++t, panel += panelWidth) {
        Lane row[tileLanes];
        for (unsigned int l = 0; l < tileLanes; ++l) Load(row[l], panel + l * lane);
        for (unsigned int r = 0; r < Rows; ++r) {
            const T factor = factors[r][t];
            for (unsigned int l = 0; l < tileLanes; ++l) {
                if constexpr (Subtract)
                    sums[r][l] -= factor * row[l];
                else
                    sums[r][l] += factor * row[l];
            }
        }
    }

    for (unsigned int r = 0; r < Rows; ++r) {
        T* const target = width < panelWidth ? edge : c[r];
        for (unsigned int l = 0; l < tileLanes; ++l) Store(target + l * lane, sums[r][l]);
        if (width < panelWidth)
            for (unsigned int j = 0; j < width; ++j) c[r][j] = edge[j];
    }
}

/// Adds or subtracts the product of two blocks, tile by tile.
template <class T, unsigned int Bytes, bool Subtract>
CORVEX_ALWAYS_INLINE void RunTiles(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner,
                                   unsigned int columnCount)
{
    constexpr unsigned int panelWidth = tileLanes * Lanes<T, Bytes>::count;
    alignas(64) T panel[blockLength * panelWidth];
    for (unsigned int t = 0; t < inner; t += blockLength) {
        const unsigned int length = inner - t < blockLength ? inner - t : blockLength;
        for (unsigned int j = 0; j < columnCount; j += panelWidth) {
            const unsigned int width = columnCount - j < panelWidth ? columnCount - j : panelWidth;
            Pack<T, panelWidth>(panel, b.Below(t).RightOf(j), length, width);
            unsigned int i = 0;
            for (; rowCount - i >= tileRows; i += tileRows)
                RunTile<T, Bytes, Subtract, tileRows>(c.Below(i).RightOf(j), a.Below(i).RightOf(t), panel, length,
                                                      width);
            for (; i < rowCount; ++i)
                RunTile<T, Bytes, Subtract, 1>(c.Below(i).RightOf(j), a.Below(i).RightOf(t), panel, length, width);
        }
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

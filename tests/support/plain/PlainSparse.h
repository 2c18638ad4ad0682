#pragma once

/// The products of compressed matrices as their definitions read, one column at a time.

#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>

#include <cmath>
#include <tuple>
#include <vector>

namespace CorvexTest
{

namespace Maths = Halmont::Orrin::CorvexMaths;
using Halmont::Orrin::CorvexUtilities::TList;

/// The elements of a product: value, row, column.
template <class T>
using Elements = std::vector<std::tuple<T, int, int>>;

/// Keeps what exceeds the tolerance of the sums that sum(row, column, &s) has; of an upper triangle the diagonal too.
template <class T, class Sum>
Elements<T> PlainKept(int rowCount, int columnCount, bool isUpper, const Sum& sum)
{
    Elements<T> kept;
    for (int r = 0; r < rowCount; ++r)
        for (int c = isUpper ? r : 0; c < columnCount; ++c)
            if (T s = 0; sum(r, c, &s) && ((s != 0 && std::fabs(0 - s) > T(1e-6f)) || (isUpper && c == r)))
                kept.emplace_back(s, r, c);
    return kept;
}

/// The first rows of a times a dense b, or of the upper triangle.
template <class T>
Elements<T> PlainTimesDense(const Maths::TCRSMatrixMxN<T>& a, const Maths::TMatrixMxN<T>& b, int rowCount, bool isUpper)
{
    return PlainKept<T>(rowCount, static_cast<int>(b.GetN()), isUpper, [&](int r, int c, T* s) {
        for (int k = a.rowStarts[r]; k < a.rowStarts[r + 1]; ++k)
            if (const T v = b[static_cast<unsigned int>(a.columnIndices[k])][c]; v != 0) *s += a.values[k] * v;
        return true;
    });
}

/// a times a b stored by rows, of which each is searched for the column.
template <class T>
Elements<T> PlainTimesRows(const Maths::TCRSMatrixMxN<T>& a, const Maths::TCRSMatrixMxN<T>& b)
{
    return PlainKept<T>(a.rowCount, b.columnCount, false, [&](int r, int c, T* s) {
        for (int k = a.rowStarts[r]; k < a.rowStarts[r + 1]; ++k) {
            const int end = b.rowStarts[a.columnIndices[k] + 1];
            int p = b.rowStarts[a.columnIndices[k]];
            while (p < end && b.columnIndices[p] < c) ++p;
            if (p < end && b.columnIndices[p] == c) *s += b.values[p] * a.values[k];
        }
        return true;
    });
}

/// The upper triangle of a times a b stored by columns: each is walked beside the row.
template <class T>
Elements<T> PlainTimesColumns(const Maths::TCRSMatrixMxN<T>& a, const Maths::TCCSMatrixMxN<T>& b)
{
    return PlainKept<T>(b.columnCount, b.columnCount, true, [&](int r, int c, T* s) {
        const TList<int>& rows = b.columnRows[c];
        unsigned int j = 0;
        for (int k = a.rowStarts[r]; k < a.rowStarts[r + 1]; ++k) {
            for (bool meets = false; !meets && j < rows.GetCount() && rows[j] <= a.columnIndices[k]; ++j) {
                meets = rows[j] == a.columnIndices[k];
                if (meets) *s += a.values[k] * b.columnValues[c][j];
            }
        }
        return rows.GetCount() != 0;
    });
}

} // namespace CorvexTest

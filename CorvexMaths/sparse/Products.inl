#pragma once

/// The products of TCRSMatrixMxN. Internal; compiled by TCRSMatrixMxN.cpp alone.

#include <CorvexMaths/sparse/TMatrixFragment.h>
#include <CorvexMaths/sparse/internal/ColumnWalk.h>
#include <CorvexMaths/sparse/internal/RowSums.h>
#include <CorvexMaths/sparse/internal/ThreadingRuntime.h>

#include <algorithm>

namespace Halmont::Orrin::CorvexMaths
{

namespace Kernels
{

/// What TCRSMatrixMxN::matrixType says of a symmetric matrix.
constexpr int symmetricType = -2;

/// Stands for no column.
constexpr int noColumn = -1;

/// Appends elements to a fragment, a buffer at a time. The last are there after Flush.
template <class T>
class FragmentWriter
{
public:
    explicit FragmentWriter(TMatrixFragment<T>* target) : fragment(target) {}
    FragmentWriter(const FragmentWriter&) = delete;
    FragmentWriter& operator=(const FragmentWriter&) = delete;

    void Append(T value, int row, int column)
    {
        if (count == size) Flush();
        values[count] = value;
        rows[count] = row;
        columns[count] = column;
        ++count;
    }

    /// Not inline, so that the loops that append keep their registers.
    __attribute__((noinline)) void Flush()
    {
        // Room in all three lists first: they stay of one length where memory runs out.
        fragment->values.Grow(count);
        fragment->rows.Grow(count);
        fragment->columns.Grow(count);
        fragment->values.AddRange(values, count);
        fragment->rows.AddRange(rows, count);
        fragment->columns.AddRange(columns, count);
        count = 0;
    }

private:
    static constexpr unsigned int size = 256;

    TMatrixFragment<T>* fragment;
    unsigned int count = 0;
    T values[size];
    int rows[size];
    int columns[size];
};

/// Appends what is kept of a row of `left` times a dense matrix, from a column on; the diagonal column in any case.
template <class T>
void AppendDenseRow(FragmentWriter<T>& writer, const TCRSMatrixMxN<T>& left, int row, const TMatrixMxN<T>& b, int first,
                    int diagonal)
{
    constexpr int tileWidth = DenseTile<T>::width;
    T sums[tileWidth];
    const RowRange range = RangeOfRow(left, row);
    const int columnCount = static_cast<int>(b.GetN());
    for (int from = first; from < columnCount; from += tileWidth) {
        const int width = columnCount - from < tileWidth ? columnCount - from : tileWidth;
        if (width < tileWidth)
            SumColumns(sums, left, range, b, from, width);
        else if (!SumTile(sums, left, range, b, from) && from != diagonal)
            continue;
        for (int j = 0; j < width; ++j)
            if (IsKept(sums[j]) || from + j == diagonal) writer.Append(sums[j], row, from + j);
    }
}

/// Appends rows `first` to `last` - 1 of the upper triangle of `left` times a matrix stored by columns, which comes
/// with its form by rows where it has one.
template <class T>
void AppendUpperTriangle(const TCRSMatrixMxN<T>& left, const TCCSMatrixMxN<T>& b, const RowForm<T>& bRows, int first,
                         int last, TMatrixFragment<T>* fragment)
{
    FragmentWriter<T> writer(fragment);
    SparseSums<T> sums;
    for (int r = first; r < last; ++r) {
        const RowRange range = RangeOfRow(left, r);
        const auto append = [&writer, r](T sum, int column) {
            if (IsKept(sum) || column == r) writer.Append(sum, r, column);
        };
        if (bRows.IsUsable() && IsAscending(left, range)) {
            const bool withDiagonal = r < b.columnCount && b.columnValues[r].GetCount() != 0;
            FormSparseRow(sums, left, range, bRows.GetRows(), r, withDiagonal, append);
        } else {
            for (int c = r; c < b.columnCount; ++c)
                if (b.columnValues[c].GetCount() != 0) append(WalkTogether(left, range, b, c), c);
        }
    }
    writer.Flush();
}

/// Forms a product by chunks of rows, by fill(first, last, fragment), and moves its elements from the fragment to a
/// result of exactly their number. The threading runtime is asked for the number of chunks; as they are filled one
/// after another into one fragment, the result and the memory it takes are the same for any number. The operands are
/// not read after the result is redefined.
template <class T, class Fill>
void GatherChunks(int extent, int capacity, int rowCount, TCRSMatrixMxN<T>* result, const Fill& fill)
{
    // A chunk has one row at least: more threads than rows have nothing to do.
    const int chunks = std::max(1, std::min(omp_get_max_threads(), extent));
    const int share = extent / chunks;
    TMatrixFragment<T> fragment;
    fragment.SetDimensions(static_cast<unsigned int>(capacity));
    // A product much fuller than the matrix would otherwise be moved once for each half capacity it takes.
    fragment.values.SetUseExponentialGrowth(true);
    fragment.rows.SetUseExponentialGrowth(true);
    fragment.columns.SetUseExponentialGrowth(true);
    for (int i = 0; i < chunks; ++i) fill(i * share, i == chunks - 1 ? extent : (i + 1) * share, &fragment);

    const unsigned int total = fragment.values.GetCount();
    result->Redefine(rowCount, extent, static_cast<int>(total));
    for (unsigned int k = 0; k < total; ++k)
        result->AddElement(fragment.values[k], fragment.rows[k], fragment.columns[k]);
}

} // namespace Kernels

template <class T>
void TCRSMatrixMxN<T>::Multiply(const T* x, T* y) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", columnCount == 0 || x != nullptr, columnCount, x);
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", rowCount == 0 || (y != nullptr && x != y), rowCount, x, y);
    for (int r = 0; r < rowCount; ++r) {
        const Kernels::RowRange range = Kernels::RangeOfRow(*this, r);
        T sum = T(0);
        for (int k = range.begin; k < range.end; ++k) sum += values[k] * x[columnIndices[k]];
        y[r] = sum;
    }
}

// Products with a dense matrix.

template <class T>
void TCRSMatrixMxN<T>::Multiply(const TMatrixMxN<T>& b, TCRSMatrixMxN* result) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", result != nullptr, result);
    Kernels::GatherChunks(
        static_cast<int>(b.GetN()), capacity, rowCount, result,
        [this, &b](int first, int last, TMatrixFragment<T>* fragment) { Multiply(b, first, last, fragment); });
}

template <class T>
void TCRSMatrixMxN<T>::Multiply(const TMatrixMxN<T>& b, int first, int last, TMatrixFragment<T>* fragment) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", columnCount <= static_cast<int>(b.GetM()), columnCount, b.GetM());
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", first >= 0 && fragment != nullptr, first, fragment);
    Kernels::FragmentWriter<T> writer(fragment);
    const int end = last < rowCount ? last : rowCount;
    for (int r = first; r < end; ++r)
        if (!Kernels::RangeOfRow(*this, r).IsEmpty())
            Kernels::AppendDenseRow(writer, *this, r, b, 0, Kernels::noColumn);
    writer.Flush();
}

template <class T>
void TCRSMatrixMxN<T>::Normalise(const TMatrixMxN<T>& b, TCRSMatrixMxN* result) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Normalise", result != nullptr, result);
    result->matrixType = Kernels::symmetricType;
    const int extent = static_cast<int>(b.GetN());
    Kernels::GatherChunks(extent, capacity, extent, result,
                          [this, &b](int first, int last, TMatrixFragment<T>* fragment) {
                              MultiplyUpperTriangle(b, first, last, fragment);
                          });
}

template <class T>
void TCRSMatrixMxN<T>::MultiplyUpperTriangle(const TMatrixMxN<T>& b, int first, int last,
                                             TMatrixFragment<T>* fragment) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::MultiplyUpperTriangle", columnCount <= static_cast<int>(b.GetM()), columnCount,
                        b.GetM());
    CORVEX_PRECONDITION("TCRSMatrixMxN::MultiplyUpperTriangle", first >= 0 && fragment != nullptr, first, fragment);
    Kernels::FragmentWriter<T> writer(fragment);
    for (int r = first; r < last; ++r) Kernels::AppendDenseRow(writer, *this, r, b, r, r);
    writer.Flush();
}

// Products with sparse matrices.

template <class T>
void TCRSMatrixMxN<T>::Multiply(const TCRSMatrixMxN& b, TCRSMatrixMxN* result) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Multiply", result != nullptr && result != this && result != &b, result, this,
                        &b);
    Kernels::SparseSums<T> sums;
    const auto formRow = [this, &b, &sums](int row, const auto& take) {
        Kernels::FormSparseRow(sums, *this, Kernels::RangeOfRow(*this, row), b, 0, false, [&take](T sum, int column) {
            if (Kernels::IsKept(sum)) take(sum, column);
        });
    };
    int count = 0;
    for (int r = 0; r < rowCount; ++r) formRow(r, [&count](T, int) { ++count; });
    result->Redefine(rowCount, b.columnCount, count);
    for (int r = 0; r < rowCount; ++r)
        formRow(r, [result, r](T sum, int column) { result->AddElement(sum, r, column); });
}

template <class T>
void TCRSMatrixMxN<T>::Normalise(const TCCSMatrixMxN<T>& b, TCRSMatrixMxN* result) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::Normalise", result != nullptr, result);
    result->matrixType = Kernels::symmetricType;
    const Kernels::RowForm<T> bRows(b);
    Kernels::GatherChunks(b.columnCount, capacity, b.columnCount, result,
                          [this, &b, &bRows](int first, int last, TMatrixFragment<T>* fragment) {
                              Kernels::AppendUpperTriangle(*this, b, bRows, first, last, fragment);
                          });
}

template <class T>
void TCRSMatrixMxN<T>::MultiplyUpperTriangle(const TCCSMatrixMxN<T>& b, int first, int last,
                                             TMatrixFragment<T>* fragment) const
{
    CORVEX_PRECONDITION("TCRSMatrixMxN::MultiplyUpperTriangle", first >= 0 && fragment != nullptr, first, fragment);
    Kernels::AppendUpperTriangle(*this, b, Kernels::RowForm<T>(b), first, last, fragment);
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// The rows of a tall matrix of few columns, below its head, laid out for sweeps.
///
/// Such a matrix is larger than the caches near the processor, and a sweep reads it whole for a few operations on each
/// row. So its rows stand in panels (PanelLayout.inl). A sweep then reads the columns it needs, and rows lie side by
/// side in registers. Every sum still takes its terms one by one, first those of the head and then those of the panels,
/// in the order of the rows, and every element goes through the steps that it would go through as part of a row. All
/// that changes is which of several independent elements is computed first.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/decomposition/PanelLayout.inl>
#include <CorvexMaths/matrices/decomposition/Reduction.inl>
#include <CorvexMaths/matrices/decomposition/Rotations.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The most columns of a matrix in panels.
constexpr unsigned int mostPanelColumns = 32;

/// The most columns that there can be for a width.
template <class Width>
constexpr unsigned int mostColumns = mostPanelColumns;
template <unsigned int N>
constexpr unsigned int mostColumns<FixedWidth<N>> = N;

/// The bytes of a register of a strip; without wide registers, of a pair of them.
constexpr unsigned int panelBytes = 32;

/// Whether panels are worth the transposition.
constexpr bool GoesInPanels(unsigned int m, unsigned int n)
{
    return n > 0 && n <= mostPanelColumns && m >= 64 && m >= 4 * n;
}

/// Adds the products of x with 4 * G columns, each of `count` rows, to their sums. The products of four rows are
/// transposed, so that those of a row lie side by side and each sum takes its terms in the order of the rows.
template <unsigned int G, class T, class Lane>
CORVEX_ALWAYS_INLINE void AddProductsOfFours(const T* x, const T* const (&columns)[4 * G], unsigned int count,
                                             Lane* sums)
{
    using Source = const AnyAddress<Lane>*;
    Lane sum[G];
    for (unsigned int g = 0; g < G; ++g) sum[g] = sums[g];
    for (unsigned int r = 0; r < count; r += 4) {
        const Lane factor = reinterpret_cast<Source>(x + r)->lane;
        for (unsigned int g = 0; g < G; ++g) {
            Lane products[4];
            for (unsigned int c = 0; c < 4; ++c)
                products[c] = reinterpret_cast<Source>(columns[4 * g + c] + r)->lane * factor;
            Transpose(products);
            for (const Lane& product : products) sum[g] += product;
        }
    }
    for (unsigned int g = 0; g < G; ++g) sums[g] = sum[g];
}

/// Sums of products with `Width` columns, four to a register. Where the last register has lanes to spare, they repeat
/// the sum of the last column and are not read.
template <class T, class Width>
class PanelSums
{
public:
    PanelSums(const T* begun, Width sumCount) : width(sumCount)
    {
        for (unsigned int j = 0; j < width.Get(); ++j) sums[j / 4][j % 4] = begun[j];
    }

    void PutBack(T* target) const
    {
        for (unsigned int j = 0; j < width.Get(); ++j) target[j] = sums[j / 4][j % 4];
    }

    /// Adds the products of `count` elements of x with those of columns `stride` apart, the first at `first`.
    CORVEX_ALWAYS_INLINE void Add(const T* x, const T* first, std::size_t stride, unsigned int count)
    {
        const unsigned int end = width.Get();
        const auto at = [=](unsigned int j) { return first + (j < end ? j : end - 1) * stride; };
        unsigned int j = 0;
        for (; j + 4 < end; j += 8) {
            const T* const columns[] = {at(j),     at(j + 1), at(j + 2), at(j + 3),
                                        at(j + 4), at(j + 5), at(j + 6), at(j + 7)};
            AddProductsOfFours<2>(x, columns, count, sums + j / 4);
        }
        if (j < end) {
            const T* const columns[] = {at(j), at(j + 1), at(j + 2), at(j + 3)};
            AddProductsOfFours<1>(x, columns, count, sums + j / 4);
        }
    }

private:
    using Lane = typename Lanes<T, 4 * sizeof(T)>::Type;
    Width width;
    Lane sums[mostColumns<Width> / 4 + 2] = {};
};

/// The elements of a strip of rows in columns `stride` apart: in their place where there may be many.
template <class T, class Width>
class StripColumns
{
public:
    static constexpr unsigned int rows = stripRows;
    using Column = Strip<T, panelBytes, stripRows * sizeof(T) / panelBytes>;

    StripColumns(T* first, std::size_t columnStride) : place(first), stride(columnStride) {}
    void Get(unsigned int j, Column* column) const { column->Read(place + j * stride); }
    void Set(unsigned int j, const Column& column) const { column.Write(place + j * stride); }
    static void PutBack() {}

private:
    T* place;
    std::size_t stride;
};

/// Few columns are held in registers, so fewer rows at a time.
template <class T, unsigned int N>
class StripColumns<T, FixedWidth<N>>
{
public:
    static constexpr unsigned int rows = panelBytes / sizeof(T);
    using Column = Strip<T, panelBytes, 1>;

    StripColumns(T* first, std::size_t columnStride) : place(first), stride(columnStride)
    {
        for (unsigned int j = 0; j < N; ++j) columns[j].Read(place + j * stride);
    }
    void Get(unsigned int j, Column* column) const { *column = columns[j]; }
    void Set(unsigned int j, const Column& column) { columns[j] = column; }
    void PutBack() const
    {
        for (unsigned int j = 0; j < N; ++j) columns[j].Write(place + j * stride);
    }

private:
    T* place;
    std::size_t stride;
    Column columns[N];
};

/// The rows below the head, in panels. `Begin` comes first; the sweeps of the steps follow.
template <class T>
class Panels
{
public:
    /// Panels in `target` for the rows that follow one another in `source`, each less `shift` if there is one. `source`
    /// may overlap `target`, but not begin before it. Without a source the rows stand in panels already.
    Panels(const T* source, const T* shift, T* target, unsigned int rows, unsigned int columns)
        : rowSource(source), origin(shift), elements(target), rowCount(rows), n(columns)
    {}

    /// Reads the rows into the panels and adds up the absolute values of their first column.
    void Begin(T* sum) const
    {
        WithColumns(n, [&](auto columns) {
            const T* rows = rowSource;
            ForPanels(sum, [&](T* panel, unsigned int count, T& total) {
                if (rowSource == nullptr) return AddMagnitudes(panel, count, &total);
                const unsigned int width = columns.Get();
                T taken[longestPanel * mostColumns<decltype(columns)>];
                for (unsigned int r = 0; r < count; r += 4) {
                    const T* const at = rows + r * width;
                    TransposeFourRows<true>({at, at + width, at + 2 * width, at + 3 * width}, taken + r, count, width);
                }
                if (origin != nullptr)
                    for (unsigned int j = 0; j < width; ++j)
                        for (unsigned int r = 0; r < count; ++r) taken[j * count + r] -= origin[j];
                AddMagnitudes(taken, count, &total);
                for (unsigned int e = 0; e < width * count; ++e) panel[e] = taken[e];
                rows += std::size_t(count) * width;
            });
        });
    }

    /// Divides column i and adds up the squares.
    void DivideColumn(unsigned int i, T scale, T* squares) const
    {
        ForPanels(squares, [=](T* panel, unsigned int count, T& sum) {
            T* const x = panel + std::size_t(i) * count;
            CORVEX_INDEPENDENT_STEPS
            for (unsigned int r = 0; r < count; ++r) x[r] /= scale;
            for (unsigned int r = 0; r < count; ++r) sum += x[r] * x[r];
        });
    }

    /// Adds the products of column i with each of the `width` columns right of it to `sums`.
    void AddColumnProducts(unsigned int i, T* sums, unsigned int width) const
    {
        AddUp(sums, width, [i](T* panel, unsigned int count, auto, auto& held) {
            const T* const x = panel + std::size_t(i) * count;
            held.Add(x, x + count, count, count);
        });
    }

    /// Applies both reflections of a step to the rows and adds up the absolute values of the column after its own.
    void Sweep(const ReductionStep<T>& step, unsigned int width, T* nextScale) const
    {
        WithColumns(width + 1, [&](auto columns) {
            ForPanels(nextScale, [&](T* panel, unsigned int count, T& sum) {
                T* const x = panel + std::size_t(step.i) * count;
                for (unsigned int r = 0; r < count; r += stripRows) {
                    SweepStrip(x + r, count, step, columns);
                    if (columns.Get() > 1) AddMagnitudes(x + count + r, stripRows, &sum);
                }
            });
        });
    }

    /// Adds multiples of column i to the `width` columns right of it and multiplies it by g; with `sums`, adds the
    /// products of column i - 1 with all of these to them. The last step, that of column 0, waits for `Rotate` or
    /// `Finish`: no sum needs its result, so it is done with the rotations, panel by panel.
    void SweepLeft(unsigned int i, const T* factors, unsigned int width, T g, T* sums)
    {
        if (i == 0) {
            for (unsigned int j = 0; j < width; ++j) lastFactors[j] = factors[j];
            lastScale = g;
            lastWaits = true;
            return;
        }
        T unused[mostPanelColumns] = {};
        AddUp(sums != nullptr ? sums : unused, width + 1, [=](T* panel, unsigned int count, auto columns, auto& held) {
            T* const x = panel + std::size_t(i) * count;
            for (unsigned int r = 0; r < count; r += stripRows) UpdateStrip(x + r, count, factors, columns, g);
            if (sums != nullptr) held.Add(x - count, x, count, count);
        });
    }

    void ClearColumn(unsigned int i) const
    {
        NoState none;
        ForPanels(&none,
                  [=](T* panel, unsigned int count, NoState) { SetZero(panel + std::size_t(i) * count, count); });
    }

    /// Rotates the columns.
    void Rotate(const Rotation<T>* rotations, unsigned int rotationCount)
    {
        WithColumns(n, [&](auto columns) {
            NoState none;
            ForPanels(&none, [&](T* panel, unsigned int count, NoState) {
                Complete(panel, count, rotations, rotationCount, columns);
            });
        });
        lastWaits = false;
    }

    /// Rotates the columns and adds the product of each with b to its sum.
    void Finish(const Rotation<T>* rotations, unsigned int rotationCount, const T* b, T* sums) const
    {
        AddUp(sums, n, [&](T* panel, unsigned int count, auto columns, auto& held) {
            for (unsigned int r = 0; r < count; r += stripRows, b += stripRows) {
                CompleteStrip(panel + r, count, rotations, rotationCount, columns);
                held.Add(b, panel + r, count, stripRows);
            }
        });
    }

    /// Rotates the columns and writes the rows to memory that may overlap the panels, but must not begin before them.
    void Finish(const Rotation<T>* rotations, unsigned int rotationCount, T* rows) const
    {
        WithColumns(n, [&](auto columns) {
            NoState none;
            ForPanels<true>(&none, [&](T* panel, unsigned int count, NoState) {
                Complete(panel, count, rotations, rotationCount, columns);
                const unsigned int width = columns.Get();
                T turned[longestPanel * mostColumns<decltype(columns)>];
                for (unsigned int r = 0; r < count; r += 4) {
                    T* const at = turned + r * width;
                    TransposeFourRows<false>({at, at + width, at + 2 * width, at + 3 * width}, panel + r, count, width);
                }
                T* const target = rows + (panel - elements);
                for (unsigned int e = 0; e < width * count; ++e) target[e] = turned[e];
            });
        });
    }

private:
    struct NoState
    {};

    template <bool upwards = false, class State, class Operation>
    void ForPanels(State* state, Operation operation) const
    {
        Kernels::ForPanels<upwards>(elements, rowCount, n, state, operation);
    }

    /// Calls an operation for a number of columns; up to 4, those of points and of the fits of a circle and a sphere,
    /// are fixed.
    template <class Operation>
    static void WithColumns(unsigned int count, Operation operation)
    {
        WithFewColumns<1>(count, operation, [=](unsigned int many) { operation(AnyWidth<>{many}); });
    }

    /// Calls operation(panel, number of its rows, columns, sums), which adds to sums of so many columns.
    template <class Operation>
    void AddUp(T* sums, unsigned int count, Operation operation) const
    {
        WithColumns(count, [&](auto columns) {
            PanelSums<T, decltype(columns)> all(sums, columns);
            ForPanels(&all, [&](T* panel, unsigned int rows, auto& held) { operation(panel, rows, columns, held); });
            all.PutBack(sums);
        });
    }

    /// Adds up absolute values.
    static void AddMagnitudes(const T* x, unsigned int count, T* sum)
    {
        for (unsigned int r = 0; r < count; ++r) *sum += Numbers::Absolute(x[r]);
    }

    /// `Sweep` of a strip, x in the column of the step. Without a reflection of the row its products go unused.
    template <class Width>
    static void SweepStrip(T* x, unsigned int count, const ReductionStep<T>& step, Width columns)
    {
        using Columns = StripColumns<T, Width>;
        const unsigned int width = columns.Get() - 1;
        const bool isReflected = step.columnScale != T(0);
        for (unsigned int r = 0; r < stripRows; r += Columns::rows) {
            Columns strip(x + r, count);
            typename Columns::Column column, element, products = {};
            strip.Get(0, &column);
            for (unsigned int j = 0; j < width; ++j) {
                strip.Get(j + 1, &element);
                if (isReflected) {
                    element.AddTimes(column, step.columnFactors[j]);
                    strip.Set(j + 1, element);
                }
                products.AddTimes(element, step.rowVector[j]);
            }
            if (isReflected) {
                column.Multiply(step.columnScale);
                strip.Set(0, column);
            }
            if (step.rowScale != T(0)) {
                for (unsigned int j = 0; j < width; ++j) {
                    strip.Get(j + 1, &element);
                    element.AddTimes(products, step.rowVectorOverH[j]);
                    strip.Set(j + 1, element);
                }
            }
            strip.PutBack();
        }
    }

    /// Adds multiples of the first of the columns at x to the others and multiplies it by `scale`.
    template <class Width>
    static void UpdateStrip(T* x, unsigned int count, const T* factors, Width columns, T scale)
    {
        using Columns = StripColumns<T, Width>;
        for (unsigned int r = 0; r < stripRows; r += Columns::rows) {
            Columns strip(x + r, count);
            typename Columns::Column column, element;
            strip.Get(0, &column);
            for (unsigned int j = 1; j < columns.Get(); ++j) {
                strip.Get(j, &element);
                element.AddTimes(column, factors[j - 1]);
                strip.Set(j, element);
            }
            column.Multiply(scale);
            strip.Set(0, column);
            strip.PutBack();
        }
    }

    /// Applies the last step from the left if it still waits, and then rotations.
    template <class Width>
    void Complete(T* panel, unsigned int count, const Rotation<T>* rotations, unsigned int rotationCount,
                  Width columns) const
    {
        for (unsigned int r = 0; r < count; r += stripRows)
            CompleteStrip(panel + r, count, rotations, rotationCount, columns);
    }

    template <class Width>
    void CompleteStrip(T* x, unsigned int count, const Rotation<T>* rotations, unsigned int rotationCount,
                       Width columns) const
    {
        if (lastWaits) UpdateStrip(x, count, lastFactors, columns, lastScale);
        ApplyRotations<typename StripColumns<T, AnyWidth<>>::Column>(rotations, rotationCount, x, 0, count);
    }

    const T* rowSource;
    const T* origin;
    T* elements;
    unsigned int rowCount;
    unsigned int n;
    T lastFactors[mostPanelColumns];
    T lastScale = T(0);
    bool lastWaits = false;
};

/// Stands in for the panels of a matrix that is all head.
struct NoPanels
{
    static constexpr auto doNothing = [](auto&&...) {};
    static constexpr auto Begin = doNothing;
    static constexpr auto DivideColumn = doNothing;
    static constexpr auto AddColumnProducts = doNothing;
    static constexpr auto Sweep = doNothing;
    static constexpr auto SweepLeft = doNothing;
    static constexpr auto ClearColumn = doNothing;
    static constexpr auto AddRowProducts = doNothing;
};

/// The rotations of the columns of U for a matrix in a head and panels. `Flush` completes those of the head; the last
/// ones of the panels wait until U is written or multiplied.
template <class T>
class PanelRotations
{
public:
    PanelRotations(T** headRows, unsigned int headCount, Panels<T>* below) : head(headRows, headCount), panels(*below)
    {}

    void Add(unsigned int first, unsigned int second, T c, T s)
    {
        head.Add(first, second, c, s);
        if (count == capacity) {
            panels.Rotate(rotations, count);
            count = 0;
        }
        rotations[count++] = {c, s, first, second};
    }

    void Flush() { head.Flush(); }

    /// Writes the rows of U below the head.
    void GiveBackRows(T* rows) const { panels.Finish(rotations, count, rows); }

    /// Adds the product of each column of U below the head with b to its sum. U itself is lost.
    void AddRowProducts(const T* b, T* sums) const { panels.Finish(rotations, count, b, sums); }

private:
    static constexpr unsigned int capacity = 1024;

    RotationRun<T> head;
    Panels<T>& panels;
    unsigned int count = 0;
    Rotation<T> rotations[capacity];
};

/// Drops the rotations where U is not asked for: the iteration never reads its columns.
template <class T>
struct NoRotations
{
    static void Add(unsigned int, unsigned int, T, T) {}
    static void Flush() {}
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

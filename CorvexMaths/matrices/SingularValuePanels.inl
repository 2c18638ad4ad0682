#pragma once

/// The rows of a tall matrix of few columns, below its head, laid out for sweeps.
///
/// Such a matrix is larger than the caches near the processor, and a sweep reads it whole for a few operations on each
/// row. So its rows stand in panels: a few rows at a time, turned on their side, in the memory that the rows took. A
/// sweep then reads the columns it needs, and rows lie side by side in registers. Every sum still takes its terms one
/// by one, first those of the head and then those of the panels, in the order of the rows, and every element goes
/// through the steps that it would go through as part of a row; only elements that do not depend on one another have
/// changed places in time.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/SingularValueReduction.inl>
#include <CorvexMaths/matrices/SingularValueRotations.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The most columns of a matrix in panels.
constexpr unsigned int mostPanelColumns = 32;

/// Panels hold a multiple of this number of rows, those of registers that a sweep works on at a time.
constexpr unsigned int stripRows = 16;

/// The bytes of a register of a strip; without wide registers it is a pair.
constexpr unsigned int panelBytes = 32;

/// Whether panels are worth their turning.
constexpr bool GoesInPanels(unsigned int m, unsigned int n)
{
    return n > 0 && n <= mostPanelColumns && m >= 64 && m >= 4 * n;
}

/// The number of rows in the head: those that steps from the right reflect, and what fills no strip.
constexpr unsigned int HeadRows(unsigned int m, unsigned int n)
{
    return n + (m - n) % stripRows;
}

/// Adds the products of x with 4 * G columns, each of `count` rows, to their sums. The products of four rows are
/// turned, so that those of a row lie side by side and each sum takes its terms in the order of the rows.
template <unsigned int G, class T>
CORVEX_ALWAYS_INLINE void AddProductsOfFours(const T* x, const T* const (&columns)[4 * G], unsigned int count, T* sums)
{
    using Lane = typename Lanes<T, 4 * sizeof(T)>::Type;
    using Source = const AnyAddress<Lane>*;
    Lane sum[G];
    for (unsigned int g = 0; g < G; ++g) Load(sum[g], sums + 4 * g);
    for (unsigned int r = 0; r < count; r += 4) {
        const Lane factor = reinterpret_cast<Source>(x + r)->lane;
        for (unsigned int g = 0; g < G; ++g) {
            Lane products[4];
            for (unsigned int c = 0; c < 4; ++c)
                products[c] = reinterpret_cast<Source>(columns[4 * g + c] + r)->lane * factor;
            Transpose(products);
            for (unsigned int c = 0; c < 4; ++c) sum[g] += products[c];
        }
    }
    for (unsigned int g = 0; g < G; ++g) Store(sums + 4 * g, sum[g]);
}

/// The same for `width` columns right of x. The sums are filled up to a multiple of 4; what is added to those beyond
/// the width is the last column's.
template <class T>
CORVEX_ALWAYS_INLINE void AddProducts(const T* x, unsigned int count, T* sums, unsigned int width)
{
    const auto at = [=](unsigned int j) { return x + std::size_t(1 + (j < width ? j : width - 1)) * count; };
    unsigned int j = 0;
    for (; width - j > 4 && j < width; j += 8) {
        const T* const columns[] = {at(j), at(j + 1), at(j + 2), at(j + 3), at(j + 4), at(j + 5), at(j + 6), at(j + 7)};
        AddProductsOfFours<2>(x, columns, count, sums + j);
    }
    if (j < width) {
        const T* const columns[] = {at(j), at(j + 1), at(j + 2), at(j + 3)};
        AddProductsOfFours<1>(x, columns, count, sums + j);
    }
}

#ifdef CORVEX_WIDE_LANES
template <class T>
CORVEX_WIDE_LANES __attribute__((noinline)) void AddProductsWide(const T* x, unsigned int count, T* sums,
                                                                 unsigned int width)
{
    AddProducts(x, count, sums, width);
}
#endif

template <class T>
class Panels
{
public:
    /// Of rows of n elements that follow one another in `source`, which may be `target`, less `shift` if there is one.
    Panels(const T* source, const T* shift, T* target, unsigned int rows, unsigned int columns)
        : rowSource(source), origin(shift), elements(target), rowCount(rows), n(columns)
    {}

    /// Takes the rows and adds up the absolute values of their first column.
    void Begin(T* sum) const
    {
        const T* rows = rowSource;
        WithOrder([&](auto order) {
            ForPanels([&](T* panel, unsigned int count) {
                const unsigned int width = order.Get();
                T taken[longest * mostPanelColumns];
                for (unsigned int r = 0; r < count; ++r)
                    for (unsigned int j = 0; j < width; ++j) taken[j * count + r] = rows[r * width + j];
                if (origin != nullptr)
                    for (unsigned int j = 0; j < width; ++j)
                        for (unsigned int r = 0; r < count; ++r) taken[j * count + r] -= origin[j];
                T total = *sum;
                for (unsigned int r = 0; r < count; ++r) total += Numbers::Absolute(taken[r]);
                *sum = total;
                for (unsigned int e = 0; e < width * count; ++e) panel[e] = taken[e];
                rows += std::size_t(count) * width;
            });
        });
    }

    /// Divides column i and adds up the squares.
    void DivideColumn(unsigned int i, T scale, T* squares) const
    {
        ForPanels([=](T* panel, unsigned int count) {
            T* const x = panel + std::size_t(i) * count;
            T sum = *squares;
            CORVEX_INDEPENDENT_STEPS
            for (unsigned int r = 0; r < count; ++r) x[r] /= scale;
            for (unsigned int r = 0; r < count; ++r) sum += x[r] * x[r];
            *squares = sum;
        });
    }

    /// Adds the products of column i with each of the `width` columns right of it to `sums`.
    void AddColumnProducts(unsigned int i, T* sums, unsigned int width) const
    {
        T held[mostPanelColumns + 8] = {};
        for (unsigned int j = 0; j < width; ++j) held[j] = sums[j];
        ForPanels([&](T* panel, unsigned int count) {
            const T* const x = panel + std::size_t(i) * count;
#ifdef CORVEX_WIDE_LANES
            if (hasWideLanes) return AddProductsWide(x, count, held, width);
#endif
            AddProducts(x, count, held, width);
        });
        for (unsigned int j = 0; j < width; ++j) sums[j] = held[j];
    }

    /// Applies both reflections of a step to the rows and adds up the absolute values of the column after its own.
    void Sweep(const ReductionStep<T>& step, unsigned int width, T* nextScale) const
    {
        ForPanels([&](T* panel, unsigned int count) {
            T* const x = panel + std::size_t(step.i) * count;
            for (unsigned int r = 0; r < count; r += stripRows) SweepStrip(x + r, count, step, width);
            if (width == 0) return;
            T sum = *nextScale;
            for (unsigned int r = 0; r < count; ++r) sum += Numbers::Absolute(x[count + r]);
            *nextScale = sum;
        });
    }

    /// Adds multiples of column i to the `width` columns right of it and takes it times g. The last step, that of
    /// column 0, waits for `Rotate` or `Finish`: no sum needs what it gives, so it goes with the rotations panel by
    /// panel.
    void SweepLeft(unsigned int i, const T* factors, unsigned int width, T g)
    {
        if (i == 0) {
            for (unsigned int j = 0; j < width; ++j) lastFactors[j] = factors[j];
            lastScale = g;
            lastWaits = true;
            return;
        }
        ForPanels([&](T* panel, unsigned int count) {
            T* const x = panel + std::size_t(i) * count;
            for (unsigned int r = 0; r < count; r += stripRows) UpdateStrip(x + r, count, factors, width, g);
        });
    }

    void ClearColumn(unsigned int i) const
    {
        ForPanels([=](T* panel, unsigned int count) { SetZero(panel + std::size_t(i) * count, count); });
    }

    /// Rotates the columns.
    void Rotate(const Rotation<T>* rotations, unsigned int rotationCount)
    {
        ForPanels([&](T* panel, unsigned int count) { Complete(panel, count, rotations, rotationCount); });
        lastWaits = false;
    }

    /// Rotates the columns and gives the rows back.
    void Finish(const Rotation<T>* rotations, unsigned int rotationCount) const
    {
        WithOrder([&](auto order) {
            ForPanels([&](T* panel, unsigned int count) {
                Complete(panel, count, rotations, rotationCount);
                const unsigned int width = order.Get();
                T turned[longest * mostPanelColumns];
                for (unsigned int r = 0; r < count; ++r)
                    for (unsigned int j = 0; j < width; ++j) turned[r * width + j] = panel[j * count + r];
                for (unsigned int e = 0; e < width * count; ++e) panel[e] = turned[e];
            });
        });
    }

private:
    static constexpr unsigned int longest = 4 * stripRows;

    /// A strip of one column.
    using Column = Strip<T, panelBytes, stripRows * sizeof(T) / panelBytes>;

    /// Calls operation(panel, number of its rows) from the top down.
    template <class Operation>
    void ForPanels(Operation operation) const
    {
        InWideLanes([&] {
            T* panel = elements;
            for (unsigned int left = rowCount; left > 0;) {
                const unsigned int count = left < longest ? left : longest;
                operation(panel, count);
                panel += std::size_t(count) * n;
                left -= count;
            }
        });
    }

    /// Calls an operation for the number of columns; that of points and of the fits of a circle and a sphere is fixed.
    template <class Operation>
    void WithOrder(Operation operation) const
    {
        switch (n) {
        case 3:
            return operation(FixedWidth<3>());
        case 4:
            return operation(FixedWidth<4>());
        default:
            return operation(AnyWidth{n});
        }
    }

    /// `Sweep` of a strip, x in the column of the step. Without a reflection of the row its products go unused.
    static void SweepStrip(T* x, unsigned int count, const ReductionStep<T>& step, unsigned int width)
    {
        const T* const factors = step.columnFactors;
        const T* const rowVector = step.rowVector;
        Column column;
        column.Read(x);
        Column products = {};
        if (step.columnScale != T(0)) {
            for (unsigned int j = 0; j < width; ++j) {
                T* const y = x + std::size_t(j + 1) * count;
                Column element;
                element.Read(y);
                element.AddTimes(column, factors[j]);
                element.Write(y);
                products.AddTimes(element, rowVector[j]);
            }
            column.Multiply(step.columnScale);
            column.Write(x);
        } else {
            for (unsigned int j = 0; j < width; ++j) {
                Column element;
                element.Read(x + std::size_t(j + 1) * count);
                products.AddTimes(element, rowVector[j]);
            }
        }
        if (step.rowScale != T(0)) AddToColumns(products, x, count, step.rowVectorOverH, width);
    }

    /// Adds multiples of the column at x to those right of it and takes it times `scale`.
    static void UpdateStrip(T* x, unsigned int count, const T* factors, unsigned int width, T scale)
    {
        Column column;
        column.Read(x);
        AddToColumns(column, x, count, factors, width);
        column.Multiply(scale);
        column.Write(x);
    }

    /// Adds multiples of `values` to the columns right of that at x.
    static void AddToColumns(const Column& values, T* x, unsigned int count, const T* factors, unsigned int width)
    {
        for (unsigned int j = 0; j < width; ++j) {
            x += count;
            Column element;
            element.Read(x);
            element.AddTimes(values, factors[j]);
            element.Write(x);
        }
    }

    /// What waits of the last step from the left, and then rotations.
    void Complete(T* panel, unsigned int count, const Rotation<T>* rotations, unsigned int rotationCount) const
    {
        for (unsigned int r = 0; r < count; r += stripRows) {
            if (lastWaits) UpdateStrip(panel + r, count, lastFactors, n - 1, lastScale);
            ApplyRotations<Column>(rotations, rotationCount, panel + r, 0, count);
        }
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

/// What stands for the panels of a matrix that is head alone.
struct NoPanels
{
    template <class... Arguments>
    static void Begin(Arguments...)
    {}
    template <class... Arguments>
    static void DivideColumn(Arguments...)
    {}
    template <class... Arguments>
    static void AddColumnProducts(Arguments...)
    {}
    template <class... Arguments>
    static void Sweep(Arguments&&...)
    {}
    template <class... Arguments>
    static void SweepLeft(Arguments...)
    {}
    template <class... Arguments>
    static void ClearColumn(Arguments...)
    {}
};

/// The rotations of the columns of U where the matrix stands in a head, which is rotated at once, and in panels.
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

    void Flush()
    {
        head.Flush();
        panels.Finish(rotations, count);
    }

private:
    static constexpr unsigned int capacity = 1024;

    RotationRun<T> head;
    Panels<T>& panels;
    unsigned int count = 0;
    Rotation<T> rotations[capacity];
};

/// Where U is not asked for, nothing turns its columns: the iteration does not look at them.
template <class T>
struct NoRotations
{
    static void Add(unsigned int, unsigned int, T, T) {}
    static void Flush() {}
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

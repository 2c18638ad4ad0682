#pragma once

/// The loops over rows that the decomposition is made of. Each result is one running sum over ascending rows or
/// columns; what runs side by side are results that do not depend on one another.

// The steps of the loop that follows touch different elements, which no compiler can see through row pointers.
#if defined(__clang__)
// Below -O2 nothing is vectorised, which is no reason to warn.
#pragma clang diagnostic ignored "-Wpass-failed"
#define CORVEX_INDEPENDENT_STEPS _Pragma("clang loop vectorize(assume_safety)")
#else
#define CORVEX_INDEPENDENT_STEPS _Pragma("GCC ivdep")
#endif

#include <CorvexMaths/internal/Lanes.h>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// A number of columns known at compile time: loops over them unroll, and a row of values stays in registers.
template <unsigned int N>
struct FixedWidth
{
    static constexpr unsigned int rowsAtOnce = 1;
    static constexpr unsigned int registerBytes = baselineBytes;
    static constexpr unsigned int Get() { return N; }
};

/// A number of columns known at run time, for loops in registers of `Bytes` bytes. Rows are taken four at a time, to
/// read what they share once.
template <unsigned int Bytes = baselineBytes>
struct AnyWidth
{
    static constexpr unsigned int rowsAtOnce = 4;
    static constexpr unsigned int registerBytes = Bytes;
    unsigned int width;
    unsigned int Get() const { return width; }
};

/// Calls an operation on loops over `width` columns, in wide registers where the processor has them.
template <class Operation>
inline auto WithAnyWidth(unsigned int width, Operation operation)
{
    return ForThisProcessor([=](auto bytes) __attribute__((flatten)) { return operation(AnyWidth<bytes>{width}); });
}

/// Calls `operation` for a fixed width where that is one of the four from `fewest` on, so that a tall matrix of up to 4
/// columns streams through registers; else calls `otherwise` for the width.
template <unsigned int fewest, class Operation, class Otherwise>
inline auto WithFewColumns(unsigned int width, Operation operation, Otherwise otherwise)
{
    switch (width - fewest) {
    case 0:
        return operation(FixedWidth<fewest>());
    case 1:
        return operation(FixedWidth<fewest + 1>());
    case 2:
        return operation(FixedWidth<fewest + 2>());
    case 3:
        return operation(FixedWidth<fewest + 3>());
    default:
        return otherwise(width);
    }
}

/// Calls an operation on the columns right of a pivot: fixed up to 3, any number as WithAnyWidth does.
template <class Operation>
inline auto WithWidth(unsigned int width, Operation operation)
{
    return WithFewColumns<0>(width, operation, [=](unsigned int many) { return WithAnyWidth(many, operation); });
}

/// A row of values that a loop over other rows reads or adds to: a copy of its own when the width is fixed, the
/// caller's memory otherwise.
template <class T, class Width>
struct Held
{
    T* values;
    Held(T* source, Width) : values(source) {}
    T& operator[](unsigned int index) { return values[index]; }
    void PutBack(T*) {}
};

template <class T, unsigned int N>
struct Held<T, FixedWidth<N>>
{
    T values[N == 0 ? 1 : N];
    Held(const T* source, FixedWidth<N>)
    {
        for (unsigned int j = 0; j < N; ++j) values[j] = source[j];
    }
    T& operator[](unsigned int index) { return values[index]; }
    void PutBack(T* target)
    {
        for (unsigned int j = 0; j < N; ++j) target[j] = values[j];
    }
};

/// R rows and a factor for each.
template <class T, unsigned int R>
struct RowBlock
{
    T* rows[R];
    T factors[R];
};

/// Calls operation(block size, first row) over the rows from `from` to before `to`, in ascending blocks of R and then
/// singly.
template <unsigned int R, class Operation>
inline void ForRows(unsigned int from, unsigned int to, Operation operation)
{
    unsigned int k = from;
    for (; to - k >= R && k < to; k += R) operation(FixedWidth<R>(), k);
    if constexpr (R > 1)
        for (; k < to; ++k) operation(FixedWidth<1>(), k);
}

/// row += factor * values, for each row of the block.
template <class T, unsigned int R, class Values, class Width>
inline void UpdateRows(const RowBlock<T, R>& block, Values& values, Width width)
{
    const unsigned int count = width.Get();
    CORVEX_INDEPENDENT_STEPS
    for (unsigned int j = 0; j < count; ++j)
        for (unsigned int r = 0; r < R; ++r) block.rows[r][j] += values[j] * block.factors[r];
}

/// sums += factor * row, one row of the block after the other.
template <class T, unsigned int R, class Values, class Width>
inline void AddRows(const RowBlock<T, R>& block, Values& sums, Width width)
{
    const unsigned int count = width.Get();
    CORVEX_INDEPENDENT_STEPS
    for (unsigned int j = 0; j < count; ++j) {
        T sum = sums[j];
        for (unsigned int r = 0; r < R; ++r) sum += block.factors[r] * block.rows[r][j];
        sums[j] = sum;
    }
}

/// `UpdateRows`, and `AddRows` of the updated rows with factors of its own, in one pass.
template <class T, unsigned int R, class Values, class Sums, class Width>
inline void UpdateAndAddRows(const RowBlock<T, R>& block, Values& values, const T (&addFactors)[R], Sums& sums,
                             Width width)
{
    const unsigned int count = width.Get();
    CORVEX_INDEPENDENT_STEPS
    for (unsigned int j = 0; j < count; ++j) {
        T sum = sums[j];
        for (unsigned int r = 0; r < R; ++r) {
            const T element = block.rows[r][j] + values[j] * block.factors[r];
            block.rows[r][j] = element;
            sum += addFactors[r] * element;
        }
        sums[j] = sum;
    }
}

/// A register in memory at any address. Unlike a copy of bytes, it stays a register where a kernel for one width is
/// inlined into one for another.
template <class Lane>
struct __attribute__((packed, may_alias)) AnyAddress
{
    Lane lane;
};

/// Transposes 4 registers of 4.
template <class Lane>
CORVEX_ALWAYS_INLINE void Transpose(Lane (&x)[4])
{
    const Lane a = __builtin_shufflevector(x[0], x[1], 0, 4, 2, 6);
    const Lane b = __builtin_shufflevector(x[0], x[1], 1, 5, 3, 7);
    const Lane c = __builtin_shufflevector(x[2], x[3], 0, 4, 2, 6);
    const Lane d = __builtin_shufflevector(x[2], x[3], 1, 5, 3, 7);
    x[0] = __builtin_shufflevector(a, c, 0, 1, 4, 5);
    x[1] = __builtin_shufflevector(b, d, 0, 1, 4, 5);
    x[2] = __builtin_shufflevector(a, c, 2, 3, 6, 7);
    x[3] = __builtin_shufflevector(b, d, 2, 3, 6, 7);
}

/// Transposes four rows of `width` elements to columns `stride` apart, the first at `column`, or back.
template <bool take, class T, class Row>
CORVEX_ALWAYS_INLINE void TransposeFourRows(Row* const (&row)[4], T* column, std::size_t stride, unsigned int width)
{
    using Lane = typename Lanes<T, 4 * sizeof(T)>::Type;
    unsigned int j = 0;
    for (; width - j >= 4; j += 4, column += 4 * stride) {
        Lane x[4];
        for (unsigned int k = 0; k < 4; ++k)
            x[k] = reinterpret_cast<const AnyAddress<Lane>*>(take ? row[k] + j : column + k * stride)->lane;
        Transpose(x);
        for (unsigned int k = 0; k < 4; ++k) {
            if constexpr (take)
                reinterpret_cast<AnyAddress<Lane>*>(column + k * stride)->lane = x[k];
            else
                reinterpret_cast<AnyAddress<Lane>*>(row[k] + j)->lane = x[k];
        }
    }
    for (; j < width; ++j, column += stride) {
        if constexpr (take) {
            Lane x;
            for (unsigned int k = 0; k < 4; ++k) x[k] = row[k][j];
            reinterpret_cast<AnyAddress<Lane>*>(column)->lane = x;
        } else {
            for (unsigned int k = 0; k < 4; ++k) row[k][j] = column[k];
        }
    }
}

/// The factor of each of 4 rows becomes its dot product with `count` values. The rows are transposed, four columns at a
/// time, so that they lie side by side in a register and each sum still takes its terms in the order of the columns.
template <class T>
CORVEX_ALWAYS_INLINE void DotTransposed(RowBlock<T, 4>& block, const T* values, unsigned int count)
{
    using Lane = typename Lanes<T, 4 * sizeof(T)>::Type;
    Lane sums = {};
    unsigned int j = 0;
    for (; count - j >= 4; j += 4) {
        Lane x[4];
        for (unsigned int r = 0; r < 4; ++r) x[r] = reinterpret_cast<const AnyAddress<Lane>*>(block.rows[r] + j)->lane;
        Transpose(x);
        for (unsigned int c = 0; c < 4; ++c) sums += x[c] * values[j + c];
    }
    Store(block.factors, sums);
    for (; j < count; ++j)
        for (unsigned int r = 0; r < 4; ++r) block.factors[r] += block.rows[r][j] * values[j];
}

/// The factor of each row becomes its dot product with `values`.
template <class T, unsigned int R, class Values, class Width>
inline void DotRows(RowBlock<T, R>& block, Values& values, Width width)
{
    if constexpr (R == 4 && Width::registerBytes > baselineBytes) return DotTransposed(block, &values[0], width.Get());
    T sums[R] = {};
    for (unsigned int j = 0; j < width.Get(); ++j)
        for (unsigned int r = 0; r < R; ++r) sums[r] += block.rows[r][j] * values[j];
    for (unsigned int r = 0; r < R; ++r) block.factors[r] = sums[r];
}

/// sums[j] += sum of rows[k][pivot] * rows[k][pivot + 1 + j] over k from `from` to before `to`.
template <class T, class Width>
void AddColumnProducts(T** rows, unsigned int from, unsigned int to, unsigned int pivot, T* sums, Width width)
{
    Held<T, Width> held(sums, width);
    ForRows<Width::rowsAtOnce>(from, to, [&](auto size, unsigned int k) {
        RowBlock<T, size.Get()> block;
        for (unsigned int r = 0; r < size.Get(); ++r) {
            T* row = rows[k + r] + pivot;
            block.rows[r] = row + 1;
            block.factors[r] = *row;
        }
        AddRows(block, held, width);
    });
    held.PutBack(sums);
}

template <class T>
inline void SetZero(T* values, unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j) values[j] = T(0);
}

/// `AddColumnProducts` into sums that start at zero.
template <class T>
inline void SumColumnProducts(T** rows, unsigned int from, unsigned int to, unsigned int pivot, T* sums,
                              unsigned int count)
{
    SetZero(sums, count);
    WithWidth(count, [&](auto width) { AddColumnProducts(rows, from, to, pivot, sums, width); });
}

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

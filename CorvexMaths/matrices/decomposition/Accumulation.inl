#pragma once

/// The products of the reflections: V from the rows that the reduction left, U from its columns.
///
/// Both grow from the lower right corner: the reflection of step i meets a matrix that is the identity outside rows and
/// columns i + 1 and on, so it takes products with the columns of that block and adds multiples of one vector to them.
/// The block's rows are read once for each i: while reflection i updates a row, the products of reflection i - 1 with
/// the updated row are added up. Products and factors live in rows of the result that are not yet written: those of
/// step i right of the diagonal in row i.

#include <CorvexMaths/matrices/decomposition/Rows.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// Applies the reflection in row i of u to the rows of v below i, whose factors stand in v[i][i + 1] and on. With
/// `sumNext`, the products for row i - 1 of u are added up in v[i - 1][i] and on.
template <class T, class Width>
void SweepRight(T** u, T** v, unsigned int i, unsigned int n, T g, bool sumNext, Width width)
{
    const unsigned int l = i + 1;
    const T* const x = u[i];
    T* const factors = v[i] + l;
    if (sumNext) {
        // Row i of the block is that of the identity; its terms come first.
        T* const sums = v[i - 1] + i;
        const T first = u[i - 1][i];
        sums[0] = T(0) + first * T(1);
        for (unsigned int j = 0; j < width.Get(); ++j) sums[1 + j] = T(0) + first * T(0);
    }
    ForRows<Width::rowsAtOnce>(l, n, [&](auto size, unsigned int k) {
        RowBlock<T, size.Get()> block;
        for (unsigned int r = 0; r < size.Get(); ++r) {
            block.rows[r] = v[k + r] + l;
            block.factors[r] = (x[k + r] / x[l]) / g;
            v[k + r][i] = T(0);
        }
        if (!sumNext) return UpdateRows(block, factors, width);
        T addFactors[size.Get()];
        T* const sums = v[i - 1] + l;
        for (unsigned int r = 0; r < size.Get(); ++r) {
            addFactors[r] = u[i - 1][k + r];
            sums[-1] += addFactors[r] * T(0);
        }
        UpdateAndAddRows(block, factors, addFactors, sums, width);
    });
}

/// Builds V. A superdiagonal element of 0 means that its row had no reflection.
template <class T>
void AccumulateRight(T** u, T** v, const T* work, unsigned int n)
{
    bool summed = false;
    for (unsigned int i = n; i-- > 0;) {
        const unsigned int l = i + 1;
        if (l < n && work[l] != T(0)) {
            if (!summed) {
                SetZero(v[i] + l, n - l);
                for (unsigned int k = l; k < n; ++k) {
                    const RowBlock<T, 1> block{{v[k] + l}, {u[i][k]}};
                    T* sums = v[i] + l;
                    AddRows(block, sums, AnyWidth<>{n - l});
                }
            }
            summed = i > 0 && work[i] != T(0);
            WithWidth(n - l, [&](auto width) { SweepRight(u, v, i, n, work[l], summed, width); });
        } else {
            summed = false;
            for (unsigned int k = l; k < n; ++k) v[k][i] = T(0);
        }
        SetZero(v[i] + l, n - l);
        v[i][i] = T(1);
    }
}

/// Applies the reflection in column i to the rows of u below i, whose factors stand in u[i][i + 1] and on, and
/// multiplies the column by g. With `sumNext`, the products for column i - 1 are added up in u[i - 1][i] and on. Their
/// first terms are those of row i, which is not yet written: `diagonal`, and right of it the factors times the head of
/// column i.
template <class T, class Width>
CORVEX_ALWAYS_INLINE void SweepLeft(T** u, unsigned int i, unsigned int m, T g, T diagonal, bool sumNext, Width width)
{
    Held<T, Width> factors(u[i] + i + 1, width);
    if (!sumNext) {
        ForRows<Width::rowsAtOnce>(i + 1, m, [&](auto size, unsigned int k) {
            RowBlock<T, size.Get()> block;
            for (unsigned int r = 0; r < size.Get(); ++r) {
                T* const row = u[k + r] + i;
                block.rows[r] = row + 1;
                block.factors[r] = *row;
            }
            UpdateRows(block, factors, width);
            for (unsigned int r = 0; r < size.Get(); ++r) block.rows[r][-1] = block.factors[r] * g;
        });
        return;
    }
    T* const row = u[i];
    T* const next = u[i - 1] + i;
    T first = T(0) + row[i - 1] * diagonal;
    for (unsigned int j = 0; j < width.Get(); ++j) next[1 + j] = T(0) + row[i - 1] * (T(0) + factors[j] * row[i]);
    Held<T, Width> sums(next + 1, width);
    ForRows<Width::rowsAtOnce>(i + 1, m, [&](auto size, unsigned int k) {
        RowBlock<T, size.Get()> block;
        T addFactors[size.Get()];
        for (unsigned int r = 0; r < size.Get(); ++r) {
            T* const element = u[k + r] + i;
            block.rows[r] = element + 1;
            block.factors[r] = *element;
            addFactors[r] = element[-1];
            *element = block.factors[r] * g;
            first += addFactors[r] * *element;
        }
        UpdateAndAddRows(block, factors, addFactors, sums, width);
    });
    sums.PutBack(next + 1);
    next[0] = first;
}

/// Builds U in place. A diagonal element of 0 means that its column had no reflection.
template <class T, class Below>
void AccumulateLeft(T** u, T** w, unsigned int m, unsigned int n, Below& below)
{
    bool summed = false;
    for (unsigned int i = m < n ? m : n; i-- > 0;) {
        const unsigned int count = n - i - 1;
        T* const row = u[i] + i;
        if (w[i][i] == T(0)) {
            summed = false;
            for (unsigned int k = i; k < m; ++k) u[k][i] = T(0);
            below.ClearColumn(i);
            SetZero(row, count + 1);
            *row += T(1);
            continue;
        }
        const T g = T(1) / w[i][i];
        const T head = *row;
        T* const factors = row + 1;
        if (!summed) {
            SumColumnProducts(u, i + 1, m, i, factors, count);
            below.AddColumnProducts(i, factors, count);
        }
        for (unsigned int j = 0; j < count; ++j) factors[j] = (factors[j] / head) * g;

        const T diagonal = head * g + T(1);
        summed = i > 0 && w[i - 1][i - 1] != T(0);
        WithWidth(count, [&](auto width) { SweepLeft(u, i, m, g, diagonal, summed, width); });
        below.SweepLeft(i, factors, count, g, summed ? u[i - 1] + i : nullptr);
        for (unsigned int j = 0; j < count; ++j) factors[j] = T(0) + factors[j] * head;
        *row = diagonal;
    }
}

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

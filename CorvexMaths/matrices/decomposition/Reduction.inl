#pragma once

/// Householder reduction to bidiagonal form.
///
/// Step i takes column i, from row i down, to a multiple of a unit vector, and then row i, from column i + 1 on. Both
/// are reflections H = 1 + x x-transposed / h, where x is the column (or row), divided by the sum of its absolute
/// values so that its squares neither overflow nor vanish, with
///     g = -sign(|x|, x0),   h = x0 g - |x|^2,   x0 <- x0 - g.
/// The reflection leaves scale * g where the reduced element stood: the diagonal and the superdiagonal of the
/// bidiagonal form. The vectors x stay in the matrix, scaled back, for the accumulation of U and V.
///
/// A step reads the matrix three times: column i alone, to divide it; the rows, for the products of column i with all
/// columns to its right; the rows again, to apply both reflections and to add up what column i + 1 is divided by.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/decomposition/Rows.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The magnitude of a with the sign of b, where a b that is not below 0 counts as positive.
template <class T>
inline T WithSign(T a, T b)
{
    const T magnitude = Numbers::Absolute(a);
    return b < T(0) ? -magnitude : magnitude;
}

template <class T>
struct Reflection
{
    T g; ///< what the reduced element becomes, before it is scaled back
    T h; ///< the divisor of the rank-one update
};

/// The reflection of a vector of the given first element and sum of squares. The first element becomes that of the
/// vector x.
template <class T>
inline Reflection<T> MakeReflection(T& head, T squares)
{
    const T f = head;
    const T g = -WithSign(Numbers::SquareRoot(squares), f);
    const T h = f * g - squares;
    head = f - g;
    return {g, h};
}

/// Divides column i from row i down by its scale and returns the sum of the squares. Quotients lie side by side, since
/// the processor divides a register in little more time than one value; their squares are added up one by one.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE T DivideColumn(T** u, unsigned int i, unsigned int m, T scale)
{
    using Lane = typename Lanes<T, Bytes>::Type;
    constexpr unsigned int lanes = Lanes<T, Bytes>::count;
    T sum = T(0);
    unsigned int k = i;
    for (; m - k >= lanes; k += lanes) {
        Lane x;
        for (unsigned int r = 0; r < lanes; ++r) x[r] = u[k + r][i];
        x /= scale;
        for (unsigned int r = 0; r < lanes; ++r) u[k + r][i] = x[r];
        x *= x;
        for (unsigned int r = 0; r < lanes; ++r) sum += x[r];
    }
    for (; k < m; ++k) {
        const T element = u[k][i] / scale;
        u[k][i] = element;
        sum += element * element;
    }
    return sum;
}

template <class T>
T DivideColumn(T** u, unsigned int i, unsigned int m, T scale)
{
    return ForThisProcessor([=](auto bytes) { return DivideColumn<bytes>(u, i, m, scale); });
}

/// One step of the reduction as its sweep over the rows below row i sees it. A scale of 0 means that there is no
/// reflection.
template <class T>
struct ReductionStep
{
    unsigned int i;
    T columnScale;     ///< what column i was divided by; 0: no reflection from the left
    T* columnFactors;  ///< for each column to the right, its product with x, over h
    T rowScale;        ///< the same for row i; 0: no reflection from the right
    T* rowVector;      ///< x of the row
    T* rowVectorOverH; ///< x / h of the row
};

/// Applies both reflections of a step to the rows from `from` to before `to`, each row finished before the next, and
/// returns what column i + 1 is to be divided by: the sum of its absolute values over these rows.
template <class T, class Width>
CORVEX_ALWAYS_INLINE T SweepRows(T** u, unsigned int from, unsigned int to, const ReductionStep<T>& step, Width width)
{
    const bool reflectColumn = step.columnScale != T(0);
    const bool reflectRow = step.rowScale != T(0);
    Held<T, Width> columnFactors(step.columnFactors, width);
    Held<T, Width> rowVector(step.rowVector, width);
    Held<T, Width> rowVectorOverH(step.rowVectorOverH, width);
    T nextScale = T(0);
    ForRows<Width::rowsAtOnce>(from, to, [&](auto size, unsigned int k) {
        RowBlock<T, size.Get()> block;
        for (unsigned int r = 0; r < size.Get(); ++r) block.rows[r] = u[k + r] + step.i + 1;
        if (reflectColumn) {
            for (unsigned int r = 0; r < size.Get(); ++r) block.factors[r] = block.rows[r][-1];
            UpdateRows(block, columnFactors, width);
            for (unsigned int r = 0; r < size.Get(); ++r) block.rows[r][-1] = block.factors[r] * step.columnScale;
        }
        if (reflectRow) {
            DotRows(block, rowVector, width);
            UpdateRows(block, rowVectorOverH, width);
        }
        if (width.Get() != 0)
            for (unsigned int r = 0; r < size.Get(); ++r) nextScale += Numbers::Absolute(block.rows[r][0]);
    });
    return nextScale;
}

/// Reflects column i: divides it, finds the factor of every column to its right and updates row i, which the row's own
/// reflection needs before the other rows. Returns the new diagonal element. `factors` has room for n values.
template <class T, class Below>
T ReflectColumn(T** u, unsigned int i, unsigned int m, unsigned int n, T scale, T* factors, const Below& below)
{
    const unsigned int count = n - i - 1;
    T* const row = u[i] + i;
    T squares = DivideColumn(u, i, m, scale);
    below.DivideColumn(i, scale, &squares);
    const Reflection<T> reflection = MakeReflection(*row, squares);
    SumColumnProducts(u, i, m, i, factors, count);
    below.AddColumnProducts(i, factors, count);
    for (unsigned int j = 0; j < count; ++j) {
        factors[j] = factors[j] / reflection.h;
        row[1 + j] += factors[j] * *row;
    }
    *row *= scale;
    return scale * reflection.g;
}

/// Reflects the `count` elements of row i right of the diagonal: divides them and finds x / h. Returns the reflection.
template <class T>
Reflection<T> ReflectRow(T* row, unsigned int count, T scale, T* rowOverH)
{
    T squares = T(0);
    for (unsigned int k = 0; k < count; ++k) {
        row[k] /= scale;
        squares += row[k] * row[k];
    }
    const Reflection<T> reflection = MakeReflection(row[0], squares);
    for (unsigned int k = 0; k < count; ++k) rowOverH[k] = row[k] / reflection.h;
    return reflection;
}

/// Reduces u to bidiagonal form: the diagonal goes to that of w, the superdiagonal to work[1] and on, work[0] is 0.
/// Returns the norm: the largest sum of absolute values of a column of the result. A sum of NaN replaces the largest so
/// far, and the next sum replaces a NaN. Every element of v is written later, so its rows serve as scratch. `below`
/// holds further rows; each sum over a column continues there.
template <class T, class Below>
T ReduceToBidiagonal(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, const Below& below)
{
    T norm = T(0);
    T superdiagonal = T(0);
    T columnScale = T(0);
    for (unsigned int k = 0; k < m; ++k) columnScale += Numbers::Absolute(u[k][0]);
    below.Begin(&columnScale);

    for (unsigned int i = 0; i < n; ++i) {
        const unsigned int l = i + 1;
        const unsigned int count = n - l;
        work[i] = superdiagonal;
        superdiagonal = T(0);
        T diagonal = T(0);
        if (i < m) {
            T* const row = u[i] + l;
            ReductionStep<T> step{i, columnScale, v[i] + l, T(0), row, work + l};
            if (columnScale != T(0)) diagonal = ReflectColumn(u, i, m, n, columnScale, step.columnFactors, below);

            for (unsigned int k = 0; k < count; ++k) step.rowScale += Numbers::Absolute(row[k]);
            if (step.rowScale != T(0)) {
                const Reflection<T> reflection = ReflectRow(row, count, step.rowScale, work + l);
                superdiagonal = step.rowScale * reflection.g;
            }

            columnScale = WithWidth(count, [&](auto width) { return SweepRows(u, l, m, step, width); });
            below.Sweep(step, count, &columnScale);
            if (step.rowScale != T(0))
                for (unsigned int k = 0; k < count; ++k) row[k] *= step.rowScale;
        }
        w[i][i] = diagonal;
        const T size = Numbers::Absolute(diagonal) + Numbers::Absolute(work[i]);
        if (!(size < norm)) norm = size;
    }
    return norm;
}

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

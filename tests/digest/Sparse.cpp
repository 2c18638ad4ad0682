// Sparse matrices in compressed storage.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

/// The shapes of sparse matrices: how many columns apart two elements of a row are, from a seed.
struct Pattern
{
    unsigned int rows, columns, step;
};

const std::vector<Pattern> patterns = {{1, 1, 1}, {5, 4, 2}, {4, 9, 3}, {30, 12, 5}, {12, 30, 4}, {40, 40, 9}};
/// Wider than the block in which a row is summed, and mostly empty.
const std::vector<Pattern> wide = {{5, 7000, 900}};

template <class T>
struct Element
{
    T value;
    int row, column;
};

/// Elements on a pattern, row by row: some rows and columns stay empty, some elements are zeros, NaN or infinite. For
/// odd seeds the columns of a row do not always ascend.
template <class T>
std::vector<Element<T>> MakeElements(const Pattern& pattern, std::uint64_t seed)
{
    Random random(seed);
    std::vector<Element<T>> elements;
    for (unsigned int row = 0; row < pattern.rows; ++row) {
        if (row % 7 == 3) continue;
        for (unsigned int column = random.Below(pattern.step); column < pattern.columns;) {
            elements.push_back({random.Any<T>(), static_cast<int>(row), static_cast<int>(column)});
            const std::size_t last = elements.size() - 1;
            if (seed % 2 == 1 && last > 0 && elements[last - 1].row == elements[last].row && random.Below(6) == 0)
                std::swap(elements[last - 1].column, elements[last].column);
            column += 1 + random.Below(pattern.step);
        }
    }
    return elements;
}

template <class T>
TCRSMatrixMxN<T> MakeRows(const Pattern& pattern, std::uint64_t seed)
{
    const std::vector<Element<T>> elements = MakeElements<T>(pattern, seed);
    TCRSMatrixMxN<T> matrix(static_cast<int>(pattern.rows), static_cast<int>(pattern.columns),
                            static_cast<int>(elements.size()));
    for (const Element<T>& element : elements) matrix.AddElement(element.value, element.row, element.column);
    return matrix;
}

template <class T>
TCCSMatrixMxN<T> MakeColumns(const Pattern& pattern, std::uint64_t seed)
{
    TCCSMatrixMxN<T> matrix(static_cast<int>(pattern.columns), 3);
    const std::vector<Element<T>> elements = MakeElements<T>(pattern, seed);
    for (const Element<T>& element : elements) matrix.AddElement(element.value, element.row, element.column);
    // An index out of order.
    if (seed % 2 == 1 && !elements.empty()) matrix.AddElement(T(2), elements[0].row, elements[0].column);
    return matrix;
}

/// Shows the protected forms that work on a range of rows.
template <class T>
struct OpenRows : TCRSMatrixMxN<T>
{
    using Base = TCRSMatrixMxN<T>;
    using Base::Base, Base::Multiply, Base::MultiplyUpperTriangle;
    explicit OpenRows(const Base& other) : Base(other) {}
};

template <class T>
void AddSparse(Report& report)
{
    using Rows = TCRSMatrixMxN<T>;
    const std::string name = NameOf<T>("TCRSMatrixMxN") + "::";
    const std::vector<std::uint64_t> seeds = {10, 11, 12, 14};

    const auto singles = report.Over(patterns, seeds);
    singles.Add(name + "Transpose", [](Digest& d, Pattern& pattern, std::uint64_t seed) {
        const Rows a = MakeRows<T>(pattern, seed);
        Rows transposed, back;
        a.Transpose(&transposed);
        transposed.Transpose(&back);
        d << a << transposed << back;
        transposed = a;
        back.Redefine(3, 2, 5);
        d << transposed << back << Rows(transposed) << (back = Rows());
    });
    singles.Add(name + "TransposeFrom", [](Digest& d, Pattern& pattern, std::uint64_t seed) {
        const TCCSMatrixMxN<T> columns = MakeColumns<T>(pattern, seed);
        Rows rows;
        rows.TransposeFrom(columns);
        TCCSMatrixMxN<T> copy(columns), other;
        other = copy;
        d << columns << rows << other;
        // The lists that are shared grow longer than the other sharers know.
        copy.AddElement(T(7), 0, 0);
        rows.TransposeFrom(columns);
        copy.Redefine(2, 1);
        d << columns << rows << copy;
    });
    singles.Add(name + "Multiply(vector)", [](Digest& d, Pattern& pattern, std::uint64_t seed) {
        Rows a = MakeRows<T>(pattern, seed);
        std::vector<T> x = AllScalars<T>();
        x.resize(40, T(3));
        std::vector<T> y(40, T(5));
        a.Multiply(x.data(), y.data());
        d.TakeArray(y.data(), y.size());
    });

    report.Over(patterns, patterns + wide, seeds)
        .Add(name + "Multiply", [](Digest& d, Pattern& p, Pattern& q, std::uint64_t seed) {
            const Rows a = MakeRows<T>(p, seed), b = MakeRows<T>({p.columns, q.columns, q.step}, seed * 2);
            const Kind kind = seed % 2 == 0 ? Kind::HasNotANumber : Kind::Tied;
            Rows product, ofShort, ofDense;
            a.Multiply(b, &product);
            a.Multiply(MakeRows<T>({p.columns / 2, q.columns, q.step}, seed * 2), &ofShort);
            a.Multiply(MakeMatrix<T>(kind, p.columns, q.columns), &ofDense);
            d << product << ofShort << ofDense;
        });
    report.Over(patterns + wide, seeds).Add(name + "Normalise", [](Digest& d, Pattern& p, std::uint64_t seed) {
        const OpenRows<T> a(MakeRows<T>(p, seed));
        const TMatrixMxN<T> dense = MakeMatrix<T>(Kind::Random, p.columns, p.rows);
        const TCCSMatrixMxN<T> columns = MakeColumns<T>({p.columns, p.rows, p.step}, seed + 70);
        Rows fromDense, fromColumns;
        a.Normalise(dense, &fromDense);
        a.Normalise(columns, &fromColumns);
        d << fromDense << fromColumns;

        const auto last = static_cast<int>(p.rows);
        TMatrixFragment<T> fragment;
        fragment.SetDimensions(4);
        a.Multiply(dense, last / 3, last, &fragment);
        a.MultiplyUpperTriangle(dense, 0, last / 2, &fragment);
        a.MultiplyUpperTriangle(columns, last / 2, last + 3, &fragment);
        TMatrixFragment<T> copy(fragment);
        d << fragment << copy;
    });
}

} // namespace

void DigestSparse(Report& report)
{
    ForScalars([&](auto scalar) { AddSparse<decltype(scalar)>(report); });
}

} // namespace CorvexDigest

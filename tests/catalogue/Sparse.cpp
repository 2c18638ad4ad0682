// Sparse matrices in compressed storage: building, sharing, transposing, products.

#include "Operations.h"

#include <tests/support/plain/PlainSparse.h>

#include <algorithm>

namespace CorvexCatalogue
{
namespace
{

template <class T>
struct SparseState : State
{
    using State::State;
    using ByRows = TCRSMatrixMxN<T>;
    using ByColumns = TCCSMatrixMxN<T>;
    using Dense = TMatrixMxN<T>;
    using Fragment = TMatrixFragment<T>;

    /// Opens the products by ranges of rows.
    struct Rows : ByRows
    {
        using ByRows::ByRows, ByRows::Multiply, ByRows::MultiplyUpperTriangle;
    };

    /// `a` has as many columns as `b` and `columns` have rows, `other` any number.
    Rows a, b, other;
    ByColumns columns;
    Fragment fragment;

    void Fill() override
    {
        // Now and then more columns than a block of the products holds.
        const unsigned int inner = in.Size(70), wide = in.IsEndless() && in.Below(40) == 0 ? 5000 : in.Size(70);
        Build(a, in.Size(40), inner);
        Build(b, in.Below(16) == 0 ? inner / 2 : inner, wide);
        BuildColumns(inner, in.Below(16) == 0 ? 4 : static_cast<unsigned int>(a.rowCount));
    }
    void Show() const override
    {
        out << static_cast<const ByRows&>(a) << static_cast<const ByRows&>(b) << static_cast<const ByRows&>(other);
        out << columns << fragment;
    }
    void Check() override
    {
        for (const ByRows* m : {&a, &b, &other}) {
            Require(m->elementCount <= m->capacity && (!m->rowStarts || m->rowStarts[m->rowCount] == m->capacity));
            Require(m->rowStarts || (m->rowCount == 0 && m->columnCount == 0 && m->capacity == 0));
        }
        for (int c = 0; c < columns.columnCount; ++c)
            Require(columns.columnRows[c].GetCount() == columns.columnValues[c].GetCount());
    }

    /// Rows of ascending columns, or of some that do not ascend; of empty rows none, the first ones or any.
    void Build(Rows& target, unsigned int rowCount, unsigned int columnCount)
    {
        const unsigned int kind = in.Byte(), gap = 1 + columnCount / (1 + kind / 16 % 8);
        const bool isOrdered = kind % 4 != 1, isHollow = kind % 8 == 0;
        const unsigned int empty = kind % 4 == 2 ? rowCount / 5 : 0;
        Source from = in.Fork();
        std::vector<std::tuple<T, int, int>> elements;
        for (unsigned int r = empty; r < rowCount && columnCount > 0; ++r) {
            if (isHollow && from.Below(3) == 0) continue;
            const std::size_t start = elements.size();
            for (unsigned int c = from.Below(std::min(gap, columnCount)); c < columnCount; c += 1 + from.Below(gap))
                elements.emplace_back(DrawValue(from), static_cast<int>(r), static_cast<int>(c));
            if (!isOrdered && elements.size() > start + 1) std::swap(elements[start], elements.back());
        }
        const int spare = kind % 16 == 3 ? 2 : 0;
        target.Redefine(static_cast<int>(rowCount), static_cast<int>(columnCount),
                        columnCount == 0 ? 0 : static_cast<int>(elements.size()) + spare);
        std::fill_n(target.values, target.capacity, T(0));
        for (const auto& [value, row, column] : elements) target.AddElement(value, row, column);
    }
    void BuildColumns(unsigned int rowCount, unsigned int columnCount)
    {
        const unsigned int kind = in.Byte(), gap = 1 + rowCount / (1 + kind / 16 % 8);
        Source from = in.Fork();
        columns.Redefine(static_cast<int>(columnCount), 3);
        for (unsigned int c = kind % 4 == 2 ? columnCount / 5 : 0; c < columnCount && rowCount > 0; ++c) {
            if (kind % 8 == 0 && from.Below(3) == 0) continue;
            for (unsigned int r = from.Below(std::min(gap, rowCount)); r < rowCount; r += 1 + from.Below(gap))
                columns.AddElement(DrawValue(from), static_cast<int>(r), static_cast<int>(c));
            // An index out of order.
            if (kind % 4 == 1) columns.AddElement(T(2), static_cast<int>(from.Below(rowCount)), static_cast<int>(c));
        }
    }
    static T DrawValue(Source& from)
    {
        const unsigned int kind = from.Below(64);
        return kind == 0   ? from.Scalar<T>()
               : kind < 8  ? Numbers::commonTolerance<T> * from.Unit<T>() * 2
               : kind < 32 ? from.Coarse<T>()
                           : from.Unit<T>();
    }
    static Dense DrawDense(Source& in, int rowCount)
    {
        return DrawMatrix<T>(in, static_cast<unsigned int>(rowCount), in.Size(17));
    }

    /// Whether a matrix may be read: what it holds of columns lies within its sizes.
    static bool IsReadable(const ByRows& m)
    {
        return std::all_of(m.columnIndices, m.columnIndices + m.capacity,
                           [&m](int index) { return index >= 0 && index < m.columnCount; });
    }
    /// Whether no empty row follows a filled one, and all elements are there: then every row has an end of its own.
    static bool HasEnds(const ByRows& m)
    {
        bool isFilled = false, holds = m.elementCount == m.capacity && m.rowStarts != nullptr;
        for (int r = 0; holds && r < m.rowCount; ++r) {
            holds = !isFilled || m.rowStarts[r] != ByRows::emptyRow;
            isFilled = m.rowStarts[r] != ByRows::emptyRow;
        }
        return holds;
    }
    /// Holds a product against the elements of the plain form.
    static void RequireElements(const ByRows& product, const Elements<T>& expected)
    {
        const auto count = static_cast<int>(expected.size());
        Require(product.capacity == count && product.elementCount == count);
        std::vector<int> starts(static_cast<std::size_t>(product.rowCount), ByRows::emptyRow);
        starts.push_back(count);
        for (int k = count - 1; k >= 0; --k) {
            const auto& [value, row, column] = expected[static_cast<std::size_t>(k)];
            Require(AreSame(product.values[k], value) && product.columnIndices[k] == column);
            starts[static_cast<std::size_t>(row)] = k;
        }
        Require(std::equal(starts.begin(), starts.end(), product.rowStarts));
    }

    void Redefine()
    {
        const int rowCount = static_cast<int>(in.Below(9)), columnCount = static_cast<int>(in.Below(9));
        const Rows made(rowCount, columnCount, 0);
        const ByColumns madeColumns(columnCount, in.Below(5));
        Require(made.matrixType == 11 && made.rowCount == rowCount && madeColumns.columnCount == columnCount);
        out << static_cast<const ByRows&>(made) << madeColumns << static_cast<const ByRows&>(Rows());
        b = made;
        const unsigned int kind = in.Below(4);
        if (kind == 0) columns = madeColumns;
        if (kind == 1) columns.Redefine(columnCount, 2);
        if (kind == 2) {
            const unsigned int newRowCount = in.Size(9), newColumnCount = in.Size(9);
            Build(a, newRowCount, newColumnCount);
        }
        if (kind == 3) Fill();
    }
    /// Sharers see what is added to the arrays, but not the counts.
    void Copy()
    {
        const Rows copy(a);
        {
            const Aside aside;
            other = copy;
        }
        Require(other.values == a.values && other.matrixType == a.matrixType);
        const ByColumns sharer(columns);
        ByColumns assigned(2, 2);
        assigned = sharer;
        if (columns.columnCount > 0) {
            const int column = static_cast<int>(in.Below(static_cast<unsigned int>(columns.columnCount)));
            const T value = DrawValue(in);
            columns.AddElement(value, static_cast<int>(in.Below(9)), column);
        }
        const Aside aside;
        Rows rows;
        rows.TransposeFrom(assigned);
        out << assigned << static_cast<const ByRows&>(rows);
    }
    void AddElement()
    {
        const unsigned int spare = 1 + in.Below(4);
        Rows& m = other;
        m.Redefine(3, 4, static_cast<int>(spare));
        std::fill_n(m.values, m.capacity, T(0));
        for (int row = 0; m.elementCount < m.capacity && row < 3; row += static_cast<int>(in.Below(3))) {
            const T value = in.template Scalar<T>();
            m.AddElement(value, row, static_cast<int>(in.Below(4)));
        }
        fragment.SetDimensions(in.Below(40));
        const T value = in.template Scalar<T>();
        fragment.values.Add(value);
        fragment.rows.Add(1);
        fragment.columns.Add(static_cast<int>(in.Below(10)));
        Fragment copy(fragment), assigned;
        assigned = copy;
        Require(AreSame(Contents(assigned.values), Contents(fragment.values)));
        const Fragment& itself = copy;
        copy = itself;
        Require(copy.values.GetCount() == 0);
    }
    template <class E>
    static std::vector<E> Contents(const TList<E>& list)
    {
        return std::vector<E>(list.GetStream(), list.GetStream() + list.GetCount());
    }
    void TransposeFrom()
    {
        other.TransposeFrom(columns);
        Require(other.rowCount == columns.columnCount && other.columnCount == columns.rowCount);
        int k = 0;
        for (int c = 0; c < columns.columnCount; ++c)
            for (unsigned int i = 0; i < columns.columnRows[c].GetCount(); ++i, ++k)
                Require(other.columnIndices[k] == columns.columnRows[c][i] &&
                        AreSame(other.values[k], columns.columnValues[c][i]));
        Require(k == other.elementCount && k == other.capacity);
    }
    void Transpose()
    {
        if (!IsReadable(a)) return;
        a.Transpose(&other);
        Require(other.rowCount == a.columnCount && other.columnCount == a.rowCount);
        if (HasEnds(a) && HasEnds(other)) {
            Rows back, again;
            other.Transpose(&back);
            back.Transpose(&again);
            again.matrixType = other.matrixType;
            Require(AreSame(static_cast<ByRows&>(again), static_cast<ByRows&>(other)));
        }
    }
    void MultiplyVector()
    {
        std::vector<T> x(static_cast<std::size_t>(a.columnCount)), y(static_cast<std::size_t>(a.rowCount) + 1, T(5));
        for (T& value : x) value = DrawValue(in);
        if (!IsReadable(a)) return;
        a.Multiply(x.data(), y.data());
        out << y;
        for (int r = 0; HasEnds(a) && r < a.rowCount; ++r) {
            T sum = T(0);
            for (int k = a.rowStarts[r]; k < a.rowStarts[r + 1]; ++k)
                sum += a.values[k] * x[static_cast<std::size_t>(a.columnIndices[k])];
            Require(AreSame(sum, y[static_cast<std::size_t>(r)]));
        }
    }
    void MultiplyDense()
    {
        if (!IsReadable(a)) return;
        const Dense dense = DrawDense(in, a.columnCount);
        const Rows left(a);
        ByRows& product = in.Flag() ? a : other;
        left.ByRows::Multiply(dense, &product);
        if (HasEnds(left))
            RequireElements(product,
                            PlainTimesDense<T>(left, dense, std::min(left.rowCount, int(dense.GetN())), false));
    }
    void MultiplyRows()
    {
        if (a.columnCount != b.rowCount && in.Flag()) return;
        if (!IsReadable(a) || !IsReadable(b)) return;
        a.ByRows::Multiply(b, &other);
        if (HasEnds(a) && HasEnds(b) && a.columnCount == b.rowCount) RequireElements(other, PlainTimesRows<T>(a, b));
    }
    void NormaliseDense()
    {
        if (!IsReadable(a)) return;
        const Dense dense = DrawDense(in, a.columnCount);
        const Rows left(a);
        ByRows& product = in.Flag() ? a : other;
        left.Normalise(dense, &product);
        Require(product.matrixType == -2 && product.rowCount == product.columnCount);
        if (HasEnds(left) && left.rowCount >= product.rowCount)
            RequireElements(product, PlainTimesDense<T>(left, dense, product.rowCount, true));
    }
    void NormaliseColumns()
    {
        if (!IsReadable(a) || columns.rowCount > a.columnCount) return;
        const Rows left(a);
        ByRows& product = in.Flag() ? a : other;
        left.Normalise(columns, &product);
        Require(product.matrixType == -2 && product.rowCount == columns.columnCount);
        if (HasEnds(left) && left.rowCount >= product.rowCount)
            RequireElements(product, PlainTimesColumns<T>(left, columns));
    }
    void MultiplyRanges()
    {
        if (!IsReadable(a)) return;
        const Dense dense = DrawDense(in, a.columnCount);
        const int first = static_cast<int>(in.Below(12)), last = first + static_cast<int>(in.Below(12));
        fragment.SetDimensions(4);
        a.Multiply(dense, first, last, &fragment);
        a.MultiplyUpperTriangle(dense, first, last, &fragment);
        if (columns.rowCount <= a.columnCount) a.MultiplyUpperTriangle(columns, first, last, &fragment);
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"Redefine", &SparseState::Redefine, Promise::Valid},
                {"copies", &SparseState::Copy},
                {"AddElement", &SparseState::AddElement, Promise::Valid},
                {"TransposeFrom", &SparseState::TransposeFrom, Promise::Valid},
                {"Transpose", &SparseState::Transpose, Promise::Valid},
                {"Multiply(vector)", &SparseState::MultiplyVector},
                {"Multiply(dense)", &SparseState::MultiplyDense, Promise::Valid},
                {"Multiply(sparse)", &SparseState::MultiplyRows, Promise::Valid},
                {"Normalise(dense)", &SparseState::NormaliseDense, Promise::Valid},
                {"Normalise(columns)", &SparseState::NormaliseColumns, Promise::Valid},
                {"Multiply(first,last)", &SparseState::MultiplyRanges, Promise::Valid}};
    }
};

const Family sparse([] { AddOverScalars<SparseState>("TCRSMatrixMxN", 1500); });

} // namespace
} // namespace CorvexCatalogue

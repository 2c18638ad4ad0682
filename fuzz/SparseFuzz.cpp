// The sparse matrices: building, sharing, transposing, products.

#include "Input.h"

#include <algorithm>
#include <vector>

namespace CorvexFuzz
{

template <class T>
struct SparseState
{
    using ByRows = TCRSMatrixMxN<T>;
    using ByColumns = TCCSMatrixMxN<T>;
    using Dense = TMatrixMxN<T>;
    using Fragment = TMatrixFragment<T>;

    /// Opens the products by ranges of rows.
    struct Rows : ByRows
    {
        using ByRows::ByRows;
        using ByRows::Multiply;
        using ByRows::MultiplyUpperTriangle;
    };

    Rows rows[4];
    ByColumns columns[3];
    Dense dense{0, 0};
    Fragment fragments[2];
    /// What is left for operations whose cost grows with the square of the sizes.
    long long budget = 1500000;

    static const Operation<SparseState> operations[];

    void Check() const
    {
        for (const ByRows& m : rows) {
            Require(m.elementCount <= m.capacity && (!m.rowStarts || m.rowStarts[m.rowCount] == m.capacity));
            Require(m.rowStarts || (m.rowCount == 0 && m.columnCount == 0 && m.capacity == 0));
        }
        for (const ByColumns& m : columns)
            for (int c = 0; c < m.columnCount; ++c) Require(m.columnRows[c].GetCount() == m.columnValues[c].GetCount());
        for (const Fragment& f : fragments)
            Require(f.values.GetCount() == f.rows.GetCount() && f.rows.GetCount() == f.columns.GetCount());
    }

    Rows& ChooseRows(Input& in) { return rows[in.Below(4)]; }
    ByColumns& ChooseColumns(Input& in) { return columns[in.Below(3)]; }
    Fragment& ChooseFragment(Input& in) { return fragments[in.Below(2)]; }

    bool CanAfford(long long cost)
    {
        if (cost > budget) return false;
        budget -= cost;
        return true;
    }

    /// A number of rows or columns, now and then more than a block of the sparse products holds.
    int Size(Input& in)
    {
        const unsigned int byte = in.Byte();
        if (byte == 255 && CanAfford(500000)) return 2100;
        return static_cast<int>(byte >= 248 ? 67 : byte % 10);
    }

    // What the matrices allow.

    /// Whether a matrix may be read: what it holds of rows and columns lies within its sizes.
    static bool IsReadable(const ByRows& m)
    {
        return std::all_of(m.columnIndices, m.columnIndices + m.capacity,
                           [&m](int index) { return index >= 0 && index < m.columnCount; });
    }

    /// Whether every row ends where the next one starts, with elements in it, and all elements are there.
    static bool IsWellFormed(const ByRows& m)
    {
        if (!m.rowStarts || m.elementCount != m.capacity || !IsReadable(m)) return false;
        for (int r = 0; r < m.rowCount; ++r)
            if (m.rowStarts[r] >= m.rowStarts[r + 1] || m.rowStarts[r + 1] > m.capacity) return false;
        return m.rowCount == 0 || m.rowStarts[0] == 0;
    }

    static bool IsFinite(const T* values, std::size_t n)
    {
        return std::all_of(values, values + n, [](T value) { return value - value == T(0); });
    }

    /// Whether rows are well-formed, of finite values and in strictly ascending columns.
    static bool IsOrdinary(const ByRows& m)
    {
        if (!IsWellFormed(m) || !IsFinite(m.values, static_cast<std::size_t>(m.capacity))) return false;
        for (int r = 0; r < m.rowCount; ++r)
            for (int k = m.rowStarts[r] + 1; k < m.rowStarts[r + 1]; ++k)
                if (m.columnIndices[k] <= m.columnIndices[k - 1]) return false;
        return true;
    }

    /// The same of a matrix stored by columns, each with elements.
    static bool IsOrdinary(const ByColumns& m)
    {
        for (int c = 0; c < m.columnCount; ++c) {
            const TList<int>& indices = m.columnRows[c];
            const unsigned int count = indices.GetCount();
            if (count == 0 || !IsFinite(m.columnValues[c].GetStream(), count)) return false;
            for (unsigned int k = 1; k < count; ++k)
                if (indices[k] <= indices[k - 1]) return false;
            if (indices.GetLast() >= m.rowCount) return false;
        }
        return true;
    }

    static bool AreSame(const ByRows& a, const ByRows& b)
    {
        if (a.rowCount != b.rowCount || a.columnCount != b.columnCount || a.capacity != b.capacity) return false;
        return std::equal(a.rowStarts, a.rowStarts + a.rowCount, b.rowStarts) &&
               std::equal(a.columnIndices, a.columnIndices + a.capacity, b.columnIndices) &&
               AreSameNumbers(a.values, b.values, static_cast<std::size_t>(a.capacity));
    }

    /// A product is complete, ascends in its columns, and keeps nothing small but on a diagonal.
    static void CheckProduct(const ByRows& product, bool withDiagonal)
    {
        Require(product.elementCount == product.capacity && IsReadable(product));
        int end = product.capacity;
        for (int r = product.rowCount - 1; r >= 0; --r) {
            const int begin = product.rowStarts[r];
            if (begin == ByRows::emptyRow) continue;
            for (int k = begin; k < end; ++k) {
                const int column = product.columnIndices[k];
                Require(k == begin || column > product.columnIndices[k - 1]);
                Require(Numbers::Absolute(product.values[k]) > Numbers::commonTolerance<T> ||
                        (withDiagonal && column == r));
                Require(!withDiagonal || column >= r);
            }
            end = begin;
        }
        Require(end == 0);
    }

    // Building.

    /// Makes rows of a structure; values that are not added yet become zeros.
    void Build(Rows& target, int rowCount, int columnCount, Input& in)
    {
        const unsigned int kind = in.Byte();
        const bool isHollow = kind % 8 == 0;
        const bool isOrdered = kind % 4 != 1;
        const int perRow = columnCount == 0 ? 0 : 1 + static_cast<int>(kind / 8 % 3);
        std::vector<int> row;
        std::vector<int> column;
        std::uint32_t seed = in.Byte();
        for (int r = 0; r < rowCount; ++r) {
            std::vector<int> indices;
            for (int k = 0; k < perRow; ++k) {
                seed = seed * 1664525u + 1013904223u;
                indices.push_back(static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(columnCount)));
            }
            if (isOrdered) {
                std::sort(indices.begin(), indices.end());
                indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
            }
            if (isHollow && seed >> 30 == 0) indices.clear();
            row.insert(row.end(), indices.size(), r);
            column.insert(column.end(), indices.begin(), indices.end());
        }
        target.Redefine(rowCount, columnCount, static_cast<int>(row.size()));
        for (std::size_t k = 0; k < row.size(); ++k) target.AddElement(Value(in), row[k], column[k]);
    }

    static T Value(Input& in) { return in.IsUsedUp() ? T(1) : in.Finite<T>(); }

    static void Empty(Rows& target, int rowCount, int columnCount, int elements)
    {
        target.Redefine(rowCount, columnCount, columnCount == 0 ? 0 : elements);
        std::fill(target.values, target.values + target.capacity, T(0));
    }

    /// A dense matrix with a number of rows.
    void FitDense(int rowCount, Input& in)
    {
        const unsigned int columnCount = rowCount > 100 ? 3 : in.Below(8) == 0 ? 37 : in.Below(10);
        dense.AssignMemory(static_cast<unsigned int>(rowCount), columnCount);
        std::uint32_t seed = in.Byte();
        for (unsigned int r = 0; r < dense.GetM(); ++r) {
            for (unsigned int c = 0; c < columnCount; ++c) {
                seed = seed * 1664525u + 1013904223u;
                dense[r][c] = seed >> 31 != 0 ? T(0) : static_cast<T>(static_cast<int>(seed >> 24) - 64) / 16;
            }
        }
        if (rowCount != 0 && columnCount != 0 && in.Flag()) dense[0][0] = in.Scalar<T>();
    }

    template <class Sparse>
    static Dense ToDense(const Sparse& m)
    {
        Dense result(static_cast<unsigned int>(m.rowCount), static_cast<unsigned int>(m.columnCount));
        result.ToNull();
        if constexpr (std::is_same_v<Sparse, ByColumns>) {
            for (int c = 0; c < m.columnCount; ++c)
                for (unsigned int k = 0; k < m.columnRows[c].GetCount(); ++k)
                    result[static_cast<unsigned int>(m.columnRows[c][k])][c] = m.columnValues[c][k];
        } else {
            for (int r = 0; r < m.rowCount; ++r)
                for (int k = m.rowStarts[r]; k < m.rowStarts[r + 1]; ++k)
                    result[static_cast<unsigned int>(r)][m.columnIndices[k]] = m.values[k];
        }
        return result;
    }
};

template <class T>
const Operation<SparseState<T>> SparseState<T>::operations[] = {
    // Fragments.
    {"TMatrixFragment::SetDimensions",
     [](SparseState& s, Input& in) {
         Fragment& fragment = s.ChooseFragment(in);
         const unsigned int n = in.Below(40);
         fragment.SetDimensions(n);
         Require(fragment.values.GetGrowSize() == std::max(1u, n / 2));
     }},
    {"TMatrixFragment: element",
     [](SparseState& s, Input& in) {
         Fragment& fragment = s.ChooseFragment(in);
         fragment.values.Add(in.Scalar<T>());
         fragment.rows.Add(static_cast<int>(in.Below(10)));
         fragment.columns.Add(static_cast<int>(in.Below(10)));
     }},
    {"TMatrixFragment: copy",
     [](SparseState& s, Input& in) {
         Fragment& fragment = s.ChooseFragment(in);
         const Fragment copy(s.ChooseFragment(in));
         fragment = copy;
         const unsigned int count = copy.values.GetCount();
         Require(fragment.values.GetCount() == count);
         Require(AreSameNumbers(fragment.values.GetStream(), copy.values.GetStream(), count));
     }},
    {"TMatrixFragment: itself",
     [](SparseState& s, Input& in) {
         Fragment& fragment = s.ChooseFragment(in);
         const Fragment& itself = fragment;
         fragment = itself;
         Require(fragment.values.GetCount() == 0);
     }},

    // Storage by columns.
    {"TCCSMatrixMxN(columns, growSize)",
     [](SparseState& s, Input& in) {
         const int columnCount = s.Size(in);
         const ByColumns made(columnCount, in.Below(5));
         Require(made.columnCount == columnCount && made.rowCount == 0 && made.elementCount == 0);
         s.ChooseColumns(in) = made;
     }},
    {"TCCSMatrixMxN: copy",
     [](SparseState& s, Input& in) {
         const ByColumns copy(s.ChooseColumns(in));
         ByColumns& target = s.ChooseColumns(in);
         target = copy;
         Require(target.columnValues == copy.columnValues && target.elementCount == copy.elementCount);
     }},
    {"TCCSMatrixMxN::Redefine",
     [](SparseState& s, Input& in) {
         ByColumns& m = s.ChooseColumns(in);
         const int columnCount = s.Size(in);
         m.Redefine(columnCount, in.Below(5));
         Require(m.columnCount == columnCount && m.rowCount == 0 && m.elementCount == 0);
     }},
    {"TCCSMatrixMxN::AddElement",
     [](SparseState& s, Input& in) {
         ByColumns& m = s.ChooseColumns(in);
         if (m.columnCount == 0) return;
         const int row = static_cast<int>(in.Below(12));
         const int before = m.elementCount;
         m.AddElement(in.Scalar<T>(), row, static_cast<int>(in.Below(static_cast<unsigned int>(m.columnCount))));
         Require(m.elementCount == before + 1 && m.rowCount > row);
     }},
    {"TCCSMatrixMxN: filled",
     [](SparseState& s, Input& in) {
         ByColumns& m = s.ChooseColumns(in);
         m.Redefine(s.Size(in), 4);
         // A step of 1 fills the columns of up to 9 rows from top to bottom.
         const int step = 1 + static_cast<int>(in.Below(3));
         const int rowCount = 1 + static_cast<int>(in.Below(9));
         for (int c = 0; c < m.columnCount; ++c)
             for (int r = c % rowCount; r < rowCount; r += step) m.AddElement(Value(in), r, c);
     }},

    // Storage by rows.
    {"TCRSMatrixMxN(rows, columns, elements)",
     [](SparseState& s, Input& in) {
         const int rowCount = s.Size(in);
         const int columnCount = s.Size(in);
         Rows made(rowCount, columnCount, 0);
         Require(made.rowCount == rowCount && made.columnCount == columnCount && made.matrixType == 11);
         s.ChooseRows(in) = made;
     }},
    {"TCRSMatrixMxN: copy",
     [](SparseState& s, Input& in) {
         const Rows copy(s.ChooseRows(in));
         Rows& target = s.ChooseRows(in);
         target = copy;
         Require(target.values == copy.values && target.matrixType == copy.matrixType);
     }},
    {"TCRSMatrixMxN::Redefine",
     [](SparseState& s, Input& in) {
         Rows& m = s.ChooseRows(in);
         const int type = m.matrixType;
         const int rowCount = s.Size(in);
         const int columnCount = s.Size(in);
         Empty(m, rowCount, columnCount, static_cast<int>(in.Below(20)));
         Require(m.matrixType == type && m.elementCount == 0);
     }},
    {"TCRSMatrixMxN::AddElement",
     [](SparseState& s, Input& in) {
         Rows& m = s.ChooseRows(in);
         if (m.elementCount == m.capacity || m.rowCount == 0 || m.columnCount == 0) return;
         int last = m.rowCount - 1;
         while (last > 0 && m.rowStarts[last] == ByRows::emptyRow) --last;
         const int row = last + static_cast<int>(in.Below(static_cast<unsigned int>(m.rowCount - last)));
         m.AddElement(in.Scalar<T>(), row, static_cast<int>(in.Below(static_cast<unsigned int>(m.columnCount))));
     }},
    {"TCRSMatrixMxN: filled",
     [](SparseState& s, Input& in) {
         const int rowCount = s.Size(in);
         const int columnCount = s.Size(in);
         s.Build(s.ChooseRows(in), rowCount, columnCount, in);
     }},
    {"TCRSMatrixMxN: filled to follow another",
     [](SparseState& s, Input& in) {
         const int inner = s.ChooseRows(in).columnCount;
         const int columnCount = s.Size(in);
         s.Build(s.ChooseRows(in), inner, columnCount, in);
     }},
    {"TCRSMatrixMxN::TransposeFrom",
     [](SparseState& s, Input& in) {
         const ByColumns& source = s.ChooseColumns(in);
         Rows& m = s.ChooseRows(in);
         m.TransposeFrom(source);
         Require(m.rowCount == source.columnCount && m.columnCount == source.rowCount);
         Require(m.capacity == source.elementCount);
     }},
    {"TCRSMatrixMxN::Transpose",
     [](SparseState& s, Input& in) {
         const unsigned int index = in.Below(4);
         const Rows& m = s.rows[index];
         Rows& turned = s.rows[(index + 1 + in.Below(3)) % 4];
         if (!IsReadable(m) || !s.CanAfford(3ll * m.rowCount * m.columnCount)) return;
         m.Transpose(&turned);
         Require(turned.rowCount == m.columnCount && turned.columnCount == m.rowCount);
         if (!IsOrdinary(m) || !IsWellFormed(turned)) return;
         Rows back;
         turned.Transpose(&back);
         Require(AreSame(back, m));
     }},

    // Products.
    {"TCRSMatrixMxN::Multiply(x, y)",
     [](SparseState& s, Input& in) {
         const Rows& m = s.ChooseRows(in);
         if (!IsReadable(m)) return;
         std::vector<T> x(static_cast<std::size_t>(m.columnCount), in.Scalar<T>());
         std::vector<T> y(static_cast<std::size_t>(m.rowCount), T(7));
         if (!x.empty()) x.front() = in.Finite<T>();
         m.Multiply(x.data(), y.data());
         if (!IsWellFormed(m)) return;
         for (int r = 0; r < m.rowCount; ++r) {
             T sum = T(0);
             for (int k = m.rowStarts[r]; k < m.rowStarts[r + 1]; ++k)
                 sum += m.values[k] * x[static_cast<std::size_t>(m.columnIndices[k])];
             Require(IsSameNumber(sum, y[static_cast<std::size_t>(r)]));
         }
     }},
    {"TCRSMatrixMxN::Multiply(dense)",
     [](SparseState& s, Input& in) {
         Rows& m = s.ChooseRows(in);
         if (!IsReadable(m)) return;
         s.FitDense(m.columnCount, in);
         const int rowCount = m.rowCount;
         ByRows& product = s.ChooseRows(in);
         m.Multiply(s.dense, &product);
         Require(product.rowCount == rowCount && product.columnCount == static_cast<int>(s.dense.GetN()));
         CheckProduct(product, false);
     }},
    {"TCRSMatrixMxN::Multiply(sparse)",
     [](SparseState& s, Input& in) {
         const Rows& a = s.ChooseRows(in);
         const Rows& b = s.ChooseRows(in);
         if (a.columnCount != b.rowCount || !IsReadable(a) || !IsReadable(b)) return;
         ByRows product;
         a.Multiply(b, &product);
         CheckProduct(product, false);
         // The dense form gives as many rows as b has columns.
         if (IsOrdinary(a) && IsOrdinary(b) && b.columnCount >= a.rowCount && b.columnCount < 100) {
             ByRows same;
             a.Multiply(ToDense(static_cast<const ByRows&>(b)), &same);
             Require(AreSame(product, same));
         }
         static_cast<ByRows&>(s.ChooseRows(in)) = product;
     }},
    {"TCRSMatrixMxN::Normalise(dense)",
     [](SparseState& s, Input& in) {
         Rows& m = s.ChooseRows(in);
         if (!IsReadable(m)) return;
         s.FitDense(m.columnCount, in);
         ByRows& product = s.ChooseRows(in);
         m.Normalise(s.dense, &product);
         Require(product.matrixType == -2 && product.rowCount == product.columnCount);
         Require(IsWellFormed(product));
         CheckProduct(product, true);
     }},
    {"TCRSMatrixMxN::Normalise(by columns)",
     [](SparseState& s, Input& in) {
         Rows& m = s.ChooseRows(in);
         const ByColumns& b = s.ChooseColumns(in);
         if (!IsReadable(m) || b.rowCount > m.columnCount) return;
         if (!IsOrdinary(b) && !s.CanAfford(4ll * b.columnCount * b.columnCount)) return;
         const bool isComparable = b.rowCount == m.columnCount && IsOrdinary(m) && IsOrdinary(b) && b.columnCount < 100;
         ByRows same;
         if (isComparable) m.Normalise(ToDense(b), &same);
         ByRows& product = s.ChooseRows(in);
         m.Normalise(b, &product);
         Require(product.matrixType == -2 && product.rowCount == b.columnCount);
         CheckProduct(product, true);
         if (isComparable) Require(AreSame(product, same));
     }},
    {"TCRSMatrixMxN: normal equations",
     [](SparseState& s, Input& in) {
         const ByColumns& b = s.ChooseColumns(in);
         Rows& m = s.ChooseRows(in);
         m.TransposeFrom(b);
         if (!IsReadable(m) || !s.CanAfford(4ll * b.columnCount * b.columnCount)) return;
         ByRows product;
         m.Normalise(b, &product);
         CheckProduct(product, true);
     }},

    // Products by ranges of rows.
    {"TCRSMatrixMxN::Multiply(dense, first, last)",
     [](SparseState& s, Input& in) {
         const Rows& m = s.ChooseRows(in);
         if (!IsReadable(m)) return;
         s.FitDense(m.columnCount, in);
         const int first = static_cast<int>(in.Below(12));
         m.Multiply(s.dense, first, first + static_cast<int>(in.Below(12)), &s.ChooseFragment(in));
     }},
    {"TCRSMatrixMxN::MultiplyUpperTriangle(dense)",
     [](SparseState& s, Input& in) {
         const Rows& m = s.ChooseRows(in);
         if (!IsReadable(m)) return;
         s.FitDense(m.columnCount, in);
         const int first = static_cast<int>(in.Below(12));
         m.MultiplyUpperTriangle(s.dense, first, first + static_cast<int>(in.Below(12)), &s.ChooseFragment(in));
     }},
    {"TCRSMatrixMxN::MultiplyUpperTriangle(by columns)",
     [](SparseState& s, Input& in) {
         const Rows& m = s.ChooseRows(in);
         const ByColumns& b = s.ChooseColumns(in);
         if (!IsReadable(m) || b.rowCount > m.columnCount) return;
         const int first = static_cast<int>(in.Below(12));
         m.MultiplyUpperTriangle(b, first, first + static_cast<int>(in.Below(12)), &s.ChooseFragment(in));
     }},
};

} // namespace CorvexFuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return CorvexFuzz::RunOneOf<CorvexFuzz::SparseState<float>, CorvexFuzz::SparseState<double>>(data, size);
}

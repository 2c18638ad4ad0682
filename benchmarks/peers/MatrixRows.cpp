// Dense and sparse matrices against other libraries.

#include "PeersAlgebra.h"
#include "Rows.h"

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using namespace Peers;

template <class T>
Array<T> Scatter(int rows, int columns, unsigned int seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    Array<T> numbers(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    std::generate(numbers.begin(), numbers.end(), [&] { return uniform(random); });
    return numbers;
}

template <class T>
std::shared_ptr<TMatrixMxN<T>> MakeMatrix(const Array<T>& byRows, int rows, int columns)
{
    const auto matrix =
        std::make_shared<TMatrixMxN<T>>(static_cast<unsigned int>(rows), static_cast<unsigned int>(columns));
    for (std::size_t r = 0, i = 0; r < matrix->GetM(); ++r, i += matrix->GetN())
        std::copy_n(&byRows[i], matrix->GetN(), (*matrix)[static_cast<unsigned int>(r)]);
    return matrix;
}

template <class T>
Values ToValues(const TMatrixMxN<T>& matrix)
{
    Values values;
    for (unsigned int r = 0; r < matrix.GetM(); ++r) values.insert(values.end(), matrix[r], matrix[r] + matrix.GetN());
    return values;
}

// Products and inverses.

template <class T>
void AddProductRow(const std::string& name, int order)
{
    const auto a = [=] { return Scatter<T>(order, order, 1); };
    const auto b = [=] { return Scatter<T>(order, order, 2); };
    const Row row("product/" + name + std::to_string(order), sizeof(T) == sizeof(double) ? 1e-13 : 1e-5);
    row.Add("ours", [=]() -> Work {
        const auto left = MakeMatrix(a(), order, order);
        const auto right = MakeMatrix(b(), order, order);
        const auto product = std::make_shared<std::unique_ptr<TMatrixMxN<T>>>();
        // Made where it stays, as `TMatrixMxN<T> c = a * b` does.
        return {[=] { product->reset(new TMatrixMxN<T>(*left * *right)); }, [=] { return ToValues(**product); }};
    });
    if constexpr (hasEigen) row.Add("Eigen", [=] { return EigenProduct(a(), b(), order); });
    if constexpr (hasBlas) row.Add("OpenBLAS", [=] { return BlasProduct(a(), b(), order); });
}

void AddInverseRow(int order)
{
    const auto matrix = [=] { return Scatter<double>(order, order, 3); };
    const Row row("inverse/" + std::to_string(order), 1e-9);
    row.Add("ours", [=]() -> Work {
        const auto in = MakeMatrix(matrix(), order, order);
        const auto out = std::make_shared<TMatrixMxN<double>>();
        return {[=] { in->Invert(out.get()); }, [=] { return ToValues(*out); }};
    });
    if constexpr (hasEigen) row.Add("Eigen", [=] { return EigenInverse(matrix(), order); });
}

// Singular values.

void AddSingularValueRow(int rows, int columns)
{
    const auto matrix = [=] { return Scatter<double>(rows, columns, 4); };
    const Row row("svd/" + std::to_string(rows) + "x" + std::to_string(columns), 1e-12);
    row.Add("ours", [=]() -> Work {
        struct Decomposed
        {
            TMatrixMxN<double> u, w, v;
        };
        const auto in = MakeMatrix(matrix(), rows, columns);
        const auto out = std::make_shared<Decomposed>();
        return {[=] { in->SVD(&out->u, &out->w, &out->v, 30); },
                [=] {
                    Values values;
                    for (unsigned int i = 0; i < out->w.GetN(); ++i) values.push_back(out->w[i][i]);
                    std::sort(values.begin(), values.end(), std::greater<>());
                    return values;
                }};
    });
    if constexpr (hasEigen) {
        row.Add("Eigen", [=] { return EigenSingularValues(matrix(), rows, columns); });
        row.Add("EigenByRotations", [=] { return EigenSingularValuesByRotations(matrix(), rows, columns); });
    }
    if constexpr (hasBlas) {
        row.Add("gesvd", [=] { return LapackGesvd(matrix(), rows, columns); });
        row.Add("gesdd", [=] { return LapackGesdd(matrix(), rows, columns); });
    }
}

// Sparse matrices.

using Sparse = TCRSMatrixMxN<double>;

constexpr int sparseRows = 2000;
constexpr int sparseColumns = 500;
constexpr int elementsPerRow = 5;

/// Each row with an element in each fifth of the columns; no sum of products is near 0.
Array<Element> MakeElements()
{
    constexpr int fifth = sparseColumns / elementsPerRow;
    std::mt19937 random(5);
    std::uniform_int_distribution<int> column(0, fifth - 1);
    std::uniform_real_distribution<double> value(0.5, 1);
    Array<Element> elements;
    for (int r = 0; r < sparseRows; ++r)
        for (int k = 0; k < elementsPerRow; ++k) elements.push_back({r, k * fifth + column(random), value(random)});
    return elements;
}

struct Operands
{
    Sparse a, transposed, result;
    TCCSMatrixMxN<double> byColumns;
    Array<double> y;

    Operands() : a(sparseRows, sparseColumns, sparseRows * elementsPerRow), byColumns(sparseColumns, 100), y(sparseRows)
    {
        for (const Element& e : MakeElements()) {
            a.AddElement(e.value, e.row, e.column);
            byColumns.AddElement(e.value, e.row, e.column);
        }
        transposed.TransposeFrom(byColumns);
    }

    /// The elements of the result as row, column, value.
    Values GetResult() const
    {
        Values values;
        for (int r = 0; r < result.rowCount; ++r)
            for (int i = result.rowStarts[r]; i < result.rowStarts[r + 1]; ++i)
                values.insert(values.end(), {double(r), double(result.columnIndices[i]), result.values[i]});
        return values;
    }
};

/// Work of ours that leaves its result in the operands.
template <class Product>
std::function<Work()> OurProduct(Product product)
{
    return [=]() -> Work {
        const auto operands = std::make_shared<Operands>();
        return {[=] { product(*operands); }, [=] { return operands->GetResult(); }};
    };
}

void AddSparseRows()
{
    constexpr double bound = 1e-13;
    const auto x = [] { return Scatter<double>(sparseColumns, 1, 6); };
    const auto dense = [] { return Scatter<double>(sparseRows, sparseColumns, 7); };

    const Row vector("sparse/vector", bound);
    vector.Add("ours", [=]() -> Work {
        const auto operands = std::make_shared<Operands>();
        const auto factor = std::make_shared<Array<double>>(x());
        return {[=] { operands->a.Multiply(factor->data(), operands->y.data()); }, [=] { return Values(operands->y); }};
    });
    const Row product("sparse/product", bound);
    product.Add("ours", OurProduct([](Operands& o) { o.a.Multiply(o.transposed, &o.result); }));
    const Row normal("sparse/normal", bound);
    normal.Add("ours", OurProduct([](Operands& o) { o.transposed.Normalise(o.byColumns, &o.result); }));
    const Row full("sparse/dense", bound);
    full.Add("ours", [=] {
        const auto matrix = MakeMatrix(dense(), sparseRows, sparseColumns);
        return OurProduct([=](Operands& o) { o.transposed.Multiply(*matrix, &o.result); })();
    });

    if constexpr (hasEigen) {
        vector.Add("Eigen", [=] { return EigenSparseVector(MakeElements(), sparseRows, sparseColumns, x()); });
        product.Add("Eigen", [] { return EigenSparseProduct(MakeElements(), sparseRows, sparseColumns); });
        normal.Add("Eigen", [] { return EigenSparseNormal(MakeElements(), sparseRows, sparseColumns); });
        full.Add("Eigen", [=] { return EigenSparseDense(MakeElements(), sparseRows, sparseColumns, dense()); });
    }
}

const Registration rows([] {
    for (const int order : {64, 256, 512}) AddProductRow<double>("double", order);
    for (const int order : {64, 256, 512}) AddProductRow<float>("float", order);
    for (const int order : {8, 64, 256}) AddInverseRow(order);
    AddSingularValueRow(100000, 3);
    AddSingularValueRow(1000, 20);
    AddSingularValueRow(64, 64);
    AddSingularValueRow(256, 256);
    AddSparseRows();
});

} // namespace

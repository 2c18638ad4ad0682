#include <CorvexMaths/CorvexMaths.h>
#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>
#include <CorvexMaths/sparse/TMatrixFragment.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

constexpr int rowCount = 2000, columnCount = 500, elementsPerRow = 5;

/// A matrix of 5 elements in each of 2000 rows and about 20 in each of 500 columns, in all its forms, and operands for
/// it.
template <class T>
struct Operands
{
    TCRSMatrixMxN<T> rows, transposed, result;
    TCCSMatrixMxN<T> columns;
    TMatrixMxN<T> dense, denseTransposed, full;
    std::vector<T> x, y;

    Operands()
        : rows(rowCount, columnCount, rowCount * elementsPerRow),
          columns(columnCount, 100),
          dense(rowCount, columnCount),
          denseTransposed(columnCount, rowCount),
          full(columnCount, rowCount),
          x(rowCount),
          y(rowCount)
    {
        dense.ToNull();
        for (int r = 0; r < rowCount; ++r) {
            x[static_cast<unsigned int>(r)] = T(1) / static_cast<T>(r + 1);
            for (int k = 0; k < elementsPerRow; ++k) {
                const int c = k * (columnCount / elementsPerRow) + (7 * r + 13 * k) % (columnCount / elementsPerRow);
                const T value = static_cast<T>(1 + (r + k) % 17) / T(16);
                rows.AddElement(value, r, c);
                columns.AddElement(value, r, c);
                dense[static_cast<unsigned int>(r)][c] = value;
            }
        }
        transposed.TransposeFrom(columns);
        denseTransposed = dense;
        denseTransposed.Transpose();
        for (unsigned int r = 0; r < columnCount; ++r)
            for (unsigned int c = 0; c < rowCount; ++c) full[r][c] = static_cast<T>(1 + (r + c) % 13);
    }
};

/// Runs a product of an operand set; an item is a row of the result.
template <class T, class Product>
void Run(benchmark::State& state, const Product& product)
{
    Operands<T> operands;
    for (auto _ : state) {
        product(operands);
        benchmark::DoNotOptimize(operands.result.values);
        benchmark::DoNotOptimize(operands.y.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * (operands.result.rowCount != 0 ? operands.result.rowCount : rowCount));
}

template <class T>
void MultiplyVector(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.rows.Multiply(o.x.data(), o.y.data()); });
}

template <class T>
void MultiplyDenseOfFewElements(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.rows.Multiply(o.denseTransposed, &o.result); });
}

template <class T>
void MultiplyFullDense(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.rows.Multiply(o.full, &o.result); });
}

template <class T>
void MultiplySparse(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.rows.Multiply(o.transposed, &o.result); });
}

template <class T>
void NormaliseDense(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.transposed.Normalise(o.dense, &o.result); });
}

template <class T>
void NormaliseColumns(benchmark::State& state)
{
    Run<T>(state, [](Operands<T>& o) { o.transposed.Normalise(o.columns, &o.result); });
}

BENCHMARK_TEMPLATE(MultiplyVector, float);
BENCHMARK_TEMPLATE(MultiplyVector, double);
BENCHMARK_TEMPLATE(MultiplyDenseOfFewElements, float)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(MultiplyDenseOfFewElements, double)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(MultiplyFullDense, float)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(MultiplyFullDense, double)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(MultiplySparse, float)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(MultiplySparse, double)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(NormaliseDense, float)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(NormaliseDense, double)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(NormaliseColumns, float)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(NormaliseColumns, double)->Unit(benchmark::kMicrosecond);

} // namespace

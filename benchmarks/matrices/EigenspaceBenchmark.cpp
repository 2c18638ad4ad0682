#include "benchmarks/matrices/PlainEigenspace.h"

#include <CorvexMaths/matrices/TMatrix3x3.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace
{

using Halmont::Orrin::CorvexMaths::TMatrix3x3;
using Halmont::Orrin::CorvexMaths::TVector3;

/// Covariance matrices, as fits have them: their off-diagonal elements are of the size of the others.
template <class T>
std::vector<TMatrix3x3<T>> Covariances()
{
    std::mt19937 random(5);
    std::normal_distribution<T> normal;
    std::vector<TMatrix3x3<T>> matrices(1024);
    for (TMatrix3x3<T>& matrix : matrices) {
        matrix.ToNull();
        for (int i = 0; i < 8; ++i) {
            TVector3<T> const v(normal(random), normal(random), normal(random));
            matrix += v ^ v;
        }
    }
    return matrices;
}

template <class T>
void Eigenspace3(benchmark::State& state)
{
    auto const matrices = Covariances<T>();
    T values[3];
    TVector3<T> vectors[3];
    for (auto _ : state)
        for (auto const& matrix : matrices) benchmark::DoNotOptimize(matrix.Eigenspace(values, vectors));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(matrices.size()));
}

/// The same with the vectors in columns and every loop as it is told.
template <class T>
void PlainEigenspace3(benchmark::State& state)
{
    auto const matrices = Covariances<T>();
    T values[3], b[3], z[3];
    TMatrix3x3<T> vectors;
    T *rows[3], *vectorRows[3];
    vectors.GetRows(vectorRows);
    for (auto _ : state) {
        for (TMatrix3x3<T> matrix : matrices) {
            matrix.GetRows(rows);
            benchmark::DoNotOptimize(CorvexTest::Plain::EigenspaceRows(rows, values, vectorRows, 3, b, z));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(matrices.size()));
}

BENCHMARK_TEMPLATE(Eigenspace3, float);
BENCHMARK_TEMPLATE(Eigenspace3, double);
BENCHMARK_TEMPLATE(PlainEigenspace3, float);
BENCHMARK_TEMPLATE(PlainEigenspace3, double);

} // namespace

#include "tests/support/plain/PlainSVD.h"

#include <CorvexMaths/matrices/TMatrixMxN.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace
{

using Halmont::Orrin::CorvexMaths::TMatrixMxN;

template <class T>
TMatrixMxN<T> RandomMatrix(unsigned int m, unsigned int n)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    TMatrixMxN<T> matrix(m, n);
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) matrix[r][c] = uniform(random);
    return matrix;
}

void CountElements(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}

template <class T>
void SingularValues(benchmark::State& state)
{
    TMatrixMxN<T> a =
        RandomMatrix<T>(static_cast<unsigned int>(state.range(0)), static_cast<unsigned int>(state.range(1)));
    TMatrixMxN<T> u, w, v;
    for (auto _ : state) benchmark::DoNotOptimize(a.SVD(&u, &w, &v, 30));
    CountElements(state);
}

/// The same, one loop for each sum.
template <class T>
void PlainSingularValues(benchmark::State& state)
{
    TMatrixMxN<T> const a =
        RandomMatrix<T>(static_cast<unsigned int>(state.range(0)), static_cast<unsigned int>(state.range(1)));
    TMatrixMxN<T> u(a), w(a.GetN(), a.GetN()), v(w);
    std::vector<T> work(a.GetN());
    auto const rows = [](TMatrixMxN<T>& matrix) {
        std::vector<T*> pointers(matrix.GetM());
        for (unsigned int r = 0; r < matrix.GetM(); ++r) pointers[r] = matrix[r];
        return pointers;
    };
    std::vector<T*> uRows = rows(u), wRows = rows(w), vRows = rows(v);
    for (auto _ : state) {
        u = a;
        benchmark::DoNotOptimize(
            CorvexTest::Plain::SVDRows(uRows.data(), wRows.data(), vRows.data(), work.data(), a.GetM(), a.GetN(), 30));
    }
    CountElements(state);
}

void Sizes(benchmark::internal::Benchmark* sizes)
{
    sizes->Args({3, 3})->Args({100000, 3})->Args({1000, 20})->Args({64, 64})->Args({256, 256});
}

BENCHMARK_TEMPLATE(SingularValues, float)->Apply(Sizes);
BENCHMARK_TEMPLATE(SingularValues, double)->Apply(Sizes);
BENCHMARK_TEMPLATE(PlainSingularValues, float)->Apply(Sizes);
BENCHMARK_TEMPLATE(PlainSingularValues, double)->Apply(Sizes);

} // namespace

#include <CorvexMaths/matrices/TMatrixMxN.h>

#include <benchmark/benchmark.h>

#include <vector>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

/// A well-conditioned matrix without a pattern.
template <class M>
void Fill(M& matrix)
{
    unsigned int state = 1;
    for (unsigned int r = 0; r < matrix.GetM(); ++r) {
        for (unsigned int c = 0; c < matrix.GetN(); ++c) {
            state = state * 1664525u + 1013904223u;
            matrix[r][c] = static_cast<float>(state >> 16) / 65536.0f - 0.5f;
        }
    }
}

/// Multiplications and additions a second.
template <class T>
void DenseProduct(benchmark::State& state)
{
    auto const order = static_cast<unsigned int>(state.range(0));
    TMatrixMxN<T> a(order, order), b(order, order);
    Fill(a);
    Fill(b);
    for (auto _ : state) {
        TMatrixMxN<T> const c = a * b;
        benchmark::DoNotOptimize(c[0][0]);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0) * state.range(0));
}
BENCHMARK_TEMPLATE(DenseProduct, float)->Arg(64)->Arg(256)->Arg(512)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(DenseProduct, double)->Arg(64)->Arg(256)->Arg(512)->Unit(benchmark::kMicrosecond);

/// Inverted matrices a second.
template <class T>
void DenseInverse(benchmark::State& state)
{
    auto const order = static_cast<unsigned int>(state.range(0));
    TMatrixMxN<T> a(order, order), inverse;
    Fill(a);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.Invert(&inverse));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(DenseInverse, float)->Arg(8)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(DenseInverse, double)->Arg(8)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);

template <class T>
void FixedProduct(benchmark::State& state)
{
    TMatrix4x4<T> a, b;
    Fill(a);
    Fill(b);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        TMatrix4x4<T> c = a * b;
        benchmark::DoNotOptimize(c);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(FixedProduct, float);
BENCHMARK_TEMPLATE(FixedProduct, double);

template <class T>
void FixedInverse(benchmark::State& state)
{
    TMatrix4x4<T> a, inverse;
    Fill(a);
    for (auto _ : state) benchmark::DoNotOptimize(a.Invert(&inverse));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(FixedInverse, float);
BENCHMARK_TEMPLATE(FixedInverse, double);

/// Points moved a second, as rows on the left of the matrix.
template <class T>
void MovePoints(benchmark::State& state)
{
    TMatrix4x4<T> matrix;
    Fill(matrix);
    std::vector<TVector4<T>> points(1000000, TVector4<T>(T(1), T(2), T(3), T(1)));
    std::vector<TVector4<T>> moved(points.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < points.size(); ++i) moved[i] = points[i] * matrix;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}
BENCHMARK_TEMPLATE(MovePoints, float)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(MovePoints, double)->Unit(benchmark::kMillisecond);

} // namespace

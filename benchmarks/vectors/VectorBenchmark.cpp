// Arrays of three-vectors from the cache to the memory: what the inline arithmetic costs an item.

#include <CorvexMaths/vectors/TVector3.h>

#include <benchmark/benchmark.h>

#include <vector>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

// Runs `step` over two arrays of vectors into a third and reports items a second.
template <class T, class Step>
void OverArrays(benchmark::State& state, Step step)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    std::vector<TVector3<T>> a(count), b(count), out(count);
    for (std::size_t i = 0; i < count; ++i) {
        a[i] = TVector3<T>(T(i % 7), T(1), T(i % 3));
        b[i] = TVector3<T>(T(2), T(i % 5), T(1));
    }
    for (auto _ : state) {
        for (std::size_t i = 0; i < count; ++i) step(out[i], a[i], b[i]);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class T>
void Normalise(benchmark::State& state)
{
    OverArrays<T>(state, [](TVector3<T>& out, const TVector3<T>& a, const TVector3<T>&) { (out = a).Normalise(); });
}

template <class T>
void Dot(benchmark::State& state)
{
    OverArrays<T>(state, [](TVector3<T>& out, const TVector3<T>& a, const TVector3<T>& b) { out.x = a % b; });
}

template <class T>
void Cross(benchmark::State& state)
{
    OverArrays<T>(state, [](TVector3<T>& out, const TVector3<T>& a, const TVector3<T>& b) { out = a * b; });
}

} // namespace

BENCHMARK_TEMPLATE(Normalise, float)->Range(1 << 10, 1 << 20);
BENCHMARK_TEMPLATE(Normalise, double)->Range(1 << 10, 1 << 20);
BENCHMARK_TEMPLATE(Dot, float)->Range(1 << 10, 1 << 20);
BENCHMARK_TEMPLATE(Dot, double)->Range(1 << 10, 1 << 20);
BENCHMARK_TEMPLATE(Cross, float)->Range(1 << 10, 1 << 20);
BENCHMARK_TEMPLATE(Cross, double)->Range(1 << 10, 1 << 20);

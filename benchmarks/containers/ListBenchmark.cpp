#include <CorvexMaths/containers/Instantiations.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using Vector = TVector3<double>;

// From what the first-level cache holds to what only memory does, at 24 bytes a vector.
constexpr std::int64_t inCache = 1 << 10;
constexpr std::int64_t inMemory = 1 << 20;

void Append(benchmark::State& state, unsigned int growSize, bool exponential)
{
    const std::int64_t size = state.range(0);
    for (auto _ : state) {
        TList<Vector> list(0, growSize);
        list.SetUseExponentialGrowth(exponential);
        for (std::int64_t i = 0; i < size; ++i) list.Add(Vector(static_cast<double>(i), 1.0, 2.0));
        benchmark::DoNotOptimize(list.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * size);
}

/// Appending one by one, the block growing by a fixed step: the cost of a large list is its copies.
void AppendByStep(benchmark::State& state)
{
    Append(state, 1000, false);
}
BENCHMARK(AppendByStep)->RangeMultiplier(8)->Range(inCache, inMemory / 4);

/// Appending one by one, the block doubling.
void AppendByDoubling(benchmark::State& state)
{
    Append(state, 1000, true);
}
BENCHMARK(AppendByDoubling)->RangeMultiplier(8)->Range(inCache, inMemory);

/// Appending one by one to a block of the final size: the cost of an addition itself.
void AppendToReserved(benchmark::State& state)
{
    const std::int64_t size = state.range(0);
    TList<Vector> list(static_cast<unsigned int>(size), 1);
    for (auto _ : state) {
        list.Clear(false);
        for (std::int64_t i = 0; i < size; ++i) list.Add(Vector(static_cast<double>(i), 1.0, 2.0));
        benchmark::DoNotOptimize(list.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * size);
}
BENCHMARK(AppendToReserved)->RangeMultiplier(8)->Range(inCache, inMemory);

/// The standard vector, for comparison with AppendByDoubling.
void AppendToStandardVector(benchmark::State& state)
{
    const std::int64_t size = state.range(0);
    for (auto _ : state) {
        std::vector<Vector> list;
        for (std::int64_t i = 0; i < size; ++i) list.emplace_back(static_cast<double>(i), 1.0, 2.0);
        benchmark::DoNotOptimize(list.data());
    }
    state.SetItemsProcessed(state.iterations() * size);
}
BENCHMARK(AppendToStandardVector)->RangeMultiplier(8)->Range(inCache, inMemory);

/// Appending a range to a block that has room for it.
void AppendRange(benchmark::State& state)
{
    const unsigned int size = static_cast<unsigned int>(state.range(0));
    TList<Vector> source(size, 1);
    source.Expand(size);
    TList<Vector> list(size, 1);
    for (auto _ : state) {
        list.Clear(false);
        list.AddRange(source);
        benchmark::DoNotOptimize(list.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(AppendRange)->RangeMultiplier(8)->Range(inCache, inMemory);

/// Binary search for keys that all lie in the list.
void SearchSorted(benchmark::State& state)
{
    const unsigned int size = static_cast<unsigned int>(state.range(0));
    TList<double> list(size, 1);
    for (unsigned int i = 0; i < size; ++i) list.Add(i);
    unsigned int key = 0;
    unsigned int index = 0;
    for (auto _ : state) {
        key = (key + 7919) % size;
        benchmark::DoNotOptimize(list.BinarySearch(key, &index));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SearchSorted)->RangeMultiplier(8)->Range(inCache, inMemory);

} // namespace

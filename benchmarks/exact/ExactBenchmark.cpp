#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/exact/TSetGenerator.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Divisions of values of the given numbers of bits: divisions a second.
void Int128Division(benchmark::State& state)
{
    std::mt19937_64 random(1);
    const auto draw = [&](long bits) {
        if (bits <= 64) return Int128(0, (random() | 1ull << 63) >> (64 - bits));
        return Int128(static_cast<long long>((random() | 1ull << 63) >> (128 - bits)), random());
    };
    std::vector<Int128> dividends, divisors;
    for (int i = 0; i < 256; ++i) dividends.push_back(draw(state.range(0))), divisors.push_back(draw(state.range(1)));
    for (auto _ : state)
        for (std::size_t i = 0; i < 256; ++i) benchmark::DoNotOptimize(dividends[i] / divisors[i]);
    state.SetItemsProcessed(state.iterations() * 256);
}
BENCHMARK(Int128Division)->ArgsProduct({{64, 120}, {10, 60, 100}});

/// Exact products: products a second.
void Int128Product(benchmark::State& state)
{
    long long a = 0x123456789abcdef, b = -0x7edcba987654321;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(Int128::Mul(a, b));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Int128Product);

struct Counter
{
    long count = 0;
    void Take(const unsigned int* set) { count += set[0] < 100 ? 1 : 0; }
};

/// Both walks, of k out of n values: sets a second.
void Sets(benchmark::State& state, bool permutes)
{
    const auto n = static_cast<unsigned int>(state.range(0)), k = static_cast<unsigned int>(state.range(1));
    Counter counter;
    TSetGenerator<unsigned int> generator;
    generator.AddCombinationMethod(&counter, &Counter::Take);
    generator.AddPermutationMethod(&counter, &Counter::Take);
    for (auto _ : state) permutes ? generator.GeneratePermutations(n, k) : generator.GenerateCombinations(n, k);
    state.SetItemsProcessed(counter.count);
}
BENCHMARK_CAPTURE(Sets, combinations, false)->Args({30, 4})->Args({24, 20});
BENCHMARK_CAPTURE(Sets, permutations, true)->Args({9, 9})->Args({100, 2});

} // namespace

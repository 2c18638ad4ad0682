#include <CorvexMaths/primitives/TBox.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Extending a box point by point, over points from a cache's worth to a memory's.
template <class T>
void BoxOfPoints(benchmark::State& state)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<T> coordinate(T(-1), T(1));
    std::vector<TVector3<T>> points(static_cast<std::size_t>(state.range(0)));
    for (TVector3<T>& p : points) p = TVector3<T>(coordinate(random), coordinate(random), coordinate(random));
    for (auto _ : state) {
        TBox<T> box;
        for (const TVector3<T>& p : points) box.Extend(p);
        benchmark::DoNotOptimize(box);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(BoxOfPoints, float)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_TEMPLATE(BoxOfPoints, double)->RangeMultiplier(10)->Range(1000, 1000000);

} // namespace

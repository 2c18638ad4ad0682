// The convex hull of clouds, and the reordering of clouds into one outline.

#include <CorvexMaths/CorvexMaths.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Points in a disc, where few lie on the hull, or on its circle, where all do but for rounding.
template <class T>
TPolygon<T, TVector2> MakeCloud(unsigned int count, bool isOnCircle)
{
    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> uniform(0, 1);
    TPolygon<T, TVector2> cloud(count, 1000u);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * uniform(random);
        const double radius = 1000 * (isOnCircle ? 1 : std::sqrt(uniform(random)));
        cloud.Add(TVector2<T>(static_cast<T>(radius * std::cos(angle)), static_cast<T>(radius * std::sin(angle))));
    }
    return cloud;
}

template <class T, bool isOnCircle>
void ConvexHull(benchmark::State& state)
{
    const TPolygon<T, TVector2> source = MakeCloud<T>(static_cast<unsigned int>(state.range(0)), isOnCircle);
    for (auto _ : state) {
        TPolygon<T, TVector2> polygon = source;
        polygon.MakeConvexHull();
        benchmark::DoNotOptimize(polygon.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class T>
void ReorderCEC(benchmark::State& state)
{
    const TPolygon<T, TVector2> source = MakeCloud<T>(static_cast<unsigned int>(state.range(0)), false);
    for (auto _ : state) {
        TPolygon<T, TVector2> polygon = source;
        polygon.ReorderCEC();
        benchmark::DoNotOptimize(polygon.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK_TEMPLATE(ConvexHull, float, false)->Arg(1000)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ConvexHull, double, false)->Arg(1000)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ConvexHull, float, true)->Arg(1000)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ConvexHull, double, true)->Arg(1000)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ReorderCEC, float)->Arg(100)->Arg(400)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ReorderCEC, double)->Arg(100)->Arg(400)->Unit(benchmark::kMicrosecond);

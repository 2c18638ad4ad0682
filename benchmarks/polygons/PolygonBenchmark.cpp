// The reshaping of polygons: offsets outward and inward, thinning, and the removal of crossings.

#include <CorvexMaths/CorvexMaths.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// A polygon without box work, as the reshaping itself runs: a box kept through single removals costs a pass for each.
template <class T>
struct Outline : TPolygon<T, TVector2>
{
    Outline() : TPolygon<T, TVector2>(0u, 1000u) { this->SetUseExponentialGrowth(true); }
    void KeepBox(bool keep) { this->keepBox = keep; }
};

/// A counter-clockwise gear around the origin, of radius 1000 with waves of a hundredth of it, far apart for its
/// distances.
template <class T>
Outline<T> MakeGear(unsigned int count)
{
    Outline<T> outline;
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        const double radius = 1000 + 10 * std::sin(12 * angle);
        outline.Add(TVector2<T>(static_cast<T>(radius * std::cos(angle)), static_cast<T>(radius * std::sin(angle))));
    }
    return outline;
}

template <class T, int distance>
void Offset(benchmark::State& state)
{
    const Outline<T> source = MakeGear<T>(static_cast<unsigned int>(state.range(0)));
    bool isDone = true;
    for (auto _ : state) {
        Outline<T> outline = source;
        isDone &= outline.Offset(distance, 0);
        benchmark::DoNotOptimize(outline.GetStream());
    }
    if (!isDone) state.SkipWithError("the offset failed");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Without a crossing every side is held against all that follow, nearly all of them far away.
template <class T>
void TrimCrossings(benchmark::State& state)
{
    const Outline<T> source = MakeGear<T>(static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        Outline<T> outline = source;
        outline.TrimCrossings();
        benchmark::DoNotOptimize(outline.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class T>
void SimplifyDPM(benchmark::State& state)
{
    Outline<T> source = MakeGear<T>(static_cast<unsigned int>(state.range(0)));
    source.KeepBox(false);
    for (auto _ : state) {
        Outline<T> outline = source;
        outline.SimplifyDPM(static_cast<T>(0.125));
        benchmark::DoNotOptimize(outline.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK_TEMPLATE(Offset, float, 5)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(Offset, double, 5)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(Offset, float, -5)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(Offset, double, -5)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TrimCrossings, float)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TrimCrossings, double)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(SimplifyDPM, float)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(SimplifyDPM, double)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMicrosecond);

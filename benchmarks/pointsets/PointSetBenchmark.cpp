#include <CorvexMaths/CorvexMaths.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using Halmont::Orrin::CorvexMaths::TPointSet;
using Halmont::Orrin::CorvexMaths::TVector2;
using Halmont::Orrin::CorvexMaths::TVector3;

/// A wavy outline around the origin.
template <class T, template <class> class V>
TPointSet<T, V> Outline(unsigned int count)
{
    TPointSet<T, V> outline(count, 1000);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count, radius = 2 + std::cos(7 * angle);
        const TVector2<T> point(static_cast<T>(radius * std::cos(angle)), static_cast<T>(radius * std::sin(angle)));
        outline.Add(static_cast<V<T>>(point));
    }
    return outline;
}

/// Appending points one by one, each of which extends the box.
template <class T, template <class> class V>
void Append(benchmark::State& state)
{
    const unsigned int count = static_cast<unsigned int>(state.range(0));
    const TPointSet<T, V> source = Outline<T, V>(count);
    TPointSet<T, V> set(count, 1000);
    for (auto _ : state) {
        set.Clear(false);
        for (unsigned int i = 0; i < count; ++i) set.Add(source[i]);
        benchmark::DoNotOptimize(set.GetBoundingBox());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// The box of all points anew.
template <class T, template <class> class V>
void RecalculateBox(benchmark::State& state)
{
    TPointSet<T, V> set = Outline<T, V>(static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        set.RecalculateBoundingBox();
        benchmark::DoNotOptimize(set.GetBoundingBox());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Points on a grid over the box of an outline, tested one by one; an item is a side of the outline.
template <class T, template <class> class V>
void Containment(benchmark::State& state)
{
    const TPointSet<T, V> set = Outline<T, V>(static_cast<unsigned int>(state.range(0)));
    unsigned int query = 0;
    for (auto _ : state) {
        query = (query + 1) % 256;
        const T x = static_cast<T>(query % 16) / 8 - 1, y = static_cast<T>(query / 16) / 8 - 1;
        benchmark::DoNotOptimize(set.IsWithin(x, y));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The sum of two sets in place.
template <class T, template <class> class V>
void MinkowskiSum(benchmark::State& state)
{
    const unsigned int count = static_cast<unsigned int>(state.range(0));
    const TPointSet<T, V> source = Outline<T, V>(count), other = Outline<T, V>(count);
    for (auto _ : state) {
        TPointSet<T, V> set = source;
        set.MinkowskiSum(other);
        benchmark::DoNotOptimize(set.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * count * count);
}

BENCHMARK_TEMPLATE(Append, float, TVector2)->Arg(1000);
BENCHMARK_TEMPLATE(Append, double, TVector3)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(RecalculateBox, float, TVector2)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(RecalculateBox, double, TVector3)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(Containment, float, TVector2)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_TEMPLATE(Containment, double, TVector2)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_TEMPLATE(Containment, double, TVector3)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_TEMPLATE(MinkowskiSum, float, TVector2)->Arg(1000);
BENCHMARK_TEMPLATE(MinkowskiSum, double, TVector2)->Arg(1000);

} // namespace

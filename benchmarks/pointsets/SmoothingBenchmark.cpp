#include <CorvexMaths/CorvexMaths.h>
#include <CorvexMaths/pointsets/TParameterization.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using Halmont::Orrin::CorvexMaths::TParameterization;
using Halmont::Orrin::CorvexMaths::TPointSet;
using Halmont::Orrin::CorvexMaths::TPolygon;
using Halmont::Orrin::CorvexMaths::TVector2;
using Halmont::Orrin::CorvexMaths::TVector3;

/// A circle of radius 1 with a ripple.
template <class T, template <class> class V>
TPointSet<T, V> Ripple(unsigned int count)
{
    TPointSet<T, V> points(count, 1000);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count, radius = 1 + 0.1 * std::cos(40 * angle);
        const TVector2<T> point(static_cast<T>(radius * std::cos(angle)), static_cast<T>(radius * std::sin(angle)));
        points.Add(static_cast<V<T>>(point));
    }
    return points;
}

/// Ten passes over a closed line; an item is a point in a pass.
template <class T, template <class> class V>
void Smooth(benchmark::State& state)
{
    TPointSet<T, V> points = Ripple<T, V>(static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        points.Smooth(10, true);
        benchmark::DoNotOptimize(points.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 10);
}

/// Ten pieces for each segment; an item is a point of the result.
template <class T, template <class> class V>
void Infill(benchmark::State& state)
{
    const TPointSet<T, V> points = Ripple<T, V>(static_cast<unsigned int>(state.range(0)));
    const T spacing = (points[1] - points[0]).GetLength() / T(10);
    unsigned int count = 0;
    for (auto _ : state) {
        TPointSet<T, V> filled = points;
        filled.Infill(spacing, true);
        count = filled.GetCount();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// The positions anew.
template <class T, template <class> class V>
void Parameterize(benchmark::State& state)
{
    const TPointSet<T, V> points = Ripple<T, V>(static_cast<unsigned int>(state.range(0)));
    TParameterization<T, V> line(points);
    for (auto _ : state) {
        line.Parameterize();
        benchmark::DoNotOptimize(line.GetLength());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Points at positions all over the line, one by one.
template <class T, template <class> class V>
void EvaluateLine(benchmark::State& state)
{
    const TPointSet<T, V> points = Ripple<T, V>(static_cast<unsigned int>(state.range(0)));
    TParameterization<T, V> line(points);
    line.Parameterize();
    T position = T(0);
    for (auto _ : state) {
        position += static_cast<T>(0.618034);
        if (position > T(1)) position -= T(1);
        benchmark::DoNotOptimize(line.Evaluate(position));
    }
    state.SetItemsProcessed(state.iterations());
}

/// The winding of an outline.
template <class T, template <class> class V>
void WindingAngle(benchmark::State& state)
{
    const TPointSet<T, V> points = Ripple<T, V>(static_cast<unsigned int>(state.range(0)));
    const TPolygon<T, V> outline(points);
    for (auto _ : state) benchmark::DoNotOptimize(outline.GetWindingAngle());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The boundary of an arch, whose every vertex stays: the quadratic case. An item is a pair of vertices.
template <class T, template <class> class V>
void OpenConvexBoundary(benchmark::State& state)
{
    const unsigned int count = static_cast<unsigned int>(state.range(0));
    TPolygon<T, V> arch(count, 1000);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 3.141592653589793 * (1 - static_cast<double>(i) / count);
        arch.Add(static_cast<V<T>>(
            TVector2<T>(static_cast<T>(1000 * std::cos(angle)), static_cast<T>(1000 * std::sin(angle)))));
    }
    for (auto _ : state) benchmark::DoNotOptimize(arch.GetOpenConvexBoundary(TVector3<T>(0, 0, 1)).GetCount());
    state.SetItemsProcessed(state.iterations() * count * count / 2);
}

BENCHMARK_TEMPLATE(Smooth, float, TVector2)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Smooth, double, TVector3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Infill, double, TVector2)->Arg(100)->Arg(1000);
BENCHMARK_TEMPLATE(Parameterize, float, TVector2)->Arg(1000);
BENCHMARK_TEMPLATE(Parameterize, double, TVector3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(EvaluateLine, double, TVector3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(WindingAngle, float, TVector2)->Arg(1000);
BENCHMARK_TEMPLATE(WindingAngle, double, TVector3)->Arg(1000);
BENCHMARK_TEMPLATE(OpenConvexBoundary, float, TVector2)->Arg(1000);
BENCHMARK_TEMPLATE(OpenConvexBoundary, double, TVector3)->Arg(1000);

} // namespace

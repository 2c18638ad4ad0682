#include <CorvexMaths/splines/TBSpline.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Points of a rising spiral with a wave on it, two turns long.
template <class T>
TPointSet<T, TVector3> Spiral(unsigned int count)
{
    TPointSet<T, TVector3> points(count, 1000);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 12.566370614359172 * i / count, radius = 2 + 0.1 * std::cos(7 * angle);
        points.Add(TVector3<T>(static_cast<T>(radius * std::cos(angle)), static_cast<T>(radius * std::sin(angle)),
                               static_cast<T>(angle)));
    }
    return points;
}

/// Single points of a cubic, over numbers of control points.
template <class T>
void EvaluateCubic(benchmark::State& state)
{
    TPointSet<T, TVector3> points = Spiral<T>(static_cast<unsigned int>(state.range(0)));
    TBSpline<T, TVector3> spline(points, 4, Clamped);
    T u = T(0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(spline.Evaluate(u));
        u = u < T(0.9) ? u + T(0.0731) : u - T(0.9);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(EvaluateCubic, float)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK_TEMPLATE(EvaluateCubic, double)->Arg(10)->Arg(100)->Arg(1000);

/// Control points added one by one, each of which builds the knots anew.
template <class T>
void AddOneByOne(benchmark::State& state)
{
    const TPointSet<T, TVector3> points = Spiral<T>(static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        TBSpline<T, TVector3> spline(4, Uniform, points.GetCount(), 1000);
        for (unsigned int i = 0; i < points.GetCount(); ++i) spline.Add(points[i]);
        benchmark::DoNotOptimize(spline.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(AddOneByOne, float)->Arg(1000);
BENCHMARK_TEMPLATE(AddOneByOne, double)->Arg(1000);

/// 500 data points fitted by a cubic of 50 control points.
template <class T>
void FitCubic(benchmark::State& state)
{
    TPointSet<T, TVector3> points = Spiral<T>(500);
    for (auto _ : state) {
        TBSpline<T, TVector3> spline(4, Clamped, 50, 50);
        spline.Fit(points, 50, false);
        benchmark::DoNotOptimize(spline.GetStream());
    }
    state.SetItemsProcessed(state.iterations() * 500);
}
BENCHMARK_TEMPLATE(FitCubic, float)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(FitCubic, double)->Unit(benchmark::kMillisecond);

} // namespace

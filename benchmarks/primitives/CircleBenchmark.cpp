#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TSphere.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Points near a rim (a z of 0) or a surface: random directions times a radius that varies by a hundredth.
template <class T>
TPointSet<T, TVector3> Around(bool isFlat, unsigned int count)
{
    std::mt19937 random(1);
    std::normal_distribution<T> normal;
    TPointSet<T, TVector3> points(count);
    for (unsigned int i = 0; i < count; ++i) {
        TVector3<T> p(normal(random), normal(random), isFlat ? T(0) : normal(random));
        p.Normalise();
        points.Add(p * (T(10) + normal(random) / 10) + TVector3<T>(1, 2, 3));
    }
    return points;
}

/// The fit of a circle in space: points a second, all steps together.
template <class T>
void CircleFit(benchmark::State& state)
{
    auto points = Around<T>(true, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        TCircle3<T> circle;
        benchmark::DoNotOptimize(circle.Fit(points, nullptr, nullptr, T(1e-6), 20));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(CircleFit, float)->Arg(10000);
BENCHMARK_TEMPLATE(CircleFit, double)->Arg(10000);

/// The fit of a sphere: points a second, all steps together.
template <class T>
void SphereFit(benchmark::State& state)
{
    auto points = Around<T>(false, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        TSphere<T> sphere;
        benchmark::DoNotOptimize(sphere.Fit(points, nullptr, 20));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(SphereFit, float)->Arg(10000);
BENCHMARK_TEMPLATE(SphereFit, double)->Arg(10000);

/// The minimum bounding circle of points in random order: of a square, where outsiders are rare, and of a rim, where
/// they are not.
template <class T>
void BoundingCircle(benchmark::State& state)
{
    const bool isRim = state.range(1) != 0;
    std::mt19937 random(1);
    std::uniform_real_distribution<T> coordinate(T(-1), T(1));
    TList<TVector2<T>> points(static_cast<unsigned int>(state.range(0)));
    for (int i = 0; i < state.range(0); ++i) {
        TVector2<T> p(coordinate(random), coordinate(random));
        if (isRim) p.Normalise();
        points.Add(p);
    }
    for (auto _ : state) {
        TCircle2<T> circle;
        circle.MinimumBoundingCircle(points);
        benchmark::DoNotOptimize(circle);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(BoundingCircle, float)->ArgNames({"points", "rim"})->ArgsProduct({{1000, 100000}, {0, 1}});
BENCHMARK_TEMPLATE(BoundingCircle, double)->ArgNames({"points", "rim"})->ArgsProduct({{1000, 100000}, {0, 1}});

} // namespace

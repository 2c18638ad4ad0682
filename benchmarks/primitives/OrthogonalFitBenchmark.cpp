#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>

#include <benchmark/benchmark.h>

#include <random>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// The fit of a line or a plane to a cloud that is flat and oblong, with both residuals; an item is a point.
template <class T, template <class> class Primitive>
void OrthogonalFit(benchmark::State& state)
{
    std::mt19937 random(1);
    std::normal_distribution<T> normal;
    TPointSet<T, TVector3> points;
    for (int i = 0; i < state.range(0); ++i)
        points.Add(TVector3<T>(normal(random), 5 * normal(random), 20 * normal(random)));
    Primitive<T> fitted;
    for (auto _ : state) {
        T spread = 0, squares = 0;
        benchmark::DoNotOptimize(fitted.Fit(points, &spread, &squares));
        benchmark::DoNotOptimize(squares);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_TEMPLATE(OrthogonalFit, float, TLine3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(OrthogonalFit, double, TLine3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(OrthogonalFit, float, TPlane)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(OrthogonalFit, double, TPlane)->Arg(1000)->Arg(100000);

} // namespace

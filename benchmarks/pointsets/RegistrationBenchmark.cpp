#include <CorvexMaths/CorvexMaths.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Points on a wavy helix.
template <class T, template <class> class V>
TPointSet<T, V> Helix(benchmark::State& state)
{
    const unsigned int count = static_cast<unsigned int>(state.range(0));
    TPointSet<T, V> set(count, 1000);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        const double x = std::cos(5 * angle), y = std::sin(5 * angle), z = angle + std::cos(7 * angle);
        set.Add(static_cast<V<T>>(TVector3<T>(static_cast<T>(x), static_cast<T>(y), static_cast<T>(z))));
    }
    return set;
}

/// A turn about z and a translation.
template <class T>
TMatrix4x4<T> Motion()
{
    const T values[] = {T(0.6), T(0.8), 0, 0, T(-0.8), T(0.6), 0, 0, 0, 0, 1, 0, T(0.5), T(-0.25), T(0.125), 1};
    return TMatrix4x4<T>(values);
}

/// The motion between two sets, which return to their places.
template <class T, template <class> class V>
void Register(benchmark::State& state)
{
    TPointSet<T, V> source = Helix<T, V>(state), target = source;
    target *= Motion<T>();
    TMatrixMxN<T> rotation;
    V<T> translation;
    for (auto _ : state) benchmark::DoNotOptimize(target.Register(&source, &rotation, &translation, false));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Points times a 4 by 4 matrix, with the box.
template <class T, template <class> class V>
void Transform(benchmark::State& state)
{
    TPointSet<T, V> set = Helix<T, V>(state);
    const TMatrix4x4<T> motion = Motion<T>();
    for (auto _ : state) {
        set *= motion;
        benchmark::DoNotOptimize(set.GetBoundingBox());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_TEMPLATE(Register, float, TVector2)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Register, float, TVector3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Register, double, TVector3)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Transform, float, TVector2)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(Transform, float, TVector3)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(Transform, double, TVector3)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(Transform, float, TVector4)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(Transform, double, TVector4)->Arg(1000)->Arg(1000000);

} // namespace

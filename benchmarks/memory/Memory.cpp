// Prints what operations allocate: how often, how many bytes in all, and the most that they hold at once beyond what
// was there before. Operator new is replaced by one that counts; what qsort of the C library takes for itself is not
// seen.

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <random>

namespace
{

struct Tally
{
    std::size_t allocations = 0;
    std::size_t bytes = 0;
    std::size_t held = 0;
    std::size_t peak = 0;
};

Tally tally;

/// What stands in front of each block.
struct Header
{
    std::size_t size;
    void* memory;
};

void* Allocate(std::size_t size, std::size_t alignment)
{
    void* const memory = std::malloc(size + sizeof(Header) + alignment);
    if (memory == nullptr) throw std::bad_alloc();
    void* block = static_cast<Header*>(memory) + 1;
    std::size_t room = size + alignment;
    std::align(alignment, size, block, room);
    static_cast<Header*>(block)[-1] = {size, memory};
    ++tally.allocations;
    tally.bytes += size;
    tally.held += size;
    tally.peak = std::max(tally.peak, tally.held);
    return block;
}

void Free(void* block)
{
    if (block == nullptr) return;
    const Header header = static_cast<Header*>(block)[-1];
    tally.held -= header.size;
    std::free(header.memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return Allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept
{
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    Free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    Free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    Free(memory);
}

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

using Point = TVector3<double>;
using PointSet = TPointSet<double, TVector3>;
using Outline = TPolygon<double, TVector2>;

constexpr unsigned int many = 100000;
constexpr unsigned int few = 1000; // For operations of quadratic cost.

/// Prints the line of an operation. What it makes is gone at its end, and counts nevertheless.
void Measure(const char* name, unsigned int pointCount, const std::function<void()>& operation)
{
    const Tally before = tally;
    tally.peak = tally.held;
    operation();
    std::printf("%-34s %7u %12zu %15zu %15zu %15.1f\n", name, pointCount, tally.allocations - before.allocations,
                tally.bytes - before.bytes, tally.peak - before.held,
                static_cast<double>(tally.peak - before.held) / pointCount);
}

/// Points near a sphere.
PointSet MakeSphere(unsigned int count)
{
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    PointSet points(count, 1000u);
    for (unsigned int i = 0; i < count; ++i) {
        Point p(normal(random), normal(random), normal(random));
        p.Normalise();
        points.Add(p * (10 + normal(random) / 10));
    }
    return points;
}

/// A wavy outline around the origin, counter-clockwise.
Outline MakeOutline(unsigned int count)
{
    Outline outline(count, 1000u);
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count, radius = 1000 + 10 * std::cos(7 * angle);
        outline.Add(TVector2<double>(radius * std::cos(angle), radius * std::sin(angle)));
    }
    return outline;
}

/// A hexagon wound many times, each time a little wider.
Outline MakeWoundHexagon(unsigned int windings)
{
    Outline outline(6 * windings, 1000u);
    for (unsigned int i = 0; i < 6 * windings; ++i) {
        const double angle = 6.283185307179586 * (i % 6) / 6, radius = 100 + 1e-3 * i;
        outline.Add(TVector2<double>(radius * std::cos(angle), radius * std::sin(angle)));
    }
    return outline;
}

void MeasureLists()
{
    const auto append = [](unsigned int capacity, bool doubles) {
        TList<Point> list(capacity, 1000u);
        list.SetUseExponentialGrowth(doubles);
        for (unsigned int i = 0; i < many; ++i) list.Add(Point(i, 1, 2));
    };
    Measure("append, in steps of 1000", many, [&] { append(0, false); });
    Measure("append, doubling", many, [&] { append(0, true); });
    Measure("append, room made before", many, [&] { append(many, false); });
    const PointSet points = MakeSphere(many);
    Measure("copy of a point set", many, [&] { const PointSet copy(points); });
}

void MeasurePointSets()
{
    PointSet points = MakeSphere(many), moved = points;
    const TMatrix4x4<double> motion(0.6, 0.8, 0, 0, -0.8, 0.6, 0, 0, 0, 0, 1, 0, 0.5, -0.25, 0, 1);
    Measure("points times a 4 by 4 matrix", many, [&] { moved *= motion; });
    Measure("registration", many, [&] {
        TMatrixMxN<double> rotation;
        Point translation;
        static_cast<void>(moved.Register(&points, &rotation, &translation, false));
    });
    Measure("smoothing, 10 passes", many, [&] { moved.Smooth(10, true); });
    Measure("Minkowski sum of 100 by 1000", many, [&] {
        PointSet sum;
        sum.MinkowskiSum(points.GetStream(), 100, points.GetStream() + 100, 1000);
    });
    Measure("singular values, n by 3", many, [&] {
        TMatrixMxN<double> matrix, u, w, v;
        points.ToMatrix(&matrix);
        static_cast<void>(matrix.SVD(&u, &w, &v, 30));
    });
    Measure("plane fit", many, [&] { static_cast<void>(TPlane<double>().Fit(points, nullptr, nullptr)); });
    Measure("line fit", many, [&] { static_cast<void>(TLine3<double>().Fit(points, nullptr, nullptr)); });
    Measure("sphere fit", many, [&] { static_cast<void>(TSphere<double>().Fit(points, nullptr, 20)); });
    // In random order, with which its time is linear.
    TList<TVector2<double>> shadows(many);
    for (unsigned int i = 0; i < many; ++i) shadows.Add(points[i]);
    Measure("minimum bounding circle", many, [&] { TCircle2<double>().MinimumBoundingCircle(shadows); });
    Measure("circle fit", many, [&] { static_cast<void>(TCircle3<double>().Fit(points, nullptr, nullptr, 1e-6, 20)); });
}

void MeasureOutlines()
{
    const Outline outline = MakeOutline(many), small = MakeOutline(few), wound = MakeWoundHexagon(1000);
    const auto measure = [](const char* name, const Outline& source, const std::function<void(Outline&)>& operation) {
        Outline copy(source);
        Measure(name, source.GetCount(), [&] { operation(copy); });
    };
    measure("convex hull", outline, [](Outline& o) { o.MakeConvexHull(); });
    measure("thinning by deviation", outline, [](Outline& o) { o.SimplifyDPM(0.01); });
    measure("thinning by spacing", outline, [](Outline& o) { o.Simplify(1); });
    measure("removal of duplicates", outline, [](Outline& o) { o.RemoveDuplicateVertices(); });
    measure("area and winding", outline, [](Outline& o) { o.GetSimpleArea(), o.GetWindingAngle(); });
    measure("containment of a point", outline, [](Outline& o) { o.IsWithin(0.0, 0.0); });
    measure("offset", outline, [](Outline& o) { static_cast<void>(o.Offset(5, 0)); });
    measure("offset of a wound hexagon", wound, [](Outline& o) { static_cast<void>(o.Offset(-0.25, 0)); });
    measure("trimming of crossings", outline, [](Outline& o) { o.TrimCrossings(); });
    measure("reordering", small, [](Outline& o) { o.ReorderCEC(); });
    measure("making simple", small, [](Outline& o) { o.MakeSimplePolygon(); });
}

void MeasureRegions()
{
    using Region = TRegion<double>;
    const Outline outline = MakeOutline(many);
    const Region region(outline);
    Measure("region, made of an outline", many, [&] { const Region made(outline); });
    Measure("region, offset", many, [&] { static_cast<void>(region.Offset(5)); });
    Outline turned(outline);
    for (unsigned int i = 0; i < many; ++i) turned[i] = TVector2<double>(-outline[i].y, outline[i].x);
    const Region other(turned);
    Measure("region, united with one as large", 2 * many, [&] { static_cast<void>(region.Unite(other)); });
}

void MeasureSplines()
{
    PointSet controls = MakeSphere(many), data = MakeSphere(few);
    Measure("spline, made of its controls", many, [&] { TBSpline<double, TVector3>(controls, 4, Clamped); });
    TBSpline<double, TVector3> spline(controls, 4, Clamped);
    Measure("spline, one point of it", many, [&] { spline.Evaluate(0.3); });
    Measure("spline fit by 50 controls", few, [&] {
        TBSpline<double, TVector3> fitted(4, Clamped, 50, 1000);
        fitted.Fit(data, 50, false);
    });
}

} // namespace

int main()
{
    std::printf("%-34s %7s %12s %15s %15s %15s\n", "operation", "points", "allocations", "bytes in all",
                "bytes at once", "of them a point");
    MeasureLists();
    MeasurePointSets();
    MeasureOutlines();
    MeasureRegions();
    MeasureSplines();
    return 0;
}

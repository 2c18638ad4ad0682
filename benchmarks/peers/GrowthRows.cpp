// How the cost of our operations grows with what they are given: rows growth/OPERATION:SIZE for growth.py.

#include "OurGeometry.h"
#include "Rows.h"

#include <array>
#include <initializer_list>
#include <random>
#include <string>

namespace
{

using namespace Peers;

/// Rows of one operation over sizes; `units` tells what the time of a run is divided by.
void AddSizes(const std::string& operation, std::initializer_list<std::size_t> sizes, Work (*make)(std::size_t),
              double (*units)(std::size_t))
{
    for (const std::size_t count : sizes)
        Row("growth/" + operation + ":" + std::to_string(count), 0, units(count)).Add("ours", [=] {
            return make(count);
        });
}

double Each(std::size_t count)
{
    return static_cast<double>(count);
}

/// A spline is asked for many points, each of which looks at all of it; containment, once prepared, is timed by point.
constexpr std::size_t queryCount = 200;
constexpr std::size_t preparedQueryCount = 10000;

double EachQuery(std::size_t count)
{
    return static_cast<double>(count * queryCount);
}

double EachPreparedQuery(std::size_t)
{
    return static_cast<double>(preparedQueryCount);
}

/// An operation on an outline in place.
Work InPlace(const Coordinates& outline, void (*operation)(Outline<double>&))
{
    return OnCopy(MakeOutline<double>(outline), operation, Flatten);
}

/// A ring of which each vertex comes again once it is complete.
Coordinates MakeDoubleRing(std::size_t count)
{
    Coordinates outline = MakeRing(count / 2, 0.3);
    const Coordinates again = outline;
    outline.insert(outline.end(), again.begin(), again.end());
    return outline;
}

/// A zigzag of falling amplitude: its farthest vertex is always the next.
Coordinates MakeFallingZigzag(std::size_t count)
{
    Coordinates chain;
    for (std::size_t i = 0; i < count; ++i) {
        const double amplitude = size * static_cast<double>(count - i) / static_cast<double>(count);
        chain.insert(chain.end(), {static_cast<double>(i) / 100, i % 2 == 0 ? amplitude : -amplitude});
    }
    return chain;
}

Work OurDecomposition(std::size_t order)
{
    const unsigned int n = static_cast<unsigned int>(order);
    const Values numbers = MakeNumbers(order * order, -1, 1);
    const auto matrix = std::make_shared<TMatrixMxN<double>>(n, n);
    for (unsigned int i = 0; i < n * n; ++i) (*matrix)[i / n][i % n] = numbers[i];
    const auto parts = std::make_shared<std::array<TMatrixMxN<double>, 3>>();
    return {[=] {
                auto& [u, w, v] = *parts;
                static_cast<void>(matrix->SVD(&u, &w, &v, 30));
            },
            [=] { return Values{(*parts)[1][0][0]}; }};
}

const Registration growthRows([] {
    const std::initializer_list<std::size_t> outlineSizes = {1000, 10000, 100000, 1000000};
    AddSizes(
        "hull, a point", outlineSizes, [](std::size_t count) { return OurHull(MakeCloud(count, false)); }, Each);
    AddSizes(
        "trimming, a vertex", outlineSizes,
        [](std::size_t count) {
            return InPlace(MakeRing(count, 0.7), [](Outline<double>& outline) { outline.TrimCrossings(); });
        },
        Each);
    AddSizes(
        "offset, a vertex", outlineSizes, [](std::size_t count) { return OurOffset(MakeRing(count, 0.3), 0.4); }, Each);
    AddSizes(
        "duplicates, a vertex", outlineSizes,
        [](std::size_t count) {
            return InPlace(MakeDoubleRing(count), [](Outline<double>& outline) { outline.RemoveDuplicateVertices(); });
        },
        Each);
    AddSizes(
        "simple polygon, a vertex", outlineSizes,
        [](std::size_t count) {
            return InPlace(MakeRing(count, 0.7), [](Outline<double>& outline) { outline.MakeSimplePolygon(); });
        },
        Each);
    AddSizes(
        "reordering a ring, a vertex", outlineSizes,
        [](std::size_t count) {
            return InPlace(Shuffle(MakeRing(count, 2)), [](Outline<double>& cloud) { cloud.ReorderCEC(); });
        },
        Each);
    AddSizes(
        "reordering a disc, a vertex", {1000, 10000, 100000},
        [](std::size_t count) {
            return InPlace(MakeCloud(count, false), [](Outline<double>& cloud) { cloud.ReorderCEC(); });
        },
        Each);
    AddSizes(
        "containment, prepared, a point", outlineSizes,
        [](std::size_t count) {
            return OurPreparedContainment(MakeGear(count, 0), MakeQueries(preparedQueryCount, 0));
        },
        EachPreparedQuery);
    AddSizes(
        "containment in spikes, prepared, a point", outlineSizes,
        [](std::size_t count) {
            return OurPreparedContainment(MakeGear(count, 0.4), MakeQueries(preparedQueryCount, 0.4));
        },
        EachPreparedQuery);
    AddSizes(
        "thinning, a vertex", outlineSizes,
        [](std::size_t count) { return OurThinning(MakeGear(count, 0.05 / size), 0.125); }, Each);
    AddSizes(
        "thinning a zigzag, a vertex", outlineSizes,
        [](std::size_t count) { return OurThinning(MakeFallingZigzag(count), 0.001); }, Each);
    AddSizes("decomposition, an element", {4, 8, 16, 32, 64, 128, 256}, OurDecomposition,
             [](std::size_t order) { return static_cast<double>(order * order); });
    AddSizes(
        "spline, a control point", {10, 100, 1000, 10000},
        [](std::size_t count) { return OurSplinePoints(MakeSpiral(count), MakeNumbers(queryCount, 0, 1)); }, EachQuery);
});

} // namespace

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

/// Containment and splines are asked for many results, each of which looks at all of the outline or curve.
constexpr std::size_t queryCount = 200;

double EachQuery(std::size_t count)
{
    return static_cast<double>(count * queryCount);
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
    AddSizes(
        "hull, a point", {100, 1000, 10000, 100000, 1000000},
        [](std::size_t count) { return OurHull(MakeCloud(count, false)); }, Each);
    AddSizes(
        "offset, a vertex", {30, 100, 300, 1000, 3000, 10000},
        [](std::size_t count) { return OurOffset(MakeGear(count, 0), 5); }, Each);
    AddSizes(
        "containment, a side", {10, 100, 1000, 10000},
        [](std::size_t count) { return OurContainment(MakeGear(count, 0.4), MakeQueries(queryCount, 0.4)); },
        EachQuery);
    AddSizes(
        "thinning, a vertex", {100, 1000, 10000, 100000, 1000000},
        [](std::size_t count) { return OurThinning(MakeGear(count, 0.05 / size), 0.125); }, Each);
    AddSizes("decomposition, an element", {4, 8, 16, 32, 64, 128, 256}, OurDecomposition,
             [](std::size_t order) { return static_cast<double>(order * order); });
    AddSizes(
        "spline, a control point", {10, 100, 1000, 10000},
        [](std::size_t count) { return OurSplinePoints(MakeSpiral(count), MakeNumbers(queryCount, 0, 1)); }, EachQuery);
});

} // namespace

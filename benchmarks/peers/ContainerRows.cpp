// Containers, Minkowski sums and splines against other libraries.

#include "OurGeometry.h"
#include "PeersGeometry.h"
#include "Rows.h"

#include <memory>
#include <string>

namespace
{

using namespace Peers;

/// Appends elements made of their indices one by one to an empty list that doubles. It begins with one element, as a
/// std::vector does, so that both ask for blocks of the same sizes: most of the time goes into the page faults of new
/// blocks, and where the C library puts a block depends on its size and on those freed before. All blocks are made and
/// freed within the run.
template <class Element, class Make, class First>
Work OurAppend(std::size_t count, Make make, First first)
{
    const auto summary = std::make_shared<Values>();
    return {[=] {
                TList<Element> list(0, 1);
                list.SetUseExponentialGrowth(true);
                for (std::size_t i = 0; i < count; ++i) list.Add(make(static_cast<double>(i)));
                *summary = {static_cast<double>(list.GetCount()), first(list.GetLast())};
            },
            [=] { return *summary; }};
}

void AddAppend()
{
    constexpr std::size_t count = 10000000;
    using Vector = TVector3<double>;
    Row("append/vectors", 0, count)
        .Add("ours",
             [] {
                 return OurAppend<Vector>(
                     count, [](double x) { return Vector(x, 1, 2); }, [](const Vector& vector) { return vector.x; });
             })
        .Add("std::vector", [] { return StandardVectorAppend3(count); });
    Row("append/numbers", 0, count)
        .Add("ours",
             [] {
                 return OurAppend<double>(
                     count, [](double x) { return x; }, [](double number) { return number; });
             })
        .Add("std::vector", [] { return StandardVectorAppend(count); });
}

Work OurSort(const Values& numbers)
{
    const auto list = std::make_shared<TList<double>>(numbers.data(), static_cast<unsigned int>(numbers.size()), 1u);
    return {[=] { list->Sort(); }, [=] { return Values(list->GetStream(), list->GetStream() + list->GetCount()); },
            [=] {
                list->Clear();
                list->AddRange(numbers.data(), static_cast<unsigned int>(numbers.size()));
            }};
}

void AddSort()
{
    constexpr std::size_t count = 1000000;
    const auto numbers = [] { return MakeNumbers(count, 0, 1); };
    Row("sort/" + std::to_string(count), 0, count).Add("ours", [=] { return OurSort(numbers()); }).Add("qsort", [=] {
        return StandardSort(numbers());
    });
}

using PlanePoints = TPointSet<double, TVector2>;

std::shared_ptr<const PlanePoints> MakePlanePoints(const Coordinates& coordinates)
{
    const auto points = std::make_shared<PlanePoints>();
    for (std::size_t i = 0; i < coordinates.size(); i += 2)
        points->Add(TVector2<double>(coordinates[i], coordinates[i + 1]));
    return points;
}

Work OurMinkowskiSum(const Coordinates& first, const Coordinates& second)
{
    const std::shared_ptr<const PlanePoints> a = MakePlanePoints(first);
    const std::shared_ptr<const PlanePoints> b = MakePlanePoints(second);
    const auto sums = std::make_shared<PlanePoints>();
    return {[=] { sums->MinkowskiSum(*a, *b); },
            [=] {
                const TBox<double>& box = sums->GetBoundingBox();
                const TVector2<double>& last = sums->GetLast();
                return Values{box.minimum.x, box.minimum.y, box.maximum.x, box.maximum.y, last.x, last.y};
            }};
}

void AddMinkowskiSum()
{
    constexpr std::size_t count = 1000;
    const auto first = [] { return MakeNumbers(2 * count, 0, 1); };
    const auto second = [] { return MakeNumbers(2 * count, -2, 3); };
    Row("minkowski/1000x1000", 0, count * count)
        .Add("ours", [=] { return OurMinkowskiSum(first(), second()); })
        .Add("loop", [=] { return PlainMinkowskiSum(first(), second()); });
}

void AddSpline(std::size_t controlCount)
{
    const auto controls = [=] { return MakeSpiral(controlCount); };
    constexpr std::size_t parameterCount = 1000;
    const auto parameters = [] { return MakeNumbers(parameterCount, 0, 1); };
    // Ours leaves out terms of basis functions up to 1e-6, a few in each sum.
    Row row("spline/" + std::to_string(controlCount), 1e-5, parameterCount);
    row.Add("ours", [=] { return OurSplinePoints(controls(), parameters()); });
    if constexpr (hasGsl) row.Add("GSL", [=] { return GslSplinePoints(controls(), parameters()); });
}

const Registration containerRows([] {
    AddAppend();
    AddSort();
    AddMinkowskiSum();
    AddSpline(100);
    AddSpline(1000);
});

} // namespace

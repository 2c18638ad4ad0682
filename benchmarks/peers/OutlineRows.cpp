// Outlines against other libraries: hulls, containment, thinning, offsets and the circle around points.

#include "OurGeometry.h"
#include "PeersGeometry.h"
#include "Rows.h"

#include <algorithm>
#include <string>
#include <utility>

namespace
{

using namespace Peers;

/// The same work with the points of its result in the order of their coordinates.
Work InOrder(const Work& work)
{
    return {work.run, [result = work.result] {
                const Values points = result();
                std::vector<std::pair<double, double>> ordered;
                for (std::size_t i = 0; i < points.size(); i += 2) ordered.emplace_back(points[i], points[i + 1]);
                std::sort(ordered.begin(), ordered.end());
                Values values;
                for (const auto& [x, y] : ordered) values.insert(values.end(), {x, y});
                return values;
            }};
}

/// The same work, its result the number of vertices and the area of a counter-clockwise outline.
Work Summary(const Work& work)
{
    return {work.run, [result = work.result] {
                const OutlinePointer<double> outline = MakeOutline<double>(result());
                return Values{static_cast<double>(outline->GetCount()), outline->GetSignedSimpleArea()};
            }};
}

/// The same work, its result the area alone: ours keeps one piece.
Work AreaOnly(const Work& work)
{
    return {work.run, [result = work.result] { return Values{result()[0]}; }};
}

/// The hull of a cloud, with what is compared of its result.
void AddHull(const std::string& name, bool isOnCircle, double bound, Work (*compared)(const Work&))
{
    constexpr std::size_t count = 1000000;
    const auto points = [=] { return MakeCloud(count, isOnCircle); };
    const Row row("hull/" + name, bound, count);
    row.Add("ours", [=] { return compared(OurHull(points())); });
    if constexpr (hasBoost) row.Add("Boost", [=] { return compared(BoostHull(points())); });
    if constexpr (hasCgal) row.Add("CGAL", [=] { return compared(CgalHull(points())); });
}

void AddContainment()
{
    constexpr std::size_t vertexCount = 1000;
    constexpr std::size_t queryCount = 1000;
    constexpr double noise = 0.4;
    const auto outline = [] { return MakeGear(vertexCount, noise); };
    const auto queries = [] { return MakeQueries(queryCount, noise); };
    const Row row("containment/" + std::to_string(vertexCount), 0, queryCount);
    row.Add("ours", [=] { return OurContainment(outline(), queries()); });
    if constexpr (hasBoost) row.Add("Boost", [=] { return BoostContainment(outline(), queries()); });
    if constexpr (hasCgal) row.Add("CGAL", [=] { return CgalContainment(outline(), queries()); });
}

void AddThinning()
{
    constexpr std::size_t count = 100000;
    constexpr double tolerance = 0.125;
    // The noise is below the tolerance, and keeps distances from being equal.
    const auto chain = [] { return MakeGear(count, 0.05 / size); };
    const Row row("thinning/" + std::to_string(count), 0, count);
    row.Add("ours", [=] { return OurThinning(chain(), tolerance); });
    if constexpr (hasBoost) row.Add("Boost", [=] { return BoostThinning(chain(), tolerance); });
}

/// Containment of many points in one outline, smooth or spiky, which is prepared beforehand where that can be done.
void AddPreparedContainment(std::size_t vertexCount, double noise)
{
    constexpr std::size_t queryCount = 10000;
    const auto outline = [=] { return MakeGear(vertexCount, noise); };
    const auto queries = [=] { return MakeQueries(queryCount, noise); };
    const std::string kind = noise == 0 ? "smooth" : "spiky";
    const Row row("prepared-containment/" + kind + std::to_string(vertexCount), 0, queryCount);
    row.Add("ours", [=] { return OurPreparedContainment(outline(), queries()); });
    if constexpr (hasGeos) row.Add("GEOS", [=] { return GeosContainment(outline(), queries()); });
}

/// From how many vertices on contenders are left out, as a run would take more than ten seconds: Boost and GEOS;
/// Clipper.
struct OffsetLimits
{
    std::size_t indexed = ~std::size_t(0), clipper = ~std::size_t(0);
};

/// The offset of an outline, timed by vertex. Corners that open are rounded, in one way or another.
void AddOffset(const std::string& name, double bound, double distance, std::size_t count,
               Coordinates (*make)(std::size_t), OffsetLimits limits = {})
{
    const auto outline = [=] { return make(count); };
    const Row row(name + "/" + std::to_string(count), bound, static_cast<double>(count));
    row.Add("ours", [=] { return OurOffset(outline(), distance); });
    if constexpr (hasBoost)
        if (count < limits.indexed) row.Add("Boost", [=] { return AreaOnly(BoostOffset(outline(), distance)); });
    if constexpr (hasGeos)
        if (count < limits.indexed) row.Add("GEOS", [=] { return AreaOnly(GeosOffset(outline(), distance)); });
    if constexpr (hasClipper)
        if (count < limits.clipper) row.Add("Clipper", [=] { return AreaOnly(ClipperOffset(outline(), distance)); });
}

/// Smooth outlines; rings with sides about as long as the distance; and dense ones, whose noise is above the length of
/// their sides.
void AddOffsets()
{
    const auto gear = [](std::size_t count) { return MakeGear(count, 0); };
    for (const std::size_t count : {100, 1000}) AddOffset("offset", 1e-4, 5, count, gear);
    for (const std::size_t count : {1000, 4000, 16000, 64000, 256000}) {
        AddOffset("offset-smooth", 1e-3, 50, count, gear, {~std::size_t(0), 256000});
        AddOffset("offset-jagged", 1e-3, 0.4, count, [](std::size_t n) { return MakeRing(n, 0.3); });
        // Ours keeps one piece where such an outline falls apart, so that areas are not compared.
        AddOffset("offset-dense", 1e9, 2, count, [](std::size_t n) { return MakeGear(n, 0.001); },
                  {256000, ~std::size_t(0)});
    }
}

/// A zigzag of an odd count along the diagonal of a square: no two sides cross, and the box of each meets that of every
/// other. The corners at its near end bulge, so that the closing side keeps clear of them.
Coordinates MakeZigzag(std::size_t count)
{
    constexpr double width = size / 100;
    Coordinates outline;
    for (std::size_t i = 0; i < count; ++i) {
        const double share = 2 * static_cast<double>(i) / static_cast<double>(count - 1) - 1;
        const double along = i % 2 == 0 ? 1 - share * share : size;
        outline.push_back(along + width * share);
        outline.push_back(along - width * share);
    }
    return outline;
}

/// The search of the offset for crossings where there are none and no side is far from another, so that each is tested
/// with all that follow: time by pair of sides.
template <class T>
void AddCrossings(const std::string& name)
{
    constexpr unsigned int count = 1001;
    Row("crossings/" + name, 0, count * (count - 3) / 2.0).Add("ours", [] {
        return OnCopy(
            MakeOutline<T>(MakeZigzag(count)), [](Outline<T>& outline) { outline.TrimCrossings(); },
            [](const Outline<T>& outline) { return Values{static_cast<double>(outline.GetCount())}; });
    });
}

void AddBoundingCircle()
{
    constexpr std::size_t count = 100000;
    const auto points = [] { return MakeCloud(count, false); };
    // Ours lets points in that lie up to 1e-4 beyond the rim.
    const Row row("circle/" + std::to_string(count), 2e-4 / size, count);
    row.Add("ours", [=] { return OurBoundingCircle(points()); });
    if constexpr (hasCgal) {
        row.Add("CGAL", [=] { return CgalBoundingCircle(points()); });
        row.Add("CGAL-spheres", [=] { return CgalBoundingSphere(points()); });
    }
}

const Registration outlineRows([] {
    AddHull("disc", false, 0, InOrder);
    // So near to each other that Boost takes hundreds of the vertices for collinear.
    AddHull("circle", true, 2e-4, Summary);
    AddContainment();
    AddThinning();
    for (const std::size_t count : {1000, 100000})
        for (const double noise : {0.0, 0.4}) AddPreparedContainment(count, noise);
    AddOffsets();
    AddCrossings<double>("double");
    AddCrossings<float>("float");
    AddBoundingCircle();
});

} // namespace

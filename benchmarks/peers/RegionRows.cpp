// Regions against other libraries: many outlines united, two of them united and intersected.

#include "OurGeometry.h"
#include "Rows.h"

#include <CorvexMaths/regions/TRegion.h>

#include <string>

namespace
{

using namespace Peers;

using Region = TRegion<double>;

/// Work that results in a region: its area, and of how many pieces it is.
template <class Make>
Work MakeWork(Make make)
{
    const auto region = std::make_shared<Region>();
    return {[=] { *region = make(); },
            [=] {
                return Values{region->GetArea(), static_cast<double>(region->GetPieces().size())};
            }};
}

Work OurUnion(const Outlines& outlines)
{
    const auto polygons = std::make_shared<std::vector<Outline<double>>>();
    for (const Coordinates& outline : outlines) polygons->push_back(*MakeOutline<double>(outline));
    return MakeWork([=] { return Region(*polygons); });
}

/// From the outlines, not from regions made of them beforehand: nobody else makes his input ready.
Work OurCombination(const Coordinates& first, const Coordinates& second, bool isIntersection)
{
    const OutlinePointer<double> a = MakeOutline<double>(first);
    const OutlinePointer<double> b = MakeOutline<double>(second);
    return MakeWork([=] { return isIntersection ? Region(*a).Intersect(Region(*b)) : Region(*a).Unite(Region(*b)); });
}

/// A comparison of regions. What comes out is told in parts of an area and of a number of pieces that are about right,
/// so that neither hides what is wrong with the other.
class RegionRow
{
public:
    RegionRow(const std::string& name, double bound, double items, double area, double count)
        : row(name, bound, items), aboutArea(area), aboutCount(count)
    {}

    template <class Make>
    const RegionRow& Add(const std::string& who, Make make) const
    {
        row.Add(who, [make, area = aboutArea, count = aboutCount] {
            const Work work = make();
            return Work{work.run, [=] {
                            const Values values = work.result();
                            return Values{values[0] / area, values[1] / count};
                        }};
        });
        return *this;
    }

private:
    Row row;
    double aboutArea, aboutCount;
};

/// Triangles about 20 across all over a square, so many that about two thirds of it are covered.
Outlines MakeTriangles(std::size_t count)
{
    std::mt19937_64 random(10);
    std::uniform_real_distribution<double> anywhere(0, size), near(-14, 14);
    Outlines triangles;
    while (triangles.size() < count) {
        const double x = anywhere(random), y = anywhere(random);
        Coordinates points(6);
        for (std::size_t i = 0; i < 6; ++i) points[i] = (i % 2 == 0 ? x : y) + near(random);
        const double turn =
            (points[2] - points[0]) * (points[5] - points[1]) - (points[3] - points[1]) * (points[4] - points[0]);
        if (turn > 0) triangles.push_back(points);
    }
    return triangles;
}

/// A coast around the origin: from one vertex to the next but 2^k the radius strays by less the nearer these are.
Coordinates MakeCoast(std::size_t count, unsigned int seed)
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> uniform(-1, 1);
    std::vector<double> radii(count, 1);
    std::size_t step = 1;
    while (2 * step < count) step *= 2;
    for (double stray = 0.2; step > 0; step /= 2, stray *= 0.6) {
        // Each vertex at an odd multiple of the step strays from the middle between those on both sides of it.
        for (std::size_t i = step; i < count; i += 2 * step)
            radii[i] = (radii[i - step] + radii[i + step < count ? i + step : 0]) / 2 + stray * uniform(random);
    }
    Coordinates outline;
    for (std::size_t i = 0; i < count; ++i)
        AddPoint(outline, size * radii[i], fullTurn * static_cast<double>(i) / static_cast<double>(count));
    return outline;
}

/// Spikes inward and outward by turns, closer to one another than they are long by far.
Coordinates MakeStar(std::size_t count)
{
    Coordinates outline;
    for (std::size_t i = 0; i < count; ++i)
        AddPoint(outline, size * (i % 2 == 0 ? 1 : 0.999),
                 fullTurn * static_cast<double>(i) / static_cast<double>(count));
    return outline;
}

void AddUnion()
{
    constexpr std::size_t count = 10000;
    const auto triangles = [] { return MakeTriangles(count); };
    const RegionRow row("region-union/" + std::to_string(count), 1e-6, count, 6e5, 100);
    row.Add("ours", [=] { return OurUnion(triangles()); });
    if constexpr (hasBoost) row.Add("Boost", [=] { return BoostUnion(triangles()); });
    if constexpr (hasCgal) row.Add("CGAL", [=] { return CgalUnion(triangles()); });
    if constexpr (hasGeos) row.Add("GEOS", [=] { return GeosUnion(triangles()); });
    if constexpr (hasClipper) row.Add("Clipper", [=] { return ClipperUnion(triangles()); });
}

/// Two coasts that cross thousands of times.
void AddCombination(const std::string& name, bool isIntersection, double count)
{
    constexpr std::size_t vertexCount = 100000;
    const auto first = [] { return MakeCoast(vertexCount, 11); };
    const auto second = [] { return MakeCoast(vertexCount, 12); };
    const RegionRow row(name + "/" + std::to_string(vertexCount), 1e-6, 2 * vertexCount, 3e6, count);
    row.Add("ours", [=] { return OurCombination(first(), second(), isIntersection); });
    if constexpr (hasBoost) row.Add("Boost", [=] { return BoostCombination(first(), second(), isIntersection); });
    if constexpr (hasCgal) row.Add("CGAL", [=] { return CgalCombination(first(), second(), isIntersection); });
    if constexpr (hasGeos) row.Add("GEOS", [=] { return GeosCombination(first(), second(), isIntersection); });
    if constexpr (hasClipper) row.Add("Clipper", [=] { return ClipperCombination(first(), second(), isIntersection); });
}

/// Who is left out of an offset, as a run would take more than ten seconds.
enum class Slow
{
    Nobody,
    Clipper,
    Indexed ///< Boost and GEOS.
};

/// An offset with round joins as exact as those of GEOS, eight sides for a quarter of a circle.
void AddOffset(const std::string& name, std::size_t vertexCount, double distance, Coordinates (*make)(std::size_t),
               double area, Slow slow)
{
    const auto outline = [=] { return make(vertexCount); };
    const RegionRow row("region-offset-" + name + "/" + std::to_string(vertexCount), 2e-3,
                        static_cast<double>(vertexCount), area, 1);
    row.Add("ours", [=] {
        const OutlinePointer<double> polygon = MakeOutline<double>(outline());
        return MakeWork([=] { return Region(*polygon).Offset(distance, Join::Round, 0.0048 * std::abs(distance)); });
    });
    if constexpr (hasBoost)
        if (slow != Slow::Indexed) row.Add("Boost", [=] { return BoostOffset(outline(), distance); });
    if constexpr (hasGeos)
        if (slow != Slow::Indexed) row.Add("GEOS", [=] { return GeosOffset(outline(), distance); });
    if constexpr (hasClipper)
        if (slow != Slow::Clipper) row.Add("Clipper", [=] { return ClipperOffset(outline(), distance); });
}

const Registration regionRows([] {
    AddUnion();
    AddCombination("region-coasts-united", false, 1);
    AddCombination("region-coasts-intersected", true, 1);
    const auto gear = [](std::size_t count) { return MakeGear(count, 0); };
    for (const std::size_t count : {1000, 10000, 100000, 1000000})
        AddOffset("smooth", count, 50, gear, 3.4e6, count < 1000000 ? Slow::Nobody : Slow::Clipper);
    // The noise is above the length of the sides, and the distance that of fifty of them.
    AddOffset(
        "dense", 64000, 5, [](std::size_t count) { return MakeGear(count, 0.001); }, 3.1e6, Slow::Indexed);
    AddOffset("star", 256000, 0.05, MakeStar, 3.1e6, Slow::Indexed);
});

} // namespace

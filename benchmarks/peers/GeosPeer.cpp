// What GEOS does for comparison, through its C interface with a context of its own.

#include "PeersGeometry.h"

#include <geos_c.h>

#include <memory>
#include <vector>

namespace Peers
{

namespace
{

/// Polygons and the result of the work on them, with the context that all calls take.
class Geometry
{
public:
    explicit Geometry(const Coordinates& outline) : polygon(MakePolygon(outline)) {}

    /// A collection.
    explicit Geometry(const Outlines& outlines)
    {
        std::vector<GEOSGeometry*> members;
        for (const Coordinates& outline : outlines) members.push_back(MakePolygon(outline));
        polygon = GEOSGeom_createCollection_r(context, GEOS_MULTIPOLYGON, members.data(),
                                              static_cast<unsigned int>(members.size()));
    }

    Geometry(const Coordinates& outline, const Coordinates& secondOutline)
        : polygon(MakePolygon(outline)), second(MakePolygon(secondOutline))
    {}

    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;

    ~Geometry()
    {
        for (GEOSGeometry* const point : points) GEOSGeom_destroy_r(context, point);
        GEOSPreparedGeom_destroy_r(context, prepared);
        GEOSGeom_destroy_r(context, result);
        GEOSGeom_destroy_r(context, second);
        GEOSGeom_destroy_r(context, polygon);
        GEOS_finish_r(context);
    }

    void Offset(double distance)
    {
        // As many segments for a quarter of a circle as its own programs take when not told.
        constexpr int quarterSegments = 8;
        GEOSGeom_destroy_r(context, result);
        result = GEOSBuffer_r(context, polygon, distance, quarterSegments);
    }

    void Unite()
    {
        GEOSGeom_destroy_r(context, result);
        result = GEOSUnaryUnion_r(context, polygon);
    }

    void Combine(bool isIntersection)
    {
        GEOSGeom_destroy_r(context, result);
        result = isIntersection ? GEOSIntersection_r(context, polygon, second) : GEOSUnion_r(context, polygon, second);
    }

    /// Makes the polygon ready to be asked about points.
    void Prepare(const Coordinates& queries)
    {
        prepared = GEOSPrepare_r(context, polygon);
        for (std::size_t i = 0; i < queries.size(); i += 2)
            points.push_back(GEOSGeom_createPointFromXY_r(context, queries[i], queries[i + 1]));
    }

    bool Contains(std::size_t query) const { return GEOSPreparedIntersects_r(context, prepared, points[query]) == 1; }

    /// The area of the result, and of how many pieces it is.
    Values Summarise() const
    {
        double area = 0;
        GEOSArea_r(context, result, &area);
        return {area, static_cast<double>(GEOSGetNumGeometries_r(context, result))};
    }

private:
    GEOSGeometry* MakePolygon(const Coordinates& outline) const
    {
        const unsigned int count = static_cast<unsigned int>(outline.size() / 2);
        GEOSCoordSequence* const ring = GEOSCoordSeq_create_r(context, count + 1, 2);
        for (unsigned int i = 0; i <= count; ++i) {
            const std::size_t from = 2 * (i % count);
            GEOSCoordSeq_setXY_r(context, ring, i, outline[from], outline[from + 1]);
        }
        return GEOSGeom_createPolygon_r(context, GEOSGeom_createLinearRing_r(context, ring), nullptr, 0);
    }

    GEOSContextHandle_t context = GEOS_init_r();
    GEOSGeometry* polygon = nullptr;
    GEOSGeometry* second = nullptr;
    GEOSGeometry* result = nullptr;
    const GEOSPreparedGeometry* prepared = nullptr;
    std::vector<GEOSGeometry*> points;
};

} // namespace

Work GeosOffset(const Coordinates& outline, double distance)
{
    const auto geometry = std::make_shared<Geometry>(outline);
    return {[=] { geometry->Offset(distance); }, [=] { return geometry->Summarise(); }};
}

Work GeosUnion(const Outlines& outlines)
{
    const auto geometry = std::make_shared<Geometry>(outlines);
    return {[=] { geometry->Unite(); }, [=] { return geometry->Summarise(); }};
}

Work GeosCombination(const Coordinates& first, const Coordinates& second, bool isIntersection)
{
    const auto geometry = std::make_shared<Geometry>(first, second);
    return {[=] { geometry->Combine(isIntersection); }, [=] { return geometry->Summarise(); }};
}

Work GeosContainment(const Coordinates& outline, const Coordinates& queries)
{
    const auto geometry = std::make_shared<Geometry>(outline);
    geometry->Prepare(queries);
    const auto isWithin = std::make_shared<Values>(queries.size() / 2);
    return {[=] {
                for (std::size_t i = 0; i < isWithin->size(); ++i) (*isWithin)[i] = geometry->Contains(i) ? 1 : 0;
            },
            [=] { return *isWithin; }};
}

} // namespace Peers

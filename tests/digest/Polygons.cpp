// Polygons.

#include "tests/digest/Inputs.h"

#include <algorithm>

namespace CorvexDigest
{
namespace
{

/// Shows the protected members of a polygon.
template <class T, template <class> class V>
struct OpenPolygon : TPolygon<T, V>
{
    using Base = TPolygon<T, V>;
    using Base::Base, Base::AddOffsetPoints, Base::GetSignedSimpleArea, Base::GetSignedTriangleAreaWithOrigin;
    using Base::GetSimpleArea, Base::OffsetEdge, Base::SimplifySection, Base::keepBox;
};

template <class T, template <class> class V>
void AddQueries(Report& report, const std::string& name)
{
    using Polygon = OpenPolygon<T, V>;
    const std::vector<Polygon> polygons = MakeShapes<Polygon, T, V>(allShapes, {0, 1, 2, 3, 4, 9, 40});

    const auto singles = report.Over(polygons);
    singles.Add(name + "copies", [](Digest& d, Polygon& polygon) {
        const TPolygon<T, V>& base = polygon;
        TPolygon<T, V> assigned(2, 3);
        assigned = base;
        d << assigned << TPolygon<T, V>(base) << TPolygon<T, V>(base.GetStream(), base.GetCount());
        const TPointSet<T, V>& set = polygon;
        d << TPolygon<T, TVector2>(set) << TPolygon<T, TVector3>(set) << TPolygon<T, TVector4>(set);
    });
    singles.Add(name + "areas", [](Digest& d, Polygon& polygon) {
        d << polygon.TPolygon<T, V>::GetSignedSimpleArea() << polygon.TPolygon<T, V>::GetSimpleArea();
        const unsigned int count = polygon.GetCount();
        for (unsigned int i = 0; i < count; ++i) {
            const unsigned int other = (i * 3 + 1) % count;
            d << polygon.GetSignedSimpleArea(i, other) << polygon.GetSimpleArea(other, i);
            d << polygon.GetSignedTriangleAreaWithOrigin(i, other);
        }
        if (count > 0) d << polygon.GetBottomLeft();
        TList<TEdge2<T>> edges(0, 5);
        polygon.GetEdges(&edges);
        d << edges;
        polygon.MakeCCW();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    singles.AddTrigonometric(name + "GetWindingAngle",
                             [](Digest& d, Polygon& polygon) { d << polygon.GetWindingAngle(); });
    const std::vector<TVector3<T>> normals = {{0, 0, 1}, {0, 0, -1}, {1, 2, 3}, {0, 0, 0}};
    report.Over(polygons, normals)
        .Add(name + "GetOpenConvexBoundary",
             [](Digest& d, Polygon& polygon, TVector3<T>& normal) { d << polygon.GetOpenConvexBoundary(normal); });
}

template <class T, template <class> class V>
void AddOffsets(Report& report, const std::string& name)
{
    using Polygon = OpenPolygon<T, V>;
    const std::vector<Polygon> polygons =
        MakeShapes<Polygon, T, V>(allShapes, {0, 1, 2, 3, 4, 9, 40}) + MakeShapes<Polygon, T, V>({Shape::Star}, {150});
    const std::vector<T> distances = {T(0),  T(0.5),   T(-0.5),  T(2),   T(-2),    T(6),
                                      T(-9), T(0.001), T(-1e-5), T(100), T(-0.25), std::numeric_limits<T>::quiet_NaN()};
    const std::vector<T> spacings = {T(0), T(0.75)};
    const std::vector<bool> flags = {false, true};

    report.Over(polygons, distances, spacings, flags)
        .Add(name + "Offset", [](Digest& d, Polygon& polygon, T distance, T spacing, bool keepBox) {
            polygon.keepBox = keepBox;
            d << polygon.Offset(distance, spacing) << static_cast<const TPolygon<T, V>&>(polygon);
        });
    std::vector<TEdge2<T>> edges = {{0, 0, 4, 0}, {4, 0, 4, 3},  {4, 0, 8, 0},
                                    {4, 0, 0, 0}, {4, 0, 4, -3}, {1, 1, 1, 1}};
    Random random(41);
    while (edges.size() < 20) {
        const TVector2<T> start = random.Point<TVector2<T>>([](Random& r) { return r.Any<T>(); });
        const TVector2<T> end = random.Point<TVector2<T>>([](Random& r) { return r.Any<T>(); });
        edges.push_back(TEdge2<T>(start, end));
    }
    report.Over(edges, edges, distances, flags)
        .Add(name + "AddOffsetPoints", [](Digest& d, TEdge2<T>& a, TEdge2<T>& b, T distance, bool negative) {
            Polygon polygon(0, 4);
            polygon.AddOffsetPoints(a, b, distance, negative);
            d << polygon.OffsetEdge(a, distance) << static_cast<const TPolygon<T, V>&>(polygon);
        });
}

template <class T, template <class> class V>
void AddReductions(Report& report, const std::string& name)
{
    using Polygon = OpenPolygon<T, V>;
    const std::vector<Polygon> polygons = MakeShapes<Polygon, T, V>(allShapes, {0, 1, 2, 3, 4, 9, 40, 150});
    const std::vector<T> spacings = {T(0), T(-2), Numbers::commonTolerance<T>,       T(0.1),
                                     T(1), T(30), std::numeric_limits<T>::infinity()};

    report.Over(polygons, spacings).Add(name + "Simplify", [](Digest& d, Polygon& polygon, T spacing) {
        polygon.Simplify(spacing);
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    report.Over(polygons, spacings).Add(name + "SimplifyDPM", [](Digest& d, Polygon& polygon, T tolerance) {
        const unsigned int count = polygon.GetCount();
        bool keep[150];
        std::fill(keep, keep + 150, true);
        if (count > 0) polygon.SimplifySection(0, count - 1, keep, tolerance);
        d.TakeArray(keep, count);
        TPolygon<T, V> open(polygon);
        open.SimplifyDPM(tolerance);
        if (count > 0) polygon.Add(polygon[0]);
        polygon.SimplifyDPM(tolerance);
        d << open << static_cast<const TPolygon<T, V>&>(polygon);
    });
    const auto singles = report.Over(polygons);
    singles.Add(name + "RemoveDuplicateVertices", [](Digest& d, Polygon& polygon) {
        polygon.RemoveDuplicateVertices();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    singles.Add(name + "TrimCrossings", [](Digest& d, Polygon& polygon) {
        polygon.TrimCrossings();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    // The order of the hull comes from the arc cosine, and the sorted list holds its values.
    singles.AddTrigonometric(name + "MakeConvexHull", [](Digest& d, Polygon& polygon) {
        polygon.MakeConvexHull();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    // Exchanging vertices comes to an end for outlines in general position.
    const std::vector<Polygon> general = MakeShapes<Polygon, T, V>(
        {Shape::Round, Shape::Star, Shape::Clockwise, Shape::Wild, Shape::HasNotANumber}, {0, 1, 3, 4, 9, 22, 30, 60});
    report.Over(general).Add(name + "MakeSimplePolygon", [](Digest& d, Polygon& polygon) {
        polygon.MakeSimplePolygon();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
    report.Over(general).AddTrigonometric(name + "ReorderCEC", [](Digest& d, Polygon& polygon) {
        polygon.ReorderCEC();
        d << static_cast<const TPolygon<T, V>&>(polygon);
    });
}

template <class T, template <class> class V>
void AddPolygons(Report& report)
{
    const std::string name = NameOf<T, V>("TPolygon") + "::";
    AddQueries<T, V>(report, name);
    AddOffsets<T, V>(report, name);
    AddReductions<T, V>(report, name);
}

} // namespace

void DigestPolygons(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddPolygons<T, TVector2>(report);
        AddPolygons<T, TVector3>(report);
        AddPolygons<T, TVector4>(report);
    });
}

} // namespace CorvexDigest

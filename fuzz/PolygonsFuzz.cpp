// Polygons: operations on two live outlines, and the parts of them that derived classes build on.

#include "Points.h"

#include <algorithm>
#include <memory>

namespace CorvexFuzz
{
namespace
{

template <class T, template <class> class V>
struct PolygonState
{
    using Vector = V<T>;
    using Set = TPointSet<T, V>;
    using Polygon = TPolygon<T, V>;
    using Points = std::vector<Vector>;

    /// A polygon with its protected side opened.
    struct OpenPolygon : Polygon
    {
        using Polygon::AddOffsetPoints, Polygon::OffsetEdge, Polygon::SimplifySection, Polygon::sortedList;
        using Polygon::GetSignedSimpleArea, Polygon::GetSimpleArea, Polygon::GetSignedTriangleAreaWithOrigin;

        OpenPolygon() = default;
        OpenPolygon(const Polygon& other) : Polygon(other) {}
        void Assign(const Polygon& other) { Polygon::operator=(other); }
    };

    OpenPolygon first, second;

    OpenPolygon& Pick(Input& input) { return input.Flag() ? first : second; }
    static Points Vertices(const Polygon& polygon) { return Copy<T, V>(polygon); }

    /// Stops a reordering when its outline is made and its crossings are still in.
    struct Unfinished : Polygon
    {
        struct Stop
        {};
        using Polygon::Polygon;
        void ElementsAdded(Vector*, unsigned int) override { throw Stop(); }
    };

    static TEdge2<T> Side(const Points& closed, std::size_t i)
    {
        const auto plane = [](const Vector& vertex) { return TVector2<T>(vertex[0], vertex[1]); };
        return TEdge2<T>(plane(closed[i - 1]), plane(closed[i]));
    }

    /// Exchanges crossing vertices as MakeSimplePolygon does, which has no limit on its passes: whether this many
    /// suffice.
    static bool CanMakeSimple(Points& vertices)
    {
        const auto share = [](const TEdge2<T>& a, const TEdge2<T>& b) {
            return std::any_of(a.Vertex, a.Vertex + 2,
                               [&b](const auto& v) { return v == b.Vertex[0] || v == b.Vertex[1]; });
        };
        const auto exchange = [&share](Points& closed) {
            bool isChanged = false;
            for (std::size_t k = 1; k + 2 < closed.size(); ++k)
                for (std::size_t j = k + 2; j < closed.size(); ++j) {
                    const TEdge2<T> a = Side(closed, k), b = Side(closed, j);
                    if (share(a, b) || !a.Intersects(b, T(0), Numbers::commonTolerance<T>)) continue;
                    std::swap(closed[k], closed[j - 1]);
                    isChanged = true;
                }
            return isChanged;
        };
        vertices.push_back(vertices.front());
        unsigned int pass = 0;
        while (pass < 40 && exchange(vertices)) ++pass;
        vertices.pop_back();
        return pass < 40;
    }

    /// MakeSimplePolygon, or ReorderCEC that ends with it, on the outlines on which it ends.
    static void MakeSimple(OpenPolygon& polygon, bool isReordered)
    {
        if (polygon.GetCount() == 0) return;
        Points outline;
        if (isReordered) {
            Unfinished unfinished(polygon);
            try {
                unfinished.ReorderCEC();
            } catch (const typename Unfinished::Stop&) {
            }
            outline = Vertices(unfinished);
        }
        // The outline of a reordering has duplicates only where vertices are not numbers.
        Polygon unique;
        if (isReordered)
            unique.AddRange(outline.data(), static_cast<unsigned int>(outline.size()));
        else
            unique = polygon;
        unique.RemoveDuplicateVertices();
        outline = Vertices(unique);
        if (!CanMakeSimple(outline)) return;

        const TBox<T> box = polygon.GetBoundingBox();
        isReordered ? polygon.ReorderCEC() : polygon.MakeSimplePolygon();
        Require(AreSamePoints<T, V>(Vertices(polygon), outline));
        Require(AreSameScalars<T>(polygon.GetBoundingBox(), box));
        // A vertex that is not a number equals nothing, and may stand on the hull as well as among the rest.
        Bound<T, V>(polygon);
    }

    static void MakeHull(OpenPolygon& polygon)
    {
        const Points before = Vertices(polygon);
        const TBox<T> box = polygon.GetBoundingBox();
        const unsigned int bottomLeft = polygon.GetBottomLeft();
        polygon.MakeConvexHull();
        const Points hull = Vertices(polygon);
        Require(AreSameScalars<T>(polygon.GetBoundingBox(), box));
        Require(hull.size() <= before.size() && AreAmong<T, V>(hull, before));
        if (before.empty()) return;
        Require(AreSameScalars<T>(hull.front(), before[bottomLeft]));
        Require(polygon.sortedList.GetCount() == before.size() - 1);
    }

    /// Thins by one of the two ways; what stays are some of the vertices in their order.
    static void Thin(OpenPolygon& polygon, T limit, bool byDeviation)
    {
        Points before = Vertices(polygon);
        byDeviation ? polygon.SimplifyDPM(limit) : polygon.Simplify(limit);
        const Points after = Vertices(polygon);
        // A closed outline is closed again.
        if (byDeviation && !before.empty()) before.push_back(before.front());
        Require(AreInOrderAmong<T, V>(after, before) && after.empty() == before.empty());
        if (!before.empty()) Require(AreSameScalars<T>(after.front(), before.front()));
    }

    static void RemoveDuplicates(OpenPolygon& polygon)
    {
        const Points before = Vertices(polygon);
        const TBox<T> box = polygon.GetBoundingBox();
        polygon.RemoveDuplicateVertices();
        const Points after = Vertices(polygon);
        Require(AreSameScalars<T>(polygon.GetBoundingBox(), box));
        Require(AreInOrderAmong<T, V>(after, before) && after.empty() == before.empty());
        const auto isNear = [](T a, T b) { return Numbers::IsNear(a, b, Numbers::commonTolerance<T>); };
        for (std::size_t i = 0; i < after.size(); ++i)
            for (std::size_t j = i + 1; j < after.size(); ++j)
                Require(!isNear(after[i][0], after[j][0]) || !isNear(after[i][1], after[j][1]));
    }

    /// Whether all vertices have a z of 0 and a w of 1, as far as they have them.
    static bool AreFlat(const Points& vertices)
    {
        for (const Vector& vertex : vertices)
            for (unsigned int k = 2; k < sizeof(Vector) / sizeof(T); ++k)
                if (!AreSame(vertex[k], static_cast<T>(k - 2))) return false;
        return true;
    }

    static void Offset(OpenPolygon& polygon, T distance, T spacing)
    {
        const Points before = Vertices(polygon);
        const bool isDone = polygon.Offset(distance, spacing);
        Require(isDone || distance != T(0));
        if (distance == T(0) || before.empty()) {
            Require(AreSamePoints<T, V>(Vertices(polygon), before) && isDone == (distance == T(0)));
            return;
        }
        Require(AreFlat(Vertices(polygon)));
        if (isDone) RequireExactBox<T, V>(polygon);
        Bound(polygon);
    }

    static void CheckBoundary(const OpenPolygon& polygon, const TVector3<T>& normal)
    {
        const Polygon boundary = polygon.GetOpenConvexBoundary(normal);
        const Points kept = Vertices(boundary), all = Vertices(polygon);
        Require(AreInOrderAmong<T, V>(kept, all) && kept.empty() == all.empty());
        if (kept.empty()) return;
        Require(AreSameScalars<T>(kept.front(), all.front()) && AreSameScalars<T>(kept.back(), all.back()));
        if (normal == TVector3<T>() && AreFinite<T, V>(all)) Require(kept.size() == all.size());
    }

    static void CheckQueries(const OpenPolygon& polygon)
    {
        const unsigned int count = polygon.GetCount();
        const T area = polygon.GetSignedSimpleArea();
        Require(AreSame(polygon.GetSimpleArea(), Numbers::Absolute(area)));
        Require(count == 0 ? polygon.GetBottomLeft() == 0 : polygon.GetBottomLeft() < count);
        const T angle = polygon.GetWindingAngle();
        if (count < 2) Require(AreSame(angle, T(0)));

        TList<TEdge2<T>> edges;
        edges.Add(TEdge2<T>());
        polygon.GetEdges(&edges);
        Require(edges.GetCount() == count);
        for (unsigned int i = 0; i < count; ++i) {
            const Vector &start = polygon[i], &end = polygon[(i + 1) % count];
            Require(AreSameScalars<T>(edges[i], TEdge2<T>(start[0], start[1], end[0], end[1])));
        }
    }

    /// The parts that derived classes use, on a copy.
    static void UseParts(OpenPolygon polygon, Input& input)
    {
        const unsigned int count = polygon.GetCount();
        const auto edge = [&] {
            return TEdge2<T>(input.AnyVector<TVector2<T>, T>(), input.AnyVector<TVector2<T>, T>());
        };
        const TEdge2<T> entering = edge(), leaving = edge();
        const T distance = input.Scalar<T>();
        polygon.OffsetEdge(entering, distance);
        polygon.AddOffsetPoints(entering, leaving, distance, input.Flag());
        Require(polygon.GetCount() - count <= 3);
        if (count < 2) return;

        const unsigned int from = input.Below(count), to = input.Below(count);
        Require(AreSame(polygon.GetSimpleArea(from, to), Numbers::Absolute(polygon.GetSignedSimpleArea(from, to))));
        polygon.GetSignedTriangleAreaWithOrigin(from, to);
        if (from >= to) return;
        const std::unique_ptr<bool[]> keep(new bool[count]);
        std::fill(keep.get(), keep.get() + count, true);
        polygon.SimplifySection(from, to, keep.get(), input.Scalar<T>());
        for (unsigned int i = 0; i < count; ++i) Require(keep[i] || (from < i && i < to));
    }

    /// Sends a polygon through point sets and polygons of another dimension.
    template <template <class> class W>
    static void Convert(OpenPolygon& polygon)
    {
        const TPolygon<T, W> other(static_cast<const Set&>(polygon));
        RequireExactBox(other);
        Require(other.GetCount() == polygon.GetCount());
        const Polygon back(static_cast<const TPointSet<T, W>&>(other));
        RequireExactBox(back);
        polygon.Assign(back);
    }

    static void Assign(OpenPolygon& target, const OpenPolygon& source)
    {
        target.Assign(source);
        if (&target == &source) {
            Require(target.GetCount() == 0);
            return;
        }
        Require(AreSamePoints<T, V>(Vertices(target), Vertices(source)));
        Require(AreSameScalars<T>(target.GetBoundingBox(), source.GetBoundingBox()));
        Require(target.sortedList.GetCount() == source.sortedList.GetCount());
    }

    /// Every vertex can be read, and no polygon has outgrown its bound.
    void Check() const
    {
        for (const OpenPolygon* polygon : {&first, &second}) {
            polygon->GetCentre();
            Require(polygon->GetCount() <= largestSet);
        }
    }

    static const Operation<PolygonState> operations[];
};

template <class T, template <class> class V>
const Operation<PolygonState<T, V>> PolygonState<T, V>::operations[] = {
    {"edit",
     [](PolygonState<T, V>& s, Input& in) { EditList<T, V>(s.Pick(in), in); }},
    {"of an array",
     [](PolygonState<T, V>& s, Input& in) {
                const Points points = DecodePoints<T, V>(in, largestSet);
                s.Pick(in).Assign(Polygon(points.data(), static_cast<unsigned int>(points.size())));
            }},
    {"close",
     [](PolygonState<T, V>& s, Input& in) {
                // Closed by a copy of its first vertex, which duplicates it.
                OpenPolygon& polygon = s.Pick(in);
                if (polygon.GetCount() != 0 && polygon.GetCount() < largestSet) polygon.Add(polygon.GetFirst());
            }},
    {"of sizes",
     [](PolygonState<T, V>& s, Input& in) { s.Pick(in).Assign(Polygon(in.Below(20), in.Below(20))); }},
    {"assign",
     [](PolygonState<T, V>& s, Input& in) {
                OpenPolygon& target = s.Pick(in);
                Assign(target, s.Pick(in));
            }},
    {"copy",
     [](PolygonState<T, V>& s, Input& in) {
                const OpenPolygon& polygon = s.Pick(in);
                RequireCopy<T, V>(Polygon(polygon), polygon);
            }},
    {"through two dimensions",
     [](PolygonState<T, V>& s, Input& in) { Convert<TVector2>(s.Pick(in)); }},
    {"through three dimensions",
     [](PolygonState<T, V>& s, Input& in) { Convert<TVector3>(s.Pick(in)); }},
    {"through four dimensions",
     [](PolygonState<T, V>& s, Input& in) { Convert<TVector4>(s.Pick(in)); }},
    {"toggle keepBox",
     [](PolygonState<T, V>& s, Input& in) {
                // Stale boxes persist without the flag, and the offset asks them.
                bool& keepBox = Opened<T, V>::KeepBox(s.Pick(in));
                keepBox = !keepBox;
            }},
    {"RecalculateBoundingBox",
     [](PolygonState<T, V>& s, Input& in) { s.Pick(in).RecalculateBoundingBox(); }},
    {"queries",
     [](PolygonState<T, V>& s, Input& in) { CheckQueries(s.Pick(in)); }},
    {"GetOpenConvexBoundary",
     [](PolygonState<T, V>& s, Input& in) {
                CheckBoundary(s.Pick(in), in.Flag() ? in.AnyVector<TVector3<T>, T>() : TVector3<T>(0, 0, 1));
            }},
    {"protected parts",
     [](PolygonState<T, V>& s, Input& in) { UseParts(s.Pick(in), in); }},
    {"MakeCCW",
     [](PolygonState<T, V>& s, Input& in) {
                OpenPolygon& polygon = s.Pick(in);
                Points turned = Vertices(polygon);
         if (polygon.GetSignedSimpleArea() < T(0)) std::reverse(turned.begin(), turned.end());
         polygon.MakeCCW();
         Require(AreSamePoints<T, V>(Vertices(polygon), turned));
     }},
    {"MakeConvexHull",
     [](PolygonState<T, V>& s, Input& in) { MakeHull(s.Pick(in)); }},
    {"ReorderCEC",
     [](PolygonState<T, V>& s, Input& in) { MakeSimple(s.Pick(in), true); }},
    {"MakeSimplePolygon",
     [](PolygonState<T, V>& s, Input& in) { MakeSimple(s.Pick(in), false); }},
    {"Offset",
     [](PolygonState<T, V>& s, Input& in) { Offset(s.Pick(in), in.Scalar<T>(), in.Scalar<T>()); }},
    {"Offset by little",
     [](PolygonState<T, V>& s, Input& in) { Offset(s.Pick(in), (static_cast<T>(in.Byte()) - 128) / 64, T(0)); }},
    {"Simplify",
     [](PolygonState<T, V>& s, Input& in) { Thin(s.Pick(in), in.Scalar<T>(), false); }},
    {"SimplifyDPM",
     [](PolygonState<T, V>& s, Input& in) { Thin(s.Pick(in), in.Scalar<T>(), true); }},
    {"RemoveDuplicateVertices",
     [](PolygonState<T, V>& s, Input& in) { RemoveDuplicates(s.Pick(in)); }},
    {"TrimCrossings",
     [](PolygonState<T, V>& s, Input& in) {
                OpenPolygon& polygon = s.Pick(in);
                const unsigned int before = polygon.GetCount();
                polygon.TrimCrossings();
                Require(polygon.GetCount() <= before + 1 && AreFlat(Vertices(polygon)));
         Bound<T, V>(polygon);
            }},
};

} // namespace
} // namespace CorvexFuzz

using namespace CorvexFuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return RunOnPoints<PolygonState>(data, size);
}

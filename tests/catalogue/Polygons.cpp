// Polygons, and the parts of them that derived classes build on.

#include "Sets.h"

#include <tests/support/plain/PlainCrossings.h>
#include <tests/support/plain/PlainHull.h>

namespace CorvexCatalogue
{
namespace
{

/// A polygon with its protected side opened.
template <class T, template <class> class V>
struct OpenPolygon : Hooked<T, V, TPolygon<T, V>>
{
    using Polygon = TPolygon<T, V>;
    using Polygon::AddOffsetPoints, Polygon::capacity, Polygon::OffsetEdge, Polygon::SimplifySection;
    using Polygon::sortedList, Polygon::GetSignedSimpleArea, Polygon::GetSimpleArea,
        Polygon::GetSignedTriangleAreaWithOrigin;
    OpenPolygon() : Hooked<T, V, Polygon>(0, 7) {}
    OpenPolygon(const Polygon& other) { static_cast<Polygon&>(*this) = other; }
};

/// Throws the outline that a reordering makes, before its crossings are taken out.
template <class T, template <class> class V>
struct UnfinishedPolygon : TPolygon<T, V>
{
    using Points = std::vector<V<T>>;
    using TPolygon<T, V>::TPolygon;
    void ElementsAdded(V<T>* points, unsigned int n) override { throw Points(points, points + n); }
};

/// Operations on a polygon and on one of a derived class, in whose hooks the polygon's own shortcuts would be seen.
template <class T, template <class> class V>
struct PolygonState : SetState<T, V, TPolygon<T, V>, OpenPolygon<T, V>>
{
    using Polygon = TPolygon<T, V>;
    using Open = OpenPolygon<T, V>;
    using Base = SetState<T, V, Polygon, Open>;
    using Base::Copy, Base::first, Base::in, Base::out, Base::Pick, Base::PickLarge, Base::second;
    using typename Base::Points, typename Base::Set, typename Base::Vector;
    using Outline = PlainOutline<T>;

    PolygonState(Source& source, Sink& sink) : Base(source, sink) { first = Polygon(0, 7); }
    void Fill() override
    {
        Base::FillBy(65);
        // Closed by a copy of its first vertex.
        if (in.Below(4) == 0 && first.GetCount() > 2) first.Add(first.GetFirst());
    }
    void Show() const override { out << static_cast<const Polygon&>(first) << static_cast<const Polygon&>(second); }

    static Outline Flat(const Points& points)
    {
        Outline outline;
        for (const Vector& point : points) outline.emplace_back(point.x, point.y);
        return outline;
    }
    static Outline Flat(const Set& set) { return Flat(Copy(set)); }
    /// Whether all vertices have a z of 0 and a w of 1, as far as they have them.
    static bool IsFlat(const Set& set)
    {
        for (const Vector& vertex : Copy(set))
            for (unsigned int k = 2; k < sizeof(Vector) / sizeof(T); ++k)
                if (!AreSame(vertex[k], static_cast<T>(k - 2))) return false;
        return true;
    }
    /// A length that leaves something of most shapes, or any scalar.
    T DrawLength()
    {
        const unsigned int kind = in.Byte();
        return kind % 4 == 0 ? in.template Scalar<T>() : (static_cast<T>(kind / 4) - 32) / (kind % 4 == 1 ? 64 : 4);
    }

    void Construct()
    {
        Polygon& polygon = Pick();
        const unsigned int capacity = in.Below(20), growSize = in.Below(20);
        const Polygon copy(static_cast<const Polygon&>(polygon)), empty(capacity, growSize);
        const Polygon ofArray(polygon.GetStream(), polygon.GetCount());
        RequireCopy<T, V>(copy, polygon);
        RequireCopy<T, V>(ofArray, polygon);
        const Set& set = polygon;
        const TPolygon<T, TVector2> plane(set);
        const TPolygon<T, TVector3> space(set);
        const TPolygon<T, TVector4> four(set);
        RequireExactBox(plane);
        out << copy << empty << ofArray << plane << space << four;
        const Aside aside;
        const Polygon flattened(static_cast<const TPointSet<T, TVector3>&>(space));
        static_cast<Polygon&>(second) = flattened;
    }
    void Assign()
    {
        Polygon &target = Pick(), &source = Pick();
        target = source;
        Require(&target == &source ? target.GetCount() == 0 : AreSame(Copy(target), Copy(source)));
    }
    void Areas()
    {
        const Open polygon(PickLarge(1100));
        const unsigned int count = polygon.GetCount(), bottomLeft = polygon.GetBottomLeft();
        const T area = polygon.GetSignedSimpleArea();
        Require(AreSame(polygon.GetSimpleArea(), Numbers::Absolute(area)));
        Require(count == 0 ? bottomLeft == 0 : bottomLeft < count);
        out << area << bottomLeft;
        if (count == 0) return;
        const unsigned int from = in.Below(count), to = in.Below(count);
        const T between = polygon.GetSignedSimpleArea(from, to);
        Require(AreSame(polygon.GetSimpleArea(from, to), Numbers::Absolute(between)));
        out << between << polygon.GetSignedTriangleAreaWithOrigin(from, to);
    }
    void GetEdges()
    {
        const Polygon& polygon = Pick();
        TList<TEdge2<T>> edges(0, 5);
        edges.Add(TEdge2<T>());
        polygon.GetEdges(&edges);
        Require(AreSame(Contents(edges), PlainEdges<T>(Flat(polygon))));
    }
    void GetWindingAngle()
    {
        const T angle = Pick().GetWindingAngle();
        out << angle;
    }
    void MakeCCW()
    {
        Polygon& polygon = PickLarge(700);
        Points turned = Copy(polygon);
        if (polygon.GetSignedSimpleArea() < T(0)) std::reverse(turned.begin(), turned.end());
        polygon.MakeCCW();
        const Aside aside;
        Require(AreSame(Copy(polygon), turned));
    }
    void GetOpenConvexBoundary()
    {
        const Polygon& polygon = PickLarge(1100);
        const auto drawn = in.template Vector<TVector3<T>>();
        const Polygon boundary = polygon.GetOpenConvexBoundary(in.Flag() ? drawn : TVector3<T>(0, 0, 1));
        const Points kept = Copy(boundary), all = Copy(polygon);
        Require(AreInOrderAmong(kept, all) && kept.empty() == all.empty());
        if (!all.empty()) Require(AreSame(kept.front(), all.front()) && AreSame(kept.back(), all.back()));
        out << boundary;
    }
    void MakeConvexHull()
    {
        Polygon& polygon = PickLarge(4200);
        const Points before = Copy(polygon);
        const TBox<T> box = polygon.GetBoundingBox();
        const unsigned int bottomLeft = polygon.GetBottomLeft(), capacity = polygon.*&Open::capacity;
        polygon.MakeConvexHull();
        const Aside aside;
        const Points hull = Copy(polygon);
        Require(AreSame(polygon.GetBoundingBox(), box) && hull.size() <= before.size());
        Require(polygon.*&Open::capacity == capacity);
        if (before.empty()) return;
        Require(AreSame(hull.front(), before[bottomLeft]));
        Require(AreSame(Contents(polygon.*&Open::sortedList), Contents(PlainPolarOrder<T>(before))));
    }
    /// MakeSimplePolygon, or ReorderCEC that ends with it, on the outlines on which it ends.
    template <bool isReordered>
    void MakeSimple()
    {
        Polygon& polygon = Pick();
        if (polygon.GetCount() == 0) return isReordered ? polygon.ReorderCEC() : polygon.MakeSimplePolygon();
        Open unique(polygon);
        unique.RemoveDuplicateVertices();
        if (isReordered) {
            try {
                UnfinishedPolygon<T, V>(polygon).ReorderCEC();
            } catch (const Points& outline) {
                unique.Clear();
                unique.AddRange(outline.data(), static_cast<unsigned int>(outline.size()));
            }
            // Duplicates come back only where vertices are not numbers.
            unique.RemoveDuplicateVertices();
        }
        Points expected = Copy(unique);
        if (!PlainMakeSimple(&expected)) return;
        const TBox<T> box = polygon.GetBoundingBox();
        isReordered ? polygon.ReorderCEC() : polygon.MakeSimplePolygon();
        const Aside aside;
        Require(AreSame(Copy(polygon), expected) && AreSame(polygon.GetBoundingBox(), box));
    }
    void Offset()
    {
        Polygon& polygon = PickLarge(300);
        this->KeepBox(polygon);
        const T distance = DrawLength(), spacing = in.Below(4) == 0 ? in.template Scalar<T>() : T(0);
        const Points before = Copy(polygon);
        const bool isDone = polygon.Offset(distance, spacing);
        const Aside aside;
        out << isDone;
        if (distance == T(0) || before.empty())
            Require(AreSame(Copy(polygon), before) && isDone == (distance == T(0)));
        else
            Require(IsFlat(polygon));
        if (isDone && distance != T(0)) RequireExactBox<T, V>(polygon);
    }
    void OffsetParts()
    {
        Polygon& polygon = Pick();
        const unsigned int count = polygon.GetCount();
        const auto entering = in.template Vector<TEdge2<T>>(), drawn = in.template Vector<TEdge2<T>>();
        // As a rule the sides meet.
        const TEdge2<T> leaving = in.Below(4) != 0 ? TEdge2<T>(entering.Vertex[1], drawn.Vertex[1]) : drawn;
        const T distance = DrawLength();
        (polygon.*&Open::AddOffsetPoints)(entering, leaving, distance, in.Flag());
        Require(polygon.GetCount() - count <= 3);
        out << (polygon.*&Open::OffsetEdge)(entering, distance);
    }
    /// What stays are some of the vertices in their order.
    template <bool byDeviation>
    void Simplify()
    {
        Polygon& polygon = PickLarge(2100);
        const T limit = DrawLength();
        Points before = Copy(polygon);
        if (byDeviation && before.size() > 1) {
            const Outline outline = Flat(before);
            std::unique_ptr<bool[]> keep(new bool[before.size()]), plain(new bool[before.size()]);
            std::fill_n(keep.get(), before.size(), true);
            std::fill_n(plain.get(), before.size(), true);
            (polygon.*&Open::SimplifySection)(0, polygon.GetCount() - 1, keep.get(), limit);
            // Below -1 the plain form does not end where distances are not numbers.
            if (!(limit < T(-1))) {
                PlainSimplifySection(outline, 0, before.size() - 1, limit, plain.get());
                Require(std::equal(keep.get(), keep.get() + before.size(), plain.get()));
            }
        }
        byDeviation ? polygon.SimplifyDPM(limit) : polygon.Simplify(limit);
        const Aside aside;
        const Points after = Copy(polygon);
        if (before.empty()) return;
        // A closed outline is closed again.
        if (byDeviation) before.push_back(before.front());
        Require(AreInOrderAmong(after, before) && AreSame(after.front(), before.front()));
    }
    void RemoveDuplicates()
    {
        Polygon& polygon = PickLarge(2100);
        const Outline before = Flat(polygon);
        const TBox<T> box = polygon.GetBoundingBox();
        polygon.RemoveDuplicateVertices();
        const Aside aside;
        Outline removed;
        Require(AreSame(Flat(polygon), PlainRemoveDuplicates(before, &removed)));
        Require(AreSame(polygon.GetBoundingBox(), box));
    }
    void TrimCrossings()
    {
        Polygon& polygon = PickLarge(1100);
        const Outline before = Flat(polygon);
        polygon.TrimCrossings();
        const Aside aside;
        Require(IsFlat(polygon));
        if (!before.empty()) Require(AreSame(Flat(polygon), PlainTrimCrossings(before)));
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"edits", &PolygonState::Edit},
                {"constructors", &PolygonState::Construct},
                {"operator=", &PolygonState::Assign, Promise::Valid},
                {"areas", &PolygonState::Areas},
                {"GetEdges", &PolygonState::GetEdges},
                {"GetWindingAngle", &PolygonState::GetWindingAngle, Functions::Trigonometric},
                {"MakeCCW", &PolygonState::MakeCCW},
                {"GetOpenConvexBoundary", &PolygonState::GetOpenConvexBoundary},
                // The order of the hull comes from the arc cosine, and the sorted list holds its values.
                {"MakeConvexHull", &PolygonState::MakeConvexHull, Functions::Trigonometric, Promise::Valid},
                {"ReorderCEC", &PolygonState::template MakeSimple<true>, Functions::Trigonometric, Promise::Valid},
                {"MakeSimplePolygon", &PolygonState::template MakeSimple<false>, Promise::Valid},
                {"Offset", &PolygonState::Offset, Promise::Valid},
                {"AddOffsetPoints", &PolygonState::OffsetParts, Promise::Valid},
                {"Simplify", &PolygonState::template Simplify<false>},
                {"SimplifyDPM", &PolygonState::template Simplify<true>, Promise::Valid},
                {"RemoveDuplicateVertices", &PolygonState::RemoveDuplicates},
                {"TrimCrossings", &PolygonState::TrimCrossings}};
    }
};

const Family polygons([] { AddOverPoints<PolygonState>("TPolygon", 800); });

} // namespace
} // namespace CorvexCatalogue

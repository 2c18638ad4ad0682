// Boxes, edges, lines, planes, triangles, circles, solids of revolution and spirals.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

/// What the outputs of an operation hold before it: a value that no operation writes by chance.
template <class T>
struct Outputs
{
    TVector2<T> p2 = TVector2<T>(T(77), T(78)), q2 = p2;
    TVector3<T> p = TVector3<T>(T(77), T(78), T(79)), q = p;
    T distance = T(76), squares = T(75);
    bool first = true, second = false;
    unsigned int edge1 = 9, edge2 = 8;
};

/// The answer of an operation, and all outputs as it left them.
template <class T, class Answer>
void TakeAnswer(Digest& d, const Answer& answer, const Outputs<T>& out)
{
    d << answer << out.p2 << out.q2 << out.p << out.q << out.distance << out.squares << out.first << out.second;
    d << out.edge1 << out.edge2;
}

/// Primitives from points taken in turn.
template <class Primitive, class Vector, class Make>
std::vector<Primitive> FromPoints(const std::vector<Vector>& points, std::size_t n, Make make)
{
    std::vector<Primitive> made;
    for (std::size_t i = 0; i < n; ++i) {
        const auto at = [&](std::size_t k) { return points[(i * 3 + k) % points.size()]; };
        made.push_back(make(at(0), at(1), at(2)));
    }
    return made;
}

template <class T>
struct Pools
{
    using V2 = TVector2<T>;
    using V3 = TVector3<T>;
    std::vector<V2> plane = AnyPoints<V2>(60, 21);
    std::vector<V3> space = AnyPoints<V3>(60, 22);
    std::vector<T> tolerances = {T(0), Numbers::commonTolerance<T>, T(0.25), T(-1), T(30)};
    std::vector<TLine2<T>> lines2 = FromPoints<TLine2<T>>(plane, 40, [](V2 a, V2 b, V2) { return TLine2<T>(a, b); });
    std::vector<TLine3<T>> lines = FromPoints<TLine3<T>>(space, 40, [](V3 a, V3 b, V3) { return TLine3<T>(a, b); });
    std::vector<TEdge2<T>> edges2 = FromPoints<TEdge2<T>>(plane, 40, [](V2 a, V2 b, V2) { return TEdge2<T>(a, b); });
    std::vector<TEdge3<T>> edges = FromPoints<TEdge3<T>>(space, 40, [](V3 a, V3 b, V3) { return TEdge3<T>(a, b); });
    std::vector<TPlane<T>> planes = FromPoints<TPlane<T>>(space, 40, [](V3 a, V3 b, V3) { return TPlane<T>(a, b); });
    std::vector<TTriangle3<T>> triangles =
        FromPoints<TTriangle3<T>>(space, 40, [](V3 a, V3 b, V3 c) { return TTriangle3<T>(a, b, c); });
    std::vector<TCircle2<T>> circles =
        FromPoints<TCircle2<T>>(plane, 40, [](V2 a, V2 b, V2) { return TCircle2<T>(b.x, a); });
    std::vector<TBox<T>> boxes = FromPoints<TBox<T>>(space, 30, [](V3 a, V3 b, V3) {
        TBox<T> box;
        box.Extend(a);
        box.Extend(b);
        return box;
    });

    Pools()
    {
        // What random points seldom are: parallel, collinear, touching, without extent.
        lines.push_back(TLine3<T>(1, 2, 3, 0, 0, 1));
        lines.push_back(TLine3<T>(4, 2, 3, 0, 0, -1));
        lines.push_back(TLine3<T>(V3(1, 1, 1), V3(0, 0, 0)));
        lines2.push_back(TLine2<T>(0, 1, 1, 0));
        lines2.push_back(TLine2<T>(0, 3, -1, 0));
        // Steep lines, by pairs of slopes whose quotient is 1 once rounded.
        for (const T slope : {T(2.503e11), T(2.51e11), T(2.55e11)})
            for (const T other : {slope, std::nextafter(slope, T(0))}) {
                lines2.push_back(TLine2<T>(1, 2, 1, 0));
                lines2.back().direction = V2(1, other);
            }
        edges2.push_back(TEdge2<T>(0, 0, 4, 0));
        edges2.push_back(TEdge2<T>(2, 0, 6, 0));
        edges2.push_back(TEdge2<T>(4, 0, 4, 3));
        edges2.push_back(TEdge2<T>(1, 1, 1, 1));
        edges2.push_back(TEdge2<T>(1, 0, T(1.0001), 3));
        // In the plane of the first triangle below and beside it, through its side, a corner and its inside.
        edges.push_back(TEdge3<T>(-1, 1, 3, 5, 1, 3));
        edges.push_back(TEdge3<T>(0, 0, T(3.0625), 4, 4, T(2.9375)));
        edges.push_back(TEdge3<T>(0, 0, 1, 2, 0, 3)); // parallel to the last triangle
        for (const V2& p : {V2(2, 0), V2(4, 0), V2(1, 2)}) edges.push_back(TEdge3<T>(p.x, p.y, 0, p.x, p.y, 6));
        triangles.push_back(TTriangle3<T>(V3(0, 0, 3), V3(4, 0, 3), V3(0, 4, 3)));
        triangles.push_back(TTriangle3<T>(V3(0, 0, 0), V3(1, 1, 1), V3(2, 2, 2)));
        triangles.push_back(TTriangle3<T>(V3(0, 0, 0), V3(4, 0, 4), V3(0, 4, 4)));
        planes.push_back(TPlane<T>(0, 0, 3, 0, 0, 1));
        planes.push_back(TPlane<T>(0, 0, 0, 0, 0, -2));
        circles.push_back(TCircle2<T>(T(1), T(0), T(0)));
        boxes.push_back(TBox<T>());
        boxes.push_back(TBox<T>(V3(0, 0, 0), V3(4, 4, 4), T(100)));
        boxes.push_back(TBox<T>(V3(0, 0, 0), V3(4, 4, 5), T(100)));
        boxes.push_back(TBox<T>(V3(1, 1, 3), V3(2, 2, 3), T(100)));
    }
};

template <class T>
void AddBoxes(Report& report, const Pools<T>& pools)
{
    using Box = TBox<T>;
    const std::string name = NameOf<T>("TBox") + "::";
    const auto singles = report.Over(pools.boxes);
    singles.Add(name + "measures", [](Digest& d, Box& box) {
        TVector3<T> corners[8], diagonals[4];
        box.GetCorners(corners);
        box.GetDiagonals(diagonals);
        d.TakeArray(corners, 8);
        d.TakeArray(diagonals, 4);
        d << box.GetCentre() << box.GetWidth() << box.GetDepth() << box.GetHeight() << box.GetMaxDim()
          << box.GetMinDim();
        d << box.GetArea() << box.GetVolume();
        box.EnsureVolume();
        d << box;
        box.Extend(T(0.5));
        d << box;
        box.Reset();
        d << box << Box(T(5));
    });
    report.Over(pools.boxes, pools.space).Add(name + "Extend", [](Digest& d, Box& box, TVector3<T>& p) {
        box.Extend(p);
        d << box;
        box.Extend(p.z, p.x, p.y);
        box.Extend(box.maximum);
        d << box;
    });
    report.Over(pools.boxes, pools.boxes).Add(name + "pairs", [](Digest& d, Box& a, Box& b) {
        d << (a == b) << (a != b) << a.IsWithin(b, true) << a.IsWithin(b, false);
        a.Extend(b);
        d << a;
    });
    report.Over(pools.boxes, pools.space, pools.tolerances)
        .Add(name + "IsWithin", [](Digest& d, Box& box, TVector3<T>& p, T t) {
            d << box.IsWithin(p, t) << box.IsWithin(static_cast<TVector2<T>>(p), t)
              << box.IsWithin(static_cast<TVector4<T>>(p), t);
        });
    report.Over(pools.boxes, pools.lines, pools.tolerances)
        .Add(name + "IntersectWith", [](Digest& d, Box& box, TLine3<T>& line, T t) {
            Outputs<T> out;
            TakeAnswer(d, box.IntersectWith(line, &out.p, &out.q, t), out);
            TakeAnswer(d, line.IntersectWith(box, &out.p, &out.q, t), out);
            d << box.IsWithin(line, t);
        });
    report.Over(pools.boxes, pools.lines2, pools.tolerances)
        .Add(name + "IntersectWith(plane)", [](Digest& d, Box& box, TLine2<T>& line, T t) {
            Outputs<T> out;
            TakeAnswer(d, box.IntersectWith(line, &out.p2, &out.q2, t), out);
        });
    std::vector<TMatrix4x4<T>> matrices;
    for (const Kind kind : allKinds) matrices.push_back(MakeMatrix<T>(kind, 4, 4));
    report.Over(pools.boxes, matrices).Add(name + "operator*", [](Digest& d, Box& box, TMatrix4x4<T>& m) {
        d << box * m << (box *= m);
    });
}

template <class T>
void AddEdges(Report& report, const Pools<T>& pools)
{
    using E2 = TEdge2<T>;
    using E3 = TEdge3<T>;
    std::string name = NameOf<T>("TEdge2") + "::";
    report.Over(pools.edges2, pools.plane).Add(name + "points", [](Digest& d, E2& edge, TVector2<T>& p) {
        Outputs<T> out;
        TakeAnswer(d, edge.DistanceToPoint(p, &out.first, &out.second), out);
        d << edge.DistanceToPoint(p, nullptr, nullptr);
        d << edge.GetMid() << edge.GetDirection() << edge.GetLine() << edge + p << edge - p << edge.IsWithin(p);
        d << edge.IsWithinCollinear(p, T(0)) << edge.IsWithinCollinear(edge.GetMid(), T(0.001)) << (edge += p)
          << (edge -= p);
    });
    report.Over(pools.edges2, pools.edges2, pools.tolerances)
        .Add(name + "Intersects", [](Digest& d, E2& a, E2& b, T t) {
            Outputs<T> out;
            TakeAnswer(d, a.IntersectWith(b, &out.p2, &out.first, t), out);
            TakeAnswer(d, b.IntersectWith(a, &out.p2, nullptr, t), out);
            d << a.Intersects(b, t, T(0.001)) << a.Intersects(b, T(0), t) << (a == b) << (a < b) << (a > b);
        });
    report.Over(pools.edges2, pools.circles)
        .Add(name + "IntersectWith(circle)", [](Digest& d, E2& edge, TCircle2<T>& circle) {
            Outputs<T> out;
            TakeAnswer(d, edge.IntersectWith(circle, &out.p2, &out.q2, &out.first, &out.second), out);
            TakeAnswer(d, circle.IntersectWith(edge, &out.p2, &out.q2, &out.first, &out.second), out);
            d << circle.IntersectWith(edge, &out.p2, &out.q2, nullptr, nullptr);
        });

    name = NameOf<T>("TEdge3") + "::";
    report.Over(pools.edges, pools.space).Add(name + "points", [](Digest& d, E3& edge, TVector3<T>& p) {
        Outputs<T> out;
        TakeAnswer(d, edge.DistanceToPoint(p, &out.first, &out.second), out);
        d << edge.DistanceToPoint(p, nullptr, nullptr);
        d << edge.GetMid() << edge.GetDirection() << edge.GetLine() << edge.GetClosestPoint(p) << edge + p << edge - p;
        d << (edge += p) << (edge -= p);
    });
    report.Over(pools.edges, pools.edges).Add(name + "comparisons", [](Digest& d, E3& a, E3& b) {
        d << (a == b) << (a < b) << (a > b);
    });
    report.Over(pools.edges, pools.triangles, pools.tolerances)
        .Add(name + "IntersectWith", [](Digest& d, E3& edge, TTriangle3<T>& tri, T t) {
            Outputs<T> out;
            TakeAnswer(d, edge.IntersectWith(tri.corners[0], tri.corners[1], tri.corners[2], &out.p, t), out);
        });
    report.Over(pools.edges, pools.planes, pools.tolerances)
        .Add(name + "IntersectWith(plane)", [](Digest& d, E3& edge, TPlane<T>& plane, T t) {
            Outputs<T> out;
            TakeAnswer(d, edge.IntersectWith(plane, &out.p, t), out);
            TakeAnswer(d, plane.IntersectWith(edge, &out.p, t), out);
        });
    std::vector<TMatrix3x3<T>> matrices;
    for (const Kind kind : allKinds) matrices.push_back(MakeMatrix<T>(kind, 3, 3));
    report.Over(pools.edges, matrices).Add(name + "operator*", [](Digest& d, E3& edge, TMatrix3x3<T>& m) {
        const TMatrix2x2<T> m2 = m;
        E2 flat(edge.Vertex[0], edge.Vertex[1]);
        d << edge * m << flat * m2 << (edge *= m) << (flat *= m2);
    });
}

template <class T>
void AddLines(Report& report, const Pools<T>& pools)
{
    using L2 = TLine2<T>;
    using L3 = TLine3<T>;
    std::string name = NameOf<T>("TLine2") + "::";
    report.Over(pools.lines2, pools.plane).Add(name + "points", [](Digest& d, L2& line, TVector2<T>& p) {
        d << line.Evaluate(p.x) << line.EvaluateCart(p.x) << line.GetGrad() << line.GetIntercept()
          << line.GetIntercept(p.y);
        d << line.DistanceToPoint(p) << line.Fit(p, line.origin) << line << L2(p.x, p.y, T(1), p.x);
    });
    report.Over(pools.lines2, pools.lines2, pools.tolerances)
        .Add(name + "IntersectWith", [](Digest& d, L2& a, L2& b, T t) {
            Outputs<T> out;
            TakeAnswer(d, a.IntersectWith(b, &out.p2, t), out);
        });
    report.Over(pools.lines2, pools.circles)
        .Add(name + "IntersectWith(circle)", [](Digest& d, L2& line, TCircle2<T>& circle) {
            Outputs<T> out;
            TakeAnswer(d, line.IntersectWith(circle, &out.p2, &out.q2), out);
            TakeAnswer(d, circle.IntersectWith(line, &out.p2, &out.q2), out);
        });

    name = NameOf<T>("TLine3") + "::";
    report.Over(pools.lines, pools.space, pools.tolerances)
        .Add(name + "points", [](Digest& d, L3& line, TVector3<T>& p, T t) {
            d << line.Evaluate(p.x) << line.DistanceToPoint(p, t) << line.Fit(line.origin, p) << line;
        });
    report.Over(pools.lines, pools.lines, pools.tolerances)
        .Add(name + "ClosestPoints", [](Digest& d, L3& a, L3& b, T t) {
            Outputs<T> out;
            TakeAnswer(d, a.ClosestPoints(b, &out.p, &out.q, t), out);
        });
    report.Over(pools.lines, pools.triangles, pools.tolerances)
        .Add(name + "IntersectWith", [](Digest& d, L3& line, TTriangle3<T>& tri, T t) {
            const TVector3<T>(&c)[3] = tri.corners;
            Outputs<T> out;
            TakeAnswer(d, line.IntersectWith(c[0], c[1], c[2], &out.p, &out.distance, t), out);
            TakeAnswer(d, line.IntersectWithBFC(c[0], c[1], c[2], &out.p, &out.distance, t), out);
            TakeAnswer(d, line.IntersectWithFFC(c[0], c[1], c[2], &out.p, &out.distance, t), out);
            TakeAnswer(d, line.IntersectWith(tri, &out.p, &out.distance, t), out);
            TakeAnswer(d, line.IntersectWithBFC(tri, &out.p, &out.distance, t), out);
            TakeAnswer(d, line.IntersectWithFFC(tri, &out.p, &out.distance, t), out);
            TakeAnswer(d, tri.IntersectWith(line, &out.p, &out.distance, t), out);
            TakeAnswer(d, tri.IntersectWithBFC(line, &out.p, &out.distance, t), out);
            TakeAnswer(d, tri.IntersectWithFFC(line, &out.p, nullptr, t), out);
        });
    report.Over(pools.lines, pools.planes, pools.tolerances)
        .Add(name + "IntersectWith(plane)", [](Digest& d, L3& line, TPlane<T>& plane, T t) {
            Outputs<T> out;
            TakeAnswer(d, line.IntersectWith(plane, &out.p, t), out);
            TakeAnswer(d, plane.IntersectWith(line, &out.p, t), out);
        });
}

template <class T>
void AddPlanes(Report& report, const Pools<T>& pools)
{
    using Plane = TPlane<T>;
    using Triangle = TTriangle3<T>;
    std::string name = NameOf<T>("TPlane") + "::";
    report.Over(pools.planes, pools.space).Add(name + "points", [](Digest& d, Plane& plane, TVector3<T>& p) {
        d << plane.SignedDistanceToPoint(p) << plane.DistanceToPoint(p) << Plane(p, plane.point, plane.normal);
        d << (plane == Plane(p, plane.normal));
        plane.Fit(p, plane.normal, plane.point);
        d << plane;
    });
    report.Over(pools.planes, pools.planes, pools.tolerances)
        .Add(name + "IntersectWith", [](Digest& d, Plane& a, Plane& b, T t) {
            TLine3<T> line(7, 7, 7, 1, 0, 0);
            d << a.IntersectWith(b, &line, t) << line << (a == b);
        });
    report.Over(pools.planes, pools.triangles, pools.tolerances)
        .Add(name + "IntersectWith(triangle)", [](Digest& d, Plane& plane, Triangle& tri, T t) {
            const TVector3<T>(&c)[3] = tri.corners;
            Outputs<T> out;
            TakeAnswer(d, plane.IntersectWith(tri, &out.p, &out.q, &out.edge1, &out.edge2, t), out);
            TakeAnswer(d, plane.IntersectWith(c[0], c[1], c[2], &out.p, &out.q, &out.edge1, &out.edge2, t), out);
            d << plane.Intersects(tri) << plane.Intersects(c[0], c[1], c[2]);
        });

    name = NameOf<T>("TTriangle3") + "::";
    report.Over(pools.triangles, pools.space, pools.tolerances)
        .Add(name + "points", [](Digest& d, Triangle& tri, TVector3<T>& p, T t) {
            d << tri << tri.GetArea() << tri.DistanceToPoint(p, t) << tri.ClosestVert(p) << p;
        });
    const std::vector<TVector2<T>> few = AnyPoints<TVector2<T>>(12, 23);
    report.Over(few, few, few, few)
        .Add(NameOf<T>("TTriangle2") + "::WithinCone",
             [](Digest& d, TVector2<T>& a, TVector2<T>& b, TVector2<T>& c, TVector2<T>& p) {
                 const TTriangle2<T> tri(a, b, c);
                 d << tri.GetDoubleArea() << tri.WithinCone(p) << TTriangle2<T>::GetDoubleArea(b, c, p);
                 d << TTriangle2<T>::WithinCone(b, c, p, a);
             });
}

template <class T>
void AddCircles(Report& report, const Pools<T>& pools)
{
    using V2 = TVector2<T>;
    using V3 = TVector3<T>;
    std::string name = NameOf<T>("TCircle2") + "::";
    const std::vector<V2> few = AnyPoints<V2>(20, 24);
    report.Over(few, few, few).Add(name + "Fit", [](Digest& d, V2& a, V2& b, V2& c) {
        TCircle2<T> circle(T(3), T(4), T(5));
        d << circle.Fit(a, b, c) << circle << circle.Contains(a, T(0))
          << circle.Contains(c, Numbers::commonTolerance<T>);
    });
    using Set = TPolygon<T, TVector2>;
    const std::vector<Set> sets = MakeShapes<Set, T, TVector2>(allShapes, {0, 1, 2, 3, 4, 9, 40});
    report.Over(sets, pools.tolerances).Add(name + "MinimumBoundingCircle", [](Digest& d, Set& points, T t) {
        TCircle2<T> circle(T(1), V2(1, 1));
        circle.MinimumBoundingCircle(points);
        d << circle << circle.Contains(points, points.GetCount(), t) << TCircle2<T>();
    });

    name = NameOf<T>("TCircle3") + "::";
    const std::vector<V3> corners = AnyPoints<V3>(12, 25);
    report.Over(corners, corners, corners, pools.tolerances)
        .Add(name + "Fit(corners)", [](Digest& d, V3& a, V3& b, V3& c, T t) {
            TCircle3<T> circle(T(3), V3(4, 5, 6), V3(0, 0, 1));
            d << circle.Fit(a, b, c, t) << circle;
        });
    report.Over(pools.lines, corners, corners)
        .Add(name + "IntersectWith", [](Digest& d, TLine3<T>& line, V3& a, V3& b) {
            Outputs<T> out;
            TakeAnswer(d, TCircle3<T>(T(4), a, b).IntersectWith(line, &out.p), out);
        });
}

/// Fits to points in space.
template <class T>
void AddFits(Report& report)
{
    using Set = TPointSet<T, TVector3>;
    using V3 = TVector3<T>;
    std::vector<Set> sets = MakeShapes<Set, T, TVector3>(allShapes, {0, 1, 2, 3, 4, 5, 9, 40, 150});
    // Points on a ball, a little or much off, about the origin and elsewhere; any points.
    Random random(26);
    for (const unsigned int n : {4u, 5u, 12u, 30u, 120u})
        for (const V3& centre : {V3(0, 0, 0), V3(1, 2, 3)})
            for (const T noise : {T(0), T(0.015625), T(4)}) {
                Set ball, any;
                while (ball.GetCount() < n) {
                    V3 p = random.Point<V3>([](Random& r) { return r.Unit<T>(); });
                    p.Normalise();
                    ball.Add(p * (T(8) + random.Unit<T>() * noise) + centre);
                    any.Add(random.Point<V3>([](Random& r) { return r.Finite<T>(); }));
                }
                sets.push_back(ball);
                sets.push_back(any);
            }
    Set octahedron;
    for (const V3& axis : {V3(1, 0, 0), V3(0, 1, 0), V3(0, 0, 1)}) {
        octahedron.Add(axis);
        octahedron.Add(-axis);
    }
    sets.push_back(octahedron);

    // Either measure may be left out.
    const std::vector<bool> flags = {false, true};
    const std::vector<unsigned int> limits = {0, 1, 20};
    const auto fits = report.Over(sets, flags, flags);
    fits.Add(NameOf<T>("TPlane") + "::Fit", [](Digest& d, Set& points, bool first, bool second) {
        TPlane<T> plane(1, 2, 3, 0, 0, 1);
        T spread = 7, squares = 8;
        d << plane.Fit(points, first ? &spread : nullptr, second ? &squares : nullptr);
        d << plane << spread << squares << points;
    });
    fits.Add(NameOf<T>("TLine3") + "::Fit", [](Digest& d, Set& points, bool first, bool second) {
        TLine3<T> line(1, 2, 3, 0, 0, 1);
        T spread = 7, squares = 8;
        d << line.Fit(points, first ? &spread : nullptr, second ? &squares : nullptr);
        d << line << spread << squares << points;
    });
    const auto iterations = report.Over(sets, flags, limits);
    iterations.Add(NameOf<T>("TCircle3") + "::Fit", [](Digest& d, Set& points, bool measured, unsigned int limit) {
        TCircle3<T> circle(T(3), V3(4, 5, 6), V3(0, 0, 1));
        T spread = 7, squares = 8;
        d << circle.Fit(points, measured ? &spread : nullptr, measured ? &squares : nullptr, T(0.001), limit);
        d << circle << spread << squares << points;
    });
    iterations.Add(NameOf<T>("TSphere") + "::Fit", [](Digest& d, Set& points, bool measured, unsigned int limit) {
        TSphere<T> ball(T(2), T(1), T(1), T(1));
        T spread = 7;
        d << ball.Fit(points, measured ? &spread : nullptr, limit) << ball << spread << points;
    });
}

template <class T>
void AddSolids(Report& report, const Pools<T>& pools)
{
    using V3 = TVector3<T>;
    const std::vector<V3> axes = {V3(0, 0, 1), V3(1, 0, 0), V3(1, 2, -2), V3(0, 0, 0)};
    const std::vector<T> sizes = {T(0), T(0.5), T(3), T(-2), T(20)};
    std::vector<TLine3<T>> lines = pools.lines;
    for (const TVector3<T>& p : FinitePoints<V3>(30, 27)) lines.push_back(TLine3<T>(p, V3(1, 1, 1) - p));
    // Through the rims of solids along z, and beside the tip.
    for (const V3& rim : {V3(4, 1, T(-0.5)), V3(4, 1, T(2.5)), V3(4, 1, 4), V3(T(1.5), 1, T(1.5))})
        for (const V3& along : GridPoints<V3>()) lines.push_back(TLine3<T>(rim, along));
    lines.push_back(TLine3<T>(1 + Numbers::commonTolerance<T> / 4, 1, -5, 0, 0, 1));

    report.Over(lines, axes, sizes, sizes)
        .Add(NameOf<T>("TCone") + "::IntersectWith", [](Digest& d, TLine3<T>& line, V3& axis, T radius, T height) {
            const TCone<T> cone(radius, height, V3(1, 1, 1), axis);
            Outputs<T> out;
            TakeAnswer(d, cone.IntersectWith(line, &out.p, &out.q), out);
            d << cone << TCone<T>(radius, height, T(1), T(2), T(3), axis.x, axis.y, axis.z);
            d << TCone<T>(radius, height) << TCone<T>();
        });
    report.Over(lines, axes, sizes, sizes)
        .Add(NameOf<T>("TCylinder") + "::IntersectWith", [](Digest& d, TLine3<T>& line, V3& axis, T radius, T height) {
            const TCylinder<T> cylinder(radius, height, V3(1, 1, 1), axis);
            for (const bool infinite : {false, true}) {
                Outputs<T> out;
                TakeAnswer(d, cylinder.IntersectWith(line, &out.p, &out.q, infinite), out);
            }
            d << cylinder << TCylinder<T>(radius, height) << TCylinder<T>()
              << TCylinder<T>(radius, height, T(1), T(2), T(3), axis.x, axis.y, axis.z);
        });
    report.Over(lines, sizes, pools.tolerances)
        .Add(NameOf<T>("TSphere") + "::IntersectWith", [](Digest& d, TLine3<T>& line, T radius, T t) {
            const TSphere<T> ball(radius, V3(1, 1, 1));
            Outputs<T> out;
            TakeAnswer(d, ball.IntersectWith(line, &out.p, &out.q, t), out);
            TakeAnswer(d, line.IntersectWith(ball, &out.p, &out.q, t), out);
            d << ball << TSphere<T>() << TSphere<T>(radius);
        });
    const std::vector<int> counts = {0, 1, 2, 30};
    report.Over(axes, sizes, counts)
        .AddTrigonometric(NameOf<T>("TSpiral3") + "::TSpiral3", [](Digest& d, V3& axis, T size, int count) {
            const TSpiral3<T> spiral(V3(1, 2, 3), axis, size, count, T(0.25), size / 8);
            TSpiral3<T> copy(spiral);
            copy = spiral;
            d << spiral << copy;
        });
}

} // namespace

void DigestPrimitives(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        const Pools<T> pools;
        AddBoxes(report, pools);
        AddEdges(report, pools);
        AddLines(report, pools);
        AddPlanes(report, pools);
        AddCircles(report, pools);
        AddFits<T>(report);
        AddSolids(report, pools);
    });
}

} // namespace CorvexDigest

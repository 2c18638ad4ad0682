// Boxes, edges, lines, planes, triangles, circles, solids of revolution and spirals, made of a few live points so that
// they meet. Where two classes answer the same question both are asked, and a false answer leaves its outputs alone
// where that is promised.

#include "ListEdits.h"

namespace CorvexCatalogue
{
namespace
{

/// The outputs of a question, which hold at first what no operation writes by chance, and its answer.
template <class T>
struct Answer
{
    TVector3<T> p1 = TVector3<T>(41, 42, 43), p2 = TVector3<T>(44, 45, 46);
    TVector2<T> q1 = TVector2<T>(47, 48), q2 = TVector2<T>(49, 50);
    T distance = 51;
    bool within1 = true, within2 = false;
    unsigned int edge1 = 52, edge2 = 53;
    int result = 0;

    std::uint64_t GetDigest() const
    {
        Digest digest;
        digest << p1 << p2 << q1 << q2 << distance << within1 << within2 << edge1 << edge2 << result;
        return digest.Get();
    }
};

template <class T>
struct PrimitiveState : State
{
    using State::State;
    using V2 = TVector2<T>;
    using V3 = TVector3<T>;
    using Cloud = TPointSet<T, TVector3>;
    using Hits = Answer<T>;

    V2 flat[4];
    V3 points[4];

    void Fill() override
    {
        for (V2& point : flat) point = in.template Vector<V2>();
        for (V3& point : points) point = in.template Vector<V3>();
    }
    void Show() const override
    {
        out.TakeArray(flat, 4);
        out.TakeArray(points, 4);
    }

    // What is drawn: points of the state, so that things meet, or any, and primitives through them.

    V2 Point2()
    {
        const unsigned int kind = in.Byte();
        return kind % 4 != 0 ? flat[kind / 4 % 4] : in.template Vector<V2>();
    }
    V3 Point3()
    {
        const unsigned int kind = in.Byte();
        return kind % 4 != 0 ? points[kind / 4 % 4] : in.template Vector<V3>();
    }
    T Scalar() { return in.template Scalar<T>(); }
    T Tolerance() { return in.template Tolerance<T>(); }
    /// A radius or the like: mostly a small one.
    T Size() { return in.Below(4) != 0 ? static_cast<T>(in.Below(16)) / 2 : in.template Scalar<T>(); }

    /// A primitive of two points, and now and then the difference of the points for the second.
    template <class Primitive, class V, class Draw>
    Primitive OfTwo(Draw draw)
    {
        const V a = (this->*draw)(), b = (this->*draw)();
        return in.Below(4) == 0 ? Primitive(a, a - b) : Primitive(a, b);
    }
    TEdge2<T> Edge2() { return OfTwo<TEdge2<T>, V2>(&PrimitiveState::Point2); }
    TEdge3<T> Edge3() { return OfTwo<TEdge3<T>, V3>(&PrimitiveState::Point3); }
    TLine2<T> Line2()
    {
        TLine2<T> line = OfTwo<TLine2<T>, V2>(&PrimitiveState::Point2);
        if (in.Below(8) != 0) return line;
        // Steep, by slopes whose quotient is 1 once rounded.
        static constexpr T slopes[] = {T(2.503e11), T(2.51e11), T(2.55e11)};
        const T slope = slopes[in.Below(3)];
        line.direction = V2(1, in.Flag() ? slope : std::nextafter(slope, T(0)));
        return line;
    }
    TLine3<T> Line3()
    {
        const V3 a = Point3(), b = Point3();
        const unsigned int kind = in.Below(4);
        // Through two points, through one along a third, or along an axis.
        V3 along = kind < 2 ? b - a : b;
        if (kind == 3) along = V3(static_cast<T>(in.Below(2)), T(0), T(1));
        return TLine3<T>(a, along);
    }
    TPlane<T> Plane() { return OfTwo<TPlane<T>, V3>(&PrimitiveState::Point3); }
    TTriangle3<T> Triangle3()
    {
        const V3 a = Point3(), b = Point3();
        return TTriangle3<T>(a, b, Point3());
    }
    TCircle2<T> Circle2()
    {
        const T radius = Size();
        return TCircle2<T>(radius, Point2());
    }
    TBox<T> Box()
    {
        const V3 a = Point3(), b = Point3();
        if (in.Below(4) == 0) return TBox<T>(a, b, static_cast<T>(in.Between(1, 20)));
        TBox<T> box;
        box.Extend(a);
        box.Extend(b);
        return box;
    }
    template <class Matrix>
    Matrix DrawTransform()
    {
        return DrawMatrix<T>(in, 4, 4);
    }

    // Questions.

    /// Hands the answer to the sink; hits become points of the state, and a false answer must have written nothing if
    /// that is promised.
    template <class Question>
    Hits Ask(Question question, bool isPromised = true)
    {
        Hits answer;
        answer.result = question(answer);
        out << answer.GetDigest();
        Require(!isPromised || answer.result != 0 || answer.GetDigest() == Hits().GetDigest());
        if (answer.result != 0) {
            flat[2] = answer.q1;
            flat[3] = answer.q2;
            points[2] = answer.p1;
            points[3] = answer.p2;
        }
        return answer;
    }
    /// Asks two forms of one question, which agree.
    template <class Question, class Same>
    Hits AskBoth(Question question, Same same, bool isPromised = true)
    {
        Hits other;
        other.result = same(other);
        const Hits answer = Ask(question, isPromised);
        Require(answer.GetDigest() == other.GetDigest());
        return answer;
    }

    // Boxes.

    void BoxMeasures()
    {
        TBox<T> box = Box();
        V3 corners[8], diagonals[4];
        box.GetCorners(corners);
        box.GetDiagonals(diagonals);
        Require(AreSame(corners[0], box.minimum) && AreSame(corners[4], box.maximum));
        Require(AreSame(diagonals[0], V3(box.GetWidth(), box.GetDepth(), box.GetHeight())));
        Require(!(box.GetMinDim() > box.GetMaxDim()));
        out.TakeArray(corners, 8);
        out.TakeArray(diagonals, 4);
        out << box.GetCentre() << box.GetMaxDim() << box.GetMinDim() << box.GetArea() << box.GetVolume();
        const T margin = Scalar();
        TBox<T> changed = box;
        changed.EnsureVolume();
        out << changed;
        changed.Extend(margin);
        out << changed;
        changed.Reset();
        Require(AreSame(changed, TBox<T>(box.limit)));
    }
    void BoxExtend()
    {
        TBox<T> box = Box(), byScalars = box;
        const TBox<T> other = Box();
        const V3 point = Point3();
        byScalars.Extend(point.x, point.y, point.z);
        box.Extend(point);
        Require(AreSame(byScalars, box));
        // A corner that is not a number stays one, and holds nothing.
        if (point == point && box == box) Require(box.IsWithin(point, T(0)));
        out << box;
        box.Extend(other);
        byScalars.Extend(byScalars.maximum);
        out << box << byScalars << (box == byScalars) << (box != byScalars);
    }
    void BoxIsWithin()
    {
        const TBox<T> box = Box(), other = Box();
        const V3 point = Point3();
        const T tolerance = Tolerance();
        const bool isWithin = box.IsWithin(point, tolerance), isFlat = box.IsWithin(V2(point.x, point.y), tolerance);
        Require(isWithin == box.IsWithin(TVector4<T>(point.x, point.y, point.z, T(7)), tolerance));
        Require(isWithin <= isFlat);
        out << isWithin << isFlat;
        for (const bool isPlanar : {false, true}) {
            const bool overlap = box.IsWithin(other, isPlanar);
            Require(overlap == other.IsWithin(box, isPlanar));
            out << overlap;
        }
    }
    void BoxAndLines()
    {
        const TBox<T> box = Box();
        const TLine3<T> line = Line3();
        const TLine2<T> flatLine = Line2();
        const T tolerance = Tolerance();
        const Hits hits = AskBoth([&](Hits& h) { return box.IntersectWith(line, &h.p1, &h.p2, tolerance); },
                                  [&](Hits& h) { return line.IntersectWith(box, &h.p1, &h.p2, tolerance); }, false);
        Require(box.IsWithin(line, tolerance) == (hits.result != 0));
        Ask([&](Hits& h) { return box.IntersectWith(flatLine, &h.q1, &h.q2, tolerance); });
    }
    void Transform()
    {
        const TBox<T> box = Box();
        const TEdge3<T> edge = Edge3();
        const TEdge2<T> flatEdge = Edge2();
        const auto matrix = DrawTransform<TMatrix4x4<T>>();
        const TMatrix3x3<T> matrix3 = matrix;
        const TMatrix2x2<T> matrix2 = matrix;
        CORVEX_IN_PLACE(*, box, matrix);
        CORVEX_IN_PLACE(*, edge, matrix3);
        TEdge2<T> moved = flatEdge;
        out << flatEdge * matrix2 << (moved *= matrix2);
    }

    // Edges and lines.

    template <class Edge, class Point>
    void MoveEdge(const Edge& edge, const Edge& other, const Point& point)
    {
        CORVEX_IN_PLACE(+, edge, point);
        CORVEX_IN_PLACE(-, edge, point);
        bool isWithin = false, isBefore = false;
        const T distance = edge.DistanceToPoint(point, &isWithin, &isBefore);
        Require(AreSame(distance, edge.DistanceToPoint(point, nullptr, nullptr)));
        Require((edge > other) == (other < edge) && !(edge > other && edge < other));
        Require(!(edge == other && edge > other));
        out << distance << isWithin << isBefore << edge.GetMid() << edge.GetDirection() << edge.GetLine();
        out << (edge == other) << (edge < other) << (edge > other);
        Require(AreSame(edge.GetLine().direction, edge.GetDirection()));
    }
    void Edge2Points()
    {
        const TEdge2<T> edge = Edge2(), other = in.template Vector<TEdge2<T>>();
        const V2 point = Point2();
        MoveEdge(edge, other, point);
        const T tolerance = Tolerance();
        bool isWithin = false;
        edge.DistanceToPoint(point, &isWithin, nullptr);
        Require(!isWithin || edge.IsWithin(point));
        const auto& [a, b] = edge.Vertex;
        out << TEdge2<T>(a.x, a.y, b.x, b.y) << edge.IsWithin(point) << edge.IsWithinCollinear(point, tolerance)
            << edge.IsWithinCollinear(edge.GetMid(), tolerance);
    }
    void Edge3Points()
    {
        const TEdge3<T> edge = Edge3(), other = in.template Vector<TEdge3<T>>();
        const V3 point = Point3();
        MoveEdge(edge, other, point);
        const auto& [a, b] = edge.Vertex;
        out << TEdge3<T>(a.x, a.y, a.z, b.x, b.y, b.z) << edge.GetClosestPoint(point);
    }
    void EdgeAndEdge()
    {
        const TEdge2<T> edge = Edge2(), other = Edge2();
        const T tolerance = Tolerance(), ignored = Scalar();
        const bool meet = edge.Intersects(other, T(0), tolerance);
        Require(meet == edge.Intersects(other, ignored, tolerance));
        out << meet;
        const Hits found = Ask([&](Hits& h) { return edge.IntersectWith(other, &h.q1, &h.within1, tolerance); });
        const Hits same = Ask([&](Hits& h) { return edge.IntersectWith(other, &h.q1, nullptr, tolerance); });
        Require(found.result == same.result && AreSame(found.q1, same.q1));
    }
    void EdgeAndPlane()
    {
        const TEdge3<T> edge = Edge3();
        const TPlane<T> plane = Plane();
        const T tolerance = Tolerance();
        AskBoth([&](Hits& h) { return edge.IntersectWith(plane, &h.p1, tolerance); },
                [&](Hits& h) { return plane.IntersectWith(edge, &h.p1, tolerance); });
        const TTriangle3<T> triangle = Triangle3();
        const auto& c = triangle.corners;
        const Hits hits = Ask([&](Hits& h) { return edge.IntersectWith(c[0], c[1], c[2], &h.p1, tolerance); }, false);
        Require(hits.result >= 0 && hits.result <= 4);
    }
    void Lines2()
    {
        TLine2<T> line = Line2();
        const TLine2<T> other = Line2();
        const V2 a = Point2(), b = Point2();
        const T x = Scalar(), tolerance = Tolerance();
        Require(AreSame(line.GetIntercept(), line.GetIntercept(line.GetGrad())));
        out << TLine2<T>(a.x, a.y, b.x, b.y) << line.Evaluate(x) << line.EvaluateCart(x) << line.GetGrad()
            << line.GetIntercept() << line.GetIntercept(x) << line.DistanceToPoint(a);
        Ask([&](Hits& h) { return line.IntersectWith(other, &h.q1, tolerance); });
        const V2 before = line.origin;
        Require(line.Fit(a, b) == (a != b) && AreSame(line.origin, a != b ? a : before));
        out << line;
    }
    void Lines3()
    {
        TLine3<T> line = Line3();
        const TLine3<T> other = Line3();
        const V3 a = Point3(), b = Point3();
        const T x = Scalar(), tolerance = Tolerance();
        out << TLine3<T>(a.x, a.y, a.z, b.x, b.y, b.z) << line.Evaluate(x) << line.DistanceToPoint(a, tolerance);
        Ask([&](Hits& h) { return line.ClosestPoints(other, &h.p1, &h.p2, tolerance); }, false);
        const V3 before = line.origin;
        Require(line.Fit(a, b) == (a != b) && AreSame(line.origin, a != b ? a : before));
        out << line;
    }

    // Planes and triangles.

    void Planes()
    {
        TPlane<T> plane = Plane();
        const TPlane<T> other = Plane();
        const V3 a = Point3(), b = Point3(), c = Point3();
        const T tolerance = Tolerance(), distance = plane.SignedDistanceToPoint(a);
        Require(AreSame(plane.DistanceToPoint(a), Numbers::Absolute(distance)));
        out << distance << TPlane<T>(a.x, a.y, a.z, b.x, b.y, b.z) << TPlane<T>(a, b, c) << (plane == other);
        const TLine3<T> crossed = Line3();
        TLine3<T> line(7, 7, 7, 1, 0, 0);
        const bool isHit = plane.IntersectWith(other, &line, tolerance);
        Require(isHit || AreSame(line, TLine3<T>(7, 7, 7, 1, 0, 0)));
        out << isHit << line;
        AskBoth([&](Hits& h) { return plane.IntersectWith(crossed, &h.p1, tolerance); },
                [&](Hits& h) { return crossed.IntersectWith(plane, &h.p1, tolerance); });
        plane.Fit(a, b, c);
        out << plane;
    }
    void PlaneAndTriangle()
    {
        const TPlane<T> plane = Plane();
        const TTriangle3<T> triangle = Triangle3();
        const T tolerance = Tolerance();
        const auto& c = triangle.corners;
        const Hits hits = AskBoth(
            [&](Hits& h) { return plane.IntersectWith(triangle, &h.p1, &h.p2, &h.edge1, &h.edge2, tolerance); },
            [&](Hits& h) { return plane.IntersectWith(c[0], c[1], c[2], &h.p1, &h.p2, &h.edge1, &h.edge2, tolerance); },
            false);
        if (hits.result != 0) Require(hits.edge1 < hits.edge2 && hits.edge2 <= 2);
        Require(plane.Intersects(triangle) == plane.Intersects(c[0], c[1], c[2]));
        out << plane.Intersects(triangle);
    }
    void Triangles2()
    {
        const V2 a = Point2(), b = Point2(), c = Point2(), point = Point2();
        const TTriangle2<T> triangle(a, b, c);
        Require(AreSame(triangle.GetDoubleArea(), TTriangle2<T>::GetDoubleArea(a, b, c)));
        Require(triangle.WithinCone(point) == TTriangle2<T>::WithinCone(a, b, c, point));
        out << triangle.GetDoubleArea() << triangle.WithinCone(point);
    }
    void Triangles3()
    {
        TTriangle3<T> triangle = Triangle3();
        V3 point = Point3();
        const T tolerance = Tolerance();
        out << triangle << triangle.GetArea() << triangle.DistanceToPoint(point, tolerance);
        // A corner that is moved leaves the normal as it was.
        V3& nearest = triangle.ClosestVert(point);
        out << nearest;
        if (in.Flag()) nearest = point;
        CrossTriangle(triangle, Line3(), tolerance);
    }
    /// A line with a triangle, in the forms of the line, of the triangle and of its corners.
    void CrossTriangle(const TTriangle3<T>& tri, const TLine3<T>& line, T tolerance)
    {
        const auto& c = tri.corners;
        const auto ask = [this](const auto& byTriangle, const auto& byLine, const auto& byCorners) {
            this->AskBoth(byLine, byCorners);
            return this->AskBoth(byTriangle, byCorners).result;
        };
        const int any =
            ask([&](Hits& h) { return tri.IntersectWith(line, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWith(tri, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWith(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        const int front =
            ask([&](Hits& h) { return tri.IntersectWithBFC(line, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWithBFC(tri, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWithBFC(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        const int back =
            ask([&](Hits& h) { return tri.IntersectWithFFC(line, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWithFFC(tri, &h.p1, &h.distance, tolerance); },
                [&](Hits& h) { return line.IntersectWithFFC(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        // One of the two faces is culled, unless the determinant is not a number, and so the point of the last hit.
        Require(front == 0 || back == 0 || points[2] != points[2]);
        Require(line.IntersectWith(tri, &points[2], nullptr, tolerance) == (any != 0));
    }

    // Circles and solids.

    void Circles2()
    {
        TCircle2<T> circle = Circle2();
        const V2 a = Point2(), b = Point2(), c = Point2();
        const T tolerance = Tolerance();
        out << circle << TCircle2<T>(circle.radius, a.x, a.y) << TCircle2<T>() << circle.Contains(a, tolerance);
        const TLine2<T> line = Line2();
        AskBoth([&](Hits& h) { return circle.IntersectWith(line, &h.q1, &h.q2); },
                [&](Hits& h) { return line.IntersectWith(circle, &h.q1, &h.q2); });
        const TEdge2<T> edge = Edge2();
        const bool isNull = in.Flag();
        const auto flag = [isNull](bool& within) { return isNull ? nullptr : &within; };
        AskBoth([&](Hits& h) { return circle.IntersectWith(edge, &h.q1, &h.q2, flag(h.within1), flag(h.within2)); },
                [&](Hits& h) { return edge.IntersectWith(circle, &h.q1, &h.q2, flag(h.within1), flag(h.within2)); });
        const TCircle2<T> before = circle;
        // A point may be the centre itself.
        const bool isFitted = circle.Fit(a, b, in.Below(8) == 0 ? circle.centre : c);
        Require(isFitted || AreSame(before, circle));
        out << isFitted << circle;
    }
    void BoundingCircle()
    {
        const std::vector<V2> drawn = DrawPoints<T, TVector2>(in, 700);
        const TList<V2> list(drawn.data(), static_cast<unsigned int>(drawn.size()), 10);
        TCircle2<T> circle = in.Flag() ? Circle2() : TCircle2<T>();
        const TCircle2<T> before = circle;
        const T tolerance = Tolerance();
        const unsigned int count = in.Between(0, list.GetCount());
        bool isHolding = true;
        for (unsigned int i = 0; i < count; ++i) isHolding &= circle.Contains(list[i], tolerance);
        Require(circle.Contains(list, count, tolerance) == isHolding && circle.Contains(list, 0, tolerance));
        const bool holdsAll = circle.Contains(list, list.GetCount(), Numbers::commonTolerance<T>);
        circle.MinimumBoundingCircle(list);
        Require(!holdsAll || AreSame(before, circle));
        out << isHolding << circle;
    }
    void Circles3()
    {
        const V3 a = Point3(), b = Point3(), c = Point3();
        const T radius = Size(), tolerance = Tolerance();
        TCircle3<T> circle(radius, a, b);
        const TLine3<T> line = Line3();
        Ask([&](Hits& h) { return circle.IntersectWith(line, &h.p1); }, false);
        out << circle << circle.Fit(a, b, c, tolerance);
        out << circle;
    }
    void Solids()
    {
        const T radius = Size(), height = Size(), tolerance = Tolerance();
        const V3 place = Point3(), axis = in.Flag() ? Point3() : V3(0, 0, 1);
        TLine3<T> line = Line3();
        // Through the rim of a solid along z, or beside the tip.
        if (in.Below(4) == 0) line.origin = place + V3(in.Flag() ? radius : tolerance / 4, T(0), height);
        TCone<T> cone(radius, height, place, axis);
        TCylinder<T> cylinder(radius, height, place, axis);
        const TSphere<T> sphere(radius, place);
        const auto& [x, y, z] = V3(place);
        out << cone << cylinder << sphere << TCone<T>() << TCylinder<T>() << TSphere<T>();
        Require(AreSame(cone, TCone<T>(radius, height, x, y, z, axis.x, axis.y, axis.z)));
        Require(AreSame(cylinder, TCylinder<T>(radius, height, x, y, z, axis.x, axis.y, axis.z)));
        Require(AreSame(sphere, TSphere<T>(radius, x, y, z)));
        out << TCone<T>(radius, height) << TCylinder<T>(radius, height) << TSphere<T>(radius);
        AskBoth([&](Hits& h) { return sphere.IntersectWith(line, &h.p1, &h.p2, tolerance); },
                [&](Hits& h) { return line.IntersectWith(sphere, &h.p1, &h.p2, tolerance); });
        Ask([&](Hits& h) { return cone.IntersectWith(line, &h.p1, &h.p2); });
        Ask([&](Hits& h) { return cylinder.IntersectWith(line, &h.p1, &h.p2, false); });
        Ask([&](Hits& h) { return cylinder.IntersectWith(line, &h.p1, &h.p2, true); });
        // The outputs may be parts of the solid.
        out << cone.IntersectWith(line, &cone.apex, &cone.axis) << cone;
        out << cylinder.IntersectWith(line, &cylinder.centre, &cylinder.axis, in.Flag()) << cylinder;
    }
    void Spirals()
    {
        const V3 centre = Point3(), axis = Point3();
        const T radius = Size(), step = Scalar(), growth = Scalar();
        const int count = static_cast<int>(in.Below(60)) - 3;
        TSpiral3<T> spiral(centre, axis, radius, count, step, growth);
        Require(spiral.points.GetCount() == static_cast<unsigned int>(count < 1 ? 1 : count));
        const TSpiral3<T> copy(spiral);
        spiral = copy;
        Require(AreSame(Contents<V3>(copy.points), Contents<V3>(spiral.points)));
        out << spiral << copy;
    }

    // Fits to points in space, which they leave alone.

    /// Points of any shape; on a ball or on a circle, exactly or nearly.
    Cloud DrawCloud()
    {
        const unsigned int kind = in.Below(4), count = in.Size(300);
        const V3 centre = in.Flag() ? V3(1, 2, 3) : V3(0, 0, 0);
        const T noise = in.Flag() ? T(0) : T(0.015625);
        const std::vector<V3> drawn = DrawPoints<T, TVector3>(in, 300);
        if (kind < 2) return Cloud(drawn.data(), static_cast<unsigned int>(drawn.size()));
        Source many = in.Fork();
        Cloud cloud(0, 10);
        for (unsigned int i = 0; i < count; ++i) {
            V3 point = many.Vector<V3>(&Source::Unit<T>);
            if (kind == 2) point.z = 0;
            point.Normalise();
            cloud.Add(point * (T(8) + many.Unit<T>() * noise) + centre);
        }
        return cloud;
    }
    template <class Primitive, class Fit>
    void FitTo(Primitive fitted, Fit fit)
    {
        Cloud cloud = DrawCloud();
        const Cloud before(cloud);
        T spread = 7, squares = 8;
        T* const first = in.Flag() ? &spread : nullptr;
        T* const second = in.Flag() ? &squares : nullptr;
        const bool isFitted = fit(fitted, cloud, first, second);
        Require(AreSame(Contents<V3>(cloud), Contents<V3>(before)));
        out << isFitted << fitted << spread << squares;
    }
    void FitLine()
    {
        FitTo(TLine3<T>(1, 2, 3, 0, 0, 1), [](TLine3<T>& line, Cloud& cloud, T* spread, T* squares) {
            const TLine3<T> before = line;
            const bool isFitted = line.Fit(cloud, spread, squares);
            Require(isFitted || AreSame(line.direction, before.direction));
            return isFitted;
        });
    }
    void FitPlane()
    {
        FitTo(TPlane<T>(1, 2, 3, 0, 0, 1), [](TPlane<T>& plane, Cloud& cloud, T* spread, T* squares) {
            const TPlane<T> before = plane;
            const bool isFitted = plane.Fit(cloud, spread, squares);
            Require(isFitted || AreSame(plane.normal, before.normal));
            return isFitted;
        });
    }
    void FitCircle()
    {
        const T tolerance = in.Flag() ? T(0.001) : Tolerance();
        const unsigned int limit = in.Below(16);
        FitTo(TCircle3<T>(3, V3(4, 5, 6), V3(0, 0, 1)), [=](TCircle3<T>& circle, Cloud& cloud, T* spread, T* squares) {
            return circle.Fit(cloud, spread, squares, tolerance, limit);
        });
    }
    void FitSphere()
    {
        const unsigned int limit = in.Below(16);
        FitTo(TSphere<T>(2, 1, 1, 1), [limit](TSphere<T>& sphere, Cloud& cloud, T* spread, T*) {
            const TSphere<T> before = sphere;
            const bool isFitted = sphere.Fit(cloud, spread, limit);
            Require(isFitted || cloud.GetCount() != 4 || AreSame(sphere, before));
            return isFitted;
        });
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"points", &PrimitiveState::Fill},
                {"TBox", &PrimitiveState::BoxMeasures},
                {"TBox::Extend", &PrimitiveState::BoxExtend},
                {"TBox::IsWithin", &PrimitiveState::BoxIsWithin},
                {"TBox::IntersectWith", &PrimitiveState::BoxAndLines},
                {"operator*(matrix)", &PrimitiveState::Transform},
                {"TEdge2", &PrimitiveState::Edge2Points},
                {"TEdge2::IntersectWith", &PrimitiveState::EdgeAndEdge},
                {"TEdge3", &PrimitiveState::Edge3Points},
                {"TEdge3::IntersectWith", &PrimitiveState::EdgeAndPlane},
                {"TLine2", &PrimitiveState::Lines2},
                {"TLine3", &PrimitiveState::Lines3},
                {"TLine3::Fit", &PrimitiveState::FitLine},
                {"TPlane", &PrimitiveState::Planes},
                {"TPlane::Fit", &PrimitiveState::FitPlane},
                {"TPlane::IntersectWith(triangle)", &PrimitiveState::PlaneAndTriangle},
                {"TTriangle2", &PrimitiveState::Triangles2},
                {"TTriangle3", &PrimitiveState::Triangles3},
                {"TCircle2", &PrimitiveState::Circles2},
                {"TCircle2::MinimumBoundingCircle", &PrimitiveState::BoundingCircle},
                {"TCircle3", &PrimitiveState::Circles3},
                {"TCircle3::Fit", &PrimitiveState::FitCircle},
                {"TSphere::Fit", &PrimitiveState::FitSphere},
                {"solids", &PrimitiveState::Solids},
                {"TSpiral3", &PrimitiveState::Spirals, Functions::Trigonometric}};
    }
};

const Family primitives([] { AddOverScalars<PrimitiveState>("primitives", 4000); });

} // namespace
} // namespace CorvexCatalogue

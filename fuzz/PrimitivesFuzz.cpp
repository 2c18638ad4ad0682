// Primitives: one or two live objects of each class, made anew, fitted, moved and crossed with one another. Where two
// classes answer the same question both are asked, and a false answer leaves its outputs alone where that is promised.

#include "Points.h"

namespace CorvexFuzz
{
namespace
{

/// The outputs of a question, marked so that it shows what was written.
template <class T>
struct Answer
{
    TVector3<T> p1 = TVector3<T>(41, 42, 43), p2 = TVector3<T>(44, 45, 46);
    TVector2<T> q1 = TVector2<T>(47, 48), q2 = TVector2<T>(49, 50);
    T distance = 51;
    bool within1 = true, within2 = false;
    unsigned int edge1 = 52, edge2 = 53;
    /// What was returned.
    int result = 0;

    bool HasOutputsOf(const Answer& other) const
    {
        return AreSameScalars<T>(p1, other.p1) && AreSameScalars<T>(p2, other.p2) && AreSameScalars<T>(q1, other.q1) &&
               AreSameScalars<T>(q2, other.q2) && AreSame(distance, other.distance) && within1 == other.within1 &&
               within2 == other.within2 && edge1 == other.edge1 && edge2 == other.edge2;
    }
};

template <class T>
struct PrimitiveState
{
    using Vector2 = TVector2<T>;
    using Vector3 = TVector3<T>;
    using Cloud = TPointSet<T, TVector3>;
    using Hits = Answer<T>;

    Vector2 points2[4];
    Vector3 points3[4];
    TBox<T> box, otherBox;
    TEdge2<T> edge2, otherEdge2;
    TEdge3<T> edge3;
    TLine2<T> line2, otherLine2;
    TLine3<T> line3, otherLine3;
    TPlane<T> plane, otherPlane;
    TTriangle2<T> triangle2;
    TTriangle3<T> triangle3;
    TCircle2<T> circle2;
    TCircle3<T> circle3;
    TSphere<T> sphere;
    TCone<T> cone;
    TCylinder<T> cylinder;
    TList<Vector2> flat;
    Cloud cloud;

    /// A point: one of the state, so that things meet, or any.
    Vector2 Point2(Input& input) { return input.Flag() ? points2[input.Below(4)] : input.AnyVector<Vector2, T>(); }
    Vector3 Point3(Input& input) { return input.Flag() ? points3[input.Below(4)] : input.AnyVector<Vector3, T>(); }

    template <class Question>
    static Hits Ask(Question question)
    {
        Hits answer;
        answer.result = question(answer);
        return answer;
    }

    /// Asks two forms of one question, which agree.
    template <class Question, class Same>
    static Hits AskBoth(Question question, Same same)
    {
        const Hits answer = Ask(question), other = Ask(same);
        Require(answer.result == other.result && answer.HasOutputsOf(other));
        return answer;
    }

    /// Requires a false answer to have written nothing; hits become points of the state.
    void Take(const Hits& answer)
    {
        Require(answer.result != 0 || answer.HasOutputsOf(Hits()));
        if (answer.result == 0) return;
        points2[2] = answer.q1;
        points2[3] = answer.q2;
        points3[2] = answer.p1;
        points3[3] = answer.p2;
    }

    /// Fits, through null pointers as well, leave the points alone.
    template <class Fit>
    void FitCloud(Input& input, Fit fit)
    {
        const auto before = Copy<T, TVector3>(cloud);
        T spread = T(0), squares = T(0);
        fit(input.Flag() ? &spread : nullptr, input.Flag() ? &squares : nullptr);
        Require(AreSamePoints<T, TVector3>(before, Copy<T, TVector3>(cloud)));
    }

    /// A line with a triangle, in the forms of the line and of the triangle.
    void CrossTriangle(T tolerance)
    {
        const auto& c = triangle3.corners;
        const auto take = [this](const auto& byTriangle, const auto& byLine, const auto& byCorners) {
            const Hits answer = AskBoth(byTriangle, byCorners);
            Take(AskBoth(byLine, byCorners));
            return answer.result;
        };
        const TLine3<T>& line = line3;
        const TTriangle3<T>& tri = triangle3;
        const int any =
            take([&](Hits& h) { return tri.IntersectWith(line, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWith(tri, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWith(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        const int front =
            take([&](Hits& h) { return tri.IntersectWithBFC(line, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWithBFC(tri, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWithBFC(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        const int back =
            take([&](Hits& h) { return tri.IntersectWithFFC(line, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWithFFC(tri, &h.p1, &h.distance, tolerance); },
                 [&](Hits& h) { return line.IntersectWithFFC(c[0], c[1], c[2], &h.p1, &h.distance, tolerance); });
        // One of the two faces is culled, unless the determinant is not a number, and so the point of the last hit.
        Require(front == 0 || back == 0 || points3[2] != points3[2]);
        Require(line.IntersectWith(tri, &points3[2], nullptr, tolerance) == (any != 0));
    }

    /// What holds throughout: a circle that is asked for none of the points holds all of them.
    void Check() const { Require(circle2.Contains(flat, 0, T(0))); }

    static const Operation<PrimitiveState> operations[];
};

template <class T>
const Operation<PrimitiveState<T>> PrimitiveState<T>::operations[] = {
    {"point in the plane",
     [](PrimitiveState& s, Input& in) { s.points2[in.Below(4)] = in.AnyVector<Vector2, T>(); }},
    {"point in space",
     [](PrimitiveState& s, Input& in) { s.points3[in.Below(4)] = in.AnyVector<Vector3, T>(); }},
    {"grid points in the plane",
     [](PrimitiveState& s, Input& in) {
         for (Vector2& point : s.points2) point = in.FiniteVector<Vector2, T>();
     }},
    {"grid points in space",
     [](PrimitiveState& s, Input& in) {
         for (Vector3& point : s.points3) point = in.FiniteVector<Vector3, T>();
     }},
    {"edit the cloud", [](PrimitiveState& s, Input& in) { EditList<T, TVector3>(s.cloud, in); }},
    {"cloud",
     [](PrimitiveState& s, Input& in) {
         const auto points = DecodePoints<T, TVector3>(in, 40);
         s.cloud = Cloud(points.data(), static_cast<unsigned int>(points.size()));
     }},
    {"flat points",
     [](PrimitiveState& s, Input& in) {
         const auto points = DecodePoints<T, TVector2>(in, 40);
         s.flat = TList<Vector2>(points.data(), static_cast<unsigned int>(points.size()), 10u);
     }},

    // Boxes.
    {"TBox empty", [](PrimitiveState& s, Input& in) { s.box = TBox<T>(static_cast<T>(in.Between(1, 20))); }},
    {"TBox of corners",
     [](PrimitiveState& s, Input& in) {
         s.box = TBox<T>(s.Point3(in), s.Point3(in), static_cast<T>(in.Between(1, 20)));
     }},
    {"swap boxes",
     [](PrimitiveState& s, Input&) {
         const TBox<T> before = s.box;
         s.box = s.otherBox;
         s.otherBox = before;
         Require((s.box == before) != (s.box != before));
     }},
    {"TBox *",
     [](PrimitiveState& s, Input& in) {
         const auto matrix = DecodeMatrix<TMatrix4x4<T>, T>(in);
         const TBox<T> moved = s.box * matrix;
         s.box *= matrix;
         Require(AreSameScalars<T>(moved, s.box));
     }},
    {"TBox::Reset",
     [](PrimitiveState& s, Input&) {
         s.box.Reset();
         Require(AreSameScalars<T>(s.box, TBox<T>(s.box.limit)));
     }},
    {"TBox::Extend",
     [](PrimitiveState& s, Input& in) {
         const Vector3 point = s.Point3(in);
         TBox<T> extended = s.box;
         extended.Extend(point.x, point.y, point.z);
         s.box.Extend(point);
         Require(AreSameScalars<T>(extended, s.box));
         // A corner that is not a number stays one, and holds nothing.
         if (point == point && extended == extended) Require(extended.IsWithin(point, T(0)));
     }},
    {"TBox::Extend by a box", [](PrimitiveState& s, Input&) { s.box.Extend(s.otherBox); }},
    {"TBox::Extend by a margin", [](PrimitiveState& s, Input& in) { s.box.Extend(in.Scalar<T>()); }},
    {"TBox::EnsureVolume",
     [](PrimitiveState& s, Input&) {
         s.box.EnsureVolume();
     }},
    {"TBox queries",
     [](PrimitiveState& s, Input&) {
         const TBox<T>& of = s.box;
         Vector3 corners[8], diagonals[4];
         of.GetCorners(corners);
         of.GetDiagonals(diagonals);
         Require(AreSameScalars<T>(corners[0], of.minimum) && AreSameScalars<T>(corners[4], of.maximum));
         Require(AreSameScalars<T>(diagonals[0], Vector3(of.GetWidth(), of.GetDepth(), of.GetHeight())));
         Require(!(of.GetMinDim() > of.GetMaxDim()));
         s.points3[0] = of.GetCentre();
         s.points2[0] = Vector2(of.GetArea(), of.GetVolume());
     }},
    {"TBox::IsWithin",
     [](PrimitiveState& s, Input& in) {
         const Vector3 point = s.Point3(in);
         const T tolerance = DecodeTolerance<T>(in);
         const bool isWithin = s.box.IsWithin(point, tolerance);
         Require(isWithin == s.box.IsWithin(TVector4<T>(point.x, point.y, point.z, in.Scalar<T>()), tolerance));
         Require(!isWithin || s.box.IsWithin(Vector2(point.x, point.y), tolerance));
         const bool isPlanar = in.Flag();
         Require(s.box.IsWithin(s.otherBox, isPlanar) == s.otherBox.IsWithin(s.box, isPlanar));
     }},
    {"TBox and TLine3",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         const Hits hits =
             AskBoth([&](Hits& h) { return s.box.IntersectWith(s.line3, &h.p1, &h.p2, tolerance); },
                     [&](Hits& h) { return s.line3.IntersectWith(s.box, &h.p1, &h.p2, tolerance); });
         Require(s.box.IsWithin(s.line3, tolerance) == (hits.result != 0));
     }},
    {"TBox and TLine2",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(Ask([&](Hits& h) { return s.box.IntersectWith(s.line2, &h.q1, &h.q2, tolerance); }));
     }},

    // Edges.
    {"TEdge2 of points",
     [](PrimitiveState& s, Input& in) {
         s.otherEdge2 = s.edge2;
         s.edge2 = TEdge2<T>(s.Point2(in), s.Point2(in));
     }},
    {"TEdge2 of scalars",
     [](PrimitiveState& s, Input& in) {
         s.edge2 = TEdge2<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>());
     }},
    {"TEdge2 moved",
     [](PrimitiveState& s, Input& in) {
         const Vector2 offset = s.Point2(in);
         const TEdge2<T> moved = s.edge2 + offset, movedBack = moved - offset;
         s.edge2 += offset;
         Require(AreSameScalars<T>(s.edge2, moved));
         s.edge2 -= offset;
         Require(AreSameScalars<T>(s.edge2, movedBack));
         s.points2[0] = s.edge2.GetMid();
     }},
    {"TEdge2 *",
     [](PrimitiveState& s, Input& in) {
         const auto matrix = DecodeMatrix<TMatrix2x2<T>, T>(in);
         s.otherEdge2 = s.edge2 * matrix;
         s.edge2 *= matrix;
     }},
    {"TEdge2 relations",
     [](PrimitiveState& s, Input&) {
         const TEdge2<T>&a = s.edge2, &b = s.otherEdge2;
         Require((a > b) == (b < a) && !(a > b && a < b) && !(a == b && a > b));
         s.line2 = a.GetLine();
         Require(AreSameScalars<T>(s.line2.direction, a.GetDirection()));
     }},
    {"TEdge2 and a point",
     [](PrimitiveState& s, Input& in) {
         const Vector2 point = s.Point2(in);
         bool isWithin = false, isBefore = false;
         const T distance = s.edge2.DistanceToPoint(point, &isWithin, &isBefore);
         Require(AreSame(distance, s.edge2.DistanceToPoint(point, nullptr, nullptr)));
         Require(!isWithin || s.edge2.IsWithin(point));
         s.edge2.IsWithinCollinear(point, DecodeTolerance<T>(in));
     }},
    {"TEdge2::Intersects",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         Require(s.edge2.Intersects(s.otherEdge2, T(0), tolerance) ==
                 s.edge2.Intersects(s.otherEdge2, in.Scalar<T>(), tolerance));
     }},
    {"TEdge2 and TEdge2",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(Ask([&](Hits& h) { return s.edge2.IntersectWith(s.otherEdge2, &h.q1, &h.within1, tolerance); }));
         s.Take(Ask([&](Hits& h) { return s.edge2.IntersectWith(s.otherEdge2, &h.q1, nullptr, tolerance); }));
     }},
    {"TEdge3 of points",
     [](PrimitiveState& s, Input& in) { s.edge3 = TEdge3<T>(s.Point3(in), s.Point3(in)); }},
    {"TEdge3 of scalars",
     [](PrimitiveState& s, Input& in) {
         s.edge3 = TEdge3<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(),
                             in.Scalar<T>());
     }},
    {"TEdge3 moved",
     [](PrimitiveState& s, Input& in) {
         const Vector3 offset = s.Point3(in);
         const TEdge3<T> moved = s.edge3 + offset, movedBack = moved - offset;
         s.edge3 += offset;
         Require(AreSameScalars<T>(s.edge3, moved));
         s.edge3 -= offset;
         Require(AreSameScalars<T>(s.edge3, movedBack));
         s.points3[0] = s.edge3.GetMid();
     }},
    {"TEdge3 *",
     [](PrimitiveState& s, Input& in) {
         const auto matrix = DecodeMatrix<TMatrix3x3<T>, T>(in);
         const TEdge3<T> before = s.edge3, product = before * matrix;
         s.edge3 *= matrix;
         Require(AreSameScalars<T>(s.edge3, product));
         Require((before > product) == (product < before) && !(before == product && before > product));
     }},
    {"TEdge3 and a point",
     [](PrimitiveState& s, Input& in) {
         const Vector3 point = s.Point3(in);
         bool isWithin = false, isBefore = false;
         const T distance = s.edge3.DistanceToPoint(point, &isWithin, &isBefore);
         Require(AreSame(distance, s.edge3.DistanceToPoint(point, nullptr, nullptr)));
         s.points3[1] = s.edge3.GetClosestPoint(point);
         s.line3 = s.edge3.GetLine();
         Require(AreSameScalars<T>(s.line3.direction, s.edge3.GetDirection()));
     }},
    {"TEdge3 and corners",
     [](PrimitiveState& s, Input& in) {
         const auto& c = s.triangle3.corners;
         const T tolerance = DecodeTolerance<T>(in);
         Vector3 point;
         const int kind = s.edge3.IntersectWith(c[0], c[1], c[2], &point, tolerance);
         Require(kind >= 0 && kind <= 4);
     }},
    {"TEdge3 and TPlane",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(AskBoth([&](Hits& h) { return s.edge3.IntersectWith(s.plane, &h.p1, tolerance); },
                        [&](Hits& h) { return s.plane.IntersectWith(s.edge3, &h.p1, tolerance); }));
     }},

    // Lines.
    {"TLine2 through a point",
     [](PrimitiveState& s, Input& in) {
         s.otherLine2 = s.line2;
         s.line2 = TLine2<T>(s.Point2(in), s.Point2(in));
     }},
    {"TLine2 of scalars",
     [](PrimitiveState& s, Input& in) {
         s.line2 = TLine2<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>());
     }},
    {"TLine2::Fit",
     [](PrimitiveState& s, Input& in) {
         const Vector2 a = s.Point2(in), b = s.Point2(in);
         const TLine2<T> before = s.line2;
         Require(s.line2.Fit(a, b) == (a != b));
         Require(AreSameScalars<T>(s.line2.origin, a != b ? a : before.origin));
     }},
    {"TLine2 queries",
     [](PrimitiveState& s, Input& in) {
         const T x = in.Scalar<T>();
         Require(AreSame(s.line2.GetIntercept(), s.line2.GetIntercept(s.line2.GetGrad())));
         s.points2[1] = s.line2.Evaluate(x);
         s.points2[0] = Vector2(x, s.line2.EvaluateCart(x));
         Require(!(s.line2.DistanceToPoint(s.Point2(in)) < T(0)));
     }},
    {"TLine2 and TLine2",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(Ask([&](Hits& h) { return s.line2.IntersectWith(s.otherLine2, &h.q1, tolerance); }));
     }},
    {"TLine3 through a point",
     [](PrimitiveState& s, Input& in) {
         s.otherLine3 = s.line3;
         s.line3 = TLine3<T>(s.Point3(in), s.Point3(in));
     }},
    {"TLine3 of scalars",
     [](PrimitiveState& s, Input& in) {
         s.line3 = TLine3<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(),
                             in.Scalar<T>());
     }},
    {"TLine3::Fit",
     [](PrimitiveState& s, Input& in) {
         const Vector3 a = s.Point3(in), b = s.Point3(in);
         const TLine3<T> before = s.line3;
         Require(s.line3.Fit(a, b) == (a != b));
         Require(AreSameScalars<T>(s.line3.origin, a != b ? a : before.origin));
     }},
    {"TLine3::Fit to the cloud",
     [](PrimitiveState& s, Input& in) {
         const TLine3<T> before = s.line3;
         s.FitCloud(in, [&](T* spread, T* squares) {
             if (s.line3.Fit(s.cloud, spread, squares)) return;
             Require(AreSameScalars<T>(s.line3.direction, before.direction));
             if (s.cloud.GetCount() < 2) Require(AreSameScalars<T>(s.line3.origin, before.origin));
         });
     }},
    {"TLine3 queries",
     [](PrimitiveState& s, Input& in) {
         s.points3[0] = s.line3.Evaluate(in.Scalar<T>());
         const T tolerance = DecodeTolerance<T>(in);
         Require(!(s.line3.DistanceToPoint(s.Point3(in), tolerance) < T(0)));
         Require(s.line3.ClosestPoints(s.otherLine3, &s.points3[1], &s.points3[2], tolerance));
     }},

    // Planes and triangles.
    {"TPlane through a point",
     [](PrimitiveState& s, Input& in) {
         s.otherPlane = s.plane;
         s.plane = TPlane<T>(s.Point3(in), s.Point3(in));
     }},
    {"TPlane of scalars",
     [](PrimitiveState& s, Input& in) {
         s.plane = TPlane<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(),
                             in.Scalar<T>());
     }},
    {"TPlane of corners",
     [](PrimitiveState& s, Input& in) { s.plane = TPlane<T>(s.Point3(in), s.Point3(in), s.Point3(in)); }},
    {"TPlane::Fit to corners",
     [](PrimitiveState& s, Input& in) {
         s.otherPlane.Fit(s.Point3(in), s.Point3(in), s.Point3(in));
         if (s.plane == s.otherPlane) Require(s.plane.point == s.otherPlane.point);
     }},
    {"TPlane::Fit to the cloud",
     [](PrimitiveState& s, Input& in) {
         const TPlane<T> before = s.plane;
         s.FitCloud(in, [&](T* spread, T* squares) {
             if (s.plane.Fit(s.cloud, spread, squares)) return;
             Require(AreSameScalars<T>(s.plane.normal, before.normal));
             if (s.cloud.GetCount() < 3) Require(AreSameScalars<T>(s.plane.point, before.point));
         });
     }},
    {"TPlane and a point",
     [](PrimitiveState& s, Input& in) {
         const Vector3 point = s.Point3(in);
         Require(AreSame(s.plane.DistanceToPoint(point),
                         Numbers::Absolute(s.plane.SignedDistanceToPoint(point))));
     }},
    {"TPlane and TLine3",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(AskBoth([&](Hits& h) { return s.line3.IntersectWith(s.plane, &h.p1, tolerance); },
                        [&](Hits& h) { return s.plane.IntersectWith(s.line3, &h.p1, tolerance); }));
     }},
    {"TPlane and TPlane",
     [](PrimitiveState& s, Input& in) {
         const TLine3<T> before = s.line3;
         if (!s.plane.IntersectWith(s.otherPlane, &s.line3, DecodeTolerance<T>(in)))
             Require(AreSameScalars<T>(s.line3, before));
     }},
    {"TPlane and TTriangle3",
     [](PrimitiveState& s, Input& in) {
         const auto& c = s.triangle3.corners;
         const T tolerance = DecodeTolerance<T>(in);
         const Hits hits = AskBoth(
             [&](Hits& h) {
                 return s.plane.IntersectWith(s.triangle3, &h.p1, &h.p2, &h.edge1, &h.edge2, tolerance);
             },
             [&](Hits& h) {
                 return s.plane.IntersectWith(c[0], c[1], c[2], &h.p1, &h.p2, &h.edge1, &h.edge2, tolerance);
             });
         if (hits.result != 0) Require(hits.edge1 < hits.edge2 && hits.edge2 <= 2);
         Require(s.plane.Intersects(s.triangle3) == s.plane.Intersects(c[0], c[1], c[2]));
     }},
    {"TTriangle2",
     [](PrimitiveState& s, Input& in) {
         s.triangle2 = TTriangle2<T>(s.Point2(in), s.Point2(in), s.Point2(in));
         const auto& c = s.triangle2.corners;
         Require(AreSame(s.triangle2.GetDoubleArea(), TTriangle2<T>::GetDoubleArea(c[0], c[1], c[2])));
         const Vector2 point = s.Point2(in);
         Require(s.triangle2.WithinCone(point) == TTriangle2<T>::WithinCone(c[0], c[1], c[2], point));
     }},
    {"TTriangle3",
     [](PrimitiveState& s, Input& in) { s.triangle3 = TTriangle3<T>(s.Point3(in), s.Point3(in), s.Point3(in)); }},
    {"TTriangle3 and a point",
     [](PrimitiveState& s, Input& in) {
         Vector3 point = s.Point3(in);
         Require(!(s.triangle3.GetArea() < T(0)));
         Require(!(s.triangle3.DistanceToPoint(point, DecodeTolerance<T>(in)) < T(0)));
         // A corner that is moved leaves the normal as it was.
         Vector3& nearest = s.triangle3.ClosestVert(point);
         if (in.Flag()) nearest = point;
     }},
    {"TTriangle3 and TLine3",
     [](PrimitiveState& s, Input& in) { s.CrossTriangle(DecodeTolerance<T>(in)); }},

    // Circles.
    {"TCircle2",
     [](PrimitiveState& s, Input& in) {
         s.circle2 = in.Flag() ? TCircle2<T>(in.Scalar<T>(), s.Point2(in))
                               : TCircle2<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>());
     }},
    {"TCircle2::Fit",
     [](PrimitiveState& s, Input& in) {
         const TCircle2<T> before = s.circle2;
         const Vector2 a = s.Point2(in), b = s.Point2(in);
         // A point may be the centre itself.
         const bool isFitted = in.Flag() ? s.circle2.Fit(a, b, s.circle2.centre) : s.circle2.Fit(a, b, s.Point2(in));
         Require(isFitted || AreSameScalars<T>(before, s.circle2));
     }},
    {"TCircle2::Contains",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         const unsigned int count = in.Between(0, s.flat.GetCount());
         bool isHolding = true;
         for (unsigned int i = 0; i < count; ++i) isHolding &= s.circle2.Contains(s.flat[i], tolerance);
         Require(s.circle2.Contains(s.flat, count, tolerance) == isHolding);
     }},
    {"TCircle2 and TLine2",
     [](PrimitiveState& s, Input&) {
         s.Take(AskBoth([&](Hits& h) { return s.circle2.IntersectWith(s.line2, &h.q1, &h.q2); },
                        [&](Hits& h) { return s.line2.IntersectWith(s.circle2, &h.q1, &h.q2); }));
     }},
    {"TCircle2 and TEdge2",
     [](PrimitiveState& s, Input& in) {
         const bool isNull = in.Flag();
         const auto within = [isNull](bool& flag) { return isNull ? nullptr : &flag; };
         s.Take(AskBoth(
             [&](Hits& h) {
                 return s.circle2.IntersectWith(s.edge2, &h.q1, &h.q2, within(h.within1), within(h.within2));
             },
             [&](Hits& h) {
                 return s.edge2.IntersectWith(s.circle2, &h.q1, &h.q2, within(h.within1), within(h.within2));
             }));
     }},
    {"TCircle2::MinimumBoundingCircle",
     [](PrimitiveState& s, Input& in) {
         if (in.Flag()) s.circle2 = TCircle2<T>();
         const TCircle2<T> before = s.circle2;
         const bool isHolding = before.Contains(s.flat, s.flat.GetCount(), Numbers::commonTolerance<T>);
         s.circle2.MinimumBoundingCircle(s.flat);
         if (isHolding) Require(AreSameScalars<T>(before, s.circle2));
     }},
    {"TCircle3",
     [](PrimitiveState& s, Input& in) { s.circle3 = TCircle3<T>(in.Scalar<T>(), s.Point3(in), s.Point3(in)); }},
    {"TCircle3::Fit",
     [](PrimitiveState& s, Input& in) {
         const Vector3 a = s.Point3(in), b = s.Point3(in);
         static_cast<void>(s.circle3.Fit(a, b, s.Point3(in), DecodeTolerance<T>(in)));
     }},
    {"TCircle3::Fit to the cloud",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         const unsigned int iterations = in.Below(16);
         s.FitCloud(in, [&](T* spread, T* squares) { static_cast<void>(s.circle3.Fit(s.cloud, spread, squares, tolerance, iterations)); });
     }},
    {"TCircle3 and TLine3",
     [](PrimitiveState& s, Input&) {
         Ask([&](Hits& h) { return s.circle3.IntersectWith(s.line3, &h.p1); });
     }},

    // Solids and spirals.
    {"TSphere",
     [](PrimitiveState& s, Input& in) {
         switch (in.Below(4)) {
         case 0:
             s.sphere = TSphere<T>();
             break;
         case 1:
             s.sphere = TSphere<T>(in.Scalar<T>());
             break;
         case 2:
             s.sphere = TSphere<T>(in.Scalar<T>(), s.Point3(in));
             break;
         default:
             s.sphere = TSphere<T>(in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>(), in.Scalar<T>());
         }
     }},
    {"TSphere::Fit",
     [](PrimitiveState& s, Input& in) {
         const unsigned int iterations = in.Below(16);
         s.FitCloud(in, [&](T* spread, T*) {
             const TVector4<T> before = s.sphere.sphere;
             const bool isFitted = s.sphere.Fit(s.cloud, spread, iterations);
             if (!isFitted && s.cloud.GetCount() == 4) Require(AreSameScalars<T>(before, s.sphere.sphere));
         });
     }},
    {"TSphere and TLine3",
     [](PrimitiveState& s, Input& in) {
         const T tolerance = DecodeTolerance<T>(in);
         s.Take(AskBoth([&](Hits& h) { return s.sphere.IntersectWith(s.line3, &h.p1, &h.p2, tolerance); },
                        [&](Hits& h) { return s.line3.IntersectWith(s.sphere, &h.p1, &h.p2, tolerance); }));
     }},
    {"TCone",
     [](PrimitiveState& s, Input& in) {
         const T radius = in.Scalar<T>(), height = in.Scalar<T>();
         const Vector3 tip = s.Point3(in), along = s.Point3(in);
         s.cone = TCone<T>(radius, height, tip, along);
         Require(AreSameScalars<T>(s.cone, TCone<T>(radius, height, tip.x, tip.y, tip.z, along.x, along.y, along.z)));
         if (in.Flag()) s.cone = TCone<T>(radius, height);
     }},
    {"TCone and TLine3",
     [](PrimitiveState& s, Input& in) {
         s.Take(Ask([&](Hits& h) { return s.cone.IntersectWith(s.line3, &h.p1, &h.p2); }));
         // The outputs may be parts of the cone.
         if (in.Flag()) static_cast<void>(s.cone.IntersectWith(s.line3, &s.cone.apex, &s.cone.axis));
     }},
    {"TCylinder",
     [](PrimitiveState& s, Input& in) {
         const T radius = in.Scalar<T>(), height = in.Scalar<T>();
         const Vector3 middle = s.Point3(in), along = s.Point3(in);
         s.cylinder = TCylinder<T>(radius, height, middle, along);
         const TCylinder<T> same(radius, height, middle.x, middle.y, middle.z, along.x, along.y, along.z);
         Require(AreSameScalars<T>(s.cylinder.centre, same.centre) && AreSameScalars<T>(s.cylinder.axis, same.axis));
         if (in.Flag()) s.cylinder = TCylinder<T>(radius, height);
     }},
    {"TCylinder and TLine3",
     [](PrimitiveState& s, Input& in) {
         const bool isInfinite = in.Flag();
         s.Take(Ask([&](Hits& h) { return s.cylinder.IntersectWith(s.line3, &h.p1, &h.p2, isInfinite); }));
         if (in.Flag()) static_cast<void>(s.cylinder.IntersectWith(s.line3, &s.cylinder.centre, &s.cylinder.axis, isInfinite));
     }},
    {"TSpiral3",
     [](PrimitiveState& s, Input& in) {
         const int count = static_cast<int>(in.Below(60)) - 3;
         TSpiral3<T> spiral(s.Point3(in), s.Point3(in), in.Scalar<T>(), count, in.Scalar<T>(), in.Scalar<T>());
         Require(spiral.points.GetCount() == static_cast<unsigned int>(count < 1 ? 1 : count));
         const TSpiral3<T> copy(spiral);
         Require(AreSamePoints<T, TVector3>(Copy<T, TVector3>(copy.points), Copy<T, TVector3>(spiral.points)));
         s.cloud = Cloud(spiral.points.GetStream(), spiral.points.GetCount());
         spiral = copy;
         Require(spiral.points.GetCount() == copy.points.GetCount());
     }},
};

} // namespace
} // namespace CorvexFuzz

using namespace CorvexFuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return RunOneOf<PrimitiveState<float>, PrimitiveState<double>>(data, size);
}

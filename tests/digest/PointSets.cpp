// Point sets and parameterised lines.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

/// Shows the protected members of a point set.
template <class T, template <class> class V>
struct OpenSet : TPointSet<T, V>
{
    using Base = TPointSet<T, V>;
    using Base::Base, Base::keepBox;
    explicit OpenSet(const Base& other) : Base(other) {}
};

template <class T, template <class> class V>
void AddCore(Report& report, const std::string& name)
{
    using Set = OpenSet<T, V>;
    using Vector = V<T>;
    const std::vector<Set> sets = MakeShapes<Set, T, V>(allShapes, {0, 1, 2, 3, 7, 40});
    const std::vector<Vector> points = AnyPoints<Vector>(12, 31);

    const auto singles = report.Over(sets);
    singles.Add(name + "conversions", [](Digest& d, Set& set) {
        const TPointSet<T, V>& base = set;
        const TPointSet<T, TVector2> plane(base);
        const TPointSet<T, TVector3> space(base);
        const TPointSet<T, TVector4> four(base);
        d << base << plane << space << four << TPointSet<T, V>(plane)
          << TPointSet<T, V>(set.GetStream(), set.GetCount());
        TPointSet<T, V> assigned(3, 2);
        assigned.Add(Vector());
        assigned = set;
        d << assigned << set.GetCentre();
        TMatrixMxN<T> matrix, centred;
        set.ToMatrix(&matrix);
        d << set.ToTransToCentMatrix(&centred) << matrix << centred;
    });
    singles.Add(name + "changes", [&](Digest& d, Set& set) {
        Random random(32);
        for (unsigned int step = 0; step < 12; ++step) {
            const unsigned int count = set.GetCount(), index = random.Below(count + 1);
            set.keepBox = random.Below(4) != 0;
            switch (step % 6) {
            case 0:
                set.Add(points[step]);
                break;
            case 1:
                step < 6 ? set.AddRange(set) : set.AddRange(points.data(), 3);
                break;
            case 2:
                set.Insert(points[step], index);
                break;
            case 3:
                set.RemoveAt(index % count, random.Below(2) == 0);
                break;
            case 4:
                set.RemoveFromFront(1);
                break;
            default:
                set.Remove(points[step - 1]);
            }
            d << static_cast<const TPointSet<T, V>&>(set);
            if (step == 8) set.RecalculateBoundingBox();
        }
        set.Clear();
        d << static_cast<const TPointSet<T, V>&>(set);
    });
    report.Over(sets, points).Add(name + "operator+=", [](Digest& d, Set& set, Vector& p) {
        d << (set += p) << (set -= p) << (set *= p.x);
    });
    std::vector<TMatrixMxN<T>> matrices;
    for (const Kind kind : allKinds) matrices.push_back(MakeMatrix<T>(kind, 5, 5));
    // The products come in runs of points, the last of which are asked for ahead.
    report.Over(sets + MakeShapes<Set, T, V>({Shape::Wild}, {700}), matrices)
        .Add(name + "operator*=(matrix)", [](Digest& d, Set& set, TMatrixMxN<T>& m) {
            d << (set *= static_cast<TMatrix2x2<T>>(m)) << (set *= static_cast<TMatrix3x3<T>>(m));
            d << (set *= static_cast<TMatrix4x4<T>>(m)) << (set *= m);
        });
    report.Over(sets, points).Add(name + "WithinRectangle", [](Digest& d, Set& set, Vector& axis) {
        d << set.WithinRectangle(TVector2<T>(-1, -1), TVector2<T>(1, 0), axis, T(4), T(3));
    });
    const std::vector<Set> few = MakeShapes<Set, T, V>(finiteShapes, {0, 1, 3, 30});
    report.Over(sets).Add(name + "Register(moved)", [](Digest& d, Set& set) {
        TMatrix3x3<T> motion(T(0.6), T(-0.8), T(0), T(0.8), T(0.6), T(0), T(1), T(2), T(1));
        for (const bool apply : {false, true}) {
            Set moved(set);
            moved *= motion;
            moved *= T(0.9921875);
            TMatrixMxN<T> rotation;
            Vector translation;
            d << set.Register(&moved, &rotation, &translation, apply) << rotation << translation << moved << set;
        }
    });
    report.Over(few, few).Add(name + "Register", [](Digest& d, Set& a, Set& b) {
        TMatrixMxN<T> rotation;
        Vector translation;
        d << a.Register(&b, &rotation, &translation, true) << rotation << translation << a << b;
    });
}

template <class T, template <class> class V>
void AddShaping(Report& report, const std::string& name)
{
    using Set = TPointSet<T, V>;
    using Vector = V<T>;
    const std::vector<Set> sets = MakeShapes<Set, T, V>(allShapes, {0, 1, 2, 3, 7, 40});
    const std::vector<Set> finite = MakeShapes<Set, T, V>(finiteShapes, {0, 1, 2, 3, 7, 40});
    const std::vector<bool> flags = {false, true};
    const std::vector<unsigned int> passes = {0, 1, 5};
    const std::vector<T> spacings = {T(0.3), T(1), T(50)};

    report.Over(sets, passes, flags).Add(name + "Smooth", [](Digest& d, Set& set, unsigned int n, bool closed) {
        set.Smooth(n, closed);
        d << set;
    });
    report.Over(finite, spacings, flags).Add(name + "Infill", [](Digest& d, Set& set, T spacing, bool closed) {
        set.Infill(spacing, closed);
        d << set;
    });
    const std::vector<Set> few = MakeShapes<Set, T, V>(allShapes, {0, 1, 6});
    const auto pairs = report.Over(few, few);
    pairs.Add(name + "MinkowskiSum", [](Digest& d, Set& a, Set& b) {
        Set lists, streams, inPlace(a);
        lists.MinkowskiSum(a, b);
        streams.MinkowskiSum(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
        inPlace.MinkowskiSum(b.GetStream(), b.GetCount());
        d << lists << streams << inPlace;
        a.MinkowskiSum(b);
        d << a;
    });
    pairs.Add(name + "MinkowskiDifference", [](Digest& d, Set& a, Set& b) {
        Set lists, streams, inPlace(a);
        lists.MinkowskiDifference(a, b);
        streams.MinkowskiDifference(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
        inPlace.MinkowskiDifference(b.GetStream(), b.GetCount());
        d << lists << streams << inPlace;
        a.MinkowskiDifference(b);
        d << a;
    });

    // Where ties are decided: at vertices, on sides, level with vertices.
    std::vector<TVector2<T>> places = AnyPoints<TVector2<T>>(20, 33);
    for (const TVector2<T>& p :
         {TVector2<T>(0, 0), TVector2<T>(-10, 0), TVector2<T>(2, 2), TVector2<T>(1, 4), TVector2<T>(1, -3)})
        places.push_back(p);
    report.Over(sets, places).Add(name + "IsWithin", [](Digest& d, Set& set, TVector2<T>& p) {
        const unsigned int count = set.GetCount();
        d << set.IsWithin(p) << set.IsWithin(p.x, p.y) << set.IsWithin(p, count / 3, count - count / 3);
        d << set.IsWithin(p.x, p.y, 0, count / 2);
        int crossings = 3;
        for (unsigned int i = 1; i < count; ++i) set.ExamineSegment(i - 1, i, p, &crossings);
        d << crossings;
    });
    report.Over(sets, places, places)
        .Add(name + "IntersectWith", [](Digest& d, Set& set, TVector2<T>& p, TVector2<T>& q) {
            TEdge2<T> edge(p, q);
            TList<Vector> points(0, 3);
            d << set.IntersectWith(edge, &points) << points;
        });

    using Line = TParameterization<T, V>;
    const std::vector<T> positions = {T(-1),  T(0), T(0.25), T(1) / 3,
                                      T(0.5), T(1), T(2),    std::numeric_limits<T>::quiet_NaN()};
    report.Over(sets, positions, positions)
        .Add(NameOf<T, V>("TParameterization") + "::all", [](Digest& d, Set& set, T from, T to) {
            Line line(set);
            const bool within = from >= T(0) && from <= T(1) && to >= T(0) && to <= T(1);
            const auto take = [&] {
                d << line << line.GetLength();
                if (line.GetCount() > 0) d << line.Evaluate(from);
                if (within || from == to) d << line.GetLength(from, to);
            };
            take();
            line.Parameterize();
            take();
            Line copy(line), assigned(2, 2);
            assigned = copy;
            d << copy << assigned << Line(set.GetStream(), set.GetCount());
            // Positions outlive their points.
            line.RemoveFromEnd(set.GetCount() / 2);
            take();
        });
    report.Over(sets).Add(NameOf<T, V>("TParameterization") + "::conversions", [](Digest& d, Set& set) {
        d << Line(TPointSet<T, TVector2>(set)) << Line(TPointSet<T, TVector3>(set))
          << Line(TPointSet<T, TVector4>(set));
    });
}

} // namespace

void DigestPointSets(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddCore<T, TVector2>(report, NameOf<T, TVector2>("TPointSet") + "::");
        AddCore<T, TVector3>(report, NameOf<T, TVector3>("TPointSet") + "::");
        AddCore<T, TVector4>(report, NameOf<T, TVector4>("TPointSet") + "::");
        AddShaping<T, TVector2>(report, NameOf<T, TVector2>("TPointSet") + "::");
        AddShaping<T, TVector3>(report, NameOf<T, TVector3>("TPointSet") + "::");
        AddShaping<T, TVector4>(report, NameOf<T, TVector4>("TPointSet") + "::");
    });
}

} // namespace CorvexDigest

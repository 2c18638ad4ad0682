// What several threads may do at once, for the thread sanitizer: call const members of one object, make and release
// copies of what shares without counting on one thread, and run every operation of the catalogue on objects of their
// own. Every thread must get the answers that one alone gets.

#include <tests/catalogue/Operations.h>

#include <CorvexMaths/robust/Robust.h>

#include <atomic>
#include <cstdio>
#include <functional>
#include <thread>

using namespace CorvexCatalogue;

namespace
{

constexpr unsigned int threadCount = 4;

/// Asks an object that all threads share.
using Question = std::function<void(Sink& out)>;
std::vector<Question> questions;

/// Adds a question about const objects, which live as long as the question.
template <class Ask, class... Objects>
void AddQuestion(Ask ask, Objects... objects)
{
    const auto shared = std::make_shared<const std::tuple<Objects...>>(std::move(objects)...);
    questions.push_back(
        [ask, shared](Sink& out) { std::apply([&](const auto&... object) { ask(out, object...); }, *shared); });
}

template <class T>
void AskAboutPrimitives()
{
    const TVector3<T> a(1, 2, 3), b(-2, 1, 4), c(3, -1, T(0.5));
    const auto ask = [](Sink& out, const TLine3<T>& line, const TEdge3<T>& edge, const TPlane<T>& plane,
                        const TTriangle3<T>& triangle, const TSphere<T>& sphere) {
        TVector3<T> p(0, 0, 0), q(0, 0, 0);
        T distance(0);
        const T tolerance = Numbers::commonTolerance<T>;
        out << line.Evaluate(T(2)) << line.DistanceToPoint(p, tolerance) << edge.GetClosestPoint(p);
        out << plane.IntersectWith(line, &p, tolerance) << sphere.IntersectWith(line, &p, &q, tolerance) << p << q;
        out << triangle.IntersectWith(line, &p, &distance, tolerance) << triangle.DistanceToPoint(q, tolerance);
    };
    AddQuestion(ask, TLine3<T>(a, b), TEdge3<T>(b, c), TPlane<T>(a, b), TTriangle3<T>(a, b, c), TSphere<T>());
}

template <class T>
void AskAboutMatrices()
{
    Source in(7);
    const auto ask = [](Sink& out, const TMatrixMxN<T>& a, const TMatrix4x4<T>& fixed) {
        TMatrixMxN<T> u, w, v, inverse, lu;
        std::vector<int> pivots(a.GetM());
        T parity = T(0);
        out << a * a << -a << a + a << a * T(3) << a.Determinant() << (a == a) << static_cast<TMatrix3x3<T>>(a);
        out << a.SVD(&u, &w, &v, 30) << w << a.Invert(&inverse) << inverse << a.LUD(&lu, pivots.data(), &parity) << lu;
        out << fixed * fixed << fixed.Determinant() << fixed * TVector4<T>(1, 2, 3, 4) << TMatrixMxN<T>(a);
    };
    TMatrix4x4<T> fixed;
    fixed = DrawMatrix<T>(in, 4, 4);
    AddQuestion(ask, DrawMatrix<T>(in, 40, 40), fixed);

    const auto askSparse = [](Sink& out, const TCRSMatrixMxN<T>& a, const TCCSMatrixMxN<T>& columns) {
        TCRSMatrixMxN<T> product, normal, transposed;
        std::vector<T> x(30, T(2)), y(30);
        a.Multiply(x.data(), y.data());
        a.Multiply(a, &product);
        a.Normalise(columns, &normal);
        a.Transpose(&transposed);
        out << a << columns << y << product << normal << transposed;
    };
    TCCSMatrixMxN<T> columns(30, 4);
    for (int i = 0; i < 30; ++i)
        for (int k = i % 3; k < 30; k += 3) columns.AddElement(in.Unit<T>(), k, i);
    TCRSMatrixMxN<T> rows;
    rows.TransposeFrom(columns);
    AddQuestion(askSparse, rows, columns);
}

template <class T, template <class> class V>
void AskAboutPoints()
{
    using Set = TPointSet<T, V>;
    Source in(11);
    const std::vector<V<T>> drawn = DrawPoints<T, V>(in, Shape::Round, 90);
    const Set points(drawn.data(), 90);
    TParameterization<T, V> line(points);
    line.Parameterize();
    const auto ask = [](Sink& out, const Set& set, const TParameterization<T, V>& positions,
                        const TPolygon<T, V>& polygon, const TOutlineIndex<T>& index, const TBSpline<T, V>& spline) {
        const TVector2<T> point(set[3].x, set[7].y);
        TList<V<T>> hits(0, 8), copy(set);
        TList<TEdge2<T>> edges(0, 8);
        TMatrixMxN<T> matrix;
        polygon.GetEdges(&edges);
        set.ToMatrix(&matrix);
        out << set << set.GetCentre() << set.IsWithin(point) << set.IntersectWith(edges[5], &hits) << hits << matrix;
        out << set.Search(set[40]) << copy << positions.Evaluate(T(0.3)) << positions.GetLength(T(0), T(0.7));
        out << polygon.GetSimpleArea() << polygon.GetWindingAngle() << polygon.GetOpenConvexBoundary({0, 0, 1});
        const TOutlineIndex<T> shared(index);
        TOutlineIndex<T> assigned(set);
        assigned = shared;
        out << index.IsWithin(point) << assigned.IsWithin(point) << spline.GetOrder();
        // Evaluation writes to its spline: each thread has a copy.
        TBSpline<T, V> own(spline);
        out << own.Evaluate(T(0.4)) << own.GetLength(T(0.1));
        TPolygon<T, V> changed(polygon);
        out << changed.Offset(T(-0.5), T(0)) << changed << Robust::ConvexHull<T, V>(set).polygon;
        const Robust::SplineLength<T, V> length(spline);
        out << length.Sample(5) << Robust::ClosestPoint<T, V>(spline, set[9]).point;
    };
    AddQuestion(ask, points, line, TPolygon<T, V>(points), TOutlineIndex<T>(points),
                TBSpline<T, V>(points, 4, Clamped));
}

template <class T>
void AskAboutAll()
{
    AskAboutPrimitives<T>();
    AskAboutMatrices<T>();
    AskAboutPoints<T, TVector2>();
    AskAboutPoints<T, TVector3>();
    AskAboutPoints<T, TVector4>();
}

std::uint64_t AskAll()
{
    Sink sink;
    for (const Question& question : questions) question(sink);
    return sink.Get();
}

/// Runs all operations, each on a few states of its own.
std::uint64_t RunAll()
{
    Sink sink;
    for (const Instance& instance : GetCatalogue())
        for (std::size_t i = 0; i < 4 * instance.operations.size(); ++i)
            RunAlone(instance, instance.operations[i / 4], i, sink);
    return sink.Get();
}

/// Lets threads start together and holds what each answers against what one alone does.
bool AgreeInThreads(std::uint64_t (*answer)())
{
    const std::uint64_t expected = answer();
    std::atomic<unsigned int> waiting{threadCount}, wrong{0};
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] {
            --waiting;
            while (waiting != 0) std::this_thread::yield();
            if (answer() != expected) ++wrong;
        });
    for (std::thread& thread : threads) thread.join();
    return wrong == 0;
}

} // namespace

int main()
{
    running = "an operation in several threads";
    AskAboutAll<float>();
    AskAboutAll<double>();
    const bool isShared = AgreeInThreads(&AskAll);
    const bool isApart = AgreeInThreads(&RunAll);
    std::printf("one object in %u threads: %s; objects of their own: %s\n", threadCount,
                isShared ? "the same" : "WRONG", isApart ? "the same" : "WRONG");
    return isShared && isApart ? 0 : 1;
}

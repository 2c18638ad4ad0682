// Vectors, complex numbers and quaternions.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

/// What the vectors of every dimension have in common.
template <class T, template <class> class V>
void AddShared(Report& report, const std::string& type)
{
    using Vector = V<T>;
    const std::string name = type + "::";
    const std::vector<Vector> points = AnyPoints<Vector>(60);
    const std::vector<T> scalars = AllScalars<T>(), tolerances = FiniteScalars<T>();

    const auto singles = report.Over(points);
    singles.Add(name + "constructors", [](Digest& d, Vector& a) { d << Vector(static_cast<T*>(a)) << Vector(); });
    singles.Add(name + "conversions", [](Digest& d, Vector& a) {
        d << static_cast<TVector2<T>>(a) << static_cast<TVector3<T>>(a) << static_cast<TVector4<T>>(a);
    });
    singles.Add(name + "GetLength", [](Digest& d, Vector& a) { d << a.GetLength() << a.GetLengthSquared(); });

    const auto pairs = report.Over(points, points);
    pairs.Add(name + "operator+", [](Digest& d, Vector& a, Vector& b) { d << (a + b) << (a += b) << (a += Same(a)); });
    pairs.Add(name + "operator-",
              [](Digest& d, Vector& a, Vector& b) { d << (a - b) << -a << (a -= b) << (a -= Same(a)); });
    pairs.Add(name + "operator%", [](Digest& d, Vector& a, Vector& b) { d << (a % b); });
    pairs.Add(name + "operator^", [](Digest& d, Vector& a, Vector& b) { d << (a ^ b); });
    pairs.Add(name + "comparisons", [](Digest& d, Vector& a, Vector& b) {
        d << (a == b) << (a != b) << (a < b) << (a > b) << (a == Same(a)) << (a < Same(a));
    });
    pairs.Add(name + "DiffVectLen",
              [](Digest& d, Vector& a, Vector& b) { d << a.DiffVectLen(b) << a.DiffVectLenSquared(b); });

    const auto scaled = report.Over(points, scalars);
    scaled.Add(name + "operator*(T)", [](Digest& d, Vector& a, T s) { d << (a * s) << (a *= s) << (a *= a[0]); });
    scaled.Add(name + "operator/(T)", [](Digest& d, Vector& a, T s) { d << (a / s) << (a /= s) << (a /= a[0]); });
    scaled.Add(name + "Normalise", [](Digest& d, Vector& a, T s) {
        a *= s;
        a.Normalise();
        d << a;
    });

    const auto near = report.Over(points, points, tolerances);
    near.Add(name + "IsEqualTo", [](Digest& d, Vector& a, Vector& b, T s) {
        d << a.IsEqualTo(b, s) << a.IsEqualTo(a + b * s, s) << a.IsEqualTo(a, s);
    });
    near.Add(name + "IsParallelTo", [](Digest& d, Vector& a, Vector& b, T s) {
        d << a.IsParallelTo(b, s) << a.IsParallelTo(a * T(2) + b * s, s) << a.IsParallelTo(a, s);
    });
    near.Add(name + "IsOrthogonalTo", [](Digest& d, Vector& a, Vector& b, T s) {
        d << a.IsOrthogonalTo(b, s) << a.IsOrthogonalTo(b - a * ((a % b) / (a % a)), s);
    });

    std::vector<TMatrixMxN<T>> matrices;
    for (const Kind kind : allKinds) matrices.push_back(MakeMatrix<T>(kind, 4, 4));
    report.Over(points, matrices).Add(name + "operator*(matrix)", [](Digest& d, Vector& a, TMatrixMxN<T>& m) {
        const TMatrix2x2<T> m2 = m;
        const TMatrix3x3<T> m3 = m;
        const TMatrix4x4<T> m4 = m;
        Vector b = a, c = a, e = a;
        d << a * m2 << a * m3 << a * m4 << a * m << (a *= m2) << (b *= m3) << (c *= m4) << (e *= m);
    });
}

template <class T>
void AddPlane(Report& report)
{
    using V = TVector2<T>;
    const std::string name = NameOf<T>("TVector2") + "::";
    const std::vector<V> points = AnyPoints<V>(60) + GridPoints<V>();

    const auto singles = report.Over(points);
    singles.AddTrigonometric(name + "Angle", [](Digest& d, V& a) { d << a.Angle(); });
    singles.Add(name + "Orthonormal", [](Digest& d, V& a) {
        V out;
        a.Orthonormal(&out);
        a.Orthonormal(&a);
        d << out << a;
    });
    const auto pairs = report.Over(points, points);
    pairs.Add(name + "SignedArea", [](Digest& d, V& a, V& b) { d << a.SignedArea(b); });
    pairs.AddTrigonometric(name + "AngleWith", [](Digest& d, V& a, V& b) { d << a.AngleWith(b); });
}

template <class T>
void AddSpace(Report& report)
{
    using V = TVector3<T>;
    const std::string name = NameOf<T>("TVector3") + "::";
    const std::vector<V> points = AnyPoints<V>(60) + GridPoints<V>(), few = FinitePoints<V>(20);
    const std::vector<T> scalars = FiniteScalars<T>();

    report.Over(points).Add(name + "OrthonormalX", [](Digest& d, V& a) {
        V x, y;
        a.OrthonormalX(&x);
        d << x;
        a.OrthonormalXY(&x, &y);
        d << x << y << a;
    });
    const auto pairs = report.Over(points, points);
    pairs.Add(name + "operator*(vector)", [](Digest& d, V& a, V& b) { d << a * b << (a *= b) << (a *= Same(a)); });
    pairs.Add(name + "DiffVectLen2D", [](Digest& d, V& a, V& b) { d << a.DiffVectLen2D(b); });
    report.Over(points, few, few).AddTrigonometric(name + "AngleWith", [](Digest& d, V& a, V& b, V& axis) {
        d << a.AngleWith(b, axis) << a.AngleWith(b, a * b);
    });
    const auto turned = report.Over(few, points, scalars);
    turned.Add(name + "Rotate(cosine,sine)", [](Digest& d, V& a, V& b, T s) {
        a.Normalise();
        a.Rotate(&b, s, T(0.75));
        d << a << b;
    });
    turned.AddTrigonometric(name + "Rotate(angle)", [](Digest& d, V& a, V& b, T s) {
        a.Normalise();
        a.Rotate(&b, s * 3);
        d << a << b;
    });

    using W = TVector4<T>;
    const std::vector<W> vectors = AnyPoints<W>(60) + GridPoints<W>();
    report.Over(vectors).Add(NameOf<T>("TVector4") + "::OrthonormalXYZ", [](Digest& d, W& a) {
        W x(1, 2, 3, 4), y = x, z = x;
        d << a.OrthonormalXYZ(&x, &y, &z) << x << y << z << a;
    });
}

template <class C, class T>
void AddHypercomplex(Report& report, const std::string& name, const std::vector<C>& numbers)
{
    const auto pairs = report.Over(numbers, numbers);
    pairs.Add(name + "operator+", [](Digest& d, C& a, C& b) { d << (a + b) << (a += b) << (a += Same(a)); });
    pairs.Add(name + "operator-", [](Digest& d, C& a, C& b) { d << (a - b) << -a << (a -= b) << (a -= Same(a)); });
    pairs.Add(name + "operator*", [](Digest& d, C& a, C& b) { d << a * b << (a *= b) << (a *= Same(a)); });
    const std::vector<T> scalars = AllScalars<T>();
    report.Over(numbers, scalars).Add(name + "scalars", [](Digest& d, C& a, T s) {
        d << (a + s) << (a - s) << a * s << a / s << (a += s) << (a -= s) << (a *= s) << (a /= s);
        const C constant = a;
        d << (a *= a[0]) << (a /= a[1]) << C() << constant[1] << *static_cast<const T*>(constant);
    });
}

template <class T>
void AddRotations(Report& report)
{
    using C = TComplex<T>;
    using Q = TQuaternion<T>;
    using V = TVector3<T>;
    std::vector<C> complex;
    std::vector<Q> quaternions;
    for (TVector4<T> p : AnyPoints<TVector4<T>>(60) + GridPoints<TVector4<T>>()) {
        complex.push_back(C(p.x, p.y));
        quaternions.push_back(Q(p.w, p.x, p.y, p.z));
        p.Normalise();
        quaternions.push_back(Q(p.w, p.x, p.y, p.z));
    }
    std::string name = NameOf<T>("TComplex") + "::";
    AddHypercomplex<C, T>(report, name, complex);
    report.Over(complex, complex).Add(name + "operator/", [](Digest& d, C& a, C& b) {
        d << a / b << (a /= b) << (a /= Same(a));
    });

    name = NameOf<T>("TQuaternion") + "::";
    AddHypercomplex<Q, T>(report, name, quaternions);
    const auto singles = report.Over(quaternions);
    singles.Add(name + "Conjugate", [](Digest& d, Q& a) {
        a.Conjugate();
        d << a;
    });
    singles.Add(name + "ToMatrix", [](Digest& d, Q& a) { d << a.ToMatrix(); });
    singles.Add(name + "TQuaternion(matrix)", [](Digest& d, Q& a) {
        TMatrix3x3<T> matrix = a.ToMatrix();
        d << Q(matrix) << matrix;
    });
    singles.AddTrigonometric(name + "GetRotation", [](Digest& d, Q& a) {
        T angle = 7;
        V axis(1, 2, 3);
        a.GetRotation(&angle, &axis);
        d << angle << axis;
    });
    const std::vector<V> axes = AnyPoints<V>(60);
    const std::vector<T> angles = FiniteScalars<T>();
    report.Over(axes, angles).AddTrigonometric(name + "TQuaternion(angle,axis)", [](Digest& d, V& axis, T angle) {
        d << Q(angle * 3, axis);
    });
}

} // namespace

void DigestVectors(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddShared<T, TVector2>(report, NameOf<T>("TVector2"));
        AddShared<T, TVector3>(report, NameOf<T>("TVector3"));
        AddShared<T, TVector4>(report, NameOf<T>("TVector4"));
        AddPlane<T>(report);
        AddSpace<T>(report);
        AddRotations<T>(report);
    });
}

} // namespace CorvexDigest

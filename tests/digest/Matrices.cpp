// Dense matrices: those of a fixed order, those of any size, and the transforms they build.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

/// What a decomposition and the two solvers on it leave behind, for fixed matrices and those of any size.
template <class T, class Matrix>
void TakeSolutions(Digest& d, Matrix& a)
{
    const unsigned int n = a.GetM();
    std::vector<int> pivots(n + 1, 7);
    std::vector<T> b(n + 1, T(1)), x(n + 1, T(3));
    for (unsigned int i = 0; i < n; ++i) b[i] = a[i][0] * 2 - static_cast<T>(i);
    Matrix lu = a, inverse = a;
    T parity = 5;
    const bool solved = a.LUD(&lu, pivots.data(), &parity);
    d << solved << parity << lu;
    if (solved) {
        d.TakeArray(pivots.data(), n);
        Matrix::BackSub(lu, pivots.data(), b.data(), x.data());
        Matrix::BackSub(lu, pivots.data(), b.data(), b.data());
        d.TakeArray(x.data(), n);
        d.TakeArray(b.data(), n);
    }
    d << a.Invert(&inverse) << inverse << a.Determinant();
    d << a.Invert() << a;
}

template <class Matrix>
void TakeSingularValues(Digest& d, Matrix& a)
{
    for (const unsigned int limit : {30u, 2u, 0u}) {
        Matrix u = a, w = a, v = a;
        d << a.SVD(&u, &w, &v, limit) << u << w << v;
    }
    Matrix w = a, v = a;
    d << a.SVD(&a, &w, &v, 30) << a << w << v;
}

/// A fixed matrix as the upper left block of one of any size.
template <class Matrix, class T>
std::vector<Matrix> FixedMatrices(unsigned int order)
{
    std::vector<Matrix> matrices;
    for (const Kind kind : allKinds)
        for (std::uint64_t seed = 0; seed < 6; ++seed) matrices.push_back(MakeMatrix<T>(kind, order, order, seed));
    matrices.push_back(Matrix());
    return matrices;
}

template <class Matrix, class Vector, class T>
void AddFixed(Report& report, const std::string& type)
{
    const std::string name = type + "::";
    const unsigned int order = Matrix().GetM();
    const std::vector<Matrix> matrices = FixedMatrices<Matrix, T>(order);

    const auto singles = report.Over(matrices);
    singles.Add(name + "changes", [](Digest& d, Matrix& a) {
        T* rows[4];
        a.GetRows(rows);
        rows[0][1] += T(1);
        d << Matrix(static_cast<const T*>(a[0])) << -a << static_cast<TMatrix2x2<T>>(a);
        d << static_cast<TMatrix3x3<T>>(a) << static_cast<TMatrix4x4<T>>(a);
        a.Transpose();
        d << a;
        a.ToNull();
        d << a;
        a.ToIdentity();
        d << a;
    });
    singles.Add(name + "LUD", TakeSolutions<T, Matrix>);
    singles.Add(name + "SVD", TakeSingularValues<Matrix>);
    singles.Add(name + "Eigenspace", [](Digest& d, Matrix& a) {
        T values[4] = {7, 7, 7, 7};
        Vector vectors[4];
        for (Vector& vector : vectors) vector = FinitePoints<Vector>(1)[0];
        d << a.Eigenspace(values, vectors);
        d.TakeArray(values, 4);
        d.TakeArray(vectors, 4);
    });

    const auto pairs = report.Over(matrices, matrices);
    pairs.Add(name + "sums", [](Digest& d, Matrix& a, Matrix& b) {
        d << (a + b) << (a - b) << (a == b) << (a != b) << (a += b) << (a -= b) << (a -= Same(a));
    });
    pairs.Add(name + "products", [](Digest& d, Matrix& a, Matrix& b) {
        TMatrixMxN<T> wide = MakeMatrix<T>(Kind::Random, a.GetM(), 7);
        d << a * b << a * wide << (a *= b) << (a *= Same(a)) << (b *= wide);
    });
    const std::vector<T> scalars = AllScalars<T>();
    report.Over(matrices, scalars).Add(name + "scalars", [](Digest& d, Matrix& a, T s) {
        d << a * s << a / s << (a *= s) << (a /= s) << (a *= a[0][0]) << (a /= a[0][1]);
    });
    const std::vector<TVector4<T>> points = AnyPoints<TVector4<T>>(30);
    report.Over(matrices, points).Add(name + "operator*(vector)", [](Digest& d, Matrix& a, TVector4<T>& p) {
        d << a * static_cast<TVector2<T>>(p) << a * static_cast<TVector3<T>>(p) << a * p;
    });
}

template <class T>
void AddConstructors(Report& report)
{
    const std::vector<TVector4<T>> points = AnyPoints<TVector4<T>>(8);
    report.Over(points, points).Add(NameOf<T>("TMatrix") + "::columns", [](Digest& d, TVector4<T>& a, TVector4<T>& b) {
        const TVector3<T> a3 = a, b3 = b;
        const TVector2<T> a2 = a, b2 = b;
        d << TMatrix2x2<T>(a2, b2) << TMatrix3x3<T>(a3, b3, a3 * b3) << TMatrix4x4<T>(a, b, a + b, a - b);
        d << TMatrix2x2<T>(a.x, a.y, b.x, b.y) << TMatrix3x3<T>(a.x, a.y, a.z, b.x, b.y, b.z, a.w, b.w, T(1));
        d << (TMatrix4x4<T>() < TMatrix4x4<T>()) << (TMatrix4x4<T>() > TMatrix4x4<T>());
        TMatrix4x4<T> c(a.x, a.y, a.z, a.w, b.x, b.y, b.z, b.w, T(1), T(2), T(3), T(4), T(5), T(6), T(7), T(8));
        d << c;
    });
}

/// The transforms of both sizes, on either side, of rows and of columns.
template <class T, class Matrix>
void AddTransforms(Report& report, const std::string& type)
{
    using V = TVector3<T>;
    const std::string name = type + "::";
    const std::vector<Matrix> matrices = FixedMatrices<Matrix, T>(Matrix().GetM());
    const std::vector<V> axes = FinitePoints<V>(6);
    const std::vector<bool> flags = {false, true};
    const std::vector<T> angles = {T(0), T(0.5), T(-2), T(100)};

    const auto scaled = report.Over(matrices, axes, flags, flags);
    scaled.Add(name + "Scale", [](Digest& d, Matrix& a, V& p, bool onRight, bool asRows) {
        a.Scale(p.x, p.y, p.z, onRight, asRows);
        d << a;
        if constexpr (std::is_same_v<Matrix, TMatrix4x4<T>>) {
            a.Scale(p, T(2), p.y, T(-1), onRight, asRows);
            d << a;
            a.Translate(p, onRight, asRows);
            d << a;
        } else {
            a.Multiply(&Same(a), onRight, asRows);
            d << a;
            a.ToOrthonormal();
            d << a;
        }
    });
    const auto turned = report.Over(matrices, angles, axes, flags, flags);
    turned.AddTrigonometric(name + "Rotate", [](Digest& d, Matrix& a, T angle, V& axis, bool onRight, bool asRows) {
        a.Rotate(angle, axis, onRight, asRows);
        d << a;
        if constexpr (std::is_same_v<Matrix, TMatrix4x4<T>>) {
            a.Rotate(angle, axis, V(1, 2, 3), onRight, asRows);
            d << a;
        }
    });
}

template <class T>
std::vector<TMatrixMxN<T>> DenseMatrices(const std::vector<std::pair<unsigned int, unsigned int>>& sizes)
{
    std::vector<TMatrixMxN<T>> matrices;
    for (const auto& [rows, columns] : sizes)
        for (const Kind kind : allKinds) matrices.push_back(MakeMatrix<T>(kind, rows, columns));
    return matrices;
}

template <class T>
void AddDense(Report& report)
{
    using M = TMatrixMxN<T>;
    const std::string name = NameOf<T>("TMatrixMxN") + "::";
    const std::vector<M> rectangles = DenseMatrices<T>({{0, 0}, {1, 1}, {4, 4}, {5, 4}, {4, 9}, {17, 6}});
    const std::vector<T> scalars = AllScalars<T>();

    report.Over(rectangles).Add(name + "changes", [](Digest& d, M& a) {
        M b;
        b = a;
        d << M(a) << -a << static_cast<TMatrix2x2<T>>(a) << static_cast<TMatrix3x3<T>>(a);
        d << static_cast<TMatrix4x4<T>>(a) << (a == b) << (a != b);
        a.Transpose();
        d << a;
        a.ToNull();
        d << a;
        a.AssignMemory(4, 3);
        a.ToIdentity();
        d << a;
        a.AssignMemory(3, 4);
        a.ToIdentity();
        d << a << (a == MakeMatrix<T>(Kind::Zero, 3, 5)) << (a == M());
    });
    report.Over(rectangles, scalars).Add(name + "scalars", [](Digest& d, M& a, T s) {
        d << a * s << a / s << (a *= s) << (a /= s);
    });
    const std::vector<M> same = DenseMatrices<T>({{4, 5}});
    report.Over(same, same).Add(name + "sums", [](Digest& d, M& a, M& b) {
        d << (a + b) << (a - b) << (a == b) << (a += b) << (a -= b) << (a += Same(a));
    });
    report.Over(same, same).Add(name + "fixed", [](Digest& d, M& a, M& b) {
        TMatrix2x2<T> m2 = b;
        TMatrix3x3<T> m3 = b;
        TMatrix4x4<T> m4 = b;
        d << (a + m2) << (a + m3) << (a + m4) << (a - m2) << (a - m3) << (a - m4);
        d << (a += m2) << (a += m3) << (a += m4) << (a -= m2) << (a -= m3) << (a -= m4);
        M columns2 = MakeMatrix<T>(Kind::Random, 6, 2), columns3 = MakeMatrix<T>(Kind::Tied, 5, 3);
        M columns4 = MakeMatrix<T>(Kind::Random, 7, 4);
        d << columns2 * m2 << columns3 * m3 << columns4 * m4 << (columns2 *= m2) << (columns3 *= m3)
          << (columns4 *= m4);
        d << a * TVector2<T>(1, 2) << a * TVector3<T>(1, 2, 3) << a * TVector4<T>(1, 2, 3, 4);
    });
}

/// The products and decompositions, at sizes on both sides of each blocked kernel.
template <class T>
void AddDecompositions(Report& report)
{
    using M = TMatrixMxN<T>;
    const std::string name = NameOf<T>("TMatrixMxN") + "::";
    const std::vector<unsigned int> lengths = {1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 33, 70};
    const std::vector<Kind> kinds = {Kind::Random, Kind::Tied, Kind::Graded, Kind::HasNotANumber};
    report.Over(lengths, lengths, lengths, kinds)
        .Add(name + "operator*", [](Digest& d, unsigned int rows, unsigned int inner, unsigned int columns, Kind kind) {
            if (rows * inner * columns > 40000) return;
            M a = MakeMatrix<T>(kind, rows, inner), b = MakeMatrix<T>(kind, inner, columns, 11);
            d << a * b << b * a << (a *= b);
            if (rows == columns) d << (a *= Same(a));
        });
    const std::vector<M> squares = DenseMatrices<T>({{4, 3},
                                                     {0, 0},
                                                     {1, 1},
                                                     {2, 2},
                                                     {3, 3},
                                                     {4, 4},
                                                     {5, 5},
                                                     {8, 8},
                                                     {9, 9},
                                                     {16, 16},
                                                     {21, 21},
                                                     {33, 33},
                                                     {64, 64},
                                                     {70, 70}});
    report.Over(squares).Add(name + "LUD", TakeSolutions<T, M>);
    const std::vector<M> solved = DenseMatrices<T>({{5, 5}, {4, 3}});
    report.Over(solved).Add(name + "LUD(allocating)", [](Digest& d, M& a) {
        M lu;
        int* pivots = nullptr;
        T parity = 5, *x = nullptr;
        const T b[5] = {1, 2, 3, 4, 5};
        d << a.LUD(&lu, &pivots, &parity) << lu << (pivots != nullptr);
        if (pivots == nullptr) return;
        M::BackSub(lu, pivots, b, &x);
        d.TakeArray(x, 5);
        delete[] x;
        delete[] pivots;
    });
    const std::vector<M> shapes =
        DenseMatrices<T>({{0, 0}, {1, 1}, {3, 1}, {1, 3}, {2, 2}, {3, 3},   {4, 4},  {9, 3},  {40, 3},  {40, 4},
                          {2, 5}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {10, 10}, {12, 7}, {33, 9}, {17, 17}, {40, 40}});
    report.Over(shapes).Add(name + "SVD", TakeSingularValues<M>);

    const std::vector<M> symmetric = DenseMatrices<T>({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {3, 2}});
    report.Over(symmetric).Add(name + "Eigenspace", [](Digest& d, M& a) {
        M space = MakeMatrix<T>(Kind::Zero, 5, 5);
        T values[5] = {7, 7, 7, 7, 7};
        T* rows[5] = {space[0], space[1], space[2], space[3], space[4]};
        d << a.Eigenspace(values, rows) << space;
        d.TakeArray(values, 5);

        T *found = nullptr, **vectors = nullptr;
        if (!a.Eigenspace(&found, &vectors)) return;
        d.TakeArray(found, a.GetM());
        for (unsigned int i = 0; i < a.GetM(); ++i) {
            d.TakeArray(vectors[i], a.GetM());
            delete[] vectors[i];
        }
        delete[] vectors;
        delete[] found;
    });
}

} // namespace

void DigestMatrices(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddFixed<TMatrix2x2<T>, TVector2<T>, T>(report, NameOf<T>("TMatrix2x2"));
        AddFixed<TMatrix3x3<T>, TVector3<T>, T>(report, NameOf<T>("TMatrix3x3"));
        AddFixed<TMatrix4x4<T>, TVector4<T>, T>(report, NameOf<T>("TMatrix4x4"));
        AddConstructors<T>(report);
        AddTransforms<T, TMatrix3x3<T>>(report, NameOf<T>("TMatrix3x3"));
        AddTransforms<T, TMatrix4x4<T>>(report, NameOf<T>("TMatrix4x4"));
        AddDense<T>(report);
        AddDecompositions<T>(report);
    });
}

} // namespace CorvexDigest

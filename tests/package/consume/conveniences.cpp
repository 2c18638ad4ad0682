// A program of a user that takes the library as it comes to hand: short names, temporaries and constants wherever
// something is only read, moves, conversions and printing. It prints exact values.

#include <CorvexMaths/Aliases.h>
#include <CorvexMaths/CorvexMaths.h>
#include <CorvexMaths/Stream.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <utility>
#include <vector>
#ifdef __cpp_lib_format
#include <format>
#endif

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

double Sum(const double* values, unsigned int count)
{
    double sum = 0;
    for (unsigned int i = 0; i < count; ++i) sum += values[i];
    return sum;
}

MatrixMxNd Diagonal(double first, double second)
{
    MatrixMxNd matrix(2, 2);
    matrix.ToIdentity();
    matrix(0, 0) = first;
    matrix(1, 1) = second;
    return matrix;
}

void ComputeWithTemporaries()
{
    const MatrixMxNd a = Diagonal(1, 2), b = Diagonal(3, 4);
    MatrixMxNd c = a * (b + a) - 2.0 * a;
    c += Diagonal(1, 1) + Matrix2d();
    c *= Matrix2d(2, 0, 0, 2) + Matrix2d();
    std::cout << c << ' ' << a + Matrix2d() << ' ' << Matrix2d() * 2.0 << ' ' << (Matrix2d() *= a) << '\n';

    MatrixMxNd lu;
    int pivots[2];
    double parity, x[2];
    const double right[] = {4, 12};
    if (a.LUD(&lu, pivots, &parity)) MatrixMxNd::BackSub(static_cast<const MatrixMxNd&>(lu), pivots, right, x);
    std::cout << TVector2(x[0], x[1]) << ' ' << static_cast<const Matrix4d&>(Matrix4d()).Determinant() << '\n';

    Matrix4d scaling;
    scaling.Scale(Vector3d(1, 1, 1), 2, 2, 2, true, true);
    std::cout << Vector4d(2, 1, 1, 1) * scaling << ' ' << Quaterniond(Matrix3d() * 1.0) << '\n';
}

void Convert()
{
    const Vector3d v(1, 2, 4);
    const Vector3f narrow(0.5 * v);
    const TVector3 copy(narrow); // its scalar is deduced
    std::cout << narrow << ' ' << Vector3d(copy) << ' ' << Sum(v, 3) << ' ' << Matrix3d(2.0f * Matrix3f())(2, 2) << ' '
              << MatrixMxNf(Diagonal(1, 2)) << ' ' << 2.0 * Complexd(1, 2) << '\n';
}

void Move()
{
    std::vector<MatrixMxNd> matrices;
    for (int i = 1; i < 4; ++i) matrices.push_back(Diagonal(i, i));
    MatrixMxNd taken = std::move(matrices[0]);
    matrices[0] = Diagonal(5, 5);
    std::cout << taken << ' ' << matrices[0] << '\n';

    TList<double> lengths;
    lengths.AddRange({3, 1, 2});
    std::sort(lengths.begin(), lengths.end());
    const TList<double> sorted = std::move(lengths);
    double sum = 0;
    for (const double length : sorted) sum += length;
    CRSMatrixMxNd sparse(1, 1, 1);
    sparse.AddElement(2, 0, 0);
    const CRSMatrixMxNd kept = std::move(sparse);
    std::cout << sorted << ' ' << sum << ' ' << kept << '\n';

    std::vector<PointSet2d> sets;
    for (int i = 0; i < 3; ++i) sets.push_back(PointSet2d{Vector2d(0, 0), Vector2d(i, 1)});
    const PointSet2d last = std::move(sets[2]);
    std::cout << last << ' ' << sets[2] << ' ' << sets[1] << '\n';
}

void TakeRanges()
{
    const std::vector<Vector2d> measured = {{0, 0}, {4, 0}, {4, 2}};
    const Vector2d corner[] = {{0, 2}};
    Polygon2d plate(measured);
    plate.AddRange(corner);
    plate.InsertRange({{2, 0}}, 1);
    const Polygon2f narrow(plate);
    Parameterization2d line(measured);
    line.Parameterize();
    std::cout << narrow << ' ' << (Polygon2d(narrow)[1] == plate[1] && plate[0] != plate[1]) << ' ' << line << ' '
              << BSpline2d(corner, 1, Clamped) << ' ' << (Matrix2d(plate[2], plate[3]) == Matrix2d(4, 4, 0, 2)) << ' '
              << Regiond(plate).Offset(1, Join::Mitre).GetArea() << '\n';
}

void FitConstants()
{
    const Vector3d corners[] = {{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}};
    const PointSet3d cloud(corners, 4);
    Planed plane;
    double spread = 0, squares = 0;
    const bool found = plane.Fit(cloud, &spread, &squares);
    std::cout << found << ' ' << plane.point << ' ' << BSpline3d(PointSet3d(corners, 2), 2, Clamped) << ' ';

    Vector2d crossing;
    bool within = false;
    const bool crosses = Edge2d(0, 0, 2, 2).IntersectWith(Edge2d(0, 2, 2, 0), &crossing, &within, 1e-9);
    std::cout << crosses << within << ' ' << crossing << '\n';
}

void Print()
{
    Polygon2d plate;
    plate.Add(Vector2d(0, 0));
    plate.Add(Vector2d(4, 0.5));
    std::cout << plate << ' ' << plate.GetBoundingBox() << ' ' << Int128::Mul(1LL << 62, 4) << '\n'
              << std::setw(6) << std::setprecision(2) << Vector2d(1.0 / 3, -2) << ' ' << TPair<int, Vector2f>(1, {})
              << '\n';
#ifdef __cpp_lib_format
    if (std::format("{:.2f}", Vector2d(1, 2)) != "(1.00, 2.00)") std::cout << "std::format prints something else\n";
#endif
}

} // namespace

int main()
{
    ComputeWithTemporaries();
    Convert();
    Move();
    TakeRanges();
    FitConstants();
    Print();
}

// A program with objects of the classes that the debuggers' files know, stopped in LookHere for them to be looked at.

#include <CorvexMaths/CorvexMaths.h>

#include <cstring>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

/// An object that no constructor ran for: memory that held something else before.
template <class Class>
struct Garbage
{
    alignas(Class) unsigned char bytes[sizeof(Class)];

    explicit Garbage(int fill) { std::memset(bytes, fill, sizeof(bytes)); }
    Class& Get() { return *reinterpret_cast<Class*>(bytes); }
};

} // namespace

extern "C" __attribute__((noinline)) void LookHere()
{
    asm volatile("");
}

int main()
{
    const TVector2<double> corners[] = {{0, 0}, {4, 0}, {4, 2.5}};
    TVector2<double> vector2(0.25, 3);
    TVector3<float> vector3(0.1f, -2, 1e-7f);
    TVector4<double> vector4(1, 2, 3, 4);
    TComplex<double> complex(1, -0.5);
    TQuaternion<double> quaternion(1, 0, 0.25, -2);

    TList<int> list(0u, 4u);
    for (int i = 1; i <= 3; ++i) list.Add(i * i);
    TList<double> emptyList;
    TMap<int> table(2, 3);
    for (unsigned int i = 0; i < 6; ++i) table[i / 3][i % 3] = static_cast<int>(i);

    TMatrix2x2<double> matrix2(1, 2, 3, 4);
    TMatrix3x3<double> matrix3;
    TMatrix4x4<double> matrix4;
    TMatrixMxN<float> matrix(2, 3);
    for (unsigned int i = 0; i < 6; ++i) matrix[i / 3][i % 3] = static_cast<float>(i) * 0.5f;
    TMatrixMxN<double> emptyMatrix;

    // Row 1 and column 2 have no elements, and one more could be stored.
    TCRSMatrixMxN<double> rows(3, 4, 4);
    TCRSMatrixMxN<double> emptyRows;
    TCCSMatrixMxN<double> columns(4, 2);
    TMatrixFragment<double> fragment;
    const int places[][2] = {{0, 1}, {0, 3}, {2, 0}};
    for (const int* const place : places) {
        const double value = place[0] + 0.5 * place[1];
        rows.AddElement(value, place[0], place[1]);
        columns.AddElement(value, place[0], place[1]);
        fragment.values.Add(value);
        fragment.rows.Add(place[0]);
        fragment.columns.Add(place[1]);
    }

    TBox<double> box({-1, 0, 2}, {1, 0.5, 3}, 100);
    TBox<float> emptyBox;
    TEdge2<double> edge2(corners[0], corners[1]);
    TEdge3<double> edge3({0, 0, 1}, {0, 2, 1});
    TLine2<double> line2(1, 2, 0, 3);
    TLine3<double> line3({1, 2, 3}, {0, 0, 2});
    TPlane<double> plane({0, 0, 5}, {0, 0, -2});
    TTriangle2<double> triangle2(corners[0], corners[1], corners[2]);
    TTriangle3<double> triangle3({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    TCircle2<double> circle2(1.5, 2, 3);
    TCircle3<double> circle3(1.5, {2, 3, 4}, {0, 0, 1});
    TSphere<double> sphere(2, 0, 1, 0);
    TCone<double> cone(2, 3);
    TCylinder<double> cylinder(2, 3);

    TPointSet<double, TVector2> set(corners, 2);
    TPolygon<double, TVector2> polygon(corners, 3);
    TPolygon<float, TVector3> emptyPolygon;
    TParameterization<double, TVector2> chain(corners, 2);
    chain.Parameterize();
    TBSpline<double, TVector2> spline(set, 2, Clamped);

    Int128 one(1);
    Int128 large = Int128::Mul(-9000000000000000000, 10);
    Int128 least(-9223372036854775807LL - 1, 0ULL);

    Garbage<TList<int>> zeros(0), ones(255);
    TList<int>&zeroList = zeros.Get(), &wildList = ones.Get();
    Garbage<TMap<int>> mapBytes(255);
    TMap<int>& wildTable = mapBytes.Get();
    Garbage<TMatrixMxN<double>> matrixBytes(255);
    TMatrixMxN<double>& wildMatrix = matrixBytes.Get();
    Garbage<TCRSMatrixMxN<double>> rowBytes(127);
    TCRSMatrixMxN<double>& wildRows = rowBytes.Get();
    Garbage<TCCSMatrixMxN<double>> columnBytes(127);
    TCCSMatrixMxN<double>& wildColumns = columnBytes.Get();
    Garbage<TPolygon<double, TVector2>> polygonBytes(127);
    TPolygon<double, TVector2>& wildPolygon = polygonBytes.Get();
    Garbage<TBSpline<double, TVector2>> splineBytes(127);
    TBSpline<double, TVector2>& wildSpline = splineBytes.Get();

    LookHere();
    // Each is used once more, so that none is left out.
    const void* const used[] = {&zeroList,   &wildList, &wildTable, &wildMatrix, &wildRows, &wildColumns, &wildPolygon,
                                &wildSpline, &vector2,  &large,     &vector3,    &vector4,  &complex,     &quaternion};
    return used[0] == nullptr;
}

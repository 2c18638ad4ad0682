#include <CorvexMaths/CorvexMaths.h>
#include <CorvexMaths/Stream.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <sstream>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

struct Plate : TPolygon<double, TVector2>
{};
struct Labelled : TVector2<double>
{};
std::ostream& operator<<(std::ostream& stream, const Labelled&)
{
    return stream << "label";
}

/// What a stream prints of the values, one after the other.
template <class... Values>
std::string Printed(const Values&... values)
{
    std::ostringstream stream;
    (stream << ... << values);
    return stream.str();
}

TEST(Stream, PrintsEachKindOfValueInOneStyle)
{
    const TList<TVector2<float>> points{{1, 2}, {3, -0.0f}};
    TMatrixMxN<double> matrix(2, 3);
    matrix.ToIdentity();
    TParameterization<double, TVector2> line;
    line.AddRange({{0, 0}, {3, 4}});
    line.Parameterize();
    TList<const char*> texts;
    texts.Add("any");
    TBox<double> box;
    box.Extend(TVector3<double>(1, 2, 3));
    TMatrixFragment<double> fragment;
    fragment.values.Add(5), fragment.rows.Add(7), fragment.columns.Add(6);
    TCCSMatrixMxN<float> columns(2, 2);
    columns.AddElement(5, 1, 0), columns.AddElement(6, 0, 1);
    TCRSMatrixMxN<double> rows(4, 3, 3); // its second and last row are empty
    rows.AddElement(1, 0, 2), rows.AddElement(2, 2, 0), rows.AddElement(3, 2, 1);
    const TVector3<double> z(0, 0, 1);
    const long long most = std::numeric_limits<long long>::max();

    const std::pair<std::string, const char*> table[] = {
        {Printed(TVector4<float>()), "(0, 0, 0, 1)"},
        {Printed(TComplex<double>(1, -2)), "(1, -2)"},
        {Printed(TQuaternion<float>(1, 2, 3, 4)), "(1, 2, 3, 4)"},
        {Printed(TPair<double, TVector2<double>>(0.5, TVector2<double>())), "(0.5, (0, 0))"},
        {Printed(points), "[(1, 2), (3, -0)]"},
        {Printed(TMatrix2x2<double>(1, 2, 3, 4)), "[[1, 2], [3, 4]]"},
        {Printed(matrix), "[[1, 0, 0], [0, 1, 0]]"},
        {Printed(TMatrixMxN<float>(2, 0)) + Printed(TMatrixMxN<float>()), "[[], []][]"},
        {Printed(fragment), "[(7, 6, 5)]"},
        {Printed(columns), "{rows: 2, columns: 2, elements: [(1, 0, 5), (0, 1, 6)]}"},
        {Printed(rows), "{rows: 4, columns: 3, elements: [(0, 2, 1), (2, 0, 2), (2, 1, 3)]}"},
        {Printed(box), "{minimum: (1, 2, 3), maximum: (1, 2, 3)}"},
        {Printed(TEdge2<float>(1, 2, 3, 4)), "[(1, 2), (3, 4)]"},
        {Printed(TLine3<double>(z, z)), "{origin: (0, 0, 1), direction: (0, 0, 1)}"},
        {Printed(TPlane<double>(z, z)), "{point: (0, 0, 1), normal: (0, 0, 1)}"},
        {Printed(TCircle2<double>()), "{centre: (0, 0), radius: 0}"},
        {Printed(TSphere<double>(4, 1, 2, 3)), "{centre: (1, 2, 3), radius: 4}"},
        {Printed(TPolygon<float, TVector2>(points.GetStream(), 2)), "[(1, 2), (3, -0)]"},
        {Printed(line), "{length: 5, points: [(0, 0), (3, 4)]}"},
        {Printed(TBSpline<double, TVector3>(3, Clamped, 0, 1)), "{type: Clamped, order: 3, points: []}"},
        {Printed(Robust::MinimumCircle<double>({{1, 1}, {3, 1}})),
         "{status: done, circle: {centre: (2, 1), radius: 1}}"},
        {Printed(Robust::PlaneFit<float>(TPointSet<float, TVector3>())), "{status: too few points}"},
        {Printed(Int128(0), ' ', Int128(-1)), "0 -1"},
        {Printed(Int128(0, 0x8000000000000000u), Int128(-1, 0)), "9223372036854775808-18446744073709551616"},
        {Printed(Int128(most, ~0ull)), "170141183460469231731687303715884105727"},
        {Printed(Int128(-most - 1, 0ull)), "-170141183460469231731687303715884105728"},
        // A class of a program prints by its own operator or, for want of one, by that of a base.
        {Printed(Plate(), Labelled()), "[]label"},
        {Printed(TList<Labelled>{Labelled()}), "[(0, 0)]"},
        {Printed(texts), "[any]"},
    };
    for (const auto& [printed, expected] : table) EXPECT_EQ(printed, expected);
}

TEST(Stream, TakesWidthAndPrecisionForEachNumberAndLeavesNoWidth)
{
    const auto width = std::setw(5);
    EXPECT_EQ(Printed(std::setfill('.'), std::fixed, std::setprecision(1), width, TVector2<double>(1.25, -2), width,
                      Int128(7), '|', 8),
              "(..1.2, .-2.0)....7|8");
    EXPECT_EQ(Printed(std::setprecision(9), TVector2<float>(1.0f / 3, -0.1f)), "(0.333333343, -0.100000001)");
    EXPECT_EQ(Printed(std::setprecision(17), TVector2<double>(1.0 / 3, 2)), "(0.33333333333333331, 2)");
    std::wostringstream wide;
    wide << TVector2<float>(1, 2);
    EXPECT_EQ(wide.str(), L"(1, 2)");
}

} // namespace

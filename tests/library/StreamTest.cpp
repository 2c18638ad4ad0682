#include "tests/support/Bits.h"
#include "tests/support/Types.h"

#include <CorvexMaths/Stream.h>

#include <iomanip>
#include <limits>
#include <random>
#include <sstream>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class X>
std::string Printed(const X& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

TEST(Stream, PrintsEachKindOfValueInOneStyle)
{
    TList<TVector2<float>> points;
    points.Add(TVector2<float>(1, 2));
    points.Add(TVector2<float>(3, -0.0f));
    TMatrixMxN<double> matrix(2, 3);
    matrix.ToIdentity();
    TBSpline<double, TVector3> spline(3, Clamped, 0, 1);
    TParameterization<double, TVector2> line;
    line.Add(TVector2<double>(0, 0));
    line.Add(TVector2<double>(3, 4));
    line.Parameterize();
    TBox<double> box;
    box.Extend(TVector3<double>(1, 2, 3));
    TMatrixFragment<double> fragment;
    fragment.values.Add(5);
    fragment.rows.Add(7);
    fragment.columns.Add(6);
    TCCSMatrixMxN<float> columns(2, 2);
    columns.AddElement(5, 1, 0);
    columns.AddElement(6, 0, 1);
    TCRSMatrixMxN<double> rows(4, 3, 3); // its second and last row are empty
    rows.AddElement(1, 0, 2);
    rows.AddElement(2, 2, 0);
    rows.AddElement(3, 2, 1);
    const TVector3<double> z(0, 0, 1);

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
        {Printed(spline), "{type: Clamped, order: 3, points: []}"},
    };
    for (const auto& [printed, expected] : table) EXPECT_EQ(printed, expected);
}

TEST(Stream, PrintsIntegersOf128BitsInFull)
{
    const std::pair<Int128, const char*> table[] = {
        {Int128(0), "0"},
        {Int128(-1), "-1"},
        {Int128(0, 0x8000000000000000u), "9223372036854775808"},
        {Int128(-1, 0), "-18446744073709551616"},
        {Int128(std::numeric_limits<long long>::max(), ~0ull), "170141183460469231731687303715884105727"},
        {Int128(std::numeric_limits<long long>::min(), 0ull), "-170141183460469231731687303715884105728"},
    };
    for (const auto& [integer, digits] : table) EXPECT_EQ(Printed(integer), digits);
}

TEST(Stream, TakesTheWidthForEachNumberAndLeavesNone)
{
    std::ostringstream stream;
    stream << std::setfill('.') << std::fixed << std::setprecision(1) << std::setw(5) << TVector2<double>(1.25, -2)
           << std::setw(3) << Int128(7) << '|' << 8;
    EXPECT_EQ(stream.str(), "(..1.2, .-2.0)..7|8");
    std::wostringstream wide;
    wide << TVector2<float>(1, 2);
    EXPECT_EQ(wide.str(), L"(1, 2)");
}

template <class T>
struct StreamNumbers : testing::Test
{};
TYPED_TEST_SUITE(StreamNumbers, CorvexTest::Scalars, CorvexTest::TypeNames);

TYPED_TEST(StreamNumbers, ReadBackToTheSameBits)
{
    using T = TypeParam;
    std::mt19937 engine(12);
    for (int i = 0; i < 200; ++i) {
        const T value = std::ldexp(T(engine()) / T(3), static_cast<int>(engine() % 100) - 50);
        std::stringstream stream;
        stream << std::setprecision(std::numeric_limits<T>::max_digits10) << TVector2<T>(value, -value);
        char bracket;
        T x, y;
        stream >> bracket >> x >> bracket >> y;
        EXPECT_TRUE(CorvexTest::SameBits(x, value) && CorvexTest::SameBits(y, -value)) << stream.str();
    }
}

struct Plate : TPolygon<double, TVector2>
{};
struct Labelled : TVector2<double>
{};
std::ostream& operator<<(std::ostream& stream, const Labelled&)
{
    return stream << "label";
}

TEST(Stream, LeavesClassesOfAProgramToTheirOwnOperator)
{
    EXPECT_EQ(Printed(Plate()), "[]") << "of a base, where there is none";
    EXPECT_EQ(Printed(Labelled()), "label");
    TList<Labelled> labels;
    labels.Add(Labelled());
    EXPECT_EQ(Printed(labels), "[(0, 0)]");
    TList<const char*> texts;
    texts.Add("any");
    EXPECT_EQ(Printed(texts), "[any]") << "what a stream takes";
}

} // namespace

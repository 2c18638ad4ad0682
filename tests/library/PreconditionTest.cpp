#include <CorvexMaths/CorvexMaths.h>

#include <gtest/gtest.h>

#include <cstring>

// A release build looks at no precondition, so there is nothing to test in it; no_preconditions.sh holds it to that.
#if CORVEX_CHECK_PRECONDITIONS

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using Vector = TVector3<double>;

// The regular expression of a violation's whole line, in which ? stands for anything.
std::string Line(const char* text)
{
    std::string line = "^CorvexMaths: ";
    for (; *text != '\0'; ++text) {
        if (*text == '?')
            line += "[^\n]*";
        else
            (line += std::strchr("()[]|*+.^$\\", *text) ? "\\" : "") += *text;
    }
    return line + "\n";
}

int numbers[2] = {};
TList<int> list(numbers, 2, 8);
TLinkUni<int> node;
TMatrixMxN<double> matrix(2, 3);
Vector translation;
TPointSet<double, TVector3> points;
TPolygon<double, TVector2> polygon;
TBSpline<double, TVector2> spline(3, Clamped, 0, 1);

TEST(PreconditionDeathTest, TellsTheOperationTheConditionAndTheValues)
{
    const std::pair<void (*)(), const char*> rows[] = {
        // Indices and positions.
        {[] { list[2]; }, "TList::operator[] needs index < count, but (index, count) is (2, 2)"},
        {[] { list.Insert(1, 3); }, "TList::Insert needs position <= count, but (position, count) is (3, 2)"},
        {[] { matrix[2]; }, "TMatrixMxN::operator[] needs row < ?, but (row, ?) is (2, 2)"},
        {[] { points.IsWithin(TVector2<double>(), 0, 1); },
         "TPointSet::IsWithin needs ? || (first < ?), but (first, pointCount, ?) is (0, 1, 0)"},
        // Pointers.
        {[] { list.AddRange(nullptr, 1); },
         "TList::AddRange needs source != nullptr || n == 0, but (source, n) is ((nil), 1)"},
        {[] { Vector().OrthonormalX(nullptr); },
         "TVector3::OrthonormalX needs xAxis != nullptr, but (xAxis) is ((nil))"},
        {[] { TSetGenerator<unsigned>().AddPermutationFunction(static_cast<void (*)(unsigned*)>(nullptr)); },
         "TSetGenerator::AddPermutationFunction needs function != nullptr, but (function != nullptr) is (0)"},
        {[] { polygon.GetEdges(nullptr); }, "TPolygon::GetEdges needs edges != nullptr, but (edges) is ((nil))"},
        // Sizes and steps.
        {[] { list.Grow(0xfffffffe); }, "TList::Grow needs count + n >= count, but (count, n) is (2, 4294967294)"},
        {[] { spline.SetOrder(0); }, "TBSpline::SetOrder needs splineOrder >= 1, but (splineOrder) is (0)"},
        {[] { spline.GetLength(-0.5); }, "TBSpline::GetLength needs step > T(0), but (step) is (-0.5)"},
        // One object in two places.
        {[] { list.InsertRange(list, 1); }, "TList::InsertRange needs n == 0 || ?, but (source, n) is (0x?, 2)"},
        {[] { static_cast<void>(points.Register(&points, &matrix, &translation, false)); },
         "TPointSet::Register needs other != nullptr && other != this, but (other, this) is (0x?, 0x?)"},
        {[] { node.SetNext(&node), node.GetLast(); }, "TLinkUni::GetLast needs last != this, but (last) is (0x?)"},
    };
    for (const auto& [violate, line] : rows) EXPECT_DEATH(violate(), Line(line));
}

} // namespace

#endif

// Point sets and parameterised polylines: operations on three live sets, one of them a polyline.

#include "Points.h"

namespace CorvexFuzz
{
namespace
{

template <class T, template <class> class V>
struct PointSetState
{
    using Vector = V<T>;
    using Set = TPointSet<T, V>;
    using Line = TParameterization<T, V>;
    using Points = std::vector<Vector>;

    struct OpenLine : Line
    {
        using Line::parameters;
    };

    Set first, second;
    Line line;

    /// One of the three; a polyline edited as a set keeps the positions of points that have moved or gone.
    Set& Pick(Input& input)
    {
        const unsigned int choice = input.Below(3);
        return choice == 0 ? first : choice == 1 ? second : line;
    }
    /// One of the other two.
    Set& PickOther(Input& input, const Set& set)
    {
        Set& other = Pick(input);
        return &other != &set ? other : &set == &first ? second : first;
    }

    static Vector Point(Input& input) { return input.AnyVector<Vector, T>(); }

    /// A matrix of any size: the points take as much of it as they need, or pad it.
    static TMatrixMxN<T> DecodeMatrixMxN(Input& input)
    {
        TMatrixMxN<T> matrix(input.Between(1, 5), input.Between(1, 5));
        for (unsigned int i = 0; i < matrix.GetM(); ++i)
            for (unsigned int j = 0; j < matrix.GetN(); ++j) matrix[i][j] = input.Scalar<T>();
        return matrix;
    }

    /// Sends a set through another dimension, which copies it by construction both ways.
    template <template <class> class W>
    static void Convert(Set& set)
    {
        const TPointSet<T, W> other(set);
        RequireExactBox(other);
        Require(other.GetCount() == set.GetCount());
        const Set back(other);
        RequireExactBox(back);
        set = back;
        const TParameterization<T, W> converted(set);
        RequireExactBox(converted);
        Require(std::isnan(converted.Evaluate(T(0))[0]));
    }

    static void CheckCombination(const Set& set, unsigned int firstCount, unsigned int secondCount)
    {
        Require(set.GetCount() == firstCount * secondCount);
    }

    /// The range of an outline, the two forms of the point, and the scores of its sides one by one agree.
    static void CheckContainment(const Set& set, Input& input)
    {
        const auto point = input.Flag() && set.GetCount() != 0
                               ? TVector2<T>(set[input.Below(set.GetCount())][0], input.Scalar<T>())
                               : input.AnyVector<TVector2<T>, T>();
        const unsigned int first = input.Between(0, set.GetCount());
        const unsigned int count = input.Between(0, set.GetCount() - first);
        const bool isWithin = set.IsWithin(point, first, count);
        int crossings = 0;
        for (unsigned int i = 0; i < count; ++i)
            set.ExamineSegment(first + i, first + (i + 1) % count, point, &crossings);
        Require(isWithin == (set.GetBoundingBox().IsWithin(point, T(0)) && crossings != 0));
        Require(isWithin == set.IsWithin(point.x, point.y, first, count));
        Require(set.IsWithin(point) == set.IsWithin(point.x, point.y));
        Require(set.IsWithin(point) == set.IsWithin(point, 0, set.GetCount()));
    }

    /// A position along the line, that of one of its points as a rule.
    T Position(Input& input)
    {
        const TList<T>& positions = line.*&OpenLine::parameters;
        const T position = positions.GetCount() != 0 && input.Flag() ? positions[input.Below(positions.GetCount())]
                                                                     : static_cast<T>(input.Byte()) / 255;
        return position == position ? position : T(0);
    }

    /// No segment may be infinitely long, for the spacing would not go into it, and none is cut into more than 9
    /// pieces, so that sets stay small.
    static void Infill(Set& set, Input& input)
    {
        T longest = T(0);
        for (unsigned int i = 0; i < set.GetCount(); ++i) {
            const T length = (set[(i + 1) % set.GetCount()] - set[i]).GetLength();
            if (length > longest) longest = length;
        }
        if (std::isinf(longest)) return;
        T spacing = Numbers::Absolute(input.Finite<T>());
        if (!(spacing > longest / 8)) spacing = longest / 8;
        if (!(spacing > T(0))) spacing = T(1);
        const Points before = Copy<T, V>(set);
        set.Infill(spacing, input.Flag());
        Require(AreInOrderAmong<T, V>(before, Copy<T, V>(set)));
    }

    static void Assign(Set& target, Set& source)
    {
        if (&target == &source) {
            target = source;
            Require(target.GetCount() == 0);
            return;
        }
        target = source;
        Require(AreSamePoints<T, V>(Copy<T, V>(target), Copy<T, V>(source)));
        Require(AreSameScalars<T>(target.GetBoundingBox(), source.GetBoundingBox()));
    }

    /// Every point can be read, and no set has outgrown its bound.
    void Check() const
    {
        for (const Set* set : {&first, &second, static_cast<const Set*>(&line)}) {
            set->GetCentre();
            Require(set->GetCount() <= largestSet);
        }
    }

    static const Operation<PointSetState> operations[];
};

template <class T, template <class> class V>
const Operation<PointSetState<T, V>> PointSetState<T, V>::operations[] = {
    {"edit",
     [](PointSetState<T, V>& s, Input& in) { EditList<T, V>(s.Pick(in), in); }},
    {"of an array",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                const Points points = DecodePoints<T, V>(in, 40);
                set = Set(points.data(), static_cast<unsigned int>(points.size()));
                Require(AreSamePoints<T, V>(Copy<T, V>(set), points));
                RequireExactBox(set);
            }},
    {"of sizes",
     [](PointSetState<T, V>& s, Input& in) { s.Pick(in) = Set(in.Below(40), in.Below(40)); }},
    {"assign",
     [](PointSetState<T, V>& s, Input& in) {
                Set& target = s.Pick(in);
                Assign(target, s.Pick(in));
            }},
    {"copy",
     [](PointSetState<T, V>& s, Input& in) {
                const Set& set = s.Pick(in);
                RequireCopy(Set(set), set);
            }},
    {"through two dimensions",
     [](PointSetState<T, V>& s, Input& in) { Convert<TVector2>(s.Pick(in)); }},
    {"through three dimensions",
     [](PointSetState<T, V>& s, Input& in) { Convert<TVector3>(s.Pick(in)); }},
    {"through four dimensions",
     [](PointSetState<T, V>& s, Input& in) { Convert<TVector4>(s.Pick(in)); }},
    {"RecalculateBoundingBox",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set.RecalculateBoundingBox();
                RequireExactBox(set);
            }},
    {"toggle keepBox",
     [](PointSetState<T, V>& s, Input& in) {
                bool& keepBox = Opened<T, V>::KeepBox(s.Pick(in));
                keepBox = !keepBox;
            }},
    {"box of another limit",
     [](PointSetState<T, V>& s, Input& in) {
                // A box of another limit, which assignments carry on.
                Opened<T, V>::Box(s.Pick(in)) = TBox<T>(static_cast<T>(in.Between(1, 20)));
            }},
    {"GetCentre",
     [](PointSetState<T, V>& s, Input& in) {
                const Set& set = s.Pick(in);
                const Vector centre = set.GetCentre();
                if (set.GetCount() == 0) Require(AreSameScalars<T>(centre, centre * T(0)));
            }},
    {"WithinRectangle",
     [](PointSetState<T, V>& s, Input& in) {
                const auto u = in.AnyVector<TVector2<T>, T>();
                const auto corner = in.AnyVector<TVector2<T>, T>();
                const Set& set = s.Pick(in);
                const bool isWithin = set.WithinRectangle(corner, u, Point(in), in.Scalar<T>(), in.Scalar<T>());
                Require(!isWithin || set.GetCount() != 0);
            }},
    {"+=",
     [](PointSetState<T, V>& s, Input& in) { s.Pick(in) += Point(in); }},
    {"-=",
     [](PointSetState<T, V>& s, Input& in) { s.Pick(in) -= Point(in); }},
    {"+= own point",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                if (set.GetCount() != 0) set += set[in.Below(set.GetCount())];
            }},
    {"*= factor",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set *= in.Scalar<T>();
                RequireExactBox(set);
            }},
    {"*= TMatrix2x2",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set *= DecodeMatrix<TMatrix2x2<T>, T>(in);
                RequireExactBox(set);
            }},
    {"*= TMatrix3x3",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set *= DecodeMatrix<TMatrix3x3<T>, T>(in);
                RequireExactBox(set);
            }},
    {"*= TMatrix4x4",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set *= DecodeMatrix<TMatrix4x4<T>, T>(in);
                RequireExactBox(set);
            }},
    {"*= TMatrixMxN",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                set *= DecodeMatrixMxN(in);
                RequireExactBox(set);
            }},
    {"ToMatrix",
     [](PointSetState<T, V>& s, Input& in) {
                const Set& set = s.Pick(in);
                TMatrixMxN<T> matrix, centred;
                if (in.Flag()) matrix = DecodeMatrixMxN(in);
                set.ToMatrix(&matrix);
                Require(matrix.GetM() == set.GetCount());
                const Vector centre = set.ToTransToCentMatrix(&centred);
                Require(AreSameScalars<T>(centre, set.GetCentre()));
                for (unsigned int i = 0; i < set.GetCount(); ++i)
                    for (unsigned int k = 0; k < matrix.GetN(); ++k)
                        Require(AreSame(matrix[i][k], set[i][k]) && AreSame(centred[i][k], set[i][k] - centre[k]));
            }},
    {"Register",
     [](PointSetState<T, V>& s, Input& in) {
                // A set may not be registered to itself.
                Set& set = s.Pick(in);
                Set& other = s.PickOther(in, set);
                const Points before = Copy<T, V>(set);
                TMatrixMxN<T> rotation;
                Vector translation;
                const bool isFound = set.Register(&other, &rotation, &translation, in.Flag());
                if (isFound) Require(rotation.GetM() == sizeof(Vector) / sizeof(T));
                if (set.GetCount() != other.GetCount())
                    Require(!isFound && AreSamePoints<T, V>(before, Copy<T, V>(set)));
            }},
    {"equal counts",
     [](PointSetState<T, V>& s, Input& in) {
                // A set of as many points, so that it can be registered.
                Set& set = s.Pick(in);
                Set& other = s.PickOther(in, set);
                const unsigned int count = set.GetCount() < other.GetCount() ? set.GetCount() : other.GetCount();
                set.RemoveFromEnd(set.GetCount() - count);
                other.RemoveFromFront(other.GetCount() - count);
            }},
    {"Smooth",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                const Points before = Copy<T, V>(set);
                const bool isClosed = in.Flag();
                set.Smooth(in.Below(6), isClosed);
                Require(set.GetCount() == before.size());
                if (!isClosed && set.GetCount() != 0)
                    Require(AreSameScalars<T>(before.front(), set.GetFirst()) &&
                            AreSameScalars<T>(before.back(), set.GetLast()));
            }},
    {"Infill",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                Infill(set, in);
                Bound(set);
            }},
    {"Minkowski with an array",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                const Points other = DecodePoints<T, V>(in, 6);
                const unsigned int before = set.GetCount();
                if (in.Flag())
                    set.MinkowskiSum(other.data(), static_cast<unsigned int>(other.size()));
                else
                    set.MinkowskiDifference(other.data(), static_cast<unsigned int>(other.size()));
                CheckCombination(set, before, static_cast<unsigned int>(other.size()));
                Bound(set);
            }},
    {"Minkowski with a list",
     [](PointSetState<T, V>& s, Input& in) {
                Set& set = s.Pick(in);
                const Set& other = s.PickOther(in, set);
                const unsigned int before = set.GetCount();
                if (in.Flag())
                    set.MinkowskiSum(other);
                else
                    set.MinkowskiDifference(other);
                CheckCombination(set, before, other.GetCount());
                Bound(set);
            }},
    {"Minkowski of two",
     [](PointSetState<T, V>& s, Input& in) {
                // Neither operand may be the set's own storage; both may be one set.
                const Set a(s.Pick(in)), other(s.Pick(in));
                const Set& b = in.Flag() ? a : other;
                Set& set = s.Pick(in);
                const bool isSum = in.Flag();
                if (in.Flag())
                    isSum ? set.MinkowskiSum(a, b) : set.MinkowskiDifference(a, b);
                else if (isSum)
                    set.MinkowskiSum(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
                else
                    set.MinkowskiDifference(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
                CheckCombination(set, a.GetCount(), b.GetCount());
                if (set.GetCount() != 0)
                    Require(AreSameScalars<T>(set.GetLast(),
                                              isSum ? a.GetLast() + b.GetLast() : a.GetLast() - b.GetLast()));
                Bound(set);
            }},
    {"IsWithin",
     [](PointSetState<T, V>& s, Input& in) { CheckContainment(s.Pick(in), in); }},
    {"IntersectWith",
     [](PointSetState<T, V>& s, Input& in) {
                // The hits are appended to whatever the list, which must not be this set, holds.
                const Set& set = s.Pick(in);
                Set& hits = s.PickOther(in, set);
                const unsigned int before = hits.GetCount();
                TEdge2<T> edge(in.AnyVector<TVector2<T>, T>(), in.AnyVector<TVector2<T>, T>());
                Require(set.IntersectWith(edge, &hits) == (hits.GetCount() != 0));
                Require(hits.GetCount() - before <= set.GetCount());
                Bound(hits);
            }},
    {"Parameterize",
     [](PointSetState<T, V>& s, Input&) {
                s.line.Parameterize();
                if (s.line.GetCount() == 0) Require(AreSame(s.line.GetLength(), T(0)));
            }},
    {"Evaluate anywhere",
     [](PointSetState<T, V>& s, Input& in) {
                const T position = in.Scalar<T>();
                const Vector point = s.line.Evaluate(position);
                if (position < T(0) || position > T(1) || s.line.GetCount() < 2) Require(std::isnan(point[0]));
            }},
    {"Evaluate",
     [](PointSetState<T, V>& s, Input& in) { s.line.Evaluate(s.Position(in)); }},
    {"GetLength",
     [](PointSetState<T, V>& s, Input& in) {
                const T from = s.Position(in), to = s.Position(in);
                Require(AreSame(s.line.GetLength(from, to), s.line.GetLength(to, from)));
                Require(AreSame(s.line.GetLength(from, from), T(0)));
            }},
    {"copy of the polyline",
     [](PointSetState<T, V>& s, Input& in) {
                const Line copy(s.line);
                RequireCopy(copy, s.line);
                const T position = s.Position(in);
                Require(AreSameScalars<T>(copy.Evaluate(position), s.line.Evaluate(position)));
                Require(AreSame(copy.GetLength(), s.line.GetLength()));
            }},
    {"polyline of an array",
     [](PointSetState<T, V>& s, Input& in) {
                const Points points = DecodePoints<T, V>(in, 40);
                Line made(points.data(), static_cast<unsigned int>(points.size()));
                if (in.Flag()) made.Parameterize();
                s.line = made;
            }},
    {"polyline of sizes",
     [](PointSetState<T, V>& s, Input& in) { s.line = Line(in.Below(40), in.Below(40)); }},
    {"assign to the polyline",
     [](PointSetState<T, V>& s, Input& in) { s.line = in.Flag() ? s.line : Line(s.first); }},
};

} // namespace
} // namespace CorvexFuzz

using namespace CorvexFuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return RunOnPoints<PointSetState>(data, size);
}

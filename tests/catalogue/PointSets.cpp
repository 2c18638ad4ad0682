// Point sets and parameterised polylines.

#include "Sets.h"

#include <tests/support/plain/PointSets.h>

namespace CorvexCatalogue
{
namespace
{

template <class T, template <class> class V>
struct PointSetState : SetState<T, V, TPointSet<T, V>>
{
    using Set = TPointSet<T, V>;
    using Base = SetState<T, V, Set>;
    using Base::Base, Base::first, Base::in, Base::out, Base::Pick, Base::PickLarge, Base::second;
    using typename Base::Points, typename Base::Vector;

    void Fill() override { Base::FillBy(65); }
    Set& Other(const Set& set) { return &set == &first ? second : first; }

    void Construct()
    {
        Set& set = Pick();
        const Points points = Base::Copy(set);
        const unsigned int capacity = in.Below(40), growSize = in.Below(40);
        const Set copy(set), ofArray(points.data(), set.GetCount()), empty(capacity, growSize);
        RequireCopy(copy, set);
        RequireCopy(ofArray, set);
        const TPointSet<T, TVector2> plane(set);
        const TPointSet<T, TVector3> space(set);
        const TPointSet<T, TVector4> four(set);
        RequireExactBox(plane);
        RequireExactBox(space);
        RequireExactBox(four);
        out << copy << ofArray << empty << plane << space << four;
        Other(set) = Set(plane);
    }
    void Assign()
    {
        Set &target = Pick(), &source = Pick();
        // A box of another limit, which assignments carry on.
        if (in.Below(4) == 0) OpenSet<T, V>::Box(source) = TBox<T>(static_cast<T>(in.Between(1, 20)));
        target = source;
        Require(&target == &source ? target.GetCount() == 0
                                   : AreSame(Base::Copy(target), Base::Copy(source)) &&
                                         AreSame(target.GetBoundingBox(), source.GetBoundingBox()));
    }
    void Recalculate()
    {
        Set& set = Pick();
        set.RecalculateBoundingBox();
        RequireExactBox(set);
    }
    void GetCentre()
    {
        const Set& set = PickLarge(4200);
        const Vector centre = set.GetCentre();
        TMatrixMxN<T> matrix = DrawMatrix<T>(in, 2, 2), centred;
        set.ToMatrix(&matrix);
        Require(AreSame(set.ToTransToCentMatrix(&centred), centre) && matrix.GetM() == set.GetCount());
        for (unsigned int i = 0; i < set.GetCount(); ++i)
            for (unsigned int k = 0; k < matrix.GetN(); ++k)
                Require(AreSame(matrix[i][k], set[i][k]) && AreSame(centred[i][k], set[i][k] - centre[k]));
        out << centre << centred;
    }
    void WithinRectangle()
    {
        const Set& set = PickLarge(1100);
        const auto u = in.template Vector<TVector2<T>>(), corner = in.template Vector<TVector2<T>>();
        const Vector v = this->Point();
        const T uLength = in.template Finite<T>(), vLength = in.template Finite<T>();
        const bool isWithin = set.WithinRectangle(corner, u, v, uLength, vLength);
        Require(!isWithin || set.GetCount() != 0);
        out << isWithin;
    }
    void Move()
    {
        Set& set = PickLarge(1100);
        const unsigned int kind = in.Below(3), index = in.Below(set.GetCount() + 1);
        const Vector drawn = this->Point();
        const Vector& offset = index < set.GetCount() && in.Flag() ? set[index] : drawn;
        if (kind == 0) set += offset;
        if (kind == 1) set -= offset;
        if (kind == 2) set *= drawn.x;
        if (kind == 2) RequireExactBox(set);
    }
    template <class Matrix>
    void Transform()
    {
        Set& set = PickLarge(4200);
        const unsigned int rowCount = in.Between(1, 5), columnCount = in.Between(1, 5);
        const TMatrixMxN<T> drawn = DrawMatrix<T>(in, rowCount, columnCount);
        const Matrix matrix = drawn;
        Points expected = Base::Copy(set);
        for (Vector& point : expected) point *= matrix;
        set *= matrix;
        const Aside aside;
        RequireExactBox(set);
        if constexpr (!std::is_same_v<Matrix, TMatrix4x4<T>>) out << AreSame(Base::Copy(set), expected);
    }
    void Register()
    {
        Set& set = Pick();
        Set& other = Other(set);
        const unsigned int count = std::min(set.GetCount(), other.GetCount());
        if (in.Below(8) != 0) {
            set.RemoveFromEnd(set.GetCount() - count);
            other.RemoveFromFront(other.GetCount() - count);
        }
        if (in.Flag()) {
            // A motion of the set itself, give or take the rounding.
            other = set;
            const bool isScaled = in.Flag();
            other *= TMatrix3x3<T>(T(0.6), T(-0.8), T(0), T(0.8), T(0.6), T(0), T(1), T(2), T(1));
            if (isScaled) other *= T(0.9921875);
        }
        TMatrixMxN<T> rotation;
        Vector translation;
        const bool apply = in.Flag(), isFound = set.Register(&other, &rotation, &translation, apply);
        Require(!isFound || rotation.GetM() == sizeof(Vector) / sizeof(T));
        Require(!isFound || set.GetCount() == other.GetCount());
        out << isFound << rotation << (isFound ? translation : Vector());
    }
    void Smooth()
    {
        Set& set = PickLarge(1100);
        const Points before = Base::Copy(set);
        const unsigned int passes = in.Below(6);
        const bool isClosed = in.Flag();
        set.Smooth(passes, isClosed);
        const Aside aside;
        Require(set.GetCount() == before.size());
        if (!isClosed && !before.empty())
            Require(AreSame(before.front(), set.GetFirst()) && AreSame(before.back(), set.GetLast()));
    }
    /// No segment may be infinitely long, for the spacing would not go into it, and none is cut into many pieces.
    void Infill()
    {
        Set& set = Pick();
        T longest = T(0), spacing = Numbers::Absolute(in.template Finite<T>());
        for (unsigned int i = 0; i < set.GetCount(); ++i) {
            const T length = (set[(i + 1) % set.GetCount()] - set[i]).GetLength();
            if (length > longest) longest = length;
        }
        const bool isClosed = in.Flag();
        if (std::isinf(longest)) return;
        if (!(spacing > longest / 8)) spacing = longest / 8;
        if (!(spacing > T(0))) spacing = T(1);
        const Points before = Base::Copy(set);
        set.Infill(spacing, isClosed);
        const Aside aside;
        Require(AreInOrderAmong(before, Base::Copy(set)));
    }
    template <bool isSum>
    void Combine()
    {
        const Points points = this->Draw(40);
        const auto count = static_cast<unsigned int>(points.size());
        const Set source(Pick()), other(points.data(), count);
        const auto byArray = [&](Set& set) {
            isSum ? set.MinkowskiSum(points.data(), count) : set.MinkowskiDifference(points.data(), count);
        };
        const auto byList = [&](Set& set) { isSum ? set.MinkowskiSum(other) : set.MinkowskiDifference(other); };
        const auto ofArrays = [&](Set& set) {
            const Vector* const a = source.GetStream();
            isSum ? set.MinkowskiSum(a, source.GetCount(), points.data(), count)
                  : set.MinkowskiDifference(a, source.GetCount(), points.data(), count);
        };
        const auto ofLists = [&](Set& set) {
            isSum ? set.MinkowskiSum(source, other) : set.MinkowskiDifference(source, other);
        };
        Set results[] = {Set(source), Set(source), Set(first), Set(second)};
        byArray(results[0]);
        byList(results[1]);
        ofArrays(results[2]);
        ofLists(results[3]);
        // In place the set's own block is the only buffer; two operands are run through the other way round.
        Points inPlace, ofTwo;
        const Vector zero = Vector(std::vector<T>(4).data());
        for (const Vector& q : points)
            for (const Vector& p : Base::Copy(source)) {
                const Vector moved = isSum ? p - zero + points[0] : p + zero - points[0];
                const Vector back = isSum ? moved - points[0] : moved + points[0];
                inPlace.push_back(&q == &points[0] ? moved : isSum ? back + q : back - q);
            }
        for (const Vector& p : Base::Copy(source))
            for (const Vector& q : points) ofTwo.push_back(isSum ? p + q : p - q);
        for (unsigned int i = 0; i < 4; ++i) {
            Require(AreSame(Base::Copy(results[i]), i < 2 ? inPlace : ofTwo));
            out << results[i];
        }
        const Aside aside;
        Pick() = results[0];
    }
    /// The range of an outline, the two forms of the point, the scores of its sides one by one, and the outline made
    /// ready for many points agree.
    void IsWithin()
    {
        const Set& set = PickLarge(4200);
        const TOutlineIndex<T> made(set), prepared(made);
        const unsigned int all = set.GetCount(), from = in.Between(0, all), count = in.Between(0, all - from);
        for (unsigned int round = 0; round < 4; ++round) {
            auto point = in.template Vector<TVector2<T>>();
            const unsigned int index = in.Below(all + 1);
            // Level with a vertex or at one.
            if (index < all) point.y = set[index].y;
            if (index < all && in.Flag()) point.x = set[index].x;
            const bool isWithin = set.IsWithin(point, from, count);
            int crossings = 0, plain = 0;
            for (unsigned int i = 0; i < count; ++i) {
                const unsigned int a = from + i, b = from + (i + 1) % count;
                set.ExamineSegment(a, b, point, &crossings);
                plain += Plain::CrossingScore(set[a], set[b], point.x, point.y);
            }
            Require(crossings == plain && isWithin == (set.GetBoundingBox().IsWithin(point, T(0)) && plain != 0));
            Require(isWithin == set.IsWithin(point.x, point.y, from, count));
            Require(set.IsWithin(point) == set.IsWithin(point, 0, all));
            Require(set.IsWithin(point) == set.IsWithin(point.x, point.y));
            out << isWithin << crossings << set.IsWithin(point);
            const TVector2<T> a = index < all ? static_cast<TVector2<T>>(set[index]) : point, b = point;
            for (const TVector2<T>& p : {point, a, (a + b) * T(0.5), TVector2<T>((a.x + b.x) / 2, a.y)})
                Require(prepared.IsWithin(p) == set.IsWithin(p));
        }
    }
    /// The hits are appended to whatever the list holds, which must not be this set.
    void IntersectWith()
    {
        const Set& set = PickLarge(1100);
        Set& hits = Other(set);
        const unsigned int before = hits.GetCount();
        TEdge2<T> edge = in.template Vector<TEdge2<T>>();
        const bool isHit = set.IntersectWith(edge, &hits);
        Require(isHit == (hits.GetCount() != 0) && hits.GetCount() - before <= set.GetCount());
        out << isHit << edge;
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"edits", &PointSetState::Edit},
                {"constructors", &PointSetState::Construct},
                {"operator=", &PointSetState::Assign, Promise::Valid},
                {"RecalculateBoundingBox", &PointSetState::Recalculate},
                {"GetCentre", &PointSetState::GetCentre},
                {"WithinRectangle", &PointSetState::WithinRectangle},
                {"operator+=", &PointSetState::Move},
                {"operator*=(TMatrix2x2)", &PointSetState::template Transform<TMatrix2x2<T>>},
                {"operator*=(TMatrix3x3)", &PointSetState::template Transform<TMatrix3x3<T>>},
                {"operator*=(TMatrix4x4)", &PointSetState::template Transform<TMatrix4x4<T>>},
                {"operator*=(TMatrixMxN)", &PointSetState::template Transform<TMatrixMxN<T>>},
                {"Register", &PointSetState::Register, Promise::Valid},
                {"Smooth", &PointSetState::Smooth},
                {"Infill", &PointSetState::Infill, Promise::Valid},
                {"MinkowskiSum", &PointSetState::template Combine<true>},
                {"MinkowskiDifference", &PointSetState::template Combine<false>},
                {"IsWithin", &PointSetState::IsWithin},
                {"IntersectWith", &PointSetState::IntersectWith, Promise::Valid}};
    }
};

/// Polylines with their positions opened; edited as sets they keep those of points that have moved or gone.
template <class T, template <class> class V>
struct OpenLine : Hooked<T, V, TParameterization<T, V>>
{
    using Base = Hooked<T, V, TParameterization<T, V>>;
    using Base::Base, Base::parameters;
    OpenLine() : Base(0, 16) {}
    void Assign(const TParameterization<T, V>& other) { TParameterization<T, V>::operator=(other); }
};

template <class T, template <class> class V>
struct LineState : SetState<T, V, OpenLine<T, V>, OpenLine<T, V>>
{
    using Line = TParameterization<T, V>;
    using Open = OpenLine<T, V>;
    using Base = SetState<T, V, Open, Open>;
    using Base::Base, Base::first, Base::in, Base::out, Base::Pick, Base::PickLarge, Base::second;

    void Fill() override
    {
        Base::FillBy(65);
        first.Parameterize();
        second.Parameterize();
    }
    void Show() const override { out << static_cast<const Line&>(first) << static_cast<const Line&>(second); }

    /// A position on the line: about one of its points as a rule.
    T DrawPosition(const Open& line)
    {
        const unsigned int index = in.Below(line.parameters.GetCount() + 1);
        const T drawn = static_cast<T>(in.Byte()) / 255;
        const T position = index < line.parameters.GetCount() && in.Flag() ? line.parameters[index] : drawn;
        return position == position ? position : T(0);
    }
    void Construct()
    {
        Open& line = Pick();
        const unsigned int capacity = in.Below(40), growSize = in.Below(40);
        const Line copy(static_cast<const Line&>(line)), empty(capacity, growSize);
        const Line ofArray(line.GetStream(), line.GetCount());
        RequireCopy<T, V>(copy, line);
        out << copy << empty << ofArray << Line(TPointSet<T, TVector2>(line)) << Line(TPointSet<T, TVector3>(line))
            << Line(TPointSet<T, TVector4>(line));
        const T position = DrawPosition(line);
        Require(AreSame(copy.Evaluate(position), line.Evaluate(position)));
        Require(AreSame(copy.GetLength(), line.GetLength()));
        Require(std::isnan(ofArray.Evaluate(T(0)).x));
    }
    void Assign()
    {
        Open &target = Pick(), &source = Pick();
        target.Assign(source);
        Require(&target == &source ? target.GetCount() == 0
                                   : AreSame(Contents(target.parameters), Contents(source.parameters)));
    }
    void Parameterize()
    {
        Open& line = PickLarge(4200);
        line.Parameterize();
        out << line.GetLength();
    }
    void Evaluate()
    {
        const Open& line = Pick();
        for (unsigned int i = 0; i < 6; ++i) {
            const T position = DrawPosition(line), any = in.template Scalar<T>();
            out << line.Evaluate(position) << line.Evaluate(any);
            if (any < T(0) || any > T(1) || line.GetCount() < 2) Require(std::isnan(line.Evaluate(any).x));
        }
    }
    void GetLength()
    {
        const Open& line = Pick();
        for (unsigned int i = 0; i < 6; ++i) {
            const T from = DrawPosition(line), to = DrawPosition(line);
            const T length = line.GetLength(from, to);
            Require(AreSame(length, line.GetLength(to, from)) && AreSame(line.GetLength(from, from), T(0)));
            out << length;
        }
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"edits", &LineState::Edit},
                {"constructors", &LineState::Construct},
                {"operator=", &LineState::Assign, Promise::Valid},
                {"Parameterize", &LineState::Parameterize},
                {"Evaluate", &LineState::Evaluate},
                {"GetLength", &LineState::GetLength}};
    }
};

const Family pointSets([] {
    AddOverPoints<PointSetState>("TPointSet", 800);
    AddOverPoints<LineState>("TParameterization", 800);
});

} // namespace
} // namespace CorvexCatalogue

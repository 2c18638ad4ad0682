// B-splines: their control points and knots, evaluation, lengths and the fit.

#include "Sets.h"

#include <tests/support/plain/PlainBasis.h>

namespace CorvexCatalogue
{
namespace
{

/// A spline with its knots opened.
template <class T, template <class> class V>
struct OpenSpline : Hooked<T, V, TBSpline<T, V>>
{
    using Spline = TBSpline<T, V>;
    using Spline::coefficients, Spline::knotCount, Spline::knots, Spline::order, Spline::type;
    OpenSpline() : Hooked<T, V, Spline>(3, Clamped, 0, 16) {}
    void Assign(const Spline& other) { Spline::operator=(other); }
};

template <class T, template <class> class V>
struct SplineState : SetState<T, V, OpenSpline<T, V>, OpenSpline<T, V>>
{
    using Open = OpenSpline<T, V>;
    using Spline = TBSpline<T, V>;
    using Base = SetState<T, V, Open, Open>;
    using Base::Base, Base::first, Base::in, Base::out, Base::Pick, Base::second;
    using typename Base::Points, typename Base::Set;
    Set data;

    void Fill() override
    {
        for (Open* spline : {&first, &second}) {
            spline->SetOrder(DrawOrder());
            spline->SetType(DrawType());
        }
        this->FillBy(65);
        const Points points = this->Draw(100);
        const Set drawn(points.data(), static_cast<unsigned int>(points.size()));
        data = drawn;
    }
    void Show() const override
    {
        out << static_cast<const Spline&>(first) << static_cast<const Spline&>(second) << data;
    }
    void Check() override
    {
        Base::Check();
        this->Trim(data);
    }

    unsigned int DrawOrder() { return in.Between(1, 9); }
    /// One of the two types, rarely neither.
    KnotType DrawType()
    {
        const unsigned int kind = in.Byte();
        return static_cast<KnotType>(kind % 16 == 15 ? 2 : kind % 2);
    }
    /// A spline that may be evaluated, its knots built anew where edits left them behind.
    Open& PickReady()
    {
        Open& spline = this->PickLarge(700);
        const Aside aside;
        if (spline.GetCount() == 0) spline.Add(this->Point());
        if (spline.GetType() > Clamped) spline.SetType(Clamped);
        if (spline.knots.GetCount() != spline.order + spline.GetCount() || spline.knotCount != spline.knots.GetCount())
            spline.SetOrder(spline.GetOrder());
        return spline;
    }
    /// A set to read or write: the data, or the other spline.
    Set& PickOther(const Open& spline)
    {
        if (in.Flag()) return data;
        return &spline == &first ? second : first;
    }
    /// A parameter: on the curve as a rule, about a knot, or any.
    T DrawParameter(const Open& spline)
    {
        const unsigned int kind = in.Below(8);
        if (kind == 0) return in.template Scalar<T>();
        if (kind == 1) return spline.knots[in.Below(spline.knots.GetCount())];
        return static_cast<T>(in.Byte()) / 255;
    }

    void Construct()
    {
        const unsigned int order = DrawOrder(), capacity = in.Below(20), growSize = in.Below(20);
        const KnotType type = DrawType();
        const Spline empty(order, type, capacity, growSize), ofSet(data, order, type), ofSpline(first, order, type);
        const Spline copy(static_cast<const Spline&>(second));
        RequireCopy<T, V>(ofSet, data);
        RequireCopy<T, V>(copy, second);
        out << empty << ofSet << ofSpline << copy;
    }
    void Assign()
    {
        Open &target = Pick(), &source = Pick();
        target.Assign(source);
        Require(&target == &source ? target.GetCount() == 0 : AreSame(Contents(target.knots), Contents(source.knots)));
    }
    void SetOrder()
    {
        Open& spline = Pick();
        const unsigned int order = DrawOrder();
        spline.SetOrder(order);
        Require(spline.GetOrder() == order);
    }
    void SetType()
    {
        Open& spline = Pick();
        const KnotType type = DrawType();
        spline.SetType(type);
        Require(spline.GetType() == type && (spline.knots.GetCount() != 0) == (type <= Clamped));
    }
    void Wrap()
    {
        Open& spline = Pick();
        Points points = Base::Copy(spline);
        spline.Wrap();
        const Aside aside;
        if (points.size() > spline.GetOrder()) {
            const Points start(points.begin(), points.begin() + spline.GetOrder());
            points.insert(points.end(), start.begin(), start.end());
        }
        Require(AreSame(Base::Copy(spline), points));
    }
    /// The point, and the basis functions behind it by the whole recursion.
    static V<T> EvaluatePlainly(Open& spline, T u)
    {
        const auto point = spline.Evaluate(u);
        const Aside aside;
        const bool isUniform = spline.type == Uniform;
        const T upper = spline.knots[isUniform ? spline.GetCount() : spline.knotCount - 1];
        const T lower = spline.knots[isUniform ? spline.order : 0];
        T x = (upper - lower) * u + lower;
        if (x >= upper) x = upper - Numbers::commonTolerance<T>;
        std::vector<T> basis(spline.knotCount - 1);
        Plain::FillBasis(spline.knots.GetStream(), spline.knotCount, basis.data(), x, spline.order);
        auto sum = spline[0] * T(0) * T(0);
        for (unsigned int k = 0; k < sizeof(sum) / sizeof(T); ++k) sum[k] = T(0);
        for (unsigned int k = 0; k < spline.GetCount(); ++k) sum += spline[k] * basis[k];
        Require(AreSame(point, sum) && AreSame(Contents(spline.coefficients), basis));
        return point;
    }
    void Evaluate()
    {
        Open& spline = PickReady();
        for (unsigned int i = 0; i < 8; ++i) {
            const T u = DrawParameter(spline);
            out << EvaluatePlainly(spline, u);
        }
        // A derived class may set knots in any order and of any size: the first or the last, or one out of its turn.
        Open other(spline);
        const unsigned int last = other.knots.GetCount() - 1;
        for (unsigned int i = 0; i < 6; ++i) {
            const unsigned int kind = in.Below(4), any = in.Below(last + 1), near = std::min(last, any + in.Below(5));
            const T drawn = in.template Scalar<T>(), u = DrawParameter(other);
            other.knots[kind == 0 ? 0 : kind == 1 ? last : any] = kind == 2 ? T(other.knots[near]) : drawn;
            EvaluatePlainly(other, u);
        }
    }
    /// At most 100 points: the loop takes as many as the step asks for, and does not end where the step is negative or
    /// vanishes beside 1.
    void Sample()
    {
        Open& spline = PickReady();
        Set& points = PickOther(spline);
        const bool byLength = in.Flag();
        const T extent = byLength ? spline.GetLength(static_cast<T>(0.01f)) : T(1);
        T step = Numbers::Absolute(in.template Scalar<T>());
        const unsigned int pieces = in.Between(1, 100);
        if (!(step >= T(0))) step = T(0.5);
        if (step != T(0) && extent > step * 100) step = extent / static_cast<T>(pieces);
        spline.Evaluate(&points, step, byLength);
        out << extent;
        Require(points.GetCount() <= 110);
        if (points.GetCount() != 0) Require(AreSame(points.GetLast(), spline.Evaluate(T(1))));
    }
    void GetLength()
    {
        Open& spline = PickReady();
        const T start = in.template Coarse<T>() / 4, extent = static_cast<T>(in.Byte()) / 128;
        const T step = static_cast<T>(in.Below(64) + 1) / 64;
        const T length = spline.GetLength(start, start + extent, step), whole = spline.GetLength(step);
        Require(!(length < T(0)) && AreSame(whole, spline.GetLength(T(0), T(1), step)));
        out << length << whole;
    }
    /// The order is at least 2, there is data, and no more control points than that.
    void Fit()
    {
        Open& spline = Pick();
        Set& points = PickOther(spline);
        if (points.GetCount() == 0 || spline.GetOrder() < 2) return;
        const unsigned int dataCount = points.GetCount(), n = in.Between(0, std::min(dataCount, 24u));
        const bool endConditions = in.Flag();
        spline.Fit(points, n, endConditions);
        Require(spline.GetCount() >= n && spline.GetCount() <= n + spline.GetOrder());
        Require(points.GetCount() == dataCount || (endConditions && points.GetCount() == dataCount + 2));
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"edits", &SplineState::Edit, Promise::Valid},
                {"constructors", &SplineState::Construct},
                {"operator=", &SplineState::Assign, Promise::Valid},
                {"SetOrder", &SplineState::SetOrder},
                {"SetType", &SplineState::SetType},
                {"Wrap", &SplineState::Wrap, Promise::Valid},
                {"Evaluate", &SplineState::Evaluate},
                {"Evaluate(step)", &SplineState::Sample, Promise::Valid},
                {"GetLength", &SplineState::GetLength},
                {"Fit", &SplineState::Fit, Promise::Valid}};
    }
};

const Family splines([] { AddOverPoints<SplineState>("TBSpline", 600); });

} // namespace
} // namespace CorvexCatalogue

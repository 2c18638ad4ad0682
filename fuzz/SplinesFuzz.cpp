// Splines: edits of their control points and their knots, evaluation, lengths and the fit, on two live splines.

#include "Points.h"

namespace CorvexFuzz
{
namespace
{

template <class T, template <class> class V>
struct SplineState
{
    using Vector = V<T>;
    using Set = TPointSet<T, V>;
    using Spline = TBSpline<T, V>;
    using Points = std::vector<Vector>;

    /// A spline with its knots opened.
    struct OpenSpline : Spline
    {
        using Spline::coefficients, Spline::knotCount, Spline::knots, Spline::order, Spline::Spline, Spline::type;

        OpenSpline(const Spline& other) : Spline(other) {}
        void Assign(const Spline& other) { Spline::operator=(other); }

        /// Whether the spline may be evaluated: it has control points, knots of this number and one of the two types.
        bool IsReady() const
        {
            return this->count != 0 && knots.GetCount() == order + this->count && knotCount == knots.GetCount();
        }
    };

    OpenSpline first{3, Clamped, 0, 16}, second{4, Uniform, 10, 16};
    Set data;

    OpenSpline& Pick(Input& input) { return input.Flag() ? first : second; }

    /// A spline that may be evaluated, with knots that are built anew where edits left them behind; null without
    /// control points.
    OpenSpline* PickReady(Input& input)
    {
        OpenSpline& spline = Pick(input);
        if (spline.GetCount() == 0) return nullptr;
        if (spline.GetType() > Clamped) spline.SetType(Clamped);
        if (!spline.IsReady()) spline.SetOrder(spline.GetOrder());
        Require(spline.IsReady());
        return &spline;
    }

    /// An order from 1 on; also one above the number of control points.
    static unsigned int Order(Input& input) { return input.Between(1, 9); }
    /// One of the two types, rarely neither.
    static KnotType Type(Input& input) { return static_cast<KnotType>(input.Byte() % 16 == 15 ? 2 : input.Below(2)); }

    /// A parameter, which lies on the curve as a rule.
    static T Parameter(Input& input) { return input.Flag() ? static_cast<T>(input.Byte()) / 255 : input.Scalar<T>(); }

    /// Fits a spline to another set. The order is at least 2, there is data, and no more control points than that.
    static void Fit(OpenSpline& spline, Set& points, Input& input)
    {
        if (points.GetCount() == 0 || spline.GetOrder() < 2) return;
        const unsigned int controlCount = input.Between(0, points.GetCount() < 20 ? points.GetCount() : 20);
        const KnotType type = spline.GetType();
        const unsigned int dataCount = points.GetCount();
        const bool endConditions = input.Flag();
        spline.Fit(points, controlCount, endConditions);
        Require(spline.GetCount() >= controlCount && spline.GetCount() <= controlCount + spline.GetOrder());
        Require(spline.GetType() == type || spline.GetType() == Clamped);
        Require(points.GetCount() == dataCount || (endConditions && points.GetCount() == dataCount + 2));
        Bound(points);
    }

    /// Samples a curve. The step takes at most 100 points, and so does the distance: the loop takes as many as the step
    /// asks for, and it does not end where the step is negative or vanishes beside 1. NaN is not taken.
    static void Sample(OpenSpline& spline, Set& out, Input& input)
    {
        const bool byLength = input.Flag();
        const T extent = byLength ? spline.GetLength(static_cast<T>(0.01f)) : T(1);
        T step = Numbers::Absolute(input.Scalar<T>());
        if (!(step >= T(0))) step = T(0.5);
        if (step != T(0) && extent > step * 100) step = extent / static_cast<T>(input.Between(1, 100));
        spline.Evaluate(&out, step, byLength);
        Require(out.GetCount() <= 110);
        if (out.GetCount() != 0) Require(AreSameScalars<T>(out.GetLast(), spline.Evaluate(T(1))));
        Bound(out);
    }

    /// Between parameters up to 16, in at most 256 steps: the loop takes as many as the step asks for, and it does not
    /// end where the step vanishes beside the parameter.
    static void Measure(OpenSpline& spline, Input& input)
    {
        const auto grid = [&input] { return static_cast<T>(static_cast<int>(input.Byte()) - 128) / 8; };
        const T start = grid(), end = grid();
        const T step = static_cast<T>(input.Below(64) + 1) / 8;
        const T length = spline.GetLength(start, end, step);
        Require(!(length < T(0)));
        const T whole = spline.GetLength(step / 16);
        Require(AreSame(whole, spline.GetLength(T(0), T(1), step / 16)));
    }

    static void RequireSameKnots(const OpenSpline& a, const OpenSpline& b)
    {
        Require(a.GetOrder() == b.GetOrder() && a.GetType() == b.GetType() && a.knotCount == b.knotCount);
        Require(a.knots.GetCount() == b.knots.GetCount());
        for (unsigned int i = 0; i < a.knots.GetCount(); ++i) Require(AreSame(a.knots[i], b.knots[i]));
        for (unsigned int i = 0; i < a.coefficients.GetCount(); ++i)
            Require(AreSame(a.coefficients[i], b.coefficients[i]));
    }

    /// Every control point can be read, and the order is one that a spline can have.
    void Check() const
    {
        for (const OpenSpline* spline : {&first, &second}) {
            spline->GetCentre();
            Require(spline->GetOrder() >= 1 && spline->GetCount() <= largestSet);
        }
    }

    static const Operation<SplineState> operations[];
};

template <class T, template <class> class V>
const Operation<SplineState<T, V>> SplineState<T, V>::operations[] = {
    {"edit", [](SplineState& s, Input& in) { EditList<T, V>(s.Pick(in), in); }},
    {"edit the data", [](SplineState& s, Input& in) { EditList<T, V>(s.data, in); }},
    {"data of an array",
     [](SplineState& s, Input& in) {
         const Points points = DecodePoints<T, V>(in, largestSet);
         s.data = Set(points.data(), static_cast<unsigned int>(points.size()));
     }},
    {"of sizes",
     [](SplineState& s, Input& in) {
         s.Pick(in).Assign(Spline(Order(in), Type(in), in.Below(20), in.Below(20)));
     }},
    {"of a set",
     [](SplineState& s, Input& in) {
         OpenSpline made(s.data, Order(in), Type(in));
         Require(AreSamePoints<T, V>(Copy<T, V>(made), Copy<T, V>(s.data)));
         s.Pick(in).Assign(made);
     }},
    {"of itself as a set",
     [](SplineState& s, Input& in) {
         OpenSpline& spline = s.Pick(in);
         spline.Assign(Spline(spline, Order(in), Type(in)));
     }},
    {"assign",
     [](SplineState& s, Input& in) {
         OpenSpline& target = s.Pick(in);
         const OpenSpline& source = s.Pick(in);
         target.Assign(source);
         if (&target == &source) {
             Require(target.GetCount() == 0 && target.knots.GetCount() == 0);
             return;
         }
         RequireSameKnots(target, source);
         Require(AreSamePoints<T, V>(Copy<T, V>(target), Copy<T, V>(source)));
         Require(AreSameScalars<T>(target.GetBoundingBox(), source.GetBoundingBox()));
     }},
    {"copy",
     [](SplineState& s, Input& in) {
         const OpenSpline& spline = s.Pick(in);
         const OpenSpline copy(static_cast<const Spline&>(spline));
         RequireCopy<T, V>(copy, spline);
         RequireSameKnots(copy, spline);
     }},
    {"toggle keepBox",
     [](SplineState& s, Input& in) {
         bool& keepBox = Opened<T, V>::KeepBox(s.Pick(in));
         keepBox = !keepBox;
     }},
    {"SetOrder",
     [](SplineState& s, Input& in) {
         OpenSpline& spline = s.Pick(in);
         const unsigned int order = Order(in);
         spline.SetOrder(order);
         Require(spline.GetOrder() == order);
     }},
    {"SetType",
     [](SplineState& s, Input& in) {
         OpenSpline& spline = s.Pick(in);
         const KnotType type = Type(in);
         spline.SetType(type);
         Require(spline.GetType() == type && (spline.knots.GetCount() != 0) == (type <= Clamped));
     }},
    {"Wrap",
     [](SplineState& s, Input& in) {
         OpenSpline& spline = s.Pick(in);
         const Points before = Copy<T, V>(spline);
         spline.Wrap();
         const std::size_t added = spline.GetCount() - before.size();
         Require(added == (before.size() > spline.GetOrder() ? spline.GetOrder() : 0));
         for (unsigned int i = 0; i < added; ++i)
             Require(AreSameScalars<T>(spline[static_cast<unsigned int>(before.size()) + i], before[i]));
         Bound<T, V>(spline);
     }},
    {"Evaluate",
     [](SplineState& s, Input& in) {
         OpenSpline* const spline = s.PickReady(in);
         if (spline == nullptr) return;
         const T u = Parameter(in);
         const Vector point = spline->Evaluate(u);
         Require(AreSameScalars<T>(point, spline->Evaluate(u)));
     }},
    {"Evaluate at the end",
     [](SplineState& s, Input& in) {
         // From the right end on the parameter is taken just inside. The end of uniform knots is subject to rounding.
         OpenSpline* const spline = s.PickReady(in);
         if (spline != nullptr && spline->GetType() == Clamped)
             Require(AreSameScalars<T>(spline->Evaluate(T(1)), spline->Evaluate(T(2))));
     }},
    {"Evaluate to a set",
     [](SplineState& s, Input& in) {
         if (OpenSpline* const spline = s.PickReady(in)) Sample(*spline, s.data, in);
     }},
    {"Evaluate to a spline",
     [](SplineState& s, Input& in) {
         OpenSpline* const spline = s.PickReady(in);
         if (spline != nullptr) Sample(*spline, spline == &s.first ? s.second : s.first, in);
     }},
    {"GetLength",
     [](SplineState& s, Input& in) {
         if (OpenSpline* const spline = s.PickReady(in)) Measure(*spline, in);
     }},
    {"Fit",
     [](SplineState& s, Input& in) { Fit(s.Pick(in), s.data, in); }},
    {"Fit to a spline",
     [](SplineState& s, Input& in) {
         OpenSpline& spline = s.Pick(in);
         Fit(spline, &spline == &s.first ? s.second : s.first, in);
     }},
};

} // namespace
} // namespace CorvexFuzz

using namespace CorvexFuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return RunOnPoints<SplineState>(data, size);
}

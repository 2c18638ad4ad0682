// B-splines.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

template <class T, template <class> class V>
void AddSplines(Report& report)
{
    using Spline = TBSpline<T, V>;
    using Set = TPointSet<T, V>;
    const std::string name = NameOf<T, V>("TBSpline") + "::";
    const std::vector<Set> sets = MakeShapes<Set, T, V>(allShapes, {0, 1, 2, 5, 30});
    const std::vector<Set> finite = MakeShapes<Set, T, V>(finiteShapes, {1, 2, 5, 12, 40});
    const std::vector<unsigned int> orders = {1, 2, 3, 4, 7};
    const std::vector<KnotType> types = {Uniform, Clamped, static_cast<KnotType>(2)};
    const std::vector<KnotType> known = {Uniform, Clamped};

    report.Over(sets, orders, types).Add(name + "changes", [](Digest& d, Set& set, unsigned int order, KnotType type) {
        Spline spline(set, order, type), empty(order, type, 2, 5);
        d << spline << empty << spline.GetOrder() << spline.GetType();
        empty.AddRange(set);
        empty.Insert(V<T>(), 0);
        empty.RemoveAt(0);
        d << empty;
        spline.SetOrder(order + 1);
        d << spline;
        spline.SetType(Clamped);
        d << spline;
        spline.Wrap();
        d << spline << Spline(spline);
        empty = spline;
        Spline tight(order, type, 0, 0);
        tight.AddRange(set);
        d << empty << tight;
    });
    report.Over(sets, orders, known).Add(name + "Evaluate", [](Digest& d, Set& set, unsigned int order, KnotType type) {
        if (set.GetCount() == 0) return;
        Spline spline(set, order, type);
        for (int i = -3; i < 35; ++i) d << spline.Evaluate(static_cast<T>(i) / 32);
        d << spline.Evaluate(std::numeric_limits<T>::quiet_NaN()) << spline;
    });
    const std::vector<T> steps = {T(0), T(0.03), T(0.25), T(0.4), T(5)};
    report.Over(finite, orders, known, steps)
        .Add(name + "Evaluate(step)", [](Digest& d, Set& set, unsigned int order, KnotType type, T step) {
            Spline spline(set, order, type);
            Set out(1, 2);
            out.Add(V<T>());
            spline.Evaluate(&out, step, false);
            d << out;
            spline.Evaluate(&out, step * 8, true);
            d << out << spline;
            if (step > T(0)) d << spline.GetLength(step) << spline.GetLength(T(0.2), T(0.7), step) << spline;
        });
    const std::vector<unsigned int> counts = {0, 1, 2, 4, 5, 11};
    const std::vector<bool> flags = {false, true};
    report.Over(finite, orders, known, counts, flags)
        .Add(name + "Fit", [](Digest& d, Set& set, unsigned int order, KnotType type, unsigned int count, bool ends) {
            if (order < 2 || count > set.GetCount()) return;
            Spline spline(order, type, 0, 3);
            spline.Fit(set, count, ends);
            d << spline << set;
        });
}

} // namespace

void DigestSplines(Report& report)
{
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddSplines<T, TVector2>(report);
        AddSplines<T, TVector3>(report);
        AddSplines<T, TVector4>(report);
    });
}

} // namespace CorvexDigest

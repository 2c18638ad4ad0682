#include <CorvexMaths/robust/SplineLength.h>

#include <CorvexMaths/robust/internal/Curve.h>

#include <algorithm>
#include <cmath>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::Curve;

/// The nodes right of the middle and the weights of the rule of 16 points on -1 to 1, exact up to degree 31.
constexpr double rule[][2] = {
    {0.0950125098376374402, 0.189450610455068496}, {0.281603550779258913, 0.182603415044923589},
    {0.458016777657227386, 0.169156519395002538},  {0.617876244402643748, 0.149595988816576732},
    {0.755404408355003034, 0.124628971255533872},  {0.865631202387831744, 0.0951585116824927848},
    {0.944575023073232576, 0.0622535239386478929}, {0.989400934991649933, 0.0271524594117540949},
};

/// Lengths of a curve in units of a power of two.
template <class T, template <class> class V>
class Measure
{
public:
    Measure(const Curve<T, V>& measured, int exponent) : curve(measured), scale(std::ldexp(1.0, -exponent)) {}

    double Speed(double x, unsigned int span) const
    {
        constexpr unsigned int dimension = Curve<T, V>::dimension;
        double derivative[dimension];
        curve.Differentiate(x, span, scale, derivative);
        double square = 0;
        for (const double component : derivative) square += component * component;
        return std::sqrt(square);
    }

    /// Whether the curve turns back between an end of a piece and the node of the rule that is nearest to it, where the
    /// rule sees nothing of it: the velocities there point apart.
    bool TurnsBackAtAnEnd(double from, double to, unsigned int span) const
    {
        const double reach = (to - from) / 2 * (1 - rule[7][0]);
        return Product(from, from + reach, span) < 0 || Product(to - reach, to, span) < 0;
    }

    /// The length between two parameters of a span, by the rule alone.
    double Length(double from, double to, unsigned int span) const
    {
        const double middle = from + (to - from) / 2;
        const double half = (to - from) / 2;
        double sum = 0;
        for (const auto& [node, weight] : rule)
            sum += weight * (Speed(middle - half * node, span) + Speed(middle + half * node, span));
        return half * sum;
    }

    /// Appends pieces of a span, halved until the halves of each sum up to it within a part of the size of the control
    /// polygon, or within what rounding makes of it: that of a sum, and that of a place x among the knots, which a
    /// piece feels the more the smaller it is. The sum is kept, and is far nearer than the difference tells. Where the
    /// curve comes to a stop and turns back that takes ever smaller pieces, down to 2^-40 of the span; so it does next
    /// to an end, where both sums would miss it alike.
    void AppendPieces(double from, double to, double length, unsigned int span, unsigned int depth, TList<double>* ends,
                      TList<double>* lengths) const
    {
        const double middle = from + (to - from) / 2;
        const double first = Length(from, middle, span);
        const double second = Length(middle, to, span);
        const double rounding = 0x1p-49 * (1 + std::fmax(std::fabs(from), std::fabs(to)) / (to - from));
        const double difference = std::fabs(first + second - length);
        const bool isNear = !(difference > std::fmax(0x1p-46, rounding * length));
        if (depth == 0 || (isNear && !TurnsBackAtAnEnd(from, middle, span) && !TurnsBackAtAnEnd(middle, to, span))) {
            const double before = lengths->GetLast();
            ends->Add(middle);
            lengths->Add(before + first);
            ends->Add(to);
            lengths->Add(before + first + second);
            return;
        }
        AppendPieces(from, middle, first, span, depth - 1, ends, lengths);
        AppendPieces(middle, to, second, span, depth - 1, ends, lengths);
    }

private:
    const Curve<T, V>& curve;
    double scale;

    /// The scalar product of the velocities at two parameters of a span.
    double Product(double a, double b, unsigned int span) const
    {
        constexpr unsigned int dimension = Curve<T, V>::dimension;
        double first[dimension], second[dimension];
        curve.Differentiate(a, span, scale, first);
        curve.Differentiate(b, span, scale, second);
        double sum = 0;
        for (unsigned int k = 0; k < dimension; ++k) sum += first[k] * second[k];
        return sum;
    }
};

/// The exponent of the greatest extent of the control points in a component.
template <class T, template <class> class V>
int FindExponent(const Curve<T, V>& curve)
{
    double size = 0;
    for (unsigned int k = 0; k < Curve<T, V>::dimension; ++k) {
        double least = curve.Value(0, k);
        double greatest = least;
        for (unsigned int i = 1; i < curve.EndSpan(); ++i) {
            least = std::min(least, curve.Value(i, k));
            greatest = std::max(greatest, curve.Value(i, k));
        }
        size = std::max(size, greatest - least);
    }
    int exponent = 0;
    std::frexp(size, &exponent);
    return std::max(exponent, -1022);
}

} // namespace

template <class T, template <class> class V>
SplineLength<T, V>::SplineLength(const TBSpline<T, V>& spline)
{
    if (spline.GetCount() == 0) return;
    const Curve<T, V> view(spline);
    status = !view.IsWhole() ? Status::Degenerate : view.IsFinite() ? Status::Done : Status::NotFinite;
    if (status != Status::Done) return;
    exponent = FindExponent(view);
    const Measure<T, V> measure(view, exponent);
    ends.SetUseExponentialGrowth(true);
    lengths.SetUseExponentialGrowth(true);
    ends.Add(view.First());
    lengths.Add(0.0);
    for (unsigned int span = view.FirstSpan(); span < view.EndSpan(); ++span) {
        const double from = view.Knot(span);
        const double to = view.Knot(span + 1);
        if (from < to) measure.AppendPieces(from, to, measure.Length(from, to, span), span, 40, &ends, &lengths);
    }
    const T length = static_cast<T>(std::ldexp(lengths.GetLast(), exponent));
    if (!std::isfinite(length)) {
        *this = SplineLength();
        status = Status::NotFinite;
        return;
    }
    total = length;
    curve = spline;
}

template <class T, template <class> class V>
double SplineLength<T, V>::PlaceAt(double length) const
{
    const Curve<T, V> view(curve);
    const unsigned int last = lengths.GetCount() - 1;
    if (!(length > 0)) return view.First();
    if (length >= lengths[last]) return view.Last();
    const double* const first = lengths.GetStream();
    const auto piece = static_cast<unsigned int>(std::upper_bound(first, first + last, length) - first);
    const double start = ends[piece - 1];
    const double target = length - lengths[piece - 1];
    const double size = lengths[piece] - lengths[piece - 1];
    const Measure<T, V> measure(view, exponent);
    const unsigned int span = view.FindSpan(start);

    // The root lies between low and high; each step narrows that, by half at least where Newton's leaves it.
    double low = start;
    double high = ends[piece];
    double x = low + (high - low) * (target / size);
    for (unsigned int step = 0; step < 100; ++step) {
        const double excess = measure.Length(start, x, span) - target;
        (excess > 0 ? high : low) = x;
        if (std::fabs(excess) <= 0x1p-52 * lengths[last]) break;
        double next = x - excess / measure.Speed(x, span);
        if (!(next > low && next < high)) next = low + (high - low) / 2;
        if (next == x) break;
        x = next;
    }
    return x;
}

template <class T, template <class> class V>
T SplineLength<T, V>::ParameterAt(T length) const
{
    if (status != Status::Done) return T(0);
    const double place = PlaceAt(std::ldexp(static_cast<double>(length), -exponent));
    return static_cast<T>(Curve<T, V>(curve).ToUnit(place));
}

template <class T, template <class> class V>
V<T> SplineLength<T, V>::At(T length) const
{
    double point[Curve<T, V>::dimension] = {};
    if (status == Status::Done) {
        const Curve<T, V> view(curve);
        const double place = PlaceAt(std::ldexp(static_cast<double>(length), -exponent));
        view.Evaluate(place, view.FindSpan(place), point);
    }
    return Kernels::ToVector<T, V>(point);
}

template <class T, template <class> class V>
TPointSet<T, V> SplineLength<T, V>::Sample(unsigned int count) const
{
    TPointSet<T, V> points(count);
    if (status != Status::Done) return points;
    const Curve<T, V> view(curve);
    const double whole = lengths.GetLast();
    for (unsigned int i = 0; i < count; ++i) {
        const double place = PlaceAt(i + 1 == count && i > 0 ? whole : whole * i / (count - 1.0));
        double point[Curve<T, V>::dimension];
        view.Evaluate(place, view.FindSpan(place), point);
        points.Add(Kernels::ToVector<T, V>(point));
    }
    return points;
}

CORVEX_INSTANTIATE_SETS(, SplineLength);

} // namespace Halmont::Orrin::CorvexMaths::Robust

#include <CorvexMaths/robust/SplineLength.h>

#include <CorvexMaths/robust/internal/Curve.h>

#include <algorithm>
#include <cmath>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::Curve;
using Kernels::Place;

/// The nodes right of the middle and the weights of the rule of 16 points on -1 to 1, exact up to degree 31.
constexpr double rule[][2] = {
    {0.0950125098376374402, 0.189450610455068496}, {0.281603550779258913, 0.182603415044923589},
    {0.458016777657227386, 0.169156519395002538},  {0.617876244402643748, 0.149595988816576732},
    {0.755404408355003034, 0.124628971255533872},  {0.865631202387831744, 0.0951585116824927848},
    {0.944575023073232576, 0.0622535239386478929}, {0.989400934991649933, 0.0271524594117540949},
};

/// The pieces of a curve: the span of each, where it starts in that, and the length up to there, and in all.
struct Pieces
{
    TList<int>& spans;
    TList<double>& starts;
    TList<double>& lengths;

    void Add(unsigned int span, double start, double length) const
    {
        spans.Add(static_cast<int>(span));
        starts.Add(start);
        lengths.Add(lengths.GetLast() + length);
    }
};

/// Lengths of a curve in units of a power of two.
template <class T, template <class> class V>
class Measure
{
public:
    Measure(const Curve<T, V>& measured, int exponent) : curve(measured), scale(std::ldexp(1.0, -exponent)) {}

    double Speed(const Place& place) const
    {
        constexpr unsigned int dimension = Curve<T, V>::dimension;
        double derivative[dimension];
        curve.Differentiate(place, scale, derivative);
        double square = 0;
        for (const double component : derivative) square += component * component;
        return std::sqrt(square);
    }

    /// The length of a span between two offsets from its first knot, by the rule alone.
    double Length(unsigned int span, double from, double to) const
    {
        const double middle = from + (to - from) / 2;
        const double half = (to - from) / 2;
        double sum = 0;
        for (const auto& [node, weight] : rule)
            sum += weight * (Speed({span, middle - half * node}) + Speed({span, middle + half * node}));
        return half * sum;
    }

    /// Appends pieces of a span, halved until the halves of each sum up to it within a part of the size of the control
    /// polygon, or within what rounding makes of it: that of a sum, and that of an offset, which a piece feels the more
    /// the smaller it is. The sum is kept, and is far nearer than the difference tells. Where the curve comes to a stop
    /// and turns back that takes ever smaller pieces, down to 2^-40 of the span; so it does next to an end, where both
    /// sums would miss it alike.
    void AppendPieces(unsigned int span, double from, double to, double length, unsigned int depth,
                      const Pieces& pieces) const
    {
        const double middle = from + (to - from) / 2;
        const double first = Length(span, from, middle);
        const double second = Length(span, middle, to);
        const double rounding = 0x1p-49 * (1 + to / (to - from));
        const double difference = std::fabs(first + second - length);
        const bool isNear = !(difference > std::fmax(0x1p-46, rounding * length));
        if (depth == 0 || (isNear && !TurnsBackAtAnEnd(span, from, middle) && !TurnsBackAtAnEnd(span, middle, to))) {
            pieces.Add(span, from, first);
            pieces.Add(span, middle, second);
            return;
        }
        AppendPieces(span, from, middle, first, depth - 1, pieces);
        AppendPieces(span, middle, to, second, depth - 1, pieces);
    }

private:
    const Curve<T, V>& curve;
    double scale;

    /// Whether the curve turns back between an end of a piece and the node of the rule that is nearest to it, where the
    /// rule sees nothing of it: the velocities there point apart.
    bool TurnsBackAtAnEnd(unsigned int span, double from, double to) const
    {
        const double reach = (to - from) / 2 * (1 - rule[7][0]);
        return Product({span, from}, {span, from + reach}) < 0 || Product({span, to - reach}, {span, to}) < 0;
    }

    /// The scalar product of the velocities at two places.
    double Product(const Place& a, const Place& b) const
    {
        constexpr unsigned int dimension = Curve<T, V>::dimension;
        double first[dimension], second[dimension];
        curve.Differentiate(a, scale, first);
        curve.Differentiate(b, scale, second);
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
SplineLength<T, V>::SplineLength() = default;

template <class T, template <class> class V>
SplineLength<T, V>::SplineLength(const TBSpline<T, V>& spline)
{
    if (spline.GetCount() == 0) return;
    const Curve<T, V> view(spline);
    status = !view.IsWhole() ? Status::Degenerate : view.IsFinite() ? Status::Done : Status::NotFinite;
    if (status != Status::Done) return;
    exponent = FindExponent(view);
    const Measure<T, V> measure(view, exponent);
    spans.SetUseExponentialGrowth(true);
    starts.SetUseExponentialGrowth(true);
    lengths.SetUseExponentialGrowth(true);
    lengths.Add(0.0);
    for (unsigned int span = view.FirstSpan(); span < view.EndSpan(); ++span) {
        const double width = view.Width(span);
        if (width > 0)
            measure.AppendPieces(span, 0, width, measure.Length(span, 0, width), 40, {spans, starts, lengths});
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
Place SplineLength<T, V>::PlaceAt(double length) const
{
    const Curve<T, V> view(curve);
    const unsigned int count = starts.GetCount();
    const double* const first = lengths.GetStream();
    const auto before = length > 0 ? std::upper_bound(first, first + count, length) - first : 1;
    const auto piece = static_cast<unsigned int>(before) - 1;
    const auto span = static_cast<unsigned int>(spans[piece]);
    const double start = starts[piece];
    const double end = piece + 1 < count && spans[piece + 1] == spans[piece] ? starts[piece + 1] : view.Width(span);
    if (!(length > 0)) return {span, start};
    if (length >= lengths[count]) return {span, end};
    const double target = length - lengths[piece];
    const double size = lengths[piece + 1] - lengths[piece];
    const Measure<T, V> measure(view, exponent);

    // The root lies between low and high; each step narrows that, by half at least where Newton's leaves it.
    double low = start;
    double high = end;
    double x = low + (high - low) * (target / size);
    for (unsigned int step = 0; step < 100; ++step) {
        const double excess = measure.Length(span, start, x) - target;
        (excess > 0 ? high : low) = x;
        if (std::fabs(excess) <= 0x1p-52 * lengths[count]) break;
        double next = x - excess / measure.Speed({span, x});
        if (!(next > low && next < high)) next = low + (high - low) / 2;
        if (next == x) break;
        x = next;
    }
    return {span, x};
}

template <class T, template <class> class V>
T SplineLength<T, V>::ParameterAt(T length) const
{
    if (status != Status::Done) return T(0);
    const Place place = PlaceAt(std::ldexp(static_cast<double>(length), -exponent));
    return static_cast<T>(Curve<T, V>(curve).ToUnit(place));
}

template <class T, template <class> class V>
V<T> SplineLength<T, V>::At(T length) const
{
    double point[Curve<T, V>::dimension] = {};
    if (status == Status::Done)
        Curve<T, V>(curve).Evaluate(PlaceAt(std::ldexp(static_cast<double>(length), -exponent)), point);
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
        double point[Curve<T, V>::dimension];
        view.Evaluate(PlaceAt(i + 1 == count && i > 0 ? whole : whole * i / (count - 1.0)), point);
        points.Add(Kernels::ToVector<T, V>(point));
    }
    return points;
}

CORVEX_INSTANTIATE_SETS(, SplineLength);

} // namespace Halmont::Orrin::CorvexMaths::Robust

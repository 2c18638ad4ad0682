#include <CorvexMaths/robust/ClosestPoint.h>

#include <CorvexMaths/robust/internal/Curve.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::Curve;
using Kernels::Place;
using Kernels::Scratch;

constexpr unsigned int greatestOrder = 500;

/// Binomial coefficients of n, as far as `double` holds them.
class Binomials
{
public:
    explicit Binomials(unsigned int n) : values(new double[n + std::size_t(1)])
    {
        values[0] = 1;
        for (unsigned int k = 1; k <= n; ++k) values[k] = values[k - 1] * (n + 1.0 - k) / k;
    }

    double operator[](unsigned int k) const { return values[k]; }

private:
    std::unique_ptr<double[]> values;
};

/// The search for the point of a curve that is closest to a target, in coordinates from the target and scaled by a
/// power of two.
template <class T, template <class> class V>
class Search
{
public:
    static constexpr unsigned int dimension = Curve<T, V>::dimension;

    Search(const Curve<T, V>& searched, const double* from, double unit)
        : curve(searched),
          target(from),
          scale(unit),
          degree(searched.Order() - 1),
          single(degree),
          lower(degree > 0 ? degree - 1 : 0),
          twice(2 * degree)
    {}

    /// The place of the closest point.
    Place Find()
    {
        for (unsigned int span = curve.FirstSpan(); span < curve.EndSpan(); ++span) {
            if (!(curve.Width(span) > 0)) continue;
            Look({span, 0});
            Look({span, curve.Width(span)});
        }
        Scratch scratch((degree + 1) * dimension);
        for (unsigned int span = curve.FirstSpan(); span < curve.EndSpan(); ++span) {
            if (!(curve.Width(span) > 0) || BoundOf(span) > best) continue;
            FillBezier(span, scratch.Get());
            SearchPiece(span, scratch.Get(), 0, curve.Width(span), 60);
        }
        return place;
    }

private:
    const Curve<T, V>& curve;
    const double* target;
    double scale;
    unsigned int degree;
    Binomials single, lower, twice;
    double best = HUGE_VAL; ///< The least square of a distance so far.
    Place place{0, 0};

    double Relative(double value, unsigned int component) const { return (value - target[component]) * scale; }

    void Offer(double square, const Place& offered)
    {
        if (square >= best) return;
        best = square;
        place = offered;
    }

    void Look(const Place& offered)
    {
        double point[dimension];
        curve.Evaluate(offered, point);
        for (unsigned int k = 0; k < dimension; ++k) point[k] = Relative(point[k], k);
        Offer(Dot(point, point), offered);
    }

    static double Dot(const double* a, const double* b)
    {
        double sum = 0;
        for (unsigned int k = 0; k < dimension; ++k) sum += a[k] * b[k];
        return sum;
    }

    /// No point of a span is nearer, in square, than the box of its control points.
    double BoundOf(unsigned int span) const
    {
        double sum = 0;
        for (unsigned int k = 0; k < dimension; ++k) {
            double least = HUGE_VAL;
            double greatest = -HUGE_VAL;
            for (unsigned int i = span - degree; i <= span; ++i) {
                least = std::fmin(least, Relative(curve.Value(i, k), k));
                greatest = std::fmax(greatest, Relative(curve.Value(i, k), k));
            }
            const double apart = std::fmax(0, std::fmax(least, -greatest));
            sum += apart * apart;
        }
        return sum;
    }

    /// The Bezier points of a span: the polar form of the curve, at the span's start in all places but the first i, and
    /// at its end in these (L. Ramshaw, 1987).
    void FillBezier(unsigned int span, double* bezier) const
    {
        Scratch scratch((degree + 1) * dimension);
        double* const d = scratch.Get();
        const unsigned int offset = span - degree;
        for (unsigned int ends = 0; ends <= degree; ++ends) {
            for (unsigned int i = 0; i <= degree; ++i)
                for (unsigned int k = 0; k < dimension; ++k)
                    d[i * dimension + k] = Relative(curve.Value(offset + i, k), k);
            for (unsigned int level = 1; level <= degree; ++level) {
                const double x = curve.Knot(level <= ends ? span + 1 : span);
                for (unsigned int i = 0; i + level <= degree; ++i) {
                    const double left = curve.Knot(offset + i + level);
                    const double right = curve.Knot(offset + i + degree + 1);
                    double* const a = d + i * dimension;
                    for (unsigned int k = 0; k < dimension; ++k)
                        a[k] = (a[k] * (right - x) + a[dimension + k] * (x - left)) / (right - left);
                }
            }
            std::copy(d, d + dimension, bezier + ends * dimension);
        }
    }

    /// What the Bernstein coefficients of the squared distance along a piece tell.
    enum class Shape
    {
        Far,      ///< Nothing on it is closer than what was found.
        Monotone, ///< The closest point is an end.
        Valley,   ///< There is one minimum, inside.
        Open      ///< None of these.
    };

    Shape FindShape(const double* bezier) const
    {
        double least = HUGE_VAL;
        double greatest = 0;
        for (unsigned int k = 0; k <= 2 * degree; ++k) {
            double sum = 0;
            for (unsigned int i = k > degree ? k - degree : 0; i <= std::min(k, degree); ++i)
                sum += single[i] * single[k - i] * Dot(bezier + i * dimension, bezier + (k - i) * dimension);
            least = std::fmin(least, sum / twice[k]);
        }
        for (unsigned int i = 0; i <= degree; ++i)
            greatest = std::fmax(greatest, Dot(bezier + i * dimension, bezier + i * dimension));
        // A coefficient is rounded to a few units of the greatest square; near the target that is much beside the
        // distance. What is not closer by 1e-13 is no closer: else a circle would be cut up to look from its centre.
        if (least - 0x1p-48 * greatest >= best * (1 - 0x1p-43)) return Shape::Far;

        // The derivative of the squared distance, up to positive factors, from products of points and differences: so a
        // small one at an end keeps its sign.
        unsigned int changes = 0;
        double first = 0;
        double last = 0;
        for (unsigned int k = 0; k < 2 * degree; ++k) {
            double sum = 0;
            for (unsigned int i = k >= degree ? k - degree + 1 : 0; i <= std::min(k, degree); ++i) {
                const double* const step = bezier + (k - i) * dimension;
                const double* const point = bezier + i * dimension;
                double product = 0;
                for (unsigned int c = 0; c < dimension; ++c) product += point[c] * (step[dimension + c] - step[c]);
                sum += single[i] * lower[k - i] * product;
            }
            if (sum == 0) continue;
            if (first == 0) first = sum;
            if (last * sum < 0 || (last < 0) != (sum < 0)) changes += last != 0 ? 1 : 0;
            last = sum;
        }
        if (changes == 0 || (changes == 1 && first > 0)) return Shape::Monotone;
        return changes == 1 ? Shape::Valley : Shape::Open;
    }

    /// Searches a piece of a span between two offsets from its first knot.
    void SearchPiece(unsigned int span, const double* bezier, double from, double to, unsigned int depth)
    {
        const Shape shape = FindShape(bezier);
        if (shape == Shape::Far) return;
        Offer(Dot(bezier, bezier), {span, from});
        Offer(Dot(bezier + degree * dimension, bezier + degree * dimension), {span, to});
        if (shape == Shape::Monotone) return;
        if (shape == Shape::Valley) {
            SearchValley(span, bezier, from, to);
            return;
        }
        const double middle = from + (to - from) / 2;
        if (depth == 0 || !(from < middle && middle < to)) return;
        // De Casteljau's triangle has the points of the left half on one side and those of the right on the other.
        Scratch leftScratch((degree + 1) * dimension), rightScratch((degree + 1) * dimension);
        double* const left = leftScratch.Get();
        double* const right = rightScratch.Get();
        std::copy(bezier, bezier + (degree + 1) * dimension, right);
        for (unsigned int level = 0; level <= degree; ++level) {
            std::copy(right, right + dimension, left + level * dimension);
            for (unsigned int i = 0; i < (degree - level) * dimension; ++i)
                right[i] = (right[i] + right[i + dimension]) / 2;
        }
        SearchPiece(span, left, from, middle, depth - 1);
        SearchPiece(span, right, middle, to, depth - 1);
    }

    /// Finds where the distance ceases to fall, the root of C . C', by Newton's method between bounds.
    void SearchValley(unsigned int span, const double* bezier, double from, double to)
    {
        double low = 0;
        double high = 1;
        double t = 0.5;
        for (unsigned int step = 0; step < 100; ++step) {
            double point[dimension], first[dimension], second[dimension];
            EvaluateBezier(bezier, t, point, first, second);
            Offer(Dot(point, point), {span, from + (to - from) * t});
            const double slope = Dot(point, first);
            if (slope == 0) return;
            (slope > 0 ? high : low) = t;
            double next = t - slope / (Dot(first, first) + Dot(point, second));
            if (!(next > low && next < high)) next = low + (high - low) / 2;
            if (next == t || next == low || next == high) return;
            t = next;
        }
    }

    /// A point of a Bezier curve of degree 1 or more with its two derivatives.
    void EvaluateBezier(const double* bezier, double t, double* point, double* first, double* second) const
    {
        Scratch scratch((degree + 1) * dimension);
        double* const d = scratch.Get();
        std::copy(bezier, bezier + (degree + 1) * dimension, d);
        std::fill(first, first + dimension, 0.0);
        std::fill(second, second + dimension, 0.0);
        for (unsigned int count = degree; count > 0; --count) {
            for (unsigned int k = 0; k < dimension; ++k) {
                if (count == 2)
                    second[k] = degree * (degree - 1.0) * (d[2 * dimension + k] - 2 * d[dimension + k] + d[k]);
                if (count == 1) first[k] = degree * (d[dimension + k] - d[k]);
            }
            for (unsigned int i = 0; i < count * dimension; ++i) d[i] += (d[i + dimension] - d[i]) * t;
        }
        std::copy(d, d + dimension, point);
    }
};

} // namespace

template <class T, template <class> class V>
ClosestPoint<T, V>::ClosestPoint(const TBSpline<T, V>& spline, const V<T>& target)
{
    constexpr unsigned int dimension = Curve<T, V>::dimension;
    if (spline.GetCount() == 0) return;
    const Curve<T, V> curve(spline);
    status = !curve.IsWhole() || curve.Order() > greatestOrder ? Status::Degenerate : Status::NotFinite;
    if (status == Status::Degenerate || !curve.IsFinite()) return;
    double from[dimension];
    double size = 0;
    for (unsigned int k = 0; k < dimension; ++k) {
        from[k] = static_cast<double>(target[k]);
        for (unsigned int i = 0; i < curve.EndSpan(); ++i) {
            const double apart = std::fabs(curve.Value(i, k) - from[k]);
            if (!(apart < HUGE_VAL)) return;
            size = std::fmax(size, apart);
        }
    }
    int exponent = 0;
    std::frexp(size, &exponent);
    exponent = std::max(exponent, -1022);
    const double scale = std::ldexp(1.0, -exponent);

    const Place place = Search<T, V>(curve, from, scale).Find();
    double found[dimension];
    curve.Evaluate(place, found);
    double square = 0;
    for (unsigned int k = 0; k < dimension; ++k)
        square += (found[k] - from[k]) * scale * ((found[k] - from[k]) * scale);
    const T length = static_cast<T>(std::ldexp(std::sqrt(square), exponent));
    if (!std::isfinite(length)) return;
    point = Kernels::ToVector<T, V>(found);
    parameter = static_cast<T>(curve.ToUnit(place));
    distance = length;
    status = Status::Done;
}

CORVEX_INSTANTIATE_SETS(, ClosestPoint);

} // namespace Halmont::Orrin::CorvexMaths::Robust

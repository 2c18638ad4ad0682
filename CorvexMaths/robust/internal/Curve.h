#pragma once

/// A B-spline curve as its definition has it, without tolerances: de Boor's algorithm on the knots and control points
/// of a `TBSpline`, in `double`.

#include <CorvexMaths/splines/TBSpline.h>

#include <cmath>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// Room for numbers of which there are few as a rule.
class Scratch
{
public:
    explicit Scratch(unsigned int count) : values(count > size ? new double[count] : nullptr) {}

    double* Get() { return values ? values.get() : few; }

private:
    static constexpr unsigned int size = 64;
    double few[size];
    std::unique_ptr<double[]> values;
};

/// Names the protected knots of a spline of any class.
template <class T, template <class> class V>
struct Knots : TBSpline<T, V>
{
    static const TList<T>& Of(const TBSpline<T, V>& spline) { return spline.*&Knots::knots; }
};

/// A place on a curve: a span, and how far behind its first knot on the scale of the knots. Counted from 0 instead, a
/// place is rounded to a unit in the last place of the knots, between which a short span may hold much of the curve;
/// counted within the span, to one of that short way.
struct Place
{
    unsigned int span;
    double offset;
};

/// A view of a spline, which must outlive it and stay as it is. Parameters x are on the scale of the knots.
template <class T, template <class> class V>
class Curve
{
public:
    static constexpr unsigned int dimension = sizeof(V<T>) / sizeof(T);

    explicit Curve(const TBSpline<T, V>& spline)
        : controls(spline.GetStream()),
          knots(Knots<T, V>::Of(spline).GetStream()),
          count(spline.GetCount()),
          order(spline.GetOrder())
    {
        const unsigned int knotCount = Knots<T, V>::Of(spline).GetCount();
        const KnotType type = spline.*&Type::type;
        // A span is full where each point of it has as many functions as the order.
        const unsigned int firstKnot = type == Uniform ? order : order - 1;
        isWhole = order >= 1 && firstKnot < count && knotCount == count + order;
        if (!isWhole) return;
        firstSpan = firstKnot;
        first = static_cast<double>(knots[firstKnot]);
        last = static_cast<double>(knots[count]);
        isWhole = first < last;
    }

    /// Whether there are knots, up to date, and control points for one span at least.
    bool IsWhole() const { return isWhole; }

    /// Whether knots and control points are finite and their differences too.
    bool IsFinite() const
    {
        double finite = 0;
        for (unsigned int i = 0; i + 1 < count + order; ++i)
            finite += 0 * (static_cast<double>(knots[i + 1]) - static_cast<double>(knots[i]));
        for (unsigned int k = 0; k < dimension; ++k) {
            double least = Value(0, k);
            double greatest = least;
            for (unsigned int i = 0; i < count; ++i) {
                const double value = Value(i, k);
                finite += 0 * value;
                least = std::fmin(least, value);
                greatest = std::fmax(greatest, value);
            }
            finite += 0 * (greatest - least);
        }
        return finite == 0;
    }

    unsigned int Order() const { return order; }
    unsigned int FirstSpan() const { return firstSpan; }
    unsigned int EndSpan() const { return count; }
    double First() const { return first; }
    double Last() const { return last; }
    double Knot(unsigned int i) const { return static_cast<double>(knots[i]); }
    double Width(unsigned int span) const { return Knot(span + 1) - Knot(span); }
    double Value(unsigned int control, unsigned int component) const
    {
        return static_cast<double>(controls[control][component]);
    }

    /// The parameter on the scale of the knots for one from 0 to 1, which is taken to the nearer end beyond these.
    double FromUnit(double u) const
    {
        if (!(u > 0)) return first;
        return u < 1 ? std::fmin(first + (last - first) * u, last) : last;
    }

    /// The parameter from 0 to 1 for a place; in a span that is short beside its parameters, many have the same.
    double ToUnit(const Place& place) const
    {
        const double x = std::fmin(Knot(place.span) + place.offset, Knot(place.span + 1));
        return (x - first) / (last - first);
    }

    /// The span that holds a parameter: the last one that is not empty for the right end. By bisection.
    unsigned int FindSpan(double x) const
    {
        unsigned int low = firstSpan;
        unsigned int high = count;
        // Knot low <= x < knot high, but for the right end.
        while (high - low > 1) {
            const unsigned int middle = low + (high - low) / 2;
            if (x < Knot(middle) || (x >= last && Knot(middle) >= last))
                high = middle;
            else
                low = middle;
        }
        return low;
    }

    /// The point at a parameter of a span.
    void Evaluate(double x, unsigned int span, double* point) const { EvaluateFrom(0, x, span, point); }
    void Evaluate(const Place& place, double* point) const
    {
        EvaluateFrom(Knot(place.span), place.offset, place.span, point);
    }

    /// The derivative at a place: a curve of one order less, of the differences between control points, so that their
    /// distance from the origin does not matter. It is scaled before the quotients could leave the range of numbers.
    void Differentiate(const Place& place, double scale, double* derivative) const
    {
        Scratch scratch(order * dimension);
        double* const d = scratch.Get();
        const unsigned int offset = place.span + 1 - order;
        for (unsigned int k = 0; k < dimension; ++k) d[k] = 0;
        for (unsigned int i = 0; i + 1 < order; ++i)
            for (unsigned int k = 0; k < dimension; ++k)
                d[i * dimension + k] = (order - 1) * ((Value(offset + i + 1, k) - Value(offset + i, k)) * scale /
                                                      (Knot(offset + i + order) - Knot(offset + i + 1)));
        Join(Knot(place.span), place.offset, offset + 1, order - 1, d, derivative);
    }

private:
    /// Names the protected type.
    struct Type : TBSpline<T, V>
    {
        using TBSpline<T, V>::type;
    };

    /// The point at a parameter of a span that is counted from an origin.
    void EvaluateFrom(double origin, double x, unsigned int span, double* point) const
    {
        Scratch scratch(order * dimension);
        double* const d = scratch.Get();
        const unsigned int offset = span + 1 - order;
        for (unsigned int k = 0; k < dimension; ++k) d[k] = Value(offset, k);
        for (unsigned int i = 1; i < order; ++i)
            for (unsigned int k = 0; k < dimension; ++k) d[i * dimension + k] = Value(offset + i, k);
        Join(origin, x, offset, order, d, point);
    }

    /// Joins as many points as the order, by shares of the way between two knots, until one is left (de Boor, 1972).
    /// Each share is taken from its nearer end, so that an end of the curve is its control point to the bit. The
    /// parameter x is counted from an origin: 0, or the first knot of the span, which keeps the digits of an offset.
    void Join(double origin, double x, unsigned int offset, unsigned int levels, double* d, double* joined) const
    {
        for (unsigned int level = 1; level < levels; ++level)
            for (unsigned int i = 0; i + level < levels; ++i) {
                const double left = Knot(offset + i + level);
                const double right = Knot(offset + i + levels);
                const double from = x + (origin - left);
                const double to = (right - origin) - x;
                const bool isLeft = from <= to;
                const double share = (isLeft ? from : -to) / (right - left);
                double* const a = d + i * dimension;
                const double* const b = a + dimension;
                for (unsigned int k = 0; k < dimension; ++k) a[k] = (isLeft ? a[k] : b[k]) + (b[k] - a[k]) * share;
            }
        for (unsigned int k = 0; k < dimension; ++k) joined[k] = d[k];
    }

    const V<T>* controls;
    const T* knots;
    unsigned int count;
    unsigned int order;
    unsigned int firstSpan = 0;
    double first = 0;
    double last = 0;
    bool isWhole = false;
};

/// A vector of T from components in `double`, each rounded once.
template <class T, template <class> class V>
V<T> ToVector(const double* components)
{
    V<T> vector;
    for (unsigned int k = 0; k < sizeof(V<T>) / sizeof(T); ++k) vector[k] = static_cast<T>(components[k]);
    return vector;
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

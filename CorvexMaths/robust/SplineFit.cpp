#include <CorvexMaths/robust/SplineFit.h>

#include <CorvexMaths/robust/internal/BandedLeastSquares.h>
#include <CorvexMaths/robust/internal/Curve.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Robust
{
namespace
{

using Kernels::BandedLeastSquares;
using Kernels::Curve;
using Kernels::Scratch;

using Numbers = std::unique_ptr<double[]>;

Numbers MakeNumbers(std::size_t count)
{
    return Numbers(new double[count]());
}

/// What a fit is asked for besides its number of control points.
struct Form
{
    unsigned int order;
    bool closed;
    bool meetEnds;
};

/// The points in coordinates of their own, about the middle of their box and scaled to at most 1 by a power of two.
template <class T, template <class> class V>
class Data
{
public:
    static constexpr unsigned int dimension = sizeof(V<T>) / sizeof(T);

    /// `Done` where the points can be fitted at all.
    Status Prepare(const TPointSet<T, V>& points)
    {
        source = points.GetStream();
        count = points.GetCount();
        if (count == 0) return Status::TooFewPoints;
        double size = 0;
        double finite = 0;
        for (unsigned int k = 0; k < dimension; ++k) {
            double least = HUGE_VAL;
            double greatest = -HUGE_VAL;
            for (unsigned int i = 0; i < count; ++i) {
                const auto value = static_cast<double>(points.GetStream()[i][k]);
                finite += 0 * value;
                // Not by fmin and fmax, which leave the sign of a zero to the machine.
                if (value < least) least = value;
                if (value > greatest) greatest = value;
            }
            middle[k] = least / 2 + greatest / 2;
            size = std::fmax(size, greatest - least);
        }
        if (finite != 0 || !(size < HUGE_VAL)) return Status::NotFinite;
        if (size == 0) return Status::Degenerate;
        // As far as a factor can take it.
        std::frexp(size, &exponent);
        exponent = std::max(exponent, -1022);
        const double scale = std::ldexp(1.0, -exponent);
        values = MakeNumbers(std::size_t(count) * dimension);
        for (unsigned int i = 0; i < count; ++i)
            for (unsigned int k = 0; k < dimension; ++k)
                values[std::size_t(i) * dimension + k] =
                    (static_cast<double>(points.GetStream()[i][k]) - middle[k]) * scale;
        return Status::Done;
    }

    unsigned int Count() const { return count; }
    const V<T>* Source() const { return source; }
    const double* Value(unsigned int i) const { return values.get() + std::size_t(i) * dimension; }
    double Middle(unsigned int component) const { return middle[component]; }
    int Exponent() const { return exponent; }

    double Distance(unsigned int i, unsigned int k) const
    {
        double square = 0;
        for (unsigned int c = 0; c < dimension; ++c) {
            const double difference = Value(i)[c] - Value(k)[c];
            square += difference * difference;
        }
        return std::sqrt(square);
    }

private:
    const V<T>* source = nullptr;
    unsigned int count = 0;
    double middle[dimension];
    int exponent = 0;
    Numbers values;
};

/// The parameters of the data, from 0 to 1, and those of them that differ.
class Parameters
{
public:
    /// There are two different points at least.
    template <class T, template <class> class V>
    Parameters(const Data<T, V>& data, bool closed) : count(data.Count()), all(MakeNumbers(count))
    {
        for (unsigned int i = 1; i < count; ++i) all[i] = all[i - 1] + data.Distance(i - 1, i);
        const double length = all[count - 1] + (closed ? data.Distance(count - 1, 0) : 0);
        for (unsigned int i = 0; i < count; ++i) all[i] /= length;
        // The end of a closed curve is its start.
        for (; closed && all[count - 1 - turned] == 1; ++turned) all[count - 1 - turned] = 0;
        distinct = MakeNumbers(count);
        for (unsigned int i = 0; i < count; ++i) {
            const double parameter = all[Ascending(i)];
            if (i == 0 || parameter > distinct[distinctCount - 1]) distinct[distinctCount++] = parameter;
        }
    }

    double operator[](unsigned int i) const { return all[i]; }
    unsigned int DistinctCount() const { return distinctCount; }

    /// The number of the point that has the i-th of the parameters in ascending order.
    unsigned int Ascending(unsigned int i) const { return i < turned ? count - turned + i : i - turned; }

    /// The parameter at a place among the different ones, counted from 0; between two of them by its share of the way.
    /// For a closed curve places before the first and from the last on go round.
    double At(double place) const
    {
        const double below = std::floor(place);
        const double share = place - below;
        return Round(below) + (Round(below + 1) - Round(below)) * share;
    }

    /// Moves the origin back by less than what is left behind the last parameter.
    void Shift(double distance)
    {
        for (unsigned int i = 0; i < count; ++i) all[i] = std::fmin(all[i] + distance, 1.0);
        for (unsigned int i = 0; i < distinctCount; ++i) distinct[i] = std::fmin(distinct[i] + distance, 1.0);
    }

private:
    unsigned int count;
    unsigned int turned = 0; ///< Points at the end of a closed curve that coincide with its start.
    unsigned int distinctCount = 0;
    Numbers all;
    Numbers distinct;

    double Round(double place) const
    {
        const double size = distinctCount;
        if (place < 0) return distinct[static_cast<unsigned int>(place + size)] - 1;
        if (place < size) return distinct[static_cast<unsigned int>(place)];
        return distinct[static_cast<unsigned int>(place - size)] + 1;
    }
};

/// The range of the knots: see the class on the common tolerance.
template <class T>
constexpr double knotRange = std::is_same_v<T, double> ? 0x1p24 : 1;

/// Spline curves of one form through the same data.
template <class T, template <class> class V>
class Fitter
{
public:
    static constexpr unsigned int dimension = Data<T, V>::dimension;

    Fitter(const Data<T, V>& points, const Form& asked) : data(points), form(asked), parameters(points, asked.closed)
    {
        // The knots of a closed curve start with one halfway between the last point and the first.
        if (form.closed && form.order % 2 != 0) {
            const double start = parameters.At(-0.5);
            parameters.Shift(-start);
        }
    }

    const Parameters& GetParameters() const { return parameters; }

    void CopyParameters(TList<T>* out) const
    {
        const std::unique_ptr<T[]> values(new T[data.Count()]);
        for (unsigned int i = 0; i < data.Count(); ++i) values[i] = static_cast<T>(parameters[i]);
        out->AddRange(values.get(), data.Count());
    }

    /// The curve of so many control points, at least as many as the order, and its distances.
    Status Fit(unsigned int controlCount, SplineFit<T, V>* fit) const
    {
        if (parameters.DistinctCount() < controlCount) return Status::TooFewPoints;
        const unsigned int border = form.closed ? form.order - 1 : 0;
        const unsigned int total = form.closed ? controlCount + form.order : controlCount;
        Placed placed(total, form);
        PlaceKnots(controlCount, placed.KnotStream());
        const Curve<T, V> curve(placed);
        // Rounding to `float` may have made all knots one.
        if (!curve.IsWhole()) return Status::Degenerate;
        // An inner knot that it has moved to an end leaves the control point of that end without a function.
        const bool meetEnds = form.meetEnds && !form.closed;
        if (meetEnds && (curve.Knot(form.order) == curve.First() || curve.Knot(controlCount - 1) == curve.Last()))
            return Status::Degenerate;

        BandedLeastSquares system(controlCount, form.order, border, dimension);
        AddEquations(curve, controlCount, &system);
        const Numbers solution = MakeNumbers(std::size_t(controlCount) * dimension);
        if (!system.Solve(solution.get())) return Status::Degenerate;
        for (unsigned int i = 0; i < total; ++i) placed.GetStream()[i] = Control(solution.get(), i, controlCount);
        placed.RecalculateBoundingBox();
        const Status status = Measure(curve, fit);
        if (status == Status::Done) fit->spline = placed;
        return status;
    }

private:
    const Data<T, V>& data;
    Form form;
    Parameters parameters;

    /// A spline that opens its knots.
    struct Placed : TBSpline<T, V>
    {
        Placed(unsigned int controlCount, const Form& form)
            : TBSpline<T, V>(form.order, form.closed ? Uniform : Clamped, controlCount, 16)
        {
            const std::unique_ptr<V<T>[]> points(new V<T>[controlCount]);
            this->AddRange(points.get(), controlCount);
        }

        T* KnotStream() { return this->knots.GetStream(); }
    };

    /// Writes the knots, from 0 at the start of the curve.
    ///
    /// Counted in data, the spans of an open curve are all of a length, but the first and the last: these are longer by
    /// a factor that falls from (degree + 1) / 2, which gives the averages of interpolation, to 1, as the share of data
    /// of a control point rises from 1 to the degree.
    void PlaceKnots(unsigned int controlCount, T* knots) const
    {
        const unsigned int order = form.order;
        const auto knot = [](double parameter) { return static_cast<T>(parameter * knotRange<T>); };
        const double last = parameters.DistinctCount() - 1.0;
        if (form.closed) {
            const double step = (last + 1) / controlCount;
            const double offset = order % 2 != 0 ? -0.5 : 0;
            for (unsigned int i = 0; i <= controlCount; ++i)
                knots[order + i] = knot(i == 0 ? 0 : i == controlCount ? 1 : parameters.At(i * step + offset));
            for (unsigned int i = 1; i <= order; ++i) {
                knots[order - i] = knots[order + controlCount - i] - knots[order + controlCount];
                if (i < order) knots[order + controlCount + i] = knots[order + i] + knots[order + controlCount];
            }
            return;
        }
        const unsigned int degree = order - 1;
        const double share = last / (controlCount - 1);
        const double ends = std::fmax(1, (degree + 2 - share) / 2);
        const double step = last / (controlCount - degree - 2.0 + 2 * ends);
        for (unsigned int i = 0; i < order; ++i) {
            knots[i] = 0;
            knots[controlCount + i] = knot(1);
        }
        for (unsigned int i = order; i < controlCount; ++i) knots[i] = knot(parameters.At((ends + (i - order)) * step));
    }

    /// Calls back for each point, with ascending parameters: its number, its parameter on the scale of the knots, and
    /// the span that holds it.
    template <class Visitor>
    void ForEachPoint(const Curve<T, V>& curve, Visitor visit) const
    {
        unsigned int span = curve.FirstSpan();
        for (unsigned int n = 0; n < data.Count(); ++n) {
            const unsigned int i = parameters.Ascending(n);
            const double x = curve.FromUnit(parameters[i]);
            // The last span that is not empty holds the right end.
            while (x >= curve.Knot(span + 1) && curve.Knot(span + 1) < curve.Last()) ++span;
            visit(i, x, span);
        }
    }

    /// Gives the system an equation for each point. The unknowns of a closed curve are its control points in the order
    /// in which they leave the moving support, so that those of the first spans that are also of the last come last.
    void AddEquations(const Curve<T, V>& curve, unsigned int controlCount, BandedLeastSquares* system) const
    {
        const unsigned int order = form.order;
        const unsigned int border = form.closed ? order - 1 : 0;
        const bool meetEnds = form.meetEnds && !form.closed;
        if (meetEnds) {
            system->Fix(0, data.Value(0));
            system->Fix(controlCount - 1, data.Value(data.Count() - 1));
        }
        const Numbers row = MakeNumbers(system->Width());
        Scratch scratch(3 * order);
        double* const basis = scratch.Get();
        ForEachPoint(curve, [&](unsigned int i, double x, unsigned int span) {
            FillBasis(curve, x, span, basis);
            std::fill(row.get(), row.get() + system->Width(), 0.0);
            double* const right = row.get() + order + border;
            std::copy(data.Value(i), data.Value(i) + dimension, right);
            const unsigned int passed = span - curve.FirstSpan();
            const unsigned int start = passed > border ? passed - border : 0;
            for (unsigned int k = 0; k < order; ++k) {
                const unsigned int unknown = Unknown(span + 1 - order + k, controlCount);
                if (meetEnds && (unknown == 0 || unknown == controlCount - 1)) {
                    const double* const end = data.Value(unknown == 0 ? 0 : data.Count() - 1);
                    for (unsigned int c = 0; c < dimension; ++c) right[c] -= basis[k] * end[c];
                } else if (unknown >= controlCount - border)
                    row[order + unknown - (controlCount - border)] = basis[k];
                else
                    row[unknown - start] = basis[k];
            }
            system->Add(start, row.get());
        });
    }

    /// The unknown of the equations that is a control point.
    unsigned int Unknown(unsigned int control, unsigned int controlCount) const
    {
        return form.closed ? (control + controlCount - form.order) % controlCount : control;
    }

    /// The basis functions of a span that are not 0, ascending (Cox and de Boor, 1972; The NURBS Book, A2.2). There is
    /// room for thrice their number.
    static void FillBasis(const Curve<T, V>& curve, double x, unsigned int span, double* basis)
    {
        const unsigned int order = curve.Order();
        double* const left = basis + order;
        double* const right = left + order;
        basis[0] = 1;
        for (unsigned int level = 1; level < order; ++level) {
            left[level] = x - curve.Knot(span + 1 - level);
            right[level] = curve.Knot(span + level) - x;
            double saved = 0;
            for (unsigned int k = 0; k < level; ++k) {
                const double share = basis[k] / (right[k + 1] + left[level - k]);
                basis[k] = saved + right[k + 1] * share;
                saved = left[level - k] * share;
            }
            basis[level] = saved;
        }
    }

    /// A control point of the curve in the caller's coordinates.
    V<T> Control(const double* solution, unsigned int control, unsigned int controlCount) const
    {
        const unsigned int unknown = Unknown(control, controlCount);
        if (form.meetEnds && !form.closed) {
            if (control == 0) return data.Source()[0];
            if (control == controlCount - 1) return data.Source()[data.Count() - 1];
        }
        V<T> point;
        for (unsigned int c = 0; c < dimension; ++c)
            point[c] = static_cast<T>(data.Middle(c) +
                                      std::ldexp(solution[std::size_t(unknown) * dimension + c], data.Exponent()));
        return point;
    }

    /// Computes the distances from the curve as it came out, its control points rounded.
    Status Measure(const Curve<T, V>& curve, SplineFit<T, V>* fit) const
    {
        const double scale = std::ldexp(1.0, -data.Exponent());
        double sum = 0;
        double greatest = 0;
        ForEachPoint(curve, [&](unsigned int i, double x, unsigned int span) {
            double point[dimension];
            curve.Evaluate(x, span, point);
            double square = 0;
            for (unsigned int c = 0; c < dimension; ++c) {
                const double difference = (point[c] - static_cast<double>(data.Source()[i][c])) * scale;
                square += difference * difference;
            }
            sum += square;
            greatest = std::fmax(greatest, square);
        });
        if (!(sum < HUGE_VAL)) return Status::NotFinite;
        const T largest = static_cast<T>(std::ldexp(std::sqrt(greatest), data.Exponent()));
        if (!std::isfinite(largest)) return Status::NotFinite;
        fit->rms = static_cast<T>(std::ldexp(std::sqrt(sum / data.Count()), data.Exponent()));
        fit->largest = largest;
        return Status::Done;
    }
};

} // namespace

template <class T, template <class> class V>
void SplineFit<T, V>::FitCount(const TPointSet<T, V>& points, unsigned int controlCount, unsigned int order,
                               bool closed, bool meetEnds)
{
    Data<T, V> data;
    status = order < 2 || controlCount < order ? Status::Degenerate : data.Prepare(points);
    if (status != Status::Done) return;
    const Fitter<T, V> fitter(data, {order, closed, meetEnds});
    status = fitter.Fit(controlCount, this);
    if (status == Status::Done) fitter.CopyParameters(&parameters);
}

template <class T, template <class> class V>
void SplineFit<T, V>::FitTolerance(const TPointSet<T, V>& points, double tolerance, unsigned int order, bool closed,
                                   bool meetEnds)
{
    Data<T, V> data;
    status = order < 2 || !(tolerance > 0) ? Status::Degenerate : data.Prepare(points);
    if (status != Status::Done) return;
    const Fitter<T, V> fitter(data, {order, closed, meetEnds});
    const unsigned int most = fitter.GetParameters().DistinctCount();
    status = most < order ? Status::TooFewPoints : Status::NotConverged;
    if (status == Status::TooFewPoints) return;

    SplineFit trial;
    const auto keeps = [&](unsigned int controlCount) {
        return fitter.Fit(controlCount, &trial) == Status::Done && static_cast<double>(trial.largest) <= tolerance;
    };
    unsigned int tooFew = order - 1;
    unsigned int enough = order;
    while (!keeps(enough)) {
        if (enough == most) return;
        tooFew = enough;
        enough = enough < most - enough ? 2 * enough : most;
    }
    *this = trial;
    while (enough - tooFew > 1) {
        const unsigned int middle = tooFew + (enough - tooFew) / 2;
        if (keeps(middle)) {
            *this = trial;
            enough = middle;
        } else
            tooFew = middle;
    }
    fitter.CopyParameters(&parameters);
    status = Status::Done;
}

template <class T, template <class> class V>
V<T> SplineFit<T, V>::Evaluate(T u) const
{
    double point[Curve<T, V>::dimension] = {};
    const Curve<T, V> curve(spline);
    if (curve.IsWhole()) {
        const double x = curve.FromUnit(static_cast<double>(u));
        curve.Evaluate(x, curve.FindSpan(x), point);
    }
    return Kernels::ToVector<T, V>(point);
}

CORVEX_INSTANTIATE_SETS(, SplineFit);

} // namespace Halmont::Orrin::CorvexMaths::Robust

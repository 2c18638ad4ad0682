#pragma once

#include <CorvexMaths/robust/internal/LocalPoints.h>
#include <CorvexMaths/robust/internal/TallTriangle.h>

#include <algorithm>

/// Orthogonal least squares: one solver for all features.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// What is told of all distances together: the sum of their squares to twice the digits, the least and the greatest. In
/// partial results of a number that holds for all widths of registers.
template <class Feature>
class Tally
{
public:
    Tally()
    {
        std::fill_n(lowest, parts, std::numeric_limits<double>::infinity());
        std::fill_n(highest, parts, -std::numeric_limits<double>::infinity());
    }

    /// Takes in distances that stand `step` apart, their components `apart`.
    template <unsigned int step, unsigned int apart>
    void Add(const double* distances, unsigned int count)
    {
        ForThisProcessor<widestBytes>([=](auto bytes) { this->template AddBy<bytes, step, apart>(distances, count); });
    }

    /// Joins the components of a distance, of one point or of as many as there are lanes.
    template <class Value>
    CORVEX_ALWAYS_INLINE static void Join(const Value (&components)[Feature::rows], Value& distance, Value& square)
    {
        square = Value{};
        for (const Value& x : components) square += x * x;
        if constexpr (Feature::rows == 1)
            distance = components[0];
        else
            Feature::Join(distance, components[0], components[1]);
    }

    double Squares() const
    {
        DoubleDouble sum;
        for (unsigned int k = 0; k < parts; ++k) sum += DoubleDouble::Sum(high[k], low[k]);
        return sum.high;
    }
    double Lowest() const { return *std::min_element(lowest, lowest + parts); }
    double Highest() const { return *std::max_element(highest, highest + parts); }

private:
    static constexpr unsigned int parts = widestBytes / sizeof(double);
    double high[parts] = {};
    double low[parts] = {};
    double lowest[parts];
    double highest[parts];

    template <unsigned int Bytes, unsigned int step, unsigned int apart>
    CORVEX_ALWAYS_INLINE void AddBy(const double* distances, unsigned int count)
    {
        const unsigned int whole = count - count % parts;
        for (unsigned int i = 0; i < whole; i += Lanes<double, Bytes>::count)
            AddAt<Bytes, step, apart>(i % parts, distances + i * step);
        for (unsigned int i = whole; i < count; ++i)
            AddAt<sizeof(double), step, apart>(i % parts, distances + i * step);
    }

    template <unsigned int Bytes, unsigned int step, unsigned int apart>
    CORVEX_ALWAYS_INLINE void AddAt(unsigned int part, const double* distances)
    {
        using Lane = typename Lanes<double, Bytes>::Type;
        constexpr unsigned int count = Lanes<double, Bytes>::count;
        Lane components[Feature::rows];
        for (unsigned int j = 0; j < Feature::rows; ++j)
            SetEvery<step>(components[j], distances + j * apart, std::make_index_sequence<count>());
        Lane distance;
        Lane square;
        Join(components, distance, square);

        AddTo(high + part, low + part, square);
        Lane least;
        Lane most;
        Load(least, lowest + part);
        Load(most, highest + part);
        Store(lowest + part, Lane(distance < least ? distance : least));
        Store(highest + part, Lane(most < distance ? distance : most));
    }
};

/// Moves a feature until the sum of the squared distances of points from it is least.
///
/// With r the distances and J their derivatives by the parameters, a step s minimises |J s + r|. It is read from the
/// triangular factor of [J r]: R s = -q, where the last column of the factor holds q and, below it, what no step
/// removes (C. F. Gauss; the normal equations, which lose half the digits, are never formed). The first steps are
/// computed in double and damped where they raise the sum (K. Levenberg, 1944; D. W. Marquardt, 1963). Near the minimum
/// the distances are computed to twice the digits and rounded, and so are the parameters kept: the distances are then
/// exact to the last place of their own, small, size, and the answer is that of the points as they are, to the last
/// place of the size.
template <class Feature>
class DistanceFit
{
public:
    static constexpr unsigned int K = Feature::parameters;
    static constexpr unsigned int limit = 400;

    Feature feature;
    /// How many times the distances of all points were computed.
    unsigned int iterations = 0;
    /// Of the last distances: the sum of squares, the least and the greatest.
    double squares = 0.0;
    double lowest = 0.0;
    double highest = 0.0;

    DistanceFit(const LocalPoints<Feature::dimension>& all, const Feature& start) : feature(start), points(all) {}

    /// The first steps, in double, to about half its digits; false where they come to rest nowhere.
    bool Approach(unsigned int most = limit)
    {
        Evaluate<double>(feature);
        if (most == 0) return true;
        while (iterations < most) {
            double step[K];
            if (!Solve(step)) {
                if (!Damp()) return false;
                continue;
            }
            // A step that would move the distances by less than a 2^-26 of them leaves the next one their square of it.
            const double noise = 1e-15 * feature.Size() * std::sqrt(static_cast<double>(points.GetCount()));
            const double gain = Reach(step);
            const bool small = gain <= 0x1p-26 * std::sqrt(squares) || gain <= 8.0 * noise;
            const DistanceFit before = *this;
            feature.Move(step);
            Evaluate<double>(feature);
            if (small) return squares <= std::numeric_limits<double>::max();
            const double slack = 4.0 * noise * (std::sqrt(before.squares) + noise);
            if (squares <= before.squares + slack) {
                damping = damping > 1e-8 ? 0.1 * damping : 0.0;
                continue;
            }
            const unsigned int count = iterations;
            *this = before;
            iterations = count;
            if (!Damp()) return true;
        }
        return false;
    }

    /// The last steps, with distances to twice the digits, until they are lost in the rounding of the answer.
    bool Settle()
    {
        double previous = std::numeric_limits<double>::infinity();
        while (iterations < limit) {
            Evaluate<DoubleDouble>(feature);
            double step[K];
            if (!Solve(step) && (!Damp() || !Solve(step))) return false;
            // A step is the error of the sums when it moves the distances by a few units in their last place; it is
            // lost in the answer when below 1/32 of a unit in the last place of the size.
            const double gain = Reach(step);
            bool lost = gain <= 0x1p-48 * std::sqrt(squares);
            lost = lost || (gain >= 0.5 * previous && gain <= 0x1p-40 * std::sqrt(squares));
            bool tiny = true;
            for (unsigned int k = 0; k < K; ++k) {
                tiny = tiny && std::fabs(step[k]) <= 0x1p-58 * (Feature::isAngle(k) ? 1.0 : feature.Size());
            }
            if (lost || tiny) return true;
            if (gain >= previous && !Damp()) return false;
            previous = gain;
            feature.Move(step);
        }
        return false;
    }

    /// The mean square distance, rooted.
    double Rms() const { return std::sqrt(squares / points.GetCount()); }

    /// By how much a quantity with these derivatives by the parameters moves when all distances together move by 1, at
    /// most: the length of R^-T g. Infinite where the points leave it open.
    double Sensitivity(const double (&derivatives)[K]) const
    {
        double y[K];
        double sum = 0.0;
        for (unsigned int i = 0; i < K; ++i) {
            double rest = derivatives[i];
            for (unsigned int k = 0; k < i; ++k) rest -= triangle.elements[k][i] * y[k];
            if (IsFree(i)) return std::numeric_limits<double>::infinity();
            y[i] = rest / triangle.elements[i][i];
            sum += y[i] * y[i];
        }
        return std::sqrt(sum);
    }

    /// Whether the points determine a quantity: neither its standard deviation nor what the rounding of the coordinates
    /// as given can move it by exceeds the bound.
    bool Determines(const double (&derivatives)[K], double bound) const
    {
        const double sensitivity = Sensitivity(derivatives);
        const double moved = points.rounding * std::sqrt(static_cast<double>(points.GetCount()));
        return sensitivity * std::max(Rms(), moved) <= bound;
    }
    /// Whether the points determine every parameter to within the size of the feature or a radian.
    bool DeterminesAll() const
    {
        for (unsigned int k = 0; k < K; ++k) {
            double unit[K] = {};
            unit[k] = 1.0;
            if (!Determines(unit, Feature::isAngle(k) ? 1.0 : feature.Size())) return false;
        }
        return true;
    }

    /// The signed distance of a point, rounded once.
    double Distance(unsigned int i) const
    {
        double row[Feature::rows][K + 1];
        feature.template Row<DoubleDouble>(points[i], row);
        double components[Feature::rows];
        for (unsigned int j = 0; j < Feature::rows; ++j) components[j] = row[j][K];
        double distance;
        double square;
        Tally<Feature>::Join(components, distance, square);
        return distance;
    }

    DistanceFit& operator=(const DistanceFit& other)
    {
        feature = other.feature;
        iterations = other.iterations;
        squares = other.squares;
        lowest = other.lowest;
        highest = other.highest;
        triangle = other.triangle;
        damping = other.damping;
        return *this;
    }
    DistanceFit(const DistanceFit&) = default;

private:
    const LocalPoints<Feature::dimension>& points;
    TallTriangle<K + 1> triangle;
    double damping = 0.0;

    /// `Real` of as many points as there are lanes.
    template <class Real, class Lane>
    using LanesOf = std::conditional_t<std::is_same_v<Real, double>, Lane, Twofold<Lane>>;

    template <class Real>
    void Evaluate(const Feature& at)
    {
        ++iterations;
        triangle = {};
        Tally<Feature> tally;
        if constexpr (Feature::hasHalves)
            TakeHalves<Real>(at, &tally);
        else
            Take<Real>(at, &tally);
        squares = tally.Squares();
        lowest = tally.Lowest();
        highest = tally.Highest();
    }

    template <class Real>
    void Take(const Feature& at, Tally<Feature>* tally)
    {
        triangle.template Take<Feature::rows, Feature::dimension>(
            points[0], points.GetCount(),
            [at](const auto* place, auto& row) __attribute__((always_inline)) {
                at.template Row<LanesOf<Real, std::decay_t<decltype(*place)>>>(place, row);
            },
            [tally](const double* block, unsigned int count) {
                tally->template Add<Feature::rows, 1>(block + K * TallTriangle<K + 1>::blockRows, count);
            });
    }

    /// The same where the even columns of the first rows and the odd ones of the second are alike, and the others zero:
    /// one triangle of them, with the distances of both as right sides, holds both.
    template <class Real>
    void TakeHalves(const Feature& at, Tally<Feature>* tally)
    {
        constexpr unsigned int H = K / 2;
        TallTriangle<H + 2> half;
        half.template Take<1, Feature::dimension>(
            points[0], points.GetCount(),
            [at](const auto* place, auto& row) __attribute__((always_inline)) {
                using Lane = std::decay_t<decltype(*place)>;
                Lane rows[2][K + 1];
                at.template Row<LanesOf<Real, Lane>>(place, rows);
                for (unsigned int k = 0; k < H; ++k) row[0][k] = rows[0][2 * k];
                for (unsigned int j = 0; j < 2; ++j) row[0][H + j] = rows[j][K];
            },
            [tally](const double* block, unsigned int count) {
                constexpr unsigned int column = TallTriangle<H + 2>::blockRows;
                tally->template Add<1, column>(block + H * column, count);
            });
        // What is left below, which no step removes, is not asked for.
        for (unsigned int j = 0; j < 2; ++j) {
            for (unsigned int i = 0; i < H; ++i) {
                for (unsigned int k = i; k < H; ++k) triangle.elements[2 * i + j][2 * k + j] = half.elements[i][k];
                triangle.elements[2 * i + j][K] = half.elements[i][H + j];
            }
        }
    }

    /// Whether the columns before j already span column j, as far as rounding lets that be seen.
    bool IsFree(unsigned int j) const
    {
        return !(std::fabs(triangle.elements[j][j]) > 0x1p-47 * triangle.ColumnLength(j));
    }

    /// The step, damped by rows beneath the triangle that hold each parameter back in the measure of its column.
    bool Solve(double (&step)[K]) const
    {
        TallTriangle<K + 1> damped = triangle;
        if (damping > 0.0) {
            for (unsigned int j = 0; j < K; ++j) {
                double* const row = damped.Next();
                for (unsigned int k = 0; k <= K; ++k) row[k * TallTriangle<K + 1>::blockRows] = 0.0;
                row[j * TallTriangle<K + 1>::blockRows] = std::sqrt(damping) * triangle.ColumnLength(j);
            }
            damped.Finish();
        }
        for (unsigned int j = K; j-- > 0;) {
            if (damping == 0.0 && IsFree(j)) return false;
            double rest = -damped.elements[j][K];
            for (unsigned int k = j + 1; k < K; ++k) rest -= damped.elements[j][k] * step[k];
            step[j] = rest / damped.elements[j][j];
            if (!std::isfinite(step[j])) return false;
        }
        return true;
    }

    /// Raises the damping; false when it is so strong that no step is left.
    bool Damp()
    {
        damping = damping > 0.0 ? 10.0 * damping : 1e-4;
        return damping < 1e12;
    }

    /// How far a step moves the distances, by their derivatives: |R s|.
    double Reach(const double (&step)[K]) const
    {
        double sum = 0.0;
        for (unsigned int i = 0; i < K; ++i) {
            double element = 0.0;
            for (unsigned int k = i; k < K; ++k) element += triangle.elements[i][k] * step[k];
            sum += element * element;
        }
        return std::sqrt(sum);
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

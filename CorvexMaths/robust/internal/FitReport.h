#pragma once

#include <CorvexMaths/robust/FitAnswer.h>
#include <CorvexMaths/robust/internal/Starts.h>

#include <array>

/// From the points of a fit to its answer.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// Makes a number of each point, as many side by side as there are lanes: `make(point, number)` sets number[0][0], and
/// `take(i, number)` is shown each in order.
template <class Make, class Take>
void ForEachNumber(const LocalPoints<3>& points, const Make& make, const Take& take)
{
    constexpr unsigned int run = 512;
    double numbers[run];
    for (unsigned int first = 0; first < points.GetCount(); first += run) {
        const unsigned int n = std::min(run, points.GetCount() - first);
        TallTriangle<1>::Rows<1, 3>(points[first], n, make, numbers);
        for (unsigned int i = 0; i < n; ++i) take(first + i, numbers[i]);
    }
}

/// What a fit found, in the coordinates and the precision of the answer. A value beyond the range of T is told as 0 and
/// remembered.
template <class T, class Feature>
class FitReport
{
public:
    static constexpr unsigned int D = Feature::dimension;
    static constexpr unsigned int K = Feature::parameters;
    /// The derivatives of the components of a vector by the parameters.
    struct Derivatives
    {
        double elements[D][K] = {};
        /// Adds a multiple of an axis, by one parameter.
        void Add(unsigned int parameter, const DoubleDouble (&axis)[D], double factor = 1.0)
        {
            for (unsigned int k = 0; k < D; ++k) elements[k][parameter] += factor * axis[k].high;
        }
    };

    const Feature& feature;
    bool overflows = false;

    FitReport(const LocalPoints<D>& set, const DistanceFit<Feature>& found)
        : feature(found.feature), points(set), fit(found)
    {}

    T Number(double value)
    {
        if (std::fabs(value) <= static_cast<double>(std::numeric_limits<T>::max())) return static_cast<T>(value);
        overflows = true;
        return T(0);
    }
    T Length(double length) { return Number(points.ToLength(length)); }

    /// The height of a point along the last axis, and by how much tilts of the axis towards the other two raise it.
    struct Height
    {
        DoubleDouble value;
        double byTilt[2];
    };
    /// The least and the greatest height of the points.
    std::array<Height, 2> HeightRange() const
    {
        const Placement<3>& place = feature.place;
        double least = std::numeric_limits<double>::infinity();
        double most = -least;
        const auto make = [&place](const auto* point, auto& height) __attribute__((always_inline))
        {
            place.SetAlong(height[0][0], 2, point);
        };
        ForEachNumber(points, make, [&](unsigned int, double height) {
            least = std::min(least, height);
            most = std::max(most, height);
        });
        // Only what is outermost but for rounding is worth twice the digits: a height in double is off by less than
        // 2^-48 of what it is the sum of.
        double farthest = 4.0;
        for (const DoubleDouble& x : place.origin) farthest += std::fabs(x.high);
        const double slack = 0x1p-48 * farthest;
        std::array<Height, 2> range;
        bool isFirst = true;
        ForEachNumber(points, make, [&](unsigned int i, double rough) {
            if (rough > least + slack && rough < most - slack) return;
            const auto along = [&](auto real, unsigned int axis) {
                return place.template Along<decltype(real)>(axis, points[i]);
            };
            const Height height{along(DoubleDouble(), 2), {along(0.0, 0), along(0.0, 1)}};
            if (isFirst || height.value < range[0].value) range[0] = height;
            if (isFirst || range[1].value < height.value) range[1] = height;
            isFirst = false;
        });
        return range;
    }

    /// The coordinates of the points' centroid along the first two axes.
    std::array<double, 2> CentroidAcross() const
    {
        const auto& mean = points.Mean();
        const double centroid[3] = {mean[0].high, mean[1].high, mean[2].high};
        return {feature.place.template Along<double>(0, centroid), feature.place.template Along<double>(1, centroid)};
    }

    template <class Vector>
    void Place(const DoubleDouble (&place)[D], Vector* out)
    {
        for (unsigned int k = 0; k < D; ++k) (*out)[k] = Number(points.ToPlace(k, place[k]));
    }
    template <class Vector>
    void Direction(const DoubleDouble (&direction)[D], double sign, Vector* out)
    {
        for (unsigned int k = 0; k < D; ++k) (*out)[k] = Number(sign * direction[k].high);
    }

    /// The standard deviation of a quantity, in local lengths or radians.
    double Deviation(const double (&derivatives)[K]) const { return fit.Rms() * fit.Sensitivity(derivatives); }
    double Deviation(unsigned int parameter) const
    {
        double unit[K] = {};
        unit[parameter] = 1.0;
        return Deviation(unit);
    }
    template <class Vector>
    void PlaceDeviation(const Derivatives& derivatives, Vector* out)
    {
        for (unsigned int k = 0; k < D; ++k) (*out)[k] = Length(Deviation(derivatives.elements[k]));
    }
    template <class Vector>
    void DirectionDeviation(const Derivatives& derivatives, Vector* out)
    {
        for (unsigned int k = 0; k < D; ++k) (*out)[k] = Number(Deviation(derivatives.elements[k]));
    }

private:
    const LocalPoints<D>& points;
    const DistanceFit<Feature>& fit;
};

/// 1, or -1 where the component of the greatest absolute value, the first of equal ones, is negative.
template <unsigned int D>
double SignOf(const DoubleDouble (&direction)[D])
{
    unsigned int greatest = 0;
    for (unsigned int k = 1; k < D; ++k) {
        if (std::fabs(direction[k].high) > std::fabs(direction[greatest].high)) greatest = k;
    }
    return direction[greatest].high < 0.0 ? -1.0 : 1.0;
}

/// The first steps of most features are those of their own parameters.
template <class Feature>
bool Approach(const LocalPoints<Feature::dimension>&, [[maybe_unused]] DistanceFit<Feature>* fit)
{
    if constexpr (Feature::startsThere)
        return true;
    else
        return fit->Approach();
}

/// Those of a circle in space are taken by its rim.
inline bool Approach(const LocalPoints<3>& points, DistanceFit<Ring>* fit)
{
    DistanceFit<Arc> rim(points, Arc(fit->feature, points.Mean().data()));
    // What the points determine is asked for in any case, by one more look at all of them.
    const bool rests = rim.Approach(rim.limit - 1) && rim.feature.curvature > 0.0;
    if (rests) fit->feature = rim.feature.ToRing();
    if (!rests) fit->Approach(0);
    fit->iterations += rim.iterations;
    return rests;
}

/// What most features do between the first and the last steps, and after them: nothing.
template <class Feature>
Status Anchor(const LocalPoints<Feature::dimension>&, DistanceFit<Feature>*)
{
    return Status::Done;
}

/// Whether the foot of a point on the line that generates a cone lies beyond the apex.
inline bool ReachesBeyondApex(const LocalPoints<3>& points, const Tapered<true>& cone)
{
    bool isBeyond = false;
    ForEachNumber(
        points,
        [cone](const auto* point, auto& foot) __attribute__((always_inline)) {
            using Real = std::decay_t<decltype(*point)>;
            const AboutAxis<Real> about(cone.place, point);
            Real z;
            cone.place.SetAlong(z, 2, point);
            const Real along = (about.length - cone.radius.high) * cone.sine.high + z * cone.cosine.high;
            foot[0][0] = along * cone.sine.high;
        },
        // The apex lies at -R / sin h along the line.
        [&](unsigned int, double foot) { isBeyond = isBeyond || foot < -cone.radius.high; });
    return isBeyond;
}

/// Brings the origin of a cylinder or cone to the height of the points' centroid and a cone's axis to the side to which
/// it widens. Degenerate where the points do not tell the half angle from 0, or where the foot of a point on the line
/// that generates the cone lies beyond the apex.
template <bool isCone>
Status Anchor(const LocalPoints<3>& points, DistanceFit<Tapered<isCone>>* fit)
{
    Tapered<isCone>& feature = fit->feature;
    if constexpr (isCone) {
        if (!(feature.cosine.high > 0.0) || feature.sine.high == 0.0) return Status::Degenerate;
        const double halfAngle[6] = {0.0, 0.0, 0.0, 0.0, 0.0, 1.0};
        if (!fit->Determines(halfAngle, std::fabs(feature.sine.high))) return Status::Degenerate;
    }
    const auto& mean = points.Mean();
    DoubleDouble height;
    for (unsigned int k = 0; k < 3; ++k) {
        height += (mean[k] - feature.place.origin[k]) * feature.place.axes[2][k];
    }
    feature.place.Shift(2, height);
    if constexpr (isCone) {
        feature.radius += height * feature.sine / feature.cosine;
        if (feature.sine.high < 0.0) feature.Reverse();
        if (!(feature.radius.high > 0.0)) return Status::Degenerate;
        if (ReachesBeyondApex(points, feature)) return Status::Degenerate;
    }
    return Status::Done;
}

/// Fits a feature and writes the answer. `tell` takes the report and the answer, writes the primitive, and returns the
/// sign of the distances.
template <class Feature, class Points, class Answer, class T, class Tell>
void FitTo(const Points& set, unsigned int least, Answer* answer, TList<T>* distances, Tell tell)
{
    if (distances != nullptr) distances->Clear(false);
    const LocalPoints<Feature::dimension> points(set, least);
    answer->status = points.status;
    if (points.status != Status::Done) return;

    answer->status = Status::Degenerate;
    Feature start;
    if (!Start(points, &start)) return;
    DistanceFit<Feature> fit(points, start);
    bool rests = Approach(points, &fit);
    rests = rests && Anchor(points, &fit) == Status::Done && fit.Settle();
    answer->iterations = fit.iterations;
    // Where the points determine the feature badly, that is also why the steps did not come to rest.
    if (!fit.DeterminesAll() || Anchor(points, &fit) != Status::Done) return;
    if (!rests) {
        answer->status = Status::NotConverged;
        return;
    }

    Answer told = *answer;
    FitReport<T, Feature> report(points, fit);
    const double sign = tell(report, &told);
    told.rms = report.Length(fit.Rms());
    told.peakToValley = report.Length(Feature::hasSign ? fit.highest - fit.lowest : 2.0 * fit.highest);
    if (report.overflows) return;
    told.status = Status::Done;
    *answer = told;
    if (distances == nullptr) return;
    distances->Expand(points.GetCount());
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        (*distances)[i] = static_cast<T>(points.ToLength(sign * fit.Distance(i)));
    }
}

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

/// The sets of points in reference.txt with the values that fits must give, as reference.py writes them, and the values
/// that the fits of the library do give, under the same names.
namespace Accuracy
{

using namespace Halmont::Orrin::CorvexMaths;

/// A value that a fit must give: high + low, to 22 digits.
struct Value
{
    std::string name;
    std::string kind; ///< length, angle or spread.
    double high = 0.0;
    double low = 0.0;
    double sensitivity = 0.0;

    /// How far off a value is, without error.
    double Error(double value) const { return std::fabs((value - high) - low); }
};

struct Set
{
    std::string feature;
    std::string group;
    std::string name;
    double size = 1.0;
    std::vector<std::vector<double>> points;
    std::vector<Value> values;

    /// The components of the points from one on, as a point set.
    template <class T, template <class> class V>
    TPointSet<T, V> Points(std::size_t from = 0) const
    {
        TPointSet<T, V> set;
        for (const std::vector<double>& point : points) {
            V<T> vector;
            for (std::size_t k = 0; k < sizeof(V<T>) / sizeof(T); ++k) vector[k] = static_cast<T>(point[from + k]);
            set.Add(vector);
        }
        return set;
    }

    /// The greatest coordinate.
    double Farthest() const
    {
        double greatest = 0.0;
        for (const std::vector<double>& point : points) {
            for (const double x : point) greatest = std::max(greatest, std::fabs(x));
        }
        return greatest;
    }

    /// What a value may be off by: ten units in the last place of the size or of a radian, times what the points make
    /// of it, and two units in the last place of the coordinates; four and ten units of the size for rms and peak to
    /// valley.
    double Bound(const Value& value) const
    {
        const double epsilon = std::numeric_limits<double>::epsilon();
        if (value.kind == "spread") return (value.name == "rms" ? 4.0 : 10.0) * epsilon * size;
        const double farthest = Farthest();
        const double places = value.kind == "angle" ? 0.0 : std::nextafter(farthest, 1e300) - farthest;
        const double unit = value.kind == "angle" ? 1.0 : size;
        const double spread = value.sensitivity * std::sqrt(static_cast<double>(points.size()));
        return 10.0 * epsilon * std::max(unit, spread * size) + 2.0 * places;
    }
};

inline std::vector<Set> Read(const char* path)
{
    std::vector<Set> sets;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string first;
        words >> first;
        if (first == "set") {
            Set set;
            words >> set.feature >> set.group >> set.name;
            sets.push_back(set);
        } else if (first == "size") {
            words >> sets.back().size;
        } else if (first == "point") {
            std::vector<double> point;
            for (double x = 0.0; words >> x;) point.push_back(x);
            sets.back().points.push_back(point);
        } else if (first == "value") {
            Value value;
            words >> value.name >> value.kind >> value.high >> value.low >> value.sensitivity;
            sets.back().values.push_back(value);
        }
    }
    return sets;
}

/// What a fit gave, by the names of the values.
struct Result
{
    Robust::Status status = Robust::Status::Degenerate;
    std::map<std::string, double> values;
    std::map<std::string, double> deviations;

    template <class T>
    void Put(const std::string& name, T value, T deviation)
    {
        values[name] = static_cast<double>(value);
        deviations[name] = static_cast<double>(deviation);
    }
    template <class Vector>
    void Put(const std::string& name, const Vector& vector, const Vector& deviation, unsigned int dimension)
    {
        for (unsigned int k = 0; k < dimension; ++k) Put(name + "." + "xyz"[k], vector[k], deviation[k]);
    }
    template <class T>
    void Put(const Robust::FitAnswer<T>& fit)
    {
        status = fit.status;
        values["rms"] = static_cast<double>(fit.rms);
        values["peakToValley"] = static_cast<double>(fit.peakToValley);
    }
};

/// The robust fit of a set's points, or the alignment of its pairs.
template <class T>
Result RobustFit(const Set& set)
{
    const std::string& feature = set.feature;
    Result result;
    const auto line = [&](const auto& fit, unsigned int dimension) {
        result.Put("origin", fit.line.origin, fit.deviation.origin, dimension);
        result.Put("direction", fit.line.direction, fit.deviation.direction, dimension);
        result.Put(fit);
    };
    if (feature == "Line2") line(Robust::LineFit(set.Points<T, TVector2>()), 2);
    if (feature == "Line3") line(Robust::LineFit(set.Points<T, TVector3>()), 3);
    if (feature == "Plane") {
        const Robust::PlaneFit fit(set.Points<T, TVector3>());
        result.Put("point", fit.plane.point, fit.deviation.point, 3);
        result.Put("normal", fit.plane.normal, fit.deviation.normal, 3);
        result.Put(fit);
    }
    if (feature == "Circle2") {
        const Robust::CircleFit fit(set.Points<T, TVector2>());
        result.Put("centre", fit.circle.centre, fit.deviation.centre, 2);
        result.Put("radius", fit.circle.radius, fit.deviation.radius);
        result.Put(fit);
    }
    if (feature == "Circle3") {
        const Robust::CircleFit fit(set.Points<T, TVector3>());
        result.Put("centre", fit.circle.centre, fit.deviation.centre, 3);
        result.Put("normal", fit.circle.normal, fit.deviation.normal, 3);
        result.Put("radius", fit.circle.radius, fit.deviation.radius);
        result.Put(fit);
    }
    if (feature == "Sphere") {
        const Robust::SphereFit fit(set.Points<T, TVector3>());
        result.Put("centre", fit.sphere.sphere, fit.deviation.sphere, 3);
        result.Put("radius", fit.sphere.sphere.w, fit.deviation.sphere.w);
        result.Put(fit);
    }
    if (feature == "Cylinder") {
        const Robust::CylinderFit fit(set.Points<T, TVector3>());
        result.Put("centre", fit.cylinder.centre, fit.deviation.centre, 3);
        result.Put("axis", fit.cylinder.axis, fit.deviation.axis, 3);
        result.Put("radius", fit.cylinder.radius, fit.deviation.radius);
        result.Put("height", fit.cylinder.height, fit.deviation.height);
        result.Put(fit);
    }
    if (feature == "Cone") {
        const Robust::ConeFit fit(set.Points<T, TVector3>());
        result.Put("point", fit.point, fit.pointDeviation, 3);
        result.Put("axis", fit.cone.axis, fit.deviation.axis, 3);
        result.Put("radius", fit.radius, fit.radiusDeviation);
        result.Put("halfAngle", fit.halfAngle, fit.halfAngleDeviation);
        result.Put("apex", fit.cone.apex, fit.deviation.apex, 3);
        result.Put("base", fit.cone.radius, fit.deviation.radius);
        result.Put("height", fit.cone.height, fit.deviation.height);
        result.Put(fit);
    }
    if (feature == "Motion") {
        const Robust::Alignment motion(set.Points<T, TVector3>(), set.Points<T, TVector3>(3));
        result.status = motion.status;
        for (unsigned int i = 0; i < 9; ++i) {
            const std::string name = "rotation" + std::to_string(i / 3) + std::to_string(i % 3);
            result.values[name] = static_cast<double>(motion.rotation.elements[i]);
        }
        for (unsigned int k = 0; k < 3; ++k) {
            result.values[std::string("translation.") + "xyz"[k]] = static_cast<double>(motion.translation[k]);
        }
        result.values["rms"] = static_cast<double>(motion.rms);
        result.values["largest"] = static_cast<double>(motion.largest);
    }
    return result;
}

} // namespace Accuracy

#pragma once

/// A part as it is drawn and as it was measured, and the text files that tell of both.

#include <CorvexMaths/pointsets/TPointSet.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Inspect
{

namespace Maths = Halmont::Orrin::CorvexMaths;
using Vector = Maths::TVector3<double>;
using Points = Maths::TPointSet<double, Maths::TVector3>;

enum class Kind
{
    Plane,
    Line,
    Circle,
    Sphere,
    Profile
};

/// What the files and the report call a kind.
const char* NameOf(Kind kind);

/// A feature as drawn, with the tolerances that it has.
struct Feature
{
    std::string name;
    Kind kind = Kind::Plane;
    Vector point;                   ///< On the plane or line; the centre of a circle or sphere.
    Vector axis;                    ///< Unit: the normal of a plane or circle, the direction of a line.
    double diameter = 0;            ///< Of a circle or sphere.
    unsigned int controlCount = 0;  ///< Of the spline fitted to a profile.
    Points profile;                 ///< What the drawn profile runs through, in its order.
    std::optional<double> form;     ///< Width of the zone about the fitted geometry.
    std::optional<double> position; ///< Width of the zone about the drawn geometry.
    std::optional<double> size;     ///< Greatest difference of the diameter, either way.
};

struct Datum
{
    std::string name;
    Vector point;
};

struct Part
{
    std::string name = "Part";
    std::string unit;
    std::vector<Datum> datums;
    std::vector<Feature> features;
};

/// The measured points by the name of their datum or feature, in the order of the file.
using Measurement = std::map<std::string, Points>;

/// Reads a part. What is not understood is thrown as an InputError with file, line and text.
Part ReadPart(const std::string& path);

/// Reads what was measured of a part: every datum once, every feature in more points than define it.
Measurement ReadMeasurement(const std::string& path, const Part& part);

} // namespace Inspect

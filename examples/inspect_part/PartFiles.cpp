#include "PartFiles.h"

#include "../support/Input.h"

#include <CorvexMaths/primitives/TPlane.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace Inspect
{

namespace
{

const char* const kindNames[] = {"plane", "line", "circle", "sphere", "profile"};

/// The lines of a file that say something, one at a time, and the fields of the present one.
class Lines
{
public:
    explicit Lines(const std::string& filePath) : path(filePath), file(filePath)
    {
        if (!file) throw InputError(path + ": cannot be read");
    }

    /// Goes to the next line that holds more than blanks and a comment; false at the end.
    bool Next()
    {
        while (std::getline(file, line)) {
            ++number;
            if (!line.empty() && line.back() == '\r') line.pop_back();
            fields = std::istringstream(line.substr(0, line.find('#')));
            if (!AtEnd()) return true;
        }
        return false;
    }

    [[noreturn]] void Fail(const std::string& what) const
    {
        throw InputError(path + ":" + std::to_string(number) + ": " + what + ", found \"" + line + "\"");
    }
    void Require(bool holds, const std::string& what) const
    {
        if (!holds) Fail(what);
    }

    bool AtEnd() { return (fields >> std::ws).eof(); }

    std::string Word(const std::string& what)
    {
        std::string word;
        Require(static_cast<bool>(fields >> word), what + " expected");
        return word;
    }

    double Number(const std::string& what)
    {
        try {
            return ReadNumber(Word(what), what);
        } catch (const InputError&) {
            Fail(what + " expected");
        }
    }
    double PositiveNumber(const std::string& what)
    {
        const double result = Number(what);
        Require(result > 0, what + " should be above 0");
        return result;
    }
    Vector Coordinates(const std::string& what)
    {
        const double x = Number(what);
        const double y = Number(what);
        return Vector(x, y, Number(what));
    }
    Vector Direction(const std::string& what)
    {
        Vector direction = Coordinates(what);
        Require(direction.GetLength() > 0, what + " should not be of length 0");
        direction.Normalise();
        return direction;
    }

    /// The rest of the line, blanks at its ends taken off.
    std::string Rest(const std::string& what)
    {
        std::string rest;
        Require(static_cast<bool>(std::getline(fields >> std::ws, rest)), what + " expected");
        return rest.substr(0, rest.find_last_not_of(" \t") + 1);
    }

    void ExpectEnd() { Require(AtEnd(), "nothing more expected"); }

private:
    std::string path;
    std::ifstream file;
    std::string line;
    std::istringstream fields;
    unsigned int number = 0;
};

template <class Named>
const Named* Find(const std::vector<Named>& all, const std::string& name)
{
    for (const Named& one : all)
        if (one.name == name) return &one;
    return nullptr;
}

/// A name that neither a datum nor a feature has yet: measured points are told apart by it alone.
std::string NewName(Lines& lines, const Part& part)
{
    const std::string name = lines.Word("a name");
    lines.Require(!Find(part.datums, name) && !Find(part.features, name), "a name not used before expected");
    return name;
}

Kind ReadKind(Lines& lines)
{
    const std::string word = lines.Word("a kind of feature");
    for (const Kind kind : {Kind::Plane, Kind::Line, Kind::Circle, Kind::Sphere, Kind::Profile})
        if (word == NameOf(kind)) return kind;
    lines.Fail("plane, line, circle, sphere or profile expected");
}

Feature ReadFeature(Lines& lines, const Part& part)
{
    Feature feature;
    feature.name = NewName(lines, part);
    feature.kind = ReadKind(lines);
    const bool round = feature.kind == Kind::Circle || feature.kind == Kind::Sphere;
    if (feature.kind == Kind::Profile) {
        const double count = lines.Number("a number of control points");
        lines.Require(count >= 2 && count <= 20 && count == std::floor(count), "2 to 20 control points expected");
        feature.controlCount = static_cast<unsigned int>(count);
    } else {
        feature.point = lines.Coordinates("three coordinates");
        if (feature.kind != Kind::Sphere) feature.axis = lines.Direction("a direction");
        if (round) feature.diameter = lines.PositiveNumber("a diameter");
    }
    while (!lines.AtEnd()) {
        const std::string word = lines.Word("a tolerance");
        std::optional<double>* tolerance = word == "form"            ? &feature.form
                                           : word == "position"      ? &feature.position
                                           : word == "size" && round ? &feature.size
                                                                     : nullptr;
        lines.Require(tolerance, round ? "form, position or size expected" : "form or position expected");
        *tolerance = lines.PositiveNumber("a tolerance");
    }
    return feature;
}

/// Adds a point to the profile that it names.
void ReadProfilePoint(Lines& lines, Part* part)
{
    const std::string name = lines.Word("a name");
    for (Feature& feature : part->features)
        if (feature.name == name && feature.kind == Kind::Profile) {
            feature.profile.Add(lines.Coordinates("three coordinates"));
            return;
        }
    lines.Fail("the name of a profile above expected");
}

/// Datum points in one plane are carried as well by a reflection as by a rotation, and noise would choose between them.
void CheckDatums(const std::string& path, const Part& part)
{
    Points points;
    for (const Datum& datum : part.datums) points.Add(datum.point);
    const auto& box = points.GetBoundingBox();
    double thickness = 0;
    if (points.GetCount() >= 4) static_cast<void>(Maths::TPlane<double>().Fit(points, &thickness, nullptr));
    if (!(thickness > 0.01 * (box.maximum - box.minimum).GetLength()))
        throw InputError(path + ": four datum points are needed that do not lie in one plane");
}

/// One more than what defines the feature: fewer points lie on it whatever the part is like.
unsigned int LeastPointsOf(const Feature& feature)
{
    switch (feature.kind) {
    case Kind::Line:
        return 3;
    case Kind::Plane:
    case Kind::Circle:
        return 4;
    case Kind::Sphere:
        return 5;
    case Kind::Profile:
        break;
    }
    return feature.controlCount + 1;
}

} // namespace

const char* NameOf(Kind kind)
{
    return kindNames[static_cast<int>(kind)];
}

Part ReadPart(const std::string& path)
{
    Part part;
    Lines lines(path);
    while (lines.Next()) {
        const std::string word = lines.Word("a word");
        if (word == "part")
            part.name = lines.Rest("a name");
        else if (word == "unit")
            part.unit = lines.Word("a unit");
        else if (word == "datum") {
            const std::string name = NewName(lines, part);
            part.datums.push_back({name, lines.Coordinates("three coordinates")});
        } else if (word == "feature")
            part.features.push_back(ReadFeature(lines, part));
        else if (word == "point")
            ReadProfilePoint(lines, &part);
        else
            lines.Fail("part, unit, datum, feature or point expected");
        lines.ExpectEnd();
    }
    CheckDatums(path, part);
    if (part.features.empty()) throw InputError(path + ": there is no feature to inspect");
    for (const Feature& feature : part.features)
        if (feature.kind == Kind::Profile && feature.profile.GetCount() < 4)
            throw InputError(path + ": the profile " + feature.name + " needs four points at least");
    return part;
}

Measurement ReadMeasurement(const std::string& path, const Part& part)
{
    Measurement measurement;
    Lines lines(path);
    while (lines.Next()) {
        const std::string name = lines.Word("a name");
        const Datum* datum = Find(part.datums, name);
        lines.Require(datum || Find(part.features, name), "the name of a datum or feature of the part expected");
        lines.Require(!datum || measurement.count(name) == 0, "a datum is measured once");
        measurement[name].Add(lines.Coordinates("three coordinates"));
        lines.ExpectEnd();
    }
    for (const Datum& datum : part.datums)
        if (measurement.count(datum.name) == 0) throw InputError(path + ": the datum " + datum.name + " is missing");
    for (const Feature& feature : part.features) {
        const unsigned int count = measurement[feature.name].GetCount();
        const unsigned int least = LeastPointsOf(feature);
        if (count < least)
            throw InputError(path + ": " + feature.name + ": " + std::to_string(count) + " points, a " +
                             NameOf(feature.kind) + " is judged by " + std::to_string(least) + " at least");
    }
    return measurement;
}

} // namespace Inspect

// Writes the outlines in this folder anew from their published equations:
//
//     make_outlines FOLDER
//
// Coordinates are in millimetres, rounded to a millionth.

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace
{

const double pi = std::acos(-1.0);

struct Point
{
    double x, y;
};
using Outline = std::vector<Point>;

bool Write(const std::string& path, const std::string& comment, const Outline& outline)
{
    std::ofstream file(path);
    file << comment << '\n';
    for (const Point& point : outline) {
        char line[64];
        std::snprintf(line, sizeof(line), "%.6f %.6f\n", point.x, point.y);
        file << line;
    }
    file.close();
    return !file.fail();
}

/// A section of the four-digit series (Jacobs, Ward and Pinkerton 1933): a thickness laid off at right angles to a
/// camber line of two parabolas. Camber, its place and thickness are shares of the chord. Counter-clockwise, from the
/// trailing edge over the upper side to the nose and back; the trailing edge has the small thickness of the equations.
Outline FourDigitSection(double camber, double place, double thickness, double chord, int intervals)
{
    const auto surface = [&](double x, double side) {
        const double half =
            5 * thickness *
            (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x - 0.1015 * x * x * x * x);
        const bool fore = x < place;
        const double factor = camber / (fore ? place * place : (1 - place) * (1 - place));
        const double line = factor * ((fore ? 0.0 : 1 - 2 * place) + 2 * place * x - x * x);
        const double slope = std::atan(2 * factor * (place - x));
        return Point{chord * (x - side * half * std::sin(slope)), chord * (line + side * half * std::cos(slope))};
    };
    // Cosine spacing sets the points closest where the section bends most, at the nose.
    const auto station = [&](int i) { return (1 - std::cos(pi * i / intervals)) / 2; };
    Outline outline;
    for (int i = intervals; i >= 0; --i) outline.push_back(surface(station(i), 1));
    for (int i = 1; i <= intervals; ++i) outline.push_back(surface(station(i), -1));
    return outline;
}

/// A spur gear with involute flanks: radial lines from the root circle to the base circle, involutes from there to the
/// tip circle, arcs along tip and root. Addendum 1 module, dedendum 1.25 modules, no fillets. Counter-clockwise.
Outline InvoluteGear(double module, int teeth, double pressureAngle)
{
    const double pitchRadius = module * teeth / 2;
    const double baseRadius = pitchRadius * std::cos(pressureAngle);
    const double tipRadius = pitchRadius + module;
    const double rootRadius = pitchRadius - 1.25 * module;
    const auto involute = [](double angle) { return std::tan(angle) - angle; };
    // Half the angle that a tooth takes up at a radius on its flank; at the pitch circle, a quarter of the pitch.
    const auto halfTooth = [&](double radius) {
        return pi / (2 * teeth) + involute(pressureAngle) - involute(std::acos(baseRadius / radius));
    };
    const int flankSteps = 8;
    const int arcSteps = 4;
    Outline outline;
    const auto add = [&](double radius, double angle) {
        outline.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    };
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double middle = 2 * pi * tooth / teeth;
        const double nextFoot = middle + 2 * pi / teeth - halfTooth(baseRadius);
        const auto flankRadius = [&](int i) { return baseRadius + (tipRadius - baseRadius) * i / flankSteps; };
        for (int i = 0; i <= flankSteps; ++i) add(flankRadius(i), middle - halfTooth(flankRadius(i)));
        for (int i = 1; i < arcSteps; ++i) add(tipRadius, middle + halfTooth(tipRadius) * (2.0 * i / arcSteps - 1));
        for (int i = flankSteps; i >= 0; --i) add(flankRadius(i), middle + halfTooth(flankRadius(i)));
        const double foot = middle + halfTooth(baseRadius);
        for (int i = 0; i <= arcSteps; ++i) add(rootRadius, foot + (nextFoot - foot) * i / arcSteps);
    }
    return outline;
}

} // namespace

int main(int count, char** values)
{
    if (count != 2) {
        std::fputs("Usage: make_outlines FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = std::string(values[1]) + "/";
    const Outline airfoil = FourDigitSection(0.02, 0.4, 0.12, 100, 60);
    const std::string about = "# Airfoil section 2412 of the four-digit series, chord 100 mm, 60 intervals a side in "
                              "cosine spacing;\n# made by make_outlines.cpp. Vertices run ";
    const std::string gear = "# Involute spur gear: module 4 mm, 17 teeth, pressure angle 20 degrees, addendum 4 mm, "
                             "dedendum 5 mm;\n# made by make_outlines.cpp. Vertices run counter-clockwise.";
    const bool written =
        Write(folder + "airfoil_ccw.txt", about + "counter-clockwise.", airfoil) &&
        Write(folder + "airfoil_cw.txt", about + "clockwise.", Outline(airfoil.rbegin(), airfoil.rend())) &&
        Write(folder + "gear.txt", gear, InvoluteGear(4, 17, 20 * pi / 180));
    if (!written) std::fprintf(stderr, "make_outlines: cannot write to %s\n", values[1]);
    return written ? 0 : 1;
}

// Writes the drawing of a flange and two measurements of it anew:
//
//     make_flange FOLDER
//
// flange.txt is the drawing. flange_a.txt was measured of a part in tolerance, flange_b.txt of one with two faults:
// bolt hole 4 is drilled out of place, and the crest is ground too deep. Each is measured askew and away from the
// origin, with the noise of a probe. Lengths are in millimetres, rounded to a ten-thousandth.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace
{

const double pi = std::acos(-1.0);

struct Point
{
    double x, y, z;
};

/// Pseudo-random numbers (Steele, Lea and Flood 2014), the same on every machine.
class Noise
{
public:
    explicit Noise(std::uint64_t seed) : state(seed) {}

    /// Even from 0 to 1.
    double Uniform()
    {
        state += 0x9e3779b97f4a7c15;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return static_cast<double>((z ^ (z >> 31)) >> 11) / 9007199254740992.0;
    }
    /// Close to normal, of a standard deviation: a sum of twelve, which needs no logarithm that may differ in its bits.
    double Normal(double deviation)
    {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += Uniform();
        return sum * deviation;
    }

private:
    std::uint64_t state;
};

/// Where the bolt holes are, on a circle of 90 mm.
Point BoltCentre(int bolt)
{
    const double angle = (60 * bolt - 30) * pi / 180;
    return {45 * std::cos(angle), 45 * std::sin(angle), -6};
}

/// The height of the crest, a raised rib along x at y = -30, x from -30 to 30.
double CrestHeight(double x)
{
    const double t = x / 30;
    return 3 + 5 * (1 - t * t) * (1 - t * t) * (1 + 0.4 * t);
}

const Point datums[] = {{25, 43.3, 0}, {-52, 0, 0}, {25, -43.3, 0}, {0, 62, -12}, {-53.7, -31, -12}, {53.7, -31, -12}};
const Point ball = {36, 0, 9};
constexpr double ballDiameter = 12;
constexpr double boltDiameter = 9;
constexpr double boreDiameter = 36;
constexpr double rimDiameter = 136;

/// A file of points, written in coordinates of its own.
class Measurement
{
public:
    Measurement(const std::string& path, const std::string& about, std::uint64_t seed, Point angles, Point offset)
        : file(path), noise(seed), shift(offset)
    {
        file << "# " << about << "\n# Made by make_flange.cpp. A line: NAME X Y Z, in millimetres.\n";
        const double cx = std::cos(angles.x), sx = std::sin(angles.x);
        const double cy = std::cos(angles.y), sy = std::sin(angles.y);
        const double cz = std::cos(angles.z), sz = std::sin(angles.z);
        // About x, then y, then z.
        const Point built[3] = {{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
                                {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
                                {-sy, cy * sx, cy * cx}};
        for (int i = 0; i < 3; ++i) rows[i] = built[i];
    }

    /// Writes a point of the part as the machine sees it, 3 micrometres of noise on each coordinate.
    void Add(const std::string& name, Point p)
    {
        const double sigma = 0.003;
        const double x = p.x + noise.Normal(sigma);
        const double y = p.y + noise.Normal(sigma);
        const double z = p.z + noise.Normal(sigma);
        const auto along = [&](const Point& row) { return row.x * x + row.y * y + row.z * z; };
        char line[96];
        std::snprintf(line, sizeof(line), "%s %.4f %.4f %.4f\n", name.c_str(), along(rows[0]) + shift.x,
                      along(rows[1]) + shift.y, along(rows[2]) + shift.z);
        file << line;
    }

    /// What manufacture leaves: from -size to size.
    double Scatter(double size) { return (2 * noise.Uniform() - 1) * size; }

    bool Close()
    {
        file.close();
        return !file.fail();
    }

private:
    std::ofstream file;
    Noise noise;
    Point rows[3];
    Point shift;
};

/// A ring of points at the height of its centre, slightly three-lobed as clamping in a chuck leaves it.
void AddRing(Measurement& measurement, const std::string& name, Point centre, double diameter, int count, double lobes)
{
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * pi * i / count;
        const double radius = diameter / 2 + lobes * std::cos(3 * angle);
        measurement.Add(name, {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle), centre.z});
    }
}

/// Whether the face is free at a point, with room for the probe.
bool IsFace(double x, double y)
{
    for (int bolt = 1; bolt <= 6; ++bolt)
        if (std::hypot(x - BoltCentre(bolt).x, y - BoltCentre(bolt).y) < boltDiameter / 2 + 2) return false;
    const bool onBall = std::hypot(x - ball.x, y - ball.y) < ballDiameter / 2 + 2;
    const bool onGroove = std::fabs(y - 30) < 4 && std::fabs(x) < 28;
    const bool onCrest = std::fabs(y + 30) < 4 && std::fabs(x) < 33;
    return !onBall && !onGroove && !onCrest;
}

void AddFace(Measurement& measurement)
{
    for (const double radius : {22.0, 36.0, 52.0})
        for (int i = 0; i < 24; ++i) {
            const double angle = (7.5 + 15 * i) * pi / 180;
            const double x = radius * std::cos(angle);
            const double y = radius * std::sin(angle);
            // Slightly dished, as a face is turned.
            if (IsFace(x, y)) measurement.Add("face", {x, y, 0.000002 * radius * radius});
        }
}

void AddBall(Measurement& measurement)
{
    for (const double elevation : {0.0, 30.0, 60.0})
        for (int i = 0; i < 8; ++i) {
            const double angle = (45 * i + elevation / 2) * pi / 180;
            const double level = ballDiameter / 2 * std::cos(elevation * pi / 180);
            measurement.Add("ball", {ball.x + level * std::cos(angle), ball.y + level * std::sin(angle),
                                     ball.z + ballDiameter / 2 * std::sin(elevation * pi / 180)});
        }
    measurement.Add("ball", {ball.x, ball.y, ball.z + ballDiameter / 2});
}

/// Measures the part; `misplaced` is how far bolt hole 4 is off, `worn` how deep the crest is ground.
void Measure(Measurement& measurement, Point misplaced, double worn)
{
    for (int i = 0; i < 6; ++i) measurement.Add("D" + std::to_string(i + 1), datums[i]);
    AddFace(measurement);
    AddRing(measurement, "rim", {0.012, -0.009, -16}, rimDiameter - 0.021, 36, 0.006);
    AddRing(measurement, "bore", {-0.004, 0.006, -6}, boreDiameter + 0.011, 24, 0.003);
    for (int bolt = 1; bolt <= 6; ++bolt) {
        Point centre = BoltCentre(bolt);
        centre.x += measurement.Scatter(0.03) + (bolt == 4 ? misplaced.x : 0);
        centre.y += measurement.Scatter(0.03) + (bolt == 4 ? misplaced.y : 0);
        const double diameter = boltDiameter + measurement.Scatter(0.02);
        AddRing(measurement, "bolt" + std::to_string(bolt), centre, diameter, 12, 0.004);
    }
    for (int i = 0; i <= 25; ++i) measurement.Add("groove", {-25.0 + 2 * i, 30.008, -1.006});
    AddBall(measurement);
    for (int i = 0; i <= 56; ++i) {
        const double x = -28.0 + i;
        measurement.Add("crest", {x, -30, CrestHeight(x) - worn * std::exp(-(x - 9) * (x - 9) / 20)});
    }
}

bool WriteDrawing(const std::string& path)
{
    std::ofstream file(path);
    const auto write = [&](const std::string& start, const Point& p, const std::string& end) {
        char numbers[96];
        // Adding 0 turns a rounded -0 into 0.
        const auto rounded = [](double value) { return std::round(value * 1e4) / 1e4 + 0.0; };
        std::snprintf(numbers, sizeof(numbers), " %.4f %.4f %.4f", rounded(p.x), rounded(p.y), rounded(p.z));
        file << start << numbers << end << '\n';
    };
    file << "# The drawing of a flange, made by make_flange.cpp; inspect_part --help tells how to read it.\n"
         << "part Flange F 136\nunit mm\n\n# Three targets on the face, three on the step below it.\n";
    for (int i = 0; i < 6; ++i) write("datum D" + std::to_string(i + 1), datums[i], "");
    file << "\nfeature face plane 0 0 0  0 0 1  form 0.04 position 0.06\n"
         << "feature rim circle 0 0 -16  0 0 1  " << rimDiameter << "  size 0.05 position 0.1 form 0.05\n"
         << "feature bore circle 0 0 -6  0 0 1  " << boreDiameter << "  size 0.025 position 0.05 form 0.03\n"
         << "\n# Bolt holes, on a circle of 90.\n";
    for (int bolt = 1; bolt <= 6; ++bolt)
        write("feature bolt" + std::to_string(bolt) + " circle", BoltCentre(bolt),
              "  0 0 1  9  size 0.05 position 0.2 form 0.05");
    file << "\n# The bottom of the groove, a ball for setting up, and the crest of the rib.\n"
         << "feature groove line 0 30 -1  1 0 0  form 0.05 position 0.1\n";
    write("feature ball sphere", ball, "  12  size 0.01 position 0.05 form 0.03");
    file << "feature crest profile 7  form 0.05 position 0.1\n";
    for (int i = 0; i <= 12; ++i) write("point crest", {-30.0 + 5 * i, -30, CrestHeight(-30.0 + 5 * i)}, "");
    file.close();
    return !file.fail();
}

} // namespace

int main(int count, char** values)
{
    if (count != 2) {
        std::fputs("Usage: make_flange FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = std::string(values[1]) + "/";
    const double degree = pi / 180;
    Measurement good(folder + "flange_a.txt", "A flange in tolerance.", 1, {0.8 * degree, -1.1 * degree, 31 * degree},
                     {212.4, 148.7, -36.2});
    Measure(good, {0, 0, 0}, 0);
    Measurement faulty(folder + "flange_b.txt", "A flange with bolt hole 4 out of place and the crest ground too deep.",
                       2, {-0.5 * degree, 0.9 * degree, -74 * degree}, {180.1, 251.3, -35.8});
    Measure(faulty, {-0.14, 0.11, 0}, 0.11);
    const bool written = WriteDrawing(folder + "flange.txt") && good.Close() && faulty.Close();
    if (!written) std::fprintf(stderr, "make_flange: cannot write to %s\n", values[1]);
    return written ? 0 : 1;
}

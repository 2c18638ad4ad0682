#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace Inspect
{

namespace
{

constexpr double degrees = 57.29577951308232;

std::string Text(double value, const char* form = "%.4f")
{
    char text[48];
    std::snprintf(text, sizeof(text), form, value);
    // What rounds to zero is printed without the sign of what it was.
    if (std::strtod(text, nullptr) == 0) std::snprintf(text, sizeof(text), form, 0.0);
    return text;
}

std::string Text(const Vector& v, const char* form = "%.4f")
{
    return Text(v.x, form) + " " + Text(v.y, form) + " " + Text(v.z, form);
}

std::string Describe(const Feature& feature, const Fitted& fitted)
{
    const char* const direction = "%.6f";
    switch (feature.kind) {
    case Kind::Plane:
        return "through " + Text(fitted.point) + ", normal " + Text(fitted.axis, direction);
    case Kind::Line:
        return "through " + Text(fitted.point) + ", along " + Text(fitted.axis, direction);
    case Kind::Circle:
        return "centre " + Text(fitted.point) + ", axis " + Text(fitted.axis, direction) + ", diameter " +
               Text(fitted.diameter);
    case Kind::Sphere:
        return "centre " + Text(fitted.point) + ", diameter " + Text(fitted.diameter);
    case Kind::Profile:
        break;
    }
    return "spline of order " + std::to_string(feature.controlCount) + ", control points:";
}

void PrintAlignment(const Part& part, const Alignment& alignment)
{
    // About the fixed axes of the measurement: x first, then y, then z.
    const auto& r = alignment.rotation;
    const Vector angles(std::atan2(r[2][1], r[2][2]), -std::asin(std::fmin(1, std::fmax(-1, r[2][0]))),
                        std::atan2(r[1][0], r[0][0]));
    std::printf("Alignment by %zu datum points, measured to drawn\n", part.datums.size());
    std::printf("  rotation about x, y, z  %s degrees\n", Text(angles * degrees).c_str());
    std::printf("  shift along x, y, z     %s\n", Text(alignment.shift).c_str());
    std::printf("  largest residual        %s at %s\n\n", Text(alignment.residual).c_str(), alignment.worst.c_str());
}

/// The width of the widest name, but no less than the heading's.
int NameWidth(const Inspection& inspection)
{
    std::size_t width = 7;
    for (const Result& result : inspection.results) width = std::max(width, result.feature.name.size());
    return static_cast<int>(width);
}

void PrintFits(const Inspection& inspection)
{
    const int width = NameWidth(inspection);
    const char* const form = "%-*s  %-7s  %6s  %8s  %9s  %s\n";
    std::printf(form, width, "feature", "kind", "points", "spread", "squares", "fitted");
    for (const Result& result : inspection.results) {
        const Fitted& fitted = result.fitted;
        std::printf(form, width, result.feature.name.c_str(), NameOf(result.feature.kind),
                    std::to_string(result.deviations.size()).c_str(), Text(fitted.spread).c_str(),
                    Text(fitted.squares, "%.3e").c_str(), Describe(result.feature, fitted).c_str());
        for (unsigned int i = 0; i < fitted.controls.GetCount(); ++i)
            std::printf(form, width, "", "", "", "", "", ("  " + Text(fitted.controls[i])).c_str());
    }
    std::printf("\n");
}

void PrintCharacteristics(const Inspection& inspection)
{
    const int width = NameWidth(inspection);
    const char* const form = "%-*s  %-14s  %9s  %9s  %9s  %9s  %s\n";
    std::printf(form, width, "feature", "characteristic", "nominal", "actual", "deviation", "tolerance", "verdict");
    for (const Result& result : inspection.results)
        for (const Characteristic& one : result.characteristics) {
            const bool first = &one == &result.characteristics.front();
            const std::string tolerance = !one.tolerance ? "-" : (one.nominal ? "+/-" : "") + Text(*one.tolerance);
            std::printf(form, width, first ? result.feature.name.c_str() : "", one.name.c_str(),
                        one.nominal ? Text(*one.nominal).c_str() : "-", Text(one.actual).c_str(),
                        one.nominal ? Text(one.actual - *one.nominal, "%+.4f").c_str() : "-", tolerance.c_str(),
                        !one.tolerance      ? "-"
                        : one.InTolerance() ? "in"
                                            : "OUT");
        }
    std::printf("\n");
}

/// The last line: whether all is in tolerance, else what is not.
std::string VerdictOf(const Inspection& inspection)
{
    std::string verdict;
    for (const Result& result : inspection.results)
        for (const Characteristic& one : result.characteristics)
            if (!one.InTolerance()) verdict += (verdict.empty() ? "" : ", ") + result.feature.name + " " + one.name;
    return verdict.empty() ? "IN TOLERANCE" : "OUT OF TOLERANCE: " + verdict;
}

} // namespace

void PrintReport(const Part& part, const Inspection& inspection)
{
    std::printf("Inspection report: %s\nLengths in %s.\n\n", part.name.c_str(),
                part.unit.empty() ? "the unit of the files" : part.unit.c_str());
    PrintAlignment(part, inspection.alignment);
    PrintFits(inspection);
    PrintCharacteristics(inspection);
    std::printf("%s\n", VerdictOf(inspection).c_str());
}

} // namespace Inspect

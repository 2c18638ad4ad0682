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

const char* const legend =
    "robust: the answer of the Robust family to the same points where it reads otherwise, or why there is none.\n"
    "        No verdict rests on it. Curves differ, as each fit gives the points parameters of its own.\n"
    "zone:   the width of the narrowest slab or ring that holds the points: flatness or roundness by ISO 1101.\n";

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

/// In degrees, about the fixed axes of the measurement: x first, then y, then z.
Vector AnglesOf(const Maths::TMatrix3x3<double>& r)
{
    return Vector(std::atan2(r[2][1], r[2][2]), -std::asin(std::fmin(1, std::fmax(-1, r[2][0]))),
                  std::atan2(r[1][0], r[0][0])) *
           degrees;
}

void PrintAlignment(const Part& part, const Alignment& alignment, const Alignment& robust)
{
    const auto print = [&](const char* name, const std::string& text, const char* after, const std::string& other) {
        const bool differs = robust.status == Status::Done && other != text;
        std::printf("  %-23s %s%s%s\n", name, text.c_str(), after, differs ? ("  robust: " + other).c_str() : "");
    };
    std::printf("Alignment by %zu datum points, measured to drawn\n", part.datums.size());
    print("rotation about x, y, z", Text(AnglesOf(alignment.rotation)), " degrees", Text(AnglesOf(robust.rotation)));
    print("shift along x, y, z", Text(alignment.shift), "", Text(robust.shift));
    print("largest residual", Text(alignment.residual), (" at " + alignment.worst).c_str(), Text(robust.residual));
    if (robust.status != Status::Done)
        std::printf("  %-23s %s\n", "robust", Maths::Robust::Answer::Describe(robust.status));
    std::printf("\n");
}

/// The width of the widest name, but no less than the heading's.
int NameWidth(const Inspection& inspection)
{
    std::size_t width = 7;
    for (const Result& result : inspection.results) width = std::max(width, result.feature.name.size());
    return static_cast<int>(width);
}

/// What the report tells of a fit: spread, squares, geometry and, a line each, control points.
std::vector<std::string> TextOf(const Feature& feature, const Fitted& fitted)
{
    std::vector<std::string> text{Text(fitted.spread), Text(fitted.squares, "%.3e"), Describe(feature, fitted)};
    for (unsigned int i = 0; i < fitted.controls.GetCount(); ++i) text.push_back("  " + Text(fitted.controls[i]));
    return text;
}

void PrintFits(const Inspection& inspection)
{
    const int width = NameWidth(inspection);
    const auto row = [&](const std::string& name, const char* kind, const std::string& points, const std::string& zone,
                         const std::vector<std::string>& text) {
        const char* const form = "%-*s  %-7s  %6s  %8s  %8s  %9s  %s\n";
        std::printf(form, width, name.c_str(), kind, points.c_str(), text[0].c_str(), zone.c_str(), text[1].c_str(),
                    text[2].c_str());
        for (std::size_t i = 3; i < text.size(); ++i) std::printf(form, width, "", "", "", "", "", "", text[i].c_str());
    };
    const auto tellWhyNot = [&](const char* answer, Status status) {
        if (status != Status::Done) row("", answer, "", "", {"", "", Maths::Robust::Answer::Describe(status)});
    };
    row("feature", "kind", "points", "zone", {"spread", "squares", "fitted"});
    for (const Result& result : inspection.results) {
        const bool hasZone = result.zone && result.zone->status == Status::Done;
        const auto text = TextOf(result.feature, result.fitted);
        row(result.feature.name, NameOf(result.feature.kind), std::to_string(result.deviations.size()),
            hasZone ? Text(result.zone->width) : "-", text);
        if (result.zone) tellWhyNot("zone", result.zone->status);
        tellWhyNot("robust", result.robust.status);
        if (result.robust.status != Status::Done) continue;
        const auto robust = TextOf(result.feature, result.robust);
        if (robust != text) row("", "robust", "", "", robust);
    }
    std::printf("\n");
}

void PrintCharacteristics(const Inspection& inspection)
{
    const int width = NameWidth(inspection);
    const char* const form = "%-*s  %-14s  %9s  %9s  %9s  %9s  %9s  %s\n";
    std::printf(form, width, "feature", "characteristic", "nominal", "actual", "robust", "deviation", "tolerance",
                "verdict");
    for (const Result& result : inspection.results)
        for (const Characteristic& one : result.characteristics) {
            const bool first = &one == &result.characteristics.front();
            const std::string tolerance = !one.tolerance ? "-" : (one.nominal ? "+/-" : "") + Text(*one.tolerance);
            const std::string actual = Text(one.actual);
            const std::string robust = one.robust ? Text(*one.robust) : "-";
            std::printf(form, width, first ? result.feature.name.c_str() : "", one.name.c_str(),
                        one.nominal ? Text(*one.nominal).c_str() : "-", actual.c_str(),
                        robust == actual ? "" : robust.c_str(),
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
    std::printf("Inspection report: %s\nLengths in %s.\n", part.name.c_str(),
                part.unit.empty() ? "the unit of the files" : part.unit.c_str());
    std::puts(legend);
    PrintAlignment(part, inspection.alignment, inspection.robust);
    PrintFits(inspection);
    PrintCharacteristics(inspection);
    std::printf("%s\n", VerdictOf(inspection).c_str());
}

} // namespace Inspect

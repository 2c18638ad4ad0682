// Prints the digest of every operation in every instantiation, a line each, sorted.
//
//   corvex_digest [--trigonometric | --functions]
//
// What rests on the sine, cosine or arc cosine of the C library is left out; --trigonometric prints that alone, and
// --functions the bits of these functions themselves, at a few thousand arguments.

#include "tests/digest/Inputs.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>

using namespace CorvexDigest;

namespace
{

std::uint64_t Bits(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

void PrintFunctions()
{
    Random random(51);
    for (unsigned int i = 0; i < 5000; ++i) {
        const double share = random.Unit<double>(), angle = share * (i % 2 == 0 ? 7 : 1000);
        std::printf("sine %016" PRIx64 "\ncosine %016" PRIx64 "\narc cosine %016" PRIx64 "\n", Bits(std::sin(angle)),
                    Bits(std::cos(angle)), Bits(std::acos(share)));
    }
}

int PrintDigests(bool trigonometric)
{
    Report report;
    for (const auto family : {DigestContainers, DigestVectors, DigestMatrices, DigestSparse, DigestPrimitives,
                              DigestPointSets, DigestPolygons, DigestSplines, DigestExact})
        family(report);

    std::sort(report.lines.begin(), report.lines.end(),
              [](const Report::Line& a, const Report::Line& b) { return a.name < b.name; });
    for (std::size_t i = 0; i < report.lines.size(); ++i) {
        const Report::Line& line = report.lines[i];
        if (i > 0 && line.name == report.lines[i - 1].name) {
            std::fprintf(stderr, "%s has two lines\n", line.name.c_str());
            return 1;
        }
        if ((line.functions == Functions::Trigonometric) == trigonometric)
            std::printf("%s %016" PRIx64 "\n", line.name.c_str(), line.digest);
    }
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const std::string what = argumentCount > 1 ? arguments[1] : "";
    if (what == "--functions") {
        PrintFunctions();
        return 0;
    }
    if (!what.empty() && what != "--trigonometric") {
        std::fprintf(stderr, "usage: %s [--trigonometric | --functions]\n", arguments[0]);
        return 2;
    }
    return PrintDigests(!what.empty());
}

// Prints the digest of every operation in every instantiation, a line each, sorted.
//
//   corvex_digest [--trigonometric]
//
// What rests on the sine, cosine or arc cosine of the C library is left out, or with the option is all that is printed.

#include "tests/digest/Digest.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

int main(int argumentCount, char** arguments)
{
    using namespace CorvexDigest;
    const bool trigonometric = argumentCount == 2 && std::strcmp(arguments[1], "--trigonometric") == 0;
    if (argumentCount > 1 && !trigonometric) {
        std::fprintf(stderr, "usage: %s [--trigonometric]\n", arguments[0]);
        return 2;
    }

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
}

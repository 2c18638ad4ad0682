// Compares a measured part with its drawing: aligns it, fits its features and reports what is out of tolerance.
//
//     inspect_part flange.txt flange_b.txt -o flange_b.svg

#include "Report.h"

#include "../support/Input.h"

#include <cstdio>

namespace
{

const char* const usage = R"(Usage: inspect_part [OPTION ...] PART MEASURED

Aligns a measured part with its drawing by the datum points, fits each feature to its measured points, and prints a
report of both the fits and the deviations from the drawing.

Both files are text: fields separated by blanks, # begins a comment, blank lines are passed over.

PART tells what is drawn, a line each:

  part NAME                                     what the part is called; may hold blanks
  unit NAME                                     the unit of all lengths
  datum NAME X Y Z                              a datum point; four at least, not in one plane
  feature NAME plane   X Y Z NX NY NZ ...       a point and the normal
  feature NAME line    X Y Z DX DY DZ ...       a point and the direction
  feature NAME circle  X Y Z NX NY NZ D ...     centre, normal and diameter: a bore, a boss
  feature NAME sphere  X Y Z D ...              centre and diameter
  feature NAME profile N ...                    a free curve; N control points are fitted to it
  point NAME X Y Z                              the profile NAME runs through this point; four at least, in order

At the end of a feature, where ... stands, come the tolerances it is judged by:

  form T        its points lie in a zone T wide about the fitted geometry: a slab, a cylinder, a ring, a shell, a band
  position T    what was measured lies in a zone T wide about the drawn geometry: the centre of a circle or sphere, all
                points of the other kinds
  size T        the diameter differs by T at most either way

MEASURED holds the points, NAME X Y Z a line, in any Cartesian coordinates: each datum once, each feature in more points
than define it. Those of a profile stand in order; those of circles and lines had better too, as the picture joins them.

  -o FILE        draw the deviations into this SVG file
  --magnify M    by this factor; one that suits the largest deviation if not given
  --help         print this text

Exit status: 0 if everything is in tolerance; 1 if not, or if the picture cannot be written; 2 if an argument or a file
cannot be understood.
)";

/// What the command line asked for.
struct Request
{
    std::string part;
    std::string measured;
    std::string picture;
    double magnification = 0;
    bool help = false;
};

Request ReadArguments(Arguments arguments)
{
    Request request;
    while (arguments.AreLeft()) {
        const std::string argument = arguments.Take();
        if (argument == "--help" || argument == "-h")
            request.help = true;
        else if (argument == "-o")
            request.picture = arguments.ValueOf(argument);
        else if (argument == "--magnify") {
            request.magnification = ReadNumber(arguments.ValueOf(argument), argument);
            if (!(request.magnification > 0)) throw InputError(argument + " should be above 0");
        } else if (argument.rfind("-", 0) == 0)
            throw InputError(argument + " is not an option; --help lists them");
        else if (request.part.empty())
            request.part = argument;
        else if (request.measured.empty())
            request.measured = argument;
        else
            throw InputError("nothing is known to do with a third file, " + argument);
    }
    if (!request.help && request.measured.empty())
        throw InputError("name the file of the part and that of the measured points; --help tells more");
    return request;
}

} // namespace

int main(int count, char** values)
{
    try {
        const Request request = ReadArguments(Arguments({values + 1, values + count}));
        if (request.help) {
            std::fputs(usage, stdout);
            return 0;
        }
        const Inspect::Part part = Inspect::ReadPart(request.part);
        const Inspect::Measurement measurement = Inspect::ReadMeasurement(request.measured, part);
        const Inspect::Inspection inspection = Inspect::InspectPart(part, measurement);
        Inspect::PrintReport(part, inspection);
        if (!request.picture.empty() && !Inspect::DrawReport(part, inspection, request.magnification, request.picture))
        {
            std::fprintf(stderr, "inspect_part: %s: cannot be written\n", request.picture.c_str());
            return 1;
        }
        return inspection.InTolerance() ? 0 : 1;
    } catch (const InputError& error) {
        std::fprintf(stderr, "inspect_part: %s\n", error.what());
        return 2;
    }
}

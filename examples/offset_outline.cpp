// Draws an outline together with its offsets: the outlines that run at given distances outside and inside of it.
//
//     offset_outline airfoil.txt -2 4 -o airfoil.svg

#include "support/Input.h"
#include "support/Svg.h"

#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/regions/TRegion.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace Maths = Halmont::Orrin::CorvexMaths;
using Polygon = Maths::TPolygon<double, Maths::TVector2>;
using Region = Maths::TRegion<double>;
using Box = Maths::TBox<double>;

namespace
{

const char* const usage = R"(Usage: offset_outline [OPTION ...] FILE DISTANCE ...

Reads an outline, offsets it by each distance (positive: outward, negative: inward), prints a table of the results and,
if asked to, draws them to scale.

Each offset is made in two ways: of the polygon, which stays one outline, and of the region inside it, which may fall
into pieces or close round holes. Where the two differ the table has a second line, and the picture shows the outlines
of the region dashed, on top.

FILE holds a vertex a line: x and y, separated by blanks. What follows a # is a comment; blank lines are passed over. The
last vertex is joined to the first. The outline may run either way round; run counter-clockwise, its offsets get an
additional vertex at each corner that they open.

  -o FILE        draw the outline and its offsets into this SVG file
  --spacing S    keep the vertices of an offset at least S apart
  --thin TOL     then drop the vertices that lie within TOL of the line without them
  --unit NAME    the unit of the coordinates, for the picture
  --help         print this text

Lengths are in the unit of the coordinates. Exit status: 0 if all went well, also when an outline has no offset at a
distance; 1 if the picture cannot be written; 2 if an argument or the outline cannot be understood.
)";

/// What the command line asked for.
struct Request
{
    std::string input;
    std::string picture;
    std::string unit;
    std::vector<double> distances;
    double spacing = 0;
    double thin = -1;
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
        else if (argument == "--unit")
            request.unit = arguments.ValueOf(argument);
        else if (argument == "--spacing")
            request.spacing = ReadNumber(arguments.ValueOf(argument), argument);
        else if (argument == "--thin")
            request.thin = ReadNumber(arguments.ValueOf(argument), argument);
        else if (argument.rfind("--", 0) == 0)
            throw InputError(argument + " is not an option; --help lists them");
        else if (request.input.empty())
            request.input = argument;
        else
            request.distances.push_back(ReadNumber(argument, "a distance"));
    }
    if (!request.help && request.distances.empty())
        throw InputError("name a file and at least one distance; --help tells more");
    return request;
}

/// Reads a vertex a line. A line that is not understood is reported with its number.
Polygon ReadOutline(const std::string& path)
{
    std::ifstream file(path);
    if (!file) throw InputError(path + ": cannot be read");
    Polygon outline;
    std::string line;
    for (unsigned int number = 1; std::getline(file, line); ++number) {
        const std::string text = line.substr(0, line.find('#'));
        if (text.find_first_not_of(" \t\r") == std::string::npos) continue;
        std::istringstream fields(text);
        double x = 0;
        double y = 0;
        std::string rest;
        if (!(fields >> x >> y) || fields >> rest)
            throw InputError(path + ":" + std::to_string(number) + ": two numbers expected, found \"" + line + "\"");
        outline.Add(Maths::TVector2<double>(x, y));
    }
    if (outline.GetCount() < 3) throw InputError(path + ": an outline needs at least three vertices");
    return outline;
}

/// One line of the table: an outline and its offset at a distance.
struct Row
{
    double distance;
    Polygon result;
    Box before;
    bool done;
    /// The offset of the region, where it is another answer; else empty.
    Region region;
    bool differs;
};

/// Whether the offset of a polygon is that of the region inside it but for its corners, at which a region has arcs and
/// a polygon one vertex or none: their areas differ by less than a twentieth of the strip between outline and offset.
bool IsSame(const Polygon& outline, const Row& row, const Region& region)
{
    const double strip = std::fabs(region.GetArea() - outline.GetSimpleArea());
    if (!row.done) return region.IsEmpty();
    return region.GetOutlineCount() == 1 && std::fabs(row.result.GetSimpleArea() - region.GetArea()) < 0.05 * strip;
}

Row OffsetBy(const Polygon& outline, double distance, const Request& request)
{
    // Offset works in place, so each distance starts from a copy of its own.
    Row row{distance, outline, outline.GetBoundingBox(), false, {}, false};
    row.done = row.result.Offset(distance, request.spacing);
    const Region region = Region(outline).Offset(distance);
    row.differs = !IsSame(outline, row, region);
    if (row.differs) row.region = region;
    if (row.done && request.thin >= 0) {
        row.result.SimplifyDPM(request.thin);
        // Vertices removed one by one leave the box wider than the rest needs.
        row.result.RecalculateBoundingBox();
    }
    return row;
}

std::string Describe(const Box& box)
{
    char text[96];
    std::snprintf(text, sizeof(text), "x %.3f .. %.3f, y %.3f .. %.3f", box.minimum.x, box.maximum.x, box.minimum.y,
                  box.maximum.y);
    return text;
}

const char* SenseOf(double signedArea)
{
    return signedArea > 0 ? "counter-clockwise" : signedArea < 0 ? "clockwise" : "none";
}

/// The line of a region that is another answer than the polygon in the line above.
void PrintRegion(const Region& region, const char* form)
{
    char count[16];
    char area[32];
    char pieces[64];
    const std::size_t pieceCount = region.GetPieces().size();
    const std::size_t holeCount = region.GetOutlineCount() - pieceCount;
    std::snprintf(count, sizeof(count), "%u", region.GetVertexCount());
    std::snprintf(area, sizeof(area), "%.3f", region.GetArea());
    std::snprintf(pieces, sizeof(pieces), "%zu piece%s, %zu hole%s", pieceCount, pieceCount == 1 ? "" : "s", holeCount,
                  holeCount == 1 ? "" : "s");
    const std::string box = region.IsEmpty() ? "-" : Describe(region.GetBoundingBox());
    std::printf(form, "region", count, area, pieces, "", box.c_str(), "differs");
}

void PrintTable(const Polygon& outline, const std::vector<Row>& rows)
{
    const char* const form = "%9s  %8s  %12s  %-17s  %-37s  %-37s  %s\n";
    std::printf(form, "distance", "vertices", "signed area", "sense", "box before", "box after", "offset");
    const auto print = [&](const char* distance, const Polygon& polygon, const Box& before, const char* answer) {
        char count[16];
        char area[32];
        std::snprintf(count, sizeof(count), "%u", polygon.GetCount());
        std::snprintf(area, sizeof(area), "%.3f", polygon.GetSignedSimpleArea());
        std::printf(form, distance, count, area, SenseOf(polygon.GetSignedSimpleArea()), Describe(before).c_str(),
                    Describe(polygon.GetBoundingBox()).c_str(), answer);
    };
    print("outline", outline, outline.GetBoundingBox(), "");
    for (const Row& row : rows) {
        char distance[32];
        std::snprintf(distance, sizeof(distance), "%+g", row.distance);
        if (row.done)
            print(distance, row.result, row.before, "true");
        else // what a failed offset leaves behind is no outline
            std::printf(form, distance, "-", "-", "-", Describe(row.before).c_str(), "-", "false");
        if (row.differs) PrintRegion(row.region, form);
    }
}

std::string TitleOf(const std::string& path)
{
    const std::size_t slash = path.find_last_of('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return name.substr(0, name.find_last_of('.')) + " and its offsets";
}

std::string LabelOf(double distance, const std::string& unit)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%g", std::fabs(distance));
    return (distance < 0 ? "\u2212" : "+") + std::string(text) + (unit.empty() ? "" : " " + unit);
}

/// Draws from the outermost to the innermost, the outline in its place between them.
bool Draw(const Polygon& outline, const std::vector<Row>& rows, const Request& request)
{
    std::vector<const Row*> drawn;
    for (const Row& row : rows)
        if (row.done || row.differs) drawn.push_back(&row);
    std::stable_sort(drawn.begin(), drawn.end(), [](const Row* a, const Row* b) { return a->distance > b->distance; });

    double farthest = 0;
    for (const Row* row : drawn) farthest = std::max(farthest, std::fabs(row->distance));

    Svg::Picture picture(TitleOf(request.input), request.unit);
    bool outlineDrawn = false;
    const auto drawOutline = [&] {
        if (!outlineDrawn) picture.Add(outline, {"outline", "#222222", 2.2, "#eef1f4"});
        outlineDrawn = true;
    };
    for (const Row* row : drawn) {
        if (row->distance < 0) drawOutline();
        const double share = std::fabs(row->distance) / farthest;
        const Svg::Colour colour = Svg::OffsetColour(row->distance > 0, share);
        if (row->done) picture.Add(row->result, {LabelOf(row->distance, request.unit), colour});
    }
    drawOutline();
    for (const Row* row : drawn) {
        // One entry in the legend for all outlines of a region.
        std::string label = LabelOf(row->distance, request.unit) + ", region";
        for (const Polygon& part : row->region.GetOutlines()) {
            picture.Add(part, {label, "#111111", 1.4, "none", "7 4"});
            label.clear();
        }
    }
    return picture.Save(request.picture);
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
        const Polygon outline = ReadOutline(request.input);
        std::vector<Row> rows;
        for (const double distance : request.distances) rows.push_back(OffsetBy(outline, distance, request));
        PrintTable(outline, rows);
        if (!request.picture.empty() && !Draw(outline, rows, request)) {
            std::fprintf(stderr, "offset_outline: %s: cannot be written\n", request.picture.c_str());
            return 1;
        }
        return 0;
    } catch (const InputError& error) {
        std::fprintf(stderr, "offset_outline: %s\n", error.what());
        return 2;
    }
}

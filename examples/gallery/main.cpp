// Draws what the library computes, a picture for each kind of result, and a page that shows them all with their code.
//
//     gallery pictures && xdg-open pictures/gallery.html

#include "Gallery.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace
{

const char* const usage = R"(Usage: gallery [FOLDER]

Draws what the library computes into FOLDER, "gallery" unless given: an SVG picture for each kind of result, and the
page gallery.html, which shows each picture with the lines of code that made it. The folder is made where there is none.

Exit status: 0 if all went well; 1 if a file cannot be written; 2 if the arguments cannot be understood.
)";

const char* const pageHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>CorvexMaths in pictures</title>
<style>
body { margin: 0 auto; max-width: 1500px; padding: 24px 28px; background: #f5f6f8; color: #222222;
       font: 16px/1.45 Helvetica, Arial, sans-serif; }
h1 { font-size: 28px; font-weight: normal; margin: 0 0 4px; }
h2 { font-size: 21px; font-weight: normal; margin: 36px 0 12px; }
h3 { font-size: 17px; margin: 12px 0 4px; }
p { margin: 0 0 10px; }
.cards { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(420px, 100%), 1fr)); gap: 20px; }
.card { background: #ffffff; border: 1px solid #dde1e6; border-radius: 6px; padding: 14px 16px; display: flex;
        flex-direction: column; min-width: 0; }
.card img { width: 100%; height: auto; }
.card pre { margin: auto 0 0; padding: 10px 12px; background: #eef1f4; border-radius: 4px;
            font: 12.5px/1.5 Menlo, Consolas, "DejaVu Sans Mono", monospace;
            white-space: pre-wrap; overflow-wrap: anywhere; }
.card code { display: block; padding-left: 24px; text-indent: -24px; }
</style>
</head>
<body>
<h1>CorvexMaths in pictures</h1>
<p>Each picture was drawn by <code>examples/gallery</code> from what the lines of code beneath it computed.</p>
)";

/// Cards that belong together on the page.
struct Group
{
    const char* title;
    std::vector<Gallery::Card> cards;
};

void WriteCard(std::ostream& page, const Gallery::Card& card)
{
    const std::string title = Svg::Escaped(card.title);
    page << "<article class=\"card\">\n<img src=\"" << card.name << ".svg\" alt=\"" << title << "\">\n<h3>" << title
         << "</h3>\n<p>" << Svg::Escaped(card.caption) << "</p>\n<pre>";
    for (const std::string& line : card.code) page << "<code>" << Svg::Escaped(line) << "</code>";
    page << "</pre>\n</article>\n";
}

bool WritePage(const std::string& path, const std::vector<Group>& groups)
{
    std::ofstream page(path);
    page << pageHead;
    for (const Group& group : groups) {
        page << "<h2>" << group.title << "</h2>\n<div class=\"cards\">\n";
        for (const Gallery::Card& card : group.cards) WriteCard(page, card);
        page << "</div>\n";
    }
    page << "</body>\n</html>\n";
    page.close();
    return !page.fail();
}

int Fail(const std::string& path)
{
    std::fprintf(stderr, "gallery: %s: cannot be written\n", path.c_str());
    return 1;
}

} // namespace

int main(int count, char** values)
{
    const std::string argument = count > 1 ? values[1] : "gallery";
    if (argument == "--help" || argument == "-h") {
        std::fputs(usage, stdout);
        return 0;
    }
    if (count > 2 || argument.empty() || argument[0] == '-') {
        std::fputs("gallery: name one folder, or none; --help tells more\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argument;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) return Fail(argument);

    const std::vector<Group> groups = {
        {"Polygons", Gallery::DrawPolygons()},      {"Regions", Gallery::DrawRegions()},
        {"Point sets", Gallery::DrawPoints()},      {"Curves", Gallery::DrawCurves()},
        {"Fits and solids", Gallery::DrawSolids()}, {"Answers on every input", Gallery::DrawRobust()}};
    for (const Group& group : groups)
        for (const Gallery::Card& card : group.cards) {
            const std::string path = (folder / (card.name + ".svg")).string();
            if (!card.figure.Save(path, card.title)) return Fail(path);
        }
    const std::string page = (folder / "gallery.html").string();
    if (!WritePage(page, groups)) return Fail(page);
    std::printf("%s\n", page.c_str());
    return 0;
}

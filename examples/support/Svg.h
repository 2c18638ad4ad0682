#pragma once

/// A small writer of SVG pictures to scale, for the examples: pages of lines and text, and on them pictures of closed
/// outlines, a legend beside them, a scale bar below. Nothing in it belongs to the library.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Svg
{

/// A colour as CSS writes it, such as "#0d0887".
using Colour = std::string;

/// The colour so far on the way from one to another, both as red, green and blue up to 255.
inline Colour Mixed(const double (&from)[3], const double (&to)[3], double share)
{
    int channel[3];
    for (int i = 0; i < 3; ++i) channel[i] = static_cast<int>(std::lround(from[i] + share * (to[i] - from[i])));
    char text[8];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", channel[0] & 255, channel[1] & 255, channel[2] & 255);
    return text;
}

/// A colour of a sequence for a position from 0 to 1: dark blue by way of purple and red to orange. Every colour stands
/// out on white, and neighbours differ in lightness, so that the order also shows in print without colours.
inline Colour SequenceColour(double position)
{
    static constexpr double stops[5][3] = {{13, 8, 135}, {106, 0, 168}, {177, 42, 144}, {225, 100, 98}, {245, 148, 34}};
    const double scaled = std::clamp(position, 0.0, 1.0) * 4;
    const int lower = std::min(static_cast<int>(scaled), 3);
    const double share = scaled - lower;
    return Mixed(stops[lower], stops[lower + 1], share);
}

/// A colour for an offset: inwards from dark to light blue, outwards from dark red to orange, by a share from 0, next
/// to the outline, to 1. With the two sides apart, five on each can be told from one another.
inline Colour OffsetColour(bool outwards, double share)
{
    static constexpr double ends[2][2][3] = {{{8, 40, 110}, {90, 190, 235}}, {{120, 0, 20}, {250, 165, 60}}};
    return Mixed(ends[outwards][0], ends[outwards][1], std::clamp(share, 0.0, 1.0));
}

/// A place on a page, or in what is drawn on it.
struct Point
{
    double x, y;
};

/// A text as SVG holds it.
inline std::string Escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else
            result += c;
    }
    return result;
}

/// The longest of 1, 2 or 5 times a power of ten that is at most a length: what a scale bar shows.
inline double RoundLength(double most)
{
    const double power = std::pow(10.0, std::floor(std::log10(most)));
    const double factor = most / power;
    return power * (factor >= 5 ? 5 : factor >= 2 ? 2 : 1);
}

/// A white page with a title, x to the right and y downwards, in its own units.
class Page
{
public:
    static constexpr double margin = 28;
    static constexpr double titleHeight = 40;

    /// A page of a size; its title is written at the top unless `written` is false, and names the page all the same.
    Page(const std::string& title, double width, double height, bool written = true)
    {
        out.setf(std::ios::fixed);
        out.precision(2);
        out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << width << ' ' << height << "\" width=\""
            << width << "\" height=\"" << height
            << "\" font-family=\"Helvetica, Arial, sans-serif\" font-size=\"15\" fill=\"#333333\">\n"
            << "<title>" << Escaped(title) << "</title>\n"
            << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
        if (!written) return;
        out << "<text x=\"" << margin << "\" y=\"" << margin + 14 << "\" font-size=\"19\">" << Escaped(title)
            << "</text>\n";
    }

    /// Joins points by lines, and the last to the first if the path is closed; `dashes` are lengths of lines and gaps
    /// in turn, as SVG writes them.
    void Path(const std::vector<Point>& points, const Colour& stroke, double width, bool closed = false,
              const Colour& fill = "none", const std::string& dashes = "")
    {
        if (points.empty()) return;
        out << "<path fill=\"" << fill << "\" stroke=\"" << stroke << "\" stroke-width=\"" << width
            << "\" stroke-linejoin=\"round\"";
        if (!dashes.empty()) out << " stroke-dasharray=\"" << dashes << '"';
        out << " d=\"";
        char command = 'M';
        for (const Point& point : points) {
            out << command << point.x << ' ' << point.y;
            command = 'L';
        }
        out << (closed ? "Z" : "") << "\"/>\n";
    }

    void Line(Point from, Point to, const Colour& stroke, double width)
    {
        out << "<line x1=\"" << from.x << "\" y1=\"" << from.y << "\" x2=\"" << to.x << "\" y2=\"" << to.y
            << "\" stroke=\"" << stroke << "\" stroke-width=\"" << width << "\"/>\n";
    }

    void Dot(Point centre, double radius, const Colour& fill)
    {
        out << "<circle cx=\"" << centre.x << "\" cy=\"" << centre.y << "\" r=\"" << radius << "\" fill=\"" << fill
            << "\"/>\n";
    }

    /// Writes a text from a place to the right, on the line through it; `style` holds further attributes.
    void Text(Point start, const std::string& text, const std::string& style = "")
    {
        out << "<text x=\"" << start.x << "\" y=\"" << start.y << '"' << (style.empty() ? "" : " ") << style << '>'
            << Escaped(text) << "</text>\n";
    }

    /// Draws a scale bar with its label beside it, the left end of the bar at a place.
    void Bar(Point start, double length, const std::string& label)
    {
        const double end = start.x + length;
        out << "<path fill=\"none\" stroke=\"#333333\" stroke-width=\"1.5\" d=\"M" << start.x << ' ' << start.y - 5
            << 'V' << start.y << 'H' << end << 'V' << start.y - 5 << "\"/>\n";
        Text({end + 10, start.y}, label);
    }

    /// Writes the page; false when the file could not be written.
    bool Save(const std::string& path) const
    {
        std::ofstream file(path);
        file << out.str() << "</svg>\n";
        file.close();
        return !file.fail();
    }

private:
    std::ostringstream out;
};

/// A length with its unit, which may be empty.
inline std::string WithUnit(double length, const std::string& unit)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%g", length);
    return text + (unit.empty() ? "" : " " + unit);
}

/// How an outline is drawn, and what the legend says of it: nothing where there is no label.
struct Style
{
    std::string label;
    Colour stroke;
    double width = 1.6;
    Colour fill = "none";
    std::string dashes = {};
};

/// A picture of closed outlines, x to the right and y upwards in equal scale.
class Picture
{
public:
    /// A picture with a title; the unit, such as "mm", is written beside the scale bar and may be empty.
    Picture(std::string pictureTitle, std::string lengthUnit)
        : title(std::move(pictureTitle)), unit(std::move(lengthUnit))
    {}

    /// Adds an outline of anything that has GetCount() and elements with x and y. Later ones lie on top, and come
    /// after the earlier ones in the legend.
    template <class Points>
    void Add(const Points& points, const Style& style)
    {
        Outline outline{style, {}};
        for (unsigned int i = 0; i < points.GetCount(); ++i) {
            outline.points.push_back({points[i].x, points[i].y});
            low.x = std::min(low.x, outline.points.back().x);
            low.y = std::min(low.y, outline.points.back().y);
            high.x = std::max(high.x, outline.points.back().x);
            high.y = std::max(high.y, outline.points.back().y);
        }
        outlines.push_back(outline);
    }

    /// Writes the picture; false when the file could not be written.
    bool Save(const std::string& path) const
    {
        // One scale for both axes. A picture without outlines or without extent still gets a page.
        const double width = outlines.empty() ? 1 : std::max(high.x - low.x, 1e-9);
        const double height = outlines.empty() ? 1 : std::max(high.y - low.y, 1e-9);
        const double scale = std::min(maximumWidth / width, maximumHeight / height);
        const auto entries = std::count_if(outlines.begin(), outlines.end(),
                                           [](const Outline& outline) { return !outline.style.label.empty(); });
        const double legendHeight = legendStep * static_cast<double>(entries);
        const double drawnHeight = std::max(height * scale, legendHeight);
        const double pageWidth = 3 * Page::margin + width * scale + legendWidth;
        const double pageHeight = 2 * Page::margin + Page::titleHeight + drawnHeight + barHeight;
        // The corner of the page where the drawing begins, with what it is lower than the legend shared above and
        // below.
        const double left = Page::margin;
        const double top = Page::margin + Page::titleHeight + (drawnHeight - height * scale) / 2;

        Page page(title, pageWidth, pageHeight);
        for (const Outline& outline : outlines) {
            std::vector<Point> placed;
            for (const Point& point : outline.points)
                placed.push_back({left + (point.x - low.x) * scale, top + (high.y - point.y) * scale});
            page.Path(placed, outline.style.stroke, outline.style.width, true, outline.style.fill,
                      outline.style.dashes);
        }
        AddLegend(page, pageWidth - Page::margin - legendWidth,
                  Page::margin + Page::titleHeight + (drawnHeight - legendHeight + legendStep) / 2);
        const double bar = RoundLength(width / 5);
        page.Bar({left, pageHeight - Page::margin}, bar * scale, WithUnit(bar, unit));
        return page.Save(path);
    }

private:
    struct Outline
    {
        Style style;
        std::vector<Point> points;
    };

    // Measures of the page. The drawing fills a fixed width unless it is tall; the legend has a column of its own to
    // the right and the scale bar a strip of its own below, so that neither can meet a line.
    static constexpr double legendWidth = 130;
    static constexpr double legendStep = 24;
    static constexpr double barHeight = 44;
    static constexpr double maximumWidth = 900;
    static constexpr double maximumHeight = 620;

    std::string title;
    std::string unit;
    std::vector<Outline> outlines;
    Point low{HUGE_VAL, HUGE_VAL};
    Point high{-HUGE_VAL, -HUGE_VAL};

    void AddLegend(Page& page, double x, double y) const
    {
        for (const Outline& outline : outlines) {
            if (outline.style.label.empty()) continue;
            if (outline.style.dashes.empty())
                page.Line({x, y}, {x + 30, y}, outline.style.stroke, outline.style.width + 1);
            else
                page.Path({{x, y}, {x + 30, y}}, outline.style.stroke, outline.style.width + 1, false, "none",
                          outline.style.dashes);
            page.Text({x + 40, y + 5}, outline.style.label);
            y += legendStep;
        }
    }
};

} // namespace Svg

#pragma once

/// The drawing of one card of the gallery: outlines, chains, dots and texts in equal scale, with a legend below them.

#include "support/Svg.h"

#include <cmath>
#include <string>
#include <vector>

namespace Gallery
{

/// What is given is dark or grey, what the library made of it coloured.
namespace Colours
{
inline const Svg::Colour given = "#222222";
inline const Svg::Colour faint = "#8c96a0";
inline const Svg::Colour inside = "#eef1f4";
inline const Svg::Colour result = Svg::SequenceColour(0.25);
inline const Svg::Colour second = Svg::SequenceColour(0.9);
inline const Svg::Colour accent = Svg::SequenceColour(0.65);
} // namespace Colours

/// How a part of a figure is drawn. Parts without a label are not in the legend.
struct Stroke
{
    std::string label;
    Svg::Colour colour;
    double width = 1.8;
    Svg::Colour fill = "none";
    std::string dashes = {};
};

/// A figure of fixed width, x to the right and y upwards. Later parts lie on top.
///
/// Points are anything that has GetCount() and elements with x and y, as the library's lists of vectors have.
class Figure
{
public:
    /// Adds a closed outline.
    template <class Points>
    void Outline(const Points& points, const Stroke& stroke)
    {
        Add(Kind::Outline, points, stroke);
    }

    /// Adds an open chain.
    template <class Points>
    void Chain(const Points& points, const Stroke& stroke)
    {
        Add(Kind::Chain, points, stroke);
    }

    /// Adds dots, the width of the stroke being their radius.
    template <class Points>
    void Dots(const Points& points, const Stroke& stroke)
    {
        Add(Kind::Dots, points, stroke);
    }

    /// Adds a circle.
    template <class Vector>
    void Circle(const Vector& centre, double radius, const Stroke& stroke)
    {
        Part part{Kind::Outline, stroke, {}};
        for (int i = 0; i < 180; ++i) {
            const double angle = 2 * std::acos(-1.0) * i / 180;
            part.points.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
        }
        Add(part);
    }

    /// Adds one dot.
    template <class Vector>
    void Dot(const Vector& place, const Stroke& stroke)
    {
        Add({Kind::Dots, stroke, {{place.x, place.y}}});
    }

    /// Adds a straight line.
    template <class Vector>
    void Segment(const Vector& from, const Vector& to, const Stroke& stroke)
    {
        Add({Kind::Chain, stroke, {{from.x, from.y}, {to.x, to.y}}});
    }

    /// Writes a short text that starts at a place, moved by pixels to the right and down.
    template <class Vector>
    void Text(const Vector& place, const std::string& text, double right, double down)
    {
        texts.push_back({{place.x, place.y}, text, right, down});
    }

    /// Writes the figure; false when the file could not be written.
    bool Save(const std::string& path, const std::string& title) const
    {
        const double width = std::max(high.x - low.x, 1e-9);
        const double height = std::max(high.y - low.y, 1e-9);
        const double scale = std::min((pageWidth - 2 * margin) / width, plotHeight / height);
        const double left = (pageWidth - width * scale) / 2;
        const double top = margin + (plotHeight - height * scale) / 2;
        const auto placed = [&](const Svg::Point& point) {
            return Svg::Point{left + (point.x - low.x) * scale, top + (high.y - point.y) * scale};
        };

        const std::vector<Entry> legend = Legend();
        const double rows = legend.empty() ? 0 : legend.back().row + 1;
        Svg::Page page(title, pageWidth, 2 * margin + plotHeight + rows * rowHeight, false);
        for (const Part& part : parts) {
            std::vector<Svg::Point> points;
            for (const Svg::Point& point : part.points) points.push_back(placed(point));
            const Stroke& stroke = part.stroke;
            if (part.kind == Kind::Dots)
                for (const Svg::Point& point : points) page.Dot(point, stroke.width, stroke.colour);
            else
                page.Path(points, stroke.colour, stroke.width, part.kind == Kind::Outline, stroke.fill, stroke.dashes);
        }
        for (const Mark& mark : texts) {
            const Svg::Point place = placed(mark.place);
            page.Text({place.x + mark.right, place.y + mark.down}, mark.text);
        }
        for (const Entry& entry : legend) {
            const Svg::Point start{entry.x, 2 * margin + plotHeight + entry.row * rowHeight - 1};
            DrawSample(page, *entry.part, start);
            page.Text({start.x + SampleWidth(*entry.part), start.y + 5}, entry.part->stroke.label);
        }
        return page.Save(path);
    }

private:
    enum class Kind
    {
        Outline,
        Chain,
        Dots
    };

    struct Part
    {
        Kind kind;
        Stroke stroke;
        std::vector<Svg::Point> points;
    };

    struct Mark
    {
        Svg::Point place;
        std::string text;
        double right, down;
    };

    /// A part in the legend, and where it stands.
    struct Entry
    {
        const Part* part;
        double x;
        double row;
    };

    static constexpr double pageWidth = 480;
    static constexpr double plotHeight = 290;
    static constexpr double margin = 26;
    static constexpr double rowHeight = 24;
    // A wide sans serif, which a browser may put in the place of the one asked for, still leaves a gap.
    static constexpr double letterWidth = 9;
    static constexpr double gap = 12;

    std::vector<Part> parts;
    std::vector<Mark> texts;
    Svg::Point low{HUGE_VAL, HUGE_VAL};
    Svg::Point high{-HUGE_VAL, -HUGE_VAL};

    template <class Points>
    void Add(Kind kind, const Points& points, const Stroke& stroke)
    {
        Part part{kind, stroke, {}};
        for (unsigned int i = 0; i < points.GetCount(); ++i) part.points.push_back({points[i].x, points[i].y});
        Add(part);
    }

    void Add(const Part& part)
    {
        for (const Svg::Point& point : part.points) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
        parts.push_back(part);
    }

    /// Sets the entries side by side and starts a new row where one would pass over the right margin.
    std::vector<Entry> Legend() const
    {
        std::vector<Entry> entries;
        double x = margin;
        double row = 0;
        for (const Part& part : parts) {
            if (part.stroke.label.empty()) continue;
            const double needed = SampleWidth(part) + letterWidth * static_cast<double>(part.stroke.label.size());
            if (x > margin && x + needed > pageWidth - margin) {
                x = margin;
                ++row;
            }
            entries.push_back({&part, x, row});
            x += needed + gap;
        }
        return entries;
    }

    /// What the sample of a line or of dots takes, with the space behind it.
    static double SampleWidth(const Part& part) { return part.kind == Kind::Dots ? 16 : 32; }

    static void DrawSample(Svg::Page& page, const Part& part, Svg::Point start)
    {
        const Stroke& stroke = part.stroke;
        if (part.kind == Kind::Dots)
            page.Dot({start.x + 5, start.y}, stroke.width, stroke.colour);
        else
            page.Path({start, {start.x + 24, start.y}}, stroke.colour, stroke.width + 0.4, false, "none",
                      stroke.dashes);
    }
};

} // namespace Gallery

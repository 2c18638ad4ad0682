// The picture of an inspection: what is drawn in grey, the deviations as whiskers on it.

#include "Report.h"

#include "../support/Svg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Inspect
{

namespace
{

const char* const nominalColour = "#9aa0a6";
const char* const datumColour = "#5f6368";
const char* const inColour = "#2166ac";
const char* const outColour = "#b2182b";

const double fullTurn = 2 * std::acos(-1.0);

// Measures of the page.
constexpr double viewWidth = 620;
constexpr double planHeight = 560;
constexpr double sideHeight = 150;
constexpr double labelRoom = 30;
constexpr double headingHeight = 30;
constexpr double barRoom = 40;
constexpr double columnWidth = 300;
constexpr double rowHeight = 22;

/// A parallel projection to the page.
class View
{
public:
    View(const Vector& rightwards, const Vector& upwards) : right(rightwards), up(upwards) {}

    void Include(const Vector& p)
    {
        low = {std::min(low.x, p % right), std::min(low.y, p % up)};
        high = {std::max(high.x, p % right), std::max(high.y, p % up)};
    }

    /// Sets the scale so that all that was included fits.
    void FitInto(double width, double height)
    {
        scale = std::min(width / std::max(high.x - low.x, 1e-9), height / std::max(high.y - low.y, 1e-9));
    }
    void MoveTo(Svg::Point topLeft) { corner = topLeft; }

    double Scale() const { return scale; }
    double Height() const { return (high.y - low.y) * scale; }
    Vector Towards() const { return right * up; }
    Vector Up() const { return up; }

    Svg::Point At(const Vector& p) const
    {
        return {corner.x + (p % right - low.x) * scale, corner.y + (high.y - p % up) * scale};
    }

private:
    Vector right;
    Vector up;
    Svg::Point low{HUGE_VAL, HUGE_VAL};
    Svg::Point high{-HUGE_VAL, -HUGE_VAL};
    Svg::Point corner{0, 0};
    double scale = 1;
};

/// Finds places for labels where they cover nothing.
class Labels
{
public:
    Labels(Svg::Page& target, Svg::Point topLeft, Svg::Point bottomRight)
        : page(target), low(topLeft), high(bottomRight)
    {}

    /// Keeps labels off a line.
    void Avoid(Svg::Point from, Svg::Point to)
    {
        const int count = 1 + static_cast<int>(std::hypot(to.x - from.x, to.y - from.y) / 5);
        for (int i = 0; i < count; ++i) {
            const Svg::Point a = Between(from, to, static_cast<double>(i) / count);
            const Svg::Point b = Between(from, to, (i + 1.0) / count);
            taken.push_back(
                {{std::min(a.x, b.x) - 1, std::min(a.y, b.y) - 1}, {std::max(a.x, b.x) + 1, std::max(a.y, b.y) + 1}});
        }
    }

    /// Writes a label beside one of the places it may stand for, the one where it covers least, then the nearest; from
    /// far off a thin line leads to it.
    void Place(const std::vector<Svg::Point>& anchors, const std::string& text, double size, const std::string& style)
    {
        const double halfWidth = 0.29 * size * static_cast<double>(text.size()) + 1;
        const double halfHeight = 0.5 * size;
        Rectangle best{};
        Svg::Point anchor{};
        double least = HUGE_VAL;
        const std::size_t step = 1 + anchors.size() / 40;
        for (std::size_t i = 0; i < anchors.size(); i += step)
            for (const double distance : {7.0, 12.0, 20.0, 32.0})
                for (int direction = 0; direction < 16; ++direction) {
                    const double angle = fullTurn * direction / 16;
                    // The box touches the circle of that distance from outside.
                    const double c = std::cos(angle), s = std::sin(angle);
                    const Svg::Point middle{anchors[i].x + distance * c + halfWidth * Sign(c),
                                            anchors[i].y - distance * s - halfHeight * Sign(s)};
                    const Rectangle box{{middle.x - halfWidth, middle.y - halfHeight},
                                        {middle.x + halfWidth, middle.y + halfHeight}};
                    const double cost = Cost(box) + distance;
                    if (cost >= least) continue;
                    least = cost;
                    best = box;
                    anchor = anchors[i];
                }
        if (least == HUGE_VAL) return;
        const Svg::Point end{std::clamp(anchor.x, best.low.x, best.high.x),
                             std::clamp(anchor.y, best.low.y, best.high.y)};
        if (std::hypot(end.x - anchor.x, end.y - anchor.y) > 15) page.Line(anchor, end, nominalColour, 0.8);
        page.Text({best.low.x + 1, best.high.y - 0.15 * size}, text,
                  style + " font-size=\"" + std::to_string(static_cast<int>(size)) + "\"");
        taken.push_back({{best.low.x - 2, best.low.y - 2}, {best.high.x + 2, best.high.y + 2}});
    }

private:
    struct Rectangle
    {
        Svg::Point low, high;
    };

    static Svg::Point Between(Svg::Point a, Svg::Point b, double share)
    {
        return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
    }
    static double Sign(double value) { return value > 0.3 ? 1 : value < -0.3 ? -1 : 0; }

    double Cost(const Rectangle& box) const
    {
        if (box.low.x < low.x || box.low.y < low.y || box.high.x > high.x || box.high.y > high.y) return HUGE_VAL;
        const auto covers = [&](const Rectangle& other) {
            return box.low.x < other.high.x && other.low.x < box.high.x && box.low.y < other.high.y &&
                   other.low.y < box.high.y;
        };
        return 100 * static_cast<double>(std::count_if(taken.begin(), taken.end(), covers));
    }

    Svg::Page& page;
    Svg::Point low;
    Svg::Point high;
    std::vector<Rectangle> taken;
};

/// What is drawn of a feature, as a line; a plane has none.
std::vector<Vector> OutlineOf(const Result& result)
{
    const Feature& feature = result.feature;
    std::vector<Vector> outline;
    if (feature.kind == Kind::Profile)
        for (unsigned int i = 0; i < result.curve.GetCount(); i += 16) outline.push_back(result.curve[i]);
    if (feature.kind == Kind::Line) {
        const auto before = [&](const Deviation& a, const Deviation& b) {
            return (a.nominal - b.nominal) % feature.axis < 0;
        };
        const auto ends = std::minmax_element(result.deviations.begin(), result.deviations.end(), before);
        outline = {ends.first->nominal, ends.second->nominal};
    }
    if (feature.kind == Kind::Circle || feature.kind == Kind::Sphere) {
        // A sphere is seen as its equator.
        const Vector normal = feature.kind == Kind::Circle ? feature.axis : Vector(0, 0, 1);
        Vector first = normal * (std::fabs(normal.x) < 0.7 ? Vector(1, 0, 0) : Vector(0, 1, 0));
        first.Normalise();
        const Vector second = normal * first;
        for (int i = 0; i <= 90; ++i) {
            const double angle = fullTurn * i / 90;
            outline.push_back(feature.point +
                              (first * std::cos(angle) + second * std::sin(angle)) * (feature.diameter / 2));
        }
    }
    return outline;
}

const char* ColourOf(const Result& result)
{
    return result.InTolerance() ? inColour : outColour;
}

/// The name, and the verdict where there is a tolerance to judge by.
std::string LabelOf(const Result& result)
{
    const std::vector<Characteristic>& all = result.characteristics;
    const bool judged =
        std::any_of(all.begin(), all.end(), [](const Characteristic& one) { return one.tolerance.has_value(); });
    return result.feature.name + (!judged ? "" : result.InTolerance() ? " ok" : " OUT");
}

std::string StyleOf(const Result& result)
{
    return std::string("fill=\"") + ColourOf(result) + "\"" + (result.InTolerance() ? "" : " font-weight=\"bold\"");
}

class Drawing
{
public:
    Drawing(const Part& drawnPart, const Inspection& drawnInspection, double factor)
        : part(drawnPart), inspection(drawnInspection), plan(Vector(1, 0, 0), Vector(0, 1, 0))
    {
        ArrangePlan();
        magnification = factor > 0 ? factor : SuitableMagnification();
        for (const Result& result : inspection.results)
            if (result.feature.kind == Kind::Profile) AddSide(result);
    }

    bool Save(const std::string& path)
    {
        const double left = Svg::Page::margin;
        const double top = Svg::Page::margin + Svg::Page::titleHeight;
        double height = top + plan.Height() + 2 * labelRoom + barRoom;
        plan.MoveTo({left + labelRoom, top + labelRoom});
        for (Side& side : sides) {
            side.top = height;
            side.view.MoveTo({left + labelRoom, height + headingHeight});
            height += headingHeight + side.view.Height() + barRoom + 10;
        }
        const double column = left + viewWidth + Svg::Page::margin;
        Svg::Page page(part.name + (inspection.InTolerance() ? ": in tolerance" : ": OUT OF TOLERANCE"),
                       column + columnWidth + Svg::Page::margin, height + Svg::Page::margin - 10);
        DrawPlan(page);
        for (const Side& side : sides) DrawSide(page, side);
        DrawColumn(page, {column, top + labelRoom});
        return page.Save(path);
    }

private:
    struct Side
    {
        const Result* result;
        View view;
        double top;
    };

    void ArrangePlan()
    {
        for (const Result& result : inspection.results) {
            for (const Vector& p : OutlineOf(result)) plan.Include(p);
            for (const Deviation& deviation : result.deviations) plan.Include(deviation.nominal);
        }
        for (const Datum& datum : part.datums) plan.Include(datum.point);
        plan.FitInto(viewWidth - 2 * labelRoom, planHeight);
    }

    /// Draws the largest deviation at some 40 units of the page, rounded down to a factor that is easily calculated
    /// with.
    double SuitableMagnification() const
    {
        double largest = 1e-9;
        for (const Result& result : inspection.results)
            for (const Deviation& one : result.deviations)
                largest = std::max(largest, (one.actual - one.nominal).GetLength());
        return Svg::RoundLength(40 / (largest * plan.Scale()));
    }

    /// A profile is seen from the side, at right angles to the way from its first to its last point.
    void AddSide(const Result& result)
    {
        const Points& curve = result.curve;
        Vector right = curve[curve.GetCount() - 1] - curve[0];
        right.z = 0;
        right = right.GetLength() > 1e-6 ? right * (1 / right.GetLength()) : Vector(1, 0, 0);
        View view(right, Vector(0, 0, 1));
        for (const Vector& p : OutlineOf(result)) view.Include(p);
        for (const Deviation& one : result.deviations) view.Include(Tip(result, one, view));
        view.FitInto(viewWidth - 2 * labelRoom, sideHeight);
        sides.push_back({&result, view, 0});
    }

    /// Where a whisker ends. The deviations of a plane that faces the viewer would not be seen: those are laid upwards.
    Vector Tip(const Result& result, const Deviation& one, const View& view) const
    {
        const Vector deviation = (one.actual - one.nominal) * magnification;
        const bool facing = result.feature.kind == Kind::Plane && std::fabs(result.feature.axis % view.Towards()) > 0.7;
        return one.nominal + (facing ? view.Up() * (deviation % view.Towards()) : deviation);
    }

    /// The deviations with some laid between those of a circle, so that what joins their ends is round like the circle.
    static std::vector<Deviation> Joined(const Result& result)
    {
        const std::vector<Deviation>& given = result.deviations;
        if (result.feature.kind != Kind::Circle) return given;
        const Vector centre = result.feature.point;
        std::vector<Deviation> all;
        for (std::size_t i = 0; i < given.size(); ++i) {
            const Deviation& next = given[(i + 1) % given.size()];
            for (const double share : {0.0, 0.25, 0.5, 0.75}) {
                Vector outward = given[i].nominal * (1 - share) + next.nominal * share - centre;
                outward.Normalise();
                const Vector nominal = centre + outward * (result.feature.diameter / 2);
                all.push_back({nominal, nominal + (given[i].actual - given[i].nominal) * (1 - share) +
                                            (next.actual - next.nominal) * share});
            }
        }
        return all;
    }

    void DrawWhiskers(Svg::Page& page, const Result& result, const View& view, Labels* labels) const
    {
        const double width = result.InTolerance() ? 1.1 : 1.8;
        const bool joined = result.feature.kind != Kind::Plane && result.feature.kind != Kind::Sphere;
        for (const Deviation& one : result.deviations) {
            const Svg::Point foot = view.At(one.nominal);
            const Svg::Point tip = view.At(Tip(result, one, view));
            page.Line(foot, tip, ColourOf(result), width);
            if (!joined) page.Dot(foot, 1.4, ColourOf(result));
            if (!result.InTolerance()) page.Dot(tip, 2.2, ColourOf(result));
            if (labels) labels->Avoid(foot, tip);
        }
        if (!joined) return;
        std::vector<Svg::Point> tips;
        for (const Deviation& one : Joined(result)) tips.push_back(view.At(Tip(result, one, view)));
        page.Path(tips, ColourOf(result), 0.7, result.feature.kind == Kind::Circle);
    }

    void DrawOutline(Svg::Page& page, const Result& result, const View& view, Labels* labels) const
    {
        std::vector<Svg::Point> line;
        for (const Vector& p : OutlineOf(result)) line.push_back(view.At(p));
        page.Path(line, nominalColour, 1.8);
        for (std::size_t i = 1; labels && i < line.size(); ++i) labels->Avoid(line[i - 1], line[i]);
    }

    void DrawDatum(Svg::Page& page, Svg::Point at) const
    {
        page.Line({at.x - 5, at.y}, {at.x + 5, at.y}, datumColour, 1.2);
        page.Line({at.x, at.y - 5}, {at.x, at.y + 5}, datumColour, 1.2);
    }

    void DrawPlan(Svg::Page& page) const
    {
        const double top = Svg::Page::margin + Svg::Page::titleHeight;
        const double bottom = top + plan.Height() + 2 * labelRoom;
        Labels labels(page, {Svg::Page::margin, top}, {Svg::Page::margin + viewWidth, bottom});
        for (const Result& result : inspection.results) DrawOutline(page, result, plan, &labels);
        for (const Datum& datum : part.datums) {
            const Svg::Point at = plan.At(datum.point);
            DrawDatum(page, at);
            labels.Avoid({at.x - 5, at.y}, {at.x + 5, at.y});
            labels.Avoid({at.x, at.y - 5}, {at.x, at.y + 5});
        }
        // The deviations of a profile have a view of their own.
        for (const Result& result : inspection.results)
            if (result.feature.kind != Kind::Profile) DrawWhiskers(page, result, plan, &labels);
        for (const Result& result : inspection.results) {
            std::vector<Svg::Point> anchors;
            for (const Deviation& one : result.deviations) anchors.push_back(plan.At(one.nominal));
            labels.Place(anchors, LabelOf(result), 14, StyleOf(result));
        }
        for (const Datum& datum : part.datums)
            labels.Place({plan.At(datum.point)}, datum.name, 11, std::string("fill=\"") + datumColour + "\"");
        DrawBars(page, plan, bottom + barRoom / 2);
    }

    void DrawSide(Svg::Page& page, const Side& side) const
    {
        page.Text({Svg::Page::margin, side.top + 14}, LabelOf(*side.result) + ", from the side", StyleOf(*side.result));
        DrawOutline(page, *side.result, side.view, nullptr);
        DrawWhiskers(page, *side.result, side.view, nullptr);
        DrawBars(page, side.view, side.top + headingHeight + side.view.Height() + barRoom - 12);
    }

    /// One bar for the part, one for its deviations.
    void DrawBars(Svg::Page& page, const View& view, double y) const
    {
        const double length = Svg::RoundLength(110 / view.Scale());
        const double deviation = Svg::RoundLength(110 / view.Scale() / magnification);
        page.Bar({Svg::Page::margin, y}, length * view.Scale(), Svg::WithUnit(length, part.unit));
        page.Bar({Svg::Page::margin + 250, y}, deviation * view.Scale() * magnification,
                 Svg::WithUnit(deviation, part.unit) + " of deviation");
    }

    void DrawColumn(Svg::Page& page, Svg::Point at) const
    {
        const double text = at.x + 40;
        const auto entry = [&](const Svg::Colour& colour, double width, bool dot, const std::string& words) {
            page.Line({at.x, at.y - 5}, {at.x + 30, at.y - 5}, colour, width);
            if (dot) page.Dot({at.x + 30, at.y - 5}, 2.6, colour);
            page.Text({text, at.y}, words);
            at.y += rowHeight;
        };
        const auto line = [&](double x, const std::string& words, const std::string& style) {
            page.Text({x, at.y}, words, style);
            at.y += rowHeight;
        };
        char factor[32];
        std::snprintf(factor, sizeof(factor), "%g", magnification);
        entry(nominalColour, 1.8, false, "as drawn");
        entry(inColour, 1.1, false, "deviation, in tolerance");
        entry(outColour, 1.8, true, "deviation, OUT of tolerance");
        DrawDatum(page, {at.x + 15, at.y - 5});
        line(text, "datum point", "");
        at.y += rowHeight / 2;
        line(at.x, "Seen from above: x to the right, y up.", "");
        line(at.x, std::string("Deviations are magnified ") + factor + " times;", "");
        line(at.x, "those of a plane seen from the front", "");
        line(at.x, "are laid upwards where it is high.", "");
        at.y += rowHeight / 2;
        for (const Result& result : inspection.results)
            for (const Characteristic& one : result.characteristics) {
                if (one.InTolerance()) continue;
                char words[96];
                std::snprintf(words, sizeof(words), " %s: %.4f > %.4f", one.name.c_str(),
                              std::fabs(one.actual - one.nominal.value_or(0)), *one.tolerance);
                line(at.x, result.feature.name + words, std::string("fill=\"") + outColour + "\"");
            }
    }

    const Part& part;
    const Inspection& inspection;
    View plan;
    std::vector<Side> sides;
    double magnification = 1;
};

} // namespace

bool DrawReport(const Part& part, const Inspection& inspection, double magnification, const std::string& path)
{
    return Drawing(part, inspection, magnification).Save(path);
}

} // namespace Inspect

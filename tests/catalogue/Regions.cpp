// Regions: what they are made of, what they answer, and what is made of them.

#include "ListEdits.h"

#include <tests/support/plain/PlainRegion.h>

#include <set>

namespace CorvexCatalogue
{
namespace
{

template <class T>
struct RegionState : State
{
    using State::State;
    using Vector = TVector2<T>;
    using Outline = TPolygon<T, TVector2>;
    using Outlines = std::vector<Outline>;
    using Region = TRegion<T>;
    using Precise = TRegion<double>;

    Region first, second;
    /// Regions of more vertices are not looked at pair by pair, nor kept in sequences.
    static constexpr unsigned int most = 150;

    Region& Pick() { return in.Flag() ? first : second; }

    void Fill() override
    {
        for (Region* region : {&first, &second}) {
            const Outlines drawn = DrawOutlines();
            *region = Region(drawn, DrawRule());
        }
    }
    void Show() const override
    {
        Tell(first);
        Tell(second);
    }
    void Check() override
    {
        for (Region* region : {&first, &second}) {
            const RegionStatus status = region->GetStatus();
            Require(region->IsEmpty() || status == RegionStatus::Done || status == RegionStatus::Vanished);
            if (region->GetVertexCount() > most && !in.IsEndless()) *region = Region();
            if (region->GetVertexCount() > most) continue;
            const Precise precise(*region);
            Require(FindFault(precise).empty());
            Require(Precise(precise.GetOutlines(), DrawRule()) == precise);
        }
    }

    WindingRule DrawRule() { return static_cast<WindingRule>(in.Below(3)); }

    /// Points of whole numbers up to a few as a rule, which coincide and share lines; and then of any shape.
    std::vector<Vector> DrawRing()
    {
        const unsigned int kind = in.Below(8), side = in.Between(2, 9);
        if (kind > 4) return DrawPoints<T, TVector2>(in, 33);
        std::vector<Vector> points(in.Size(kind == 0 ? 65 : 12));
        for (Vector& point : points) {
            point.x = static_cast<T>(in.Below(side));
            point.y = static_cast<T>(in.Below(side));
        }
        return points;
    }
    /// Outlines that cross, touch and repeat one another, some of which run back on themselves; now and then huge or
    /// tiny, or beside one so far away that crossings are rounded coarsely.
    Outlines DrawOutlines()
    {
        Outlines outlines(in.Between(1, 4));
        const unsigned int kind = in.Below(8);
        const int range = std::numeric_limits<T>::max_exponent;
        const int exponent = static_cast<int>(in.Below(2 * static_cast<unsigned int>(range))) - range;
        for (Outline& outline : outlines) {
            std::vector<Vector> points = DrawRing();
            const unsigned int turn = in.Below(16);
            const std::vector<Vector> once = points;
            if (turn == 0) points.insert(points.end(), once.rbegin(), once.rend());
            if (turn == 1) points.insert(points.end(), once.begin(), once.end());
            for (const Vector& point : points)
                outline.Add(kind != 0 ? point : Vector(std::ldexp(point.x, exponent), std::ldexp(point.y, exponent)));
        }
        if (kind == 1) outlines.push_back(Outline{{T(0x1p41), T(0)}, {T(0x1p41), T(5)}, {T(0x1p41) - T(0x1p20), T(1)}});
        return outlines;
    }

    static PlainRim ToRim(const Outlines& outlines)
    {
        PlainRim rim(outlines.size());
        for (std::size_t i = 0; i < rim.size(); ++i)
            for (unsigned int k = 0; k < outlines[i].GetCount(); ++k)
                rim[i].Add(
                    TVector2<double>(static_cast<double>(outlines[i][k].x), static_cast<double>(outlines[i][k].y)));
        return rim;
    }
    /// Shows points whose coordinates are half those of two vertices of some outlines.
    template <class Look>
    void Sample(const PlainRim& rim, Look look)
    {
        const std::vector<PlainSide> sides = PlainSides(rim);
        Source many = in.Fork();
        for (unsigned int i = 0; i < 40 && !sides.empty(); ++i) {
            double half[4];
            for (unsigned int k = 0; k < 4; ++k)
                half[k] = sides[many.Below(static_cast<unsigned int>(sides.size()))].a[k % 2] / 2;
            look(TVector2<double>(half[0] + half[2], half[1] + half[3]));
        }
    }
    /// Requires a region to have the points that a question says are inside: of samples those clear of the outlines it
    /// comes from by more than rounding moves edges.
    template <class Question>
    void RequireInside(const Region& region, const PlainRim& rim, Question isInside)
    {
        const Precise precise(region);
        Sample(rim, [&](const TVector2<double>& p) {
            if (IsClear(rim, p, 4 * region.GetStep()))
                Require(precise.IsWithin(p) == (isInside(p) ? RegionSide::Inside : RegionSide::Outside));
        });
    }

    void Tell(const Region& region) const
    {
        out << region.GetStatus() << region.GetStep() << region.GetVertexCount() << region.GetOutlineCount();
        for (const auto& piece : region.GetPieces()) {
            out << Contents<Vector>(piece.outline);
            for (const Outline& hole : piece.holes) out << Contents<Vector>(hole);
        }
        out << region.GetArea() << region.GetBoundingBox();
    }

    /// From one outline or several, in this order or another, from these first vertices or others.
    void Make()
    {
        Outlines outlines = DrawOutlines();
        const WindingRule rule = DrawRule();
        if (in.Flag()) outlines.resize(1);
        const Region region = outlines.size() == 1 ? Region(outlines[0], rule) : Region(outlines, rule);
        const PlainRim rim = ToRim(outlines);
        Tell(region);
        if (region.GetStatus() == RegionStatus::NotFinite) return;
        RequireInside(region, rim, [&](const TVector2<double>& p) {
            bool isOnRim = false;
            return IsInsideBy(rule, PlainWindingNumber(rim, p, &isOnRim));
        });
        std::rotate(outlines.begin(), outlines.begin() + in.Below(static_cast<unsigned int>(outlines.size())),
                    outlines.end());
        for (Outline& outline : outlines) {
            std::vector<Vector> points = Contents<Vector>(outline);
            if (points.empty()) continue;
            std::rotate(points.begin(), points.begin() + in.Below(outline.GetCount()), points.end());
            outline = Outline(points.data(), outline.GetCount());
        }
        Require(Region(outlines, rule) == region);
        Pick() = region;
    }
    /// Outlines of up to thousands of vertices that hardly cross themselves, and one of them moved.
    void MakeLarge()
    {
        const Shape shape = in.Flag() ? Shape::Round : Shape::Comb;
        const unsigned int count = in.Size(4200);
        const std::vector<Vector> points = DrawPoints<T, TVector2>(in, shape, count);
        const T step = in.template Unit<T>();
        Outlines outlines(2);
        for (const Vector& point : points) {
            outlines[0].Add(point);
            outlines[1].Add(point + Vector(step, step / 2));
        }
        const Region one(outlines[0], WindingRule::EvenOdd), other(outlines[1], WindingRule::EvenOdd);
        const Region either(outlines, WindingRule::EvenOdd);
        Tell(either);
        RequireNear(either.GetArea(), one.Exclude(other).GetArea(), ToRim(outlines), either.GetStep());
        Combine({one, other});
    }
    void Query()
    {
        const Region& region = Pick();
        const Precise precise(region);
        for (const PlainSide& side : PlainSides(precise.GetOutlines()))
            Require(precise.IsWithin(side.a) == RegionSide::OnRim);
        for (unsigned int i = 0; i < 8; ++i) {
            const auto point = in.template Vector<Vector>(i % 2 == 0 ? &Source::Coarse<T> : &Source::Scalar<T>);
            out << region.IsWithin(point);
        }
        Tell(region);
        double area = 0;
        for (const auto& piece : precise.GetPieces()) {
            area += Precise(piece.outline).GetArea();
            for (const auto& hole : piece.holes) area -= Precise(hole).GetArea();
        }
        RequireNear(static_cast<T>(area), region.GetArea(), precise.GetOutlines(), region.GetStep());
    }
    /// Copies, the other scalar and comparison.
    void Compare()
    {
        Region &region = Pick(), &other = Pick();
        const Region copy(region);
        const TRegion<std::conditional_t<std::is_same_v<T, float>, double, float>> converted(region);
        Require(copy == region && Region(converted) == region && converted.GetStep() == region.GetStep());
        Require((region == other) == !(region != other));
        out << (region == other) << Region::Describe(region.GetStatus())[0];
        Region moved = std::move(region);
        Require(moved == copy);
        region = in.Flag() ? moved : Region();
        Itself(region) = region;
    }

    /// Areas agree but for the rounding of edges, by a step along each of them.
    static void RequireNear(T area, T expected, const PlainRim& rim, double step)
    {
        double bound = 0;
        for (const auto& [a, b] : PlainSides(rim)) bound += 2 * step * (std::fabs(b.x - a.x) + std::fabs(b.y - a.y));
        const double size = std::fabs(static_cast<double>(area)) + std::fabs(static_cast<double>(expected));
        bound += 16 * size * static_cast<double>(std::numeric_limits<T>::epsilon());
        // Areas may overflow, and differences of these are no numbers.
        Require(!(std::fabs(static_cast<double>(area) - static_cast<double>(expected)) > bound + 1e-300));
    }
    /// All operations on some regions, which many of them change places and two of them have forms of their own.
    void Combine(const std::vector<Region>& regions)
    {
        const std::vector<Region> turned(regions.rbegin(), regions.rend());
        const Region all = Region::Unite(regions), both = Region::Intersect(regions), odd = Region::Exclude(regions);
        PlainRim rim;
        std::vector<Precise> precise;
        for (const Region& region : regions) {
            precise.emplace_back(region);
            for (const auto& outline : precise.back().GetOutlines()) rim.push_back(outline);
        }
        const auto count = [&](const TVector2<double>& p) {
            std::size_t n = 0;
            for (const Precise& region : precise) n += region.IsWithin(p) == RegionSide::Inside;
            return n;
        };
        Require(all == Region::Unite(turned) && both == Region::Intersect(turned) && odd == Region::Exclude(turned));
        RequireInside(all, rim, [&](const auto& p) { return count(p) > 0; });
        RequireInside(both, rim, [&](const auto& p) { return count(p) == regions.size(); });
        RequireInside(odd, rim, [&](const auto& p) { return count(p) % 2 == 1; });
        for (const Region* region : {&all, &both, &odd}) Tell(*region);
        if (regions.size() == 2) {
            const Region &a = regions[0], &b = regions[1], rest = a.Subtract(b);
            Require(a.Unite(b) == all && a.Intersect(b) == both && a.Exclude(b) == odd);
            RequireInside(rest, rim, [&](const auto& p) {
                return precise[0].IsWithin(p) == RegionSide::Inside && precise[1].IsWithin(p) != RegionSide::Inside;
            });
            Tell(rest);
            RequireNear(rest.GetArea() + both.GetArea(), a.GetArea(), rim, rest.GetStep());
            RequireNear(odd.GetArea() + both.GetArea(), all.GetArea(), rim, all.GetStep());
            RequireNear(rest.Unite(both).GetArea(), a.GetArea(), rim, rest.GetStep());
        }
        Region& target = Pick();
        const unsigned int kept = in.Below(3);
        target = kept == 0 ? all : kept == 1 ? both : odd;
    }
    void CombineTwo() { Combine({first, second}); }
    void CombineMany()
    {
        std::vector<Region> regions(in.Below(6));
        for (Region& region : regions) region = in.Flag() ? Pick() : Region(DrawOutlines());
        Combine(regions);
    }
    /// What a region with itself and with nothing gives.
    void CombineOne()
    {
        Region& region = Pick();
        const Region empty;
        Require(region.Unite(region) == region && region.Intersect(region) == region && region.Unite(empty) == region &&
                region.Subtract(empty) == region && region.Exclude(empty) == region);
        Require(region.Exclude(region).IsEmpty() && region.Subtract(region).IsEmpty() &&
                region.Intersect(empty).IsEmpty() && empty.Subtract(region).IsEmpty());
        region = region.Subtract(in.Flag() ? first : second);
    }

    /// Distances and limits: shares of an extent, whole numbers, or any scalar.
    T DrawLength(const Region& region)
    {
        const unsigned int kind = in.Below(12);
        const T unit = in.template Unit<T>(), any = in.template Scalar<T>();
        const TBox<T> box = region.GetBoundingBox();
        if (kind == 0 || region.IsEmpty()) return any;
        return kind < 4 ? static_cast<T>(kind) - 2 : std::ldexp((box.maximum.x - box.minimum.x) * unit, -int(kind) / 2);
    }
    /// Requires samples to be on the side of a result that their distance from some lines and the side on which they
    /// were tell. Of what lies between the distance and what corners and ends may reach nothing is asked.
    template <class Kept>
    void RequireOffset(const Region& region, const std::vector<PlainSide>& lines, T by, T limit, Join join, Cap cap,
                       Kept wasInside)
    {
        Tell(region);
        const Precise result(region);
        const double step = result.GetStep(), distance = std::fabs(static_cast<double>(by)), given = double(limit);
        if (region.GetStatus() != RegionStatus::Done || lines.size() > most || step < 1e-99 || step > 1e99) return;
        double reach = std::min(2.0, given > 0 ? 1 + given / distance : 1.001);
        if (join == Join::Mitre) reach = std::max(1.5, given > 0 ? given : 4);
        if (cap == Cap::Square) reach = std::max(1.5, reach);
        PlainRim places = result.GetOutlines();
        for (const PlainSide& line : lines) places.push_back({line.a, line.b});
        Sample(places, [&](const TVector2<double>& p) {
            const double away = PlainDistance(lines, p);
            const bool was = wasInside(p), is = result.IsWithin(p) == RegionSide::Inside;
            if (away > reach * distance + 8 * step || (was == (by > 0) && away > 8 * step)) Require(is == was);
            if (away < distance - 8 * step && join != Join::Bevel && cap != Cap::Butt) Require(is == (by > 0));
        });
    }
    void Offset()
    {
        Region& region = Pick();
        const auto join = static_cast<Join>(in.Below(3));
        const T distance = DrawLength(region), limit = DrawLength(region);
        const Region result = region.Offset(distance, join, limit);
        const Precise before(region);
        RequireOffset(result, PlainSides(before.GetOutlines()), distance, limit, join, Cap::Round,
                      [&](const auto& p) { return before.IsWithin(p) == RegionSide::Inside; });
        region = result;
    }
    void OffsetLine()
    {
        Region& region = Pick();
        const auto join = static_cast<Join>(in.Below(3));
        const auto cap = static_cast<Cap>(in.Below(3));
        const T distance = DrawLength(region), limit = DrawLength(region);
        const std::vector<Vector> points = DrawRing();
        const TPointSet<T, TVector2> path(points.data(), static_cast<unsigned int>(points.size()));
        Outlines line(1);
        for (const Vector& point : points) line[0].Add(point);
        std::vector<PlainSide> sides = PlainSides(ToRim(line));
        if (sides.size() > 1) sides.pop_back();
        const Region result = Region::OffsetLine(path, distance, join, cap, limit);
        RequireOffset(result, sides, distance, limit, join, cap, [](const auto&) { return false; });
        region = result;
    }
    /// Each vertex that goes is near to what is left.
    void Simplify()
    {
        Region& region = Pick();
        const T tolerance = DrawLength(region);
        const Region result = region.Simplify(tolerance);
        Tell(result);
        if (result.GetStatus() == RegionStatus::NotFinite) return;
        Require(result.GetOutlineCount() == region.GetOutlineCount());
        const Precise before(region), after(result);
        const auto sides = PlainSides(after.GetOutlines());
        const double bound = std::max(0.0, static_cast<double>(tolerance)) + after.GetStep();
        if (region.GetVertexCount() < most && bound > 1e-99 && bound < 1e99)
            for (const PlainSide& side : PlainSides(before.GetOutlines()))
                Require(PlainDistance(sides, side.a) <= bound);
        region = result;
    }
    /// As many triangles as there must be, whose areas add up.
    void Triangulate()
    {
        const Region& region = Pick();
        const Precise precise(region);
        out << region.Triangulate();
        const auto triangles = precise.Triangulate();
        // Outlines of a piece may have vertices in common.
        std::size_t count = 0;
        for (const auto& piece : precise.GetPieces()) {
            std::set<std::pair<double, double>> places;
            PlainRim rim = piece.holes;
            rim.push_back(piece.outline);
            for (const PlainSide& side : PlainSides(rim)) places.emplace(side.a.x, side.a.y);
            count += 2 * places.size() + 2 * piece.holes.size() - 2 - PlainSides(rim).size();
        }
        double area = 0;
        for (const auto& triangle : triangles) {
            const auto &a = triangle.corners[0], &b = triangle.corners[1], &c = triangle.corners[2];
            Require(Turn(a, b, c) > 0);
            area += (b.x - a.x) * (c.y - a.y) / 2 - (b.y - a.y) * (c.x - a.x) / 2;
        }
        Require(triangles.size() == count);
        RequireNear(static_cast<T>(area), region.GetArea(), precise.GetOutlines(), region.GetStep());
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"outlines", &RegionState::Make},          {"outlines, large", &RegionState::MakeLarge},
                {"queries", &RegionState::Query},          {"operator==", &RegionState::Compare},
                {"two regions", &RegionState::CombineTwo}, {"many regions", &RegionState::CombineMany},
                {"one region", &RegionState::CombineOne},  {"Offset", &RegionState::Offset},
                {"OffsetLine", &RegionState::OffsetLine},  {"Simplify", &RegionState::Simplify},
                {"Triangulate", &RegionState::Triangulate}};
    }
};

const Family regions([] { AddOverScalars<RegionState>("TRegion", 200); });

} // namespace
} // namespace CorvexCatalogue

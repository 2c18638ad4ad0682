// Planes, circles and spheres fitted to points in space, and lines through solids.

#include "Gallery.h"

#include <CorvexMaths/polygons/TPolygon.h>
#include <CorvexMaths/primitives/TBox.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/primitives/TSphere.h>

namespace Gallery
{

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

using Vector = TVector3<double>;
using Cloud = TPointSet<double, TVector3>;

/// Where a point in space is seen, from the right, in front and above, from far away.
TVector2<double> Seen(const Vector& point)
{
    // Unit vectors to the right and up as seen: 30 degrees round and 25 degrees down, to five digits.
    static const Vector right(0.86603, 0.5, 0);
    static const Vector up(-0.21131, 0.36600, 0.90631);
    return TVector2<double>(point % right, point % up);
}

Points Seen(const Cloud& cloud)
{
    Points seen;
    for (unsigned int i = 0; i < cloud.GetCount(); ++i) seen.Add(Seen(cloud[i]));
    return seen;
}

/// Points all around a circle in space.
Cloud Rim(const Vector& centre, const Vector& normal, double radius)
{
    Vector x, y;
    normal.OrthonormalXY(&x, &y);
    Cloud rim;
    for (int i = 0; i < 120; ++i) {
        const double angle = 2 * std::acos(-1.0) * i / 120;
        rim.Add(centre + (x * std::cos(angle) + y * std::sin(angle)) * radius);
    }
    return rim;
}

/// What is seen of a convex body: the hull of its points as seen.
Points Silhouette(const Cloud& body)
{
    TPolygon<double, TVector2> hull(Seen(body));
    hull.MakeConvexHull();
    return hull;
}

std::string Number(double value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.2f", value);
    return text;
}

/// Draws a line with what lies between its two hits in another colour.
void DrawLine(Figure& figure, const TLine3<double>& line, const Vector& first, const Vector& second, double reach)
{
    const Vector middle = (first + second) * 0.5;
    const double half = (first - second).GetLength() / 2;
    const auto at = [&](double distance) { return Seen(middle + line.direction * distance); };
    figure.Segment(at(-reach), at(-half), {"line", Colours::second, 2});
    figure.Segment(at(-half), at(half), {"inside", Colours::second, 2, "none", "4 4"});
    figure.Segment(at(half), at(reach), {"", Colours::second, 2});
    figure.Dot(Seen(first), {"hits", Colours::result, 5});
    figure.Dot(Seen(second), {"", Colours::result, 5});
    // The numbers stand beside the line, above it rather than below.
    TVector2<double> along = at(1) - at(0);
    along.Normalise();
    const double side = along.x < 0 ? -14 : 14;
    figure.Text(Seen(first), "1", -4 - side * along.y, 5 - side * along.x);
    figure.Text(Seen(second), "2", -4 - side * along.y, 5 - side * along.x);
}

Card DrawPlane()
{
    Card card{"plane_fit", "Plane fitted to points"};
    Noise noise(61);
    Cloud points;
    for (int i = 0; i < 42; ++i) {
        const double x = noise.Next(50), y = noise.Next(34);
        points.Add(Vector(x, y, 0.15 * y - 0.2 * x + noise.Next(9)));
    }
    SHOWN(TPlane<double> plane);
    SHOWN(double spread, squares);
    SHOWN(bool fitted = plane.Fit(points, &spread, &squares));
    if (!fitted) return card;

    card.caption = "The plane of least squared distance from the points, each joined to its foot. All of them and the "
                   "plane lie within a slab " +
                   Number(spread) + " wide.";
    const auto onPlane = [&](const Vector& p) { return p - plane.normal * plane.SignedDistanceToPoint(p); };
    Cloud patch;
    for (const Vector& corner : {Vector(-54, -38, 0), Vector(54, -38, 0), Vector(54, 38, 0), Vector(-54, 38, 0)})
        patch.Add(onPlane(corner));
    card.figure.Outline(Seen(patch), {"plane", Colours::result, 2, Colours::inside});
    for (unsigned int i = 0; i < points.GetCount(); ++i)
        card.figure.Segment(Seen(points[i]), Seen(onPlane(points[i])),
                            {i == 0 ? "distances" : "", Colours::second, 1.2});
    card.figure.Dots(Seen(points), {"points", Colours::given, 2.8});
    const double towardsView = plane.normal.z < 0 ? -1 : 1;
    card.figure.Segment(Seen(plane.point), Seen(plane.point + plane.normal * (24 * towardsView)),
                        {"normal", Colours::accent, 3});
    return card;
}

Card DrawCircle()
{
    Card card{"circle_fit", "Circle in space fitted to points"};
    Noise noise(67);
    Cloud points;
    const Cloud rim = Rim(Vector(10, 5, 8), Vector(0.35, -0.4, 0.85), 40);
    for (unsigned int i = 0; i < 84; i += 3) points.Add(rim[i] + Vector(noise.Next(3), noise.Next(3), noise.Next(3)));
    SHOWN(TCircle3<double> circle);
    SHOWN(double spread, squares);
    SHOWN(bool fitted = circle.Fit(points, &spread, &squares, 1e-9, 50));

    card.caption = "A plane is fitted first, in it the circle of least squared distance from the points" +
                   std::string(fitted ? "" : " (not settled)") + ": here its radius is " + Number(circle.radius) + ".";
    card.figure.Outline(Seen(Rim(circle.centre, circle.normal, circle.radius)),
                        {"circle", Colours::result, 2.4, Colours::inside});
    card.figure.Dots(Seen(points), {"points", Colours::given, 3});
    const double towardsView = circle.normal.z < 0 ? -1 : 1;
    card.figure.Segment(Seen(circle.centre), Seen(circle.centre + circle.normal * (24 * towardsView)),
                        {"normal", Colours::accent, 3});
    card.figure.Dot(Seen(circle.centre), {"centre", Colours::result, 4});
    return card;
}

Card DrawSphere()
{
    Card card{"sphere_fit", "Sphere fitted to points"};
    Noise noise(71);
    Cloud points;
    for (int i = 0; i < 60; ++i) {
        Vector direction(0.45 + noise.Next(0.7), -0.7 + noise.Next(0.7), 0.5 + noise.Next(0.6));
        direction.Normalise();
        points.Add(direction * (40 + noise.Next(2)));
    }
    SHOWN(TSphere<double> sphere);
    SHOWN(double spread);
    SHOWN(bool fitted = sphere.Fit(points, &spread, 50));
    if (!fitted) return card;

    card.caption = "The points cover one side only, and lie within a shell " + Number(spread) +
                   " thick about the centre found. The radius is " + Number(sphere.sphere.w) + ".";
    const Vector centre(sphere.sphere.x, sphere.sphere.y, sphere.sphere.z);
    card.figure.Circle(Seen(centre), sphere.sphere.w, {"sphere", Colours::result, 2.4, Colours::inside});
    card.figure.Outline(Seen(Rim(centre, Vector(0, 0, 1), sphere.sphere.w)),
                        {"equator", Colours::faint, 1, "none", "4 4"});
    card.figure.Dots(Seen(points), {"points", Colours::given, 2.8});
    card.figure.Dot(Seen(centre), {"centre", Colours::result, 4});
    return card;
}

Card DrawBox()
{
    Card card{"box_line", "Line through a box"};
    const Vector low(0, 0, 0), high(70, 44, 36);
    TBox<double> box;
    box.Extend(low);
    box.Extend(high);
    Vector first, second;
    SHOWN(TLine3<double> line(18, 24, 36, 52, -14, -26));
    SHOWN(bool hit = line.IntersectWith(box, &first, &second, 1e-6));

    card.caption =
        "The faces are met in turn, those through the lowest corner first, and x before y before z: here the right "
        "face comes before the top.";
    Vector corners[8];
    box.GetCorners(corners);
    const Cloud body(corners, 8u);
    card.figure.Outline(Silhouette(body), {"", Colours::given, 2, Colours::inside});
    // The edges at the corner that is nearest to the eye are seen, those at the one behind it are not.
    const Vector front(high.x, low.y, high.z), back(low.x, high.y, low.z);
    for (const Vector& corner : {front, back}) {
        const bool seen = corner == front;
        const auto other = [](double value, double a, double b) { return value > a ? a : b; };
        for (const Vector& end : {Vector(other(corner.x, low.x, high.x), corner.y, corner.z),
                                  Vector(corner.x, other(corner.y, low.y, high.y), corner.z),
                                  Vector(corner.x, corner.y, other(corner.z, low.z, high.z))})
            card.figure.Segment(
                Seen(corner), Seen(end),
                {"", seen ? Colours::given : Colours::faint, seen ? 1.6 : 1, "none", seen ? "" : "4 4"});
    }
    if (hit) DrawLine(card.figure, line, first, second, 62);
    return card;
}

Card DrawCone()
{
    Card card{"cone_line", "Line through a cone"};
    Vector first, second;
    SHOWN(TCone<double> cone(28, 70, Vector(0, 0, 0), Vector(1, 0.2, 0.15)));
    SHOWN(TLine3<double> line(66, 16, 17, -31, -22, -7));
    SHOWN(bool hit = cone.IntersectWith(line, &first, &second));

    card.caption = "The hit of the base comes first, that of the side after it.";
    Cloud body = Rim(cone.apex + cone.axis * cone.height, cone.axis, cone.radius);
    const Points base = Seen(body);
    body.Add(cone.apex);
    card.figure.Outline(Silhouette(body), {"", Colours::given, 2, Colours::inside});
    card.figure.Outline(base, {"", Colours::given, 1.6});
    if (hit) DrawLine(card.figure, line, first, second, 46);
    return card;
}

Card DrawCylinder()
{
    Card card{"cylinder_line", "Line through a cylinder"};
    Vector first, second;
    SHOWN(TCylinder<double> cylinder(24, 60, Vector(0, 0, 0), Vector(0, 0, 1)));
    SHOWN(TLine3<double> line(-8, 4, 30, 26, -20, -38));
    SHOWN(bool hit = cylinder.IntersectWith(line, &first, &second, false));

    card.caption = "The hit of a cap comes first, that of the side after it.";
    const Cloud bottom = Rim(cylinder.centre - cylinder.axis * (cylinder.height / 2), cylinder.axis, cylinder.radius);
    const Cloud top = Rim(cylinder.centre + cylinder.axis * (cylinder.height / 2), cylinder.axis, cylinder.radius);
    Cloud body(bottom);
    body.AddRange(top);
    card.figure.Outline(Silhouette(body), {"", Colours::given, 2, Colours::inside});
    card.figure.Outline(Seen(bottom), {"", Colours::faint, 1, "none", "4 4"});
    card.figure.Outline(Seen(top), {"", Colours::given, 1.6});
    if (hit) DrawLine(card.figure, line, first, second, 52);
    return card;
}

} // namespace

std::vector<Card> DrawSolids()
{
    return {DrawPlane(), DrawCircle(), DrawSphere(), DrawBox(), DrawCone(), DrawCylinder()};
}

} // namespace Gallery

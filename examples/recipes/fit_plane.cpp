// How flat is a plate, and how is it tilted? A probe has touched it at the points of a grid. The plane of least squares
// gives the tilt; the width of the slab that holds all points is the flatness.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/primitives/TPlane.h>

#include <cmath>
#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;

int main()
{
    // In millimetres, on the plane through (0, 0, 5) across (1, 2, 2), every other point 0.01 above and below it.
    const TPlane<double> nominal(0, 0, 5, 1, 2, 2);
    TPointSet<double, TVector3> touched;
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 4; ++j) {
            const double x = 20.0 * i;
            const double y = 20.0 * j;
            const TVector3<double> onPlane(x, y, 5 - (x + 2 * y) / 2);
            touched.Add(onPlane + nominal.normal * ((i + j) % 2 == 0 ? 0.01 : -0.01));
        }

    TPlane<double> plane;
    double flatness = 0;
    double squares = 0;
    if (!plane.Fit(touched, &flatness, &squares)) {
        std::fprintf(stderr, "these points determine no plane\n");
        return 1;
    }
    // A fit may give either of the two normals; here the one that points up is meant.
    if (plane.normal.z < 0) plane.normal = -plane.normal;

    const double degree = std::acos(-1.0) / 180;
    std::printf("normal     (%.4f, %.4f, %.4f)\n", plane.normal.x, plane.normal.y, plane.normal.z);
    std::printf("tilt       %.2f degrees from the vertical\n", std::acos(plane.normal.z) / degree);
    std::printf("flatness   %.4f mm\n", flatness);
    std::printf("deviation  %.4f mm, root mean square\n", std::sqrt(squares / touched.GetCount()));

    // Further points are judged by the fitted plane: one of them is a chip that lies on the plate.
    const TVector3<double> chip = nominal.point + nominal.normal * 0.4;
    std::printf("the chip   %.2f mm above the plate\n", plane.SignedDistanceToPoint(chip));
}

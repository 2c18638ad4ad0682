// Two scans of a part were taken with the scanner in different places. Targets that both scans show, in the same order,
// give the motion that carries the second scan onto the first; any other point of it follows by the same motion.

#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/vectors/TQuaternion.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;
using Points = TPointSet<double, TVector3>;

/// A coordinate as the scanner writes it, in millimetres with three decimals.
double Rounded(double length)
{
    return std::round(length * 1000) / 1000;
}

int main()
{
    const double degree = std::acos(-1.0) / 180;
    const TVector3<double> targets[] = {{0, 0, 0},    {240, 10, 5},    {230, 160, 0},
                                        {15, 150, 8}, {120, 80, 60.5}, {60, 30, 95}};
    Points second(targets, 6);

    // The first scan sees them turned by 25 degrees about (1, 2, 2), and moved.
    const TMatrix3x3<double> turn = TQuaternion<double>(25 * degree, TVector3<double>(1, 2, 2)).ToMatrix();
    Points first;
    for (unsigned int i = 0; i < second.GetCount(); ++i) {
        const TVector3<double> p = turn * second[i] + TVector3<double>(120, -45, 8);
        first.Add(TVector3<double>(Rounded(p.x), Rounded(p.y), Rounded(p.z)));
    }

    TMatrixMxN<double> rotation;
    TVector3<double> translation;
    // The last argument asks for the second scan to be moved onto the first.
    if (!first.Register(&second, &rotation, &translation, true)) {
        std::fprintf(stderr, "the scans cannot be registered\n");
        return 1;
    }
    double worst = 0;
    for (unsigned int i = 0; i < first.GetCount(); ++i) worst = std::max(worst, (first[i] - second[i]).GetLength());

    double angle = 0;
    TVector3<double> axis;
    TMatrix3x3<double> found = rotation;
    TQuaternion<double>(found).GetRotation(&angle, &axis);
    std::printf("turned by  %.2f degrees about (%.3f, %.3f, %.3f)\n", angle / degree, axis.x, axis.y, axis.z);
    std::printf("moved by   (%.2f, %.2f, %.2f) mm\n", translation.x, translation.y, translation.z);
    std::printf("residual   %.3f mm at worst\n", worst);

    // Another point of the second scan, in the coordinates of the first.
    const TVector3<double> origin = rotation * TVector3<double>(0, 0, 0) + translation;
    std::printf("the second scan's origin is at x = %.2f in the first\n", origin.x);
}

// A cam was measured at points around its rim. A closed B-spline gives the whole rim: a smooth curve to evaluate at any
// place, with its length.

#include <CorvexMaths/pointsets/TPointSet.h>
#include <CorvexMaths/splines/TBSpline.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;
using Points = TPointSet<double, TVector2>;

/// The distance from a point to the nearest of many points of a curve.
double DistanceTo(const Points& curve, const TVector2<double>& p)
{
    double least = HUGE_VAL;
    for (unsigned int i = 0; i < curve.GetCount(); ++i) least = std::min(least, (curve[i] - p).GetLength());
    return least;
}

int main()
{
    // In millimetres: an ellipse with half axes of 40 and 25, once around, the first point not repeated.
    const unsigned int count = 36;
    Points rim;
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 2 * std::acos(-1.0) * i / count;
        rim.Add(TVector2<double>(40 * std::cos(angle), 25 * std::sin(angle)));
    }

    // Cubic: of order 4. A fit closes a curve of uniform knots by itself. It takes as many control points as points:
    // the knots that closing brings are evenly spaced, and only then those of the fit are nearly so.
    TBSpline<double, TVector2> spline(4, Uniform, 0, count);
    spline.Fit(rim, count, false);
    // There is no result to ask; closing appends as many control points as the order, and nothing else does.
    if (spline.GetCount() != count + spline.GetOrder()) {
        std::fprintf(stderr, "these points determine no spline\n");
        return 1;
    }

    Points curve;
    spline.Evaluate(&curve, 0.0005, false);
    double worst = 0;
    for (unsigned int i = 0; i < rim.GetCount(); ++i) worst = std::max(worst, DistanceTo(curve, rim[i]));
    std::printf("%u points, %u control points\n", count, spline.GetCount());
    std::printf("ends       %.3f mm apart\n", (spline.Evaluate(1) - spline.Evaluate(0)).GetLength());
    std::printf("length     %.1f mm\n", spline.GetLength(0.0005));
    std::printf("deviation  %.3f mm, of the point farthest from the curve\n", worst);
}

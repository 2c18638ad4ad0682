#pragma once

/// The kernels of the point sets in their plain form, one point or one segment at a time.

#include <CorvexMaths/primitives/TBox.h>

#include <cmath>

namespace CorvexTest::Plain
{

/// Extends a box by points in list order.
template <class T, class Vector>
void ExtendBox(Halmont::Orrin::CorvexMaths::TBox<T>& box, const Vector* points, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i) {
        const Halmont::Orrin::CorvexMaths::TVector3<T> point = points[i];
        box.Extend(point);
    }
}

/// What a segment adds to the crossing count of a point.
template <class T, class Vector>
int CrossingScore(const Vector& from, const Vector& to, T x, T y)
{
    const T y1 = from.y - y;
    const T y2 = to.y - y;
    if (!((y1 <= 0 && y2 > 0) || (y2 < 0 && y1 >= 0))) return 0;
    const T place = std::fabs(y1) / std::fabs(y2 - y1) * (to.x - from.x) + from.x;
    return (y2 - y1 < 0 ? place >= x : x >= place) ? 1 : -1;
}

} // namespace CorvexTest::Plain

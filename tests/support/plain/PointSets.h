#pragma once

/// The kernels of the point sets in their plain form, one segment at a time.

#include <cmath>

namespace CorvexTest::Plain
{

/// What a segment adds to the crossing count of a point.
template <class T, class Vector>
int CrossingScore(const Vector& from, const Vector& to, T x, T y)
{
    const T y1 = from.y - y, y2 = to.y - y;
    if (!((y1 <= 0 && y2 > 0) || (y2 < 0 && y1 >= 0))) return 0;
    const T place = std::fabs(y1) / std::fabs(y2 - y1) * (to.x - from.x) + from.x;
    return (y2 - y1 < 0 ? place >= x : x >= place) ? 1 : -1;
}

} // namespace CorvexTest::Plain

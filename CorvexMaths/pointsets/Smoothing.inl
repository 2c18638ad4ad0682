#pragma once

/// Point sets as polylines: smoothing by averages, and points added to long segments.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/pointsets/TPointSet.h>

#include <cmath>
#include <memory>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The mean of a point and its two neighbours: their sum times a third, which is not their sum divided by 3.
template <class T, template <class> class V>
inline V<T> Average(const V<T>& previous, const V<T>& point, const V<T>& next)
{
    constexpr T third = T(1) / T(3);
    return (previous + point + next) * third;
}

} // namespace

template <class T, template <class> class V>
void TPointSet<T, V>::Smooth(unsigned int passes, bool closed)
{
    const unsigned int pointCount = this->count;
    if (pointCount <= 2) return;
    const unsigned int last = pointCount - 1;

    // Every average reads the points as they were before the pass, so that the results need a place of their own.
    const std::unique_ptr<V<T>[]> averages(new V<T>[pointCount]);
    for (unsigned int pass = 0; pass < passes; ++pass) {
        const V<T>* const points = this->storage;
        averages[0] = closed ? Average<T, V>(points[last], points[0], points[1]) : points[0];
        for (unsigned int i = 1; i < last; ++i) averages[i] = Average<T, V>(points[i - 1], points[i], points[i + 1]);
        averages[last] = closed ? Average<T, V>(points[last - 1], points[last], points[0]) : points[last];

        this->Clear(false);
        this->AddRange(averages.get(), pointCount);
    }
}

template <class T, template <class> class V>
void TPointSet<T, V>::Infill(const T& maxSpacing, bool closed)
{
    CORVEX_PRECONDITION("TPointSet::Infill", !(maxSpacing <= T(0)), maxSpacing);
    if (this->count == 0) return;

    // The spacing may be a component of a point, which the insertions move.
    const T spacing = maxSpacing;
    unsigned int segmentCount = closed ? this->count : this->count - 1;
    for (unsigned int i = 0; i < segmentCount; ++i) {
        const V<T> diff = this->storage[(i + 1) % this->count] - this->storage[i];
        const T length = diff.GetLength();
        if (!(length > spacing)) continue;

        const double quotient = std::ceil(static_cast<double>(length / spacing));
        CORVEX_PRECONDITION("TPointSet::Infill", quotient < 4294967296.0, quotient, length, spacing);
        const unsigned int pieces = static_cast<unsigned int>(quotient);
        const V<T> step = (diff / length) * (length / static_cast<T>(pieces));
        segmentCount += pieces - 1;
        for (unsigned int piece = 1; piece < pieces; ++piece) {
            const V<T> point = this->storage[i] + step;
            ++i;
            this->Insert(point, i);
        }
    }
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/internal/DoubleDouble.h>
#include <CorvexMaths/robust/Status.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>

/// The points of a question in coordinates of their own, about 1 in size and near the origin.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

using namespace CorvexMaths::Kernels;

/// Points of D components, shifted and scaled so that half their extent lies between 1/2 and 1, without rounding: the
/// scale is a power of two, and an axis is shifted only where that is exact. This is so where the middle of the extent
/// is at least twice half the extent away from 0: then each coordinate is between half and twice the shift, and their
/// difference is a double (P. H. Sterbenz). Elsewhere coordinates are at most three times half the extent anyway.
/// What follows therefore does not depend on where a part lies nor on its unit.
template <unsigned int D>
class LocalPoints
{
public:
    static constexpr unsigned int dimension = D;

    /// Done, TooFewPoints, NotFinite, or Degenerate where all points are equal.
    Status status = Status::TooFewPoints;
    /// How far rounding may have moved a coordinate of the points as they were given.
    double rounding = 0.0;

    template <class Vector>
    LocalPoints(const TList<Vector>& points, unsigned int least) : count(points.GetCount())
    {
        if (count < least || count == 0) return;
        using T = std::remove_reference_t<decltype(points[0][0])>;
        static_assert(sizeof(Vector) == D * sizeof(T));
        const T* const source = *points.GetStream();
        status = Normalise(source);
    }

    unsigned int GetCount() const { return count; }
    const double* operator[](std::size_t i) const { return &coordinates[i * D]; }

    /// The mean of the points, computed when it is first asked for.
    const std::array<DoubleDouble, D>& Mean() const
    {
        if (hasMean) return mean;
        double high[parts] = {};
        double low[parts] = {};
        ForThisProcessor<widestBytes>([source = coordinates.get(), size = Size(), sums = high,
                                       rests = low](auto bytes) { SumBy<bytes>(source, size, sums, rests); });
        for (unsigned int k = 0; k < parts; ++k) mean[k % D] += DoubleDouble::Sum(high[k], low[k]);
        for (DoubleDouble& x : mean) x = x / DoubleDouble(count);
        hasMean = true;
        return mean;
    }

    /// The power of two by which local lengths are greater than those of the points as given: 2^-GetExponent().
    int GetExponent() const { return outer + inner; }
    /// Component k of a place in the coordinates of the points as given, scaled by 2^-exponent.
    DoubleDouble ToScaledPlace(unsigned int k, const DoubleDouble& place, int exponent) const
    {
        const int lower = outer - exponent;
        const DoubleDouble inside(std::ldexp(place.high, inner + lower), std::ldexp(place.low, inner + lower));
        return inside + DoubleDouble(std::ldexp(shift[k], lower));
    }
    /// The power of two that bounds the coordinates of the points as given.
    int GetOuterExponent() const { return outer; }

    /// A length in the unit of the points as given.
    double ToLength(double length) const { return std::ldexp(std::ldexp(length, inner), outer); }
    /// Component k of a place in the coordinates of the points as given.
    double ToPlace(unsigned int k, const DoubleDouble& place) const
    {
        const DoubleDouble scaled(std::ldexp(place.high, inner), std::ldexp(place.low, inner));
        return std::ldexp((scaled + DoubleDouble(shift[k])).high, outer);
    }

    /// One of each run of `step` points, for a first look. Which one differs from run to run, as the multiples of the
    /// golden ratio do, since scans by turns and rows would show every step-th point at a few angles alone.
    LocalPoints Sample(unsigned int step) const { return LocalPoints(*this, step); }

private:
    unsigned int count;
    /// Not a vector, whose members would become symbols of the library.
    std::unique_ptr<double[]> coordinates;
    double shift[D] = {};
    mutable std::array<DoubleDouble, D> mean;
    mutable bool hasMean = false;
    int outer = 0;
    int inner = 0;

    std::size_t Size() const { return std::size_t(count) * D; }

    LocalPoints(const LocalPoints& all, unsigned int step)
        : status(all.status), rounding(all.rounding), count((all.count + step - 1) / step)
    {
        coordinates.reset(new double[Size()]);
        for (unsigned int i = 0; i < count; ++i) {
            const unsigned int first = i * step;
            const unsigned int run = std::min(step, all.count - first);
            const std::uint64_t share = i * 0x9E3779B97F4A7C15u >> 32;
            std::copy_n(all[first + static_cast<unsigned int>(share * run >> 32)], D, &coordinates[std::size_t(i) * D]);
        }
    }

    /// Each component is summed in eight partial sums, whatever the width of registers.
    static constexpr unsigned int parts = D * widestBytes / sizeof(double);

    template <unsigned int Bytes>
    CORVEX_ALWAYS_INLINE static void SumBy(const double* source, std::size_t size, double* high, double* low)
    {
        const std::size_t whole = size - size % parts;
        for (std::size_t i = 0; i < whole; i += parts) {
            for (unsigned int k = 0; k < parts; k += Lanes<double, Bytes>::count) {
                typename Lanes<double, Bytes>::Type x;
                Load(x, source + i + k);
                AddTo(high + k, low + k, x);
            }
        }
        for (std::size_t i = whole; i < size; ++i) AddTo(high + i % parts, low + i % parts, source[i]);
    }

    /// Sets lanes to as many values, as doubles.
    template <class Lane, class T>
    CORVEX_ALWAYS_INLINE static void Read(Lane& lane, const T* values)
    {
        if constexpr (std::is_same_v<T, double>)
            Load(lane, values);
        else
            for (unsigned int k = 0; k < sizeof(Lane) / sizeof(double); ++k) lane[k] = static_cast<double>(values[k]);
    }

    /// What a loop over all values takes at a time: D registers, of which each lane meets one component alone.
    template <unsigned int Bytes>
    struct Block
    {
        using Lane = typename Lanes<double, Bytes>::Type;
        static constexpr unsigned int count = Lanes<double, Bytes>::count;
        static constexpr unsigned int size = D * count;
        Lane lanes[D];

        /// Sets each lane to the value of its component.
        CORVEX_ALWAYS_INLINE explicit Block(const double (&values)[D])
        {
            for (unsigned int i = 0; i < size; ++i) lanes[i / count][i % count] = values[i % D];
        }
    };

    /// The least and the greatest value of each component, from those given; false where one is not a number.
    template <unsigned int Bytes, class T>
    CORVEX_ALWAYS_INLINE static bool RangeBy(const T* source, std::size_t size, double (&lowest)[D],
                                             double (&highest)[D])
    {
        using Values = Block<Bytes>;
        Values low(lowest);
        Values high(highest);
        auto isOdd = low.lanes[0] != low.lanes[0];
        std::size_t i = 0;
        for (; i + Values::size <= size; i += Values::size) {
            for (unsigned int r = 0; r < D; ++r) {
                typename Values::Lane x;
                Read(x, source + i + r * Values::count);
                isOdd |= x != x;
                low.lanes[r] = x < low.lanes[r] ? x : low.lanes[r];
                high.lanes[r] = x > high.lanes[r] ? x : high.lanes[r];
            }
        }
        bool odd = AnyLane(isOdd);
        const auto take = [&](std::size_t at, double least, double most) {
            // Which of two zeros came first is forgotten.
            lowest[at % D] = std::min(lowest[at % D], least) + 0.0;
            highest[at % D] = std::max(highest[at % D], most) + 0.0;
        };
        for (unsigned int k = 0; k < Values::size; ++k)
            take(k, low.lanes[k / Values::count][k % Values::count], high.lanes[k / Values::count][k % Values::count]);
        for (; i < size; ++i) {
            const double x = static_cast<double>(source[i]);
            odd |= x != x;
            take(i, x, x);
        }
        return !odd;
    }

    /// The least and the greatest value of each component; false where one is not finite.
    template <class T>
    bool FindRange(const T* source, double (&lowest)[D], double (&highest)[D]) const
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        std::fill_n(lowest, D, infinity);
        std::fill_n(highest, D, -infinity);
        bool isFinite = ForThisProcessor([source, size = Size(), &lowest, &highest](auto bytes) {
            return RangeBy<bytes>(source, size, lowest, highest);
        });
        for (unsigned int k = 0; k < D; ++k) isFinite = isFinite && lowest[k] > -infinity && highest[k] < infinity;
        return isFinite;
    }

    /// Sets the coordinates to the given ones times a factor, less the shift, times two more factors.
    template <unsigned int Bytes, class T>
    CORVEX_ALWAYS_INLINE void BringBy(const T* source, double factor, double first, double second)
    {
        using Values = Block<Bytes>;
        const Values shifts(shift);
        const std::size_t size = Size();
        double* const to = coordinates.get();
        std::size_t i = 0;
        for (; i + Values::size <= size; i += Values::size) {
            for (unsigned int r = 0; r < D; ++r) {
                typename Values::Lane x;
                Read(x, source + i + r * Values::count);
                x = (x * factor - shifts.lanes[r]) * first * second;
                Store(to + i + r * Values::count, x);
            }
        }
        for (; i < size; ++i) to[i] = (static_cast<double>(source[i]) * factor - shift[i % D]) * first * second;
    }

    /// Brings the coordinates to at most 1 in absolute value, so that no extent overflows, shifts them, and brings half
    /// their extent to 1.
    template <class T>
    Status Normalise(const T* source)
    {
        double lowest[D];
        double highest[D];
        if (!FindRange(source, lowest, highest)) return Status::NotFinite;
        double greatest = 0.0;
        for (unsigned int k = 0; k < D; ++k) greatest = std::max({greatest, -lowest[k], highest[k]});
        // A factor of a double's range; what is smaller still waits for the second scaling.
        std::frexp(greatest, &outer);
        outer = std::max(outer, -1000);
        const double factor = std::ldexp(1.0, -outer);

        double half = 0.0;
        for (unsigned int k = 0; k < D; ++k) {
            const double low = lowest[k] * factor;
            const double high = highest[k] * factor;
            const double extent = 0.5 * (high - low);
            half = std::max(half, extent);
            shift[k] = 0.5 * (low + high);
            if (std::fabs(shift[k]) < 2.0 * extent) shift[k] = 0.0;
        }
        std::frexp(half, &inner);
        rounding = std::numeric_limits<T>::epsilon() * std::ldexp(greatest, -outer - inner);
        if (!(half > 0.0)) return Status::Degenerate;
        coordinates.reset(new double[Size()]);
        // In two factors, since one may be beyond the range of double.
        const double first = std::ldexp(1.0, -inner / 2);
        const double second = std::ldexp(1.0, -inner - -inner / 2);
        ForThisProcessor([=](auto bytes) { this->template BringBy<bytes>(source, factor, first, second); });
        return Status::Done;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

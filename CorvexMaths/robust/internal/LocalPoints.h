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
        coordinates.reset(new double[Size()]);
        const double greatest = Greatest(source);
        const bool finite = greatest <= std::numeric_limits<double>::max();
        status = Status::NotFinite;
        if (!finite) return;
        status = Normalise(source, greatest) ? Status::Done : Status::Degenerate;
        rounding = std::numeric_limits<T>::epsilon() * std::ldexp(greatest, -outer - inner);
    }

    unsigned int GetCount() const { return count; }
    const double* operator[](std::size_t i) const { return &coordinates[i * D]; }

    /// The mean of the points, computed when it is first asked for.
    const std::array<DoubleDouble, D>& Mean() const
    {
        if (hasMean) return mean;
        for (std::size_t i = 0; i < Size(); i += D) {
            for (unsigned int k = 0; k < D; ++k) mean[k] += coordinates[i + k];
        }
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

    /// How many values the registers hold that a loop over all coordinates takes at a time: of D registers each lane
    /// meets one component alone.
    static constexpr std::size_t blockSize = D * baselineCount<double>;
    std::size_t BlocksEnd() const { return Size() - Size() % blockSize; }

    /// As many values as a register holds, as doubles.
    template <class T>
    static DoubleLanes Read(const T* values)
    {
        return DoubleLanes{static_cast<double>(values[0]), static_cast<double>(values[1])};
    }
    static_assert(baselineCount<double> == 2);

    /// The greatest absolute value; infinite where one is not finite.
    template <class T>
    double Greatest(const T* source) const
    {
        constexpr double most = std::numeric_limits<double>::max();
        double greatest = 0.0;
        const auto take = [&](double x) {
            // Written so that NaN counts as infinite.
            const double magnitude = std::fabs(x) <= most ? std::fabs(x) : std::numeric_limits<double>::infinity();
            greatest = std::max(greatest, magnitude);
        };
        DoubleLanes lanes[D] = {};
        auto isFinite = lanes[0] == lanes[0];
        for (std::size_t i = 0; i < BlocksEnd(); i += blockSize) {
            for (unsigned int r = 0; r < D; ++r) {
                const DoubleLanes x = Read(source + i + r * baselineCount<double>);
                const DoubleLanes magnitude = x < 0.0 ? -x : x;
                isFinite &= magnitude <= most;
                lanes[r] = magnitude > lanes[r] ? magnitude : lanes[r];
            }
        }
        if (AnyLane(~isFinite)) return std::numeric_limits<double>::infinity();
        for (const DoubleLanes& lane : lanes)
            for (unsigned int k = 0; k < baselineCount<double>; ++k) take(lane[k]);
        for (std::size_t i = BlocksEnd(); i < Size(); ++i) take(static_cast<double>(source[i]));
        return greatest;
    }

    /// Sets the coordinates to the given ones times a factor and finds the least and the greatest of each component.
    template <class T>
    void Scale(const T* source, double factor, double (&lowest)[D], double (&highest)[D])
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        std::fill_n(lowest, D, infinity);
        std::fill_n(highest, D, -infinity);
        const auto take = [&](std::size_t i, double low, double high) {
            lowest[i % D] = std::min(lowest[i % D], low);
            highest[i % D] = std::max(highest[i % D], high);
        };
        DoubleLanes low[D];
        DoubleLanes high[D];
        for (unsigned int r = 0; r < D; ++r) {
            low[r] = Spread<DoubleLanes>(infinity);
            high[r] = -low[r];
        }
        for (std::size_t i = 0; i < BlocksEnd(); i += blockSize) {
            for (unsigned int r = 0; r < D; ++r) {
                const std::size_t at = i + r * baselineCount<double>;
                const DoubleLanes x = Read(source + at) * factor;
                Store(&coordinates[at], x);
                low[r] = x < low[r] ? x : low[r];
                high[r] = x > high[r] ? x : high[r];
            }
        }
        for (unsigned int r = 0; r < D; ++r)
            for (unsigned int k = 0; k < baselineCount<double>; ++k)
                take(r * baselineCount<double> + k, low[r][k], high[r][k]);
        for (std::size_t i = BlocksEnd(); i < Size(); ++i) {
            coordinates[i] = static_cast<double>(source[i]) * factor;
            take(i, coordinates[i], coordinates[i]);
        }
    }

    /// Takes the shift from all coordinates and multiplies them by two factors, one after the other.
    void ShiftAndScale(double first, double second)
    {
        DoubleLanes shifts[D];
        for (unsigned int i = 0; i < blockSize; ++i) {
            shifts[i / baselineCount<double>][i % baselineCount<double>] = shift[i % D];
        }
        for (std::size_t i = 0; i < BlocksEnd(); i += blockSize) {
            for (unsigned int r = 0; r < D; ++r) {
                double* const at = &coordinates[i + r * baselineCount<double>];
                Store(at, DoubleLanes((LoadLanes(at) - shifts[r]) * first * second));
            }
        }
        for (std::size_t i = BlocksEnd(); i < Size(); ++i)
            coordinates[i] = (coordinates[i] - shift[i % D]) * first * second;
    }

    /// Brings the coordinates to at most 1 in absolute value, so that no extent overflows, shifts them, and brings half
    /// their extent to 1. False where they have none.
    template <class T>
    bool Normalise(const T* source, double greatest)
    {
        // A factor of a double's range; what is smaller still waits for the second scaling.
        std::frexp(greatest, &outer);
        outer = std::max(outer, -1000);
        double lowest[D];
        double highest[D];
        Scale(source, std::ldexp(1.0, -outer), lowest, highest);

        double half = 0.0;
        for (unsigned int k = 0; k < D; ++k) {
            const double extent = 0.5 * (highest[k] - lowest[k]);
            half = std::max(half, extent);
            shift[k] = 0.5 * (lowest[k] + highest[k]);
            if (std::fabs(shift[k]) < 2.0 * extent) shift[k] = 0.0;
        }
        if (!(half > 0.0)) return false;
        std::frexp(half, &inner);
        // In two factors, since one may be beyond the range of double.
        ShiftAndScale(std::ldexp(1.0, -inner / 2), std::ldexp(1.0, -inner - -inner / 2));
        return true;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

#pragma once

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/robust/Status.h>
#include <CorvexMaths/robust/internal/DoubleDouble.h>

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
        coordinates.reset(new double[Size()]);
        const Vector* const from = points.GetStream();
        double greatest = 0.0;
        bool finite = true;
        for (unsigned int i = 0; i < count; ++i) {
            const T* const point = from[i];
            for (unsigned int k = 0; k < D; ++k) {
                const double x = static_cast<double>(point[k]);
                coordinates[i * D + k] = x;
                finite = finite && std::fabs(x) <= std::numeric_limits<double>::max();
                greatest = std::max(greatest, std::fabs(x));
            }
        }
        status = Status::NotFinite;
        if (!finite) return;
        status = Normalise(greatest) ? Status::Done : Status::Degenerate;
        rounding = std::numeric_limits<T>::epsilon() * std::ldexp(greatest, -outer - inner);
    }

    unsigned int GetCount() const { return count; }
    const double* operator[](std::size_t i) const { return &coordinates[i * D]; }

    /// The mean of the points.
    std::array<DoubleDouble, D> Mean() const
    {
        std::array<DoubleDouble, D> mean;
        for (std::size_t i = 0; i < Size(); i += D) {
            for (unsigned int k = 0; k < D; ++k) mean[k] += coordinates[i + k];
        }
        for (DoubleDouble& x : mean) x = x / DoubleDouble(count);
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
            std::copy_n(all[first + static_cast<unsigned int>(share * run >> 32)], D, &coordinates[i * D]);
        }
    }

    /// Brings the coordinates to at most 1 in absolute value, so that no extent overflows, shifts them, and brings half
    /// their extent to 1. False where they have none.
    bool Normalise(double greatest)
    {
        // A factor of a double's range; what is smaller still waits for the second scaling.
        std::frexp(greatest, &outer);
        outer = std::max(outer, -1000);
        const double factor = std::ldexp(1.0, -outer);
        for (std::size_t i = 0; i < Size(); ++i) coordinates[i] *= factor;

        double half = 0.0;
        for (unsigned int k = 0; k < D; ++k) {
            double lowest = coordinates[k];
            double highest = lowest;
            for (std::size_t i = k; i < Size(); i += D) {
                lowest = std::min(lowest, coordinates[i]);
                highest = std::max(highest, coordinates[i]);
            }
            const double extent = 0.5 * (highest - lowest);
            half = std::max(half, extent);
            shift[k] = 0.5 * (lowest + highest);
            if (std::fabs(shift[k]) < 2.0 * extent) shift[k] = 0.0;
        }
        if (!(half > 0.0)) return false;
        std::frexp(half, &inner);
        // In two factors, since one may be beyond the range of double.
        const double first = std::ldexp(1.0, -inner / 2);
        const double second = std::ldexp(1.0, -inner - -inner / 2);
        for (std::size_t i = 0; i < Size(); i += D) {
            for (unsigned int k = 0; k < D; ++k) {
                coordinates[i + k] = (coordinates[i + k] - shift[k]) * first * second;
            }
        }
        return true;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

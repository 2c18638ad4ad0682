#pragma once

#include <CorvexMaths/internal/DoubleDouble.h>

#include <type_traits>

/// Where a feature lies: an origin and a right-angled frame.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

using namespace CorvexMaths::Kernels;

/// An origin and D orthonormal axes, the last of which is that of the feature, to twice the digits of a double and, for
/// the first steps and for derivatives, rounded to double.
template <unsigned int D>
class Placement
{
public:
    static constexpr unsigned int last = D - 1;

    DoubleDouble origin[D];
    DoubleDouble axes[D][D];

    Placement() = default;
    /// From an origin and axes of nearly unit length, nearly at right angles.
    template <class Real>
    Placement(const DoubleDouble* place, const Real (*directions)[D])
    {
        for (unsigned int k = 0; k < D; ++k) {
            origin[k] = place[k];
            for (unsigned int j = 0; j < D; ++j) axes[k][j] = directions[k][j];
        }
        Straighten();
    }

    /// Sets `sum` to the coordinate of a point along an axis, from the origin; of as many points as Real has lanes.
    template <class Real>
    CORVEX_ALWAYS_INLINE void SetAlong(Real& sum, unsigned int axis, const RoundedType<Real>* point) const
    {
        sum = Real{};
        for (unsigned int k = 0; k < D; ++k) {
            if constexpr (std::is_same_v<Real, RoundedType<Real>>)
                sum += (point[k] - nearOrigin[k]) * nearAxes[axis][k];
            else
                sum += (Real(point[k]) - As<Real>(origin[k])) * As<Real>(axes[axis][k]);
        }
    }
    /// The coordinate of a point along an axis, from the origin.
    template <class Real>
    Real Along(unsigned int axis, const double* point) const
    {
        Real sum;
        SetAlong(sum, axis, point);
        return sum;
    }

    /// Moves the origin along an axis.
    void Shift(unsigned int axis, const DoubleDouble& by)
    {
        for (unsigned int k = 0; k < D; ++k) origin[k] += axes[axis][k] * by;
        Round();
    }

    /// Tilts the last axis towards each of the others by the angle whose tangent is given for it.
    void Tilt(const double* tangents)
    {
        for (unsigned int axis = 0; axis < last; ++axis) {
            for (unsigned int k = 0; k < D; ++k) axes[last][k] += axes[axis][k] * DoubleDouble(tangents[axis]);
        }
        Straighten();
    }

    /// Turns axis 0 towards axis 1 by an angle of this cosine and sine.
    void Turn(double cosine, double sine)
    {
        for (unsigned int k = 0; k < D; ++k) {
            const DoubleDouble x = axes[0][k];
            const DoubleDouble y = axes[1][k];
            axes[0][k] = x * DoubleDouble(cosine) + y * DoubleDouble(sine);
            axes[1][k] = y * DoubleDouble(cosine) - x * DoubleDouble(sine);
        }
        Straighten();
    }

private:
    double nearOrigin[D];
    double nearAxes[D][D];

    /// Makes the axes orthonormal again, the last one first (Gram and Schmidt).
    void Straighten()
    {
        for (unsigned int i = D; i-- > 0;) {
            for (unsigned int j = D; --j > i;) Add(axes[i], axes[j], -Dot(axes[i], axes[j]));
            const DoubleDouble length = SquareRoot(Dot(axes[i], axes[i]));
            for (DoubleDouble& x : axes[i]) x = x / length;
        }
        Round();
    }

    void Round()
    {
        for (unsigned int k = 0; k < D; ++k) {
            nearOrigin[k] = origin[k].high;
            for (unsigned int j = 0; j < D; ++j) nearAxes[k][j] = axes[k][j].high;
        }
    }

    static DoubleDouble Dot(const DoubleDouble* a, const DoubleDouble* b)
    {
        DoubleDouble sum;
        for (unsigned int k = 0; k < D; ++k) sum += a[k] * b[k];
        return sum;
    }
    static void Add(DoubleDouble* a, const DoubleDouble* b, const DoubleDouble& share)
    {
        for (unsigned int k = 0; k < D; ++k) a[k] += b[k] * share;
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

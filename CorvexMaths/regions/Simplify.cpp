#include <CorvexMaths/regions/TRegion.h>

#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/Simplification.h>

#include <cmath>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
TRegion<T> TRegion<T>::Simplify(T tolerance) const
{
    if (!std::isfinite(tolerance)) return TRegion(RegionStatus::NotFinite);
    if (!outlines || !(tolerance > T(0))) return *this;
    const double steps = std::ldexp(static_cast<double>(tolerance), -stepExponent);
    // The arrangement, which finds nothing to resolve, brings the outlines into their canonical form.
    return TRegion(Kernels::Arrange(Kernels::Simplify(outlines->rings, steps), WindingRule::Positive),
                   Kernels::Grid(stepExponent), RegionStatus::Done);
}

template TRegion<float> TRegion<float>::Simplify(float) const;
template TRegion<double> TRegion<double>::Simplify(double) const;

} // namespace Halmont::Orrin::CorvexMaths

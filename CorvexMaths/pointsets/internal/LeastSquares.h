#pragma once

/// What the fits of circles and spheres share: the linear system of a Gauss-Newton step, and where the measures of the
/// steps start.
/// Internal to the library.

#include <CorvexMaths/matrices/decomposition/TallSystem.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A fit takes steps as long as their measure falls. Before the first, these two stand for the measures of the last two
/// steps: the first is above any real one and the second below the first, so that a first step is always taken. In
/// `double` the second is the quotient, one unit in the last place above 1e29.
template <class T>
inline constexpr T measureBeforeSteps = T(1e30);
template <>
inline constexpr float measureBeforeSteps<float> = 1e30f;
template <class T>
inline constexpr T measureOfNoStep = T(1e30) / T(10);
template <>
inline constexpr float measureOfNoStep<float> = 1e29f;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

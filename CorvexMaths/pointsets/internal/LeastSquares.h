#pragma once

/// What the fits of circles and spheres share: the linear system of a Gauss-Newton step and where its measures start.
/// Internal to the library.

#include <CorvexMaths/matrices/decomposition/TallSystem.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// The measures before the first step: of the step before it, above any real measure, and of itself, below that, so
/// that the first step is always taken. In `double` the second is the quotient, one step above 1e29.
template <class T>
inline constexpr T measureBeforeSteps = T(1e30);
template <>
inline constexpr float measureBeforeSteps<float> = 1e30f;
template <class T>
inline constexpr T measureOfNoStep = T(1e30) / T(10);
template <>
inline constexpr float measureOfNoStep<float> = 1e29f;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

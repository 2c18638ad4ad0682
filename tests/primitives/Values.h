#pragma once

/// What the tests of primitives share: the headers, and the values at the ends of the number types.

#include "../support/Bits.h"
#include "../support/Types.h"

#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct Primitive : ::testing::Test
{
    static constexpr T nan = std::numeric_limits<T>::quiet_NaN(), infinity = std::numeric_limits<T>::infinity();
    static constexpr T epsilon = std::numeric_limits<T>::epsilon(), least = std::numeric_limits<T>::denorm_min();
};

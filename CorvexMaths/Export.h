#pragma once

/// The language level, and the visibility of the classes outside the shared library.

#if __cplusplus < 201703L
#error "CorvexMaths needs C++17 or later: compile with -std=c++17"
#endif

/// Marks a class whose members are visible outside the shared library, which is otherwise built with hidden visibility.
/// It stands on the first declaration of each class template (see Forward.h): a visibility given later is ignored. On
/// Windows symbols have no visibility, and the build reads this mark itself (see cmake/WindowsExports.cmake).
#if defined(_WIN32)
#define CORVEX_API
#else
#define CORVEX_API __attribute__((visibility("default")))
#endif

// NEON of 32-bit Arm flushes denormal numbers to zero. g++ does not compute with it; clang++ does, in lanes of floats.
#if defined(__clang__) && defined(__arm__) && defined(__ARM_NEON)
#error "CorvexMaths needs arithmetic that keeps denormal numbers, without NEON: compile with -mfpu=vfpv3-d16"
#endif

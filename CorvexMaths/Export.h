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

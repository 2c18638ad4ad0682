#pragma once

/// Checks of documented preconditions, in debug builds alone.
///
/// An index in range, a pointer that is not null, an argument that is not the object itself: the library relies on them
/// and a release build does not look. Where `NDEBUG` is not defined, `CORVEX_PRECONDITION` looks, and a violation ends
/// the program with one line on the standard error output, such as
///
///     CorvexMaths: TList::operator[] needs index < count, but (index, count) is (7, 3)
///
/// `CORVEX_CHECK_PRECONDITIONS`, defined as 0 or 1, decides in place of `NDEBUG`. Code that the compiler takes inline
/// follows the program that includes it, all other code the build of the library: to have every check, link a debug
/// build. A check changes no result.

#ifndef CORVEX_CHECK_PRECONDITIONS
#ifdef NDEBUG
#define CORVEX_CHECK_PRECONDITIONS 0
#else
#define CORVEX_CHECK_PRECONDITIONS 1
#endif
#endif

#if CORVEX_CHECK_PRECONDITIONS

#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths::Preconditions
{

/// Prints a value as the line of a violation shows it: numbers with all their digits, pointers as addresses.
template <class Value>
void Print(const Value& value)
{
    if constexpr (std::is_floating_point_v<Value>)
        std::fprintf(stderr, "%.17g", static_cast<double>(value));
    else if constexpr (std::is_pointer_v<Value>)
        std::fprintf(stderr, "%p", static_cast<const void*>(value));
    else if constexpr (std::is_signed_v<Value>)
        std::fprintf(stderr, "%lld", static_cast<long long>(value));
    else
        std::fprintf(stderr, "%llu", static_cast<unsigned long long>(value));
}

/// Names the operation, the condition and the values it was about, and ends the program.
template <class First, class... Values>
[[noreturn]] __attribute__((noinline, cold)) void Fail(const char* operation, const char* condition, const char* names,
                                                       const First& first, const Values&... values)
{
    std::fprintf(stderr, "CorvexMaths: %s needs %s, but (%s) is (", operation, condition, names);
    Print(first);
    ((std::fputs(", ", stderr), Print(values)), ...);
    std::fputs(")\n", stderr);
    std::abort();
}

} // namespace Halmont::Orrin::CorvexMaths::Preconditions

/// Ends the program if a precondition does not hold: the operation as "Class::Member", the condition, and the values
/// that tell why. Arguments must be free of side effects; a release build does not evaluate them.
#define CORVEX_PRECONDITION(operation, condition, ...)                                                                 \
    ((condition)                                                                                                       \
         ? static_cast<void>(0)                                                                                        \
         : ::Halmont::Orrin::CorvexMaths::Preconditions::Fail(operation, #condition, #__VA_ARGS__, __VA_ARGS__))

#else

#define CORVEX_PRECONDITION(operation, condition, ...) static_cast<void>(0)

#endif

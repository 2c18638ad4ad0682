#pragma once

/// Functions that are deleted with advice, so that the compiler tells what to write instead.

#include <iosfwd>

/// Deletes a function with advice: C++26 prints it, an earlier compiler the line on which it stands.
#if defined(__cpp_deleted_function) && __cplusplus > 202302L
#define CORVEX_DELETED(advice) = delete (advice)
#else
#define CORVEX_DELETED(advice) = delete
#endif

/// Within a class, says in one message what a program lacks that prints its objects. Any other `operator<<` fits
/// better, be it of Stream.h or of the program, and the compiler finds this one only for objects of the class.
#define CORVEX_INCLUDE_STREAM_TO_PRINT(Class)                                                                          \
    template <class C, class R>                                                                                        \
    friend void operator<<(std::basic_ios<C, R>&, const Class&) CORVEX_DELETED("include <CorvexMaths/Stream.h>")

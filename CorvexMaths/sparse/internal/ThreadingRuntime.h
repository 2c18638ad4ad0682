#pragma once

/// The one function of the OpenMP runtime that the library calls. Internal. It is declared here because the runtime is
/// part of every installation of g++, and its header is not. Without a runtime, as some compilers for Windows and macOS
/// come, the number of threads is 1.

#if defined(CORVEX_WITHOUT_OPENMP)
inline int omp_get_max_threads() noexcept
{
    return 1;
}
#else
extern "C" int omp_get_max_threads() noexcept;
#endif

#pragma once

/// The one function of the OpenMP runtime that the library calls. Internal. It is declared here because the runtime is
/// part of every compiler's installation, and its header is not.

extern "C" int omp_get_max_threads() noexcept;

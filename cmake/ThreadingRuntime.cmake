# The OpenMP runtime is asked for its number of threads, where there is one; no thread is started, so there is no -fopenmp.
# The results are the same for any number, and without a runtime.
set(CORVEX_THREADING_RUNTIME "")
if(CORVEX_OPENMP)
    include(CheckCXXSourceCompiles)
    foreach(runtime gomp omp)
        set(CMAKE_REQUIRED_LIBRARIES ${runtime})
        check_cxx_source_compiles("extern \"C\" int omp_get_max_threads(); int main() { return omp_get_max_threads(); }"
            CORVEX_HAS_${runtime})
        unset(CMAKE_REQUIRED_LIBRARIES)
        if(CORVEX_HAS_${runtime})
            set(CORVEX_THREADING_RUNTIME ${runtime})
            break()
        endif()
    endforeach()
endif()

# Flags of our own targets. A program that links the library gets at most -ffp-contract=off of them.

# Keeps every rounding step: no contraction into fused multiply-adds. The other two change no value; they only spare the
# compiler from keeping errno and floating-point exceptions.
set(CORVEX_BIT_FLAGS -ffp-contract=off -fno-math-errno -fno-trapping-math)

set(CORVEX_WARNING_FLAGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wfloat-conversion)
if(CORVEX_WARNINGS_AS_ERRORS)
    list(APPEND CORVEX_WARNING_FLAGS -Werror)
endif()

# Gives a target of ours the warnings and the language; the arithmetic flags too, so that tests compute like the library.
function(corvex_set_flags target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_options(${target} PRIVATE ${CORVEX_BIT_FLAGS} ${CORVEX_WARNING_FLAGS})
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
endfunction()

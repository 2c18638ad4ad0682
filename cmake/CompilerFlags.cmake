# Flags of our own targets, and those of them that go on to programs that link the library.

# No contraction into fused multiply-adds, which would leave out a rounding step. g++ pairs a sum and a difference of
# products into one all the same when it vectorises, so it must not have the instructions either; AVX2 stays available.
# Without -march or the like both extra flags do nothing. clang++ knows them too, but does not need them.
set(CORVEX_CONTRACTION_FLAGS -ffp-contract=off)
set(CORVEX_INSTRUCTION_FLAGS "")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
    set(CORVEX_INSTRUCTION_FLAGS -mno-fma -mno-avx512f)
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^i.86$")
    # The x87 unit rounds to more digits than the type has.
    list(APPEND CORVEX_INSTRUCTION_FLAGS -msse2 -mfpmath=sse)
endif()
set(CORVEX_EXACT_FLAGS
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang>:${CORVEX_CONTRACTION_FLAGS}>"
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:${CORVEX_INSTRUCTION_FLAGS}>")

# The further two change no value; they only spare the compiler from keeping errno and floating-point exceptions.
set(CORVEX_BIT_FLAGS ${CORVEX_EXACT_FLAGS} -fno-math-errno -fno-trapping-math)

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

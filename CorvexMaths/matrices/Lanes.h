#pragma once

/// Several independent sums side by side in one register. Internal.
///
/// A lane operation is the same rounded operation on each value, so the width of a register moves no bit. The baseline is
/// 16 bytes. On x86-64 a kernel may be compiled a second time for 32 bytes and chosen at run time; it is compiled without
/// fused multiply-add, which would round differently.

#include <cstring>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

#define CORVEX_ALWAYS_INLINE __attribute__((always_inline)) inline

/// A register of `Bytes` bytes of T.
template <class T, unsigned int Bytes>
struct Lanes
{
    typedef T Type __attribute__((vector_size(Bytes)));
    static constexpr unsigned int count = Bytes / sizeof(T);
};

/// The width that every processor of the architecture has.
inline constexpr unsigned int baselineBytes = 16;

#ifdef __x86_64__
/// Marks the wide variant of a kernel, and whether this processor can run it. The compiler clears the upper halves of
/// the registers on the way out.
#define CORVEX_WIDE_LANES __attribute__((target("avx2")))
inline constexpr unsigned int wideBytes = 32;
inline bool HasWideLanes()
{
    return __builtin_cpu_supports("avx2") != 0;
}
#endif

/// Reads a register from any address.
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Load(Lane& lane, T const* source)
{
    std::memcpy(&lane, source, sizeof(Lane));
}

/// Writes a register to any address.
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Store(T* target, Lane const& lane)
{
    std::memcpy(target, &lane, sizeof(Lane));
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// Several independent values side by side in one register. Internal.
///
/// A lane operation is the same rounded operation on each value, so the width of a register moves no bit. The baseline
/// is 16 bytes. On x86-64 a kernel may be compiled again for 32 and for 64 bytes and chosen at run time; no variant
/// holds a fused multiply-add, which would round differently. The vector types are those that g++ and clang++ share.

#include <cstdint>
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

/// A register of one value is that value.
template <>
struct Lanes<float, sizeof(float)>
{
    using Type = float;
    static constexpr unsigned int count = 1;
};
template <>
struct Lanes<double, sizeof(double)>
{
    using Type = double;
    static constexpr unsigned int count = 1;
};

/// The width that every processor of the architecture has.
inline constexpr unsigned int baselineBytes = 16;

/// The register of that width.
template <class T>
using BaselineLanes = typename Lanes<T, baselineBytes>::Type;

/// What a comparison of such registers gives: integers of the width of T, all bits set where it holds.
template <class T>
using BaselineMask = decltype(BaselineLanes<T>() < BaselineLanes<T>());

/// How many values it holds.
template <class T>
inline constexpr unsigned int baselineCount = Lanes<T, baselineBytes>::count;

// A build that tests the kernels defines CORVEX_LANE_BYTES: 16 leaves out the variants, 32 or 64 always takes that
// width, 64 with the wide variant of a kernel that has no widest one.
#if defined(__x86_64__) && !(defined(CORVEX_LANE_BYTES) && CORVEX_LANE_BYTES == 16)
/// Marks the wide variant of a kernel. The compiler clears the upper halves of the registers on the way out.
#define CORVEX_WIDE_LANES __attribute__((target("avx2")))
inline constexpr unsigned int wideBytes = 32;

/// Marks the widest variant, for a kernel that gains by it. Fused multiply-adds are among the instructions that come
/// with it. Compilers leave them alone as contraction is off, but for one pattern of g++: a sum and a difference of
/// products in neighbouring lanes. A kernel with such pairs has no widest variant.
#define CORVEX_WIDEST_LANES __attribute__((target("avx512f")))
inline constexpr unsigned int widestBytes = 64;

/// The width of this processor's widest registers: found out once, as the library is loaded. Until then it is 0, which
/// counts as the baseline, is slower and gives the same bits.
#if defined(CORVEX_LANE_BYTES)
inline constexpr unsigned int laneBytes = CORVEX_LANE_BYTES;
inline constexpr bool hasWideLanes = laneBytes >= wideBytes;
#else
inline const unsigned int laneBytes = [] {
    // Static initialisation may come before the compiler's own look at the processor.
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512f")) return widestBytes;
    return __builtin_cpu_supports("avx2") ? wideBytes : baselineBytes;
}();
/// Whether this processor can run the wide variants.
inline const bool hasWideLanes = laneBytes >= wideBytes;
#endif
#endif

// Lanes of a kernel that is compiled for several widths go through arguments alone; returned, they would depend on the
// target.

/// Reads a register from any address.
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Load(Lane& lane, const T* source)
{
    std::memcpy(&lane, source, sizeof(Lane));
}

/// Writes a register to any address.
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Store(T* target, const Lane& lane)
{
    std::memcpy(target, &lane, sizeof(Lane));
}

/// Writes a value to all lanes. (Added to lanes of zeros it would lose the sign of a zero.)
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Spread(Lane& lane, T value)
{
    lane = Lane{};
    for (unsigned int k = 0; k < sizeof(Lane) / sizeof(T); ++k) lane[k] = value;
}

/// Whether a comparison holds in any lane.
template <class Mask>
CORVEX_ALWAYS_INLINE bool AnyLane(const Mask& mask)
{
    std::uint64_t words[sizeof(Mask) / sizeof(std::uint64_t)];
    std::memcpy(words, &mask, sizeof(words));
    std::uint64_t any = 0;
    for (const std::uint64_t word : words) any |= word;
    return any != 0;
}

/// Reads a register of the baseline's width.
template <class T>
inline BaselineLanes<T> LoadLanes(const T* values)
{
    BaselineLanes<T> lanes;
    Load(lanes, values);
    return lanes;
}

/// Reads every `stride`-th value.
template <class T, unsigned int stride>
inline BaselineLanes<T> GatherLanes(const T* values)
{
    if constexpr (baselineCount<T> == 2)
        return BaselineLanes<T>{values[0], values[stride]};
    else
        return BaselineLanes<T>{values[0], values[stride], values[2 * stride], values[3 * stride]};
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// Several independent values side by side in one register, and the choice of its width. Internal.
///
/// A lane operation is the same rounded operation on each value, so the width of a register moves no bit. The baseline
/// is 16 bytes. On x86-64 a kernel is compiled again for 32 bytes and, if it says so, for 64, and the form for the
/// processor is chosen at run time; no form holds a fused multiply-add, which would round differently. The vector types
/// are those that g++ and clang++ share.
///
/// A kernel is a function over the bytes of a register, called through ForThisProcessor:
///
///     template <unsigned int Bytes, class T>
///     CORVEX_ALWAYS_INLINE void ScaleBy(T* values, unsigned int count, T factor)
///     {
///         using Lane = typename Lanes<T, Bytes>::Type;
///         ...
///     }
///
///     template <class T>
///     void Scale(T* values, unsigned int count, T factor)
///     {
///         ForThisProcessor([=](auto bytes) { ScaleBy<bytes>(values, count, factor); });
///     }
///
/// What the kernel calls is CORVEX_ALWAYS_INLINE too, or a compiler may leave it in its baseline form. A lambda that
/// hands on to an operation of its own caller is __attribute__((flatten)) for the same reason. Lanes go through
/// reference arguments: passed or returned by value, they would depend on the target. A lambda captures values: an
/// object captured by reference has its address taken, and is read again after every write through a pointer of its
/// type.

#include <cstdint>
#include <cstring>
#include <type_traits>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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
/// The width of AVX2.
inline constexpr unsigned int wideBytes = 32;
/// The width of AVX-512. Fused multiply-adds are among the instructions that come with it. Compilers leave them alone
/// as contraction is off, but for one pattern of g++: a sum and a difference of products in neighbouring lanes. A
/// kernel with such pairs is not compiled for this width.
inline constexpr unsigned int widestBytes = 64;

/// The register of the baseline.
template <class T>
using BaselineLanes = typename Lanes<T, baselineBytes>::Type;

/// What a comparison of such registers gives: integers of the width of T, all bits set where it holds.
template <class T>
using BaselineMask = decltype(BaselineLanes<T>() < BaselineLanes<T>());

/// How many values it holds.
template <class T>
inline constexpr unsigned int baselineCount = Lanes<T, baselineBytes>::count;

/// A number of bytes known at compile time.
template <unsigned int Bytes>
using RegisterBytes = std::integral_constant<unsigned int, Bytes>;

/// Runs an operation in baseline registers, as a function of its own, as the others are.
template <class Operation>
__attribute__((noinline)) auto RunBaseline(Operation operation)
{
    return operation(RegisterBytes<baselineBytes>());
}

// A build that tests the kernels defines CORVEX_LANE_BYTES: 16 leaves out the other forms, 32 or 64 always takes that
// width, 64 with the wide form of a kernel that has no widest one.
#if defined(__x86_64__) && !(defined(CORVEX_LANE_BYTES) && CORVEX_LANE_BYTES == 16)
#define CORVEX_SEVERAL_WIDTHS

/// The width of this processor's widest registers: found out once, as the library is loaded. Until then it is 0, which
/// counts as the baseline, is slower and gives the same bits.
#if defined(CORVEX_LANE_BYTES)
inline constexpr unsigned int laneBytes = CORVEX_LANE_BYTES;
#else
inline const unsigned int laneBytes = [] {
    // Static initialisation may come before the compiler's own look at the processor.
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512f")) return widestBytes;
    return __builtin_cpu_supports("avx2") ? wideBytes : baselineBytes;
}();
#endif

/// Runs an operation, and all that is inlined into it, compiled for wide registers. The compiler clears their upper
/// halves on the way out.
template <class Operation>
__attribute__((target("avx2"), noinline, flatten)) auto RunWide(Operation operation)
{
    return operation(RegisterBytes<wideBytes>());
}

/// The same for the widest registers.
template <class Operation>
__attribute__((target("avx512f"), noinline, flatten)) auto RunWidest(Operation operation)
{
    return operation(RegisterBytes<widestBytes>());
}
#else
inline constexpr unsigned int laneBytes = baselineBytes;
#endif

/// Calls operation(bytes) compiled for the widest registers of this processor, of `mostBytes` at most: a kernel that
/// gains by the widest ones says ForThisProcessor<widestBytes>. `bytes`, an integral constant, is their width. The
/// operation is a lambda, whose body is inlined into a function for that width. Returns what the operation returns.
template <unsigned int mostBytes = wideBytes, class Operation>
CORVEX_ALWAYS_INLINE auto ForThisProcessor(Operation operation)
{
#if defined(CORVEX_SEVERAL_WIDTHS)
    if constexpr (mostBytes >= widestBytes)
        if (laneBytes >= widestBytes) return RunWidest(operation);
    if (laneBytes >= wideBytes) return RunWide(operation);
#endif
    return RunBaseline(operation);
}

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

/// Writes a value to all lanes, or to a scalar. (Added to lanes of zeros it would lose the sign of a zero.)
template <class Lane, class T>
CORVEX_ALWAYS_INLINE void Broadcast(Lane& lane, T value)
{
    if constexpr (std::is_same_v<Lane, T>) {
        lane = value;
    } else {
        lane = Lane{};
        for (unsigned int k = 0; k < sizeof(Lane) / sizeof(T); ++k) lane[k] = value;
    }
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

/// A mask of lanes of T as bits, one for each lane.
template <class T, class Mask>
CORVEX_ALWAYS_INLINE unsigned int PackMask(const Mask& mask)
{
#if defined(__SSE2__)
    if constexpr (sizeof(Mask) == sizeof(__m128)) {
        __m128d bits;
        std::memcpy(&bits, &mask, sizeof(bits));
        return static_cast<unsigned int>(sizeof(T) == sizeof(double) ? _mm_movemask_pd(bits)
                                                                     : _mm_movemask_ps(_mm_castpd_ps(bits)));
    }
#endif
    constexpr unsigned int wordCount = sizeof(Mask) / sizeof(std::uint64_t);
    constexpr unsigned int lanesPerWord = sizeof(std::uint64_t) / sizeof(T);
    constexpr bool lowComesFirst = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
    std::uint64_t words[wordCount];
    std::memcpy(words, &mask, sizeof(words));
    std::uint64_t bits = 0;
    for (unsigned int w = 0; w < wordCount; ++w) {
        const std::uint64_t low = words[w] & 1, high = words[w] >> 63;
        const std::uint64_t lanes = lanesPerWord == 1 ? low : lowComesFirst ? low | high << 1 : high | low << 1;
        bits |= lanes << w * lanesPerWord;
    }
    return static_cast<unsigned int>(bits);
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

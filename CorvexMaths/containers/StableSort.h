#pragma once

/// The sort of lists and of convex hulls: `qsort` with the same order everywhere. For the library's own use.

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace Halmont::Orrin::CorvexUtilities
{

/// Sorts by merging, with the comparisons of glibc's `qsort` in their order: halves of n / 2 and n - n / 2 elements,
/// the lower one first, and of two elements of which neither is greater the one from the lower half. Even a function
/// that contradicts itself therefore leaves the order that it leaves there. The elements are moved as bytes; `buffer`
/// has room for all of them. If the function throws, each element is still there once.
inline void MergeSort(unsigned char* elements, std::size_t n, std::size_t size,
                      int (*compare)(const void*, const void*), unsigned char* buffer)
{
    if (n <= 1) return;
    const unsigned char* lower = elements;
    const unsigned char* upper = elements + n / 2 * size;
    const unsigned char* const lowerEnd = upper;
    const unsigned char* const upperEnd = elements + n * size;
    MergeSort(elements, n / 2, size, compare, buffer);
    MergeSort(elements + n / 2 * size, n - n / 2, size, compare, buffer);

    unsigned char* merged = buffer;
    while (lower != lowerEnd && upper != upperEnd) {
        const unsigned char*& next = compare(lower, upper) <= 0 ? lower : upper;
        std::memcpy(merged, next, size);
        merged += size;
        next += size;
    }
    // What is left of the upper half stands in its place already.
    std::memcpy(merged, lower, static_cast<std::size_t>(lowerEnd - lower));
    std::memcpy(elements, buffer, static_cast<std::size_t>(upper - elements));
}

/// Sorts n elements of a size by a comparison function for the standard `qsort`, in the order that glibc's leaves: a
/// stable sort for a function that orders. With another C library, whose own order of equal elements would differ, it
/// allocates a copy of the elements and passes on the allocator's exception, the elements being as they were.
inline void StableSort(void* elements, std::size_t n, std::size_t size, int (*compare)(const void*, const void*))
{
    if (n <= 1) return;
#if defined(__GLIBC__)
    std::qsort(elements, n, size, compare);
#else
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[n * size]);
    MergeSort(static_cast<unsigned char*>(elements), n, size, compare, buffer.get());
#endif
}

} // namespace Halmont::Orrin::CorvexUtilities

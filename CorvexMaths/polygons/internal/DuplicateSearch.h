#pragma once

/// The search for vertices that repeat earlier ones.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Marks a vertex that repeats none.
inline constexpr unsigned int noVertex = ~0u;

/// Finds, for each vertex in order, the first earlier one that is no duplicate itself and has x and y within the common
/// tolerance of its own, inclusive; writes its index to `original`, or noVertex. `points` holds x and y of vertex i at
/// i * stride. Returns how many duplicates there are. Linear on average; a vertex with a coordinate that is not a
/// number is near to none.
template <class T>
unsigned int FindDuplicates(const T* points, unsigned int stride, unsigned int count, unsigned int* original);

extern template unsigned int FindDuplicates(const float*, unsigned int, unsigned int, unsigned int*);
extern template unsigned int FindDuplicates(const double*, unsigned int, unsigned int, unsigned int*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

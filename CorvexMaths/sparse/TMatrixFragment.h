#pragma once

/// TMatrixFragment: the elements of a sparse matrix on their way from a computation to compressed storage.

#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/containers/TList.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A list of elements as (value, row, column), for T of `float` and `double`. Entry i of each of the three lists
/// belongs to one element; keeping them of one length is up to the caller, as are the order and range of the entries.
/// Nothing is checked. Where memory runs out, SetDimensions leaves the elements as they were, and an assignment by copy
/// lists that may differ in length.
template <class T>
struct TMatrixFragment
{
    /// The value of each element.
    TList<T> values;
    /// The row index of each value, from 0.
    TList<int> rows;
    /// The column index of each value, from 0.
    TList<int> columns;

    /// Three empty lists of grow size 1000, without blocks.
    TMatrixFragment() = default;
    /// A copy of the three lists with blocks of their own, as the copy constructor of TList makes it.
    TMatrixFragment(const TMatrixFragment& other) = default;
    /// Takes over the three lists with their grow sizes; the other fragment is left empty.
    TMatrixFragment(TMatrixFragment&& other) noexcept = default;
    /// Releases the lists.
    ~TMatrixFragment() = default;

    /// Replaces the elements and grow sizes of the three lists, as the assignment of TList does: a fragment assigned to
    /// itself ends empty.
    TMatrixFragment& operator=(const TMatrixFragment& other) = default;
    /// Takes over the three lists with their grow sizes; the other fragment is left empty, unless it is this one.
    TMatrixFragment& operator=(TMatrixFragment&& other) noexcept = default;

    /// Makes room in each list for n elements more than it has and then sets its grow size to n / 2, rounded down, but
    /// at least 1. While it makes room the old grow size counts. The elements stay.
    void SetDimensions(unsigned int n);

    CORVEX_INCLUDE_STREAM_TO_PRINT(TMatrixFragment);
};

CORVEX_INSTANTIATE_SCALARS(extern, struct, TMatrixFragment);

} // namespace Halmont::Orrin::CorvexMaths

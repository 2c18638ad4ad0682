#pragma once

/// TMatrixFragment: the elements of a sparse matrix on their way from a computation to compressed storage.

#include <CorvexMaths/containers/TList.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A list of elements as (value, row, column), for T of `float` and `double`. The three lists grow in step: entry i of
/// each belongs to one element. Order and range of the entries are the caller's affair.
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
    /// A copy of the three lists, as their copy constructor makes it.
    TMatrixFragment(const TMatrixFragment& other) = default;
    /// Releases the lists.
    ~TMatrixFragment() = default;

    /// Replaces the three lists, as their assignment does: a fragment assigned to itself ends empty.
    TMatrixFragment& operator=(const TMatrixFragment& other) = default;

    /// Makes room in each list for n more elements and sets its grow size to n / 2, rounded down, but at least 1.
    void SetDimensions(unsigned int n);
};

extern template struct TMatrixFragment<float>;
extern template struct TMatrixFragment<double>;

} // namespace Halmont::Orrin::CorvexMaths

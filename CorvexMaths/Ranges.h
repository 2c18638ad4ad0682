#pragma once

/// The rules for overloads that take elements from wherever a program holds them.

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

/// Lets an overload take part only for iterators whose elements convert to `Element`; numbers are none.
template <class Iterator, class Element>
using IfIterator = std::enable_if_t<
    std::is_base_of_v<std::input_iterator_tag, typename std::iterator_traits<Iterator>::iterator_category> &&
    std::is_convertible_v<typename std::iterator_traits<Iterator>::reference, Element>>;

/// Lets an overload take part only for a range with elements of exactly the type `Element` side by side: a
/// `std::vector`, `std::array` or `std::span`, an array, or another class with `data()` and `size()`. A `List` and what
/// is derived from it are left to overloads of their own.
template <class Range, class Element, class List>
using IfRange = std::enable_if_t<
    !std::is_base_of_v<List, Range> &&
    std::is_convertible_v<std::remove_pointer_t<decltype(std::data(std::declval<const Range&>()))> (*)[],
                          const Element (*)[]> &&
    std::is_convertible_v<decltype(std::size(std::declval<const Range&>())), std::size_t>>;

/// The number of elements of such a range, as a list counts them; it is below 2^32.
template <class Range>
constexpr unsigned int CountOf(const Range& range)
{
    return static_cast<unsigned int>(std::size(range));
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// The rule for overloads that take a pointer.

#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{

/// Lets an overload take part only for arguments P that are pointers themselves and convert to `Pointer`:
///
///     template <class P, class = IfRealPointer<P, const T*>>
///     void Add(P element);
///
/// A literal 0 is then a number and never a null pointer, and a vector, which converts to a pointer to its components,
/// is a vector.
template <class P, class Pointer>
using IfRealPointer = std::enable_if_t<std::is_pointer_v<P> && std::is_convertible_v<P, Pointer>>;

} // namespace Halmont::Orrin::CorvexMaths

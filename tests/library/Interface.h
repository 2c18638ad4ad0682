#pragma once

/// What the interface tests are written with. They name the public and protected members of each class, overload by
/// overload, so that programs that use them keep compiling and linking: a member that is gone, or has another
/// signature, stops the build. Nothing is called; what the members do is tested elsewhere.

#include "tests/support/Types.h"

#include <functional>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace CorvexTest
{

using Index = unsigned int;

/// Takes the addresses of members where no compiler leaves it out.
template <class Pointer>
void TakeAddresses(std::initializer_list<Pointer> members)
{
    for (const Pointer member : members) [[maybe_unused]] const volatile Pointer taken = member;
}

/// Names those overloads of members that have the types Members, of functions or fields, one list for each type. Their
/// addresses are taken, which needs a body in the library where the header has none. An inherited member counts as the
/// class's own.
template <class Class, class... Members>
struct Has
{
    explicit Has(std::initializer_list<Members Class::*>... members) { (TakeAddresses(members), ...); }
};

/// The same for static members.
template <class... Members>
void HasStatic(std::initializer_list<Members*>... members)
{
    (TakeAddresses(members), ...);
}

/// An argument that is a T and converts to no other arithmetic type.
template <class T>
struct Exactly
{
    template <class U, std::enable_if_t<std::is_same_v<U, T>, int> = 0>
    operator U() const;
};

/// Whether an object can be made of such arguments, scalars given as what they are.
template <class Class, class... Arguments>
constexpr bool Makes =
    std::is_constructible_v<Class,
                            std::conditional_t<std::is_arithmetic_v<Arguments>, Exactly<Arguments>, Arguments>...>;

/// Whether an object can be copied from a constant one, by construction and by an assignment that gives the object.
template <class Class>
constexpr bool Copies = std::is_copy_constructible_v<Class>&&
    std::is_same_v<decltype(std::declval<Class&>() = std::declval<const Class&>()), Class&>;

/// Whether the fields lie in memory in the order given.
template <class... Fields>
bool InOrder(const Fields&... fields)
{
    const void* previous = nullptr;
    return (... && (std::less<const void*>()(std::exchange(previous, &fields), &fields)));
}

} // namespace CorvexTest

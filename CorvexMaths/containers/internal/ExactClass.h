#pragma once

/// Whether an object is of a class itself and not of one derived from it. Internal.

#include <cstring>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Whether the object's class is `Class`, which derives from its static type or is it, by its table of virtual
/// functions: a derived class has none of type information where a program is compiled without it, so that `typeid` is
/// no choice. A false answer costs time alone; a true one is sure, for whatever shares the table shares the hooks.
template <class Class, class Base>
bool HasHooksOf(const Base& object)
{
    const Class plain;
    return std::memcmp(static_cast<const void*>(&plain), static_cast<const void*>(&object), sizeof(void*)) == 0;
}

/// The same for the static type itself.
template <class Class>
bool IsExactly(const Class& object)
{
    return HasHooksOf<Class>(object);
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

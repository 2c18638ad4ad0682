#pragma once

/// Whether an object is of a class itself and not of one derived from it. Internal.

#include <cstdint>
#include <cstring>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Which table of virtual functions an object has: its first word.
template <class Object>
std::uintptr_t GetTable(const Object& object)
{
    std::uintptr_t table;
    std::memcpy(&table, static_cast<const void*>(&object), sizeof(table));
    return table;
}

/// Whether the object's class is `Class`, which derives from its static type or is it, by its table of virtual
/// functions: a derived class has none of type information where a program is compiled without it, so that `typeid` is
/// no choice. A false answer costs time alone; a true one is sure, for whatever shares the table shares the hooks.
template <class Class, class Base>
bool HasHooksOf(const Base& object)
{
    // An object of the class is made once, as that takes longer than some of what the answer decides.
    static const std::uintptr_t plain = GetTable(Class());
    return GetTable(object) == plain;
}

/// The same for the static type itself.
template <class Class>
bool IsExactly(const Class& object)
{
    return HasHooksOf<Class>(object);
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

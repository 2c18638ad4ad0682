#pragma once

/// Whether an object is of a class itself and not of one derived from it. Internal.

#include <cstring>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Whether the object's class is `Class` itself, by its table of virtual functions: a derived class has none of type
/// information where a program is compiled without it, so that `typeid` is no choice. A false answer costs time alone;
/// a true one is sure, for whatever shares the table shares the hooks.
template <class Class>
bool IsExactly(const Class& object)
{
    const Class plain;
    return std::memcmp(static_cast<const void*>(&plain), static_cast<const void*>(&object), sizeof(void*)) == 0;
}

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

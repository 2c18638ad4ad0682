#pragma once

/// The order by `<` for the sorts of the standard library. Internal.

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// Compares by `<`. Being local to a source file it keeps what compilers make of a sort of vectors or pairs, whose
/// classes are exported, out of the library's symbols.
struct Ascending
{
    template <class Element>
    bool operator()(const Element& a, const Element& b) const
    {
        return a < b;
    }
};

} // namespace
} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// What a value that converts to the address of its first component does not do, although a pointer would.

#include <CorvexMaths/Forward.h>

#include <iosfwd>
#include <type_traits>

/// Deletes an operator between a class V and numbers, on either side.
#define CORVEX_NOT_WITH_NUMBERS(op, advice)                                                                            \
    template <class N>                                                                                                 \
    friend IfNumber<N> operator op(const V&, N) CORVEX_DELETED(advice);                                                \
    template <class N>                                                                                                 \
    friend IfNumber<N> operator op(N, const V&) CORVEX_DELETED(advice)

namespace Halmont::Orrin::CorvexMaths
{

/// Enables an operator for what C++ adds to pointers or compares with them: numbers, enumerators and null.
template <class N>
using IfNumber = std::enable_if_t<std::is_arithmetic_v<N> || std::is_enum_v<N> || std::is_null_pointer_v<N>>;

/// The empty base of the classes V that convert to a pointer: vectors, complex numbers and quaternions. The conversion
/// lets them be passed as arrays. Without this base it would also let them stand as conditions and be passed as `bool`,
/// be compared with numbers or by address, have numbers added to their address, and be printed as addresses. None of
/// that compiles; the compiler shows a line that says what to write instead. Where a function of yours is overloaded
/// for `bool` and for a pointer, say `&v.x`.
template <class V>
struct CORVEX_API NotAPointer
{
    /// @cond
    template <class B, class = std::enable_if_t<std::is_same_v<B, bool>>>
    operator B() CORVEX_DELETED("not a condition: compare it with a value, or test its length");
    template <class B, class = std::enable_if_t<std::is_same_v<B, bool>>>
    operator B() const CORVEX_DELETED("not a condition: compare it with a value, or test its length");

    friend void operator<=(const V&, const V&) CORVEX_DELETED("there is no such order: compare components or lengths");
    friend void operator>=(const V&, const V&) CORVEX_DELETED("there is no such order: compare components or lengths");
#ifdef __cpp_impl_three_way_comparison
    // Between bases, so that it does not stand in for the `<` of V.
    friend void operator<=>(const NotAPointer&, const NotAPointer&) CORVEX_DELETED("compare components or lengths");
#endif
    CORVEX_NOT_WITH_NUMBERS(==, "compare it with a value of its own class, or compare components");
    CORVEX_NOT_WITH_NUMBERS(!=, "compare it with a value of its own class, or compare components");
    CORVEX_NOT_WITH_NUMBERS(<, "compare components or lengths");
    CORVEX_NOT_WITH_NUMBERS(>, "compare components or lengths");
    CORVEX_NOT_WITH_NUMBERS(<=, "compare components or lengths");
    CORVEX_NOT_WITH_NUMBERS(>=, "compare components or lengths");

    // Found only where Stream.h is not included, whose operator fits V better than a base of V. Each on one line, which
    // the compiler shows.
    // clang-format off
    template <class C, class R>
    friend void operator<<(std::basic_ostream<C, R>&, const NotAPointer&) CORVEX_DELETED("include <CorvexMaths/Stream.h>");
    template <class C, class R>
    friend void operator<<(std::basic_ostream<C, R>&&, const NotAPointer&) CORVEX_DELETED("include <CorvexMaths/Stream.h>");
    // clang-format on
    /// @endcond
};

} // namespace Halmont::Orrin::CorvexMaths

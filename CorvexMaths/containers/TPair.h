#pragma once

/// TPair: two values ordered by the first.

#include <CorvexMaths/Forward.h>

namespace Halmont::Orrin::CorvexUtilities
{

/// Two values, ordered by the first alone: a list of pairs sorts by a key and carries what belongs to it along. Two
/// pairs of one key are neither less nor greater than each other, and yet equal only if their second members are.
///
/// Trivially copyable if both members are. Assignment copies both members.
template <class A, class B>
struct CORVEX_API TPair
{
    A first{};  ///< What orders the pair.
    B second{}; ///< What goes with it.

    /// Both members default-constructed: numbers are 0, and a TVector4 has a w of 1.
    TPair() = default;
    /// The two values as given.
    TPair(A firstValue, B secondValue) : first(firstValue), second(secondValue) {}

    /// Whether both members are exactly equal, by their own `==`; a NaN makes it false.
    bool operator==(const TPair<A, B>& other) const { return first == other.first && second == other.second; }
    /// Whether the first member is less than the other's, by its own `<`; the second plays no part.
    bool operator<(const TPair<A, B>& other) const { return first < other.first; }
    /// Whether the first member is greater than the other's, by its own `>`; the second plays no part.
    bool operator>(const TPair<A, B>& other) const { return first > other.first; }

    CORVEX_INCLUDE_STREAM_TO_PRINT(TPair);
};

} // namespace Halmont::Orrin::CorvexUtilities

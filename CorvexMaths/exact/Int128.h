#pragma once

/// Int128: a signed integer of 128 bits.

#include <CorvexMaths/Forward.h>

namespace Halmont::Orrin::CorvexMaths
{

/// A signed integer of 128 bits in two's complement: a plain value of two halves, `hi` times 2^64 plus `lo`.
///
/// Sums, differences and negations wrap silently. Products are formed of two integers of 64 bits, and so are exact.
/// Division and the conversion to `double` each have a peculiarity, told with them. An operand may be the object
/// itself.
struct CORVEX_API Int128
{
    unsigned long long lo; ///< The low half.
    long long hi;          ///< The high half, which carries the sign.

    /// A value of 64 bits, 0 unless given, with its sign extended: the high half is -1 for a negative value, else 0.
    Int128(long long value = 0) : lo(static_cast<unsigned long long>(value)), hi(value < 0 ? -1 : 0) {}
    /// The two halves as they are: the high one, which carries the sign, comes first.
    Int128(const long long& high, const unsigned long long& low) : lo(low), hi(high) {}
    /// A copy of the two halves.
    Int128(const Int128& other) = default;
    /// Copies the two halves.
    Int128& operator=(const Int128& other) = default;
    /// Takes a value of 64 bits, with its sign extended. The result is that value, not a reference to this object.
    long long operator=(const long long& value)
    {
        const long long taken = value; // which may be this object's high half
        *this = Int128(taken);
        return taken;
    }

    /// Whether both halves are equal.
    bool operator==(const Int128& other) const { return lo == other.lo && hi == other.hi; }
    /// Whether the halves are not both equal.
    bool operator!=(const Int128& other) const { return !(*this == other); }
    /// Whether this is less, signs considered.
    bool operator<(const Int128& other) const { return hi != other.hi ? hi < other.hi : lo < other.lo; }
    /// Whether this is greater, signs considered.
    bool operator>(const Int128& other) const { return other < *this; }
    /// Whether this is less or equal, signs considered.
    bool operator<=(const Int128& other) const { return !(*this > other); }
    /// Whether this is greater or equal, signs considered.
    bool operator>=(const Int128& other) const { return !(*this < other); }

    /// The sum; it wraps round silently at 2^127.
    Int128 operator+(const Int128& other) const
    {
        const unsigned long long low = lo + other.lo;
        const unsigned long long carry = low < lo ? 1 : 0;
        const unsigned long long high = static_cast<unsigned long long>(hi) + static_cast<unsigned long long>(other.hi);
        return Int128(static_cast<long long>(high + carry), low);
    }
    /// Adds a value, which may be this object; the sum wraps round silently at 2^127.
    Int128& operator+=(const Int128& other) { return *this = *this + other; }
    /// The difference, formed as the sum with the negated other; it wraps round silently at 2^127.
    Int128 operator-(const Int128& other) const { return *this + -other; }
    /// Subtracts a value, which may be this object; the difference wraps round silently at 2^127.
    Int128& operator-=(const Int128& other) { return *this = *this - other; }
    /// The negation. The least value, -2^127, has none and is its own.
    Int128 operator-() const
    {
        const unsigned long long complement = ~static_cast<unsigned long long>(hi);
        return Int128(static_cast<long long>(lo == 0 ? complement + 1 : complement), 0 - lo);
    }

    /// The quotient, truncated towards zero, but for one case: of values of equal magnitude and opposite signs it is 0,
    /// not -1. The least value, -2^127, which has no magnitude, gives 1 divided by itself and 0 with any other value on
    /// either side. Both operands stay as they are.
    ///
    /// A divisor of 0 throws a `const char*`, the character string "Int128 operator/: divide by zero". As that is no
    /// exception class, `catch (const char* message)` takes it and `catch (const std::exception&)` does not.
    Int128 operator/(const Int128& other) const;

    /// The exact product of two values of 64 bits; it cannot overflow. There is no product of two Int128.
    static Int128 Mul(long long a, long long b);

    /// The value as a `double`. The halves are converted, scaled and added, each step rounded, so that the result need
    /// not be the nearest `double`. A negative value whose low half is not 0 is taken by its complement and so comes
    /// out one closer to zero than it is, as far as a `double` shows it: -1 gives -0.0 and -2 gives -1.0. One whose low
    /// half is 0 does not: -2^64 is exact.
    double AsDouble() const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(Int128);
};

} // namespace Halmont::Orrin::CorvexMaths

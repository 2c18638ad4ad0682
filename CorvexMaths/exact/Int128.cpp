#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/exact/internal/PortableWide.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

#if defined(__SIZEOF_INT128__)

// The compiler's own integers of twice the width, which programs that keep to the standard cannot name.
__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 UnsignedWide;

/// The bits of a value.
UnsignedWide ToBits(const Int128& value)
{
    return static_cast<UnsignedWide>(static_cast<unsigned long long>(value.hi)) << 64 | value.lo;
}

/// The value of bits.
Int128 FromBits(UnsignedWide bits)
{
    return Int128(static_cast<long long>(static_cast<unsigned long long>(bits >> 64)),
                  static_cast<unsigned long long>(bits));
}

Int128 Product(long long a, long long b)
{
    return FromBits(static_cast<UnsignedWide>(static_cast<Wide>(a) * static_cast<Wide>(b)));
}

Int128 Quotient(const Int128& dividend, const Int128& divisor)
{
    return FromBits(ToBits(dividend) / ToBits(divisor));
}

#else

Int128 Product(long long a, long long b)
{
    return Kernels::PortableProduct(a, b);
}

Int128 Quotient(const Int128& dividend, const Int128& divisor)
{
    return Kernels::PortableQuotient(dividend, divisor);
}

#endif

} // namespace

Int128 Int128::operator/(const Int128& other) const
{
    if (other == Int128(0)) throw "Int128 operator/: divide by zero";

    // The comparison is signed and comes before the signs are put back: magnitudes that are equal give 1 only if the
    // values are. The least value stays negative: as a dividend it ends here, as a divisor its bits exceed any other.
    const Int128 dividend = hi < 0 ? -*this : *this;
    const Int128 divisor = other.hi < 0 ? -other : other;
    if (dividend <= divisor) return Int128(*this == other ? 1 : 0);

    const Int128 quotient = Quotient(dividend, divisor);
    return (hi < 0) != (other.hi < 0) ? -quotient : quotient;
}

Int128 Int128::Mul(long long a, long long b)
{
    return Product(a, b);
}

double Int128::AsDouble() const
{
    constexpr double weight = 18446744073709551616.0; // of the high half, 2^64
    if (hi >= 0) return static_cast<double>(hi) * weight + static_cast<double>(lo);
    if (lo == 0) return static_cast<double>(hi) * weight;
    return -(static_cast<double>(~hi) * weight + static_cast<double>(~lo));
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// Exact sums of products of `double`s of any size, denormal ones too, in one long integer (U. Kulisch's accumulator).

#include <cstdint>
#include <cstring>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A sum of products of `degree` finite numbers each. It serves where expansions would overflow or underflow.
///
/// A finite number is an integer below 2^53 times a power of two from 2^-1074 to 2^971. A product is then an integer
/// below 2^(2098 degree) in units of 2^(-1074 degree), and the sum is kept as such, in two's complement, with room for
/// 2^63 of them.
template <unsigned int degree>
class LongAccumulator
{
public:
    /// Adds the product of the factors, or subtracts it where `sign` is below 0.
    void Add(int sign, const double (&factors)[degree])
    {
        std::uint32_t product[productWords] = {1};
        unsigned int shift = 0;
        bool isNegative = sign < 0;
        for (const double factor : factors) {
            std::uint64_t bits;
            std::memcpy(&bits, &factor, sizeof(bits));
            isNegative ^= (bits >> 63) != 0;
            const unsigned int exponent = static_cast<unsigned int>(bits >> 52) & 0x7ffu;
            std::uint64_t mantissa = bits & 0xfffffffffffffu;
            if (exponent != 0) {
                mantissa |= std::uint64_t(1) << 52;
                shift += exponent - 1;
            }
            Multiply(product, mantissa);
        }
        AddShifted(product, shift, isNegative);
    }

    /// The sign of the sum.
    int Sign() const
    {
        if (words[wordCount - 1] >> 31) return -1;
        for (const std::uint32_t word : words)
            if (word != 0) return 1;
        return 0;
    }

private:
    static constexpr unsigned int productWords = (53 * degree + 31) / 32 + 2;
    static constexpr unsigned int wordCount = (2098 * degree + 31) / 32 + 4;

    /// The sum, its lowest word first.
    std::uint32_t words[wordCount] = {};

    static void Multiply(std::uint32_t (&product)[productWords], std::uint64_t factor)
    {
        const std::uint64_t halves[] = {factor & 0xffffffffu, factor >> 32};
        std::uint32_t result[productWords] = {};
        for (unsigned int h = 0; h < 2; ++h) {
            std::uint64_t carry = 0;
            for (unsigned int i = 0; i + h < productWords; ++i) {
                carry += result[i + h] + halves[h] * product[i];
                result[i + h] = static_cast<std::uint32_t>(carry);
                carry >>= 32;
            }
        }
        std::memcpy(product, result, sizeof(result));
    }

    /// Adds or subtracts the product, moved up by bits. To subtract is to add the complement and one.
    void AddShifted(const std::uint32_t (&product)[productWords], unsigned int shift, bool isNegative)
    {
        const std::uint32_t flip = isNegative ? 0xffffffffu : 0;
        const unsigned int offset = shift / 32;
        const unsigned int bits = shift % 32;
        std::uint64_t carry = isNegative ? 1 : 0;
        std::uint64_t pending = 0;
        for (unsigned int i = 0; i + offset < wordCount; ++i) {
            const std::uint64_t word = i < productWords ? product[i] : 0;
            pending |= word << bits;
            carry += words[i + offset] + std::uint64_t(static_cast<std::uint32_t>(pending) ^ flip);
            words[i + offset] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
            pending >>= 32;
        }
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// What a fuzz target makes of the bytes it is given.
///
/// Every value is decoded so that it may be passed on as it is: indices in range, sizes small, scalars of the kinds in
/// which faults hide. When the bytes are used up, every further value is 0.

#include <CorvexMaths/CorvexMaths.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace CorvexFuzz
{

using namespace Halmont::Orrin::CorvexMaths;

class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}

    bool IsUsedUp() const { return next == end; }

    unsigned int Byte() { return next == end ? 0 : *next++; }

    bool Flag() { return (Byte() & 1) != 0; }

    /// From 0 to below `bound`, which is at least 1.
    unsigned int Below(unsigned int bound) { return (bound <= 256 ? Byte() : Byte() * 256 + Byte()) % bound; }

    /// From `low` to `high`, both included.
    unsigned int Between(unsigned int low, unsigned int high) { return low + Below(high - low + 1); }

    /// A finite scalar: mostly small grid values, which make ties, duplicates and collinear points; also such values a
    /// few tolerances apart, and finer and larger ones.
    template <class T>
    T Finite()
    {
        const unsigned int kind = Byte();
        const T grid = static_cast<T>(static_cast<int>(Byte()) - 128) / 8;
        switch (kind % 8) {
        case 0:
            return grid + static_cast<T>(static_cast<int>(kind / 8) - 16) * Numbers::commonTolerance<T> / 4;
        case 1:
            return grid + static_cast<T>(Byte()) / 256;
        case 2:
            return grid * 1000;
        case 3:
            return grid / 1000;
        default:
            return grid;
        }
    }

    /// Any scalar: a finite one as above, or any bits, NaN, infinities and denormals among them.
    template <class T>
    T Scalar()
    {
        const unsigned int kind = Byte();
        if (kind % 8 != 0) return Finite<T>();
        switch (kind / 8 % 8) {
        case 0:
            return std::numeric_limits<T>::quiet_NaN();
        case 1:
            return std::numeric_limits<T>::infinity();
        case 2:
            return -std::numeric_limits<T>::infinity();
        case 3:
            return -T(0);
        case 4:
            return std::numeric_limits<T>::denorm_min() * static_cast<T>(Byte());
        case 5:
            return std::numeric_limits<T>::max();
        default:
            return Bits<T>();
        }
    }

    template <class Vector, class T>
    Vector FiniteVector()
    {
        Vector vector;
        for (std::size_t k = 0; k < sizeof(Vector) / sizeof(T); ++k) static_cast<T*>(vector)[k] = Finite<T>();
        return vector;
    }

    template <class Vector, class T>
    Vector AnyVector()
    {
        Vector vector;
        for (std::size_t k = 0; k < sizeof(Vector) / sizeof(T); ++k) static_cast<T*>(vector)[k] = Scalar<T>();
        return vector;
    }

private:
    template <class T>
    T Bits()
    {
        unsigned char bytes[sizeof(T)];
        for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(Byte());
        T value;
        std::memcpy(&value, bytes, sizeof(T));
        return value;
    }

    const std::uint8_t* next;
    const std::uint8_t* end;
};

} // namespace CorvexFuzz

#pragma once

/// What a fuzz target makes of the bytes it is given.
///
/// Every value is decoded so that it may be passed on as it is: indices in range, sizes small, scalars of the kinds in
/// which faults hide. When the bytes are used up, every further value is 0.

#include <CorvexMaths/CorvexMaths.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
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

    /// A tolerance: none, the common one, or any scalar.
    template <class T>
    T Tolerance()
    {
        const unsigned int kind = Byte();
        return kind % 4 == 0 ? Scalar<T>() : kind % 4 == 1 ? T(0) : Numbers::commonTolerance<T>;
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

/// Stops the target where something that always holds does not.
inline void Require(bool holds)
{
    if (!holds) __builtin_trap();
}

/// Whether two values are the same byte for byte, NaN and the sign of 0 included. They must have no padding.
template <class Value>
bool HaveSameBits(const Value& a, const Value& b)
{
    return std::memcmp(static_cast<const void*>(&a), static_cast<const void*>(&b), sizeof(Value)) == 0;
}

/// Whether two scalars are the same number: bits, but for NaN, whose sign and payload depend on the order in which the
/// compiler puts the operands of a sum or a product.
template <class T>
bool IsSameNumber(T a, T b)
{
    return (a != a && b != b) || HaveSameBits(a, b);
}

/// The same for arrays, and for vectors and matrices by their scalars.
template <class T>
bool AreSameNumbers(const T* a, const T* b, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i)
        if (!IsSameNumber(a[i], b[i])) return false;
    return true;
}
template <template <class> class Flat, class T>
bool AreSameNumbers(const Flat<T>& a, const Flat<T>& b)
{
    return AreSameNumbers(reinterpret_cast<const T*>(&a), reinterpret_cast<const T*>(&b), sizeof(a) / sizeof(T));
}

/// An operation of a sequence, and the name by which CORVEX_FUZZ_TRACE=1 in the environment shows it.
template <class State>
struct Operation
{
    const char* name;
    void (*run)(State& state, Input& input);
};

/// Runs a sequence of operations on one state until the bytes are used up: a byte chooses an operation out of the table
/// `State::operations`, which takes its arguments from the bytes that follow. After each one `Check` looks at what
/// always holds of the state.
template <class State>
void RunSequence(Input& input)
{
    static const bool isTraced = std::getenv("CORVEX_FUZZ_TRACE") != nullptr;
    State state;
    while (!input.IsUsedUp()) {
        const Operation<State>& operation = State::operations[input.Below(std::size(State::operations))];
        if (isTraced) std::fprintf(stderr, "%s\n", operation.name);
        operation.run(state, input);
        state.Check();
    }
}

/// Runs a sequence on one of several states, which the first byte chooses.
template <class... States>
int RunOneOf(const std::uint8_t* data, std::size_t size)
{
    static constexpr void (*runs[])(Input&) = {&RunSequence<States>...};
    Input input(data, size);
    runs[input.Below(sizeof...(States))](input);
    return 0;
}

} // namespace CorvexFuzz

#pragma once

/// A number that stands for the bits of everything that it is given.
///
/// `Digest` absorbs values of every class of the library: scalars by their bits, any NaN as one value, objects by all
/// their fields, protected ones too. No number depends on the byte order, the widths of integers or the addresses of a
/// machine. Two objects are the same to the bit if they have the same digest.

#include <tests/support/Source.h>

#include <CorvexMaths/CorvexMaths.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

namespace CorvexTest
{

class Digest
{
public:
    /// Absorbs a value; the order of values counts. A chain of these is evaluated from the left, as the arguments of a
    /// call need not be, so that its operands may change one another.
    template <class Value>
    Digest& operator<<(const Value& value)
    {
        Absorb(value);
        return *this;
    }

    /// Absorbs `n` values from an array.
    template <class Value>
    void TakeArray(const Value* values, std::size_t n)
    {
        for (std::size_t i = 0; i < n; ++i) Absorb(values[i]);
    }

    std::uint64_t Get() const { return state; }

    /// Whether the room of lists counts, and not only what is in them.
    bool takesCapacities = true;

private:
    template <class... Values>
    void Take(const Values&... values)
    {
        (Absorb(values), ...);
    }

    void Mix(std::uint64_t word)
    {
        state = (state ^ word) * 0x9e3779b97f4a7c15u;
        state ^= state >> 29;
    }

    template <class Value, class = std::enable_if_t<std::is_arithmetic_v<Value> || std::is_enum_v<Value>>>
    void Absorb(Value value)
    {
        if constexpr (!std::is_floating_point_v<Value>)
            Mix(static_cast<std::uint64_t>(value));
        else if (value != value)
            Mix(0x7ff8dead7ff8dead);
        else {
            // The integer of the same bits, on machines of either byte order.
            std::conditional_t<sizeof(Value) == 4, std::uint32_t, std::uint64_t> bits;
            std::memcpy(&bits, &value, sizeof(value));
            Mix(bits);
        }
    }

    /// Pointers into a pool, by their place.
    template <class Object>
    void Absorb(Object* const& pointer)
    {
        const auto* const place = reinterpret_cast<const unsigned char*>(pointer);
        Mix(static_cast<std::uint64_t>((place - Pool<Object>::places[0]) /
                                       static_cast<std::ptrdiff_t>(sizeof(Object))));
    }

    /// Vectors, matrices and most primitives are blocks of scalars.
    template <template <class> class Block, class T, class = std::enable_if_t<std::is_trivially_copyable_v<Block<T>>>>
    void Absorb(const Block<T>& block)
    {
        static_assert(sizeof(Block<T>) % sizeof(T) == 0);
        T values[sizeof(Block<T>) / sizeof(T)];
        std::memcpy(values, static_cast<const void*>(&block), sizeof(values));
        TakeArray(values, sizeof(values) / sizeof(T));
    }

    template <class Value>
    void Absorb(const std::vector<Value>& values)
    {
        Take(values.size());
        TakeArray(values.data(), values.size());
    }

    template <class T>
    void Absorb(const TSphere<T>& ball)
    {
        Take(ball.sphere);
    }

    template <class T>
    void Absorb(const TCylinder<T>& cylinder)
    {
        Take(cylinder.centre, cylinder.axis, cylinder.radius, cylinder.height);
    }

    template <class First, class Second>
    void Absorb(const TPair<First, Second>& pair)
    {
        Take(pair.first, pair.second);
    }

    void Absorb(const Int128& value) { Take(value.hi, value.lo); }

    template <class Element>
    void Absorb(const TList<Element>& list)
    {
        struct Open : TList<Element>
        {
            static void Show(const TList<Element>& shown, Digest& digest)
            {
                digest << shown.*(&Open::count) << shown.*(&Open::growSize);
                if (digest.takesCapacities) digest << shown.*(&Open::capacity);
                digest << shown.*(&Open::useExponentialGrowth);
            }
        };
        Open::Show(list, *this);
        TakeArray(list.GetStream(), list.GetCount());
    }

    template <class Element>
    void Absorb(const TMap<Element>& map)
    {
        Take(map.GetWidth(), map.GetHeight());
        for (unsigned int column = 0; column < map.GetWidth(); ++column)
            for (unsigned int row = 0; row < map.GetHeight(); ++row) Absorb(map[column][row]);
    }

    template <class T>
    void Absorb(const TMatrixMxN<T>& matrix)
    {
        Take(matrix.GetM(), matrix.GetN());
        for (unsigned int row = 0; row < matrix.GetM(); ++row) TakeArray(matrix[row], matrix.GetN());
    }

    template <class T>
    void Absorb(const TMatrixFragment<T>& fragment)
    {
        Take(fragment.values, fragment.rows, fragment.columns);
    }

    template <class T>
    void Absorb(const TCCSMatrixMxN<T>& matrix)
    {
        Take(matrix.rowCount, matrix.columnCount, matrix.elementCount);
        for (int column = 0; column < matrix.columnCount; ++column)
            Take(matrix.columnValues[column], matrix.columnRows[column]);
    }

    template <class T>
    void Absorb(const TCRSMatrixMxN<T>& matrix)
    {
        Take(matrix.matrixType, matrix.rowCount, matrix.columnCount, matrix.capacity, matrix.elementCount);
        const auto used = static_cast<std::size_t>(matrix.elementCount);
        TakeArray(matrix.values, used);
        TakeArray(matrix.columnIndices, used);
        if (matrix.rowStarts != nullptr) TakeArray(matrix.rowStarts, static_cast<std::size_t>(matrix.rowCount) + 1);
    }

    template <class T>
    void Absorb(const TSpiral3<T>& spiral)
    {
        Take(spiral.points);
    }

    template <class T, template <class> class V>
    void Absorb(const TPointSet<T, V>& set)
    {
        struct Open : TPointSet<T, V>
        {
            static bool KeepsBox(const TPointSet<T, V>& shown) { return shown.*(&Open::keepBox); }
        };
        Absorb(static_cast<const TList<V<T>>&>(set));
        Take(set.GetBoundingBox(), Open::KeepsBox(set));
    }

    template <class T, template <class> class V>
    void Absorb(const TParameterization<T, V>& line)
    {
        struct Open : TParameterization<T, V>
        {
            static void Show(const TParameterization<T, V>& shown, Digest& digest)
            {
                digest << shown.*(&Open::parameters) << shown.*(&Open::length);
            }
        };
        Absorb(static_cast<const TPointSet<T, V>&>(line));
        Open::Show(line, *this);
    }

    template <class T, template <class> class V>
    void Absorb(const TPolygon<T, V>& polygon)
    {
        struct Open : TPolygon<T, V>
        {
            static const TList<TPair<T, V<T>>>& Sorted(const TPolygon<T, V>& shown)
            {
                return shown.*(&Open::sortedList);
            }
        };
        Absorb(static_cast<const TPointSet<T, V>&>(polygon));
        Absorb(Open::Sorted(polygon));
    }

    template <class T, template <class> class V>
    void Absorb(const TBSpline<T, V>& spline)
    {
        struct Open : TBSpline<T, V>
        {
            static void Show(const TBSpline<T, V>& shown, Digest& digest)
            {
                digest << shown.*(&Open::knotCount) << shown.*(&Open::coefficientCount) << shown.*(&Open::knots)
                       << shown.*(&Open::coefficients);
            }
        };
        Absorb(static_cast<const TPointSet<T, V>&>(spline));
        Open::Show(spline, *this);
    }

    std::uint64_t state = 0x243f6a8885a308d3u;
};

/// Whether two values have the same bits, any NaN being equal to any other.
template <class Value, class Other>
bool AreSame(const Value& a, const Other& b)
{
    Digest left, right;
    left << a;
    right << b;
    return left.Get() == right.Get();
}

} // namespace CorvexTest

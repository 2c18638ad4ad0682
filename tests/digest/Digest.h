#pragma once

/// A number that stands for the bits of everything an operation leaves behind.
///
/// `Digest` absorbs values of every class of the library: scalars by their bits, any NaN as one value, objects by all
/// their fields, protected ones too. `Report` collects a line for each operation and instantiation.

#include <CorvexMaths/CorvexMaths.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace CorvexDigest
{

using namespace Halmont::Orrin::CorvexMaths;

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

    /// Pointers are absorbed as distances from this one.
    static inline const void* origin = nullptr;

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
            std::uint64_t bits = 0;
            std::memcpy(&bits, &value, sizeof(value));
            Mix(bits);
        }
    }

    template <class Object>
    void Absorb(Object* const& pointer)
    {
        Mix(reinterpret_cast<std::uintptr_t>(pointer) - reinterpret_cast<std::uintptr_t>(origin));
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
                digest << shown.*(&Open::count) << shown.*(&Open::growSize) << shown.*(&Open::capacity)
                       << shown.*(&Open::useExponentialGrowth);
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

/// The functions of the C library that an operation rests on. Only square roots are the same everywhere.
enum class Functions
{
    Exact,
    Trigonometric
};

/// The lines of a run, one for each operation and instantiation.
class Report
{
public:
    struct Line
    {
        std::string name;
        std::uint64_t digest;
        Functions functions;
    };

    /// Adds the line of an operation: `run(digest)` fills it.
    template <class Run>
    void Add(const std::string& name, Run run, Functions functions = Functions::Exact)
    {
        Digest digest;
        run(digest);
        lines.push_back({name, digest.Get(), functions});
    }

    /// The combinations of the elements of some pools, for operations to be run on.
    template <class... Elements>
    auto Over(const std::vector<Elements>&... pools);

    std::vector<Line> lines;
};

/// Adds lines of operations that are run on every combination of the elements of some pools, each time on copies.
template <class... Elements>
class Combinations
{
public:
    Combinations(Report& target, const std::vector<Elements>&... inputs) : report(target), pools(inputs...) {}

    /// Adds the line of an operation: `run(digest, a, b ...)`.
    template <class Run>
    void Add(const std::string& name, Run run, Functions functions = Functions::Exact) const
    {
        // The loops are compiled once for all operations over the same types, which call them by a plain function.
        AddCall(name,
                {&run, [](void* called, Digest& digest,
                          Elements&... elements) { (*static_cast<Run*>(called))(digest, elements...); }},
                functions);
    }

    template <class Run>
    void AddTrigonometric(const std::string& name, Run run) const
    {
        Add(name, run, Functions::Trigonometric);
    }

private:
    struct Call
    {
        void* run;
        void (*function)(void*, Digest&, Elements&...);
    };

    void AddCall(const std::string& name, Call call, Functions functions) const
    {
        report.Add(
            name, [&](Digest& digest) { Combine(call, digest); }, functions);
    }

    template <class... Chosen>
    void Combine(Call call, Digest& digest, const Chosen&... chosen) const
    {
        if constexpr (sizeof...(Chosen) == sizeof...(Elements))
            [&](Elements... copies) { call.function(call.run, digest, copies...); }(chosen...);
        else
            for (const auto& element : std::get<sizeof...(Chosen)>(pools)) Combine(call, digest, chosen..., element);
    }

    Report& report;
    std::tuple<const std::vector<Elements>&...> pools;
};

template <class... Elements>
auto Report::Over(const std::vector<Elements>&... pools)
{
    return Combinations<Elements...>(*this, pools...);
}

/// The object itself, where a compiler would warn of an argument that is the target.
template <class Value>
Value& Same(Value& value)
{
    return value;
}

/// The name of a scalar type, and of a class with its arguments: "TPolygon<double,TVector3>".
template <class T>
std::string NameOf()
{
    return std::is_same_v<T, float> ? "float" : "double";
}

template <class T>
std::string NameOf(const std::string& name)
{
    return name + "<" + NameOf<T>() + ">";
}

template <class T, template <class> class V>
std::string NameOf(const std::string& name)
{
    return name + "<" + NameOf<T>() + ",TVector" + std::to_string(sizeof(V<T>) / sizeof(T)) + ">";
}

/// Calls a generic function once for each scalar: `work(T())`.
template <class Work>
void ForScalars(Work work)
{
    work(float());
    work(double());
}

// Each family adds its lines, in a file of its own.
void DigestContainers(Report& report);
void DigestVectors(Report& report);
void DigestMatrices(Report& report);
void DigestSparse(Report& report);
void DigestPrimitives(Report& report);
void DigestPointSets(Report& report);
void DigestPolygons(Report& report);
void DigestSplines(Report& report);
void DigestExact(Report& report);

} // namespace CorvexDigest

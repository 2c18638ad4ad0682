#pragma once

/// Values drawn from bytes: those that a fuzzer makes up, or those of a generator, the same on every machine.
///
/// Every value may be passed on as it is: sizes small, scalars of the kinds on which geometry fails. What depends on
/// several draws makes them in separate statements, since the arguments of a call are evaluated in any order. No value
/// comes from a function of the C library that rounds differently elsewhere.

#include <CorvexMaths/CorvexMaths.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <type_traits>
#include <vector>

namespace CorvexTest
{

using namespace Halmont::Orrin::CorvexMaths;

/// The scalar of a vector, a matrix or a primitive.
template <class Block>
struct ScalarOfBlock;
template <template <class> class Block, class T>
struct ScalarOfBlock<Block<T>>
{
    using Type = T;
};
template <class Block>
using ScalarOf = typename ScalarOfBlock<Block>::Type;

class Source
{
public:
    /// The bytes given, then zeros.
    Source(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}
    /// Bytes without end by the generator SplitMix64 (G. Steele, D. Lea, C. Flood, 2014).
    explicit Source(std::uint64_t seed) : isEndless(true), state(seed) {}

    bool IsEndless() const { return isEndless; }
    bool IsUsedUp() const { return !isEndless && next == end; }

    unsigned int Byte()
    {
        if (!isEndless) return next == end ? 0 : *next++;
        if (left == 0) {
            word = state += 0x9e3779b97f4a7c15u;
            word = (word ^ (word >> 30)) * 0xbf58476d1ce4e5b9u;
            word = (word ^ (word >> 27)) * 0x94d049bb133111ebu;
            word ^= word >> 31;
            left = 8;
        }
        --left;
        return static_cast<unsigned int>(word >> (8 * left) & 255);
    }

    bool Flag() { return (Byte() & 1) != 0; }

    /// From 0 to below `bound`, which is at least 1.
    unsigned int Below(unsigned int bound)
    {
        unsigned int value = Byte();
        if (bound > 256) value = value * 256 + Byte();
        return value % bound;
    }

    /// From `low` to `high`, both included.
    unsigned int Between(unsigned int low, unsigned int high) { return low + Below(high - low + 1); }

    /// A count up to `most`: a few as a rule, else one on a side of a lane, of a block or of many blocks. Bytes of a
    /// fuzzer give no more than 65, so that it may try many.
    unsigned int Size(unsigned int most)
    {
        static constexpr unsigned int sizes[] = {15, 16, 17, 31, 33, 40, 63, 64, 65, 129, 300, 700, 1100, 2100, 4200};
        if (!isEndless && most > 65) most = 65;
        const unsigned int kind = Byte();
        unsigned int size = kind / 4 % 12;
        if (kind % 4 == 0) {
            unsigned int count = 0;
            while (count < std::size(sizes) && sizes[count] <= most) ++count;
            if (count > 0) size = sizes[kind / 4 % count];
        }
        return size < most ? size : most;
    }

    /// A source for many values: a generator seeded from this one's bytes.
    Source Fork()
    {
        std::uint64_t seed = 0;
        for (unsigned int i = 0; i < (isEndless ? 7u : 1u); ++i) seed = seed << 8 | Byte();
        return Source(seed);
    }

    /// From -1 to below 1, on a grid that `float` holds exactly.
    template <class T>
    T Unit()
    {
        const int high = static_cast<int>(Byte());
        return static_cast<T>(high * 256 + static_cast<int>(Byte()) - 32768) / 32768;
    }

    /// A number of any exponent.
    template <class T>
    T Extreme()
    {
        const unsigned int range = std::numeric_limits<T>::max_exponent;
        const T unit = Unit<T>();
        return std::ldexp(unit, static_cast<int>(Below(2 * range)) - static_cast<int>(range));
    }

    /// A finite scalar: mostly small grid values, which make ties, duplicates and collinear points; also values some
    /// tolerances apart, at a tolerance or a unit in the last place beside it, finer and larger ones.
    template <class T>
    T Finite()
    {
        const T tolerance = Numbers::commonTolerance<T>;
        const unsigned int kind = Byte();
        const int offset = static_cast<int>(kind / 8) - 16, drawn = static_cast<int>(Byte()) - 128;
        const T grid = static_cast<T>(drawn) / 8;
        switch (kind % 8) {
        case 0:
            return grid + static_cast<T>(offset) * tolerance / 4;
        case 1:
            return grid + static_cast<T>(Byte()) / 256;
        case 2:
            return offset < 0 ? grid * 1000 : offset < 12 ? grid / 1000 : grid * T(1e8);
        case 3: {
            const T at = static_cast<T>(drawn % 3) + (offset < 0 ? tolerance : -tolerance);
            return offset % 3 == 0 ? at : std::nextafter(at, offset % 3 == 1 ? T(4) : T(-4));
        }
        case 4:
        case 5:
            return static_cast<T>(drawn % 4);
        default:
            return grid;
        }
    }

    /// Any scalar: a finite one, now and then a NaN, an infinity, a zero of either sign or a number of any exponent.
    template <class T>
    T Scalar()
    {
        using Limits = std::numeric_limits<T>;
        static constexpr T rare[] = {
            Limits::quiet_NaN(),  Limits::infinity(), -Limits::infinity(), T(0),          -T(0),
            Limits::denorm_min(), Limits::min(),      Limits::max(),       -Limits::max()};
        const unsigned int kind = Byte();
        if (kind % 16 != 0) return Finite<T>();
        return kind / 16 < std::size(rare) ? rare[kind / 16] : Extreme<T>();
    }

    /// A tolerance: the common one as a rule, none, or any scalar.
    template <class T>
    T Tolerance()
    {
        const unsigned int kind = Byte();
        return kind % 4 == 0 ? Scalar<T>() : kind % 4 == 1 ? T(0) : Numbers::commonTolerance<T>;
    }

    /// A vector, or whatever consists of scalars: of a coarse grid, of finite or of any scalars.
    template <class Block>
    Block Vector()
    {
        using T = ScalarOf<Block>;
        const unsigned int kind = Byte() % 4;
        return Vector<Block>(kind == 0 ? &Source::Coarse<T> : kind == 1 ? &Source::Scalar<T> : &Source::Finite<T>);
    }
    template <class Block, class T = ScalarOf<Block>>
    Block Vector(T (Source::*draw)())
    {
        T values[sizeof(Block) / sizeof(T)];
        for (T& value : values) value = (this->*draw)();
        Block block;
        std::memcpy(static_cast<void*>(&block), values, sizeof(block));
        return block;
    }

    /// One of -1, 0, 1 and 2, on which most points share lines and planes.
    template <class T>
    T Coarse()
    {
        return static_cast<T>(static_cast<int>(Byte() % 4) - 1);
    }

private:
    const std::uint8_t* next = nullptr;
    const std::uint8_t* end = nullptr;
    bool isEndless = false;
    std::uint64_t state = 0, word = 0;
    unsigned int left = 0;
};

/// Places for objects that are pointed at and never looked at.
template <class Object>
struct Pool
{
    alignas(Object) static inline unsigned char places[8][sizeof(Object)];
};

/// Point `i` of a shape of `n` in the plane.
enum class Shape
{
    Round,    ///< on a circle of a radius, or in and out by turns
    Comb,     ///< rectilinear, collinear neighbours, reflex corners
    Line,     ///< along a straight line, a few tolerances off it
    Coarse,   ///< crossings, duplicates, collinear runs
    Finite,   ///< scattered, near ties among them
    Any,      ///< with NaN and infinities among them
    Repeated, ///< one point
    Zeros,    ///< on three places, with zeros of either sign
    Level,    ///< at heights a tolerance apart, or nearly vertical
    Extreme   ///< coordinates of any exponent
};

template <class T>
TVector2<T> DrawShapePoint(Source& in, Shape shape, unsigned int i, unsigned int n, unsigned int variant)
{
    const T step = static_cast<T>(i);
    switch (shape) {
    case Shape::Round: {
        // By the rational parameter of the circle: no sine is needed.
        const T t = step / static_cast<T>(n), u = (t < T(0.5) ? t : t - T(0.5)) * 4 - 1, square = u * u;
        T radius = t < T(0.5) ? T(10) : T(-10);
        if (variant % 4 == 1 && i % 2 == 1) radius *= T(0.375);
        if (variant % 4 == 2) radius *= static_cast<T>(1 + in.Byte() / 64);
        const T x = 2 * u / (1 + square) * radius, y = (square - 1) / (1 + square) * radius;
        return TVector2<T>(variant % 8 < 4 ? x : -x, y);
    }
    case Shape::Comb:
        if (i + 2 >= n) return TVector2<T>(i + 2 == n ? step : T(0), T(-3));
        return TVector2<T>(static_cast<T>(i / 2), i / 2 % 2 == i % 2 ? T(0) : T(4));
    case Shape::Line: {
        const T place = static_cast<T>(in.Byte() / 8);
        const T off = variant % 2 == 0 ? T(0) : static_cast<T>(in.Byte() % 4) * Numbers::commonTolerance<T>;
        return TVector2<T>(place, place * static_cast<T>(variant % 8) / 2 + off);
    }
    case Shape::Repeated:
        return TVector2<T>(T(1.5), T(-0.25));
    case Shape::Zeros: {
        static constexpr T values[] = {T(0), -T(0), T(-1)};
        const T x = values[in.Below(3)];
        return TVector2<T>(x, values[in.Below(3)]);
    }
    case Shape::Level: {
        const T along = in.Unit<T>() * 2, off = static_cast<T>(in.Below(9)) * static_cast<T>(5e-7f);
        return variant % 2 == 0 ? TVector2<T>(along, off) : TVector2<T>(off, along);
    }
    default:
        return in.Vector<TVector2<T>>(shape == Shape::Coarse   ? &Source::Coarse<T>
                                      : shape == Shape::Finite ? &Source::Finite<T>
                                      : shape == Shape::Any    ? &Source::Scalar<T>
                                                               : &Source::Extreme<T>);
    }
}

/// `n` points of a shape; the plane is lifted with a slope or by drawn heights, and the fourth component is 1 or drawn.
template <class T, template <class> class V>
std::vector<V<T>> DrawPoints(Source& in, Shape shape, unsigned int n)
{
    const unsigned int variant = in.Byte();
    Source many = in.Fork();
    Source& from = n > 12 ? many : in;
    std::vector<V<T>> points;
    for (unsigned int i = 0; i < n; ++i) {
        const TVector2<T> flat = DrawShapePoint<T>(from, shape, i, n, variant);
        T values[4] = {flat.x, flat.y, (flat.x - flat.y) / 8, T(1)};
        for (unsigned int k = 2; variant % 3 == 0 && k < sizeof(V<T>) / sizeof(T); ++k) values[k] = from.Finite<T>();
        points.push_back(V<T>(static_cast<const T*>(values)));
    }
    return points;
}

template <class T, template <class> class V>
std::vector<V<T>> DrawPoints(Source& in, unsigned int most)
{
    const auto shape = static_cast<Shape>(in.Byte() % 10);
    return DrawPoints<T, V>(in, shape, in.Size(most));
}

/// A dense matrix of one of the kinds that the decompositions tell apart; a large one follows from few bytes.
template <class T>
TMatrixMxN<T> DrawMatrix(Source& in, unsigned int rowCount, unsigned int columnCount)
{
    enum
    {
        Random,
        Ties,
        Any,
        Identity,
        Zero,
        Symmetric,
        RankOne,
        Graded,
        Extreme,
        ZeroRow,
        Repeated,
        Spoilt,
        kinds
    };
    const unsigned int kind = in.Byte() % kinds;
    Source many = in.Fork();
    Source& from = rowCount * columnCount > 9 ? many : in;
    TMatrixMxN<T> matrix(rowCount, columnCount);
    T scale(8);
    for (unsigned int c = 0; c < columnCount; ++c, scale /= 16)
        for (unsigned int r = 0; r < rowCount; ++r)
            matrix[r][c] = kind == Ties                               ? from.Coarse<T>()
                           : kind == Any                              ? from.Finite<T>()
                           : kind == Identity                         ? static_cast<T>(r == c)
                           : kind == Zero                             ? T(0)
                           : kind == RankOne                          ? static_cast<T>((r + 1) * (2 * c + 1)) / 2
                           : kind == Graded                           ? from.Unit<T>() * scale
                           : kind == Extreme                          ? from.Extreme<T>()
                           : kind == ZeroRow && r == rowCount / 2     ? T(0)
                           : kind == Repeated && r >= 2 && r % 3 == 0 ? matrix[r - 2][c]
                                                                      : from.Unit<T>() * 8;
    if (kind == Symmetric)
        for (unsigned int r = 0; r < rowCount; ++r)
            for (unsigned int c = r + 1; c < columnCount && c < rowCount; ++c) matrix[c][r] = matrix[r][c];
    if (kind == Spoilt && rowCount * columnCount != 0)
        for (unsigned int i = 0; i < 2; ++i) {
            const unsigned int r = in.Below(rowCount), c = in.Below(columnCount);
            matrix[r][c] = in.Scalar<T>();
        }
    return matrix;
}

} // namespace CorvexTest

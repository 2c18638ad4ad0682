#pragma once

/// The inputs of the digests: the same values on every machine, from arithmetic that rounds the same everywhere.
///
/// What is drawn at random is drawn in separate statements: the order in which the arguments of one call are evaluated
/// is the compiler's choice.

#include "tests/digest/Digest.h"

#include <cmath>
#include <limits>

namespace CorvexDigest
{

/// Random numbers by the generator SplitMix64 (G. Steele, D. Lea, C. Flood, 2014).
class Random
{
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    std::uint64_t Next()
    {
        std::uint64_t z = state += 0x9e3779b97f4a7c15u;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(Next() % bound); }

    /// From -1 to below 1, on a grid that `float` holds exactly.
    template <class T>
    T Unit()
    {
        return static_cast<T>(static_cast<std::int64_t>(Next() >> 40) - (1 << 23)) / static_cast<T>(1 << 23);
    }

    /// A coordinate that invites ties: a small multiple of a quarter, now and then a few tolerances beside one.
    template <class T>
    T Tied()
    {
        const T grid = (static_cast<T>(Below(33)) - 16) / 4;
        return Below(8) != 0 ? grid : grid + (static_cast<T>(Below(9)) - 4) * Numbers::commonTolerance<T> / 2;
    }

    /// A finite coordinate of any of these kinds.
    template <class T>
    T Finite()
    {
        switch (Below(4)) {
        case 0:
            return Unit<T>();
        case 1:
            return Unit<T>() * 100;
        default:
            return Tied<T>();
        }
    }

    /// A number of any exponent.
    template <class T>
    T Extreme()
    {
        const unsigned int range = std::numeric_limits<T>::max_exponent;
        const T unit = Unit<T>();
        return std::ldexp(unit, static_cast<int>(Below(2 * range)) - static_cast<int>(range));
    }

    /// A finite coordinate, now and then a NaN, an infinity, a zero of either sign or a denormal.
    template <class T>
    T Any()
    {
        using Limits = std::numeric_limits<T>;
        const T rare[] = {Limits::quiet_NaN(),  Limits::infinity(), -Limits::infinity(), T(0), -T(0),
                          Limits::denorm_min(), Limits::max()};
        const unsigned int kind = Below(64);
        return kind < 7 ? rare[kind] : Finite<T>();
    }

    /// A vector of any dimension, of coordinates drawn one after the other.
    template <class Vector, class Draw>
    Vector Point(Draw draw)
    {
        Vector point;
        using T = std::remove_reference_t<decltype(point.x)>;
        for (std::size_t k = 0; k < sizeof(Vector) / sizeof(T); ++k) static_cast<T*>(point)[k] = draw(*this);
        return point;
    }

private:
    std::uint64_t state;
};

/// Scalars at which operations decide: zeros, ones, both sides of the tolerances, extremes.
template <class T>
std::vector<T> FiniteScalars()
{
    using Limits = std::numeric_limits<T>;
    const T tolerance = Numbers::commonTolerance<T>;
    return {T(0),
            -T(0),
            T(1),
            T(-1),
            T(0.5),
            T(1) / 3,
            T(-7.25),
            T(100),
            tolerance,
            tolerance * (1 + Limits::epsilon()),
            tolerance / 2,
            -tolerance,
            1 - Limits::epsilon(),
            1 + Limits::epsilon(),
            Limits::min(),
            Limits::denorm_min()};
}

/// The same with NaN, the infinities and the largest value.
template <class T>
std::vector<T> AllScalars()
{
    using Limits = std::numeric_limits<T>;
    std::vector<T> scalars = FiniteScalars<T>();
    for (const T value : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max()})
        scalars.push_back(value);
    return scalars;
}

/// `n` vectors of drawn coordinates, the first of them zero.
template <class Vector, class Draw>
std::vector<Vector> DrawPoints(std::size_t n, std::uint64_t seed, Draw draw)
{
    Random random(seed);
    std::vector<Vector> points = {Vector() * 0};
    while (points.size() < n) points.push_back(random.Point<Vector>(draw));
    return points;
}

/// `n` vectors of finite coordinates, and as many in which any value may occur.
template <class Vector>
std::vector<Vector> FinitePoints(std::size_t n, std::uint64_t seed = 1)
{
    return DrawPoints<Vector>(n, seed, [](Random& r) { return r.Finite<decltype(Vector::x)>(); });
}

template <class Vector>
std::vector<Vector> AnyPoints(std::size_t n, std::uint64_t seed = 2)
{
    return DrawPoints<Vector>(n, seed, [](Random& r) { return r.Any<decltype(Vector::x)>(); });
}

/// All vectors of the coordinates 0, -1 and 2: along axes, on diagonals, orthogonal, with components that tie.
template <class Vector>
std::vector<Vector> GridPoints()
{
    using T = decltype(Vector::x);
    const std::size_t dimension = sizeof(Vector) / sizeof(T);
    std::vector<Vector> points(1);
    for (std::size_t k = 0; k < dimension; ++k) {
        std::vector<Vector> longer;
        for (Vector point : points)
            for (const T value : {T(0), T(-1), T(2)}) {
                point[static_cast<unsigned int>(k)] = value;
                longer.push_back(point);
            }
        points = longer;
    }
    return points;
}

/// One vector of elements after another.
template <class Element>
std::vector<Element> operator+(std::vector<Element> a, const std::vector<Element>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// A point on the unit circle, at the share t of it from 0 to 1, by the rational parameter: no sine is needed.
template <class T>
TVector2<T> OnCircle(T t)
{
    const T u = (t < T(0.5) ? t : t - T(0.5)) * 4 - 1, square = u * u;
    const TVector2<T> half(2 * u / (1 + square), (square - 1) / (1 + square));
    return t < T(0.5) ? half : -half;
}

/// A point of any dimension from two coordinates, the third following from them, the fourth 1.
template <class Vector, class T>
Vector Lift(const TVector2<T>& point, T slope)
{
    const T values[4] = {point.x, point.y, slope * (point.x - point.y), T(1)};
    return Vector(values);
}

/// The shapes of outlines and point sets, each with `n` points or as many as it has; the plane is lifted with a slope.
enum class Shape
{
    Round,        ///< convex, counter-clockwise
    Star,         ///< points in and out by turns
    Clockwise,    ///< convex, the other way round
    Comb,         ///< rectilinear, collinear neighbours, reflex corners
    Tied,         ///< a random walk on a coarse grid: crossings, duplicates, collinear runs
    Wild,         ///< random points, near ties among them
    Line,         ///< all on one straight line
    Repeated,     ///< one point n times
    Zeros,        ///< on three places, with zeros of either sign
    Extreme,      ///< coordinates of any exponent
    HasNotANumber ///< a round one in which some coordinates are NaN and infinite
};

inline const std::vector<Shape> allShapes = {Shape::Round, Shape::Star,    Shape::Clockwise,    Shape::Comb,
                                             Shape::Tied,  Shape::Wild,    Shape::Line,         Shape::Repeated,
                                             Shape::Zeros, Shape::Extreme, Shape::HasNotANumber};
/// Those whose coordinates are all finite and of like size.
inline const std::vector<Shape> finiteShapes(allShapes.begin(), allShapes.end() - 2);

template <class T>
TVector2<T> ShapePoint(Shape shape, unsigned int i, unsigned int n, Random& random)
{
    const TVector2<T> round = OnCircle<T>(static_cast<T>(i) / static_cast<T>(n)) * T(10);
    const T step = static_cast<T>(i);
    switch (shape) {
    case Shape::Star:
        return i % 2 == 0 ? round : round * T(0.375);
    case Shape::Clockwise:
        return TVector2<T>(round.x, -round.y);
    case Shape::Comb:
        if (i + 2 >= n) return TVector2<T>(i + 2 == n ? step : T(0), T(-3));
        return TVector2<T>(static_cast<T>(i / 2), i / 2 % 2 == i % 2 ? T(0) : T(4));
    case Shape::Tied:
    case Shape::Wild: {
        const T x = shape == Shape::Wild ? random.Finite<T>() : random.Tied<T>();
        const T y = shape == Shape::Wild ? random.Finite<T>() : random.Tied<T>();
        return TVector2<T>(x, y);
    }
    case Shape::Zeros: {
        const T values[] = {T(0), -T(0), T(-1)};
        const T x = values[random.Below(3)];
        return TVector2<T>(x, -values[random.Below(3)]);
    }
    case Shape::Extreme: {
        const T x = random.Extreme<T>();
        return TVector2<T>(x, random.Extreme<T>());
    }
    case Shape::Line:
        return TVector2<T>(step, step / 2);
    case Shape::Repeated:
        return TVector2<T>(T(1.5), T(-0.25));
    default:
        return round;
    }
}

template <class Set, class T, template <class> class V>
Set MakeShape(Shape shape, unsigned int n, std::uint64_t seed = 3)
{
    using Limits = std::numeric_limits<T>;
    Random random(seed + n);
    Set set(0, 7);
    for (unsigned int i = 0; i < n; ++i) set.Add(Lift<V<T>>(ShapePoint<T>(shape, i, n, random), T(0.125)));
    if (shape == Shape::HasNotANumber && n > 2) {
        set[n / 2].x = Limits::quiet_NaN();
        set[n % 4 == 3 ? 0 : n / 3].y = Limits::infinity();
        if (n % 4 == 1) set[n - 1].y = Limits::quiet_NaN();
    }
    return set;
}

/// Sets of many sizes and of each of some shapes.
template <class Set, class T, template <class> class V>
std::vector<Set> MakeShapes(const std::vector<Shape>& shapes, const std::vector<unsigned int>& sizes)
{
    std::vector<Set> sets;
    for (const Shape shape : shapes)
        for (const unsigned int n : sizes) sets.push_back(MakeShape<Set, T, V>(shape, n));
    return sets;
}

/// The kinds of dense matrices that the decompositions tell apart.
enum class Kind
{
    Random,
    Tied, ///< small integers: equal pivots, exact zeros
    Identity,
    Zero,
    Symmetric,
    RankOne,
    Graded,  ///< columns of very different size
    Extreme, ///< elements of any exponent
    HasNotANumber
};

inline const std::vector<Kind> allKinds = {Kind::Random, Kind::Tied,      Kind::Identity,
                                           Kind::Zero,   Kind::Symmetric, Kind::RankOne,
                                           Kind::Graded, Kind::Extreme,   Kind::HasNotANumber};

template <class T>
TMatrixMxN<T> MakeMatrix(Kind kind, unsigned int rows, unsigned int columns, std::uint64_t seed = 4)
{
    Random random(seed + 1000 * rows + columns);
    TMatrixMxN<T> matrix(rows, columns);
    T scale(1);
    for (unsigned int j = 0; j < columns; ++j, scale /= 16)
        for (unsigned int i = 0; i < rows; ++i) {
            const T drawn = kind == Kind::Tied      ? static_cast<T>(random.Below(5)) - 2
                            : kind == Kind::Extreme ? random.Extreme<T>()
                                                    : random.Unit<T>() * 8;
            T value = drawn;
            if (kind == Kind::Identity) value = i == j ? T(1) : T(0);
            if (kind == Kind::Zero) value = T(0);
            if (kind == Kind::Symmetric && i < j && j < rows && i < columns) value = matrix[i][j];
            if (kind == Kind::RankOne) value = static_cast<T>(i + 1) * (static_cast<T>(j) - T(1.5));
            if (kind == Kind::Graded) value = drawn * scale;
            matrix[i][j] = value;
            if (kind == Kind::Symmetric && j < rows && i < columns) matrix[j][i] = value;
        }
    if (kind == Kind::HasNotANumber && rows > 0 && columns > 0) {
        matrix[rows / 2][columns / 2] = std::numeric_limits<T>::quiet_NaN();
        matrix[rows - 1][0] = std::numeric_limits<T>::infinity();
    }
    return matrix;
}

} // namespace CorvexDigest

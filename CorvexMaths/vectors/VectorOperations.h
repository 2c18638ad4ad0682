#pragma once

/// What the vectors of two, three and four components share: arithmetic, comparison, lengths and access by index.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/vectors/NotAPointer.h>

namespace Halmont::Orrin::CorvexMaths
{

/// The empty base of TVector2, TVector3 and TVector4, which are its V; T is their scalar.
///
/// V provides three private functions, each of which applies a function of a pointer to a component to all components
/// in the order x, y, z, w: `Each` makes a vector of the results, `Sum` adds them up from the left, `All` stops at the
/// first false one. They are unrolled by hand, so that every operation below is straight-line code without a call.
///
/// All components take part in every operation, w included. Nothing fails: overflow, division by zero and NaN follow
/// IEEE arithmetic. Operands may alias one another and the result, a scalar may be a component of the vector. Every
/// step rounds to T. No operation allocates.
template <class V, class T>
struct CORVEX_API VectorOperations : NotAPointer<V>
{
    /// The address of the first component, from which the others follow. It also serves `v[i]`; that i is below the
    /// number of components is a precondition which no build can check.
    operator T*() { return reinterpret_cast<T*>(&Self()); }

    /// The address of the first component, from which the others follow, to read from. It also serves `v[i]` of a const
    /// vector; that i is below the number of components is a precondition which no build can check.
    operator const T*() const { return reinterpret_cast<const T*>(&Self()); }

    /// The componentwise sum, w included.
    V operator+(const V& other) const
    {
        return V::Each([&](T V::*c) { return Self().*c + other.*c; });
    }

    /// The componentwise difference, this minus the other, w included.
    V operator-(const V& other) const
    {
        return V::Each([&](T V::*c) { return Self().*c - other.*c; });
    }

    /// The vector with the sign bit of every component flipped: 0 becomes -0, which still compares equal to 0.
    V operator-() const
    {
        return V::Each([&](T V::*c) { return -(Self().*c); });
    }

    /// Every component times a scalar, w included.
    V operator*(const T& scalar) const
    {
        return V::Each([&](T V::*c) { return Self().*c * scalar; });
    }

    /// Every component times a scalar, w included: the same bits as with the scalar on the right.
    friend V operator*(const T& scalar, const V& vector) { return vector * scalar; }

    /// @cond
    CORVEX_NOT_WITH_NUMBERS(+, "add a vector of equal components, as in v + TVector3(s, s, s)");
    CORVEX_NOT_WITH_NUMBERS(-, "subtract a vector of equal components, as in v - TVector3(s, s, s)");
    /// @endcond

    /// Every component divided by a scalar, w included: a true division each, with no test for 0, which gives
    /// infinities or NaN.
    V operator/(T scalar) const
    {
        return V::Each([&](T V::*c) { return Self().*c / scalar; });
    }

    /// The dot product over all components, its terms added in the order x, y, z, w.
    T operator%(const V& other) const
    {
        return V::Sum([&](T V::*c) { return Self().*c * other.*c; });
    }

    /// Adds a vector, which may be this one, to every component, w included.
    V& operator+=(const V& other) { return Self() = Self() + other; }

    /// Subtracts a vector, which may be this one, from every component, w included.
    V& operator-=(const V& other) { return Self() = Self() - other; }

    /// Multiplies every component by a scalar, w included. The scalar may be a component of this vector.
    V& operator*=(T scalar) { return Self() = Self() * scalar; }

    /// Divides every component by a scalar, w included: a true division each, with no test for 0, which gives
    /// infinities or NaN. The scalar may be a component of this vector.
    V& operator/=(T scalar) { return Self() = Self() / scalar; }

    // C++20 tries `==` with the operands swapped too, which is ambiguous unless V takes it over by a using-declaration.

    /// Whether all components are exactly equal. There is no tolerance, and a NaN makes it false.
    bool operator==(const V& other) const
    {
        return V::All([&](T V::*c) { return Self().*c == other.*c; });
    }

    /// Whether any component differs from the other's, exactly: the opposite of `==`, so that a NaN makes it true.
    bool operator!=(const V& other) const { return !(Self() == other); }

    /// Whether this comes before the other in lexicographic order x, y, z, w: the first component that is not exactly
    /// equal to the other's is less. False for equal vectors, and where a NaN makes that component differ.
    bool operator<(const V& other) const
    {
        return FirstDifference(other, [](T a, T b) { return a < b; });
    }

    /// Whether this comes after the other in lexicographic order x, y, z, w: the first component that is not exactly
    /// equal to the other's is greater. False for equal vectors, and where a NaN makes that component differ.
    bool operator>(const V& other) const
    {
        return FirstDifference(other, [](T a, T b) { return a > b; });
    }

    /// The length: the square root of the sum of the squares of all components, w included, in the components' unit.
    T GetLength() const { return Numbers::SquareRoot(GetLengthSquared()); }

    /// The squared length: the squares of all components, added in the order x, y, z, w. No root is taken.
    T GetLengthSquared() const { return Self() % Self(); }

    /// The distance between the tips of this vector and another: the length of their difference, w included.
    T DiffVectLen(const V& other) const { return (Self() - other).GetLength(); }

    /// The squared distance between the tips of this vector and another: the squared length of their difference, w
    /// included. No root is taken.
    T DiffVectLenSquared(const V& other) const { return (Self() - other).GetLengthSquared(); }

    /// Whether each component is equal to the other's within an absolute, inclusive tolerance, in the order x, y, z, w.
    /// Exactly equal ones pass without a subtraction, so equal infinities do, and so they do under a tolerance below 0
    /// or NaN; a NaN component never passes.
    bool IsEqualTo(const V& other, T tolerance) const
    {
        return V::All([&](T V::*c) { return Numbers::IsNear(Self().*c, other.*c, tolerance); });
    }

    /// Divides every component, w included, by the length, however small that is; a length of exactly 0 leaves the
    /// vector as it is, and nothing is reported. A square that leaves the range of T makes that length 0 or infinite.
    void Normalise()
    {
        const T length = GetLength();
        if (length == T(0)) return;
        // A divider takes as long for four float lanes as for one, but compilers divide three components in two goes.
        // Each lane is rounded by itself, as by `/=`. The fourth repeats z and raises no exception of its own.
        if constexpr (sizeof(V) == 3 * sizeof(float)) {
            typedef T FourLanes __attribute__((vector_size(4 * sizeof(float))));
            const FourLanes components = {Self().x, Self().y, Self().z, Self().z};
            const FourLanes quotients = components / length;
            Self() = V(quotients[0], quotients[1], quotients[2]);
            return;
        }
        Self() /= length;
    }

private:
    V& Self() { return static_cast<V&>(*this); }
    const V& Self() const { return static_cast<const V&>(*this); }

    // What `order` says of the first two components that are not exactly equal; false when all are.
    template <class Order>
    bool FirstDifference(const V& other, Order order) const
    {
        bool verdict = false;
        V::All([&](T V::*c) {
            if (Self().*c == other.*c) return true;
            verdict = order(Self().*c, other.*c);
            return false;
        });
        return verdict;
    }
};

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// What complex numbers and quaternions share: access by index, sums, and arithmetic with a scalar.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/vectors/NotAPointer.h>

namespace Halmont::Orrin::CorvexMaths
{

/// The empty base of TComplex and TQuaternion, which are its C; T is their scalar.
///
/// C provides a private function `Each`, which makes a number of the results of a function of a pointer to a component.
/// The first component is the real or scalar part: a scalar is added to that part alone; the others are not touched.
///
/// Nothing fails: overflow, division by zero and NaN follow IEEE arithmetic. Operands may alias one another and the
/// result, and a scalar may be a component of the number.
template <class C, class T>
struct CORVEX_API HypercomplexOperations : NotAPointer<C>
{
    /// A component by its index, the real or scalar part first. The index is below the number of components, which
    /// debug builds check.
    T& operator[](unsigned int index)
    {
        CORVEX_PRECONDITION("HypercomplexOperations::operator[]", index < sizeof(C) / sizeof(T), index);
        return static_cast<T*>(Self())[index];
    }

    /// A component by its index, the real or scalar part first, to read. The index is below the number of components,
    /// which debug builds check.
    const T& operator[](unsigned int index) const
    {
        CORVEX_PRECONDITION("HypercomplexOperations::operator[]", index < sizeof(C) / sizeof(T), index);
        return static_cast<const T*>(Self())[index];
    }

    /// A component by an index of any other integral type, as the form for `unsigned int`.
    template <class Index, std::enable_if_t<std::is_integral_v<Index>, int> = 0>
    T& operator[](Index index)
    {
        return (*this)[static_cast<unsigned int>(index)];
    }

    /// A component by an index of any other integral type to read, as the form for `unsigned int`.
    template <class Index, std::enable_if_t<std::is_integral_v<Index>, int> = 0>
    const T& operator[](Index index) const
    {
        return (*this)[static_cast<unsigned int>(index)];
    }

    /// The address of the first component, from which the others follow.
    operator T*() { return reinterpret_cast<T*>(&Self()); }

    /// The address of the first component, from which the others follow, to read from.
    operator const T*() const { return reinterpret_cast<const T*>(&Self()); }

    /// @cond
    friend void operator==(const C&, const C&) CORVEX_DELETED("compare components");
    friend void operator!=(const C&, const C&) CORVEX_DELETED("compare components");
    friend void operator<(const C&, const C&) CORVEX_DELETED("compare components");
    friend void operator>(const C&, const C&) CORVEX_DELETED("compare components");
    /// @endcond

    /// The number with the sign bit of every component flipped: 0 becomes -0.
    C operator-() const
    {
        return C::Each([&](T C::*c) { return -(Self().*c); });
    }

    /// The componentwise sum.
    C operator+(const C& other) const
    {
        return C::Each([&](T C::*c) { return Self().*c + other.*c; });
    }

    /// The componentwise difference, this minus the other.
    C operator-(const C& other) const
    {
        return C::Each([&](T C::*c) { return Self().*c - other.*c; });
    }

    /// Adds a number, which may be this one, component by component.
    C& operator+=(const C& other) { return Self() = Self() + other; }

    /// Subtracts a number, which may be this one, component by component.
    C& operator-=(const C& other) { return Self() = Self() - other; }

    /// The number with a scalar added to its real or scalar part; the other components are kept.
    C operator+(const T& scalar) const { return C(Self()) += scalar; }

    /// The number with a scalar subtracted from its real or scalar part; the other components are kept.
    C operator-(const T& scalar) const { return C(Self()) -= scalar; }

    /// Adds a scalar to the real or scalar part; the other components are kept.
    C& operator+=(const T& scalar)
    {
        (*this)[0u] += scalar;
        return Self();
    }

    /// Subtracts a scalar from the real or scalar part; the other components are kept.
    C& operator-=(const T& scalar)
    {
        (*this)[0u] -= scalar;
        return Self();
    }

    /// Every component times a scalar.
    C operator*(const T& scalar) const
    {
        return C::Each([&](T C::*c) { return Self().*c * scalar; });
    }

    /// Every component times a scalar: the same bits as with the scalar on the right.
    friend C operator*(const T& scalar, const C& number) { return number * scalar; }

    /// Every component divided by a scalar: a true division each, with no test for 0, which gives infinities or NaN.
    C operator/(const T& scalar) const
    {
        return C::Each([&](T C::*c) { return Self().*c / scalar; });
    }

    /// Multiplies every component by a scalar, which may be a component of this number.
    C& operator*=(const T& scalar) { return Self() = *this * scalar; }

    /// Divides every component by a scalar, which may be a component of this number: a true division each, with no test
    /// for 0, which gives infinities or NaN.
    C& operator/=(const T& scalar) { return Self() = *this / scalar; }

private:
    C& Self() { return static_cast<C&>(*this); }
    const C& Self() const { return static_cast<const C&>(*this); }
};

} // namespace Halmont::Orrin::CorvexMaths

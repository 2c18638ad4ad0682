#pragma once

/// Minkowski sums and differences of point sets.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/TPointSet.h>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// What is done with an element of the second operand.
enum class Combination
{
    Sum,
    Difference
};

/// The sum or the difference of two vectors, over all components.
template <Combination combination, class Vector>
inline Vector Combine(const Vector& a, const Vector& b)
{
    if constexpr (combination == Combination::Sum)
        return a + b;
    else
        return a - b;
}

/// Replaces a set by its combination with another, in its own block.
///
/// The first run, with other[0], overwrites the slots that all later runs read. So these take other[0] out again, with
/// the rounding that this brings, by a correction that is zero during the first run (w included, where a default vector
/// would have a w of 1).
template <Combination combination, class T, template <class> class V>
void CombineInPlace(TPointSet<T, V>& set, const V<T>* other, unsigned int otherCount)
{
    constexpr Combination inverse = combination == Combination::Sum ? Combination::Difference : Combination::Sum;
    const unsigned int oldCount = set.GetCount();
    set.Expand(oldCount * otherCount);
    set.Clear(false);

    V<T> correction = ZeroVector<T, V>();
    for (unsigned int j = 0; j < otherCount; ++j) {
        if (j == 1) correction = other[0];
        for (unsigned int i = 0; i < oldCount; ++i)
            set.Add(Combine<combination>(Combine<inverse>(set.GetStream()[i], correction), other[j]));
    }
}

/// Replaces a set by the combination of two operands, the first operand's elements outermost.
template <Combination combination, class T, template <class> class V>
void CombineOperands(TPointSet<T, V>& set, const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount)
{
    set.Expand(aCount * bCount);
    set.Clear(false);
    for (unsigned int i = 0; i < aCount; ++i) {
        for (unsigned int j = 0; j < bCount; ++j) set.Add(Combine<combination>(a[i], b[j]));
    }
}

} // namespace

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiSum(const V<T>* other, unsigned int otherCount)
{
    CORVEX_PRECONDITION("TPointSet::MinkowskiSum", IsApart(other, otherCount, this->storage, this->capacity), other,
                        otherCount, this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiSum", otherCount == 0 || this->count <= ~0u / otherCount, this->count,
                        otherCount);
    CombineInPlace<Combination::Sum>(*this, other, otherCount);
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiSum(const TList<V<T>>& other)
{
    MinkowskiSum(other.GetStream(), other.GetCount());
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiSum(const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount)
{
    CORVEX_PRECONDITION("TPointSet::MinkowskiSum", IsApart(a, aCount, this->storage, this->capacity), a, aCount,
                        this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiSum", IsApart(b, bCount, this->storage, this->capacity), b, bCount,
                        this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiSum", bCount == 0 || aCount <= ~0u / bCount, aCount, bCount);
    CombineOperands<Combination::Sum>(*this, a, aCount, b, bCount);
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiSum(const TList<V<T>>& a, const TList<V<T>>& b)
{
    MinkowskiSum(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiDifference(const V<T>* other, unsigned int otherCount)
{
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", IsApart(other, otherCount, this->storage, this->capacity),
                        other, otherCount, this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", otherCount == 0 || this->count <= ~0u / otherCount,
                        this->count, otherCount);
    CombineInPlace<Combination::Difference>(*this, other, otherCount);
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiDifference(const TList<V<T>>& other)
{
    MinkowskiDifference(other.GetStream(), other.GetCount());
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiDifference(const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount)
{
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", IsApart(a, aCount, this->storage, this->capacity), a, aCount,
                        this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", IsApart(b, bCount, this->storage, this->capacity), b, bCount,
                        this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", bCount == 0 || aCount <= ~0u / bCount, aCount, bCount);
    CombineOperands<Combination::Difference>(*this, a, aCount, b, bCount);
}

template <class T, template <class> class V>
void TPointSet<T, V>::MinkowskiDifference(const TList<V<T>>& a, const TList<V<T>>& b)
{
    MinkowskiDifference(a.GetStream(), a.GetCount(), b.GetStream(), b.GetCount());
}

} // namespace Halmont::Orrin::CorvexMaths

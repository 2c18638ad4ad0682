#pragma once

/// Minkowski sums and differences of point sets.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/containers/internal/ExactClass.h>
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

/// Replaces the points of a set by results, which it appends in batches where that makes no difference.
///
/// The hooks of the point set itself keep the box and nothing else. Extended by a batch, the box gets the bits that it
/// gets point by point, and just before it is emptied it need not be recalculated. A derived class may look at the set
/// in its hooks and change it, or the operands, so there each result is computed and added by itself.
template <class T, template <class> class V>
class Results
{
public:
    /// Empties the set and makes room for so many results. The old points stay in their slots until overwritten.
    Results(TPointSet<T, V>& points, unsigned int resultCount) : set(points), isPlain(IsExactly(points))
    {
        set.Expand(resultCount);
        if (isPlain)
            set.RemoveFromEnd(set.GetCount());
        else
            set.Clear(false);
    }

    /// Appends what `result` gives for an element and each index below the count. Hooks may change the element.
    template <class Result>
    void Append(unsigned int resultCount, const V<T>& element, Result result)
    {
        if (!isPlain) {
            for (unsigned int i = 0; i < resultCount; ++i) set.Add(result(element, i));
            return;
        }
        for (unsigned int from = 0; from < resultCount;) {
            const V<T> copy = element;
            const unsigned int length = resultCount - from < batchSize ? resultCount - from : batchSize;
            for (unsigned int i = 0; i < length; ++i) batch[i] = result(copy, from + i);
            set.AddRange(batch, length);
            from += length;
        }
    }

private:
    /// A batch stays in the nearest cache until it is appended.
    static constexpr unsigned int batchSize = 256;

    TPointSet<T, V>& set;
    const bool isPlain;
    /// In a union, so that it is not set to default vectors first, which would cost more than a few results do.
    union {
        V<T> batch[batchSize];
    };
};

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
    Results<T, V> results(set, oldCount * otherCount);
    V<T> correction = ZeroVector<T, V>();
    for (unsigned int j = 0; j < otherCount; ++j) {
        if (j == 1) correction = other[0];
        results.Append(oldCount, other[j], [&set, correction](const V<T>& element, unsigned int i) {
            return Combine<combination>(Combine<inverse>(set.GetStream()[i], correction), element);
        });
    }
}

/// Replaces a set by the combination of two operands, the first operand's elements outermost.
template <Combination combination, class T, template <class> class V>
void CombineOperands(TPointSet<T, V>& set, const V<T>* a, unsigned int aCount, const V<T>* b, unsigned int bCount)
{
    Results<T, V> results(set, aCount * bCount);
    for (unsigned int i = 0; i < aCount; ++i) {
        results.Append(bCount, a[i],
                       [b](const V<T>& element, unsigned int j) { return Combine<combination>(element, b[j]); });
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
void TPointSet<T, V>::MinkowskiDifference(const V<T>* other, unsigned int otherCount)
{
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", IsApart(other, otherCount, this->storage, this->capacity),
                        other, otherCount, this->storage, this->capacity);
    CORVEX_PRECONDITION("TPointSet::MinkowskiDifference", otherCount == 0 || this->count <= ~0u / otherCount,
                        this->count, otherCount);
    CombineInPlace<Combination::Difference>(*this, other, otherCount);
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

} // namespace Halmont::Orrin::CorvexMaths

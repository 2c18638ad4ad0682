#pragma once

/// Products of point sets with matrices, and point sets as matrices.

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/pointsets/BoxExtension.inl>
#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/pointsets/TPointSet.h>

#include <cstddef>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{
namespace
{

/// The fixed matrix of an order.
template <class T, unsigned int order>
using FixedMatrix =
    std::conditional_t<order == 2, TMatrix2x2<T>, std::conditional_t<order == 3, TMatrix3x3<T>, TMatrix4x4<T>>>;

/// Writes the components of a point to a row.
template <class T, template <class> class V>
inline void StorePoint(const V<T>& point, T* row)
{
    const T* components = point;
    for (unsigned int j = 0; j < componentsOf<T, V>; ++j) row[j] = components[j];
}

/// The product of points, each as a row vector on the left, with a matrix of their dimension or of a larger one. A
/// point is then filled up to the order with zeros and a last 1, and what the product has beyond the point is dropped.
///
/// Every sum starts at +0 and takes its terms in the order of the rows, each rounded.
template <class T, unsigned int components, unsigned int order>
class PointProduct
{
public:
    /// Reads the elements of the matrix, row by row.
    explicit PointProduct(const T* elements)
    {
        for (unsigned int i = 0; i < order; ++i) {
            const T factor = i < components || i == order - 1 ? T(1) : T(0);
            for (unsigned int j = 0; j < components; ++j) terms[i][j] = factor * elements[i * order + j];
        }
    }

    /// Replaces points that follow one another in memory, and extends a box by the results, run by run while they are
    /// in the nearest cache.
    void Apply(TBox<T>& box, T* values, unsigned int pointCount) const
    {
        constexpr unsigned int longestRun = groupSize * 16;
        for (unsigned int left = pointCount; left > 0;) {
            const unsigned int run = left < longestRun ? left : longestRun;
            for (unsigned int i = 0; i < run; i += groupSize) {
                T* group = values + i * components;
                const unsigned int groupLeft = left - i;
                if (groupLeft > prefetchDistance + groupSize) PrefetchGroup(group + prefetchDistance * components);
                ReplaceGroup(group, groupLeft < groupSize ? groupLeft : groupSize);
            }
            ExtendBox<T, components>(box, values, run);
            values += run * components;
            left -= run;
        }
    }

private:
    static constexpr unsigned int groupSize = 32;
    static constexpr unsigned int prefetchDistance = groupSize * 8;

    // The rows that meet a point's own components, and what the filled-up ones contribute, alike for every point.
    T terms[order][components];

    /// Prefetches a later group. With this much arithmetic for each point the processor does not look far
    /// enough ahead by itself; large sets take more than twice as long without.
    static void PrefetchGroup(const T* group)
    {
        constexpr unsigned int cacheLine = 64 / sizeof(T);
        for (unsigned int i = 0; i < groupSize * components; i += cacheLine) __builtin_prefetch(group + i, 1);
    }

    /// Straight-line code over independent points, for the compiler to vectorise.
    void ReplaceGroup(T* values, unsigned int pointCount) const
    {
        for (unsigned int p = 0; p < pointCount; ++p, values += components) {
            T sums[components] = {};
            for (unsigned int j = 0; j < components; ++j) {
                for (unsigned int i = 0; i < components; ++i) sums[j] += values[i] * terms[i][j];
                for (unsigned int i = components; i < order; ++i) sums[j] += terms[i][j];
            }
            for (unsigned int j = 0; j < components; ++j) values[j] = sums[j];
        }
    }
};

} // namespace

template <class T, template <class> class V>
template <unsigned int order, class Matrix>
TPointSet<T, V>& TPointSet<T, V>::Transform(const Matrix& matrix)
{
    constexpr unsigned int components = componentsOf<T, V>;
    T* values = ValuesOf<T, V>(*this);
    boundingBox.Reset();
    if constexpr (components < order) {
        if (dimension < order) {
            PointProduct<T, components, order>(matrix[0]).Apply(boundingBox, values, this->count);
            return *this;
        }
    }
    const FixedMatrix<T, components> square = static_cast<FixedMatrix<T, components>>(matrix);
    PointProduct<T, components, components>(square[0]).Apply(boundingBox, values, this->count);
    return *this;
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator*=(const TMatrix2x2<T>& matrix)
{
    return Transform<2>(matrix);
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator*=(const TMatrix3x3<T>& matrix)
{
    return Transform<3>(matrix);
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator*=(const TMatrix4x4<T>& matrix)
{
    return Transform<4>(matrix);
}

template <class T, template <class> class V>
TPointSet<T, V>& TPointSet<T, V>::operator*=(const TMatrixMxN<T>& matrix)
{
    constexpr unsigned int components = componentsOf<T, V>;
    return Transform<components>(static_cast<FixedMatrix<T, components>>(matrix));
}

template <class T, template <class> class V>
void TPointSet<T, V>::ToMatrix(TMatrixMxN<T>* out) const
{
    CORVEX_PRECONDITION("TPointSet::ToMatrix", out != nullptr, out);
    out->AssignMemory(this->count, dimension);
    for (unsigned int i = 0; i < this->count; ++i) StorePoint(this->storage[i], (*out)[i]);
}

template <class T, template <class> class V>
V<T> TPointSet<T, V>::ToTransToCentMatrix(TMatrixMxN<T>* out) const
{
    CORVEX_PRECONDITION("TPointSet::ToTransToCentMatrix", out != nullptr, out);
    out->AssignMemory(this->count, dimension);
    const V<T> centre = GetCentre();
    for (unsigned int i = 0; i < this->count; ++i) StorePoint(this->storage[i] - centre, (*out)[i]);
    return centre;
}

} // namespace Halmont::Orrin::CorvexMaths

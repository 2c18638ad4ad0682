// Programs keep arrays of these values and read them as arrays of scalars, TList moves them bitwise, and inline code
// that a program was compiled with reaches into all classes. What this file asserts is checked as it compiles; where
// one of them moves, SOVERSION does.

#include "tests/support/Types.h"

#include <cstddef>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

/// Whether a class is a plain block of a number of scalars.
template <class Class, class T>
constexpr bool IsPlain(std::size_t scalars)
{
    return sizeof(Class) == scalars * sizeof(T) && alignof(Class) == alignof(T) &&
           std::is_trivially_copyable_v<Class> && std::is_standard_layout_v<Class>;
}

template <class T>
struct Layout
{
    static constexpr std::size_t one = sizeof(T), three = 3 * sizeof(T), six = 6 * sizeof(T);
    using V4 = TVector4<T>;
    using Turn = TQuaternion<T>;
    using IndexPair = TPair<TVector3<T>, unsigned int>;
    static_assert(IsPlain<TVector2<T>, T>(2) && IsPlain<TVector3<T>, T>(3) && IsPlain<V4, T>(4));
    static_assert(offsetof(TVector2<T>, y) == one && offsetof(TVector3<T>, y) == one && offsetof(V4, y) == one);
    static_assert(offsetof(TVector3<T>, z) == 2 * one && offsetof(V4, z) == 2 * one && offsetof(V4, w) == three);
    static_assert(IsPlain<TComplex<T>, T>(2) && offsetof(TComplex<T>, imaginary) == one && IsPlain<Turn, T>(4));
    static_assert(offsetof(Turn, x) == one && offsetof(Turn, y) == 2 * one && offsetof(Turn, z) == three);
    static_assert(IsPlain<TEdge2<T>, T>(4) && IsPlain<TEdge3<T>, T>(6));
    static_assert(IsPlain<TLine2<T>, T>(4) && offsetof(TLine2<T>, direction) == 2 * one);
    static_assert(IsPlain<TLine3<T>, T>(6) && offsetof(TLine3<T>, direction) == three);
    static_assert(IsPlain<TPlane<T>, T>(6) && offsetof(TPlane<T>, normal) == three);
    static_assert(IsPlain<TTriangle2<T>, T>(6) && IsPlain<TTriangle3<T>, T>(12));
    static_assert(IsPlain<TCircle2<T>, T>(3) && offsetof(TCircle2<T>, radius) == 2 * one);
    static_assert(IsPlain<TCircle3<T>, T>(7) && offsetof(TCircle3<T>, normal) == three);
    static_assert(offsetof(TCircle3<T>, radius) == six && offsetof(TTriangle3<T>, normal) == 3 * three);
    static_assert(IsPlain<TCone<T>, T>(8) && offsetof(TCone<T>, axis) == three);
    static_assert(offsetof(TCone<T>, radius) == six && offsetof(TCone<T>, height) == six + one);
    static_assert(IsPlain<TBox<T>, T>(7) && offsetof(TBox<T>, maximum) == three && offsetof(TBox<T>, limit) == six);
    static_assert(IsPlain<TPair<T, TVector2<T>>, T>(3) && IsPlain<TPair<T, V4>, T>(5));
    static_assert(offsetof(IndexPair, second) == three && std::is_trivially_copyable_v<IndexPair>);
    static_assert(IsPlain<TMatrix2x2<T>, T>(4) && IsPlain<TMatrix3x3<T>, T>(9) && IsPlain<TMatrix4x4<T>, T>(16));

#if defined(__LP64__)
    // Pointers, those to virtual tables among them, align what holds them to 8 bytes. What a derived class adds to a
    // point set begins at the end of its dimension, before that is rounded up.
    static constexpr std::size_t Rounded(std::size_t size)
    {
        return (size + 7) / 8 * 8;
    }
    static constexpr std::size_t list = 32, setEnd = list + sizeof(TBox<T>) + 8, set = Rounded(setEnd);
    static_assert(sizeof(TSphere<T>) == 8 + 4 * one && sizeof(TCylinder<T>) == 8 + 8 * one);
    static_assert(sizeof(TList<T>) == list && sizeof(TList<V4>) == list && sizeof(TMap<T>) == 24);
    static_assert(sizeof(TLinkUni<TVector3<T>>) == Rounded(8 + three) + 8 && sizeof(TSpiral3<T>) == list);
    static_assert(sizeof(TMatrixMxN<T>) == 24 && sizeof(TMatrixFragment<T>) == 3 * list);
    static_assert(sizeof(TCCSMatrixMxN<T>) == 40 && sizeof(TCRSMatrixMxN<T>) == 56);
    static_assert(sizeof(TPointSet<T, TVector2>) == set && sizeof(TPolygon<T, TVector4>) == set + list);
    static_assert(sizeof(TParameterization<T, TVector3>) == set + list + 8);
    static_assert(sizeof(TBSpline<T, TVector3>) == Rounded(setEnd + 8) + 2 * list + 8);
#endif
};
template struct Layout<float>;
template struct Layout<double>;
static_assert(IsPlain<Int128, long long>(2) && offsetof(Int128, hi) == 8);
#if defined(__LP64__)
static_assert(sizeof(TSetGenerator<unsigned char>) == 56 && sizeof(TSetGenerator<unsigned long long>) == 56);
#endif

} // namespace

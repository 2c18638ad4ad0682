// Programs keep arrays of these values and read them as arrays of scalars, and TList moves them bitwise. What this file
// asserts is checked as it compiles.

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
    using IndexPair = TPair<TVector3<T>, unsigned int>;
    static_assert(IsPlain<TVector2<T>, T>(2) && IsPlain<TVector3<T>, T>(3) && IsPlain<V4, T>(4));
    static_assert(offsetof(TVector2<T>, y) == one && offsetof(TVector3<T>, y) == one && offsetof(V4, y) == one);
    static_assert(offsetof(TVector3<T>, z) == 2 * one && offsetof(V4, z) == 2 * one && offsetof(V4, w) == three);
    static_assert(IsPlain<TEdge2<T>, T>(4) && IsPlain<TEdge3<T>, T>(6));
    static_assert(IsPlain<TLine2<T>, T>(4) && offsetof(TLine2<T>, direction) == 2 * one);
    static_assert(IsPlain<TLine3<T>, T>(6) && offsetof(TLine3<T>, direction) == three);
    static_assert(IsPlain<TPlane<T>, T>(6) && offsetof(TPlane<T>, normal) == three);
    static_assert(IsPlain<TTriangle2<T>, T>(6) && IsPlain<TTriangle3<T>, T>(12));
    static_assert(IsPlain<TCircle2<T>, T>(3) && offsetof(TCircle2<T>, radius) == 2 * one);
    static_assert(IsPlain<TCircle3<T>, T>(7) && offsetof(TCircle3<T>, normal) == three);
    static_assert(offsetof(TCircle3<T>, radius) == six && offsetof(TTriangle3<T>, normal) == 3 * three);
    static_assert(IsPlain<TBox<T>, T>(7) && offsetof(TBox<T>, maximum) == three && offsetof(TBox<T>, limit) == six);
    static_assert(IsPlain<TPair<T, TVector2<T>>, T>(3) && IsPlain<TPair<T, V4>, T>(5));
    static_assert(offsetof(IndexPair, second) == three && std::is_trivially_copyable_v<IndexPair>);
    static_assert(IsPlain<TMatrix2x2<T>, T>(4) && IsPlain<TMatrix3x3<T>, T>(9) && IsPlain<TMatrix4x4<T>, T>(16));
};
template struct Layout<float>;
template struct Layout<double>;

} // namespace

// Programs keep arrays of these values and read them as arrays of scalars, and TList moves them bitwise. What this file
// asserts is checked as it compiles; the test at its end covers what only addresses show.

#include "tests/support/Types.h"

#include <cstddef>
#include <cstdint>

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
    static_assert(IsPlain<TVector2<T>, T>(2) && IsPlain<TVector3<T>, T>(3) && IsPlain<TVector4<T>, T>(4));
    static_assert(offsetof(TVector4<T>, x) == 0 && offsetof(TVector4<T>, y) == sizeof(T) &&
                  offsetof(TVector4<T>, z) == 2 * sizeof(T) && offsetof(TVector4<T>, w) == 3 * sizeof(T));
    static_assert(offsetof(TVector3<T>, y) == sizeof(T) && offsetof(TVector3<T>, z) == 2 * sizeof(T));
    static_assert(offsetof(TVector2<T>, x) == 0 && offsetof(TVector2<T>, y) == sizeof(T));

    static_assert(IsPlain<TEdge2<T>, T>(4) && IsPlain<TEdge3<T>, T>(6));
    static_assert(IsPlain<TLine2<T>, T>(4) && IsPlain<TLine3<T>, T>(6));
    static_assert(offsetof(TLine2<T>, origin) == 0 && offsetof(TLine2<T>, direction) == sizeof(TVector2<T>));
    static_assert(offsetof(TLine3<T>, origin) == 0 && offsetof(TLine3<T>, direction) == sizeof(TVector3<T>));

    static_assert(IsPlain<TPlane<T>, T>(6) && IsPlain<TTriangle2<T>, T>(6) && IsPlain<TTriangle3<T>, T>(12));
    static_assert(offsetof(TPlane<T>, normal) == sizeof(TVector3<T>) &&
                  offsetof(TTriangle3<T>, normal) == 3 * sizeof(TVector3<T>));
    static_assert(IsPlain<TCircle2<T>, T>(3) && IsPlain<TCircle3<T>, T>(7));
    static_assert(offsetof(TCircle2<T>, radius) == 2 * sizeof(T) && offsetof(TCircle3<T>, normal) == 3 * sizeof(T) &&
                  offsetof(TCircle3<T>, radius) == 6 * sizeof(T));

    static_assert(IsPlain<TBox<T>, T>(7));
    static_assert(offsetof(TBox<T>, minimum) == 0 && offsetof(TBox<T>, maximum) == sizeof(TVector3<T>) &&
                  offsetof(TBox<T>, limit) == 2 * sizeof(TVector3<T>));

    static_assert(IsPlain<TPair<T, TVector2<T>>, T>(3) && IsPlain<TPair<T, TVector4<T>>, T>(5));
    using IndexPair = TPair<TVector3<T>, unsigned int>;
    static_assert(offsetof(IndexPair, first) == 0 && offsetof(IndexPair, second) == sizeof(TVector3<T>) &&
                  std::is_trivially_copyable_v<IndexPair>);

    static_assert(IsPlain<TMatrix2x2<T>, T>(4) && IsPlain<TMatrix3x3<T>, T>(9) && IsPlain<TMatrix4x4<T>, T>(16));
};
template struct Layout<float>;
template struct Layout<double>;

} // namespace

TEST(LayoutTest, ListOfVectorsIsAFlatArray)
{
    TList<TVector3<double>> list(0u, 1u);
    for (int i = 0; i < 3; ++i) list.Add(TVector3<double>(3 * i, 3 * i + 1, 3 * i + 2));
    const double* scalars = list[0];
    for (int i = 0; i < 9; ++i) EXPECT_EQ(scalars[i], i);
}

// The interface of vectors, complex numbers and quaternions.

#include "tests/library/Interface.h"

#include <CorvexMaths/vectors/TComplex.h>
#include <CorvexMaths/vectors/TQuaternion.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class T>
struct VectorInterfaceTest : testing::Test
{};
TYPED_TEST_SUITE(VectorInterfaceTest, Scalars, TypeNames);

template <class V, class T, class Matrix, template <class> class... Matrices>
void NameWhatAllVectorsHave()
{
    static_assert(Makes<V> && Makes<V, T*> && Makes<V, const T*> && Copies<V>);
    static_assert(std::is_convertible_v<V&, T*> && std::is_convertible_v<const V&, const T*>);
    static_assert(!std::is_convertible_v<const V&, T*>);

    Has<V, V(const V&) const, V() const, V(T) const>({&V::operator+, &V::operator-}, {&V::operator-}, {&V::operator/});
    Has<V, V&(const V&), V(const T&) const>({&V::operator+=, &V::operator-=}, {&V::operator*});
    Has<V, V&(T), Matrix(const V&) const>({&V::operator*=, &V::operator/=}, {&V::operator^});
    Has<V, T(const V&) const>({&V::operator%, &V::DiffVectLen, &V::DiffVectLenSquared});

    (Has<V, V(const Matrices<T>&) const>({&V::operator*}), ...);
    (Has<V, V&(const Matrices<T>&)>({&V::operator*=}), ...);

    Has<V, bool(const V&) const>({&V::operator==, &V::operator!=, &V::operator<, &V::operator>});
    Has<V, T() const>({&V::GetLength, &V::GetLengthSquared});
    Has<V, bool(const V&, T) const, void()>({&V::IsEqualTo, &V::IsParallelTo, &V::IsOrthogonalTo}, {&V::Normalise});
}

template <class C, class T, Index N>
void NameWhatHypercomplexNumbersHave()
{
    static_assert(Makes<C> && Copies<C> && std::is_trivially_copyable_v<C> && sizeof(C) == N * sizeof(T));
    static_assert(std::is_convertible_v<C&, T*> && std::is_convertible_v<const C&, const T*>);

    Has<C, T&(Index), const T&(Index) const, C() const>({&C::operator[]}, {&C::operator[]}, {&C::operator-});
    Has<C, C(const C&) const>({&C::operator+, &C::operator-, &C::operator*});
    Has<C, C&(const C&)>({&C::operator+=, &C::operator-=, &C::operator*=});
    Has<C, C(const T&) const>({&C::operator+, &C::operator-, &C::operator*, &C::operator/});
    Has<C, C&(const T&)>({&C::operator+=, &C::operator-=, &C::operator*=, &C::operator/=});
}

template <class T, class V2 = TVector2<T>, class V3 = TVector3<T>, class V4 = TVector4<T>>
void NameVectors()
{
    NameWhatAllVectorsHave<V2, T, TMatrix2x2<T>, TMatrix2x2, TMatrix3x3, TMatrix4x4, TMatrixMxN>();
    static_assert(Makes<V2, T, T> && std::is_convertible_v<V2, V3> && std::is_convertible_v<V2, V4>);
    static_assert(!std::is_convertible_v<TVector2<float>, TVector2<double>>);
    Has<V2, T() const, T(const V2&) const>({&V2::Angle}, {&V2::SignedArea, &V2::AngleWith});
    Has<V2, void(V2*) const>({&V2::Orthonormal});

    NameWhatAllVectorsHave<V3, T, TMatrix3x3<T>, TMatrix2x2, TMatrix3x3, TMatrix4x4, TMatrixMxN>();
    static_assert(Makes<V3, T, T, T> && std::is_convertible_v<V3, V2> && std::is_convertible_v<V3, V4>);
    static_assert(!std::is_convertible_v<TVector3<double>, TVector3<float>>);
    Has<V3, V3(const V3&) const, V3&(const V3&)>({&V3::operator*}, {&V3::operator*=});
    Has<V3, T(const V3&) const, T(const V3&, const V3&) const>({&V3::DiffVectLen2D}, {&V3::AngleWith});
    Has<V3, void(V3*) const, void(V3*, V3*) const>({&V3::OrthonormalX}, {&V3::OrthonormalXY});
    Has<V3, void(V3*, const T&, const T&) const, void(V3*, const T&) const>({&V3::Rotate}, {&V3::Rotate});

    NameWhatAllVectorsHave<V4, T, TMatrix4x4<T>, TMatrix2x2, TMatrix3x3, TMatrix4x4, TMatrixMxN>();
    static_assert(Makes<V4, T, T, T, T> && std::is_convertible_v<V4, V2> && std::is_convertible_v<V4, V3>);
    Has<V4, bool(V4*, V4*, V4*) const>({&V4::OrthonormalXYZ});
}

template <class T, class C = TComplex<T>, class Q = TQuaternion<T>>
void NameComplexNumbersAndQuaternions()
{
    NameWhatHypercomplexNumbersHave<C, T, 2>();
    static_assert(Makes<C, T, T>);
    Has<C, T, C(C) const, C&(C)>({&C::real, &C::imaginary}, {&C::operator/}, {&C::operator/=});
    const C c;
    EXPECT_TRUE(InOrder(c.real, c.imaginary));

    NameWhatHypercomplexNumbersHave<Q, T, 4>();
    static_assert(Makes<Q, T, T, T, T> && Makes<Q, T, const TVector3<T>&> && Makes<Q, TMatrix3x3<T>&>);
    Has<Q, T, void(), TMatrix3x3<T>() const>({&Q::w, &Q::x, &Q::y, &Q::z}, {&Q::Conjugate}, {&Q::ToMatrix});
    const Q q;
    EXPECT_TRUE(InOrder(q.w, q.x, q.y, q.z));
    Has<Q, void(T*, TVector3<T>*) const>({&Q::GetRotation});
}

} // namespace

TYPED_TEST(VectorInterfaceTest, Members)
{
    NameVectors<TypeParam>(), NameComplexNumbersAndQuaternions<TypeParam>();
}

// The interface of the matrices, dense and sparse.

#include "tests/library/Interface.h"

#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>
#include <CorvexMaths/sparse/TMatrixFragment.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class T>
struct MatrixInterfaceTest : testing::Test
{};
TYPED_TEST_SUITE(MatrixInterfaceTest, Scalars, TypeNames);

/// What all dense matrices share.
template <class M, class T>
void NameMatrix()
{
    Has<M, T*(Index), const T*(Index) const, Index() const>({&M::operator[]}, {&M::operator[]}, {&M::GetM, &M::GetN});
    Has<M, void(), bool(const M&) const>({&M::ToNull, &M::ToIdentity, &M::Transpose}, {&M::operator==, &M::operator!=});
    Has<M, M() const, M(const T&) const>({&M::operator-}, {&M::operator*, &M::operator/});
    Has<M, bool(M*, int*, T*) const, bool(), bool(M*) const>({&M::LUD}, {&M::Invert}, {&M::Invert});
    HasStatic<void(M&, const int*, const T*, T*)>({&M::BackSub});
}

/// What the square matrices of order N share; V is the vector of that size.
template <class M, class T, Index N, class V, class General = TMatrixMxN<T>>
void NameSquareMatrix()
{
    NameMatrix<M, T>();
    static_assert(Makes<M> && Makes<M, T*> && Makes<M, const T*> && Copies<M> && std::is_convertible_v<General, M>);
    Has<M, T[N * N], void(T**), M&(General&)>({&M::elements}, {&M::GetRows}, {&M::operator*=});
    Has<M, M(const M&) const, General(const General&)>({&M::operator+, &M::operator-, &M::operator*}, {&M::operator*});
    Has<M, M&(const M&), M&(const T&)>({&M::operator+=, &M::operator-=, &M::operator*=}, {&M::operator*=});
    Has<M, TVector2<T>(const TVector2<T>&) const>({&M::operator*});
    Has<M, TVector3<T>(const TVector3<T>&) const, bool(T*, V*) const>({&M::operator*}, {&M::Eigenspace});
    Has<M, TVector4<T>(const TVector4<T>&) const, bool(M*, M*, M*, Index) const>({&M::operator*}, {&M::SVD});
}

/// The arithmetic of a general matrix with a square one and with the vector of its size.
template <class Square, class Vector, class T, class M = TMatrixMxN<T>>
void NameArithmeticWith()
{
    Has<M, Square(Square&) const, Vector(const Vector&) const>({&M::operator+, &M::operator-}, {&M::operator*});
    Has<M, M&(Square&), M(Square&) const>({&M::operator+=, &M::operator-=, &M::operator*=}, {&M::operator*});
    static_assert(std::is_convertible_v<const M&, Square>);
}

template <class T>
struct OpenCRSMatrix : TCRSMatrixMxN<T>
{
    using TCRSMatrixMxN<T>::Multiply, TCRSMatrixMxN<T>::MultiplyUpperTriangle;
};

template <class T, class V2 = TVector2<T>, class V3 = TVector3<T>, class V4 = TVector4<T>, class M2 = TMatrix2x2<T>,
          class M3 = TMatrix3x3<T>, class M4 = TMatrix4x4<T>>
void NameSquareMatrices()
{
    NameSquareMatrix<M2, T, 2, V2>();
    static_assert(Makes<M2, T, T, T, T> && Makes<M2, const V2&, const V2&>);
    static_assert(std::is_convertible_v<const M2&, M3> && std::is_convertible_v<const M2&, M4>);
    static_assert(!std::is_convertible_v<TMatrix2x2<float>, TMatrix2x2<double>>);
    Has<M2, M2(const T&)>({&M2::operator/=}); // by value in this order alone
    Has<M2, T() const>({&M2::Determinant});

    NameSquareMatrix<M3, T, 3, V3>();
    static_assert(Makes<M3, T, T, T, T, T, T, T, T, T> && Makes<M3, const V3&, const V3&, const V3&>);
    static_assert(std::is_convertible_v<const M3&, M2> && std::is_convertible_v<const M3&, M4>);
    Has<M3, M3&(const T&), T() const, void(M3*, bool, bool)>({&M3::operator/=}, {&M3::Determinant}, {&M3::Multiply});
    Has<M3, void(const T&, const V3&, bool, bool), void(T, T, T, bool, bool)>({&M3::Rotate}, {&M3::Scale});
    Has<M3, void()>({&M3::ToOrthonormal});

    NameSquareMatrix<M4, T, 4, V4>();
    static_assert(Makes<M4, T, T, T, T, T, T, T, T, T, T, T, T, T, T, T, T>);
    static_assert(Makes<M4, const V4&, const V4&, const V4&, const V4&>);
    static_assert(std::is_convertible_v<const M4&, M2> && std::is_convertible_v<const M4&, M3>);
    Has<M4, M4&(const T&), bool(const M4&) const>({&M4::operator/=}, {&M4::operator<, &M4::operator>});
    Has<M4, T(), void(const T&, const V3&, bool, bool)>({&M4::Determinant}, {&M4::Rotate});
    Has<M4, void(const T&, const V3&, const V3&, bool, bool), void(T, T, T, bool, bool)>({&M4::Rotate}, {&M4::Scale});
    Has<M4, void(V3&, T, T, T, bool, bool), void(const V3&, bool, bool)>({&M4::Scale}, {&M4::Translate});
}

template <class T, class M = TMatrixMxN<T>>
void NameMatrixMxN()
{
    NameMatrix<M, T>();
    static_assert(Makes<M> && Makes<M, Index, Index> && Copies<M> && !std::is_polymorphic_v<M>);
    static_assert(sizeof(M) == 2 * sizeof(void*) + 2 * sizeof(Index));
    Has<M, void(Index, Index), M(M&) const>({&M::AssignMemory}, {&M::operator+, &M::operator-, &M::operator*});
    Has<M, M&(M&), M&(const T&)>({&M::operator+=, &M::operator-=, &M::operator*=}, {&M::operator*=, &M::operator/=});
    NameArithmeticWith<TMatrix2x2<T>, TVector2<T>, T>();
    NameArithmeticWith<TMatrix3x3<T>, TVector3<T>, T>();
    NameArithmeticWith<TMatrix4x4<T>, TVector4<T>, T>();
    Has<M, bool(M*, int**, T*) const, T() const, bool(M*, M*, M*, Index)>({&M::LUD}, {&M::Determinant}, {&M::SVD});
    HasStatic<void(M&, const int*, const T*, T**)>({&M::BackSub});
    Has<M, bool(T*, T**) const, bool(T**, T***) const>({&M::Eigenspace}, {&M::Eigenspace});
}

template <class T, class F = TMatrixFragment<T>, class C = TCCSMatrixMxN<T>, class M = TCRSMatrixMxN<T>,
          class Dense = TMatrixMxN<T>, class Open = OpenCRSMatrix<T>>
void NameSparseMatrices()
{
    static_assert(Makes<F> && Makes<F, F&> && Copies<F> && !std::is_polymorphic_v<F>);
    Has<F, TList<T>, TList<int>, void(Index)>({&F::values}, {&F::rows, &F::columns}, {&F::SetDimensions});
    const F f;
    EXPECT_TRUE(InOrder(f.values, f.rows, f.columns));

    static_assert(Makes<C> && Makes<C, int, Index> && Copies<C> && !std::is_polymorphic_v<C>);
    Has<C, int, TList<T>*>({&C::rowCount, &C::columnCount, &C::elementCount}, {&C::columnValues});
    Has<C, TList<int>*, void(int, Index), void(T, int, int)>({&C::columnRows}, {&C::Redefine}, {&C::AddElement});
    const C c;
    EXPECT_TRUE(InOrder(c.rowCount, c.columnCount, c.elementCount, c.columnValues, c.columnRows));

    static_assert(Makes<M> && Makes<M, int, int, int> && Copies<M> && !std::is_polymorphic_v<M>);
    Has<M, int, T*>({&M::matrixType, &M::rowCount, &M::columnCount, &M::capacity, &M::elementCount}, {&M::values});
    Has<M, int*, void(int, int, int)>({&M::columnIndices, &M::rowStarts}, {&M::Redefine});
    const M m;
    EXPECT_TRUE(InOrder(m.matrixType, m.rowCount, m.columnCount, m.capacity, m.values, m.columnIndices, m.rowStarts,
                        m.elementCount));
    Has<M, void(T, int, int), void(const C&), void(M*) const>({&M::AddElement}, {&M::TransposeFrom}, {&M::Transpose});
    Has<M, void(T*, T*) const, void(const Dense&, M*) const>({&M::Multiply}, {&M::Multiply, &M::Normalise});
    Has<M, void(const M&, M*) const, void(const C&, M*) const>({&M::Multiply}, {&M::Normalise});
    Has<Open, void(const Dense&, int, int, F*) const>({&Open::Multiply, &Open::MultiplyUpperTriangle});
    Has<Open, void(const C&, int, int, F*) const>({&Open::MultiplyUpperTriangle});
}

} // namespace

TYPED_TEST(MatrixInterfaceTest, Members)
{
    NameSquareMatrices<TypeParam>(), NameMatrixMxN<TypeParam>(), NameSparseMatrices<TypeParam>();
}

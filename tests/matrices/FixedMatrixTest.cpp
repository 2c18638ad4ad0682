#include "Samples.h"
#include "tests/support/plain/PlainProduct.h"

using namespace CorvexTest;
using Maths::TMatrix2x2;
using Maths::TMatrix3x3;
using Maths::TMatrix4x4;
using Maths::TMatrixMxN;
using Maths::TVector2;
using Maths::TVector3;
using Maths::TVector4;

template <class Matrix, class Scalar, unsigned int order>
struct Fixed
{
    using M = Matrix;
    using T = Scalar;
    static constexpr unsigned int dimension = order;
};

template <class Type>
class FixedMatrix : public ::testing::Test
{};
using FixedTypes = ::testing::Types<Fixed<TMatrix2x2<float>, float, 2>, Fixed<TMatrix2x2<double>, double, 2>,
                                    Fixed<TMatrix3x3<float>, float, 3>, Fixed<TMatrix3x3<double>, double, 3>,
                                    Fixed<TMatrix4x4<float>, float, 4>, Fixed<TMatrix4x4<double>, double, 4>>;
TYPED_TEST_SUITE(FixedMatrix, FixedTypes, TypeNames);

/// The elements 1, 2, 3 ... row by row.
template <class M>
M Counting()
{
    M matrix;
    for (unsigned int i = 0; i < matrix.GetM() * matrix.GetN(); ++i) matrix.elements[i] = static_cast<float>(i + 1);
    return matrix;
}

TYPED_TEST(FixedMatrix, StartsAsTheIdentityAndShowsItsRows)
{
    using T = typename TypeParam::T;
    constexpr unsigned int N = TypeParam::dimension;
    typename TypeParam::M matrix;
    EXPECT_EQ(matrix.GetM(), N);
    EXPECT_EQ(matrix.GetN(), N);
    TMatrixMxN<T> identity(N, N);
    identity.ToIdentity();
    EXPECT_TRUE(SameElements(identity, matrix));

    T* rows[N];
    matrix.GetRows(rows);
    for (unsigned int r = 0; r < N; ++r) EXPECT_EQ(rows[r], matrix.elements + r * N);
    rows[N - 1][0] = T(7);
    EXPECT_EQ(matrix[N - 1][0], T(7));
    matrix.ToNull();
    EXPECT_TRUE(SameElements(Rows<T>(N, N), matrix));
}

TYPED_TEST(FixedMatrix, ComputesByElement)
{
    using T = typename TypeParam::T;
    using M = typename TypeParam::M;
    constexpr unsigned int count = TypeParam::dimension * TypeParam::dimension;
    M const a = Counting<M>();
    M b = a;
    b.Transpose();
    M sum = a, difference = a, scaled = a, divided = a;
    sum += b;
    difference -= b;
    scaled *= T(3);
    divided /= T(3);
    EXPECT_TRUE(SameElements(sum, a + b));
    EXPECT_TRUE(SameElements(difference, a - b));
    EXPECT_TRUE(SameElements(scaled, a * T(3)));
    EXPECT_TRUE(SameElements(divided, a / T(3)));
    M const negated = -(a - a);
    for (unsigned int i = 0; i < count; ++i) {
        unsigned int const mirrored = i % TypeParam::dimension * TypeParam::dimension + i / TypeParam::dimension;
        EXPECT_EQ(b.elements[i], a.elements[mirrored]);
        EXPECT_EQ(sum.elements[i], T(2 + i + mirrored));
        EXPECT_EQ(difference.elements[i], T(i) - T(mirrored));
        EXPECT_EQ(scaled.elements[i], T(3 * (i + 1)));
        EXPECT_EQ(divided.elements[i], T(i + 1) / T(3)) << "a reciprocal would round twice";
        EXPECT_TRUE(std::signbit(negated.elements[i]));
    }
    b = a;
    b *= b[0][1]; // The factor is an element that changes on the way.
    EXPECT_EQ(b.elements[count - 1], T(2 * count));
    b /= b[0][1];
    EXPECT_EQ(b.elements[count - 1], T(2 * count) / T(4));
    EXPECT_EQ((a / T(0)).elements[0], std::numeric_limits<T>::infinity());
    EXPECT_TRUE(std::isnan(((a - a) / T(0)).elements[0]));
}

TYPED_TEST(FixedMatrix, ComparesExactly)
{
    using T = typename TypeParam::T;
    using M = typename TypeParam::M;
    M const a = Counting<M>();
    M b = a;
    EXPECT_TRUE(a == b && !(a != b));
    b[1][1] = std::nextafter(b[1][1], T(9));
    EXPECT_TRUE(a != b && !(a == b));
    EXPECT_TRUE(a - a == -(a - a));
    b[1][1] = std::numeric_limits<T>::quiet_NaN();
    EXPECT_TRUE(b != b && !(b == b));
}

TYPED_TEST(FixedMatrix, MultipliesLikeThePlainSumAlsoInPlace)
{
    using T = typename TypeParam::T;
    using M = typename TypeParam::M;
    constexpr unsigned int N = TypeParam::dimension;
    std::mt19937 random(31);
    SCOPED_TRACE("seed 31");
    for (Content const content : contents) {
        SCOPED_TRACE(content.data());
        TMatrixMxN<T> left(N, N), right(N, N), wide(N, 6);
        Fill(left, content, random);
        Fill(right, "signed zeros", random);
        Fill(wide, content, random);
        M const a = left, b = right;
        Rows<T> first(a), second(b), third(wide), product(N, N), square(N, N), wideProduct(N, 6);
        PlainMultiplyRows(*product, *first, *second, N, N, N);
        PlainMultiplyRows(*square, *first, *first, N, N, N);
        PlainMultiplyRows(*wideProduct, *first, *third, N, N, 6);
        M inPlace = a, self = a, byBlock = a, other = b;
        EXPECT_TRUE(SameElements(product, a * b));
        EXPECT_TRUE(SameElements(product, inPlace *= b));
        EXPECT_TRUE(SameElements(square, self *= self));
        EXPECT_TRUE(SameElements(product, byBlock *= right));
        // With a matrix of run-time size on either side.
        self = a;
        EXPECT_TRUE(SameElements(wideProduct, self * wide));
        EXPECT_TRUE(SameElements(product, left * other));
        EXPECT_TRUE(SameElements(product, left *= other));
    }
}

template <class T>
class FixedMatrices : public ::testing::Test
{};
TYPED_TEST_SUITE(FixedMatrices, Scalars, TypeNames);

TYPED_TEST(FixedMatrices, TakeVectorsAsColumnsAndValuesByRows)
{
    using T = TypeParam;
    EXPECT_EQ(TMatrix2x2<T>(TVector2<T>(1, 3), TVector2<T>(2, 4)), TMatrix2x2<T>(1, 2, 3, 4));
    TMatrix4x4<T> const counting(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    EXPECT_EQ(TMatrix4x4<T>(TVector4<T>(1, 5, 9, 13), TVector4<T>(2, 6, 10, 14), TVector4<T>(3, 7, 11, 15),
                            TVector4<T>(4, 8, 12, 16)),
              counting);
    EXPECT_EQ(TMatrix3x3<T>(counting.elements), TMatrix3x3<T>(1, 2, 3, 4, 5, 6, 7, 8, 9));
    TMatrix3x3<T> const columns(TVector3<T>(1, 4, 7), TVector3<T>(2, 5, 8), TVector3<T>(3, 6, 9));
    EXPECT_EQ(columns, TMatrix3x3<T>(counting.elements));
}

TYPED_TEST(FixedMatrices, ConvertBetweenOrders)
{
    using T = TypeParam;
    TMatrix4x4<T> const four = Counting<TMatrix4x4<T>>();
    TMatrix3x3<T> const three = four;
    TMatrix2x2<T> const two = four;
    EXPECT_EQ(three, TMatrix3x3<T>(1, 2, 3, 5, 6, 7, 9, 10, 11));
    EXPECT_EQ(two, TMatrix2x2<T>(1, 2, 5, 6));
    EXPECT_EQ(TMatrix2x2<T>(three), two);
    EXPECT_EQ(TMatrix4x4<T>(three), TMatrix4x4<T>(1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 0, 0, 0, 1));
    EXPECT_EQ(TMatrix4x4<T>(two), TMatrix4x4<T>(1, 2, 0, 0, 5, 6, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_EQ(TMatrix3x3<T>(two), TMatrix3x3<T>(1, 2, 0, 5, 6, 0, 0, 0, 1));
}

template <class T, class M>
void ExpectVectorProducts(M matrix, TVector2<T> column2, TVector3<T> column3, TVector4<T> column4, TVector2<T> row2,
                          TVector3<T> row3, TVector4<T> row4)
{
    TVector2<T> v2(1, 10);
    TVector3<T> v3(1, 10, 100);
    TVector4<T> v4(1, 10, 100, 1000);
    EXPECT_EQ(matrix * v2, column2);
    EXPECT_EQ(matrix * v3, column3);
    EXPECT_EQ(matrix * v4, column4);
    EXPECT_EQ(v2 * matrix, row2);
    EXPECT_EQ(v3 * matrix, row3);
    EXPECT_EQ(v4 * matrix, row4);
    EXPECT_EQ((v2 *= matrix, v2), row2);
    EXPECT_EQ((v4 *= matrix, v4), row4);
}

TYPED_TEST(FixedMatrices, MultiplyVectorsOfEverySizeOnBothSides)
{
    using T = TypeParam;
    using V2 = TVector2<T>;
    using V3 = TVector3<T>;
    using V4 = TVector4<T>;
    TMatrix4x4<T> const four = Counting<TMatrix4x4<T>>();
    ExpectVectorProducts<T>(Counting<TMatrix2x2<T>>(), V2(21, 43), V3(21, 43, 100), V4(21, 43, 100, 1000), V2(31, 42),
                            V3(31, 42, 100), V4(31, 42, 100, 1000));
    ExpectVectorProducts<T>(Counting<TMatrix3x3<T>>(), V2(21, 54), V3(321, 654, 987), V4(321, 654, 987, 1000),
                            V2(41, 52), V3(741, 852, 963), V4(741, 852, 963, 1000));
    V4 const column(4321, 8765, 13209, 17653), row(13951, 15062, 16173, 17284);
    ExpectVectorProducts<T>(four, V2(21, 65), V3(321, 765, 1209), column, V2(51, 62), V3(951, 1062, 1173), row);
    TMatrixMxN<T> dynamic(5, 5);
    dynamic.ToNull();
    for (unsigned int r = 0; r < 4; ++r)
        for (unsigned int c = 0; c < 4; ++c) dynamic[r][c] = four[r][c];
    ExpectVectorProducts<T>(dynamic, V2(21, 65), V3(321, 765, 1209), column, V2(51, 62), V3(951, 1062, 1173), row);

    EXPECT_EQ(V2(2, 3) ^ V2(5, 7), TMatrix2x2<T>(10, 14, 15, 21));
    EXPECT_EQ(V3(1, 2, 3) ^ V3(1, 10, 100), TMatrix3x3<T>(1, 10, 100, 2, 20, 200, 3, 30, 300));
    EXPECT_EQ(V4(1, 0, 0, 2) ^ V4(3, 4, 5, 6), TMatrix4x4<T>(3, 4, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 6, 8, 10, 12));
}

// A product with a vector of another size is the whole product of the converted matrix, begun at +0.
TYPED_TEST(FixedMatrices, FormTheWholeProductWithVectors)
{
    using T = TypeParam;
    T const infinity = std::numeric_limits<T>::infinity();
    TMatrix2x2<T> const identity;
    TVector2<T> const zeros(-T(0), -T(0));
    EXPECT_FALSE(std::signbit((identity * zeros).x));
    EXPECT_FALSE(std::signbit((zeros * identity).y));
    EXPECT_TRUE(std::isnan((identity * TVector3<T>(1, 1, infinity)).x));
    EXPECT_TRUE(std::isnan((TVector4<T>(1, 1, infinity, 1) * identity).x));
}

TYPED_TEST(FixedMatrices, KeepTheirPeculiarOperators)
{
    using T = TypeParam;
    TMatrix2x2<T> two;
    static_assert(std::is_same_v<decltype(two /= T(1)), TMatrix2x2<T>>, "a copy");
    static_assert(std::is_same_v<decltype(TMatrix3x3<T>() /= T(1)), TMatrix3x3<T>&>);
    TMatrix4x4<T> const a, b = a + a;
    EXPECT_TRUE(a < b && b < a && a < a);
    EXPECT_FALSE(a > b || b > a);
}

TYPED_TEST(FixedMatrices, HaveDeterminantsInClosedForm)
{
    using T = TypeParam;
    T const big = T(1ull << 60);
    EXPECT_EQ(TMatrix2x2<T>(1, 2, 3, 4).Determinant(), T(-2));
    EXPECT_EQ(TMatrix3x3<T>(2, 1, 0, 1, 3, 1, 0, 1, 4).Determinant(), T(18));
    // The terms are 2^60, -2^60 and 1 in the order of their sum: any other order loses the 1.
    EXPECT_EQ(TMatrix3x3<T>(1, 1, 1, 1, 0, big, 1, 1, 0).Determinant(), T(1));
    EXPECT_EQ(TMatrix4x4<T>(0, 2, 0, 0, 3, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 7).Determinant(), T(-210));
}

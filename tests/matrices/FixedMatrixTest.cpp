#include "Samples.h"

using namespace CorvexTest;
using namespace CorvexTest::Maths;

/// The elements 1, 2, 3 ... row by row.
template <class M>
M Counting()
{
    M matrix;
    for (unsigned int i = 0; i < matrix.GetM() * matrix.GetN(); ++i) matrix.elements[i] = static_cast<float>(i + 1);
    return matrix;
}

template <class Matrix>
struct FixedMatrix : ::testing::Test
{};
using FixedTypes = ::testing::Types<TMatrix2x2<float>, TMatrix2x2<double>, TMatrix3x3<float>, TMatrix3x3<double>,
                                    TMatrix4x4<float>, TMatrix4x4<double>>;
struct FixedNames
{
    template <class M>
    static std::string GetName(int)
    {
        return (sizeof(*M().elements) == sizeof(float) ? "float" : "double") + std::to_string(M().GetM());
    }
};
TYPED_TEST_SUITE(FixedMatrix, FixedTypes, FixedNames);

TYPED_TEST(FixedMatrix, ComputesByElement)
{
    using M = TypeParam;
    using T = std::remove_reference_t<decltype(*M().elements)>;
    M const a = Counting<M>();
    M b = a;
    b.Transpose();
    M const sum = a + b, difference = a - b, tripled = a * T(3), divided = a / T(3), negated = -(a - a);
    unsigned int const N = a.GetN();
    for (unsigned int i = 0, t; i < N * N; ++i) {
        t = i % N * N + i / N;
        EXPECT_TRUE(sum.elements[i] == T(2 + i + t) && difference.elements[i] == T(i) - T(t)) << i;
        EXPECT_TRUE(tripled.elements[i] == T(3 * (i + 1)) && divided.elements[i] == T(i + 1) / T(3)) << i;
        EXPECT_TRUE(std::signbit(negated.elements[i]) && a - a == negated) << i;
    }
    b = a;
    b *= b[0][1]; // The factor is an element that changes on the way.
    EXPECT_EQ(b, a + a);
    b /= b[0][1];
    EXPECT_EQ(b, a / T(2));
    b[1][1] = std::nextafter(a[1][1], T(9));
    EXPECT_TRUE(a != b && !(a == b));
    b[1][1] = std::numeric_limits<T>::quiet_NaN();
    EXPECT_TRUE(b != b && !(b == b));
}

template <class T>
struct FixedMatrices : ::testing::Test
{};
TYPED_TEST_SUITE(FixedMatrices, Scalars, TypeNames);

TYPED_TEST(FixedMatrices, TakeVectorsAsColumnsAndConvertBetweenOrders)
{
    using T = TypeParam;
    TMatrix2x2<T> const two(TVector2<T>(1, 5), TVector2<T>(2, 6));
    TMatrix3x3<T> const three(TVector3<T>(1, 5, 9), TVector3<T>(2, 6, 10), TVector3<T>(3, 7, 11));
    TMatrix4x4<T> const four(TVector4<T>(1, 5, 9, 13), TVector4<T>(2, 6, 10, 14), TVector4<T>(3, 7, 11, 15),
                             TVector4<T>(4, 8, 12, 16));
    EXPECT_EQ(four, Counting<TMatrix4x4<T>>());
    EXPECT_EQ(TMatrix2x2<T>(four), two);
    EXPECT_EQ(TMatrix3x3<T>(four), three);
    EXPECT_EQ(TMatrix4x4<T>(three), TMatrix4x4<T>(1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 0, 0, 0, 1));
    EXPECT_EQ(TMatrix4x4<T>(two), TMatrix4x4<T>(1, 2, 0, 0, 5, 6, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_EQ(TMatrix3x3<T>(two), TMatrix3x3<T>(1, 2, 0, 5, 6, 0, 0, 0, 1));
}

/// The products of a matrix with a vector on either side are those of the matrix converted to the vector's size.
template <class Square, class M, class V>
void ExpectProducts(M const& matrix, V v)
{
    Square const square = matrix;
    V column = v * 0, row = column;
    for (unsigned int r = 0; r < square.GetM(); ++r)
        for (unsigned int c = 0; c < square.GetM(); ++c)
            column[r] += square[r][c] * v[c], row[c] += v[r] * square[r][c];
    EXPECT_TRUE(matrix * v == column && v * matrix == row && (v *= matrix) == row) << matrix.GetM() << square.GetM();
}

TYPED_TEST(FixedMatrices, MultiplyVectorsOfEverySizeOnBothSides)
{
    using T = TypeParam;
    auto const expectAll = [](auto const& matrix) {
        ExpectProducts<TMatrix2x2<T>>(matrix, TVector2<T>(1, 10));
        ExpectProducts<TMatrix3x3<T>>(matrix, TVector3<T>(1, 10, 100));
        ExpectProducts<TMatrix4x4<T>>(matrix, TVector4<T>(1, 10, 100, 1000));
    };
    expectAll(Counting<TMatrix2x2<T>>());
    expectAll(Counting<TMatrix3x3<T>>());
    expectAll(Counting<TMatrix4x4<T>>());
    expectAll(Make<T>(4, 5, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
    EXPECT_EQ(TVector2<T>(2, 3) ^ TVector2<T>(5, 7), TMatrix2x2<T>(10, 14, 15, 21));

    // A product with a vector of another size is the whole product of the converted matrix, begun at +0.
    TMatrix2x2<T> const identity;
    TVector2<T> const zeros(-T(0), -T(0));
    T const infinity = std::numeric_limits<T>::infinity();
    EXPECT_FALSE(std::signbit((identity * zeros).x) || std::signbit((zeros * identity).y));
    EXPECT_TRUE(std::isnan((identity * TVector3<T>(1, 1, infinity)).x));
    EXPECT_TRUE(std::isnan((TVector4<T>(1, 1, infinity, 1) * identity).x));
}

TYPED_TEST(FixedMatrices, HaveDeterminantsInClosedFormAndPeculiarOperators)
{
    using T = TypeParam;
    EXPECT_EQ(TMatrix2x2<T>(1, 2, 3, 4).Determinant(), T(-2));
    // The terms are 2^60, -2^60 and 1 in the order of their sum: any other order loses the 1.
    EXPECT_EQ(TMatrix3x3<T>(1, 1, 1, 1, 0, T(1ull << 60), 1, 1, 0).Determinant(), T(1));
    EXPECT_EQ(TMatrix4x4<T>(0, 2, 0, 0, 3, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 7).Determinant(), T(-210));

    static_assert(std::is_same_v<decltype(std::declval<TMatrix2x2<T>&>() /= T(1)), TMatrix2x2<T>>, "a copy");
    TMatrix4x4<T> const a, b = a + a;
    EXPECT_TRUE(a < b && b < a && a < a && !(a > b || b > a));
}

#include "Samples.h"

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct FixedMatrices : ::testing::Test
{};
TYPED_TEST_SUITE(FixedMatrices, Scalars, TypeNames);

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

TYPED_TEST(FixedMatrices, ConvertByTheirUpperLeftBlockAndMultiplyVectorsOfOtherSizesAsConverted)
{
    using T = TypeParam;
    TMatrix3x3<T> const three(TVector3<T>(1, 4, 7), TVector3<T>(2, 5, 8), TVector3<T>(3, 6, 9));
    EXPECT_TRUE(three == TMatrix3x3<T>(1, 2, 3, 4, 5, 6, 7, 8, 9)) << "vectors are columns";
    EXPECT_TRUE(TMatrix2x2<T>(three) == TMatrix2x2<T>(1, 2, 4, 5));
    EXPECT_EQ(TMatrix4x4<T>(three), TMatrix4x4<T>(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1));
    EXPECT_TRUE(three * TVector2<T>(1, 10) == TVector2<T>(21, 54) && TVector2<T>(1, 10) * three == TVector2<T>(41, 52));
    EXPECT_TRUE(three * TVector4<T>(1, 10, 100, 5) == TVector4<T>(321, 654, 987, 5));
    EXPECT_EQ(TVector2<T>(2, 3) ^ TVector2<T>(5, 7), TMatrix2x2<T>(10, 14, 15, 21));
    // A product with a vector of another size is the whole product of the converted matrix, begun at +0.
    TMatrix2x2<T> const identity;
    TVector2<T> const zeros(-T(0), -T(0));
    T const infinity = std::numeric_limits<T>::infinity();
    EXPECT_FALSE(std::signbit((identity * zeros).x) || std::signbit((zeros * identity).y));
    EXPECT_TRUE(std::isnan((identity * TVector3<T>(1, 1, infinity)).x));
    EXPECT_TRUE(std::isnan((TVector4<T>(1, 1, infinity, 1) * identity).x));
}

TYPED_TEST(FixedMatrices, AreTransformedOnEitherSideInEitherLayout)
{
    using T = TypeParam;
    TVector3<T> point(2, 4, 8);
    for (unsigned int flags = 0; flags < 4; ++flags) {
        bool const right = flags & 1, rows = flags & 2;
        TMatrix4x4<T> moved(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1), scaled;
        TMatrix3x3<T> turned;
        // The place of the offset is the last row or column; it is scaled itself where the scale comes after it.
        moved.Translate(point, right, rows);
        EXPECT_EQ(rows ? moved[3][1] : moved[1][3], right == rows ? T(4) : T(8)) << flags;
        EXPECT_EQ(rows ? moved[1][3] : moved[3][1], T(0)) << flags;
        // About a point: less the point, scaled by 3 along y, and back; on the other side these act in reverse.
        scaled.Scale(point, 1, 3, 1, right, rows);
        EXPECT_TRUE(scaled[1][1] == 3 && (rows ? scaled[3][1] : scaled[1][3]) == (right == rows ? -8 : 8)) << flags;
        turned.Rotate(Numbers::fullTurn<T> / 4, TVector3<T>(0, 0, 5), right, rows);
        EXPECT_NEAR(turned[0][1], rows ? 1 : -1, T(1e-6)) << flags;
        TMatrix3x3<T> argument(0, 1, 2, 3, 4, 5, 6, 7, 8);
        turned.Multiply(&argument, right, rows);
        EXPECT_EQ(argument[0][1], T(rows ? 1 : 3)) << "transposed for columns, and left so";
    }
    TMatrix3x3<T> frame(0, 3, 0, 0, 5, -2, 7, 7, 7), flat(2, 0, 0, -4, 0, 0, 1, 2, 3);
    frame.ToOrthonormal();
    flat.ToOrthonormal();
    EXPECT_EQ(frame, TMatrix3x3<T>(0, 1, 0, 0, 0, -1, -1, 0, 0)) << "the direction of the first row is kept";
    EXPECT_EQ(flat, TMatrix3x3<T>(1, 0, 0, 0, 0, 0, 0, 0, 0)) << "parallel first rows";
}

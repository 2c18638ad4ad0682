#include <tests/pointsets/OpenSet.h>
#include <tests/support/Bits.h>

using namespace CorvexTest;

template <class F>
struct MatrixOperationsTest : ::testing::Test
{};
TYPED_TEST_SUITE(MatrixOperationsTest, PointFamily, TypeNames);

TYPED_TEST(MatrixOperationsTest, ProductsHaveTheBitsOfThePointByPointForm)
{
    using T = typename TypeParam::T;
    std::mt19937 random(5489);
    SCOPED_TRACE("seed 5489");
    Maths::TMatrixMxN<T> rows, values(4, 4);
    // As vectors of the given type, with a last component of 1, where that is longer than a point; else as they are.
    const auto expectProducts = [&](auto wide, const auto& matrix) {
        OpenSet<TypeParam> set(1200);
        while (Below(random, 900) > 0 && set.GetCount() < 1200) set.Add(typename TypeParam::Vector());
        for (unsigned int i = 0; i < set.GetCount() * TypeParam::dimension; ++i) set[0][i] = AwkwardValue<T>(random, 3);
        set.ToMatrix(&rows);
        set *= matrix;
        EXPECT_TRUE(set.GetBoundingBox() == OpenSet<TypeParam>(set).GetBoundingBox());
        for (unsigned int i = 0; i < set.GetCount(); ++i) {
            const typename TypeParam::Vector old(rows[i]);
            wide = old;
            wide[sizeof(wide) / sizeof(T) - 1] = 1;
            const auto point = sizeof(wide) > sizeof(old) ? typename TypeParam::Vector(wide * matrix) : old * matrix;
            for (unsigned int j = 0; j < TypeParam::dimension; ++j) ASSERT_TRUE(SameBits(set[i][j], point[j])) << i;
        }
    };
    for (unsigned int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        for (unsigned int i = 0; i < 16; ++i) values[0][i] = AwkwardValue<T>(random, 3);
        expectProducts(Maths::TVector2<T>(), Maths::TMatrix2x2<T>(values));
        expectProducts(Maths::TVector3<T>(), Maths::TMatrix3x3<T>(values));
        expectProducts(Maths::TVector4<T>(), Maths::TMatrix4x4<T>(values));
        Maths::TMatrixMxN<T> shape(round % 6, round % 5);
        for (unsigned int i = 0; i < shape.GetM() * shape.GetN(); ++i) shape[0][i] = values[0][i % 16];
        expectProducts(Maths::TVector2<T>(), shape);
    }
}

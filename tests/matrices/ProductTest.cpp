#include "Samples.h"
#include "tests/support/plain/PlainProduct.h"

#include <CorvexMaths/matrices/ProductTiles.h>

using namespace CorvexTest;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

template <class T>
class DenseProduct : public ::testing::Test
{};
TYPED_TEST_SUITE(DenseProduct, Scalars, TypeNames);

// Shapes about the edges of tiles, registers and blocks.
constexpr unsigned int shapes[][3] = {{0, 0, 0},    {3, 0, 5},    {1, 1, 1},     {2, 7, 3},    {4, 4, 4},
                                      {5, 9, 8},    {8, 3, 17},   {7, 40, 1},    {13, 1, 33},  {37, 41, 39},
                                      {9, 255, 20}, {6, 256, 11}, {11, 257, 16}, {70, 600, 67}};

TYPED_TEST(DenseProduct, HasTheBitsOfThePlainSum)
{
    using T = TypeParam;
    std::mt19937 random(71);
    SCOPED_TRACE("seed 71");
    for (auto const& [m, inner, n] : shapes) {
        for (Content const content : contents) {
            SCOPED_TRACE(::testing::Message() << m << " by " << inner << " by " << n << ", content " << content);
            Maths::TMatrixMxN<T> a(m, inner), b(inner, n);
            Fill(a, content, random);
            Fill(b, random() % 2 ? content : Content("signed zeros"), random);
            Rows<T> left(a), right(b), expected(m, n);
            PlainMultiplyRows(*expected, *left, *right, m, inner, n);
            EXPECT_TRUE(SameElements(expected, a * b));
            EXPECT_TRUE(SameElements(expected, a *= b));
        }
    }
}

// The processor decides which register width runs. Both must start from what c holds, read b from any column on, and
// subtract as well as add.
TYPED_TEST(DenseProduct, HasTheSameBitsAtEveryRegisterWidth)
{
    using T = TypeParam;
    std::mt19937 random(72);
    SCOPED_TRACE("seed 72");
    constexpr unsigned int m = 10, inner = 300, column = 3, n = 34;
    for (Content const content : contents) {
        SCOPED_TRACE(content.data());
        Maths::TMatrixMxN<T> a(m, inner), b(inner, n + column), c(m, n);
        Fill(a, content, random);
        Fill(b, content, random);
        Fill(c, "signed zeros", random);
        Rows<T> left(a), minus(-a), right(b), part(b, column);
        Rows<T> added(c), taken(c), narrow(c), wide(c), narrowTaken(c), wideTaken(c);
        PlainMultiplyRows(*added, *left, *part, m, inner, n);
        PlainMultiplyRows(*taken, *minus, *part, m, inner, n);

        auto const from = [](Rows<T>& rows, unsigned int first) { return Kernels::Block<T>{*rows, first}; };
        Kernels::RunTiles<T, 16, false>(from(narrow, 0), from(left, 0), from(right, column), m, inner, n);
        Kernels::RunTiles<T, 32, false>(from(wide, 0), from(left, 0), from(right, column), m, inner, n);
        Kernels::RunTiles<T, 16, true>(from(narrowTaken, 0), from(left, 0), from(right, column), m, inner, n);
        Kernels::RunTiles<T, 32, true>(from(wideTaken, 0), from(left, 0), from(right, column), m, inner, n);
        EXPECT_TRUE(SameElements(added, narrow));
        EXPECT_TRUE(SameElements(added, wide));
        EXPECT_TRUE(SameElements(taken, narrowTaken));
        EXPECT_TRUE(SameElements(taken, wideTaken));
    }
}

// The argument is this matrix, emptied before it is read; only a factor that is not finite makes itself felt.
TYPED_TEST(DenseProduct, OfAMatrixWithItselfInPlaceReadsTheRunningSums)
{
    using T = TypeParam;
    for (unsigned int const order : {2u, 9u}) {
        for (T const odd : {T(3), std::numeric_limits<T>::infinity()}) {
            SCOPED_TRACE(::testing::Message() << "order " << order << " with " << odd);
            Maths::TMatrixMxN<T> a(order, order);
            for (unsigned int r = 0; r < order; ++r)
                for (unsigned int c = 0; c < order; ++c) a[r][c] = T(1 + r + c);
            a[1][0] = odd;
            Rows<T> aside(a), expected(order, order);
            PlainMultiplyRows(*expected, *aside, *expected, order, order, order);
            EXPECT_TRUE(SameElements(expected, a *= a));
            EXPECT_EQ(a[0][0], T(0));
            EXPECT_EQ(std::isnan(a[1][1]), std::isinf(odd));
        }
    }
}

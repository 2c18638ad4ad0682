#include "Samples.h"
#include "tests/support/plain/PlainProduct.h"

#include <CorvexMaths/matrices/internal/ProductTiles.h>

using namespace CorvexTest;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

template <class T>
struct DenseProduct : ::testing::Test
{};
TYPED_TEST_SUITE(DenseProduct, Scalars, TypeNames);

// Shapes about the edges of tiles, registers and blocks.
constexpr unsigned int shapes[][3] = {{3, 0, 5},   {1, 1, 1},    {2, 7, 3},    {4, 4, 4},   {5, 9, 8},    {8, 3, 17},
                                      {13, 1, 33}, {37, 41, 39}, {9, 255, 20}, {6, 256, 1}, {11, 257, 16}};

TYPED_TEST(DenseProduct, HasTheBitsOfThePlainSum)
{
    using T = TypeParam;
    std::mt19937 random(71);
    for (auto const& [m, inner, n] : shapes) {
        for (Content const content : contents) {
            SCOPED_TRACE(::testing::Message() << "seed 71, " << m << ' ' << inner << ' ' << n << ", " << content);
            Maths::TMatrixMxN<T> a(m, inner), b(inner, n);
            Fill(a, content, random);
            Fill(b, random() % 2 ? content : Content("signed zeros"), random);
            Rows<T> left(a), right(b), expected(m, n);
            PlainMultiplyRows(*expected, *left, *right, m, inner, n);
            EXPECT_TRUE(SameElements(expected, a * b) && SameElements(expected, a *= b));
        }
    }
}

// The processor decides which register width runs. Both must start from what c holds, read b from any column on, and
// subtract as well as add.
TYPED_TEST(DenseProduct, HasTheSameBitsAtEveryRegisterWidth)
{
    using T = TypeParam;
    std::mt19937 random(72);
    constexpr unsigned int m = 15, inner = 300, column = 3, n = 63;
    for (Content const content : contents) {
        SCOPED_TRACE("seed 72, " + std::string(content));
        Maths::TMatrixMxN<T> a(m, inner), b(inner, n + column), c(m, n);
        Fill(a, content, random);
        Fill(b, content, random);
        Fill(c, "signed zeros", random);
        Rows<T> left(a), minus(-a), right(b), part(b, column);
        auto const expectBits = [&](auto run, Rows<T>& signedLeft) {
            Rows<T> expected(c), actual(c);
            PlainMultiplyRows(*expected, *signedLeft, *part, m, inner, n);
            run(Kernels::Block<T>{*actual, 0}, Kernels::Block<T>{*left, 0}, Kernels::Block<T>{*right, column}, m, inner,
                n);
            EXPECT_TRUE(SameElements(expected, actual));
        };
        expectBits(Kernels::RunTiles<T, 16, false>, left);
        expectBits(Kernels::RunTiles<T, 32, false>, left);
        expectBits(Kernels::RunTiles<T, 64, false>, left);
        expectBits(Kernels::RunTiles<T, 16, true>, minus);
        expectBits(Kernels::RunTiles<T, 32, true>, minus);
        expectBits(Kernels::RunTiles<T, 64, true>, minus);
    }
}

// The argument is this matrix, emptied before it is read; only a factor that is not finite makes itself felt.
TYPED_TEST(DenseProduct, OfAMatrixWithItselfInPlaceReadsTheRunningSums)
{
    std::mt19937 random(73);
    SCOPED_TRACE("seed 73");
    for (unsigned int const order : {2u, 9u}) {
        Maths::TMatrixMxN<TypeParam> a(order, order);
        Fill(a, "uniform", random);
        a[1][0] = std::numeric_limits<TypeParam>::infinity();
        Rows<TypeParam> aside(a), expected(order, order);
        PlainMultiplyRows(*expected, *aside, *expected, order, order, order);
        EXPECT_TRUE(SameElements(expected, a *= a) && a[0][0] == 0 && std::isnan(a[1][1])) << order;
    }
}

#include "Samples.h"
#include "tests/support/plain/PlainProduct.h"

#include <CorvexMaths/matrices/internal/ProductTiles.h>

using namespace CorvexTest;
namespace Kernels = Halmont::Orrin::CorvexMaths::Kernels;

template <class T>
struct DenseProduct : ::testing::Test
{};
TYPED_TEST_SUITE(DenseProduct, Scalars, TypeNames);

// The processor decides which register width runs. Both must start from what c holds, read b from any column on, and
// subtract as well as add.
TYPED_TEST(DenseProduct, HasTheSameBitsAtEveryRegisterWidth)
{
    using T = TypeParam;
    std::mt19937 random(72);
    constexpr unsigned int m = 15, inner = 300, column = 3, n = 63;
    for (Content const content : {"uniform", "signed zeros", "mixed"}) {
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

// The argument is this matrix, emptied before it is read: the running sums are 0 times what is not finite.
TYPED_TEST(DenseProduct, OfAMatrixWithItselfInPlaceReadsTheRunningSums)
{
    auto a = Make<TypeParam>(2, 2, {1, 2, std::numeric_limits<double>::infinity(), 4});
    a *= a;
    EXPECT_TRUE(a[0][0] == 0 && a[0][1] == 0 && std::isnan(a[1][0]) && std::isnan(a[1][1]));
}

#include "Samples.h"
#include "tests/support/plain/PlainEigenspace.h"

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

template <class T>
class Eigenspace : public ::testing::Test
{};
TYPED_TEST_SUITE(Eigenspace, Scalars, TypeNames);

TYPED_TEST(Eigenspace, HasTheBitsOfTheFullSweeps)
{
    using T = TypeParam;
    std::mt19937 random(51);
    for (unsigned int round = 0; round < 40 * 8 * std::size(contents); ++round) {
        SCOPED_TRACE(::testing::Message() << "seed 51, round " << round);
        unsigned int const order = round % 8;
        TMatrixMxN<T> matrix(order, order);
        Fill(matrix, contents[round / 8 % std::size(contents)], random);
        // Further columns of zeros, so that the iteration of the leading block can end.
        for (unsigned int i = 0; round % 3 == 0 && i < order * order; ++i)
            if (i % order >= 3) matrix[i / order][i % order] *= T(i / order == i % order);

        // The values stand in a row above the vectors.
        Rows<T> a(matrix), plain(order + 1, order), own(plain), work(2u, order);
        bool const found = Plain::EigenspaceRows(*a, plain[0], *plain + 1, int(order), work[0], work[1]);
        auto const compare = [&](auto const& m, auto* vectors) {
            EXPECT_EQ(m.Eigenspace(own[0], vectors), found);
            for (unsigned int i = 0; i < order * order; ++i)
                own[i / order + 1][i % order] = vectors[i / order][i % order];
            EXPECT_TRUE(SameElements(plain, own));
        };
        compare(matrix, *own + 1);
        if (order == 2) compare(TMatrix2x2<T>(matrix), std::vector<TVector2<T>>(2).data());
        if (order == 3) compare(TMatrix3x3<T>(matrix), std::vector<TVector3<T>>(3).data());
        if (order == 4) compare(TMatrix4x4<T>(matrix), std::vector<TVector4<T>>(4).data());
        if (order != 3 || !found || contents[round / 8 % std::size(contents)] != "uniform") continue;
        // The lower triangle differs from the upper one and plays no part.
        TMatrix3x3<T> mirrored = matrix;
        for (unsigned int c : {0u, 1u}) mirrored[c + 1][c] = mirrored[c][c + 1];
        mirrored[2][0] = mirrored[0][2];
        for (unsigned int i = 0; i < 3; ++i) {
            TVector3<T> const v(own[i + 1]);
            EXPECT_TRUE((mirrored * v).IsEqualTo(v * own[0][i], 16 * std::numeric_limits<T>::epsilon()));
        }
    }
}

TYPED_TEST(Eigenspace, NeedsAnExactEndAndAValueAboveTheTolerance)
{
    using T = TypeParam;
    T const small = static_cast<T>(1e-6f), above = std::nextafter(small, T(1)), tiny = std::numeric_limits<T>::min();
    std::pair<TMatrixMxN<T>, bool> const rows[] = {
        {Make<T>(0, 0, {}), false},
        {Make<T>(2, 2, {small, 0, 7, -small}), false},
        {Make<T>(3, 3, {0, 0, 0, 0, 0, 0, 0, 0, -above}), true},
        {Make<T>(4, 4, {3, 0, 0, 0, 0, 2, 0, tiny, 0, 0, 1, 0, 0, 0, 0, 4}), false}};
    T one = T(0), *values = &one, **vectors = &values;
    EXPECT_FALSE(Make<T>(1, 2, {1, 2}).Eigenspace(&values, &vectors));
    EXPECT_TRUE(values == &one && vectors == &values) << "untouched where the matrix is not square";
    for (auto const& [matrix, found] : rows) {
        SCOPED_TRACE(matrix.GetM());
        EXPECT_EQ(matrix.Eigenspace(&values, &vectors), found);
        EXPECT_TRUE((values != nullptr) == found && (vectors != nullptr) == found);
        for (unsigned int i = 0; found && i < matrix.GetM(); ++i) {
            EXPECT_TRUE(values[i] == matrix[i][i] && vectors[i][i] == T(1));
            delete[] vectors[i];
        }
        delete[] vectors;
        delete[] values;
    }
}

// Moves of compressed matrices.

#include "../support/Types.h"

#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>

#include <type_traits>
#include <utility>

namespace
{

using namespace CorvexTest::Maths;

template <class T>
struct SparseMoves : testing::Test
{
    using Rows = TCRSMatrixMxN<T>;
    using Columns = TCCSMatrixMxN<T>;
    static_assert(std::is_nothrow_move_constructible_v<Rows> && std::is_nothrow_move_assignable_v<Columns>);

    /// Diagonals of ones.
    static Columns Diagonal(int n)
    {
        Columns columns(n, 1);
        for (int i = 0; i < n; ++i) columns.AddElement(1, i, i);
        return columns;
    }
    static Rows RowsOf(int n)
    {
        Rows rows;
        rows.TransposeFrom(Diagonal(n));
        return rows;
    }
};
TYPED_TEST_SUITE(SparseMoves, CorvexTest::Scalars, CorvexTest::TypeNames);

TYPED_TEST(SparseMoves, HandTheArraysOn)
{
    auto columns = this->Diagonal(2);
    const auto* const lists = columns.columnValues;
    auto moved = std::move(columns);
    EXPECT_TRUE(columns.columnCount == 0 && columns.columnValues == nullptr && moved.columnValues == lists);
    columns = moved; // shared from here on
    columns = std::move(moved);
    EXPECT_TRUE(columns.columnValues == lists && moved.elementCount == 0);
    columns.AddElement(3, 1, 1);

    auto rows = this->RowsOf(2);
    rows.matrixType = -2;
    const TypeParam* const values = rows.values;
    TCRSMatrixMxN<TypeParam> taken(1, 1, 1);
    taken = std::move(rows);
    EXPECT_TRUE(taken.values == values && taken.matrixType == -2 && taken.elementCount == 2);
    EXPECT_TRUE(rows.values == nullptr && rows.rowCount == 0 && rows.matrixType == 11);
    taken = static_cast<TCRSMatrixMxN<TypeParam>&&>(taken);
    rows.Redefine(1, 1, 1);
    EXPECT_TRUE(taken.values == values && rows.capacity == 1);
}

} // namespace

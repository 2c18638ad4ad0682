// Compressed matrices where memory runs out, and their moves.

#include "../support/FailingAllocator.h"
#include "../support/Types.h"

#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>

#include <type_traits>
#include <utility>

namespace
{

using namespace CorvexTest::Maths;
using CorvexTest::FailEachAllocation;

template <class T>
struct SparseExceptions : testing::Test
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
TYPED_TEST_SUITE(SparseExceptions, CorvexTest::Scalars, CorvexTest::TypeNames);

TYPED_TEST(SparseExceptions, LeaveTheResultEmptyOrAsItWas)
{
    using Matrix = typename TestFixture::Rows;
    static const TCCSMatrixMxN<TypeParam> columns = this->Diagonal(3);
    static const Matrix left = this->RowsOf(3);
    static TMatrixMxN<TypeParam> dense(3, 3);
    dense.ToIdentity();
    const std::pair<const char*, void (*)(Matrix & result)> rows[] = {
        {"redefine", [](Matrix& r) { r.Redefine(3, 3, 3); }},
        {"transpose", [](Matrix& r) { left.Transpose(&r); }},
        {"transpose from", [](Matrix& r) { r.TransposeFrom(columns); }},
        {"times sparse", [](Matrix& r) { left.Multiply(left, &r); }},
        {"times dense", [](Matrix& r) { left.Multiply(dense, &r); }},
        {"normalise", [](Matrix& r) { left.Normalise(dense, &r); }},
        {"normalise columns", [](Matrix& r) { left.Normalise(columns, &r); }}};
    for (const auto& [name, change] : rows) {
        SCOPED_TRACE(name);
        const auto check = [](Matrix& result, bool failed) {
            const bool isAsItWas = result.rowCount == 2 && result.capacity == 2 && result.values[1] == 1;
            const bool isEmpty = result.rowCount == 0 && result.capacity == 0 && result.values == nullptr;
            EXPECT_TRUE(failed ? isAsItWas || isEmpty : result.rowCount == 3);
            const Matrix copy(result);
            result = TestFixture::RowsOf(3);
            EXPECT_EQ(result.elementCount, 3);
        };
        EXPECT_GE(FailEachAllocation([] { return TestFixture::RowsOf(2); }, change, check), 4);
    }
}

TYPED_TEST(SparseExceptions, KeepTheListsOfAColumnOfOneLength)
{
    const auto change = [](auto& columns) { columns.AddElement(TypeParam(2), 1, 0); };
    const auto check = [](auto& columns, bool failed) {
        const unsigned int count = failed ? 1 : 2;
        EXPECT_TRUE(columns.columnRows[0].GetCount() == count && columns.columnValues[0].GetCount() == count);
        EXPECT_EQ(columns.elementCount, static_cast<int>(count) + 1);
    };
    EXPECT_EQ(FailEachAllocation([&] { return this->Diagonal(2); }, change, check), 2);
}

TYPED_TEST(SparseExceptions, MovesHandTheArraysOn)
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

// Compressed matrices: how they fill, transpose and share; products held to their plain forms bit by bit.

#include "../support/Bits.h"
#include "../support/Types.h"
#include "../support/plain/PlainSparse.h"

#include <CorvexMaths/sparse/TMatrixFragment.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

// In place of the threading runtime's: the tests choose the answer.
static int threads = 1, asked = 0;
extern "C" int omp_get_max_threads()
{
    ++asked;
    return threads;
}

namespace
{

using Three = std::array<int, 3>;
enum Kind : unsigned int
{
    Finite,
    Odd,
    Unordered
};

/// Values that cancel, vanish and overflow; in odd content infinities and NaN too.
template <class T>
T Value(std::mt19937& random, Kind kind)
{
    using Limits = std::numeric_limits<T>;
    const T values[] = {1,
                        -1,
                        T(1e-6f),
                        T(-1e-3f),
                        0,
                        T(-0.0),
                        T(-0.7),
                        T(1000.37),
                        Limits::max(),
                        Limits::infinity(),
                        Limits::quiet_NaN()};
    return values[random() % (kind == Odd ? 11 : 9)];
}

/// A matrix with 1 to 6 elements, at ascending rows below n, in each column but the first ones, which stay empty; if
/// unordered, rows repeat and turn back.
template <class T>
TCCSMatrixMxN<T> ByColumns(std::mt19937& random, int n, int columnCount, Kind kind, int emptyColumns)
{
    TCCSMatrixMxN<T> matrix(columnCount, 10);
    for (int c = emptyColumns; c < columnCount; ++c) {
        std::vector<int> rows(1 + random() % 6);
        for (int& row : rows) row = static_cast<int>(random() % static_cast<unsigned int>(n));
        if (kind != Unordered) std::sort(rows.begin(), rows.end());
        const auto end = kind == Unordered ? rows.end() : std::unique(rows.begin(), rows.end());
        for (auto row = rows.begin(); row != end; ++row) matrix.AddElement(Value<T>(random, kind), *row, c);
    }
    return matrix;
}

/// Such a matrix turned round. As no empty row follows a filled one, every walk stays within the arrays.
template <class T>
TCRSMatrixMxN<T> ByRows(std::mt19937& random, int rowCount, int n, Kind kind, int emptyRows)
{
    TCRSMatrixMxN<T> matrix;
    matrix.TransposeFrom(ByColumns<T>(random, n, rowCount, kind, emptyRows));
    matrix.columnCount = n;
    return matrix;
}

/// Compares all that a matrix holds with elements in order and with room for some more.
template <class T>
void ExpectElements(const TCRSMatrixMxN<T>& matrix, const Elements<T>& expected, int rows, int columns, int spare = 0)
{
    const int count = static_cast<int>(expected.size());
    ASSERT_TRUE(matrix.rowCount == rows && matrix.columnCount == columns && matrix.capacity == count + spare);
    std::vector<int> starts(static_cast<std::size_t>(rows), 0x7fffffff);
    starts.push_back(matrix.capacity);
    bool isSame = matrix.elementCount == count;
    for (int k = count - 1; k >= 0; --k) {
        const auto& [value, row, column] = expected[static_cast<std::size_t>(k)];
        isSame &= SameBits(matrix.values[k], value) && matrix.columnIndices[k] == column;
        starts[static_cast<std::size_t>(row)] = k;
    }
    EXPECT_TRUE(isSame && std::equal(starts.begin(), starts.end(), matrix.rowStarts));
}

// What is released twice, never, or too early shows under the address sanitizer.
template <class M, class Redefine, class Address>
void ExpectSharing(M& first, const Redefine& redefine, const Address& address)
{
    first.AddElement(3, 0, 0);
    M empty, second(first), third(first), none(empty);
    redefine(third);
    EXPECT_NE(address(third), address(first));
    none = third = second;
    second = *&second;
    EXPECT_TRUE(address(second) == address(first) && address(none) == address(first) && none.elementCount == 1);
    redefine(second);
    second = empty;
    EXPECT_TRUE(address(second) == nullptr && address(first)[0] == 3);
}

template <class T>
struct Sparse : ::testing::Test
{};
TYPED_TEST_SUITE(Sparse, Scalars, TypeNames);

} // namespace

TYPED_TEST(Sparse, FragmentStartsWithRoomAndGrowsByHalfOfIt)
{
    for (const auto& [n, step] : {std::pair(0u, 1u), std::pair(1u, 1u), std::pair(5u, 2u), std::pair(2000u, 1000u)}) {
        TMatrixFragment<TypeParam> fragment;
        fragment.SetDimensions(n);
        const int* const block = fragment.columns.GetStream();
        for (unsigned int i = 0; i < n; ++i) fragment.columns.Add(int(i));
        EXPECT_TRUE(fragment.columns.GetStream() == block && fragment.values.GetGrowSize() == step) << n;
    }
}

TYPED_TEST(Sparse, TransposesFromColumnsInTheirOrderAndFromRowsSorted)
{
    TCCSMatrixMxN<TypeParam> source(4, 7);
    EXPECT_EQ(source.columnRows[3].GetGrowSize(), 7u);
    const Three additions[] = {{5, 1, 6}, {2, 3, 6}, {7, 0, 8}, {5, 0, 8}, {2, 1, 8}, {5, 1, 8}};
    TypeParam value = 0;
    for (const auto& [row, column, rowsSoFar] : additions) {
        source.AddElement(value += 1, row, column);
        EXPECT_EQ(source.rowCount, rowsSoFar) << value;
    }
    TCRSMatrixMxN<TypeParam> turned(2, 2, 2), unsorted;
    turned.matrixType = 5;
    turned.TransposeFrom(source);
    ExpectElements(turned, {{3, 0, 7}, {4, 0, 5}, {1, 1, 5}, {5, 1, 2}, {6, 1, 5}, {2, 3, 2}}, 4, 8);
    turned.Transpose(&unsorted); // the row before the empty one is searched to the end of the arrays
    ExpectElements(unsorted, {{5, 2, 1}, {2, 2, 3}, {4, 5, 0}, {1, 5, 1}, {3, 7, 0}}, 8, 4, 1);

    unsorted.Redefine(2, 3, 4);
    for (const int column : {2, 0, 2}) unsorted.AddElement(value += 1, 0, column);
    unsorted.AddElement(10, 1, 0);
    unsorted.Transpose(&turned);
    EXPECT_TRUE(turned.matrixType == 5 && unsorted.matrixType == 11);
    ExpectElements(turned, {{8, 0, 0}, {10, 0, 1}, {7, 2, 0}}, 3, 2, 1); // the first of two in one column
    // What was not added is read as column 0, and what an empty row lets be found twice is taken no further than fits.
    TypeParam x[] = {1, 1}, y[3];
    turned.Multiply(x, y);
    TCRSMatrixMxN<TypeParam> hollow(3, 3, 2);
    hollow.AddElement(1, 0, 0);
    hollow.AddElement(2, 2, 1);
    hollow.Transpose(&turned);
    ExpectElements(turned, {{1, 0, 0}, {2, 1, 0}}, 3, 3);
}

TYPED_TEST(Sparse, CopiesShareTheirArraysAndReleaseThemOnce)
{
    TCRSMatrixMxN<TypeParam> byRows(1, 1, 1);
    ExpectSharing(
        byRows, [](auto& m) { m.Redefine(2, 2, 2); }, [](auto& m) { return m.values; });
    TCCSMatrixMxN<TypeParam> byColumns(1, 1);
    const auto firstList = [](auto& m) { return m.columnValues ? m.columnValues->GetStream() : nullptr; };
    ExpectSharing(
        byColumns, [](auto& m) { m.Redefine(2, 2); }, firstList);

    const TCCSMatrixMxN<TypeParam> behind(byColumns);
    byColumns.AddElement(4, 1, 0);
    byRows.TransposeFrom(behind);
    ExpectElements(byRows, {{3, 0, 0}}, 1, 1); // a sharer does not count what it did not add
}

TYPED_TEST(Sparse, ProductsHaveTheBitsOfThePlainFormForAnyNumberOfChunks)
{
    using T = TypeParam;
    std::mt19937 random(41);
    SCOPED_TRACE("seed 41");
    // Rows, inner size, columns: about the blocks of columns, and with rows and columns that differ.
    const Three shapes[] = {{1, 1, 1}, {9, 4, 9}, {30, 20, 12}, {8, 5, 513}, {20, 30, 5000}, {4, 9, 2049}};
    for (unsigned int pass = 0; pass < 18; ++pass) {
        const auto& [m, inner, n] = shapes[pass / 3];
        const Kind kind = Kind(pass % 3);
        const int order = std::min(n, m), empty = m / 5;
        threads = std::vector{1, 2, 7, 40}[random() % 4];
        SCOPED_TRACE(::testing::Message() << "seed 41, pass " << pass << ", chunks " << threads);
        const TCRSMatrixMxN<T> a = ByRows<T>(random, m, inner, kind, empty), b = ByRows<T>(random, inner, n, kind, 0);
        TMatrixMxN<T> dense(static_cast<unsigned int>(inner), static_cast<unsigned int>(n));
        for (unsigned int i = 0; i < dense.GetM() * dense.GetN(); ++i) dense[0][i] = Value<T>(random, kind);
        // Columns whose rows lie too far apart are not turned into rows.
        const TCCSMatrixMxN<T> columns = ByColumns<T>(random, pass == 6 ? 99999 : inner, order, kind, order > 3);
        TCRSMatrixMxN<T> result;

        asked = 0;
        a.Multiply(b, &result);
        EXPECT_EQ(asked, 0);
        ExpectElements(result, PlainTimesRows(a, b), m, n);
        a.Multiply(dense, &result);
        EXPECT_TRUE(asked == 1 && result.matrixType == 11);
        ExpectElements(result, PlainTimesDense(a, dense, order, false), m, n);
        dense.AssignMemory(dense.GetM(), static_cast<unsigned int>(order));
        for (unsigned int i = 0; i < dense.GetM() * dense.GetN(); ++i) dense[0][i] = Value<T>(random, kind);
        for (const Kind rowKind : {kind, Unordered}) {
            const TCRSMatrixMxN<T> square = ByRows<T>(random, order, inner, rowKind, empty * (order == m));
            asked = 0;
            square.Normalise(columns, &result);
            EXPECT_TRUE(asked == 1 && result.matrixType == -2);
            ExpectElements(result, PlainTimesColumns(square, columns), order, order);
            square.Normalise(dense, &result);
            EXPECT_EQ(asked, 2);
            ExpectElements(result, PlainTimesDense(square, dense, order, true), order, order);
        }
    }
    threads = 1;
}

TYPED_TEST(Sparse, ProductsKeepWhatIsAboveTheToleranceAndTheDiagonal)
{
    using T = TypeParam;
    const T limit = T(1e-6f), above = std::nextafter(limit, T(1)), infinity = std::numeric_limits<T>::infinity();
    TCRSMatrixMxN<T> a(3, 2, 4), result;
    const std::tuple<T, int, int> elements[] = {{1, 0, 0}, {infinity, 1, 0}, {1, 1, 1}, {-1, 2, 0}};
    for (const auto& [value, row, column] : elements) a.AddElement(value, row, column);
    T x[] = {3, 4}, y[] = {0, 0, 0, 9};
    a.Multiply(x, y);
    EXPECT_TRUE(y[0] == 3 && y[1] == infinity && y[2] == -3 && y[3] == 9);

    TMatrixMxN<T> b(2, 3);
    b.ToNull();
    b[0][1] = limit, b[0][2] = above, b[1][0] = 5;
    a.Multiply(b, &result);
    ExpectElements<T>(result, {{above, 0, 2}, {5, 1, 0}, {infinity, 1, 1}, {infinity, 1, 2}, {-above, 2, 2}}, 3, 3);
    TCRSMatrixMxN<T>().Normalise(b, &result);
    ExpectElements<T>(result, {{0, 0, 0}, {0, 1, 1}, {0, 2, 2}}, 3, 3);

    TCCSMatrixMxN<T> columns(3, 1);
    columns.AddElement(-limit, 0, 0);
    columns.AddElement(above, 0, 2);
    a.Normalise(columns, &a);
    ExpectElements<T>(a, {{-limit, 0, 0}, {above, 0, 2}, {infinity, 1, 2}, {-above, 2, 2}}, 3, 3);
}

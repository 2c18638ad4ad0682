// Compressed matrices: how they fill, transpose and share, and what their products keep for any number of threads.

#include "../support/Bits.h"
#include "../support/Types.h"

#include <CorvexMaths/sparse/TMatrixFragment.h>

#include <algorithm>
#include <limits>
#include <tuple>
#include <vector>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

// In place of the threading runtime's: the tests choose the answer.
static int threads = 1, asked = 0;
// A shared library takes the program's function for that of the runtime, a DLL does not.
#ifdef _WIN32
constexpr int askedByProduct = 0;
#else
constexpr int askedByProduct = 1;
#endif
extern "C" int omp_get_max_threads()
{
    ++asked;
    return threads;
}

namespace
{

template <class T>
using Elements = std::vector<std::tuple<T, int, int>>;

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
        EXPECT_TRUE(fragment.columns.GetStream() == block && fragment.columns.GetGrowSize() == step) << n;
        EXPECT_TRUE(fragment.rows.GetGrowSize() == step && fragment.values.GetGrowSize() == step) << n;
    }
}

TYPED_TEST(Sparse, TransposesFromColumnsInTheirOrderAndFromRowsSorted)
{
    TCCSMatrixMxN<TypeParam> source(4, 7);
    EXPECT_EQ(source.columnRows[3].GetGrowSize(), 7u);
    const int additions[][3] = {{5, 1, 6}, {2, 3, 6}, {7, 0, 8}, {5, 0, 8}, {2, 1, 8}, {5, 1, 8}};
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

TYPED_TEST(Sparse, ProductsOfSparseRowsPassFromBlockToBlockOfColumns)
{
    TCRSMatrixMxN<TypeParam> a(1, 1, 1), b(1, 6000, 6), result;
    a.AddElement(2, 0, 0);
    Elements<TypeParam> expected;
    for (const int column : {0, 2047, 2048, 2049, 4096, 5999}) { // blocks of 2048
        b.AddElement(3, 0, column);
        expected.emplace_back(TypeParam(6), 0, column);
    }
    a.Multiply(b, &result);
    ExpectElements(result, expected, 1, 6000);
}

TYPED_TEST(Sparse, ProductsAreTheSameInAnyNumberOfChunks)
{
    constexpr int n = 41;
    TCRSMatrixMxN<TypeParam> a(n, n, n);
    TCCSMatrixMxN<TypeParam> columns(n, n);
    TMatrixMxN<TypeParam> dense(n, n);
    Elements<TypeParam> whole, upper;
    for (int c = 0; c < n; ++c)
        for (int r = 0; r < n; ++r)
            columns.AddElement(dense[static_cast<unsigned int>(r)][c] = TypeParam(1) / TypeParam(r + n * c + 1), r, c);
    for (int r = 0; r < n; ++r) {
        a.AddElement(TypeParam(r + 1), r, n - 1 - r);
        for (int c = 0; c < n; ++c)
            whole.emplace_back(TypeParam(r + 1) * dense[static_cast<unsigned int>(n - 1 - r)][c], r, c);
        upper.insert(upper.end(), whole.end() - (n - r), whole.end());
    }
    for (const int chunks : {1, 2, 7, 40, 99}) {
        SCOPED_TRACE(threads = chunks);
        TCRSMatrixMxN<TypeParam> result;
        asked = 0;
        a.Multiply(dense, &result);
        ExpectElements(result, whole, n, n);
        EXPECT_TRUE(asked == askedByProduct && result.matrixType == 11);
        a.Normalise(dense, &result);
        ExpectElements(result, upper, n, n);
        a.Normalise(columns, &result);
        ExpectElements(result, upper, n, n);
        EXPECT_TRUE(asked == 3 * askedByProduct && result.matrixType == -2);
    }
    threads = 1;
}

#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/containers/TPair.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

/// Searches a sorted list for a key, and holds each answer to counts by a plain scan.
void CheckSearches(const TList<int>& list, int key)
{
    unsigned int below = 0, notAbove = 0, low = 99, high = 99;
    for (unsigned int i = 0; i < list.GetCount(); ++i) below += list[i] < key, notAbove += list[i] <= key;
    const bool hit = below != notAbove, inside = hit || (below != 0 && below != list.GetCount());

    int *lower = &key, *upper = &key;
    ASSERT_EQ(list.BinarySearch(key, &lower, &upper, &low, &high, true), inside);
    EXPECT_EQ(low, !inside ? 99 : hit ? below : below - 1);
    EXPECT_EQ(high, !inside ? 99 : hit && list.GetCount() > 2 ? notAbove - 1 : below);
    EXPECT_TRUE(inside ? lower == &list[low] && upper == &list[high] : !lower && !upper);

    EXPECT_EQ(list.BinarySearch(key, &low, &high, false), inside);
    EXPECT_TRUE(!inside || (list[high] == (hit ? key : list[below]) && high - low == (hit ? 0 : 1)));
    ASSERT_EQ(list.BinarySearch(key, &lower, &low), hit);
    EXPECT_TRUE(inside ? lower == &list[low] && *lower == (hit ? key : list[below - 1]) : !lower);
    EXPECT_EQ(list.Search(key), hit ? static_cast<int>(below) : -1);
}

TEST(ListSearch, FindsAKeyItsNeighboursOrNothingInEverySortedList)
{
    // Every ascending list of up to 8 elements out of 1, 3 and 5.
    for (unsigned int size = 0; size <= 8; ++size)
        for (unsigned int ones = 0; ones <= size; ++ones)
            for (unsigned int notFives = ones; notFives <= size; ++notFives) {
                TList<int> list(size, 1);
                for (unsigned int i = 0; i < size; ++i) list.Add(i < ones ? 1 : i < notFives ? 3 : 5);
                SCOPED_TRACE(::testing::Message() << ones << ' ' << notFives << ' ' << size);
                for (int key = 0; key <= 6; ++key) CheckSearches(list, key);
            }
}

TEST(ListSearch, HitsTheDuplicateThatIsProbedFirst)
{
    unsigned int index = 99;
    EXPECT_TRUE(TList<int>(std::vector<int>{1, 2, 2, 2, 3}.data(), 5, 1).BinarySearch(2, &index) && index == 2);
    EXPECT_TRUE(TList<int>(std::vector<int>{2, 2, 5, 6}.data(), 4, 1).BinarySearch(2, &index) && index == 1);
}

TEST(ListSearch, SortsByTheElementsOwnOrder)
{
    using Pair = TPair<float, int>;
    TList<Pair> pairs(std::vector<Pair>{{2, 4}, {-1, 1}, {7, 49}, {0, 0}}.data(), 4, 1);
    pairs.Sort();
    EXPECT_TRUE(pairs[0].second == 1 && pairs[1].second == 0 && pairs[2].second == 4);
    pairs.SortDescending();
    EXPECT_TRUE(pairs[0].second == 49 && pairs[1].second == 4 && pairs[2].second == 0);
}

} // namespace

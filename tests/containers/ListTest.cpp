#include <CorvexMaths/containers/Instantiations.h>

#include <tests/support/RecordingList.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using List = CorvexTest::RecordingList<TList<int>>;
using Contents = std::vector<int>;

static_assert(sizeof(TList<double>) == 32, "virtual table, block, three counts and a flag");

TEST(List, GrowsByNeedStepOrDoubling)
{
    // Capacity, grow size, exponential; elements added singly, room asked for at once; the capacity then.
    const unsigned int rows[][6] = {{8, 3, 0, 8, 0, 8},   {8, 3, 0, 9, 0, 11},  {8, 6, 1, 9, 0, 16},
                                    {8, 50, 1, 9, 0, 58}, {0, 4, 1, 1, 0, 4},   {0, 0, 0, 3, 0, 3},
                                    {0, 0, 1, 5, 0, 8},   {8, 3, 1, 0, 17, 17}, {8, 3, 1, 0, 16, 16},
                                    {8, 3, 0, 7, 6, 13},  {8, 3, 1, 8, 0, 8}};
    for (const auto& [capacity, growSize, exponential, additions, atOnce, grown] : rows) {
        List list(capacity, growSize);
        list.SetUseExponentialGrowth(exponential != 0);
        list.SetGrowSize(0);
        for (unsigned int i = 0; i < additions; ++i) list.Add(static_cast<int>(i));
        list.Grow(atOnce);
        EXPECT_EQ(list.GetCapacity(), grown) << capacity << ' ' << growSize << ' ' << exponential << ' ' << additions;
        for (unsigned int i = 0; i < additions; ++i) EXPECT_EQ(list[i], static_cast<int>(i));
    }
}

TEST(List, CopiesTakeNoDoublingAlong)
{
    List origin(Contents{1, 2, 3, 4, 5}.data(), 5, 3);
    origin.SetUseExponentialGrowth(true);
    List copies[] = {List(origin), List(&origin, 3), List(origin.GetStream(), 5, 3), List(20, 1)};
    copies[3] = origin;
    for (List& copy : copies) {
        EXPECT_EQ(copy.Contents(), origin.Contents());
        EXPECT_EQ(copy.log.empty(), &copy != copies + 3);
        EXPECT_EQ(copy.GetCapacity(), 5u);
        copy.Add(6);
        EXPECT_EQ(copy.GetCapacity(), 8u);
    }
    EXPECT_EQ(List(&origin, 9).GetCapacity(), 9u);
    EXPECT_EQ(List(nullptr, 0, 5).GetStream(), nullptr);
}

TEST(List, ExpandsOverWhatTheSlotsHold)
{
    TList<TVector4<float>> vectors(1, 1);
    vectors.Expand(3);
    EXPECT_TRUE(vectors.GetCount() == 3 && vectors[2] == TVector4<float>(0.0f, 0.0f, 0.0f, 1.0f));

    List list(Contents{1, 2, 3}.data(), 3, 4);
    list.RemoveFromEnd(2);
    list.Expand(3);
    EXPECT_EQ(list.Contents(), (Contents{1, 2, 3}));
    list.Clear(false);
    EXPECT_EQ(list.GetCapacity(), 4u);
    list.Contract();
    EXPECT_TRUE(list.GetCapacity() == 0 && list.GetStream());
}

TEST(List, TakesElementsOfItsOwn)
{
    for (const unsigned int capacity : {3u, 12u}) {
        List list(capacity, 1);
        list.AddRange(Contents{1, 2, 3}.data(), 3);
        list.Add(list[0]);
        list.Insert(list[2], 1);
        list.Insert(&list[0], 5);
        list.Remove(list[1], true);
        list.AddRange(list);
        EXPECT_EQ(list.Contents(), (Contents{1, 2, 3, 1, 1, 1, 2, 3, 1, 1}));
    }
    TList<double> unordered(1, 1);
    unordered.Add(std::nan(""));
    unordered.AddUnique(unordered[0]);
    EXPECT_TRUE(unordered.GetCount() == 2 && std::isnan(unordered[1]));
}

TEST(List, ReadsZeroAsAValueOrASizeAndOnlyPointersAsPointers)
{
    TList<double> numbers(0, 0);
    numbers.Add(0);
    numbers.Insert(0, 1);
    numbers.Remove(0, false);
    EXPECT_TRUE(numbers.GetGrowSize() == 0 && numbers.GetCount() == 1);

    int* pointer = nullptr;
    TList<int*> pointers;
    pointers.Add(&pointer);
    pointers.Add(nullptr);
    pointers.Remove(&pointer, true);
    pointers.Remove(pointer, true);
    EXPECT_TRUE(pointers.GetCount() == 1 && pointers.GetFirst() == nullptr);
}

TEST(List, ReversesAllPairs)
{
    List odd(Contents{1, 2, 3, 4, 5}.data(), 5, 1);
    odd.Reverse();
    EXPECT_EQ(odd.Contents(), (Contents{5, 4, 3, 2, 1}));

    // The half of 2^25 + 6 rounds up by one in `float`, so the middle pair is swapped twice.
    const unsigned int middle = (1u << 24) + 2;
    TList<char> large(2 * middle + 2, 1);
    large.Expand(2 * middle + 2);
    std::memset(large.GetStream(), 'a', large.GetCount());
    large[middle - 1] = 'b';
    large[middle] = 'c';
    large.Reverse();
    EXPECT_TRUE(large[middle + 2] == 'b' && large[middle] == 'c');
}

} // namespace

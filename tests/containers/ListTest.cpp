#include <CorvexMaths/containers/Instantiations.h>

#include <tests/support/RecordingList.h>

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using List = CorvexTest::RecordingList<TList<int>>;
using Contents = std::vector<int>;

int source[] = {1, 2}, stranger = 20;
TList<int> two(source, 2, 1);

#define CHANGE(change) #change, [](List & l) { change; }

TEST(List, TellsOfEachChangeAtItsMoment)
{
    // How many of 10 20 30 40 the list l holds at first (no block for none), its change, named by its own text, the
    // hooks that fires and the elements it leaves.
    const std::tuple<unsigned int, const char*, void (*)(List & l), const char*, Contents> rows[] = {
        {4, CHANGE(l.AddUnique(source); l.AddUnique(&stranger)), "ElementAdded(4: 1) count 5", {10, 20, 30, 40, 1}},
        {4,
         CHANGE(l.AddRange(two); l.AddRange(nullptr, 0)),
         "ElementsAdded(4: 1 2) count 6; ElementsAdded(6:) count 6",
         {10, 20, 30, 40, 1, 2}},
        {4, CHANGE(l.Insert(5, 1)), "ElementAdded(1: 5) count 5", {10, 5, 20, 30, 40}},
        {4, CHANGE(l.InsertRange(two, 3)), "ElementsAdded(-1: 1 2) count 6", {10, 20, 30, 1, 2, 40}},
        {4, CHANGE(l.Remove(20, true)), "ElementRemoved(1: 20) count 3", {10, 30, 40}},
        {4, CHANGE(l.Remove(20, false); l.RemoveAt(2, false)), "", {10, 40}},
        {4, CHANGE(l.Remove(&l[3], true)), "ElementRemoved(3: 40) count 3", {10, 20, 30}},
        {4, CHANGE(l.Remove(&stranger, true); l.Remove(l.GetStream() + 4, true)), "", {10, 20, 30, 40}},
        {4, CHANGE(l.RemoveFromEnd(3)), "ElementsRemoved(1: 20 30 40) count 1", {10}},
        {4, CHANGE(l.RemoveFromEnd(4)), "Cleared(0:) count 0", {}},
        {4, CHANGE(l.RemoveFromFront(1)), "ElementsRemoved(0: 10) count 3", {20, 30, 40}},
        {4, CHANGE(l.RemoveFromFront(4)), "Cleared(0:) count 0", {}},
        {4, CHANGE(l.Clear(true)), "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0", {}},
        {4,
         CHANGE(l = *&l),
         "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0; ElementsAdded(0:) count 0",
         {}},
        {4,
         CHANGE(l.Grow(50); l.Contract(); l.Expand(2); l.Sort(); l.RemoveAt(2, false); l.Reverse()),
         "",
         {40, 20, 10}},
        {0, CHANGE(l.Clear(true); l.RemoveFromEnd(0)), "Cleared(0:) count 0; Cleared(0:) count 0", {}},
        {0, CHANGE(l = List(source, 2, 1)), "Cleared(0:) count 0; ElementsAdded(0: 1 2) count 2", {1, 2}},
        {0, CHANGE(l.Sort(); l.Reverse(); l.Contract(); l.Grow(0); l.Remove(l.GetStream(), true)), "", {}},
        {0, CHANGE(l.Grow(1); l.Clear(false)), "ElementsRemoved(0:) count 0; Cleared(0:) count 0", {}},
    };
    for (const auto& [n, name, change, log, left] : rows) {
        List list(Contents{10, 20, 30, 40}.data(), n, 8);
        change(list);
        EXPECT_EQ(list.log, log) << name;
        EXPECT_EQ(list.Contents(), left) << name;
    }
}

TEST(List, GrowsByNeedStepOrDoubling)
{
    // Capacity, grow size, exponential; elements added singly, room asked for at once; the capacity then.
    const unsigned int rows[][6] = {{8, 3, 0, 8, 0, 8},   {8, 3, 0, 9, 0, 11},  {8, 6, 1, 9, 0, 16},
                                    {8, 50, 1, 9, 0, 58}, {0, 0, 0, 3, 0, 3},   {0, 0, 1, 5, 0, 8},
                                    {8, 3, 1, 0, 17, 17}, {8, 3, 1, 0, 16, 16}, {8, 3, 0, 7, 6, 13}};
    for (const auto& [capacity, growSize, exponential, additions, atOnce, grown] : rows) {
        List list(capacity, growSize);
        list.SetUseExponentialGrowth(exponential != 0);
        list.SetGrowSize(0);
        for (unsigned int i = 0; i < additions; ++i) list.Add(static_cast<int>(i));
        list.Grow(atOnce);
        EXPECT_EQ(list.GetCapacity(), grown) << capacity << ' ' << growSize << ' ' << exponential << ' ' << additions;
    }
}

TEST(List, ExpandsOverWhatTheSlotsHoldAndHitsTheDuplicateThatIsProbedFirst)
{
    List list(Contents{1, 2, 3}.data(), 3, 4);
    list.RemoveFromEnd(2);
    list.Expand(3);
    EXPECT_EQ(list.Contents(), (Contents{1, 2, 3}));
    list.Clear(false);
    list.Contract();
    EXPECT_TRUE(list.GetCapacity() == 0 && list.GetStream());

    unsigned int index = 99;
    EXPECT_TRUE(TList<int>(Contents{1, 2, 2, 2, 3}).BinarySearch(2, &index) && index == 2);
    EXPECT_TRUE(TList<int>(Contents{2, 2, 5, 6}).BinarySearch(2, &index) && index == 1);
}

TEST(List, ReversesAllPairs)
{
    // The half of 2^25 + 6 rounds up by one in `float`, so the middle pair is swapped twice.
    const unsigned int middle = (1u << 24) + 2;
    TList<char> large(2 * middle + 2, 1);
    large.Expand(2 * middle + 2);
    std::memset(large.GetStream(), 'a', large.GetCount());
    large[middle] = 'c';
    large.Reverse();
    EXPECT_EQ(large[middle], 'c');
}

} // namespace

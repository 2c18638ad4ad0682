#include <tests/support/RecordingList.h>

#include <gtest/gtest.h>

namespace
{

using Halmont::Orrin::CorvexUtilities::TList;
using List = CorvexTest::RecordingList<TList<int>>;

int source[] = {1, 2};
int stranger = 20;
TList<int> two(source, 2, 1);

/// A change of a list l, named by its own text, the hooks it fires and the elements it leaves.
struct HookRow
{
    const char* name;
    void (*change)(List& l);
    const char* log;
    std::vector<int> left;
};
#define CHANGE(change) #change, [](List & l) { change; }

void Check(const HookRow& row, List list)
{
    row.change(list);
    EXPECT_EQ(list.log, row.log) << row.name;
    EXPECT_EQ(list.Contents(), row.left) << row.name;
}

TEST(ListHooks, TellOfEachChangeAtItsMoment)
{
    const HookRow rows[] = {
        {CHANGE(l.Add(50)), "ElementAdded(4: 50) count 5", {10, 20, 30, 40, 50}},
        {CHANGE(l.AddUnique(source)), "ElementAdded(4: 1) count 5", {10, 20, 30, 40, 1}},
        {CHANGE(l.AddUnique(&stranger)), "", {10, 20, 30, 40}},
        {CHANGE(l.AddRange(source, 2)), "ElementsAdded(4: 1 2) count 6", {10, 20, 30, 40, 1, 2}},
        {CHANGE(l.AddRange(TList<int>())), "ElementsAdded(4:) count 4", {10, 20, 30, 40}},
        {CHANGE(l.Insert(5, 1)), "ElementAdded(1: 5) count 5", {10, 5, 20, 30, 40}},
        {CHANGE(l.InsertRange(source, 2, 3)), "ElementsAdded(-1: 1 2) count 6", {10, 20, 30, 1, 2, 40}},
        {CHANGE(l.InsertRange(two, 0)), "ElementsAdded(-1: 1 2) count 6", {1, 2, 10, 20, 30, 40}},
        {CHANGE(l.Remove(20, true)), "ElementRemoved(1: 20) count 3", {10, 30, 40}},
        {CHANGE(l.Remove(20, false); l.RemoveAt(2, false)), "", {10, 40}},
        {CHANGE(l.Remove(&l[3], true)), "ElementRemoved(3: 40) count 3", {10, 20, 30}},
        {CHANGE(l.Remove(&stranger, true)), "", {10, 20, 30, 40}},
        {CHANGE(l.Remove(&l[4], true)), "", {10, 20, 30, 40}},
        {CHANGE(l.RemoveFromEnd(3)), "ElementsRemoved(1: 20 30 40) count 1", {10}},
        {CHANGE(l.RemoveFromEnd(0)), "ElementsRemoved(4:) count 4", {10, 20, 30, 40}},
        {CHANGE(l.RemoveFromEnd(4)), "Cleared(0:) count 0", {}},
        {CHANGE(l.RemoveFromFront(1)), "ElementsRemoved(0: 10) count 3", {20, 30, 40}},
        {CHANGE(l.RemoveFromFront(9)), "Cleared(0:) count 0", {}},
        {CHANGE(l.Clear(false)), "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0", {}},
        {CHANGE(l.Clear(true)), "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0", {}},
        {CHANGE(l = List(source, 2, 1)),
         "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0; ElementsAdded(0: 1 2) count 2",
         {1, 2}},
        {CHANGE(l = *&l),
         "ElementsRemoved(0: 10 20 30 40) count 4; Cleared(0:) count 0; ElementsAdded(0:) count 0",
         {}},
        {CHANGE(l.Grow(50); l.Contract(); l.Expand(2); l.Reverse(); l.Sort()), "", {10, 20, 30, 40}},
    };
    const List list(std::vector<int>{10, 20, 30, 40}.data(), 4, 8);
    for (const HookRow& row : rows) Check(row, list);
}

TEST(ListHooks, TellOfNothingRemovedWithoutABlock)
{
    const HookRow rows[] = {
        {CHANGE(l.Clear(true)), "Cleared(0:) count 0", {}},
        {CHANGE(l = *&l), "Cleared(0:) count 0; ElementsAdded(0:) count 0", {}},
        {CHANGE(l.RemoveFromEnd(0)), "Cleared(0:) count 0", {}},
        {CHANGE(l.RemoveFromFront(0)), "Cleared(0:) count 0", {}},
        {CHANGE(l.AddRange(nullptr, 0)), "ElementsAdded(0:) count 0", {}},
        {CHANGE(l.Sort(); l.Reverse(); l.Contract(); l.Grow(0); l.Remove(l.GetStream(), true)), "", {}},
        {CHANGE(l.Grow(1); l.Clear(true)), "ElementsRemoved(0:) count 0; Cleared(0:) count 0", {}},
    };
    for (const HookRow& row : rows) Check(row, List());
}

} // namespace

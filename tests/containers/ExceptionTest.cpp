// What hooks that throw and memory that runs out leave of lists and tables.

#include "../support/FailingAllocator.h"

#include <CorvexMaths/containers/TMap.h>
#include <CorvexMaths/containers/TPair.h>

#include <tests/support/RecordingList.h>

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using Contents = std::vector<int>;

/// A list whose hooks throw, from a call on.
class Throwing : public TList<int>
{
public:
    using TList<int>::TList;
    using TList<int>::operator=;
    unsigned int calls = 0, throwsAt = 0;

    Contents All() const { return {begin(), end()}; }

protected:
    void ElementAdded(int&) override { Cleared(); }
    void ElementsAdded(int*, unsigned int) override { Cleared(); }
    void ElementRemoved(int&) override { Cleared(); }
    void ElementsRemoved(int*, unsigned int) override { Cleared(); }
    void Cleared() override
    {
        if (++calls == throwsAt) throw calls;
    }
};

const int numbers[] = {10, 20, 30, 40};
const Contents all(numbers, numbers + 4);
const TList<int> two(numbers, 2, 1);
const TList<int> ones(Contents(6, 1).data(), 6, 9);

#define CHANGE(change) #change, [](Throwing & l) { change; }

TEST(ListExceptions, KeepEveryElementWhereAHookThrows)
{
    // A change of 10 20 30 40 in a full block, how many of its hooks come before it has taken place, what it leaves.
    const std::tuple<const char*, void (*)(Throwing & l), unsigned int, Contents> rows[] = {
        {CHANGE(l.Add(5)), 0, {10, 20, 30, 40, 5}},
        {CHANGE(l.AddUnique(5)), 0, {10, 20, 30, 40, 5}},
        {CHANGE(l.AddRange(two)), 0, {10, 20, 30, 40, 10, 20}},
        {CHANGE(l.Insert(5, 0)), 0, {5, 10, 20, 30, 40}},
        {CHANGE(l.InsertRange(two, 1)), 0, {10, 10, 20, 20, 30, 40}},
        {CHANGE(l.Remove(20)), 1, {10, 30, 40}},
        {CHANGE(l.RemoveAt(0)), 1, {20, 30, 40}},
        {CHANGE(l.RemoveFromEnd(1)), 1, {10, 20, 30}},
        {CHANGE(l.RemoveFromEnd(4)), 1, {}},
        {CHANGE(l.RemoveFromFront(1)), 1, {20, 30, 40}},
        {CHANGE(l.RemoveFromFront(9)), 1, {}},
        {CHANGE(l.Clear(false)), 2, {}},
        {CHANGE(l.Clear(true)), 2, {}},
        {CHANGE(l = two), 2, {10, 20}},
    };
    for (const auto& [name, change, hooksBefore, left] : rows) {
        for (unsigned int k = 1;; ++k) {
            Throwing list(numbers, 4, 1);
            list.throwsAt = k;
            try {
                change(list);
            } catch (unsigned int) {
            }
            const bool threw = list.calls >= k;
            EXPECT_EQ(list.All(), threw && k <= hooksBefore ? all : left) << name << " with hook " << k;
            list.throwsAt = 0;
            list.Add(6);
            EXPECT_EQ(list[list.GetCount() - 1], 6);
            if (!threw) break;
        }
    }
}

TEST(ListExceptions, LeaveTheListWhereMemoryRunsOut)
{
    // A change, how many of its allocations can fail, and whether the list then has nothing of what it had.
    const std::tuple<const char*, void (*)(Throwing & l), int, bool> rows[] = {
        {CHANGE(l.Add(5)), 1, false},
        {CHANGE(l.AddRange(l)), 1, false},
        {CHANGE(l.Insert(5, 0)), 1, false},
        {CHANGE(l.InsertRange(two, 1)), 1, false},
        {CHANGE(l.Grow(1)), 1, false},
        {CHANGE(l.Expand(9)), 1, false},
        {CHANGE(l.RemoveFromEnd(0); l.Contract()), 0, false},
        {CHANGE(l = ones), 2, true},
    };
    for (const auto& [name, change, allocations, empties] : rows) {
        const auto make = [] { return Throwing(numbers, 4, 1); };
        const auto check = [name = name, empties = empties](Throwing& list, bool failed) {
            EXPECT_TRUE(!failed || list.All() == (empties ? Contents(list.size(), 1) : all)) << name;
            list.AddRange(two);
            list = two;
            EXPECT_EQ(list.GetCount(), 2u) << name;
        };
        EXPECT_EQ(CorvexTest::FailEachAllocation(make, change, check), allocations) << name;
    }
}

TEST(MapExceptions, LeaveTheTableWhereMemoryRunsOut)
{
    using Map = TMap<TPair<int, int>>;
    const auto make = [] {
        Map map(3, 2);
        for (unsigned int i = 0; i < 6; ++i) map[i / 2][i % 2].first = static_cast<int>(i);
        return map;
    };
    const auto check = [](Map& map, bool failed) {
        ASSERT_TRUE(!failed || (map.GetWidth() == 3 && map.GetHeight() == 2));
        for (unsigned int i = 0; failed && i < 6; ++i) EXPECT_EQ(map[i / 2][i % 2].first, static_cast<int>(i));
    };
    // A change, and how many of its allocations can fail at least.
    const std::pair<void (*)(Map&), int> rows[] = {
        {[](Map& map) { map.Alter(3, 4); }, 2},    {[](Map& map) { map.Alter(2, 5); }, 2},
        {[](Map& map) { map.Alter(4, 2); }, 2},    {[](Map& map) { map.Alter(1, 1); }, 2},
        {[](Map& map) { map.Alter(5, 5); }, 2},    {[](Map& map) { map.RemoveRow(0); }, 2},
        {[](Map& map) { map.RemoveColumn(0); }, 1}};
    for (const auto& [change, least] : rows) EXPECT_GE(CorvexTest::FailEachAllocation(make, change, check), least);

    Map map = make();
    EXPECT_THROW(map.Grow(~0u - 1), std::bad_alloc);
    check(map, true);
    Map moved(std::move(map));
    EXPECT_TRUE(map.GetWidth() == 0 && map.GetHeight() == 0 && moved[2][1].first == 5);
    map = std::move(moved);
    EXPECT_TRUE(moved.GetWidth() == 0 && map[2][1].first == 5);
}

} // namespace

// What hooks that throw leave of lists, and sizes that no table has.

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
        {CHANGE(static_cast<TList<int>&>(l) = TList<int>(two)), 2, {10, 20}},
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

TEST(MapExceptions, LeaveTheTableWhereASizeIsTooLargeAndMovesHandItOn)
{
    using Map = TMap<TPair<int, int>>;
    Map map(3, 2);
    map[2][1].first = 5;
    EXPECT_THROW(map.Grow(~0u - 1), std::bad_alloc);
    EXPECT_TRUE(map.GetWidth() == 3 && map.GetHeight() == 2);
    Map moved(std::move(map));
    EXPECT_TRUE(map.GetWidth() == 0 && map.GetHeight() == 0 && moved[2][1].first == 5);
    map = std::move(moved);
    EXPECT_TRUE(moved.GetWidth() == 0 && map[2][1].first == 5);
}

} // namespace

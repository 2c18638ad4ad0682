// Lists as ranges, what they are made of, and how they are moved.

#include <CorvexMaths/containers/Instantiations.h>
#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/pointsets/TPointSet.h>

#include <tests/support/RecordingList.h>

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <sstream>
#include <utility>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using Recorder = CorvexTest::RecordingList<TList<int>>;
using Contents = std::vector<int>;
using Point = TVector2<double>;

static_assert(std::is_nothrow_move_constructible_v<TList<int>>);
static_assert(!std::is_constructible_v<TList<int>, std::vector<float>>, "a span is of the elements themselves");
static_assert(!std::is_constructible_v<TList<Point>, std::vector<double>> && !std::is_convertible_v<int, TList<int>>);

/// Keeps the hooks of its base through moves that it leaves to the compiler.
struct Watched : TList<int>
{
    using TList<int>::TList;
    int hooks = 0;
    void ElementsAdded(int*, unsigned int) override { ++hooks; }
    void ElementsRemoved(int*, unsigned int) override { ++hooks; }
    void Cleared() override { ++hooks; }
};

TEST(ListRange, ConstructionKeepsTheMeaningOfSizes)
{
    EXPECT_TRUE(
        (TList<int>{5}.empty() && TList<int>{0, 16}.GetGrowSize() == 16 && TList<int>(0, 0).GetGrowSize() == 0));
    EXPECT_TRUE((TList<Point>{0u, 7u}.empty() && TList<Point>{3}.empty() && TList<Int128>{3}.empty()));
    const TList<Point> points{{1, 2}, {3, 4}};
    EXPECT_TRUE(points.GetCount() == 2 && points[1] == Point(3, 4) && points.GetGrowSize() == 1000);

    std::istringstream text("4 5 6");
    const std::array<int, 2> array{7, 8};
    TList<int> list((std::istream_iterator<int>(text)), std::istream_iterator<int>());
    const int plain[] = {1, 2};
    list.AddRange(plain);
    list.AddRange(array);
    list.InsertRange(TList<int>(array.begin(), array.end()), 1);
    list.InsertRange(array, 9);
    list.InsertRange({0, 16}, 0);
    EXPECT_EQ(Contents(list.begin(), list.end()), (Contents{0, 16, 4, 7, 8, 5, 6, 1, 2, 7, 8, 7, 8}));
}

TEST(ListMove, HandsTheBlockOnWithoutAHook)
{
    for (const bool construct : {true, false}) {
        Watched source(Contents{1, 2, 3}.data(), 3, 5);
        source.SetUseExponentialGrowth(true);
        const int* const block = source.GetStream();
        Watched target(9, 1);
        Watched made(construct ? std::move(source) : Watched());
        if (!construct) target = std::move(source);
        Watched& moved = construct ? made : target;
        EXPECT_TRUE(moved.GetStream() == block && moved.GetCount() == 3 && moved.GetGrowSize() == 5);
        EXPECT_TRUE(source.empty() && source.GetStream() == nullptr && moved.hooks + source.hooks == 0);
        source.AddRange({4, 5});
        moved = static_cast<Watched&&>(moved);
        EXPECT_TRUE(source.GetCount() == 2 && moved.GetCount() == 3 && moved.GetStream() == block);
        source.Clear();
        source = moved;
        EXPECT_EQ(source.GetCount(), 3u);
    }
}

TEST(ListMove, IntoTheBaseOfAnotherClassTellsItsHooks)
{
    Recorder recorder(Contents{1, 2}.data(), 2, 4);
    TList<int>& base = recorder;
    base = TList<int>(Contents{7, 8, 9}.data(), 3, 4);
    EXPECT_EQ(recorder.log, "ElementsRemoved(0: 1 2) count 2; Cleared(0:) count 0; ElementsAdded(0: 7 8 9) count 3");

    TPointSet<double, TVector2> set;
    static_cast<TList<Point>&>(set) = TList<Point>{{1, 2}, {-3, 4}};
    EXPECT_TRUE(set.GetBoundingBox().minimum.x == -3 && set.GetBoundingBox().maximum.y == 4);
}

} // namespace

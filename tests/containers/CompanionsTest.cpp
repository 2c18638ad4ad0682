#include <CorvexMaths/containers/Instantiations.h>

#include <gtest/gtest.h>

#include <new>
#include <type_traits>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

static_assert(sizeof(TMap<int>) == 24 && sizeof(TLinkUni<TVector3<double>>) == 40, "fields as documented");
static_assert(sizeof(TPair<float, TVector4<float>>) == 20, "a pair is its two members");
static_assert(std::is_trivially_copyable_v<TPair<TVector3<double>, unsigned int>>, "a list of pairs is a flat array");

TEST(Pair, StartsAtDefaultsAndOrdersByTheFirst)
{
    unsigned int used[] = {5, 5};
    using Pair = TPair<unsigned int, unsigned int>;
    EXPECT_EQ(*new (used) Pair, Pair(0, 0));
    EXPECT_TRUE(Pair(1, 9) < Pair(2, 3) && Pair(2, 3) > Pair(1, 9));
    EXPECT_FALSE(Pair(1, 2) < Pair(1, 3) || Pair(1, 3) > Pair(1, 2) || Pair(1, 2) == Pair(1, 3));
}

using Cell = TPair<int, int>; // Starts at zeros, so that fresh cells can be told.
using Map = TMap<Cell>;

/// A change of a table m of the columns 1 2, 3 4 and 5 6, named by its own text, and the columns it leaves.
struct MapRow
{
    const char* name;
    void (*change)(Map& m);
    std::vector<std::vector<int>> left;
};
#define CHANGE(change) #change, [](Map & m) { change; }

TEST(Map, KeepsSurvivingCellsInPlace)
{
    const MapRow rows[] = {
        {CHANGE(m.Alter(2, 3)), {{1, 2, 0}, {3, 4, 0}}},
        {CHANGE(m.Alter(4, 1)), {{1}, {3}, {5}, {0}}},
        {CHANGE(m.Alter(1, 2)), {{1, 2}}},
        {CHANGE(m.Alter(3, 0)), {{}, {}, {}}},
        {CHANGE(m.Grow(1)), {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}, {0, 0, 0}}},
        {CHANGE(m.Shrink(1)), {{1}, {3}}},
        {CHANGE(m.AddRow()), {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}}},
        {CHANGE(m.AddColumn()), {{1, 2}, {3, 4}, {5, 6}, {0, 0}}},
        {CHANGE(m.RemoveRow(0)), {{2}, {4}, {6}}},
        {CHANGE(m.RemoveRow(9)), {{1}, {3}, {5}}},
        {CHANGE(m.RemoveColumn(1)), {{1, 2}, {5, 6}}},
        {CHANGE(m.Clear()), {}},
        {CHANGE(m.Clear(); m.Alter(0, 2); m.AddColumn()), {{0, 0}}},
    };
    for (const MapRow& row : rows) {
        Map map(3, 2);
        for (int i = 0; i < 6; ++i) map[static_cast<unsigned int>(i / 2)][i % 2].first = i + 1;
        row.change(map);
        std::vector<std::vector<int>> columns(map.GetWidth());
        for (unsigned int i = 0; i < map.GetWidth(); ++i)
            for (unsigned int j = 0; j < map.GetHeight(); ++j) columns[i].push_back(map[i][j].first);
        EXPECT_EQ(columns, row.left) << row.name;
    }
}

TEST(Map, CopiesShareTheirCellsAndWideningMovesNone)
{
    Map map(1, 2);
    // Only one of the sharers may be destroyed; the other lives where no destructor runs.
    alignas(Map) unsigned char space[sizeof(Map)];
    Map* const copy = new (space) Map(map);
    EXPECT_TRUE((*copy)[0] == map[0] && copy->GetHeight() == 2);
    const Cell* const cells = map[0];
    map.AddColumn();
    *copy = map;
    EXPECT_TRUE(map[0] == cells && (*copy)[1] == map[1]);
}

/// A node that counts how many of its kind live.
struct Node : TLinkUni<int>
{
    static inline int living = 0;
    Node() { ++living; }
    ~Node() override { --living; }
};

TEST(Link, ChainsCloseIntoRingsAndAreReleased)
{
    Node* const nodes[] = {new Node, new Node, new Node, new Node};
    nodes[0]->Add(nodes[1]);
    nodes[0]->Add(nodes[3]);
    nodes[1]->InsertAfter(nodes[2]);
    for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(nodes[i]->GetCount(), 4 - i);
    nodes[1]->MakeCircular();
    EXPECT_TRUE(nodes[3]->GetNext() == nodes[1] && nodes[2]->GetCount() == 3);
    nodes[0]->SetNext(nullptr);
    Node::ReleaseMemoryCircular(nodes[2]);
    EXPECT_EQ(Node::living, 1);
    nodes[0]->MakeCircular();
    EXPECT_TRUE(nodes[0]->GetCount() == 1 && nodes[0]->GetNext() == nodes[0]);
    nodes[0]->SetNext(new Node);
    Node::ReleaseMemory(nodes[0]);
    EXPECT_EQ(Node::living, 0);
}

} // namespace

#include <CorvexMaths/containers/Instantiations.h>

#include <gtest/gtest.h>

#include <new>
#include <tuple>
#include <type_traits>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

static_assert(sizeof(TMap<int>) == 24 && sizeof(TLinkUni<TVector3<double>>) == 40, "fields as documented");
static_assert(sizeof(TPair<float, TVector4<float>>) == 20, "a pair is its two members");
static_assert(std::is_trivially_copyable_v<TPair<TVector3<double>, unsigned int>>, "a list of pairs is a flat array");

using Cell = TPair<int, int>; // Starts at zeros, so that fresh cells can be told.
using Map = TMap<Cell>;

TEST(Pair, IsOrderedByTheFirstAlone)
{
    EXPECT_TRUE(Cell(1, 9) < Cell(2, 3) && Cell(2, 3) > Cell(1, 9));
    EXPECT_FALSE(Cell(1, 2) < Cell(1, 3) || Cell(1, 3) > Cell(1, 2) || Cell(1, 2) == Cell(1, 3));
}

#define CHANGE(change) #change, [](Map & m) { change; }

TEST(Map, KeepsSurvivingCellsInPlace)
{
    // A change of a table m of the columns 1 2, 3 4 and 5 6, named by its own text, and the columns it leaves.
    const std::tuple<const char*, void (*)(Map & m), std::vector<std::vector<int>>> rows[] = {
        {CHANGE(m.Alter(2, 3)), {{1, 2, 0}, {3, 4, 0}}},
        {CHANGE(m.Alter(4, 1)), {{1}, {3}, {5}, {0}}},
        {CHANGE(m.Grow(1)), {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}, {0, 0, 0}}},
        {CHANGE(m.Shrink(1)), {{1}, {3}}},
        {CHANGE(m.RemoveRow(0)), {{2}, {4}, {6}}},
        {CHANGE(m.RemoveRow(9)), {{1}, {3}, {5}}},
        {CHANGE(m.RemoveColumn(1)), {{1, 2}, {5, 6}}},
        {CHANGE(m.Clear(); m.Alter(0, 2); m.AddColumn()), {{0, 0}}},
    };
    for (const auto& [name, change, left] : rows) {
        Map map(3, 2);
        for (int i = 0; i < 6; ++i) map[static_cast<unsigned int>(i / 2)][i % 2].first = i + 1;
        change(map);
        std::vector<std::vector<int>> columns(map.GetWidth());
        for (unsigned int i = 0; i < map.GetWidth(); ++i)
            for (unsigned int j = 0; j < map.GetHeight(); ++j) columns[i].push_back(map[i][j].first);
        EXPECT_EQ(columns, left) << name;
    }
}

TEST(Map, CopiesShareTheirCellsAndWideningMovesNone)
{
    Map map(1, 2);
    const Cell* const cells = map[0];
    map.AddColumn();
    // Only one of the sharers may be destroyed; the other lives where no destructor runs.
    alignas(Map) unsigned char space[sizeof(Map)];
    Map* const copy = new (space) Map(map);
    EXPECT_TRUE(map[0] == cells && (*copy)[1] == map[1] && copy->GetHeight() == 2);
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
    nodes[0]->SetNext(new Node);
    Node::ReleaseMemoryCircular(nodes[2]);
    EXPECT_EQ(Node::living, 2);
    Node::ReleaseMemory(nodes[0]);
    EXPECT_EQ(Node::living, 0);
}

} // namespace

#include <CorvexMaths/polygons/internal/DuplicateSearch.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The vertices as the search sees them.
template <class T>
struct Outline
{
    const T* points;
    unsigned int stride;

    const T* operator[](unsigned int i) const { return points + std::size_t(i) * stride; }

    bool AreNear(unsigned int i, unsigned int j) const
    {
        const T* const a = (*this)[i];
        const T* const b = (*this)[j];
        return Numbers::IsNear(a[0], b[0], Numbers::commonTolerance<T>) &&
               Numbers::IsNear(a[1], b[1], Numbers::commonTolerance<T>);
    }
};

/// Where a vertex falls in a grid of cells `Width` tolerances wide, whose borders lie midway between the multiples.
///
/// Of two coordinates within the tolerance of each other, one lies in the other's cell, or in the one across a border
/// that is near to it. Equal ones, infinities among them, share a cell; so do -0 and 0. Let a < b differ. Their
/// difference is at most a rounding above the tolerance, which is 1 / Width of a cell. From 2^33 on, neighbouring
/// numbers lie further apart, so that neither magnitude is above it; the quotients are then below 2^53 / Width, and
/// each is rounded by 1 / (2 Width) at most. So the places of a and b are in the same order and not 2 / (Width - 2) of
/// a cell apart; where a border parts them, each is nearer to it than that. The nearest whole number and the distance
/// from it are exact for such quotients; for greater ones they are some function of the coordinate, which is all that
/// equal ones ask for.
template <unsigned int Width>
class GridPosition
{
    static_assert((Width & (Width - 1)) == 0 && Width >= 16);

public:
    /// Takes both coordinates side by side.
    template <class T>
    explicit GridPosition(const T* point)
    {
        constexpr double nearShare = 2.0 / (Width - 2);
        // In this binade the last bit counts as 1, so that a sum is rounded to a whole number.
        constexpr double wholeNumbers = 0x1.8p52;
        const Pair coordinates = {static_cast<double>(point[0]), static_cast<double>(point[1])};
        const Pair positions = coordinates / (Width * Numbers::commonTolerance<double>);
        const Pair sums = positions + wholeNumbers;
        const Pair shares = positions - (sums - wholeNumbers);
        std::memcpy(cells, &sums, sizeof(cells));
        // A comparison that holds is -1.
        steps = (shares < nearShare - 0.5) - (shares > 0.5 - nearShare);
    }

    /// The hash of the vertex's own cell.
    std::uint64_t GetOwn() const { return Hash(0, 0); }

    /// Visits the hashes of the cells of all vertices that may be near: its own and those across near borders.
    template <class Visit>
    void VisitNear(Visit visit) const
    {
        visit(GetOwn());
        if (!AnyLane(steps)) return;
        const auto x = static_cast<std::uint64_t>(steps[0]);
        const auto y = static_cast<std::uint64_t>(steps[1]);
        if (x != 0) visit(Hash(x, 0));
        if (y != 0) visit(Hash(0, y));
        if (x != 0 && y != 0) visit(Hash(x, y));
    }

private:
    using Pair = BaselineLanes<double>;

    std::uint64_t Hash(std::uint64_t x, std::uint64_t y) const
    {
        // Odd multipliers spread the last bits, in which neighbouring cells differ, over the first ones, which count.
        const std::uint64_t hash = (cells[0] + x) * 0x9E3779B97F4A7C15u + (cells[1] + y) * 0xC2B2AE3D27D4EB4Fu;
        return (hash ^ (hash >> 32)) * 0xBF58476D1CE4E5B9u;
    }

    /// The numbers of the cells, in the last bits of the words: neighbouring cells have neighbouring words.
    std::uint64_t cells[2];
    /// The way to the cell across the nearer border: 1 or -1, or 0 where that border is not near.
    BaselineMask<double> steps;
};

/// The search for suspects is done in wide cells, which seldom have a near border; the vertices of a chain share a
/// narrower one, so that chains stay short where vertices are close. Of those of 64 seven in eight still have no near
/// border, so that a processor foresees how many to visit; where vertices lie as close as some tolerances all over,
/// those of 16 have the shorter chains.
using WidePosition = GridPosition<1024>;
using TablePosition = GridPosition<64>;
using NarrowPosition = GridPosition<16>;

/// Tells places apart by the first bits of a hash: a power of two of them, 64 at least and 2^31 at most.
class Places
{
public:
    explicit Places(std::size_t least)
    {
        while (shift > 64 - 31 && GetCount() < least) --shift;
    }

    std::size_t GetCount() const { return std::size_t(1) << (64 - shift); }
    unsigned int operator[](std::uint64_t hash) const { return static_cast<unsigned int>(hash >> shift); }

private:
    unsigned int shift = 64 - 6;
};

/// A Bloom filter of cells, with one hash: a bit for each place, so that it may hold cells that nobody added; few of
/// them, while there are as many vertices as told.
class CellFilter
{
public:
    explicit CellFilter(unsigned int count)
        : places(placesPerVertex * std::size_t(count)), words(new std::uint64_t[places.GetCount() / 64]())
    {}

    /// Whether the filter is too long for the caches near to the processor.
    bool IsLong() const { return places.GetCount() > (1u << 23); }
    unsigned int GetPlace(std::uint64_t hash) const { return places[hash]; }
    void Prefetch(unsigned int place) const { __builtin_prefetch(&words[place / 64], 1); }
    bool Has(unsigned int place) const { return (words[place / 64] >> place % 64 & 1) != 0; }
    void Add(unsigned int place) { words[place / 64] |= std::uint64_t(1) << place % 64; }
    void Clear() { std::fill_n(words.get(), places.GetCount() / 64, 0); }
    /// Gives the memory back; the filter is of no more use.
    void Free() { words.reset(); }

private:
    static constexpr std::size_t placesPerVertex = 16;
    Places places;
    std::unique_ptr<std::uint64_t[]> words;
};

/// A hash table of vertices, by cell. Its chains may mix cells: the vertices themselves are compared.
class CellTable
{
public:
    /// For about as many vertices as expected; `links` has room for one of each vertex of the outline.
    CellTable(std::size_t expected, unsigned int* links)
        : places(2 * expected), first(new unsigned int[places.GetCount()]), next(links)
    {
        std::fill_n(first.get(), places.GetCount(), noVertex);
    }

    unsigned int GetPlace(std::uint64_t hash) const { return places[hash]; }
    void Prefetch(unsigned int place) const { __builtin_prefetch(&first[place], 1); }
    unsigned int GetFirst(unsigned int place) const { return first[place]; }
    void PrefetchNext(unsigned int vertex) const { __builtin_prefetch(&next[vertex]); }
    unsigned int GetNext(unsigned int vertex) const { return next[vertex]; }

    void Add(unsigned int place, unsigned int vertex)
    {
        next[vertex] = first[place];
        first[place] = vertex;
    }

private:
    Places places;
    std::unique_ptr<unsigned int[]> first;
    unsigned int* next;
};

/// Marks the place of a vertex that must be compared with others.
constexpr unsigned int suspect = 1u << 31;

/// Writes the place of each vertex, with the mark of a suspect where an earlier vertex may lie in a cell near to it:
/// only of these can one be a duplicate. What is found does not branch, for it cannot be foreseen. Returns how many
/// there are; if more than `most`, it stops there. Sets `markedCount` to the number of vertices that it came to.
template <class T>
unsigned int FindSuspects(const Outline<T>& outline, unsigned int count, unsigned int most, CellFilter& cells,
                          unsigned int* places, unsigned int& markedCount)
{
    constexpr unsigned int ahead = 16;
    const unsigned int fetchedEnd = cells.IsLong() ? count - ahead : 0;
    unsigned int suspectCount = 0;
    unsigned int j = 0;
    for (; j < count && suspectCount <= most; ++j) {
        if (j < fetchedEnd) cells.Prefetch(cells.GetPlace(WidePosition(outline[j + ahead]).GetOwn()));
        const WidePosition position(outline[j]);
        unsigned int isSuspect = 0;
        position.VisitNear([&](std::uint64_t hash) { isSuspect |= cells.Has(cells.GetPlace(hash)); });
        const unsigned int place = cells.GetPlace(position.GetOwn());
        cells.Add(place);
        places[j] = isSuspect != 0 ? place | suspect : place;
        suspectCount += isSuspect;
    }
    markedCount = j;
    return suspectCount;
}

/// The first vertex near to vertex j among those of a chain of the table and one found before. Counts the steps.
template <class T>
unsigned int FindInChain(const Outline<T>& outline, const CellTable& table, unsigned int chain, unsigned int j,
                         unsigned int found, std::size_t& steps)
{
    for (unsigned int i = chain; i != noVertex; i = table.GetNext(i)) {
        ++steps;
        if (i < found && outline.AreNear(i, j)) found = i;
    }
    return found;
}

/// The search for what a vertex repeats in the table, in stages between which come those of other vertices: a large
/// table lies beyond the caches, where many accesses take as long as one.
struct TableLookUp
{
    unsigned int vertex;
    unsigned int own; ///< The vertex's own place.
    unsigned int chains[4];
    unsigned int chainCount;

    /// Fetches the places in the table: those of all near cells of a suspect, else the vertex's own.
    template <class Position>
    void Begin(unsigned int j, const Position& position, bool isSuspect, const CellTable& table)
    {
        vertex = j;
        chainCount = 0;
        own = table.GetPlace(position.GetOwn());
        table.Prefetch(own);
        if (!isSuspect) return;
        position.VisitNear([&](std::uint64_t hash) {
            chains[chainCount] = table.GetPlace(hash);
            table.Prefetch(chains[chainCount++]);
        });
    }

    /// Fetches the first vertex of each chain.
    template <class T>
    void FetchChains(const Outline<T>& outline, const CellTable& table) const
    {
        for (unsigned int k = 0; k < chainCount; ++k) {
            const unsigned int head = table.GetFirst(chains[k]);
            if (head == noVertex) continue;
            __builtin_prefetch(outline[head]);
            table.PrefetchNext(head);
        }
    }

    /// The first vertex near to it, or none.
    template <class T>
    unsigned int Find(const Outline<T>& outline, const CellTable& table, std::size_t& steps) const
    {
        unsigned int found = noVertex;
        for (unsigned int k = 0; k < chainCount; ++k)
            found = FindInChain(outline, table, table.GetFirst(chains[k]), vertex, found, steps);
        return found;
    }
};

/// What is known of the vertices before the table is made.
struct Suspects
{
    bool areFew;
    /// The first vertices, which FindSuspects came to; where suspects are not few, all behind these are such.
    unsigned int markedCount;
    /// The cells near to suspects: only vertices in these can be what a suspect repeats, and the table needs no others.
    const CellFilter& nearCells;
};

/// Writes for each vertex which it repeats, by a table of cells of the given kind, where FindSuspects wrote its place;
/// returns how many do, or `noVertex` as soon as the chains took more than `mostSteps`.
template <class Position, class T>
unsigned int SearchTable(const Outline<T>& outline, unsigned int count, const Suspects& suspects, std::size_t mostSteps,
                         CellTable table, unsigned int* original)
{
    constexpr unsigned int batchSize = 32;
    const bool isLarge = count > (1u << 15);
    TableLookUp lookUps[batchSize];
    std::size_t steps = 0;
    unsigned int duplicateCount = 0;
    for (unsigned int j = 0; j < count && steps <= mostSteps;) {
        unsigned int lookUpCount = 0;
        for (; j < count && lookUpCount < batchSize; ++j) {
            const unsigned int place = j < suspects.markedCount ? original[j] : suspect;
            const bool isPassedOver = suspects.areFew && !suspects.nearCells.Has(place & ~suspect);
            original[j] = noVertex;
            // What is not a number is near nothing and needs no cell.
            if (isPassedOver || std::isnan(outline[j][0]) || std::isnan(outline[j][1])) continue;
            lookUps[lookUpCount++].Begin(j, Position(outline[j]), (place & suspect) != 0, table);
        }
        for (unsigned int k = 0; isLarge && k < lookUpCount; ++k) lookUps[k].FetchChains(outline, table);
        for (unsigned int k = 0; k < lookUpCount; ++k) {
            const unsigned int vertex = lookUps[k].vertex;
            original[vertex] = lookUps[k].Find(outline, table, steps);
            if (original[vertex] != noVertex)
                ++duplicateCount;
            else
                table.Add(lookUps[k].own, vertex);
        }
    }
    if (steps > mostSteps) return noVertex;
    return duplicateCount;
}

/// As many vertices are compared pair by pair in less time than a filter of them takes.
constexpr unsigned int fewVertices = 12;

/// FindDuplicates by all pairs.
template <class T>
unsigned int ComparePairs(const Outline<T>& outline, unsigned int count, unsigned int* original)
{
    unsigned int duplicateCount = 0;
    for (unsigned int j = 0; j < count; ++j) {
        unsigned int i = 0;
        while (i < j && (original[i] != noVertex || !outline.AreNear(i, j))) ++i;
        original[j] = i < j ? i : noVertex;
        duplicateCount += i < j ? 1u : 0u;
    }
    return duplicateCount;
}

} // namespace

template <class T>
unsigned int FindDuplicates(const T* points, unsigned int stride, unsigned int count, unsigned int* original)
{
    const Outline<T> outline{points, stride};
    if (count <= fewVertices) return ComparePairs(outline, count, original);

    // Where there are more suspects than a few, it is quicker to take all vertices for such.
    const unsigned int fewSuspects = count / 8;
    CellFilter cells(count);
    unsigned int markedCount = 0;
    const unsigned int suspectCount = FindSuspects(outline, count, fewSuspects, cells, original, markedCount);
    if (suspectCount == 0) {
        std::fill_n(original, count, noVertex);
        return 0;
    }

    const bool areFew = suspectCount <= fewSuspects;
    if (areFew) {
        cells.Clear();
        for (unsigned int j = 0; j < count; ++j)
            if ((original[j] & suspect) != 0)
                WidePosition(outline[j]).VisitNear([&](std::uint64_t hash) { cells.Add(cells.GetPlace(hash)); });
    } else {
        // The table takes over the memory: fresh memory would take as long as the search.
        cells.Free();
    }
    const std::unique_ptr<unsigned int[]> links(new unsigned int[count]);
    const std::size_t expected = areFew ? 2 * std::size_t(suspectCount) : count;
    const std::size_t fewSteps = 4 * expected;
    const unsigned int duplicateCount = SearchTable<TablePosition>(
        outline, count, {areFew, markedCount, cells}, fewSteps, CellTable(expected, links.get()), original);
    if (duplicateCount != noVertex) return duplicateCount;

    // The marks are overwritten: all vertices are suspects.
    constexpr std::size_t anySteps = std::numeric_limits<std::size_t>::max();
    return SearchTable<NarrowPosition>(outline, count, {false, 0, cells}, anySteps, CellTable(count, links.get()),
                                       original);
}

template unsigned int FindDuplicates(const float*, unsigned int, unsigned int, unsigned int*);
template unsigned int FindDuplicates(const double*, unsigned int, unsigned int, unsigned int*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/polygons/DuplicateSearch.h>

#include <CorvexMaths/Numbers.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

/// Where a coordinate falls in a grid of cells 64 tolerances wide, whose borders lie midway between the multiples.
///
/// Of two coordinates within the tolerance of each other, one lies in the other's cell, or in the one across a border
/// that is near to it. Equal ones, infinities among them, share a cell; so do -0 and 0. Let a < b differ. Their
/// difference is at most a rounding above the tolerance, which is 1/64 of a cell. From 2^33 on, neighbouring numbers
/// lie further apart, so that neither magnitude is above it; the quotients are then below 2^47, and each is rounded by
/// 2^-7 at most. So the places of a and b are in the same order and not 1/31 of a cell apart; where a border parts
/// them, each is nearer to it than that. The nearest whole number and the distance from it are exact for such
/// quotients; for greater ones they are some function of the coordinate, which is all that equal ones ask for.
struct GridPosition
{
    /// The number of the cell, in the last bits of a word: neighbouring cells have neighbouring words.
    std::uint64_t cell;
    /// The way to the cell across the nearer border: 1 or -1, or 0 where that border is not near.
    std::uint64_t step;

    explicit GridPosition(double coordinate)
    {
        constexpr double nearShare = 1.0 / 31;
        // In this binade the last bit counts as 1, so that a sum is rounded to a whole number.
        constexpr double wholeNumbers = 0x1.8p52;
        const double position = coordinate / (64 * Numbers::commonTolerance<double>);
        const double sum = position + wholeNumbers;
        const double share = position - (sum - wholeNumbers);
        std::memcpy(&cell, &sum, sizeof(cell));
        step = std::uint64_t(share > 0.5 - nearShare) - std::uint64_t(share < nearShare - 0.5);
    }
};

/// A hash table of the vertices that stay, by cell. Its chains may mix cells: the vertices themselves are compared.
class CellTable
{
public:
    explicit CellTable(unsigned int count) : next(new unsigned int[count])
    {
        while (std::size_t(1) << (64 - shift) < 2 * std::size_t(count)) --shift;
        const std::size_t bucketCount = std::size_t(1) << (64 - shift);
        first.reset(new unsigned int[bucketCount]);
        for (std::size_t i = 0; i < bucketCount; ++i) first[i] = noVertex;
    }

    unsigned int& GetFirst(std::uint64_t cellX, std::uint64_t cellY) const
    {
        // Odd multipliers spread the last bits, in which neighbouring cells differ, over the first ones, which count.
        const std::uint64_t hash = cellX * 0x9E3779B97F4A7C15u + cellY * 0xC2B2AE3D27D4EB4Fu;
        return first[((hash ^ (hash >> 32)) * 0xBF58476D1CE4E5B9u) >> shift];
    }

    unsigned int& GetNext(unsigned int vertex) const { return next[vertex]; }

private:
    unsigned int shift = 58;
    std::unique_ptr<unsigned int[]> first;
    std::unique_ptr<unsigned int[]> next;
};

/// The first vertex near to vertex j among those of a chain of the table and one found before.
template <class T>
unsigned int FindInChain(const Outline<T>& outline, const CellTable& table, unsigned int chain, unsigned int j,
                         unsigned int found)
{
    for (unsigned int i = chain; i != noVertex; i = table.GetNext(i))
        if (i < found && outline.AreNear(i, j)) found = i;
    return found;
}

} // namespace

template <class T>
unsigned int FindDuplicates(const T* points, unsigned int stride, unsigned int count, unsigned int* original)
{
    const Outline<T> outline{points, stride};
    const CellTable table(count);
    unsigned int duplicateCount = 0;
    for (unsigned int j = 0; j < count; ++j) {
        original[j] = noVertex;
        // What is not a number is near nothing and needs no cell.
        if (std::isnan(outline[j][0]) || std::isnan(outline[j][1])) continue;
        const GridPosition x(static_cast<double>(outline[j][0]));
        const GridPosition y(static_cast<double>(outline[j][1]));
        unsigned int& head = table.GetFirst(x.cell, y.cell);
        unsigned int found = FindInChain(outline, table, head, j, noVertex);
        if (x.step != 0) found = FindInChain(outline, table, table.GetFirst(x.cell + x.step, y.cell), j, found);
        if (y.step != 0) found = FindInChain(outline, table, table.GetFirst(x.cell, y.cell + y.step), j, found);
        if (x.step != 0 && y.step != 0)
            found = FindInChain(outline, table, table.GetFirst(x.cell + x.step, y.cell + y.step), j, found);
        if (found != noVertex) {
            original[j] = found;
            ++duplicateCount;
            continue;
        }
        table.GetNext(j) = head;
        head = j;
    }
    return duplicateCount;
}

template unsigned int FindDuplicates(const float*, unsigned int, unsigned int, unsigned int*);
template unsigned int FindDuplicates(const double*, unsigned int, unsigned int, unsigned int*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

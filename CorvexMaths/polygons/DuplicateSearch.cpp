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

/// Where a coordinate falls in a grid of cells four tolerances wide: near coordinates are at most half a cell apart,
/// rounding included, and so lie in the same cell or in the one across the nearer border. (Where the quotient grows so
/// large that rounding reaches half a cell, distinct coordinates are farther apart than the tolerance.)
struct GridPosition
{
    /// The coordinate's own cell and the other one.
    double cells[2];

    explicit GridPosition(double coordinate)
    {
        const double position = coordinate / (4 * Numbers::commonTolerance<double>);
        // Adding 0 makes one cell of -0 and 0.
        cells[0] = std::floor(position) + 0.0;
        cells[1] = (position - cells[0] < 0.5 ? cells[0] - 1 : cells[0] + 1) + 0.0;
    }
};

/// A hash table of the vertices that stay, by cell. Its chains may mix cells: the vertices themselves are compared.
class CellTable
{
public:
    explicit CellTable(unsigned int count) : next(new unsigned int[count])
    {
        while (bucketCount < count) bucketCount *= 2;
        first.reset(new unsigned int[bucketCount]);
        for (std::size_t i = 0; i < bucketCount; ++i) first[i] = noVertex;
    }

    unsigned int& GetFirst(double cellX, double cellY) const
    {
        std::uint64_t x, y;
        std::memcpy(&x, &cellX, sizeof(x));
        std::memcpy(&y, &cellY, sizeof(y));
        // Odd multipliers spread the leading bits, in which neighbouring cells differ, over the word.
        std::uint64_t hash = (x ^ (x >> 32)) * 0x9E3779B97F4A7C15u + (y ^ (y >> 32)) * 0xC2B2AE3D27D4EB4Fu;
        hash ^= hash >> 29;
        hash *= 0xBF58476D1CE4E5B9u;
        return first[(hash >> 32) & (bucketCount - 1)];
    }

    unsigned int& GetNext(unsigned int vertex) const { return next[vertex]; }

private:
    std::size_t bucketCount = 64;
    std::unique_ptr<unsigned int[]> first;
    std::unique_ptr<unsigned int[]> next;
};

} // namespace

template <class T>
unsigned int FindDuplicates(const T* points, unsigned int stride, unsigned int count, unsigned int* original)
{
    const Outline<T> outline{points, stride};
    const CellTable table(count);
    unsigned int duplicateCount = 0;
    for (unsigned int j = 0; j < count; ++j) {
        // What is not a number is near nothing and needs no cell.
        if (std::isnan(outline[j][0]) || std::isnan(outline[j][1])) {
            original[j] = noVertex;
            continue;
        }
        const GridPosition x(static_cast<double>(outline[j][0]));
        const GridPosition y(static_cast<double>(outline[j][1]));
        unsigned int found = noVertex;
        for (const double cellX : x.cells) {
            for (const double cellY : y.cells) {
                for (unsigned int i = table.GetFirst(cellX, cellY); i != noVertex; i = table.GetNext(i))
                    if (i < found && outline.AreNear(i, j)) found = i;
            }
        }
        original[j] = found;
        if (found != noVertex) {
            ++duplicateCount;
            continue;
        }
        unsigned int& head = table.GetFirst(x.cells[0], y.cells[0]);
        table.GetNext(j) = head;
        head = j;
    }
    return duplicateCount;
}

template unsigned int FindDuplicates(const float*, unsigned int, unsigned int, unsigned int*);
template unsigned int FindDuplicates(const double*, unsigned int, unsigned int, unsigned int*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#include <CorvexMaths/matrices/internal/Kernels.h>
#include <CorvexMaths/matrices/internal/ProductTiles.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// RunTiles in the widest registers of the processor.
template <bool Subtract, class T>
void RunProduct(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
    ForThisProcessor<widestBytes>(
        [=](auto bytes) { RunTiles<T, bytes, Subtract>(c, a, b, rowCount, inner, columnCount); });
}

/// The least number of rows for which tiles pay, since they share what is packed.
constexpr unsigned int leastRows = 2;

/// The product row by row, with every partial sum in memory: correct even where c is b, and fastest for a single row.
template <class T>
void MultiplyByRows(T** c, T** a, T** b, unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
    for (unsigned int i = 0; i < rowCount; ++i) {
        for (unsigned int t = 0; t < inner; ++t) {
            const T factor = a[i][t];
            const T* const row = b[t];
            T* const sums = c[i];
            for (unsigned int j = 0; j < columnCount; ++j) sums[j] += factor * row[j];
        }
    }
}

} // namespace

template <class T>
void MultiplyRows(T** c, T** a, T** b, unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
    if (c == b || rowCount < leastRows)
        MultiplyByRows(c, a, b, rowCount, inner, columnCount);
    else
        RunProduct<false, T>({c, 0}, {a, 0}, {b, 0}, rowCount, inner, columnCount);
}

template <class T>
void SubtractProduct(T** c, unsigned int cColumn, T** a, unsigned int aColumn, T** b, unsigned int bColumn,
                     unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
    RunProduct<true, T>({c, cColumn}, {a, aColumn}, {b, bColumn}, rowCount, inner, columnCount);
}

template void MultiplyRows(float**, float**, float**, unsigned int, unsigned int, unsigned int);
template void MultiplyRows(double**, double**, double**, unsigned int, unsigned int, unsigned int);
template void SubtractProduct(float**, unsigned int, float**, unsigned int, float**, unsigned int, unsigned int,
                              unsigned int, unsigned int);
template void SubtractProduct(double**, unsigned int, double**, unsigned int, double**, unsigned int, unsigned int,
                              unsigned int, unsigned int);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

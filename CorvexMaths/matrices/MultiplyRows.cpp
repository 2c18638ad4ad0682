#include <CorvexMaths/matrices/Kernels.h>
#include <CorvexMaths/matrices/ProductTiles.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

template <class T, bool Subtract>
void RunBaseline(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner,
                 unsigned int columnCount)
{
    RunTiles<T, baselineBytes, Subtract>(c, a, b, rowCount, inner, columnCount);
}

#ifdef CORVEX_WIDE_LANES
template <class T, bool Subtract>
CORVEX_WIDE_LANES void RunWide(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner,
                               unsigned int columnCount)
{
    RunTiles<T, wideBytes, Subtract>(c, a, b, rowCount, inner, columnCount);
}
#endif

template <class T, bool Subtract>
void Run(Block<T> c, Block<T> a, Block<T> b, unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
#ifdef CORVEX_WIDE_LANES
    if (hasWideLanes) return RunWide<T, Subtract>(c, a, b, rowCount, inner, columnCount);
#endif
    RunBaseline<T, Subtract>(c, a, b, rowCount, inner, columnCount);
}

/// The product row by row, with every partial sum in memory: right even where c is b, and best for very few rows.
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
    if (c == b || rowCount < tileRows)
        MultiplyByRows(c, a, b, rowCount, inner, columnCount);
    else
        Run<T, false>(Block<T>{c, 0}, Block<T>{a, 0}, Block<T>{b, 0}, rowCount, inner, columnCount);
}

template <class T>
void SubtractProduct(T** c, unsigned int cColumn, T** a, unsigned int aColumn, T** b, unsigned int bColumn,
                     unsigned int rowCount, unsigned int inner, unsigned int columnCount)
{
    Run<T, true>(Block<T>{c, cColumn}, Block<T>{a, aColumn}, Block<T>{b, bColumn}, rowCount, inner, columnCount);
}

template void MultiplyRows(float**, float**, float**, unsigned int, unsigned int, unsigned int);
template void MultiplyRows(double**, double**, double**, unsigned int, unsigned int, unsigned int);
template void SubtractProduct(float**, unsigned int, float**, unsigned int, float**, unsigned int, unsigned int,
                              unsigned int, unsigned int);
template void SubtractProduct(double**, unsigned int, double**, unsigned int, double**, unsigned int, unsigned int,
                              unsigned int, unsigned int);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

#pragma once

/// The dense product as its definition reads, the measure of the kernel.

namespace CorvexTest
{

/// Adds a times b to c, element by element, terms in ascending t.
template <class T>
void PlainMultiplyRows(T* const* c, T* const* a, T* const* b, unsigned int rowCount, unsigned int inner,
                       unsigned int columnCount)
{
    for (unsigned int i = 0; i < rowCount; ++i)
        for (unsigned int j = 0; j < columnCount; ++j)
            for (unsigned int t = 0; t < inner; ++t) c[i][j] += a[i][t] * b[t][j];
}

} // namespace CorvexTest

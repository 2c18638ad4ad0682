#pragma once

/// Arrays of rows, as the plain forms of the matrix kernels take them.

#include <cstddef>
#include <vector>

namespace CorvexTest
{

/// A block of elements with its row pointers, zeros at first, or the elements of a matrix from one column on.
template <class T>
struct Rows
{
    std::vector<T> elements;
    std::vector<T*> rows;
    unsigned int columns;

    Rows(unsigned int m, unsigned int n) : elements(std::size_t(m) * n), rows(m), columns(n)
    {
        for (unsigned int r = 0; r < m; ++r) rows[r] = elements.data() + std::size_t(r) * n;
    }
    template <class M>
    explicit Rows(const M& matrix, unsigned int first = 0) : Rows(matrix.GetM(), matrix.GetN() - first)
    {
        for (unsigned int r = 0; r < GetM(); ++r)
            for (unsigned int c = 0; c < columns; ++c) rows[r][c] = matrix[r][c + first];
    }
    Rows(const Rows& other) : Rows(other, 0) {}

    unsigned int GetM() const { return static_cast<unsigned int>(rows.size()); }
    unsigned int GetN() const { return columns; }
    T* operator[](unsigned int row) const { return rows[row]; }
    T** operator*() { return rows.data(); }
};

} // namespace CorvexTest

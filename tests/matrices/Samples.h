#pragma once

/// Matrices to hold the fast kernels against their plain forms: row arrays of their own, and the kinds of content that
/// part the two where a shortcut is wrong.

#include "tests/support/Bits.h"
#include "tests/support/Rows.h"
#include "tests/support/Types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace CorvexTest
{

/// A matrix of run-time size from its elements, row by row.
template <class T>
Maths::TMatrixMxN<T> Make(unsigned int m, unsigned int n, std::initializer_list<double> values)
{
    Maths::TMatrixMxN<T> matrix(m, n);
    auto value = values.begin();
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) matrix[r][c] = static_cast<T>(*value++);
    return matrix;
}

/// Equality of sizes, and of elements to the bit.
template <class Expected, class M>
::testing::AssertionResult SameElements(Expected const& expected, M const& matrix)
{
    if (expected.GetM() != matrix.GetM() || expected.GetN() != matrix.GetN())
        return ::testing::AssertionFailure() << "the matrix is " << matrix.GetM() << " by " << matrix.GetN();
    for (unsigned int r = 0; r < matrix.GetM(); ++r)
        for (unsigned int c = 0; c < matrix.GetN(); ++c)
            if (!SameBits(expected[r][c], matrix[r][c]))
                return ::testing::AssertionFailure()
                       << "element (" << r << ", " << c << ") is " << matrix[r][c] << " instead of " << expected[r][c];
    return ::testing::AssertionSuccess();
}

/// The kinds of content.
using Content = std::string_view;
inline constexpr Content contents[] = {"uniform", "ties", "repeated", "zero row",   "signed zeros", "tiny",
                                       "huge",    "NaN",  "infinite", "NaN column", "mixed"};

/// Fills a matrix with content of a kind.
template <class T>
void Fill(Maths::TMatrixMxN<T>& matrix, Content content, std::mt19937& random)
{
    using Limits = std::numeric_limits<T>;
    unsigned int const m = matrix.GetM(), n = matrix.GetN();
    auto const small = [&random] { return T(int(random() % 5) - 2); };
    auto const rare = [&random, m, n] { return random() % (m * n) < 2; };
    auto const element = [&](unsigned int r, unsigned int c) {
        T const uniform = std::uniform_real_distribution<T>(T(-1), T(1))(random);
        if (content == "ties") return small();
        if (content == "repeated" && r >= 2 && r % 3 == 0) return matrix[r - 2][c];
        if (content == "zero row" && r == m / 2) return T(0);
        if (content == "signed zeros" && small() <= 0) return uniform * T(0);
        if (content == "tiny") return uniform * Limits::min();
        if (content == "huge") return uniform * Limits::max();
        if (content == "NaN" && rare()) return Limits::quiet_NaN();
        if (content == "infinite" && rare()) return Limits::infinity();
        if (content == "NaN column" && c == n / 2) return Limits::quiet_NaN();
        if (content == "NaN column" && r == c) return T(4); // So that the pivot before that column is its own row.
        if (content == "mixed") return uniform * (rare() ? Limits::infinity() : rare() ? Limits::max() : small());
        return uniform;
    };
    for (unsigned int r = 0; r < m; ++r)
        for (unsigned int c = 0; c < n; ++c) matrix[r][c] = element(r, c);
}

} // namespace CorvexTest

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

/// The kinds of content: numbers between -1 and 1, of those some as zeros of both signs, two infinite, or with all of
/// it and huge ones.
using Content = std::string_view;

template <class T>
void Fill(Maths::TMatrixMxN<T>& matrix, Content content, std::mt19937& random)
{
    using Limits = std::numeric_limits<T>;
    unsigned int const m = matrix.GetM(), n = matrix.GetN();
    for (unsigned int i = 0; i < m * n; ++i) {
        T& element = matrix[i / n][i % n];
        element = std::uniform_real_distribution<T>(T(-1), T(1))(random);
        if ((content == "signed zeros" || content == "mixed") && random() % 5 < 3) element *= T(0);
        if ((content == "infinite" || content == "mixed") && random() % (m * n) < 2) element = Limits::infinity();
        if (content == "mixed" && random() % (m * n) < 2) element *= Limits::max();
    }
}

} // namespace CorvexTest

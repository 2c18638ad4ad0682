#pragma once

/// Crout's decomposition with its solve and inverse as their definitions read, the measure of the kernels.

#include <cmath>
#include <utility>
#include <vector>

namespace CorvexTest
{

template <class T>
bool PlainLUDRows(T* const* a, int* pivots, T* scale, T* parity, int order)
{
    *parity = T(1);
    for (int i = 0; i < order; ++i) scale[i] = T(0), pivots[i] = 0;
    for (int i = 0; i < order; ++i) {
        T big = T(0);
        for (int j = 0; j < order; ++j)
            if (std::fabs(a[i][j]) > big) big = std::fabs(a[i][j]);
        if (big == T(0)) return false;
        scale[i] = T(1) / big;
    }
    int p = 0;
    for (int j = 0; j < order; ++j) {
        for (int i = 0; i < j; ++i)
            for (int k = 0; k < i; ++k) a[i][j] -= a[i][k] * a[k][j];
        T best = T(0);
        for (int i = j; i < order; ++i) {
            for (int k = 0; k < j; ++k) a[i][j] -= a[i][k] * a[k][j];
            T const merit = scale[i] * std::fabs(a[i][j]);
            if (merit >= best) best = merit, p = i;
        }
        if (p != j) {
            for (int k = 0; k < order; ++k) std::swap(a[p][k], a[j][k]);
            *parity = -*parity;
            scale[p] = scale[j];
        }
        pivots[j] = p;
        if (a[j][j] == T(0)) a[j][j] = static_cast<T>(1e-20f);
        if (j != order - 1) {
            T const reciprocal = T(1) / a[j][j];
            for (int i = j + 1; i < order; ++i) a[i][j] *= reciprocal;
        }
    }
    return true;
}

template <class T>
void PlainBackSubRows(T const* const* a, int const* pivots, T const* b, T* x, int order)
{
    for (int i = 0; i < order; ++i) x[i] = b[i];
    int first = -1;
    for (int i = 0; i < order; ++i) {
        int const p = pivots[i];
        T sum = x[p];
        x[p] = x[i];
        if (first != -1)
            for (int j = first; j < i; ++j) sum -= a[i][j] * x[j];
        else if (sum != T(0))
            first = i;
        x[i] = sum;
    }
    for (int i = order - 1; i >= 0; --i) {
        T sum = x[i];
        for (int j = i + 1; j < order; ++j) sum -= a[i][j] * x[j];
        x[i] = sum / a[i][i];
    }
}

/// Writes the inverse, column by column, from the factors.
template <class T>
void PlainInvertRows(T* const* out, T const* const* lu, int const* pivots, int order)
{
    std::vector<T> solution(static_cast<std::size_t>(order));
    for (int c = 0; c < order; ++c) {
        std::vector<T> unit(static_cast<std::size_t>(order));
        unit[static_cast<std::size_t>(c)] = T(1);
        PlainBackSubRows(lu, pivots, unit.data(), solution.data(), order);
        for (int i = 0; i < order; ++i) out[i][c] = solution[static_cast<std::size_t>(i)];
    }
}

} // namespace CorvexTest

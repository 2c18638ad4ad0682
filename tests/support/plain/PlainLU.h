#pragma once

/// Crout's decomposition and the solve with its factors as their definitions read, the measure of the kernels.

#include <cmath>
#include <utility>

namespace CorvexTest
{

template <class T>
bool PlainLUDRows(T* const* a, int* pivots, T* scale, T* parity, int order)
{
    *parity = T(1);
    for (int i = 0; i < order; ++i) {
        T big = T(0);
        for (int j = 0; j < order; ++j)
            if (std::fabs(a[i][j]) > big) big = std::fabs(a[i][j]);
        if (big == T(0)) return false;
        scale[i] = T(1) / big;
    }
    for (int j = 0, p = 0; j < order; ++j) {
        T best = T(0);
        for (int i = 0; i < order; ++i) {
            for (int k = 0; k < i && k < j; ++k) a[i][j] -= a[i][k] * a[k][j];
            T const merit = scale[i] * std::fabs(a[i][j]);
            if (i >= j && merit >= best) best = merit, p = i;
        }
        if (p != j) {
            for (int k = 0; k < order; ++k) std::swap(a[p][k], a[j][k]);
            *parity = -*parity;
            scale[p] = scale[j];
        }
        pivots[j] = p;
        if (a[j][j] == T(0)) a[j][j] = static_cast<T>(1e-20f);
        T const reciprocal = T(1) / a[j][j];
        for (int i = j + 1; i < order; ++i) a[i][j] *= reciprocal;
    }
    return true;
}

template <class T>
void PlainBackSubRows(T const* const* a, int const* pivots, T const* b, T* x, int order)
{
    for (int i = 0; i < order; ++i) x[i] = b[i];
    int first = -1;
    for (int i = 0; i < order; ++i) {
        T sum = x[pivots[i]];
        x[pivots[i]] = x[i];
        for (int j = first; j != -1 && j < i; ++j) sum -= a[i][j] * x[j];
        if (first == -1 && sum != T(0)) first = i;
        x[i] = sum;
    }
    for (int i = order - 1; i >= 0; --i) {
        for (int j = i + 1; j < order; ++j) x[i] -= a[i][j] * x[j];
        x[i] /= a[i][i];
    }
}

} // namespace CorvexTest

#pragma once

/// Jacobi's iteration as its definition reads, the measure of the kernel: all sweeps, and vectors in columns.

#include <cmath>
#include <utility>

namespace CorvexTest::Plain
{

template <class T>
bool EigenspaceRows(T** a, T* values, T** vectors, int order, T* b, T* z)
{
    auto const rotate = [=](int p, int q, T g) {
        T h = values[q] - values[p], t = a[p][q] / h;
        T const theta = (h * T(0.5)) / a[p][q], root = std::sqrt(theta * theta + T(1));
        if (std::fabs(h) + g != std::fabs(h)) t = T(theta < T(0) ? -1 : 1) / (root + std::fabs(theta));
        T const c = T(1) / std::sqrt(t * t + T(1)), s = c * t, tau = s / (c + T(1));
        auto const mix = [=](T& x, T& y) {
            T const oldX = x;
            x = x - (tau * x + y) * s;
            y = y + (oldX - tau * y) * s;
        };
        h = t * a[p][q];
        z[p] -= h, z[q] += h, values[p] -= h, values[q] += h, a[p][q] = T(0);
        for (int j = 0; j < p; ++j) mix(a[j][p], a[j][q]);
        for (int j = p + 1; j < q; ++j) mix(a[p][j], a[j][q]);
        for (int j = q + 1; j < order; ++j) mix(a[p][j], a[q][j]);
        for (int j = 0; j < order; ++j) mix(vectors[j][p], vectors[j][q]);
    };

    for (int i = 0; i < order * order; ++i) vectors[i / order][i % order] = T(i / order == i % order);
    for (int i = 0; i < order; ++i) b[i] = values[i] = a[i][i], z[i] = T(0);
    int sweep = 0;
    for (; sweep < 50; ++sweep) {
        T sum = T(0);
        for (int i = 0; i < order * order; ++i)
            sum += i / order < i % order ? std::fabs(a[i / order][i % order]) : T(0);
        if (sum == T(0)) break;
        T const threshold = sweep < 3 ? (sum * T(0.2)) / T(9) : T(0);
        for (auto const& [p, q] : {std::pair(0, 1), std::pair(0, 2), std::pair(1, 2)}) {
            if (q >= order) continue;
            T const g = T(100) * std::fabs(a[p][q]), atP = std::fabs(values[p]), atQ = std::fabs(values[q]);
            if (sweep > 3 && atP + g == atP && atQ + g == atQ)
                a[p][q] = T(0);
            else if (std::fabs(a[p][q]) > threshold)
                rotate(p, q, g);
        }
        for (int i = 0; i < order; ++i) values[i] = b[i] += z[i], z[i] = T(0);
    }
    bool result = false;
    for (int i = 0; i < order; ++i) {
        for (int j = i + 1; j < order; ++j) std::swap(vectors[i][j], vectors[j][i]);
        result = result || std::fabs(values[i]) > static_cast<T>(1e-6f);
    }
    return result && sweep < 50;
}

} // namespace CorvexTest::Plain

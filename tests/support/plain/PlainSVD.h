#pragma once

/// The singular value decomposition, one loop for each sum and each update, in the order of operations that the
/// library's kernels promise to keep. The kernels are held to these to the bit.

#include <cmath>
#include <vector>

namespace CorvexTest::Plain
{

template <class T>
T Pythag(T a, T b)
{
    T const A = std::fabs(a), B = std::fabs(b);
    if (A > B) return A * std::sqrt(T(1) + (B / A) * (B / A));
    return B == T(0) ? T(0) : B * std::sqrt(T(1) + (A / B) * (A / B));
}

template <class T>
T WithSign(T a, T b)
{
    return b < T(0) ? -std::fabs(a) : std::fabs(a);
}

/// The head of a Householder vector, in place, of the given sum of squares.
template <class T>
void Reflect(T& head, T s, T* g, T* h)
{
    T const f = head;
    *g = -WithSign(std::sqrt(s), f);
    *h = f * *g - s;
    head = f - *g;
}

/// Householder reduction to bidiagonal form; returns the norm that the iteration's zero tests are relative to.
template <class T>
T Bidiagonalise(T** u, T** w, T* work, unsigned int m, unsigned int n)
{
    T g = 0, h = 0, s = 0, scale = 0, anorm = 0;
    for (unsigned int i = 0, k, j; i < n; ++i) {
        unsigned int const l = i + 1;
        work[i] = scale * g;
        g = s = scale = 0;
        for (k = i; k < m; ++k) scale += std::fabs(u[k][i]);
        if (i < m && scale != T(0)) {
            for (k = i; k < m; ++k) u[k][i] /= scale, s += u[k][i] * u[k][i];
            Reflect(u[i][i], s, &g, &h);
            for (j = l; j < n; ++j) {
                for (s = 0, k = i; k < m; ++k) s += u[k][i] * u[k][j];
                T const f = s / h;
                for (k = i; k < m; ++k) u[k][j] += f * u[k][i];
            }
            for (k = i; k < m; ++k) u[k][i] *= scale;
        }
        w[i][i] = scale * g;
        g = s = scale = 0;
        if (i < m && i != n - 1) {
            for (k = l; k < n; ++k) scale += std::fabs(u[i][k]);
            if (scale != T(0)) {
                for (k = l; k < n; ++k) u[i][k] /= scale, s += u[i][k] * u[i][k];
                Reflect(u[i][l], s, &g, &h);
                for (k = l; k < n; ++k) work[k] = u[i][k] / h;
                for (j = l; j < m; ++j) {
                    for (s = 0, k = l; k < n; ++k) s += u[j][k] * u[i][k];
                    for (k = l; k < n; ++k) u[j][k] += s * work[k];
                }
                for (k = l; k < n; ++k) u[i][k] *= scale;
            }
        }
        T const size = std::fabs(w[i][i]) + std::fabs(work[i]);
        if (!(size < anorm)) anorm = size;
    }
    return anorm;
}

template <class T>
void AccumulateRight(T** u, T** v, T const* work, unsigned int n)
{
    for (unsigned int i = n, j, k; i-- > 0;) {
        unsigned int const l = i + 1;
        if (l < n && work[l] != T(0)) {
            for (j = l; j < n; ++j) v[j][i] = (u[i][j] / u[i][l]) / work[l];
            for (j = l; j < n; ++j) {
                T s = 0;
                for (k = l; k < n; ++k) s += u[i][k] * v[k][j];
                for (k = l; k < n; ++k) v[k][j] += s * v[k][i];
            }
        }
        for (j = l; j < n; ++j) v[i][j] = v[j][i] = 0;
        v[i][i] = 1;
    }
}

template <class T>
void AccumulateLeft(T** u, T** w, unsigned int m, unsigned int n)
{
    for (unsigned int i = m < n ? m : n, j, k; i-- > 0;) {
        unsigned int const l = i + 1;
        T g = w[i][i];
        for (j = l; j < n; ++j) u[i][j] = 0;
        if (g == T(0)) {
            for (j = i; j < m; ++j) u[j][i] = 0;
        } else {
            g = T(1) / g;
            for (j = l; j < n; ++j) {
                T s = 0;
                for (k = l; k < m; ++k) s += u[k][i] * u[k][j];
                T const f = (s / u[i][i]) * g;
                for (k = i; k < m; ++k) u[k][j] += f * u[k][i];
            }
            for (j = i; j < m; ++j) u[j][i] *= g;
        }
        u[i][i] += T(1);
    }
}

template <class T>
void Rotate(T** rows, unsigned int rowCount, unsigned int first, unsigned int second, T c, T s)
{
    for (unsigned int r = 0; r < rowCount; ++r) {
        T const p = rows[r][first], q = rows[r][second];
        rows[r][first] = p * c + q * s;
        rows[r][second] = q * c - p * s;
    }
}

/// Clears work[l] against the diagonal element before it, which counts as zero.
template <class T>
void Cancel(T** u, T** w, T* work, unsigned int m, unsigned int l, unsigned int k, T anorm)
{
    T c = 0, s = 1;
    for (unsigned int i = l; i <= k; ++i) {
        T const f = s * work[i], g = w[i][i];
        work[i] = c * work[i];
        if (std::fabs(f) + anorm == anorm) break;
        T h = Pythag(f, g);
        w[i][i] = h;
        h = T(1) / h;
        c = g * h;
        s = -f * h;
        Rotate(u, m, l - 1, i, c, s);
    }
}

/// One implicitly shifted QR transformation of the block l to k.
template <class T>
void Transform(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int l, unsigned int k)
{
    unsigned int const nm = k - 1;
    T x = w[l][l], y = w[nm][nm], z = w[k][k], g = work[nm], h = work[k], c = 1, s = 1;
    T f = ((y - z) * (y + z) + (g - h) * (g + h)) / (T(2) * h * y);
    g = Pythag(f, T(1));
    f = ((x - z) * (x + z) + h * (y / (f + WithSign(g, f)) - h)) / x;
    for (unsigned int j = l; j <= nm; ++j) {
        unsigned int const i = j + 1;
        y = w[i][i];
        h = s * work[i];
        g = c * work[i];
        work[j] = z = Pythag(f, h);
        c = f / z;
        s = h / z;
        f = x * c + g * s;
        g = g * c - x * s;
        h = y * s;
        y = y * c;
        Rotate(v, n, j, i, c, s);
        w[j][j] = z = Pythag(f, h);
        if (z != T(0)) {
            z = T(1) / z;
            c = f * z;
            s = h * z;
        }
        f = c * g + s * y;
        x = c * y - s * g;
        Rotate(u, m, j, i, c, s);
    }
    work[l] = 0;
    work[k] = f;
    w[k][k] = x;
}

template <class T>
bool SVDRows(T** u, T** w, T** v, T* work, unsigned int m, unsigned int n, unsigned int iterationLimit)
{
    for (unsigned int i = 0; i < n; ++i)
        for (unsigned int j = 0; j < n; ++j) w[i][j] = v[i][j] = 0;
    T const anorm = Bidiagonalise(u, w, work, m, n);
    AccumulateRight(u, v, work, n);
    AccumulateLeft(u, w, m, n);
    for (unsigned int k = n; k-- > 0;) {
        for (unsigned int pass = 1; pass <= 30; ++pass) {
            bool cancel = false;
            unsigned int l = k;
            for (; l > 0 && std::fabs(work[l]) + anorm != anorm; --l) {
                cancel = std::fabs(w[l - 1][l - 1]) + anorm == anorm;
                if (cancel) break;
            }
            if (cancel) Cancel(u, w, work, m, l, k, anorm);
            if (l == k) {
                if (w[k][k] < T(0)) {
                    w[k][k] = -w[k][k];
                    for (unsigned int j = 0; j < n; ++j) v[j][k] = -v[j][k];
                }
                break;
            }
            if (pass == iterationLimit) return false;
            Transform(u, w, v, work, m, n, l, k);
        }
    }
    return true;
}

} // namespace CorvexTest::Plain

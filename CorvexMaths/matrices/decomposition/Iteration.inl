#pragma once

/// Diagonalisation of the bidiagonal form by implicitly shifted QR transformations.
///
/// With B the bidiagonal matrix of diagonal q = diag(w) and superdiagonal e = work, each pass looks for a block l to k
/// that e splits from the rest. A block of one has converged. Otherwise a transformation B <- S-transposed B T chases
/// the shift of the bottom 2 by 2 minor of B-transposed B through the block: T is a product of rotations of columns,
/// collected in V, S one of rows, collected in U. An element is negligible, and counts as zero, when adding its
/// absolute value to the norm that the reduction returned leaves the norm as it is.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/decomposition/Reduction.inl>
#include <CorvexMaths/matrices/decomposition/Rotations.inl>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The most passes for one singular value.
constexpr unsigned int passLimit = 30;

/// sqrt(a^2 + b^2) without overflow or underflow on the way.
template <class T>
inline T Hypotenuse(T a, T b)
{
    const T x = Numbers::Absolute(a);
    const T y = Numbers::Absolute(b);
    if (x > y) {
        const T ratio = y / x;
        return x * Numbers::SquareRoot(T(1) + ratio * ratio);
    }
    if (y == T(0)) return T(0);
    const T ratio = x / y;
    return y * Numbers::SquareRoot(T(1) + ratio * ratio);
}

/// `Left` receives the rotations that U collects.
template <class T, class Left>
class SingularValueIteration
{
public:
    SingularValueIteration(Left* leftRotations, T** wRows, T** vRows, T* superdiagonal, T largestSum, unsigned int n)
        : w(wRows), work(superdiagonal), norm(largestSum), order(n), left(*leftRotations), right(vRows, n)
    {}

    /// Diagonalises, the last value first. False when a value has not converged at pass `iterationLimit`.
    bool Run(unsigned int iterationLimit)
    {
        bool converged = true;
        for (unsigned int k = order; converged && k-- > 0;) converged = Converge(k, iterationLimit);
        left.Flush();
        right.Flush();
        return converged;
    }

private:
    bool IsNegligible(T value) const { return Numbers::Absolute(value) + norm == norm; }

    /// Splits off value k, or leaves it as it is after the last pass. False when it has not converged at pass
    /// `iterationLimit`.
    bool Converge(unsigned int k, unsigned int iterationLimit)
    {
        for (unsigned int pass = 1; pass <= passLimit; ++pass) {
            const unsigned int l = FindBlock(k);
            if (l == k) {
                MakePositive(k);
                return true;
            }
            if (pass == iterationLimit) return false;
            Transform(l, k);
        }
        return true;
    }

    /// The start of the block that ends at k: where the superdiagonal is negligible, or where the diagonal element
    /// before is, after the superdiagonal has been cancelled there. A NaN is never negligible; the search then ends at
    /// 0.
    unsigned int FindBlock(unsigned int k)
    {
        for (unsigned int l = k; l > 0; --l) {
            if (IsNegligible(work[l])) return l;
            if (IsNegligible(w[l - 1][l - 1])) {
                Cancel(l, k);
                return l;
            }
        }
        return 0;
    }

    /// Takes work[l] to zero by rotating row l - 1, whose diagonal element is negligible, with the rows l to k.
    void Cancel(unsigned int l, unsigned int k)
    {
        T c = T(0);
        T s = T(1);
        for (unsigned int i = l; i <= k; ++i) {
            const T f = s * work[i];
            work[i] = c * work[i];
            if (IsNegligible(f)) return;
            const T g = w[i][i];
            T h = Hypotenuse(f, g);
            w[i][i] = h;
            h = T(1) / h;
            c = g * h;
            s = -f * h;
            left.Add(l - 1, i, c, s);
        }
    }

    /// A singular value is not negative: its sign goes to the column of V.
    void MakePositive(unsigned int k)
    {
        if (!(w[k][k] < T(0))) return;
        w[k][k] = -w[k][k];
        right.Negate(k);
    }

    /// The first rotation is made from the first column of B-transposed B less the shift, divided by the first element
    /// of B. This is its first component; the second is an element of the superdiagonal.
    T Shift(unsigned int l, unsigned int k) const
    {
        const T x = w[l][l];
        const T y = w[k - 1][k - 1];
        const T z = w[k][k];
        const T g = work[k - 1];
        const T h = work[k];
        const T f = ((y - z) * (y + z) + (g - h) * (g + h)) / (T(2) * h * y);
        const T root = Hypotenuse(f, T(1));
        return ((x - z) * (x + z) + h * (y / (f + WithSign(root, f)) - h)) / x;
    }

    /// One QR transformation of the block l to k.
    void Transform(unsigned int l, unsigned int k)
    {
        T f = Shift(l, k);
        T x = w[l][l];
        T c = T(1);
        T s = T(1);
        for (unsigned int i = l + 1; i <= k; ++i) {
            const unsigned int j = i - 1;
            // From the right: columns j and i of B, which fills in below the diagonal.
            T g = c * work[i];
            T h = s * work[i];
            T y = w[i][i];
            T z = Hypotenuse(f, h);
            work[j] = z;
            c = f / z;
            s = h / z;
            f = x * c + g * s;
            g = g * c - x * s;
            h = y * s;
            y = y * c;
            right.Add(j, i, c, s);

            // From the left: rows j and i, which fills in above the superdiagonal. Where z is 0 the last rotation
            // stays.
            z = Hypotenuse(f, h);
            w[j][j] = z;
            if (z != T(0)) {
                const T inverse = T(1) / z;
                c = f * inverse;
                s = h * inverse;
            }
            f = c * g + s * y;
            x = c * y - s * g;
            left.Add(j, i, c, s);
        }
        work[l] = T(0);
        work[k] = f;
        w[k][k] = x;
    }

    T** w;
    T* work;
    T norm;
    unsigned int order;
    Left& left;
    RotationRun<T> right;
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

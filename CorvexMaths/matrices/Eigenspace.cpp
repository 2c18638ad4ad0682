// Eigenvalues and eigenvectors of symmetric matrices by Jacobi rotations.
//
// A rotation in the plane of two indices p < q by the angle whose tangent t solves
//     t^2 + 2 t theta - 1 = 0,   theta = (a(q, q) - a(p, p)) / (2 a(p, q)),
// the smaller root being taken, makes a(p, q) zero. With s and c the sine and cosine of the angle and
// tau = s/(1 + c), every pair of elements x, y that the rotation mixes becomes
//     x - s (y + tau x),   y + s (x - tau y).
// Sweeps over the pairs go on until nothing is left above the diagonal; the eigenvectors are the columns of the
// product of all rotations. That product is kept transposed, so that a rotation runs along two rows of it and the
// eigenvectors end up as rows.
//
// Each rotation needs the outcome of the one before and is itself a chain of four divisions and two roots, whose
// latency is nearly all of the time at small orders.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>
#include <CorvexMaths/matrices/internal/Kernels.h>

#include <memory>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

constexpr unsigned int sweepLimit = 50;
/// How many sweeps pass over elements below a threshold.
constexpr unsigned int thresholdSweeps = 3;
/// The pairs, and the threshold with its divisor, the square of this, are those of order 3, whatever the order.
constexpr unsigned int rotatedOrder = 3;

/// Whether g is lost in the rounding when it is added to the size of a value.
template <class T>
inline bool IsLostIn(T value, T g)
{
    const T size = Numbers::Absolute(value);
    return size + g == size;
}

/// The rotation that mixes pairs of elements.
template <class T>
struct Rotation
{
    T s;
    T tau;

    void Mix(T& x, T& y) const
    {
        const T oldX = x;
        const T oldY = y;
        x = oldX - (tau * oldX + oldY) * s;
        y = oldY + (oldX - tau * oldY) * s;
    }
};

/// The state of the iteration. Order is unsigned int, or a std::integral_constant of it, by which loops unroll.
template <class T, class Order>
class JacobiIteration
{
public:
    JacobiIteration(T* const* aRows, T* valueArray, T* const* vectorRows, Order orderValue, T* diagonal, T* updates)
        : a(aRows), values(valueArray), vectors(vectorRows), order(orderValue), b(diagonal), z(updates)
    {}

    /// Runs the sweeps. False where the elements above the diagonal did not all become 0, or no eigenvalue is above the
    /// common tolerance.
    bool Run()
    {
        Begin();
        for (unsigned int sweep = 0; !IsDiagonal(); ++sweep) {
            if (sweep == sweepLimit - 1) {
                // The state that the last sweep leaves is handed out, but not looked at again.
                Sweep(sweep);
                return false;
            }
            // From the fifth sweep on all sweeps are alike, so one that changes nothing tells that none will.
            if (!Sweep(sweep) && sweep > thresholdSweeps) return false;
        }
        for (unsigned int i = 0; i < order; ++i)
            if (Numbers::Absolute(values[i]) > Numbers::commonTolerance<T>) return true;
        return false;
    }

private:
    T* const* a;
    T* values;
    T* const* vectors;
    Order order;
    T* b; ///< The diagonal at the start of the sweep.
    T* z; ///< What the sweep has added to it so far.

    void Begin()
    {
        for (unsigned int i = 0; i < order; ++i) {
            for (unsigned int j = 0; j < order; ++j) vectors[i][j] = i == j ? T(1) : T(0);
            b[i] = values[i] = a[i][i];
            z[i] = T(0);
        }
    }

    /// Whether the sum of the absolute values above the diagonal is exactly 0, which takes all of them to be.
    bool IsDiagonal() const
    {
        for (unsigned int p = 0; p < order; ++p)
            for (unsigned int q = p + 1; q < order; ++q)
                if (a[p][q] != T(0)) return false;
        return true;
    }

    /// The absolute value up to which a sweep leaves an element alone.
    T Threshold(unsigned int sweep) const
    {
        if (sweep >= thresholdSweeps) return T(0);
        T sum = T(0);
        for (unsigned int p = 0; p < order; ++p)
            for (unsigned int q = p + 1; q < order; ++q) sum += Numbers::Absolute(a[p][q]);
        return sum * T(0.2) / T(rotatedOrder * rotatedOrder);
    }

    /// Rotates the pairs once and brings the diagonal up to date. False if no element above the diagonal has changed.
    bool Sweep(unsigned int sweep)
    {
        const T threshold = Threshold(sweep);
        bool changed = false;
        for (unsigned int p = 0; p < rotatedOrder && p < order; ++p) {
            for (unsigned int q = p + 1; q < rotatedOrder && q < order; ++q) {
                const T g = T(100) * Numbers::Absolute(a[p][q]);
                if (sweep > thresholdSweeps && IsLostIn(values[p], g) && IsLostIn(values[q], g)) {
                    changed |= a[p][q] != T(0);
                    a[p][q] = T(0);
                } else if (Numbers::Absolute(a[p][q]) > threshold) {
                    changed = true;
                    Rotate(p, q, g);
                }
            }
        }
        for (unsigned int i = 0; i < order; ++i) {
            b[i] += z[i];
            values[i] = b[i];
            z[i] = T(0);
        }
        return changed;
    }

    /// The tangent of the angle that makes an element zero, where h is the difference of the two diagonal elements.
    static T Tangent(T element, T h, T g)
    {
        if (IsLostIn(h, g)) return element / h;
        const T theta = h * T(0.5) / element;
        const T t = T(1) / (Numbers::SquareRoot(theta * theta + T(1)) + Numbers::Absolute(theta));
        return theta < T(0) ? -t : t;
    }

    void Rotate(unsigned int p, unsigned int q, T g)
    {
        const T t = Tangent(a[p][q], values[q] - values[p], g);
        const T c = T(1) / Numbers::SquareRoot(t * t + T(1));
        const T s = c * t;
        const Rotation<T> rotation = {s, s / (c + T(1))};
        const T h = t * a[p][q];
        z[p] -= h;
        z[q] += h;
        values[p] -= h;
        values[q] += h;
        a[p][q] = T(0);

        for (unsigned int j = 0; j < p; ++j) rotation.Mix(a[j][p], a[j][q]);
        for (unsigned int j = p + 1; j < q; ++j) rotation.Mix(a[p][j], a[j][q]);
        for (unsigned int j = q + 1; j < order; ++j) rotation.Mix(a[p][j], a[q][j]);
        for (unsigned int j = 0; j < order; ++j) rotation.Mix(vectors[p][j], vectors[q][j]);
    }
};

/// The eigenspace of a matrix of fixed order, taken by value to be worked on.
template <unsigned int N, class M, class V, class T>
bool FixedEigenspace(M matrix, T* values, V* vectors)
{
    T* rows[N];
    T* vectorRows[N];
    T b[N];
    T z[N];
    matrix.GetRows(rows);
    for (unsigned int i = 0; i < N; ++i) vectorRows[i] = vectors[i];
    using Order = std::integral_constant<unsigned int, N>;
    return JacobiIteration<T, Order>(rows, values, vectorRows, Order(), b, z).Run();
}

} // namespace

template <class T>
bool Kernels::EigenspaceRows(T** a, T* values, T** vectors, unsigned int order, T* b, T* z)
{
    return JacobiIteration<T, unsigned int>(a, values, vectors, order, b, z).Run();
}

template <class T>
bool TMatrix2x2<T>::Eigenspace(T* const values, TVector2<T>* const vectors) const
{
    CORVEX_PRECONDITION("TMatrix2x2::Eigenspace", values != nullptr && vectors != nullptr, values, vectors);
    return FixedEigenspace<2>(*this, values, vectors);
}

template <class T>
bool TMatrix3x3<T>::Eigenspace(T* const values, TVector3<T>* const vectors) const
{
    CORVEX_PRECONDITION("TMatrix3x3::Eigenspace", values != nullptr && vectors != nullptr, values, vectors);
    return FixedEigenspace<3>(*this, values, vectors);
}

template <class T>
bool TMatrix4x4<T>::Eigenspace(T* const values, TVector4<T>* const vectors) const
{
    CORVEX_PRECONDITION("TMatrix4x4::Eigenspace", values != nullptr && vectors != nullptr, values, vectors);
    return FixedEigenspace<4>(*this, values, vectors);
}

template <class T>
bool TMatrixMxN<T>::Eigenspace(T* values, T** vectors) const
{
    if (m != n) return false;
    CORVEX_PRECONDITION("TMatrixMxN::Eigenspace", m == 0 || (values != nullptr && vectors != nullptr), m, values,
                        vectors);
    const std::unique_ptr<T[]> b(new T[m]);
    const std::unique_ptr<T[]> z(new T[m]);
    const TMatrixMxN work(*this);
    return Kernels::EigenspaceRows(work.rows, values, vectors, m, b.get(), z.get());
}

template <class T>
bool TMatrixMxN<T>::Eigenspace(T** values, T*** vectors) const
{
    if (m != n) return false;
    CORVEX_PRECONDITION("TMatrixMxN::Eigenspace", values != nullptr && vectors != nullptr, values, vectors);
    *values = nullptr;
    *vectors = nullptr;
    std::unique_ptr<T[]> foundValues(new T[m]);
    std::unique_ptr<T*[]> foundVectors(new T*[m]);
    const std::unique_ptr<std::unique_ptr<T[]>[]> owners(new std::unique_ptr<T[]>[m]);
    for (unsigned int i = 0; i < m; ++i) {
        owners[i].reset(new T[m]);
        foundVectors[i] = owners[i].get();
    }
    if (!Eigenspace(foundValues.get(), foundVectors.get())) return false;

    for (unsigned int i = 0; i < m; ++i) owners[i].release();
    *values = foundValues.release();
    *vectors = foundVectors.release();
    return true;
}

#define CORVEX_INSTANTIATE_EIGENSPACE(T)                                                                               \
    template bool Kernels::EigenspaceRows(T**, T*, T**, unsigned int, T*, T*);                                         \
    template bool TMatrix2x2<T>::Eigenspace(T* const, TVector2<T>* const) const;                                       \
    template bool TMatrix3x3<T>::Eigenspace(T* const, TVector3<T>* const) const;                                       \
    template bool TMatrix4x4<T>::Eigenspace(T* const, TVector4<T>* const) const;                                       \
    template bool TMatrixMxN<T>::Eigenspace(T*, T**) const;                                                            \
    template bool TMatrixMxN<T>::Eigenspace(T**, T***) const;

CORVEX_INSTANTIATE_EIGENSPACE(float)
CORVEX_INSTANTIATE_EIGENSPACE(double)

} // namespace Halmont::Orrin::CorvexMaths
